#pragma once

#include "operations/SavedLists.h"

namespace kalmo::cli {

/// Headings and cells of a table of contacts.
QStringList contactHeadings();
QStringList contactCells(const phonedata::tVcfEntry& contact);

/// Everything that a phone may cut or refuse of a contact, each in a few words.
QStringList warningsAbout(const phonedata::tVcfEntry& contact);

} // namespace kalmo::cli
