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
    /// True if it has what an import needs: a name and a number; of a contact one of its numbers.
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

/// All that the user sees ahead of an import.
struct Preview
{
    Shape shape = Shape::Classic;
    std::vector<PreviewRow> rows = {};
    std::optional<TextReading> text = {}; ///< nothing for an address book
    std::vector<ImportHint> hints = {};
    bool isWhole = true; ///< false if the user stopped the work on it

    int checkedCount() const;
    int existingCount() const;
};

/// What a preview is made of.
struct ImportSource
{
    QString path = {};
    std::optional<QByteArray> text = {}; ///< bytes of a text file, nothing for an address book
    std::vector<WabContact> contacts = {};
    QStringList skippedFiles = {}; ///< of a folder of cards
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

    /// True if one of the rows is like the given one, without regard to case: name and number, or all names
    /// and numbers of a contact; by numbers alone if `byNumber`. Three empty numbers equal three empty ones.
    bool contains(const PreviewRow& row, bool byNumber) const;

private:
    QString keyOf(const QString* cells, bool byNumber) const;

    Shape m_shape = Shape::Classic;
    QSet<QString> m_whole;
    QSet<QString> m_numbers;
};

/// The text in upper case, one character for each: "ß" stays.
QString simpleUpper(QStringView text);

/// Makes the preview: rows from the source, numbers rewritten, what is too long or incomplete in red, what is
/// there already in green, the rest checked.
Preview RebuildPreview(const ImportSource& source, Shape shape, const ImportOptions& options,
                       const ExistingEntries& existing, QDate today, const Advance& advance = {});

/// Tests the lengths of one row and colours what is too long or incomplete.
void judgeRow(PreviewRow& row, Shape shape);

/// The button "Alle": checks each row that is complete and not green, those too that are too long.
void selectAll(Preview& preview);
/// "Keiner"
void selectNone(Preview& preview);
/// "Markierte wählen": checks those of the rows that are complete.
void selectRows(Preview& preview, const std::vector<size_t>& rows);
/// "Markierte abwählen"
void deselectRows(Preview& preview, const std::vector<size_t>& rows);

} // namespace kalmo::transfer
