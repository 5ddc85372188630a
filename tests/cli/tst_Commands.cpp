// The commands against a phone of paper: all that they print, how they end, and what they never send.

#include "Shell.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::cli;
using namespace kalmo::tests;

namespace {

using Prepare = std::function<void(Shell&)>;

} // namespace

class tst_Commands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void results_data();
    void results();
    void texts_data();
    void texts();
    void failures_data();
    void failures();
    void readsAgainWhatIsDoubtful_data();
    void readsAgainWhatIsDoubtful();
};

void tst_Commands::results_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<QString>("value");
    const auto status = [](const QByteArray& model) {
        return [model](Shell& shell) -> ClassicScript& {
            shell.found(model).expect("AT+CGMI\r", "SIEMENS").expect("AT+CGMM\r", model);
            return shell.script.expect("AT+CGMR\r", "4.2").expect("AT+CGSN\r", "0815");
        };
    };

    QTest::newRow("ports") << u"ports"_s << Prepare([](Shell&) {})
                           << u"[{\"description\":\"Cable\",\"device\":\"/dev/ttyX\",\"hardwareId\":"
                              "\"USB\\\\VID_067B&PID_2303\",\"maker\":\"Maker\",\"number\":1}]"_s;
    QTest::newRow("find") << u"find"_s << Prepare([](Shell& shell) { shell.found("WOODY"); })
                          << u"{\"comSettings\":\"19200,N,8,1\",\"lfTerminator\":false,\"phoneId\":\"WOODY\","
                             "\"phoneType\":2,\"svn\":\"4.2\"}"_s;
    QTest::newRow("status of family 1") << u"status"_s << Prepare([=](Shell& shell) {
        status("WOODSTOCK")(shell).expect("AT+CSQ\r", "+CSQ: 20,99").expect("AT+CBC\r", "+CBC: 0,85");
        shell.script.expect("AT+CCLK?\r", "+CCLK: \"26/11/21,12:30:00\"");
    })
                                        << u"{\"battery\":85,\"manufacturer\":\"SIEMENS\",\"model\":"
                                           u"\"WOODSTOCK\",\"pcTime\":\"2026-11-21T12:00:01\","
                                           "\"phoneTime\":\"2026-11-21T12:30:00\",\"serial\":\"0815\","
                                           "\"signal\":64,\"signalText\":\"-- 73 dBm\","
                                           "\"version\":\"4.2\"}"_s;
    QTest::newRow("status of family 2 has no gauges")
        << u"status"_s << Prepare([=](Shell& shell) { status("WOODY")(shell); })
        << u"{\"battery\":null,\"manufacturer\":\"SIEMENS\",\"model\":\"WOODY\",\"pcTime\":\"2026-11-21T12:"
           u"00:01\","
           "\"phoneTime\":null,\"serial\":\"0815\",\"signal\":null,\"signalText\":null,\"version\":\"4.2\"}"_s;
    QTest::newRow("clock set") << u"clock set"_s << Prepare([](Shell& shell) {
        shell.found("WOODSTOCK")
            .expect("AT+CCLK=26/11/21,12:00:01\r")
            .expect("AT+CCLK?\r", "+CCLK: \"26/11/21,12:00:00\"");
    }) << u"{\"phoneTime\":\"2026-11-21T12:00:00\"}"_s;
    QTest::newRow("phonebook, with the handset's own melodies")
        << u"phonebook read"_s << Prepare([](Shell& shell) {
               shell.found("WOODY").expect("AT^WFFO=\"MEL\"\r", "^WFFO: 0,Walzer,x,MID,1200,33");
               shell.script.expect("AT^WFFO=\"MEL\"\r", "^WFFO: 0,Walzer,x,MID,1200,33");
               shell.read({"4,J\xF6rg,3,110,12,001224083033,1,2", "1,A,1,1,0,"});
           })
        << u"[{\"date\":\"24.12  "
           u"08:30\",\"dateSound\":\"Walzer\",\"name\":\"Jörg\",\"number\":\"110\",\"vip\":true,"
           "\"vipSound\":\"Melodie 2\"},{\"date\":\"\",\"dateSound\":\"\",\"name\":\"A\",\"number\":\"1\","
           "\"vip\":false,\"vipSound\":\"\"}]"_s;
    QTest::newRow("providers") << u"providers read"_s << Prepare([](Shell& shell) {
        shell.found("WOODSTOCK").expect("AT^WSSL=\"NE\"\r").expect("AT^WSRE\r", "^WSRE: 4,Call,5,01013");
        shell.script.expect("AT^WSRE\r").expect("AT\r");
    }) << u"[{\"name\":\"Call\",\"number\":\"01013\"}]"_s;
    QTest::newRow("ringtones")
        << u"ringtones set alarm Walzer rising"_s << Prepare([](Shell& shell) {
               shell.found("PICASSO")
                   .expect("AT^WFFO=\"3\"\r", "^WFFO: 0,Walzer,x,MID,1200,33")
                   .expect("AT^WRAL=33,6\r");
               shell.script.expect("AT^WREX?\r", "^WREX: 1,1").expect("AT^WRIN?\r", "^WRIN: 2,2");
               shell.script.expect("AT^WRAP?\r", "^WRAP: 3,3").expect("AT^WRAL?\r", "^WRAL: 33,6");
           })
        << u"{\"alarm\":{\"tone\":\"Walzer\",\"volume\":6},\"appointment\":{\"tone\":\"Melodie "
           u"3\",\"volume\":3},"
           "\"external\":{\"tone\":\"Melodie 1\",\"volume\":1},\"internal\":{\"tone\":\"Melodie "
           "2\",\"volume\":2},"
           "\"melodies\":[{\"id\":33,\"kind\":\"MID\",\"name\":\"Walzer\",\"size\":1200}]}"_s;
}

void tst_Commands::results()
{
    QFETCH(QString, line);
    QFETCH(Prepare, prepare);
    Shell shell;
    prepare(shell);
    QCOMPARE(shell.run(u"--json --quiet "_s + line), ExitDone);
    QTEST(shell.value(), "value");
    QCOMPARE(shell.told, QString());
}

void tst_Commands::texts_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<QString>("printed");
    QTest::newRow("ports") << u"ports"_s << Prepare([](Shell&) {})
                           << u"Port  Device     Description  Maker  Hardware\n"
                              "1     /dev/ttyX  Cable        Maker  USB\\VID_067B&PID_2303\n"_s;
    QTest::newRow("find") << u"find"_s << Prepare([](Shell& shell) { shell.found("WOODY"); })
                          << u"Handset:     WOODY\n"
                             "Family:      2\n"
                             "Software:    4.2\n"
                             "Port:        /dev/ttyX (COM1)\n"
                             "Line:        19200,N,8,1\n"
                             "Line feeds:  no\n"_s;
    QTest::newRow("phonebook") << u"phonebook read"_s << Prepare([](Shell& shell) {
        shell.found("WOODSTOCK");
        shell.read({"4,J\xF6rg,3,110,9,12240830S"});
    })
                               << u"Name  Number  Date          Reminder  VIP  Sound\n"
                                  "Jörg  110     24.12  08:30  Optisch\n"_s;
    QTest::newRow("ringtones") << u"ringtones"_s << Prepare([](Shell& shell) {
        shell.found("WOODY").expect("AT^WFFO=\"MEL\"\r", "^WFFO: 0,Walzer,x,MID,1200,33");
        shell.script.expect("AT^WREX?\r", "^WREX: 1,1").expect("AT^WRIN?\r", "^WRIN: 2,2");
        shell.script.expect("AT^WRAP?\r", "^WRAP: 3,3").expect("AT^WRAL?\r", "^WRAL: 33,6");
    })
                               << u"Event        Tone       Volume\n"
                                  "external     Melodie 1  1\n"
                                  "internal     Melodie 2  2\n"
                                  "appointment  Melodie 3  3\n"
                                  "alarm        Walzer     rising\n"
                                  "\n"
                                  "Melody  Kind  Bytes  Id\n"
                                  "Walzer  MID   1200   33\n"_s;
}

void tst_Commands::texts()
{
    QFETCH(QString, line);
    QFETCH(Prepare, prepare);
    Shell shell;
    prepare(shell);
    QCOMPARE(shell.run(line), ExitDone);
    QTEST(shell.printed, "printed");
    QCOMPARE(shell.told, QString());
}

void tst_Commands::failures_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<ExitStatus>("status");
    QTest::addColumn<QString>("told"); // how it begins
    const auto silence = Prepare([](Shell& shell) {
        for (int rate = 0; rate < 3; ++rate) {
            for (int probe = 0; probe < 4; ++probe)
                shell.port.expect(rate == 2 ? "ATZ\r\n" : "ATZ\r"); // the last one is for CR LF
        }
    });

    QTest::newRow("port that does not open") << u"find"_s << Prepare([](Shell& shell) {
        shell.port.Close();
        shell.port.openable = false;
    }) << ExitFailed << u"kalmoctl: No port.\n"_s;
    QTest::newRow("no phone")
        << u"find"_s << silence << ExitNoPhone
        << u"kalmoctl: no handset answers at /dev/ttyX (COM1). Tried: 19200, 115200, 115200 "
           "with line feeds baud.\nIs the handset switched on"_s;
    QTest::newRow("interrupted search") << u"find"_s << Prepare([](Shell& shell) {
        shell.port.expect("ATZ\r").then([&shell] { shell.stop.checked = true; });
    }) << ExitRefused << u"kalmoctl: interrupted.\n"_s;
    QTest::newRow("unknown phone")
        << u"find"_s << Prepare([](Shell& shell) {
               shell.port.expect("ATZ\r").expect("ATZ\r", "ATZ\r\r\nOK\r\n");
               shell.script.expect("AT+CGMM\r", "GAM").expect("AT^WPPN\r", "^WPPN: 3,X99");
           })
        << ExitNoPhone
        << u"kalmoctl: the device at /dev/ttyX (COM1) is no handset that Kalmo knows. It answers:\n"
           "  ^WPPN: 3,X99\n"
           "If it is much like a known one, its family (1 to 13) can be set in "_s;
    QTest::newRow("another family")
        << u"clock set"_s << Prepare([](Shell& shell) { shell.found("WOODY"); }) << ExitFailed
        << u"kalmoctl: \"clock set\" is for a handset whose clock can be set from outside "
           "(family 1). This is one of family 2 (WOODY).\n"_s;
    QTest::newRow("device data that do not come")
        << u"status"_s << Prepare([](Shell& shell) { shell.found("WOODY").refuse("AT+CGMI\r"); })
        << ExitFailed << u"kalmoctl: The phone did not answer the command AT+CGMI.\n"_s;
    QTest::newRow("read that stops half-way") << u"phonebook read"_s << Prepare([](Shell& shell) {
        shell.found("WOODSTOCK").expect("AT^WSSL=\"TB\"\r").expect("AT^WSRE\r", "^WSRE: 1,A,1,1,0,");
        shell.script.refuse("AT^WSRE\r").expect("AT\r");
    }) << ExitFailed << u"kalmoctl: the phonebook could not be read: the phone stopped answering.\n"_s;
    QTest::newRow("cable that is pulled out") << u"phonebook read"_s << Prepare([](Shell& shell) {
        shell.found("WOODSTOCK").expect("AT^WSSL=\"TB\"\r");
        shell.port.expect("AT^WSRE\r").then([&shell] { shell.port.Close(); }).expect("AT\r");
    }) << ExitFailed << u"kalmoctl: the phonebook could not be read: /dev/ttyX (COM1) is gone.\n"_s;
    QTest::newRow("interrupted read") << u"phonebook read"_s << Prepare([](Shell& shell) {
        shell.found("WOODSTOCK").expect("AT^WSSL=\"TB\"\r");
        shell.script.then([&shell] { shell.stop.checked = true; }).expect("AT\r");
    }) << ExitRefused << u"kalmoctl: interrupted while the phonebook was read.\n"_s;
    QTest::newRow("file of another kind")
        << u"phonebook read -o x.prv"_s << Prepare([](Shell&) {}) << ExitWrongUse
        << u"kalmoctl: x.prv ends neither in .tel, .csv, .vcf nor in .json.\n"_s;
    QTest::newRow("file that can't be written")
        << u"phonebook read -o /nowhere/x.tel"_s << Prepare([](Shell& shell) {
               shell.found("WOODSTOCK");
               shell.read({});
           })
        << ExitFailed << u"kalmoctl: /nowhere/x.tel could not be written: No such file or directory.\n"_s;
    QTest::newRow("melody that is not there")
        << u"ringtones set alarm Walser 1"_s << Prepare([](Shell& shell) {
               shell.found("PICASSO").expect("AT^WFFO=\"3\"\r", "^WFFO: 0,Walzer,x,MID,1200,33");
           })
        << ExitWrongUse << u"kalmoctl: this handset has no melody \"Walser\"; did you mean \"Walzer\"?\n"_s;
    QTest::newRow("ringtone that the handset does not take")
        << u"ringtones set alarm 7 1"_s << Prepare([](Shell& shell) {
               shell.found("PICASSO").expect("AT^WFFO=\"3\"\r").expect("AT^WRAL=7,1\r");
               shell.script.expect("AT^WREX?\r", "^WREX: 1,1").expect("AT^WRIN?\r", "^WRIN: 2,2");
               shell.script.expect("AT^WRAP?\r", "^WRAP: 3,3").expect("AT^WRAL?\r", "^WRAL: 7,2");
           })
        << ExitFailed << u"kalmoctl: the handset is not set to \"Melodie 7\" and volume 1.\n"_s;
}

void tst_Commands::failures()
{
    QFETCH(QString, line);
    QFETCH(Prepare, prepare);
    QFETCH(QString, told);
    Shell shell;
    prepare(shell);
    QTEST(shell.run(line), "status");
    QCOMPARE(shell.told.first(qMin(told.size(), shell.told.size())), told);
}

void tst_Commands::readsAgainWhatIsDoubtful_data()
{
    QTest::addColumn<bool>("againDoubtful");
    QTest::addColumn<ExitStatus>("status");
    QTest::newRow("the second reading is sure") << false << ExitDone;
    QTest::newRow("the second is doubtful too") << true << ExitFailed;
}

void tst_Commands::readsAgainWhatIsDoubtful()
{
    QFETCH(bool, againDoubtful);
    Shell shell;
    shell.found("WOODSTOCK").expect("AT^WSSL=\"TB\"\r").stumble("AT^WSRE\r").expect("AT\r");
    if (againDoubtful)
        shell.script.expect("AT^WSSL=\"TB\"\r")
            .stumble("AT^WSRE\r", "^WSRE: 1,A,1,1,0,")
            .expect("AT^WSRE\r")
            .expect("AT\r");
    else
        shell.read({"1,A,1,1,0,"});
    QTEST(shell.run(u"phonebook read"_s), "status");
    QVERIFY(shell.printed.contains(u"\nA "_s));
    QCOMPARE(shell.told.contains(u"an entry may be missing or garbled"_s), againDoubtful);
}

QTEST_GUILESS_MAIN(tst_Commands)
#include "tst_Commands.moc"
