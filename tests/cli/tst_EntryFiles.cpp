// Files of entries: an entry that were overlooked would be erased in the phone, so what is not understood is
// refused.

#include "cli/EntryFiles.h"
#include "cli/EntryJson.h"
#include "cli/EntryWarnings.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
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
    void lines_data();
    void lines();
    void json_data();
    void json();
    void everyFormBringsBackWhatWentIn_data();
    void everyFormBringsBackWhatWentIn();
    void files();
    void warnings_data();
    void warnings();
    void fewOfManyWarnings();
};

void tst_EntryFiles::lines_data()
{
    QTest::addColumn<Store>("store");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("outcome");
    const auto form = u"expected \"name\",\"number\",\"date\",\"sound\",\"VIP\",\"sound\""_s;

    QTest::newRow("two of six fields, blank lines, other line ends")
        << Store::Phonebook << QByteArray("\"A\",\"1\"\n\n\"B\",\"2\",\"01.02  03:04\"\r\r\n")
        << u"A|1||||; B|2|01.02  03:04|||"_s;
    QTest::newRow("providers") << Store::Providers << QByteArray("\"A\",\"1\"\r\n") << u"A|1||||"_s;
    QTest::newRow("providers have two fields") << Store::Providers << QByteArray("\"A\",\"1\",\"\"\r\n")
                                               << u"line 1: expected \"name\",\"number\""_s;
    QTest::newRow("quote never closed")
        << Store::Phonebook << QByteArray("\"A\",\"1\"\r\n\"B\",\"2\r\n") << u"line 2: "_s + form;
    QTest::newRow("no quotes") << Store::Phonebook << QByteArray("A,1\r\n") << u"line 1: "_s + form;
    QTest::newRow("one field") << Store::Phonebook << QByteArray("\"A\"\r\n") << u"line 1: "_s + form;
    QTest::newRow("a quote alone") << Store::Phonebook << QByteArray("\"") << u"line 1: "_s + form;
    QTest::newRow("seven fields") << Store::Phonebook << QByteArray("\"A\",\"1\",\"\",\"\",\"\",\"\",\"\"")
                                  << u"line 1: "_s + form;
    QTest::newRow("date") << Store::Phonebook << QByteArray("\"A\",\"1\",\"24.12. 8:30\"")
                          << u"line 1: the date is not of the form \"24.12  08:30\""_s;
    QTest::newRow("VIP") << Store::Phonebook << QByteArray("\"A\",\"1\",\"\",\"\",\"yes\"")
                         << u"line 1: VIP is neither \"Ja\" nor empty"_s;
    QTest::newRow("escape character")
        << Store::Phonebook << QByteArray("\"A\x1b[2J\",\"1\"")
        << u"line 1: there is a control character that can't be sent to a phone"_s;
    QTest::newRow("null byte") << Store::Phonebook << QByteArray("\"A\",\"1\0\"", 8)
                               << u"line 1: there is a control character that can't be sent to a phone"_s;
    QTest::newRow("UTF-8") << Store::Phonebook << QByteArray("\"J\xc3\xb6rg\",\"1\"")
                           << u"the text is UTF-8, but such files are Windows-1252; use a .json file"_s;
    QTest::newRow("nothing in it")
        << Store::Phonebook << QByteArray("\r\n")
        << u"there is no entry in it; to erase the list, write a .json file that holds []"_s;
}

void tst_EntryFiles::lines()
{
    QFETCH(Store, store);
    QFETCH(QByteArray, bytes);
    Entries entries = both;
    QString error;
    const bool understood = readEntryLines(bytes, store, entries, error);
    QTEST(inWords(understood, entries, error), "outcome");
}

void tst_EntryFiles::json_data()
{
    QTest::addColumn<Store>("store");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("outcome");

    QTest::newRow("name and number are enough")
        << Store::Phonebook << QByteArray(R"([{"number":"1","name":"Ł"}])") << u"Ł|1||||"_s;
    QTest::newRow("all") << Store::Phonebook
                         << QByteArray(
                                R"([{"name":"A","number":"1","date":"01.02  03:04","dateSound":"Optisch",)"
                                R"("vip":true,"vipSound":"x"}])")
                         << u"A|1|01.02  03:04|Optisch|Ja|x"_s;
    QTest::newRow("erasing is said expressly") << Store::Phonebook << QByteArray("[]") << QString();
    QTest::newRow("cut off") << Store::Phonebook << QByteArray("[\n {\"name\":\"A\",\n")
                             << u"line 3: this is no JSON: unterminated object"_s;
    QTest::newRow("not JSON") << Store::Phonebook << QByteArray("\"A\",\"1\"")
                              << u"line 1: this is no JSON: illegal value"_s;
    QTest::newRow("empty") << Store::Phonebook << QByteArray() << u"line 1: this is no JSON: illegal value"_s;
    QTest::newRow("deep") << Store::Phonebook << QByteArray(100000, '[')
                          << u"line 1: this is no JSON: too deeply nested document"_s;
    QTest::newRow("an object") << Store::Phonebook << QByteArray(R"({"name":"A","number":"1"})")
                               << u"expected an array of entries"_s;
    QTest::newRow("no object in it") << Store::Phonebook << QByteArray(R"([{"name":"A","number":"1"},7])")
                                     << u"entry 2: it is no object"_s;
    QTest::newRow("no number") << Store::Phonebook << QByteArray(R"([{"name":"A"}])")
                               << u"entry 1: \"name\" and \"number\" must be there"_s;
    QTest::newRow("a number that is none of text")
        << Store::Phonebook << QByteArray(R"([{"name":"A","number":110}])")
        << u"entry 1: \"number\" must be a text"_s;
    QTest::newRow("mistyped key") << Store::Phonebook
                                  << QByteArray(R"([{"name":"A","number":"1","vipsound":""}])")
                                  << u"entry 1: unknown key \"vipsound\""_s;
    QTest::newRow("VIP as a text") << Store::Phonebook
                                   << QByteArray(R"([{"name":"A","number":"1","vip":"Ja"}])")
                                   << u"entry 1: \"vip\" must be true or false"_s;
    QTest::newRow("providers have no date")
        << Store::Providers << QByteArray(R"([{"name":"A","number":"1","date":""}])")
        << u"entry 1: unknown key \"date\""_s;
    QTest::newRow("line end that would end the command")
        << Store::Phonebook << QByteArray(R"([{"name":"A\rAT^WSEL=\"TB\"\r","number":"1"}])")
        << u"entry 1: there is a control character that can't be sent to a phone"_s;
}

void tst_EntryFiles::json()
{
    QFETCH(Store, store);
    QFETCH(QByteArray, bytes);
    Entries entries = both;
    QString error;
    const bool understood = readEntryJson(bytes, store, entries, error);
    QTEST(inWords(understood, entries, error), "outcome");
}

void tst_EntryFiles::everyFormBringsBackWhatWentIn_data()
{
    QTest::addColumn<Store>("store");
    QTest::addColumn<QString>("name");
    QTest::newRow(".tel") << Store::Phonebook << u"x.TEL"_s;
    QTest::newRow(".json") << Store::Phonebook << u"x.json"_s;
    QTest::newRow(".prv") << Store::Providers << u"x.prv"_s;
    QTest::newRow("providers in .json") << Store::Providers << u"x.json"_s;
}

void tst_EntryFiles::everyFormBringsBackWhatWentIn()
{
    QFETCH(Store, store);
    QFETCH(QString, name);
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
                     u"folder.tel: there is no such file"_s, u"large.json: it is larger than 16 MB"_s}));
}

void tst_EntryFiles::warnings_data()
{
    QTest::addColumn<int>("phoneType");
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<QStringList>("warnings");
    const ClassicEntry fine = both[0];
    const auto with = [&](auto change) {
        ClassicEntry entry = fine;
        change(entry);
        return Entries{entry};
    };

    QTest::newRow("nothing to say") << 2 << Entries{fine} << QStringList{};
    QTest::newRow("as long as can be")
        << 2 << with([](ClassicEntry& e) { e.name = QString(16, u'x'), e.number = QString(32, u'1'); })
        << QStringList{};
    QTest::newRow("too long") << 2 << with([](ClassicEntry& e) {
        e.name = QString(17, u'x'), e.number = QString(33, u'1');
    })
                              << QStringList{u"the name has 17 characters, the phone holds 16"_s,
                                             u"the number has 33 characters, the phone holds 32"_s};
    QTest::newRow("characters") << 2 << with([](ClassicEntry& e) {
        e.name = u"A\aŁ"_s, e.number = u"1+2"_s;
    }) << QStringList{u"the phone can't hold \"?\" in a name"_s, u"the phone can't hold \"+\" in a number"_s};
    QTest::newRow("nothing there") << 2 << with([](ClassicEntry& e) { e.name = e.number = QString(); })
                                   << QStringList{u"there is no name"_s, u"there is no number"_s};
    QTest::newRow("sounds") << 2 << with([](ClassicEntry& e) {
        e.dateSound = u"Tango"_s, e.vipSound = u"Polka"_s;
    })
                            << QStringList{u"the phone has no melody \"Tango\" for the reminder"_s,
                                           u"the phone has no melody \"Polka\" for the VIP call"_s};
    QTest::newRow("no such day") << 2 << with([](ClassicEntry& e) { e.date = u"31.02  08:30"_s; })
                                 << QStringList{u"\"31.02  08:30\" is no day and time"_s};
    QTest::newRow("reminder of nothing") << 2 << with([](ClassicEntry& e) { e.date = QString(); })
                                         << QStringList{u"a reminder needs a date"_s};
    QTest::newRow("oldest family") << 1 << Entries{fine} << QStringList{u"this phone marks no VIP entries"_s};
}

void tst_EntryFiles::warnings()
{
    QFETCH(int, phoneType);
    QFETCH(Entries, entries);
    QTEST(warningsAbout(entries.front(), Store::Phonebook, phoneType, {}), "warnings");
}

void tst_EntryFiles::fewOfManyWarnings()
{
    const QStringList lines = warningLines(Entries(1000), Store::Providers, 2, {}).split(u'\n');
    QCOMPARE(lines.size(), 22); // twenty, the rest in one, and the end of the last line
    QCOMPARE(lines[1], u"Warning: entry 1 (): there is no number."_s);
    QCOMPARE(lines[20], u"... and 1980 more warnings."_s);
}

QTEST_GUILESS_MAIN(tst_EntryFiles)
#include "tst_EntryFiles.moc"
