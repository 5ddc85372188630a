#include "cli/SettingReport.h"

#include "cli/CauseWords.h"
#include "cli/FileWords.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::Cause;
using operations::Outcome;
using operations::State;

namespace {

QString settingFailure(const Job& job, const SettingWords& words, const Outcome& outcome)
{
    const QString were = words.isPlural ? u"were"_s : u"was"_s;
    const QString they = words.isPlural ? u"they are"_s : u"it is"_s;
    if (outcome.cause == Cause::NotSaved)
        return u"could not record %1: %2.\nNothing was sent to the phone."_s.arg(
            words.name, saveFaultInWords(outcome.saveFault));
    if (outcome.sent == 0)
        return u"could not read %1 before the change: %2.\nNothing was sent to the phone."_s.arg(
            words.name, reasonText(job, outcome.cause));
    if (outcome.state == State::Unchanged)
        return u"could not set %1: %2. In the phone %3 as before."_s.arg(
            words.name, reasonText(job, outcome.cause), they);
    if (outcome.confirmed > 0 && outcome.cause == Cause::Mismatch)
        return u"the phone confirmed %1, but shows another value."_s.arg(words.name);
    if (outcome.confirmed > 0)
        return u"the phone confirmed %1, but %2 not read back: %3."_s.arg(words.name, were,
                                                                          reasonText(job, outcome.cause));
    return u"%1 %2 sent, but the phone did not confirm it: %3. It is not known what is set now."_s.arg(
        words.name, were, reasonText(job, outcome.cause));
}

} // namespace

QString reasonText(const Job& job, Cause cause)
{
    return causeInWords(job.line.port().IsOpen() ? cause : Cause::LineGone, job.portName(),
                        {{Cause::None, u"the phone did not answer"_s},
                         {Cause::PhoneRefused, u"the phone refused"_s},
                         {Cause::NotRead, u"could not understand the phone's answer"_s},
                         {Cause::Doubtful, u"no two answers of the phone were the same"_s},
                         {Cause::Mismatch, u"the phone shows another value"_s},
                         {Cause::NotPossible, u"this phone can't hold it"_s}});
}

ExitStatus reportSetting(Job& job, const SettingWords& words, const Outcome& outcome)
{
    job.progress.clear();
    if (outcome.isRecordOpen)
        job.out.note(openRecordText());
    if (outcome.isDone())
        return ExitDone;
    job.out.error(settingFailure(job, words, outcome));
    return ExitFailed;
}

} // namespace kalmo::cli
