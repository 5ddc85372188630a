#pragma once

#include <QString>

namespace kalmo::obex {

/// Result of a request: the first byte of the phone's response, or below 0 what happened on this side.
enum ReCode : int {
    Continue = 0x90,
    ContinueNotFinal = 0x10,
    Success = 0xA0,
    SuccessNotFinal = 0x20,
    PreconditionFailed = 0xCC,
    InternalError = 0xD0,

    Timeout = -1,         ///< silence for as long as the client waits
    Cancelled = -3,       ///< by the user
    DeleteFailed = -4,    ///< a local file is in the way
    UnknownProvider = -5, ///< kept in the table, nothing returns it
    TooMuchData = -6,     ///< more than `largestObject`
    RequestTooLong = -7,  ///< the phone takes no frame of that size, or no path of that length
    ChannelNotOpen = -8,  ///< the line carries AT commands, or another exchange is under way
    ReadFailed = -9,      ///< a local file can't be read
    WriteFailed = -10,    ///< a local file can't be written
    FolderUnknown = -11,  ///< a change of the folder failed, and the phone may be in any
    NeverEnough = -12,    ///< the phone asks for more after the final frame of a file
    ChannelRefused = -13, ///< the phone stayed in its command mode
    ChannelStuck = -1212, ///< the data channel could not be closed
};

/// Largest object that is read from a phone or sent to one, in bytes. The phones hold a few megabytes; a
/// phone that never stops sending must not eat the computer's memory.
inline constexpr qint64 largestObject = 64LL * 1024 * 1024;

/// Whether a response says that the phone did what it was asked.
constexpr bool isSuccess(int code)
{
    return code == Success || code == SuccessNotFinal;
}

/// What a code means, for the user. The final bit of a response makes no difference.
QString GetFriedlyErrMsg(int code);
/// The same in English.
QString friendlyErrorEnglish(int code);

/// A code as its 16 bits in hex, without leading zeros.
QString hexCode(int code);

} // namespace kalmo::obex
