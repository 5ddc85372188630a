#include "transfer/import/CsvText.h"

#include <algorithm>

namespace kalmo::transfer {

namespace {

constexpr int guessedLines = 4;
constexpr QChar csvQuote = u'"';

bool isLineEnd(QChar character)
{
    return character == u'\n' || character == u'\r';
}

/// Removes a line end at the start of a text.
void skipLineEnd(QStringView& text)
{
    if (text.startsWith(u"\r\n"))
        text = text.sliced(2);
    else if (!text.isEmpty() && isLineEnd(text.front()))
        text = text.sliced(1);
}

} // namespace

QChar separatorChar(Separator separator)
{
    switch (separator) {
    case Separator::Comma:
        return u',';
    case Separator::Semicolon:
        return u';';
    case Separator::Tab:
        break;
    }
    return u'\t';
}

QChar csvQuoteOf(const TextLayout& layout)
{
    return layout.filter.size() == 1 ? layout.filter.front() : csvQuote;
}

QStringView takeLine(QStringView& text)
{
    const QStringView line = text.first(std::find_if(text.begin(), text.end(), isLineEnd) - text.begin());
    text = text.sliced(line.size());
    skipLineEnd(text);
    return line;
}

qsizetype CountOccurrences(QStringView text, QStringView needle)
{
    qsizetype count = 0;
    for (qsizetype place = text.indexOf(needle); place >= 0; place = text.indexOf(needle, place + 1))
        ++count;
    return count;
}

DetectedLayout DetectCsvSeparator(QStringView text)
{
    qsizetype commas = 0;
    qsizetype semicolons = 0;
    qsizetype tabs = 0;
    qsizetype quotes = 0;
    for (int line = 0; line < guessedLines && !text.isEmpty(); ++line) {
        for (const QChar character : takeLine(text)) {
            commas += character == u',' ? 1 : 0;
            semicolons += character == u';' ? 1 : 0;
            tabs += character == u'\t' ? 1 : 0;
            quotes += character == csvQuote ? 1 : 0;
        }
    }
    if (commas > semicolons && tabs <= commas)
        return {Separator::Comma, quotes > commas};
    if ((commas > semicolons || tabs > commas) && tabs >= semicolons)
        return {Separator::Tab, quotes > tabs};
    return {Separator::Semicolon, quotes >= semicolons};
}

QStringList headingsOf(QStringView text, const TextLayout& layout)
{
    QStringList headings;
    if (layout.reading == Reading::Csv) {
        RowCursor rows(text, layout);
        if (rows.next()) {
            for (qsizetype column = 0; column < rows.columns(); ++column)
                headings.append(rows.cell(column).simplified());
        }
        return headings;
    }
    QString line = takeLine(text).toString();
    for (const QChar character : layout.filter)
        line.remove(character);
    const QChar separator = separatorChar(layout.separator);
    const qsizetype separators = line.count(separator);
    return separators > 0 && separators < mostColumns ? line.split(separator) : headings;
}

RowCursor::RowCursor(QStringView text, const TextLayout& layout)
    : m_rest(text), m_separator(separatorChar(layout.separator)),
      m_filter(layout.reading == Reading::Simple ? layout.filter : QString()),
      m_needle(m_filter + m_separator + m_filter), m_quote(csvQuoteOf(layout)), m_reading(layout.reading)
{
}

bool RowCursor::next()
{
    m_cells.clear();
    m_unquoted.clear();
    m_valid = true;
    return m_reading == Reading::Simple ? nextSimple() : nextCsv();
}

QString RowCursor::cell(qsizetype column) const
{
    if (column < 0 || column >= static_cast<qsizetype>(m_cells.size()))
        return {};
    QString text = m_cells[static_cast<size_t>(column)].toString();
    return m_filter.isEmpty() ? text : text.remove(m_filter);
}

void RowCursor::keep(QStringView cell)
{
    const qsizetype most = m_columns == 0 ? mostColumns + 1 : m_columns;
    if (static_cast<qsizetype>(m_cells.size()) < most)
        m_cells.push_back(cell);
}

bool RowCursor::nextSimple()
{
    QStringView line;
    while (line.isEmpty()) {
        if (m_rest.isEmpty())
            return false;
        line = takeLine(m_rest);
    }
    if (m_columns == 0)
        m_columns = std::min(line.count(m_separator), mostColumns) + 1;
    const QStringView needle = m_needle;
    qsizetype start = 0;
    for (qsizetype place = 0; place >= 0 && static_cast<qsizetype>(m_cells.size()) < m_columns;) {
        place = needle.size() == 1 ? line.indexOf(m_separator, start) : line.indexOf(needle, start);
        keep(place < 0 ? line.sliced(start) : line.sliced(start, place - start));
        start = place + needle.size();
    }
    return true;
}

bool RowCursor::nextCsv()
{
    while (!m_rest.isEmpty() && isLineEnd(m_rest.front()))
        skipLineEnd(m_rest);
    if (m_rest.isEmpty())
        return false;
    while (takeCsvCell()) {
    }
    if (m_columns == 0)
        m_columns = static_cast<qsizetype>(m_cells.size());
    return true;
}

/// Takes one cell and its end. Returns false if it was the last of the row.
bool RowCursor::takeCsvCell()
{
    if (m_rest.startsWith(m_quote)) {
        takeQuotedCell();
    } else {
        const auto end = std::find_if(m_rest.begin(), m_rest.end(), [this](QChar character) {
            m_valid = m_valid && character != m_quote;
            return character == m_separator || isLineEnd(character);
        });
        keep(m_rest.first(end - m_rest.begin()));
        m_rest = m_rest.sliced(end - m_rest.begin());
    }
    const bool goesOn = m_rest.startsWith(m_separator);
    if (goesOn)
        m_rest = m_rest.sliced(1);
    else
        skipLineEnd(m_rest);
    return goesOn;
}

void RowCursor::takeQuotedCell()
{
    qsizetype start = 1;
    qsizetype close = m_rest.indexOf(m_quote, start);
    const auto isDoubled = [this](qsizetype place) {
        return place >= 0 && place + 1 < m_rest.size() && m_rest[place + 1] == m_quote;
    };
    if (close >= 0 && !isDoubled(close)) {
        keep(m_rest.sliced(start, close - start));
        m_rest = m_rest.sliced(close + 1);
    } else {
        QString cell;
        for (; isDoubled(close); close = m_rest.indexOf(m_quote, start)) {
            cell += m_rest.sliced(start, close + 1 - start);
            start = close + 2;
        }
        cell += close < 0 ? m_rest.sliced(start) : m_rest.sliced(start, close - start);
        m_valid = m_valid && close >= 0;
        m_rest = close < 0 ? QStringView() : m_rest.sliced(close + 1);
        m_unquoted.push_back(cell);
        keep(m_unquoted.back());
    }
    // The cell has to end after the closing quote; other characters there are skipped.
    const auto end = std::find_if(m_rest.begin(), m_rest.end(), [this](QChar character) {
        return character == m_separator || isLineEnd(character);
    });
    m_valid = m_valid && end == m_rest.begin();
    m_rest = m_rest.sliced(end - m_rest.begin());
}

int rowsBetterReadAsCsv(QStringView text, const TextLayout& layout)
{
    if (!text.contains(csvQuoteOf(layout)))
        return 0;
    RowCursor csv(text, {.separator = layout.separator, .filter = layout.filter, .reading = Reading::Csv});
    RowCursor simple(text, {.separator = layout.separator, .filter = layout.filter});
    int different = 0;
    while (csv.next() && csv.isValid()) {
        bool isSame = simple.next();
        for (qsizetype column = 0; isSame && column < csv.columns(); ++column)
            isSame = csv.cell(column) == simple.cell(column);
        different += isSame ? 0 : 1;
    }
    return csv.isValid() ? different : 0;
}

} // namespace kalmo::transfer
