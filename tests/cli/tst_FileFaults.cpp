// Changes to files with a fault at every request: what the phone holds, what kalmoctl says and what the
// record keeps agree, and undo brings the first state back.

#include "FaultSweep.h"
#include "operations/SendFiles.h"
#include "Shell.h"
#include "support/TestProgram.h"

#include <map>

namespace {

constexpr FaultKind fileFaults[] = {
    {"refusal", [](int request) { return Faults{.refuseAt = request}; }},
    {"silence", [](int request) { return Faults{.silentFrom = request}; }},
    {"late answer", [](int request) { return Faults{.lateBy = 25.2, .lateRequestAt = request}; }},
    {"line gone", [](int request) { return Faults{.hangUpAfter = 400 * request}; }},
};

/// Rights and content of a file or folder, "-" if there is none.
QString at(const QStringList& tree, const QString& path)
{
    for (const QString& line : tree) {
        if (line.startsWith(path + u' ', Qt::CaseInsensitive))
            return line.sliced(path.size() + 1).section(u' ', 0, 1) + u' ' + line.section(u' ', -1);
    }
    return u"-"_s;
}

std::unique_ptr<Handset> handsetWithFiles(const QString& model)
{
    auto handset = std::make_unique<Handset>(handset::Options{.model = model, .maxPacket = 1000});
    handset->file(u"Liesmich.txt"_s, QByteArray(2500, 'n'));
    handset->file(u"LIESMICH.txt"_s, QByteArray(2500, 'n')); // a name that the phone has in other letters
    handset->file(u"neu.txt"_s, QByteArray(1500, 'n'));
    handset->file(u"Piep.wav"_s, QByteArray(2500, 'n'));
    return handset;
}

/// The places that a result is about, with the state that it says of them.
std::map<QString, QString> statesIn(const QString& printed)
{
    std::map<QString, QString> states;
    const QJsonDocument document = QJsonDocument::fromJson(printed.toUtf8());
    const QJsonArray items = document.isArray() ? document.array() : QJsonArray{document.object()};
    for (const QJsonValue& item : items) {
        for (const QString& key : {u"path"_s, u"from"_s, u"to"_s}) {
            if (item.toObject().contains(key))
                states[item[key].toString()] = item[u"state"_s].toString();
        }
    }
    return states;
}

} // namespace

class tst_FileFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyFaultAtAnyRequest_data()
    {
        QTest::addColumn<QString>("line");
        for (const char* line : {"put neu.txt --to Sounds", "put LIESMICH.txt",
                                 "rm Liesmich.txt Sounds/Piep.wav", "rm --force Sounds/Gong.mid",
                                 "mkdir Pictures/a/b", "mv Liesmich.txt Sounds/", "attr Sounds/Gong.mid rw"})
            QTest::newRow(line) << u"files "_s + QString::fromLatin1(line);
    }

    void anyFaultAtAnyRequest()
    {
        QFETCH(QString, line);
        for (const QString& model : {u"S68H"_s, u"S820"_s}) {
            const auto calm = handsetWithFiles(model);
            const QStringList before = calm->memory();
            calm->port.handset().setFaults({});
            QCOMPARE((*calm)(u"--json --yes "_s + line), ExitDone);
            const QStringList wanted = calm->memory();
            QVERIFY(wanted != before);
            const int requests = calm->port.handset().phone().faults.requests;
            for (const QStringList& state : {before, wanted}) { // there and back again
                QCOMPARE((*calm)(u"--json --yes undo"_s), ExitDone);
                QVERIFY2(calm->memory() == state, qPrintable(calm->printed));
            }
            QCOMPARE(calm->port.handset().violations(), QStringList());
            std::span<const FaultKind> kinds(fileFaults);
            if (model != u"S68H"_s) // its names have another form, all else is the same
                kinds = kinds.first(1);
            sweep(kinds, requests, 1, [&](const Faults& faults, const QByteArray& why) {
                const auto handset = handsetWithFiles(model);
                handset->port.handset().setFaults(faults);
                check(*handset, line, before, wanted, model.toUtf8() + ": " + why);
            });
        }
    }

    void anUndoLosesNothing_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("code");
        for (const char* line :
             {"put Piep.wav --to Sounds", "rm Sounds/Piep.wav", "mv Sounds/Piep.wav Pictures/"}) {
            QTest::addRow("%s, silence", line) << u"files "_s + QString::fromLatin1(line) << 0;
            for (const int code : {0xC3, 0xD0, 0xE1})
                QTest::addRow("%s, %X", line, code) << u"files "_s + QString::fromLatin1(line) << code;
        }
    }

    /// An undo with a fault at every request: it is not called done unless it is, and its own record holds
    /// what it changed.
    void anUndoLosesNothing()
    {
        QFETCH(QString, line);
        QFETCH(int, code);
        for (int request = 1, requests = 1; request <= requests; ++request) {
            const auto handset = handsetWithFiles(u"S68H"_s);
            const QStringList first = handset->memory();
            QCOMPARE((*handset)(u"--yes "_s + line), ExitDone);
            const QStringList changed = handset->memory();
            handset->port.handset().setFaults(code == 0 ? Faults{.silentFrom = request}
                                                        : Faults{.refuseAt = request, .refuseCode = code});
            const ExitStatus status = (*handset)(u"--yes undo"_s);
            requests = handset->port.handset().phone().faults.requests;
            const QStringList now = handset->memory();
            const QByteArray why = QByteArray::number(request) + ": " + handset->told.toUtf8();
            QVERIFY2(status != ExitDone || now == first, why.constData());
            if (now == changed)
                continue;
            handset->port.handset().setFaults({});
            QVERIFY2((*handset)(u"--yes undo"_s) == ExitDone, (why + handset->told.toUtf8()).constData());
            QVERIFY2(handset->memory() == changed, why.constData());
        }
    }

    /// An undo makes a file deletable before it deletes it. If the phone refuses that, nothing has changed.
    void aRefusedUndoKeepsTheRights()
    {
        for (int request = 1, requests = 1; request <= requests; ++request) {
            const auto handset = handsetWithFiles(u"S68H"_s);
            const QStringList first = handset->memory();
            QCOMPARE((*handset)(u"files put neu.txt --to Sounds"_s), ExitDone);
            QCOMPARE((*handset)(u"files attr Sounds/neu.txt ro"_s), ExitDone);
            const QStringList changed = handset->memory();
            handset->port.handset().setFaults({.refuseAt = request});
            const ExitStatus status = (*handset)(u"--json --yes undo 1"_s);
            requests = handset->port.handset().phone().faults.requests;
            const QByteArray why = QByteArray::number(request) + ": " + handset->told.toUtf8();
            QVERIFY2(handset->memory() == (status == ExitDone ? first : changed), why.constData());
            QVERIFY2(!handset->printed.contains(u"unknown"_s), why.constData());
        }
    }

    /// Some phones would delete it with all that it holds.
    void anUndoLeavesAFolderThatIsInUse()
    {
        const auto handset = handsetWithFiles(u"S68H"_s);
        QCOMPARE((*handset)(u"files mkdir Neu/darin"_s), ExitDone);
        const QStringList made = handset->memory();
        QCOMPARE((*handset)(u"files put neu.txt --to Neu"_s), ExitDone);
        handset->port.handset().setFaults({});
        QCOMPARE((*handset)(u"--yes undo 1"_s), ExitFailed);
        QVERIFY2(handset->told.contains(u"could not put back /Neu:"_s), qPrintable(handset->told));
        QCOMPARE(at(handset->memory(), u"/Neu/darin"_s), u"-"_s);
        QVERIFY(at(handset->memory(), u"/Neu/neu.txt"_s) != u"-"_s);
        QCOMPARE((*handset)(u"--yes undo"_s), ExitDone);
        QCOMPARE((*handset)(u"--yes undo 2"_s), ExitDone);
        QVERIFY(handset->memory() == made);
    }

    /// The phone confirms the last frame and then says nothing more: the new file is there.
    void aConfirmedFileIsNotCalledLost()
    {
        const auto calm = handsetWithFiles(u"S68H"_s);
        QCOMPARE((*calm)(u"--yes files put Liesmich.txt"_s), ExitDone);
        int found = 0;
        for (int request = 1; request <= calm->port.handset().phone().faults.requests; ++request) {
            const auto handset = handsetWithFiles(u"S68H"_s);
            handset->port.handset().setFaults({.silentFrom = request});
            (*handset)(u"--yes files put Liesmich.txt"_s);
            if (!handset->told.contains(
                    u"could not compare /Liesmich.txt with Liesmich.txt: the phone did not "
                    "answer; the phone confirmed all of it"_s))
                continue;
            ++found;
            QVERIFY2(!handset->told.contains(u"gone"_s), qPrintable(handset->told));
            const QByteArray sent(2500, 'n');
            QVERIFY(at(handset->memory(), u"/Liesmich.txt"_s).endsWith(QString::fromLatin1(sent.toHex())));
        }
        QVERIFY(found > 0);
    }

    /// Each file is "size", "size>replaced", or "size>replaced!" for one that is kept in the phone after all.
    void roomOfABatch()
    {
        using namespace kalmo::operations;
        const Rows<int, bool, QString, QString> rows{
            {"sum of all", 100, true, u"60 30 20 5"_s, u"+ + - +"_s},
            {"a replaced file gives its room", 100, true, u"190>90 10>50 40"_s, u"+ + +"_s},
            {"to those after it only", 100, true, u"110 10>50"_s, u"- +"_s},
            {"a kept one gives none", 100, true, u"10>50! 110"_s, u"+ -"_s},
            {"as described for the window", 100, false, u"110>90 60>90 110"_s, u"- + +"_s},
            {"not known", -1, true, u"1000000"_s, u"+"_s},
        };
        rows.each([&](const auto& free, const auto& countsReplaced, const auto& files, const auto& wanted) {
            SendPlan plan;
            for (const QString& word : files.split(u' ')) {
                const QStringList sizes = QString(word).remove(u'!').split(u'>');
                PlannedFile file;
                file.size = sizes[0].toInt();
                if (sizes.size() > 1)
                    file.replaced.emplace().size = sizes[1].toInt();
                if (word.endsWith(u'!'))
                    file.obstacle = FileObstacle::Kept;
                plan.files.push_back(file);
            }
            const SendPolicy policy{.freeBytes = free < 0 ? std::nullopt : std::optional<qint64>(free),
                                    .countsRoomOfReplaced = countsReplaced};
            const bool fits = requireRoom(plan, policy);
            QStringList found;
            for (const PlannedFile& file : plan.files)
                found.append(file.obstacle == FileObstacle::NoRoom ? u"-"_s : u"+"_s);
            QCOMPARE(found.join(u' '), wanted);
            QCOMPARE(fits, !wanted.contains(u'-'));
        });
    }

    /// The card has room of its own; a phone that does not say how much limits nothing.
    void roomOfTheCard()
    {
        for (const qint64 room : {0, 1400, 1500}) {
            Handset handset({.model = u"S68H"_s, .memoryCard = room});
            handset.file(u"neu.txt"_s, QByteArray(1500, 'n'));
            QCOMPARE(handset(u"files mkdir MMCard/Musik"_s), ExitDone);
            QCOMPARE(handset(u"files put neu.txt --to mmcard/Musik"_s), room == 1400 ? ExitFailed : ExitDone);
            QCOMPARE(handset.told.contains(u"the phone has too little room left for /mmcard/Musik/neu.txt"_s),
                     room == 1400);
        }
    }

    void aSilentPhoneCostsItsTimeoutOnce()
    {
        const auto secondsOf = [](const QString& line) {
            const auto handset = handsetWithFiles(u"S68H"_s);
            handset->port.handset().setFaults({.silentFrom = 4}); // the first file's content
            const double before = handset->test.clock.elapsed();
            (*handset)(u"--json --yes "_s + line);
            return handset->test.clock.elapsed() - before;
        };
        for (const QString& command : {u"files get "_s, u"files rm "_s}) {
            const double one = secondsOf(command + u"Sounds/Piep.wav"_s);
            const double four =
                secondsOf(command + u"Sounds/Piep.wav Sounds/Gong.mid Sounds/Tonleiter.mid Sounds/x"_s);
            QVERIFY2(one > 25 && four < one + 6, qPrintable(u"%1 and %2"_s.arg(one).arg(four)));
        }
    }

private:
    static void check(Handset& handset, const QString& line, const QStringList& before,
                      const QStringList& wanted, const QByteArray& why)
    {
        const ExitStatus status = handset(u"--json --yes "_s + line);
        const QStringList now = handset.memory();
        const QByteArray said = why + handset.printed.toUtf8() + handset.told.toUtf8();
        bool isAllDone = true;
        for (const auto& [path, state] : statesIn(handset.printed)) {
            isAllDone = isAllDone && state == u"done"_s;
            if (state == u"done"_s)
                QVERIFY2(at(now, path) == at(wanted, path), said.constData());
            else if (state == u"unchanged"_s)
                QVERIFY2(at(now, path) == at(before, path), said.constData());
            else
                QVERIFY2(state == u"unknown"_s, said.constData());
        }
        const bool hasResult = !statesIn(handset.printed).empty();
        QVERIFY2(status != ExitDone || (hasResult && isAllDone), said.constData());
        QVERIFY2(status == ExitDone || !handset.told.isEmpty(), said.constData());
        if (now == before)
            return;
        handset.port.handset().setFaults({});
        QVERIFY2(handset(u"--json --yes undo"_s) == ExitDone, (said + handset.told.toUtf8()).constData());
        const QStringList back = handset.memory();
        QVERIFY2(back == before, (said + "undo: " + handset.printed.toUtf8()).constData());
    }
};

KALMO_TEST(tst_FileFaults)
#include "tst_FileFaults.moc"
