#pragma once

#include "phonedata/ClassicStore.h"

namespace kalmo::phonedata {

/// Reads the provider list of a classic handset. Returns true if the store was read to its end and closed.
/// After a failure the list is empty; a store that could not even be opened leaves it as it was.
bool ReadPB_NE(const StoreJob& job);

/// Erases the provider list in the phone and writes all rows, from top to bottom. After a failure
/// `job.memory` says which entries the phone holds. Part of the described interface.
bool WritePB_NE(const StoreJob& job);

/// The same with the commands of the entries as given, and with all facts as its result.
StoreWriting writeProviders(const StoreJob& job, const StoreEntries& wanted);

/// One entry from the phone's reply to the read command.
ProviderEntry parseProviderReply(const QByteArray& reply);

/// The command that writes one entry. It ends in CR alone.
QByteArray providerWriteCommand(const ProviderEntry& entry);

} // namespace kalmo::phonedata
