#pragma once

#include "operations/SavedListFault.h"
#include "phonedata/ClassicStore.h"
#include "phonedata/VcfEntry.h"

namespace kalmo::operations {

using Entries = std::vector<phonedata::ClassicEntry>;
using Contacts = std::vector<phonedata::tVcfEntry>;

/// A list in a file. Which of the two vectors it fills follows from its kind.
struct SavedList
{
    SavedKind kind = SavedKind::Phonebook;
    Entries entries = {};     ///< of the phonebook or the provider list of a classic handset
    Contacts contacts = {};   ///< of a vCard handset
    QStringList dropped = {}; ///< keys of lines in a .vcf file that contacts have no field for

    qsizetype count() const;
    bool operator==(const SavedList&) const = default;
};

SavedKind savedKind(phonedata::Store store);

/// How a file that is not fully understood is read.
enum class Strictness {
    Strict,  ///< a fault refuses the whole file: the phone would lose each entry that is passed over
    Lenient, ///< as LoadTel and LoadPrv do it, for a user who sees the list before it is written
};

struct ReadingRules
{
    Strictness strictness = Strictness::Strict;
    int phoneType = 0; ///< family that a lenient reading is for: some have no VIP mark
};

/// One file format for one kind of list. A new format is a new row of the table.
struct SavedListFormat
{
    using Write = QByteArray (*)(const SavedList& list);
    using Read = bool (*)(const QByteArray& bytes, const ReadingRules& rules, SavedList& list,
                          SavedListFault& fault);

    QStringView ending; ///< with its dot, in lower case
    SavedKind kind;
    Write write;
    Read read;
    bool keepsLuids; ///< false for formats without a field for the LUID of a contact
};

/// The format of a file for a kind of list, by the ending of its name in any case; null for none.
const SavedListFormat* findFormat(const QString& path, SavedKind kind);

/// The endings of a kind of list, in the order of the table.
QStringList endingsFor(SavedKind kind);

/// Content of a file with that name. The name has to have one of the endings.
QByteArray savedListBytes(const QString& path, const SavedList& list);

/// The list in the bytes of a file with that name. Nothing if they are refused, with the reason in `fault`.
std::optional<SavedList> parseSavedList(const QString& path, const QByteArray& bytes, SavedKind kind,
                                        const ReadingRules& rules, SavedListFault& fault);

/// Reads a file by its ending. Nothing for a file that can't be read or is refused, with the reason in
/// `fault`.
std::optional<SavedList> readSavedList(const QString& path, SavedKind kind, const ReadingRules& rules,
                                       SavedListFault& fault);

/// Returns true if savedListBytes() for that name can be read and gives exactly this list. Not every format
/// can hold every text that a phone holds.
bool bringsBack(const QString& path, const SavedList& list);

} // namespace kalmo::operations
