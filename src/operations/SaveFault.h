#pragma once

#include <QString>

namespace kalmo::operations {

/// Reason why something could not be saved on this computer. Each program has its own words for it.
struct SaveFault
{
    enum class Kind {
        None,
        System,       ///< `detail` has the system's words, with the path where nothing else names it
        Locked,       ///< another process does not let go of the folder `detail`
        NoNumberLeft, ///< the folder `detail` holds the record with the largest number
    };

    Kind kind = Kind::None;
    QString detail = {};

    bool isNone() const { return kind == Kind::None; }
};

} // namespace kalmo::operations
