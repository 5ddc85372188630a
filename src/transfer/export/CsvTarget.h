#pragma once

#include "transfer/export/ExportTable.h"

#include <QByteArray>

namespace kalmo::transfer {

/// The separators in the order in which they are offered and stored.
enum class CsvSeparator { Comma, QuotedComma, Semicolon, QuotedSemicolon, Tab };

struct SeparatorRow
{
    CsvSeparator separator;
    QStringView caption; ///< "Semikolon + Anführungszeichen"
    QStringView word;    ///< the same on the command line: "semicolon-quoted"
    QStringView text;    ///< between two cells; with quotes in it each cell is quoted
    QStringView refusal; ///< shown where a replacement holds one of the separator's characters
};

/// All of them, each at its index.
const QList<SeparatorRow>& separatorTable();
const SeparatorRow& rowOf(CsvSeparator separator);

/// Returns true if the text may take a separator's place in the data: it holds none of its characters.
bool isReplacement(QStringView text, CsvSeparator separator);

/// A cell without the texts that would end it for a reader. Lone commas and quotes survive between quotes.
QString CsvCell(const QString& text, CsvSeparator separator, const QString& replacement);

/// The table as lines that end in CR LF, in the code page. A character that the code page lacks becomes "?".
/// The empty line holds no separator.
QByteArray csvBytes(const ExportTable& table, CsvSeparator separator, const QString& replacement);

} // namespace kalmo::transfer
