// Contacts as text and back, and what the phone says of its contacts.

#include "app/CodePage.h"
#include "app/Utf8Small.h"
#include "phonedata/IrmcAnswers.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfFiles.h"
#include "phonedata/VcfText.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

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

/// The result that VcfQpDec has to have, computed step by step.
QString decodedStepByStep(QString text)
{
    for (qsizetype at = text.indexOf(u'='); at >= 0; at = text.indexOf(u'=')) {
        const QString sequence = text.mid(at, 3);
        const QByteArray digits = sequence.mid(1).toLatin1();
        const bool isHex = digits.size() == 2 && isxdigit(digits[0]) && isxdigit(digits[1]);
        text.replace(sequence, QString(QChar(isHex ? digits.toUInt(nullptr, 16) : 0)));
    }
    return app::UFT8Dec(text);
}

} // namespace

class tst_VcfCodec : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builds()
    {
        const struct
        {
            tVcfEntry entry;
            bool encode;
            QByteArray lines; // between the first and the last
        } table[] = {
            {fullEntry, false,
             "N:M\xFCller\\;x;Hans\r\nEMAIL;INTERNET:a\\;b@example.org\r\nTEL;HOME:+49#*\r\nTEL;WORK:0521 "
             "1\r\n"
             "TEL;CELL:0170\r\nX-IRMC-LUID:0007\r\nBDAY:1970-03-21T12:30\r\n"},
            {{.lastName = u"Müller"_s, .firstName = u"Hans"_s},
             true,
             "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BCller;Hans\r\nX-IRMC-LUID:\r\nBDAY:\r\n"},
            {{.email = u"ü"_s, .lastName = u"A=B"_s},
             true, // the e-mail is never encoded
             "N:A=B;\r\nEMAIL;INTERNET:\xFC\r\nX-IRMC-LUID:\r\nBDAY:\r\n"},
            {{.lastName = u"A\r\nB"_s}, false, "N:A  B;\r\nX-IRMC-LUID:\r\nBDAY:\r\n"},
        };
        for (const auto& row : table) {
            const QByteArray card = VcfBuildItem(row.entry, row.encode);
            QCOMPARE(card, "BEGIN:VCARD\r\n" + row.lines + "END:VCARD\r\n\r\n");
            const tVcfEntry back = VcfParseItem(VcfStripCharset(app::fromCp1252(card)), 5);
            QCOMPARE(back.lastName, QString(row.entry.lastName).replace(u"\r\n"_s, u"  "_s));
            QCOMPARE(back.luid, row.entry.luid.isEmpty() ? u"005"_s : row.entry.luid);
            QCOMPARE(back.work, row.entry.work);
            QCOMPARE(vcfEntryFrom(toRow(back)), back);
        }
    }

    void parses()
    {
        const std::pair<QString, QStringList> table[] = {
            {u"N:Meier\r\nBDAY:1970-03-21T12:30\r\nX-IRMC-LUID:9"_s,
             {u"Meier"_s, {}, {}, {}, {}, {}, u"21.03.1970  12:30"_s, u"9"_s}},
            {u"N:a\\;b;c;;;\r\nEMAIL:x\\;y\r\nX-IRMC-LUID:9\r\n"_s,
             {u"a;b"_s, u"c;;;"_s, {}, {}, {}, u"x;y"_s, {}, u"9"_s}},
            {u"N:Mei=\r\ner\rx\r\nTEL;HOME:12"_s + QChar(0) + u"3\r\nX-IRMC-LUID:"_s,
             {u"Meier"_s, {}, u"12"_s, {}, {}, {}, {}, u"042"_s}},
        };
        for (const auto& [lines, cells] : table) {
            const toolkit::ListRow row = toRow(VcfParseItem(u"BEGIN:VCARD\r\n"_s + lines, 42));
            for (int column = 0; column < cells.size(); ++column)
                QCOMPARE(row.text(column), cells[column]);
            QCOMPARE(row.key, u'i' + cells.last());
            QCOMPARE(vcfEntryFrom(row).isStandIn, cells.last() == u"042");
        }
    }

    /// Made-up texts of few letters, so that sequences hide in each other and come about by replacing others.
    void decodesLikeTheLoop()
    {
        QRandomGenerator random(1);
        const QString letters = u"==343DdA"_s + QChar(0);
        for (int count = 0; count < 20000; ++count) {
            QString text(random.bounded(25), u'x');
            for (QChar& letter : text)
                letter = letters[random.bounded(letters.size())];
            QCOMPARE(VcfQpDec(text), decodedStepByStep(text));
        }
        QCOMPARE(VcfQpDec(VcfQpEnc(u"M€éß"_s)), u"M€éß"_s);
        QCOMPARE(VcfStripCharset(u"N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=C3=BC\r\nEMAIL:a=41"_s),
                 u"N:ü\r\nEMAIL:aA"_s);
        QCOMPARE(VcfStripCharset(u"N;CHARSET=UTF-8:Ã¼ =41"_s), u"N:Ã¼ =41"_s);
    }

    /// Of a text that the described decoder does not cover the UTF-8 counts, of all others its result.
    void otherAlphabets()
    {
        const QByteArray marked = ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:";
        const std::pair<QByteArray, QString> table[] = {
            {"N" + marked + "Ay=C5=9Fe;X", u"Ayşe"_s},
            {"N" + marked + "=CE=95=CE=BB=\r\n=CE=AD;X", u"Ελέ"_s},
            {"N;CHARSET=UTF-8:\xC5\x81ukasz;X", u"Łukasz"_s},
            {"N" + marked + "A=3DB\\; =C3=84", u"A=B; Ä"_s},
            {"N" + marked + "M=C3=BCller;Hans", u"Müller"_s},
            {"N;ENCODING=QUOTED-PRINTABLE:M=FCller", u"Müller"_s},
            {"N:M\xFCller", u"Müller"_s},
            {"N" + marked + "x=C3=40", u"x€"_s}, // no UTF-8, but what Utf8EncC3 makes
            {"EMAIL" + marked + "=C3=BC\r\nN:a=41", u"aA"_s},
        };
        for (const auto& [lines, lastName] : table) {
            const QByteArray object = "BEGIN:VCARD\r\n" + lines + "\r\nX-IRMC-LUID:1\r\nEND:VCARD\r\n";
            const VcfCards cards = parseCards(object);
            QCOMPARE(cards.cards.size(), 1U);
            QCOMPARE(cards.cards[0].entry.lastName, lastName);
            QCOMPARE(cards.cards[0].raw, object);
        }
        const tVcfEntry foreign{.email = u"ş@x"_s, .lastName = u"Łu=;"_s, .firstName = u"é"_s};
        QCOMPARE(VcfBuildItem(foreign, false), "BEGIN:VCARD\r\nN" + marked +
                                                   "=C5=81u=3D\\;;=C3=A9\r\nEMAIL;INTERNET" + marked +
                                                   "=C5=9F@x\r\nX-IRMC-LUID:\r\nBDAY:\r\nEND:VCARD\r\n\r\n");
        QCOMPARE(endangeredCharacters(foreign), QString());
        QCOMPARE(endangeredCharacters({.email = u"a=b"_s, .home = u"ş"_s, .firstName = u"€"_s}), u"=€ş"_s);
    }

    void editedCard()
    {
        const QByteArray name = "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=C5=\r\n=81;B\r\n";
        const QByteArray rest = "TEL;FAX:99\r\nNOTE;CHARSET=UTF-8:\xC3\xA9\r\n";
        const QByteArray raw = "ADR:a\r\n  b: c\r\nPHOTO;BASE64:\r\n AAAA\r\nBBBB\r\n\r\nNONSENSE\r\n";
        const VcfCards cards =
            parseCards("BEGIN:VCARD\r\nVERSION:2.1\r\n" + name + "TEL;HOME:1\r\nEMAIL:a@b\r\n" + rest + raw +
                       "BDAY:0000-00-00\r\nX-IRMC-LUID:7\r\nEND:VCARD\r\n");
        tVcfEntry entry = cards.cards[0].entry;
        entry.birthday.clear();
        entry.home = u"2"_s;
        QCOMPARE(VcfBuildItem(entry, true, &cards.cards[0]),
                 "BEGIN:VCARD\r\n" + name +
                     "EMAIL;INTERNET:a@b\r\nTEL;HOME:2\r\nX-IRMC-LUID:7\r\nBDAY:0000-00-00\r\n" + rest + raw +
                     "END:VCARD\r\n\r\n");
        entry.firstName = u"C"_s;
        QVERIFY(VcfBuildItem(entry, true, &cards.cards[0]).contains("UTF-8:=C5=81;C\r\n"));
        QCOMPARE(vcfCardBytes(entry, otherLines(cards.cards[0].raw)),
                 "BEGIN:VCARD\r\nVERSION:2.1\r\nN;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C5=81;C\r\n"
                 "EMAIL;INTERNET:a@b\r\nTEL;HOME:2\r\nX-IRMC-LUID:7\r\nTEL;FAX:99\r\n"
                 "NOTE;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C3=A9\r\n" +
                     raw + "END:VCARD\r\n\r\n");
    }

    void cardsOfAnObject()
    {
        const QByteArray own = "BEGIN:VCARD\r\nN:me\r\nEND:VCARD\r\n";
        const QByteArray one = "BEGIN:VCARD\r\nN:A\r\nX-IRMC-LUID:1\r\nEND:VCARD\r\n";
        const VcfCards cards = parseCards(own + one + one + one.chopped(11));
        QCOMPARE(cards.upperBound, 3); // the last piece has lost its end
        QCOMPARE(cards.cards.size(), 3U);
        QCOMPARE(parseCards({}).upperBound, 0);
    }

    void answers()
    {
        const std::pair<QByteArray, std::optional<LuidAnswer>> table[] = {
            {"4C000C01043132333402 0137", {{u"1234"_s, 7}}}, // and its tags don't count
            {"4C000C99043132333499 0137", {{u"1234"_s, 7}}},
            {"4C000E01043132333402 0137", {}},
            {"48000C01043132333402 0137", {}},
            {"4C0007 01FF3132", {{u"12"_s, 0}}},
            {"", {}},
        };
        for (const auto& [bytes, answer] : table)
            QCOMPARE(parseLuidAnswer(QByteArray::fromHex(bytes)), answer);
        QCOMPARE(parseInfoLog("Total-Records:25\r\nMaximum-Records:250\r\nIEL:8\r\n"), (tVcfInfo{250, 25}));
        QCOMPARE(parseInfoLog("Maximum-Records: 99999\r\nTotal-Records:7"), (tVcfInfo{32767, 7}));
        QCOMPARE(parseInfoLog("Maximum-Records:250\r\n"), std::nullopt);
    }

    void files()
    {
        TestContext test;
        const auto list = makeVcfRows();
        const QString path = test.path(u"new/liste.csv"_s);
        QVERIFY(SaveVcfCsv(test.context, *list, path) && !QFile::exists(path)); // an empty list
        list->add(toRow(fullEntry));
        list->setText(0, VcfFirstName, u" \tHa\"ns "_s);
        QVERIFY(VCF2BackupFile(test.context, *list, path));
        QCOMPARE(TestContext::contentOf(path).split('\n').value(1),
                 "M\xFCller;x\tHa\"ns\t+49#*\t0170\t0521 1\ta;b@example.org\t21.03.1970  12:30\t0007\r");
        QVERIFY(SaveVcfCsv(test.context, *list, path));
        const QByteArrayList csv = TestContext::contentOf(path).split('\n');
        QCOMPARE(csv[0], "\"Nachname\",\"Vorname\",\"Telefon\",\"Tel. (Mobil)\",\"Tel. (B\xFCro)\",\"Email\","
                         "\"Jahrestag\"\r");
        QCOMPARE(csv[1], "\"M\xFCller;x\",\" \tHa\"ns \",\"+49#*\",\"0170\",\"0521 1\",\"a;b@example.org\","
                         "\"21.03.1970  12:30\"\r");
    }
};

KALMO_TEST(tst_VcfCodec)
#include "tst_VcfCodec.moc"
