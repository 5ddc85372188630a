#include "operations/UndoContacts.h"

#include "operations/ContactFields.h"

#include <QJsonArray>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

namespace {

UndoDiff diffOf(const ContactPlan& plan)
{
    UndoDiff diff;
    for (const phonedata::ContactWrite& contact : plan.add)
        diff.add.append(contactName(contact.entry));
    for (const ContactPlan::Change& change : plan.change)
        diff.change.append(contactName(change.to.entry));
    for (const phonedata::tVcfEntry& contact : plan.remove)
        diff.remove.append(contactName(contact));
    for (const phonedata::tVcfEntry& contact : plan.stuck)
        diff.stuck.append(contactName(contact));
    for (const phonedata::tVcfEntry& contact : plan.kept)
        diff.kept.append(contactName(contact));
    return diff;
}

} // namespace

UndoContacts::UndoContacts(const UndoJob& job, Record record)
    : Undo(std::move(record)), m_known(job.contacts), m_progress(job.progress),
      m_rows(phonedata::makeVcfRows()), m_store(std::make_shared<phonedata::VcardStore>(job.client, *m_rows))
{
}

UndoContacts::~UndoContacts() = default;

std::optional<UndoDiff> UndoContacts::compareWithKnown() const
{
    return m_known ? std::optional(diffOf(planFor(*m_known))) : std::nullopt;
}

ContactPlan UndoContacts::planFor(const phonedata::ContactReading& held) const
{
    const bool isDoubtful = record().part(incompletePart) != nullptr;
    QStringList written; // by the change, so a contact of these that the record lacks was added
    for (const QJsonValue& luid : record().details[u"luids"_s].toArray())
        written.append(luid.toString());
    return planRestore(held, phonedata::parseCards(record().part(u"pb.vcf"_s)->bytes),
                       isDoubtful ? Completeness::Doubtful : Completeness::Whole, written);
}

Outcome UndoContacts::plan()
{
    m_edit.reset(); // one session at a time
    m_diff = {};
    m_edit = std::make_unique<ContactEdit>(m_store,
                                           ContactPolicy{.mayUseDoubtfulReading = true,
                                                         .readsAgain = true,
                                                         .checksRoom = true,
                                                         .backup = ContactPolicy::Backup::Json},
                                           m_progress);
    Outcome outcome = m_edit->begin();
    // The window changes a phone with a wrong count or without one, so its states have to come back too.
    m_doubt = m_edit->held().info ? Doubt::OtherCount : Doubt::NoCount;
    if (outcome.cause != Cause::None)
        return outcome;
    m_plan = planFor(m_edit->held());
    m_diff = diffOf(m_plan);
    return {.cause = m_edit->held().isConfirmed() ? Cause::None : Cause::Doubtful};
}

Outcome UndoContacts::apply()
{
    const ContactOutcome outcome = m_edit->apply(m_plan, RecordCause::Undo);
    m_edit->end();
    m_hasChangedMeanwhile = outcome.hasChangedMeanwhile;
    return outcome.facts;
}

} // namespace kalmo::operations
