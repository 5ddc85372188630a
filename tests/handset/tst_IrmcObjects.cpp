#include "support/ObexTalk.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

QByteArray card(const QByteArray& lines)
{
    return "BEGIN:VCARD\r\n" + lines + "END:VCARD\r\n\r\n";
}

/// PUT of one item, with the change counter that the client expects.
QByteArray putItem(const QByteArray& name, const QByteArray& counter, const QByteArray& text)
{
    return obexFrame(0x82, nameHeader(name) + lengthHeader(text.size()) + counterHeader(counter) +
                               obexHeader(0x49, text));
}

QByteArray deleteItem(const QByteArray& name, const QByteArray& counter)
{
    return obexFrame(0x82, nameHeader(name) + counterHeader(counter));
}

/// The answer to a change, with its LUID and the new counter.
QByteArray told(const QByteArray& luid, const QByteArray& counter)
{
    return obexFrame(0xA0, obexHeader(0x4C, QByteArray(1, '\x01') + static_cast<char>(luid.size()) + luid +
                                                '\x02' + static_cast<char>(counter.size()) + counter));
}

/// A client in telecom/<folder>/luid, where changes are made.
void openStore(ObexTalk& talk, const QByteArray& folder)
{
    talk.ask(connectFolders);
    talk.ask(connectIrmc);
    for (const QByteArray& name : {QByteArray("telecom"), folder, QByteArray("luid")})
        talk.enter(name);
}

} // namespace

/// The phonebook and the organizer of families 5 to 13.
class IrmcObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheWholePhonebook_data();
    void readsTheWholePhonebook();
    void logs();
    void changes_data();
    void changes();
    void readsCards_data();
    void readsCards();
    void refusesCards_data();
    void refusesCards();
    void isFull();
    void organizer();
    void foldsLongLines();
    void hasHostileLuids();
    void onlyTelecomUnderIrmc();
    void keepsItsMemory();
};

void IrmcObjects::readsTheWholePhonebook_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<std::optional<handset::CardText>>("form");
    QTest::addColumn<QByteArray>("name");

    const std::optional<handset::CardText> own;
    QTest::newRow("older") << u"S68H"_s << own << QByteArray("N:M\xfcller;J\xfcrgen");
    QTest::newRow("newer") << u"SL450HX"_s << own
                           << QByteArray("N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BCller;J=C3=BCrgen");
    QTest::newRow("told") << u"S68H"_s << std::optional(handset::CardText::Utf8)
                          << QByteArray("N;CHARSET=UTF-8:M\xc3\xbcller;J\xc3\xbcrgen");
}

/// One card more than there are entries: the handset's own comes first, and has no LUID.
void IrmcObjects::readsTheWholePhonebook()
{
    QFETCH(QString, model);
    QFETCH(std::optional<handset::CardText>, form);
    QFETCH(QByteArray, name);
    ObexTalk talk({.model = model, .cards = form});
    talk.ask(connectFolders);
    talk.enter("telecom");
    const QByteArray book = talk.fetchFile("pb.vcf");
    const QByteArray start =
        "BEGIN:VCARD\r\nVERSION:2.1\r\nN:;\r\nEND:VCARD\r\nBEGIN:VCARD\r\nVERSION:2.1\r\n" + name +
        "\r\nTEL;HOME:030901820\r\nTEL;CELL:01701112223\r\nTEL;WORK:030880100\r\n"
        "EMAIL:juergen.mueller@example.org\r\nBDAY:1970-03-21T12:30\r\nX-IRMC-LUID:0001\r\n"
        "END:VCARD\r\n";
    QCOMPARE(book.left(start.size()), start);
    QCOMPARE(book.count("END:VCARD\r\n"), 26);
    QVERIFY(book.contains("\\; ")); // a semicolon in a name
}

void IrmcObjects::logs()
{
    ObexTalk talk({.model = u"SL450HX"_s, .capacity = 800, .counterLine = true});
    talk.ask(connectFolders);
    talk.enter("telecom");
    talk.enter("pb");
    QCOMPARE(talk.fetchFile("info.log"),
             "Total-Records:25\r\nLast-Used-Index:25\r\nMaximum-Records:800\r\nIEL:8\r\n"
             "HD:NO\r\nSAT:CC\r\n");
    talk.enter("luid");
    QCOMPARE(talk.fetchFile("cc.log"), "25\r\n");
    QCOMPARE(talk.fetchFile("0009.vcf"), "BEGIN:VCARD\r\nVERSION:2.1\r\nN:Taxi;\r\nTEL;HOME:0521444\r\n"
                                         "X-IRMC-LUID:0009\r\nEND:VCARD\r\n");
    QCOMPARE(talk.ask(obexFrame(0x83, nameHeader("9999.vcf"))), obexFrame(0xC4));
}

void IrmcObjects::changes_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArrayList>("requests");
    QTest::addColumn<QByteArrayList>("answers");
    QTest::addColumn<QStringList>("violations");

    const auto row = [](const char* name, const QString& model, const QByteArrayList& requests,
                        const QByteArrayList& answers, const QStringList& violations = {}) {
        QTest::newRow(name) << model << requests << answers << violations;
    };
    const QString older = u"S68H"_s;
    const QString newer = u"SL450HX"_s;
    const QByteArray text = card("N:Neu;Nina\r\nTEL;HOME:1\r\n");
    const QByteArray ok = obexFrame(0xA0);
    row("new", newer, {putItem(".vcf", "25", text), putItem(".vcf", "26", text)},
        {told("0026", "26"), told("0027", "27")});
    row("changed", newer, {putItem("0003.vcf", "25", text)}, {told("0003", "26")});
    row("deleted, older", older, {deleteItem("0003.vcf", "25"), putItem("0003.vcf", "26", text)},
        {told("0003", "26"), obexFrame(0xC4)});
    row("deleted, newer", newer, {deleteItem("0003.vcf", "25"), deleteItem("0003.vcf", "26")},
        {ok, obexFrame(0xC4)});
    row("somebody else was faster", newer, {putItem(".vcf", "24", text), deleteItem("0003.vcf", "26")},
        {obexFrame(0xC9), obexFrame(0xC9)});
    row("no counter", newer,
        {obexFrame(0x82, nameHeader(".vcf") + lengthHeader(text.size()) + obexHeader(0x49, text))},
        {told("0026", "26")}, {u"a change without the change counter"_s});
    row("length that is not true", newer,
        {obexFrame(0x82,
                   nameHeader(".vcf") + lengthHeader(3) + counterHeader("25") + obexHeader(0x49, text))},
        {told("0026", "26")}, {u"\".vcf\" of %1 bytes was announced with 3"_s.arg(text.size())});
}

void IrmcObjects::changes()
{
    QFETCH(QString, model);
    QFETCH(QByteArrayList, requests);
    ObexTalk talk({.model = model});
    openStore(talk, "pb");
    QByteArrayList answers;
    for (const QByteArray& request : requests)
        answers.append(talk.ask(request));
    QTEST(answers, "answers");
    QTEST(talk.violations(), "violations");
}

void IrmcObjects::readsCards_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QByteArray>("stored"); // what comes back, between version and LUID

    const auto row = [](const char* name, const QByteArray& lines, const QByteArray& stored) {
        QTest::newRow(name) << lines << stored;
    };
    row("all",
        "N:A;B\r\nEMAIL;INTERNET:a@b\r\nTEL;HOME:1\r\nTEL;WORK:2\r\nTEL;CELL:3\r\nX-IRMC-LUID:\r\nBDAY:\r\n",
        "N:A;B\r\nTEL;HOME:1\r\nTEL;CELL:3\r\nTEL;WORK:2\r\nEMAIL:a@b\r\n");
    row("raw letters", "N:\xc4;\xdf\r\n", "N:\xc4;\xdf\r\n");
    row("quoted-printable", "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BC=\r\nller;=41\r\n",
        "N:M\xfcller;A\r\n");
    row("beyond the code page", "N;CHARSET=UTF-8:\xc5\x81;\r\n",
        "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C5=81;\r\n");
    row("semicolons", "N:a\\;b;c\\;d;e\r\n", "N:a\\;b;c\\;d\r\n");
    row("birthday", "N:A;\r\nBDAY:1970-03-02T08:15\r\n", "N:A;\r\nBDAY:1970-03-02T08:15\r\n");
    row("birthday of zeros", "N:A;\r\nBDAY:0000-00-00T00:00\r\n", "N:A;\r\n");
    row("birthday with one digit", "N:A;\r\nBDAY:1970-03-2T08:15\r\n", "N:A;\r\nBDAY:1970-03-02T08:15\r\n");
    row("general client", "N:A;\r\nTEL;CELL;VOICE:1\r\nTEL;TYPE=WORK:2\r\nNOTE:x\r\n",
        "N:A;\r\nTEL;CELL:1\r\nTEL;WORK:2\r\n");
}

void IrmcObjects::readsCards()
{
    QFETCH(QByteArray, lines);
    QFETCH(QByteArray, stored);
    ObexTalk talk(emptyHandset(u"S68H"_s));
    openStore(talk, "pb");
    QCOMPARE(talk.ask(putItem(".vcf", "0", card(lines))), told("0001", "1"));
    QCOMPARE(talk.fetchFile("0001.vcf"),
             "BEGIN:VCARD\r\nVERSION:2.1\r\n" + stored + "X-IRMC-LUID:0001\r\nEND:VCARD\r\n");
}

void IrmcObjects::refusesCards_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("code");

    QTest::newRow("no card") << QByteArray("hello") << 0xC0;
    QTest::newRow("no such day") << card("N:A;\r\nBDAY:1970-02-30T08:15\r\n") << 0xC0;
    QTest::newRow("name too long") << card("N:Abcdefghijklmnopq;\r\n") << 0xCD;
    QTest::newRow("number too long") << card("TEL;HOME:123456789012345678901234567890123\r\n") << 0xCD;
    QTest::newRow("longest") << card("N:Abcdefghijklmnop;Abcdefghijklmn\xfc\xdf\r\nTEL;HOME:"
                                     "12345678901234567890123456789012\r\n")
                             << 0xA0;
}

void IrmcObjects::refusesCards()
{
    QFETCH(QByteArray, text);
    ObexTalk talk(emptyHandset(u"S68H"_s));
    openStore(talk, "pb");
    QTEST(static_cast<int>(static_cast<uchar>(talk.ask(putItem(".vcf", "0", text)).at(0))), "code");
}

void IrmcObjects::isFull()
{
    ObexTalk talk({.model = u"SL450HX"_s, .entries = 600}); // they may be more than the family has room for
    QCOMPARE(talk.port.handset().phone().irmc[handset::ContactStore].items().size(), 600u);
    openStore(talk, "pb");
    QCOMPARE(talk.ask(putItem(".vcf", "600", card("N:A;\r\n"))), obexFrame(0xE0));
    QCOMPARE(talk.ask(deleteItem("0600.vcf", "600")), obexFrame(0xA0));
    QCOMPARE(talk.ask(putItem(".vcf", "601", card("N:A;\r\n"))), told("0601", "602"));
}

void IrmcObjects::organizer()
{
    ObexTalk talk({.model = u"S68H"_s});
    talk.ask(connectFolders);
    talk.enter("telecom");
    const QByteArray notes = talk.fetchFile("nt.vnt");
    QVERIFY2(notes.startsWith("BEGIN:VNOTE\r\nVERSION:1.1\r\nBODY:Einkauf: Brot; K\xe4se; \xc4pfel\r\n"
                              "X-IRMC-LUID:0001\r\nEND:VNOTE\r\nBEGIN:VNOTE\r\n"),
             notes.constData());
    QCOMPARE(talk.fetchFile("cal.vcs").count("X-IRMC-LUID:"), 3);
    openStore(talk, "cal");
    const QByteArray event = "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:VEVENT\r\nSUMMARY:Probe\r\n";
    QCOMPARE(talk.ask(putItem(".vcs", "3", event + "END:VEVENT\r\nEND:VCALENDAR\r\n")), told("0004", "4"));
    QCOMPARE(talk.fetchFile("0004.vcs"), event + "X-IRMC-LUID:0004\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    QCOMPARE(talk.ask(putItem(".vcs", "4", "BEGIN:VNOTE\r\n")), obexFrame(0xC0));
}

void IrmcObjects::foldsLongLines()
{
    ObexTalk talk({.model = u"S68H"_s, .seed = u"none"_s, .cards = handset::CardText::Folded});
    openStore(talk, "pb");
    const QByteArray name = QByteArray(16, '\xe4') + ';' + QByteArray(16, '\xf6');
    QCOMPARE(talk.ask(putItem(".vcf", "0", card("N:" + name + "\r\n"))), told("0001", "1"));
    const QByteArray text = talk.fetchFile("0001.vcf");
    for (const QByteArray& line : text.split('\n'))
        QVERIFY2(line.size() <= 77, line.constData()); // with its CR
    QCOMPARE(text.count("=\r\n"), 3);
    QCOMPARE(talk.ask(putItem("0001.vcf", "1", text)), told("0001", "2")); // it reads what it writes
    QCOMPARE(talk.fetchFile("0001.vcf"), text);
}

void IrmcObjects::hasHostileLuids()
{
    ObexTalk talk({.model = u"SL450HX"_s, .faults = {.hostileLuids = true}});
    openStore(talk, "pb");
    for (const QByteArray& luid : {QByteArray("../../1"), QByteArray("2;3"), QByteArray(200, '6')})
        QVERIFY(talk.fetchFile(luid + ".vcf").contains("\r\nX-IRMC-LUID:" + luid + "\r\n"));
    QCOMPARE(talk.ask(deleteItem("../../1.vcf", "25")), obexFrame(0xA0));
}

void IrmcObjects::onlyTelecomUnderIrmc()
{
    ObexTalk talk({.model = u"S68H"_s});
    talk.ask(connectIrmc);
    QVERIFY(talk.fetchFile("telecom/pb/info.log").startsWith("Total-Records:25\r\n"));
    QCOMPARE(talk.enter("Sounds"), obexFrame(0xC4));
    QCOMPARE(talk.ask(obexFrame(0x83, nameHeader("Liesmich.txt"))), obexFrame(0xC4));
    // Under the other target a change is made as well, but nothing is told of it.
    talk.ask(connectFolders);
    for (const char* name : {"telecom", "pb", "luid"})
        talk.enter(name);
    QCOMPARE(talk.ask(putItem(".vcf", "25", card("N:A;\r\n"))), obexFrame(0xA0));
    QCOMPARE(talk.fetchFile("cc.log"), "26");
}

void IrmcObjects::keepsItsMemory()
{
    const QTemporaryDir folder;
    const handset::Options options{.model = u"S68H"_s, .stateFolder = folder.path()};
    {
        ObexTalk talk(options);
        openStore(talk, "pb");
        talk.ask(deleteItem("0001.vcf", "25"));
        talk.ask(putItem(".vcf", "26", card("N:\xdc;\r\nBDAY:1970-03-02T08:15\r\n")));
    }
    ObexTalk talk(options);
    openStore(talk, "pb");
    QCOMPARE(talk.fetchFile("cc.log"), "27");
    QCOMPARE(talk.fetchFile("0026.vcf"), "BEGIN:VCARD\r\nVERSION:2.1\r\nN:\xdc;\r\nBDAY:1970-03-02T08:15\r\n"
                                         "X-IRMC-LUID:0026\r\nEND:VCARD\r\n");
    QCOMPARE(talk.ask(putItem(".vcf", "27", card("N:A;\r\n"))),
             told("0027", "28")); // 0001 is not given again
}

QTEST_GUILESS_MAIN(IrmcObjects)
#include "tst_IrmcObjects.moc"
