#pragma once

#include "phonedata/ClassicStore.h"

namespace kalmo::phonedata {

/// How sure the program is of the content of a store.
Certainty certaintyOf(const PhoneMemory& memory, Store store);
int entriesInPhone(const PhoneMemory& memory, Store store);
void forgetContent(PhoneMemory& memory, Store store);

/// Reads or writes a store, whichever it is.
bool readStore(const StoreJob& job, Store store);
bool writeStore(const StoreJob& job, Store store);

/// An empty list with the columns of a store.
std::unique_ptr<toolkit::ListRows> makeRows(Store store);

/// What a backup of a list, or of the store's known content, holds.
QByteArray listBytes(const toolkit::ListRows& list, Store store);
QByteArray contentBytes(const PhoneMemory& memory, Store store);

/// ".tel" or ".prv".
QString backupExtension(Store store);

/// Sees to it that what a store in the phone holds is on disk before it is erased: reads the store if its
/// content isn't known, or was read longer ago than the phone can be trusted to be the same and unchanged,
/// and saves it unless `savedBytes`, which is on disk already, is the same. Where that
/// can't be had the user decides. `path` is the copy, empty if none was needed. False: do not erase.
bool secureContent(const StoreJob& job, Store store, const QByteArray& savedBytes, QString& path);

} // namespace kalmo::phonedata
