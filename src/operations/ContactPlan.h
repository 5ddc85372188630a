#pragma once

#include "operations/SavedLists.h"
#include "phonedata/VcardStore.h"

#include <optional>

namespace kalmo::operations {

/// Changes of a vCard phonebook, made before the phone gets any of them.
struct ContactPlan
{
    struct Change
    {
        phonedata::tVcfEntry from;  ///< as the phone holds it
        phonedata::ContactWrite to; ///< with the phone's LUID
    };

    std::vector<phonedata::ContactWrite> add;
    std::vector<Change> change;
    Contacts remove;
    Contacts stuck; ///< to be removed, but without a valid LUID
    Contacts kept;  ///< not wanted, but perhaps only because a reading was incomplete
    int same = 0;   ///< contacts that stay as they are

    int size() const { return static_cast<int>(add.size() + change.size() + remove.size()); }
    bool isEmpty() const { return size() == 0; }

    /// Contacts of `remove` that have to go before the new ones fit into so many free places. The others go
    /// last, so that an interruption leaves too many contacts instead of too few.
    int removedFirst(int freePlaces) const;
    /// Returns true if the phone has room for the new contacts once all others are removed.
    bool fits(int freePlaces) const;
};

/// The contacts of a reading.
Contacts contactsOf(const phonedata::ContactReading& reading);

/// Adds contacts; their LUIDs don't count.
ContactPlan planAdd(Contacts contacts);

/// Result of looking for LUIDs in the phone.
struct LuidPlan
{
    ContactPlan plan;
    std::optional<QString> missing; ///< a LUID that the phone does not hold
    std::optional<QString> noValid; ///< no real LUID, or that of the phone's own card
    bool isSound() const { return !missing && !noValid; }
};
/// Replaces the contact with the LUID of `contact`.
LuidPlan planChange(const phonedata::ContactReading& held, const phonedata::tVcfEntry& contact);
/// Deletes the contacts with these LUIDs, in this order.
LuidPlan planDelete(const phonedata::ContactReading& held, const QStringList& luids);

/// Makes the phone hold exactly `wanted`. A contact is matched by its LUID, then by equal content, then by
/// its name. The phone's own card is never touched.
ContactPlan planEqual(const phonedata::ContactReading& held, const Contacts& wanted);

enum class Completeness {
    Whole,
    Doubtful, ///< the cards may lack contacts of their time
};

/// The same for cards that the phone sent earlier: they go back byte for byte, except for the LUID, which the
/// phone chooses anew for a card that it no longer holds. If these cards or those in the phone may be
/// incomplete, only the contacts with the LUIDs in `added` are removed: they came after the wanted cards.
ContactPlan planRestore(const phonedata::ContactReading& held, const phonedata::VcfCards& wanted,
                        Completeness completeness = Completeness::Whole, const QStringList& added = {});

} // namespace kalmo::operations
