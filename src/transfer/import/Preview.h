#pragma once

#include "transfer/import/ImportHints.h"

#include <QSet>

#include <functional>
#include <optional>

namespace kalmo::transfer {

/// Colours of texts, as 24-bit values.
enum class Colour : int {
    Default = 0,
    Red = 255,    ///< too long, or incomplete
    Green = 32768 ///< there already, or shortened
};

/// One entry or contact that may be imported.
struct PreviewRow
{
    std::array<QString, mostFields> cells = {};
    std::array<Colour, mostFields> colours = {}; ///< the first is the row's own
    bool checked = false;
    bool exists = false; ///< the phone's list has it already

    bool isGreen() const;
    /// Returns true if it has a name and a number, or as a contact one of its numbers.
    bool isComplete(Shape shape) const;
    bool operator==(const PreviewRow&) const = default;
};

/// How a text file was read.
struct TextReading
{
    TextOptions options = {};
    QStringList headings = {};

    bool operator==(const TextReading&) const = default;
};

/// The preview of an import.
struct Preview
{
    Shape shape = Shape::Classic;
    std::vector<PreviewRow> rows = {};
    std::optional<TextReading> text = {}; ///< nothing for an address book
    std::vector<ImportHint> hints = {};
    bool isWhole = true; ///< false if the user stopped it, or the file has too many lines

    int checkedCount() const;
    int existingCount() const;
};

/// The source of a preview.
struct ImportSource
{
    QString path = {};
    std::optional<QByteArray> text = {}; ///< bytes of a text file, nothing for an address book
    std::vector<WabContact> contacts = {};
    ReadingLosses losses = {};
};

/// Reports how far a long work is, and returns false to stop it.
using Advance = std::function<bool(qsizetype done, qsizetype total)>;

/// The phone's list, or a saved one in its place, looked up in constant time.
class ExistingEntries
{
public:
    ExistingEntries() = default;
    /// `cells` holds the texts of each row in the order of the preview's columns.
    ExistingEntries(Shape shape, const std::vector<QStringList>& cells);

    /// Returns true if one of the rows equals the given one in any case: name and number, or all names and
    /// numbers of a contact; numbers alone if `byNumber`. Three empty numbers equal three empty ones.
    bool contains(const PreviewRow& row, bool byNumber) const;

private:
    QString keyOf(const QString* cells, bool byNumber) const;

    Shape m_shape = Shape::Classic;
    QSet<QString> m_whole;
    QSet<QString> m_numbers;
};

/// The text in upper case, one character for each: "ß" stays.
QString simpleUpper(QStringView text);

/// Makes the preview: rows from the source with rewritten numbers. Too long or incomplete texts are red, rows
/// of the phone's list green, and complete rows that are not green are checked.
Preview RebuildPreview(const ImportSource& source, Shape shape, const ImportOptions& options,
                       const ExistingEntries& existing, QDate today, const Advance& advance = {});

/// Tests the lengths of one row and colours texts that are too long or incomplete.
void judgeRow(PreviewRow& row, Shape shape);
/// The same, and compares the row with the phone's list: one that is there is green.
void judgeRow(PreviewRow& row, Shape shape, const ExistingEntries& existing, bool byNumber);

/// The button "Alle": checks each row that is complete and not green, those too that are too long.
void selectAll(Preview& preview);
/// "Keiner"
void selectNone(Preview& preview);
/// "Markierte wählen": checks those of the rows that are complete.
void selectRows(Preview& preview, const std::vector<size_t>& rows);
/// "Markierte abwählen"
void deselectRows(Preview& preview, const std::vector<size_t>& rows);

} // namespace kalmo::transfer
