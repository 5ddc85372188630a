// The commands that show and set the area codes.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/SettingReport.h"
#include "cli/Tables.h"
#include "operations/PhoneSettings.h"

#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

using phonedata::AreaCodes;

namespace {

/// Shows the codes in a text with commas; with a state after a change. Returns false if there are none in it.
bool show(Job& job, const QString& text, std::optional<operations::State> state = std::nullopt)
{
    const auto codes = phonedata::parseAreaCodes(text);
    if (!codes) {
        job.out.error(u"could not understand the phone's answer: %1"_s.arg(printable(text)));
        return false;
    }
    const bool isSetUp = phonedata::areSetUp(text);
    QJsonObject object{{u"a"_s, (*codes)[0]},
                       {u"b"_s, (*codes)[1]},
                       {u"c"_s, (*codes)[2]},
                       {u"d"_s, (*codes)[3]},
                       {u"isSetUp"_s, isSetUp}};
    if (state)
        object.insert(u"state"_s, operations::wordOf(*state));
    job.out.show(object, alignedFields({{u"A, international prefix"_s, (*codes)[0]},
                                        {u"B, country code"_s, (*codes)[1]},
                                        {u"C, national prefix"_s, (*codes)[2]},
                                        {u"D, city code"_s, (*codes)[3]}}));
    if (!isSetUp)
        job.out.note(u"They are not set up, so numbers may come with wrong prefixes.\n"_s);
    return true;
}

} // namespace

ExitStatus runAreaCodes(Job& job)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    const auto [text, cause] = operations::readAreaCodes(job.line);
    if (job.reportInterruption())
        return ExitRefused;
    if (text)
        return show(job, *text) ? ExitDone : ExitFailed;
    job.out.error(u"could not read the area codes: %1."_s.arg(reasonText(job, cause)));
    return ExitFailed;
}

ExitStatus runAreaCodesSet(Job& job)
{
    const QStringList& words = job.invocation.arguments;
    AreaCodes codes;
    std::copy(words.begin(), words.end(), codes.begin());
    for (const QString& code : words) {
        if (!code.isEmpty() && !phonedata::isAreaCode(code)) {
            job.out.error(u"%1 is no area code: digits only."_s.arg(printable(code)));
            return ExitWrongUse;
        }
    }
    const auto emptyCodes = std::count(codes.begin(), codes.end(), QString());
    if (emptyCodes != 0 && emptyCodes != words.size()) {
        job.out.error(u"either all four area codes are empty, or none is."_s);
        return ExitWrongUse;
    }
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    if (job.reportInterruption())
        return ExitRefused;
    const auto [outcome, now] = operations::setAreaCodes(job.line, codes);
    if (now)
        show(job, *now, outcome.state);
    else if (job.out.isJson())
        job.out.show(QJsonObject{{u"state"_s, operations::wordOf(outcome.state)}}, {});
    return reportSetting(job, {.name = u"the area codes"_s, .isPlural = true}, outcome);
}

} // namespace kalmo::cli
