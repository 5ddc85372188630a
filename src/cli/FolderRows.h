#pragma once

#include "obex/clsMmc.h"

#include <QJsonArray>

namespace kalmo::cli {

/// Files and folders of the phone as JSON: `kind` ("file" or "folder"), `name`, `path`, `size` in bytes,
/// `modified`, `userPerm`, `groupPerm` ("rwd"); what the phone doesn't say is null.
QJsonObject fileJson(const obex::tObxDirEntry& entry);
QJsonArray filesJson(const QList<obex::tObxDirEntry>& entries);

/// The same as a table.
QString filesTable(const QList<obex::tObxDirEntry>& entries);

/// "812 bytes", "12.3 kB", "4.5 MB".
QString sizeText(qint64 bytes);

} // namespace kalmo::cli
