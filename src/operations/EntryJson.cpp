#include "operations/EntryJson.h"

#include "operations/EntryLines.h"
#include "operations/SavedText.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;

namespace {

struct TextKey
{
    QStringView key;
    QString ClassicEntry::*field;
    bool isInBoth; ///< in the provider list too
};

constexpr std::array<TextKey, 5> textKeys = {{
    {u"name", &ClassicEntry::name, true},
    {u"number", &ClassicEntry::number, true},
    {u"date", &ClassicEntry::date, false},
    {u"dateSound", &ClassicEntry::dateSound, false},
    {u"vipSound", &ClassicEntry::vipSound, false},
}};

const QString vipKey = u"vip"_s;
const QString vipMark = u"Ja"_s;

bool isInList(const TextKey& row, SavedKind kind)
{
    return row.isInBoth || kind == SavedKind::Phonebook;
}

const TextKey* findKey(const QString& key, SavedKind kind)
{
    for (const TextKey& row : textKeys) {
        if (row.key == key && isInList(row, kind))
            return &row;
    }
    return nullptr;
}

FileFault readMember(const QString& key, const QJsonValue& value, SavedKind kind, ClassicEntry& entry)
{
    if (key == vipKey && kind == SavedKind::Phonebook) {
        entry.vip = value.toBool() ? vipMark : QString();
        return value.isBool() ? FileFault::None : FileFault::NotBoolean;
    }
    const TextKey* row = findKey(key, kind);
    if (!row)
        return FileFault::UnknownKey;
    entry.*(row->field) = value.toString();
    return value.isString() ? FileFault::None : FileFault::NotText;
}

SavedListFault readEntry(const QJsonValue& value, SavedKind kind, ClassicEntry& entry)
{
    if (!value.isObject())
        return {.kind = FileFault::NoObject};
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        const FileFault fault = readMember(member.key(), member.value(), kind, entry);
        if (fault != FileFault::None)
            return {.kind = fault, .detail = member.key()};
    }
    if (!object.contains(u"name"_s) || !object.contains(u"number"_s))
        return {.kind = FileFault::NameOrNumberMissing};
    return {.kind = faultOf(entry)};
}

} // namespace

QJsonArray entryJson(const SavedList& list)
{
    QJsonArray array;
    for (const ClassicEntry& entry : list.entries) {
        QJsonObject object;
        for (const TextKey& row : textKeys) {
            if (isInList(row, list.kind))
                object.insert(row.key, entry.*(row.field));
        }
        if (list.kind == SavedKind::Phonebook)
            object.insert(vipKey, !entry.vip.isEmpty());
        array.append(object);
    }
    return array;
}

QByteArray entryJsonBytes(const SavedList& list)
{
    return QJsonDocument(entryJson(list)).toJson(QJsonDocument::Indented);
}

bool readEntryJson(const QByteArray& bytes, const ReadingRules&, SavedList& list, SavedListFault& fault)
{
    list.entries.clear();
    QJsonArray array;
    if (!parseJsonArray(bytes, LoneObject::Refused, array, fault))
        return false;
    for (qsizetype index = 0; index < array.size(); ++index) {
        ClassicEntry entry;
        fault = readEntry(array.at(index), list.kind, entry);
        if (fault.kind != FileFault::None) {
            fault.place = SavedListFault::Place::Entry;
            fault.number = static_cast<int>(index) + 1;
            return false;
        }
        list.entries.push_back(entry);
    }
    return true;
}

} // namespace kalmo::operations
