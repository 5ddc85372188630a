// Files on their way to the phone and back.

#include "support/ObexClient.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::tests;
using obex::clsMmc;
using obex::GetFriedlyErrMsg;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

const QByteArray done = hex("A0 0003");
const QByteArray goOn = hex("90 0003");
const QByteArray nextPart = hex("83 0003");
const QByteArray abortRequest = hex("FF 0003");
const QByteArray getA = hex("83 000A 01 0007 00 6100 00");
const QByteArray nameA = hex("01 0007 00 6100 00");
const QByteArray noon = header(0x44, "20261121T120001"); // going online takes a second from the clock's start

const toolkit::Message earlyStopBox{
    .text =
        u"Das Telefon hat behauptet, bereits die komplette Datei \"a\" erhalten zu haben, obwohl erst 4 "
        u"von 5 Teilen übertragen wurden.\n"
        u"Höchstwahrscheinlich ist die Datei damit auf dem Telefon unbrauchbar. Löschen Sie die Datei im "
        u"Telefon und übertragen Sie sie erneut.\n"
        u"Tritt dieser Fehler sofort wieder auf, muß das Telefon einmal aus- und wieder eingeschaltet und "
        u"Kalmo neu gestartet werden. Hilft auch diese Prozedur nicht, wenden Sie sich bitte an den "
        u"Programmautor."_s,
    .title = u"Kalmo - OBEX Übertragungsfehler"_s,
    .icon = Icon::Exclamation};

QByteArray objectOf(qsizetype size)
{
    QByteArray object;
    for (qsizetype index = 0; index < size; ++index)
        object.append(static_cast<char>(index * 31));
    return object;
}

QByteArray lengthHeader(qsizetype size)
{
    return '\xC3' + QByteArray::fromHex(QByteArray::number(size, 16).rightJustified(8, '0'));
}

} // namespace

class tst_ObexTransfer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gettingInManyFrames();
    void gettingOddFrames_data();
    void gettingOddFrames();
    void gettingFails_data();
    void gettingFails();
    void gettingIntoAFile();
    void gettingIsCancelled();
    void gettingWithoutEnd();
    void strayFramesWithoutEnd();
    void putting_data();
    void putting();
    void puttingOnAShortDay();
    void puttingUnderAnAbsoluteName();
    void puttingFails_data();
    void puttingFails();
    void puttingIsCancelled();
    void puttingToAPhoneThatWantsMore();
    void puttingStopsEarly();
    void stopping_data();
    void stopping();
    void aborting();
};

void tst_ObexTransfer::gettingInManyFrames()
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

void tst_ObexTransfer::gettingOddFrames_data()
{
    QTest::addColumn<QByteArrayList>("answers");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("boxes");
    using Answers = QByteArrayList;
    QTest::newRow("three bytes") << Answers{done} << ""_ba << QStringList{};
    QTest::newRow("one End of Body") << Answers{packet(0xA0, header(0x49, "xy"))} << "xy"_ba << QStringList{};
    QTest::newRow("another header first stays in")
        << Answers{packet(0xA0, header(0x44, "t") + header(0x49, "xy"))}
        << header(0x44, "t") + header(0x49, "xy") << QStringList{};
    QTest::newRow("Length and End of Body")
        << Answers{packet(0xA0, lengthHeader(2) + header(0x49, "xy"))} << "xy"_ba << QStringList{u"hiB"_s};
    QTest::newRow("announced far too much")
        << Answers{packet(0x90, lengthHeader(0xFFFFFFFF) + header(0x48, "x")),
                   packet(0xA0, header(0x49, "y"))}
        << "xy"_ba << QStringList{};
    QTest::newRow("announced too little")
        << Answers{packet(0x90, lengthHeader(1) + header(0x48, "xyz")), done} << "xyz"_ba << QStringList{};
    QTest::newRow("surplus is data") << Answers{hex("A0 0007 49 0004 78") + "surplus"} << "xsurplus"_ba
                                     << QStringList{};
    QTest::newRow("a success without its final bit is passed over")
        << Answers{packet(0x20, header(0x48, "lost")), {}, packet(0xA0, header(0x49, "xy"))} << "xy"_ba
        << QStringList{u"hier fehlt was"_s};
    QTest::newRow("a continue without its final bit too")
        << Answers{packet(0x10, header(0x48, "lost")), {}, packet(0xA0, header(0x49, "xy"))} << "xy"_ba
        << QStringList{u"hier fehlt was"_s};
}

void tst_ObexTransfer::gettingOddFrames()
{
    QFETCH(QByteArrayList, answers);
    QFETCH(QStringList, boxes);
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
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
    QTEST(data, "data");
    QVERIFY(client.progress.bar.value <= 100);
}

void tst_ObexTransfer::gettingFails_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("silent");
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("shown");
    QTest::newRow("not found") << hex("C4 0003") << false << 0xC4 << true;
    QTest::newRow("not found, silently") << hex("C4 0003") << true << 0xC4 << false;
    QTest::newRow("a timeout is never silent") << ""_ba << true << -1 << true;
    QTest::newRow("created is no success") << hex("A1 0003") << false << 0xA1 << true;
}

void tst_ObexTransfer::gettingFails()
{
    QFETCH(QByteArray, answer);
    QFETCH(bool, silent);
    QFETCH(int, code);
    QFETCH(bool, shown);
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    const QString target = test.makeFile(u"target"_s, "untouched");
    port.expect(getA, packet(0x90, header(0x48, "lost"))).expect(nextPart, answer);
    if (shown)
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
}

void tst_ObexTransfer::gettingIntoAFile()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    const auto answerX = [&] { port.expect(getA, packet(0xA0, header(0x49, "x"))); };
    QByteArray data;
    int code = 0;

    const QString target = test.makeFile(u"target"_s, "old");
    QVERIFY(QFile::setPermissions(target, QFileDevice::ReadOwner));
    answerX();
    QVERIFY(client.mmc->GetFile(u"a"_s, data, client.progress.all(), target));
    QCOMPARE(TestContext::contentOf(target), "x"_ba);

    answerX();
    test.dialogs.expect(
        {.text =
             u"Die Datei /proc/version konnte nicht ersetzt bzw. gelöscht werden. Vermutlich haben Sie "
             u"kein Schreibrecht in dem Ordner oder aber die Datei ist aktuell von einem anderen Programm "
             u"geöffnet.\n"
             u"Versuch wiederholen?"_s,
         .buttons = Buttons::RetryCancel,
         .icon = Icon::Exclamation},
        Answer::Cancel);
    test.dialogs.expect(errorBox(u"Löschen einer Datei fehlgeschlagen."_s));
    QVERIFY(!client.mmc->GetFile(u"a"_s, data, client.progress.all(), u"/proc/version"_s, &code));
    QCOMPARE(code, -4);
    QCOMPARE(client.progress.panel.Text(), u"Download a nicht abgeschlossen."_s);

    answerX();
    test.dialogs.expect(errorBox(u"Die Datei konnte auf dem Computer nicht gespeichert werden."_s));
    QVERIFY(!client.mmc->GetFile(u"a"_s, data, client.progress.all(), test.path(u"no/folder/x"_s), &code));
    QCOMPARE(code, obex::WriteFailed);
    QCOMPARE(QDir(test.folder.path()).entryList({u"target*"_s}), (QStringList{u"target"_s}));
}

void tst_ObexTransfer::gettingIsCancelled()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(getA, packet(0x90, header(0x48, "x"))).then([&] { client.progress.cancel.checked = true; });
    port.expect(abortRequest, done);
    test.dialogs.expect(errorBox(u"Vorzeitiger Abbruch durch den Benutzer."_s));
    QByteArray data;
    int code = 0;
    QVERIFY(!client.mmc->GetFile(u"a"_s, data, client.progress.all(), {}, &code));
    QCOMPARE(code, -3);
    QVERIFY(!client.progress.bar.visible);
    QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BytesRxed 0"_s, u"BusyOff"_s})); // Abort's are within
}

void tst_ObexTransfer::gettingWithoutEnd()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    const QByteArray part = packet(0x90, header(0x48, QByteArray(0x7FF0, 'x')));
    const qsizetype parts = 64 * 1024 * 1024 / 0x7FF0 + 1;
    port.expect(getA, part);
    for (qsizetype index = 1; index < parts; ++index)
        port.expect(nextPart, part);
    port.expect(abortRequest, done);
    test.dialogs.expect(errorBox(u"Die Daten sind größer als 64 MB. Die Übertragung wurde abgebrochen."_s));
    QByteArray data;
    QVERIFY(!client.mmc->GetFile(u"a"_s, data, {}));
    QCOMPARE(data.size(), 0);
    QVERIFY(test.clock.elapsed() < 100); // no nap while the rest of a frame waits in the port
}

void tst_ObexTransfer::strayFramesWithoutEnd()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(getA);
    for (int index = 0; index < 50; ++index)
        port.say(hex("10 0003"), 1 + index);
    for (int index = 0; index < 5; ++index)
        test.dialogs.expect({.text = u"hier fehlt was"_s});
    test.dialogs.expect(errorBox(timeoutText));
    QByteArray data;
    QVERIFY(!client.mmc->GetFile(u"a"_s, data, {}));
}

void tst_ObexTransfer::putting_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("chunks");
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<bool>("complains");
    // With MaxPacket 255 and the name "a": 219 bytes first, then 249 in each frame.
    QTest::newRow("empty") << 0 << QList<int>{0} << QStringList{u"1/2"_s, u"2/2"_s} << false;
    QTest::newRow("first chunk") << 219 << QList<int>{219} << QStringList{u"1/2"_s, u"2/2"_s} << false;
    QTest::newRow("a byte more") << 220 << QList<int>{219, 1} << QStringList{u"1/3"_s, u"2/3"_s, u"3/3"_s}
                                 << false;
    QTest::newRow("two chunks") << 468 << QList<int>{219, 249} << QStringList{u"1/3"_s, u"2/3"_s, u"3/3"_s}
                                << false;
    QTest::newRow("two and a byte") << 469 << QList<int>{219, 249, 1}
                                    << QStringList{u"1/4"_s, u"2/4"_s, u"3/4"_s, u"4/4"_s} << false;
    QTest::newRow("three whole chunks draw a complaint")
        << 717 << QList<int>{219, 249, 249} << QStringList{u"1/5"_s, u"2/5"_s, u"3/5"_s, u"4/5"_s} << true;
}

void tst_ObexTransfer::putting()
{
    QFETCH(int, size);
    QFETCH(QList<int>, chunks);
    QFETCH(QStringList, steps);
    QFETCH(bool, complains);
    const QByteArray object = objectOf(size);
    inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
        ObexClient client(test, port);
        client.goOnline(255);
        const QString path = test.makeFile(u"a,;"_s, object); // comma and semicolon never reach the phone
        qsizetype sent = 0;
        for (int index = 0; index < chunks.size(); ++index) {
            const bool isLast = index == chunks.size() - 1;
            const QByteArray headers = index == 0 ? nameA + lengthHeader(size) + noon : QByteArray();
            port.expect(packet(isLast ? 0x82 : 0x02,
                               headers + header(isLast ? 0x49 : 0x48, object.mid(sent, chunks[index]))),
                        isLast ? done : goOn);
            sent += chunks[index];
        }
        QCOMPARE(sent, size);
        if (complains)
            test.dialogs.expect(earlyStopBox);
        QCOMPARE(client.mmc->PutFile(path, client.progress.all()), !complains);
        QCOMPARE(client.progress.bar.steps, steps + QStringList{u"hidden"_s});
        QCOMPARE(client.progress.panel.texts,
                 (QStringList{u"Übertrage a,;..."_s, complains ? u"Übertragung a nicht abgeschlossen."_s
                                                               : u"Übertragung a abgeschlossen."_s}));
        QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BusyOff"_s}));
    });
}

void tst_ObexTransfer::puttingOnAShortDay()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
    test.clock.DoEvents(86400.0 * 10); // the first of December
    const QString path = test.makeFile(u"a"_s, objectOf(220));
    const QByteArray headers = nameA + lengthHeader(220) + header(0x44, "2026121T120001");
    const QByteArray first = packet(0x02, headers + header(0x48, objectOf(219)));
    QCOMPARE(first.size(), 254); // one below the phone's limit
    port.expect(first, goOn).expect(packet(0x82, header(0x49, objectOf(220).last(1))), hex("20 0003"));
    QVERIFY(client.mmc->PutFile(path, client.progress.all()));
}

void tst_ObexTransfer::puttingUnderAnAbsoluteName()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
    test.sy.PhoneType = 11;
    port.expect(hex("85 000C 02 00 01 0007 00 5300 00"), done);
    QVERIFY(client.mmc->Cd(u"S"_s, false));
    port.expect(packet(0x82, header(0x01, hex("002F 0053 002F 0061 0000")) + lengthHeader(1) + noon +
                                 header(0x49, "x")),
                done);
    QVERIFY(client.mmc->PutFile(test.makeFile(u"a"_s, "x"), {})); // nobody to report to
}

void tst_ObexTransfer::puttingFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArrayList>("answers");
    QTest::addColumn<int>("code");
    using Answers = QByteArrayList;
    QTest::newRow("store full") << u"a"_s << Answers{goOn, hex("E0 0003")} << 0xE0;
    QTest::newRow("timeout in the middle") << u"a"_s << Answers{goOn, goOn, {}} << -1;
    QTest::newRow("continue without its final bit") << u"a"_s << Answers{hex("10 0003")} << 0x10;
    QTest::newRow("name leaves no room") << QString(111, u'x') << Answers{} << int(obex::RequestTooLong);
    QTest::newRow("no such file") << u"missing"_s << Answers{} << int(obex::ReadFailed);
}

void tst_ObexTransfer::puttingFails()
{
    QFETCH(QString, name);
    QFETCH(QByteArrayList, answers);
    QFETCH(int, code);
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
    const QByteArray object = objectOf(717);
    const QString path = name == u"missing"_s ? test.path(name) : test.makeFile(name, object);
    const QByteArrayList frames{
        packet(0x02, nameA + lengthHeader(717) + noon + header(0x48, object.first(219))),
        packet(0x02, header(0x48, object.mid(219, 249))), packet(0x82, header(0x49, object.mid(468)))};
    for (int index = 0; index < answers.size(); ++index)
        port.expect(frames[index], answers[index]);
    test.dialogs.expect(errorBox(GetFriedlyErrMsg(code)));
    QVERIFY(!client.mmc->PutFile(path, client.progress.all()));
    QCOMPARE(client.progress.panel.Text(), u"Übertragung %1 nicht abgeschlossen."_s.arg(name));
    QVERIFY(!client.progress.bar.visible);
    QCOMPARE(client.events.filter(u"Busy"_s), (QStringList{u"BusyOn"_s, u"BusyOff"_s}));
}

void tst_ObexTransfer::puttingIsCancelled()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
    const QByteArray object = objectOf(717);
    port.expect(packet(0x02, nameA + lengthHeader(717) + noon + header(0x48, object.first(219))), goOn);
    port.expect(packet(0x02, header(0x48, object.mid(219, 249))), goOn).then([&] {
        client.progress.cancel.checked = true;
    });
    port.expect(abortRequest, hex("C1 0003"));
    test.dialogs.expect(errorBox(u"ReCode: 401 Unauthorized"_s)); // of the abort
    test.dialogs.expect(errorBox(u"Vorzeitiger Abbruch durch den Benutzer."_s));
    QVERIFY(!client.mmc->PutFile(test.makeFile(u"a"_s, object), client.progress.all()));
    QCOMPARE(client.progress.panel.Text(), u"Übertragung a abgebrochen."_s);
    QVERIFY(!client.progress.bar.visible);
}

void tst_ObexTransfer::puttingToAPhoneThatWantsMore()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
    // What is left after the first frame is sent as the final one, again and again, but not for ever.
    port.expect(packet(0x02, nameA + lengthHeader(220) + noon + header(0x48, objectOf(219))), goOn);
    for (int index = 0; index < 11; ++index)
        port.expect(packet(0x82, header(0x49, objectOf(220).last(1))), goOn);
    test.dialogs.expect(errorBox(u"ReCode: 100 Continue"_s));
    QVERIFY(!client.mmc->PutFile(test.makeFile(u"a"_s, objectOf(220)), client.progress.all()));
}

void tst_ObexTransfer::puttingStopsEarly()
{
    TestContext test;
    test.startLog();
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
    port.expect(packet(0x02, nameA + lengthHeader(717) + noon + header(0x48, objectOf(219))), done);
    auto box = earlyStopBox;
    box.text.replace(u"4 von 5"_s, u"2 von 5"_s);
    test.dialogs.expect(box);
    const QString path = test.makeFile(u"a"_s, objectOf(717));
    QVERIFY(!client.mmc->PutFile(path, client.progress.all()));
    QCOMPARE(client.progress.panel.Text(), u"Übertragung a nicht abgeschlossen."_s);
    QVERIFY(test.logged().contains(u"ExitEarly: PutFile (%1)=160;  PckMax=5  PckDone=2"_s.arg(path)));
}

void tst_ObexTransfer::stopping_data()
{
    QTest::addColumn<bool>("phoneAnswers");
    QTest::newRow("between two frames") << true;
    QTest::newRow("phone is silent") << false;
}

void tst_ObexTransfer::stopping()
{
    QFETCH(bool, phoneAnswers);
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
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
    QVERIFY(!client.mmc->GetFile(u"a"_s, data, client.progress.all(), {}, &code)); // nothing more goes out
    QCOMPARE(code, -3);
}

void tst_ObexTransfer::aborting()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(abortRequest, done);
    QVERIFY(client.mmc->Abort());
    port.expect(abortRequest, hex("20 0003")); // nothing but A0 will do
    test.dialogs.expect(errorBox(u"ReCode: 200 OK, Success"_s));
    QVERIFY(!client.mmc->Abort());
    QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BusyOff"_s, u"BusyOn"_s, u"BusyOff"_s}));
}

QTEST_GUILESS_MAIN(tst_ObexTransfer)
#include "tst_ObexTransfer.moc"
