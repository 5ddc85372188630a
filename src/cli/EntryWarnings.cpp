#include "cli/EntryWarnings.h"

#include "cli/Tables.h"
#include "link/PhoneModels.h"
#include "phonedata/PhoneCharacters.h"

#include <QDate>
#include <QTime>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::Entries;
using phonedata::ClassicEntry;
using phonedata::Store;

namespace {

constexpr int mostLines = 20;

void warnOfText(QStringList& warnings, const QString& what, const QString& text, const QString& accepted,
                int longest)
{
    if (text.isEmpty())
        warnings.append(u"there is no %1"_s.arg(what));
    if (text.size() > longest)
        warnings.append(
            u"the %1 has %2 characters, the phone holds %3"_s.arg(what).arg(text.size()).arg(longest));
    if (accepted.size() < text.size())
        warnings.append(
            u"the phone can't hold \"%1\" in a %2"_s.arg(printable(text.mid(accepted.size(), 1)), what));
}

void warnOfSound(QStringList& warnings, const QString& what, const QString& sound, int phoneType,
                 const phonedata::SoundList& sounds)
{
    if (phonedata::GetSoundCode(sound, phoneType, sounds).isEmpty())
        warnings.append(u"the phone has no melody \"%1\" for the %2"_s.arg(printable(sound), what));
}

bool isPossible(const QString& date)
{
    const auto number = [&date](int at) { return date.mid(at, 2).toInt(); };
    constexpr int leapYear = 2024; // the phone keeps no year
    return QDate::isValid(leapYear, number(3), number(0)) && QTime::isValid(number(7), number(10), 0);
}

QStringList alterations(const ClassicEntry& entry, const ClassicEntry& held)
{
    QStringList warnings;
    for (QString ClassicEntry::*field : {&ClassicEntry::name, &ClassicEntry::number, &ClassicEntry::date,
                                         &ClassicEntry::dateSound, &ClassicEntry::vipSound}) {
        const QString now = held.*field;
        if (now != entry.*field)
            warnings.append(u"the phone will hold %1 instead of \"%2\""_s.arg(
                now.isEmpty() ? u"nothing"_s : u'"' + printable(now) + u'"', printable(entry.*field)));
    }
    return warnings;
}

} // namespace

QStringList warningsAbout(const ClassicEntry& entry, Store store, int phoneType,
                          const phonedata::SoundList& sounds)
{
    QStringList warnings;
    warnOfText(warnings, u"name"_s, entry.name, phonedata::acceptedName(entry.name), phonedata::longestName);
    warnOfText(warnings, u"number"_s, entry.number, phonedata::acceptedNumber(entry.number),
               phonedata::longestNumber);
    if (store == Store::Providers)
        return warnings;
    if (!entry.date.isEmpty()) {
        if (!isPossible(entry.date))
            warnings.append(u"\"%1\" is no day and time"_s.arg(printable(entry.date)));
        warnOfSound(warnings, u"reminder"_s, entry.dateSound, phoneType, sounds);
    } else if (!entry.dateSound.isEmpty()) {
        warnings.append(u"a reminder needs a date"_s);
    }
    if (!entry.vip.isEmpty() && !link::marksVip(phoneType))
        warnings.append(u"this phone marks no VIP entries"_s);
    else if (!entry.vip.isEmpty())
        warnOfSound(warnings, u"VIP call"_s, entry.vipSound, phoneType, sounds);
    return warnings;
}

QString warningLines(const Entries& entries, const Entries& held, Store store, int phoneType,
                     const phonedata::SoundList& sounds)
{
    QString text;
    int count = 0;
    const auto warn = [&](size_t index, const QStringList& warnings) {
        for (const QString& warning : warnings) {
            if (++count <= mostLines)
                text += u"Warning: entry %1 (%2): %3.\n"_s.arg(QString::number(index + 1),
                                                               printable(entries[index].name), warning);
        }
    };
    for (size_t index = 0; index < entries.size(); ++index)
        warn(index, warningsAbout(entries[index], store, phoneType, sounds));
    for (size_t index = 0; index < entries.size();
         ++index) // which are many where a phone shifts its melodies
        warn(index, alterations(entries[index], held[index]));
    if (count > mostLines)
        text += u"... and %1 more warnings.\n"_s.arg(count - mostLines);
    return text;
}

} // namespace kalmo::cli
