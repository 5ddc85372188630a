// The commands about area codes.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/Tables.h"
#include "phonedata/AreaCodes.h"

#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

using phonedata::AreaCodes;

namespace {

/// Shows the phone's codes. Others than the wanted ones, if there are such, are a failure.
ExitStatus show(Job& job, const AreaCodes* wanted = nullptr)
{
    QString answer;
    const bool isSetUp = phonedata::ReadAreaCodes(job.line, nullptr, answer);
    const auto codes = phonedata::parseAreaCodes(answer);
    if (!codes) {
        if (!answer.isEmpty()) // otherwise the failure has been told
            job.out.error(u"the phone's answer is not understood: %1"_s.arg(printable(answer)));
        return ExitFailed;
    }
    job.out.show(QJsonObject{{u"a"_s, (*codes)[0]},
                             {u"b"_s, (*codes)[1]},
                             {u"c"_s, (*codes)[2]},
                             {u"d"_s, (*codes)[3]},
                             {u"isSetUp"_s, isSetUp}},
                 alignedFields({{u"A, international prefix"_s, (*codes)[0]},
                                {u"B, country code"_s, (*codes)[1]},
                                {u"C, national prefix"_s, (*codes)[2]},
                                {u"D, city code"_s, (*codes)[3]}}));
    if (!isSetUp)
        job.out.note(u"They are not set up, so numbers may come with wrong prefixes.\n"_s);
    if (!wanted || *codes == *wanted)
        return ExitDone;
    job.out.error(u"the phone has other codes than it was to get."_s);
    return ExitFailed;
}

} // namespace

ExitStatus runAreaCodes(Job& job)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    return show(job);
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
    if (!phonedata::SetAreaCodes(job.line, nullptr, codes, emptyCodes == 0))
        return ExitFailed;
    if (job.isInterrupted(u"the area codes were set, but not read back"_s))
        return ExitRefused;
    return show(job, &codes);
}

} // namespace kalmo::cli
