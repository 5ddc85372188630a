// Changes to lists and settings with a fault at every request: what the phone holds, what kalmoctl says and
// what the record keeps agree, and undo brings the first state back.

#include "Shell.h"
#include "support/HandsetMemory.h"
#include "support/SmallDisk.h"

#include <QTest>

#include <span>

using namespace kalmo;
using namespace kalmo::tests;
using handset::Faults;

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

/// Each strikes at a command of a classic handset.
constexpr Kind commandFaults[] = {
    {"refusal", [](Faults& faults, int at) { faults.refuseCommandAt = at; }},
    {"silence", [](Faults& faults, int at) { faults.silentAfter = at; }},
    {"line gone", [](Faults& faults, int at) { faults.hangUpAt = at; }},
};

bool isClassic(const QString& model)
{
    return model == u"PICASSO"_s;
}

std::unique_ptr<Handset> makeHandset(const QString& model)
{
    auto handset = std::make_unique<Handset>(handset::Options{.model = model, .atOnce = true});
    handset->file(u"one.json"_s, R"([{"lastName":"Neu","home":"1"}])");
    handset->file(u"few.json"_s,
                  R"([{"lastName":"Neu","home":"1"},{"lastName":"Mutter","home":"052134567"}])");
    handset->file(u"three.csv"_s, "Name;Nummer\nAnton;0301\nBerta;0302\nCarla;0303\n");
    return handset;
}

/// An entry without a name goes back under the name that it is shown with.
QStringList memoryOf(const Handset& handset)
{
    return tests::memoryOf(const_cast<Handset&>(handset).port.handset().phone())
        .replaceInStrings(u"\"name\":\"\""_s, u"\"name\":\"Ohne Name\""_s);
}

QString stateIn(const QString& printed)
{
    return QJsonDocument::fromJson(printed.toUtf8()).object()[u"state"_s].toString();
}

/// State of the newest record, "-" without one.
QString recordedState(Handset& handset)
{
    handset(u"--json history"_s);
    const QJsonArray records = QJsonDocument::fromJson(handset.printed.toUtf8()).array();
    return records.isEmpty() ? u"-"_s : records.first()[u"state"_s].toString();
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

private:
    void check(const QString& model, const QString& line, const Faults& faults, const QStringList& before,
               const QStringList& wanted, const QByteArray& why);
};

void tst_ChangeFaults::anyFaultAtAnyRequest_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("line");
    QTest::newRow("add") << u"SL450HX"_s << u"phonebook add one.json"_s;
    QTest::newRow("set") << u"SL450HX"_s << u"phonebook set 0002 one.json"_s;
    QTest::newRow("delete") << u"SL450HX"_s << u"phonebook delete 0001 0003"_s;
    QTest::newRow("write") << u"SL450HX"_s << u"phonebook write few.json"_s;
    QTest::newRow("import of contacts") << u"SL450HX"_s << u"phonebook import three.csv"_s;
    QTest::newRow("import of entries") << u"PICASSO"_s << u"phonebook import three.csv"_s;
}

void tst_ChangeFaults::anyFaultAtAnyRequest()
{
    QFETCH(QString, model);
    QFETCH(QString, line);
    const auto calm = makeHandset(model);
    const QStringList before = memoryOf(*calm);
    calm->port.handset().setFaults({});
    QCOMPARE((*calm)(u"--json --yes "_s + line), ExitDone);
    const QStringList wanted = memoryOf(*calm);
    QVERIFY(wanted != before);
    const Faults& counted = calm->port.handset().phone().faults;
    const int count = isClassic(model) ? counted.commands : counted.requests;
    const int step = std::max(1, count / 10); // a list of many contacts repeats itself
    const std::span<const Kind> kinds =
        isClassic(model) ? std::span<const Kind>(commandFaults) : std::span<const Kind>(dataFaults);
    for (const Kind& kind : kinds) {
        for (int at = 1; at <= count; at += step) {
            Faults faults;
            kind.set(faults, at);
            const QByteArray why = kind.name + QByteArray(" at ") + QByteArray::number(at) + ": ";
            check(model, line, faults, before, wanted, why);
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void tst_ChangeFaults::check(const QString& model, const QString& line, const Faults& faults,
                             const QStringList& before, const QStringList& wanted, const QByteArray& why)
{
    const auto handset = makeHandset(model);
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
    const QString recorded = recordedState(*handset);
    QVERIFY2(recorded == u"-"_s ? now == before : recorded == state, (said + recorded.toUtf8()).constData());
    if (now == before)
        return;
    QVERIFY2((*handset)(u"--json --yes undo"_s) == ExitDone, (said + handset->told.toUtf8()).constData());
    QVERIFY2(memoryOf(*handset) == before, (said + handset->printed.toUtf8()).constData());
}

void tst_ChangeFaults::aFullDiskChangesNothing()
{
    QFETCH(QString, model);
    QFETCH(QString, line);
    const auto handset = makeHandset(model);
    const QStringList before = memoryOf(*handset);
    {
        const SmallDisk disk(200); // less than the least record
        QCOMPARE((*handset)(u"--json --yes "_s + line), ExitFailed);
    }
    QVERIFY2(handset->told.contains(u"could not"_s), qPrintable(handset->told));
    QVERIFY2(stateIn(handset->printed) != u"done"_s, qPrintable(handset->printed));
    QCOMPARE(memoryOf(*handset), before);
}

QTEST_GUILESS_MAIN(tst_ChangeFaults)
#include "tst_ChangeFaults.moc"
