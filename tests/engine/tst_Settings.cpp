#include "app/IniFile.h"
#include "app/SettingsKeys.h"
#include "support/Rows.h"
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
    void reading();
    void everythingElseIsKept();
    void valuesCannotAddLines();
    void anyBytesAreRead();
};

void tst_Settings::reading()
{
    const Rows<QByteArray, QString> rows{
        {"plain", "[S]\r\nk=v\r\n", u"v"_s},
        {"names without case", "[s]\nK=v\n", u"v"_s},
        {"blanks and quotes go", "[S]\nk = \" v \" \n", u" v "_s},
        {"first one counts", "[S]\nk=1\nk=2\n[S]\nk=3\n", u"1"_s},
        {"other section", "[T]\nk=v\n", u"<no value>"_s},
        {"empty value", "[S]\nk=\n", {}},
        {"no file", {}, u"<no value>"_s},
        {"UTF-8 with mark", "\xEF\xBB\xBF[S]\nk=\xC3\xBC\n", u"ü"_s},
        {"Windows-1252", "[S]\nk=\xFC\n", u"ü"_s},
    };
    for (const auto& [file, value] : rows) {
        TestContext test;
        if (!file.isEmpty())
            test.makeFile(u"storage/config/Kalmo.ini"_s, file);
        QCOMPARE(test.settings.GetIniText(u"S"_s, u"k"_s), value);
        QCOMPARE(test.settings.GetIniText(u"S"_s, u"missing"_s, {}, u"fallback"_s), u"fallback"_s);
    }
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

void tst_Settings::anyBytesAreRead()
{
    const Rows<QByteArray> rows{
        {"brackets", "[[[]]]\n[\n]\n=\n==\n[x\nk=v\n"},
        {"lone quotes", "[S]\nk=\"\n"},
        {"broken UTF-8", "[S]\n\xC3\x28=\xFF\xFE\n"},
    };
    for (const auto& [bytes] : rows) {
        app::IniFile file = app::IniFile::parse(bytes);
        file.setValue(u"S"_s, u"new"_s, u"1"_s);
        const app::IniFile again = app::IniFile::parse(file.toBytes());
        QCOMPARE(again.value(u"S"_s, u"new"_s), std::optional(u"1"_s));
        QCOMPARE(again.toBytes(), file.toBytes());
    }
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
