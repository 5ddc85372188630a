// The commands against a scripted phone: all their output, their exit status, and the commands that they
// never send.

#include "Shell.h"
#include "support/TestProgram.h"

namespace {

/// A command after "--json --quiet" that is done, and the value that it prints.
using Results = Rows<QString, QString, Shell::Prepare>;

void checkResults(const Results& rows)
{
    rows.each([](const auto& line, const auto& value, const auto& prepare) {
        Shell shell;
        prepare(shell);
        QCOMPARE(shell.run(u"--json --quiet "_s + line), ExitDone);
        QCOMPARE(shell.value(), value);
        QCOMPARE(shell.told, QString());
    });
}

/// A command, its status, and the beginning of its messages.
using Failures = Rows<QString, ExitStatus, QString, Shell::Prepare>;

void checkFailures(const Failures& rows)
{
    rows.each([](const auto& line, const auto& status, const auto& told, const auto& prepare) {
        Shell shell;
        prepare(shell);
        QCOMPARE(shell.run(line), status);
        QCOMPARE(shell.told.first(qMin(told.size(), shell.told.size())), told);
    });
}

} // namespace

class tst_Commands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readings();
    void changes();
    void searchesThatFail();
    void failures();
    void readsAgainWhatIsDoubtful();
    void refusedMelodies();
};

void tst_Commands::readings()
{
    const auto status = [](const QByteArray& model) {
        return [model](Shell& shell) -> Shell& {
            shell.found(model);
            shell.twice("AT+CGMI\r", "SIEMENS").twice("AT+CGMM\r", model);
            return shell.twice("AT+CGMR\r", "4.2").twice("AT+CGSN\r", "0815");
        };
    };
    Results rows;
    rows.add("ports", u"ports"_s,
             u"[{\"description\":\"Siemens USB Kabel DCA-510\",\"device\":\"/dev/ttyX\",\"hardwareId\":"
             "\"USB\\\\VID_067B&PID_2303\",\"maker\":\"Maker\",\"number\":1}]"_s,
             [](Shell&) {});
    rows.add("status of family 1", u"status"_s,
             u"{\"battery\":85,\"manufacturer\":\"SIEMENS\",\"model\":"
             u"\"WOODSTOCK\",\"pcTime\":\"2026-11-21T12:00:01\","
             "\"phoneTime\":\"2026-11-21T12:30:00\",\"serial\":\"0815\","
             "\"signal\":64,\"signalText\":\"-- 73 dBm\",\"version\":\"4.2\"}"_s,
             [=](Shell& shell) {
                 status("WOODSTOCK")(shell).twice("AT+CSQ\r", "+CSQ: 20,99").twice("AT+CBC\r", "+CBC: 0,85");
                 shell.twice("AT+CCLK?\r", "+CCLK: \"26/11/21,12:30:00\"");
             });
    rows.add("phonebook, with the handset's own melodies", u"phonebook read"_s,
             u"[{\"date\":\"24.12  "
             u"08:30\",\"dateSound\":\"Walzer\",\"name\":\"Jörg\",\"number\":\"110\",\"vip\":true,"
             "\"vipSound\":\"Melodie 2\"},{\"date\":\"\",\"dateSound\":\"\",\"name\":\"A\",\"number\":\"1\","
             "\"vip\":false,\"vipSound\":\"\"}]"_s,
             [](Shell& shell) {
                 shell.found("WOODY").expect("AT^WFFO=\"MEL\"\r", "^WFFO: 0,Walzer,x,MID,1200,33");
                 shell.script.expect("AT^WFFO=\"MEL\"\r", "^WFFO: 0,Walzer,x,MID,1200,33");
                 shell.read({"4,J\xF6rg,3,110,12,001224083033,1,2", "1,A,1,1,0,"});
             });
    rows.add(
        "providers", u"providers read"_s, uR"([{"name":"Nord, Ruf","number":"01031"}])"_s, [](Shell& shell) {
            shell.found("WOODSTOCK").expect("AT^WSSL=\"NE\"\r");
            shell.script.expect("AT^WSRE\r", "^WSRE: 9,Nord, Ruf,5,01031").expectAll({"AT^WSRE\r", "AT\r"});
        });
    checkResults(rows);
}

void tst_Commands::changes()
{
    Results rows;
    rows.add("clock, with a digit that the line loses once", u"clock set"_s,
             u"{\"phoneTime\":\"2026-11-21T12:00:00\",\"state\":\"done\"}"_s, [](Shell& shell) {
                 shell.found("WOODSTOCK").expect("AT+CCLK=26/11/21,12:00:01\r");
                 shell.script.expect("AT+CCLK?\r", "+CCLK: \"26/1/21,12:00:00\"");
                 shell.twice("AT+CCLK?\r", "+CCLK: \"26/11/21,12:00:00\"");
             });
    rows.add("ringtones", u"ringtones set alarm Walzer rising"_s,
             u"{\"alarm\":{\"tone\":\"Walzer\",\"volume\":6},\"state\":\"done\"}"_s, [](Shell& shell) {
                 shell.found("PICASSO");
                 shell.twice("AT^WFFO=\"3\"\r", "^WFFO: 0,Walzer,x,MID,1200,33")
                     .twice("AT^WRAL?\r", "^WRAL: 2,1")
                     .identified();
                 shell.script.expect("AT^WRAL=33,6\r");
                 shell.twice("AT^WRAL?\r", "^WRAL: 33,6");
             });
    checkResults(rows);
}

void tst_Commands::searchesThatFail()
{
    const auto silence = Shell::Prepare([](Shell& shell) {
        for (int rate = 0; rate < 3; ++rate) {
            for (int probe = 0; probe < 4; ++probe)
                shell.port.expect(rate == 2 ? "ATZ\r\n" : "ATZ\r"); // the last one is for CR LF
        }
    });
    Failures rows;
    rows.add("port that does not open", u"find"_s, ExitFailed, u"kalmoctl: No port.\n"_s, [](Shell& shell) {
        shell.port.Close();
        shell.port.openable = false;
    });
    rows.add("no phone", u"find"_s, ExitNoPhone,
             u"kalmoctl: could not find a handset at /dev/ttyX (COM1): nothing answers at 19200, 115200, "
             "115200 with line feeds baud.\nIs the handset switched on"_s,
             silence);
    rows.add("unknown phone", u"find"_s, ExitNoPhone,
             u"kalmoctl: could not identify the device at /dev/ttyX (COM1): Kalmo does not know its model. "
             "It answers:\n"
             "  ^WPPN: 3,X99\n"
             "If it works like a known model, set the family of that one (1 to 13) in "_s,
             [](Shell& shell) {
                 shell.port.expect("ATZ\r").expect("ATZ\r", "ATZ\r\r\nOK\r\n");
                 shell.script.expect("AT+CGMM\r", "GAM").expect("AT^WPPN\r", "^WPPN: 3,X99");
             });
    checkFailures(rows);
}

void tst_Commands::failures()
{
    Failures rows;
    rows.add("read that stops half-way", u"phonebook read"_s, ExitFailed,
             u"kalmoctl: could not read the phonebook: the phone did not give entry 2.\n"_s,
             [](Shell& shell) {
                 shell.found("WOODSTOCK").expect("AT^WSSL=\"TB\"\r").expect("AT^WSRE\r", "^WSRE: 1,A,1,1,0,");
                 shell.script.refuse("AT^WSRE\r").expect("AT\r");
             });
    rows.add("cable that is pulled out", u"phonebook read"_s, ExitFailed,
             u"kalmoctl: could not read the phonebook: /dev/ttyX (COM1) is gone.\n"_s, [](Shell& shell) {
                 shell.found("WOODSTOCK").expect("AT^WSSL=\"TB\"\r");
                 shell.port.expect("AT^WSRE\r").then([&shell] { shell.port.Close(); }).expect("AT\r");
             });
    rows.add("nothing to save in the place of an older list", u"-q phonebook read -o old.tel"_s, ExitFailed,
             u"kalmoctl: did not replace the older file old.tel: the phone holds no entries.\n"_s,
             [](Shell& shell) {
                 shell.file(u"old.tel"_s, "\"A\",\"1\"\r\n");
                 QDir::setCurrent(shell.test.folder.path());
                 shell.found("WOODSTOCK");
                 shell.read({});
             });
    rows.add("stopped once it is found", u"clock set"_s, ExitRefused,
             u"kalmoctl: interrupted; nothing was changed.\n"_s,
             [](Shell& shell) { shell.found("WOODSTOCK").then([&shell] { shell.stop.checked = true; }); });
    rows.add("melody that is not there", u"ringtones set alarm Walser 1"_s, ExitWrongUse,
             u"kalmoctl: this handset has no melody \"Walser\"; did you mean \"Walzer\"?\n"_s,
             [](Shell& shell) {
                 shell.found("PICASSO");
                 shell.twice("AT^WFFO=\"3\"\r", "^WFFO: 0,Walzer,x,MID,1200,33");
             });
    checkFailures(rows);
}

void tst_Commands::readsAgainWhatIsDoubtful()
{
    const Rows<bool, ExitStatus> rows{
        {"the second reading is sure", false, ExitDone},
        {"the second is doubtful too", true, ExitFailed},
    };
    rows.each([&](const auto& againDoubtful, const auto& status) {
        Shell shell;
        shell.found("WOODSTOCK").expect("AT^WSSL=\"TB\"\r").stumble("AT^WSRE\r").expect("AT\r");
        if (againDoubtful)
            shell.script.expect("AT^WSSL=\"TB\"\r")
                .stumble("AT^WSRE\r", "^WSRE: 1,A,1,1,0,")
                .expect("AT^WSRE\r")
                .expect("AT\r");
        else
            shell.read({"1,A,1,1,0,"});
        QCOMPARE(shell.run(u"phonebook read"_s), status);
        QVERIFY(shell.printed.contains(u"\nA "_s));
        QCOMPARE(shell.told.contains(u"an entry may be missing or garbled"_s), againDoubtful);
    });
}

/// A handset without a list of its melodies is read once. Only melodies of its own are doubtful then.
void tst_Commands::refusedMelodies()
{
    const QString doubt = u"the names of the handset's own melodies could not be read"_s;
    const Rows<QByteArray, ExitStatus, bool> rows{
        {"a melody that all handsets have", "1,A,1,1,11,00122408303", ExitDone, false},
        {"one of its own", "1,A,1,1,12,001224083033", ExitFailed, true},
    };
    rows.each([&](const auto& entry, const auto& status, const auto& isDoubtful) {
        Shell shell;
        shell.found("WOODY").refuse("AT^WFFO=\"MEL\"\r");
        shell.read({entry});
        QCOMPARE(shell.run(u"phonebook read"_s), status);
        QVERIFY2(shell.told.contains(doubt) == isDoubtful, qPrintable(shell.told));
    });
}

KALMO_TEST(tst_Commands)
#include "tst_Commands.moc"
