#pragma once

#include "link/mdlSearch.h"

namespace kalmo::link {

/// Result of the search at one port.
struct FoundAtPort
{
    enum class Kind {
        Phone,     ///< one of a known family
        Other,     ///< something that answers AT commands and is no known phone
        Nothing,   ///< nobody answered
        NotOpened, ///< `error` says why
    };

    int number = 0;
    Kind kind = Kind::Nothing;
    QString model = {}; ///< its own name; empty if it does not say
    QString error = {};
};

/// Looks for a phone at one port, at each rate in turn, which takes some seconds. Closes the port that is
/// open, asks the user nothing, closes its own port again, and leaves the session's port as it was.
FoundAtPort scanPort(Line& line, SearchView& view, app::Desktop& desktop, int number);

} // namespace kalmo::link
