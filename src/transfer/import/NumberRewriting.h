#pragma once

#include <QString>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

/// Characters of the longest country's code, with its "+", and of the longest digits for an outside line.
inline constexpr int longestCountry = 4;
inline constexpr int longestOutsideLine = 3;

/// How numbers that people have written become numbers that a handset can dial.
struct NumberRules
{
    bool convertCountry = true; ///< `chk49_00`: the own country's code becomes "0", another "+" becomes "00"
    QString country = u"+49"_s; ///< `txtCountry`
    bool outsideLine = false;   ///< `chkAmt`: digits in front of each number
    QString outsideDigits = u"0"_s; ///< `txtAmt`
    bool longNumbersOnly = false;   ///< `chkAmtNurWenn`: only if a number has the minimum length
    QString minimumLength = u"3"_s; ///< `cmbAmtMinLen`, read up to its first character that is no digit
    bool dropZero = false;          ///< takes the "(0)" out of "+49 (0) 221"

    bool operator==(const NumberRules&) const = default;
};

/// The text without the characters that a number, or a name, can't have.
QString FilterNumber(QStringView text);
QString FilterName(QStringView text);

/// FilterNumber() of a cell, without the "(0)" if the rules drop it.
QString numberOf(QStringView cell, const NumberRules& rules);

/// Returns true if a cell has a country's code and a "(0)" after it: filtered, it is a call abroad or a
/// wrong number.
bool hasZeroInBrackets(QStringView cell);

/// A filtered number with the country's code at its start replaced.
QString withoutCountry(QString number, const NumberRules& rules);

/// A number with the digits for an outside line. An empty one stays empty.
QString withOutsideLine(const QString& number, const NumberRules& rules);

/// Returns true if a text can be the digits for an outside line: ASCII digits only.
bool isOutsideLine(QStringView text);
/// Returns true if a text can be a country's code: "+" and a number above 0.
bool isCountryCode(QStringView text);

/// Returns true if a text is ASCII digits only, and at least one.
bool isNumeric(QStringView text);
/// Value of the digits that a text begins with, 0 if there are none; held at a million.
int leadingNumber(QStringView text);

} // namespace kalmo::transfer
