// Code page, hex texts, sizes, dates, numbers and characters that a phone can hold.

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "app/mdlTexts.h"
#include "phonedata/PhoneCharacters.h"

#include <QtTest>

using namespace kalmo;
using namespace Qt::StringLiterals;

class tst_Texts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyByteSurvives();
    void charactersOutsideTheCodePage_data();
    void charactersOutsideTheCodePage();
    void hex_data();
    void hex();
    void sizes_data();
    void sizes();
    void numbers_data();
    void numbers();
    void namesAndNumbersOfAPhone_data();
    void namesAndNumbersOfAPhone();
    void messageTable();
};

void tst_Texts::everyByteSurvives()
{
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all.append(static_cast<char>(value));
    const QString text = app::fromCp1252(all);
    QCOMPARE(text.size(), 256);
    QCOMPARE(app::toCp1252(text), all);
    QCOMPARE(text[0x80], QChar(u'€'));
    QCOMPARE(text[0x95], QChar(u'•'));
    QCOMPARE(text[0x81], QChar(0x81));
    QCOMPARE(text[0xFC], QChar(u'ü'));
}

void tst_Texts::charactersOutsideTheCodePage_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("fits");
    QTest::newRow("German") << u"Größe"_s
                            << QByteArray("Gr\xF6\xDF"
                                          "e")
                            << true;
    QTest::newRow("Polish") << u"Łódź"_s
                            << QByteArray("?\xF3"
                                          "d?")
                            << false;
    QTest::newRow("one question mark for a pair of surrogates") << u"a😀b"_s << QByteArray("a?b") << false;
    QTest::newRow("half a pair") << u"a"_s + QChar(0xD83D) << QByteArray("a?") << false;
}

void tst_Texts::charactersOutsideTheCodePage()
{
    QFETCH(QString, text);
    QTEST(app::toCp1252(text), "bytes");
    QTEST(app::fitsCp1252(text), "fits");
}

void tst_Texts::hex_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("pairs") << u"4142"_s << QByteArray("AB");
    QTest::newRow("blanks between") << u"32 13 02"_s << QByteArray("\x32\x13\x02");
    QTest::newRow("lower case") << u"ff0a"_s << QByteArray("\xFF\x0A");
    QTest::newRow("single last character") << u"414"_s << QByteArray("A");
    QTest::newRow("single character") << u"4"_s << QByteArray();
    QTest::newRow("no hex") << u"zz41"_s << QByteArray("\0A", 2);
    QTest::newRow("empty") << QString() << QByteArray();
}

void tst_Texts::hex()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(app::TextFromHex(text), bytes);
    QCOMPARE(app::TextFromHex(app::HexFromTextPlain(bytes)), bytes);
    QCOMPARE(app::HexFromText("AB\n"), u" 41 42 0A"_s);
    QCOMPARE(app::HexFromText({}), QString());
}

void tst_Texts::sizes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << u"0.0kB"_s;
    QTest::newRow("never 0.0 for a file") << qint64(1) << u"0.1kB"_s;
    QTest::newRow("rounded") << qint64(1434) << u"1.4kB"_s;
    QTest::newRow("thousands") << qint64(40000000) << u"39,062.5kB"_s;
}

void tst_Texts::sizes()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QFETCH(qint64, bytes);
    QTEST(app::FormatSizeKB(bytes), "text");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(app::FormatSizeKB(1434), u"1,4kB"_s);
}

void tst_Texts::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("numeric");
    QTest::newRow("whole") << u"42"_s << 42.0 << true;
    QTest::newRow("stops at the first other character") << u"12 Einträge"_s << 12.0 << false;
    QTest::newRow("sign and point") << u" -1.5"_s << -1.5 << true;
    QTest::newRow("none") << u"?"_s << 0.0 << false;
    QTest::newRow("empty") << QString() << 0.0 << false;
    QTest::newRow("infinity is no number") << u"inf"_s << 0.0 << false;
    QTest::newRow("nan is no number") << u"nan"_s << 0.0 << false;
}

void tst_Texts::numbers()
{
    QFETCH(QString, text);
    QTEST(app::Val(text), "value");
    QTEST(app::IsNumeric(text), "numeric");
    QCOMPARE(app::ValInt(u"99999999999999999999"_s), std::numeric_limits<qint32>::max());
}

void tst_Texts::namesAndNumbersOfAPhone_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("number");
    QTest::newRow("letter in a number") << u"12a45"_s << u"12a45"_s << u"12"_s;
    QTest::newRow("written for people") << u"+49 (30) 123"_s << u"+49 (30) 123"_s << u"+49"_s;
    QTest::newRow("plus inside") << u"1+2"_s << u"1+2"_s << u"1"_s;
    QTest::newRow("pause and recall") << u"R0P12*#"_s << u"R0P12*#"_s << u"R0P12*#"_s;
    QTest::newRow("umlauts") << u"Müß"_s << u"Müß"_s << QString();
    QTest::newRow("bracket") << u"A[b]"_s << u"A"_s << QString();
    QTest::newRow("accents that no phone has") << u"Renée Sá"_s << u"Renée S"_s << u"R"_s;
    QTest::newRow("not in the code page") << u"Łódź"_s << QString() << QString();
}

void tst_Texts::namesAndNumbersOfAPhone()
{
    QFETCH(QString, typed);
    QTEST(phonedata::acceptedName(typed), "name");
    QTEST(phonedata::acceptedNumber(typed), "number");
}

void tst_Texts::messageTable()
{
    QCOMPARE(app::ResText(app::TextSave), u"Speichern"_s);
    QCOMPARE(app::ResText(1), u"unknow ID"_s);
}

QTEST_GUILESS_MAIN(tst_Texts)
#include "tst_Texts.moc"
