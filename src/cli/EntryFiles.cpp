#include "cli/EntryFiles.h"

#include "cli/EntryJson.h"
#include "cli/InputFile.h"
#include "cli/StoreWords.h"
#include "phonedata/BackupFiles.h"

#include <QRegularExpression>

#include <algorithm>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;
using phonedata::Store;

namespace {

const QChar quoteStandIn = u'•'; // what the window saves for a quote within a name
const QString jsonEnding = u".json"_s;

/// Month, day, hour and minute are two characters each in what a phone gives, and may be cut off at any
/// place. What a person mistypes is hardly ever of that form.
bool canBeFromPhone(const QString& date)
{
    constexpr qsizetype separators = 4; // the point, two blanks, the colon
    const qsizetype given = date.size() - separators;
    const auto lengthOf = [given](qsizetype ahead) { return std::clamp<qsizetype>(given - ahead, 0, 2); };
    const qsizetype blanks = lengthOf(2) + 1 + lengthOf(0);
    return given <= 8 && date.mid(lengthOf(2), 1) == u"." && date.mid(blanks, 2) == u"  " &&
           date.mid(blanks + 2 + lengthOf(4), 1) == u":";
}

bool readLine(const QString& line, Store store, ClassicEntry& entry, QString& error)
{
    QStringList fields;
    const bool split = splitQuoted(line, fields);
    const qsizetype most = wordsOf(store).hasDates ? 6 : 2;
    if (!split || fields.size() < 2 || fields.size() > most) {
        error = wordsOf(store).hasDates
                    ? u"expected \"name\",\"number\",\"date\",\"sound\",\"VIP\",\"sound\""_s
                    : u"expected \"name\",\"number\""_s;
        return false;
    }
    entry.name = fields[0].replace(quoteStandIn, u'"');
    entry.number = fields[1];
    entry.date = fields.value(2);
    entry.dateSound = fields.value(3);
    entry.vip = fields.value(4);
    entry.vipSound = fields.value(5);
    error =
        !entry.vip.isEmpty() && entry.vip != u"Ja"_s ? u"VIP is neither \"Ja\" nor empty"_s : faultOf(entry);
    return error.isEmpty();
}

} // namespace

bool hasEntryEnding(const QString& path, Store store)
{
    return endsIn(path, jsonEnding) || endsIn(path, wordsOf(store).ending);
}

QByteArray entryFileBytes(const QString& path, const Entries& entries, Store store)
{
    if (endsIn(path, jsonEnding))
        return entryJsonBytes(entries, store);
    if (store == Store::Phonebook)
        return phonedata::telBytes(entries);
    std::vector<phonedata::ProviderEntry> providers;
    for (const ClassicEntry& entry : entries)
        providers.push_back({entry.name, entry.number});
    return phonedata::prvBytes(providers);
}

QString faultOf(const ClassicEntry& entry)
{
    for (const QString& text : {entry.name, entry.number, entry.date, entry.dateSound, entry.vipSound}) {
        if (text.contains(u'\r') || text.contains(u'\n'))
            return u"there is a line end that can't be sent to a phone"_s;
    }
    if (!entry.date.isEmpty() && !canBeFromPhone(entry.date))
        return u"the date is not of the form \"24.12  08:30\""_s;
    return {};
}

ClassicEntry sendable(ClassicEntry entry)
{
    static const QRegularExpression breaking(u"[\\x{0}\\r\\n\\x{1a}\\x{1b}]"_s);
    static const QRegularExpression date(u"^[0-9]{2}\\.[0-9]{2}  [0-9]{2}:[0-9]{2}$"_s);
    for (QString ClassicEntry::*field : {&ClassicEntry::name, &ClassicEntry::number})
        (entry.*field).remove(breaking);
    if (!date.match(entry.date).hasMatch())
        entry.date = entry.dateSound = QString();
    return entry;
}

bool bringsBack(const QString& path, const Entries& entries, Store store)
{
    const QByteArray bytes = entryFileBytes(path, entries, store);
    Entries read;
    QString error;
    return (endsIn(path, jsonEnding) ? readEntryJson : readEntryLines)(bytes, store, read, error) &&
           read == entries;
}

bool readEntryLines(const QByteArray& bytes, Store store, Entries& entries, QString& error)
{
    entries.clear();
    QString text;
    if (!decodeInput(bytes, text, error))
        return false;
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        ++number;
        ClassicEntry entry;
        if (line.isEmpty())
            continue;
        if (!readLine(line, store, entry, error)) {
            error = u"line %1: %2"_s.arg(number).arg(error);
            return false;
        }
        entries.push_back(entry);
    }
    if (entries.empty())
        error = u"there is no entry in it; to erase the list, write a .json file that holds []"_s;
    return !entries.empty();
}

bool readEntryFile(const QString& path, Store store, Entries& entries, QString& error)
{
    QByteArray bytes;
    if (!hasEntryEnding(path, store)) {
        error = u"%1 ends neither in %2 nor in .json"_s.arg(path, wordsOf(store).ending);
        return false;
    }
    if (readInputFile(path, bytes, error) &&
        (endsIn(path, jsonEnding) ? readEntryJson(bytes, store, entries, error)
                                  : readEntryLines(bytes, store, entries, error)))
        return true;
    error = u"%1: %2"_s.arg(path, error);
    return false;
}

} // namespace kalmo::cli
