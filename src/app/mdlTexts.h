#pragma once

#include <QString>

namespace kalmo::app {

/// Numbers of the message table.
enum TextId {
    TextSettingsCaption = 1011,
    TextSearching = 1036,
    TextTransferError = 2002, ///< the name of the command that failed follows it
    TextChangeInterface = 2010,
    TextCancel = 3004,
    TextSave = 3005,
};

/// Text of the message table by number; "unknow ID" for a number that the table doesn't have.
QString ResText(int id);

} // namespace kalmo::app
