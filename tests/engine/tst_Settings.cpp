#include "app/IniFile.h"
#include "app/SettingsKeys.h"
#include "support/TestContext.h"

#include <QFileInfo>
#include <QtTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

class tst_Settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reading_data();
    void reading();
    void numbers_data();
    void numbers();
    void longValuesAreCut();
    void everythingElseIsKept();
    void valuesCannotAddLines();
    void anyBytesAreRead_data();
    void anyBytesAreRead();
    void failedWriteLeavesTheOldFile();
};

void tst_Settings::reading_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << QByteArray("[S]\r\nk=v\r\n") << u"v"_s;
    QTest::newRow("names without case") << QByteArray("[s]\nK=v\n") << u"v"_s;
    QTest::newRow("blanks and quotes go") << QByteArray("[S]\nk = \" v \" \n") << u" v "_s;
    QTest::newRow("equals sign in the value") << QByteArray("[S]\nk=a=b\n") << u"a=b"_s;
    QTest::newRow("first one counts") << QByteArray("[S]\nk=1\nk=2\n[S]\nk=3\n") << u"1"_s;
    QTest::newRow("other section") << QByteArray("[T]\nk=v\n") << u"<no value>"_s;
    QTest::newRow("comment") << QByteArray("[S]\n;k=v\n") << u"<no value>"_s;
    QTest::newRow("empty value") << QByteArray("[S]\nk=\n") << QString();
    QTest::newRow("no file") << QByteArray() << u"<no value>"_s;
    QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBF[S]\nk=\xC3\xBC\n") << u"ü"_s;
    QTest::newRow("Windows-1252") << QByteArray("[S]\nk=\xFC\n") << u"ü"_s;
}

void tst_Settings::reading()
{
    QFETCH(QByteArray, file);
    TestContext test;
    if (!file.isEmpty())
        test.makeFile(u"storage/config/Kalmo.ini"_s, file);
    QTEST(test.settings.GetIniText(u"S"_s, u"k"_s), "value");
    QCOMPARE(test.settings.GetIniText(u"S"_s, u"missing"_s, {}, u"fallback"_s), u"fallback"_s);
}

void tst_Settings::numbers_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<float>("number");
    QTest::newRow("whole") << u"12"_s << 12.f;
    QTest::newRow("negative") << u"-115200"_s << -115200.f;
    QTest::newRow("no number") << u"COM3"_s << 1.f;
    QTest::newRow("unset") << u"<no value>"_s << 1.f;
    QTest::newRow("empty") << u""_s << 1.f;
}

void tst_Settings::numbers()
{
    QFETCH(QString, stored);
    TestContext test;
    app::put(test.settings, app::TextKey{u"frmEinstellungen", u"ComPortNew"}, stored);
    QTEST(app::get(test.settings, app::keys::ComPortNew), "number");
}

void tst_Settings::longValuesAreCut()
{
    TestContext test;
    test.settings.PutIniText(u"S"_s, u"k"_s, QString(300, u'x'));
    QCOMPARE(test.settings.GetIniText(u"S"_s, u"k"_s).size(), 255);
}

void tst_Settings::everythingElseIsKept()
{
    TestContext test;
    const QString path =
        test.makeFile(u"storage/config/Kalmo.ini"_s,
                      "; by hand\r\n[Alias]\r\n^X: 1,\x07 y=3\r\n\r\n[Other]\r\nk=v\r\nnonsense\r\n");
    test.settings.PutIniNumber(u"Alias"_s, u"new"_s, 4);
    test.settings.PutIniText(u"other"_s, u"K"_s, u"w"_s);
    test.settings.PutIniText(u"Fresh"_s, u"a"_s, u"b"_s);
    QCOMPARE(
        TestContext::contentOf(path),
        QByteArray(
            "; by hand\r\n[Alias]\r\n^X: 1,\x07 y=3\r\n\r\nnew=4\r\n[Other]\r\nK=w\r\nnonsense\r\n[Fresh]\r\n"
            "a=b\r\n"));
    QCOMPARE(test.settings.GetIniNumber(u"Alias"_s, u"^X: 1,\u0007 y"_s, 0), 3.f);
}

void tst_Settings::valuesCannotAddLines()
{
    TestContext test;
    test.settings.PutIniText(u"Reminder"_s, u"Device"_s, u"SL1\r\n[Alias]\r\nevil=1"_s);
    QCOMPARE(test.settings.GetIniText(u"Alias"_s, u"evil"_s), app::noValue());
    QCOMPARE(test.settings.GetIniText(u"Reminder"_s, u"Device"_s), u"SL1  [Alias]  evil=1"_s);
}

void tst_Settings::anyBytesAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("brackets") << QByteArray("[[[]]]\n[\n]\n=\n==\n[x\nk=v\n");
    QTest::newRow("lone quotes") << QByteArray("[S]\nk=\"\n");
    QTest::newRow("no line end") << QByteArray("[S]\nk=v");
    QTest::newRow("broken UTF-8") << QByteArray("[S]\n\xC3\x28=\xFF\xFE\n");
}

void tst_Settings::anyBytesAreRead()
{
    QFETCH(QByteArray, bytes);
    app::IniFile file = app::IniFile::parse(bytes);
    file.setValue(u"S"_s, u"new"_s, u"1"_s);
    const app::IniFile again = app::IniFile::parse(file.toBytes());
    QCOMPARE(again.value(u"S"_s, u"new"_s), std::optional(u"1"_s));
    QCOMPARE(again.toBytes(), file.toBytes());
}

void tst_Settings::failedWriteLeavesTheOldFile()
{
    TestContext test;
    const QString path = test.makeFile(u"storage/config/Kalmo.ini"_s, "[S]\r\nk=old\r\n");
    // A folder in the way of the new file stands for a disk that takes nothing; root would pass a read-only
    // mode.
    test.settings.PutIniText(u"S"_s, u"k"_s, u"new"_s, test.storage + u"/missing/Kalmo.ini"_s);
    QCOMPARE(TestContext::contentOf(path), QByteArray("[S]\r\nk=old\r\n"));
    QVERIFY(!QFileInfo::exists(test.storage + u"/missing"_s));
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
