// Backup files: what goes into them, what comes back, and that an old one is never harmed.

#include "phonedata/BackupFiles.h"
#include "support/ListLines.h"
#include "support/SmallDisk.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

using namespace kalmo::phonedata;

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

template <typename Entry>
QStringList inWords(const std::vector<Entry>& entries)
{
    QStringList lines;
    for (const Entry& entry : entries)
        lines.append(lineOf(toRow(entry)));
    return lines;
}

} // namespace

class tst_BackupFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytes()
    {
        QCOMPARE(telBytes({full, {.name = u"A,B"_s, .number = u"1\"2"_s}}),
                 fullLine + "\"A,B\",\"1\"2\",\"\",\"\",\"\",\"\"\r\n");
        QCOMPARE(prvBytes({{u"\"Call\""_s, u"010\"13"_s}}), QByteArray("\"\x95"
                                                                       "Call\x95\",\"010\"13\"\r\n"));
    }

    void telEntries()
    {
        Rows<int, QByteArray, QStringList> rows;
        rows.add("all fields; a quote in the name is lost", 2, fullLine,
                 {u"Jörg Jogi|+49*1|24.12  08:30|Melodie 3|Ja|Optisch"_s});
        rows.add("oldest family has no VIP", 1, fullLine, {u"Jörg Jogi|+49*1|24.12  08:30|Melodie 3||"_s});
        rows.add("other line ends, none at the end", 2, "\"A\",\"1\"\n\"B\",\"2\"\r\"C\",\"3\"",
                 {u"A|1||||"_s, u"B|2||||"_s, u"C|3||||"_s});
        rows.add("more fields than there are columns", 2, "\"A\",\"1\",\"\",\"\",\"\",\"\",\"x\"\r\n",
                 {u"A|1||||"_s});
        rows.add("comma within quotes", 2, "\"A, B\",\"1\"\r\n", {u"A, B|1||||"_s});

        rows.each([&](const auto& phoneType, const auto& bytes, const auto& entries) {
            QCOMPARE(inWords(phonedata::telEntries(bytes, phoneType)), entries);
        });
    }

    void prvEntries()
    {
        const Rows<QByteArray, QStringList> rows{
            {"a quote in the name survives",
             "\"\x95"
             "Call\x95\",\"01013\"\r\n",
             {u"\"Call\"|01013"_s}},
            {"comma within quotes", "\"A,B\",\"1\"\r\n\"C\",\"3\"\r\n", {u"A,B|1"_s, u"C|3"_s}},
            {"field by field, over line ends", "\"A\"\r\n\"1\"\r\n\"B\",\r\n\"2\"", {u"A|1"_s, u"B|2"_s}},
            {"quote never closed", "\"A,1\r\n", {u"A,1|"_s}},
        };
        rows.each([&](const auto& bytes, const auto& entries) {
            QCOMPARE(inWords(phonedata::prvEntries(bytes)), entries);
        });
    }

    void fullDisk()
    {
        TestContext test;
        test.sy.PhoneType = 2;
        const auto list = makePhonebookRows();
        list->add(toRow(full));
        const QString path = test.makeFile(u"book.tel"_s, "old");
        const QString ini = test.makeFile(u"storage/config/Kalmo.ini"_s, "[a]\r\nb=c\r\n");
        test.dialogs.expectStart(u"Die Datei %1 konnte nicht geschrieben werden: File too large"_s.arg(path));
        {
            const SmallDisk disk(20);
            QVERIFY(!SaveTel(test.context, *list, path));
            test.settings.PutIniText(u"a"_s, u"b"_s, QString(100, u'x'));
        }
        QCOMPARE(TestContext::contentOf(path), QByteArray("old"));
        QCOMPARE(TestContext::contentOf(ini), QByteArray("[a]\r\nb=c\r\n"));
    }

    void namesOfBackups()
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
};

KALMO_TEST(tst_BackupFiles)
#include "tst_BackupFiles.moc"
