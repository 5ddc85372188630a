// What is done with a phone's texts and files before anything else sees them: the small UTF-8, names that
// become local file names, and files that replace others.

#include "app/CodePage.h"
#include "app/Files.h"
#include "app/SafeLocalName.h"
#include "app/Utf8Small.h"
#include "support/TestContext.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::tests;
using app::ReplaceResult;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

class tst_ObexText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesWithItsMistakes_data();
    void decodesWithItsMistakes();
    void decodesInLinearTime();
    void encodingReadsBack();
    void safeNames_data();
    void safeNames();
    void replacesFiles();
};

void tst_ObexText::decodesWithItsMistakes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, const char* bytes, const char* text) {
        QTest::newRow(name) << QByteArray::fromHex(bytes) << QByteArray::fromHex(text);
    };
    row("plain", "41 42 FC", "41 42 FC");
    row("u umlaut", "4D C3 BC 6C", "4D FC 6C");
    row("sharp s at the end", "C3 9F", "DF");
    row("low second byte", "C3 40 C3 00", "80 40");
    row("encoded twice", "C3 83 C2 BC", "FC"); // C3 83 makes a new C3, which loses the C2
    row("new lead at the end", "C3 83", "C3");
    row("second above 191 is lost", "41 C3 C4 BC 42", "41 FC 42");
    row("several are lost", "C3 FF C3 E4 A4", "E4");
    row("second above 191 at the end", "41 C3 FF", "41");
    row("lead at the end", "41 C3", "41 C3");
    row("two leads", "C3 C3", "");
    row("other sequences", "C2 A0 E2 82 AC", "C2 A0 E2 82 AC");
    row("holes of the code page", "81 8D C3 A4 9D 80", "81 8D E4 9D 80");
}

void tst_ObexText::decodesWithItsMistakes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, text);
    QCOMPARE(app::UFT8Dec(app::fromCp1252(bytes)), app::fromCp1252(text));
}

void tst_ObexText::decodesInLinearTime() // a walk from the start for each hit would run for hours here
{
    QCOMPARE(app::UFT8Dec(app::fromCp1252(QByteArray("\xC3\xBC").repeated(2000000))).size(), 2000000);
    QCOMPARE(app::UFT8Dec(app::fromCp1252(QByteArray(4000000, '\xC3'))), QString());
}

void tst_ObexText::encodingReadsBack()
{
    QCOMPARE(app::toCp1252(app::Utf8EncC3(u"aÄß€\u2013"_s)),
             QByteArray::fromHex("61 C3 84 C3 9F C3 40 C3 56"));
    QByteArray all;
    for (int value = 0; value < 256; ++value) {
        if (value != 0xC3 && value != 0x83)
            all.append(static_cast<char>(value));
    }
    QCOMPARE(app::UFT8Dec(app::Utf8EncC3(app::fromCp1252(all))), app::fromCp1252(all));
}

void tst_ObexText::safeNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("safe");
    const auto row = [](const QString& name, const QString& safe) {
        QTest::addRow("%s", qPrintable(name.left(40).simplified())) << name << safe;
    };
    for (const QString& fine : {u"Bild.jpg"_s, u"Grüße 1.txt"_s, u"a..b"_s, u".hidden"_s, u"CONTACT.vcf"_s,
                                u"COM10.txt"_s, u"ohne"_s, QString(255, u'x')})
        row(fine, fine);
    row(u"/etc/passwd"_s, u"passwd"_s);
    row(u"..\\..\\Start\\x.exe"_s, u"x.exe"_s);
    row(u"a/b\\c/d.txt"_s, u"d.txt"_s);
    for (const QString& refused : {u""_s,
                                   u"."_s,
                                   u".."_s,
                                   u"a/.."_s,
                                   u"a\\"_s,
                                   u"x/"_s,
                                   u"a\nb"_s,
                                   u"a\u0085b"_s,
                                   u"tab\t.txt"_s,
                                   u"C:x.txt"_s,
                                   u"a|b"_s,
                                   u"what?"_s,
                                   u"x."_s,
                                   u"x "_s,
                                   u"con"_s,
                                   u"Nul.txt"_s,
                                   u"COM1"_s,
                                   u"conin$.txt"_s,
                                   u"LPT²"_s,
                                   u"lpt9.tar.gz"_s,
                                   u"exe\u202Egpj.jpg"_s,
                                   QString(256, u'x'),
                                   QString(128, u'ü'),
                                   u"a\0b"_s})
        row(refused, QString());
}

void tst_ObexText::safeNames()
{
    QFETCH(QString, name);
    QFETCH(QString, safe);
    QCOMPARE(app::safeLocalName(name), safe);
}

void tst_ObexText::replacesFiles()
{
    TestContext test;
    const QString fresh = test.path(u"fresh.bin"_s);
    QCOMPARE(app::replaceFile(test.context, fresh, "one"), ReplaceResult::Written);
    QCOMPARE(TestContext::contentOf(fresh), "one"_ba);

    const QString old = test.makeFile(u"old.bin"_s, "old content");
    QVERIFY(QFile::setPermissions(old, QFileDevice::ReadOwner));
    QCOMPARE(app::replaceFile(test.context, old, "new"), ReplaceResult::Written);
    QCOMPARE(TestContext::contentOf(old), "new"_ba);
    QCOMPARE(QDir(test.folder.path()).entryList({u"*.bin*"_s}), (QStringList{u"fresh.bin"_s, u"old.bin"_s}));

    QCOMPARE(app::replaceFile(test.context, test.path(u"no/such/folder.bin"_s), "x"),
             ReplaceResult::NotWritten);

    const QString fixed = u"/proc/version"_s; // nobody can replace it, whoever runs the test
    const toolkit::Message box{
        .text = u"Die Datei /proc/version konnte nicht ersetzt bzw. gelöscht werden. Vermutlich haben Sie "
                u"kein Schreibrecht in dem Ordner oder aber die Datei ist aktuell von einem anderen Programm "
                u"geöffnet.\n"
                u"Versuch wiederholen?"_s,
        .buttons = Buttons::RetryCancel,
        .icon = Icon::Exclamation};
    test.dialogs.expect(box, Answer::Retry);
    test.dialogs.expect(box, Answer::Cancel);
    QCOMPARE(app::replaceFile(test.context, fixed, "x"), ReplaceResult::NotReplaced);
}

QTEST_GUILESS_MAIN(tst_ObexText)
#include "tst_ObexText.moc"
