#pragma once

#include <QString>

namespace kalmo::phonedata {

/// Kinds of items below "telecom". Appointments and tasks share one object: "cal.vcs" holds both, and
/// `kalmoctl calendar read` shows both. The programs do not write tasks.
enum IrmcKind : qint32 { KindContact = 0, KindAppointment = 1, KindTask = 2, KindNote = 3 };

struct IrmcKindInfo
{
    QString object;    ///< name of the object that holds all items, in "telecom"
    QString folder;    ///< of the kind, in "telecom"; empty if it is "telecom" itself
    QString extension; ///< of a single item, with its point
    QString label;     ///< name of the store in the status bar
};

/// All texts are empty for a number that is no kind.
const IrmcKindInfo& irmcKindInfo(qint32 kind);

} // namespace kalmo::phonedata
