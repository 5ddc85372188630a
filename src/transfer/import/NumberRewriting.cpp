#include "transfer/import/NumberRewriting.h"

#include "phonedata/PhoneCharacters.h"

#include <algorithm>

namespace kalmo::transfer {

namespace {

template <typename Test>
QString filtered(QStringView text, Test isAllowed)
{
    const auto refused = std::find_if_not(text.begin(), text.end(), isAllowed);
    if (refused == text.end())
        return text.toString();
    QString kept = text.first(refused - text.begin()).toString();
    std::copy_if(refused, text.end(), std::back_inserter(kept), isAllowed);
    return kept;
}

constexpr QStringView zeroInBrackets = u"(0)";

bool isAsciiDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

} // namespace

QString FilterNumber(QStringView text)
{
    return filtered(text, phonedata::IsNumberChar);
}

QString FilterName(QStringView text)
{
    return filtered(text, phonedata::IsNameChar);
}

bool hasZeroInBrackets(QStringView cell)
{
    const qsizetype place = cell.indexOf(zeroInBrackets);
    if (place <= 0)
        return false;
    const QString country = FilterNumber(cell.first(place));
    return country.startsWith(u'+') || country.startsWith(u"00");
}

QString numberOf(QStringView cell, const NumberRules& rules)
{
    if (!rules.dropZero || !hasZeroInBrackets(cell))
        return FilterNumber(cell);
    const qsizetype place = cell.indexOf(zeroInBrackets);
    return FilterNumber(cell.first(place)) + FilterNumber(cell.sliced(place + zeroInBrackets.size()));
}

QString withoutCountry(QString number, const NumberRules& rules)
{
    if (!rules.convertCountry)
        return number;
    const QString& country = rules.country;
    const QString dialled = QString(country).replace(u'+', u"00"_s);
    if (!country.isEmpty() && number.startsWith(country))
        number.replace(0, country.size(), u"0"_s);
    else if (!dialled.isEmpty() && number.startsWith(dialled))
        number.replace(0, dialled.size(), u"0"_s);
    if (number.startsWith(u'+'))
        number.replace(0, 1, u"00"_s);
    return number;
}

QString withOutsideLine(const QString& number, const NumberRules& rules)
{
    const bool isLongEnough = !rules.longNumbersOnly || leadingNumber(rules.minimumLength) <= number.size();
    return rules.outsideLine && !number.isEmpty() && isLongEnough ? rules.outsideDigits + number : number;
}

bool isOutsideLine(QStringView text)
{
    return isNumeric(text);
}

bool isCountryCode(QStringView text)
{
    return text.startsWith(u'+') && isNumeric(text.sliced(1)) && leadingNumber(text.sliced(1)) > 0;
}

bool isNumeric(QStringView text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isAsciiDigit);
}

int leadingNumber(QStringView text)
{
    constexpr int largest = 1'000'000;
    int value = 0;
    for (const QChar character : text.trimmed()) {
        if (!isAsciiDigit(character))
            break;
        value = std::min(value * 10 + (character.unicode() - u'0'), largest);
    }
    return value;
}

} // namespace kalmo::transfer
