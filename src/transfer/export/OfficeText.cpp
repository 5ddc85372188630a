#include "transfer/export/OfficeText.h"

namespace kalmo::transfer {

namespace {

bool isInXml(char32_t character)
{
    return character == '\t' || character == '\n' || character == '\r' ||
           (character >= 0x20 && !QChar::isSurrogate(character) && character != 0xFFFE &&
            character != 0xFFFF);
}

} // namespace

QString xmlText(const QString& text)
{
    QString clean;
    clean.reserve(text.size());
    for (const uint character : text.toUcs4()) {
        if (isInXml(character))
            clean += QStringView(QChar::fromUcs4(character));
        else
            clean += QChar(QChar::ReplacementCharacter);
    }
    return clean;
}

} // namespace kalmo::transfer
