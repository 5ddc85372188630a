#pragma once

#include "operations/ClassicPlan.h"
#include "operations/PhoneSettings.h"
#include "operations/Undo.h"

namespace kalmo::operations {

/// Returns true if the entries of a list are known from a sure reading, codes of melodies included.
bool isListKnown(const phonedata::StoreContent& content);

/// Puts back a list of a classic handset: the entries of the record with their own codes of melodies.
class UndoList final : public Undo
{
public:
    /// `record` has to have the raw replies of the list, such as the part "phonebook.raw".
    UndoList(const UndoJob& job, Record record);

    std::optional<UndoDiff> compareWithKnown() const override;
    Outcome plan() override;
    Outcome apply() override;

private:
    std::optional<QByteArrayList> formerReplies() const;

    ListJob m_job;
    WritePolicy m_policy;
    ListPlan m_plan;
};

/// Puts back the ringtone of one event, or the area codes.
class UndoSetting final : public Undo
{
public:
    UndoSetting(const UndoJob& job, Record record);

    std::optional<UndoDiff> compareWithKnown() const override;
    Outcome plan() override;
    Outcome apply() override;

private:
    phonedata::RingtoneJob ringtoneJob() const;
    UndoDiff ringtoneDiff(phonedata::SoundEvent event, const phonedata::SoundSetting& former) const;
    Outcome planRingtone();
    bool isRingtone() const { return record().list == RecordedList::Ringtones; }
    QByteArray formerAnswer() const
    {
        return record().before.empty() ? QByteArray() : record().before[0].bytes;
    }

    UndoJob m_job;
};

} // namespace kalmo::operations
