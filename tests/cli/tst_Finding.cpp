// The way to a handset and into its data mode when the line or the handset fails, and out of it after another
// run was broken off.

#include "app/SettingsKeys.h"
#include "handset/Faults.h"
#include "Shell.h"
#include "support/TestProgram.h"

class tst_Finding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineThatGoesAway()
    {
        Handset handset;
        QCOMPARE(handset(u"find"_s), ExitDone);
        int commands = 0; // of a search that begins with the right rate
        for (int at = 1; commands == 0; ++at) {
            handset.port.handset().setFaults({.hangUpAt = at});
            const ExitStatus status = handset(u"find"_s);
            if (status == ExitDone) {
                commands = at - 1;
                continue;
            }
            const QByteArray row = "at command " + QByteArray::number(at) + ": " + handset.told.toUtf8();
            QVERIFY2(status == ExitFailed && handset.printed.isEmpty(), row.constData());
            QVERIFY2(handset.told.contains(u"the line is gone. Is the cable plugged in?\n"_s) ||
                         handset.told.contains(u"does not exist"_s),
                     row.constData());
        }
        QVERIFY(commands >= 5); // ATZ, model, name, error codes, version
    }

    void handsetThatDoesNotNameItsModel()
    {
        Shell shell;
        shell.port.expect("ATZ\r").expect("ATZ\r", "ATZ\r\r\nOK\r\n");
        shell.script.expect("AT+CGMM\r", "BRUSSELS");
        for (int attempt = 0; attempt < 3; ++attempt) {
            shell.port.expect("AT^WPPN\r");
            if (attempt < 2)
                shell.port.expect("ATZ\r").expect("ATZ\r");
        }
        QCOMPARE(shell.run(u"find"_s), ExitNoPhone);
        QCOMPARE(shell.told,
                 u"kalmoctl: could not carry out AT^WPPN: the phone did not answer.\n"
                 "kalmoctl: could not identify the handset at /dev/ttyX (COM1): it takes commands, but does "
                 "not name its model. Leave all menus on it and try again.\n"_s);
    }

    void handsetThatDoesNotOpenItsDataMode()
    {
        const auto question =
            u"The phone did not open its data channel. Leave all menus on the phone. Try again?"_s;
        const Rows<int, ExitStatus, QString> rows{
            {"one menu", 1, ExitDone, question + u" Yes, retry 1 of 2.\n"_s},
            {"two menus", 2, ExitDone,
             question + u" Yes, retry 1 of 2.\n"_s + question + u" Yes, retry 2 of 2.\n"_s},
            {"a menu for good", 9, ExitFailed,
             question + u" Yes, retry 1 of 2.\n"_s + question + u" Yes, retry 2 of 2.\nkalmoctl: "_s +
                 question + u"\nGave up after 2 retries.\n"_s},
        };
        rows.each([&](const auto& menus, const auto& status, const auto& told) {
            Handset handset;
            handset.port.handset().setFaults({.menuOpen = menus});
            QCOMPARE(handset(u"--yes files df"_s), status);
            QCOMPARE(handset.told, told);
            QCOMPARE(app::get(handset.test.settings, app::keys::LastUnclosedObexDevice), app::noValue());
        });
    }

    void lostAnswerToTheRequestForDataMode()
    {
        for (const bool yes : {false, true}) {
            Handset handset;
            handset.port.handset().setFaults({});
            QCOMPARE(handset(u"find"_s), ExitDone);
            const int commands = handset.port.handset().phone().faults.commands;
            handset.port.handset().setFaults({});
            handset.port.handset().setFaults({.loseByteAt = commands + 1});
            QCOMPARE(handset(yes ? u"--yes files df"_s : u"files df"_s), yes ? ExitDone : ExitFailed);
            QVERIFY2(!handset.port.handset().isInDataMode(), qPrintable(handset.told));
            QCOMPARE(app::get(handset.test.settings, app::keys::LastUnclosedObexDevice), app::noValue());
            QCOMPARE(handset(u"find"_s), ExitDone);
        }
    }

    void leftInDataMode()
    {
        const QString lastRun =
            u"The last run did not end its data session with SL450HX; taking the handset back to commands.\n"_s;
        // True if this program left it so, and true if only the switch helps.
        const Rows<QString, bool, bool, ExitStatus, QString> rows{
            {"the next command takes it back", u"find"_s, true, false, ExitDone, lastRun},
            {"behind another program, too", u"recover"_s, false, false, ExitDone, {}},
            {"without a record nobody can know", u"find"_s, false, false, ExitNoPhone,
             u"\"kalmoctl recover\" takes the handset back to commands.\n"_s},
            {"where only the switch helps, it says so", u"find"_s, true, true, ExitNoPhone,
             lastRun +
                 u"It did not come back. If it is not found now, pull its cable out for five seconds, or "
                 "switch it off and on.\n"_s},
            {"and recover says so", u"recover"_s, false, true, ExitNoPhone,
             u"Switch the handset off and on;"_s},
        };
        rows.each([&](const auto& line, const auto& remembered, const auto& deaf, const auto& status,
                      const auto& told) {
            Handset handset;
            QCOMPARE(handset(u"find"_s), ExitDone);
            handset.port.Open({});
            handset.port.WriteText("AT^SQWE=3\r\n");
            handset.test.clock.WaitSeconds(1);
            QVERIFY(handset.port.handset().isInDataMode());
            app::put(handset.test.settings, app::keys::LastUnclosedObexDevice,
                     remembered ? u"SL450HX"_s : app::noValue());
            app::put(handset.test.settings, app::keys::LastUnclosedObexDeviceCOM, u"1"_s);
            handset.port.handset().setFaults({.ignoresEscape = deaf});

            QCOMPARE(handset(line), status);
            QVERIFY2(handset.told.contains(told), qPrintable(handset.told));
            QCOMPARE(handset.port.handset().isInDataMode(), status != ExitDone);
            if (deaf)
                handset.port.handset().powerCycle();
            if (status == ExitDone || deaf) {
                QCOMPARE(handset(u"find"_s), ExitDone);
                QCOMPARE(app::get(handset.test.settings, app::keys::LastUnclosedObexDevice), app::noValue());
            }
        });
    }
};

KALMO_TEST(tst_Finding)
#include "tst_Finding.moc"
