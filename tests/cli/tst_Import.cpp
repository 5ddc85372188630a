// Previews at the command line: the rows that are printed, and options and files that are refused.

#include "Shell.h"
#include "support/AddressBooks.h"
#include "support/TestProgram.h"

namespace {

const QByteArray cards =
    "BEGIN:VCARD\nN:Meier;Peter\nTEL;HOME:030 1\nTEL;WORK:+49 (0) 221\nEMAIL:a@b\nEMAIL:c@d\n"
    "BDAY:1970-03-21\nEND:VCARD\nBEGIN:VCARD\nORG:Firma\nTEL;CELL:0170\nEND:VCARD\n";
const QByteArray table = "Name;Nummer;Wann\nMeier, Peter;+49 30;24.12. 08:30\nSiebzehn Zeichen.;2;\n;3;\n";

/// Checked rows of the JSON, cells parted by "|".
QString rowsOf(const QString& printed, const QStringList& keys)
{
    QStringList lines;
    const QJsonArray rows = QJsonDocument::fromJson(printed.toUtf8()).object()[u"rows"].toArray();
    for (const QJsonValue& row : rows) {
        QStringList cells{row[u"checked"].toBool() ? u"x"_s : u"-"_s};
        for (const QString& key : keys)
            cells.append(row[key].toString());
        lines.append(cells.join(u'|'));
    }
    return lines.join(u'\n');
}

/// Runs a preview of these bytes, which the messages call "FILE". `words` are the kind of list and options.
ExitStatus preview(Shell& shell, const QByteArray& bytes, const QStringList& words)
{
    const QString path = shell.file(u"source"_s, bytes);
    QStringList line{u"preview"_s, path, u"--json"_s, u"--quiet"_s};
    if (!words.isEmpty())
        line << u"--for"_s << words;
    const ExitStatus status = shell.CommandRunner::run(shell.port, line);
    shell.told.replace(path, u"FILE"_s);
    return status;
}

} // namespace

class tst_Import : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void previews()
    {
        Rows<QStringList, QByteArray, QString> rows;
        rows.add("text", {u"classic"_s}, table,
                 u"-|Name||\nx|Meier, Peter|030|\nx|Siebzehn Zeichen.|2|\n-||3|"_s);
        rows.add("columns, one by position",
                 {u"classic"_s, u"--name"_s, u"#2"_s, u"--number"_s, u"-"_s, u"--birthday=WANN"_s}, table,
                 u"-|Nummer||\n-|+49 30||24.12  08:30\n-|2||\n-|3||"_s);
        rows.add("too long left out",
                 {u"classic"_s, u"--skip-too-long"_s, u"--keep-country"_s, u"--outside-line"_s, u"9"_s},
                 table, u"-|Name||\nx|Meier, Peter|9+4930|\n-|Siebzehn Zeichen.|92|\n-||93|"_s);
        rows.add("quote that is empty", {u"classic"_s, u"--quote"_s, u""_s, u"--separator"_s, u"comma"_s},
                 "Name,Nummer\n\"A\",1\n", u"-|Name||\nx|\"A\"|1|"_s);
        rows.add("read as CSV by its own quote", {u"classic"_s, u"--quote"_s, u"'"_s},
                 "Name,Nummer\n'A, B',1\n", u"-|Name||\nx|A, B|1|"_s);
        rows.add("ANSI all the same", {u"classic"_s, u"--encoding=ansi"_s}, "Name;Nummer\nM\xC3\xBCller;1\n",
                 u"-|Name||\nx|Mller|1|"_s);
        rows.add("month first", {u"classic"_s, u"--birthday"_s, u"#1"_s, u"--dates"_s, u"month-first"_s},
                 "Nummer;x\n5/4/2001;1\n", u"-|||\n-||542001|04.05  00:00"_s);
        rows.add("entries to measure",
                 {u"classic"_s, u"--numbers"_s, u"work,mobile"_s, u"--compose"_s,
                  u"work={Vorname:3}-{nachname} X"_s, u"--compose=mobile={Firma}"_s, u"--time"_s, u"08:15"_s,
                  u"--drop-zero"_s},
                 cards, u"x|Pet-Meier X|0221|21.03  08:15\nx|Firma|0170|"_s);
        rows.add("contacts to measure",
                 {u"vcard"_s, u"--last-name"_s, u"firma"_s, u"--first-name"_s, u"-"_s, u"--home"_s, u"work"_s,
                  u"--work=-"_s, u"--email"_s, u"2"_s, u"--birthday"_s, u"-"_s, u"--drop-zero"_s},
                 cards, u"x|||+49221|||c@d|\nx|Firma|||0170|||"_s);
        rows.each([](const auto& words, const auto& file, const auto& expected) {
            Shell shell;
            QCOMPARE(preview(shell, file, words), ExitDone);
            const QStringList keys =
                words.value(0) == u"classic"
                    ? QStringList{u"name"_s, u"number"_s, u"birthday"_s}
                    : QStringList{u"lastName"_s, u"firstName"_s, u"home"_s,    u"mobile"_s,
                                  u"work"_s,     u"email"_s,     u"birthday"_s};
            QCOMPARE(rowsOf(shell.printed, keys) + shell.told, expected);
        });
    }

    void refused()
    {
        Rows<QStringList, QByteArray, QString> rows;
        rows.add("no --for", {}, table, u"\"preview\" needs --for classic or --for vcard."_s);
        rows.add("option of the other form", {u"classic"_s, u"--home"_s, u"x"_s}, table,
                 u"--home is for vCard phonebooks only."_s);
        rows.add("option of another source", {u"vcard"_s, u"--separator"_s, u"tab"_s}, cards,
                 u"--separator is for text files only."_s);
        rows.add("time that is none", {u"classic"_s, u"--time"_s, u"24:00"_s}, table,
                 u"\"24:00\" is no value for --time: it must be a time like 08:30."_s);
        rows.add("country that is none", {u"classic"_s, u"--country"_s, u"49"_s}, table,
                 u"\"49\" is no value for --country: it must be a \"+\" and up to three digits."_s);
        rows.add(
            "name that can't be composed", {u"classic"_s, u"--compose"_s, u"home={Ort:3}"_s}, cards,
            u"\"home={Ort:3}\" is no value for --compose: it must be one or two fields like {Nachname:15}, "
            u"with at most 10 characters behind each."_s);
        rows.add("no text", {u"classic"_s}, QByteArray("PK\3\4\0", 5),
                 u"could not import FILE: it is no text file; if it is UTF-16, say --encoding utf-16."_s);
        rows.each([](const auto& words, const auto& file, const auto& expected) {
            Shell shell;
            QCOMPARE(preview(shell, file, words), ExitWrongUse);
            QCOMPARE(shell.told, u"kalmoctl: "_s + expected + u'\n');
        });
    }

    void wholeValue()
    {
        Shell shell;
        const QString path = shell.file(u"a.csv"_s, "Name;Nummer;Jahrestag\nGarc\xED\x61;1;\n");
        const QString held = shell.file(u"held.json"_s, R"([{"name":"GARCA","number":"1"}])");
        QCOMPARE(shell.CommandRunner::run(
                     shell.port, {u"preview"_s, path, u"--for=classic"_s, u"--against"_s, held, u"--json"_s}),
                 ExitDone);
        QCOMPARE(
            shell.value(),
            uR"({"checked":0,"columns":["Name","Nummer","Jahrestag"],"encoding":"ansi","existing":1,)"
            uR"("fields":{"birthday":"Jahrestag","name":"Name","number":"Nummer"},)"
            uR"("hints":[{"count":1,"example":"García → Garca","kind":"letters","option":"--base-letters"}],)"
            uR"("quote":"","reading":"simple","rows":[)"
            uR"({"birthday":"","checked":false,"exists":false,"name":"Name","number":"","red":["name"]},)"
            uR"({"birthday":"","checked":false,"exists":true,"name":"Garca","number":"1","red":[]}],)"
            uR"("separator":"semicolon"})"_s);
        QCOMPARE(shell.told,
                 u"warning: names lose letters that the phone lacks (1, such as García → Garca); see "
                 u"--base-letters.\n"_s);
    }

    void asTable()
    {
        Shell shell;
        const QString path = shell.file(u"a.csv"_s, "Name;Nummer\nSiebzehn Zeichen.;1\nB;1\n");
        const QString held = shell.file(u"held.json"_s, R"([{"name":"b","number":"1"}])");
        QCOMPARE(shell.CommandRunner::run(
                     shell.port, {u"preview"_s, path, u"--for=classic"_s, u"--against"_s, held, u"--all"_s}),
                 ExitDone);
        QCOMPARE(shell.printed, u"   Name               Number  Birthday  Remark\n"
                                u"-  Name                                 name or number missing\n"
                                u"x  Siebzehn Zeichen.  1                 too long: name\n"
                                u"x  B                  1                 exists already\n"
                                u"2 of 3 to be imported, 1 exist already.\n"_s);
    }
};

KALMO_TEST(tst_Import)
#include "tst_Import.moc"
