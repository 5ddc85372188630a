#pragma once

#include "app/Sizes.h"
#include "toolkit/Dialogs.h"

#include <QString>

namespace kalmo::obex {

/// Result of a request: the first byte of the phone's response, or a number below 0 for an event on this
/// side.
enum ReCode : int {
    Continue = 0x90,
    ContinueNotFinal = 0x10,
    Success = 0xA0,
    SuccessNotFinal = 0x20,
    NotFound = 0xC4,
    PreconditionFailed = 0xCC,
    InternalError = 0xD0,

    Timeout = -1,         ///< no answer within the client's timeout
    Cancelled = -3,       ///< by the user
    DeleteFailed = -4,    ///< a local file could not be deleted
    UnknownProvider = -5, ///< nothing returns it; kept in the table
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
/// phone that never stops sending must not fill the computer's memory.
inline constexpr qint64 largestObject = 64 * app::megabyte;

/// Returns true if a response reports success.
constexpr bool isSuccess(int code)
{
    return code == Success || code == SuccessNotFinal;
}

/// Text of a code for the user. The final bit of a response makes no difference.
QString GetFriedlyErrMsg(int code);
/// Does the same in English, as a part of a sentence.
QString friendlyErrorEnglish(int code);

/// The box about a request that ended with a code.
toolkit::Message failureMessage(int code);

/// A code as its 16 bits in hex, without leading zeros.
QString hexCode(int code);

} // namespace kalmo::obex
