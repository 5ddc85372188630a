#include "cli/DataWork.h"

#include "cli/FindPhone.h"
#include "cli/Stop.h"
#include "obex/DataChannel.h"
#include "operations/PhoneIdentity.h"

namespace kalmo::cli {

using obex::clsMmc;

namespace {

/// Between two frames a transfer looks at the cancel box; a wait for a phone that is silent looks here.
void stopWaitingOnRequest(Job& job, clsMmc& client)
{
    QObject::connect(&client, &clsMmc::LongTimeOutMsg, &client, [&job, &client] {
        if (job.stop.Checked())
            client.askToStop();
    });
}

bool bringLineBack(Job& job)
{
    link::Line& line = job.line;
    if (line.mode() == link::LineMode::Text)
        return true;
    if (!line.port().IsOpen()) {
        job.out.error(
            u"could not end the data session: %1 is gone. When the cable is back, \"%2\" takes the\n"
            u"handset back to commands; if that fails, switch it off and on."_s.arg(
                job.portName(), job.invocation.again(u"recover"_s)));
        return false;
    }
    job.progress.phase(u"Taking the handset back to commands"_s);
    if (obex::recoverLine(line, {}))
        return true;
    job.out.error(u"could not take the handset back to commands: it does not answer. Switch it off and on.\n"
                  u"If it is not found then, pull its cable out for five seconds."_s);
    return false;
}

} // namespace

ExitStatus withClient(Job& job, const DataWork& work)
{
    // A second Ctrl-C would leave the phone deaf to commands.
    const StoreOpenScope open;
    const auto client = std::make_shared<clsMmc>(job.line);
    stopWaitingOnRequest(job, *client);
    const ExitStatus status = work(client);
    job.progress.clear();
    const bool isBack = bringLineBack(job);
    return isBack || status != ExitDone ? status : ExitFailed;
}

ExitStatus withDataChannel(Job& job, Intent intent, const DataWork& work)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    if (intent == Intent::Changes)
        operations::identifyPhone(job.line);
    return withClient(job, [&](const std::shared_ptr<clsMmc>& client) {
        job.progress.phase(u"Opening the data channel"_s);
        const bool isOnline = client->Online({.cancel = &job.stop});
        const ExitStatus status = isOnline ? work(client) : brokenOff(job);
        job.progress.phase(u"Closing the data channel"_s);
        if (client->ChannelState() == clsMmc::ChannelOpen && job.line.port().IsOpen())
            client->Offline({});
        return status;
    });
}

ExitStatus brokenOff(Job& job)
{
    if (!job.stop.Checked())
        return ExitFailed;
    job.out.error(u"interrupted."_s);
    return ExitRefused;
}

} // namespace kalmo::cli
