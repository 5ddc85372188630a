#include "cli/Recover.h"

#include "app/SettingsKeys.h"
#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "link/mdlSearch.h"
#include "obex/DataChannel.h"
#include "phonedata/ClassicStore.h"

#include <QJsonObject>

#include <cstdlib>

namespace kalmo::cli {

namespace {

/// Rates without their signs, each once, beginning with the one that a phone answered at last.
QList<int> distinctRates(const Job& job)
{
    QList<int> rates;
    for (const int rate : link::rateList(app::getInt(job.context.settings, app::keys::PrefDetectBaud))) {
        if (!rates.contains(std::abs(rate)))
            rates.append(std::abs(rate));
    }
    return rates;
}

} // namespace

bool isSessionUnclosed(const Job& job)
{
    const app::Settings& settings = job.context.settings;
    return app::get(settings, app::keys::LastUnclosedObexDevice) != app::noValue() &&
           app::get(settings, app::keys::LastUnclosedObexDeviceCOM) ==
               QString::number(link::portNumber(job.context));
}

bool recoverAtPort(Job& job, const QList<int>& rates)
{
    link::Line& line = job.line;
    job.context.sy.ComNo = link::portNumber(job.context);
    if (!line.port().IsOpen() && !line.port().Open(link::Line::ComPortName(job.context.sy.ComNo))) {
        job.out.error(line.port().openErrorEnglish());
        return false;
    }
    for (const int rate : rates) {
        job.progress.phase(u"Taking the handset back to commands at %1 baud"_s.arg(rate));
        if (obex::recoverLine(line, rate, {.cancel = &job.stop}))
            return true;
        if (job.stop.Checked() || !line.port().IsOpen())
            break;
    }
    return false;
}

void recoverUnclosedSession(Job& job)
{
    link::Line& line = job.line;
    if (!isSessionUnclosed(job))
        return;
    job.context.sy.ComNo = link::portNumber(job.context);
    if (!line.port().IsOpen() && !line.port().Open(link::Line::ComPortName(job.context.sy.ComNo)))
        return; // as the search will find out and tell
    const QString device = app::get(job.context.settings, app::keys::LastUnclosedObexDevice);
    job.out.note(
        u"The last run did not end its data session with %1; taking the handset back to commands.\n"_s.arg(
            device));
    if (!recoverAtPort(job, distinctRates(job).first(1)) && line.port().IsOpen())
        job.out.note(u"It did not come back. If it is not found now, pull its cable out for five seconds, or "
                     u"switch it off and on.\n"_s);
    job.progress.clear();
}

void forgetUnclosedSession(Job& job)
{
    if (!isSessionUnclosed(job))
        return;
    app::put(job.context.settings, app::keys::LastUnclosedObexDevice, app::noValue());
    app::put(job.context.settings, app::keys::LastUnclosedObexDeviceCOM, app::noValue());
}

ExitStatus runRecover(Job& job)
{
    const bool isBack = recoverAtPort(job, distinctRates(job));
    job.progress.clear();
    if (isBack) {
        phonedata::closeLeftStore(job.line);
        // The rate that helped is the one to begin the search with.
        app::put(job.context.settings, app::keys::PrefDetectBaud, job.line.port().BaudRate());
        if (const ExitStatus found = findPhone(job); found != ExitDone)
            return found;
        job.out.show(QJsonObject{{u"recovered"_s, true}, {u"phoneId"_s, job.context.sy.PhoneID}},
                     u"%1 takes commands.\n"_s.arg(job.context.sy.PhoneID));
        return ExitDone;
    }
    if (!job.line.port().IsOpen())
        return ExitFailed;
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
