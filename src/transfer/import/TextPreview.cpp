// The rows of a text file.

#include "phonedata/PhoneCharacters.h"
#include "transfer/import/BaseLetters.h"
#include "transfer/import/PreviewSources.h"
#include "transfer/import/TextSource.h"

#include <algorithm>

namespace kalmo::transfer {

namespace {

bool isPlainByte(char byte)
{
    return byte >= 0;
}

class TextPreview
{
public:
    TextPreview(const ImportSource& source, Shape shape, const ImportOptions& options, QDate today)
        : m_source(source), m_options(options), m_today(today), m_fields(fieldsOf(shape))
    {
        m_preview.shape = shape;
    }

    Preview make(const Advance& advance);

private:
    void readRows(const QString& text, const Advance& advance);
    PreviewRow makeRow(const RowCursor& cursor, HintCounter& hints) const;
    QString textOf(FieldKind kind, const QString& cell, HintCounter& hints) const;
    QString nameText(const QString& cell, HintCounter& hints) const;
    void hintAtReading(const QString& text);
    void hintAtQuotes(const RowCursor& cursor, int row);
    void hintAtEncoding();
    void hintAtColumns();
    bool isHeading(const RowCursor& cursor, const PreviewRow& row) const;

    const ImportSource& m_source;
    const ImportOptions& m_options;
    QDate m_today;
    std::span<const ImportField> m_fields;
    Preview m_preview;
    HintCounter m_hints;
};

Preview TextPreview::make(const Advance& advance)
{
    const QString text = decodeText(*m_source.text, m_options.text.encoding);
    m_preview.text =
        TextReading{m_options.text, headingsFor(m_source.path, text, m_preview.shape, m_options.text.layout)};
    hintAtReading(text);
    hintAtEncoding();
    hintAtColumns();
    readRows(text, advance);
    std::vector<ImportHint> hints = m_hints.hints();
    for (ImportHint& hint : hints) {
        if (hint.kind == HintKind::OtherEncoding)
            hint.encoding = detectEncoding(*m_source.text);
    }
    m_preview.hints = std::move(hints);
    return std::move(m_preview);
}

void TextPreview::readRows(const QString& text, const Advance& advance)
{
    constexpr size_t rowsPerReport = 512;
    const auto total = static_cast<qsizetype>(text.count(u'\n'));
    RowCursor cursor(text, m_options.text.layout);
    int number = 0;
    for (bool isFirst = true; cursor.next(); isFirst = false) {
        hintAtQuotes(cursor, ++number);
        HintCounter ofHeading; // its cells say nothing of the others
        PreviewRow row = makeRow(cursor, isFirst ? ofHeading : m_hints);
        const bool isHeadingRow = isFirst && isHeading(cursor, row);
        if (isFirst && m_options.text.skipHeading)
            continue;
        if (isHeadingRow && row.isComplete(m_preview.shape))
            m_hints.add(HintKind::Heading, row.cells[0]);
        else if (isFirst && !isHeadingRow)
            makeRow(cursor, m_hints);
        m_preview.rows.push_back(std::move(row));
        if (m_preview.rows.size() % rowsPerReport == 0 && advance)
            m_preview.isWhole = advance(static_cast<qsizetype>(m_preview.rows.size()), total);
        // A file may grow after it was opened.
        m_preview.isWhole = m_preview.isWhole && m_preview.rows.size() <= static_cast<size_t>(mostLines);
        if (!m_preview.isWhole)
            break;
    }
}

PreviewRow TextPreview::makeRow(const RowCursor& cursor, HintCounter& hints) const
{
    PreviewRow row;
    for (size_t field = 0; field < m_fields.size(); ++field) {
        const int column = m_options.text.columns[field];
        if (column >= 0 && column < cursor.columns())
            row.cells[field] = textOf(m_fields[field].kind, cursor.cell(column), hints);
    }
    return row;
}

QString TextPreview::textOf(FieldKind kind, const QString& cell, HintCounter& hints) const
{
    switch (kind) {
    case FieldKind::Name:
        return nameText(cell, hints);
    case FieldKind::Email: {
        const QString kept = FilterName(cell);
        hints.lookAtMail(cell, kept);
        return kept;
    }
    case FieldKind::Number:
        hints.lookAtNumber(cell, m_options.numbers);
        return numberOf(cell, m_options.numbers);
    case FieldKind::Birthday:
        break;
    }
    const DateOrder order = m_options.text.dateOrder;
    const BirthdayCell birthday = m_preview.shape == Shape::Classic
                                      ? classicBirthday(cell, order, m_today)
                                      : vcardBirthday(cell, m_options.text.defaultTime, order, m_today);
    hints.lookAtBirthday(cell, birthday, {.order = order, .needsYear = m_preview.shape == Shape::Vcard});
    return birthday.text;
}

QString TextPreview::nameText(const QString& cell, HintCounter& hints) const
{
    const QString text = m_options.baseLetters ? withBaseLetters(cell) : cell;
    const QString kept = FilterName(text);
    hints.lookAtName(text, kept);
    return kept;
}

/// Returns true if the first line is no entry: none of its numbers has more than two digits, and one has
/// letters.
bool TextPreview::isHeading(const RowCursor& cursor, const PreviewRow& row) const
{
    constexpr qsizetype mostDigits = 2;
    bool hasLetters = false;
    for (size_t field = 0; field < m_fields.size(); ++field) {
        if (m_fields[field].kind != FieldKind::Number || row.cells[field].isEmpty())
            continue;
        const QString cell = cursor.cell(m_options.text.columns[field]);
        if (std::count_if(cell.begin(), cell.end(), [](QChar character) { return character.isDigit(); }) >
            mostDigits)
            return false;
        hasLetters =
            hasLetters || std::any_of(cell.begin(), cell.end(),
                                      [](QChar character) { // those of a written number stay out
                                          return character.isLetter() && !phonedata::IsNumberChar(character);
                                      });
    }
    return hasLetters || !row.isComplete(m_preview.shape);
}

void TextPreview::hintAtReading(const QString& text)
{
    const TextLayout& layout = m_options.text.layout;
    if (layout.reading == Reading::Csv || isTelFile(m_source.path))
        return;
    const QChar separator = separatorChar(layout.separator);
    if (const int rows = rowsBetterReadAsCsv(text, layout); rows > 0)
        m_hints.add(HintKind::ReadAsCsv, rows, {});
    else if (!layout.filter.isEmpty() && text.contains(separator) &&
             !text.contains(layout.filter + separator + layout.filter))
        m_hints.add(HintKind::UnusedFilter, {});
}

/// Reports a row with quotes at a wrong place.
void TextPreview::hintAtQuotes(const RowCursor& cursor, int row)
{
    if (!cursor.isValid())
        m_hints.add(HintKind::BrokenCsv, u'#' + QString::number(row) + u' ' + cursor.cell(0));
}

/// The first word with letters beyond ASCII, as it is read and as it would be.
void TextPreview::hintAtEncoding()
{
    const QByteArray& bytes = *m_source.text;
    const Encoding likely = detectEncoding(bytes);
    const auto first = std::find_if_not(bytes.begin(), bytes.end(), isPlainByte);
    if (likely == m_options.text.encoding || first == bytes.end())
        return;
    const auto endsWord = [](char byte) {
        return isPlainByte(byte) && !QChar::isLetterOrNumber(static_cast<uchar>(byte));
    };
    const auto end = std::find_if(first, bytes.end(), endsWord);
    const auto start = std::find_if(std::make_reverse_iterator(first), bytes.rend(), endsWord).base();
    const QByteArray word(start, end - start);
    int lines = 0;
    bool isCounted = false;
    for (const char byte : bytes) {
        lines += !isPlainByte(byte) && !isCounted ? 1 : 0;
        isCounted = byte != '\n' && (isCounted || !isPlainByte(byte));
    }
    const QString example = likely == Encoding::Utf16 ? QString()
                                                      : decodeText(word, m_options.text.encoding) + u" → "_s +
                                                            decodeText(word, likely);
    m_hints.add(HintKind::OtherEncoding, lines, example);
}

void TextPreview::hintAtColumns()
{
    for (size_t field = 0; field < m_fields.size(); ++field) {
        if (m_fields[field].kind == FieldKind::Number && m_options.text.columns[field] >= 0)
            return;
    }
    m_hints.add(HintKind::NoNumberColumn, 1, {});
}

} // namespace

Preview previewOfText(const ImportSource& source, Shape shape, const ImportOptions& options, QDate today,
                      const Advance& advance)
{
    return TextPreview(source, shape, options, today).make(advance);
}

} // namespace kalmo::transfer
