// The preview of an import: its rows, its hints, and the entries that go into the phone's list.

#include "support/TestContext.h"
#include "support/TestProgram.h"
#include "transfer/import/ImportSteps.h"
#include "transfer/import/PreviewSources.h"
#include "transfer/import/TextSource.h"
#include "transfer/import/VcardFile.h"

using namespace kalmo::transfer;

namespace {

const QDate today(2026, 11, 21);

using Columns = std::array<int, mostFields>;

QChar letterOf(Colour colour)
{
    return colour == Colour::Red ? u'r' : colour == Colour::Green ? u'g' : u'-';
}

/// A row as "[x] Meier|030 -r": check mark, cells, colours.
QString described(const PreviewRow& row, Shape shape)
{
    QStringList cells;
    QString colours;
    for (size_t field = 0; field < fieldsOf(shape).size(); ++field) {
        cells.append(row.cells[field]);
        colours += letterOf(row.colours[field]);
    }
    return (row.checked ? u"[x] "_s : u"[ ] "_s) + cells.join(u'|') + u' ' + colours;
}

QStringList described(const Preview& preview)
{
    QStringList rows;
    for (const PreviewRow& row : preview.rows)
        rows.append(described(row, preview.shape));
    return rows;
}

QStringList hintsOf(const Preview& preview)
{
    QStringList hints;
    for (const ImportHint& hint : preview.hints)
        hints.append(u"%1 %2 (%3) %4"_s
                         .arg(textOf(hint.kind).key.toString(), QString::number(hint.count), hint.example,
                              optionOf(hint))
                         .trimmed());
    return hints;
}

/// A text as the window opens it: as ANSI, by the simple reading.
struct OpenedSource
{
    ImportSource source;
    ImportOptions options = {};
    OpenedText opened = {};
};

OpenedSource openSource(const QByteArray& bytes, Shape shape,
                        TextRequest request = {.reading = Reading::Simple}, const QString& path = u"x.csv"_s)
{
    OpenedSource made{.source = {.path = path, .text = bytes}};
    made.opened = openText(path, bytes, shape, request);
    made.options.text = made.opened.options;
    return made;
}

Preview previewOf(const QByteArray& bytes, Shape shape = Shape::Classic, const QString& path = u"x.csv"_s)
{
    const OpenedSource made = openSource(bytes, shape, {.reading = Reading::Simple}, path);
    return RebuildPreview(made.source, shape, made.options, {}, today);
}

/// The preview after every hint that can be mended has been.
Preview mendedPreviewOf(const QByteArray& bytes, Shape shape)
{
    OpenedSource made = openSource(bytes, shape);
    Preview preview = RebuildPreview(made.source, shape, made.options, {}, today);
    for (const ImportHint& hint : preview.hints) {
        if (hint.canBeMended)
            made.options = mended(made.options, hint);
    }
    made.options.text = reopenText(made.source.path, bytes, shape, made.opened, made.options.text).options;
    return RebuildPreview(made.source, shape, made.options, {}, today);
}

Preview previewOf(const std::vector<WabContact>& contacts, Shape shape, const ImportOptions& options = {})
{
    return RebuildPreview({.contacts = contacts}, shape, options, {}, today);
}

} // namespace

class tst_ImportPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classicFile()
    {
        const QByteArray file = "Name;Nummer;Jahrestag\r\n"
                                "Meier, \"Peter\" [privat];+49 (30) 1234;24.12.2005 08:30\r\n"
                                "Sechzehn Zeichen;12345678901234567890123456789012\r\n"
                                "Siebzehn Zeichen.;123456789012345678901234567890123\r\n"
                                ";555\r\n"
                                "\r\n"
                                "Ohne Nummer;x\r\n";
        // "Alle" at the end checks those again that are too long.
        QCOMPARE(described(previewOf(file)),
                 (QStringList{
                     u"[ ] Name|| r--"_s,
                     u"[x] Meier, \"Peter\" privat|0301234|24.12  08:30 r--"_s,
                     u"[x] Sechzehn Zeichen|12345678901234567890123456789012| ---"_s,
                     u"[x] Siebzehn Zeichen.|123456789012345678901234567890123| rr-"_s,
                     u"[ ] |555| rr-"_s,
                     u"[ ] Ohne Nummer|| r--"_s,
                 }));
    }

    void backupFile()
    {
        const QByteArray file = "\"J\xF6rg\",\"12,3\",\"24.12  08:30\",\"Melodie 3\",\"Ja\",\"Optisch\"\r\n";
        QCOMPARE(described(previewOf(file, Shape::Classic, u"a.TEL"_s)),
                 QStringList(u"[x] Jörg|123|24.12  08:30 ---"_s));
        QCOMPARE(described(previewOf(file, Shape::Vcard, u"a.tel"_s)),
                 QStringList(u"[x] Jörg||123||||24.12.2026  08:30 -------"_s));
        QVERIFY(isTelFile(u"/x.y/b.Tel"_s) && !isTelFile(u"tel"_s) && !isTelFile(u"a.telx"_s));
    }

    void contactFile()
    {
        const QByteArray file = "\"Nachname\",\"Vorname\",\"Telefon\",\"Tel. (Mobil)\",\"Tel. "
                                "(B\xFCro)\",\"Email\",\"Jahrestag\"\r\n"
                                "\"Meier, A.\",\"Peter\",\"+49 30\",\"\",\"\",\"a^@b.de\",\"24.12.2005\"\r\n"
                                "\"Siebzehn Zeichen.\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n";
        const QString mail = QString(61, u'a');
        QCOMPARE(described(previewOf(file + "\"A\",\"Siebzehn Zeichen.\",\"\",\"\",\"1\",\"" +
                                         mail.toLatin1() + "\",\"\"\r\n",
                                     Shape::Vcard)),
                 (QStringList{
                     u"[ ] Nachname|Vorname||||Email| -------"_s,
                     u"[x] Meier, A.|Peter|+4930|||a@b.de|24.12.2005  12:00 -------"_s,
                     u"[ ] Siebzehn Zeichen.|||||| r------"_s,
                     u"[x] A|Siebzehn Zeichen.|||1|"_s + mail + u"| -r---r-"_s,
                 }));
    }

    void existing()
    {
        const QByteArray file = "Name;Nummer\nStra\xDF"
                                "e;1\nstrasse;1\nA ganz langer Name;2\n;\nB;3\n";
        OpenedSource made = openSource(file, Shape::Classic);
        const ExistingEntries list(
            Shape::Classic, {{u"STRAßE"_s, u"1"_s}, {u"a GANZ langer name"_s, u"2"_s}, {u"x"_s, u"3"_s}});
        QCOMPARE(described(RebuildPreview(made.source, Shape::Classic, made.options, list, today)),
                 (QStringList{u"[ ] Name|| r--"_s, u"[ ] Straße|1| ggg"_s, u"[x] strasse|1| ---"_s,
                              u"[ ] A ganz langer Name|2| ggg"_s, u"[ ] || r--"_s, u"[x] B|3| ---"_s}));
        made.options.existingByNumber = true;
        const Preview byNumber = RebuildPreview(made.source, Shape::Classic, made.options, list, today);
        QCOMPARE(byNumber.existingCount(), 4);
        made.options.markExisting = false;
        QCOMPARE(RebuildPreview(made.source, Shape::Classic, made.options, list, today).existingCount(), 0);
    }

    /// The index finds what a walk over all pairs finds: three empty numbers equal three empty ones.
    void existingContacts()
    {
        const std::vector<QStringList> held = {{u"Meier"_s, u"Peter"_s, u"1"_s, u""_s, u"2"_s, u"mail"_s},
                                               {u"ohne"_s, u"Nummer"_s}};
        const ExistingEntries list(Shape::Vcard, held);
        const auto row = [](const QStringList& cells) {
            PreviewRow made;
            std::copy(cells.begin(), cells.end(), made.cells.begin());
            return made;
        };
        QVERIFY(list.contains(row({u"MEIER"_s, u"peter"_s, u"1"_s, u""_s, u"2"_s}), false));
        QVERIFY(!list.contains(row({u"Meier"_s, u""_s, u"1"_s, u""_s, u"2"_s}), false));
        QVERIFY(list.contains(row({u""_s, u""_s, u"1"_s, u""_s, u"2"_s}), true));
        QVERIFY(!list.contains(row({u""_s, u""_s, u"1"_s, u"2"_s, u""_s}), true)); // another field
        QVERIFY(list.contains(row({u"x"_s}), true));
        QVERIFY(!list.contains(row({u"x"_s}), false));
    }

    void addressBook()
    {
        std::vector<WabContact> contacts = {{.givenName = u"Peter"_s,
                                             .surname = u"Meier"_s,
                                             .homePhone = u"+49 30"_s,
                                             .mobilePhone = u"0170"_s},
                                            {.givenName = u"Nummer"_s, .surname = u"Ohne"_s},
                                            {.displayName = u"Łódź GmbH"_s, .businessFax = u"+49 (0) 221"_s}};
        contacts[0].birthday = QDate(1970, 3, 21);
        contacts[1].birthday = QDate(1980, 1, 2);
        const Preview moved = previewOf(contacts, Shape::Classic);
        QCOMPARE(described(moved),
                 (QStringList{u"[x] Meier, P P|030| ---"_s, u"[x] Meier, P H|0170|02.01  10:00 ---"_s,
                              u"[x] ,  F|00221| ---"_s}));
        QCOMPARE(hintsOf(moved),
                 (QStringList{u"zero 1 (+49 (0) 221) --drop-zero"_s, u"names 1 (Łódź GmbH) --fill-names"_s,
                              u"moved 1 () --own-birthdays"_s}));
        ImportOptions options;
        options.addresses.ownBirthdays = options.addresses.fillNames = options.numbers.dropZero = true;
        options.baseLetters = true;
        options.addresses.numbers[1].process = false;
        QCOMPARE(described(previewOf(contacts, Shape::Classic, options)),
                 (QStringList{u"[x] Meier, P P|030|21.03  10:00 ---"_s, u"[x] Lodz GmbH F|0221| ---"_s}));
        QCOMPARE(described(previewOf(contacts, Shape::Vcard)),
                 (QStringList{u"[x] Meier|Peter|+4930|0170|||21.03.1970  10:00 -------"_s,
                              u"[ ] Ohne|Nummer|||||02.01.1980  10:00 -------"_s, u"[ ] |||||| -------"_s}));
        contacts[2].unreadBirthday = u"bald"_s;
        contacts[2].lostExtensions = 1;
        contacts[0].isCutOff = true;
        options.addresses.fields[PreviewMobile] = 3; // not used
        QCOMPARE(hintsOf(RebuildPreview({.contacts = contacts, .losses = {{u"/x/c.vcf"_s}, 2}}, Shape::Vcard,
                                        options, {}, today)),
                 (QStringList{u"damaged 2 ()"_s, u"cut 1 (Peter Meier)"_s, u"lost-extensions 1 (Łódź GmbH)"_s,
                              u"birthdays 1 (bald)"_s, u"places 2 ()"_s, u"files 1 (c.vcf)"_s}));
        contacts.erase(contacts.begin()); // a birthday ahead of the first row has no place
        QCOMPARE(described(previewOf(contacts, Shape::Classic)), QStringList(u"[x] ,  F|00221| ---"_s));
        QVERIFY(hintsOf(previewOf(contacts, Shape::Classic)).contains(u"lost-birthdays 1 ()"_s));
    }

    void hints()
    {
        const QByteArray headings = "Name;Nummer\n";
        Rows<QByteArray, Shape, QStringList, QStringList> rows;
        rows.add("quotes only where needed",
                 "\"Last Name\",\"First Name\",\"Home Phone\",\"Notes\"\n\"Meier\",\"Peter\",030,\"a\nb\"\n",
                 Shape::Vcard, {u"reading 1 () --reading csv"_s, u"heading 1 (Last Name) --skip-heading"_s},
                 {u"[x] Meier|Peter|030|||| -------"_s});
        rows.add("UTF-8", headings + "M\xC3\xBCller;1\nB\xC3\xA4r;2\n", Shape::Classic,
                 {u"encoding 2 (MÃ¼ller → Müller) --encoding utf-8"_s},
                 {u"[ ] Name|| r--"_s, u"[x] Müller|1| ---"_s, u"[x] Bär|2| ---"_s});
        rows.add("UTF-16", "\xFF\xFE" + QStringEncoder(QStringEncoder::Utf16LE)(u"Name;Nummer\nA;1\n"_s),
                 Shape::Classic, {u"encoding 1 () --encoding utf-16"_s, u"columns 1 ()"_s},
                 {u"[ ] Name|| r--"_s, u"[x] A|1| ---"_s});
        rows.add("mails", "Name;Telefon;Email\nA;1;jos\xE9~@x.de\nB;2;b@x.de\n", Shape::Vcard,
                 {u"mails 1 (josé~@x.de → josé@x.de)"_s},
                 {u"[ ] Name|||||Email| -------"_s, u"[x] A||1|||josé@x.de| -------"_s,
                  u"[x] B||2|||b@x.de| -------"_s});
        rows.add("heading", "Name,Given Name,Phone 1 - Value\nPeter Meier,Peter,030 123\n", Shape::Vcard,
                 {u"heading 1 (Name) --skip-heading"_s}, {u"[x] Peter Meier|Peter|030123|||| -------"_s});
        rows.add("numbers",
                 headings + "A;+49 (0) 221 1\nB;0221 12345 ext. 7\nC;0221 12345, 0222 12345\nD;02211/12345\n",
                 Shape::Classic,
                 {u"zero 1 (+49 (0) 221 1) --drop-zero"_s, u"extensions 1 (0221 12345 ext. 7)"_s,
                  u"numbers 1 (0221 12345, 0222 12345)"_s},
                 {u"[ ] Name|| r--"_s, u"[x] A|02211| ---"_s, u"[x] B|0221123457| ---"_s,
                  u"[x] C|022112345022212345| ---"_s, u"[x] D|0221112345| ---"_s});
        rows.add("letters", headings + "Garc\xED\x61;1\n", Shape::Classic,
                 {u"letters 1 (García → Garca) --base-letters"_s},
                 {u"[ ] Name|| r--"_s, u"[x] Garcia|1| ---"_s});
        rows.add("dates", "Name;Nummer;Jahrestag\nA;1;05/04/2001\nB;2;12/24/2005\nC;3;?1\n", Shape::Classic,
                 {u"dates 1 (12/24/2005) --dates month-first"_s, u"birthdays 1 (?1)"_s},
                 {u"[ ] Name|| r--"_s, u"[x] A|1|04.05  00:00 ---"_s, u"[x] B|2|24.12  00:00 ---"_s,
                  u"[x] C|3| ---"_s});
        rows.add("days", "Name;Nummer;Jahrestag\nA;1;31.02. 08:30\nB;2;29.02. 08:30\n", Shape::Classic,
                 {u"days 1 (31.02. 08:30)"_s},
                 {u"[ ] Name|| r--"_s, u"[x] A|1|31.02  08:30 ---"_s, u"[x] B|2|29.02  08:30 ---"_s});
        rows.each([](const auto& file, const auto& shape, const auto& hints, const auto& mendedRows) {
            QCOMPARE(hintsOf(previewOf(file, shape)), hints);
            QCOMPARE(described(mendedPreviewOf(file, shape)), mendedRows);
        });
    }

    /// Long cells and lines of many parts take time that grows with their length, not with its square.
    void longCells()
    {
        QElapsedTimer time;
        time.start();
        const QByteArray blanks(1'000'000, ' ');
        const QByteArray digits(1'000'000, '1');
        previewOf("Name;Nummer\nx;1 x" + blanks + "\ny;x" + digits + '\n', Shape::Classic);
        const auto contacts = readVcardFile(
            "BEGIN:VCARD\nX:\n" + QByteArray(" =\n").repeated(300'000) + "TEL:1\nEND:VCARD\n", today);
        QCOMPARE(contacts.size(), 1U);
        QVERIFY2(time.elapsed() < 20'000, "minutes, where the time grows with the square");
    }

    /// A remembered heading comes first, "<nicht verwenden>" among them where a form offers it.
    void columns()
    {
        const auto columnsOf = [](Shape shape, const std::array<QString, mostFields>& wanted) {
            return openSource("Nachname;VORNAME;Phone Number;Jahrestag\n", shape, {.headings = wanted})
                .opened.options.columns;
        };
        const QString unused = u"<nicht verwenden>"_s;
        QCOMPARE(columnsOf(Shape::Vcard, {u"vorname"_s, unused, u"gone"_s}),
                 (Columns{1, unusedColumn, 2, -1, -1, -1, 3}));
        QCOMPARE(columnsOf(Shape::Classic, {unused, unused, unused}),
                 (Columns{0, 2, unusedColumn, -1, -1, -1, -1}));
    }

    /// The user's columns outlive another encoding or reading of the file.
    void columnsStay()
    {
        const auto reopened = [](const QByteArray& bytes, TextOptions options) {
            const OpenedSource before =
                openSource(bytes, Shape::Classic, {.filter = QString(), .headings = {u"B\u00FCro"_s}});
            options.columns[1] = 1;
            options.columns[2] = unusedColumn;
            return reopenText(u"x.csv"_s, bytes, Shape::Classic, before.opened, options).options.columns;
        };
        const TextLayout comma{.separator = Separator::Comma};
        const QByteArray sameCount = "B\xC3\xBCro,Telefon,Nummer,Jahrestag\n";
        QCOMPARE(reopened(sameCount, {.layout = comma, .encoding = Encoding::Utf8}),
                 (Columns{0, 1, unusedColumn, -1, -1, -1, -1}));
        const QByteArray otherCount = "\"x,y\",Name,Nummer,Telefon\n"; // five by the simple reading
        QCOMPARE(reopened(otherCount, {.layout = {.separator = Separator::Comma, .reading = Reading::Csv}}),
                 (Columns{1, 2, unusedColumn, -1, -1, -1, -1}));
    }

    /// Quotes at a wrong place swallow rows: that is never silent.
    void brokenCsv()
    {
        const QByteArray file = "Name;Nummer\nA;1\n\"B;2\nC;3\n";
        const OpenedSource made = openSource(file, Shape::Classic, {.reading = Reading::Csv});
        const Preview broken = RebuildPreview(made.source, Shape::Classic, made.options, {}, today);
        QCOMPARE(hintsOf(broken), QStringList(u"broken 1 (#3 B;2 C;3) --reading simple"_s));
        QCOMPARE(broken.rows.size(), 3);
        const ImportOptions options = mended(made.options, broken.hints.front());
        const Preview whole = RebuildPreview(made.source, Shape::Classic, options, {}, today);
        QCOMPARE(described(whole), (QStringList{u"[ ] Name|| r--"_s, u"[x] A|1| ---"_s, u"[x] \"B|2| ---"_s,
                                                u"[x] C|3| ---"_s}));
    }

    void classicSteps()
    {
        Preview preview = previewOf("Name;Nummer;Jahrestag\nSiebzehn Zeichen.;1;24.12. 08:30\nB;2\n;3\n"
                                    "C;123456789012345678901234567890123\n");
        const auto step = [&preview] { return nextClassicStep(preview); };
        preview.rows[3].checked = true;
        QCOMPARE(step(), ClassicStep::Incomplete);
        preview.rows[3].checked = false;
        QCOMPARE(step(), ClassicStep::NumberTooLong);
        deselectRows(preview, {4});
        QCOMPARE(step(), ClassicStep::NameTooLong);
        shortenNames(preview);
        QCOMPARE(described(preview.rows[1], preview.shape), u"[x] Siebzehn Zeichen|1|24.12  08:30 g--"_s);
        QCOMPARE(step(), ClassicStep::Ready);
        const auto entries = checkedEntries(preview);
        QCOMPARE(entries, (std::vector<phonedata::ClassicEntry>{{.name = u"Siebzehn Zeichen"_s,
                                                                 .number = u"1"_s,
                                                                 .date = u"24.12  08:30"_s,
                                                                 .dateSound = u"Optisch"_s},
                                                                {.name = u"B"_s, .number = u"2"_s}}));
        QCOMPARE(checkedProviders(preview).front(),
                 (phonedata::ProviderEntry{u"Siebzehn Zeichen"_s, u"1"_s}));
        selectNone(preview);
        QCOMPARE(step(), ClassicStep::NothingChecked);
        selectRows(preview, {0, 2, 99});
        QCOMPARE(preview.checkedCount(), 1); // the heading has no number
    }

    void vcardSteps()
    {
        tests::TestContext test;
        Preview preview =
            previewOf("Nachname;Vorname;Telefon;Jahrestag\nSiebzehn Zeichen.;B;1;29.02.2005 08:30\n"
                      "A;B;2;24.12.2005 08:30\n",
                      Shape::Vcard);
        preview.rows[0].checked = true;
        QCOMPARE(uncheckNumberless(preview), 1);
        QCOMPARE(nextVcardStep(preview, 1), VcardStep::NoRoom);
        QCOMPARE(nextVcardStep(preview, 2), VcardStep::Ready);
        QCOMPARE(checkedContacts(preview, test.log),
                 (std::vector<phonedata::tVcfEntry>{
                     {.lastName = u"Siebzehn Zeichen"_s, .home = u"1"_s, .firstName = u"B"_s}, // no such day
                     {.lastName = u"A"_s,
                      .home = u"2"_s,
                      .firstName = u"B"_s,
                      .birthday = u"2005-12-24T08:30"_s}}));
        selectNone(preview);
        QCOMPARE(nextVcardStep(preview, 2), VcardStep::NothingChecked);
    }
};

KALMO_TEST(tst_ImportPreview)
#include "tst_ImportPreview.moc"
