#pragma once

#include "phonedata/ClassicEntry.h"

namespace kalmo::phonedata {

/// The changes that writing a list makes in a store. Name and number together identify an entry; of
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

} // namespace kalmo::phonedata
