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

using CharacterSet = std::array<bool, 256>; ///< by value in the code page

constexpr CharacterSet nameCharacters()
{
    CharacterSet set{};
    for (const Range& range : nameRanges) {
        for (int value = range.first; value <= range.last; ++value)
            set[static_cast<size_t>(value)] = true;
    }
    return set;
}

constexpr CharacterSet numberCharacters()
{
    CharacterSet set{};
    for (const char character :
         {'\b', '#', '*', '+', '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'P', 'R'})
        set[static_cast<size_t>(character)] = true;
    return set;
}

/// Importing asks this of every character of a file.
bool isIn(const CharacterSet& set, QChar character)
{
    const int value = app::cp1252Value(character.unicode());
    return value >= 0 && set[static_cast<size_t>(value)];
}

} // namespace

bool IsNameChar(QChar character)
{
    static constexpr CharacterSet set = nameCharacters();
    return isIn(set, character);
}

bool IsNumberChar(QChar character)
{
    static constexpr CharacterSet set = numberCharacters();
    return isIn(set, character);
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
