// Imports at the command line into the emulated handset: what comes into the phone, what is refused, and the
// way back.

#include "Shell.h"
#include "support/TestProgram.h"

namespace {

const QByteArray twoCards = "BEGIN:VCARD\nN:Meier;Peter\nTEL;HOME:030 1\nTEL;WORK:+49 (0) 221\nEMAIL:a@b\n"
                            "BDAY:1970-03-21\nEND:VCARD\nBEGIN:VCARD\nORG:Firma\nTEL;CELL:0170\nEND:VCARD\n";

/// One import into an emulated handset.
struct Import
{
    QString line; ///< after "--json --quiet"; "FILE" is the file
    QByteArray file;
    ExitStatus status;
    QString facts;       ///< some values of the JSON, empty if there is none
    QStringList added;   ///< lines of the handset's memory that are new
    QString told;        ///< a part of the messages
    QStringList answers; ///< of the user; none without a terminal
};

struct Imports : Rows<Import>
{
    void add(const char* name, const QString& line, const QByteArray& file, ExitStatus status,
             const QString& facts, const QStringList& added = {}, const QString& told = {},
             const QStringList& answers = {})
    {
        Rows::add(name, {line, file, status, facts, added, told, answers});
    }
};

/// "imported=1 skipped=2": the values of those keys that are there.
QString factsOf(const QString& printed)
{
    const QJsonObject object = QJsonDocument::fromJson(printed.toUtf8()).object();
    QStringList facts;
    for (const QString& key : {u"imported"_s, u"skipped"_s, u"written"_s, u"verified"_s, u"state"_s,
                               u"existing"_s, u"checked"_s, u"add"_s}) {
        if (object.contains(key))
            facts.append(key + u'=' + object[key].toVariant().toString());
    }
    return facts.join(u' ');
}

QStringList without(QStringList lines, const QStringList& others)
{
    for (const QString& line : others)
        lines.removeOne(line);
    return lines;
}

void checkImports(const QString& model, const Imports& imports)
{
    imports.each([&model](const Import& import) {
        Handset handset({.model = model, .atOnce = true});
        if (!import.answers.isEmpty())
            handset.answers = import.answers;
        const QString path = handset.file(u"FILE"_s, import.file);
        const QStringList before = handset.memory();
        QCOMPARE(handset(u"--json --quiet "_s + import.line), import.status);
        QCOMPARE(factsOf(handset.printed), import.facts);
        QVERIFY2(handset.told.contains(import.told), qPrintable(handset.told));
        const QStringList after = handset.memory();
        QCOMPARE(without(after, before), import.added);
        QCOMPARE(without(before, after), QStringList());
        if (after == before)
            return;
        QCOMPARE(handset(u"--yes undo"_s), ExitDone);
        QCOMPARE(handset.memory(), before);
    });
}

} // namespace

class tst_ImportCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The phone gets the entries that were named, keeps those that it held, and an undo takes them back.
    void importsEntries()
    {
        const QByteArray classic = "Name;Nummer;Jahrestag\nMUTTER;052134567;\nNeu;0301;24.12. 08:30\n";
        const QByteArray longName = "Name;Nummer\nSiebzehn Zeichen.;2\nKurz;3\n";
        const QByteArray longNumber = "Name;Nummer\nA;" + QByteArray(33, '1') + "\nKurz;3\n";
        const QString neu =
            uR"(phonebook {"anniversary":"24.12. 08:30","name":"Neu","number":"0301","reminder":"S"})"_s;
        const QString cut = uR"(phonebook {"name":"Siebzehn Zeichen","number":"2"})"_s;
        const QString shorter = uR"(phonebook {"name":"Kurz","number":"3"})"_s;
        Imports rows;
        rows.add("entries; the heading and one that exists are left out", u"-y phonebook import FILE"_s,
                 classic, ExitDone, u"imported=1 skipped=2 written=26 verified=26 state=done"_s, {neu});
        rows.add("entries that exist, too", u"-y phonebook import FILE --all --skip-heading"_s, classic,
                 ExitDone, u"imported=2 skipped=0 written=27 verified=27 state=done"_s,
                 {uR"(phonebook {"name":"MUTTER","number":"052134567"})"_s, neu});
        rows.add("nothing new", u"-y phonebook import FILE"_s, classic.chopped(22), ExitDone,
                 u"imported=0 skipped=2 written=0 verified= state=unchanged"_s);
        rows.add("only what is too long", u"-y phonebook import FILE --skip-too-long"_s,
                 "Name;Nummer\nSiebzehn Zeichen.;2\n", ExitWrongUse, {}, {},
                 u"could not import FILE: its entries are too long."_s);
        rows.add("too long, and there already",
                 u"-y phonebook import FILE --existing-by-number --all --skip-too-long"_s,
                 "Name;Nummer\nMutter ist zu lang;052134567\nNeu;0301\n", ExitDone,
                 u"imported=1 skipped=2 written=26 verified=26 state=done"_s,
                 {uR"(phonebook {"name":"Neu","number":"0301"})"_s});
        rows.add("--yes shortens", u"-y phonebook import FILE"_s, longName, ExitDone,
                 u"imported=2 skipped=1 written=27 verified=27 state=done"_s, {cut, shorter});
        rows.add("the user does not want to shorten, after the preview in spite of --quiet",
                 u"phonebook import FILE"_s, longName, ExitRefused, {}, {},
                 u"2 of 3 to be imported, 0 exist already.\nA name is longer than 16 characters. Cut such "
                 "names? [y/N]"_s,
                 {u"n"_s});
        rows.add("the user shortens beforehand, and does not want to write",
                 u"phonebook import FILE --shorten"_s, longName, ExitRefused,
                 u"imported=0 skipped=1 written=0 verified= state=unchanged"_s, {},
                 u"nothing was changed in the phone."_s, {u"n"_s});
        rows.add("a number too long", u"-y phonebook import FILE"_s, longNumber, ExitWrongUse, {}, {},
                 u"kalmoctl: could not import FILE: a number is longer than 32 characters; --skip-too-long "
                 "leaves out what is too long.\n"_s);
        rows.add("providers, compared with the phonebook", u"-y providers import FILE"_s,
                 "Name;Nummer\nMutter;052134567\nNordruf;01031\n", ExitDone,
                 u"imported=1 skipped=2 written=6 verified=6 state=done"_s,
                 {uR"(providers {"name":"Nordruf","number":"01031"})"_s});
        checkImports(u"PICASSO"_s, rows);
    }

    void importsContacts()
    {
        const QByteArray contacts =
            "Nachname;Vorname;Tel. (Mobil)\nSiebzehn Zeichen.;A;2\nKurz;B;3\nOhne;C;\n";
        const QString cut = uR"(contact {"firstName":"A","lastName":"Siebzehn Zeichen","mobile":"2"})"_s;
        const QString contact = uR"(contact {"firstName":"B","lastName":"Kurz","mobile":"3"})"_s;
        Imports rows;
        rows.add("contacts, cut as warned", u"-y phonebook import FILE"_s, contacts, ExitDone,
                 u"imported=2 skipped=2 written=2 verified=2 state=done"_s, {cut, contact});
        rows.add("the user does not want them cut", u"phonebook import FILE"_s, contacts, ExitRefused, {}, {},
                 u"\"Siebzehn Zeichen.\" will be cut to 16 characters\nThe phone may cut or refuse this."_s,
                 {u"n"_s});
        rows.add("contacts too long left out", u"-y phonebook import FILE --skip-too-long"_s, contacts,
                 ExitDone, u"imported=1 skipped=3 written=1 verified=1 state=done"_s, {contact});
        rows.add("contacts in a dry run", u"phonebook import FILE --dry-run"_s, contacts, ExitDone,
                 u"existing=0 checked=2 add=2"_s);
        rows.add(
            "an address book; one exists", u"-y phonebook import FILE"_s,
            "BEGIN:VCARD\nN:M\xC3\xBCller;K\xC3\xA4the\nTEL;HOME:030901820\nEND:VCARD\n" + twoCards, ExitDone,
            u"imported=2 skipped=1 written=2 verified=2 state=done"_s,
            {uR"(contact {"birthday":"1970-03-21T10:00","email":"a@b","firstName":"Peter","home":"0301","lastName":"Meier","work":"+490221"})"_s,
             uR"(contact {"mobile":"0170"})"_s});
        rows.add("nobody is there to answer", u"phonebook import FILE"_s, contacts, ExitRefused, {}, {},
                 u"Import into the phonebook of the phone?"_s);
        checkImports(u"SL450HX"_s, rows);
    }

    void importsWithoutRoom()
    {
        Handset handset({.model = u"SL450HX"_s, .capacity = 26, .atOnce = true});
        handset.file(u"a.vcf"_s, twoCards);
        const QStringList before = handset.memory();
        for (const QString& line :
             {u"--yes phonebook import a.vcf"_s, u"phonebook import a.vcf --dry-run"_s}) {
            QCOMPARE(handset(line), ExitFailed);
            QVERIFY2(handset.told.contains(u"nothing was changed in it."_s), qPrintable(handset.told));
            QCOMPARE(handset.memory(), before);
        }
    }
};

KALMO_TEST(tst_ImportCommands)
#include "tst_ImportCommands.moc"
