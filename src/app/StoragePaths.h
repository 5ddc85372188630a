#pragma once

#include "app/Context.h"

namespace kalmo::app {

/// Class of the operating system, 1 to 6, from its version; 0 if the version is not known.
/// `classicNumbers` false is a platform without these numbers, which is class 6.
int osClassOf(const OsVersion& version, bool classicNumbers);

/// Sets `OsClass`, or tells the user that the system is unknown and ends the program.
void DetectOsClass(Context& context);

/// Finds `Paths.Storage` and `DefUserExpRoot` and makes sure that they can be written, asking the user where
/// they can't. False if the start can't go on; a path that the user resets ends the program.
bool GetMyPaths(Context& context);

/// Where the per-user data lies by default.
QString defaultStoragePath(const Platform& platform);

/// The storage path that is set, found without asking or writing anything. For the command line.
QString currentStoragePath(const Platform& platform);

} // namespace kalmo::app
