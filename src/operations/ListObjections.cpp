#include "operations/ListObjections.h"

#include "link/PhoneModels.h"
#include "operations/EntryLines.h"
#include "phonedata/PhoneCharacters.h"
#include "phonedata/StoreTraits.h"

#include <QDate>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;
using phonedata::SoundList;
using phonedata::Store;
using What = EntryObjection::What;
using Field = EntryObjection::Field;

namespace {

/// The phones' own table accepts the backspace, which no name is meant to hold.
bool isControl(QChar character)
{
    return character.unicode() < u' ';
}

bool isPossibleDate(const QString& date)
{
    const auto number = [&date](int at) { return date.mid(at, 2).toInt(); };
    constexpr int leapYear = 2024; // the phone keeps no year
    return hasDateForm(date) && QDate::isValid(leapYear, number(3), number(0)) &&
           QTime::isValid(number(7), number(10), 0);
}

/// Collects the objections to one entry.
class Objector
{
public:
    Objector(std::vector<EntryObjection>& all, size_t index) : m_all(all), m_index(index) {}

    void add(What what, Field field, const QString& text = {}, const QString& held = {})
    {
        m_all.push_back({.index = m_index, .what = what, .field = field, .text = text, .held = held});
    }

    void checkText(Field field, const QString& text, const QString& accepted, int longest)
    {
        if (text.isEmpty())
            add(What::NoText, field);
        if (text.size() > longest)
            m_all.push_back({.index = m_index,
                             .what = What::TooLong,
                             .field = field,
                             .text = text,
                             .length = static_cast<int>(text.size()),
                             .longest = longest});
        if (const auto match = unsendable().match(text); match.hasMatch())
            add(What::NotSendable, field, match.captured());
        else if (const auto control = std::ranges::find_if(text, isControl); control != text.cend())
            add(What::Character, field, QString(*control));
        else if (accepted.size() < text.size())
            add(What::Character, field, text.mid(accepted.size(), 1));
    }

    void checkSound(Field field, const QString& sound, int phoneType, const SoundList& sounds)
    {
        if (phonedata::GetSoundCode(sound, phoneType, sounds).isEmpty())
            add(What::NoMelody, field, sound);
    }

    void checkDetails(const ClassicEntry& entry, int phoneType, const SoundList& sounds)
    {
        if (!entry.date.isEmpty()) {
            if (!isPossibleDate(entry.date))
                add(What::ImpossibleDate, Field::Date, entry.date);
            checkSound(Field::Reminder, entry.dateSound, phoneType, sounds);
        } else if (!entry.dateSound.isEmpty()) {
            add(What::ReminderWithoutDate, Field::Reminder, entry.dateSound);
        }
        if (!entry.vip.isEmpty() && !link::marksVip(phoneType))
            add(What::NoVip, Field::Vip);
        else if (!entry.vip.isEmpty())
            checkSound(Field::Vip, entry.vipSound, phoneType, sounds);
    }

private:
    std::vector<EntryObjection>& m_all;
    size_t m_index;
};

struct TextField
{
    QString ClassicEntry::*text;
    Field field;
    bool isSound;
};

constexpr std::array<TextField, 5> textFields = {{
    {&ClassicEntry::name, Field::Name, false},
    {&ClassicEntry::number, Field::Number, false},
    {&ClassicEntry::date, Field::Date, false},
    {&ClassicEntry::dateSound, Field::Reminder, true},
    {&ClassicEntry::vipSound, Field::Vip, true},
}};

/// Returns true if a field holds a melody of the phone that comes back under another name.
bool isMoved(const TextField& field, const ClassicEntry& entry, const ClassicEntry& held, int phoneType,
             const SoundList& sounds)
{
    const QString& given = entry.*field.text;
    const QString& now = held.*field.text;
    return field.isSound && given != now && !now.isEmpty() && link::countsMelodiesFromZero(phoneType) &&
           !phonedata::GetSoundCode(given, phoneType, sounds).isEmpty();
}

} // namespace

std::vector<EntryObjection> objectionsTo(const std::vector<ClassicEntry>& entries,
                                         const std::vector<ClassicEntry>& held, Store store, int phoneType,
                                         const SoundList& sounds)
{
    std::vector<EntryObjection> all;
    for (size_t index = 0; index < entries.size(); ++index) {
        const ClassicEntry& entry = entries[index];
        Objector objector(all, index);
        objector.checkText(Field::Name, entry.name, phonedata::acceptedName(entry.name),
                           phonedata::longestName);
        objector.checkText(Field::Number, entry.number, phonedata::acceptedNumber(entry.number),
                           phonedata::longestNumber);
        if (phonedata::traitsOf(store).hasDates)
            objector.checkDetails(entry, phoneType, sounds);
    }
    for (size_t index = 0; index < std::min(entries.size(), held.size()); ++index) {
        for (const TextField& field : textFields) {
            const QString& given = entries[index].*field.text;
            const QString& now = held[index].*field.text;
            if (now != given && !isMoved(field, entries[index], held[index], phoneType, sounds))
                Objector(all, index).add(What::HeldOtherwise, field.field, given, now);
        }
    }
    return all;
}

int movedMelodies(const std::vector<ClassicEntry>& entries, const std::vector<ClassicEntry>& held,
                  int phoneType, const SoundList& sounds)
{
    int count = 0;
    for (size_t index = 0; index < std::min(entries.size(), held.size()); ++index) {
        for (const TextField& field : textFields) {
            if (isMoved(field, entries[index], held[index], phoneType, sounds))
                ++count;
        }
    }
    return count;
}

} // namespace kalmo::operations
