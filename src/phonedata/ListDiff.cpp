#include "phonedata/ListDiff.h"

#include <QHash>
#include <QPair>

#include <algorithm>

namespace kalmo::phonedata {

namespace {

using Key = QPair<QString, QString>;

Key keyOf(const ClassicEntry& entry)
{
    return {entry.name, entry.number};
}

/// Places of the entries of each key, in ascending order.
using Places = QHash<Key, std::vector<size_t>>;

Places placesOf(const std::vector<ClassicEntry>& entries)
{
    Places places;
    for (size_t index = 0; index < entries.size(); ++index)
        places[keyOf(entries[index])].push_back(index);
    return places;
}

/// Takes from `candidates` the first entry that `fits`. Returns true if there is one.
template <typename Fits>
bool takeFirst(std::vector<size_t>& candidates, size_t& taken, Fits fits)
{
    const auto found = std::find_if(candidates.begin(), candidates.end(), fits);
    if (found == candidates.end())
        return false;
    taken = *found;
    candidates.erase(found);
    return true;
}

} // namespace

ListDiff diffLists(const std::vector<ClassicEntry>& held, const std::vector<ClassicEntry>& wanted)
{
    Places places = placesOf(held);
    std::vector<bool> isKept(held.size(), false);
    std::vector<const ClassicEntry*> unmatched;
    size_t place = 0;
    // Equal entries find each other first, so that a double with another date doesn't take their partner.
    for (const ClassicEntry& entry : wanted) {
        const auto equal = [&](size_t index) { return held[index] == entry; };
        if (takeFirst(places[keyOf(entry)], place, equal))
            isKept[place] = true;
        else
            unmatched.push_back(&entry);
    }
    ListDiff diff;
    for (const ClassicEntry* entry : unmatched) {
        if (takeFirst(places[keyOf(*entry)], place, [](size_t) { return true; })) {
            isKept[place] = true;
            diff.change.push_back({held[place], *entry});
        } else {
            diff.add.push_back(*entry);
        }
    }
    for (size_t index = 0; index < held.size(); ++index) {
        if (!isKept[index])
            diff.remove.push_back(held[index]);
    }
    return diff;
}

} // namespace kalmo::phonedata
