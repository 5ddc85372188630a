#include "transfer/import/BaseLetters.h"

#include "phonedata/PhoneCharacters.h"

#include <algorithm>
#include <array>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

namespace {

struct BaseLetter
{
    QChar letter;
    QStringView base;
};

/// Letters and marks that Unicode does not decompose.
constexpr std::array<BaseLetter, 33> baseLetters = {{
    {u'Ł', u"L"},   {u'ł', u"l"},      {u'Đ', u"D"},  {u'đ', u"d"},  {u'Ħ', u"H"},  {u'ħ', u"h"},
    {u'ı', u"i"},   {u'Œ', u"OE"},     {u'œ', u"oe"}, {u'Þ', u"Th"}, {u'þ', u"th"}, {u'Ð', u"D"},
    {u'ð', u"d"},   {u'Ŧ', u"T"},      {u'ŧ', u"t"},  {u'ĸ', u"k"},  {u'ŉ', u"'n"}, {u'Ŋ', u"N"},
    {u'ŋ', u"n"},   {u'ſ', u"s"},      {u'ẞ', u"SS"}, {u'ƒ', u"f"},  {u'‘', u"'"},  {u'’', u"'"},
    {u'‚', u"'"},   {u'“', u"\""},     {u'”', u"\""}, {u'„', u"\""}, {u'–', u"-"},  {u'—', u"-"},
    {u'…', u"..."}, {u'\u00A0', u" "}, {u'´', u"'"},
}};

QString baseOf(QChar character)
{
    const auto found = std::find_if(baseLetters.begin(), baseLetters.end(),
                                    [character](const BaseLetter& row) { return row.letter == character; });
    if (found != baseLetters.end())
        return found->base.toString();
    QString kept;
    for (const QChar part : QString(character).normalized(QString::NormalizationForm_KD)) {
        if (!part.isMark())
            kept += part;
    }
    const bool fits = !kept.isEmpty() && std::all_of(kept.begin(), kept.end(), phonedata::IsNameChar);
    return fits ? kept : QString(character);
}

} // namespace

QString withBaseLetters(QStringView text)
{
    if (std::all_of(text.begin(), text.end(), phonedata::IsNameChar))
        return text.toString();
    QString result;
    for (const QChar character : text)
        result += phonedata::IsNameChar(character) ? QString(character) : baseOf(character);
    return result;
}

} // namespace kalmo::transfer
