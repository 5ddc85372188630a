// Changes to lists and settings with a fault at every request: what the phone holds, what kalmoctl says and
// what the record keeps agree, and undo brings the first state back.

#include "FaultSweep.h"
#include "Shell.h"
#include "support/SeedFile.h"
#include "support/SmallDisk.h"
#include "support/TestProgram.h"

namespace {

/// Each strikes at a request of the data mode.
constexpr FaultKind dataFaults[] = {
    {"refusal", [](int at) { return Faults{.refuseAt = at}; }},
    {"silence", [](int at) { return Faults{.silentFrom = at}; }},
    {"late answer", [](int at) { return Faults{.lateBy = 61, .lateRequestAt = at}; }},
    {"line gone", [](int at) { return Faults{.hangUpAfter = 400 * at}; }},
    {"no LUIDs", [](int at) { return Faults{.noLuid = at > 0}; }},
};

/// Each strikes at an AT command, or at an entry.
constexpr FaultKind commandFaults[] = {
    {"refusal", [](int at) { return Faults{.refuseCommandAt = at}; }},
    {"silence", [](int at) { return Faults{.silentAfter = at}; }},
    {"line gone", [](int at) { return Faults{.hangUpAt = at}; }},
    {"lost byte", [](int at) { return Faults{.loseByteAt = at}; }},
    {"beyond all time limits", [](int at) { return Faults{.lateAt = at, .lateBy = 20}; }},
    // The others are tried with one list, since they cost time.
    {"beyond the first one", [](int at) { return Faults{.lateAt = at, .lateBy = 1.5}; }},
    {"beyond the second one", [](int at) { return Faults{.lateAt = at, .lateBy = 9}; }},
    {"noise", [](int at) { return Faults{.noiseAt = at}; }},
    {"entry not read", [](int at) { return Faults{.readErrorAt = at}; }},
    {"entry refused", [](int at) { return Faults{.writeErrorAt = at}; }},
    {"entry refused once", [](int at) { return Faults{.writeErrorOnceAt = at}; }},
};

/// The handset and the change that get all of them.
const QString delicate = u"GALICIA"_s;
const QString listWrite = u"phonebook write list.json"_s;
const QString undo = u"undo"_s;

/// The model, a command that comes first, and the command that is disturbed.
const Rows<QString, QString, QString> changes{
    {"undo of contacts", u"SL450HX"_s, u"phonebook write few.json"_s, undo},
    {"undo of a list", delicate, listWrite, undo},
    {"undo of a ringtone", delicate, u"ringtones set alarm 7 rising"_s, undo},
    {"undo of area codes", u"S79H"_s, u"areacodes set 00 43 0 1"_s, undo},
    {"add", u"SL450HX"_s, {}, u"phonebook add one.json"_s},
    {"set", u"SL450HX"_s, {}, u"phonebook set 0002 one.json"_s},
    {"delete", u"SL450HX"_s, {}, u"phonebook delete 0001 0003"_s},
    {"write", u"SL450HX"_s, {}, u"phonebook write few.json"_s},
    {"import of contacts", u"SL450HX"_s, {}, u"phonebook import three.csv"_s},
    {"import of entries", delicate, {}, u"phonebook import three.csv"_s},
    {"classic write", u"WOODY"_s, {}, listWrite},
    {"delicate write", delicate, {}, listWrite},
    {"import of a provider", delicate, {}, u"providers import three.csv"_s},
    {"providers write", delicate, {}, u"providers write list.json"_s},
    {"ringtone", delicate, {}, u"ringtones set alarm 7 rising"_s},
    {"area codes", u"S79H"_s, {}, u"areacodes set 00 43 0 1"_s},
};

/// A short list with a melody of the handset's own, for a handset that prepares its store.
const QByteArray delicateMemory =
    R"({"settings": {"melodies": [{"name": "Walzer", "kind": "MID", "size": 99, "id": 12}]},
            "phonebook": [{"name": "Mutter \u0022M\u0022", "number": "1", "anniversary": "24.12. 08:30",
                           "reminder": "12"}, {"name": "", "number": "2"}, {"name": "Jörg, B.", "number": "3"}],
            "providers": [{"name": "Nord", "number": "01031"}]})";

/// `first` is a command that has been carried out, if any.
std::unique_ptr<Handset> makeHandset(const QString& model, const QString& first = {})
{
    handset::Options options{.model = model, .atOnce = true};
    if (model == delicate)
        options.seed = seedFile(delicateMemory);
    else if (model == u"SL450HX"_s)
        options.seed = u"none"_s, options.entries = 6;
    auto handset = std::make_unique<Handset>(options);
    handset->file(u"one.json"_s, R"([{"lastName":"Neu","home":"1"}])");
    handset->file(u"Liesmich.txt"_s, "other");
    handset->file(u"few.json"_s,
                  R"([{"lastName":"Neu","home":"1"},{"lastName":"Mutter","home":"052134567"}])");
    handset->file(u"three.csv"_s, "Name;Nummer\nAnton;0301\nBerta;0302\nCarla;0303\n");
    handset->file(u"list.json"_s, R"([{"name":"A","number":"1"},{"name":"B","number":"2"}])");
    if (!first.isEmpty() && (*handset)(u"--json --yes "_s + first) != ExitDone)
        return nullptr;
    handset->port.handset().setFaults({});
    return handset;
}

QString stateIn(const QString& printed)
{
    const QJsonDocument value = QJsonDocument::fromJson(printed.toUtf8());
    return (value.isArray() ? value[0] : QJsonValue(value.object()))[u"state"_s].toString();
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
    void anyFaultAtAnyRequest()
    {
        changes.each([this](const QString& model, const QString& first, const QString& line) {
            const auto calm = makeHandset(model, first);
            QVERIFY(calm);
            const QStringList before = calm->memory();
            QCOMPARE((*calm)(u"--json --yes "_s + line), ExitDone);
            const QStringList wanted = calm->memory();
            QVERIFY(wanted != before);
            const Faults& counted = calm->port.handset().phone().faults;
            const bool isInDataMode = counted.requests > 0;
            const int requests = isInDataMode ? counted.requests : counted.commands;
            const bool isThorough = model == delicate && line == listWrite;
            // A list of many entries repeats itself.
            const int step = isThorough ? 1 : std::max(1, requests / (isInDataMode ? 16 : 10));
            std::span<const FaultKind> kinds(dataFaults);
            if (!isInDataMode)
                kinds = std::span(commandFaults).first(isThorough ? std::size(commandFaults) : 5);
            m_states.clear();
            sweep(kinds, requests, step, [&](const Faults& faults, const QByteArray& why) {
                const auto handset = makeHandset(model, first);
                QVERIFY(handset);
                handset->port.handset().setFaults(faults);
                check(*handset, {line, before, wanted, first.isEmpty() ? 0 : 1, isThorough}, why);
            });
            QVERIFY(m_states.contains(u"unknown"_s) && m_states.contains(u"done"_s));
        });
    }

    void aFullDiskChangesNothing()
    {
        const auto checkChange = [](const QString& model, const QString& first, const QString& line) {
            const auto handset = makeHandset(model, first);
            QVERIFY(handset);
            const QStringList before = handset->memory();
            {
                const SmallDisk disk(200); // less than the least record
                QCOMPARE((*handset)(u"--json --yes "_s + line), ExitFailed);
            }
            QVERIFY2(handset->told.contains(u"could not"_s), qPrintable(line + handset->told));
            QVERIFY2(stateIn(handset->printed) != u"done"_s, qPrintable(line + handset->printed));
            QCOMPARE(handset->memory(), before);
        };
        changes.each(checkChange);
        for (const QString& line :
             {u"put one.json --to Sounds"_s, u"put Liesmich.txt"_s, u"rm Liesmich.txt Sounds/Piep.wav"_s,
              u"rm --force Sounds/Gong.mid"_s, u"mkdir Pictures/a/b"_s, u"mv Liesmich.txt Sounds/"_s,
              u"attr Sounds/Gong.mid rw"_s})
            checkChange(u"S68H"_s, {}, u"files "_s + line);
    }

    /// The record is begun before the change, and has no room for its outcome after it.
    void aDiskThatFillsMeanwhile()
    {
        const Rows<QString, QString> rows{
            {"a list", u"WOODY"_s, u"phonebook write list.json"_s},
            {"a setting", u"S79H"_s, u"areacodes set 00 43 0 1"_s},
            {"a new file", u"S68H"_s, u"files put one.json --to Sounds"_s},
            {"a file that goes", u"S68H"_s, u"files rm Liesmich.txt"_s},
            {"a folder", u"S68H"_s, u"files mkdir Neu"_s},
        };
        rows.each([](const auto& model, const auto& line) {
            const auto calm = makeHandset(model, line);
            const auto handset = makeHandset(model);
            const QStringList before = handset->memory();
            {
                const SmallDisk disk(static_cast<int>(recordSize(*calm)) - 1);
                QVERIFY2((*handset)(u"--json --yes "_s + line) == ExitDone, qPrintable(handset->told));
            }
            QVERIFY2(handset->told.contains(u"could not be completed"_s), qPrintable(handset->told));
            QCOMPARE(stateIn(handset->printed), u"done"_s);
            QCOMPARE(handset->memory(), calm->memory());
            QCOMPARE(recordedState(*handset, 0), u"unknown"_s);
            QCOMPARE((*handset)(u"--json --yes undo"_s), ExitDone);
            QCOMPARE(handset->memory(), before);
        });
    }

private:
    struct Change
    {
        QString line;
        QStringList before;
        QStringList wanted;
        int older;       ///< records of changes before
        bool isThorough; ///< tries the copy in the user's folder too
    };

    void check(Handset& handset, const Change& change, const QByteArray& why)
    {
        const auto& [line, before, wanted, older, isThorough] = change;
        const ExitStatus status = handset(u"--json --yes "_s + line);
        const QStringList now = handset.memory();
        const QByteArray said = why + handset.printed.toUtf8() + handset.told.toUtf8();
        const QString state = stateIn(handset.printed);
        m_states.insert(state);
        QVERIFY2(status != ExitDone || state == u"done"_s, said.constData());
        QVERIFY2(status == ExitDone || !handset.told.isEmpty(), said.constData());
        QVERIFY2(state != u"done"_s || now == wanted, said.constData());
        const bool saysUnchanged = state == u"unchanged"_s || state.isEmpty();
        QVERIFY2(!saysUnchanged || now == before, said.constData());
        if (line.startsWith(u"phonebook add"_s)) {
            const auto written = QJsonDocument::fromJson(handset.printed.toUtf8())[u"written"_s].toInt();
            const auto untold = now.size() - before.size() - written;
            QVERIFY2(untold == 0 || (untold == 1 && handset.told.contains(u"of one more it is not known"_s)),
                     said.constData());
        }
        const QStringList saved = handset.backups();
        handset.port.handset().setFaults({});
        const QString recorded = recordedState(handset, older);
        QVERIFY2(recorded == u"-"_s ? now == before : recorded == state,
                 (said + recorded.toUtf8()).constData());
        if (now == before)
            return;
        static const QRegularExpression erasing(u"book (write|set|delete)|providers write"_s);
        QVERIFY2(saved.size() == 1 || !erasing.match(line).hasMatch(), said.constData());
        QVERIFY2(handset(u"--json --yes undo"_s) == ExitDone, (said + handset.told.toUtf8()).constData());
        QVERIFY2(handset.memory() == before, (said + handset.printed.toUtf8()).constData());
        if (!isThorough)
            return;
        // So does the copy in the user's folder, out of the state that the fault left.
        QCOMPARE(handset(u"--json --yes undo"_s), ExitDone);
        QVERIFY2(handset.memory() == now, (said + handset.printed.toUtf8()).constData());
        QCOMPARE(handset(u"--yes phonebook write"_s, {handset.test.storage + u"/Backup/"_s + saved[0]}),
                 ExitDone);
        QVERIFY2(handset.memory() == before, (said + handset.told.toUtf8()).constData());
    }

    QSet<QString> m_states; ///< that changes of one row were said to end in
};

KALMO_TEST(tst_ChangeFaults)
#include "tst_ChangeFaults.moc"
