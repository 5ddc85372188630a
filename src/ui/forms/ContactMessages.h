#pragma once

#include "operations/CardLosses.h"
#include "operations/ContactEdit.h"
#include "toolkit/Dialogs.h"
#include "ui/forms/ContactCommands.h"

namespace kalmo::ui {

/// The questions and messages of the contact commands.

void show(const phonedata::VcardStore& store, const toolkit::Message& message);

/// Advice about an entry without a valid LUID.
QString readAgainAdvice();

/// Shows that contacts can't be changed from here, because the phone has no LUID for them or they are its own
/// card.
void showUnreachable(const phonedata::VcardStore& store, const std::vector<phonedata::tVcfEntry>& contacts);

/// Shows a failure that is not the phone's: the client has shown those.
void showOwnFailure(const phonedata::VcardStore& store, const operations::Outcome& facts);
/// The same after a change, which may also be confirmed but not compared.
void showOwnFailure(const phonedata::VcardStore& store, const operations::ContactOutcome& outcome);

/// Shows contacts that the phone holds otherwise than they were saved, in a box and in the list.
void showMismatches(phonedata::VcardStore& store, const operations::ContactEdit& edit,
                    const operations::ContactOutcome& outcome);

/// The same after an import: how many there are, and the first of them.
void showImportMismatches(phonedata::VcardStore& store, const operations::ContactEdit& edit,
                          const operations::ContactOutcome& outcome);

/// Shows a contact that the reading lacks or that has no valid LUID there. Returns true if there is none.
bool requireFound(const phonedata::VcardStore& store, const operations::LuidPlan& found);

/// Says that the answer to a save was lost.
QString unknownSave();

/// Says that the user has stopped an import, and how many contacts came before.
QString stoppedImport(const ContactImport& imported);
/// Says that an import has sent nothing. A box has said why.
QString nothingImported();

/// Asks about a contact that was changed in the phone after the list was read. Returns true if it may be
/// replaced or deleted.
bool confirmOther(const phonedata::VcardStore& store, const phonedata::tVcfEntry& shown,
                  const phonedata::tVcfEntry& held);

/// Shows that there are wrong numbers. Returns true if the user wants to edit the area codes.
bool askToEditCodes(const phonedata::VcardStore& store);

/// Text about what a contact loses on its way to the phone, empty if it loses nothing.
QString lossText(const operations::CardLosses& losses);

/// Asks about new contacts that lose something on their way to the phone. Returns true if they are to be
/// written.
bool confirmLosses(const phonedata::VcardStore& store, const std::vector<phonedata::tVcfEntry>& contacts);

/// Text about contacts of the list that a file of fields does not hold as the phone does, empty if it holds
/// all of them.
QString cutText(const phonedata::VcardStore& store, const QString& path);

} // namespace kalmo::ui
