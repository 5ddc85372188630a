#include "phonedata/ClassicCommands.h"

#include "app/SettingsKeys.h"
#include "link/mdlStatus.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/StoreSafety.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

const QString accessError = u"Fehler beim Zugriff auf das Telefon"_s;

void tell(const StoreJob& job, const QString& text)
{
    job.context().dialogs.Show({.text = text, .icon = Icon::Information});
}

/// Saves the list under the automatic backup's name. False if it can't be written; then nothing may be
/// erased.
bool backUpList(const StoreJob& job, Store store, QString& path)
{
    app::Context& context = job.context();
    if (!app::isOn(context.settings, app::keys::AutoBackup) || job.list.count() == 0)
        return true;
    path = backupPath(context, u"Backup von "_s, backupExtension(store));
    return store == Store::Phonebook ? SaveTel(context, job.list, path) : SavePrv(context, job.list, path);
}

QString failureText(const StoreJob& job, Store store, const QString& listBackup, const QString& phoneCopy)
{
    QString text = accessError;
    if (certaintyOf(job.memory, store) == Certainty::Unknown)
        text += u"\n\nWas das Telefon jetzt enthält, ist nicht bekannt."_s;
    else
        text += u"\n\nIm Telefon stehen jetzt %1 von %2 Einträgen."_s.arg(entriesInPhone(job.memory, store))
                    .arg(job.list.count());
    if (!listBackup.isEmpty())
        text += u"\n\nDie Liste, die geschrieben werden sollte, ist gesichert in:\n"_s + listBackup;
    if (!phoneCopy.isEmpty())
        text += u"\n\nDer bisherige Inhalt des Telefons ist gesichert in:\n"_s + phoneCopy;
    text += u"\n\nDie Liste im Fenster ist unverändert. Stellen Sie die Verbindung wieder her und führen Sie "
            u"\"Schreiben\" noch einmal aus"_s;
    const bool isSaved = !listBackup.isEmpty() || !phoneCopy.isEmpty();
    return text + (isSaved ? u", oder öffnen Sie vorher eine dieser Sicherungen."_s : u"."_s);
}

} // namespace

bool isDirty(const PhoneMemory& memory, Store store)
{
    return store == Store::Phonebook ? memory.TbDirty : memory.NeDirty;
}

void setDirty(PhoneMemory& memory, Store store, bool dirty)
{
    (store == Store::Phonebook ? memory.TbDirty : memory.NeDirty) = dirty;
}

QString unsavedChangesText(Store store)
{
    const QString list = store == Store::Phonebook ? u"am Telefonbuch"_s : u"an der Providerliste"_s;
    return u"Es wurden Änderungen "_s + list +
           u" vorgenommen, diese wurden jedoch noch nicht durch die Funktion \"Schreiben\" übernommen.\n\n"
           u"Trotzdem fortfahren?"_s;
}

CommandResult readCommand(const StoreJob& job, Store store)
{
    if (isDirty(job.memory, store)) {
        const Answer answer = job.context().dialogs.Show({.text = unsavedChangesText(store),
                                                          .buttons = Buttons::YesNo,
                                                          .icon = Icon::Question,
                                                          .defaultButton = Answer::No});
        if (answer != Answer::Yes)
            return CommandResult::Refused;
    }
    if (!readStore(job, store)) {
        if (!job.progress.cancelled())
            tell(job, accessError);
        return CommandResult::Failed;
    }
    setDirty(job.memory, store, false);
    if (certaintyOf(job.memory, store) == Certainty::Doubtful)
        tell(job,
             u"Beim Lesen war die Übertragung gestört. Es ist möglich, dass dabei ein Eintrag übersprungen "
             u"oder verfälscht wurde. Bitte lesen Sie die Liste noch einmal ein, bevor Sie sie ändern oder "
             u"schreiben."_s);
    return CommandResult::Done;
}

CommandResult writeCommand(const StoreJob& job, Store store)
{
    QString listBackup;
    if (!backUpList(job, store, listBackup))
        return CommandResult::Failed;
    const QByteArray saved = listBackup.isEmpty() ? QByteArray() : listBytes(job.list, store);
    QString model;
    if (!link::GetPhoneModelText(job.line, model)) {
        tell(job, u"Das Telefon antwortet nicht."_s);
        return CommandResult::Failed;
    }
    QString phoneCopy;
    if (!secureContent(job, store, saved, phoneCopy))
        return CommandResult::Refused;
    // Half a list in the phone would be worse than a user who has to wait.
    StoreJob uncancelled = job;
    uncancelled.progress.cancel = nullptr;
    if (!writeStore(uncancelled, store)) {
        tell(job, failureText(job, store, listBackup, phoneCopy));
        return CommandResult::Failed;
    }
    setDirty(job.memory, store, false);
    if (certaintyOf(job.memory, store) == Certainty::Doubtful)
        tell(job, u"Beim Schreiben war die Übertragung gestört. Es ist möglich, dass ein Eintrag doppelt im "
                  u"Telefon steht. Bitte lesen Sie die Liste noch einmal ein."_s);
    return CommandResult::Done;
}

} // namespace kalmo::phonedata
