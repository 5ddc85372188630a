#pragma once

#include "operations/ClassicLists.h"
#include "operations/PhoneSettings.h"
#include "operations/Undo.h"

namespace kalmo::operations {

/// Puts back a list of a classic handset: the entries of the record with their own codes of melodies.
class UndoList final : public Undo
{
public:
    /// `record` has to have the raw replies of the list, such as the part "phonebook.raw".
    UndoList(const UndoJob& job, Record record);

    Outcome plan() override;
    Outcome apply() override;

private:
    ListJob m_job;
    WritePolicy m_policy;
    ListPlan m_plan;
};

/// Puts back the ringtone of one event, or the area codes.
class UndoSetting final : public Undo
{
public:
    UndoSetting(const UndoJob& job, Record record);

    Outcome plan() override;
    Outcome apply() override;

private:
    bool isRingtone() const { return record().list == RecordedList::Ringtones; }
    QByteArray formerAnswer() const
    {
        return record().before.empty() ? QByteArray() : record().before[0].bytes;
    }

    UndoJob m_job;
};

} // namespace kalmo::operations
