// Files and contacts against the emulated handset: batches, and faults at any time that must lose nothing.

#include "app/SettingsKeys.h"
#include "FaultSweep.h"
#include "Shell.h"
#include "support/SeedFile.h"
#include "support/TestProgram.h"

namespace {

/// A command behind "--json --quiet", its status, the value with ' for ", the messages and what comes first.
/// Without messages a failed run may say anything.
using DataRuns = Rows<QString, ExitStatus, QString, QString, std::function<void(Handset&)>>;

constexpr FaultKind readingFaults[] = {
    {"refusal", [](int at) { return Faults{.refuseAt = at}; }},
    {"silence", [](int at) { return Faults{.silentFrom = at}; }},
    {"late answer", [](int at) { return Faults{.lateBy = 40, .lateRequestAt = at}; }},
    {"line gone", [](int at) { return Faults{.hangUpAfter = 80 * at}; }},
};

void eachRun(const DataRuns& rows)
{
    rows.each(
        [](const auto& line, const auto& status, const auto& value, const auto& told, const auto& prepare) {
            Handset handset;
            if (prepare)
                prepare(handset);
            QCOMPARE(handset(u"--json --quiet "_s + line), status);
            QCOMPARE(handset.value().replace(u'"', u'\''), value);
            if (!told.isEmpty() || status == ExitDone)
                QCOMPARE(handset.told, told);
            QVERIFY(!handset.port.handset().isInDataMode());
            QCOMPARE(handset.port.handset().violations(), QStringList());
        });
}

} // namespace

class tst_DataCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gettingFiles()
    {
        DataRuns rows;
        rows.add("get goes on behind a failed one, and ends with the worst status",
                 u"files get Nope/x Sounds\\Piep.wav Sounds Mobile:\\Liesmich.txt .. Sounds/../Piep.wav"_s,
                 ExitWrongUse,
                 u"[{'name':'x','path':'/Nope/x','saved':null,'size':null},"
                 "{'name':'Piep.wav','path':'/Sounds/Piep.wav','saved':'HOME/Piep.wav','size':6444},"
                 "{'name':'Sounds','path':'/Sounds','saved':null,'size':null},"
                 "{'name':'Liesmich.txt','path':'/Liesmich.txt','saved':'HOME/Liesmich.txt','size':64},"
                 "{'name':'..','path':'/..','saved':null,'size':null},"
                 "{'name':'Piep.wav','path':'/Sounds/../Piep.wav','saved':null,'size':null}]"_s,
                 u"kalmoctl: could not access the phone: ReCode: 404 Data Not Found.\n"
                 "kalmoctl: could not list the folder of /Nope/x.\n"
                 "kalmoctl: /Sounds is a folder in the phone.\n"
                 "kalmoctl: /.. can't be the name of a file here.\n"
                 "kalmoctl: /Sounds/../Piep.wav would replace another one of these files, HOME/Piep.wav.\n"_s,
                 {});
        rows.add("a local file is replaced by consent only", u"files get Liesmich.txt"_s, ExitRefused,
                 u"[{'name':'Liesmich.txt','path':'/Liesmich.txt','saved':null,'size':null}]"_s,
                 u"kalmoctl: Replace HOME/Liesmich.txt?\n"
                 "Nobody can answer here; run this on a terminal, or say --yes.\n"
                 "kalmoctl: HOME/Liesmich.txt stays as it is.\n"_s,
                 [](Handset& handset) { handset.file(u"Liesmich.txt"_s, "mine"); });
        rows.add("a file that is not as large as listed", u"--yes files get Liesmich.txt"_s, ExitFailed,
                 u"[{'name':'Liesmich.txt','path':'/Liesmich.txt','saved':null,'size':null}]"_s,
                 u"kalmoctl: could not fetch /Liesmich.txt: the phone lists 64 bytes, but sent 67.\n"_s,
                 [](Handset& handset) { handset.port.handset().setFaults({.surplusAt = 3}); });
        eachRun(rows);
    }

    void puttingFiles()
    {
        DataRuns rows;
        rows.add(
            "put knows again what listings spell otherwise", u"files put A&B.txt"_s, ExitRefused,
            u"[{'backup':null,'name':'A&B.txt','path':'/A&B.txt','size':1,'state':'unchanged','written':false}]"_s,
            {}, [](Handset& handset) {
                handset.file(u"A&B.txt"_s, "a");
                QCOMPARE(handset(u"files put A&B.txt"_s), ExitDone);
            });
        rows.add(
            "put asks before it replaces in the phone, and goes on",
            u"files put liesmich.TXT nothing a;,b.txt"_s, ExitRefused,
            u"[{'backup':null,'name':'liesmich.TXT','path':'/"
            u"liesmich.TXT','size':5,'state':'unchanged','written':false},"
            "{'backup':null,'name':'nothing','path':'/nothing','size':0,'state':'unchanged','written':false},"
            "{'backup':null,'name':'ab.txt','path':'/ab.txt','size':1,'state':'done','written':true}]"_s,
            u"Replace /liesmich.TXT in the phone? [y/N] kalmoctl: /liesmich.TXT stays as it is.\n"
            "kalmoctl: there is no file nothing.\n"_s,
            [](Handset& handset) {
                handset.file(u"liesmich.TXT"_s, "other");
                handset.file(u"a;,b.txt"_s, "b");
                handset.answers = {u"n"_s};
            });
        rows.add(
            "names that no file of the phone can have", u"files put ,; a\\b €"_s, ExitWrongUse,
            u"[{'backup':null,'name':'','path':'/','size':1,'state':'unchanged','written':false},"
            "{'backup':null,'name':'a\\\\b','path':'/a\\\\b','size':1,'state':'unchanged','written':false},"
            "{'backup':null,'name':'€','path':'/€','size':1,'state':'unchanged','written':false}]"_s,
            u"kalmoctl: the name ,; has nothing but commas and semicolons, which are left out.\n"
            "kalmoctl: a\\b can't be the name of a file in the phone.\n"
            "kalmoctl: /€ holds a letter that no name in the phone can have.\n"_s,
            [](Handset& handset) {
                handset.file(u",;"_s, "a");
                handset.file(u"a\\b"_s, "b");
                handset.file(u"€"_s, "c");
            });
        eachRun(rows);
    }

    /// A file that is replaced goes before the new one comes.
    void aPhoneWithoutRoom()
    {
        DataRuns rows;
        rows.add("put saves what it replaces, and says where it lies when it fails",
                 u"--yes files put Liesmich.txt"_s, ExitFailed,
                 u"[{'backup':'HOME/storage/Backup/Liesmich 2026-11-21  12-00-09.txt','name':'Liesmich.txt',"
                 "'path':'/Liesmich.txt','size':5,'state':'unknown','written':false}]"_s,
                 u"kalmoctl: could not access the phone: ReCode: Database Full, there is no room left in the "
                 "phone.\nkalmoctl: could not send Liesmich.txt to /Liesmich.txt: the phone refused.\n"
                 "The phone's former /Liesmich.txt is gone; \"kalmoctl undo\" "
                 "puts it back, and a copy is in HOME/storage/Backup/Liesmich 2026-11-21  12-00-09.txt.\n"_s,
                 [](Handset& handset) {
                     handset.file(u"Liesmich.txt"_s, "other");
                     handset.port.handset().setFaults({.full = true});
                 });
        rows.add("undo names what it loses", u"--yes --storage storage undo"_s, ExitFailed,
                 u"{'add':0,'backup':null,'change':1,'left':0,'record':'2','remove':0,'restored':null,"
                 "'state':'unknown','verified':null}"_s,
                 u"kalmoctl: could not access the phone: ReCode: Database Full, there is no room left in the "
                 "phone.\nkalmoctl: could not put back the files as of 2026-11-21  12:00:09, before \"files "
                 "put\": the phone refused it. Confirmed: 0 of 1.\nGone from the phone: "
                 "/Liesmich.txt. To put back what it held: kalmoctl --storage 'storage' undo 2.\n"
                 "To try again: kalmoctl --storage 'storage' undo 1.\n"_s,
                 [](Handset& handset) {
                     handset.file(u"Liesmich.txt"_s, "other");
                     QCOMPARE(handset(u"--yes files put Liesmich.txt"_s), ExitDone);
                     handset.port.handset().setFaults({.full = true});
                 });
        eachRun(rows);
    }

    void changingFiles()
    {
        DataRuns rows;
        rows.add("rm says what is left", u"--yes files rm Liesmich.txt Pictures"_s, ExitFailed,
                 u"[{'deleted':true,'path':'/Liesmich.txt','state':'done'},"
                 "{'deleted':false,'path':'/Pictures','state':'unchanged'}]"_s,
                 u"kalmoctl: /Pictures is not empty; a folder has to be empty to be deleted.\n"_s, {});
        rows.add("a protected file", u"--yes files rm Sounds/Gong.mid"_s, ExitFailed,
                 u"[{'deleted':false,'path':'/Sounds/Gong.mid','state':'unchanged'}]"_s,
                 u"kalmoctl: could not access the phone: ReCode: 412 Precondition failed.\n"
                 "kalmoctl: could not delete /Sounds/Gong.mid: the phone refused; --force deletes what is "
                 "protected, too.\n"_s,
                 {});
        rows.add("a name that means another place", u"files mv Liesmich.txt Pictures/.."_s, ExitWrongUse, {},
                 u"kalmoctl: /Pictures/.. can't be the name of a file in the phone.\n"_s, {});
        rows.add("mv replaces nothing", u"files mv Liesmich.txt Sounds/Gong.mid"_s, ExitFailed, {},
                 u"kalmoctl: there is a /Sounds/Gong.mid in the phone already.\n"_s, {});
        rows.add("attr shows what the phone lists then", u"files attr Sounds/Gong.mid rw"_s, ExitDone,
                 u"{'groupPerm':'rwd','kind':'file','modified':'2001-01-01T00:00:00','name':'Gong.mid',"
                 "'path':'/Sounds/Gong.mid','size':61,'state':'done','userPerm':'rwd'}"_s,
                 {}, {});
        eachRun(rows);
    }

    void contactsAndDates()
    {
        const auto miscounts = [](int count) {
            return [=](Handset& handset) { handset.port.handset().setFaults({.miscounts = count}); };
        };
        const auto addedThenMiscounts = [](Handset& handset) {
            handset.file(u"c.json"_s, R"({"lastName": "Neu", "home": "3"})");
            QCOMPARE(handset(u"--yes phonebook add c.json"_s), ExitDone);
            handset.port.handset().setFaults({.miscounts = 100});
            handset.answers = {u"y"_s, u"y"_s};
        };
        DataRuns rows;
        rows.add("lines of a note stay together", u"notes read"_s, ExitDone,
                 u"[{'luid':'0001','text':'Einkauf:\\r\\nBrot; Käse; Äpfel'},"
                 "{'luid':'0002','text':'Schlüssel liegt bei Frau Groß'}]"_s,
                 {}, {});
        rows.add("no change behind two incomplete readings", u"--yes phonebook delete 0001"_s, ExitFailed, {},
                 u"kalmoctl: could not read the whole phonebook: the phone says that it holds 26, but sent "
                 u"25, in the "
                 "second reading too.\n"
                 "Nothing was changed in the phone.\n"_s,
                 miscounts(2));
        rows.add("one behind which a whole one comes is no matter", u"--yes phonebook delete 99"_s,
                 ExitWrongUse, {},
                 u"kalmoctl: there is no contact 99 in the phone; nothing was changed in it.\n"_s,
                 miscounts(1));
        rows.add("undo at a phone that counts one too many", u"undo"_s, ExitFailed,
                 u"{'add':0,'backup':'HOME/storage/Backup/Inhalt des Telefons vom 2026-11-21  12-00-23.json',"
                 "'change':0,'left':0,'record':'2','remove':1,'restored':1,'state':'done','verified':null}"_s,
                 {}, addedThenMiscounts);
        rows.add("entries are for another kind of handset", u"--yes phonebook write c.tel"_s, ExitFailed, {},
                 u"kalmoctl: could not run \"phonebook write\": it needs a handset with a classic phonebook "
                 u"(families 1 to 4) for such entries. This one is of family 12 (^WPPN: 7,SL450HX).\n"_s,
                 [](Handset& handset) { handset.file(u"c.tel"_s, "\"A\",\"1\"\r\n"); });
        rows.add("area codes that are none", u"areacodes set 00 49 0 O30"_s, ExitWrongUse, {},
                 u"kalmoctl: O30 is no area code: digits only.\n"_s, {});
        eachRun(rows);
    }

    /// Folders of contacts, appointments and notes are no places for files, whatever leads there.
    void contactsAreNoFiles()
    {
        const Rows<QString, QString> rows{
            {"rm", u"rm -y telecom/pb/luid/0001.vcf"_s, u"/telecom/pb/luid/0001.vcf"_s},
            {"put", u"put a.txt --to Mobile:\\Telecom"_s, u"/Telecom/a.txt"_s},
            {"mkdir", u"mkdir x/../telecom/new"_s, u"/x/../telecom/new"_s},
            {"mv", u"mv Liesmich.txt telecom/"_s, u"/telecom/Liesmich.txt"_s},
            {"attr", u"attr telecom ro"_s, u"/telecom"_s},
        };
        rows.each([](const auto& line, const auto& path) {
            Handset handset;
            handset.file(u"a.txt"_s, "a");
            QCOMPARE(handset(u"files "_s + line), ExitWrongUse);
            QCOMPARE(handset.told,
                     u"kalmoctl: %1 holds contacts, appointments or notes; change contacts with "
                     "\"kalmoctl phonebook\".\n"_s.arg(path));
        });
    }

    /// Nobody can say that all contacts came, so they are read again.
    void countUnknown()
    {
        Handset handset({.model = u"S68H"_s, .faults = {.refuseAt = 4}}); // info.log
        QCOMPARE(handset(u"phonebook read -o book.json"_s), ExitDone);
        QVERIFY2(
            handset.told.contains(u"Reading once more: the phone does not say how many contacts it holds."_s),
            qPrintable(handset.told));
    }

    /// Reading, asking, changing and reading back share one data channel.
    void oneSession()
    {
        for (const QString& line : {u"phonebook add one.json"_s, u"phonebook set 0001 one.json"_s,
                                    u"phonebook delete 0001 0002"_s, u"phonebook write one.json"_s}) {
            Handset handset;
            handset.file(u"one.json"_s, R"({"lastName": "Neu", "home": "3"})");
            handset.test.startLog();
            QCOMPARE(handset(u"--yes "_s + line), ExitDone);
            const QRegularExpression opening(u"^TxDir.*AT\\^SQWE=3"_s);
            QCOMPARE(handset.test.logged().filter(opening).size(), 1);
        }
    }

    /// After any fault no local file is wrong or cut off, and the phone is found again.
    void anyFaultWhileGetting()
    {
        const QString line = u"--yes files get Sounds/Piep.wav Liesmich.txt"_s;
        const auto localFiles = [](const Handset& handset) {
            QMap<QString, QByteArray> files;
            for (const QString& name : QDir(handset.test.folder.path()).entryList(QDir::Files | QDir::Hidden))
                files[name] = TestContext::contentOf(handset.test.path(name));
            return files;
        };
        Handset undisturbed({.model = u"S68H"_s});
        QCOMPARE(undisturbed(line), ExitDone);
        const auto wanted = localFiles(undisturbed);
        sweep(readingFaults, 46, 3, [&](const Faults& faults, const QByteArray& at) {
            Handset handset({.model = u"S68H"_s});
            handset.port.handset().setFaults(faults);
            const ExitStatus status = handset(line);
            const QByteArray why = at + handset.told.toUtf8();
            const auto files = localFiles(handset);
            for (auto file = files.begin(); file != files.end(); ++file)
                QVERIFY2(wanted.contains(file.key()) && wanted[file.key()] == file.value(), why.constData());
            QVERIFY2(status != ExitDone || files == wanted, why.constData());
            const QString unclosed = app::get(handset.test.settings, app::keys::LastUnclosedObexDevice);
            QVERIFY2(!handset.told.contains(u"kalmoctl recover"_s) || unclosed != app::noValue(),
                     why.constData());
            handset.port.handset().setFaults({});
            QVERIFY2(handset(u"--json phonebook read"_s) == ExitDone,
                     (why + handset.told.toUtf8()).constData());
        });
    }

    /// One name in quoted-printable has all cards decoded, so the first name is shown as "A" only.
    void cardsThatDoNotComeThrough()
    {
        const QString seed = seedFile(
            R"({"contacts": [{"lastName": "A=B; C", "home": "1"}, {"lastName": "Ayşe", "home": "2"}]})");
        Handset handset({.model = u"S68H"_s, .seed = seed, .cards = handset::CardText::Raw});
        QCOMPARE(handset(u"phonebook read -o x.json"_s), ExitDone);
        const QString lacks = u"x.json lacks a part of these contacts; a .vcf file would hold it: A\n"_s;
        QVERIFY2(handset.told.endsWith(lacks), qPrintable(handset.told));
        QCOMPARE(handset(u"phonebook read -o x.vcf"_s), ExitDone);
        QVERIFY2(!handset.told.contains(u"lacks"_s), qPrintable(handset.told));
        handset.file(u"half.json"_s, R"([{"lastName": "A", "firstName": "D", "home": "1"}])");
        QCOMPARE(handset(u"--yes phonebook set 0001 half.json"_s), ExitDone);
        const QString warning = u"D A: in the phone it says \"A=B; C\"; \"A\" would be written"_s;
        QVERIFY2(handset.told.contains(warning), qPrintable(handset.told));
    }
};

KALMO_TEST(tst_DataCommands)
#include "tst_DataCommands.moc"
