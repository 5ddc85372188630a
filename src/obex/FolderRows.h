#pragma once

#include "obex/FolderListing.h"
#include "toolkit/ListRows.h"

namespace kalmo::obex {

/// Prefixes of the rows' keys, four characters each. They give the kind of the row.
inline constexpr QStringView fileKeyPrefix = u"FIL_";
inline constexpr QStringView folderKeyPrefix = u"FOL_";
inline constexpr QStringView rootKeyPrefix = u"ROT_"; ///< command row: to the root
inline constexpr QStringView upKeyPrefix = u"CDU_";   ///< command row: one folder up

/// "rwd/r": user's permissions, then the group's.
QString permissionText(int userPerm, int groupPerm);

/// Fills a list with a folder's entries in the list's own order, and with the two command rows after them. A
/// file that nobody may touch gets no row. With `endings`, which are part of the described interface, a file
/// that ends in none of them gets no row either. The first column's tag puts folders before files, the size's
/// tag orders by bytes.
void DirInLvw(const QList<tObxDirEntry>& entries, toolkit::ListRows& list,
              const QStringList* endings = nullptr);

} // namespace kalmo::obex
