#pragma once

#include <QString>

#include <optional>

namespace kalmo::handset {

/// What goes wrong, and when. Everything counts from 1 and happens the same way each time; 0 stands for
/// never.
struct Faults
{
    int silentAfter = 0; ///< answers so many commands, and nothing more
    int hangUpAt = 0;    ///< the line drops instead of the answer to that command
    int lateAt = 0;      ///< that command is answered late
    double lateBy = 2;   ///< seconds more than usual
    int noiseAt = 0;     ///< a few bytes of noise stand before the answer to that command
    int loseByteAt = 0;  ///< the answer to that command lacks its middle byte
    bool noEcho = false;
    int readErrorAt = 0;      ///< the n-th entry that is read is refused, each time it is asked for
    int readErrorOnceAt = 0;  ///< the same, once
    int writeErrorAt = 0;     ///< the n-th entry that is written is refused, each time it is sent
    int writeErrorOnceAt = 0; ///< the same, once

    // What has happened so far.
    int commands = 0;
    int reads = 0;  ///< entries given
    int writes = 0; ///< entries taken

    bool isSilent() const { return silentAfter > 0 && commands >= silentAfter; }
};

/// Sets the fault of that name, "write-error=3" for example. What is wrong with the text, if it is wrong.
std::optional<QString> setFault(Faults& faults, const QString& text);

/// The names that setFault takes, one line each.
QString faultList();

} // namespace kalmo::handset
