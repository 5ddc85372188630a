#include "transfer/import/TextSource.h"

#include "transfer/import/PreviewSources.h"

#include <algorithm>

namespace kalmo::transfer {

namespace {

// A backup of the classic list has no headings of its own; these stand in, as a line of such a file.
constexpr QStringView classicTelLine = u"\"Name\",\"Nummer\",\"Jahrestag\"";
constexpr QStringView vcardTelLine = u"\"Nachname\",\"Telefon\",\"Jahrestag\"";

TextFault faultOfText(QByteArrayView bytes, const QString& text, Encoding encoding)
{
    if (bytes.size() > largestText)
        return TextFault::TooLarge;
    if (isBinary(bytes, encoding))
        return TextFault::Binary;
    QStringView rest = text;
    if (takeLine(rest).isEmpty())
        return TextFault::NoFirstLine;
    const auto ends = std::count_if(text.begin(), text.end(),
                                    [](QChar character) { return character == u'\n' || character == u'\r'; });
    return ends > 2 * mostLines ? TextFault::TooLarge : TextFault::None;
}

bool hasTooManyColumns(const QString& text, const TextLayout& layout)
{
    RowCursor rows(text, layout);
    return rows.next() && rows.columns() > mostColumns;
}

} // namespace

QStringList headingsFor(const QString& path, const QString& text, Shape shape, const TextLayout& layout)
{
    if (!isTelFile(path))
        return headingsOf(text, layout);
    return headingsOf(shape == Shape::Classic ? classicTelLine : vcardTelLine, layout);
}

bool isTelFile(const QString& path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    return dot >= 0 && simpleUpper(QStringView(path).sliced(dot + 1)) == u"TEL";
}

int columnOf(const QStringList& headings, QStringView candidates)
{
    for (const QStringView candidate : candidates.split(u'|')) {
        const auto found =
            std::find_if(headings.begin(), headings.end(), [candidate](const QString& heading) {
                return candidate.compare(heading, Qt::CaseInsensitive) == 0;
            });
        if (found != headings.end() && !candidate.isEmpty())
            return static_cast<int>(found - headings.begin());
    }
    return noColumn;
}

OpenedText openText(const QString& path, QByteArrayView bytes, Shape shape, const TextRequest& request)
{
    OpenedText opened;
    const QString text = bytes.size() > largestText ? QString() : decodeText(bytes, request.encoding);
    opened.fault = faultOfText(bytes, text, request.encoding);
    opened.options.encoding = request.encoding;
    if (opened.fault != TextFault::None)
        return opened;
    TextLayout& layout = opened.options.layout;
    const DetectedLayout detected = DetectCsvSeparator(text);
    layout.separator = request.separator.value_or(detected.separator);
    layout.filter = request.filter.value_or(detected.quoted ? u"\""_s : QString());
    const bool readsCsv = !request.reading && !isTelFile(path) && rowsBetterReadAsCsv(text, layout) > 0;
    layout.reading = request.reading.value_or(readsCsv ? Reading::Csv : Reading::Simple);
    if (hasTooManyColumns(text, layout)) {
        opened.fault = TextFault::TooManyColumns;
        return opened;
    }
    opened.headings = headingsFor(path, text, shape, layout);
    const auto fields = fieldsOf(shape);
    for (size_t field = 0; field < fields.size(); ++field) {
        const int wanted = columnOf(opened.headings, request.headings[field]);
        opened.options.columns[field] =
            wanted != noColumn ? wanted : columnOf(opened.headings, fields[field].candidates);
    }
    return opened;
}

OpenedText reopenText(const QString& path, QByteArrayView bytes, Shape shape, const TextOptions& options)
{
    OpenedText opened = openText(path, bytes, shape,
                                 {.encoding = options.encoding,
                                  .separator = options.layout.separator,
                                  .filter = options.layout.filter,
                                  .reading = options.layout.reading});
    const auto columns = opened.options.columns;
    const TextLayout layout = opened.options.layout;
    opened.options = options;
    opened.options.columns = columns;
    opened.options.layout = layout;
    return opened;
}

} // namespace kalmo::transfer
