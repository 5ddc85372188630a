#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace kalmo::transfer {

/// A file within a zip archive.
struct ZipPart
{
    QByteArray name; ///< with its folders: "word/document.xml"
    QByteArray bytes;
};

/// An archive with these parts, in this order, as bytes; nothing if the library reports an error.
std::optional<QByteArray> zipBytes(const std::vector<ZipPart>& parts);

/// The bytes of one part of an archive; nothing if the archive or the part can't be read.
std::optional<QByteArray> zipPart(const QByteArray& archive, const QByteArray& name);

} // namespace kalmo::transfer
