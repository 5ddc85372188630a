#include "ui/panels/FfsTransfers.h"

#include "ui/panels/BatchDisplay.h"
#include "ui/panels/FileBoxes.h"

#include <QDir>

#include <algorithm>
#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using obex::PhonePath;
using operations::Cause;
using operations::FileAccess;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::PlannedFile;
using operations::State;
using toolkit::Answer;
using toolkit::Icon;

namespace {

/// Text about a file that can't be sent; %1 is its name.
struct ObstacleRow
{
    FileObstacle obstacle;
    QStringView text;
};

constexpr QStringView noSuchName = u"Nicht übertragen, weil Dateien im Telefon nicht so heißen können:\n%1";

constexpr ObstacleRow obstacles[] = {
    {FileObstacle::NoRoom, u"Im Telefon ist zu wenig Speicher frei, um den Vorgang ausfürhen zu können."},
    {FileObstacle::NoName, noSuchName},
    {FileObstacle::BadName, noSuchName},
    {FileObstacle::OtherName, noSuchName},
    {FileObstacle::Twin, u"Nicht übertragen, weil eine andere gewählte Datei im Telefon genauso heißt:\n%1"},
    {FileObstacle::IsFolder, u"Nicht übertragen, weil im Telefon ein Ordner so heißt:\n%1"},
    {FileObstacle::BelowTelecom,
     u"Nicht übertragen, weil das Telefon in diesem Ordner Kontakte und Termine speichert:\n%1"},
};

void tellObstacle(clsMmc& mmc, const PlannedFile& file)
{
    if (file.obstacle == FileObstacle::TooLarge)
        mmc.ErrMsg(obex::TooMuchData);
    if (file.obstacle == FileObstacle::NoLocalFile || file.obstacle == FileObstacle::NotReadable)
        mmc.ErrMsg(obex::ReadFailed);
    for (const ObstacleRow& row : obstacles) {
        if (row.obstacle == file.obstacle)
            tell(mmc, row.text.toString().replace(u"%1"_s, file.path.name()), Icon::Exclamation);
    }
}

/// Returns what the client has not said: what is true of the file after a failure. Empty if there is nothing
/// to add.
QString textAfterFailure(const PlannedFile& file, const FileOutcome& outcome)
{
    const QString name = file.path.name();
    if (outcome.state == State::Done && !outcome.isConfirmed) {
        return u"Die Datei \"%1\" ist vollständig im Telefon: Es führt sie mit %2 Bytes."_s.arg(
            name, QString::number(file.size));
    }
    if (outcome.isOldLost) {
        return u"Die Datei \"%1\" wurde nicht ersetzt%2. Eine Kopie der bisherigen Datei liegt hier:\n%3"_s
            .arg(name,
                 outcome.mayHoldPart ? u", das Telefon enthält vielleicht einen Teil davon"_s : QString(),
                 QDir::toNativeSeparators(outcome.savedIn));
    }
    if (operations::isUncompared(outcome)) {
        return u"Das Telefon hat die Datei \"%1\" vollständig angenommen, konnte danach aber nicht zur "
               u"Kontrolle gelesen werden."_s.arg(name);
    }
    if (outcome.cause == Cause::Mismatch && outcome.savedIn.isEmpty() && file.replaced) {
        return u"Die Datei \"%1\" konnte im Telefon nicht vollständig gelesen werden. Ohne Sicherung wird "
               u"sie nicht ersetzt."_s.arg(name);
    }
    if (outcome.cause == Cause::NotSaved) {
        return u"Die Datei \"%1\" wurde nicht übertragen, weil der bisherige Stand auf diesem Computer nicht "
               u"gesichert werden konnte."_s.arg(name) +
               inParagraph(outcome.reason);
    }
    if (outcome.state == State::Unknown) {
        return outcome.mayHoldPart
                   ? u"Das Telefon enthält vielleicht nur einen Teil der Datei \"%1\"."_s.arg(name)
                   : u"Es ist nicht bekannt, ob die Datei \"%1\" im Telefon ist."_s.arg(name);
    }
    if (file.replaced && outcome.state == State::Unchanged && !outcome.savedIn.isEmpty()) {
        return u"Die Datei \"%1\" wurde nicht ersetzt. Im Telefon ist die bisherige Datei."_s.arg(name);
    }
    return {};
}

/// Returns true if the phone has room for all files. Otherwise shows that it has not.
bool requireRoom(clsMmc& mmc, operations::SendPlan& plan, const operations::SendPolicy& policy)
{
    const bool fits = operations::requireRoom(plan, policy);
    const auto file = std::ranges::find(plan.files, FileObstacle::NoRoom, &PlannedFile::obstacle);
    if (!fits && file != plan.files.end())
        tellObstacle(mmc, *file);
    return fits;
}

/// Asks about each file that would be replaced. Returns false if the user cancels.
bool askAboutReplaced(const clsMmc& mmc, operations::SendPlan& plan)
{
    for (PlannedFile& file : plan.files) {
        if (!file.isPossible() || !file.replaced)
            continue;
        const Answer answer =
            askToReplace(mmc, u"Die Datei \""_s + file.path.name() +
                                  u"\" befindet sich bereits auf dem Mobiltelefon.\nDatei überschreiben?"_s);
        if (answer == Answer::Cancel)
            return false;
        if (answer == Answer::No)
            file.obstacle = FileObstacle::Kept;
    }
    return true;
}

/// The stages of an upload on the display: what is replaced is read first.
class SendStages
{
public:
    SendStages(BatchDisplay& display, const operations::SendPlan& plan) : m_display(display), m_plan(plan) {}

    void saving(const PlannedFile& file)
    {
        if (!std::exchange(m_isSaving, true))
            expect(u"Sichern"_s, halfOfRest,
                   [](const PlannedFile& each) { return each.replaced ? each.replaced->size : -1; });
        m_display.next(file.replaced->size);
    }
    void sending(const PlannedFile& file)
    {
        if (!std::exchange(m_isSending, true))
            expect({}, 1, [](const PlannedFile& each) { return each.size; });
        m_display.next(file.size);
    }

private:
    /// `bytesOf` returns -1 for a file that the stage leaves out.
    void expect(const QString& stage, double share, const std::function<qint64(const PlannedFile&)>& bytesOf)
    {
        qsizetype count = 0;
        qint64 total = 0;
        for (const PlannedFile& file : m_plan.files) {
            const qint64 bytes = file.isPossible() ? bytesOf(file) : -1;
            count += bytes >= 0;
            total += std::max<qint64>(bytes, 0);
        }
        m_display.expect(count, total, stage, share);
    }

    static constexpr double halfOfRest = 0.5; // of the bar; the old files are about as large as the new ones

    BatchDisplay& m_display;
    const operations::SendPlan& m_plan;
    bool m_isSaving = false;
    bool m_isSending = false;
};

} // namespace

bool uploadFiles(const std::shared_ptr<clsMmc>& mmc, BatchDisplay& display, const PhonePath& to,
                 const std::vector<operations::FileToSend>& files, std::optional<qint64> freeBytes,
                 qsizetype leftOut, const OnSent& onSent)
{
    FileAccess access(mmc, u"Upload"_s, display.progress());
    operations::SendPlan plan = operations::planSend(to, files);
    const operations::SendPolicy policy{
        .stopsAtFailure = true, .freeBytes = freeBytes, .countsRoomOfReplaced = false};
    const bool isLookNeeded = plan.isAnyPossible();
    BatchResult sent{.verb = u"gesendet"_s};
    if (!access.mayBegin() || (isLookNeeded && !operations::lookBeforeSending(access, plan, policy)) ||
        !requireRoom(*mmc, plan, policy) || !askAboutReplaced(*mmc, plan) ||
        !requireRoom(*mmc, plan, policy)) { // a file that is kept gives no room to others
        display.conclude(sentenceOf(sent));
        return false;
    }
    QStringList notDone;
    QStringList report; // paragraphs of the one box at the end
    bool hasFailed = false;
    const auto finished = [&](const PlannedFile& file, const FileOutcome& outcome) {
        const bool isDone = outcome.state == State::Done;
        const bool isUnknown = outcome.state == State::Unknown || outcome.mayHoldPart;
        if (isUnknown && !isDone)
            ++sent.unknown; // the paragraph about its failure names it
        else if (file.obstacle == FileObstacle::Kept)
            ++sent.leftOut;
        else
            (isDone ? sent.files : notDone).append(file.path.name());
        sent.bytes += isDone ? file.size : 0;
        if (isDone)
            onSent(file);
        if (!hasFailed) { // those after it were not tried
            tellObstacle(*mmc, file);
            const QString text = textAfterFailure(file, outcome);
            if (!text.isEmpty() && isDone)
                tell(*mmc, text, Icon::Information);
            else if (!text.isEmpty())
                report.append(text);
        }
        hasFailed = hasFailed || (file.isPossible() && !isDone);
    };
    SendStages stages(display, plan);
    const auto saving = [&](const PlannedFile& file) { stages.saving(file); };
    const auto sending = [&](const PlannedFile& file) { stages.sending(file); };
    operations::applySend(access, plan, policy, {.saving = saving, .sending = sending, .finished = finished});
    sent.seconds = display.seconds();
    sent.leftOut += leftOut;
    sent.notDone = notDone.size();
    sent.isStopped = access.isStopped();
    tellOpenRecord(*mmc, access);
    if (hasFailed && files.size() > 1 && !access.isStopped())
        report += titled(u"Zum Telefon übertragen:"_s, sent.files) + titled(u"Nicht übertragen:"_s, notDone);
    if (!report.isEmpty())
        tell(*mmc, report.join(u"\n\n"_s), Icon::Exclamation);
    display.conclude(sentenceOf(sent));
    return !hasFailed;
}

} // namespace kalmo::ui
