#pragma once

#include "operations/ContactEdit.h"
#include "operations/Undo.h"

namespace kalmo::operations {

/// Puts back the contacts of a vCard phonebook: the cards of the record, byte for byte but for the LUIDs of
/// contacts that the phone no longer holds.
class UndoContacts final : public Undo
{
public:
    /// `record` has to have the part "pb.vcf".
    UndoContacts(const UndoJob& job, Record record);
    ~UndoContacts() override;

    std::optional<UndoDiff> compareWithKnown() const override;
    Outcome plan() override;
    Outcome apply() override;

private:
    ContactPlan planFor(const phonedata::ContactReading& held) const;

    const phonedata::ContactReading* m_known;
    toolkit::Progress m_progress;
    std::unique_ptr<toolkit::ListRows> m_rows;
    std::shared_ptr<phonedata::VcardStore> m_store;
    std::unique_ptr<ContactEdit> m_edit;
    ContactPlan m_plan;
};

} // namespace kalmo::operations
