#pragma once

#include "phonedata/ClassicEntry.h"
#include "phonedata/ClassicStore.h"

namespace kalmo::phonedata {

/// The changes that writing a list makes in a store. Entries are told apart by name and number together; of
/// several equal ones each counts. The order of a list is no change of an entry.
struct ListDiff
{
    struct Change
    {
        ClassicEntry from;
        ClassicEntry to;

        bool operator==(const Change&) const = default;
    };

    std::vector<ClassicEntry> add;    ///< in the order of the new list
    std::vector<Change> change;       ///< same name and number, another date, VIP mark or sound
    std::vector<ClassicEntry> remove; ///< in the order of the store

    bool isEmpty() const { return add.empty() && change.empty() && remove.empty(); }
    bool operator==(const ListDiff&) const = default;
};

/// Compares what a store holds with a list that is to be written.
ListDiff diffLists(const std::vector<ClassicEntry>& held, const std::vector<ClassicEntry>& wanted);

/// The entry as a handset gives it back once it was written: without what the handset's family doesn't keep,
/// without characters that the code page doesn't have, and with melodies as the read command names them. For
/// the provider list name and number.
ClassicEntry asHeld(const ClassicEntry& entry, Store store, int phoneType, const SoundList& sounds,
                    app::DebugLog& log);

} // namespace kalmo::phonedata
