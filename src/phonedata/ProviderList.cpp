#include "phonedata/ProviderList.h"

#include "app/CodePage.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

bool abandonRead(const StoreJob& job)
{
    CloseStore(job.line, job.progress);
    job.list.clear();
    job.memory.providers.forget();
    return false;
}

bool abandonWrite(const StoreJob& job, int written)
{
    auto held = providerEntries(job.list);
    held.resize(written);
    job.memory.providers.becomes(std::move(held), Certainty::Known);
    CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    job.progress.hide();
    return false;
}

} // namespace

ProviderEntry parseProviderReply(const QByteArray& reply)
{
    constexpr qsizetype prefixLength = 6; // "^WSRE:", with or without a blank behind it
    QString text = app::fromCp1252(reply).mid(prefixLength).trimmed();
    ProviderEntry entry;
    entry.name = takeName(text);
    entry.number = takeField(text);
    return entry;
}

bool ReadPB_NE(const StoreJob& job)
{
    const BusyScope busy(job.window);
    app::Context& context = job.context();
    if (!OpenStore(job.line, Store::Providers, job.progress))
        return false;
    job.progress.status(u"Lese Provider..."_s);
    job.list.clear();
    context.clock.WaitSeconds(0.5);

    bool doubtful = false;
    QByteArray reply;
    NextEntry next = NextEntry::Entry;
    while (next != NextEntry::End) {
        next = job.progress.cancelled() ? NextEntry::Failed
                                        : readNextEntry(job.line, Store::Providers, reply, doubtful);
        if (next == NextEntry::Failed)
            return abandonRead(job);
        if (next == NextEntry::Entry)
            job.list.add(toRow(parseProviderReply(reply)));
        context.clock.WaitSeconds(0.1);
    }
    job.memory.providers.becomes(providerEntries(job.list),
                                 doubtful ? Certainty::Doubtful : Certainty::Known);
    context.clock.WaitSeconds(0.2);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    return closed;
}

bool WritePB_NE(const StoreJob& job)
{
    const BusyScope busy(job.window);
    app::Context& context = job.context();
    const int count = job.list.count();
    job.memory.providers.forget();
    if (!EraseStore(job.line, Store::Providers, job.progress))
        return false;
    job.memory.providers.becomes({}, Certainty::Known);
    const bool opened = OpenStore(job.line, Store::Providers, job.progress);
    context.clock.WaitSeconds(0.5);
    if (!opened)
        return false;

    if (count > 0)
        job.progress.start(0, count);
    for (int index = 0; index < count; ++index) {
        job.progress.status(u"Schreibe Provider...(%1 von %2)"_s.arg(index + 1).arg(count));
        job.progress.set(index + 1);
        job.list.setCurrent(index);
        const ProviderEntry entry = providerEntryFrom(job.list.row(index));
        const QByteArray command =
            "AT^WSWE=" + lengthPrefixed(entry.name) + ',' + lengthPrefixed(entry.number) + '\r';
        if (job.progress.cancelled() || !writeNextEntry(job.line, command))
            return abandonWrite(job, index);
        context.clock.WaitSeconds(0.2);
    }
    job.memory.providers.becomes(providerEntries(job.list), Certainty::Known);
    context.clock.WaitSeconds(0.5);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    job.progress.hide();
    return closed;
}

} // namespace kalmo::phonedata
