#include "phonedata/VcfText.h"

#include "app/CodePage.h"
#include "app/TextReplace.h"
#include "app/Utf8Small.h"

#include <QHash>

#include <algorithm>
#include <numeric>
#include <vector>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using app::replacedAll;

namespace {

const QChar lead(0xC3); // of the two-byte sequences that the phones' lists are written with

int hexDigit(QChar character)
{
    const char16_t code = character.unicode();
    if (code >= u'0' && code <= u'9')
        return code - u'0';
    const char16_t lower = code | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

/// Hex number of two characters as a character of the code page, 0 if they are none.
QChar characterOfHex(QChar high, QChar low)
{
    const int value = hexDigit(high) < 0 || hexDigit(low) < 0 ? 0 : hexDigit(high) * 16 + hexDigit(low);
    const char byte = static_cast<char>(value);
    return app::fromCp1252(QByteArrayView(&byte, 1)).front();
}

/// A text in which many short parts are replaced: a chain of characters, with an index of where which "="
/// sequence is. Each replacement costs the same, however long the text is.
class Sequences
{
    using Place = qint32; // objects of the phone are far smaller

public:
    explicit Sequences(const QString& text)
        : m_text(text), m_next(text.size() + 1), m_previous(text.size() + 1),
          m_end(static_cast<Place>(text.size()))
    {
        std::iota(m_next.begin(), m_next.end(), 1);
        std::iota(m_previous.begin(), m_previous.end(), -1);
        m_next[m_end] = m_end;
        for (qsizetype at = m_text.indexOf(u'='); at >= 0; at = m_text.indexOf(u'=', at + 1))
            note(static_cast<Place>(at));
    }

    QString decoded()
    {
        QString out;
        out.reserve(m_text.size());
        for (Place at = 0; at != m_end; at = m_next[at]) {
            while (m_text[at] == u'=')
                replaceAllLike(at);
            out.append(m_text[at]);
        }
        return out;
    }

private:
    // Two characters after a "=", each with one more for what is not there.
    quint64 sequenceAt(Place at) const
    {
        const auto valueOf = [this](Place index) {
            return index == m_end ? quint64(0) : quint64(m_text[index].unicode()) + 1;
        };
        const Place first = m_next[at];
        return valueOf(first) << 32 | valueOf(m_next[first]);
    }

    void note(Place at) { m_places[sequenceAt(at)].push_back(at); }

    void replaceAllLike(Place first)
    {
        const quint64 sequence = sequenceAt(first);
        const Place second = m_next[first];
        const Place third = m_next[second];
        const QChar character = third == m_end ? QChar(u'\0') : characterOfHex(m_text[second], m_text[third]);
        std::vector<Place> places = m_places.take(sequence);
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
        for (const Place at : places) {
            if (m_text[at] == u'=' && m_next[at] != gone && sequenceAt(at) == sequence)
                replace(at, character);
        }
    }

    void replace(Place at, QChar character)
    {
        for (int count = 0; count < 2 && m_next[at] != m_end; ++count) {
            const Place taken = m_next[at];
            m_next[at] = m_next[taken];
            m_previous[m_next[at]] = at;
            m_next[taken] = gone;
        }
        m_text[at] = character;
        // A "=" up to two characters before it begins another sequence now.
        Place before = at;
        for (int count = 0; count < 3 && before >= 0; ++count, before = m_previous[before]) {
            if (m_text[before] == u'=')
                note(before);
        }
    }

    static constexpr Place gone = -1;

    QString m_text;
    std::vector<Place> m_next;
    std::vector<Place> m_previous;
    Place m_end;
    QHash<quint64, std::vector<Place>> m_places; // may name places that have changed since
};

} // namespace

QString VcfEsc(const QString& text)
{
    return replacedAll(text, u";", u"\\;");
}

QString VcfUnesc(const QString& text)
{
    return replacedAll(text, u"\\;", u";");
}

QString VcfQpEnc(const QString& text)
{
    const QString encoded = app::Utf8EncC3(text);
    if (encoded == text)
        return text;
    QString out;
    for (qsizetype at = 0; at < encoded.size(); ++at) {
        if (encoded[at] != lead) {
            out.append(encoded[at]);
            continue;
        }
        const int second = app::cp1252Value(encoded[++at].unicode());
        out.append(u"=C3="_s + QString::number(second, 16).toUpper());
    }
    return out;
}

QString VcfQpDec(const QString& text, bool* endsBroken)
{
    return app::UFT8Dec(Sequences(text).decoded(), endsBroken);
}

QString VcfStripCharset(const QString& text, bool* endsBroken)
{
    const QString plain = replacedAll(text, u";CHARSET=UTF-8");
    constexpr QStringView mark = u";ENCODING=QUOTED-PRINTABLE";
    return plain.contains(mark) ? VcfQpDec(replacedAll(plain, mark), endsBroken) : plain;
}

} // namespace kalmo::phonedata
