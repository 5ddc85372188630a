#include "ui/forms/ContactCommands.h"

#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "link/PhoneModels.h"
#include "operations/ContactEdit.h"
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

const QString oldKeyPrefix = u"temp_"_s;

/// Frees the key of the row that is about to be replaced; the new row may need it.
QString moveKeyAway(ListRows* list, int row)
{
    if (!list || row < 0 || row >= list->count())
        return {};
    const QString key = oldKeyPrefix + list->row(row).key;
    list->setKey(row, key);
    return key;
}

/// Undoes moveKeyAway() where nothing was written.
void moveKeyBack(ListRows* list, const QString& movedKey)
{
    const int row = list && !movedKey.isEmpty() ? list->indexOfKey(movedKey) : -1;
    if (row >= 0)
        list->setKey(row, movedKey.sliced(oldKeyPrefix.size()));
}

void removeRow(ListRows* list, const QString& key)
{
    const int row = list && !key.isEmpty() ? list->indexOfKey(key) : -1;
    if (row >= 0)
        list->removeAt(row);
}

/// The window changes single contacts that the phone holds, so a contact that a reading lacks is not touched.
operations::ContactPolicy windowPolicy()
{
    return {.mayUseDoubtfulReading = true, .readsAgain = true};
}

/// The plan for one contact. Nothing if it is not to be written; the user knows why. `shown` is the contact
/// as the list shows it, nothing for a new one.
std::optional<operations::ContactPlan> planFor(const VcardStore& store, const operations::ContactEdit& edit,
                                               const tVcfEntry& entry, const std::optional<tVcfEntry>& shown)
{
    if (entry.luid.isEmpty())
        return operations::planAdd({entry});
    const operations::LuidPlan found = operations::planChange(edit.held(), entry);
    if (!requireFound(store, found))
        return std::nullopt;
    const tVcfEntry& held = found.plan.change.front().from;
    const bool mayChange =
        !shown || phonedata::haveSameContent(held, entry) || confirmOther(store, *shown, held);
    return mayChange ? std::optional(found.plan) : std::nullopt;
}

/// Opens the session. A list with a change that could not be compared shows this reading.
operations::Outcome begin(VcardStore& store, operations::ContactEdit& edit)
{
    const bool isCompared = store.lastReading() && store.lastReading()->isConfirmed();
    const operations::Outcome ready = edit.begin();
    if (ready.isDone() && !isCompared && edit.held().isConfirmed())
        store.showReading(edit.held());
    return ready;
}

/// Returns true if the phone took a change, also if its answer was lost and reading back found the change.
/// The list then shows the reading.
bool acceptChange(VcardStore& store, const operations::ContactEdit& edit,
                  const operations::ContactOutcome& outcome)
{
    if (outcome.isAnswered)
        return true;
    if (!outcome.facts.isDone() || !edit.heldAfter())
        return false;
    store.showReading(*edit.heldAfter());
    return true;
}

/// After a reading that was stopped or has failed the list lacks contacts of the phone. It shows them ahead
/// of the change, so that the changed one never stands there as the only one.
void completeList(VcardStore& store, const operations::ContactEdit& edit)
{
    if (store.list()->count() < std::ssize(edit.held().cards.cards))
        store.showReading(edit.held());
}

/// Returns true if the user ended it, and nothing is open: the phone confirmed all that was sent.
bool isStopped(const operations::Outcome& facts)
{
    return facts.cause == operations::Cause::Interrupted && facts.sent == facts.confirmed &&
           facts.unknown == 0;
}

/// Makes a saved contact the current row, so that the user sees it.
void selectContact(VcardStore& store, const QString& luid)
{
    const int row = luid.isEmpty() ? -1 : store.list()->indexOfKey(phonedata::vcfKey(luid));
    if (row >= 0)
        store.list()->setCurrent(row);
}

/// The result of a session that can't be used for a change.
CommandResult reportBegin(const VcardStore& store, const operations::Outcome& facts)
{
    if (isStopped(facts))
        return CommandResult::Cancelled;
    showOwnFailure(store, facts);
    return CommandResult::Failed;
}

QString editTitle()
{
    return app::productName() + u" - Adressbuch bearbeiten"_s;
}

/// Writes a contact in a session of its own. A success is shown if the settings want that.
CommandResult writeContact(VcardStore& store, const tVcfEntry& entry, const std::optional<tVcfEntry>& shown,
                           const QString& oldKey, const Progress& progress)
{
    operations::ContactOutcome outcome;
    bool isDone = false;
    {
        operations::ContactEdit edit(store.shared_from_this(), windowPolicy(), progress);
        const operations::Outcome ready = begin(store, edit);
        if (!ready.isDone()) {
            edit.end();
            return reportBegin(store, ready);
        }
        const auto plan = planFor(store, edit, entry, shown);
        if (!plan)
            return CommandResult::Refused;
        completeList(store, edit);
        outcome = edit.apply(*plan, entry.luid.isEmpty() ? operations::RecordCause::Add
                                                         : operations::RecordCause::Change);
        isDone = outcome.facts.confirmed > 0 && acceptChange(store, edit, outcome);
        if (isDone) {
            removeRow(store.list(), oldKey);
            showMismatches(store, edit, outcome);
            selectContact(store, outcome.luids.value(0));
        }
    }
    if (!isDone && isStopped(outcome.facts))
        return CommandResult::Cancelled;
    showOwnFailure(store, outcome);
    if (outcome.hasChangedMeanwhile)
        return CommandResult::Refused;
    if (isDone && !outcome.facts.isUncompared() &&
        app::isOn(store.context().settings, app::keys::ShowSuccessPopup))
        show(store, {.text = u"Eintrag gespeichert."_s, .title = editTitle(), .icon = Icon::Information});
    return isDone ? CommandResult::Done : CommandResult::Failed;
}

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
    operations::ContactOutcome outcome;
    bool isDone = false;
    {
        operations::ContactEdit edit(store.shared_from_this(), windowPolicy(), progress);
        const operations::Outcome ready = begin(store, edit);
        if (!ready.isDone()) {
            edit.end();
            return {reportBegin(store, ready)};
        }
        const auto plan = planDeletion(store, edit, contacts);
        if (!plan)
            return {};
        outcome = edit.apply(*plan, operations::RecordCause::Delete);
        isDone = acceptChange(store, edit, outcome);
    }
    ContactDeletion deletion{CommandResult::Cancelled, outcome.facts.planned, outcome.facts.confirmed};
    if (isStopped(outcome.facts))
        return deletion;
    showOwnFailure(store, outcome);
    const bool isRefused = outcome.facts.cause == operations::Cause::NotSaved || outcome.hasChangedMeanwhile;
    deletion.result = isRefused ? CommandResult::Refused
                      : isDone  ? CommandResult::Done
                                : CommandResult::Failed;
    return deletion;
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

CommandResult saveContact(VcardStore& store, const tVcfEntry& entry, int row, const Progress& progress)
{
    if (!entry.hasNumber()) {
        show(store, {.text = u"Bitte geben Sie mindestens eine Telefonnummer ein."_s,
                     .title = app::productName() + u" - Eintrag speichern"_s,
                     .icon = Icon::Information});
        return CommandResult::Refused;
    }
    const auto keep = store.shared_from_this();
    const bool isNew = entry.luid.isEmpty();
    const bool hasRow = !isNew && store.list() && row >= 0 && row < store.list()->count();
    const auto shown = hasRow ? std::optional(phonedata::vcfEntryFrom(store.list()->row(row))) : std::nullopt;
    const QString oldKey = hasRow ? moveKeyAway(store.list(), row) : QString();
    const CommandResult result = writeContact(store, entry, shown, oldKey, progress);
    if (result == CommandResult::Refused || result == CommandResult::Cancelled) {
        moveKeyBack(store.list(), oldKey);
        return result;
    }
    if (result == CommandResult::Failed) {
        show(store, {.text = u"Fehler beim Schreiben des Adressbucheintrags."_s,
                     .title = editTitle(),
                     .icon = Icon::Exclamation,
                     .about = toolkit::About::Result});
        return CommandResult::Failed;
    }
    return CommandResult::Done;
}

bool importContacts(VcardStore& store, std::vector<tVcfEntry> contacts, const Progress& progress)
{
    const auto keep = store.shared_from_this();
    operations::ContactOutcome outcome;
    bool isDone = false;
    {
        operations::ContactEdit edit(keep, windowPolicy(), progress);
        const operations::Outcome ready = begin(store, edit);
        if (!ready.isDone()) {
            edit.end();
            reportBegin(store, ready);
            return false;
        }
        completeList(store, edit);
        outcome = edit.apply(operations::planAdd(std::move(contacts)), operations::RecordCause::Import);
        isDone = acceptChange(store, edit, outcome) && outcome.facts.confirmed == outcome.facts.planned;
        if (!isDone && edit.heldAfter())
            store.showReading(*edit.heldAfter());
        showImportMismatches(store, edit, outcome);
    }
    showOwnFailure(store, outcome);
    return isDone;
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
