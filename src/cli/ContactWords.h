#pragma once

#include "operations/SavedLists.h"
#include "phonedata/VcfCards.h"

namespace kalmo::cli {

/// Headings and cells of a table of contacts.
QStringList contactHeadings();
QStringList contactCells(const phonedata::tVcfEntry& contact);

/// Everything that a phone may cut or refuse of a contact, each in a few words.
QStringList warningsAbout(const phonedata::tVcfEntry& contact);

/// The same about what the contact would lose of the card in the phone that it replaces.
QStringList warningsAboutHeld(const phonedata::tVcfEntry& contact, const phonedata::ContactCard& held);

} // namespace kalmo::cli
