// Export of a list: the texts that are taken, each format by itself, and names of files that are refused.

#include "app/CodePage.h"
#include "phonedata/ClassicEntry.h"
#include "phonedata/VcfEntry.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"
#include "transfer/export/CsvTarget.h"
#include "transfer/export/DocxTarget.h"
#include "transfer/export/ExportOptions.h"
#include "transfer/export/HtmlTarget.h"
#include "transfer/export/VcfTarget.h"
#include "transfer/export/XlsxTarget.h"
#include "transfer/export/ZipFile.h"

using namespace kalmo::transfer;

namespace {

ExportTable tableOf(const QStringList& headings, const std::vector<QStringList>& rows)
{
    const auto columns = static_cast<int>(headings.isEmpty() ? rows.front().size() : headings.size());
    return {.headings = headings, .rows = rows, .columnCount = columns};
}

/// A list with the columns A, B, C and the rows 1 to 4, of which 2 and 4 are selected; row 3 lacks a cell.
std::unique_ptr<toolkit::ListRows> letters()
{
    auto list = std::make_unique<toolkit::ListRows>(
        u"lvwTB"_s, QList<toolkit::ListColumn>{{u" A "_s}, {u"B"_s}, {u"C"_s}});
    for (const QString& number : {u"1"_s, u"2"_s, u"3"_s, u"4"_s}) {
        toolkit::ListRow row{.cells = {{u" a"_s + number}, {u"b"_s + number + u" "_s}, {u"\tc"_s + number}}};
        if (number == u"3"_s)
            row.cells.removeLast();
        row.selected = number == u"2"_s || number == u"4"_s;
        list->add(row);
    }
    return list;
}

QString inWords(const ExportTable& table)
{
    QStringList lines;
    if (table.hasHeader())
        lines.append(table.headings.join(u'|'));
    if (table.hasEmptyLine)
        lines.append(u"-"_s);
    for (const QStringList& row : table.rows)
        lines.append(row.join(u'|'));
    return lines.join(u'/');
}

} // namespace

class tst_ExportTargets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesColumnsAndRows()
    {
        const Rows<ExportChoice, QString> rows = {
            {"all of it", {.columns = {0, 1, 2}}, u"A|B|C/a1|b1|\tc1/a2|b2|\tc2/a3|b3|/a4|b4|\tc4"_s},
            {"columns", {.columns = {0, 2}, .onlySelected = true}, u"A|C/a2|\tc2/a4|\tc4"_s},
            {"no header takes the empty line along", {{1}, true, false, true}, u"b2/b4"_s},
            {"empty line", {{1}, true, true, true}, u"B/-/b2/b4"_s},
        };
        const auto list = letters();
        rows.each([&](const auto& choice, const auto& expected) {
            QCOMPARE(inWords(makeExportTable(*list, choice)), expected);
        });
        list->sortBy(0, Qt::DescendingOrder);
        QCOMPARE(inWords(makeExportTable(*list, {.columns = {0}, .useHeader = false})), u"a4/a3/a2/a1"_s);
        QCOMPARE(makeExportTable(*list, {.columns = {0, 1}, .addEmptyLine = true}).lineCount(), 6);
    }

    void cellsOfCsv()
    {
        using enum CsvSeparator;
        const Rows<QString, CsvSeparator, QString, QString> rows = {
            {"the separator", u"Maier, Hans"_s, Comma, u";"_s, u"Maier; Hans"_s},
            {"at the end, by a blank", u"Maier,"_s, Comma, u" "_s, u"Maier"_s},
            {"a lone comma between quotes", u"Maier, Hans"_s, QuotedComma, u" "_s, u"Maier, Hans"_s},
            {"the whole separator", u"a\",\"b"_s, QuotedComma, u" "_s, u"a b"_s},
            {"its beginning", u"a\",b"_s, QuotedComma, u"+"_s, u"a+b"_s},
            {"its end", u"a,\"b"_s, QuotedComma, u"+"_s, u"a+b"_s},
            {"what the first pass leaves", u"\",\",\""_s, QuotedComma, u"+"_s, u"++"_s},
            {"nothing in its place", u"a;b"_s, Semicolon, QString(), u"ab"_s},
            {"tab", u"\ta\tb "_s, Tab, u" "_s, u"a b"_s},
        };
        rows.each([&](const auto& text, const auto& separator, const auto& replacement,
                      const auto& expected) { QCOMPARE(CsvCell(text, separator, replacement), expected); });
    }

    void linesOfCsv()
    {
        using enum CsvSeparator;
        const Rows<ExportTable, CsvSeparator, QByteArray> rows = {
            {"plain", tableOf({u"A"_s, u"B"_s}, {{u"1"_s, u"2"_s}}), Comma, "A,B\r\n1,2\r\n"},
            {"quoted", tableOf({u"A"_s, u"B"_s}, {{u"1"_s, {}}}), QuotedSemicolon,
             "\"A\";\"B\"\r\n\"1\";\"\"\r\n"},
            {"one column between quotes", tableOf({}, {{u"1"_s}}), QuotedComma, "\"1\"\r\n"},
            {"a heading is a cell", tableOf({u"A,B"_s, u"C"_s}, {}), Comma, "A B,C\r\n"},
            {"an empty line is wholly empty",
             {.headings = {u"A"_s, u"B"_s}, .hasEmptyLine = true, .columnCount = 2},
             QuotedComma,
             "\"A\",\"B\"\r\n\r\n"},
            {"letters that the code page lacks", tableOf({}, {{u"Łukasz"_s, u"Jörg €"_s}}), Tab,
             "?ukasz\tJ\xF6rg \x80\r\n"},
        };
        rows.each([&](const auto& table, const auto& separator, const auto& expected) {
            QCOMPARE(csvBytes(table, separator, u" "_s), expected);
        });
    }

    /// Only the marks change, and what comes in is not looked at again.
    void templates()
    {
        const QByteArray rowOfA =
            "\t\t<tr class=\"tablestyle2\">\r\n\t\t\t<td valign=\"top\">a</td>\r\n\t\t</tr>\r\n";
        const auto rowOf = [&](const QByteArray& cell) {
            return QByteArray(rowOfA).replace(">a<", '>' + cell + '<');
        };
        const QByteArray bytes = QByteArray::fromHex("efbbbf00818dff0d0a0a0dc3bc");
        const Rows<QByteArray, QString, std::optional<QByteArray>> rows = {
            {"rows and title", "<t>$Document.Title$</t>$Table.Title$<$Table.Content$>.", u"a"_s,
             "<t>K - L</t>K - L" + rowOfA + '.'},
            {"twice", "<$Table.Content$>|<$Table.Content$>", u"a"_s, rowOfA + '|' + rowOfA},
            {"without a title", "<$Table.Content$>", u"a"_s, rowOfA},
            {"no place", "$Document.Title$ <$Table.Content $>", u"a"_s, std::nullopt},
            {"empty", {}, u"a"_s, std::nullopt},
            {"marks in a cell", "$Table.Title$<$Table.Content$>", u"$Document.Title$<$Table.Content$>"_s,
             "K - L" + rowOf("$Document.Title$<$Table.Content$>")},
            {"nothing is escaped", "<$Table.Content$>", u"<b> & \"Jörg\" €"_s,
             rowOf("<b> & \"J\xF6rg\" \x80")},
            {"every byte stays", bytes + "<$Table.Content$>" + bytes, u"a"_s, bytes + rowOfA + bytes},
        };
        rows.each([&](const auto& page, const auto& cell, const auto& expected) {
            QCOMPARE(filledTemplate(page, u"K - L"_s, tableOf({}, {{cell}})), expected);
        });
    }

    void cards()
    {
        const auto contacts = phonedata::makeVcfRows();
        contacts->add(phonedata::toRow(phonedata::tVcfEntry{.email = u"a@b.de"_s,
                                                            .lastName = u"Müller; M"_s,
                                                            .mobile = u"0171"_s,
                                                            .home = u"030"_s,
                                                            .firstName = u"Jo"_s,
                                                            .birthday = u"1970-03-2T12:30"_s,
                                                            .luid = u"7"_s}));
        contacts->add(phonedata::toRow(phonedata::tVcfEntry{.lastName = u"Zwei"_s, .luid = u"8"_s}));
        contacts->setSelected(0, true);
        QCOMPARE(vcfBytes(*contacts, {.columns = {0, 1, 2, 6}, .onlySelected = true}),
                 QByteArray("BEGIN:VCARD\r\nVERSION:2.1\r\n"
                            "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BCller\\; M;Jo\r\n"
                            "TEL;HOME:030\r\nBDAY:1970-03-02T12:30\r\nEND:VCARD\r\n\r\n"));
        QCOMPARE(vcfBytes(*contacts, {.columns = {0, 1}}).count("BEGIN:VCARD"), 2);

        const auto entries = phonedata::makePhonebookRows();
        entries->add(phonedata::toRow(phonedata::ClassicEntry{
            .name = u"Anna"_s, .number = u"0301"_s, .date = u"24.12  08:30"_s, .vip = u"Ja"_s}));
        QCOMPARE(vcfBytes(*entries, {.columns = {0, 1, 2, 3, 4, 5}}),
                 QByteArray("BEGIN:VCARD\r\nVERSION:2.1\r\nN:Anna;\r\nTEL;HOME:0301\r\nBDAY:--12-24\r\n"
                            "END:VCARD\r\n\r\n"));
    }

    /// The parts of a workbook that no reader's programming interface shows, as the readers of OfficeReaders
    /// do.
    void sheet()
    {
        const TestContext test;
        const QString scratch = test.storage + u"/config/temp"_s;
        const ExportTable table = tableOf({u"Name"_s}, {{u"0171"_s}, {QString(40000, u'x')}});
        const Workbook book = xlsxWorkbook(table, {u"Telefonbuch"_s}, scratch);
        QCOMPARE(book.error, 0);
        const QByteArray sheet = zipPart(book.bytes, "xl/worksheets/sheet1.xml").value_or(QByteArray());
        QVERIFY(sheet.contains("<ignoredError sqref=\"A1:Z1048576\" numberStoredAsText=\"1\"/>"));
        QCOMPARE(QDir(scratch).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        QVERIFY(xlsxWorkbook(table, {u"Telefonbuch"_s}, test.path(u"missing"_s)).error != 0);
    }

    void document()
    {
        const auto part = [](bool fitsWidths) {
            const auto bytes = docxBytes(tableOf({u"Name"_s}, {{u"A"_s}}), {u"Telefonbuch"_s, fitsWidths});
            return zipPart(bytes.value_or(QByteArray()), "word/document.xml").value_or(QByteArray());
        };
        QVERIFY(part(true).contains("<w:tblLayout w:type=\"autofit\"/>"));
        QVERIFY(part(false).contains("<w:tblW w:w=\"5000\" w:type=\"pct\"/>"));
        QVERIFY(!zipPart("PK no archive", "word/document.xml"));
    }

    void texts()
    {
        const Rows<QString, QString> rows = {
            {"plain", u"Jörg 😀\t\n"_s, u"Jörg 😀\t\n"_s},
            {"control characters", u"a\x02\x1b"_s + QChar(0) + u"b"_s, u"a\uFFFD\uFFFD\uFFFDb"_s},
            {"half a pair", QString(u'a') + QChar(0xD83D), u"a\uFFFD"_s},
        };
        rows.each([&](const auto& text, const auto& expected) { QCOMPARE(xmlText(text), expected); });
    }

    void paths()
    {
        const QString tooShort =
            u"Bitte geben Sie einen gültigen Pfad- und Dateinamen ein oder verwenden Sie die Knopf "
            u"neben dem Eingabelfeld, um eine Datei auszuwählen."_s;
        const QString refused =
            u"Der neue Ordner- bzw. Dateiname darf folgende Zeichen nicht enthalten\n/ : * ? < > "_s;
        const Rows<QString, QString> rows = {
            {"empty", {}, tooShort},
            {"two characters", u"/a"_s, tooShort},
            {"a drive", u"C:x.csv"_s, {}},
            {"a colon", u"/a:b"_s, refused},
            {"a bracket", u"/home/<b>"_s, refused},
        };
        rows.each([&](const auto& path, const auto& expected) { QCOMPARE(exportPathFault(path), expected); });
    }
};

KALMO_TEST(tst_ExportTargets)
#include "tst_ExportTargets.moc"
