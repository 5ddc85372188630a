#pragma once

#include "app/Programs.h"
#include "media/Failure.h"

namespace kalmo::media {

/// Path of a converter in the folder "Plugins" beside our program; SoX may be that of the system, too. For a
/// missing converter it is the path that it should have: `isThere` then returns false.
QString converterPath(const app::Context& context, const QString& name);
/// Returns true if the path names a program that can be started.
bool isThere(const QString& program);

/// A file that a converter works on.
struct Conversion
{
    Fault refused;   ///< the fault of a file that the converter refuses
    QString file;    ///< path of the source
    QString program; ///< path of the converter
    QString folder;  ///< where it writes
};

/// The failure that a run of a converter shows; nothing for success. A full disk is a failure even if the
/// converter reports success: SoX does, and leaves a part of the sound.
std::optional<Failure> failureOf(const app::RunResult& run, const Conversion& conversion);

} // namespace kalmo::media
