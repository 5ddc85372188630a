// Backup files: what goes into them, what comes back, and that an old one is never harmed.

#include "phonedata/BackupFiles.h"
#include "support/TestContext.h"

#include <QDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;
using toolkit::Icon;

namespace {

const ClassicEntry full{.name = u"Jörg \"Jogi\""_s,
                        .number = u"+49*1"_s,
                        .date = u"24.12  08:30"_s,
                        .dateSound = u"Melodie 3"_s,
                        .vip = u"Ja"_s,
                        .vipSound = u"Optisch"_s,
                        .languageTag = u"not saved"_s};
const QByteArray fullLine =
    "\"J\xF6rg \x95Jogi\x95\",\"+49*1\",\"24.12  08:30\",\"Melodie 3\",\"Ja\",\"Optisch\"\r\n";

/// While one lives no file grows beyond so many bytes.
class SmallDisk
{
public:
    explicit SmallDisk(int room)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit little{static_cast<rlim_t>(room), m_before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN); // then a write fails, as it does on a full disk
        setrlimit(RLIMIT_FSIZE, &little);
    }
    ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(SmallDisk)

private:
    rlimit m_before = {};
};

template <typename Entry>
QStringList inWords(const std::vector<Entry>& entries)
{
    QStringList lines;
    for (const Entry& entry : entries) {
        QStringList texts;
        const toolkit::ListRow row = toRow(entry);
        for (const toolkit::ListCell& cell : row.cells)
            texts.append(cell.text);
        lines.append(texts.join(u'|'));
    }
    return lines;
}

} // namespace

class tst_BackupFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytes();
    void telEntries_data();
    void telEntries();
    void prvEntries_data();
    void prvEntries();
    void savesForClassicHandsetsOnly();
    void oldFileSurvives_data();
    void oldFileSurvives();
    void fullDisk_data();
    void fullDisk();
    void missingFileIsTold();
    void namesOfBackups();
};

void tst_BackupFiles::bytes()
{
    QCOMPARE(telBytes({full, {.name = u"A,B"_s, .number = u"1\"2"_s}}),
             fullLine + "\"A,B\",\"1\"2\",\"\",\"\",\"\",\"\"\r\n");
    QCOMPARE(prvBytes({{u"\"Call\""_s, u"010\"13"_s}}), QByteArray("\"\x95"
                                                                   "Call\x95\",\"010\"13\"\r\n"));
}

void tst_BackupFiles::telEntries_data()
{
    QTest::addColumn<int>("phoneType");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("all fields; a quote in the name is lost")
        << 2 << fullLine << QStringList{u"Jörg Jogi|+49*1|24.12  08:30|Melodie 3|Ja|Optisch"_s};
    QTest::newRow("oldest family has no VIP")
        << 1 << fullLine << QStringList{u"Jörg Jogi|+49*1|24.12  08:30|Melodie 3||"_s};
    QTest::newRow("two fields") << 4 << QByteArray("\"A\",\"1\"\r\n") << QStringList{u"A|1||||"_s};
    QTest::newRow("one field is skipped")
        << 2 << QByteArray("\"A\"\r\nB\r\n\r\n\"C\",\"3\"\r\n") << QStringList{u"C|3||||"_s};
    QTest::newRow("other line ends, none at the end")
        << 2 << QByteArray("\"A\",\"1\"\n\"B\",\"2\"\r\"C\",\"3\"")
        << QStringList{u"A|1||||"_s, u"B|2||||"_s, u"C|3||||"_s};
    QTest::newRow("more fields than there are columns")
        << 2 << QByteArray("\"A\",\"1\",\"\",\"\",\"\",\"\",\"x\"\r\n") << QStringList{u"A|1||||"_s};
    QTest::newRow("comma within quotes")
        << 2 << QByteArray("\"A, B\",\"1\"\r\n") << QStringList{u"A, B|1||||"_s};
    QTest::newRow("nothing") << 2 << QByteArray() << QStringList{};
}

void tst_BackupFiles::telEntries()
{
    QFETCH(int, phoneType);
    QFETCH(QByteArray, bytes);
    QTEST(inWords(phonedata::telEntries(bytes, phoneType)), "entries");
}

void tst_BackupFiles::prvEntries_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("a quote in the name survives") << QByteArray("\"\x95"
                                                                "Call\x95\",\"01013\"\r\n")
                                                  << QStringList{u"\"Call\"|01013"_s};
    QTest::newRow("comma within quotes")
        << QByteArray("\"A,B\",\"1\"\r\n\"C\",\"3\"\r\n") << QStringList{u"A,B|1"_s, u"C|3"_s};
    QTest::newRow("field by field, over line ends")
        << QByteArray("\"A\"\r\n\"1\"\r\n\"B\",\r\n\"2\"") << QStringList{u"A|1"_s, u"B|2"_s};
    QTest::newRow("without quotes") << QByteArray("A B , 12 \r\nC,3") << QStringList{u"A B|12"_s, u"C|3"_s};
    QTest::newRow("quote never closed") << QByteArray("\"A,1\r\n") << QStringList{u"A,1|"_s};
    QTest::newRow("nothing but line ends") << QByteArray("\r\n\r\n") << QStringList{};
}

void tst_BackupFiles::prvEntries()
{
    QFETCH(QByteArray, bytes);
    QTEST(inWords(phonedata::prvEntries(bytes)), "entries");
}

void tst_BackupFiles::savesForClassicHandsetsOnly()
{
    TestContext test;
    const auto list = makePhonebookRows();
    const QString path = test.makeFile(u"book.tel"_s, "old");
    QVERIFY(SaveTel(test.context, *list, path));
    QCOMPARE(TestContext::contentOf(path), QByteArray("old")); // an empty list makes no file and harms none

    list->add(toRow(full));
    test.sy.PhoneType = 8;
    QVERIFY(SaveTel(test.context, *list, path));
    QCOMPARE(TestContext::contentOf(path), QByteArray());

    test.sy.PhoneType = 2;
    QVERIFY(SaveTel(test.context, *list, path));
    QCOMPARE(TestContext::contentOf(path), fullLine);

    list->add(toRow(full));
    QVERIFY(LoadTel(test.context, *list, path)); // replaces what the list held
    QCOMPARE(list->count(), 1);
}

void tst_BackupFiles::oldFileSurvives_data()
{
    QTest::addColumn<bool>("isPhonebook");
    QTest::newRow(".tel") << true;
    QTest::newRow(".prv") << false;
}

void tst_BackupFiles::oldFileSurvives()
{
    QFETCH(bool, isPhonebook);
    TestContext test;
    test.sy.PhoneType = 2;
    const auto list = isPhonebook ? makePhonebookRows() : makeProviderRows();
    list->add(toRow(full));
    // A folder in the file's place can't be replaced, whoever runs the test.
    const QString path = test.path(u"in-the-way"_s);
    QVERIFY(QDir().mkpath(path + u"/kept"_s));
    test.dialogs.expect(
        {.text = u"Die Datei %1 konnte nicht geschrieben werden: Filename refers to a directory"_s.arg(path),
         .icon = Icon::Exclamation,
         .english = u"%1 could not be written: Filename refers to a directory"_s.arg(path)});
    QVERIFY(!(isPhonebook ? SaveTel(test.context, *list, path) : SavePrv(test.context, *list, path)));
    QVERIFY(QDir(path).exists(u"kept"_s));
    QCOMPARE(QDir(test.folder.path()).entryList(QDir::Files), QStringList{}); // nothing half-written is left
}

void tst_BackupFiles::fullDisk_data()
{
    QTest::addColumn<int>("room"); // bytes that the disk still takes
    QTest::newRow("none") << 0;
    QTest::newRow("for a part") << 20;
}

void tst_BackupFiles::fullDisk()
{
    QFETCH(int, room);
    TestContext test;
    test.sy.PhoneType = 2;
    const auto list = makePhonebookRows();
    list->add(toRow(full));
    const QString path = test.makeFile(u"book.tel"_s, "old");
    const QString ini = test.makeFile(u"storage/config/Kalmo.ini"_s, "[a]\r\nb=c\r\n");
    test.dialogs.expect({.text = u"Die Datei %1 konnte nicht geschrieben werden: File too large"_s.arg(path),
                         .icon = Icon::Exclamation});
    {
        const SmallDisk disk(room);
        QVERIFY(!SaveTel(test.context, *list, path));
        test.settings.PutIniText(u"a"_s, u"b"_s, QString(100, u'x'));
    }
    QCOMPARE(TestContext::contentOf(path), QByteArray("old"));
    QCOMPARE(TestContext::contentOf(ini), QByteArray("[a]\r\nb=c\r\n"));
}

void tst_BackupFiles::missingFileIsTold()
{
    TestContext test;
    for (const auto load : {LoadTel, LoadPrv}) {
        const auto list = makePhonebookRows();
        list->add(toRow(full));
        test.dialogs.expect({.text = u"Fehler beim Lesen der Datei /nowhere/x"_s,
                             .icon = Icon::Information,
                             .english = u"/nowhere/x could not be read."_s});
        QVERIFY(!load(test.context, *list, u"/nowhere/x"_s));
        QCOMPARE(list->count(), 0);
    }
}

void tst_BackupFiles::namesOfBackups()
{
    TestContext test;
    const auto path = [&] { return backupPath(test.context, u"Backup von "_s, u".tel"_s); };
    const QString base = test.storage + u"/Backup/Backup von 2026-11-21  12-00-00"_s;
    QVERIFY(QDir().mkpath(test.storage + u"/Backup"_s));
    QStringList names;
    for (int number = 0; number < 3; ++number) {
        names.append(path());
        QFile file(names.last());
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QCOMPARE(names, (QStringList{base + u".tel"_s, base + u" (2).tel"_s, base + u" (3).tel"_s}));
}

QTEST_GUILESS_MAIN(tst_BackupFiles)
#include "tst_BackupFiles.moc"
