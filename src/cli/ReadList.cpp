#include "cli/ReadList.h"

#include "cli/OutputFile.h"
#include "cli/Stop.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "link/PhoneModels.h"
#include "operations/EntryJson.h"
#include "phonedata/Ringtones.h"
#include "phonedata/StoreSafety.h"

namespace kalmo::cli {

using phonedata::Store;

namespace {

/// Reads the handset's own melodies, by whose names a list says which of them is set. True if they came twice
/// the same, or if nothing in the store needs them.
bool learnMelodies(Job& job, Store store)
{
    if (store != Store::Phonebook || !link::hasRingtoneSettings(job.phoneType()))
        return true;
    QList<QStringList> readings;
    for (int time = 0; time < 2; ++time) {
        const auto rows = phonedata::makeSoundRows();
        if (!phonedata::ReadSoundList({job.line, job.memory, nullptr, nullptr}, *rows))
            return false;
        QStringList melodies;
        for (int index = 0; index < rows->count(); ++index)
            melodies += {rows->row(index).key, rows->text(index, 0)};
        readings.append(melodies);
    }
    return readings.first() == readings.last();
}

ExitStatus readOnce(Job& job, Store store, ListRead& read)
{
    const QString name = wordsOf(store).name.toString();
    const auto list = phonedata::makeRows(store);
    job.progress.phase(u"Reading the %1"_s.arg(name));
    const bool knowsMelodies = learnMelodies(job, store);
    int given = 0; // of a reading that fails the list keeps none
    QObject::connect(list.get(), &toolkit::ListRows::inserted, list.get(), [&] {
        given = list->count();
        job.progress.count(given);
    });
    bool done = false;
    {
        phonedata::forgetContent(job.memory,
                                 store); // what is known of it afterwards is what this reading knows
        const StoreOpenScope open;
        done = phonedata::readStore(
            {job.line, job.memory, *list, nullptr, {.bar = &job.progress, .cancel = &job.stop}}, store);
    }
    job.progress.clear();
    if (!done && job.stop.Checked()) {
        job.out.error(u"could not read the %1: interrupted."_s.arg(name));
        return ExitRefused;
    }
    if (!done) {
        QString cause =
            given == 0 ? u"the phone gave no entry"_s : u"the phone did not give entry %1"_s.arg(given + 1);
        if (!job.line.port().IsOpen())
            cause = u"%1 is gone"_s.arg(job.portName());
        else if (phonedata::certaintyOf(job.memory, store) != phonedata::Certainty::Unknown)
            cause = u"the phone did not confirm the end"_s;
        job.out.error(u"could not read the %1: %2."_s.arg(name, cause));
        return ExitFailed;
    }
    read.entries = phonedata::classicEntries(*list);
    read.isDoubtful =
        !knowsMelodies || phonedata::certaintyOf(job.memory, store) == phonedata::Certainty::Doubtful;
    return ExitDone;
}

} // namespace

ExitStatus readList(Job& job, Store store, ListRead& read)
{
    const ExitStatus status = readOnce(job, store, read);
    if (status != ExitDone || !read.isDoubtful)
        return status;
    job.out.note(
        u"The line was disturbed, so an entry may have been skipped or garbled; reading once more.\n"_s);
    return readOnce(job, store, read);
}

ExitStatus showList(Job& job, Store store)
{
    const QString path = job.invocation.value(u"--output"_s);
    ListRead read;
    if (const ExitStatus status = readList(job, store, read); status != ExitDone)
        return status;
    const operations::SavedList list{.kind = operations::savedKind(store), .entries = read.entries};
    const auto bytes = [&] { return operations::savedListBytes(path, list); };
    const bool isSaved = saveOutput(job, {read.entries.size(), read.isDoubtful, bytes});
    std::vector<QStringList> rows;
    for (const phonedata::ClassicEntry& entry : read.entries)
        rows.push_back(entryCells(entry, store));
    if (path.isEmpty() || job.out.isJson())
        job.out.show(operations::entryJson(list), alignedTable(entryHeadings(store), rows));
    if (!isSaved)
        return ExitFailed;
    if (!read.isDoubtful && (path.isEmpty() || read.entries.empty() || operations::bringsBack(path, list)))
        return ExitDone;
    if (!read.isDoubtful) {
        job.out.error(
            u"could not save all texts in %1 as the phone has them. Save them in a .json file too."_s.arg(
                path));
        return ExitFailed;
    }
    job.out.error(
        u"could not read without a disturbance, so an entry may be missing or garbled. Read again."_s);
    return ExitFailed;
}

} // namespace kalmo::cli
