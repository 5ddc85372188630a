// Into data mode, into a connection, and back: the bytes on the line, the texts for the user, and the
// client's state after each failure.

#include "app/SettingsKeys.h"
#include "obex/DataChannel.h"
#include "obex/ResponseCodes.h"
#include "support/ObexClient.h"
#include "support/TestProgram.h"

using link::LineMode;
using obex::clsMmc;
using obex::GetFriedlyErrMsg;
using obex::Target;

namespace {

const QByteArray openCommand = "AT^SQWE=3\r\n";
const QByteArray closeCommand = "AT^SQWE=0\r\n";
const QByteArray disconnectRequest = hex("81 0003");

const QString openFailed = u"Der Datenkanal zum Telefon konnte nicht geöffnet werden."_s;

QString stateOf(const ObexClient& client)
{
    constexpr const char* modes[] = {"Text", "Switching", "Data"};
    return u"channel %1, online %2, line %3, \"%4\", %5/%6"_s.arg(client.mmc->ChannelState())
        .arg(client.mmc->IsOnline())
        .arg(QLatin1StringView(modes[static_cast<int>(client.line.mode())]), client.mmc->DirAct(),
             app::get(client.test.settings, app::keys::LastUnclosedObexDevice),
             app::get(client.test.settings, app::keys::LastUnclosedObexDeviceCOM));
}

const QString idle = u"channel 2, online 2, line Text, \"\", <no value>/<no value>"_s;
const QString untouched = u"channel 0, online 0, line Text, \"\", <no value>/<no value>"_s;
const QString givenUp = u"channel 2, online 0, line Text, \"\", <no value>/<no value>"_s;
const QString connected = u"channel 1, online 1, line Data, \"Mobile:\\\", phone/7"_s;
const QString unconnected = u"channel 1, online 0, line Data, \"\", phone/7"_s;

} // namespace

class tst_ObexSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereAndBack()
    {
        inEveryDelivery([](TestContext& test, ScriptedPort& port) {
            test.sy.PhoneID = u"phone"_s;
            test.sy.ComNo = 7;
            ObexClient client(test, port);
            QCOMPARE(stateOf(client), untouched);

            port.expect(openCommand, "AT^SQWE=3\r\r\nOK\r\n").then([&] {
                QCOMPARE(stateOf(client),
                         u"channel 0, online 0, line Switching, \"\", <no value>/<no value>"_s);
            });
            port.expect(connectFolders, packet(0xA0, hex("10 00 04 00 CB 00 00 00 01"))).then([&] {
                QCOMPARE(stateOf(client), unconnected);
                QVERIFY(test.clock.elapsed() >= 1.15); // the phone needs its time to switch
            });
            QVERIFY(client.mmc->Online(client.progress.all()));
            QCOMPARE(stateOf(client), connected);
            QCOMPARE(client.mmc->MaxPacket(), 1024);
            QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"DirChange Mobile:\\"_s, u"BusyOff"_s}));

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
        });
    }

    void channelDoesNotOpen()
    {
        auto&& [test, port, client] = OfflineClient();
        for (const Answer answer : {Answer::Ok, Answer::Cancel}) {
            port.expect(openCommand, "\r\nRING\r\n");
            test.dialogs.expectStart(openFailed, Buttons::OkCancel, answer);
            // The phone may have switched, and its answer may be lost.
            port.expect("+++").expect(closeCommand, "OK\r\n").expect("AT\r\n", "AT\r\r\nOK\r\n");
        }
        QVERIFY(!client.mmc->Online(client.progress.all()));
        QCOMPARE(stateOf(client), givenUp);
        QCOMPARE(client.progress.panel.Text(), u"Fehler beim Öffnen des Datenkanals."_s);
        QVERIFY(!client.progress.bar.visible);
        QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BusyOff"_s}));

        port.expect(openCommand, "\r\nERROR\r\n"); // counts as an answer
        port.expect(connectFolders, packet(0xA0, hex("10 00 04 00")));
        QVERIFY(client.mmc->Online(client.progress.all()));
        QCOMPARE(stateOf(client), connected);
    }

    /// A phone that answers ERROR and stays in command mode gives the frame back as an echo.
    void channelIsRefused()
    {
        const Rows<QByteArray> rows{{"comes back", "\r\nOK\r\n"}, {"stays deaf", {}}};
        rows.each([&](const auto& answerToAt) {
            auto&& [test, port, client] = OfflineClient();
            port.expect(openCommand, "\r\nERROR\r\n").expect(connectFolders, connectFolders);
            const bool comesBack = !answerToAt.isEmpty();
            for (int round = 0; round < (comesBack ? 1 : 4); ++round) {
                if (round == 3)
                    port.expect(disconnectRequest);
                port.expect("+++").expect(closeCommand, "\r\nERROR\r\n").expect("AT\r\n", answerToAt);
            }
            test.dialogs.expect(
                errorBox(GetFriedlyErrMsg(comesBack ? obex::ChannelRefused : obex::ChannelStuck)));
            QVERIFY(!client.mmc->Online(client.progress.all()));
            QCOMPARE(stateOf(client),
                     comesBack ? givenUp : u"channel 0, online 0, line Switching, \"\", phone/7"_s);
        });
    }

    void channelOpensWhileAsking()
    {
        const Rows<bool, bool> rows{
            {"user tries again", true, false},
            {"user gives up", false, true},
            {"user gives up, and the phone stays in data mode", false, false},
        };
        rows.each([&](const auto& retries, const auto& comesBack) {
            auto&& [test, port, client] = OfflineClient();
            port.expect(openCommand);
            test.dialogs.expectStart(openFailed, Buttons::OkCancel, retries ? Answer::Ok : Answer::Cancel);
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
            QCOMPARE(stateOf(client), retries     ? connected
                                      : comesBack ? givenUp
                                                  : u"channel 0, online 0, line Switching, \"\", phone/7"_s);
        });
    }

    void connectAnswers()
    {
        const Rows<QByteArray, int, int> rows{
            {"success", packet(0xA0, hex("10 00 27 10")), 0, 10000},
            {"more than a send takes", packet(0xA0, hex("10 00 40 06")), 0, 10000},
            {"less than is allowed", packet(0xA0, hex("10 00 00 03")), 0, 255},
            {"refused", packet(0xC3, hex("10 00 04 00")), 0xC3, 255},
            {"silence", {}, -1, 255},
        };
        rows.each([&](const auto& answer, const auto& errorCode, const auto& maxPacket) {
            auto&& [test, port, client] = OfflineClient();
            test.startLog();
            port.expect(openCommand, "OK\r\n").expect(connectFolders, answer);
            if (errorCode != 0)
                test.dialogs.expect(errorBox(GetFriedlyErrMsg(errorCode)));
            QCOMPARE(client.mmc->Online(client.progress.all()), errorCode == 0);
            QCOMPARE(stateOf(client), errorCode == 0 ? connected : unconnected);
            QCOMPARE(client.mmc->MaxPacket(), maxPacket);
            QCOMPARE(client.progress.panel.Text(),
                     u"FlexMemory / MMC "_s + (errorCode == 0 ? u"geöffnet."_s : u"nicht geöffnet."_s));
            QVERIFY(!client.progress.bar.visible);
            QCOMPARE(client.events.last(), u"BusyOff"_s);
            const bool clamped =
                errorCode == 0 && !answer.endsWith(hex("27 10")) && !answer.endsWith(hex("00 FF"));
            QCOMPARE(test.logged().filter(u"MaxPacket="_s).size(), clamped ? 1 : 0);
        });
    }

    void disconnectFails()
    {
        const Rows<QByteArray, int> rows{
            {"refused", hex("C3 00 03"), 0xC3},
            {"unplugged", {}, -1},
        };
        rows.each([&](const auto& answer, const auto& errorCode) {
            auto&& [test, port, client] = OnlineClient();
            port.expect(disconnectRequest, answer);
            test.dialogs.expect(errorBox(GetFriedlyErrMsg(errorCode)));
            const double before = test.clock.elapsed();
            QVERIFY(!client.mmc->Offline(client.progress.all()));
            QCOMPARE(stateOf(client), unconnected); // the channel stays open, and the reminder with it
            QCOMPARE(client.progress.panel.Text(), u"OBEX Verbindung nicht geschlossen."_s);
            const double took = test.clock.elapsed() - before;
            QVERIFY2(errorCode == -1 ? took > 25 && took < 25.2 : took < 1,
                     qPrintable(QString::number(took)));
        });
    }

    void channelDoesNotClose()
    {
        auto&& [test, port, client] = OnlineClient();
        port.expect(disconnectRequest, done);
        for (int round = 0; round < 3; ++round)
            port.expect("+++").expect(closeCommand);
        test.dialogs.expectStart(
            u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\nDas Telefon reagiert"_s);
        QVERIFY(!client.mmc->Offline(client.progress.all()));
        QCOMPARE(stateOf(client), u"channel 0, online 2, line Switching, \"\", phone/7"_s);
        QCOMPARE(client.progress.panel.Text(), u"Fehler beim Schließen des Datenkanals."_s);
        QVERIFY(!client.progress.bar.visible);

        // An AT command gets no answer now, and the phone no long packet.
        QByteArray answer;
        QVERIFY(!client.line.exchange(answer, "AT+CBC\r", 1));
    }

    void recovery()
    {
        const QString remembered = u"channel 0, online 0, line Text, \"\", phone/7"_s;
        const Rows<int, int, QString> rows{
            {"at once", 0, 0, untouched},
            {"never", 4, 0, u"channel 0, online 0, line Switching, \"\", phone/7"_s},
            {"the emulated handset, and not the phone of the reminder", 0, 7, remembered},
        };
        rows.each([&](const auto& silentRounds, const auto& emulated, const auto& state) {
            auto&& [test, port, client] = OfflineClient();
            test.sy.ComNoEmulated = emulated;
            app::put(test.settings, app::keys::LastUnclosedObexDevice, u"phone"_s);
            app::put(test.settings, app::keys::LastUnclosedObexDeviceCOM, u"7"_s);
            double lastByte = 0;
            for (int round = 0; round <= std::min(silentRounds, 3); ++round) {
                const QByteArray answer = round == silentRounds ? "OK\r\n"_ba : ""_ba;
                if (round == 3)
                    port.expect(disconnectRequest, done);
                port.expect("+++").then([&] { QVERIFY(test.clock.elapsed() - lastByte >= 1); });
                port.expect(closeCommand, answer).then([&] { lastByte = test.clock.elapsed(); });
                port.expect("AT\r\n", answer).then([&] { lastByte = test.clock.elapsed(); });
            }
            QCOMPARE(obex::recoverLine(client.line, client.progress.all()), silentRounds < 4);
            QVERIFY(test.clock.elapsed() < 31);
            QCOMPARE(stateOf(client), state);
            QVERIFY(!client.progress.bar.visible);
        });
    }

    void reminderIsOfOnePort()
    {
        TestContext test;
        app::put(test.settings, app::keys::LastUnclosedObexDevice, u"phone"_s);
        app::put(test.settings, app::keys::LastUnclosedObexDeviceCOM, u"7"_s);
        for (const int inUse : {8, 7}) {
            test.sy.ComNoForThisRun = inUse;
            QCOMPARE(obex::isSessionUnclosed(test.context), inUse == 7);
            obex::forgetUnclosed(test.context);
            QCOMPARE(obex::unclosedSession(test.context).has_value(), inUse == 8);
        }
    }

    void lateAnswerIsThrownAway()
    {
        auto&& [test, port, client] = OnlineClient();
        // The phone answers the first request when the next one is out already. Only a connect has an answer
        // that can't be mixed up with it.
        port.expect(hex("85 0005 03 00"), hex("C3 00 03"), 27);
        test.dialogs.expect(errorBox(timeoutText));
        QVERIFY(!client.mmc->CdNull());
        client.forgetReports();
        port.expect(connectFolders, hex("A0 0007 10 00 0400"), 5).then([&] {
            QCOMPARE(client.events, QStringList(u"BusyOn"_s)); // the wait for it blocks the window
        });
        port.expect(toRoot, done, 1);
        QVERIFY(client.mmc->CdRoot());

        // A response whose length cannot be ends at once; the rest of it answers nothing.
        port.expect(toRoot, hex("C3 00 01"));
        port.say(hex("C0 00 03"), 0.2);
        test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xC3)));
        QVERIFY(!client.mmc->CdRoot());
        port.expect(toRoot, done, 1);
        QVERIFY(client.mmc->CdRoot());
    }

    void nestedOperationIsRefused()
    {
        auto&& [test, port, client] = OfflineClient();
        test.startLog();
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

    void stopWhileOpening()
    {
        const Rows<bool> rows{
            {"phone does not answer: no question, but it may have switched", false},
            {"phone has switched: back again", true},
        };
        rows.each([&](const auto& answers) {
            auto&& [test, port, client] = OfflineClient();
            port.expect(openCommand, answers ? "OK\r\n" : "").then([&] { client.mmc->askToStop(); });
            if (answers)
                port.expect("+++").expect(closeCommand, "OK\r\n");
            else
                port.expect("+++").expect(closeCommand, "OK\r\n").expect("AT\r\n", "OK\r\n");
            QVERIFY(!client.mmc->Online(client.progress.all()));
            QCOMPARE(stateOf(client), givenUp);
            QVERIFY(!client.mmc->Online(client.progress.all())); // and nothing more until Offline
        });
    }

    void codesInWords()
    {
        const QString continues = u"ReCode: 100 Continue"_s;
        const Rows<int, QString, QString> rows{
            {"continue", 0x90, continues, continues},
            {"of two languages", 0xD0,
             u"ReCode: 500 Internal Server Error\n\nBitte wiederholen Sie die letzte Aktion."_s,
             u"ReCode: 500 Internal Server Error, please try again"_s},
            {"of the client", -4, u"Löschen einer Datei fehlgeschlagen."_s,
             u"a local file could not be removed"_s},
            {"unknown, below 0", -2, u"ReCode: unknown ReCode - &HFFFE"_s,
             u"ReCode: unknown ReCode - &HFFFE"_s},
        };
        rows.each([&](const auto& code, const auto& german, const auto& english) {
            QCOMPARE(GetFriedlyErrMsg(code), german);
            QCOMPARE(obex::friendlyErrorEnglish(code), english);
        });
    }

    void lineThatIsGoneEndsTheProgram()
    {
        const Rows<int, QString> rows{
            {"the user's phone", 0, app::noValue()},
            {"the emulated handset", 7, u"phone"_s}, // the reminder is not its own
        };
        rows.each([&](const auto& emulated, const auto& reminder) {
            auto&& [test, port, client] = OnlineClient();
            test.sy.ComNoEmulated = emulated;
            port.expect(disconnectRequest).then([&port = port] {
                port.Close();
            }); // the cable is pulled: no wait
            test.dialogs.expect(errorBox(timeoutText));
            test.dialogs.whileShown([&line = client.line] { QVERIFY(line.isWaiting()); });
            const double before = test.clock.elapsed();
            QVERIFY(!client.mmc->Offline({}));
            QVERIFY(test.clock.elapsed() - before < 1);

            port.Open({});
            port.expect(connectFolders, hex("A0 0007 10 00 0400"));
            QVERIFY(client.mmc->connect({}, Target::FlexMemory));
            port.expect(toRoot).takingOnly(5);
            test.dialogs.expectStart(u"Obex Sendefehler (5<>8) "_s);
            QVERIFY_THROWS_EXCEPTION(ProgramEnded, client.mmc->CdRoot());
            QVERIFY(!port.IsOpen());
            QCOMPARE(app::get(test.settings, app::keys::LastUnclosedObexDevice), reminder);
        });
    }
};

KALMO_TEST(tst_ObexSession)
#include "tst_ObexSession.moc"
