#include "operations/Undo.h"

#include "operations/UndoClassic.h"
#include "operations/UndoContacts.h"
#include "operations/UndoFiles.h"

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

std::optional<Record> latestChange(const Records& records)
{
    for (const Record& header : records.all()) {
        auto record = header.state == State::Unchanged ? std::nullopt : records.read(header.id);
        if (record)
            return record;
    }
    return {};
}

bool canCompareWithKnown(const UndoJob& job, const Record& record)
{
    switch (record.list) {
    case RecordedList::Phonebook:
        return job.contacts || isListKnown(job.memory.phonebook);
    case RecordedList::Providers:
        return isListKnown(job.memory.providers);
    case RecordedList::Ringtones:
        return std::ranges::any_of(job.memory.soundSettings, &phonedata::SoundSetting::isRead);
    case RecordedList::Files:
    case RecordedList::AreaCodes:
        break;
    }
    return false;
}

std::unique_ptr<Undo> makeUndo(const UndoJob& job, Record record)
{
    switch (record.list) {
    case RecordedList::Files:
        return std::make_unique<UndoFiles>(job, std::move(record));
    case RecordedList::Phonebook:
        if (record.part(u"pb.vcf"_s))
            return std::make_unique<UndoContacts>(job, std::move(record));
        return std::make_unique<UndoList>(job, std::move(record));
    case RecordedList::Providers:
        return std::make_unique<UndoList>(job, std::move(record));
    case RecordedList::Ringtones:
    case RecordedList::AreaCodes:
        return std::make_unique<UndoSetting>(job, std::move(record));
    }
    return nullptr;
}

} // namespace kalmo::operations
