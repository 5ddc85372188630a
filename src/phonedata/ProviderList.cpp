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

bool abandonWrite(const StoreJob& job, std::vector<ProviderEntry> held, int written)
{
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
    const toolkit::BusyScope busy(job.window);
    if (!OpenStore(job.line, Store::Providers, job.progress))
        return false;
    job.progress.status(u"Lese Provider..."_s);
    job.list.clear();
    job.line.pause(0.5);

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
        job.line.pause(0.1);
    }
    job.memory.providers.becomes(providerEntries(job.list),
                                 doubtful ? Certainty::Doubtful : Certainty::Known);
    job.line.pause(0.2);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    return closed;
}

bool WritePB_NE(const StoreJob& job)
{
    const toolkit::BusyScope busy(job.window);
    const std::vector<ProviderEntry> entries = providerEntries(job.list);
    const int count = static_cast<int>(entries.size());
    job.memory.providers.forget();
    if (!EraseStore(job.line, Store::Providers, job.progress))
        return false;
    job.memory.providers.becomes({}, Certainty::Known);
    const bool opened = OpenStore(job.line, Store::Providers, job.progress);
    job.line.pause(0.5);
    if (!opened)
        return false;

    if (count > 0)
        job.progress.start(0, count);
    Certainty certainty = Certainty::Known;
    for (int index = 0; index < count; ++index) {
        job.progress.status(u"Schreibe Provider...(%1 von %2)"_s.arg(index + 1).arg(count));
        job.progress.set(index + 1);
        if (index < job.list.count())
            job.list.setCurrent(index);
        const QByteArray command = "AT^WSWE=" + lengthPrefixed(entries[index].name) + ',' +
                                   lengthPrefixed(entries[index].number) + '\r';
        if (job.progress.cancelled() || !writeNextEntry(job.line, command))
            return abandonWrite(job, entries, index);
        if (job.line.repeats() > 0)
            certainty = Certainty::Doubtful; // the phone may have taken it twice
        job.line.pause(0.2);
    }
    job.memory.providers.becomes(entries, certainty);
    job.line.pause(0.5);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    job.progress.hide();
    return closed;
}

} // namespace kalmo::phonedata
