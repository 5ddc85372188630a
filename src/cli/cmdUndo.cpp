// Putting back a former state.

#include "cli/CauseWords.h"
#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/FileWords.h"
#include "cli/FindPhone.h"
#include "cli/Tables.h"
#include "operations/Undo.h"

#include <QJsonObject>

namespace kalmo::cli {

using operations::Cause;
using operations::Outcome;
using operations::Record;
using operations::Records;
using operations::State;
using operations::Undo;
using operations::UndoDiff;

namespace {

constexpr qsizetype mostLines = 20; // of a kind of change

/// "the phonebook of 2026-11-21  12:00:00, before \"write\""
QString nameOf(const Record& record)
{
    return u"%1 as of %2, before \"%3\""_s.arg(operations::wordOf(record.list),
                                               record.time.toString(u"yyyy-MM-dd  hh:mm:ss"_s),
                                               printable(record.cause));
}

void appendLines(QString& text, const QString& what, const QStringList& names)
{
    for (const QString& name : names.mid(0, mostLines))
        text += u"%1 %2\n"_s.arg(what, printable(name));
    if (names.size() > mostLines)
        text += u"%1 %2 more\n"_s.arg(what).arg(names.size() - mostLines);
}

QString diffText(const UndoDiff& diff)
{
    QString text;
    appendLines(text, u"add   "_s, diff.add);
    appendLines(text, u"change"_s, diff.change);
    appendLines(text, u"remove"_s, diff.remove);
    if (diff.isReordered)
        text += u"order  of all entries as before\n"_s;
    return text;
}

QString doubtInWords(Undo::Doubt doubt)
{
    switch (doubt) {
    case Undo::Doubt::NoCount:
        return u"the phone does not say how many contacts it holds"_s;
    case Undo::Doubt::OtherCount:
        return u"the phone counts another number of contacts than it sends, so what it holds is not safely "
               u"known"_s;
    case Undo::Doubt::Disturbed:
        break;
    }
    return u"the line was disturbed, so what the phone holds is not safely known"_s;
}

QString reasonOf(Job& job, const Undo& undo, const Outcome& outcome)
{
    return causeInWords(outcome.cause, job.portName(),
                        {{Cause::NotSaved, u"could not save what the phone holds now: %1"_s.arg(
                                               saveFaultInWords(outcome.saveFault))},
                         {Cause::Doubtful, doubtInWords(undo.doubt())},
                         {Cause::NoRoom, u"the phone has no room"_s},
                         {Cause::NotPossible, u"this record holds no state that can be put back"_s}});
}

/// One run of the command, with a phone that was found.
class UndoCommand
{
public:
    UndoCommand(Job& job, Undo& undo) : m_job(job), m_undo(undo) {}
    ExitStatus run();

private:
    ExitStatus finish(const Outcome& outcome);
    QJsonValue json(const Outcome& outcome) const;
    void tellLeft();
    bool agreesToDoubt();
    ExitStatus fail(const Outcome& outcome);
    QString couldNot(const Outcome& outcome) const;
    QString hintText() const;
    QString lostText(const Outcome& outcome) const;

    Job& m_job;
    Undo& m_undo;
};

ExitStatus UndoCommand::run()
{
    m_job.progress.phase(u"Comparing with what the phone holds"_s);
    const Outcome planned = m_undo.plan();
    m_job.progress.clear();
    const bool isDoubtful = planned.cause == Cause::Doubtful;
    const UndoDiff& diff = m_undo.diff();
    if (planned.cause != Cause::None && (!isDoubtful || diff.isEmpty()))
        return fail(planned);
    tellLeft();
    const ExitStatus status = diff.left() == 0 ? ExitDone : ExitFailed;
    if (m_job.invocation.has(u"--dry-run"_s) || diff.isEmpty()) {
        m_job.out.show(json({}), diff.isHeldAlready()
                                     ? u"The phone already holds the %1.\n"_s.arg(nameOf(m_undo.record()))
                                     : diffText(diff));
        return isDoubtful ? fail(planned) : status;
    }
    m_job.out.note(diffText(diff));
    if (isDoubtful && !agreesToDoubt())
        return fail(planned);
    if (Records::mayBeOfAnotherPhone(m_undo.record()))
        m_job.out.note(u"The serial number was not known when this change was made: it may have been made in "
                       u"another %1.\n"_s.arg(printable(m_undo.record().phone.model)));
    if (!m_job.questions.confirm(u"Put back the %1 (%2 new, %3 changed, %4 removed)?"_s.arg(
            nameOf(m_undo.record()), QString::number(diff.add.size()), QString::number(diff.change.size()),
            QString::number(diff.remove.size()))))
        return ExitRefused;
    if (m_job.reportInterruption())
        return ExitRefused;
    m_job.progress.phase(u"Putting back"_s);
    const Outcome outcome = m_undo.apply();
    m_job.progress.clear();
    return std::max(status, finish(outcome));
}

/// Reports the differences that stay, one in a line.
void UndoCommand::tellLeft()
{
    const auto tell = [this](const QStringList& names, const QString& text) {
        for (const QString& name : names)
            m_job.out.error(text.arg(printable(name)));
    };
    const UndoDiff& diff = m_undo.diff();
    tell(diff.blocked, u"could not put back %1: something else is in its place, or it is gone."_s);
    tell(diff.stuck, u"could not remove %1: the phone gives no reference for it."_s);
    tell(diff.kept, u"could not remove %1: it may have been in the phone before, because a reading may have "
                    u"lacked it."_s);
}

/// Only a person may agree: what the phone holds now may not come back from the record of the undo.
bool UndoCommand::agreesToDoubt()
{
    QString doubt = doubtInWords(m_undo.doubt());
    doubt[0] = doubt[0].toUpper();
    return m_job.questions.someoneIsThere() &&
           m_job.questions.confirm(doubt + u" and may not be recorded whole. Put back all the same?"_s);
}

ExitStatus UndoCommand::fail(const Outcome& outcome)
{
    m_job.out.error(couldNot(outcome) + u".\nNothing was changed in the phone."_s);
    return outcome.cause == Cause::Interrupted ? ExitRefused : ExitFailed;
}

QString UndoCommand::couldNot(const Outcome& outcome) const
{
    return u"could not put back the %1: %2"_s.arg(nameOf(m_undo.record()), reasonOf(m_job, m_undo, outcome));
}

ExitStatus UndoCommand::finish(const Outcome& outcome)
{
    if (outcome.isRecordOpen)
        m_job.out.note(openRecordText());
    const bool isDone = outcome.state == State::Done && outcome.cause == Cause::None;
    if (outcome.isUncompared()) {
        m_job.out.show(json(outcome), {});
        m_job.out.error(u"put back the %1, but could not read it back whole to compare it."_s.arg(
            nameOf(m_undo.record())));
        return ExitFailed;
    }
    if (isDone) {
        m_job.out.show(json(outcome), u"The %1 is put back.\n"_s.arg(nameOf(m_undo.record())));
        return ExitDone;
    }
    if (m_undo.hasChangedMeanwhile()) {
        m_job.out.error(u"could not put back the %1: the list in the phone has changed since it was "
                        u"compared.\nNothing was changed in the phone."_s.arg(nameOf(m_undo.record())));
        m_job.out.show(json(outcome), {});
        return ExitFailed;
    }
    if (outcome.cause == Cause::NotSaved && outcome.recordId.isEmpty()) {
        m_job.out.show(json(outcome), {});
        return fail(outcome);
    }
    const QString held = outcome.state == State::Unchanged
                             ? u"The phone holds what it held before"_s
                             : u"Confirmed: %1 of %2"_s.arg(outcome.confirmed).arg(outcome.planned);
    m_job.out.error(u"%1. %2.\n"_s.arg(couldNot(outcome), held) + lostText(outcome) + hintText());
    m_job.out.show(json(outcome), {});
    return outcome.cause == Cause::Interrupted ? ExitRefused : ExitFailed;
}

QString UndoCommand::hintText() const
{
    return u"To try again: %1."_s.arg(m_job.invocation.again(u"undo "_s + m_undo.record().id));
}

QString UndoCommand::lostText(const Outcome& outcome) const
{
    if (outcome.lost.isEmpty())
        return {};
    return u"Gone from the phone: %1. To put back what it held: %2.\n"_s.arg(
        printable(outcome.lost.join(u", "_s)), m_job.invocation.again(u"undo "_s + outcome.recordId));
}

QJsonValue UndoCommand::json(const Outcome& outcome) const
{
    const UndoDiff& diff = m_undo.diff();
    const bool isUnknown = outcome.state == State::Unknown;
    return QJsonObject{
        {u"restored"_s, isUnknown ? QJsonValue() : QJsonValue(outcome.confirmed)},
        {u"add"_s, diff.add.size()},
        {u"change"_s, diff.change.size()},
        {u"remove"_s, diff.remove.size()},
        {u"left"_s, diff.left()},
        {u"verified"_s, outcome.verified ? QJsonValue(*outcome.verified) : QJsonValue()},
        {u"backup"_s, outcome.savedIn.isEmpty() ? QJsonValue() : QJsonValue(outcome.savedIn)},
        {u"state"_s, operations::wordOf(outcome.state)},
        {u"record"_s, outcome.recordId.isEmpty() ? QJsonValue() : QJsonValue(outcome.recordId)},
    };
}

/// The record that the user names, or the latest. Reports the reason if there is none.
std::optional<Record> findRecord(Job& job, const Records& records, ExitStatus& status)
{
    const QString id = job.invocation.arguments.value(0);
    const auto record = id.isEmpty() ? latestChange(records) : records.read(id);
    status = id.isEmpty() ? ExitFailed : ExitWrongUse;
    if (record)
        return record;
    QString text = u"could not find a change of this phone: none is recorded."_s;
    if (!id.isEmpty())
        text = u"could not find a change %1 of this phone. \"%2\" lists them."_s.arg(
            printable(id), job.invocation.again(u"history"_s));
    job.out.error(text);
    return {};
}

} // namespace

ExitStatus runUndo(Job& job)
{
    if (!job.invocation.has(u"--dry-run"_s) && !job.questions.canBeAnswered()) {
        job.questions.tellUnanswered(u"Put back what the phone held before?"_s);
        return ExitRefused;
    }
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    const Records records(job.context, operations::identifyPhone(job.line));
    ExitStatus status = ExitDone;
    const auto record = findRecord(job, records, status);
    if (!record)
        return status;
    return withClient(job, [&](const std::shared_ptr<obex::clsMmc>& client) {
        const auto undo = operations::makeUndo(
            {job.line, job.memory, client, nullptr, {.bar = &job.progress, .cancel = &job.stop}}, *record);
        if (undo)
            return UndoCommand(job, *undo).run();
        job.out.error(u"could not put back the %1: the record holds no such state."_s.arg(nameOf(*record)));
        return ExitFailed;
    });
}

} // namespace kalmo::cli
