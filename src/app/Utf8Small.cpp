#include "app/Utf8Small.h"

#include "app/CodePage.h"

namespace kalmo::app {

namespace {

constexpr int lead = 0xC3;
constexpr int offset = 64;
constexpr int highestSecond = 191;
constexpr int firstEncoded = 128;

int valueOf(QChar character)
{
    const int value = cp1252Value(character.unicode());
    return value < 0 ? '?' : value;
}

QChar characterOf(int value)
{
    const char byte = static_cast<char>(value);
    return fromCp1252(QByteArrayView(&byte, 1)).front();
}

} // namespace

QString UFT8Dec(const QString& bytes, bool* endsBroken)
{
    QString text;
    text.reserve(bytes.size());
    bool afterLead = false;
    for (qsizetype index = 0; index < bytes.size(); ++index) {
        const QChar character = bytes[index];
        if (!afterLead) {
            afterLead = character == QChar(lead);
            if (!afterLead)
                text.append(character);
            continue;
        }
        const int value = valueOf(character);
        if (value > highestSecond) {
            afterLead = index + 1 < bytes.size(); // the lead waits for the next one; at the end both are lost
        } else if (value + offset != lead) {
            text.append(characterOf(value + offset));
            afterLead = false;
        }
    }
    if (afterLead)
        text.append(QChar(lead));
    if (endsBroken)
        *endsBroken = afterLead;
    return text;
}

QString Utf8EncC3(const QString& text)
{
    QString bytes;
    bytes.reserve(text.size());
    for (const QChar character : text) {
        const int value = valueOf(character);
        if (value >= firstEncoded)
            bytes.append(QChar(lead));
        bytes.append(characterOf(value < firstEncoded ? value : value - offset));
    }
    return bytes;
}

} // namespace kalmo::app
