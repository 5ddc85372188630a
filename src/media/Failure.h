#pragma once

#include "toolkit/Dialogs.h"

#include <optional>

namespace kalmo::media {

enum class Fault {
    NoSource,     ///< the file isn't there
    NotReadable,  ///< no right to read the file, or a bad disk
    NotFit,       ///< no file of that ending goes to such a folder
    NoFolder,     ///< the phone's folder takes none
    BadPicture,   ///< no picture, or a damaged one
    OtherFormat,  ///< a picture, but of a format that is not read here
    LargePicture, ///< more pixels than this program converts; `detail` is "width x height"
    NoBitmap,     ///< the BMP file for a JPEG file isn't there
    NoJpeg,       ///< the JPEG file could not be made
    BadSound,     ///< no sound, a damaged one, or one of an absurd length
    BadMelody,    ///< a damaged melody, or none for handsets
    LargeMelody,  ///< more than `largestMelody`
    NoName,       ///< no character is left of the name
    NoConverter,  ///< a program is missing
    NoMp3,        ///< the converter cannot read MP3 here
    TooLong,      ///< a program did not come to an end
    NotWritten,   ///< no room or no right to write
    Cancelled,    ///< by the user
};

/// A file that could not be converted, and why.
struct Failure
{
    Fault fault;
    QString file = {};    ///< path of the source, or of what could not be written
    QString program = {}; ///< path of the converter
    QString detail = {};  ///< the reason in English, for the terminal
};

/// The message of a failure: German for the window, English for the terminal.
toolkit::Message messageFor(const Failure& failure);

/// The Debian package of a converter, "sox" for example. Our own converters come with Kalmo.
QString packageOf(const QString& program);

/// Returns true if the file is to blame, and not this machine or the user.
bool isBadInput(Fault fault);

/// Returns true if a batch of files ends with this fault, since the next file would fail as well.
bool endsBatch(Fault fault);

} // namespace kalmo::media
