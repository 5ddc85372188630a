#include "app/CodePage.h"

#include <array>

namespace kalmo::app {

namespace {

// Values 128 to 159 of Windows-1252, from the Unicode consortium's mapping table CP1252.TXT; the holes map to
// themselves.
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr int firstControl = 0x80;
constexpr int lastControl = 0x9F;

} // namespace

QString fromCp1252(QByteArrayView bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar& character : text) {
        const char16_t value = character.unicode();
        if (value >= firstControl && value <= lastControl)
            character = QChar(upperControls[value - firstControl]);
    }
    return text;
}

int cp1252Value(char32_t character)
{
    if (character < firstControl || (character > lastControl && character <= 0xFF))
        return static_cast<int>(character);
    for (size_t index = 0; index < upperControls.size(); ++index) {
        if (upperControls[index] == character)
            return firstControl + static_cast<int>(index);
    }
    return -1;
}

QByteArray toCp1252(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype index = 0; index < text.size(); ++index) {
        char32_t character = text[index].unicode();
        if (text[index].isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate())
            character = QChar::surrogateToUcs4(text[index], text[index + 1]);
        if (character > 0xFFFF)
            ++index; // both halves are one character
        const int value = cp1252Value(character);
        bytes.append(value < 0 ? '?' : static_cast<char>(value));
    }
    return bytes;
}

bool fitsCp1252(QStringView text)
{
    for (const QChar character : text) {
        if (cp1252Value(character.unicode()) < 0)
            return false;
    }
    return true;
}

} // namespace kalmo::app
