#pragma once

#include "operations/FileStates.h"

namespace kalmo::operations {

/// Deletes a file with the folder's leave only, or gives itself the right to do so first.
enum class OldFile { AsAllowed, Forced };

/// Sends a file to a place of the phone. The file that is there now is deleted first, since phones do not
/// write over one. It has to be read and recorded before: it comes back if it was deleted and the phone does
/// not take the other one.
///
/// The listing has the last word on both, also about a request without an answer and an upload that the phone
/// ended early. Done only if it shows all of the new file; Unchanged if the place is as it was before;
/// Unknown otherwise. The client reports a request that failed, but not the looks after it.
///
/// `old` is what the phone holds there, a file or nothing. `wanted` is a file; its rights are not set.
FileOutcome replaceFile(FileAccess& access, const FileState& old, const FileState& wanted, OldFile deletion);

} // namespace kalmo::operations
