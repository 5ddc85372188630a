#include "transfer/import/Preview.h"

#include "transfer/import/PreviewSources.h"

#include <algorithm>

namespace kalmo::transfer {

namespace {

constexpr size_t firstVcardNumber = PreviewHome;
constexpr size_t lastVcardNumber = PreviewWork;

/// Separates the texts of a key: no cell and no phone contains it.
constexpr QChar keyMark = u'\uFFFF';

void rewriteNumbers(PreviewRow& row, Shape shape, const NumberRules& rules)
{
    if (shape == Shape::Classic) {
        QString& number = row.cells[PreviewNumber];
        number = withOutsideLine(withoutCountry(number, rules), rules);
        return;
    }
    for (size_t field = firstVcardNumber; field <= lastVcardNumber; ++field)
        row.cells[field] = withOutsideLine(row.cells[field], rules);
}

void turnGreen(PreviewRow& row)
{
    row.exists = true;
    row.colours.fill(Colour::Green);
}

} // namespace

bool PreviewRow::isGreen() const
{
    return std::find(colours.begin(), colours.end(), Colour::Green) != colours.end();
}

bool PreviewRow::isComplete(Shape shape) const
{
    if (shape == Shape::Classic)
        return !cells[PreviewName].isEmpty() && !cells[PreviewNumber].isEmpty();
    return !cells[PreviewHome].isEmpty() || !cells[PreviewMobile].isEmpty() || !cells[PreviewWork].isEmpty();
}

int Preview::checkedCount() const
{
    return static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const PreviewRow& row) { return row.checked; }));
}

int Preview::existingCount() const
{
    return static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const PreviewRow& row) { return row.exists; }));
}

QString simpleUpper(QStringView text)
{
    QString upper = text.toString();
    for (QChar& character : upper)
        character = character.toUpper();
    return upper;
}

ExistingEntries::ExistingEntries(Shape shape, const std::vector<QStringList>& cells) : m_shape(shape)
{
    for (const QStringList& row : cells) {
        std::array<QString, mostFields> texts;
        for (size_t field = 0; field < mostFields; ++field)
            texts[field] = row.value(static_cast<qsizetype>(field));
        m_whole.insert(keyOf(texts.data(), false));
        m_numbers.insert(keyOf(texts.data(), true));
    }
}

QString ExistingEntries::keyOf(const QString* cells, bool byNumber) const
{
    QString key;
    if (m_shape == Shape::Classic) {
        key = cells[PreviewNumber];
        if (!byNumber)
            key += keyMark + cells[PreviewName];
    } else {
        for (size_t field = firstVcardNumber; field <= lastVcardNumber; ++field)
            key += cells[field] + keyMark;
        if (!byNumber)
            key += cells[PreviewLastName] + keyMark + cells[PreviewFirstName];
    }
    return simpleUpper(key);
}

bool ExistingEntries::contains(const PreviewRow& row, bool byNumber) const
{
    const QSet<QString>& keys = byNumber ? m_numbers : m_whole;
    return !keys.isEmpty() && keys.contains(keyOf(row.cells.data(), byNumber));
}

void judgeRow(PreviewRow& row, Shape shape)
{
    row.colours.fill(Colour::Default);
    const auto fields = fieldsOf(shape);
    for (size_t field = 0; field < fields.size(); ++field) {
        if (fields[field].longest > 0 && row.cells[field].size() > fields[field].longest)
            row.colours[field] = Colour::Red;
    }
    if (shape == Shape::Vcard || row.isComplete(shape))
        return;
    row.colours[PreviewName] = Colour::Red;
    if (!row.cells[PreviewNumber].isEmpty())
        row.colours[PreviewNumber] = Colour::Red;
}

void judgeRow(PreviewRow& row, Shape shape, const ExistingEntries& existing, bool byNumber)
{
    judgeRow(row, shape);
    row.exists = false;
    if (existing.contains(row, byNumber))
        turnGreen(row);
}

Preview RebuildPreview(const ImportSource& source, Shape shape, const ImportOptions& options,
                       const ExistingEntries& existing, QDate today, const Advance& advance)
{
    constexpr size_t rowsPerReport = 512;
    const ExistingEntries none;
    Preview preview = source.text ? previewOfText(source, shape, options, today, advance)
                                  : previewOfContacts(source, shape, options, advance);
    for (size_t index = 0; index < preview.rows.size() && preview.isWhole; ++index) {
        PreviewRow& row = preview.rows[index];
        rewriteNumbers(row, shape, options.numbers);
        judgeRow(row, shape, options.markExisting ? existing : none, options.existingByNumber);
        if (advance && index % rowsPerReport == 0)
            preview.isWhole =
                advance(static_cast<qsizetype>(index), static_cast<qsizetype>(preview.rows.size()));
    }
    if (!preview.isWhole)
        preview.rows.clear();
    selectAll(preview);
    return preview;
}

void selectAll(Preview& preview)
{
    for (PreviewRow& row : preview.rows)
        row.checked = !row.isGreen() && row.isComplete(preview.shape);
}

void selectNone(Preview& preview)
{
    for (PreviewRow& row : preview.rows)
        row.checked = false;
}

void selectRows(Preview& preview, const std::vector<size_t>& rows)
{
    for (const size_t index : rows) {
        if (index < preview.rows.size() && preview.rows[index].isComplete(preview.shape))
            preview.rows[index].checked = true;
    }
}

void deselectRows(Preview& preview, const std::vector<size_t>& rows)
{
    for (const size_t index : rows) {
        if (index < preview.rows.size())
            preview.rows[index].checked = false;
    }
}

} // namespace kalmo::transfer
