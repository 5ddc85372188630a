#include "ui/forms/ContactMessages.h"

#include "app/Version.h"
#include "operations/ContactFields.h"
#include "operations/SavedLists.h"
#include "operations/SavedText.h"
#include "ui/forms/FormerStateWords.h"
#include "ui/forms/SomeOf.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::tVcfEntry;
using phonedata::VcardStore;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

constexpr qsizetype mostNames = 10; // that a message lists

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

} // namespace

void show(const VcardStore& store, const toolkit::Message& message)
{
    store.context().dialogs.Show(message);
}

QString readAgainAdvice()
{
    return u"Dies kann aufgrund eines Fehler im Gigaset, der bisher von der Firma Gigaset nicht behoben "
           u"wurde unter ungünstigen Umständen vorkommen. Bitte lesen Sie das Telefonbuch einmal komplett "
           u"neu ein "
           u"(Schaltfläche \"Neu Laden\"). Danach können Sie den betroffenen Eintrag beliebig ändern oder löschen."_s;
}

void showUnreachable(const VcardStore& store, const std::vector<tVcfEntry>& contacts)
{
    QStringList names;
    for (const tVcfEntry& contact : contacts)
        names.append(operations::contactName(contact));
    show(store, {.text = u"Das Telefon hat für diese Einträge keine Referenznummer, oder es ist sein eigener "
                         u"Eintrag. Sie lassen sich nur am Telefon ändern oder löschen:\n\n"_s +
                         someOf(names, mostNames, u"\n"_s),
                 .icon = Icon::Information});
}

void showOwnFailure(const VcardStore& store, const operations::Outcome& facts)
{
    if (facts.isRecordOpen)
        show(store, {.text = openRecordInWords(), .icon = Icon::Exclamation});
    if (facts.cause == operations::Cause::Doubtful)
        show(store, {.text = u"Das Telefon hat nicht mitgeteilt, wie viele Einträge es enthält. Im Telefon "
                             u"wurde nichts geändert. Bitte versuchen Sie es erneut."_s,
                     .icon = Icon::Exclamation});
    if (facts.cause != operations::Cause::NotSaved)
        return;
    show(store, {.text = u"Der bisherige Stand des Telefonbuchs konnte nicht gesichert werden: %1\n\n"
                         u"Im Telefon wurde nichts geändert."_s.arg(reasonInWords(facts.saveFault)),
                 .icon = Icon::Exclamation});
}

void showOwnFailure(const VcardStore& store, const operations::ContactOutcome& outcome)
{
    if (outcome.hasChangedMeanwhile) {
        show(store,
             {.text = u"Das Telefonbuch wurde im Telefon geändert, während Sie gefragt wurden. Kalmo hat "
                      u"im Telefon nichts geändert.\n\n"
                      u"Bitte lesen Sie das Telefonbuch erneut ein (Schaltfläche \"Neu laden\")."_s,
              .icon = Icon::Exclamation});
        return;
    }
    showOwnFailure(store, outcome.facts);
    if (outcome.facts.isUncompared())
        show(store,
             {.text = u"Das Telefon hat die Änderung bestätigt. Danach konnte das Telefonbuch nicht "
                      u"vollständig zur Kontrolle gelesen werden. Die Liste zeigt, was Kalmo gesendet "
                      u"hat.\n\nBitte lesen Sie das Telefonbuch erneut ein (Schaltfläche \"Neu laden\")."_s,
              .icon = Icon::Exclamation});
}

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

void showImportMismatches(VcardStore& store, const operations::ContactEdit& edit,
                          const operations::ContactOutcome& outcome)
{
    if (outcome.mismatches.empty() || !edit.heldAfter())
        return;
    store.showReading(*edit.heldAfter());
    QStringList lines;
    for (const auto& [written, held] : outcome.mismatches) {
        const QString fields = fieldsOf(held);
        lines.append(fieldsOf(written) + u" → "_s + (fields.isEmpty() ? u"fehlt"_s : fields));
    }
    show(store,
         {.text =
              u"Das Telefon hat %1 von %2 Kontakten nicht so gespeichert, wie sie importiert wurden:\n\n%3"_s
                  .arg(lines.size())
                  .arg(outcome.facts.planned)
                  .arg(someOf(lines, mostNames, u"\n"_s)),
          .title = app::productName() + u" - Datensätze Importieren"_s,
          .icon = Icon::Exclamation});
}

bool requireFound(const VcardStore& store, const operations::LuidPlan& found)
{
    if (found.isSound())
        return true;
    show(store, {.text = u"Der Eintrag wurde im Telefon nicht gefunden. Im Telefon wurde nichts geändert.\n\n"
                         u"Bitte lesen Sie das Telefonbuch erneut ein (Schaltfläche \"Neu laden\")."_s,
                 .icon = Icon::Exclamation});
    return false;
}

QString unknownSave()
{
    return u"Es ist nicht bekannt, ob das Telefon den Kontakt gespeichert hat."_s;
}

QString nothingImported()
{
    return u"Es wurde nichts importiert."_s;
}

QString stoppedImport(const ContactImport& imported)
{
    const QString stopped = u"Der Import wurde abgebrochen. "_s;
    if (imported.confirmed == 0)
        return stopped + u"Im Telefon wurde nichts geändert."_s;
    const QString verb = imported.confirmed == 1 ? u"ist"_s : u"sind"_s;
    return stopped +
           u"%1 von %2 Kontakten %3 im Telefon."_s.arg(imported.confirmed).arg(imported.planned).arg(verb);
}

bool confirmOther(const VcardStore& store, const tVcfEntry& shown, const tVcfEntry& held)
{
    if (phonedata::haveSameContent(shown, held))
        return true;
    return store.context().dialogs.Show(
               {.text = u"Der Eintrag wurde im Telefon geändert, seit das Telefonbuch eingelesen wurde.\n\n"
                        u"In der Liste: %1\nIm Telefon: %2\n\n"
                        u"Möchten Sie den Eintrag im Telefon trotzdem ändern bzw. löschen?"_s.arg(
                            fieldsOf(shown), fieldsOf(held)),
                .title = app::productName() + u" - Adressbuch bearbeiten"_s,
                .buttons = Buttons::YesNo,
                .icon = Icon::Question,
                .defaultButton = Answer::No}) == Answer::Yes;
}

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

QString lossText(const operations::CardLosses& losses)
{
    QStringList parts;
    if (!losses.characters.isEmpty())
        parts.append(u"Das Telefon gibt diese Zeichen möglicherweise nicht so zurück, wie Sie sie eingegeben "
                     u"haben: %1"_s.arg(losses.characters));
    else if (!losses.edited.empty())
        parts.append(u"Eine Angabe kommt aus dem Telefon anders zurück, als Sie sie eingegeben haben.\n\n"
                     u"Eingegeben: %1\nZurück kommt: %2"_s.arg(losses.edited.front().wanted,
                                                               losses.edited.front().back));
    for (const auto& [wanted, back] : losses.hidden)
        parts.append(u"Der Name wird hier anders angezeigt, als er im Telefon steht. Beim Speichern geht das "
                     u"verloren.\n\nIm Telefon: %1\nGespeichert wird: %2"_s.arg(wanted, back));
    return parts.join(u"\n\n"_s);
}

bool confirmLosses(const VcardStore& store, const std::vector<tVcfEntry>& contacts)
{
    QStringList names;
    for (const tVcfEntry& contact : contacts) {
        if (!operations::lossesWhenSent(contact).isEmpty())
            names.append(operations::contactName(contact));
    }
    return names.isEmpty() ||
           store.context().dialogs.Show(
               {.text = u"Das Telefon gibt einige Zeichen dieser Kontakte möglicherweise anders zurück:\n\n%1"
                        u"\n\nMöchten Sie die Kontakte trotzdem importieren?"_s.arg(
                            someOf(names, mostNames, u"\n"_s)),
                .title = app::productName() + u" - Datensätze Importieren"_s,
                .buttons = Buttons::YesNo,
                .icon = Icon::Question,
                .defaultButton = Answer::No}) == Answer::Yes;
}

QString cutText(const VcardStore& store, const QString& path)
{
    using operations::SavedKind;
    // A name without an ending of the table is that of a .csv file.
    const QString saved = operations::findFormat(path, SavedKind::Contacts) ? path : path + u".csv"_s;
    QStringList names;
    const toolkit::ListRows& list = *store.list();
    for (int row = 0; row < list.count(); ++row) {
        const tVcfEntry contact = operations::withLongDay(phonedata::vcfEntryFrom(list.row(row)));
        if (!operations::holdsNothing(contact) &&
            !operations::bringsBack(saved, {.kind = SavedKind::Contacts, .contacts = {contact}}))
            names.append(operations::contactName(contact));
    }
    const phonedata::ContactReading* reading = store.lastReading();
    if (reading && !operations::endsIn(path, u".vcf"))
        names += operations::contactsBeyondFields(reading->cards);
    names.removeDuplicates();
    return names.isEmpty() ? QString()
                           : u"Von diesen Kontakten enthält die Datei nicht alles:\n\n"_s +
                                 someOf(names, mostNames, u"\n"_s);
}

} // namespace kalmo::ui
