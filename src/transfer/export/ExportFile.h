#pragma once

#include "app/Context.h"

#include <functional>
#include <optional>

namespace kalmo::transfer {

/// True if the path begins as one into a network without a drive, "\\server"; told to the user.
bool isRefusedNetworkPath(app::Context& context, const QString& path);

/// Makes the folder of a file. False, told to the user, if it can't be.
bool makeFolderOf(app::Context& context, const QString& path);

/// The path with the first of the endings behind it, unless it has one of them in any case.
QString withEnding(const QString& path, const QStringList& endings);

/// Asks before a file is overwritten. True if there is none, or if the user agrees.
bool mayOverwrite(app::Context& context, const QString& path);

/// A file that an export writes.
struct ExportFile
{
    QString path;
    QString operation;        ///< for the log: "Export2Csv"
    QString list;             ///< for the log: name of the list
    double pauseAfterOld = 0; ///< seconds between an old file's going and the making of the new one
};

/// The content of a file; nothing if it can't be had, which has been told.
using MakeContent = std::function<std::optional<QByteArray>()>;

/// Writes a file, in the place of an old one if there is one. The old file is moved aside before the content
/// is made, and comes back unless the new one is whole and on disk. False has been told.
bool writeExportFile(app::Context& context, const ExportFile& file, const MakeContent& content);

} // namespace kalmo::transfer
