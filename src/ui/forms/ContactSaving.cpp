// Saving the contact of a form.

#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "ui/forms/ContactChange.h"
#include "ui/forms/ContactMessages.h"

#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::CommandResult;
using phonedata::tVcfEntry;
using phonedata::VcardStore;
using toolkit::Icon;

namespace {

const QString oldKeyPrefix = u"temp_"_s;

/// The row of a contact that is being saved. Its key is put aside: the new row may need it.
class OldRow
{
public:
    /// `luid` is empty for a new contact, which has no row.
    OldRow(toolkit::ListRows& list, const QString& luid)
        : m_list(list), m_ownKey(luid.isEmpty() ? QString() : phonedata::vcfKey(luid))
    {
    }

    void putKeyAside()
    {
        const int row = find();
        if (row < 0)
            return;
        m_key = oldKeyPrefix + m_list.row(row).key;
        m_list.setKey(row, m_key);
    }
    void putKeyBack()
    {
        if (const int row = find(); row >= 0)
            m_list.setKey(row, m_ownKey);
        m_key.clear();
    }
    /// Removes the row from beside the new one.
    void remove()
    {
        if (const int row = m_key.isEmpty() ? -1 : m_list.indexOfKey(m_key); row >= 0)
            m_list.removeAt(row);
    }

private:
    /// Also finds it under the key that a save before has left.
    int find() const
    {
        for (int row = 0; !m_ownKey.isEmpty() && row < m_list.count(); ++row) {
            QStringView key = m_list.row(row).key;
            while (key.startsWith(oldKeyPrefix))
                key = key.sliced(oldKeyPrefix.size());
            if (key == m_ownKey)
                return row;
        }
        return -1;
    }

    toolkit::ListRows& m_list;
    QString m_ownKey;
    QString m_key; // put aside, else empty
};

QString editTitle()
{
    return app::productName() + u" - Adressbuch bearbeiten"_s;
}

/// Looks for the contact of a save whose answer was lost. If the phone holds it, it is the one that the form
/// edits from now on. Returns true if it is there.
bool findOpenSave(const operations::ContactEdit& edit, EditedContact& edited)
{
    const auto open = std::exchange(edited.openSave, std::nullopt);
    const phonedata::ContactCard* card =
        open ? operations::findAdded(edit.held().cards, open->before, open->sent) : nullptr;
    if (card)
        edited.shown = card->entry;
    return card;
}

/// Without all cards nobody can tell if the contact is there already.
bool requireWhole(const VcardStore& store, const operations::ContactEdit& edit)
{
    if (edit.held().isConfirmed())
        return true;
    show(store,
         {.text = u"Das Telefonbuch kam nicht vollständig an. Kalmo kann daher nicht feststellen, ob der "
                  u"Kontakt schon gespeichert ist.\n\n"
                  u"Im Telefon wurde nichts geändert. Bitte versuchen Sie es erneut."_s,
          .title = editTitle(),
          .icon = Icon::Exclamation});
    return false;
}

/// The plan for one contact. An empty one if the phone holds it already.
std::optional<operations::ContactPlan> planSave(const VcardStore& store, const operations::ContactEdit& edit,
                                                tVcfEntry entry, EditedContact& edited)
{
    const bool isNew = !edited.shown; // another one is found by its LUID
    if (isNew && edited.openSave && !requireWhole(store, edit))
        return std::nullopt;
    if (findOpenSave(edit, edited) && phonedata::haveSameContent(*edited.shown, entry))
        return operations::ContactPlan();
    if (!edited.shown)
        return operations::planAdd({std::move(entry)});
    entry.luid = edited.shown->luid;
    const operations::LuidPlan found = operations::planChange(edit.held(), entry);
    if (!requireFound(store, found))
        return std::nullopt;
    const tVcfEntry& held = found.plan.change.front().from;
    const bool mayChange =
        phonedata::haveSameContent(held, entry) || confirmOther(store, *edited.shown, held);
    return mayChange ? std::optional(found.plan) : std::nullopt;
}

/// Makes a saved contact the current row, so that the user sees it.
void selectContact(VcardStore& store, const QString& luid)
{
    const int row = luid.isEmpty() ? -1 : store.list()->indexOfKey(phonedata::vcfKey(luid));
    if (row >= 0)
        store.list()->setCurrent(row);
}

ContactChange writeContact(VcardStore& store, const tVcfEntry& entry, EditedContact& edited, OldRow& oldRow,
                           const toolkit::Progress& progress)
{
    using operations::RecordCause;
    const auto plan = [&](const operations::ContactEdit& edit) -> std::optional<PlannedContacts> {
        const bool wasOpen = edited.openSave.has_value();
        const auto planned = planSave(store, edit, entry, edited);
        if (!planned)
            return std::nullopt;
        if (wasOpen || lacksContacts(store, edit)) {
            oldRow.putKeyBack();
            store.showReading(edit.held());
            oldRow.putKeyAside();
        }
        return PlannedContacts{*planned, planned->add.empty() ? RecordCause::Change : RecordCause::Add};
    };
    const auto accept = [&](const operations::ContactEdit& edit, const operations::ContactOutcome& outcome) {
        if (outcome.facts.unknown > 0)
            edited.openSave = {entry, edit.held().cards};
        const bool wasThere = outcome.facts.isDone() && outcome.facts.planned == 0;
        if (!wasThere && (outcome.facts.confirmed == 0 || !acceptChange(store, edit, outcome)))
            return false;
        if (wasThere)
            oldRow.putKeyBack();
        else
            oldRow.remove();
        showMismatches(store, edit, outcome);
        selectContact(store, wasThere ? edited.shown->luid : outcome.luids.value(0));
        return true;
    };
    return changeContacts(store, progress, plan, accept);
}

} // namespace

CommandResult saveContact(VcardStore& store, const tVcfEntry& entry, EditedContact& edited,
                          const toolkit::Progress& progress)
{
    if (!entry.hasNumber()) {
        show(store, {.text = u"Bitte geben Sie mindestens eine Telefonnummer ein."_s,
                     .title = app::productName() + u" - Eintrag speichern"_s,
                     .icon = Icon::Information});
        return CommandResult::Refused;
    }
    const auto keep = store.shared_from_this();
    OldRow oldRow(*store.list(), edited.shown ? edited.shown->luid : QString());
    oldRow.putKeyAside();
    const ContactChange change = writeContact(store, entry, edited, oldRow, progress);
    if (change.result == CommandResult::Refused || change.result == CommandResult::Cancelled)
        oldRow.putKeyBack();
    if (change.result == CommandResult::Failed) {
        const QString failed = u"Fehler beim Schreiben des Adressbucheintrags."_s;
        const QString next = u" Wenn Sie noch einmal speichern, sieht Kalmo zuerst nach."_s;
        show(store, {.text = edited.openSave ? failed + u"\n\n"_s + unknownSave() + next : failed,
                     .title = editTitle(),
                     .icon = Icon::Exclamation,
                     .about = edited.openSave ? toolkit::About::Other : toolkit::About::Result});
    }
    if (change.result == CommandResult::Done && !change.facts.isUncompared() &&
        app::isOn(store.context().settings, app::keys::ShowSuccessPopup))
        show(store, {.text = u"Eintrag gespeichert."_s, .title = editTitle(), .icon = Icon::Information});
    return change.result;
}

} // namespace kalmo::ui
