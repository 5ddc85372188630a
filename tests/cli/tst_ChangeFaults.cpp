// Changes to lists and settings with a fault at every request: what the phone holds, what kalmoctl says and
// what the record keeps agree, and undo brings the first state back.

#include "Shell.h"
#include "support/HandsetMemory.h"
#include "support/SmallDisk.h"
#include "support/TestProgram.h"

#include <QDirIterator>

namespace {

using SetFault = void (*)(Faults& faults, int at);

struct Kind
{
    const char* name;
    SetFault set;
};

/// Each strikes at a request of the data mode.
constexpr Kind dataFaults[] = {
    {"refusal", [](Faults& faults, int at) { faults.refuseAt = at; }},
    {"silence", [](Faults& faults, int at) { faults.silentFrom = at; }},
    {"late answer", [](Faults& faults, int at) { faults.lateRequestAt = at, faults.lateBy = 61; }},
    {"line gone", [](Faults& faults, int at) { faults.hangUpAfter = 400 * at; }},
};

/// Each strikes at an AT command.
constexpr Kind commandFaults[] = {
    {"refusal", [](Faults& faults, int at) { faults.refuseCommandAt = at; }},
    {"silence", [](Faults& faults, int at) { faults.silentAfter = at; }},
    {"late answer", [](Faults& faults, int at) { faults.lateAt = at, faults.lateBy = 20; }},
    {"line gone", [](Faults& faults, int at) { faults.hangUpAt = at; }},
};

/// `first` is a command that has been carried out, if any.
std::unique_ptr<Handset> makeHandset(const QString& model, const QString& first = {})
{
    auto handset = std::make_unique<Handset>(handset::Options{.model = model, .atOnce = true});
    handset->file(u"one.json"_s, R"([{"lastName":"Neu","home":"1"}])");
    handset->file(u"few.json"_s,
                  R"([{"lastName":"Neu","home":"1"},{"lastName":"Mutter","home":"052134567"}])");
    handset->file(u"three.csv"_s, "Name;Nummer\nAnton;0301\nBerta;0302\nCarla;0303\n");
    handset->file(u"list.json"_s, R"([{"name":"A","number":"1"},{"name":"B","number":"2"}])");
    if (!first.isEmpty() && (*handset)(u"--json --yes "_s + first) != ExitDone)
        return nullptr;
    handset->port.handset().setFaults({});
    return handset;
}

QStringList memoryOf(const Handset& handset)
{
    return named(tests::memoryOf(const_cast<Handset&>(handset).port.handset().phone()));
}

QString stateIn(const QString& printed)
{
    return QJsonDocument::fromJson(printed.toUtf8()).object()[u"state"_s].toString();
}

/// State of the newest record, "-" if there are only so many older ones.
QString recordedState(Handset& handset, int older)
{
    handset(u"--json history"_s);
    const QJsonArray records = QJsonDocument::fromJson(handset.printed.toUtf8()).array();
    return records.size() == older ? u"-"_s : records.first()[u"state"_s].toString();
}

/// Bytes of the largest record, 0 without one.
qint64 recordSize(const Handset& handset)
{
    qint64 size = 0;
    QDirIterator records(handset.test.storage, {u"*.record"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (records.hasNext())
        size = std::max(size, records.nextFileInfo().size());
    return size;
}

} // namespace

class tst_ChangeFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyFaultAtAnyRequest_data();
    void anyFaultAtAnyRequest();
    void aFullDiskChangesNothing_data() { anyFaultAtAnyRequest_data(); }
    void aFullDiskChangesNothing();
    void aDiskThatFillsMeanwhile();

private:
    void check(const Faults& faults, const QStringList& before, const QStringList& wanted,
               const QByteArray& why);
};

void tst_ChangeFaults::anyFaultAtAnyRequest_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("line");
    const QString undo = u"undo"_s;
    QTest::newRow("undo of contacts") << u"SL450HX"_s << u"phonebook write few.json"_s << undo;
    QTest::newRow("undo of a list") << u"WOODY"_s << u"phonebook write list.json"_s << undo;
    QTest::newRow("undo of area codes") << u"S79H"_s << u"areacodes set 00 43 0 1"_s << undo;
    QTest::newRow("add") << u"SL450HX"_s << QString() << u"phonebook add one.json"_s;
    QTest::newRow("set") << u"SL450HX"_s << QString() << u"phonebook set 0002 one.json"_s;
    QTest::newRow("delete") << u"SL450HX"_s << QString() << u"phonebook delete 0001 0003"_s;
    QTest::newRow("write") << u"SL450HX"_s << QString() << u"phonebook write few.json"_s;
    QTest::newRow("import of contacts") << u"SL450HX"_s << QString() << u"phonebook import three.csv"_s;
    QTest::newRow("import of entries") << u"PICASSO"_s << QString() << u"phonebook import three.csv"_s;
    QTest::newRow("classic write") << u"WOODY"_s << QString() << u"phonebook write list.json"_s;
    QTest::newRow("providers write") << u"GALICIA"_s << QString() << u"providers write list.json"_s;
    QTest::newRow("ringtone") << u"GALICIA"_s << QString() << u"ringtones set alarm 7 rising"_s;
    QTest::newRow("area codes") << u"S79H"_s << QString() << u"areacodes set 00 43 0 1"_s;
}

void tst_ChangeFaults::anyFaultAtAnyRequest()
{
    QFETCH(QString, model);
    QFETCH(QString, first);
    QFETCH(QString, line);
    const auto calm = makeHandset(model, first);
    QVERIFY(calm);
    const QStringList before = memoryOf(*calm);
    QCOMPARE((*calm)(u"--json --yes "_s + line), ExitDone);
    const QStringList wanted = memoryOf(*calm);
    QVERIFY(wanted != before);
    const Faults& counted = calm->port.handset().phone().faults;
    const bool isInDataMode = counted.requests > 0;
    const int requests = isInDataMode ? counted.requests : counted.commands;
    const int step = std::max(1, requests / 10); // a list of many entries repeats itself
    for (const Kind& kind : isInDataMode ? dataFaults : commandFaults) {
        for (int at = 1; at <= requests; at += step) {
            Faults faults;
            kind.set(faults, at);
            const QByteArray why = kind.name + QByteArray(" at ") + QByteArray::number(at) + ": ";
            check(faults, before, wanted, why);
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void tst_ChangeFaults::check(const Faults& faults, const QStringList& before, const QStringList& wanted,
                             const QByteArray& why)
{
    QFETCH(QString, model);
    QFETCH(QString, first);
    QFETCH(QString, line);
    const auto handset = makeHandset(model, first);
    QVERIFY(handset);
    handset->port.handset().setFaults(faults);
    const ExitStatus status = (*handset)(u"--json --yes "_s + line);
    const QStringList now = memoryOf(*handset);
    const QByteArray said = why + handset->printed.toUtf8() + handset->told.toUtf8();
    const QString state = stateIn(handset->printed);
    QVERIFY2(status != ExitDone || state == u"done"_s, said.constData());
    QVERIFY2(status == ExitDone || !handset->told.isEmpty(), said.constData());
    QVERIFY2(state != u"done"_s || now == wanted, said.constData());
    const bool saysUnchanged = state == u"unchanged"_s || state.isEmpty();
    QVERIFY2(!saysUnchanged || now == before, said.constData());
    handset->port.handset().setFaults({});
    const QString recorded = recordedState(*handset, first.isEmpty() ? 0 : 1);
    QVERIFY2(recorded == u"-"_s ? now == before : recorded == state, (said + recorded.toUtf8()).constData());
    if (now == before)
        return;
    QVERIFY2((*handset)(u"--json --yes undo"_s) == ExitDone, (said + handset->told.toUtf8()).constData());
    QVERIFY2(memoryOf(*handset) == before, (said + handset->printed.toUtf8()).constData());
}

void tst_ChangeFaults::aFullDiskChangesNothing()
{
    QFETCH(QString, model);
    QFETCH(QString, first);
    QFETCH(QString, line);
    const auto handset = makeHandset(model, first);
    QVERIFY(handset);
    const QStringList before = memoryOf(*handset);
    {
        const SmallDisk disk(200); // less than the least record
        QCOMPARE((*handset)(u"--json --yes "_s + line), ExitFailed);
    }
    QVERIFY2(handset->told.contains(u"could not"_s), qPrintable(handset->told));
    QVERIFY2(stateIn(handset->printed) != u"done"_s, qPrintable(handset->printed));
    QCOMPARE(memoryOf(*handset), before);
}

/// The record is begun before the change, and has no room for its outcome after it.
void tst_ChangeFaults::aDiskThatFillsMeanwhile()
{
    const Rows<QString, QString> rows{{"a list", u"WOODY"_s, u"phonebook write list.json"_s},
                                      {"a setting", u"S79H"_s, u"areacodes set 00 43 0 1"_s}};
    rows.each([](const auto& model, const auto& line) {
        const auto calm = makeHandset(model, line);
        const auto handset = makeHandset(model);
        const QStringList before = memoryOf(*handset);
        {
            const SmallDisk disk(static_cast<int>(recordSize(*calm)) - 1);
            QVERIFY2((*handset)(u"--json --yes "_s + line) == ExitDone, qPrintable(handset->told));
        }
        QVERIFY2(handset->told.contains(u"could not be completed"_s), qPrintable(handset->told));
        QCOMPARE(stateIn(handset->printed), u"done"_s);
        QCOMPARE(memoryOf(*handset), memoryOf(*calm));
        QCOMPARE(recordedState(*handset, 0), u"unknown"_s);
        QCOMPARE((*handset)(u"--json --yes undo"_s), ExitDone);
        QCOMPARE(memoryOf(*handset), before);
    });
}

KALMO_TEST(tst_ChangeFaults)
#include "tst_ChangeFaults.moc"
