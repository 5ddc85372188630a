#include "operations/ContactEdit.h"

#include "app/Files.h"
#include "operations/ContactFields.h"
#include "operations/ContactFiles.h"
#include "operations/ReadingAge.h"
#include "operations/Records.h"
#include "phonedata/BackupFiles.h"

#include <QJsonArray>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::ContactCard;
using phonedata::ContactReading;
using phonedata::ContactReport;
using phonedata::ContactWrite;
using phonedata::tVcfEntry;
using toolkit::Progress;

namespace {

bool isKnownLuid(const QString& luid)
{
    return !phonedata::isNoValidLuid(luid);
}

/// Card of a written contact: by its LUID, or the one with its content that was not there before.
const ContactCard* findWritten(const ContactReading& after, const ContactReading& before, const QString& luid,
                               const tVcfEntry& entry)
{
    return isKnownLuid(luid) ? after.cards.find(luid) : findAdded(after.cards, before.cards, entry);
}

QJsonObject detailsOf(const ContactOutcome& outcome)
{
    const Outcome& facts = outcome.facts;
    return {{u"planned"_s, facts.planned},
            {u"sent"_s, facts.sent},
            {u"confirmed"_s, facts.confirmed},
            {u"unknown"_s, facts.unknown},
            {u"verified"_s, facts.verified ? QJsonValue(*facts.verified) : QJsonValue()},
            {u"luids"_s, QJsonArray::fromStringList(outcome.luids)}};
}

} // namespace

const ContactCard* findAdded(const phonedata::VcfCards& cards, const phonedata::VcfCards& before,
                             const tVcfEntry& contact)
{
    const auto found = std::ranges::find_if(cards.cards, [&](const ContactCard& card) {
        const ContactCard* old = before.find(card.entry.luid);
        return phonedata::haveSameContent(card.entry, contact) &&
               (!old || !phonedata::haveSameContent(old->entry, contact));
    });
    return found == cards.cards.end() ? nullptr : &*found;
}

/// A plan under way.
struct ContactEdit::Work
{
    struct Written
    {
        tVcfEntry entry;
        QString luid; ///< from the phone's answer, empty where it gave none
        bool isConfirmed = false;
    };

    ContactOutcome outcome;
    std::vector<Written> written; ///< whose bytes all went out
    QStringList removed;          ///< the same for deletes
};

ContactEdit::ContactEdit(std::shared_ptr<phonedata::VcardStore> store, ContactPolicy policy,
                         const Progress& progress)
    : m_store(std::move(store)), m_policy(std::move(policy)), m_progress(progress)
{
}

ContactEdit::~ContactEdit() = default;

std::optional<int> ContactEdit::freePlaces() const
{
    return m_held.info ? std::optional(m_held.info->intKap - m_held.info->intBelegt) : std::nullopt;
}

Cause ContactEdit::causeOfFailure(const ContactReport* report) const
{
    const obex::clsMmc& client = m_store->client();
    if (client.stopAsked() || m_progress.cancelled())
        return Cause::Interrupted;
    if (!client.line().port().IsOpen())
        return Cause::LineGone;
    if (!client.isInStep() || (report && report->unconfirmed))
        return Cause::NoAnswer;
    return Cause::PhoneRefused;
}

std::optional<ContactReading> readUntilConfirmed(phonedata::VcardStore& store, const Progress& progress,
                                                 const std::function<void(const ContactReading&)>& again)
{
    auto reading = store.readCards(progress);
    if (!reading || reading->isConfirmed())
        return reading;
    if (again)
        again(*reading);
    return store.readCards(progress);
}

Outcome ContactEdit::begin()
{
    if (m_store->client().line().isWaiting())
        return {.cause = Cause::NotPossible};
    if (m_policy.backup == ContactPolicy::Backup::Table)
        m_table = m_store->backUp();
    {
        const obex::clsMmc::Busy busy(m_store->client());
        identifyPhone(m_store->client().line()); // in data mode it could not be asked any more
    }
    m_session = std::make_unique<phonedata::VcardStore::Session>(*m_store, u"ContactEdit"_s, m_progress);
    std::optional<ContactReading> reading;
    if (m_session->open())
        reading =
            m_policy.readsAgain ? readUntilConfirmed(*m_store, m_progress) : m_store->readCards(m_progress);
    if (!reading)
        return {.cause = causeOfFailure(nullptr)};
    m_held = std::move(*reading);
    m_readAt = m_store->context().clock.Now();
    if (!m_held.isConfirmed() && !m_policy.mayUseDoubtfulReading)
        return {.cause = Cause::Doubtful};
    return {.state = State::Done};
}

/// While a question is open, somebody may change a contact on the phone, and the record would lack that.
/// Returns Cause::None if the reading still holds.
Cause ContactEdit::renewReading()
{
    if (isYoung(m_readAt, m_store->context().clock.Now()))
        return Cause::None;
    const auto reading = m_store->readCards(m_progress);
    if (!reading)
        return causeOfFailure(nullptr);
    return reading->cards.object == m_held.cards.object ? Cause::None : Cause::Doubtful;
}

bool ContactEdit::saveBackup(Outcome& facts)
{
    facts.savedIn = m_table;
    if (m_policy.backup != ContactPolicy::Backup::Json || m_held.cards.cards.empty())
        return true;
    SavedList list{.kind = SavedKind::Contacts, .contacts = contactsOf(m_held)};
    const QString path = phonedata::phoneCopyPath(m_store->context(), u".json"_s);
    QString error;
    if (!app::writeWholeFile(path, contactJsonBytes(list), &error)) {
        facts.saveFault = {SaveFault::Kind::System, u"%1: %2"_s.arg(path, error)};
        return false;
    }
    facts.savedIn = path;
    return true;
}

ContactOutcome ContactEdit::apply(const ContactPlan& plan, RecordCause cause)
{
    Work work;
    Outcome& facts = work.outcome.facts;
    facts.planned = plan.size();
    if (plan.isEmpty()) {
        facts.state = State::Done;
        facts.verified = 0;
        return work.outcome;
    }
    if (!plan.add.empty() && !freePlaces()) {
        facts.cause = Cause::Doubtful;
        return work.outcome;
    }
    if (m_policy.checksRoom && !plan.add.empty() && !plan.fits(*freePlaces())) {
        facts.cause = Cause::NoRoom;
        return work.outcome;
    }
    facts.cause = renewReading();
    work.outcome.hasChangedMeanwhile = facts.cause == Cause::Doubtful;
    if (facts.cause != Cause::None)
        return work.outcome;
    const app::Context& context = m_store->context();
    Records records(context, knownIdentity(context.sy));
    std::vector<RecordedPart> before{{u"pb.vcf"_s, m_held.cards.object}};
    if (!m_held.isConfirmed())
        before.push_back({incompletePart, {}});
    std::optional<QString> id;
    if (saveBackup(facts))
        id = records.begin(RecordedList::Phonebook, cause, static_cast<int>(m_held.cards.cards.size()),
                           std::move(before), &facts.saveFault);
    if (!id) {
        facts.cause = Cause::NotSaved;
        return work.outcome;
    }
    facts.recordId = *id;
    carryOut(plan, work);
    readBack(plan, work);
    facts.isRecordOpen = !records.finish(*id, facts.state, detailsOf(work.outcome));
    return work.outcome;
}

/// Changes first, deletions last, unless the new contacts need the room.
void ContactEdit::carryOut(const ContactPlan& plan, Work& work)
{
    std::vector<ContactWrite> changes;
    for (const ContactPlan::Change& change : plan.change)
        changes.push_back(change.to);
    const int early = plan.removedFirst(freePlaces().value_or(std::numeric_limits<int>::max()));
    const std::vector<tVcfEntry> first(plan.remove.begin(), plan.remove.begin() + early);
    const std::vector<tVcfEntry> last(plan.remove.begin() + early, plan.remove.end());
    const bool isDone =
        write(changes, work) && remove(first, work) && write(plan.add, work) && remove(last, work);
    if (isDone && work.outcome.facts.confirmed < plan.size())
        work.outcome.facts.cause = Cause::Interrupted;
}

bool ContactEdit::write(const std::vector<ContactWrite>& writes, Work& work)
{
    if (writes.empty())
        return true;
    ContactReport report;
    const bool done = m_store->writeContacts(writes, m_progress, &report);
    Outcome& facts = work.outcome.facts;
    facts.sent += report.sent;
    facts.confirmed += static_cast<int>(report.luids.size());
    facts.unknown += report.unconfirmed ? 1 : 0;
    for (qsizetype index = 0; index < std::min<qsizetype>(report.sent, std::ssize(writes)); ++index) {
        const bool isConfirmed = index < report.luids.size();
        work.written.push_back(
            {writes[static_cast<size_t>(index)].entry, report.luids.value(index), isConfirmed});
        if (isConfirmed)
            work.outcome.luids.append(report.luids[index]);
    }
    if (done)
        return true;
    work.outcome.isAnswered = false;
    facts.cause = causeOfFailure(&report);
    work.outcome.refusedFor =
        contactName(writes[std::min(static_cast<size_t>(report.luids.size()), writes.size() - 1)].entry);
    return false;
}

bool ContactEdit::remove(const std::vector<tVcfEntry>& contacts, Work& work)
{
    if (contacts.empty())
        return true;
    QStringList luids;
    for (const tVcfEntry& contact : contacts)
        luids.append(contact.luid);
    ContactReport report;
    const bool done = m_store->deleteContacts(luids, m_progress, &report);
    work.outcome.isAnswered = work.outcome.isAnswered && done;
    Outcome& facts = work.outcome.facts;
    facts.sent += report.sent;
    facts.confirmed += static_cast<int>(report.luids.size());
    facts.unknown += report.unconfirmed ? 1 : 0;
    work.removed += luids.first(std::min<qsizetype>(report.sent, luids.size()));
    work.outcome.luids += report.luids;
    // The query of the capacity that follows the last delete may fail without harm.
    if (report.luids.size() == luids.size())
        return true;
    facts.cause = causeOfFailure(&report);
    work.outcome.refusedFor = contactName(contacts[static_cast<size_t>(report.luids.size())]);
    return false;
}

/// Reads the phonebook anew, which also settles an item that the phone did not confirm.
void ContactEdit::readBack(const ContactPlan& plan, Work& work)
{
    ContactOutcome& outcome = work.outcome;
    Outcome& facts = outcome.facts;
    const obex::clsMmc& client = m_store->client();
    const bool canRead = client.IsOnline() == obex::clsMmc::Connected && client.isInStep() &&
                         client.line().port().IsOpen() && !client.stopAsked() && !m_progress.cancelled();
    if (canRead && facts.sent > 0)
        m_after = m_store->readCards(m_progress);
    if (m_after && !m_after->isConfirmed())
        m_after.reset();
    if (!m_after) {
        facts.state = facts.confirmed == plan.size() ? State::Done
                      : facts.sent == 0              ? State::Unchanged
                                                     : State::Unknown;
        return;
    }
    int verified = 0;
    for (const Work::Written& written : work.written) {
        const ContactCard* card = findWritten(*m_after, m_held, written.luid, written.entry);
        const bool isRight = card && phonedata::haveSameContent(card->entry, written.entry);
        verified += isRight ? 1 : 0;
        if (isRight && !written.isConfirmed) {
            ++facts.confirmed;
            outcome.luids.append(card->entry.luid);
        } else if (!isRight && written.isConfirmed) {
            outcome.mismatches.push_back({written.entry, card ? card->entry : tVcfEntry{}});
        }
    }
    for (const QString& luid : work.removed) {
        const bool isGone = !m_after->cards.find(luid);
        verified += isGone ? 1 : 0;
        if (isGone && !outcome.luids.contains(luid)) {
            ++facts.confirmed;
            outcome.luids.append(luid);
        }
    }
    facts.verified = verified;
    facts.unknown = 0;
    const bool isAsBefore = m_after->cards.object == m_held.cards.object;
    facts.state = verified == plan.size() ? State::Done : isAsBefore ? State::Unchanged : State::Unknown;
    if (facts.state == State::Done)
        facts.cause = Cause::None;
    else if (facts.cause == Cause::None)
        facts.cause = Cause::Mismatch;
}

} // namespace kalmo::operations
