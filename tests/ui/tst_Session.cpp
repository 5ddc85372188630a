// A whole session at the window by random keys and clicks, against the emulated handset. Whatever the user
// does, the phone holds afterwards what it held, or records of its changes lead back to that.
// KALMO_SEED repeats a session, KALMO_SESSION_SECONDS sets its length, KALMO_TRACE shows each act.

#include "operations/PhoneIdentity.h"
#include "operations/Undo.h"
#include "support/HandsetMemory.h"
#include "support/TestProgram.h"
#include "ui/RandomUser.h"
#include "ui/TestProgram.h"
#include "ui/window/frmPB.h"
#include "ui/window/StatusArea.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

constexpr int usualSeconds = 10;                                      // for each model
constexpr size_t mostRecords = operations::Records::mostRecords - 20; // older ones would be deleted

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

struct RandomBoxes
{
    explicit RandomBoxes(quint32 seed) : random(seed) {}

    QRandomGenerator random;
    RandomDialogs dialogs{random};
};

/// The program with its window, which is opened again where the user has closed it.
struct Session : RandomBoxes, TestProgram
{
    Session(const QString& model, quint32 seed)
        : RandomBoxes(seed), TestProgram(model, {}, &dialogs),
          user(random, dialogs, [this] { return child<ui::StatusArea>(*window, "sta").isBusy(); })
    {
        QDir(test.storage).mkpath(u"Backup"_s);
        dialogs.setFolder(makeFiles(test));
        test.clock.runToolkitEvents(true);
        test.sy.PhoneID = model;
        operations::identifyPhone(line);
        before = held();
        open();
    }

    /// An entry without a name can only be written with the one that a reading gives it.
    QStringList held()
    {
        return memoryOf(port.handset().phone())
            .replaceInStrings(u"phonebook {\"name\":\"\""_s, u"phonebook {\"name\":\"Ohne Name\""_s);
    }
    std::vector<operations::Record> records()
    {
        return operations::Records(context, operations::knownIdentity(test.sy)).all();
    }

    void open()
    {
        window.reset();
        if (!port.IsOpen())
            port.Open({});
        mmc = std::make_shared<obex::clsMmc>(line);
        window = std::make_unique<ui::frmPB>(program, mmc);
        QObject::connect(window.get(), &ui::frmPB::closedByUser, &user, [this] { isClosed = true; });
        QObject::connect(window.get(), &ui::frmPB::searchRequested, window.get(), &ui::frmPB::forgetPhone);
        isClosed = false;
    }

    /// One turn of the program's own event loop.
    void turn()
    {
        if (isClosed)
            open();
        if (!window->isVisible() && RandomUser::hasLeft())
            window->show();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    void run(int seconds)
    {
        QElapsedTimer time;
        time.start();
        user.start();
        while (time.elapsed() < seconds * 1000 && records().size() < mostRecords)
            turn();
        user.finish();
        while (!RandomUser::hasLeft() || child<ui::StatusArea>(*window, "sta").isBusy())
            turn();
        memory.TbDirty = memory.NeDirty = false; // so that nothing is asked
        while (!isClosed) {
            window->close();
            QCoreApplication::processEvents();
        }
    }

    /// Undoes what the records say, the latest first. Returns what failed.
    QStringList undoAll()
    {
        open();
        QStringList failed;
        for (const operations::Record& each : records()) {
            const auto undo = undoOf(each.id);
            if (!undo)
                continue;
            const operations::Outcome plan = undo->plan();
            const operations::Outcome outcome =
                plan.cause == operations::Cause::None && !undo->diff().isEmpty() ? undo->apply() : plan;
            if (outcome.cause != operations::Cause::None)
                failed.append(u"%1 %2: cause %3, blocked %4"_s.arg(each.id, each.cause)
                                  .arg(static_cast<int>(outcome.cause))
                                  .arg(undo->diff().blocked.join(u", "_s)));
        }
        return failed;
    }

    std::unique_ptr<operations::Undo> undoOf(const QString& id)
    {
        auto record = operations::Records(context, operations::knownIdentity(test.sy)).read(id);
        return record ? operations::makeUndo({line, memory, mmc}, std::move(*record)) : nullptr;
    }

    RandomUser user;
    QStringList before;
    std::shared_ptr<obex::clsMmc> mmc;
    std::unique_ptr<ui::frmPB> window;
    bool isClosed = false;
};

quint32 seedOfRun()
{
    bool isGiven = false;
    const int seed = qEnvironmentVariableIntValue("KALMO_SEED", &isGiven);
    return isGiven ? static_cast<quint32>(seed) : QRandomGenerator::global()->bounded(1000000U);
}

int secondsOfRun()
{
    bool isGiven = false;
    const int seconds = qEnvironmentVariableIntValue("KALMO_SESSION_SECONDS", &isGiven);
    return isGiven ? seconds : usualSeconds;
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

} // namespace

class tst_Session : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QDir::setCurrent(QDir::tempPath()); }
    void losesNothing_data();
    void losesNothing();
};

void tst_Session::losesNothing_data()
{
    QTest::addColumn<QString>("model");
    QTest::newRow("classic") << u"PICASSO"_s;
    QTest::newRow("vCard") << u"SL450HX"_s;
}

void tst_Session::losesNothing()
{
    QFETCH(QString, model);
    const quint32 seed = seedOfRun();
    qInfo("KALMO_SEED=%u", seed);
    Session session(model, seed);
    session.run(secondsOfRun());
    const size_t changes = session.records().size();
    qInfo("%d acts, %zu recorded changes", session.user.acts(), changes);
    const QStringList failed = session.undoAll();
    const QStringList lost = differences(session.before, session.held());
    const QString acts = u"\nLatest acts:\n"_s + session.user.trace().join(u'\n');
    QVERIFY2(failed.isEmpty() && lost.isEmpty(),
             qPrintable(failed.join(u'\n') + u'\n' + lost.join(u'\n') + acts));
    QVERIFY(session.user.acts() > 100);
}

KALMO_TEST(tst_Session)
#include "tst_Session.moc"
