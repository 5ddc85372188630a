#include "transfer/import/TextSource.h"

#include "app/Files.h"
#include "transfer/import/PreviewSources.h"

#include <QFileInfo>

#include <algorithm>

namespace kalmo::transfer {

namespace {

// A backup of the classic list has no headings of its own; this line replaces them.
constexpr QStringView classicTelLine = u"\"Name\",\"Nummer\",\"Jahrestag\"";
constexpr QStringView vcardTelLine = u"\"Nachname\",\"Telefon\",\"Jahrestag\"";

TextFault faultOfText(QByteArrayView bytes, const QString& text, Encoding encoding)
{
    if (bytes.size() > largestText)
        return TextFault::TooLarge;
    if (isBinary(bytes, encoding))
        return looksLikeUtf16(bytes) ? TextFault::UnmarkedUtf16 : TextFault::Binary;
    QStringView rest = text;
    if (takeLine(rest).isEmpty())
        return TextFault::NoFirstLine;
    qsizetype lines = 1;
    for (; !rest.isEmpty() && lines <= mostLines; ++lines)
        takeLine(rest);
    return lines > mostLines ? TextFault::TooLarge : TextFault::None;
}

bool hasTooManyColumns(const QString& text, const TextLayout& layout)
{
    RowCursor rows(text, layout);
    return rows.next() && rows.columns() > mostColumns;
}

/// The column of a heading that is wanted, or else of the first usual one.
int chosenColumn(const QStringList& headings, const QString& wanted, const ImportField& field, Shape shape)
{
    const int column = columnOf(headings, wanted);
    if (column != noColumn)
        return column;
    const bool isUnused = wanted == notUsedText && !headings.isEmpty() && mayBeUnused(shape, field.kind);
    return isUnused ? unusedColumn : columnOf(headings, field.candidates);
}

} // namespace

bool mayBeUnused(Shape shape, FieldKind kind)
{
    return shape == Shape::Vcard || kind == FieldKind::Birthday;
}

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

TextFile readTextFile(const QString& path)
{
    if (QFileInfo(path).size() > largestText)
        return {.fault = TextFault::TooLarge};
    TextFile file;
    if (!app::readWholeFile(path, file.bytes))
        return {.fault = TextFault::NotReadable};
    return file;
}

OpenedText openText(const QString& path, QByteArrayView bytes, Shape shape, const TextRequest& request)
{
    OpenedText opened{.wanted = request.headings};
    const QString text = bytes.size() > largestText ? QString() : decodeText(bytes, request.encoding);
    opened.fault = faultOfText(bytes, text, request.encoding);
    opened.options.encoding = request.encoding;
    if (opened.fault != TextFault::None)
        return opened;
    TextLayout& layout = opened.options.layout;
    const DetectedLayout detected = DetectCsvSeparator(text);
    layout.separator = request.separator.value_or(detected.separator);
    layout.filter = request.filter.value_or(detected.quoted ? u"\""_s : QString());
    const bool hasQuote = !request.filter || !request.filter->isEmpty();
    const bool readsCsv =
        !request.reading && hasQuote && !isTelFile(path) && rowsBetterReadAsCsv(text, layout) > 0;
    layout.reading = request.reading.value_or(readsCsv ? Reading::Csv : Reading::Simple);
    if (hasTooManyColumns(text, layout)) {
        opened.fault = TextFault::TooManyColumns;
        return opened;
    }
    opened.headings = headingsFor(path, text, shape, layout);
    const auto fields = fieldsOf(shape);
    for (size_t field = 0; field < fields.size(); ++field)
        opened.options.columns[field] =
            chosenColumn(opened.headings, request.headings[field], fields[field], shape);
    return opened;
}

OpenedText reopenText(const QString& path, QByteArrayView bytes, Shape shape, const OpenedText& before,
                      const TextOptions& options)
{
    TextRequest request{.encoding = options.encoding,
                        .separator = options.layout.separator,
                        .filter = options.layout.filter,
                        .reading = options.layout.reading};
    for (size_t field = 0; field < fieldsOf(shape).size(); ++field) {
        const int column = options.columns[field];
        request.headings[field] = column == noColumn       ? before.wanted[field]
                                  : column == unusedColumn ? notUsedText.toString()
                                                           : before.headings.value(column);
    }
    OpenedText opened = openText(path, bytes, shape, request);
    const bool hasSameColumns = opened.headings.size() == before.headings.size();
    auto columns = opened.options.columns;
    for (size_t field = 0; field < columns.size(); ++field) {
        if (hasSameColumns && options.columns[field] != noColumn)
            columns[field] = options.columns[field];
    }
    const TextLayout layout = opened.options.layout;
    opened.wanted = before.wanted;
    opened.options = options;
    opened.options.columns = columns;
    opened.options.layout = layout;
    return opened;
}

} // namespace kalmo::transfer
