#pragma once

#include <QString>

namespace kalmo::ui {

/// Why a list of the phone shows the rows that it shows.
enum class ListState {
    NotRead,
    Reading,
    Failed,
    Cancelled,
    Discarded,  ///< read, but the user did not want to see it
    Unknown,    ///< a change failed, so that the list is not what the phone holds
    NotWritten, ///< changed here, and the phone does not know it yet
    Read
};

/// Text in the place of the rows while a list of that state has none.
QString placeholderFor(ListState state);

} // namespace kalmo::ui
