// Files of contacts: what is saved can be read again, and what is not understood is refused as a whole.

#include "cli/ContactFiles.h"
#include "support/Rows.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::cli;

class tst_ContactFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void savedAndRead();
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
                            {.home = u"2"_s, .luid = u"0002"_s}};
    Contacts read;
    QString error;
    QVERIFY(readContactJson(contactFileBytes(u"x.JSON"_s, saved), read, error));
    QCOMPARE(read, saved);
    QVERIFY(readContactCsv(contactFileBytes(u"x.csv"_s, saved), read, error));
    read[0].luid = saved[0].luid; // which that form does not have
    read[1].luid = saved[1].luid;
    QCOMPARE(read, saved);
    QVERIFY(contactFileBytes(u"x.vcf"_s, saved).startsWith("BEGIN:VCARD\r\nVERSION:2.1\r\nN;ENC"));
    QCOMPARE(warningsAbout(saved[0]), QStringList());
    QCOMPARE(
        warningsAbout({.lastName = QString(17, u'x'), .home = u"0 1"_s, .birthday = u"tomorrow"_s}).size(),
        3);
}

void tst_ContactFiles::refusals()
{
    const kalmo::tests::Rows<QByteArray, QString> rows{
        {"key", R"([{"home": "1"}, {"Home": "1"}])", u"contact 2: unknown key \"Home\""_s},
        {"no text", R"([{"home": 1}])", u"contact 1: \"home\" must be a text"_s},
        {"nothing in it", R"({"luid": "1"})", u"contact 1: there is nothing in it"_s},
        {"a line end", R"({"home": "1\nTEL:2"})", u"contact 1: there is a control character in \"home\""_s},
        {"foreign letters", R"({"lastName": "Łukasz"})",
         u"contact 1: there is a letter in \"lastName\" that no phone has"_s},
        {"a field too few", R"("A","","1","","","")",
         u"line 1: expected seven fields: last name, first name, home, mobile, work, e-mail, birthday"_s},
        {"birthday", R"("A","","1","","","","1970-03-21")",
         u"line 1: the birthday is not of the form \"21.03.1970  12:30\""_s},
    };
    for (const auto& [bytes, wanted] : rows) {
        Contacts read;
        QString error;
        QVERIFY(!(bytes.startsWith('"') ? readContactCsv : readContactJson)(bytes, read, error));
        QCOMPARE(error, wanted);
    }
}

QTEST_GUILESS_MAIN(tst_ContactFiles)
#include "tst_ContactFiles.moc"
