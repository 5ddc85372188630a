// Workbooks and documents as other programs' readers find them. Each is skipped, and says so, where its
// reader is not installed.

#include "support/TestContext.h"
#include "support/TestProgram.h"
#include "transfer/export/DocxTarget.h"
#include "transfer/export/XlsxTarget.h"

using namespace kalmo::transfer;

namespace {

const QString python = u"/usr/bin/python3"_s; // the one that the packages of the system are for

const QString workbookScript = uR"(
import sys, openpyxl
sheet = openpyxl.load_workbook(sys.argv[1]).active
print(sheet.title, sheet.freeze_panes, sheet.print_title_rows, sheet.page_setup.orientation)
print(sheet['A1'].font.bold, sheet['A3'].font.bold, sheet['B3'].number_format, sheet['B3'].data_type)
print(*[sheet.column_dimensions[letter].width for letter in 'AB'])
print(sheet.column_dimensions['C'].max, sheet.column_dimensions['C'].number_format)
for row in sheet.iter_rows(values_only=True):
    print('|'.join('-' if cell is None else ascii(cell) for cell in row))
)"_s;

const QString documentScript = uR"(
import sys, docx
document = docx.Document(sys.argv[1])
table, section = document.tables[0], document.sections[0]
print(document.core_properties.title, section.orientation, section.page_width > section.page_height, len(document.tables))
print(['tblHeader' in row._tr.xml for row in table.rows])
for row in table.rows:
    print('|'.join(ascii(cell.text) for cell in row.cells))
)"_s;

const ExportTable table{
    .headings = {u"Name"_s, u"Nummer"_s},
    .hasEmptyLine = true,
    .rows = {{u"Jörg \"Jogi\" <&> 😀"_s, u"0171"_s}, {u"=1+1"_s, u"+49"_s}, {{}, u"1\x01"_s}},
    .columnCount = 2};

/// Runs a program to its end; what it printed, its error output too.
QString outputOf(const TestContext& test, const QString& program, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
    surroundings.insert(u"HOME"_s, test.folder.path());
    process.setProcessEnvironment(surroundings);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(120000))
        return process.errorString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

bool hasPython(const TestContext& test, const QString& module)
{
    return outputOf(test, python, {u"-c"_s, u"import "_s + module}).isEmpty();
}

QString workbook(const TestContext& test)
{
    return test.makeFile(u"Liste.xlsx"_s,
                         xlsxWorkbook(table, {u"Telefonbuch"_s}, test.storage + u"/config/temp"_s).bytes);
}

QString document(const TestContext& test)
{
    return test.makeFile(u"Liste.docx"_s, docxBytes(table, {u"Telefonbuch"_s}).value_or(QByteArray()));
}

} // namespace

class tst_OfficeReaders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void workbookByOpenpyxl()
    {
        const TestContext test;
        if (!hasPython(test, u"openpyxl"_s))
            QSKIP("openpyxl is not installed");
        QCOMPARE(outputOf(test, python, {u"-c"_s, workbookScript, workbook(test)}),
                 u"Telefonbuch A2 $1:$1 landscape\n"
                 "True False @ s\n"
                 "20.7109375 9.140625\n"
                 "26 @\n"
                 "'Name'|'Nummer'\n-|-\n"
                 "'J\\xf6rg \"Jogi\" <&> \\U0001f600'|'0171'\n'=1+1'|'+49'\n-|'1\\ufffd'\n"_s);
    }

    void documentByPythonDocx()
    {
        const TestContext test;
        if (!hasPython(test, u"docx"_s))
            QSKIP("python-docx is not installed");
        QCOMPARE(outputOf(test, python, {u"-c"_s, documentScript, document(test)}),
                 u"Kalmo - Telefonbuch LANDSCAPE (1) True 1\n"
                 "[True, False, False, False, False]\n"
                 "'Name'|'Nummer'\n''|''\n"
                 "'J\\xf6rg \"Jogi\" <&> \\U0001f600'|'0171'\n'=1+1'|'+49'\n''|'1\\ufffd'\n"_s);
    }

    void bothByLibreOffice()
    {
        const TestContext test;
        if (!outputOf(test, u"soffice"_s, {u"--version"_s}).startsWith(u"LibreOffice"_s))
            QSKIP("LibreOffice is not installed");
        const auto convert = [&test](const QString& kind, const QString& path) {
            outputOf(test, u"soffice"_s,
                     {u"--headless"_s, u"--convert-to"_s, kind, u"--outdir"_s, test.folder.path(), path});
        };
        convert(u"csv:Text - txt - csv (StarCalc):9,34,76"_s, workbook(test));
        QCOMPARE(QString::fromUtf8(test.contentOf(test.path(u"Liste.csv"_s))),
                 u"Name\tNummer\n\t\n\"Jörg \"\"Jogi\"\" <&> 😀\"\t0171\n=1+1\t+49\n\t1\uFFFD\n"_s);
        convert(u"txt:Text (encoded):UTF8"_s, document(test));
        QCOMPARE(QString::fromUtf8(test.contentOf(test.path(u"Liste.txt"_s))).remove(QChar(0xFEFF)),
                 u"Name\nNummer\n\n\nJörg \"Jogi\" <&> 😀\n0171\n=1+1\n+49\n\n1\uFFFD\n\n"_s);
    }
};

KALMO_TEST(tst_OfficeReaders)
#include "tst_OfficeReaders.moc"
