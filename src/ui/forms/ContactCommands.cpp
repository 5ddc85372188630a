#include "ui/forms/ContactCommands.h"

#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "link/PhoneModels.h"
#include "operations/ContactEdit.h"

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

void show(const VcardStore& store, const toolkit::Message& message)
{
    if (!store.client().isAbandoned())
        store.context().dialogs.Show(message);
}

/// Advice about an entry without a valid LUID.
QString readAgainAdvice()
{
    return u"Dies kann aufgrund eines Fehler im Gigaset, der bisher von der Firma Gigaset nicht behoben "
           u"wurde unter "
           u"ungünstigen Umständen vorkommen. Bitte lesen Sie das Telefonbuch einmal komplett neu ein "
           u"(Schaltfläche \"Neu Laden\"). Danach können Sie den betroffenen Eintrag beliebig ändern oder löschen."_s;
}

/// Frees the key of the row that is about to be replaced; the new row may need it.
QString moveKeyAway(ListRows* list, int row)
{
    if (!list || row < 0 || row >= list->count())
        return {};
    const QString key = oldKeyPrefix + list->row(row).key;
    list->setKey(row, key);
    return key;
}

void removeRow(ListRows* list, const QString& key)
{
    const int row = list && !key.isEmpty() ? list->indexOfKey(key) : -1;
    if (row >= 0)
        list->removeAt(row);
}

/// The window changes the contacts that it shows, so a contact that a reading lacks is not touched.
operations::ContactPolicy windowPolicy()
{
    return {.mayUseDoubtfulReading = true};
}

/// The client has shown the user each failure of the phone. The rest is shown here.
void showOwnFailure(const VcardStore& store, const operations::Outcome& facts)
{
    if (facts.cause != operations::Cause::NotSaved)
        return;
    show(store, {.text = u"Der bisherige Stand des Telefonbuchs konnte nicht gesichert werden: %1\n\n"
                         u"Im Telefon wurde nichts geändert."_s.arg(facts.reason),
                 .icon = Icon::Exclamation});
}

QString fieldsOf(const tVcfEntry& entry)
{
    QStringList fields;
    for (const QString& text : {entry.lastName, entry.firstName, entry.home, entry.mobile, entry.work,
                                entry.email, phonedata::displayBirthday(entry.birthday)}) {
        if (!text.isEmpty())
            fields.append(text);
    }
    return fields.join(u", "_s);
}

/// Shows contacts that the phone holds otherwise than they were saved, in a box and in the list.
void showMismatches(VcardStore& store, const operations::ContactEdit& edit,
                    const operations::ContactOutcome& outcome)
{
    if (outcome.mismatches.empty() || !edit.heldAfter())
        return;
    store.showReading(*edit.heldAfter());
    const auto& [written, held] = outcome.mismatches.front();
    show(store, {.text = u"Das Telefon hat den Eintrag anders gespeichert, als Sie ihn eingegeben haben.\n\n"
                         u"Eingegeben: %1\nGespeichert: %2"_s.arg(fieldsOf(written), fieldsOf(held)),
                 .title = app::productName() + u" - Adressbuch bearbeiten"_s,
                 .icon = Icon::Exclamation});
}

operations::ContactPlan planFor(const tVcfEntry& entry)
{
    operations::ContactPlan plan;
    if (entry.luid.isEmpty())
        plan.add.push_back({entry});
    else
        plan.change.push_back({entry, {entry}});
    return plan;
}

/// Writes a contact in a session of its own. Returns true if the phone took it.
bool writeContact(VcardStore& store, const tVcfEntry& entry, const QString& oldKey, const Progress& progress)
{
    operations::ContactOutcome outcome;
    {
        operations::ContactEdit edit(store.shared_from_this(), windowPolicy(), progress);
        outcome.facts = edit.begin();
        if (!outcome.facts.isDone())
            return false;
        outcome = edit.apply(planFor(entry), entry.luid.isEmpty() ? u"add"_s : u"change"_s);
        if (outcome.isAnswered && outcome.facts.confirmed > 0) {
            removeRow(store.list(), oldKey);
            showMismatches(store, edit, outcome);
        }
    }
    showOwnFailure(store, outcome.facts);
    return outcome.isAnswered && outcome.facts.confirmed > 0;
}

bool deleteContacts(VcardStore& store, const std::vector<tVcfEntry>& contacts, const Progress& progress)
{
    operations::ContactOutcome outcome;
    {
        operations::ContactEdit edit(store.shared_from_this(), windowPolicy(), progress);
        outcome.facts = edit.begin();
        if (!outcome.facts.isDone())
            return false;
        operations::ContactPlan plan;
        plan.remove = contacts;
        outcome = edit.apply(plan, u"delete"_s);
    }
    showOwnFailure(store, outcome.facts);
    return outcome.isAnswered && outcome.facts.cause != operations::Cause::NotSaved;
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

/// Shows that there are wrong numbers. Returns true if the user wants to edit the area codes.
bool askToEditCodes(const VcardStore& store)
{
    const Answer answer = store.context().dialogs.Show(
        {.text = u"Mindestens ein Eintrag im Telefonbuch scheint vom Telefon mit einer fehlerhaften "
                 u"(Vorwahl-)Nummer empfangen worden zu sein.\n"
                 u"Meistens sind falsch eingestellte Vorwahl-Einstellungen die Ursache.\n\n"
                 u"Möchten Sie die Vorwahl-Einstellungen bearbeiten?"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question});
    return answer == Answer::Yes;
}

} // namespace

bool allowNewContact(const VcardStore& store)
{
    if (store.freePlaces() >= 1)
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
    if (phonedata::hasValidLuid(list->row(row)))
        return true;
    show(store,
         {.text = u"Der gewählte Eintrag verfügt über keine gültige Referenznummer.\n"_s + readAgainAdvice(),
          .icon = Icon::Information});
    return false;
}

CommandResult saveContact(VcardStore& store, const tVcfEntry& entry, int row, const Progress& progress)
{
    const QString title = app::productName() + u" - Adressbuch bearbeiten"_s;
    if (!entry.hasNumber()) {
        show(store, {.text = u"Bitte geben Sie mindestens eine Telefonnummer ein."_s,
                     .title = app::productName() + u" - Eintrag speichern"_s,
                     .icon = Icon::Information});
        return CommandResult::Refused;
    }
    const auto keep = store.shared_from_this();
    const QString oldKey = entry.luid.isEmpty() ? QString() : moveKeyAway(store.list(), row);
    if (!writeContact(store, entry, oldKey, progress)) {
        show(store, {.text = u"Fehler beim Schreiben des Adressbucheintrags."_s,
                     .title = title,
                     .icon = Icon::Exclamation});
        return CommandResult::Failed;
    }
    if (app::isOn(store.context().settings, app::keys::ShowSuccessPopup))
        show(store, {.text = u"Eintrag gespeichert."_s, .title = title, .icon = Icon::Information});
    return CommandResult::Done;
}

bool importContacts(VcardStore& store, std::vector<tVcfEntry> contacts, const Progress& progress)
{
    const auto keep = store.shared_from_this();
    operations::ContactOutcome outcome;
    {
        operations::ContactEdit edit(keep, windowPolicy(), progress);
        outcome.facts = edit.begin();
        if (!outcome.facts.isDone())
            return false;
        outcome = edit.apply(operations::planAdd(std::move(contacts)), u"import"_s);
        if (outcome.isAnswered)
            showMismatches(store, edit, outcome);
    }
    showOwnFailure(store, outcome.facts);
    return outcome.isAnswered && outcome.facts.confirmed == outcome.facts.planned;
}

CommandResult VcfDeleteSelected(VcardStore& store, const Progress& progress)
{
    const auto keep = store.shared_from_this();
    const QList<int> selected = store.list() ? store.list()->selectedRows() : QList<int>();
    if (selected.isEmpty())
        return CommandResult::Refused;
    std::vector<tVcfEntry> contacts;
    for (const int row : selected) {
        if (!phonedata::hasValidLuid(store.list()->row(row))) {
            show(store, {.text = u"Der gewählte bzw. ein gewählter Eintrag verfügt über keine gültige "
                                 u"Referenznummer.\n"_s +
                                 readAgainAdvice(),
                         .icon = Icon::Information});
            return CommandResult::Refused;
        }
        contacts.insert(contacts.begin(),
                        phonedata::vcfEntryFrom(store.list()->row(row))); // the last goes first
    }
    const Answer answer = store.context().dialogs.Show(
        {.text = u"%1 gewählte(n) Kontakt(e) wirklich löschen ?"_s.arg(selected.size()),
         .title = app::productName() + u"  -  Kontakt löschen"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question,
         .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        return CommandResult::Refused;
    if (deleteContacts(store, contacts, progress))
        return CommandResult::Done;
    if (store.client().isAbandoned())
        return CommandResult::Failed;
    show(store,
         {.text = u"Beim Löschen ist ein Fehler aufgetreten. Bitte lesen Sie das Telefonbuch erneut ein, um "
                  u"Inkonsistenzen zu vermeiden."_s,
          .icon = Icon::Information});
    store.forget();
    return CommandResult::Failed;
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
                     .icon = Icon::Information});
        return CommandResult::Failed;
    }
    if (asksForCodes && !store.client().isAbandoned() && store.list() && hasWrongNumbers(*store.list()) &&
        askToEditCodes(store)) {
        readCodes();
        if (!answer.isEmpty())
            editAreaCodes(answer);
    }
    return CommandResult::Done;
}

} // namespace kalmo::ui
