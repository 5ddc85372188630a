#include "operations/UndoFiles.h"

#include "operations/ReadingAge.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using obex::clsMmc;

namespace {

QString inWords(const FileState& state)
{
    const QString path = state.path.shown();
    return state.kind == FileState::Kind::Moved ? u"%1 → %2"_s.arg(state.movedTo.shown(), path) : path;
}

QStringList placesOf(const PutBackPlan& plan, PutBackStep step)
{
    QStringList places;
    for (const PlaceToPutBack& place : plan.places) {
        if (place.step == step)
            places.append(inWords(place.wanted));
    }
    return places;
}

} // namespace

UndoFiles::UndoFiles(const UndoJob& job, Record record)
    : Undo(std::move(record)), m_client(job.client), m_progress(job.progress)
{
}

UndoFiles::~UndoFiles()
{
    m_access.reset();
    if (m_isOpenedHere && m_client->ChannelState() == clsMmc::ChannelOpen && m_client->line().port().IsOpen())
        m_client->Offline({});
}

Outcome UndoFiles::plan()
{
    Outcome outcome;
    if (m_client->ChannelState() != clsMmc::ChannelOpen) {
        identifyPhone(m_client->line()); // while the line takes commands
        m_isOpenedHere = true;
        if (!m_client->Online(m_progress)) {
            outcome.cause = m_client->line().port().IsOpen() ? Cause::NoAnswer : Cause::LineGone;
            return outcome;
        }
    }
    m_access = std::make_unique<FileAccess>(m_client, u"Undo"_s, m_progress);
    if (!m_access->mayBegin()) {
        outcome.cause = m_access->isStopped() ? Cause::Interrupted : m_access->cause();
        return outcome;
    }
    m_plan = planPutBack(*m_access, record());
    m_readAt = m_client->line().context().clock.Now();
    outcome.cause = m_plan.cause;
    if (outcome.cause != Cause::None)
        return outcome;
    m_diff = {.add = placesOf(m_plan, PutBackStep::Add),
              .change = placesOf(m_plan, PutBackStep::Change),
              .remove = placesOf(m_plan, PutBackStep::Remove),
              .blocked = placesOf(m_plan, PutBackStep::Blocked)};
    return outcome;
}

/// While a question is open, somebody may change a file on the phone, and the record would lack that. Returns
/// Cause::None if the plan still holds.
Cause UndoFiles::renewPlan()
{
    if (isYoung(m_readAt, m_client->line().context().clock.Now()))
        return Cause::None;
    const PutBackPlan now = planPutBack(*m_access, record());
    if (now.cause != Cause::None)
        return now.cause;
    m_hasChangedMeanwhile = now.places != m_plan.places;
    return m_hasChangedMeanwhile ? Cause::Doubtful : Cause::None;
}

Outcome UndoFiles::apply()
{
    if (const Cause cause = renewPlan(); cause != Cause::None)
        return {.cause = cause, .planned = static_cast<int>(m_plan.places.size())};
    return applyPutBack(*m_access, m_plan);
}

} // namespace kalmo::operations
