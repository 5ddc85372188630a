#include "ui/panels/FfsTransfers.h"

#include "obex/clsMmcOperation.h"
#include "ui/panels/BatchDisplay.h"
#include "ui/panels/FileBoxes.h"

#include <QDir>
#include <QMap>

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

/// Title of a paragraph with the names of files that can't be sent.
struct ObstacleRow
{
    FileObstacle obstacle;
    QStringView title;
};

constexpr QStringView noSuchName = u"Nicht übertragen, weil Dateien im Telefon nicht so heißen können:";

static_assert(obex::largestObject == 64 * app::megabyte, "a title below says it");
constexpr ObstacleRow obstacles[] = {
    {FileObstacle::TooLarge, u"Nicht übertragen, weil größer als 64 MB:"},
    {FileObstacle::NoLocalFile, u"Nicht übertragen, weil auf diesem Computer nicht vorhanden:"},
    {FileObstacle::NotReadable, u"Nicht übertragen, weil auf diesem Computer nicht lesbar:"},
    {FileObstacle::NoName, noSuchName},
    {FileObstacle::BadName, noSuchName},
    {FileObstacle::OtherName, noSuchName},
    {FileObstacle::Twin, u"Nicht übertragen, weil eine andere gewählte Datei im Telefon genauso heißt:"},
    {FileObstacle::IsFolder, u"Nicht übertragen, weil im Telefon ein Ordner so heißt:"},
    {FileObstacle::BelowTelecom,
     u"Nicht übertragen, weil das Telefon in diesem Ordner Kontakte und Termine speichert:"},
};

/// Returns what the words for the failed request do not say: what is true of the file after it. Empty if
/// there is nothing to add.
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
               inParagraph(outcome.saveFault);
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
bool requireRoom(const clsMmc& mmc, operations::SendPlan& plan, const operations::SendPolicy& policy)
{
    const bool fits = operations::requireRoom(plan, policy);
    if (!fits)
        tell(mmc, u"Im Telefon ist zu wenig Speicher frei, um den Vorgang ausfürhen zu können."_s,
             Icon::Exclamation);
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

/// Facts for the sentence and the one box at the end of an upload.
class UploadReport
{
public:
    explicit UploadReport(const clsMmc& mmc) : m_mmc(mmc) {}

    /// `failure` is the code of the request that failed first, 0 without one.
    void take(const PlannedFile& file, const FileOutcome& outcome, int failure);
    /// Of several files all are named.
    BatchReport report(int failure, bool ofSeveral) const;

    BatchResult sent{.verb = u"gesendet"_s};

private:
    void count(const PlannedFile& file, const FileOutcome& outcome);

    const clsMmc& m_mmc;
    bool m_hasFailed = false;               // those after it were not tried
    int m_failure = 0;                      // its code, for failures that the client does not report
    QStringList m_remarks;                  // paragraphs about single files
    QStringList m_notDone;                  // about which there is nothing else to say
    QMap<QString, QStringList> m_obstacles; // names by the title
};

void UploadReport::count(const PlannedFile& file, const FileOutcome& outcome)
{
    const QString name = file.path.name();
    const auto row = std::ranges::find(obstacles, file.obstacle, &ObstacleRow::obstacle);
    const bool isDone = outcome.state == State::Done;
    if (isDone) {
        sent.files.append(name);
        sent.bytes += file.size;
    } else if (file.obstacle == FileObstacle::Kept) {
        ++sent.leftOut;
    } else if (outcome.state == State::Unknown || outcome.mayHoldPart) {
        ++sent.unknown; // a paragraph names it
    } else {
        (row != std::end(obstacles) ? m_obstacles[row->title.toString()] : m_notDone).append(name);
        ++sent.notDone;
    }
}

void UploadReport::take(const PlannedFile& file, const FileOutcome& outcome, int failure)
{
    count(file, outcome);
    if (m_hasFailed)
        return;
    const bool isDone = outcome.state == State::Done;
    const QString remark = textAfterFailure(file, outcome);
    if (!remark.isEmpty() && isDone && failure == 0) // the client has shown its doubt
        tell(m_mmc, remark, Icon::Information);
    else if (!remark.isEmpty())
        m_remarks.append(remark);
    m_hasFailed = file.isPossible() && !isDone;
    const bool isOwnWish = outcome.cause == Cause::Interrupted;
    if (m_hasFailed && !isOwnWish && outcome.cause != Cause::Mismatch && outcome.cause != Cause::NotSaved)
        m_failure = outcome.code == 0 ? obex::Timeout : outcome.code;
}

BatchReport UploadReport::report(int failure, bool ofSeveral) const
{
    QStringList parts = m_remarks;
    if (m_hasFailed && ofSeveral && !sent.isStopped)
        parts += titled(u"Zum Telefon übertragen:"_s, sent.files) + titled(u"Nicht übertragen:"_s, m_notDone);
    for (auto group = m_obstacles.begin(); group != m_obstacles.end(); ++group)
        parts += titled(group.key(), group.value());
    return {.failure = failure == 0 ? m_failure : failure, .paragraphs = parts};
}

/// The stages of an upload on the display: what is replaced is read first.
class SendStages
{
public:
    SendStages(clsMmc& mmc, BatchDisplay& display, const operations::SendPlan& plan)
        : m_display(display), m_plan(plan), m_received(std::in_place, mmc, display)
    {
    }

    void saving(const PlannedFile& file)
    {
        if (!std::exchange(m_isSaving, true))
            expect(u"Sichern"_s, halfOfRest,
                   [](const PlannedFile& each) { return each.replaced ? each.replaced->size : -1; });
        m_display.next(file.replaced->size);
    }
    void sending(const PlannedFile& file)
    {
        m_received.reset();
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
    std::optional<ReceivedBytes> m_received; // while the old files are read
    bool m_isSaving = false;
    bool m_isSending = false;
};

} // namespace

void uploadFiles(const std::shared_ptr<clsMmc>& mmc, BatchDisplay& display, const PhonePath& to,
                 const std::vector<operations::FileToSend>& files, std::optional<qint64> freeBytes,
                 qsizetype leftOut, const OnSent& onSent)
{
    FileAccess access(mmc, u"Upload"_s, display.progress());
    operations::SendPlan plan = operations::planSend(to, files);
    const operations::SendPolicy policy{
        .stopsAtFailure = true, .freeBytes = freeBytes, .countsRoomOfReplaced = false};
    const bool isLookNeeded = plan.isAnyPossible();
    UploadReport report(*mmc);
    if (!access.mayBegin() || (isLookNeeded && !operations::lookBeforeSending(access, plan, policy)) ||
        !requireRoom(*mmc, plan, policy) || !askAboutReplaced(*mmc, plan) ||
        !requireRoom(*mmc, plan, policy)) { // a file that is kept gives no room to others
        display.conclude(sentenceOf(report.sent));
        return;
    }
    SendStages stages(*mmc, display, plan);
    clsMmc::FirstFailure failure(*mmc); // one box at the end reports all
    const auto saving = [&](const PlannedFile& file) { stages.saving(file); };
    const auto sending = [&](const PlannedFile& file) { stages.sending(file); };
    const auto finished = [&](const PlannedFile& file, const FileOutcome& outcome) {
        report.take(file, outcome, failure.code());
        if (outcome.state == State::Done)
            onSent(file);
    };
    operations::applySend(access, plan, policy, {.saving = saving, .sending = sending, .finished = finished});
    report.sent.seconds = display.seconds();
    report.sent.leftOut += leftOut;
    report.sent.isStopped = access.isStopped();
    tellOpenRecord(*mmc, access);
    tellReport(*mmc, report.report(failure.code(), files.size() > 1));
    display.conclude(sentenceOf(report.sent));
}

} // namespace kalmo::ui
