#include "phonedata/StoreSafety.h"

#include "app/Files.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/ClassicPhonebook.h"
#include "phonedata/ProviderList.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

bool askToGoOn(const StoreJob& job, const QString& german, const QString& english)
{
    const Answer answer = job.context().dialogs.Show({.text = german + u"\n\nTrotzdem schreiben?"_s,
                                                      .buttons = Buttons::YesNo,
                                                      .icon = Icon::Exclamation,
                                                      .defaultButton = Answer::No,
                                                      .english = english + u" Write all the same?"_s});
    return answer == Answer::Yes;
}

/// Whoever edits a list may meanwhile get a call, use the handset's own keys, or put another one on the
/// cable.
constexpr qint64 trustedFor = 120; // seconds

template <typename Content>
bool isFresh(const StoreJob& job, const Content& content)
{
    const qint64 age = content.since.secsTo(job.context().clock.Now()); // below 0 if the clock was set back
    return content.certainty != Certainty::Unknown && age >= 0 && age <= trustedFor;
}

/// Reads the store once more, beside the list that is about to be written. If that fails, what was known
/// before is still worth saving, but no longer certain.
template <typename Content>
void learnContent(const StoreJob& job, Store store, Content& content)
{
    if (isFresh(job, content))
        return;
    const Content before = content;
    const auto scratch = makeRows(store);
    readStore({job.line, job.memory, *scratch, job.window, job.progress}, store);
    if (content.certainty != Certainty::Unknown || before.certainty == Certainty::Unknown)
        return;
    content = before;
    content.certainty = Certainty::Doubtful;
}

void noteTime(const StoreJob& job, Store store)
{
    (store == Store::Phonebook ? job.memory.phonebook.since : job.memory.providers.since) =
        job.context().clock.Now();
}

} // namespace

Certainty certaintyOf(const PhoneMemory& memory, Store store)
{
    return store == Store::Phonebook ? memory.phonebook.certainty : memory.providers.certainty;
}

int entriesInPhone(const PhoneMemory& memory, Store store)
{
    return static_cast<int>(store == Store::Phonebook ? memory.phonebook.entries.size()
                                                      : memory.providers.entries.size());
}

void forgetContent(PhoneMemory& memory, Store store)
{
    if (store == Store::Phonebook)
        memory.phonebook.forget();
    else
        memory.providers.forget();
}

bool readStore(const StoreJob& job, Store store)
{
    const bool read = store == Store::Phonebook ? ReadPB_TB(job) : ReadPB_NE(job);
    noteTime(job, store);
    return read;
}

bool writeStore(const StoreJob& job, Store store)
{
    const bool written = store == Store::Phonebook ? WritePB_TB(job) : WritePB_NE(job);
    noteTime(job, store);
    return written;
}

std::unique_ptr<toolkit::ListRows> makeRows(Store store)
{
    return store == Store::Phonebook ? makePhonebookRows() : makeProviderRows();
}

QByteArray listBytes(const toolkit::ListRows& list, Store store)
{
    return store == Store::Phonebook ? telBytes(classicEntries(list)) : prvBytes(providerEntries(list));
}

QByteArray contentBytes(const PhoneMemory& memory, Store store)
{
    return store == Store::Phonebook ? telBytes(memory.phonebook.entries)
                                     : prvBytes(memory.providers.entries);
}

QString backupExtension(Store store)
{
    return store == Store::Phonebook ? u".tel"_s : u".prv"_s;
}

bool secureContent(const StoreJob& job, Store store, const QByteArray& savedBytes, QString& path)
{
    path.clear();
    if (store == Store::Phonebook)
        learnContent(job, store, job.memory.phonebook);
    else
        learnContent(job, store, job.memory.providers);
    const Certainty certainty = certaintyOf(job.memory, store);
    if (certainty == Certainty::Unknown)
        return askToGoOn(
            job,
            u"Der bisherige Inhalt des Telefons konnte nicht gelesen und daher nicht gesichert werden. "
            u"Beim Schreiben geht er verloren."_s,
            u"What the phone holds could not be read, so it is not backed up and writing loses it."_s);
    const QByteArray bytes = contentBytes(job.memory, store);
    if (!bytes.isEmpty() && bytes != savedBytes) {
        const QString target = phoneCopyPath(job.context(), backupExtension(store));
        QString reason;
        if (!app::writeWholeFile(target, bytes, &reason))
            return askToGoOn(
                job,
                u"Der bisherige Inhalt des Telefons konnte nicht in der Datei %1 gesichert werden: %2"_s.arg(
                    target, reason),
                u"What the phone holds could not be saved as %1: %2."_s.arg(target, reason));
        path = target;
    }
    if (certainty == Certainty::Doubtful)
        return askToGoOn(
            job,
            u"Beim letzten Lesen war die Übertragung gestört, und dabei kann ein Eintrag übersprungen oder "
            u"verfälscht worden sein. Ein solcher Eintrag geht beim Schreiben verloren. Besser ist es, "
            u"die Liste vorher noch einmal zu lesen."_s,
            u"The line was disturbed during the last read, so an entry may have been skipped or garbled and "
            u"would be lost. It is better to read again first."_s);
    return true;
}

} // namespace kalmo::phonedata
