#pragma once

#include "toolkit/Dialogs.h"

#include <QSize>

namespace kalmo::media {

/// What a folder of the phone takes.
enum class UploadKind { None, Pictures, ClipPictures, Sounds, Melodies };

constexpr bool isPicture(UploadKind kind)
{
    return kind == UploadKind::Pictures || kind == UploadKind::ClipPictures;
}

inline constexpr qint64 largestMelody = 32000; ///< bytes; the messages say 32kB
inline constexpr int defaultTrim = 15;         ///< seconds, where the user's word for them is no number
inline constexpr int defaultQuality = 80;      ///< of a JPEG

/// How a picture of another shape comes to the phone's.
enum class Fit {
    Stretch, ///< as a whole, out of shape
    Crop,    ///< fills the screen, what stands over is cut off
    Inside,  ///< as a whole, with white beside it
};

/// What may be sent into a folder of the phone, named as `clsMmc::DirAct` has it; case doesn't matter.
UploadKind uploadKind(const QString& folder, int phoneType);

/// The same by a file: where it belongs in such a phone. Clip pictures are never guessed.
UploadKind kindOfFile(const QString& path, int phoneType);

/// The folder for files of a kind, "Mobile:\Pictures" for example.
QString folderFor(UploadKind kind);

/// What the file dialog offers; the first row is the one that it starts with.
std::vector<toolkit::FileType> fileTypes(UploadKind kind);

/// True if a file of such an ending can be sent as one of a kind.
bool isFit(const QString& path, UploadKind kind);

/// Pixels of a picture in the phone.
QSize pictureSize(int phoneType, UploadKind kind);
/// True if pictures go to the phone as JPEG; other phones take BMP only.
bool takesJpeg(int phoneType);
/// Bits of a pixel of a BMP.
int bitmapDepth(int phoneType);

/// The name that a converted file gets: the source's name without its extension, cut to what the phone's
/// software likes, and the new extension ("jpg", "bmp", "722" or "mid").
QString convertedName(const QString& source, const QString& extension);

/// The name that the phone has a file by: the client takes "," and ";" out of it.
QString nameAsSent(const QString& path);

} // namespace kalmo::media
