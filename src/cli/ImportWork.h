#pragma once

#include "cli/Job.h"
#include "phonedata/VcfEntry.h"
#include "transfer/import/Preview.h"

namespace kalmo::cli {

/// A file that is to be imported, with what the options say of it.
struct ImportWork
{
    transfer::Shape shape = transfer::Shape::Classic;
    transfer::ImportSource source = {};
    transfer::ImportOptions options = {};
    bool takesExisting = false;
    bool shortensNames = false;
    bool skipsTooLong = false;
};

/// Reads the file and the options. Returns nothing, after it has reported the error, for a bad file or
/// option. The command then ends with ExitWrongUse.
std::optional<ImportWork> importWork(Job& job, const QString& path, transfer::Shape shape);

/// Applies the options to the file. The checked rows are to be imported.
transfer::Preview makePreview(const ImportWork& work, const transfer::ExistingEntries& existing, QDate today,
                              const transfer::Advance& advance);

/// The list to compare with.
transfer::ExistingEntries existingEntries(const std::vector<phonedata::ClassicEntry>& entries);
transfer::ExistingEntries existingEntries(const std::vector<phonedata::tVcfEntry>& contacts);

/// The preview as JSON and as a table, and its hints as lines of warnings.
QJsonObject previewJson(const transfer::Preview& preview);
QString previewTable(const transfer::Preview& preview);
QString hintLines(const transfer::Preview& preview);

} // namespace kalmo::cli
