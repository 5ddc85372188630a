#pragma once

#include <QString>

#include <optional>

namespace kalmo::operations {

/// The lists that are saved in files.
enum class SavedKind { Phonebook, Providers, Contacts };

/// Reasons for refusing a file.
enum class FileFault {
    None,
    // the file
    WrongEnding,
    NoSuchFile,
    NoRegularFile,
    TooLarge,
    NotReadable,
    Utf8Text, ///< text in UTF-8 in a format that is Windows-1252
    NoJson,   ///< `detail` is the parser's reason
    NoArray,
    NothingInIt,
    // one entry
    FieldCount,
    VipWord,
    NoObject,
    UnknownKey, ///< `detail` is the key
    NotText,    ///< `detail` is the key
    NotBoolean, ///< `detail` is the key
    NameOrNumberMissing,
    LineEnd,       ///< `detail` is the key, empty for an entry of a classic list
    ForeignLetter, ///< `detail` is the key
    Date,
    Birthday,
    CardWithoutEnd,
    OtherVersion, ///< of vCard; only 2.1 is read
    FieldTwice,   ///< `detail` is the key of the line
};

/// Reason and place of a refusal.
struct SavedListFault
{
    enum class Place { WholeFile, Line, Entry };

    FileFault kind = FileFault::None;
    Place place = Place::WholeFile;
    int number = 0; ///< of the line or the entry, from 1
    QString detail = {};

    bool operator==(const SavedListFault&) const = default;
};

} // namespace kalmo::operations
