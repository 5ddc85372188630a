#include "cli/EntryJson.h"

#include "cli/InputFile.h"
#include "cli/StoreWords.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;
using phonedata::Store;

namespace {

struct TextKey
{
    QStringView key;
    QString ClassicEntry::*field;
    bool isInBoth;
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

const TextKey* findKey(const QString& key, Store store)
{
    for (const TextKey& row : textKeys) {
        if (row.key == key && (row.isInBoth || wordsOf(store).hasDates))
            return &row;
    }
    return nullptr;
}

bool readMember(const QString& key, const QJsonValue& value, Store store, ClassicEntry& entry, QString& error)
{
    if (key == vipKey && wordsOf(store).hasDates) {
        entry.vip = value.toBool() ? vipMark : QString();
        error = u"\"vip\" must be true or false"_s;
        return value.isBool();
    }
    const TextKey* row = findKey(key, store);
    error = row ? u"\"%1\" must be a text"_s.arg(key) : u"unknown key \"%1\""_s.arg(key.left(40));
    if (!row || !value.isString())
        return false;
    entry.*(row->field) = value.toString();
    return true;
}

bool readObject(const QJsonValue& value, Store store, ClassicEntry& entry, QString& error)
{
    if (!value.isObject()) {
        error = u"it is no object"_s;
        return false;
    }
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (!readMember(member.key(), member.value(), store, entry, error))
            return false;
    }
    if (!object.contains(u"name"_s) || !object.contains(u"number"_s))
        error = u"\"name\" and \"number\" must be there"_s;
    else
        error = faultOf(entry);
    return error.isEmpty();
}

} // namespace

QJsonArray entryJson(const Entries& entries, Store store)
{
    QJsonArray array;
    for (const ClassicEntry& entry : entries) {
        QJsonObject object;
        for (const TextKey& row : textKeys) {
            if (row.isInBoth || wordsOf(store).hasDates)
                object.insert(row.key, entry.*(row.field));
        }
        if (wordsOf(store).hasDates)
            object.insert(vipKey, !entry.vip.isEmpty());
        array.append(object);
    }
    return array;
}

QByteArray entryJsonBytes(const Entries& entries, Store store)
{
    return QJsonDocument(entryJson(entries, store)).toJson(QJsonDocument::Indented);
}

bool readEntryJson(const QByteArray& bytes, Store store, Entries& entries, QString& error)
{
    entries.clear();
    QJsonParseError fault;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &fault);
    if (fault.error != QJsonParseError::NoError) {
        error = u"line %1: this is no JSON: %2"_s.arg(lineOf(bytes, fault.offset)).arg(fault.errorString());
        return false;
    }
    if (!document.isArray()) {
        error = u"expected an array of entries"_s;
        return false;
    }
    const QJsonArray array = document.array();
    for (qsizetype index = 0; index < array.size(); ++index) {
        ClassicEntry entry;
        if (!readObject(array.at(index), store, entry, error)) {
            error = u"entry %1: %2"_s.arg(index + 1).arg(error);
            return false;
        }
        entries.push_back(entry);
    }
    return true;
}

} // namespace kalmo::cli
