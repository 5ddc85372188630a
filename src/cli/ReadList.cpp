#include "cli/ReadList.h"

#include "cli/OutputFile.h"
#include "cli/Stop.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "operations/EntryJson.h"
#include "operations/SavedLists.h"

namespace kalmo::cli {

using operations::Cause;
using operations::ListStep;
using phonedata::Certainty;
using phonedata::Store;

operations::ListJob listJob(Job& job, Store store)
{
    const QString name = wordsOf(store).name.toString();
    const auto show = [&job, name](ListStep step) {
        if (step == ListStep::Writing) {
            job.progress.phase(u"Erasing the %1, which can take minutes"_s.arg(name),
                               u"Writing the %1"_s.arg(name));
            return;
        }
        if (step == ListStep::ReadingAgain)
            job.out.note(u"The reading is not sure; reading once more.\n"_s);
        job.progress.phase(u"Reading the %1"_s.arg(name));
    };
    return {.line = job.line,
            .memory = job.memory,
            .store = store,
            .progress = {.bar = &job.progress, .cancel = &job.stop},
            .onStep = show,
            .onEntryRead = [&job](int entries) { job.progress.count(entries); }};
}

ExitStatus tellReadFailure(Job& job, Store store, const operations::ListReading& reading)
{
    job.progress.clear();
    const QStringView name = wordsOf(store).name;
    if (reading.cause == Cause::Interrupted) {
        job.out.error(u"could not read the %1: interrupted."_s.arg(name));
        return ExitRefused;
    }
    QString reason = reading.given == 0 ? u"the phone gave no entry"_s
                                        : u"the phone did not give entry %1"_s.arg(reading.given + 1);
    if (reading.cause == Cause::LineGone)
        reason = u"%1 is gone"_s.arg(job.portName());
    else if (reading.isWhole)
        reason = u"the phone did not confirm the end"_s;
    job.out.error(u"could not read the %1: %2."_s.arg(name, reason));
    return ExitFailed;
}

ExitStatus readList(Job& job, Store store, ListRead& read)
{
    const operations::ListJob list = listJob(job, store);
    operations::ListReading reading;
    {
        const StoreOpenScope open;
        reading = operations::readList(list, readPolicy);
    }
    job.progress.clear();
    if (reading.cause != Cause::None)
        return tellReadFailure(job, store, reading);
    const phonedata::StoreContent& content = list.content();
    read = {content.entries, content.certainty == Certainty::Doubtful, content.lacksOnlyMelodies,
            doubtInWords(content)};
    return ExitDone;
}

QString doubtInWords(const phonedata::StoreContent& content)
{
    return content.lacksOnlyMelodies
               ? u"the names of the handset's own melodies could not be read, so the list may name others"_s
               : u"the line was disturbed, so an entry may be missing or garbled"_s;
}

ExitStatus showList(Job& job, Store store)
{
    const QString path = job.invocation.value(u"--output"_s);
    ListRead read;
    if (const ExitStatus status = readList(job, store, read); status != ExitDone)
        return status;
    const operations::SavedList saved{.kind = operations::savedKind(store), .entries = read.entries};
    const operations::Entries& entries = saved.entries;
    const bool isDoubtful = read.isDoubtful;
    const auto bytes = [&] { return operations::savedListBytes(path, saved); };
    const bool isSaved = saveOutput(job, {entries.size(), isDoubtful, bytes});
    std::vector<QStringList> rows;
    for (const phonedata::ClassicEntry& entry : entries)
        rows.push_back(entryCells(entry, store));
    if (path.isEmpty() || job.out.isJson())
        job.out.show(operations::entryJson(saved), alignedTable(entryHeadings(store), rows));
    if (!isSaved)
        return ExitFailed;
    if (!isDoubtful && (path.isEmpty() || entries.empty() || operations::bringsBack(path, saved)))
        return ExitDone;
    if (!isDoubtful) {
        job.out.error(
            u"could not save all texts in %1 as the phone has them. Save them in a .json file too."_s.arg(
                path));
        return ExitFailed;
    }
    job.out.error(u"could not read the %1 for sure: %2. Read again."_s.arg(wordsOf(store).name, read.doubt));
    return ExitFailed;
}

} // namespace kalmo::cli
