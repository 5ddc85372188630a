// Whole sessions at the program by random keys and clicks, against the emulated handset, which falls silent
// and loses its line now and then. Whatever the user does, each change in the phone has its record, the lists
// on screen are true, and the records lead back to what the phone held before. KALMO_SEED repeats a session,
// KALMO_SESSION_SECONDS sets its length and takes a new seed, KALMO_TRACE shows each act.

#include "support/TestProgram.h"
#include "ui/RandomSession.h"

#include <cstdio>

using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

constexpr int usualSeconds = 10; // for each model

/// The usual run repeats one session, so that it judges the change under test. Long runs look for new faults.
quint32 seedOfRun()
{
    constexpr quint32 usualSeed = 1;
    bool isGiven = false;
    const int seed = qEnvironmentVariableIntValue("KALMO_SEED", &isGiven);
    if (isGiven)
        return static_cast<quint32>(seed);
    const bool isLong = qEnvironmentVariableIsSet("KALMO_SESSION_SECONDS");
    return isLong ? QRandomGenerator::global()->bounded(1000000U) : usualSeed;
}

int secondsOfRun()
{
    bool isGiven = false;
    const int seconds = qEnvironmentVariableIntValue("KALMO_SESSION_SECONDS", &isGiven);
    return isGiven ? seconds : usualSeconds;
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
    RandomSession session(model, seed);
    session.run(secondsOfRun());
    session.undoAll();
    qInfo("%s", qPrintable(session.summary()));
    QVERIFY2(session.faults().isEmpty(), qPrintable(session.faults().join(u'\n') + u"\nLatest acts:\n"_s +
                                                    session.user().trace().join(u'\n')));
    QVERIFY(session.changes() > 0);
}

KALMO_TEST(tst_Session)
#include "tst_Session.moc"
