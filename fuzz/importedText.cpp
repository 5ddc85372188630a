// Fuzzes text files of an import.

#include "fuzz/Targets.h"

#include "transfer/import/Preview.h"
#include "transfer/import/TextSource.h"

namespace kalmo::fuzz {

using namespace transfer;

namespace {

/// A text opened and previewed, with every hint mended; the rows keep to their rules whatever the bytes are.
void previewText(const QByteArray& bytes, Shape shape, Encoding encoding)
{
    const QDate today(2026, 11, 21);
    const QString path = QStringLiteral("x.csv");
    const OpenedText opened = openText(path, bytes, shape, {.encoding = encoding});
    if (opened.fault != TextFault::None)
        return;
    ImportOptions options;
    options.text = opened.options;
    // Columns that nothing was recognised for, too.
    for (size_t field = 0; field < mostFields; ++field) {
        if (options.text.columns[field] == noColumn)
            options.text.columns[field] = static_cast<int>(field);
    }
    const ImportSource source{.path = path, .text = bytes};
    const Preview preview = RebuildPreview(source, shape, options, {}, today);
    for (const PreviewRow& row : preview.rows) {
        require(row.checked == row.isComplete(shape));
        for (size_t field = 0; field < fieldsOf(shape).size(); ++field) {
            if (fieldsOf(shape)[field].kind == FieldKind::Number)
                require(FilterNumber(row.cells[field]) == row.cells[field]);
        }
    }
    for (const ImportHint& hint : preview.hints) {
        require(hint.count > 0);
        options = mended(options, hint);
    }
    options.text = reopenText(path, bytes, shape, opened, options.text).options;
    RebuildPreview(source, shape, options, ExistingEntries(shape, {{QString(), QString()}}), today);
}

} // namespace

void importedText(const QByteArray& bytes)
{
    for (const Encoding encoding : {Encoding::Ansi, Encoding::Utf8, Encoding::Utf16}) {
        previewText(bytes, Shape::Classic, encoding);
        previewText(bytes, Shape::Vcard, encoding);
    }
}

} // namespace kalmo::fuzz
