#include "app/SettingsKeys.h"
#include "link/mdlSearch.h"
#include "support/ScriptedPort.h"

#include <QtTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::Message;

namespace {

class FakeView : public link::SearchView
{
public:
    QStringList statuses;
    int progress = 0;
    bool abort = false;
    std::function<void()> onProgress;

    void setStatus(const QString& text) override { statuses.append(text); }
    void setProgress(int value, int) override
    {
        progress = value;
        if (onProgress)
            onProgress();
    }
    bool aborted() const override { return abort; }
    void clearAborted() override { abort = false; }
};

class FakeDesktop : public app::Desktop
{
public:
    QString opened;
    bool hasAssociation(const QString&) const override { return false; }
    bool open(const QString&) override { return false; }
    bool openWith(const QString&, const QString&) override { return false; }
    bool openUrl(const QUrl& url) override
    {
        opened = url.toString(QUrl::FullyEncoded);
        return true;
    }
};

/// A phone that answers ATZ and two identifying questions.
struct Search
{
    TestContext test;
    ScriptedPort port{test};
    link::Line line{test.context, port};
    FakeView view;
    FakeDesktop desktop;
    link::PhoneSearch search{line, view, desktop};

    Search() { port.Close(); }

    /// A probe to which `answered` of the four ATZ get an OK; `last` says how many are sent at all.
    void expectProbe(int sent, int answeredFrom = 99)
    {
        for (int number = 1; number <= sent; ++number)
            port.expect("ATZ\r", number >= answeredFrom ? QByteArray("ATZ\r\r\nOK\r\n") : QByteArray());
    }
    void expectQuery(const QByteArray& command, const QByteArray& payload)
    {
        port.expect(command, command + "\r\n" + payload + "\r\n\r\nOK\r\n");
    }
    void expectTakeOver(bool lf = false)
    {
        if (lf) {
            port.expect("AT+CMEE=0\r\n", "AT+CMEE=0\r\n\r\nOK\r\n");
            port.expect("AT+CGMR\r\n", "AT+CGMR\r\n\r\n42\r\n\r\nOK\r\n");
        } else {
            port.expect("AT+CMEE=0\r", "AT+CMEE=0\r\r\nOK\r\n");
            expectQuery("AT+CGMR\r", "42");
        }
    }
};

Message silence(int com)
{
    return {
        .text =
            u"An COM %1 konnte kein Gigaset gefunden werde.\n\nBei Gigasets mit Bluetooth Funktion MUSS "
            u"Bluetooth "
            u"abgeschaltet sein, wenn ein Datenkabel benutzt wird. Andernfalls wird das Telefon nicht "
            u"gefunden! "
            u"Gleichzeitiger Betrieb von Bluetooth und Datenkabel ist NICHT möglich!\n\nWenn Sie sich sicher "
            u"sind, daß der gewählte Anschluss der richtige ist, schalten Sie das Gigaset einmal aus und "
            u"wieder "
            u"ein und ziehen Sie das Kabel einmal ab. Das hilft oftmals.\n\nSoll die Suche mit den gleichen "
            u"Einstellungen wiederholt werden ?"_s.arg(com),
        .buttons = Buttons::YesNo,
        .icon = Icon::Question};
}

const Message changeInterface{.text = u"Möchten Sie die Schnittstelleneinstellungen ändern?"_s,
                              .buttons = Buttons::YesNo,
                              .icon = Icon::Question};

Message atStart(const QString& text)
{
    return {.text = text,
            .title = u"Kalmo 1.9.8 vom 17.09.2026 -  Programmstart"_s,
            .buttons = Buttons::YesNo,
            .icon = Icon::Question};
}

} // namespace

class tst_Search : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rates_data();
    void rates();
    void probe_data();
    void probe();
    void families_data();
    void families();
    void triesEachRate();
    void lfModeIsFoundAndRemembered();
    void abortedByTheUser();
    void portThatCannotBeOpened_data();
    void portThatCannotBeOpened();
    void unknownPhones_data();
    void unknownPhones();
};

void tst_Search::rates_data()
{
    QTest::addColumn<int>("preferred");
    QTest::addColumn<QList<int>>("list");
    QTest::newRow("none") << 19200 << QList<int>{19200, 115200, -115200};
    QTest::newRow("LF mode first") << -115200 << QList<int>{-115200, 19200, 115200};
    QTest::newRow("uncommon") << 57600 << QList<int>{57600, 19200, 115200, -115200};
    QTest::newRow("too low") << 9600 << QList<int>{19200, 115200, -115200};
    QTest::newRow("LF mode at 19200 is raised") << -19200 << QList<int>{19200, 115200, -115200};
    QTest::newRow("high") << 115200 << QList<int>{115200, 19200, -115200};
}

void tst_Search::rates()
{
    QFETCH(int, preferred);
    QTEST(link::rateList(preferred), "list");
}

void tst_Search::probe_data()
{
    QTest::addColumn<int>("sent");
    QTest::addColumn<int>("answeredFrom");
    QTest::addColumn<bool>("found");
    QTest::addColumn<double>("seconds");
    // Waits of 0.7, then per round 0.11 + n/100 for each of four steps and once more at its end.
    QTest::newRow("first round") << 2 << 2 << true << 0.7 + 0.11 + 0.12 + 0.13 + 0.14 + 0.15;
    QTest::newRow("second round") << 3 << 3 << true << 0.7 + 0.65 + 0.15 + 0.16 + 0.17 + 0.18 + 0.19;
    QTest::newRow("third round comes too late")
        << 4 << 4 << false << 0.7 + 0.65 + 0.85 + 0.19 + 0.2 + 0.21 + 0.22 + 0.23;
    QTest::newRow("nobody") << 4 << 99 << false << 0.7 + 0.65 + 0.85 + 0.19 + 0.2 + 0.21 + 0.22 + 0.23;
}

void tst_Search::probe()
{
    QFETCH(int, sent);
    QFETCH(int, answeredFrom);
    QFETCH(double, seconds);
    Search s;
    s.port.Open(u"COM1"_s);
    s.expectProbe(sent, answeredFrom);
    QTEST(s.search.ProbeATZ(), "found");
    QVERIFY2(std::abs(s.test.clock.elapsed() - seconds) < 0.01,
             qPrintable(QString::number(s.test.clock.elapsed())));
}

void tst_Search::families_data()
{
    QTest::addColumn<QByteArray>("cgmm");
    QTest::addColumn<QByteArray>("wppn"); // null: not asked
    QTest::addColumn<QString>("aliasKey");
    QTest::addColumn<QString>("alias");
    QTest::addColumn<int>("phoneType");
    const QByteArray notAsked;
    QTest::newRow("first stage") << QByteArray("PICASSO") << notAsked << QString() << QString() << 4;
    QTest::newRow("second stage") << QByteArray("Kilby") << QByteArray("^WPPN: 5,SL78H") << QString()
                                  << QString() << 8;
    QTest::newRow("alias at the first stage")
        << QByteArray("FOO BAR") << notAsked << u"FOO BAR"_s << u"3"_s << 3;
    QTest::newRow("alias at the second stage") << QByteArray("BRUSSELS") << QByteArray("^WPPN: 3,XYZ")
                                               << u"BRUSSELS:^WPPN: 3,XYZ"_s << u"13"_s << 13;
    QTest::newRow("alias out of range") << QByteArray("FOO") << notAsked << u"FOO"_s << u"14"_s << 0;
    QTest::newRow("alias with a fraction") << QByteArray("FOO") << notAsked << u"FOO"_s << u"2.5"_s << 0;
    QTest::newRow("no alias") << QByteArray("woodstock") << notAsked << QString() << QString() << 0;
}

void tst_Search::families()
{
    QFETCH(QByteArray, cgmm);
    QFETCH(QByteArray, wppn);
    QFETCH(QString, aliasKey);
    QFETCH(QString, alias);
    QFETCH(int, phoneType);
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
}

void tst_Search::triesEachRate()
{
    Search s;
    app::put(s.test.settings, app::keys::ComPortNew, 12);
    s.expectProbe(4);
    s.expectProbe(2, 2);
    s.expectQuery("AT+CGMM\r", "WOODSTOCK");
    s.expectTakeOver();
    QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::PhoneFound);
    QCOMPARE(s.test.sy.PhoneType, 1);
    QCOMPARE(s.test.sy.PhoneSVN, u"42"_s);
    QCOMPARE(s.test.sy.ComSettings, u"115200,N,8,1"_s);
    QCOMPARE(app::getInt(s.test.settings, app::keys::PrefDetectBaud), 115200);
    QCOMPARE(s.view.statuses, (QStringList{u"Suche Telefon an COM 12 mit 19200 Baud"_s,
                                           u"Suche Telefon an COM 12 mit 115200 Baud"_s}));
    QCOMPARE(s.port.calls.filter(u"Open"_s), (QStringList{u"Open \\\\.\\COM12"_s, u"Open \\\\.\\COM12"_s}));
}

void tst_Search::lfModeIsFoundAndRemembered()
{
    Search s;
    s.expectProbe(4);
    s.expectProbe(4);
    s.expectProbe(2, 2);
    s.port.expect("AT+CGMM\r\n", "AT+CGMM\r\n\r\nShark\r\n\r\nOK\r\n");
    s.port.expect("AT^WPPN\r\n", "AT^WPPN\r\n\r\n^WPPN: 4,S820\r\n\r\nOK\r\n");
    s.expectTakeOver(true);
    QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::PhoneFound);
    QCOMPARE(s.test.sy.PhoneType, 12);
    QVERIFY(s.test.sy.blnTxLfTerminator);
    QCOMPARE(app::getInt(s.test.settings, app::keys::PrefDetectBaud), -115200);
    QCOMPARE(s.view.statuses.last(),
             u"Suche Telefon an COM 1 mit -115200 Baud\nModelle M3, S820 und neuer"_s);
}

void tst_Search::abortedByTheUser()
{
    Search s;
    s.view.onProgress = [&] { s.view.abort = s.view.progress == 4; };
    s.expectProbe(2);
    s.test.dialogs.expect(silence(1), Answer::No);
    s.test.dialogs.expect(changeInterface, Answer::Yes);
    QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::Settings);
    QVERIFY(!s.port.IsOpen());
    QVERIFY(!s.view.abort);
}

void tst_Search::portThatCannotBeOpened_data()
{
    QTest::addColumn<QList<Answer>>("answers");
    QTest::addColumn<bool>("ends");
    QTest::newRow("cancel") << QList<Answer>{Answer::Cancel} << true;
    QTest::newRow("again, then settings") << QList<Answer>{Answer::Yes, Answer::No, Answer::Yes} << false;
    QTest::newRow("no settings") << QList<Answer>{Answer::No, Answer::No} << true;
}

void tst_Search::portThatCannotBeOpened()
{
    QFETCH(QList<Answer>, answers);
    QFETCH(bool, ends);
    Search s;
    s.port.openable = false;
    const Message problem{
        .text = u"Der gewählte Anschluss (COM1) konnte nicht geöffnet werden.\nEntweder der Anschluss "
                u"existiert auf Ihrem Computer nicht oder er wird bereits durch ein anderes Programm "
                u"benutzt. Wenn ein anderes Programm den Port benutzt, beenden Sie das Programm "
                u"bitte.\n\nPort fehlt.\n\nMöchten Sie die Suche am gewählten Anschluss wiederholen?"_s,
        .title = u"Kalmo - Problem"_s,
        .buttons = Buttons::YesNoCancel,
        .icon = Icon::Question};
    bool inProblem = true;
    for (const Answer answer : answers) {
        s.test.dialogs.expect(inProblem ? problem : changeInterface, answer);
        inProblem = answer == Answer::Yes;
    }
    if (ends)
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, s.search.SearchPhone());
    else
        QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::Settings);
}

void tst_Search::unknownPhones_data()
{
    QTest::addColumn<QByteArray>("wppn");
    QTest::addColumn<QString>("question");
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<QString>("next");
    const QString foreign =
        u"jedoch kein bekanntes Siemens Schnurlos Telefon gefunden. Vermutlich haben Sie den Comport "
        u"gewählt, an dem ein Internet- oder Faxmodem oder Handy angeschlossen ist"_s;
    const QString repeat = u"Soll die Suche mit den gleichen Einstellungen wiederholt werden ?"_s;
    const QString isIt = u"Hat das angeschlossene Telefon die Modellbezeichnung\n\nSL999?"_s;
    QTest::newRow("new model")
        << QByteArray("^WPPN: 5,SL999") << isIt << Answer::Yes
        << u"Das SL999 wird bisher nicht unterstützt.\n\nMöchten Sie die kalmo Seite im Internet "
           u"mit Informationen zu dem Thema Neue Modelle aufrufen?"_s;
    QTest::newRow("not that model") << QByteArray("^WPPN: 5,SL999") << isIt << Answer::No
                                    << u"Am gewählten Port wurde ein Gerät namens\n[^WPPN: 5,SL999]\n"_s +
                                           foreign + u".\n"_s + repeat;
    QTest::newRow("lying length")
        << QByteArray("^WPPN: 9,SL999")
        << u"Am gewählten Port wurde ein Gerät namens\n[^WPPN: 9,SL999]\n"_s + foreign +
               u" oder ein Telefon angeschlossen, das nicht unterstützt wird.\nWenn Sie ein Gigaset "
               u"angeschlossen "
               u"haben, das in der Liste unterstützter Telefone auf der Homepage www.kalmo.example nicht "
               u"aufgeführt "
               u"ist und der gewählte COM Port mit Sicherheit richtig ist, wenden Sie sich an den "
               u"Programmautor. "
               u"Vielleicht ist es möglich, Kalmo auf dieses Telefon anzupassen.\n\n"_s +
               repeat
        << Answer::No << QString();
}

void tst_Search::unknownPhones()
{
    QFETCH(QByteArray, wppn);
    QFETCH(QString, question);
    QFETCH(Answer, answer);
    QFETCH(QString, next);
    Search s;
    s.expectProbe(2, 2);
    s.expectQuery("AT+CGMM\r", "BRUSSELS");
    s.expectQuery("AT^WPPN\r", wppn);
    s.test.dialogs.expect(atStart(question), answer);
    if (answer == Answer::Yes) {
        s.test.dialogs.expect(atStart(next), Answer::Yes);
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, s.search.SearchPhone());
        QCOMPARE(s.desktop.opened,
                 u"https://www.kalmo.example/modell.php?Modell=[SL999]&Details=[%5EWPPN%3A%205%2CSL999]"_s);
        return;
    }
    if (!next.isEmpty())
        s.test.dialogs.expect(atStart(next), Answer::No);
    s.test.dialogs.expect(changeInterface, Answer::Yes);
    QCOMPARE(s.search.SearchPhone(), link::SearchOutcome::Settings);
    QCOMPARE(s.test.sy.PhoneType, 0);
}

QTEST_GUILESS_MAIN(tst_Search)
#include "tst_Search.moc"
