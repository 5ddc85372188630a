#include "cli/FindPhone.h"

#include "app/SettingsKeys.h"
#include "cli/Recover.h"
#include "cli/Tables.h"
#include "link/mdlSearch.h"
#include "obex/DataChannel.h"

namespace kalmo::cli {

namespace {

class SearchProgress final : public link::SearchView
{
public:
    explicit SearchProgress(Job& job) : m_job(job) {}

    void setStatus(const QString&) override
    {
        const app::Sy& sy = m_job.context.sy;
        m_job.progress.phase(u"Looking for a handset at %1 with %2%3"_s.arg(
            m_job.portName(), sy.ComSettings, sy.blnTxLfTerminator ? u" and line feeds"_s : QString()));
    }
    void setProgress(int, int) override {} // seconds at most, and no share of them is known
    bool aborted() const override { return m_job.stop.Checked(); }
    void clearAborted() override {} // a stop that the user asked for stays one

private:
    Job& m_job;
};

QString ratesTried(const app::Context& context)
{
    QStringList rates;
    for (const int rate : link::rateList(app::getInt(context.settings, app::keys::PrefDetectBaud)))
        rates.append(rate > 0 ? QString::number(rate) : u"%1 with line feeds"_s.arg(-rate));
    return rates.join(u", "_s);
}

ExitStatus tellSilence(Job& job, const QString& rates)
{
    job.out.error(u"could not find a handset at %1: nothing answers at %2 baud.\n"
                  u"Is the handset switched on and firmly on its cable? Is it the right port (\"kalmoctl "
                  u"ports\" lists\n"
                  u"them)? Is Bluetooth off in the handset while it is on a cable? Switching the handset off "
                  u"and on\n"
                  u"and plugging the cable in again often helps. If a program was stopped in the middle of a "
                  u"transfer,\n"
                  u"\"%3\" takes the handset back to commands."_s.arg(job.portName(), rates,
                                                                      job.invocation.again(u"recover"_s)));
    return ExitNoPhone;
}

ExitStatus tellLineGone(Job& job)
{
    job.out.error(u"could not identify the handset at %1: the line is gone. Is the cable plugged in?"_s.arg(
        job.portName()));
    return ExitFailed;
}

ExitStatus tellUnknown(Job& job, const QString& rawId)
{
    if (rawId.isEmpty() || job.line.lastFailure() != link::RxFailure::None) {
        job.out.error(u"could not identify the handset at %1: it takes commands, but does not name its "
                      u"model. Leave all menus on it and try again."_s.arg(job.portName()));
        return ExitNoPhone;
    }
    const QString key = rawId.contains(u"^WPPN"_s) ? u"BRUSSELS:"_s + rawId : rawId;
    if (printable(rawId) != rawId) {
        job.out.error(
            u"could not identify the device at %1: Kalmo does not know its model. It answers:\n  %2"_s.arg(
                job.portName(), printable(rawId)));
        return ExitNoPhone;
    }
    job.out.error(
        u"could not identify the device at %1: Kalmo does not know its model. It answers:\n"
        u"  %2\n"
        u"If it works like a known model, set the family of that one (1 to 13) in %3:\n"
        u"  [Alias]\n"
        u"  %4=FAMILY"_s.arg(job.portName(), rawId, app::iniPath(job.context.sy.Paths.Storage), key));
    return ExitNoPhone;
}

/// Finds the handset and its family. Reports each failure.
ExitStatus findAny(Job& job)
{
    recoverUnclosedSession(job);
    SearchProgress view(job);
    link::PhoneSearch search(job.line, view, job.desktop);
    const QString rates = ratesTried(job.context);
    const link::PassResult pass = search.runPass();
    job.progress.clear();
    if (pass == link::PassResult::PortNotOpened) {
        job.out.error(job.line.port().openErrorEnglish());
        return ExitFailed;
    }
    if (job.reportInterruption())
        return ExitRefused;
    const auto isGone = [&job] { return !job.line.port().IsOpen(); };
    if (pass == link::PassResult::NobodyAnswered)
        return search.lostLine() ? tellLineGone(job) : tellSilence(job, rates);
    QString rawId;
    if (!search.IdentifyPhone(job.context.sy.PhoneType, rawId))
        return isGone() ? tellLineGone(job) : tellUnknown(job, rawId);
    search.takeOver();
    if (isGone())
        return tellLineGone(job);
    obex::forgetUnclosed(job.context);
    if (job.reportInterruption())
        return ExitRefused;
    return ExitDone;
}

ExitStatus requireFamily(Job& job, const HandsetKind& handset, const QString& needs)
{
    if (handset.fits(job.phoneType()))
        return ExitDone;
    job.out.error(u"could not run \"%1\": it needs %2. This one is of family %3 (%4)."_s.arg(
        job.invocation.command->words, needs, QString::number(job.phoneType()),
        printable(job.context.sy.PhoneID)));
    return ExitFailed;
}

} // namespace

ExitStatus findPhone(Job& job)
{
    const HandsetKind* handset = job.invocation.command->handset;
    const ExitStatus found = findAny(job);
    return found == ExitDone && handset ? requireFamily(job, *handset, handset->inWords()) : found;
}

ExitStatus findPhone(Job& job, const HandsetKind& handset, const QString& use)
{
    const ExitStatus found = findAny(job);
    return found == ExitDone ? requireFamily(job, handset, handset.inWords() + u' ' + use) : found;
}

} // namespace kalmo::cli
