// Files of contacts: what is saved can be read again, and what is not understood is refused as a whole.

#include "cli/ContactFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::cli;
using kalmo::phonedata::tVcfEntry;

class tst_ContactFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void savedAndRead();
    void refusals_data();
    void refusals();
};

void tst_ContactFiles::savedAndRead()
{
    const Contacts saved = {{.email = u"a@b.de"_s,
                             .lastName = u"Groß \"X\", B."_s,
                             .work = u"+49*1"_s,
                             .firstName = u"Zoë"_s,
                             .birthday = u"1970-03-21T12:30"_s,
                             .luid = u"0001"_s},
                            {.home = u"2\u0081\t"_s, .birthday = u"1970-03-21"_s, .luid = u"0002"_s},
                            {.luid = u"0003"_s}};
    Contacts read;
    QString error;
    QVERIFY(readContactJson(contactFileBytes(u"x.JSON"_s, saved), read, error));
    QCOMPARE(read, saved);
    QVERIFY(readContactCsv(contactFileBytes(u"x.csv"_s, saved), read, error));
    read[0].luid = saved[0].luid; // which that form does not have
    read[1].luid = saved[1].luid;
    read[2].luid = saved[2].luid;
    QCOMPARE(read, saved);
    QVERIFY(!holdsNothing(read[1]) && holdsNothing(read[2]));
    const Contacts moved = {{.home = u"2"_s, .birthday = u"1970-03-1T12:30:05"_s}};
    QVERIFY(readContactCsv(contactFileBytes(u"x.csv"_s, moved), read, error));
    QCOMPARE(read[0].birthday, u"1970-03-01T12:30:05"_s);
    QVERIFY(contactFileBytes(u"x.vcf"_s, saved).startsWith("BEGIN:VCARD\r\nVERSION:2.1\r\nN;ENC"));
    QCOMPARE(warningsAbout(saved[0]), QStringList());
    QCOMPARE(
        warningsAbout({.lastName = QString(17, u'x'), .home = u"0 1"_s, .birthday = u"tomorrow"_s}).size(),
        3);
}

void tst_ContactFiles::refusals_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("error");
    QTest::newRow("key") << "[{\"home\": \"1\"}, {\"Home\": \"1\"}]"_ba
                         << u"contact 2: unknown key \"Home\""_s;
    QTest::newRow("no text") << "[{\"home\": 1}]"_ba << u"contact 1: \"home\" must be a text"_s;
    QTest::newRow("a line end") << "{\"home\": \"1\\nTEL:2\"}"_ba
                                << u"contact 1: there is a line end or a NUL in \"home\""_s;
    QTest::newRow("foreign letters") << "{\"lastName\": \"Łukasz\"}"_ba
                                     << u"contact 1: there is a letter in \"lastName\" that no phone has"_s;
    QTest::newRow("a field too few")
        << "\"A\",\"\",\"1\",\"\",\"\",\"\"\r\n"_ba
        << u"line 1: expected seven fields: last name, first name, home, mobile, "
           "work, e-mail, birthday"_s;
    QTest::newRow("birthday") << "\"A\",\"\",\"1\",\"\",\"\",\"\",\"1970-03-21\"\r\n"_ba
                              << u"line 1: the birthday is not of the form \"21.03.1970  12:30\""_s;
}

void tst_ContactFiles::refusals()
{
    QFETCH(QByteArray, bytes);
    Contacts read;
    QString error;
    const bool isCsv = bytes.startsWith('"');
    QVERIFY(!(isCsv ? readContactCsv(bytes, read, error) : readContactJson(bytes, read, error)));
    QTEST(error, "error");
}

QTEST_GUILESS_MAIN(tst_ContactFiles)
#include "tst_ContactFiles.moc"
