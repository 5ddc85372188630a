// Files of entries and of contacts: what is saved can be read again, and what is not understood is refused as
// a whole, since an entry that were overlooked would be erased in the phone.

#include "cli/ContactWords.h"
#include "cli/EntryWarnings.h"
#include "cli/SavedListWords.h"
#include "cli/Tables.h"
#include "operations/ContactFields.h"
#include "support/TestProgram.h"

using namespace kalmo::cli;
using namespace kalmo::operations;
using namespace kalmo::phonedata;

namespace {

const Entries both = {{.name = u"Jörg \"J\""_s,
                       .number = u"+49*1"_s,
                       .date = u"24.12  08:30"_s,
                       .dateSound = u"Melodie 3"_s,
                       .vip = u"Ja"_s,
                       .vipSound = u"Optisch"_s},
                      {.name = u"A,B"_s, .number = u"1"_s}};

/// Reads the bytes of a file that is called "x" and the ending.
std::optional<SavedList> readBytes(const QString& ending, SavedKind kind, const QByteArray& bytes,
                                   QString& error)
{
    SavedList list{.kind = kind};
    SavedListFault fault;
    if (findFormat(ending, kind)->read(bytes, {}, list, fault))
        return list;
    error = inWords(fault, u"x"_s, kind);
    return {};
}

/// The entries, or the reason for a refusal.
QString readInWords(const QString& ending, SavedKind kind, const QByteArray& bytes)
{
    QString error;
    const auto list = readBytes(ending, kind, bytes, error);
    if (!list)
        return error;
    QStringList lines;
    for (const ClassicEntry& entry : list->entries)
        lines.append(
            QStringList{entry.name, entry.number, entry.date, entry.dateSound, entry.vip, entry.vipSound}
                .join(u'|'));
    return lines.join(u"; "_s);
}

} // namespace

class tst_SavedLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines();
    void json();
    void everyFormatBringsBackWhatWentIn();
    void files();
    void warnings();
    void contacts();
    void contactWarnings();
    void refusedContacts();
};

void tst_SavedLists::lines()
{
    const auto form = u"expected \"name\",\"number\",\"date\",\"sound\",\"VIP\",\"sound\""_s;
    const Rows<QByteArray, QString> rows{
        {"two of six fields, blank lines, other line ends",
         "\"A\",\"1\"\n\n\"B\",\"2\",\"01.02  03:04\"\r\r\n", u"A|1||||; B|2|01.02  03:04|||"_s},
        {"date", "\"A\",\"1\",\"24.12. 8:30\"", u"x: line 1: the date is not of the form \"24.12  08:30\""_s},
        {"VIP", "\"A\",\"1\",\"\",\"\",\"yes\"", u"x: line 1: VIP is neither \"Ja\" nor empty"_s},
        {"what a phone may have given, though it would not take it",
         "\"A\x1b[2J\",\"1\",\"x1.y2  FF:??\"\n\"B\",\"2\",\"24.12  0:\"",
         u"A\x1b[2J|1|x1.y2  FF:??|||; B|2|24.12  0:|||"_s},
        {"UTF-8", "\"J\xc3\xb6rg\",\"1\"",
         u"x: the text is UTF-8, but such files are Windows-1252; use a .json file"_s},
        {"nothing in it", "\r\n",
         u"x: there is no entry in it; to erase the list, write a .json file that holds []"_s},
    };
    rows.each([&](const auto& bytes, const auto& outcome) {
        QCOMPARE(readInWords(u".tel"_s, SavedKind::Phonebook, bytes), outcome);
    });
}

void tst_SavedLists::json()
{
    const Rows<SavedKind, QByteArray, QString> rows{
        {"name and number are enough", SavedKind::Phonebook, R"([{"number":"1","name":"Ł"}])", u"Ł|1||||"_s},
        {"cut off", SavedKind::Phonebook, "[\n {\"name\":\"A\",\n",
         u"x: line 3: this is no JSON: unterminated object"_s},
        {"no number", SavedKind::Phonebook, R"([{"name":"A"}])",
         u"x: entry 1: \"name\" and \"number\" must be there"_s},
        {"mistyped key", SavedKind::Phonebook, R"([{"name":"A","number":"1","vipsound":""}])",
         u"x: entry 1: unknown key \"vipsound\""_s},
        {"providers have no date", SavedKind::Providers, R"([{"name":"A","number":"1","date":""}])",
         u"x: entry 1: unknown key \"date\""_s},
        {"line end that would end the command", SavedKind::Phonebook,
         R"([{"name":"A\rAT^WSEL=\"TB\"\r","number":"1"}])",
         u"x: entry 1: there is a line end that can't be sent to a phone"_s},
    };
    rows.each([&](const auto& kind, const auto& bytes, const auto& outcome) {
        QCOMPARE(readInWords(u".json"_s, kind, bytes), outcome);
    });
}

/// Each row of the table of formats: the bytes come back, and the ending is found in any case.
void tst_SavedLists::everyFormatBringsBackWhatWentIn()
{
    const Contacts people = {{.email = u"a@b.de"_s,
                              .lastName = u"Groß \"X\", B."_s,
                              .work = u"+49*1"_s,
                              .firstName = u"Zoë"_s,
                              .birthday = u"1970-03-21T12:30"_s,
                              .luid = u"0001"_s},
                             {.home = u"2\u0081\t"_s, .birthday = u"1970-03-21"_s, .luid = u"0002"_s},
                             {.luid = u"0003"_s}};
    Entries pairs = both;
    pairs[0] = {.name = both[0].name, .number = both[0].number};
    QTemporaryDir folder;
    std::vector<const SavedListFormat*> formats;
    for (const SavedKind kind : {SavedKind::Phonebook, SavedKind::Providers, SavedKind::Contacts}) {
        for (const QString& ending : operations::endingsFor(kind))
            formats.push_back(findFormat(u"x"_s + ending.toUpper(), kind));
    }
    QCOMPARE(formats.size(), 7u);
    for (const SavedListFormat* found : formats) {
        QVERIFY(found);
        const SavedListFormat& format = *found;
        const QString name = u"x"_s + format.ending.toString().toUpper();
        SavedList list{.kind = format.kind};
        (format.kind == SavedKind::Contacts
             ? void(list.contacts = people)
             : void(list.entries = format.kind == SavedKind::Phonebook ? both : pairs));
        QVERIFY(bringsBack(name, list));
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(savedListBytes(name, list)) > 0);
        file.close();
        SavedListFault fault;
        const auto read = readSavedList(file.fileName(), format.kind, {}, fault);
        QVERIFY2(read, qPrintable(inWords(fault, name, format.kind)));
        if (!format.keepsLuids)
            for (tVcfEntry& contact : list.contacts)
                contact.luid.clear();
        QCOMPARE(*read, list);
    }
    QVERIFY(!bringsBack(u"x.tel"_s, {.entries = {{.name = u"Ł"_s, .number = u"1"_s}}}));
    QVERIFY(!bringsBack(u"x.prv"_s, {.entries = both}));
}

void tst_SavedLists::files()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"folder.tel"_s));
    QFile large(folder.filePath(u"large.json"_s));
    QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(17 * 1024 * 1024));
    QStringList errors;
    for (const QString& name : {u"x.prv"_s, u"x.csv"_s, u"missing.tel"_s, u"folder.tel"_s, u"large.json"_s}) {
        SavedListFault fault;
        QVERIFY(!readSavedList(folder.filePath(name), SavedKind::Phonebook, {}, fault));
        errors.append(inWords(fault, name, SavedKind::Phonebook));
    }
    QCOMPARE(
        errors,
        (QStringList{u"x.prv ends neither in .tel nor in .json"_s,
                     u"x.csv ends neither in .tel nor in .json"_s, u"missing.tel: there is no such file"_s,
                     u"folder.tel: it is no regular file"_s, u"large.json: it is larger than 16 MB"_s}));
}

void tst_SavedLists::warnings()
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

    rows.each([&](const auto& phoneType, const auto& entries, const auto& warnings) {
        ListPlan plan;
        plan.given = entries;
        plan.objections = objectionsTo(entries, entries, Store::Phonebook, phoneType, {});
        QString wanted;
        for (const QString& warning : warnings)
            wanted += u"Warning: entry 1 (%1): %2.\n"_s.arg(printable(entries.front().name), warning);
        QCOMPARE(warningLines(plan), wanted);
    });
}

void tst_SavedLists::contacts()
{
    const auto contacts = [](const Contacts& people) {
        return SavedList{.kind = SavedKind::Contacts, .contacts = people};
    };
    QVERIFY(!holdsNothing({.home = u"2"_s}) && holdsNothing({.luid = u"1"_s}));
    QCOMPARE(savedListBytes(u"x.vcf"_s, contacts({{.email = u"ä@b.de"_s,
                                                   .lastName = u"Café – Bar €"_s,
                                                   .home = u"1"_s,
                                                   .firstName = u"A=3B;ä"_s}})),
             "BEGIN:VCARD\r\nVERSION:2.1\r\nN;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:"
             "Caf=C3=A9 =E2=80=93 Bar =E2=82=AC=\r\n;A=3D3B\\;=C3=A4\r\n"
             "EMAIL;INTERNET;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C3=A4@b.de\r\nTEL;HOME:1\r\n"
             "END:VCARD\r\n\r\n");
}

void tst_SavedLists::contactWarnings()
{
    const QString noBirthday = u"\"%1\" is no birthday of the form 1970-03-21T12:30"_s;
    const QString endangered = u"the phone may give back \"%1\" as something else"_s;
    const Rows<tVcfEntry, QStringList> rows{
        {"fine", {.lastName = u"Groß \\x"_s, .birthday = u"1972-02-29T23:59:59"_s}, {}},
        {"too long",
         {.lastName = u"%2"_s.repeated(9)},
         {u"\"%1\" is longer than 16 characters"_s.arg(u"%2"_s.repeated(9))}},
        {"no number", {.work = u"0 1"_s}, {u"\"0 1\" is more than digits, #, *, + and ?"_s}},
        {"no birthday", {.birthday = u"tomorrow"_s}, {noBirthday.arg(u"tomorrow"_s)}},
        {"no such day", {.birthday = u"1970-13-41"_s}, {noBirthday.arg(u"1970-13-41"_s)}},
        {"signs", {.lastName = u"Š\\"_s, .firstName = u"ß€"_s}, {endangered.arg(u"Š€\\"_s)}},
        {"a code", {.email = u"€=@b.de\\"_s, .firstName = u"b\\"_s}, {endangered.arg(u"="_s)}},
        {"letters, which go as UTF-8", {.firstName = u"ŁÃ"_s}, {}},
    };
    rows.each([&](auto contact, const auto& warnings) {
        contact.home = u"1"_s;
        QCOMPARE(warningsAbout(contact), warnings);
    });
}

void tst_SavedLists::refusedContacts()
{
    const Rows<QByteArray, QString> rows{
        {"key", R"([{"home": "1"}, {"Home": "1"}])", u"x: contact 2: unknown key \"Home\""_s},
        {"a line end", R"({"home": "1\nTEL:2"})",
         u"x: contact 1: there is a line end or a NUL in \"home\""_s},
        {"foreign letters", R"({"home": "Ł1"})",
         u"x: contact 1: there is a letter in \"home\" that no phone has"_s},
        {"a field too few", R"("A","","1","","","")",
         u"x: line 1: expected seven fields: last name, first name, home, mobile, work, e-mail, birthday"_s},
        {"birthday", R"("A","","1","","","","1970-03-21")",
         u"x: line 1: the birthday is not of the form \"21.03.1970  12:30\""_s},
    };
    rows.each([&](const auto& bytes, const auto& wanted) {
        QString error;
        QVERIFY(
            !readBytes(bytes.startsWith('"') ? u".csv"_s : u".json"_s, SavedKind::Contacts, bytes, error));
        QCOMPARE(error, wanted);
    });
}

KALMO_TEST(tst_SavedLists)
#include "tst_SavedLists.moc"
