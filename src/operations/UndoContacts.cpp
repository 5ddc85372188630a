#include "operations/UndoContacts.h"

#include "operations/ContactFields.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;

UndoContacts::UndoContacts(const UndoJob& job, Record record)
    : Undo(std::move(record)), m_progress(job.progress), m_rows(phonedata::makeVcfRows()),
      m_store(std::make_shared<phonedata::VcardStore>(job.client, *m_rows))
{
}

UndoContacts::~UndoContacts() = default;

Outcome UndoContacts::plan()
{
    m_edit.reset(); // one session at a time
    m_edit = std::make_unique<ContactEdit>(
        m_store, ContactPolicy{.readsAgain = true, .checksRoom = true, .backup = ContactPolicy::Backup::Json},
        m_progress);
    Outcome outcome = m_edit->begin();
    if (outcome.cause != Cause::None)
        return outcome;
    m_plan = planRestore(m_edit->held(), phonedata::parseCards(record().part(u"pb.vcf"_s)->bytes));
    m_diff = {};
    for (const phonedata::ContactWrite& contact : m_plan.add)
        m_diff.add.append(contactName(contact.entry));
    for (const ContactPlan::Change& change : m_plan.change)
        m_diff.change.append(contactName(change.to.entry));
    for (const phonedata::tVcfEntry& contact : m_plan.remove)
        m_diff.remove.append(contactName(contact));
    for (const phonedata::tVcfEntry& contact : m_plan.stuck)
        m_diff.blocked.append(contactName(contact));
    return {};
}

Outcome UndoContacts::apply()
{
    const Outcome outcome = m_edit->apply(m_plan, u"undo"_s).facts;
    m_edit->end();
    return outcome;
}

} // namespace kalmo::operations
