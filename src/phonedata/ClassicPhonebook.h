#pragma once

#include "phonedata/ClassicStore.h"

namespace kalmo::phonedata {

/// Reads the whole phonebook of a classic handset into the list. Returns true if the store was read to its
/// end and closed. After a failure the list is empty, since a partly read list is never shown; a store that
/// could not even be opened leaves the list as it was.
bool ReadPB_TB(const StoreJob& job);

/// Erases the phonebook in the phone and writes all rows of the list, from top to bottom. After a failure
/// `job.memory` says which entries the phone holds. The caller saves beforehand what must not be lost.
/// Part of the described interface.
bool WritePB_TB(const StoreJob& job);

/// The same with the commands of the entries as given, and with all facts as its result.
StoreWriting writePhonebook(const StoreJob& job, const StoreEntries& wanted);

/// One entry from the phone's reply to the read command, for handsets of types 1 to 4.
ClassicEntry parsePhonebookReply(const QByteArray& reply, int phoneType, const SoundList& sounds,
                                 app::DebugLog& log);

/// The command that writes one entry. The only one that ends in CR LF.
QByteArray phonebookWriteCommand(const ClassicEntry& entry, int phoneType, const SoundList& sounds);

/// The command that writes an entry exactly as the phone gave it: with its own date and codes of melodies,
/// also where no melody of that code is known. An entry without a name gets the name "Ohne Name".
QByteArray phonebookCommandFromReply(const QByteArray& reply, int phoneType);

/// The melodies of an entry that `sounds` does not name. The list shows another one for them.
struct UnnamedSounds
{
    bool reminder = false;
    bool vip = false;

    explicit operator bool() const { return reminder || vip; }
};

/// Looks for such melodies in a reply to the read command.
UnnamedSounds unnamedSounds(const QByteArray& reply, int phoneType, const SoundList& sounds);

/// Returns true if one of the replies has such a melody. With an empty `sounds` every melody of the phone's
/// own counts.
bool haveUnnamedSound(const QByteArrayList& replies, int phoneType, const SoundList& sounds);

/// Returns true if the phone gave an entry without a name, which is shown and written as "Ohne Name".
bool isNameless(const QByteArray& reply);

} // namespace kalmo::phonedata
