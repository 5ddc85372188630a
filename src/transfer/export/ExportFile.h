#pragma once

#include "app/Context.h"

#include <functional>
#include <optional>

namespace kalmo::transfer {

/// Returns true for a path into a network without a drive, "\\server", as a whole or at any place.
bool isNetworkPath(QStringView path);
/// The same, after a message.
bool isRefusedNetworkPath(app::Context& context, const QString& path);

/// Creates the folder of a file. Returns false, after a message, if that fails.
bool makeFolderOf(app::Context& context, const QString& path);

/// The path with one of the endings: the first is appended unless the path has one, in any case.
QString withEnding(const QString& path, const QStringList& endings);

/// Asks before a file is overwritten. Returns true if there is none, or if the user agrees.
bool mayOverwrite(app::Context& context, const QString& path);

/// The words of a failure: those of an export, with the number of the error, or those of any file.
enum class WriteWords { OfExport, OfFile };

/// A file that an export writes.
struct ExportFile
{
    QString path;
    QString operation;        ///< for the log: "Export2Csv"
    QString list;             ///< for the log: name of the list
    double pauseAfterOld = 0; ///< seconds between the move of an old file and the new one
    WriteWords words = WriteWords::OfExport;
};

/// Makes the content of a file. Returns nothing after a failure that it has reported.
using MakeContent = std::function<std::optional<QByteArray>()>;

/// Writes a file and replaces an old one. The old file is moved aside before the content is made, and comes
/// back unless the new one is whole and on disk. Returns false after a message.
bool writeExportFile(app::Context& context, const ExportFile& file, const MakeContent& content);

/// The message after an export to a .csv or .html file that lacks so many letters.
toolkit::Message lostLetters(qsizetype count);

} // namespace kalmo::transfer
