#pragma once

#include "toolkit/Dialogs.h"

#include <optional>

namespace kalmo::media {

enum class Fault {
    NoSource,    ///< the file isn't there
    NotFit,      ///< no file of that ending goes to such a folder
    NoFolder,    ///< the phone's folder takes none
    BadPicture,  ///< no picture, a damaged one, or one of an absurd size
    NoBitmap,    ///< the BMP file that a JPEG file is made of isn't there
    NoJpeg,      ///< it could not be made
    BadSound,    ///< no sound, a damaged one, or one of an absurd length
    BadMelody,   ///< a damaged melody, or none for handsets
    LargeMelody, ///< more than `largestMelody`
    NoName,      ///< nothing is left of the name
    NoConverter, ///< a program is missing
    TooLong,     ///< a program did not come to an end
    NotWritten,  ///< no room or no right to write
    Cancelled,   ///< by the user
};

/// What was wrong with a file. Knows what to say of it in the window and on the terminal.
struct Failure
{
    Fault fault;
    QString file = {};    ///< path of the source, or of what could not be written
    QString program = {}; ///< path of the converter
    QString detail = {};  ///< what a converter said, in English
};

/// The box of a failure, with its English words for the terminal.
toolkit::Message messageFor(const Failure& failure);

/// The package that brings a converter, "sox" for example; our own programs come with Kalmo.
QString packageOf(const QString& program);

/// True if the file is to blame, and not this machine or the user.
bool isBadInput(Fault fault);

} // namespace kalmo::media
