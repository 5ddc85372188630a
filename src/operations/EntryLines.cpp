#include "operations/EntryLines.h"

#include "operations/SavedText.h"
#include "phonedata/BackupFiles.h"

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;
using phonedata::ProviderEntry;

namespace {

/// Returns true if a phone may give such a date: month, day, hour and minute have two characters each, and
/// may be cut off at any place. A date that a person mistypes hardly ever has that form.
bool canBeFromPhone(const QString& date)
{
    constexpr qsizetype separators = 4; // the point, two blanks, the colon
    const qsizetype given = date.size() - separators;
    const auto lengthOf = [given](qsizetype ahead) { return std::clamp<qsizetype>(given - ahead, 0, 2); };
    const qsizetype blanks = lengthOf(2) + 1 + lengthOf(0);
    return given <= 8 && date.mid(lengthOf(2), 1) == u"." && date.mid(blanks, 2) == u"  " &&
           date.mid(blanks + 2 + lengthOf(4), 1) == u":";
}

FileFault readLine(const QString& line, SavedKind kind, ClassicEntry& entry)
{
    QStringList fields;
    const qsizetype most = kind == SavedKind::Phonebook ? 6 : 2;
    if (!splitQuoted(line, fields) || fields.size() < 2 || fields.size() > most)
        return FileFault::FieldCount;
    entry.name = fields[0].replace(phonedata::quoteStandIn, u'"');
    entry.number = fields[1];
    entry.date = fields.value(2);
    entry.dateSound = fields.value(3);
    entry.vip = fields.value(4);
    entry.vipSound = fields.value(5);
    return !entry.vip.isEmpty() && entry.vip != u"Ja"_s ? FileFault::VipWord : faultOf(entry);
}

bool readStrictly(const QByteArray& bytes, SavedList& list, SavedListFault& fault)
{
    QString text;
    if (!decodeInput(bytes, text, fault))
        return false;
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        ++number;
        ClassicEntry entry;
        if (line.isEmpty())
            continue;
        if (const FileFault kind = readLine(line, list.kind, entry); kind != FileFault::None) {
            fault = {.kind = kind, .place = SavedListFault::Place::Line, .number = number};
            return false;
        }
        list.entries.push_back(entry);
    }
    if (list.entries.empty())
        fault = {.kind = FileFault::NothingInIt};
    return !list.entries.empty();
}

} // namespace

QByteArray entryLineBytes(const SavedList& list)
{
    if (list.kind == SavedKind::Phonebook)
        return phonedata::telBytes(list.entries);
    std::vector<ProviderEntry> providers;
    for (const ClassicEntry& entry : list.entries)
        providers.push_back({entry.name, entry.number});
    return phonedata::prvBytes(providers);
}

bool readEntryLines(const QByteArray& bytes, const ReadingRules& rules, SavedList& list,
                    SavedListFault& fault)
{
    list.entries.clear();
    if (rules.strictness == Strictness::Strict)
        return readStrictly(bytes, list, fault);
    if (list.kind == SavedKind::Phonebook)
        list.entries = phonedata::telEntries(bytes, rules.phoneType);
    else
        for (const ProviderEntry& entry : phonedata::prvEntries(bytes))
            list.entries.push_back({.name = entry.name, .number = entry.number});
    return true;
}

FileFault faultOf(const ClassicEntry& entry)
{
    for (const QString& text : {entry.name, entry.number, entry.date, entry.dateSound, entry.vipSound}) {
        if (text.contains(u'\r') || text.contains(u'\n'))
            return FileFault::LineEnd;
    }
    return entry.date.isEmpty() || canBeFromPhone(entry.date) ? FileFault::None : FileFault::Date;
}

const QRegularExpression& unsendable()
{
    static const QRegularExpression expression(u"[\\x{0}\\r\\n\\x{1a}\\x{1b}]"_s);
    return expression;
}

bool hasDateForm(const QString& date)
{
    static const QRegularExpression form(u"^[0-9]{2}\\.[0-9]{2}  [0-9]{2}:[0-9]{2}$"_s);
    return form.match(date).hasMatch();
}

ClassicEntry sendable(ClassicEntry entry, int phoneType, const phonedata::SoundList& sounds)
{
    for (QString ClassicEntry::*field : {&ClassicEntry::name, &ClassicEntry::number})
        (entry.*field).remove(unsendable());
    if (!hasDateForm(entry.date))
        entry.date = entry.dateSound = QString();
    const auto isUnknown = [&](const QString& sound) {
        return phonedata::GetSoundCode(sound, phoneType, sounds).isEmpty();
    };
    if (!entry.date.isEmpty() && isUnknown(entry.dateSound))
        entry.dateSound = phonedata::firstMelody.toString();
    if (!entry.vip.isEmpty() && isUnknown(entry.vipSound))
        entry.vipSound = phonedata::firstMelody.toString();
    return entry;
}

} // namespace kalmo::operations
