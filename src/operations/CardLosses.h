#pragma once

#include "phonedata/VcardStore.h"

namespace kalmo::operations {

/// A text of a contact that does not come through its card.
struct FieldLoss
{
    QString wanted; ///< as it was typed, or as the phone's card says it
    QString back;   ///< as it comes back
    bool operator==(const FieldLoss&) const = default;
};

/// Texts that a contact loses on its way to the phone.
struct CardLosses
{
    QString characters = {}; ///< of edited texts, that phones may give back as others
    std::vector<FieldLoss> edited = {};
    /// Half of a name that was not edited, but goes out with the other half: the list shows it otherwise than
    /// the phone's card says it.
    std::vector<FieldLoss> hidden = {};

    bool isEmpty() const { return characters.isEmpty() && edited.empty() && hidden.empty(); }
};

/// Builds the card of a contact, reads it as the phonebook is read, and compares. Both spellings of names
/// count, and both ways of reading: one card in quoted-printable has the whole phonebook decoded. `held` is
/// the card in the phone that the contact replaces, null for a new contact; fields that were not edited go
/// back byte for byte and lose nothing.
CardLosses lossesWhenSent(const phonedata::tVcfEntry& entry, const phonedata::ContactCard* held = nullptr);

/// Names of the contacts whose card says more than their fields: a line without a field, or a text that
/// reading the phonebook changes. Files of fields lack that.
QStringList contactsBeyondFields(const phonedata::VcfCards& cards);

} // namespace kalmo::operations
