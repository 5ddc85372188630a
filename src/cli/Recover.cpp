#include "cli/Recover.h"

#include "app/SettingsKeys.h"
#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/Tables.h"
#include "link/mdlSearch.h"
#include "obex/DataChannel.h"
#include "phonedata/ClassicStore.h"

#include <QJsonObject>

namespace kalmo::cli {

namespace {

bool recoverAtAnyRate(Job& job)
{
    for (const int rate : link::unsignedRates(job.context)) {
        job.progress.phase(u"Taking the handset back to commands at %1 baud"_s.arg(rate));
        if (obex::recoverPort(job.line, rate, {.cancel = &job.stop}))
            return true;
        if (job.stop.Checked() || !job.line.port().IsOpen())
            break;
    }
    return false;
}

ExitStatus tellNotOpen(Job& job)
{
    const QString why = job.line.port().openErrorEnglish();
    job.out.error(!why.isEmpty() ? why
                                 : u"could not take the handset at %1 back to commands: the line is gone. "
                                   u"Is the cable plugged in?"_s.arg(job.portName()));
    return ExitFailed;
}

} // namespace

void recoverUnclosedSession(Job& job)
{
    if (!obex::isSessionUnclosed(job.context))
        return;
    const QString device = app::get(job.context.settings, app::keys::LastUnclosedObexDevice);
    job.out.note(
        u"The last run did not end its data session with %1; taking the handset back to commands.\n"_s.arg(
            printable(device)));
    job.progress.phase(u"Taking the handset back to commands"_s);
    if (!obex::takeBackUnclosed(job.line, {.cancel = &job.stop}) && job.line.port().IsOpen())
        job.out.note(u"It did not come back. If it is not found now, pull its cable out for five seconds, or "
                     u"switch it off and on.\n"_s);
    job.progress.clear();
}

ExitStatus runRecover(Job& job)
{
    const bool isBack = recoverAtAnyRate(job);
    job.progress.clear();
    if (isBack) {
        phonedata::closeLeftStore(job.line);
        // The rate that helped is the one to begin the search with.
        app::put(job.context.settings, app::keys::PrefDetectBaud, job.line.port().BaudRate());
        if (const ExitStatus found = findPhone(job); found != ExitDone)
            return found;
        job.out.show(QJsonObject{{u"recovered"_s, true}, {u"phoneId"_s, job.context.sy.PhoneID}},
                     u"%1 takes commands.\n"_s.arg(printable(job.context.sy.PhoneID)));
        return ExitDone;
    }
    if (!job.line.port().IsOpen())
        return tellNotOpen(job);
    if (job.stop.Checked()) {
        job.out.error(u"interrupted."_s);
        return ExitRefused;
    }
    job.out.error(
        u"could not take a handset at %1 back to commands: nothing answers. Switch the handset off "
        u"and on; if it is not\nfound then, pull its cable out for five seconds."_s.arg(job.portName()));
    return ExitNoPhone;
}

} // namespace kalmo::cli
