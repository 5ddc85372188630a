// The times of files on Unix.

#include "obex/cFileSystemTimes.h"

namespace kalmo::obex {

// No call of the kernel sets the birth time of a file.
bool cFileSystemTimes::SetDateCreated(const QDateTime& moment) const
{
    Q_UNUSED(moment)
    return true;
}

} // namespace kalmo::obex
