#include "handset/classic/ClassicWire.h"

#include "app/CodePage.h"

#include <QDate>

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;
using app::fromCp1252;
using app::toCp1252;

namespace {

struct Range
{
    uchar first;
    uchar last;
};

// Characters that the display of these handsets can't show.
constexpr Range refusedInNames[] = {
    {0, 31},    {91, 94},   {96, 96},   {123, 160}, {162, 162}, {166, 166}, {168, 190}, {192, 195},
    {200, 200}, {202, 208}, {210, 213}, {215, 215}, {217, 219}, {221, 222}, {225, 227}, {231, 231},
    {234, 235}, {237, 240}, {243, 245}, {247, 247}, {249, 251}, {253, 255},
};

bool canShow(const QByteArray& name)
{
    return std::all_of(name.begin(), name.end(), [](char character) {
        const auto value = static_cast<uchar>(character);
        return std::none_of(std::begin(refusedInNames), std::end(refusedInNames),
                            [value](Range range) { return value >= range.first && value <= range.last; });
    });
}

bool canDial(const QByteArray& number)
{
    constexpr QByteArrayView dialable = "0123456789*#PR";
    const qsizetype start = number.startsWith('+') ? 1 : 0;
    return std::all_of(number.begin() + start, number.end(),
                       [&](char character) { return dialable.contains(character); });
}

/// Takes "<length>,<value>" and the comma after it off the front.
std::optional<QByteArray> takeField(QByteArray& text)
{
    const qsizetype comma = text.indexOf(',');
    bool ok = false;
    const int length = text.first(std::max<qsizetype>(comma, 0)).toInt(&ok);
    if (!ok || length < 0 || comma + 1 + length > text.size())
        return std::nullopt;
    const QByteArray value = text.mid(comma + 1, length);
    text.remove(0, comma + 1 + length);
    if (!text.isEmpty() && !text.startsWith(','))
        return std::nullopt;
    text.remove(0, 1);
    return value;
}

/// The first family has no year in its dates. The others have two digits, which mean none.
qsizetype yearDigits(int family)
{
    return family == 1 ? 0 : 2;
}

bool isSound(const QByteArray& code)
{
    bool ok = false;
    return code == "S" || (code.toUInt(&ok) < 1000 && ok);
}

bool takeDate(QByteArray date, int family, ClassicEntry& entry)
{
    date.remove(0, yearDigits(family));
    if (date.size() < 9 || (family == 1 && date.size() != 9))
        return false;
    const auto number = [&](int at) { return date.mid(at, 2).toInt(); };
    const bool digits =
        std::all_of(date.begin(), date.begin() + 8, [](char c) { return c >= '0' && c <= '9'; });
    // 2000 was a leap year, so 29 February is accepted.
    if (!digits || !QDate(2000, number(0), number(2)).isValid() || !QTime(number(4), number(6)).isValid())
        return false;
    if (!isSound(date.sliced(8)))
        return false;
    entry.day = fromCp1252(date.first(8));
    entry.reminder = fromCp1252(date.sliced(8));
    return true;
}

/// The text after the date: nothing, or "1,<sound>" for a VIP.
bool takeVip(const QByteArray& text, ClassicEntry& entry)
{
    if (text.isEmpty())
        return true;
    if (!text.startsWith("1,") || !isSound(text.sliced(2)))
        return false;
    entry.vip = true;
    entry.vipSound = fromCp1252(text.sliced(2));
    return true;
}

EntryFault takeDetails(QByteArray text, int family, ClassicEntry& entry)
{
    const auto date = takeField(text);
    if (!date)
        return EntryFault::Malformed;
    if (!date->isEmpty() && !takeDate(*date, family, entry))
        return EntryFault::BadDate;
    if (family == 1 ? !text.isEmpty() : !takeVip(text, entry))
        return EntryFault::Malformed;
    return EntryFault::None;
}

QByteArray lengthPrefixed(const QByteArray& text)
{
    return QByteArray::number(text.size()) + ',' + text;
}

QByteArray dateText(const ClassicEntry& entry, int family)
{
    if (entry.day.isEmpty())
        return {};
    QByteArray sound = toCp1252(entry.reminder);
    if (family == 1)
        sound = sound.size() == 1 ? sound : "1"; // the only sounds it has are one character long
    return QByteArray(yearDigits(family), '0') + toCp1252(entry.day) + sound;
}

} // namespace

ParsedEntry parseEntry(const QByteArray& argument, StoreKind kind, int family)
{
    QByteArray text = argument;
    const auto name = takeField(text);
    const auto number = name ? takeField(text) : std::nullopt;
    if (!number)
        return {EntryFault::Malformed};
    ClassicEntry entry{.name = fromCp1252(*name), .number = fromCp1252(*number)};
    const EntryFault fault = kind == StoreKind::Phonebook ? takeDetails(text, family, entry)
                             : text.isEmpty()             ? EntryFault::None
                                                          : EntryFault::Malformed;
    if (fault != EntryFault::None)
        return {fault};
    if (name->size() > longestName || number->size() > longestNumber)
        return {EntryFault::TooLong};
    if (!canShow(*name) || !canDial(*number))
        return {EntryFault::BadCharacter};
    return {EntryFault::None, entry};
}

QByteArray entryText(const ClassicEntry& entry, StoreKind kind, int family)
{
    QByteArray text = entry.name.isEmpty() ? QByteArray(",") : lengthPrefixed(toCp1252(entry.name));
    text += ',' + lengthPrefixed(toCp1252(entry.number));
    if (kind == StoreKind::Providers)
        return text;
    const QByteArray date = dateText(entry, family);
    text += ',' + lengthPrefixed(date);
    if (family != 1)
        text += entry.vip ? ",1," + toCp1252(entry.vipSound) : QByteArray(",0,");
    return text;
}

} // namespace kalmo::handset
