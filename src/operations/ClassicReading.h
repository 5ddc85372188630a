#pragma once

#include "operations/Outcome.h"
#include "phonedata/StoreTraits.h"

#include <functional>

namespace kalmo::operations {

/// Steps of an operation on a list, for a program that shows them.
enum class ListStep { Reading, ReadingAgain, Writing };

/// Everything that an operation on a classic list needs.
struct ListJob
{
    link::Line& line;
    phonedata::PhoneMemory& memory;
    phonedata::Store store;
    toolkit::BusyWindow* window = nullptr; ///< blocked while the line is in use; may be absent
    toolkit::Progress progress = {};
    toolkit::ListRows* shown = nullptr;        ///< list whose rows are selected while they are written
    std::function<void(ListStep)> onStep = {}; ///< called ahead of each step
    std::function<void(int entries)> onEntryRead = {}; ///< called after each entry with the number so far

    app::Context& context() const { return line.context(); }
    int phoneType() const { return context().sy.PhoneType; }
    phonedata::StoreContent& content() const { return phonedata::contentOf(memory, store); }
    const phonedata::StoreTraits& traits() const { return phonedata::traitsOf(store); }
};

struct ReadPolicy
{
    bool readsMelodies = false; ///< ahead of a phonebook that may name them, and twice: they carry no lengths
    int readings = 1;           ///< a doubtful reading is repeated until there were so many
};

/// Facts about a reading. The entries, and how sure they are, are in the job's content.
struct ListReading
{
    Cause cause = Cause::None;
    int given = 0;        ///< entries that the phone gave; of a reading that failed the list keeps none
    bool isWhole = false; ///< the phone gave all entries; if `cause` is not None it did not confirm the close
    bool refusedMelodies = false; ///< the phone refused the list of its melodies
};

/// Reads a store into the job's content. A list with melodies of the phone's own is doubtful if their names
/// are not sure.
ListReading readList(const ListJob& job, const ReadPolicy& policy);

/// The reason why the last exchange on a line failed.
Cause causeOf(link::RxFailure failure);

} // namespace kalmo::operations
