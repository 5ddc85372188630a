#pragma once

#include "app/Programs.h"
#include "media/Failure.h"

namespace kalmo::media {

/// The programs that convert lie in the folder "Plugins" beside ours; SoX may be that of the system, too.

/// Path of a converter. Where it is missing, the path that it should have, which `isThere` denies.
QString converterPath(const app::Context& context, const QString& name);
bool isThere(const QString& program);

/// What a run of a converter means for the file that it should have converted; nothing if it went well.
/// `fault` is that of a file that the converter refuses.
std::optional<Failure> failureOf(const app::RunResult& run, Fault fault, const QString& file,
                                 const QString& program);

} // namespace kalmo::media
