// kalmoctl exports the list of a handset in real time, with the template that lies beside the program.

#include "support/RunningPrograms.h"
#include "support/TestProgram.h"

class tst_KalmoctlExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pageWorkbookAndRefusal()
    {
        RunningPrograms programs;
        const QString seed = programs.makeFile(
            u"seed.json"_s,
            R"({"phonebook": [{"name": "Jörg", "number": "0171"}, {"name": "<b>", "number": "2"}]})");
        QVERIFY(programs.startHandset({u"--model"_s, u"PICASSO"_s, u"--seed"_s, seed}));
        const QString page = programs.path(u"Liste.html"_s);
        const QStringList command{u"-q"_s, u"phonebook"_s, u"export"_s, page};

        const ProgramRun made = programs.kalmoctl(command + QStringList{u"--columns"_s, u"Name"_s});
        QCOMPARE(made.err, QString());
        QCOMPARE(made.out, u"2 entries exported to HOME/Liste.html.\n"_s);
        const QByteArray html = programs.contentOf(u"Liste.html"_s);
        QVERIFY(html.startsWith("<!DOCTYPE html>"));
        QVERIFY(html.endsWith("</html>\n"));
        QVERIFY(html.contains("<title>Kalmo - Telefonbuch</title>"));
        QVERIFY(html.contains(
            "\t\t<tr class=\"tableheader\">\r\n\t\t\t<td>Name</td>\r\n\t\t</tr>\r\n"
            "\t\t<tr class=\"tablestyle2\">\r\n\t\t\t<td valign=\"top\">J\xF6rg</td>\r\n\t\t</tr>\r\n"
            "\t\t<tr class=\"tablestyle1\">\r\n\t\t\t<td valign=\"top\"><b></td>\r\n\t\t</tr>\r\n"));
        QVERIFY(!html.contains('$'));

        // Nobody is there to agree, so the page stays and the phone is not asked.
        const ProgramRun refused = programs.kalmoctl(command);
        QCOMPARE(refused.status, 4);
        QCOMPARE(programs.contentOf(u"Liste.html"_s), html);

        const ProgramRun workbook =
            programs.kalmoctl({u"--json"_s, u"phonebook"_s, u"export"_s, programs.path(u"Liste.xlsx"_s)});
        QCOMPARE(workbook.status, 0);
        QCOMPARE(workbook.out,
                 u"{\n    \"columns\": 6,\n    \"file\": \"HOME/Liste.xlsx\",\n    \"rows\": 2\n}\n"_s);
        QVERIFY(programs.contentOf(u"Liste.xlsx"_s).startsWith("PK"));
        QCOMPARE(programs.stopHandset(), QString());
    }
};

KALMO_TEST(tst_KalmoctlExport)
#include "tst_KalmoctlExport.moc"
