// The dialog of the former states at work with the phone: comparing a state, and putting it back.

#include "ui/forms/FormerStatesDialog.h"
#include "ui/forms/FormerStateWords.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using operations::Cause;
using operations::Outcome;
using operations::RecordedList;
using operations::State;
using operations::Undo;

/// Reads what the phone holds now and shows the difference, or the reason why that failed. Returns the cause
/// as Undo::plan() does.
Cause FormerStatesDialog::plan(Undo& undo)
{
    m_cancel->reset();
    m_cancel->show();
    const Outcome outcome = undo.plan();
    m_cancel->hide();
    m_status->release();
    const bool isComparedInDoubt = outcome.cause == Cause::Doubtful && !undo.diff().isEmpty();
    if (outcome.cause != Cause::None && !isComparedInDoubt) {
        m_differences->clear();
        // No box: the line may have shown one.
        m_caption->setText(outcome.cause == Cause::Doubtful ? doubtInWords(undo.doubt())
                                                            : reasonInWords(outcome));
        return outcome.cause;
    }
    showDifference(undo.diff());
    if (isComparedInDoubt)
        m_caption->setText(doubtInWords(undo.doubt()) + u' ' + m_caption->text());
    return outcome.cause;
}

void FormerStatesDialog::compare()
{
    if (m_busy->isBusy())
        return;
    const toolkit::BusyScope busy(m_busy.get());
    if (const auto undo = chosenUndo()) {
        plan(*undo);
        m_status->SetText(u"Bereit."_s);
    }
}

bool FormerStatesDialog::agrees(const Undo& undo, Cause planned)
{
    QString doubt;
    if (planned == Cause::Doubtful)
        doubt += doubtInWords(undo.doubt()) + u"\n\n"_s;
    if (operations::Records::mayBeOfAnotherPhone(undo.record()))
        doubt += u"Bei dieser Änderung war die Seriennummer des Telefons nicht bekannt: Der "
                 u"Stand kann auch von einem anderen %1 sein.\n\n"_s.arg(undo.record().phone.model);
    return m_program.context.dialogs.Show(
               {.text =
                    doubt +
                    u"Der Stand vom %1 (%2) wird zurückgeholt.\nUnterschiede zu jetzt: %3.\n\nDer jetzige "
                    u"Stand wird vorher aufgehoben und kann ebenfalls zurückgeholt werden.\nJetzt "
                    u"zurückholen?"_s.arg(momentInWords(undo.record().time), inWords(undo.record().list),
                                          differenceInWords(undo.diff())),
                .buttons = toolkit::Buttons::YesNo,
                .icon = toolkit::Icon::Question,
                .defaultButton = toolkit::Answer::No}) == toolkit::Answer::Yes;
}

void FormerStatesDialog::putBack()
{
    if (m_busy->isBusy())
        return;
    const toolkit::BusyScope busy(m_busy.get());
    const auto undo = chosenUndo();
    if (!undo)
        return;
    const Cause planned = plan(*undo);
    const bool isPlanned = planned == Cause::None || planned == Cause::Doubtful;
    if (!isPlanned || undo->diff().isEmpty() || !agrees(*undo, planned)) {
        m_status->SetText(u"Bereit."_s);
        return;
    }
    const Outcome outcome = undo->apply();
    if (!outcome.recordId.isEmpty())
        m_changed.insert(undo->record().list);
    const RecordedList list = undo->record().list;
    m_job.contacts = nullptr; // the reading is out of date now
    fill();
    select(list);
    report(*undo, outcome);
}

void FormerStatesDialog::report(const Undo& undo, const Outcome& outcome)
{
    const bool isDone = outcome.state == State::Done && outcome.cause == Cause::None;
    const QString done = outcome.isUncompared()
                             ? u"Der Stand vom %1 ist zurückgeholt, aber nicht kontrolliert."_s
                             : u"Der Stand vom %1 ist zurückgeholt."_s;
    m_status->SetText(isDone                              ? done.arg(momentInWords(undo.record().time))
                      : outcome.state == State::Unchanged ? u"Der Stand wurde nicht zurückgeholt."_s
                                                          : u"Der Stand wurde nicht ganz zurückgeholt."_s);
    if (outcome.isUncompared())
        m_program.context.dialogs.Show({.text = uncomparedInWords(), .icon = toolkit::Icon::Exclamation});
    if (outcome.isRecordOpen)
        m_program.context.dialogs.Show({.text = openRecordInWords(), .icon = toolkit::Icon::Exclamation});
    if (isDone)
        return;
    const QString held =
        outcome.state == State::Unchanged
            ? u"Das Telefon enthält, was es vorher enthielt."_s
            : u"Vom Telefon bestätigt: %1 von %2."_s.arg(outcome.confirmed).arg(outcome.planned);
    const QString reason =
        undo.hasChangedMeanwhile()
            ? u"Die Liste im Telefon hat sich seit dem Vergleich geändert. Bitte vergleichen Sie noch einmal."_s
            : reasonInWords(outcome);
    m_program.context.dialogs.Show(
        {.text = reason + u'\n' + held + lostInWords(outcome), .icon = toolkit::Icon::Exclamation});
}

} // namespace kalmo::ui
