// How cells become names, numbers and dates, how a text is taken apart into cells, and the options of that.

#include "support/TestContext.h"
#include "support/TestProgram.h"
#include "transfer/import/BaseLetters.h"
#include "transfer/import/Birthdays.h"
#include "transfer/import/CsvText.h"
#include "transfer/import/ImportSteps.h"
#include "transfer/import/NumberRewriting.h"
#include "transfer/import/PreviewSources.h"
#include "transfer/import/TextDecoding.h"
#include "transfer/import/TextSource.h"

using namespace kalmo::transfer;

namespace {

const QDate importDay(2026, 11, 21);

QString rewritten(const QString& number, const NumberRules& rules)
{
    return withOutsideLine(withoutCountry(FilterNumber(number), rules), rules);
}

/// All cells of a text, rows parted by "\n" and cells by "|".
QString cellsOf(const QString& text, const TextLayout& layout)
{
    QStringList rows;
    RowCursor cursor(text, layout);
    while (cursor.next()) {
        QStringList cells;
        for (qsizetype column = 0; column < cursor.columns(); ++column)
            cells.append(cursor.cell(column));
        rows.append(cells.join(u'|'));
    }
    return rows.join(u'\n');
}

QString described(const DetectedLayout& layout)
{
    return QString(separatorChar(layout.separator)) + (layout.quoted ? u"quoted"_s : u"plain"_s);
}

} // namespace

class tst_ImportRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbers()
    {
        const NumberRules usual;
        const NumberRules kept{.convertCountry = false};
        const NumberRules outside{.outsideLine = true};
        const NumberRules longOnly{.outsideLine = true, .longNumbersOnly = true};
        Rows<QString, QString, NumberRules> rows;
        rows.add("own country", u"+49 (30) 12-34/56"_s, u"030123456"_s, usual);
        rows.add("dialled", u"004930123456"_s, u"030123456"_s, usual);
        rows.add("abroad", u"+441234567"_s, u"00441234567"_s, usual);
        rows.add("plus alone", u"+"_s, u"00"_s, usual);
        rows.add("own code behind another's is kept", u"+4949"_s, u"049"_s, usual);
        rows.add("pause and recall", u"R 0 P12p#*"_s, u"R0P12#*"_s, usual);
        rows.add("no ASCII digits", u"١٢3"_s, u"3"_s, usual);
        rows.add("kept", u"+4930"_s, u"+4930"_s, kept);
        rows.add("outside line", u"+4930123456"_s, u"0030123456"_s, outside);
        rows.add("empty", u" "_s, u""_s, outside);
        rows.add("long only, short", u"11"_s, u"11"_s, longOnly);
        rows.add("long only, long", u"110"_s, u"0110"_s, longOnly);
        rows.add("length after rewriting", u"+4911"_s, u"0011"_s, longOnly);
        rows.each([](const auto& number, const auto& expected, const auto& rules) {
            QCOMPARE(rewritten(number, rules), expected);
        });
    }

    void zeroInBrackets()
    {
        const NumberRules rules{.dropZero = true};
        QCOMPARE(numberOf(u"+49 (0) 221-1", rules), u"+492211"_s);
        QCOMPARE(numberOf(u" 0049(0)221", rules), u"0049221"_s);
        QCOMPARE(numberOf(u"(+49) (0)221", rules), u"+49221"_s);
        QCOMPARE(numberOf(u"tel:+49(0)221", rules), u"+49221"_s);
        QCOMPARE(numberOf(u"030 (0) 5", rules), u"03005"_s); // no country's code ahead
        QCOMPARE(numberOf(u"+49 (0) 221-1", {}), u"+4902211"_s);
    }

    void names()
    {
        QCOMPARE(FilterName(u"Jörg [Müller]^ \\ García Łuk&€"), u"Jörg Müller  Garca uk&"_s);
        QCOMPARE(withBaseLetters(u"García Łukasz Ærø Ştefan 中"), u"Garcia Lukasz Ærø Stefan 中"_s);
    }

    void birthdays()
    {
        Rows<QString, QString, QString> rows;
        const auto row = [&rows](const char* cell, const char* classic, const char* contact) {
            rows.add(cell, QString::fromUtf8(cell), QString::fromUtf8(classic), QString::fromUtf8(contact));
        };
        row("24.12.2005 08:30", "24.12  08:30", "24.12.2005  08:30");
        row("4.2.2005  8:05:59", "04.02  08:05", "04.02.2005  08:05");
        // A minute of 0: the general reading has it, that of contacts takes the default's minute.
        row("24.12.2005 09:00", "24.12  09:00", "24.12.2005  09:30");
        row("24.12.2005", "24.12  00:00", "24.12.2005  12:30");
        row("24.12.2005 25:10", "24.12  00:00", "24.12.2005  12:30");
        row("24.12 08:30", "24.12  08:30", "24.12.2026  08:30");
        row("24.12. 08:30", "24.12  08:30", "24.12.2026  08:30");
        row("31.02.2005 08:30", "31.02  08:30", "31.02.2005  08:30"); // bounds of day and month only
        row("31.02.2005", "", "");
        row("24.12.2100 08:30", "24.12  08:30", "24.12.2100  08:30");
        row("24.12.99", "24.12  00:00", "24.12.1999  12:30");
        row("24.12.29", "24.12  00:00", "24.12.2029  12:30");
        row("29.02.", "29.02  00:00", "29.02.2024  12:30");
        row("24/12/2005", "24.12  00:00", "24.12.2005  12:30");
        row("12/24/2005", "24.12  00:00", "24.12.2005  12:30"); // a date that way alone
        row("5/4/2001", "05.04  00:00", "05.04.2001  12:30");
        row("2005-12-24", "24.12  00:00", "24.12.2005  12:30");
        row("2005-12-24T07:45:00", "24.12  07:45", "24.12.2005  07:45");
        row("2005-24-12", "", "");
        row("--12-24", "24.12  00:00", "24.12.2026  12:30");
        row("24.12.2005 7:5:61", "24.12  07:05", "24.12.2005  07:05");
        row("24. Dez. 05, 08:30 Uhr", "24.12  08:30", "24.12.2005  08:30");
        row("5. Mrz 1970", "05.03  00:00", "05.03.1970  12:30");
        row("May 5, 1970 8:05 PM", "05.05  20:05", "05.05.1970  20:05");
        row("31. Jänner 8:30", "31.01  08:30", "31.01.2026  08:30");
        row("31. Juni 1970", "", "");
        row("24. 12. 2005", "24.12  00:00", "24.12.2005  12:30");
        row("1970/03/21", "21.03  00:00", "21.03.1970  12:30");
        row("3/21/1970 12:00:00 AM", "21.03  00:00", "21.03.1970  12:30");
        row("1970-03-21T07:45:00.000+01:00", "21.03  07:45", "21.03.1970  07:45");
        row("1970-03-21 24:00", "21.03  00:00", "21.03.1970  12:30");
        row("24.12.205", "", "");
        row("", "", "");
        rows.each([](const auto& cell, const auto& classic, const auto& contact) {
            QCOMPARE(classicBirthday(cell, DateOrder::DayFirst, importDay).text, classic);
            QCOMPARE(vcardBirthday(cell, u"12:30"_s, DateOrder::DayFirst, importDay).text, contact);
        });
    }

    void dateOrder()
    {
        QCOMPARE(vcardBirthday(u"5/4/2001", u"00:00"_s, DateOrder::MonthFirst, importDay).text,
                 u"04.05.2001  00:00"_s);
        QCOMPARE(vcardBirthday(u"5.4.2001", u"00:00"_s, DateOrder::MonthFirst, importDay).text,
                 u"05.04.2001  00:00"_s);
        QCOMPARE(DateSL55_2_Date(u"05.04.2001  02:30"_s),
                 QDateTime(QDate(2001, 4, 5), QTime(2, 30), Qt::UTC));
        QVERIFY(!DateSL55_2_Date(u"31.02.2001  02:30"_s).isValid());
    }

    void detection()
    {
        Rows<QString, QString> rows;
        rows.add("nothing at all", u"abc"_s, u";quoted"_s);
        rows.add("as many quotes as semicolons", u"\"a;\""_s + u";"_s, u";quoted"_s);
        rows.add("comma", u"a,b"_s, u",plain"_s);
        rows.add("quoted comma", u"\"a\",\"b\""_s, u",quoted"_s);
        rows.add("tab", u"a\tb\tc,d"_s, u"\tplain"_s);
        rows.add("tab as often as semicolon", u"a\tb;c"_s, u"\tplain"_s);
        rows.add("four lines only", u"a;b\n\r\n\nc\n,,,,,"_s, u";plain"_s);
        rows.each([](const auto& text, const auto& expected) {
            QCOMPARE(described(DetectCsvSeparator(text)), expected);
        });
    }

    void cells()
    {
        const TextLayout plain{.separator = Separator::Comma};
        const TextLayout quoted{.separator = Separator::Comma, .filter = u"\""_s};
        const TextLayout brackets{.separator = Separator::Comma, .filter = u"[\""_s};
        const TextLayout csv{.separator = Separator::Comma, .reading = Reading::Csv};
        Rows<QString, TextLayout, QString> rows;
        rows.add("line ends", u"a,b\r\nc,d\re,f\n\n\n \x85,g"_s, plain, u"a|b\nc|d\ne|f\n \x85|g"_s);
        rows.add("too many, too few", u"a,b\n1,2,3\n4"_s, plain, u"a|b\n1|2\n4|"_s);
        rows.add("separator within quotes", u"\"a,b\",\"c\"\n\"d\",\"e\""_s, quoted, u"a,b|c|\nd|e|"_s);
        rows.add("quotes within quotes", u"\"a\"\"b\",\"c\"d\""_s, quoted, u"ab|cd"_s);
        rows.add("quotes only where needed", u"\"a\",b\n1,\"2\""_s, quoted, u"a,b|\n1,2|"_s);
        // As a whole in the rows; by character in the heading.
        rows.add("two characters", u"[\"a[\",[\"b\n[\"c[[\",[\"d"_s, brackets, u"a|b\nc[|d"_s);
        rows.add("csv", u"a,\"b\"\r\n\"1,\"\"2\"\"\",\"x\r\ny\"\n,\"\""_s, csv, u"a|b\n1,\"2\"|x\r\ny\n|"_s);
        rows.add("csv without an end", u"a,\"b\n1,2"_s, csv, u"a|b\n1,2"_s);
        rows.add("csv with more behind a quote", u"\"a\"x,b"_s, csv, u"a|b"_s);
        rows.each([](const auto& text, const auto& layout, const auto& expected) {
            QCOMPARE(cellsOf(text, layout), expected);
        });
    }

    void headings()
    {
        const TextLayout brackets{.separator = Separator::Comma, .filter = u"[\""_s};
        QCOMPARE(headingsOf(u"[Na[me\",\"N\"r\nx", brackets), (QStringList{u"Name"_s, u"Nr"_s}));
        QCOMPARE(headingsOf(u"Name;Nr", brackets), QStringList());
        QCOMPARE(headingsOf(u"\"Na\nme\",Nr", {.separator = Separator::Comma, .reading = Reading::Csv}),
                 (QStringList{u"Na me"_s, u"Nr"_s}));
        QCOMPARE(CountOccurrences(u"aaa", u"aa"), 2);
    }

    void betterAsCsv()
    {
        const auto better = [](const QString& text, const QString& quote) {
            return rowsBetterReadAsCsv(text, {.separator = Separator::Comma, .filter = quote});
        };
        QCOMPARE(better(u"'a','b'\n'1',2"_s, u"'"_s), 1);
        Rows<QString, int> rows;
        rows.add("some quoted", u"\"a\",\"b\"\n\"1\",2\n\"3\",\"4\""_s, 1);
        rows.add("not valid", u"\"a\",\"b\"\n\"1\",2\nin 5\" x,1"_s, 0);
        rows.add("without an end", u"\"a\",b\n\"1,2"_s, 0);
        rows.each([&](const auto& text, const auto& count) {
            QCOMPARE(better(text, u"\""_s), count);
            QCOMPARE(better(text, u"'"_s), 0); // the filter names the quote
        });
    }

    void encodings()
    {
        Rows<QByteArray, Encoding, QString> rows;
        rows.add("ANSI", "M\xFC\x80", Encoding::Ansi, u"Mü€"_s);
        rows.add("UTF-8", "M\xC3\xBC", Encoding::Utf8, u"Mü"_s);
        rows.add("UTF-8 with a mark", "\xEF\xBB\xBFx", Encoding::Utf8, u"x"_s);
        rows.add("loose accent", "Mu\xCC\x88", Encoding::Utf8, u"Mü"_s);
        rows.add("UTF-8 that breaks off", "M\xC3\xBC\xC3", Encoding::Ansi, u"MÃ¼Ã"_s);
        rows.add("UTF-16 little-endian", QByteArray("\xFF\xFEM\0", 4), Encoding::Utf16, u"M"_s);
        rows.each([](const auto& bytes, const auto& encoding, const auto& text) {
            QCOMPARE(detectEncoding(bytes), encoding);
            QCOMPARE(decodeText(bytes, encoding), text);
        });
        QCOMPARE(decodeText(QByteArray("M\0", 2), Encoding::Utf16), u"M"_s); // little-endian without a mark
        QCOMPARE(decodeText("\xEF\xBB\xBFx", Encoding::Ansi), u"ï»¿x"_s);
    }

    void composedNames()
    {
        const WabContact peter{.givenName = u"Peter"_s, .surname = u"Meier"_s, .company = u"Firma"_s};
        const QString end = u" P"_s;
        Rows<SubNumberOptions, QString> rows;
        rows.add("usual", SubNumberOptions{.end = end}, u"Meier, P P"_s);
        rows.add("no number", SubNumberOptions{.count1 = u"x"_s}, u", P"_s);
        rows.add("not used", SubNumberOptions{.field2 = 6, .end = end}, u"Meier,  P"_s);
        rows.each(
            [&](const auto& options, const auto& name) { QCOMPARE(ComposeWabName(peter, options), name); });
    }

    void opening()
    {
        const auto faultOf = [](const QByteArray& bytes) {
            return openText(u"x.csv"_s, bytes, Shape::Classic, {}).fault;
        };
        QCOMPARE(faultOf(""), TextFault::NoFirstLine);
        QCOMPARE(faultOf("\r\na;b"), TextFault::NoFirstLine);
        QCOMPARE(faultOf(" \r\na;b"), TextFault::None);
        QCOMPARE(faultOf(QByteArray("PK\3\4\0\0", 6)), TextFault::Binary);
        QCOMPARE(faultOf(QByteArray("N\0a\0m\0e\0;\0", 10)), TextFault::UnmarkedUtf16);
        QCOMPARE(faultOf(QByteArray("\0N\0a\0m\0e\0;", 10)), TextFault::UnmarkedUtf16);
        QCOMPARE(faultOf(QByteArray(20000, ',')), TextFault::TooManyColumns);
        QCOMPARE(faultOf(QByteArray("x\r\n").repeated(250'000)), TextFault::None);
        QCOMPARE(faultOf(QByteArray("x\n").repeated(250'000) + "y"), TextFault::TooLarge);
        QCOMPARE(readTextFile(u"/none"_s).fault, TextFault::NotReadable);
    }

    void rememberedOptions()
    {
        tests::TestContext test;
        QCOMPARE(loadImportOptions(test.settings), RememberedChoices());
        RememberedChoices choices;
        choices.options.addresses.numbers[0].end = u" |x "_s;
        choices.options.addresses.numbers[4] = {
            .process = false, .field1 = 6, .count1 = u"07"_s, .middle = {}, .end = u" F"_s};
        choices.options.addresses.birthdayTime = u"23:30"_s;
        choices.options.addresses.fields[5] = 1;
        choices.options.numbers.outsideLine = true;
        choices.options.numbers.outsideDigits.clear();
        choices.options.existingByNumber = true;
        choices.classicHeadings[2] = u"Wann"_s;
        choices.vcardHeadings[0] = u"never written"_s;
        choices.options.text.defaultTime = u"08:00"_s; // starts anew each time
        SaveImportOptions(test.settings, choices);
        choices.options.addresses.numbers[0].end = u" x "_s; // every mark goes on reading
        choices.options.text.defaultTime = u"12:00"_s;
        choices.vcardHeadings[0].clear();
        QCOMPARE(loadImportOptions(test.settings), choices);
        test.settings.PutIniText(u"frmImportPb"_s, u"cmbField10"_s, u"99"_s);
        test.settings.PutIniText(u"frmImportPb"_s, u"cmbCount10"_s, u"x"_s);
        test.settings.PutIniText(u"frmImportPb"_s, u"txtCountry"_s, u"49"_s);
        test.settings.PutIniText(u"frmImportPb"_s, u"txtAmt"_s, u"x"_s);
        choices.options.numbers.outsideDigits = u"0"_s;
        QCOMPARE(loadImportOptions(test.settings), choices);
    }
};

KALMO_TEST(tst_ImportRules)
#include "tst_ImportRules.moc"
