#include "ui/forms/ContactCommands.h"

#include "app/Version.h"
#include "link/PhoneModels.h"
#include "ui/forms/ContactChange.h"
#include "ui/forms/ContactMessages.h"

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::CommandResult;
using phonedata::tVcfEntry;
using phonedata::VcardStore;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::ListRows;
using toolkit::Progress;

namespace {

/// The plan for deleting contacts that the list shows. Nothing if they are to stay; the user knows why.
std::optional<operations::ContactPlan> planDeletion(const VcardStore& store,
                                                    const operations::ContactEdit& edit,
                                                    const std::vector<tVcfEntry>& contacts)
{
    QStringList luids;
    for (const tVcfEntry& contact : contacts)
        luids.append(contact.luid);
    const operations::LuidPlan found = operations::planDelete(edit.held(), luids);
    if (!requireFound(store, found))
        return std::nullopt;
    for (size_t index = 0; index < contacts.size(); ++index) {
        if (!confirmOther(store, contacts[index], found.plan.remove[index]))
            return std::nullopt;
    }
    return found.plan;
}

ContactDeletion deleteContacts(VcardStore& store, const std::vector<tVcfEntry>& contacts,
                               const Progress& progress)
{
    const auto plan = [&](const operations::ContactEdit& edit) -> std::optional<PlannedContacts> {
        auto planned = planDeletion(store, edit, contacts);
        if (!planned)
            return std::nullopt;
        return PlannedContacts{std::move(*planned), operations::RecordCause::Delete};
    };
    const auto accept = [&](const operations::ContactEdit& edit, const operations::ContactOutcome& outcome) {
        return acceptChange(store, edit, outcome) && outcome.facts.cause != operations::Cause::Interrupted;
    };
    const ContactChange change = changeContacts(store, progress, plan, accept);
    return {change.result, change.facts.planned, change.facts.confirmed};
}

bool hasWrongNumbers(const ListRows& list)
{
    for (int row = 0; row < list.count(); ++row) {
        for (const auto column : {phonedata::VcfHome, phonedata::VcfMobile, phonedata::VcfWork}) {
            if (list.text(row, column).contains(u'f', Qt::CaseInsensitive))
                return true;
        }
    }
    return false;
}

} // namespace

bool allowNewContact(const VcardStore& store)
{
    if (store.freePlaces().value_or(0) >= 1)
        return true;
    show(store, {.text = u"Es ist kein freier Speicherplatz vorhanden."_s,
                 .title = app::productName() + u" - neuer Eintrag"_s,
                 .icon = Icon::Information});
    return false;
}

bool allowChange(const VcardStore& store, int row)
{
    const ListRows* list = store.list();
    if (!list || row < 0 || row >= list->count())
        return false;
    const tVcfEntry entry = phonedata::vcfEntryFrom(list->row(row));
    if (entry.isStandIn) {
        showUnreachable(store, {entry});
        return false;
    }
    if (!phonedata::isNoValidLuid(entry.luid))
        return true;
    show(store,
         {.text = u"Der gewählte Eintrag verfügt über keine gültige Referenznummer.\n"_s + readAgainAdvice(),
          .icon = Icon::Information});
    return false;
}

ContactImport importContacts(VcardStore& store, std::vector<tVcfEntry> contacts, const Progress& progress)
{
    const auto keep = store.shared_from_this();
    const auto planned = static_cast<int>(contacts.size());
    const auto plan = [&](const operations::ContactEdit& edit) -> std::optional<PlannedContacts> {
        if (lacksContacts(store, edit))
            store.showReading(edit.held());
        return PlannedContacts{operations::planAdd(std::move(contacts)), operations::RecordCause::Import};
    };
    const auto accept = [&](const operations::ContactEdit& edit, const operations::ContactOutcome& outcome) {
        const bool isDone =
            acceptChange(store, edit, outcome) && outcome.facts.confirmed == outcome.facts.planned;
        if (!isDone && edit.heldAfter())
            store.showReading(*edit.heldAfter());
        showImportMismatches(store, edit, outcome);
        return isDone;
    };
    const ContactChange change = changeContacts(store, progress, plan, accept);
    return {change.result, planned, change.facts.confirmed};
}

ContactDeletion VcfDeleteSelected(VcardStore& store, const Progress& progress)
{
    const auto keep = store.shared_from_this();
    const QList<int> selected = store.list() ? store.list()->selectedRows() : QList<int>();
    if (selected.isEmpty())
        return {};
    std::vector<tVcfEntry> contacts;
    std::vector<tVcfEntry> unreachable;
    for (const int row : selected) {
        const tVcfEntry entry = phonedata::vcfEntryFrom(store.list()->row(row));
        if (!entry.isStandIn && phonedata::isNoValidLuid(entry.luid)) {
            show(store, {.text = u"Der gewählte bzw. ein gewählter Eintrag verfügt über keine gültige "
                                 u"Referenznummer.\n"_s +
                                 readAgainAdvice(),
                         .icon = Icon::Information});
            return {};
        }
        (entry.isStandIn ? unreachable : contacts).push_back(entry);
    }
    if (!unreachable.empty())
        showUnreachable(store, unreachable);
    if (contacts.empty())
        return {};
    std::ranges::reverse(contacts); // the last goes first
    const Answer answer = store.context().dialogs.Show(
        {.text = u"%1 gewählte(n) Kontakt(e) wirklich löschen ?"_s.arg(contacts.size()),
         .title = app::productName() + u"  -  Kontakt löschen"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question,
         .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        return {};
    const ContactDeletion deletion = deleteContacts(store, contacts, progress);
    if (deletion.result != CommandResult::Failed)
        return deletion;
    show(store,
         {.text = u"Beim Löschen ist ein Fehler aufgetreten. Bitte lesen Sie das Telefonbuch erneut ein, um "
                  u"Inkonsistenzen zu vermeiden."_s,
          .icon = Icon::Information,
          .about = toolkit::About::Result});
    store.forget();
    return deletion;
}

CommandResult refreshContacts(VcardStore& store, const Progress& progress, toolkit::BusyWindow* window,
                              const phonedata::AreaCodeDialog& editAreaCodes)
{
    const auto keep = store.shared_from_this();
    link::Line& line = store.client().line();
    const bool asksForCodes = link::hasAreaCodes(store.context().sy.PhoneType);
    QString answer;
    const auto readCodes = [&] {
        const toolkit::BusyScope busy(window);
        return phonedata::ReadAreaCodes(line, progress.panel, answer);
    };
    if (asksForCodes && !readCodes())
        editAreaCodes(answer);
    if (!store.VcfReadList(progress)) {
        if (progress.cancelled())
            return CommandResult::Cancelled;
        show(store, {.text = u"Fehler beim Lesen des Adressbuchs."_s,
                     .title = app::productName() + u" - Fehler"_s,
                     .icon = Icon::Information,
                     .about = toolkit::About::Result});
        // With a reading at hand the user has refused to see it.
        return store.lastReading() ? CommandResult::Refused : CommandResult::Failed;
    }
    if (asksForCodes && store.list() && hasWrongNumbers(*store.list()) && askToEditCodes(store)) {
        readCodes();
        if (!answer.isEmpty())
            editAreaCodes(answer);
    }
    return CommandResult::Done;
}

} // namespace kalmo::ui
