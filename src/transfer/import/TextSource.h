#pragma once

#include "app/Sizes.h"
#include "transfer/import/ImportOptions.h"

#include <QStringList>

#include <optional>

namespace kalmo::transfer {

/// Why a file can't be imported as a text.
enum class TextFault {
    None,
    NotReadable,
    NoFirstLine,   ///< empty, or its first line is
    Binary,        ///< it holds NUL bytes and is no UTF-16
    UnmarkedUtf16, ///< the same, but every second byte is a NUL
    TooManyColumns,
    TooLarge
};

inline constexpr qint64 largestText = 32 * app::megabyte;
/// More lines than this are refused, so that no file takes memory without bound.
inline constexpr qsizetype mostLines = 250'000;

/// The bytes of a file that is taken for a text; none after a fault. A file that is too large is not read.
struct TextFile
{
    TextFault fault = TextFault::None; ///< NotReadable or TooLarge
    QByteArray bytes = {};
};

TextFile readTextFile(const QString& path);

/// A text file as it is opened: how it is laid out, and what its columns are called.
struct OpenedText
{
    TextFault fault = TextFault::None;
    TextOptions options = {}; ///< with columns chosen by their headings
    QStringList headings = {};
    std::array<QString, mostFields> wanted = {}; ///< the headings that were wanted
};

/// How a file is opened. Missing values are guessed.
struct TextRequest
{
    Encoding encoding = Encoding::Ansi;
    std::optional<Separator> separator = {};
    std::optional<QString> filter = {};
    std::optional<Reading> reading = {}; ///< nothing takes Csv where that is the better one
    /// Wanted headings, ahead of those that are usual. "<nicht verwenden>" leaves a field out.
    std::array<QString, mostFields> headings = {};
};

/// Opens a text file for a form. `path` says by its ending if it is a .tel backup, which has no headings of
/// its own.
OpenedText openText(const QString& path, QByteArrayView bytes, Shape shape, const TextRequest& request);

/// Opens a text again by options whose layout or encoding has changed. The chosen columns keep their places
/// while the number of columns is the same; else they follow their headings. A field without a column gets
/// the usual one.
OpenedText reopenText(const QString& path, QByteArrayView bytes, Shape shape, const OpenedText& before,
                      const TextOptions& options);

/// Returns true if a form can leave out a field of that kind: "<nicht verwenden>" is a choice then.
bool mayBeUnused(Shape shape, FieldKind kind);

/// The headings of a text in the file of that path.
QStringList headingsFor(const QString& path, const QString& text, Shape shape, const TextLayout& layout);

/// Returns true for a .tel backup, by its ending.
bool isTelFile(const QString& path);

/// The column of the first candidate that equals a heading in any case; of equal headings the first. A "|"
/// separates candidates.
int columnOf(const QStringList& headings, QStringView candidates);

} // namespace kalmo::transfer
