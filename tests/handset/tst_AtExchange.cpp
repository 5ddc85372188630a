// The emulated handset in command mode.

#include "handset/model/Models.h"
#include "link/PhoneModels.h"
#include "support/HandsetTalk.h"
#include "support/TestProgram.h"

namespace {

constexpr double politely = 4; // seconds for each command: longer than any pause that a store needs

} // namespace

/// The bytes on the wire in command mode, and the violations of a client that does it wrong.
class AtExchange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers()
    {
        const QString classic = u"PICASSO"_s;
        const QString first = u"WOODSTOCK"_s;
        const QString newest = u"SL450HX"_s;
        Rows<QString, QByteArrayList, QByteArray, QStringList> rows;
        rows.add("payload", classic, {"AT+CGMM\r"}, "AT+CGMM\r\r\nPICASSO\r\n\r\nOK\r\n", {});
        rows.add("several lines", u"WOODY"_s, {"AT^WFFO=\"MEL\"\r"},
                 "AT^WFFO=\"MEL\"\r\r\n^WFFO: 0,Morgenlied,0,MID,2316,11\r\n^WFFO: 1,Walzer,0,MID,4102,12\r\n"
                 "^WFFO: 2,T\xfcrglocke,0,MID,640,13\r\n^WFFO: 3,Alter Wecker,0,MID,1288,14\r\n\r\nOK\r\n",
                 {});
        rows.add("unknown command", classic, {"AT+XYZ\r"}, "AT+XYZ\r\r\nERROR\r\n", {});
        rows.add("error with its number", classic, {"AT+CMEE=1\r", "AT^WREX=5,7\r"},
                 "AT^WREX=5,7\r\r\n+CME ERROR: 21\r\n", {});
        rows.add("ATZ puts the echo on", classic, {"ATE0\r", "ATZ\r", "AT\r"}, "AT\r\r\nOK\r\n", {});
        rows.add("clock set", first, {"AT+CCLK=27/02/28,23:59:30\r", "AT+CCLK?\r"},
                 "AT+CCLK?\r\r\n+CCLK: \"27/02/28,23:59:00\"\r\n\r\nOK\r\n", {});
        rows.add("area codes set", newest, {"AT^SACO=00,43,0,1\r\n", "AT^SACO?\r\n"},
                 "AT^SACO?\r\n\r\n00,43,0,1\r\n\r\nOK\r\n", {});
        rows.add("line feed echoed", newest, {"AT+CGMM\r\n"}, "AT+CGMM\r\n\r\nShark\r\n\r\nOK\r\n", {});
        rows.add("CR alone to a CR LF handset", newest, {"ATZ\r", "ATZ\r", "AT\r\n"}, "AT\r\n\r\nOK\r\n", {});
        rows.add("CR alone behind the search", newest, {"AT+CGMM\r", "AT\r\n"}, "AT\r\n\r\nOK\r\n",
                 {u"ended by CR alone: AT+CGMM"_s});
        rows.add("CR LF to a CR handset", classic, {"AT+CGMR\r\n"}, "AT+CGMR\r\r\n31.07\r\n\r\nOK\r\n",
                 {u"ended by CR LF: AT+CGMR"_s});
        rows.add("no command", classic, {"\x81\x03", "AT\r"}, "AT\r\r\nOK\r\n", {u"no command: \x81\x03"_s});
        rows.add("cleared line", classic, {"ATQ\x1B\rAT\r"}, "ATQ\x1B\rAT\r\r\nOK\r\n", {});
        rows.add("impatience", classic, {"AT+CGMM\rAT+CGMR\r"},
                 "AT+CGMM\r\r\nPICASSO\r\n\r\nOK\r\nAT+CGMR\r\r\n31.07\r\n\r\nOK\r\n",
                 {u"sent into the answer to AT+CGMM"_s});

        rows.each([&](const auto& model, const auto& said, const auto& answer, const auto& violations) {
            HandsetTalk talk({.model = model});
            QCOMPARE(talk.sayAll(said), answer);
            QCOMPARE(talk.violations(), violations);
        });
    }

    /// A written entry reads back as it was, or is refused; the handset notes what no client should send.
    void keepsEntries()
    {
        const QString oldest = u"WOODSTOCK"_s;
        const QString newest = u"PICASSO"_s;
        const Rows<QString, QByteArray, QByteArray, bool> rows{
            {"date in families 2 to 4", newest, "1,A,1,1,12,000229120012", "1,A,1,1,12,000229120012,0,",
             false},
            {"VIP", newest, "1,A,1,1,0,,1,10", "1,A,1,1,0,,1,10", false},
            {"number too long", newest, "1,A,33,123456789012345678901234567890123,0,", {}, false},
            {"character that it can't show", newest, "1,[,1,1,0,", {}, false},
            {"VIP in family 1", oldest, "1,A,1,1,0,,1,5", {}, true},
            {"no such day", newest, "1,A,1,1,11,00023012005", {}, true},
        };
        rows.each([&](const auto& model, const auto& entry, const auto& kept, const auto& malformed) {
            HandsetTalk talk(emptyHandset(model));
            const QByteArray answer =
                talk.sayAll({"AT^WSSL=\"TB\"\r", "AT^WSWE=" + entry + "\r\n"}, politely);
            QCOMPARE(answer, "AT^WSWE=" + entry + "\r\r\n" + (kept.isEmpty() ? "ERROR\r\n" : "OK\r\n"));
            QCOMPARE(talk.sayAll({model == oldest ? "AT\r" : "AT^WSSL\r", "AT^WSSL=\"TB\"\r", "AT^WSRE\r"},
                                 politely),
                     "AT^WSRE\r\r\n" + (kept.isEmpty() ? "OK\r\n" : "^WSRE: " + kept + "\r\n\r\nOK\r\n"));
            const QStringList complaint{u"malformed: AT^WSWE="_s + QString::fromLatin1(entry)};
            QCOMPARE(talk.violations(), malformed ? complaint : QStringList());
        });
        HandsetTalk full({.model = newest, .seed = u"none"_s, .capacity = 1});
        const QByteArray second = "AT^WSWE=1,B,1,2,0,\r\n";
        QVERIFY(full.sayAll({"AT^WSSL=\"TB\"\r", "AT^WSWE=1,A,1,1,0,\r\n", second}).endsWith("\nERROR\r\n"));
        QCOMPARE(full.port.handset().phone().phonebook.entries.size(), 1u);
    }

    void watchesTheStores()
    {
        const QByteArray open = "AT^WSSL=\"TB\"\r";
        Rows<QByteArrayList, QStringList> rows;
        rows.add("entry ended by CR alone", {open, "AT^WSWE=4,Abel,3,123,0,\r", "AT^WSSL\r"},
                 {u"ended by CR alone: AT^WSWE=4,Abel,3,123,0,"_s});
        rows.add("preparation in another family", {open, "AT^WSWE=1,A,1,1,0,\r", "AT^WSSL\r"},
                 {u"ended by CR alone: AT^WSWE=1,A,1,1,0,"_s});
        rows.add("other command in a store", {open, "AT+CGMR\r", "AT^WSSL\r"},
                 {u"AT+CGMR while a store is open"_s});
        rows.add("close of the wrong family", {open, "AT\r"},
                 {u"line closed while the store \"TB\" is open"_s});

        rows.each([&](const auto& said, const auto& violations) {
            HandsetTalk talk(emptyHandset(u"PICASSO"_s));
            talk.sayAll(said, politely);
            talk.port.Close();
            QCOMPARE(talk.violations(), violations);
        });
        HandsetTalk prepared(emptyHandset(u"GALICIA"_s)); // and an entry of the same text behind it
        prepared.sayAll({open, "AT^WSWE=1,A,1,1,0,\r", "AT^WSWE=1,A,1,1,0,\r\n", "AT^WSSL\r"}, politely);
        QCOMPARE(prepared.violations(), QStringList());
    }

    /// Handsets need time between two commands, and a longer phonebook of family 3 a preparation.
    void watchesThePauses()
    {
        const QByteArray open = "AT^WSSL=\"TB\"\r";
        const QByteArray providers = "AT^WSSL=\"NE\"\r";
        const QByteArray entry = "AT^WSWE=4,Abel,3,123,0,\r\n";
        const Rows<double, QByteArrayList, QString> rows{
            {"first entry", 0.5, {open, "AT^WSRE\r"}, u"AT^WSRE came 0."_s},
            {"first entry to write", 1, {open, entry}, u"AT^WSWE=4,Abel,3,123,0, came 0."_s},
            {"command after the close", 3, {open, "AT^WSSL\r", open}, u"AT^WSSL=\"TB\" came 3.0"_s},
            {"erase", 0.5, {"AT+CGMR\r", "AT^WSEL=\"NE\"\r"}, u"AT^WSEL=\"NE\" came 0."_s},
            {"no preparation", politely, {open, entry, entry, entry}, u"a third entry without"_s},
            {"providers need none",
             politely,
             {providers, "AT^WSWE=1,A,1,1\r", "AT^WSWE=1,B,1,1\r", "AT^WSWE=1,C,1,1\r"},
             {}},
            {"first ringtone", 0.8, {"AT+CGMR\r", "AT^WREX?\r"}, u"AT^WREX? came 0."_s},
            {"ringtone after a change", 1, {"AT^WREX=1,1\r", "AT^WREX?\r"}, u"AT^WREX? came 0."_s},
            {"after the error level", 0.1, {"AT+CMEE=0\r", "AT+CGMR\r"}, u"AT+CGMR came 0."_s},
            {"restart after an error", 0.3, {"AT+XYZ\r", "ATZ\r"}, u"ATZ came 0."_s},
            {"all with patience",
             politely,
             {open, "AT^WSRE\r", "AT^WSSL\r", "AT^WREX?\r", "AT+XYZ\r", "ATZ\r", "AT+CMEE=0\r"},
             {}},
        };
        rows.each([&](const auto& seconds, const auto& said, const auto& complaint) {
            HandsetTalk talk(emptyHandset(u"GALICIA"_s));
            talk.clock.WaitSeconds(politely);
            talk.sayAll(said, seconds);
            const QString first = talk.violations().value(0);
            QVERIFY2(complaint.isEmpty() ? first.isEmpty() : first.startsWith(complaint), qPrintable(first));
        });
    }

    /// The client's tables find each model by exactly what it answers.
    void everyModelNamesItself()
    {
        for (const handset::Model& model : handset::allModels()) {
            HandsetTalk talk(emptyHandset(model.name()));
            const QByteArray end = model.family >= 11 ? "\r\n" : "\r";
            const auto ask = [&](const QByteArray& command) {
                const QByteArray answer = talk.say(command + end);
                const QByteArray tail = "\r\n\r\nOK\r\n";
                if (!answer.startsWith(command + end + "\r\n") || !answer.endsWith(tail))
                    return QString::fromLatin1(answer);
                return QString::fromLatin1(
                    answer.sliced(command.size() + end.size() + 2).chopped(tail.size()));
            };
            const auto stage = link::lookUpCgmm(ask("AT+CGMM"));
            QVERIFY2(stage, qPrintable(model.cgmm));
            const int family = stage->asksWppn ? link::lookUpWppn(ask("AT^WPPN")) : stage->phoneType;
            QVERIFY2(family == model.family, qPrintable(model.name()));
            QCOMPARE(talk.violations(), QStringList());
        }
        QCOMPARE(handset::allModels().size(), 53u);
    }

    /// A byte takes ten bits, and none comes early.
    void keepsTheLinesPace()
    {
        for (const int baud : {19200, 115200}) {
            HandsetTalk talk({.model = u"WOODY"_s, .rates = {baud}});
            talk.port.SetSettings(QString::number(baud) + u",N,8,1"_s);
            QCOMPARE(talk.say("AT^WFFO=\"MEL\"\r", 0.15), "AT^WFFO=\"MEL\"\r");
            double begin = 0;
            double end = 0;
            qsizetype bytes = 0; // behind the first piece
            while (talk.clock.elapsed() < 2) {
                talk.clock.DoEvents();
                const qsizetype more = talk.port.ReadText().size();
                if (more == 0)
                    continue;
                end = talk.clock.elapsed();
                bytes += begin > 0 ? more : 0;
                begin = begin > 0 ? begin : end;
            }
            const double wanted = static_cast<double>(bytes) * 10 / baud;
            QVERIFY2(bytes > 50 && std::abs(end - begin - wanted) < wanted / 50,
                     qPrintable(u"%1 bytes in %2 s"_s.arg(bytes).arg(end - begin)));
        }
    }

    void faults()
    {
        const QByteArray ok = "AT\r\r\nOK\r\n";
        const QByteArrayList thrice = {"AT\r", "AT\r", "AT\r"};
        Rows<QStringList, QByteArrayList, QByteArrayList> rows;
        rows.add("silence", {u"silent-after=2"_s}, thrice, {ok, ok, {}});
        rows.add("late", {u"late-at=2"_s, u"late-by=1.5"_s}, thrice, {ok, "AT\r", "\r\nOK\r\n" + ok});
        rows.add("noise", {u"noise-at=1"_s}, thrice,
                 {QByteArray("AT\r\x7f\xf8\0\xff\r\nOK\r\n", 13), ok, ok});

        rows.each([&](const auto& faults, const auto& said, const auto& wantedAnswers) {
            handset::Options options;
            for (const QString& fault : faults)
                QCOMPARE(handset::setFault(options.faults, fault), std::nullopt);
            HandsetTalk talk(options);
            QByteArrayList answers;
            for (const QByteArray& bytes : said)
                answers.append(talk.say(bytes));
            QCOMPARE(answers, wantedAnswers);
            QCOMPARE(talk.violations(), QStringList());
        });
    }
};

KALMO_TEST(AtExchange)
#include "tst_AtExchange.moc"
