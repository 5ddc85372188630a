// Files on their way to the phone and back.

#include "obex/ObexFrames.h"
#include "obex/PutFrames.h"
#include "support/ObexClient.h"
#include "support/TestProgram.h"

using obex::clsMmc;
using obex::GetFriedlyErrMsg;

namespace {

const QByteArray goOn = hex("90 0003");
const QByteArray nextPart = hex("83 0003");
const QByteArray abortRequest = hex("FF 0003");
const QByteArray getA = hex("83 000A 01 0007 00 6100 00");
const QByteArray nameA = kalmo::tests::nameHeader("a");
const QByteArray noon = header(0x44, "20261121T120001"); // going online takes a second from the clock's start

QByteArray objectOf(qsizetype size)
{
    QByteArray object;
    for (qsizetype index = 0; index < size; ++index)
        object.append(static_cast<char>(index * 31));
    return object;
}

} // namespace

class tst_ObexTransfer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void frames()
    {
        const Rows<QByteArray, QByteArray> rows{
            {"get, euro sign stays in shifted order", obex::getFrame(u"€b"_s),
             hex("83 00 0C 01 00 09 00 AC 20 62 00 00")},
            {"first frame of an IrMC object",
             obex::putFrame(false,
                            obex::nameHeader(u"a"_s) + obex::lengthHeader("xyz") +
                                obex::applicationHeader(obex::counterParameters(123)),
                            "x"),
             hex("02 00 1B 01 00 07 00 61 00 00 C3 00 00 00 03 4C 00 08 11 03 31 32 33 48 00 04 78")},
            {"IrMC delete", obex::irmcDeleteFrame(u"a"_s, 7),
             hex("82 00 10 01 00 07 00 61 00 00 4C 00 06 11 01 37")},
        };
        rows.each(
            [&](const auto& frame, const auto& bytes) { QCOMPARE(frame.toHex(' '), bytes.toHex(' ')); });
    }

    void gettingInManyFrames()
    {
        const QByteArray object = objectOf(40);
        inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
            ObexClient client(test, port);
            client.goOnline();
            port.expect(getA, packet(0x90, lengthHeader(40) + header(0x48, object.first(10))));
            port.expect(nextPart, packet(0x90, header(0x48, object.mid(10, 20))));
            port.expect(nextPart, packet(0x90, header(0x48, {})));
            port.expect(nextPart, packet(0xA0, header(0x49, object.mid(30))));
            QByteArray data = "old";
            int code = 0;
            QVERIFY(client.mmc->GetFile(u"a"_s, data, client.progress.all(), {}, &code));
            QCOMPARE(data, object);
            QCOMPARE(code, 0xA0);
            QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BytesRxed 0"_s, u"BytesRxed 10"_s,
                                                 u"BytesRxed 30"_s, u"BytesRxed 30"_s, u"BusyOff"_s}));
            QCOMPARE(client.progress.bar.steps,
                     (QStringList{u"0/100"_s, u"25/100"_s, u"75/100"_s, u"75/100"_s, u"hidden"_s}));
            QCOMPARE(client.progress.panel.texts,
                     (QStringList{u"Empfange a..."_s, u"Download a abgeschlossen."_s}));
        });
    }

    void gettingOddFrames()
    {
        Rows<QByteArrayList, QByteArray, QStringList> rows;
        rows.add("another header first stays in", {packet(0xA0, header(0x44, "t") + header(0x49, "xy"))},
                 header(0x44, "t") + header(0x49, "xy"), {});
        rows.add("Length and End of Body", {packet(0xA0, lengthHeader(2) + header(0x49, "xy"))}, "xy",
                 {u"hiB"_s});
        rows.add(
            "announced far too much",
            {packet(0x90, lengthHeader(0xFFFFFFFF) + header(0x48, "x")), packet(0xA0, header(0x49, "y"))},
            "xy", {});
        rows.add("a success without its final bit is passed over",
                 {packet(0x20, header(0x48, "lost")), {}, packet(0xA0, header(0x49, "xy"))}, "xy",
                 {u"hier fehlt was"_s});

        rows.each([&](const auto& answers, const auto& wantedData, const auto& boxes) {
            auto&& [test, port, client] = OnlineClient();
            for (int index = 0; index < answers.size(); ++index) {
                if (answers[index].isEmpty()) {
                    port.say(answers[++index], 3); // comes without a request
                    continue;
                }
                port.expect(index == 0 ? getA : nextPart, answers[index]);
            }
            for (const QString& box : boxes)
                test.dialogs.expect({.text = box});
            QByteArray data;
            QVERIFY(client.mmc->GetFile(u"a"_s, data, client.progress.all()));
            QCOMPARE(data, wantedData);
            QVERIFY(client.progress.bar.value <= 100);
        });
    }

    void gettingFails()
    {
        const Rows<QByteArray, bool, int> rows{
            {"not found", hex("C4 0003"), false, 0xC4},
            {"a timeout is never silent", {}, true, -1},
        };
        rows.each([&](const auto& answer, const auto& silent, const auto& code) {
            auto&& [test, port, client] = OnlineClient();
            const QString target = test.makeFile(u"target"_s, "untouched");
            port.expect(getA, packet(0x90, header(0x48, "lost"))).expect(nextPart, answer);
            test.dialogs.expect(errorBox(GetFriedlyErrMsg(code)));
            QByteArray data;
            int reCode = 0;
            QVERIFY(!client.mmc->GetFile(u"a"_s, data, client.progress.all(), target, &reCode, silent));
            QCOMPARE(reCode, code);
            QCOMPARE(data, ""_ba);
            QCOMPARE(TestContext::contentOf(target), "untouched"_ba);
            QCOMPARE(client.progress.panel.Text(), u"Download a nicht abgeschlossen."_s);
            QVERIFY(!client.progress.bar.visible);
            QCOMPARE(client.events.last(), u"BusyOff"_s);
        });
    }

    void gettingIntoAFileThatCanNotBeWritten()
    {
        auto&& [test, port, client] = OnlineClient();
        const auto answerX = [&] { port.expect(getA, packet(0xA0, header(0x49, "x"))); };
        QByteArray data;
        int code = 0;

        answerX();
        test.dialogs.expectStart(u"Die Datei /proc/version konnte nicht ersetzt bzw. gelöscht werden."_s,
                                 Buttons::RetryCancel, Answer::Cancel);
        test.dialogs.expect(errorBox(u"Löschen einer Datei fehlgeschlagen."_s));
        QVERIFY(!client.mmc->GetFile(u"a"_s, data, client.progress.all(), u"/proc/version"_s, &code));
        QCOMPARE(code, -4);
        QCOMPARE(client.progress.panel.Text(), u"Download a nicht abgeschlossen."_s);

        answerX();
        test.dialogs.expect(errorBox(u"Die Datei konnte auf dem Computer nicht gespeichert werden."_s));
        QVERIFY(
            !client.mmc->GetFile(u"a"_s, data, client.progress.all(), test.path(u"no/folder/x"_s), &code));
        QCOMPARE(code, obex::WriteFailed);
    }

    void gettingWithoutEnd()
    {
        auto&& [test, port, client] = OnlineClient();
        const QByteArray part = packet(0x90, header(0x48, QByteArray(0x7FF0, 'x')));
        const qsizetype parts = 64 * 1024 * 1024 / 0x7FF0 + 1;
        port.expect(getA, part);
        for (qsizetype index = 1; index < parts; ++index)
            port.expect(nextPart, part);
        port.expect(abortRequest, done);
        test.dialogs.expect(
            errorBox(u"Die Daten sind größer als 64 MB. Die Übertragung wurde abgebrochen."_s));
        QByteArray data;
        QVERIFY(!client.mmc->GetFile(u"a"_s, data, {}));
        QCOMPARE(data.size(), 0);
        QVERIFY(test.clock.elapsed() < 100); // no nap while the rest of a frame waits in the port
    }

    void putting()
    {
        // With MaxPacket 255 and the name "a": 219 bytes first, then 249 in each frame.
        Rows<int, QList<int>, QStringList, bool> rows;
        rows.add("empty", 0, {0}, {u"1/2"_s, u"2/2"_s}, false);
        rows.add("three whole chunks draw a complaint", 717, {219, 249, 249},
                 {u"1/5"_s, u"2/5"_s, u"3/5"_s, u"4/5"_s}, true);

        rows.each([&](const auto& size, const auto& chunks, const auto& steps, const auto& complains) {
            const QByteArray object = objectOf(size);
            inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
                ObexClient client(test, port);
                client.goOnline(255);
                const QString path =
                    test.makeFile(u"a,;"_s, object); // comma and semicolon never reach the phone
                qsizetype sent = 0;
                for (int index = 0; index < chunks.size(); ++index) {
                    const bool isLast = index == chunks.size() - 1;
                    const QByteArray headers = index == 0 ? nameA + lengthHeader(size) + noon : QByteArray();
                    port.expect(
                        packet(isLast ? 0x82 : 0x02,
                               headers + header(isLast ? 0x49 : 0x48, object.mid(sent, chunks[index]))),
                        isLast ? done : goOn);
                    sent += chunks[index];
                }
                QCOMPARE(sent, size);
                if (complains)
                    test.dialogs.expectStart(
                        u"Das Telefon hat behauptet, bereits die komplette Datei \"a\" erhalten zu haben, "
                        "obwohl erst 4 von 5 Teilen übertragen wurden."_s);
                QCOMPARE(client.mmc->PutFile(path, client.progress.all()), !complains);
                QCOMPARE(client.progress.bar.steps, steps + QStringList{u"hidden"_s});
                QCOMPARE(
                    client.progress.panel.texts,
                    (QStringList{u"Übertrage a,;..."_s, complains ? u"Übertragung a nicht abgeschlossen."_s
                                                                  : u"Übertragung a abgeschlossen."_s}));
                QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BusyOff"_s}));
            });
        });
    }

    void puttingFails()
    {
        const Rows<QString, QByteArrayList, int> rows{
            {"store full", u"a"_s, {goOn, hex("E0 0003")}, 0xE0},
            {"timeout in the middle", u"a"_s, {goOn, goOn, {}}, -1},
            {"name leaves no room", QString(111, u'x'), {}, int(obex::RequestTooLong)},
            {"no such file", u"missing"_s, {}, int(obex::ReadFailed)},
        };
        rows.each([&](const auto& name, const auto& answers, const auto& code) {
            auto&& [test, port, client] = OnlineClient(255);
            const QByteArray object = objectOf(717);
            const QString path = name == u"missing"_s ? test.path(name) : test.makeFile(name, object);
            const QByteArrayList frames{
                packet(0x02, nameA + lengthHeader(717) + noon + header(0x48, object.first(219))),
                packet(0x02, header(0x48, object.mid(219, 249))),
                packet(0x82, header(0x49, object.mid(468)))};
            for (int index = 0; index < answers.size(); ++index)
                port.expect(frames[index], answers[index]);
            test.dialogs.expect(errorBox(GetFriedlyErrMsg(code)));
            QVERIFY(!client.mmc->PutFile(path, client.progress.all()));
            QCOMPARE(client.progress.panel.Text(), u"Übertragung %1 nicht abgeschlossen."_s.arg(name));
            QVERIFY(!client.progress.bar.visible);
            QCOMPARE(client.events.filter(u"Busy"_s), (QStringList{u"BusyOn"_s, u"BusyOff"_s}));
        });
    }

    /// The request after it must not count as a part of the file.
    void puttingWithoutEndIsAborted()
    {
        auto&& [test, port, client] = OnlineClient(255);
        const QByteArray only = packet(0x82, nameA + lengthHeader(1) + noon + header(0x49, "x"));
        const QByteArray again = packet(0x82, header(0x49, {}));
        port.expect(only, goOn);
        for (int frame = 0; frame < 10; ++frame)
            port.expect(again, goOn);
        port.expect(abortRequest, done);
        test.dialogs.expect(errorBox(
            u"Das Telefon fordert immer weitere Daten an, obwohl die Datei vollständig gesendet wurde. Die "
            "Übertragung wurde abgebrochen."_s));
        clsMmc::PutReport report;
        QVERIFY(!client.mmc->PutBytes({u"a"_s, "x", {}}, client.progress.all(), &report));
        QVERIFY(report.mayHoldPart);
        port.expect(getA, packet(0xA0, header(0x49, "y")));
        QByteArray data;
        QVERIFY(client.mmc->GetFile(u"a"_s, data, client.progress.all()));
    }

    void puttingIsCancelled()
    {
        auto&& [test, port, client] = OnlineClient(255);
        const QByteArray object = objectOf(717);
        port.expect(packet(0x02, nameA + lengthHeader(717) + noon + header(0x48, object.first(219))), goOn);
        port.expect(packet(0x02, header(0x48, object.mid(219, 249))), goOn).then([&] {
            client.progress.cancel.checked = true;
        });
        port.expect(abortRequest, hex("C1 0003"));
        test.dialogs.expect(errorBox(u"ReCode: 401 Unauthorized"_s)); // of the abort
        QVERIFY(!client.mmc->PutFile(test.makeFile(u"a"_s, object), client.progress.all()));
        QCOMPARE(client.progress.panel.Text(), u"Übertragung a abgebrochen."_s);
        QVERIFY(!client.progress.bar.visible);
    }

    void stopping()
    {
        const Rows<bool> rows{
            {"between two frames", true},
            {"phone is silent", false},
        };
        rows.each([&](const auto& phoneAnswers) {
            auto&& [test, port, client] = OnlineClient(255);
            const QByteArray object = objectOf(717);
            port.expect(packet(0x02, nameA + lengthHeader(717) + noon + header(0x48, object.first(219))),
                        phoneAnswers ? goOn : ""_ba)
                .then([&] { client.mmc->askToStop(); });
            port.expect(abortRequest, phoneAnswers ? done : ""_ba);
            const double before = test.clock.elapsed();
            QVERIFY(!client.mmc->PutFile(test.makeFile(u"a"_s, object), client.progress.all())); // and no box
            QVERIFY(test.clock.elapsed() - before < 5);
            QCOMPARE(client.progress.panel.Text(), u"Übertragung a abgebrochen."_s);
            QByteArray data;
            int code = 0;
            QVERIFY(!client.mmc->GetFile(u"a"_s, data, client.progress.all(), {},
                                         &code)); // nothing more goes out
            QCOMPARE(code, -3);
        });
    }
};

KALMO_TEST(tst_ObexTransfer)
#include "tst_ObexTransfer.moc"
