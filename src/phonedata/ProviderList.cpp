#include "phonedata/ProviderList.h"

#include "app/CodePage.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

constexpr double pauseAfterReading = 0.2;
constexpr double pauseAfterWriting = 0.5;

bool abandonRead(const StoreJob& job)
{
    if (job.progress.cancelled())
        job.line.pause(pauseAfterReading); // the phone gave the last entry as after a whole read
    CloseStore(job.line, job.progress);
    if (job.list)
        job.list->clear();
    job.memory.providers.forget();
    return false;
}

} // namespace

ProviderEntry parseProviderReply(const QByteArray& reply)
{
    constexpr qsizetype prefixLength = 6; // "^WSRE:", with or without a blank after it
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
    if (job.list)
        job.list->clear();
    job.line.pause(0.5);

    const auto entryFrom = [](const QByteArray& reply) -> std::optional<ClassicEntry> {
        if (reply.isEmpty())
            return {};
        const ProviderEntry entry = parseProviderReply(reply);
        return ClassicEntry{.name = entry.name, .number = entry.number};
    };
    auto content = readEntries(job, Store::Providers, entryFrom);
    if (!content)
        return abandonRead(job);
    job.memory.providers = std::move(*content);
    job.line.pause(pauseAfterReading);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    return closed;
}

QByteArray providerWriteCommand(const ProviderEntry& entry)
{
    return "AT^WSWE=" + lengthPrefixed(entry.name) + ',' + lengthPrefixed(entry.number) + '\r';
}

bool WritePB_NE(const StoreJob& job)
{
    StoreEntries wanted{classicEntries(*job.list), {}};
    for (const ProviderEntry& entry : providerEntries(*job.list))
        wanted.commands.append(providerWriteCommand(entry));
    return writeProviders(job, wanted).isDone();
}

StoreWriting writeProviders(const StoreJob& job, const StoreEntries& wanted)
{
    const toolkit::BusyScope busy(job.window);
    StoreWriting writing{.planned = static_cast<int>(wanted.commands.size())};
    job.memory.providers.forget();
    const StoreErasing erasing = eraseAndClose(job.line, Store::Providers, job.progress);
    writing.isErased = erasing.isErased;
    writing.isUntouched = erasing.isRefused;
    writing.failure = erasing.failure;
    if (!erasing.isErased || !erasing.isClosed)
        return writing;
    job.memory.providers.becomes({}, Certainty::Known);
    const bool opened = OpenStore(job.line, Store::Providers, job.progress);
    writing.failure = job.line.lastFailure();
    job.line.pause(0.5);
    if (!opened)
        return writing;
    writeEntries(job, wanted.commands, u"Schreibe Provider..."_s, writing);
    noteWritten(job.memory.providers, wanted, writing);
    // Kept on purpose: this pause follows the one after the last entry. Only a failed entry has none.
    if (writing.failure == link::RxFailure::None)
        job.line.pause(pauseAfterWriting);
    writing.isClosed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    job.progress.hide();
    return writing;
}

} // namespace kalmo::phonedata
