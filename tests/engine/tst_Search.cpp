// The search for a handset and its identification.

#include "app/SettingsKeys.h"
#include "link/PhoneModels.h"
#include "link/PortScan.h"
#include "support/FakeDesktop.h"
#include "support/FakeSearchView.h"
#include "support/ScriptedLine.h"
#include "support/TestProgram.h"

namespace {

/// A phone that answers ATZ and two identifying questions.
struct Search : ScriptedLine
{
    FakeSearchView view;
    FakeDesktop desktop;
    link::PhoneSearch search{line, view, desktop};

    Search() { port.Close(); }

    /// A probe of so many ATZ; the phone answers OK from that one on.
    void expectProbe(int sent, int answeredFrom = 99, const QByteArray& probe = "ATZ\r")
    {
        for (int number = 1; number <= sent; ++number)
            port.expect(probe, number >= answeredFrom ? probe + "\r\nOK\r\n" : QByteArray());
    }
    void expectQuery(const QByteArray& command, const QByteArray& payload)
    {
        port.expect(command, command + "\r\n" + payload + "\r\n\r\nOK\r\n");
    }
    void expectTakeOver(const QByteArray& end)
    {
        port.expect("AT+CMEE=0" + end, "AT+CMEE=0" + end + "\r\nOK\r\n");
        expectQuery("AT+CGMR" + end, "42");
    }
};

const QString changeInterface = u"Möchten Sie die Schnittstelleneinstellungen ändern?"_s;

} // namespace

class tst_Search : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void probe()
    {
        // Waits of 0.7, then per round 0.11 + n/100 for each of four steps and once more at its end.
        const Rows<int, int, bool, double> rows{
            {"first round", 2, 2, true, 0.7 + 0.11 + 0.12 + 0.13 + 0.14 + 0.15},
            {"second round", 3, 3, true, 0.7 + 0.65 + 0.15 + 0.16 + 0.17 + 0.18 + 0.19},
            {"third round comes too late", 4, 4, false, 0.7 + 0.65 + 0.85 + 0.19 + 0.2 + 0.21 + 0.22 + 0.23},
        };
        rows.each([&](const auto& sent, const auto& answeredFrom, const auto& found, const auto& seconds) {
            Search s;
            s.port.Open(u"COM1"_s);
            s.expectProbe(sent, answeredFrom);
            QCOMPARE(s.search.ProbeATZ(), found);
            QVERIFY2(std::abs(s.test.clock.elapsed() - seconds) < 0.01,
                     qPrintable(QString::number(s.test.clock.elapsed())));
        });
    }

    void families()
    {
        const QByteArray notAsked;
        const Rows<QByteArray, QByteArray, QString, QString, int> rows{
            {"second stage", "Kilby", "^WPPN: 5,SL78H", {}, {}, 8},
            {"alias at the first stage", "FOO BAR", notAsked, u"FOO BAR"_s, u"3"_s, 3},
            {"alias out of range", "FOO", notAsked, u"FOO"_s, u"14"_s, 0},
        };
        rows.each([&](const auto& cgmm, const auto& wppn, const auto& aliasKey, const auto& alias,
                      const auto& phoneType) {
            Search s;
            s.port.Open(u"COM1"_s);
            s.test.settings.PutIniText(u"Alias"_s, aliasKey, alias);
            s.expectQuery("AT+CGMM\r", cgmm);
            if (!wppn.isNull())
                s.expectQuery("AT^WPPN\r", wppn);
            int found = -1;
            QString rawId;
            QCOMPARE(s.search.IdentifyPhone(found, rawId), phoneType != 0);
            QCOMPARE(found, phoneType);
            QCOMPARE(rawId, QString::fromLatin1(wppn.isNull() ? cgmm : wppn));
            QCOMPARE(s.test.sy.PhoneID, rawId);
        });
    }

    void triesEachRate()
    {
        Search s;
        app::put(s.test.settings, app::keys::ComPortNew, 12);
        s.expectProbe(4);
        s.expectProbe(2, 2);
        s.expectQuery("AT+CGMM\r", "WOODSTOCK");
        s.expectTakeOver("\r");
        QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::PhoneFound);
        QCOMPARE(s.test.sy.PhoneType, 1);
        QCOMPARE(s.test.sy.PhoneSVN, u"42"_s);
        QCOMPARE(s.test.sy.ComSettings, u"115200,N,8,1"_s);
        QCOMPARE(app::getInt(s.test.settings, app::keys::PrefDetectBaud), 115200);
        QCOMPARE(s.view.statuses, (QStringList{u"Suche Telefon an COM 12 mit 19200 Baud"_s,
                                               u"Suche Telefon an COM 12 mit 115200 Baud"_s}));
        QCOMPARE(s.port.opened, (QStringList{u"\\\\.\\COM12"_s, u"\\\\.\\COM12"_s}));
    }

    void lfModeIsFoundAndRemembered()
    {
        Search s;
        s.expectProbe(4);
        s.expectProbe(4);
        s.expectProbe(2, 2, "ATZ\r\n");
        s.expectQuery("AT+CGMM\r\n", "Shark");
        s.expectQuery("AT^WPPN\r\n", "^WPPN: 4,S820");
        s.expectTakeOver("\r\n");
        QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::PhoneFound);
        QCOMPARE(s.test.sy.PhoneType, 12);
        QVERIFY(s.test.sy.blnTxLfTerminator);
        QCOMPARE(app::getInt(s.test.settings, app::keys::PrefDetectBaud), -115200);
        QCOMPARE(s.view.statuses.last(),
                 u"Suche Telefon an COM 1 mit -115200 Baud\nModelle M3, S820 und neuer"_s);
    }

    void abortedByTheUser()
    {
        Search s;
        s.view.onProgress = [&] { s.view.abort = s.view.progress == 4; };
        s.expectProbe(2);
        s.test.dialogs.expectStart(u"An COM 1 konnte kein Gigaset gefunden werde.\n"_s, Buttons::YesNo,
                                   Answer::No);
        s.test.dialogs.expectStart(changeInterface, Buttons::YesNo, Answer::Yes);
        QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::Settings);
        QVERIFY(!s.port.IsOpen());
        QVERIFY(!s.view.abort);
    }

    /// The port that is open is not taken for the one that is scanned.
    void scansOneByOne()
    {
        Search s;
        s.port.Open(u"COM1"_s);
        s.expectProbe(2, 2);
        s.expectQuery("AT+CGMM\r", "WOODSTOCK");
        const link::FoundAtPort found = link::scanPort(s.line, s.view, s.desktop, 5);
        QCOMPARE(found.number, 5);
        QCOMPARE(found.model, u"WOODSTOCK"_s);
        QCOMPARE(s.port.opened, (QStringList{u"COM1"_s, u"COM5"_s}));
        QCOMPARE(found.kind, link::FoundAtPort::Kind::Phone);

        // Something else answers at the next port, and gets no box.
        s.expectProbe(2, 2);
        s.port.expect("AT+CGMM\r", "AT+CGMM\r\r\n+CME ERROR: 3\r\n");
        QCOMPARE(link::scanPort(s.line, s.view, s.desktop, 6).kind, link::FoundAtPort::Kind::Other);
    }

    void portThatCannotBeOpened()
    {
        const Rows<QList<Answer>, bool> rows{
            {"cancel", {Answer::Cancel}, true},
            {"again, then settings", {Answer::Yes, Answer::No, Answer::Yes}, false},
        };
        rows.each([&](const auto& answers, const auto& ends) {
            Search s;
            s.port.openable = false;
            bool inProblem = true;
            for (const Answer answer : answers) {
                s.test.dialogs.expectStart(
                    inProblem ? u"Der gewählte Anschluss (COM1) konnte nicht geöffnet"_s : changeInterface,
                    inProblem ? Buttons::YesNoCancel : Buttons::YesNo, answer);
                inProblem = answer == Answer::Yes;
            }
            if (ends)
                QVERIFY_THROWS_EXCEPTION(ProgramEnded, s.search.SearchPhone());
            else
                QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::Settings);
        });
    }

    void unknownPhones()
    {
        const QString isIt = u"Hat das angeschlossene Telefon die Modellbezeichnung\n\nSL999?"_s;
        const QString foreign = u"Am gewählten Port wurde ein Gerät namens\n[%1]\njedoch kein bekanntes"_s;
        Rows<QByteArray, QString, Answer, QString> rows{
            {"new model", "^WPPN: 5,SL999", isIt, Answer::Yes, u"Das SL999 wird bisher nicht unterstützt."_s},
            {"not that model", "^WPPN: 5,SL999", isIt, Answer::No, foreign.arg(u"^WPPN: 5,SL999"_s)},
            {"lying length", "^WPPN: 9,SL999", foreign.arg(u"^WPPN: 9,SL999"_s), Answer::No, {}},
        };
        rows.each([&](const auto& wppn, const auto& question, const auto& answer, const auto& next) {
            Search s;
            s.expectProbe(2, 2);
            s.expectQuery("AT+CGMM\r", "BRUSSELS");
            s.expectQuery("AT^WPPN\r", wppn);
            s.test.dialogs.expectStart(question, Buttons::YesNo, answer);
            if (!next.isEmpty())
                s.test.dialogs.expectStart(next, Buttons::YesNo, answer);
            if (answer == Answer::Yes) {
                QVERIFY_THROWS_EXCEPTION(ProgramEnded, s.search.SearchPhone());
                QCOMPARE(
                    s.desktop.opened,
                    QStringList(
                        u"https://www.kalmo.example/modell.php?Modell=[SL999]&Details=[%5EWPPN%3A%205%2CSL999]"_s));
                return;
            }
            s.test.dialogs.expectStart(changeInterface, Buttons::YesNo, Answer::Yes);
            QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::Settings);
            QCOMPARE(s.test.sy.PhoneType, 0);
        });
    }
};

KALMO_TEST(tst_Search)
#include "tst_Search.moc"
