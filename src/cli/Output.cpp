#include "cli/Output.h"

#include "cli/Tables.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>

namespace kalmo::cli {

using namespace Qt::StringLiterals;

namespace {

QByteArray jsonBytes(const QJsonValue& value)
{
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    // The writer of the toolkit leaves the control characters from 0x7F on as they are, and terminals obey
    // them.
    QString text;
    for (const QChar character : QString::fromUtf8(document.toJson(QJsonDocument::Indented))) {
        const bool isControl = character.category() == QChar::Other_Control && character > u'~';
        text += isControl ? u"\\u%1"_s.arg(int{character.unicode()}, 4, 16, QChar(u'0')) : QString(character);
    }
    return text.toUtf8();
}

} // namespace

Output::Output(Sink sink, const Manner& manner)
    : m_sink(std::move(sink)), m_manner(manner), m_encoder(manner.encoding.constData())
{
    if (!m_encoder.isValid())
        m_encoder = QStringEncoder(QStringEncoder::Utf8);
}

QByteArray Output::encoded(const QString& text)
{
    QByteArray bytes = m_encoder(text);
    return bytes.replace('\x1a', '?'); // some encodings put it for a character that they lack
}

void Output::show(const QJsonValue& value, const QString& text)
{
    if (isJson())
        toOut(jsonBytes(value));
    else
        print(text);
}

void Output::print(const QString& text)
{
    toOut(encoded(printableLines(text)));
}

void Output::note(const QString& text)
{
    if (!m_manner.quiet)
        toErr(text);
}

void Output::error(const QString& text)
{
    toErr(u"kalmoctl: "_s + text + (text.endsWith(u'\n') ? u""_s : u"\n"_s));
}

void Output::prompt(const QString& text)
{
    toErr(text);
}

void Output::progress(const QString& line)
{
    if (m_manner.progressWidth <= 0 || (line.isEmpty() && m_progressLength == 0))
        return;
    // Blanks instead of an escape sequence: every terminal understands them.
    const QString shown = printable(line).left(m_manner.progressWidth - 1);
    QString text = u'\r' + shown.leftJustified(m_progressLength);
    if (shown.isEmpty())
        text += u'\r';
    m_progressLength = shown.size();
    m_sink(Stream::Err, encoded(text));
}

void Output::toErr(const QString& text)
{
    progress({});
    m_sink(Stream::Err, encoded(printableLines(text)));
}

void Output::toOut(const QByteArray& bytes)
{
    progress({});
    if (m_readerGone || !m_complete)
        return;
    const int fault = m_sink(Stream::Out, bytes);
    m_readerGone = isBrokenPipe(fault);
    if (fault == 0 || m_readerGone)
        return;
    m_complete = false;
    error(u"could not write the result: "_s + QString::fromLocal8Bit(std::strerror(fault)));
}

} // namespace kalmo::cli
