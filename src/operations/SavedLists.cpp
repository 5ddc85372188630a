#include "operations/SavedLists.h"

#include "operations/ContactFiles.h"
#include "operations/EntryJson.h"
#include "operations/EntryLines.h"
#include "operations/SavedText.h"
#include "phonedata/StoreTraits.h"

#include <array>

namespace kalmo::operations {

namespace {

QByteArray writeCards(const SavedList& list)
{
    return contactCardBytes(list);
}

constexpr std::array<SavedListFormat, 7> formats = {{
    {u".tel", SavedKind::Phonebook, entryLineBytes, readEntryLines, false},
    {u".json", SavedKind::Phonebook, entryJsonBytes, readEntryJson, false},
    {u".prv", SavedKind::Providers, entryLineBytes, readEntryLines, false},
    {u".json", SavedKind::Providers, entryJsonBytes, readEntryJson, false},
    {u".csv", SavedKind::Contacts, contactCsvBytes, readContactCsv, false},
    {u".json", SavedKind::Contacts, contactJsonBytes, readContactJson, true},
    {u".vcf", SavedKind::Contacts, writeCards, readContactCards, true},
}};

} // namespace

qsizetype SavedList::count() const
{
    return kind == SavedKind::Contacts ? std::ssize(contacts) : std::ssize(entries);
}

SavedKind savedKind(phonedata::Store store)
{
    static constexpr std::array<SavedKind, 2> kinds = {SavedKind::Phonebook, SavedKind::Providers};
    return phonedata::rowOf(kinds, store);
}

const SavedListFormat* findFormat(const QString& path, SavedKind kind)
{
    for (const SavedListFormat& format : formats) {
        if (format.kind == kind && endsIn(path, format.ending))
            return &format;
    }
    return nullptr;
}

QStringList endingsFor(SavedKind kind)
{
    QStringList endings;
    for (const SavedListFormat& format : formats) {
        if (format.kind == kind)
            endings.append(format.ending.toString());
    }
    return endings;
}

QByteArray savedListBytes(const QString& path, const SavedList& list)
{
    const SavedListFormat* format = findFormat(path, list.kind);
    return format ? format->write(list) : QByteArray();
}

std::optional<SavedList> parseSavedList(const QString& path, const QByteArray& bytes, SavedKind kind,
                                        const ReadingRules& rules, SavedListFault& fault)
{
    const SavedListFormat* format = findFormat(path, kind);
    SavedList list{.kind = kind};
    if (!format)
        fault = {.kind = FileFault::WrongEnding};
    else if (format->read(bytes, rules, list, fault))
        return list;
    return {};
}

std::optional<SavedList> readSavedList(const QString& path, SavedKind kind, const ReadingRules& rules,
                                       SavedListFault& fault)
{
    QByteArray bytes;
    const bool isKnown = findFormat(path, kind) != nullptr; // or the file need not be read
    if (isKnown && !readInputFile(path, bytes, fault))
        return {};
    return parseSavedList(path, bytes, kind, rules, fault);
}

bool bringsBack(const QString& path, const SavedList& list)
{
    const SavedListFormat* format = findFormat(path, list.kind);
    SavedList read{.kind = list.kind};
    SavedListFault fault;
    if (!format || !format->read(format->write(list), {}, read, fault))
        return false;
    SavedList wanted = list;
    for (phonedata::tVcfEntry& contact : wanted.contacts) {
        if (!format->keepsLuids)
            contact.luid.clear();
        contact.isStandIn = false;
    }
    return read == wanted;
}

} // namespace kalmo::operations
