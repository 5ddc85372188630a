#include "ui/window/ClassicWriting.h"

#include "app/SettingsKeys.h"
#include "link/mdlStatus.h"
#include "operations/ClassicLists.h"
#include "phonedata/BackupFiles.h"
#include "ui/forms/FormerStateWords.h"
#include "ui/window/ClassicWords.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using operations::Cause;
using phonedata::Certainty;
using phonedata::CommandResult;
using phonedata::Store;
using phonedata::StoreContent;
using phonedata::StoreJob;
using toolkit::About;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

const QString accessError = u"Fehler beim Zugriff auf das Telefon"_s;

void tell(const app::Context& context, const QString& text, Icon icon = Icon::Information,
          About about = About::Other)
{
    context.dialogs.Show({.text = text, .icon = icon, .about = about});
}

bool agreesToWrite(const app::Context& context, const QString& text)
{
    return context.dialogs.Show({.text = text + u"\n\nTrotzdem schreiben?"_s,
                                 .buttons = Buttons::YesNo,
                                 .icon = Icon::Exclamation,
                                 .defaultButton = Answer::No}) == Answer::Yes;
}

/// Saves the list under the automatic backup's name. Returns false if it can't be written; then nothing may
/// be erased.
bool backUpList(const operations::ListJob& job, const toolkit::ListRows& rows, QString& path)
{
    app::Context& context = job.context();
    if (!app::isOn(context.settings, app::keys::AutoBackup) || rows.count() == 0)
        return true;
    path = phonedata::backupPath(context, u"Backup von "_s, job.traits().fileEnding.toString());
    return job.traits().save(context, rows, path);
}

/// Asks about a doubtful reading, with the difference to it, and notes the consent in the policy. A reading
/// that lacks only names of melodies asks nothing here: objectionsText() has the entries that they matter to.
bool agreesToDoubt(const app::Context& context, const operations::ListPlan& plan,
                   operations::WritePolicy& policy)
{
    policy.mayUseDoubtful =
        plan.isDoubtful() &&
        (plan.held.lacksOnlyMelodies ||
         agreesToWrite(
             context,
             u"Beim letzten Lesen war die Übertragung gestört, und dabei kann ein Eintrag übersprungen oder "
             u"verfälscht worden sein. Ein solcher Eintrag geht beim Schreiben verloren. Besser ist es, "
             u"die Liste vorher noch einmal zu lesen."_s +
                 differenceText(plan)));
    return !plan.isDoubtful() || policy.mayUseDoubtful;
}

/// Shows the difference to a phone that does not hold what the list was made from.
bool agreesToDifference(const app::Context& context, const operations::ListPlan& plan,
                        const StoreContent& origin)
{
    const bool isFromPhone = origin.certainty != Certainty::Unknown;
    const bool isAsExpected =
        isFromPhone && phonedata::diffLists(origin.entries, plan.held.entries).isEmpty();
    const QString difference = differenceText(plan);
    const bool wasAsked = plan.isDoubtful() && !plan.held.lacksOnlyMelodies;
    if (!plan.isRead() || isAsExpected || wasAsked || difference.isEmpty())
        return true;
    return agreesToWrite(context,
                         (isFromPhone ? u"Das Telefon enthält nicht mehr die Einträge, aus denen die "
                                        u"Liste im Fenster entstanden ist."_s
                                      : u"Die Liste im Fenster wurde nicht aus dem Telefon gelesen."_s) +
                             difference);
}

/// Asks about each way in which something would be lost, and notes the consent in the policy.
bool agreesToLosses(const app::Context& context, const operations::ListPlan& plan, const StoreContent& origin,
                    operations::WritePolicy& policy)
{
    policy.mayLoseUnread =
        !plan.isRead() &&
        agreesToWrite(context,
                      u"Der bisherige Inhalt des Telefons konnte nicht gelesen und daher nicht gesichert "
                      u"werden. Beim Schreiben geht er verloren."_s);
    if (!plan.isRead() && !policy.mayLoseUnread)
        return false;
    if (!agreesToDoubt(context, plan, policy) || !agreesToDifference(context, plan, origin))
        return false;
    const QString objections = objectionsText(plan);
    return objections.isEmpty() || agreesToWrite(context, objections);
}

CommandResult tellNotSaved(const app::Context& context, const operations::Outcome& outcome)
{
    const QString place =
        outcome.savedIn.isEmpty() ? u"im Ordner \"Verlauf\""_s : u"in der Datei %1"_s.arg(outcome.savedIn);
    tell(context,
         u"Der bisherige Inhalt des Telefons konnte nicht %1 gesichert werden: %2\n\nIm Telefon wurde nichts "
         u"geändert."_s.arg(place, reasonInWords(outcome.saveFault)),
         Icon::Exclamation);
    return CommandResult::Refused;
}

CommandResult tellResult(const operations::ListJob& job, const operations::ListOutcome& result,
                         const SavedFiles& files)
{
    const operations::Outcome& outcome = result.outcome;
    if (outcome.isRecordOpen)
        tell(job.context(), openRecordInWords(), Icon::Exclamation);
    if (outcome.cause == Cause::NotSaved)
        return tellNotSaved(job.context(), outcome);
    if (result.sentNothing()) {
        tell(job.context(), notSentText(result), Icon::Exclamation);
        return CommandResult::Refused;
    }
    // A list that was clean before the write differs from the phone now too.
    const bool isSure = outcome.cause != Cause::Mismatch && result.isConfirmed();
    if (!isSure && outcome.state != operations::State::Unchanged)
        phonedata::setDirty(job.memory, job.store, true);
    if (outcome.cause == Cause::Mismatch) {
        tell(job.context(), uncheckedWriteText(result, files), Icon::Exclamation);
        return CommandResult::Failed;
    }
    if (!result.isConfirmed()) {
        tell(job.context(), failedWriteText(result, files));
        return CommandResult::Failed;
    }
    phonedata::setDirty(job.memory, job.store, false);
    if (!outcome.isDone())
        tell(job.context(), uncheckedWriteText(result, files));
    return CommandResult::Done;
}

} // namespace

CommandResult readClassicList(const StoreJob& job, Store store)
{
    app::Context& context = job.context();
    if (phonedata::isDirty(job.memory, store) &&
        context.dialogs.Show({.text = unsavedChangesText(store),
                              .buttons = Buttons::YesNo,
                              .icon = Icon::Question,
                              .defaultButton = Answer::No}) != Answer::Yes)
        return CommandResult::Refused;
    if (!phonedata::readStore(job, store)) {
        if (!job.progress.cancelled())
            tell(context, accessError, Icon::Information, About::Result);
        return CommandResult::Failed;
    }
    phonedata::setDirty(job.memory, store, false);
    const StoreContent& content = phonedata::contentOf(job.memory, store);
    if (content.lacksOnlyMelodies)
        tell(
            context,
            u"Die Liste enthält eigene Melodien des Telefons, deren Namen nicht bekannt sind. Sie werden als "
            u"\"Melodie 1\" angezeigt. Bitte lesen Sie zuerst die Klingeltöne und danach die Liste noch "
            u"einmal ein, bevor Sie sie ändern oder schreiben."_s);
    else if (content.certainty == Certainty::Doubtful)
        tell(context,
             u"Beim Lesen war die Übertragung gestört. Es ist möglich, dass dabei ein Eintrag übersprungen "
             u"oder verfälscht wurde. Bitte lesen Sie die Liste noch einmal ein, bevor Sie sie ändern oder "
             u"schreiben."_s);
    return CommandResult::Done;
}

CommandResult writeClassicList(const operations::ListJob& job, const toolkit::ListRows& rows,
                               StoreContent& origin)
{
    app::Context& context = job.context();
    SavedFiles files;
    if (!backUpList(job, rows, files.list))
        return CommandResult::Refused;
    QString model;
    if (!link::GetPhoneModelText(job.line, model)) {
        tell(context, u"Das Telefon antwortet nicht."_s, Icon::Information, About::Request);
        return CommandResult::Refused;
    }
    const auto entries = phonedata::classicEntries(rows);
    operations::WritePolicy policy{.trustsReading = true,
                                   .isCancellable = false}; // half a list would be worse than a wait
    if (!files.list.isEmpty())
        policy.alreadySaved = job.traits().fileBytes(entries);
    operations::ListPlan plan = operations::planReplace(job, entries, policy);
    operations::Outcome saving;
    if (!operations::saveHeld(job, plan, policy, saving))
        return tellNotSaved(context, saving);
    files.phone = plan.savedIn.value(0);
    if (!agreesToLosses(context, plan, origin, policy))
        return CommandResult::Refused;
    const operations::ListOutcome result = operations::applyPlan(job, plan, policy);
    if (!result.sentNothing() && job.content().certainty != Certainty::Unknown)
        origin = job.content(); // the user sees now what the phone holds
    return tellResult(job, result, files);
}

} // namespace kalmo::ui
