#pragma once

#include "operations/Outcome.h"
#include "operations/PhoneIdentity.h"

#include <QDateTime>
#include <QJsonObject>

#include <vector>

namespace kalmo::operations {

/// The lists of a phone whose former states are recorded.
enum class RecordedList { Phonebook, Providers, Files, Ringtones, AreaCodes };

/// "phonebook", "providers", "files", "ringtones" or "areacodes".
QString wordOf(RecordedList list);
/// The list of such a word.
std::optional<RecordedList> listOf(const QString& word);

/// The changes that are recorded.
enum class RecordCause {
    Write, ///< a whole list
    Add,
    Change,
    Delete,
    Import,
    Set, ///< a ringtone or the area codes
    Undo,
    PutFiles,
    RemoveFiles,
    MoveFile,
    MakeFolder,
    SetRights,
};

/// The stable key words of a change, such as "write" or "files put".
QString wordOf(RecordCause cause);
/// The change of such words; nothing for those of another version.
std::optional<RecordCause> recordCauseOf(const QString& words);

/// A piece of raw truth: the phone's own bytes, such as "phonebook.raw", "pb.vcf" or "Pictures/a.bmp".
struct RecordedPart
{
    QString name;
    QByteArray bytes;

    bool operator==(const RecordedPart&) const = default;
};

/// The content of one list of a phone before a change, and the result of the change.
struct Record
{
    QString id = {}; ///< a decimal number that grows with each record of a phone
    QDateTime time = {};
    PhoneIdentity phone = {};
    RecordedList list = RecordedList::Phonebook;
    QString cause = {};           ///< its key words, as the file has them
    int entries = 0;              ///< entries of the list before the change
    State state = State::Unknown; ///< of the change; unknown until the record is finished
    QJsonObject details = {};     ///< effects of the change
    std::vector<RecordedPart> before =
        {}; ///< the list before the change; left out where records are only listed

    const RecordedPart* part(const QString& name) const;
};

/// A record as the bytes of its file: one line of JSON that says all but the parts' bytes, with the size and
/// the SHA-256 of each part, then the bytes of all parts one after the other.
QByteArray recordBytes(const Record& record);

enum class RecordDepth { HeaderOnly, WithParts };

/// Reads such a file. Nothing for a file that is broken, cut off, too long or of another version. The parts'
/// bytes are read and checked only with WithParts; the file's size is checked always.
std::optional<Record> readRecordFile(const QString& path, RecordDepth depth);

} // namespace kalmo::operations
