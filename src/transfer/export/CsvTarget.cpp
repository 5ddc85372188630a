#include "transfer/export/CsvTarget.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

namespace {

const QString lineEnd = u"\r\n"_s;

bool isQuoted(CsvSeparator separator)
{
    return rowOf(separator).text.contains(u'"');
}

QString replaced(QString text, QStringView part, const QString& by)
{
    return trimBlanks(text.replace(part.toString(), by));
}

QString csvLine(const QStringList& cells, CsvSeparator separator, const QString& replacement)
{
    QStringList cleaned;
    cleaned.reserve(cells.size());
    for (const QString& cell : cells)
        cleaned.append(CsvCell(cell, separator, replacement));
    const QString line = cleaned.join(rowOf(separator).text);
    return isQuoted(separator) ? u'"' + line + u'"' : line;
}

} // namespace

const QList<SeparatorRow>& separatorTable()
{
    static const QList<SeparatorRow> table = {
        {CsvSeparator::Comma, u"Komma", u"comma", u",",
         u"Als Trennzeichen ist Komma gewählt. Das Feld für die Ersatzzeichen darf kein Komma enthalten."},
        {CsvSeparator::QuotedComma, u"Komma + Anführungszeichen", u"comma-quoted", u"\",\"",
         u"Als Trennzeichen ist Komma + Anführungszeichen gewählt. Das Feld für die Ersatzzeichen darf kein "
         u"Komma und kein Anführungszeichen enthalten."},
        {CsvSeparator::Semicolon, u"Semikolon", u"semicolon", u";",
         u"Als Trennzeichen ist Semikolon gewählt. Das Feld für die Ersatzzeichen darf kein Semikolon "
         u"enthalten."},
        {CsvSeparator::QuotedSemicolon, u"Semikolon + Anführungszeichen", u"semicolon-quoted", u"\";\"",
         u"Als Trennzeichen ist Semikolon + Anführungszeichen gewählt. Das Feld für die Ersatzzeichen darf "
         u"kein Semikolon und kein Anführungszeichen enthalten."},
        {CsvSeparator::Tab, u"Tabulator", u"tab", u"\t",
         u"Als Trennzeichen ist Tabulatur gewählt. Das Feld für die Ersatzzeichen darf kein Tabulatur "
         u"enthalten."},
    };
    return table;
}

const SeparatorRow& rowOf(CsvSeparator separator)
{
    return separatorTable()[static_cast<qsizetype>(separator)];
}

bool isReplacement(QStringView text, CsvSeparator separator)
{
    const QStringView taken = rowOf(separator).text;
    return std::none_of(text.begin(), text.end(),
                        [taken](QChar character) { return taken.contains(character); });
}

QString CsvCell(const QString& text, CsvSeparator separator, const QString& replacement)
{
    const QStringView between = rowOf(separator).text;
    QString cell = replaced(text, between, replacement);
    if (!isQuoted(separator))
        return cell;
    // A quote at the edge of the cell that meets a separator within it would end the cell, too.
    cell = replaced(cell, between.first(2), replacement);
    return replaced(cell, between.last(2), replacement);
}

QByteArray csvBytes(const ExportTable& table, CsvSeparator separator, const QString& replacement)
{
    QString text;
    if (table.hasHeader())
        text += csvLine(table.headings, separator, replacement) + lineEnd;
    if (table.hasEmptyLine)
        text += lineEnd;
    for (const QStringList& row : table.rows)
        text += csvLine(row, separator, replacement) + lineEnd;
    return app::toCp1252(text);
}

} // namespace kalmo::transfer
