#include "ui/RandomSession.h"
#include "support/ListLines.h"

#include "app/SettingsKeys.h"
#include "obex/DataChannel.h"
#include "operations/Undo.h"
#include "phonedata/VcfEntry.h"
#include "support/HandsetMemory.h"
#include "ui/lists/RowsView.h"
#include "ui/window/frmPB.h"
#include "ui/window/VcardList.h"

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QMessageBox>

namespace kalmo::tests {

using namespace Qt::StringLiterals;
using operations::RecordedList;
using operations::Records;

namespace {

constexpr qsizetype mostRecords = Records::mostRecords - 20; // older ones would be deleted
constexpr int leastChanges = 3;
constexpr int longestFactor = 6; // of the time, until that many changes are made
constexpr qint64 longestEnd = 60000;

/// Files that the user can choose.
QString makeFiles(const TestContext& test)
{
    QDir().mkpath(test.path(u"Wahl"_s));
    test.makeFile(u"Wahl/a.csv"_s, "Name;Nummer\r\nAnna;030111\r\nBert;030222\r\n");
    test.makeFile(u"Wahl/b.vcf"_s,
                  "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Clara;Berg\r\nTEL:040333\r\nEND:VCARD\r\n");
    test.makeFile(u"Wahl/c.txt"_s, "Text");
    test.makeFile(u"Wahl/d.tel"_s, "Kein Eintrag");
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    picture.save(test.path(u"Wahl/e.png"_s));
    return test.path(u"Wahl"_s);
}

/// Lines that only one of two memories has.
QStringList differences(QStringList before, QStringList after)
{
    for (const QString& line : QStringList(before)) {
        if (after.removeOne(line))
            before.removeOne(line);
    }
    QStringList lines;
    for (const QString& line : before)
        lines.append(u"missing: "_s + line.left(300));
    for (const QString& line : after)
        lines.append(u"too much: "_s + line.left(300));
    return lines;
}

/// The lists of the phone that such a line may belong to.
QList<RecordedList> listsOf(const QString& line)
{
    const QString held = line.section(u": "_s, 1);
    if (held.startsWith(u"phonebook {"_s) || held.startsWith(u"contact {"_s))
        return {RecordedList::Phonebook};
    if (held.startsWith(u"providers {"_s))
        return {RecordedList::Providers};
    if (held.startsWith(u"settings {"_s))
        return {RecordedList::Ringtones, RecordedList::AreaCodes};
    return {RecordedList::Files};
}

/// Returns true if no dialog, box or menu is open, and nothing is sent or searched.
bool isIdle()
{
    return RandomUser::hasLeft() && !RandomUser::isWaiting();
}

} // namespace

RandomSession::RandomSession(const QString& model, quint32 seed)
    : RandomBoxes(seed), TestProgram(model, {}, &losses), m_model(model),
      m_user(random, dialogs, [this] { beforeAct(); }), m_settings(u"%1,N,8,1"_s.arg(port.BaudRate()))
{
    losses.watch(line);
    dialogs.watch(losses);
    dialogs.setFolder(makeFiles(test));
    test.clock.runToolkitEvents(true);
    test.sy.StorageForThisRun = test.storage;
    test.sy.PhoneType = 0;
    m_fresh = test.sy;
    port.judgeNothing();
    port.Close();
    m_before = m_held = held();
}

/// An entry without a name can only be written with the one that a reading gives it.
QStringList RandomSession::held()
{
    return named(memoryOf(port.handset().phone()));
}

void RandomSession::note(const QString& fault)
{
    m_faults.append(fault);
    m_user.note(u"fault: "_s + fault.left(100));
}

/// A newcomer is welcomed, others see the splash. Now and then the program begins with a file.
void RandomSession::start()
{
    checkEnd(); // of the program before
    dialogs.endCommand();
    m_flow.reset();
    test.sy = m_fresh;
    memory = {};
    app::put(test.settings, app::keys::Version, random.bounded(3) == 0 ? app::noValue() : u"1.9.8"_s);
    m_flow = std::make_unique<ui::StartFlow>(m_services, QString());
    if (random.bounded(4) == 0)
        m_flow->openFile(dialogs.OpenFile({}));
    m_flow->begin();
    m_hasClosed = false;
    m_isDisturbed = m_isFaulty;
    m_beganInData = port.handset().isInDataMode();
    ++m_starts;
}

/// One turn of the program's own event loop.
void RandomSession::turn()
{
    if (m_hasClosed && !m_isLeaving)
        start();
    findWindow();
    QCoreApplication::processEvents();
}

void RandomSession::findWindow()
{
    auto* window = shown<ui::frmPB>();
    if (!window || window == m_window)
        return;
    m_window = window;
    QObject::connect(window, &ui::frmPB::closedByUser, &m_user, [this] { m_hasClosed = true; });
}

void RandomSession::run(int seconds)
{
    QElapsedTimer time;
    time.start();
    start();
    m_user.start();
    const auto goesOn = [&] {
        const int most = seconds * 1000 * (m_changes < leastChanges ? longestFactor : 1);
        return m_faults.isEmpty() && m_lastRecord < mostRecords && time.elapsed() < most;
    };
    while (goesOn())
        turn();
    leave();
}

void RandomSession::leave()
{
    QElapsedTimer time;
    time.start();
    m_isLeaving = true;
    m_user.finish();
    port.handset().setFaults({});
    const auto isOpen = [] { return !isIdle() || shown<ui::frmPB>(); };
    while (isOpen() && time.elapsed() < longestEnd) {
        turn();
        memory.TbDirty = memory.NeDirty = false; // so that nothing is asked
        if (isIdle() && m_window && m_window->isVisible())
            m_window->close();
    }
    if (isOpen()) {
        note(u"the program does not end: "_s + RandomUser::nameOfFront());
    } else {
        checkEnd();
        m_flow.reset();
    }
}

/// A program leaves the phone able to take commands.
void RandomSession::checkEnd()
{
    checkViolations();
    if (!m_isDisturbed && !m_beganInData && port.handset().isInDataMode())
        note(u"the phone was left in its data mode"_s);
}

/// Looks at the phone between two acts of the user. What the user does next may meet a dead phone.
void RandomSession::beforeAct()
{
    if (m_isLeaving || m_hasClosed)
        return;
    const bool isBoxOpen = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    const QStringList boxes = isBoxOpen || RandomUser::isWaiting() ? QStringList() : dialogs.endCommand();
    if (!boxes.isEmpty())
        note(u"one loss, several boxes: "_s + boxes.join(u" | "_s));
    if (!isIdle())
        return;
    if (test.clock.isYielding())
        note(u"the user can act in the middle of an operation"_s);
    if (!shown<QWidget>())
        note(u"no window is open"_s);
    if (m_lookedAt != test.clock.elapsed())
        checkPhone();
    checkViolations();
    m_lookedAt = test.clock.elapsed();
    if (random.bounded(250) == 0)
        disturbPhone();
}

/// The phone falls silent or the line breaks, now or in the middle of what follows, and not for ever.
void RandomSession::disturbPhone()
{
    ++m_disturbances;
    m_isDisturbed = m_isFaulty = true;
    const int when = random.bounded(1, 12); // commands or requests
    handset::Faults faults;
    switch (random.bounded(4)) {
    case 0:
        faults.hangUpAt = when;
        break;
    case 1:
        faults.hangUpAfter = when * 400; // bytes
        break;
    default:
        faults.silentAfter = faults.silentFrom = when;
    }
    m_user.note(u"disturbed: hang up at %1, after %2 bytes, silent from %3"_s.arg(faults.hangUpAt)
                    .arg(faults.hangUpAfter)
                    .arg(faults.silentFrom));
    port.handset().setFaults(faults);
    test.clock.after(random.bounded(5, 120), [this] {
        port.handset().setFaults({});
        m_isFaulty = false;
    });
}

/// A phone that wakes up in the middle of something may find that the client has lost track.
void RandomSession::checkViolations()
{
    const QStringList violations = port.handset().violations();
    for (; m_violations < violations.size(); ++m_violations) {
        if (!m_isDisturbed)
            note(u"the handset says: "_s + violations[m_violations]);
    }
}

void RandomSession::checkPhone()
{
    checkRecords();
    if (m_window && m_window->isVisible())
        checkLists();
}

std::vector<operations::Record> RandomSession::newRecords() const
{
    std::vector<operations::Record> records = Records::ofAllPhones(context);
    std::erase_if(records, [this](const auto& record) { return record.id.toLongLong() <= m_lastRecord; });
    return records;
}

/// Nothing in the phone changes without a record that says so.
void RandomSession::checkRecords()
{
    QList<RecordedList> recorded;
    for (const operations::Record& record : newRecords()) {
        m_lastRecord = std::max(m_lastRecord, record.id.toLongLong());
        if (record.state != operations::State::Unchanged)
            recorded.append(record.list);
        if (record.state == operations::State::Done)
            ++m_changes;
        m_isUncompared = m_isUncompared || record.details[u"verified"_s].isNull();
    }
    QStringList now = held();
    for (const QString& change : differences(m_held, now)) {
        const QList<RecordedList> lists = listsOf(change);
        if (std::ranges::none_of(lists, [&](RecordedList list) { return recorded.contains(list); }))
            note(u"changed without a record: "_s + change);
    }
    m_held = std::move(now);
}

/// A list that is shown, and does not wait to be written, shows what the phone holds.
void RandomSession::checkLists()
{
    const handset::Phone& phone = port.handset().phone();
    const auto classic = [](const handset::ClassicStore& store) {
        QStringList lines;
        for (const handset::ClassicEntry& entry : store.entries)
            lines.append((entry.name.isEmpty() ? u"Ohne Name"_s : entry.name) + u'|' + entry.number);
        return lines;
    };
    const auto isSure = [](bool isDirty, const phonedata::StoreContent& content) {
        return !isDirty && content.certainty == phonedata::Certainty::Known;
    };
    if (isSure(memory.TbDirty, memory.phonebook))
        compare("lvwTB", {0, 1}, classic(phone.phonebook));
    if (isSure(memory.NeDirty, memory.providers))
        compare("lvwNE", {0, 1}, classic(phone.providers));
    QStringList contacts;
    for (const handset::IrmcItem& item : phone.irmc[handset::ContactStore].items())
        contacts.append(item.luid + u'|' + item.fields[u"lastName"_s].toString());
    // A box said that the list shows what was sent.
    const auto* list = m_window->findChild<ui::VcardList*>();
    const auto* reading = list ? list->store()->lastReading() : nullptr;
    m_isUncompared = m_isUncompared && !(reading && reading->isConfirmed());
    if (!m_isUncompared)
        compare("lvwVCF", {phonedata::VcfLuid, phonedata::VcfLastName}, contacts);
}

/// An empty list is one that is not known. Contacts without a reference wait to be read again.
void RandomSession::compare(const char* list, const QList<int>& columns, const QStringList& expected)
{
    const auto* view = m_window->findChild<ui::RowsView*>(QLatin1StringView(list));
    const QStringList lines = view ? linesOf(*view->rows(), columns) : QStringList();
    if (lines.isEmpty() || !lines.filter(u"NOVALIDLUID"_s).isEmpty())
        return;
    const QStringList wrong = differences(expected, lines);
    if (!wrong.isEmpty())
        note(
            u"%1 does not show what the phone holds: %2"_s.arg(QLatin1StringView(list), wrong.join(u", "_s)));
}

QString RandomSession::summary() const
{
    return u"%1 starts, %2 acts, %3 disturbances, %4 changes"_s.arg(m_starts)
        .arg(m_user.acts())
        .arg(m_disturbances)
        .arg(m_changes);
}

void RandomSession::undoAll()
{
    test.clock.WaitSeconds(2); // a line that has dropped
    port.Close();
    port.Open({});
    port.SetSettings(m_settings); // a search that found nothing leaves another rate
    line.ConfigurePort();
    if (!obex::recoverLine(line, {}))
        note(u"the phone does not answer at the end"_s);
    test.sy.PhoneID = m_model;
    test.sy.PhoneType = port.handset().phone().family.number;
    test.sy.blnTxLfTerminator = test.sy.PhoneType >= 11;
    test.sy.PhoneSerial.clear();
    operations::identifyPhone(line);
    const auto client = std::make_shared<obex::clsMmc>(line);
    const Records records(context, operations::knownIdentity(test.sy));
    for (const operations::Record& each : records.all()) {
        auto record = records.read(each.id);
        const auto undo = record ? operations::makeUndo({line, memory, client}, std::move(*record)) : nullptr;
        if (!undo)
            continue;
        const operations::Outcome plan = undo->plan();
        const operations::Outcome outcome =
            plan.cause == operations::Cause::None && !undo->diff().isEmpty() ? undo->apply() : plan;
        if (outcome.cause != operations::Cause::None)
            note(u"not put back: %1 %2: cause %3, blocked %4"_s.arg(each.id, each.cause)
                     .arg(static_cast<int>(outcome.cause))
                     .arg(undo->diff().blocked.join(u", "_s)));
    }
    m_faults += differences(m_before, held());
}

} // namespace kalmo::tests
