#pragma once

#include "app/Context.h"

namespace kalmo::app {

/// Class of the operating system, 1 to 6, from its version, 0 if the version is not known. If
/// `classicNumbers` is false the platform has no such numbers, and its class is 6.
int osClassOf(const OsVersion& version, bool classicNumbers);

/// Sets `OsClass`. If the system is unknown, informs the user and ends the program.
void DetectOsClass(Context& context);

/// Finds `Paths.Storage` and `DefUserExpRoot` and makes sure that they can be written. Asks the user if they
/// can't. Returns false if the start can't go on. If the user resets the path, the program ends.
bool GetMyPaths(Context& context);

/// Default folder of the per-user data.
QString defaultStoragePath(const Platform& platform);

/// The folder for scratch files, "config/temp" below the storage folder. The window empties it when it starts
/// and when it closes.
QString workPath(const Sy& sy);

/// The folder for automatic backups.
QString backupFolder(const Sy& sy);

/// The storage path that is set. For the command line: it asks and writes nothing.
QString currentStoragePath(const Platform& platform);

} // namespace kalmo::app
