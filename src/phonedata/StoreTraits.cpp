#include "phonedata/StoreTraits.h"

#include "phonedata/BackupFiles.h"
#include "phonedata/ClassicPhonebook.h"
#include "phonedata/ProviderList.h"

namespace kalmo::phonedata {

namespace {

ProviderEntry toProvider(const ClassicEntry& entry)
{
    return {entry.name, entry.number};
}

ClassicEntry fromProvider(const ProviderEntry& entry)
{
    return {.name = entry.name, .number = entry.number};
}

QByteArray providerCommand(const ClassicEntry& entry, int, const SoundList&)
{
    return providerWriteCommand(toProvider(entry));
}

QByteArray providerCommandFromReply(const QByteArray& reply, int)
{
    return providerWriteCommand(parseProviderReply(reply));
}

ClassicEntry providerFromReply(const QByteArray& reply, int, const SoundList&, app::DebugLog&)
{
    return fromProvider(parseProviderReply(reply));
}

QByteArray providerFileBytes(const std::vector<ClassicEntry>& entries)
{
    std::vector<ProviderEntry> providers;
    for (const ClassicEntry& entry : entries)
        providers.push_back(toProvider(entry));
    return prvBytes(providers);
}

constexpr std::array<StoreTraits, 2> stores = {{
    {.wireName = "TB",
     .fileEnding = u".tel",
     .hasDates = true,
     .content = &PhoneMemory::phonebook,
     .dirty = &PhoneMemory::TbDirty,
     .makeRows = makePhonebookRows,
     .read = ReadPB_TB,
     .write = writePhonebook,
     .writeCommand = phonebookWriteCommand,
     .commandFromReply = phonebookCommandFromReply,
     .entryFromReply = parsePhonebookReply,
     .fileBytes = telBytes,
     .load = LoadTel,
     .save = SaveTel},
    {.wireName = "NE",
     .fileEnding = u".prv",
     .hasDates = false,
     .content = &PhoneMemory::providers,
     .dirty = &PhoneMemory::NeDirty,
     .makeRows = makeProviderRows,
     .read = ReadPB_NE,
     .write = writeProviders,
     .writeCommand = providerCommand,
     .commandFromReply = providerCommandFromReply,
     .entryFromReply = providerFromReply,
     .fileBytes = providerFileBytes,
     .load = LoadPrv,
     .save = SavePrv},
}};

} // namespace

const StoreTraits& traitsOf(Store store)
{
    return rowOf(stores, store);
}

bool readStore(const StoreJob& job, Store store)
{
    StoreContent& content = contentOf(job.memory, store);
    content.forget(); // the content is known only as far as this reading knows it
    const bool isRead = traitsOf(store).read(job);
    content.since = job.context().clock.Now();
    return isRead;
}

StoreWriting writeStore(const StoreJob& job, Store store, const StoreEntries& wanted)
{
    const StoreWriting writing = traitsOf(store).write(job, wanted);
    contentOf(job.memory, store).since = job.context().clock.Now();
    return writing;
}

} // namespace kalmo::phonedata
