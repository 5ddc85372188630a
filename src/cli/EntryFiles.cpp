#include "cli/EntryFiles.h"

#include "cli/EntryJson.h"
#include "cli/InputFile.h"
#include "cli/StoreWords.h"
#include "phonedata/BackupFiles.h"

#include <QRegularExpression>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;
using phonedata::Store;

namespace {

const QChar quoteStandIn = u'•'; // what the window saves for a quote within a name
const QString jsonEnding = u".json"_s;

bool endsIn(const QString& path, QStringView ending)
{
    return path.endsWith(ending, Qt::CaseInsensitive);
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
    static const QRegularExpression breaking(u"[\\x{0}\\r\\n\\x{1a}\\x{1b}]"_s);
    static const QRegularExpression date(u"^[0-9]{2}\\.[0-9]{2}  [0-9]{2}:[0-9]{2}$"_s);
    for (const QString& text : {entry.name, entry.number, entry.dateSound, entry.vipSound}) {
        if (text.contains(breaking))
            return u"there is a control character that can't be sent to a phone"_s;
    }
    if (!entry.date.isEmpty() && !date.match(entry.date).hasMatch())
        return u"the date is not of the form \"24.12  08:30\""_s;
    return {};
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
