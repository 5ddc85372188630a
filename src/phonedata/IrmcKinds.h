#pragma once

#include <QString>

namespace kalmo::phonedata {

/// What the phone keeps below "telecom". The programs do not deal with tasks yet.
enum IrmcKind : qint32 { KindContact = 0, KindAppointment = 1, KindTask = 2, KindNote = 3 };

struct IrmcKindInfo
{
    QString object;    ///< name of the object that holds all items, in "telecom"
    QString folder;    ///< of the kind, in "telecom"; empty where it stays in "telecom"
    QString extension; ///< of a single item, with its point
    QString label;     ///< how the status bar names the store
};

/// All texts are empty for a number that is no kind.
const IrmcKindInfo& irmcKindInfo(qint32 kind);

} // namespace kalmo::phonedata
