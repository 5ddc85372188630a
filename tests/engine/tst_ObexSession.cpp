// Into data mode, into a connection, and back: what goes over the line, what the user sees, and where the
// client stands after each way that it can fail.

#include "app/SettingsKeys.h"
#include "obex/DataChannel.h"
#include "support/ObexClient.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::tests;
using link::LineMode;
using obex::clsMmc;
using obex::GetFriedlyErrMsg;
using obex::Target;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

const QByteArray openCommand = "AT^SQWE=3\r\n";
const QByteArray closeCommand = "AT^SQWE=0\r\n";
const QByteArray connectFolders = hex("80 001A 10 00 4006 46 0013 6B01CB31410611D49A770050DA3F471F");
const QByteArray connectIrmc = hex("80 0013 10 00 4006 46 000C") + "IRMC-SYNC";
const QByteArray disconnectRequest = hex("81 0003");
const QByteArray done = hex("A0 0003");

const toolkit::Message openFailedBox{
    .text = u"Der Datenkanal zum Telefon konnte nicht geöffnet werden.\n\n"
            u"Eine mögliche Ursache ist ein aufgerufenes Untermenü am Telefon. Stellen Sie sicher, daß "
            u"das Telefon in keinem Menüpunkt ist - ggf. die rote Taste mehrfach drücken.\n\n"
            u"Versuch wiederholen?"_s,
    .buttons = Buttons::OkCancel,
    .icon = Icon::Question};

QString stateOf(const ObexClient& client)
{
    constexpr const char* modes[] = {"Text", "Switching", "Data"};
    return u"channel %1, online %2, line %3, \"%4\", reminder %5/%6"_s.arg(client.mmc->ChannelState())
        .arg(client.mmc->IsOnline())
        .arg(QLatin1StringView(modes[static_cast<int>(client.line.mode())]), client.mmc->DirAct(),
             app::get(client.test.settings, app::keys::LastUnclosedObexDevice),
             app::get(client.test.settings, app::keys::LastUnclosedObexDeviceCOM));
}

const QString idle = u"channel 2, online 2, line Text, \"\", reminder <no value>/<no value>"_s;
const QString connected = u"channel 1, online 1, line Data, \"Mobile:\\\", reminder phone/7"_s;
const QString unconnected = u"channel 1, online 0, line Data, \"\", reminder phone/7"_s;

void namePhone(TestContext& test)
{
    test.sy.PhoneID = u"phone"_s;
    test.sy.ComNo = 7;
}

} // namespace

class tst_ObexSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereAndBack();
    void bothTargetsOnOneChannel();
    void channelDoesNotOpen_data();
    void channelDoesNotOpen();
    void channelOpensWhileAsking_data();
    void channelOpensWhileAsking();
    void connectAnswers_data();
    void connectAnswers();
    void disconnectFails_data();
    void disconnectFails();
    void channelDoesNotClose();
    void brokenSessionIsRecovered();
    void recovery_data();
    void recovery();
    void silence();
    void bytesRestartTheTimer();
    void lateAnswerIsThrownAway();
    void needsAnOpenChannel();
    void nestedOperationIsRefused();
    void ownerGoes();
    void stopWhileOpening_data();
    void stopWhileOpening();
    void stopThenOffline();
    void lineThatIsGoneEndsTheProgram();
};

void tst_ObexSession::thereAndBack()
{
    inEveryDelivery([](TestContext& test, ScriptedPort& port) {
        namePhone(test);
        ObexClient client(test, port);
        QCOMPARE(stateOf(client), u"channel 0, online 0, line Text, \"\", reminder <no value>/<no value>"_s);

        port.expect(openCommand, "AT^SQWE=3\r\r\nOK\r\n").then([&] {
            QCOMPARE(stateOf(client),
                     u"channel 0, online 0, line Switching, \"\", reminder <no value>/<no value>"_s);
        });
        port.expect(connectFolders, packet(0xA0, hex("10 00 04 00 CB 00 00 00 01"))).then([&] {
            QCOMPARE(stateOf(client), unconnected);
            QVERIFY(test.clock.elapsed() >= 1.15); // the phone needs its time to switch
        });
        QVERIFY(client.mmc->Online(client.progress.all()));
        QCOMPARE(stateOf(client), connected);
        QCOMPARE(client.mmc->MaxPacket(), 1024);
        QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"DirChange Mobile:\\"_s, u"BusyOff"_s}));
        client.progress.panel.texts.removeIf(
            [](const QString& text) { return text.contains(u"Restzeit"_s); });
        QCOMPARE(client.progress.panel.texts,
                 (QStringList{u"Datenkanal wird geöffnet..."_s, u"Datenkanal geöffnet."_s, u"Fertig"_s,
                              u"FlexMemory / MMC wird geöffnet..."_s, u"FlexMemory / MMC geöffnet."_s}));
        QCOMPARE(client.progress.bar.steps, (QStringList{u"0/5"_s, u"1/5"_s, u"2/5"_s, u"3/5"_s, u"hidden"_s,
                                                         u"0/1"_s, u"1/1"_s, u"hidden"_s}));

        client.forgetReports();
        double disconnected = 0;
        port.expect(disconnectRequest, done).then([&] { disconnected = test.clock.elapsed(); });
        port.expect("+++").then(
            [&] { QVERIFY(test.clock.elapsed() - disconnected >= 1); }); // the guard silence
        port.expect(closeCommand, "\r\nOK\r\n").then([&] {
            QVERIFY(test.clock.elapsed() - disconnected >= 2.4);
        });
        QVERIFY(client.mmc->Offline(client.progress.all()));
        QCOMPARE(stateOf(client), idle);
        QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"DirChange "_s, u"BusyOff"_s}));
        client.progress.panel.texts.removeIf(
            [](const QString& text) { return text.contains(u"Restzeit"_s); });
        QCOMPARE(client.progress.panel.texts,
                 (QStringList{u"OBEX Verbindung wird geschlossen..."_s, u"OBEX Verbindung geschlossen."_s,
                              u"Datenkanal wird geschlossen..."_s, u"Datenkanal geschlossen."_s}));
        QCOMPARE(client.progress.bar.steps,
                 (QStringList{u"0/4"_s, u"1/4"_s, u"2/4"_s, u"3/4"_s, u"4/4"_s, u"hidden"_s}));
    });
}

void tst_ObexSession::bothTargetsOnOneChannel()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(0x0400);
    port.expect(connectIrmc, packet(0x20, hex("10 00 02 00")));
    QVERIFY(client.mmc->connect(client.progress.all(), Target::IrMC));
    QCOMPARE(client.mmc->MaxPacket(), 512);
    QCOMPARE(client.progress.panel.texts, (QStringList{u"IrMC wird geöffnet..."_s, u"IrMC geöffnet."_s}));
    QCOMPARE(client.events, (QStringList{u"DirChange Mobile:\\"_s})); // raises no Busy of its own
}

void tst_ObexSession::channelDoesNotOpen_data()
{
    QTest::addColumn<int>("silentTimes");
    QTest::addColumn<QByteArray>("thenAnswers"); // nothing: the user gives up
    QTest::newRow("user gives up") << 1 << ""_ba;
    QTest::newRow("user gives up later") << 3 << ""_ba;
    QTest::newRow("second try") << 1 << "\r\nOK\r\n"_ba;
    QTest::newRow("an error counts as an answer") << 0 << "\r\nERROR\r\n"_ba;
}

void tst_ObexSession::channelDoesNotOpen()
{
    QFETCH(int, silentTimes);
    QFETCH(QByteArray, thenAnswers);
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    for (int round = 1; round <= silentTimes; ++round) {
        port.expect(openCommand, "\r\nRING\r\n");
        const bool givesUp = round == silentTimes && thenAnswers.isEmpty();
        test.dialogs.expect(openFailedBox, givesUp ? Answer::Cancel : Answer::Ok);
    }
    if (!thenAnswers.isEmpty()) {
        port.expect(openCommand, thenAnswers);
        port.expect(connectFolders, packet(0xA0, hex("10 00 04 00")));
    }
    QCOMPARE(client.mmc->Online(client.progress.all()), !thenAnswers.isEmpty());
    if (!thenAnswers.isEmpty()) {
        QCOMPARE(stateOf(client), connected);
        return;
    }
    QCOMPARE(stateOf(client), u"channel 2, online 0, line Text, \"\", reminder <no value>/<no value>"_s);
    QCOMPARE(client.progress.panel.Text(), u"Fehler beim Öffnen des Datenkanals."_s);
    QVERIFY(!client.progress.bar.visible);
    QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BusyOff"_s}));
}

void tst_ObexSession::channelOpensWhileAsking_data()
{
    QTest::addColumn<bool>("retries");
    QTest::addColumn<bool>("comesBack");
    QTest::newRow("user tries again") << true << false;
    QTest::newRow("user gives up") << false << true;
    QTest::newRow("user gives up, and the phone stays in data mode") << false << false;
}

void tst_ObexSession::channelOpensWhileAsking()
{
    QFETCH(bool, retries);
    QFETCH(bool, comesBack);
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    port.expect(openCommand);
    test.dialogs.expect(openFailedBox, retries ? Answer::Ok : Answer::Cancel);
    test.dialogs.whileShown([&] {
        port.say("\r\nOK\r\n");
        test.clock.DoEvents(1);
    });
    if (retries)
        port.expect(connectFolders, packet(0xA0, hex("10 00 04 00"))); // and no second command
    else
        port.expect("+++").expect(closeCommand, comesBack ? "OK\r\n" : "");
    if (!retries && !comesBack) {
        port.expect("+++").expect(closeCommand).expect("+++").expect(closeCommand);
        test.dialogs.expect(errorBox(GetFriedlyErrMsg(obex::ChannelStuck)));
    }
    QCOMPARE(client.mmc->Online(client.progress.all()), retries);
    QCOMPARE(stateOf(client), retries ? connected
                              : comesBack
                                  ? u"channel 2, online 0, line Text, \"\", reminder <no value>/<no value>"_s
                                  : u"channel 0, online 0, line Switching, \"\", reminder phone/7"_s);
}

void tst_ObexSession::connectAnswers_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("errorCode"); // 0: connected
    QTest::addColumn<int>("maxPacket");
    QTest::newRow("success") << packet(0xA0, hex("10 00 27 10")) << 0 << 10000;
    QTest::newRow("success without the final bit") << packet(0x20, hex("10 00 00 FF")) << 0 << 255;
    QTest::newRow("more than a send takes") << packet(0xA0, hex("10 00 40 06")) << 0 << 10000;
    QTest::newRow("less than is allowed") << packet(0xA0, hex("10 00 00 03")) << 0 << 255;
    QTest::newRow("negative") << packet(0xA0, hex("10 00 FF FF")) << 0 << 255;
    QTest::newRow("missing") << packet(0xA0, hex("10 00")) << 0 << 255;
    QTest::newRow("refused") << packet(0xC3, hex("10 00 04 00")) << 0xC3 << 255;
    QTest::newRow("continue is no success") << packet(0x90, hex("10 00 04 00")) << 0x90 << 255;
    QTest::newRow("silence") << ""_ba << -1 << 255;
    QTest::newRow("half an answer") << hex("A0 00 07 10") << -1 << 255;
}

void tst_ObexSession::connectAnswers()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, errorCode);
    TestContext test;
    namePhone(test);
    test.startLog();
    ScriptedPort port(test);
    ObexClient client(test, port);
    port.expect(openCommand, "OK\r\n").expect(connectFolders, answer);
    if (errorCode != 0)
        test.dialogs.expect(errorBox(GetFriedlyErrMsg(errorCode)));
    QCOMPARE(client.mmc->Online(client.progress.all()), errorCode == 0);
    QCOMPARE(stateOf(client), errorCode == 0 ? connected : unconnected);
    QTEST(client.mmc->MaxPacket(), "maxPacket");
    QCOMPARE(client.progress.panel.Text(),
             u"FlexMemory / MMC "_s + (errorCode == 0 ? u"geöffnet."_s : u"nicht geöffnet."_s));
    QVERIFY(!client.progress.bar.visible);
    QCOMPARE(client.events.last(), u"BusyOff"_s);
    const bool clamped = errorCode == 0 && !answer.endsWith(hex("27 10")) && !answer.endsWith(hex("00 FF"));
    QCOMPARE(test.logged().filter(u"MaxPacket="_s).size(), clamped ? 1 : 0);
}

void tst_ObexSession::disconnectFails_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("errorCode");
    QTest::newRow("refused") << hex("C3 00 03") << 0xC3;
    QTest::newRow("unplugged") << ""_ba << -1;
}

void tst_ObexSession::disconnectFails()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, errorCode);
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(disconnectRequest, answer);
    test.dialogs.expect(errorBox(GetFriedlyErrMsg(errorCode)));
    const double before = test.clock.elapsed();
    QVERIFY(!client.mmc->Offline(client.progress.all()));
    QCOMPARE(stateOf(client), unconnected); // the channel stays open, and the reminder with it
    QCOMPARE(client.progress.panel.Text(), u"OBEX Verbindung nicht geschlossen."_s);
    const double took = test.clock.elapsed() - before;
    QVERIFY2(errorCode == -1 ? took > 25 && took < 25.2 : took < 1, qPrintable(QString::number(took)));
}

void tst_ObexSession::channelDoesNotClose()
{
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(disconnectRequest, done);
    for (int round = 0; round < 3; ++round)
        port.expect("+++").expect(closeCommand);
    test.dialogs.expect(errorBox(
        u"Das Telefon reagiert nicht mehr auf Fernsteuerbefehle. Das Telefon MUSS einmal aus- und "
        u"wieder eingeschaltet und Kalmo neu gestartet werden.\n"
        u"Häufigster Grund für diesen Fehler ist eine Unterbrechnung während der Kommunikation (Kabel "
        u"Abziehen, IrDA / Bluetooth Verbindungsabbrüche) - Bitte vermeiden Sie diese Unterbrechnungen."_s));
    QVERIFY(!client.mmc->Offline(client.progress.all()));
    QCOMPARE(stateOf(client), u"channel 0, online 2, line Switching, \"\", reminder phone/7"_s);
    QCOMPARE(client.progress.panel.Text(), u"Fehler beim Schließen des Datenkanals."_s);
    QVERIFY(!client.progress.bar.visible);

    // Whoever sends an AT command now gets nothing, and the phone no long packet.
    QByteArray answer;
    QVERIFY(!client.line.exchange(answer, "AT+CBC\r", 1));
}

void tst_ObexSession::brokenSessionIsRecovered()
{
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(disconnectRequest); // the phone was switched off and on, and takes AT commands
    test.dialogs.expect(errorBox(timeoutText));
    QVERIFY(!client.mmc->Offline(client.progress.all()));

    port.expect("+++").expect(closeCommand, "ERROR\r\n").expect("AT\r\n", "AT\r\r\nOK\r\n");
    port.expect(openCommand, "OK\r\n").expect(connectFolders, packet(0xA0, hex("10 00 04 00")));
    QVERIFY(client.mmc->Online(client.progress.all()));
    QCOMPARE(stateOf(client), connected);
}

void tst_ObexSession::recovery_data()
{
    QTest::addColumn<int>("silentRounds"); // 4: the phone never answers
    QTest::newRow("at once") << 0;
    QTest::newRow("third round") << 2;
    QTest::newRow("after a disconnect") << 3;
    QTest::newRow("never") << 4;
}

void tst_ObexSession::recovery()
{
    QFETCH(int, silentRounds);
    TestContext test;
    namePhone(test);
    app::put(test.settings, app::keys::LastUnclosedObexDevice, u"phone"_s);
    app::put(test.settings, app::keys::LastUnclosedObexDeviceCOM, u"7"_s);
    ScriptedPort port(test);
    ObexClient client(test, port);
    double lastByte = 0;
    for (int round = 0; round <= std::min(silentRounds, 3); ++round) {
        const QByteArray answer = round == silentRounds ? "OK\r\n"_ba : ""_ba;
        if (round == 3)
            port.expect(disconnectRequest, done);
        port.expect("+++").then([&] { QVERIFY(test.clock.elapsed() - lastByte >= 1); });
        port.expect(closeCommand, answer).then([&] { lastByte = test.clock.elapsed(); });
        port.expect("AT\r\n", answer).then([&] { lastByte = test.clock.elapsed(); });
    }
    const bool recovered = silentRounds < 4;
    QCOMPARE(obex::recoverLine(client.line, client.progress.all()), recovered);
    QVERIFY(test.clock.elapsed() < 31);
    QCOMPARE(stateOf(client), recovered
                                  ? u"channel 0, online 0, line Text, \"\", reminder <no value>/<no value>"_s
                                  : u"channel 0, online 0, line Switching, \"\", reminder phone/7"_s);
    QVERIFY(!client.progress.bar.visible);
}

void tst_ObexSession::silence()
{
    TestContext test;
    test.startLog();
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(hex("85 0005 03 00"), hex("A0 00 08 01"));
    test.dialogs.expect(errorBox(timeoutText));
    const double before = test.clock.elapsed();
    QVERIFY(!client.mmc->CdNull());
    const double took = test.clock.elapsed() - before;
    QVERIFY2(took > 25 && took < 25.2, qPrintable(QString::number(took)));
    client.events.removeDuplicates();
    QCOMPARE(client.events.mid(0, 4),
             (QStringList{u"DirChange "_s, u"BusyOn"_s, u"LongTimeOutMsg Telefon reorganisiert... 19"_s,
                          u"LongTimeOutMsg Telefon reorganisiert... 18"_s}));
    QCOMPARE(client.events.size(), 2 + 20 + 1);
    QVERIFY(test.logged().contains(u"RxObxFra (HEX): Timeout Buffer:  A0 00 08 01"_s));
    QVERIFY(test.logged().contains(u"Warning:: ErrCode: &HFFFF"_s));

    // The client goes on as soon as the phone does, behind a connect.
    QCOMPARE(client.mmc->IsOnline(), clsMmc::Connected);
    port.expect(connectFolders, hex("A0 0007 10 00 0400"));
    port.expect(hex("85 0008 02 00 01 0003"), done);
    QVERIFY(client.mmc->CdRoot());
}

void tst_ObexSession::bytesRestartTheTimer()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    client.mmc->setRxTimeOut(60);
    port.expect(hex("81 0003"));
    for (int index = 0; index < 5; ++index)
        port.say(hex("A0 00 05 01 02").mid(index, 1), 55.0 * (index + 1));
    QByteArray payload;
    QCOMPARE(client.mmc->request(hex("81 0003"), payload), 0xA0);
    QCOMPARE(payload, hex("01 02"));
    QVERIFY(test.clock.elapsed() > 270);
    QVERIFY(
        client.events.contains(u"LongTimeOutMsg Telefon reorganisiert... 47"_s)); // 60 / 5 = 12 seconds in
    QVERIFY(!client.events.contains(u"LongTimeOutMsg Telefon reorganisiert... 48"_s));
}

void tst_ObexSession::lateAnswerIsThrownAway()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    // The phone answers the first request when the next one is out already. Only a connect has an answer that
    // can't be mixed up with it.
    port.expect(hex("85 0005 03 00"), hex("C3 00 03"), 27);
    test.dialogs.expect(errorBox(timeoutText));
    QVERIFY(!client.mmc->CdNull());
    port.expect(connectFolders, hex("A0 0007 10 00 0400"), 5);
    port.expect(hex("85 0008 02 00 01 0003"), done, 1);
    QVERIFY(client.mmc->CdRoot());

    // A response whose length cannot be ends at once; the rest of it answers nothing.
    port.expect(hex("85 0008 02 00 01 0003"), hex("C3 00 01"));
    port.say(hex("C0 00 03"), 0.2);
    test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xC3)));
    QVERIFY(!client.mmc->CdRoot());
    port.expect(hex("85 0008 02 00 01 0003"), done, 1);
    QVERIFY(client.mmc->CdRoot());
}

void tst_ObexSession::needsAnOpenChannel()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    QList<obex::tObxDirEntry> entries;
    test.dialogs.expect(errorBox(u"Der Datenkanal zum Telefon ist nicht offen oder mit einer anderen "
                                 u"Aktion beschäftigt. Es wurde nichts gesendet."_s));
    QVERIFY(!client.mmc->Dir(entries, client.progress.all()));
    QVERIFY(test.clock.elapsed() < 0.1);

    client.goOnline();
    port.expect(hex("85 0008 02 00 01 0003")).then([&] { port.Close(); }); // the cable is pulled
    test.dialogs.expect(errorBox(timeoutText));
    const double before = test.clock.elapsed();
    QVERIFY(!client.mmc->CdRoot());
    QVERIFY(test.clock.elapsed() - before < 1);
}

void tst_ObexSession::nestedOperationIsRefused()
{
    TestContext test;
    test.startLog();
    ScriptedPort port(test);
    ObexClient client(test, port);
    clsMmc other(client.line);
    client.goOnline();
    int intrusions = 0;
    RecordedProgress intruder;
    test.clock.after(0.2, [&] {
        ++intrusions;
        QList<obex::tObxDirEntry> entries;
        int code = 0;
        QByteArray data;
        QVERIFY(!client.mmc->Dir(entries, intruder.all()));
        QVERIFY(!other.Online(intruder.all()));
        QVERIFY(!client.mmc->GetFile(u"x"_s, data, intruder.all(), {}, &code));
        QCOMPARE(code, obex::ChannelNotOpen);
        QCOMPARE(client.mmc->request(hex("83 0003"), data), obex::ChannelNotOpen);
    });
    port.expect(hex("82 000A 01 0007 00 6100 00"), done, 0.5);
    QVERIFY(client.mmc->Del(u"a"_s, client.progress.all()));
    QCOMPARE(intrusions, 1);
    QCOMPARE(intruder.panel.texts, QStringList());
    QCOMPARE(client.progress.panel.Text(), u"Datei / Ordner gelöscht."_s);
    QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BusyOff"_s}));
    QCOMPARE(test.logged().filter(u"refused, another exchange is under way"_s).size(), 4);
}

void tst_ObexSession::ownerGoes()
{
    TestContext test;
    ScriptedPort port(test);
    auto owned = std::make_unique<ObexClient>(test, port);
    owned->goOnline();
    port.expect(hex("83 000A 01 0007 00 6100 00"), hex("90 00 07 48 00 04 78"));
    port.expect(hex("83 0003")); // the phone falls silent, and the window is closed
    port.expect(hex("FF 0003"), done);
    test.clock.after(2, [&] {
        owned->mmc->abandon();
        owned->progress.panel.texts.clear();
        const std::weak_ptr<clsMmc> watched = owned->mmc;
        // The line outlives every window; only the client's owner goes.
        owned->mmc.reset();
        QVERIFY(!watched.expired());
    });
    clsMmc* const client = owned->mmc.get();
    const QPointer<clsMmc> watched = client;
    QByteArray data;
    int code = 0;
    QVERIFY(!client->GetFile(u"a"_s, data, owned->progress.all(), {}, &code));
    QVERIFY(watched.isNull());
    QCOMPARE(code, obex::Cancelled);
    QCOMPARE(owned->progress.panel.texts, QStringList());
}

void tst_ObexSession::stopWhileOpening_data()
{
    QTest::addColumn<bool>("answers");
    QTest::newRow("phone is silent: no question") << false;
    QTest::newRow("phone has switched: back again") << true;
}

void tst_ObexSession::stopWhileOpening()
{
    QFETCH(bool, answers);
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    port.expect(openCommand, answers ? "OK\r\n" : "").then([&] { client.mmc->askToStop(); });
    if (answers)
        port.expect("+++").expect(closeCommand, "OK\r\n");
    QVERIFY(!client.mmc->Online(client.progress.all()));
    QCOMPARE(stateOf(client), u"channel 2, online 0, line Text, \"\", reminder <no value>/<no value>"_s);
    QVERIFY(!client.mmc->Online(client.progress.all())); // and nothing more until Offline
}

void tst_ObexSession::stopThenOffline()
{
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    client.mmc->askToStop();
    QVERIFY(!client.mmc->CdRoot());
    QVERIFY(!client.mmc->Del(u"x"_s, {}));
    port.expect(disconnectRequest, done, 5).expect("+++").expect(closeCommand, "OK\r\n");
    QVERIFY(client.mmc->Offline(client.progress.all()));
    QCOMPARE(stateOf(client), idle);
    QVERIFY(!client.mmc->stopAsked());
}

void tst_ObexSession::lineThatIsGoneEndsTheProgram()
{
    TestContext test;
    namePhone(test);
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(hex("85 0008 02 00 01 0003")).takingOnly(5);
    test.dialogs.expect(
        {.text = u"Obex Sendefehler (5<>8) Bitte starten Sie Ihr Telefon und Kalmo neu und stellen Sie "
                 u"sicher, daß der richtige COM Port gewählt ist.\r\n"
                 u"Taucht das Problem wieder auf, wenden Sie sich bitte an den Programmautor."_s,
         .icon = Icon::Exclamation});
    QVERIFY_THROWS_EXCEPTION(ProgramEnded, client.mmc->CdRoot());
    QVERIFY(!port.IsOpen());
    QCOMPARE(app::get(test.settings, app::keys::LastUnclosedObexDevice), app::noValue());
}

QTEST_GUILESS_MAIN(tst_ObexSession)
#include "tst_ObexSession.moc"
