#include "handset/model/Models.h"
#include "link/PhoneModels.h"
#include "support/HandsetTalk.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

/// What goes over the wire in command mode, byte for byte, and what a client that does it wrong is told.
class AtExchange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void everyModelNamesItself();
    void findsModelsByName_data();
    void findsModelsByName();
    void unknownModels();
    void answersOnlyAtItsRate_data();
    void answersOnlyAtItsRate();
    void keepsSettings();
};

void AtExchange::answers_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArrayList>("said");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("violations");

    const auto row = [](const char* name, const QString& model, const QByteArrayList& said,
                        const QByteArray& answer, const QStringList& violations = {}) {
        QTest::newRow(name) << model << said << answer << violations;
    };
    const QString classic = u"PICASSO"_s;
    const QString first = u"WOODSTOCK"_s;
    const QString newest = u"SL450HX"_s;

    row("no payload", classic, {"ATZ\r"}, "ATZ\r\r\nOK\r\n");
    row("payload", classic, {"AT+CGMM\r"}, "AT+CGMM\r\r\nPICASSO\r\n\r\nOK\r\n");
    row("small letters", classic, {"at+cgmm\r"}, "at+cgmm\r\r\nPICASSO\r\n\r\nOK\r\n");
    row("several lines", u"WOODY"_s, {"AT^WFFO=\"MEL\"\r"},
        "AT^WFFO=\"MEL\"\r\r\n^WFFO: 0,Morgenlied,0,MID,2316,11\r\n^WFFO: 1,Walzer,0,MID,4102,12\r\n"
        "^WFFO: 2,T\xfcrglocke,0,MID,640,13\r\n^WFFO: 3,Alter Wecker,0,MID,1288,14\r\n\r\nOK\r\n");
    row("unknown command", classic, {"AT+XYZ\r"}, "AT+XYZ\r\r\nERROR\r\n");
    row("command of another family", classic, {"AT+CSQ\r"}, "AT+CSQ\r\r\nERROR\r\n");
    row("bad value", classic, {"AT^WREX=5,7\r"}, "AT^WREX=5,7\r\r\nERROR\r\n");
    row("error with its number", classic, {"AT+CMEE=1\r", "AT^WREX=5,7\r"},
        "AT^WREX=5,7\r\r\n+CME ERROR: 21\r\n");
    row("ATZ takes the number back", classic, {"AT+CMEE=1\r", "ATZ\r", "AT+CSQ\r"}, "AT+CSQ\r\r\nERROR\r\n");
    row("echo off", classic, {"ATE0\r", "AT+CGMM\r"}, "\r\nPICASSO\r\n\r\nOK\r\n");
    row("ATZ puts the echo on", classic, {"ATE0\r", "ATZ\r", "AT\r"}, "AT\r\r\nOK\r\n");
    row("signal", first, {"AT+CSQ\r"}, "AT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n");
    row("battery", first, {"AT+CBC\r"}, "AT+CBC\r\r\n+CBC: 0,85\r\n\r\nOK\r\n");
    row("clock has no seconds", first, {"AT+CCLK?\r"},
        "AT+CCLK?\r\r\n+CCLK: \"26/11/21,12:00:00\"\r\n\r\nOK\r\n");
    row("clock set", first, {"AT+CCLK=27/02/28,23:59:30\r", "AT+CCLK?\r"},
        "AT+CCLK?\r\r\n+CCLK: \"27/02/28,23:59:00\"\r\n\r\nOK\r\n");
    row("clock set wrong", first, {"AT+CCLK=27/02/30,23:59:30\r"},
        "AT+CCLK=27/02/30,23:59:30\r\r\nERROR\r\n");
    row("ringtone set", classic, {"AT^WRAL=12,6\r", "AT^WRAL?\r"}, "AT^WRAL?\r\r\n^WRAL: 12,6\r\n\r\nOK\r\n");
    row("area codes set", newest, {"AT^SACO=00,43,0,1\r\n", "AT^SACO?\r\n"},
        "AT^SACO?\r\n\r\n00,43,0,1\r\n\r\nOK\r\n");
    row("area codes refused", newest, {"AT^SACO=+,43,0,1\r\n"}, "AT^SACO=+,43,0,1\r\n\r\nERROR\r\n");
    row("area codes of an older family", u"S68H"_s, {"AT^SACO?\r"}, "AT^SACO?\r\r\nERROR\r\n");

    row("line feed echoed", newest, {"AT+CGMM\r\n"}, "AT+CGMM\r\n\r\nShark\r\n\r\nOK\r\n");
    row("CR alone to a CR LF handset", newest, {"ATZ\r", "ATZ\r", "AT\r\n"}, "AT\r\n\r\nOK\r\n");
    row("CR alone behind the search", newest, {"AT+CGMM\r", "AT\r\n"}, "AT\r\n\r\nOK\r\n",
        {u"ended by CR alone: AT+CGMM"_s});
    row("CR LF to a CR handset", classic, {"AT+CGMR\r\n"}, "AT+CGMR\r\r\n31.07\r\n\r\nOK\r\n",
        {u"ended by CR LF: AT+CGMR"_s});
    row("CR LF in the search", classic, {"AT+CGMM\r\n"}, "AT+CGMM\r\r\nPICASSO\r\n\r\nOK\r\n");

    row("escape that is late", classic, {"+++", "AT\r"}, "AT\r\r\nOK\r\n");
    row("no command", classic, {"\x81\x03", "AT\r"}, "AT\r\r\nOK\r\n", {u"no command: \x81\x03"_s});
    row("empty line", classic, {"\r"}, "\r");
    row("cleared line", classic, {"ATQ\x1B\rAT\r"}, "ATQ\x1B\rAT\r\r\nOK\r\n");
    row("impatience", classic, {"AT+CGMM\rAT+CGMR\r"},
        "AT+CGMM\r\r\nPICASSO\r\n\r\nOK\r\nAT+CGMR\r\r\n31.07\r\n\r\nOK\r\n",
        {u"sent into the answer to AT+CGMM"_s});
}

void AtExchange::answers()
{
    QFETCH(QString, model);
    QFETCH(QByteArrayList, said);
    HandsetTalk talk({.model = model});
    QTEST(talk.sayAll(said), "answer");
    QTEST(talk.violations(), "violations");
}

/// The client's tables find each model by exactly what it answers.
void AtExchange::everyModelNamesItself()
{
    for (const handset::Model& model : handset::allModels()) {
        HandsetTalk talk(emptyHandset(model.name()));
        const QByteArray end = model.family >= 11 ? "\r\n" : "\r";
        const auto ask = [&](const QByteArray& command) {
            const QByteArray answer = talk.say(command + end);
            const QByteArray tail = "\r\n\r\nOK\r\n";
            if (!answer.startsWith(command + end + "\r\n") || !answer.endsWith(tail))
                return QString::fromLatin1(answer);
            return QString::fromLatin1(answer.sliced(command.size() + end.size() + 2).chopped(tail.size()));
        };
        const auto stage = link::lookUpCgmm(ask("AT+CGMM"));
        QVERIFY2(stage, qPrintable(model.cgmm));
        const int family = stage->asksWppn ? link::lookUpWppn(ask("AT^WPPN")) : stage->phoneType;
        QVERIFY2(family == model.family, qPrintable(model.name()));
        QCOMPARE(talk.violations(), QStringList());
    }
    QCOMPARE(handset::allModels().size(), 53u);
}

void AtExchange::findsModelsByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");

    QTest::newRow("first answer") << u"WOODY_C"_s << u"2 WOODY_C"_s;
    QTest::newRow("first answer of a line of models") << u"GAM"_s << u"6 ^WPPN: 4,SL37"_s;
    QTest::newRow("name") << u"s820"_s << u"12 ^WPPN: 4,S820"_s;
    QTest::newRow("whole answer") << u"^WPPN: 10,SL5 prof.."_s << u"13 ^WPPN: 10,SL5 prof.."_s;
    QTest::newRow("semicolon") << u"M3 Ex Plus prof."_s << u"11 ^WPPN; 16,M3 Ex Plus prof."_s;
    QTest::newRow("bell") << u"To S600"_s << u"5 ^WPPN: 8,To\a S600"_s;
    QTest::newRow("modem") << u"modem"_s << u"0 Standard Modem 56K"_s;
    QTest::newRow("none") << u"XYZ"_s << u"none"_s;
}

void AtExchange::findsModelsByName()
{
    QFETCH(QString, name);
    const auto model = handset::findModel(name);
    const QString found =
        model ? u"%1 %2"_s.arg(model->family).arg(model->wppn.isEmpty() ? model->cgmm : model->wppn)
              : u"none"_s;
    QTEST(found, "found");
}

void AtExchange::unknownModels()
{
    HandsetTalk modem({.model = u"MODEM"_s});
    QCOMPARE(modem.say("ATZ\r"), "ATZ\r\r\nOK\r\n");
    QCOMPARE(modem.say("AT+CGMM\r"), "AT+CGMM\r\r\nStandard Modem 56K\r\n\r\nOK\r\n");
    QCOMPARE(modem.say("AT^WPPN\r"), "AT^WPPN\r\r\nERROR\r\n");

    HandsetTalk next(
        {.cgmm = u"BRUSSELS"_s, .wppn = u"^WPPN: 4,S68X"_s, .family = 8, .areaCodePrefix = true});
    QCOMPARE(next.say("AT^WPPN\r"), "AT^WPPN\r\r\n^WPPN: 4,S68X\r\n\r\nOK\r\n");
    QCOMPARE(next.say("AT^SACO?\r"), "AT^SACO?\r\r\n^SACO: 00,49,0,521\r\n\r\nOK\r\n");
}

void AtExchange::answersOnlyAtItsRate_data()
{
    QTest::addColumn<handset::Options>("options");
    QTest::addColumn<QByteArrayList>("answers"); // at 19200, 57600 and 115200 baud

    const QByteArray ok = "ATZ\r\r\nOK\r\n";
    const QByteArray garbage = "\xbe\xab\xa5\xf2";
    QTest::newRow("old") << handset::Options{.model = u"PICASSO"_s} << QByteArrayList{ok, {}, {}};
    QTest::newRow("new") << handset::Options{.model = u"S68H"_s} << QByteArrayList{{}, {}, ok};
    QTest::newRow("told") << handset::Options{.rates = {19200, 57600}} << QByteArrayList{ok, ok, {}};
    QTest::newRow("garbage") << handset::Options{.rates = {57600}, .wrongRate = handset::WrongRate::Garbage}
                             << QByteArrayList{garbage, ok, garbage};
}

void AtExchange::answersOnlyAtItsRate()
{
    QFETCH(handset::Options, options);
    HandsetTalk talk(options);
    QByteArrayList answers;
    for (const QString& rate : {u"19200"_s, u"57600"_s, u"115200"_s}) {
        talk.port.SetSettings(rate + u",N,8,1"_s);
        answers.append(talk.say("ATZ\r"));
    }
    QTEST(answers, "answers");
}

void AtExchange::keepsSettings()
{
    const QTemporaryDir folder;
    const handset::Options options{.model = u"WOODSTOCK"_s, .stateFolder = folder.path()};
    HandsetTalk(options).say("AT+CCLK=27/02/28,23:59:30\r");
    QCOMPARE(HandsetTalk(options).say("AT+CCLK?\r"),
             "AT+CCLK?\r\r\n+CCLK: \"27/02/28,23:59:00\"\r\n\r\nOK\r\n");
}

QTEST_GUILESS_MAIN(AtExchange)
#include "tst_AtExchange.moc"
