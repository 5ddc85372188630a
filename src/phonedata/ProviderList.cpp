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
    const auto take = [&job](const QByteArray& reply) {
        if (!reply.isEmpty())
            job.list.add(toRow(parseProviderReply(reply)));
    };
    if (!readEntries(job, Store::Providers, take, doubtful))
        return abandonRead(job);
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
    std::vector<ProviderEntry> entries = providerEntries(job.list);
    job.memory.providers.forget();
    if (!EraseStore(job.line, Store::Providers, job.progress))
        return false;
    job.memory.providers.becomes({}, Certainty::Known);
    const bool opened = OpenStore(job.line, Store::Providers, job.progress);
    job.line.pause(0.5);
    if (!opened)
        return false;

    QByteArrayList commands;
    for (const ProviderEntry& entry : entries)
        commands.append("AT^WSWE=" + lengthPrefixed(entry.name) + ',' + lengthPrefixed(entry.number) + '\r');
    bool doubtful = false;
    const int written = writeEntries(job, commands, u"Schreibe Provider..."_s, doubtful);
    const bool isWhole = written == commands.size();
    entries.resize(written);
    job.memory.providers.becomes(std::move(entries),
                                 isWhole && doubtful ? Certainty::Doubtful : Certainty::Known);
    if (isWhole)
        job.line.pause(0.5);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    job.progress.hide();
    return isWhole && closed;
}

} // namespace kalmo::phonedata
