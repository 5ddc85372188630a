// Contacts as text and back, and what the phone says of its contacts.

#include "app/CodePage.h"
#include "app/Utf8Small.h"
#include "phonedata/IrmcAnswers.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfFiles.h"
#include "phonedata/VcfText.h"
#include "support/TestContext.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using tests::TestContext;

namespace {

const tVcfEntry fullEntry{.email = u"a;b@example.org"_s,
                          .lastName = u"Müller;x"_s,
                          .work = u"0521 1"_s,
                          .mobile = u"0170"_s,
                          .home = u"+49#*"_s,
                          .firstName = u"Hans"_s,
                          .birthday = u"1970-03-21T12:30"_s,
                          .luid = u"0007"_s};

/// What VcfQpDec has to come to, done as it is said.
QString decodedStepByStep(QString text)
{
    for (qsizetype at = text.indexOf(u'='); at >= 0; at = text.indexOf(u'=')) {
        const QString sequence = text.mid(at, 3);
        const QByteArray digits = sequence.mid(1).toLatin1();
        const bool isHex = digits.size() == 2 && isxdigit(digits[0]) && isxdigit(digits[1]);
        text.replace(sequence, QString(QChar(isHex ? digits.toUInt(nullptr, 16) : 0)));
    }
    return text;
}

} // namespace

class tst_VcfCodec : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builds_data();
    void builds();
    void parses_data();
    void parses();
    void decodesLikeTheLoop();
    void charsetCountsForTheWholeObject();
    void cardsOfAnObject();
    void answers_data();
    void answers();
    void infoLog_data();
    void infoLog();
    void files();
};

void tst_VcfCodec::builds_data()
{
    QTest::addColumn<tVcfEntry>("entry");
    QTest::addColumn<bool>("encode");
    QTest::addColumn<QByteArray>("lines"); // between the first and the last

    QTest::newRow("all, raw") << fullEntry << false
                              << QByteArray("N:M\xFCller\\;x;Hans\r\nEMAIL;INTERNET:a\\;b@example.org\r\n"
                                            "TEL;HOME:+49#*\r\nTEL;WORK:0521 1\r\nTEL;CELL:0170\r\n"
                                            "X-IRMC-LUID:0007\r\nBDAY:1970-03-21T12:30\r\n");
    QTest::newRow("encoded") << tVcfEntry{.lastName = u"Müller"_s, .firstName = u"Hans"_s} << true
                             << QByteArray("N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BCller;Hans\r\n"
                                           "X-IRMC-LUID:\r\nBDAY:\r\n");
    QTest::newRow("nothing to encode, e-mail never is")
        << tVcfEntry{.email = u"ü"_s, .lastName = u"A=B"_s} << true
        << QByteArray("N:A=B;\r\nEMAIL;INTERNET:\xFC\r\nX-IRMC-LUID:\r\nBDAY:\r\n");
    QTest::newRow("a value adds no lines") << tVcfEntry{.lastName = u"A\r\nTEL;HOME:1"_s} << false
                                           << QByteArray("N:A  TEL\\;HOME:1;\r\nX-IRMC-LUID:\r\nBDAY:\r\n");
}

void tst_VcfCodec::builds()
{
    QFETCH(tVcfEntry, entry);
    QFETCH(bool, encode);
    QFETCH(QByteArray, lines);
    const QByteArray card = VcfBuildItem(entry, encode);
    QCOMPARE(card, "BEGIN:VCARD\r\n" + lines + "END:VCARD\r\n\r\n");
    const tVcfEntry back = VcfParseItem(VcfStripCharset(app::fromCp1252(card)), 5);
    if (!entry.lastName.contains(u'\r')) {
        entry.luid = entry.luid.isEmpty() ? u"005"_s : entry.luid;
        QVERIFY(entry.email.isEmpty() || back.email.isEmpty()); // written and read under different names
        entry.email = back.email;
        QCOMPARE(back, entry);
        QCOMPARE(vcfEntryFrom(toRow(back)), back);
    }
}

void tst_VcfCodec::parses_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QStringList>("cells");

    QTest::newRow("birthday") << u"N:Meier\r\nBDAY:1970-03-21T12:30\r\nX-IRMC-LUID:9"_s
                              << QStringList{u"Meier"_s, {}, {}, {}, {}, {}, u"21.03.1970  12:30"_s, u"9"_s};
    QTest::newRow("further semicolons") << u"N:a\\;b;c;;;\r\nX-IRMC-LUID:9\r\n"_s
                                        << QStringList{u"a;b"_s, u"c;;;"_s, {}, {}, {}, {}, {}, u"9"_s};
    QTest::newRow("soft line break, CR, NUL")
        << u"N:Mei=\r\ner\rx\r\nTEL;HOME:12"_s + QChar(0) + u"3\r\nX-IRMC-LUID:"_s
        << QStringList{u"Meier"_s, {}, u"12"_s, {}, {}, {}, {}, u"042"_s};
}

void tst_VcfCodec::parses()
{
    QFETCH(QString, lines);
    const toolkit::ListRow row = toRow(VcfParseItem(u"BEGIN:VCARD\r\n"_s + lines, 42));
    QStringList cells;
    for (const toolkit::ListCell& cell : row.cells)
        cells.append(cell.text);
    QTEST(cells, "cells");
    QCOMPARE(row.key, u'i' + cells.last());
}

/// Made-up texts of few letters, so that sequences hide in each other and come about by replacing others.
void tst_VcfCodec::decodesLikeTheLoop()
{
    QRandomGenerator random(1);
    const QString letters = u"==343DdA"_s + QChar(0);
    for (int count = 0; count < 20000; ++count) {
        QString text(random.bounded(25), u'x');
        for (QChar& letter : text)
            letter = letters[random.bounded(letters.size())];
        QCOMPARE(VcfQpDec(text), app::UFT8Dec(decodedStepByStep(text)));
    }
    QCOMPARE(VcfQpDec(u"M=C3=BCller"_s), u"Müller"_s);
    QCOMPARE(VcfQpDec(VcfQpEnc(u"€éß"_s)), u"€éß"_s);
}

void tst_VcfCodec::charsetCountsForTheWholeObject()
{
    QCOMPARE(VcfStripCharset(u"N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=C3=BC\r\nEMAIL:a=41"_s),
             u"N:ü\r\nEMAIL:aA"_s);
    QCOMPARE(VcfStripCharset(u"N;CHARSET=UTF-8:Ã¼ =41"_s), u"N:Ã¼ =41"_s);
}

void tst_VcfCodec::cardsOfAnObject()
{
    const QString own = u"BEGIN:VCARD\r\nN:me\r\nEND:VCARD\r\n"_s;
    const QString one = u"BEGIN:VCARD\r\nN:A\r\nX-IRMC-LUID:1\r\nEND:VCARD\r\n"_s;
    const VcfCards cards = parseCards(own + one + one + one.chopped(11));
    QCOMPARE(cards.upperBound, 3); // the last piece has lost its end
    QCOMPARE(cards.entries.size(), 3);
    QCOMPARE(parseCards({}).upperBound, 0);
}

void tst_VcfCodec::answers_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("luid");
    QTest::addColumn<int>("counter"); // -1: no answer of that kind

    QTest::newRow("good") << QByteArray("4C000C01043132333402 0137") << u"1234"_s << 7;
    QTest::newRow("tags don't count") << QByteArray("4C000C99043132333499 0137") << u"1234"_s << 7;
    QTest::newRow("length too great") << QByteArray("4C000E01043132333402 0137") << QString() << -1;
    QTest::newRow("another header") << QByteArray("48000C01043132333402 0137") << QString() << -1;
    QTest::newRow("cut off") << QByteArray("4C0007 01FF3132") << u"12"_s << 0;
    QTest::newRow("nothing") << QByteArray() << QString() << -1;
}

void tst_VcfCodec::answers()
{
    QFETCH(QByteArray, hex);
    QFETCH(QString, luid);
    QFETCH(int, counter);
    const auto answer = parseLuidAnswer(QByteArray::fromHex(hex));
    QCOMPARE(answer, counter < 0 ? std::nullopt : std::optional(LuidAnswer{luid, counter}));
}

void tst_VcfCodec::infoLog_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("kap"); // -1: none
    QTest::addColumn<int>("belegt");

    QTest::newRow("usual") << QByteArray("Total-Records:25\r\nMaximum-Records:250\r\nIEL:8\r\n") << 250 << 25;
    QTest::newRow("no end, too great")
        << QByteArray("Maximum-Records: 99999\r\nTotal-Records:7") << 32767 << 7;
    QTest::newRow("one lacks") << QByteArray("Maximum-Records:250\r\n") << -1 << 0;
}

void tst_VcfCodec::infoLog()
{
    QFETCH(QByteArray, text);
    QFETCH(int, kap);
    QFETCH(int, belegt);
    const auto info = parseInfoLog(text);
    QCOMPARE(info.has_value(), kap >= 0);
    if (info)
        QCOMPARE(*info, (tVcfInfo{static_cast<qint16>(kap), static_cast<qint16>(belegt)}));
}

void tst_VcfCodec::files()
{
    const TestContext test;
    app::Context context = test.context;
    const auto list = makeVcfRows();
    const QString path = test.path(u"new/liste.csv"_s);
    QVERIFY(SaveVcfCsv(context, *list, path));
    QVERIFY(!QFile::exists(path));
    list->add(toRow(fullEntry));
    list->setText(0, VcfFirstName, u" \tHa\"ns "_s);
    QVERIFY(VCF2BackupFile(context, *list, path));
    QCOMPARE(TestContext::contentOf(path),
             "Nachname\tVorname\tTel. privat\tTel. Handy\tTel. gesch\xE4"
             "ftlich\tEmail\tJahrestag\tLUID\r\n"
             "M\xFCller;x\tHa\"ns\t+49#*\t0170\t0521 1\ta;b@example.org\t21.03.1970  12:30\t0007\r\n");
    QVERIFY(SaveVcfCsv(context, *list, path));
    QCOMPARE(
        TestContext::contentOf(path),
        "\"Nachname\",\"Vorname\",\"Telefon\",\"Tel. (Mobil)\",\"Tel. (B\xFCro)\",\"Email\",\"Jahrestag\"\r\n"
        "\"M\xFCller;x\",\" \tHa\"ns \",\"+49#*\",\"0170\",\"0521 1\",\"a;b@example.org\","
        "\"21.03.1970  12:30\"\r\n");
}

QTEST_GUILESS_MAIN(tst_VcfCodec)
#include "tst_VcfCodec.moc"
