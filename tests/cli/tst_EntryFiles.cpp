// Files of entries and of contacts: what is saved can be read again, and what is not understood is refused as
// a whole, since an entry that were overlooked would be erased in the phone.

#include "cli/ContactFiles.h"
#include "cli/EntryFiles.h"
#include "cli/EntryJson.h"
#include "cli/EntryWarnings.h"
#include "support/Rows.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::tests;
using namespace kalmo::cli;
using namespace kalmo::phonedata;

namespace {

const Entries both = {{.name = u"Jörg \"J\""_s,
                       .number = u"+49*1"_s,
                       .date = u"24.12  08:30"_s,
                       .dateSound = u"Melodie 3"_s,
                       .vip = u"Ja"_s,
                       .vipSound = u"Optisch"_s},
                      {.name = u"A,B"_s, .number = u"1"_s}};

/// The entries, or what was wrong.
QString inWords(bool understood, const Entries& entries, const QString& error)
{
    if (!understood)
        return error;
    QStringList lines;
    for (const ClassicEntry& entry : entries)
        lines.append(
            QStringList{entry.name, entry.number, entry.date, entry.dateSound, entry.vip, entry.vipSound}
                .join(u'|'));
    return lines.join(u"; "_s);
}

} // namespace

class tst_EntryFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines();
    void json();
    void everyFormBringsBackWhatWentIn();
    void files();
    void warnings();
    void contacts();
    void contactWarnings();
    void refusedContacts();
};

void tst_EntryFiles::lines()
{
    const auto form = u"expected \"name\",\"number\",\"date\",\"sound\",\"VIP\",\"sound\""_s;
    const Rows<Store, QByteArray, QString> rows{
        {"two of six fields, blank lines, other line ends", Store::Phonebook,
         "\"A\",\"1\"\n\n\"B\",\"2\",\"01.02  03:04\"\r\r\n", u"A|1||||; B|2|01.02  03:04|||"_s},
        {"quote never closed", Store::Phonebook, "\"A\",\"1\"\r\n\"B\",\"2\r\n", u"line 2: "_s + form},
        {"date", Store::Phonebook, "\"A\",\"1\",\"24.12. 8:30\"",
         u"line 1: the date is not of the form \"24.12  08:30\""_s},
        {"VIP", Store::Phonebook, "\"A\",\"1\",\"\",\"\",\"yes\"",
         u"line 1: VIP is neither \"Ja\" nor empty"_s},
        {"what a phone may have given, though it would not take it", Store::Phonebook,
         "\"A\x1b[2J\",\"1\",\"x1.y2  FF:??\"\n\"B\",\"2\",\"24.12  0:\"",
         u"A\x1b[2J|1|x1.y2  FF:??|||; B|2|24.12  0:|||"_s},
        {"UTF-8", Store::Phonebook, "\"J\xc3\xb6rg\",\"1\"",
         u"the text is UTF-8, but such files are Windows-1252; use a .json file"_s},
        {"nothing in it", Store::Phonebook, "\r\n",
         u"there is no entry in it; to erase the list, write a .json file that holds []"_s},
    };
    for (const auto& [store, bytes, outcome] : rows) {
        Entries entries = both;
        QString error;
        const bool understood = readEntryLines(bytes, store, entries, error);
        QCOMPARE(inWords(understood, entries, error), outcome);
    }
}

void tst_EntryFiles::json()
{
    const Rows<Store, QByteArray, QString> rows{
        {"name and number are enough", Store::Phonebook, R"([{"number":"1","name":"Ł"}])", u"Ł|1||||"_s},
        {"all", Store::Phonebook,
         QByteArray(R"([{"name":"A","number":"1","date":"01.02  03:04","dateSound":"Optisch",)"
                    R"("vip":true,"vipSound":"x"}])"),
         u"A|1|01.02  03:04|Optisch|Ja|x"_s},
        {"cut off", Store::Phonebook, "[\n {\"name\":\"A\",\n",
         u"line 3: this is no JSON: unterminated object"_s},
        {"deep", Store::Phonebook, QByteArray(100000, '['),
         u"line 1: this is no JSON: too deeply nested document"_s},
        {"no number", Store::Phonebook, R"([{"name":"A"}])",
         u"entry 1: \"name\" and \"number\" must be there"_s},
        {"mistyped key", Store::Phonebook, R"([{"name":"A","number":"1","vipsound":""}])",
         u"entry 1: unknown key \"vipsound\""_s},
        {"VIP as a text", Store::Phonebook, R"([{"name":"A","number":"1","vip":"Ja"}])",
         u"entry 1: \"vip\" must be true or false"_s},
        {"providers have no date", Store::Providers, R"([{"name":"A","number":"1","date":""}])",
         u"entry 1: unknown key \"date\""_s},
        {"line end that would end the command", Store::Phonebook,
         R"([{"name":"A\rAT^WSEL=\"TB\"\r","number":"1"}])",
         u"entry 1: there is a line end that can't be sent to a phone"_s},
    };
    for (const auto& [store, bytes, outcome] : rows) {
        Entries entries = both;
        QString error;
        const bool understood = readEntryJson(bytes, store, entries, error);
        QCOMPARE(inWords(understood, entries, error), outcome);
    }
}

void tst_EntryFiles::everyFormBringsBackWhatWentIn()
{
    const Rows<Store, QString> rows{
        {".tel", Store::Phonebook, u"x.TEL"_s},
        {".json", Store::Phonebook, u"x.json"_s},
        {".prv", Store::Providers, u"x.prv"_s},
    };
    for (const auto& [store, name] : rows) {
        QTemporaryDir folder;
        const QString path = folder.filePath(name);
        Entries wanted = both;
        if (store == Store::Providers)
            wanted = {{.name = both[0].name, .number = both[0].number}, both[1]};
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(entryFileBytes(path, wanted, store)) > 0);
        file.close();
        Entries entries;
        QString error;
        QVERIFY2(readEntryFile(path, store, entries, error), qPrintable(error));
        QCOMPARE(entries, wanted);
    }
}

void tst_EntryFiles::files()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"folder.tel"_s));
    QFile large(folder.filePath(u"large.json"_s));
    QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(17 * 1024 * 1024));
    QStringList errors;
    for (const QString& name : {u"x.prv"_s, u"x.csv"_s, u"missing.tel"_s, u"folder.tel"_s, u"large.json"_s}) {
        Entries entries;
        QString error;
        QVERIFY(!readEntryFile(folder.filePath(name), Store::Phonebook, entries, error));
        errors.append(error.remove(folder.path() + u'/'));
    }
    QCOMPARE(
        errors,
        (QStringList{u"x.prv ends neither in .tel nor in .json"_s,
                     u"x.csv ends neither in .tel nor in .json"_s, u"missing.tel: there is no such file"_s,
                     u"folder.tel: it is no regular file"_s, u"large.json: it is larger than 16 MB"_s}));
}

void tst_EntryFiles::warnings()
{
    const ClassicEntry fine = both[0];
    const auto with = [&](auto change) {
        ClassicEntry entry = fine;
        change(entry);
        return Entries{entry};
    };
    Rows<int, Entries, QStringList> rows;
    rows.add("too long", 2,
             with([](ClassicEntry& e) { e.name = QString(17, u'x'), e.number = QString(33, u'1'); }),
             {u"the name has 17 characters, the phone holds 16"_s,
              u"the number has 33 characters, the phone holds 32"_s});
    rows.add("characters", 2, with([](ClassicEntry& e) { e.name = u"A\aŁ"_s, e.number = u"1+2"_s; }),
             {u"the phone can't hold \"?\" in a name"_s, u"the phone can't hold \"+\" in a number"_s});
    rows.add("sounds", 2, with([](ClassicEntry& e) { e.dateSound = u"Tango"_s, e.vipSound = u"Polka"_s; }),
             {u"the phone has no melody \"Tango\" for the reminder"_s,
              u"the phone has no melody \"Polka\" for the VIP call"_s});
    rows.add("no such day", 2, with([](ClassicEntry& e) { e.date = u"31.02  08:30"_s; }),
             {u"\"31.02  08:30\" is no day and time"_s});
    rows.add("oldest family", 1, {fine}, {u"this phone marks no VIP entries"_s});

    for (const auto& [phoneType, entries, warnings] : rows) {
        QCOMPARE(warningsAbout(entries.front(), Store::Phonebook, phoneType, {}), warnings);
    }
}

void tst_EntryFiles::contacts()
{
    const Contacts saved = {{.email = u"a@b.de"_s,
                             .lastName = u"Groß \"X\", B."_s,
                             .work = u"+49*1"_s,
                             .firstName = u"Zoë"_s,
                             .birthday = u"1970-03-21T12:30"_s,
                             .luid = u"0001"_s},
                            {.home = u"2\u0081\t"_s, .birthday = u"1970-03-21"_s, .luid = u"0002"_s},
                            {.luid = u"0003"_s}};
    Contacts read;
    QString error;
    QVERIFY(readContactJson(contactFileBytes(u"x.JSON"_s, saved), read, error));
    QCOMPARE(read, saved);
    QVERIFY(readContactCsv(contactFileBytes(u"x.csv"_s, saved), read, error));
    read[0].luid = saved[0].luid; // which that form does not have
    read[1].luid = saved[1].luid;
    read[2].luid = saved[2].luid;
    QCOMPARE(read, saved);
    QVERIFY(!holdsNothing(read[1]) && holdsNothing(read[2]));
    const Contacts moved = {{.home = u"2"_s, .birthday = u"1970-03-1T12:30:05"_s}};
    QVERIFY(readContactCsv(contactFileBytes(u"x.csv"_s, moved), read, error));
    QCOMPARE(read[0].birthday, u"1970-03-01T12:30:05"_s);
    QCOMPARE(contactFileBytes(u"x.vcf"_s, {{.email = u"ä@b.de"_s,
                                            .lastName = u"Café – Bar €"_s,
                                            .home = u"1"_s,
                                            .firstName = u"A=3B;ä"_s}}),
             "BEGIN:VCARD\r\nVERSION:2.1\r\nN;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:"
             "Caf=C3=A9 =E2=80=93 Bar =E2=82=AC=\r\n;A=3D3B\\;=C3=A4\r\n"
             "EMAIL;INTERNET;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C3=A4@b.de\r\nTEL;HOME:1\r\n"
             "END:VCARD\r\n\r\n");
}

void tst_EntryFiles::contactWarnings()
{
    const QString noBirthday = u"\"%1\" is no birthday of the form 1970-03-21T12:30"_s;
    const QString endangered = u"the phone may give back \"%1\" as something else"_s;
    const Rows<tVcfEntry, QStringList> rows{
        {"fine", {.lastName = u"Groß \\x"_s, .birthday = u"1972-02-29T23:59:59"_s}, {}},
        {"as phones say none", {.birthday = u"0000-00-00"_s}, {}},
        {"too long",
         {.lastName = u"%2"_s.repeated(9)},
         {u"\"%1\" is longer than 16 characters"_s.arg(u"%2"_s.repeated(9))}},
        {"no number", {.work = u"0 1"_s}, {u"\"0 1\" is more than digits, #, *, + and ?"_s}},
        {"no birthday", {.birthday = u"tomorrow"_s}, {noBirthday.arg(u"tomorrow"_s)}},
        {"no such day", {.birthday = u"1970-13-41"_s}, {noBirthday.arg(u"1970-13-41"_s)}},
        {"no such time", {.birthday = u"1970-03-1T24:00"_s}, {noBirthday.arg(u"1970-03-1T24:00"_s)}},
        {"signs", {.lastName = u"Š\\"_s, .firstName = u"ß€"_s}, {endangered.arg(u"Š€\\"_s)}},
        {"a code", {.email = u"€=@b.de\\"_s, .firstName = u"b\\"_s}, {endangered.arg(u"="_s)}},
        {"letters", {.firstName = u"ŁÃ"_s}, {endangered.arg(u"ŁÃ"_s)}},
    };
    for (auto [contact, warnings] : rows) {
        contact.home = u"1"_s;
        QCOMPARE(warningsAbout(contact), warnings);
    }
}

void tst_EntryFiles::refusedContacts()
{
    const Rows<QByteArray, QString> rows{
        {"key", R"([{"home": "1"}, {"Home": "1"}])", u"contact 2: unknown key \"Home\""_s},
        {"no text", R"([{"home": 1}])", u"contact 1: \"home\" must be a text"_s},
        {"a line end", R"({"home": "1\nTEL:2"})", u"contact 1: there is a line end or a NUL in \"home\""_s},
        {"foreign letters", R"({"lastName": "Łukasz"})",
         u"contact 1: there is a letter in \"lastName\" that no phone has"_s},
        {"a field too few", R"("A","","1","","","")",
         u"line 1: expected seven fields: last name, first name, home, mobile, work, e-mail, birthday"_s},
        {"birthday", R"("A","","1","","","","1970-03-21")",
         u"line 1: the birthday is not of the form \"21.03.1970  12:30\""_s},
    };
    for (const auto& [bytes, wanted] : rows) {
        Contacts read;
        QString error;
        QVERIFY(!(bytes.startsWith('"') ? readContactCsv : readContactJson)(bytes, read, error));
        QCOMPARE(error, wanted);
    }
}

QTEST_GUILESS_MAIN(tst_EntryFiles)
#include "tst_EntryFiles.moc"
