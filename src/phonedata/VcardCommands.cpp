#include "phonedata/VcardCommands.h"

#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "link/PhoneModels.h"
#include "toolkit/Progress.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::ListRows;
using toolkit::Progress;

namespace {

const QString oldKeyPrefix = u"temp_"_s;

void tell(const VcardStore& store, const toolkit::Message& message)
{
    if (!store.client().isAbandoned())
        store.context().dialogs.Show(message);
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

/// Whether the user, told of wrong numbers, wants to see to the codes.
bool wantsToEditCodes(const VcardStore& store)
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

bool mayAddContact(const VcardStore& store)
{
    if (store.freePlaces() >= 1)
        return true;
    tell(store, {.text = u"Es ist kein freier Speicherplatz vorhanden."_s,
                 .title = app::productName() + u" - neuer Eintrag"_s,
                 .icon = Icon::Information,
                 .english = u"The phonebook is full."_s});
    return false;
}

bool mayEditContact(const VcardStore& store, int row)
{
    const ListRows* list = store.list();
    if (!list || row < 0 || row >= list->count())
        return false;
    if (hasValidLuid(list->row(row)))
        return true;
    tell(store,
         {.text = u"Der gewählte Eintrag verfügt über keine gültige Referenznummer.\n"_s + readAgainAdvice(),
          .icon = Icon::Information,
          .english = u"The entry has no valid reference. Read the phonebook again first."_s});
    return false;
}

CommandResult saveContact(VcardStore& store, const tVcfEntry& entry, int row, const Progress& progress,
                          VcardStore::Report* report)
{
    const QString title = app::productName() + u" - Adressbuch bearbeiten"_s;
    if (!entry.hasNumber()) {
        tell(store, {.text = u"Bitte geben Sie mindestens eine Telefonnummer ein."_s,
                     .title = app::productName() + u" - Eintrag speichern"_s,
                     .icon = Icon::Information,
                     .english = u"A contact needs at least one number."_s});
        return CommandResult::Refused;
    }
    const auto keep = store.weak_from_this().lock();
    const QString oldKey = entry.luid.isEmpty() ? QString() : moveKeyAway(store.list(), row);
    if (!store.VcfWriteList({entry}, progress, report)) {
        tell(store, {.text = u"Fehler beim Schreiben des Adressbucheintrags."_s,
                     .title = title,
                     .icon = Icon::Exclamation,
                     .english = u"The contact could not be written."_s});
        return CommandResult::Failed;
    }
    removeRow(store.list(), oldKey);
    if (app::isOn(store.context().settings, app::keys::ShowSuccessPopup))
        tell(store, {.text = u"Eintrag gespeichert."_s, .title = title, .icon = Icon::Information});
    return CommandResult::Done;
}

bool hasWrongNumbers(const ListRows& list)
{
    for (int row = 0; row < list.count(); ++row) {
        for (const VcfColumn column : {VcfHome, VcfMobile, VcfWork}) {
            if (list.text(row, column).contains(u'f', Qt::CaseInsensitive))
                return true;
        }
    }
    return false;
}

CommandResult refreshContacts(VcardStore& store, const Progress& progress, toolkit::BusyWindow* window,
                              const AreaCodeDialog& editAreaCodes)
{
    const auto keep = store.weak_from_this().lock();
    link::Line& line = store.client().line();
    const bool asksForCodes = link::hasAreaCodes(store.context().sy.PhoneType);
    QString answer;
    const auto readCodes = [&] {
        const toolkit::BusyScope busy(window);
        return ReadAreaCodes(line, progress.panel, answer);
    };
    if (asksForCodes && !readCodes())
        editAreaCodes(answer);
    if (!store.VcfReadList(progress)) {
        tell(store, {.text = u"Fehler beim Lesen des Adressbuchs."_s,
                     .title = app::productName() + u" - Fehler"_s,
                     .icon = Icon::Information,
                     .english = u"The phonebook could not be read."_s});
        return CommandResult::Failed;
    }
    if (asksForCodes && !store.client().isAbandoned() && store.list() && hasWrongNumbers(*store.list()) &&
        wantsToEditCodes(store)) {
        readCodes();
        if (!answer.isEmpty())
            editAreaCodes(answer);
    }
    return CommandResult::Done;
}

} // namespace kalmo::phonedata
