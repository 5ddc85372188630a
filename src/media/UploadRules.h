#pragma once

#include "toolkit/Dialogs.h"

#include <QSize>

namespace kalmo::media {

/// The kinds of files that folders of the phone take.
enum class UploadKind { None, Pictures, ClipPictures, Sounds, Melodies };

constexpr bool isPicture(UploadKind kind)
{
    return kind == UploadKind::Pictures || kind == UploadKind::ClipPictures;
}

inline constexpr qint64 largestMelody = 32000; ///< bytes; the messages say 32kB
inline constexpr int defaultTrim = 15;         ///< seconds, if the user's text is no number
inline constexpr int defaultQuality = 80;      ///< of a JPEG

/// How a picture of another shape is brought into the shape of the phone.
enum class Fit {
    Stretch, ///< as a whole, out of shape
    Crop,    ///< fills the screen; the edges beyond it are cut off
    Inside,  ///< as a whole, with white beside it
};

/// The form of a picture file.
struct PictureForm
{
    QSize size;
    bool asJpeg = true;
    int quality = defaultQuality; ///< of a JPEG, from 10 to 100
    int depth = 24;               ///< bits a pixel of a BMP, 24 or 32
    Fit fit = Fit::Stretch;
};

/// The kind of files that a folder of the phone takes. The folder is written as in `clsMmc::DirAct`, in any
/// case.
UploadKind uploadKind(const QString& folder, int phoneType);

/// The kind of a file for such a phone, by its ending. A picture is never taken for a clip picture.
UploadKind kindOfFile(const QString& path, int phoneType);

/// The folder for files of a kind, "Mobile:\Pictures" for example.
QString folderFor(UploadKind kind);

/// The types of files in the file dialog, the preselected one first.
std::vector<toolkit::FileType> fileTypes(UploadKind kind);

/// Returns true if a file with this ending can be sent as one of a kind.
bool isFit(const QString& path, UploadKind kind);

/// Pixels of a picture in the phone.
QSize pictureSize(int phoneType, UploadKind kind);
/// Returns true if the phone takes pictures as JPEG; other phones take BMP only.
bool takesJpeg(int phoneType);
/// Bits of a pixel of a BMP.
int bitmapDepth(int phoneType);

/// The name of a converted file: the source's name without its extension, cut to 16 characters or to 12 of a
/// melody, and the new extension ("jpg", "bmp", "722" or "mid").
QString convertedName(const QString& source, const QString& extension);

} // namespace kalmo::media
