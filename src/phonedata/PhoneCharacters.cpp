#include "phonedata/PhoneCharacters.h"

#include "app/CodePage.h"

#include <array>

namespace kalmo::phonedata {

namespace {

struct Range
{
    int first;
    int last;
};

// Values in the code page; 8 is the backspace key.
constexpr std::array<Range, 22> nameRanges = {{
    {8, 8},     {32, 90},   {95, 95},   {97, 122},  {161, 161}, {163, 165}, {167, 167}, {191, 191},
    {196, 199}, {201, 201}, {209, 209}, {214, 214}, {216, 216}, {220, 220}, {223, 224}, {228, 230},
    {232, 233}, {236, 236}, {241, 242}, {246, 246}, {248, 248}, {252, 252},
}};

} // namespace

bool IsNameChar(QChar character)
{
    const int value = app::cp1252Value(character.unicode());
    for (const Range& range : nameRanges) {
        if (value >= range.first && value <= range.last)
            return true;
    }
    return false;
}

bool IsNumberChar(QChar character)
{
    return QStringView(u"\b#*+0123456789PR").contains(character);
}

QString acceptedName(const QString& text)
{
    qsizetype length = 0;
    while (length < text.size() && IsNameChar(text[length]))
        ++length;
    return text.first(length);
}

QString acceptedNumber(const QString& text)
{
    qsizetype length = text.startsWith(u'+') ? 1 : 0;
    while (length < text.size() && QStringView(u"*PR#0123456789").contains(text[length]))
        ++length;
    return text.first(length);
}

} // namespace kalmo::phonedata
