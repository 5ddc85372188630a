// Lists as files for other programs: the words of the command, what comes out, and what stays.

#include "cli/Shell.h"
#include "support/TestProgram.h"

namespace {

const QByteArray providers = "\"Anna, A\",\"0301\"\r\n\"Bert\",\"0302\"\r\n\"J\xF6rg\",\"0303\"\r\n";
const QByteArray contacts = R"([
    {"lastName": "Müller", "firstName": "Eva", "mobile": "0171", "birthday": "1970-03-2T12:30", "luid": "5"},
    {"lastName": "Zwei", "home": "030", "email": "z@b.de"}])";

/// A folder with saved lists, in which commands run.
struct Saved : Handset
{
    Saved()
    {
        file(u"p.prv"_s, providers);
        file(u"c.json"_s, contacts);
        file(u"entries.json"_s, R"([{"name": "Anna", "number": "1", "date": "24.12  08:30", "dateSound": "",
                                     "vip": true, "vipSound": ""}])");
        file(u"vorlage.html"_s, "<i>$Table.Title$</i><$Table.Content$>");
    }
    bool hasAskedThePhone() { return port.handset().phone().faults.commands > 0; }
};

} // namespace

class tst_ExportCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrongUse()
    {
        const Rows<QString, QString> rows = {
            {"ending", u"providers export a.txt"_s,
             u"could not export to a.txt: its name ends neither in .csv, .xlsx, .docx, .html, .htm nor in .vcf."_s},
            {"option of another kind", u"providers export a.xlsx --separator tab"_s,
             u"--separator means nothing for a file that ends in .xlsx."_s},
            {"replacement", u"providers export a.csv --separator comma-quoted --replace \""_s,
             u"--replace must not hold a character of the separator."_s},
            {"rows", u"providers export a.csv --rows 1-5,0"_s,
             u"--rows takes numbers and ranges such as 1-5,9, not \"0\"."_s},
            {"column", u"providers export a.csv --from p.prv --columns Name,Sound"_s,
             u"there is no column \"Sound\"; there are Name, Nummer."_s},
            {"template", u"providers export a.html --template fehlt.html"_s,
             u"there is no template HOME/fehlt.html."_s},
            {"template over itself", u"providers export vorlage.html --template ./vorlage.html"_s,
             u"the template HOME/vorlage.html can't be the file that is written."_s},
            {"no such list", u"phonebook export a.csv --from no.tel"_s, u"no.tel: there is no such file."_s},
            {"the other list", u"phonebook export a.csv --from p.prv"_s, QString()},
        };
        for (const auto& [line, error] : rows) {
            Saved run;
            QCOMPARE(run(line), ExitWrongUse);
            if (!error.isEmpty())
                QCOMPARE(run.told, u"kalmoctl: "_s + error + u'\n');
            QCOMPARE(run.printed, QString());
            QVERIFY(!QFileInfo::exists(run.test.path(u"a.csv"_s)) && !run.hasAskedThePhone());
        }
    }

    void savedLists()
    {
        const Rows<QString, QByteArray, QString> rows = {
            {"columns in the list's order, rows, separator",
             u"providers export a.csv --from p.prv --columns nummer,NAME --rows 3,1-1 --separator semicolon-quoted --empty-line"_s,
             "\"Name\";\"Nummer\"\r\n\r\n\"Anna, A\";\"0301\"\r\n\"J\xF6rg\";\"0303\"\r\n",
             u"{\"columns\":2,\"file\":\"HOME/a.csv\",\"rows\":2}"_s},
            {"no header means no empty line",
             u"providers export a.csv --from p.prv --columns Name --no-header --empty-line --replace -"_s,
             "Anna- A\r\nBert\r\nJ\xF6rg\r\n", u"{\"columns\":1,\"file\":\"HOME/a.csv\",\"rows\":3}"_s},
            {"a classic phonebook in .json", u"phonebook export a.csv --from entries.json --no-header"_s,
             "Anna,1,24.12  08:30,,Ja,\r\n", u"{\"columns\":6,\"file\":\"HOME/a.csv\",\"rows\":1}"_s},
        };
        for (const auto& [line, bytes, json] : rows) {
            Saved run;
            const ExitStatus status = run(u"--json "_s + line);
            QCOMPARE(run.told, QString());
            QCOMPARE(status, ExitDone);
            QCOMPARE(run.value(), json);
            QCOMPARE(run.test.contentOf(run.test.path(u"a.csv"_s)), bytes);
            QVERIFY(!run.hasAskedThePhone());
        }
        // Cards come back, and both office files are made.
        Saved run;
        run.file(u"l.json"_s, R"([{"lastName": "Łuć"}])");
        QCOMPARE(run(u"phonebook export a.csv --from l.json --columns Nachname --no-header"_s), ExitDone);
        QCOMPARE(run.told,
                 u"kalmoctl: Letters that such a file can't hold: 2. A \"?\" takes their place. Files "
                 u"that end in .xlsx, .docx or .vcf hold them.\n"_s);
        QCOMPARE(run.test.contentOf(run.test.path(u"a.csv"_s)), QByteArray("?u?\r\n"));
        QCOMPARE(run(u"phonebook export b.vcf --from c.json"_s), ExitDone);
        QCOMPARE(run(u"phonebook export b.csv --from b.vcf --no-header --columns"_s,
                     {u"Nachname,Vorname,Tel. Handy,Email"_s}),
                 ExitDone);
        QCOMPARE(run.printed, u"2 entries exported to HOME/b.csv.\n"_s);
        QCOMPARE(run.test.contentOf(run.test.path(u"b.csv"_s)),
                 QByteArray("M\xFCller,Eva,0171,\r\nZwei,,,z@b.de\r\n"));
        for (const QString& name : {u"b.xlsx"_s, u"b.docx"_s}) {
            QCOMPARE(run(u"phonebook export %1 --from c.json --fixed-width"_s.arg(name)), ExitDone);
            QVERIFY(run.test.contentOf(run.test.path(name)).startsWith("PK"));
        }
    }

    void olderFile()
    {
        Saved run;
        run.file(u"a.csv"_s, "old");
        const auto held = [&run] { return run.test.contentOf(run.test.path(u"a.csv"_s)); };
        const QString line = u"providers export a.csv --from p.prv --columns Name --no-header"_s;
        const QString question = u"HOME/a.csv is there already. Overwrite it?"_s;
        QCOMPARE(run(line), ExitRefused);
        QCOMPARE(run.told, u"kalmoctl: "_s + question +
                               u"\nNobody can answer here; run this on a terminal, or say --yes.\n"_s);
        run.answers = QStringList{u"n"_s};
        QCOMPARE(run(line), ExitRefused);
        QCOMPARE(held(), QByteArray("old"));
        run.file(u"leer.html"_s, "no place");
        run.file(u"a.html"_s, "old page");
        QCOMPARE(run(u"providers export a.html --from p.prv --force --template leer.html"_s), ExitFailed);
        QCOMPARE(run.told, u"kalmoctl: The template HOME/leer.html holds no <$Table.Content$>.\n"_s);
        QCOMPARE(run.test.contentOf(run.test.path(u"a.html"_s)), QByteArray("old page"));
        run.file(u"empty.json"_s, "[]");
        QCOMPARE(run(u"providers export a.csv --from empty.json --force"_s), ExitWrongUse);
        QCOMPARE(run.told, u"kalmoctl: the list holds no entries to export.\n"_s);
        QCOMPARE(held(), QByteArray("old"));
        run.answers = QStringList{u"y"_s};
        QCOMPARE(run(line), ExitDone);
        QCOMPARE(held(), QByteArray("Anna  A\r\nBert\r\nJ\xF6rg\r\n"));
        QCOMPARE(run(u"providers export no/a.csv --from p.prv"_s), ExitFailed);
        QCOMPARE(run.told, u"kalmoctl: could not write HOME/no/a.csv: there is no folder HOME/no.\n"_s);
    }

    void phonesOfBothKinds()
    {
        for (const QString& model : {u"PICASSO"_s, u"SL450HX"_s}) {
            Handset run({.model = model});
            QCOMPARE(run(u"phonebook read -o held.json"_s), ExitDone);
            QCOMPARE(run(u"phonebook export saved.csv --from held.json"_s), ExitDone);
            QCOMPARE(run(u"phonebook export phone.csv"_s), ExitDone);
            const QByteArray exported = run.test.contentOf(run.test.path(u"phone.csv"_s));
            QVERIFY(exported.count("\r\n") > 3);
            QCOMPARE(exported, run.test.contentOf(run.test.path(u"saved.csv"_s)));
            QCOMPARE(run(u"providers export p.csv"_s), model == u"PICASSO"_s ? ExitDone : ExitFailed);
        }
    }
};

KALMO_TEST(tst_ExportCommands)
#include "tst_ExportCommands.moc"
