#include "support/ObexTalk.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

const QByteArray ok = obexFrame(0xA0);

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

/// Rows of a listing as "folder Pictures RWD/R" or "file a.txt 3 RWD/RWD".
QStringList rowsOf(const QByteArray& listing)
{
    static const QRegularExpression row(
        u"<(folder|file) name=\"([^\"]*)\"(?: size ?= ?\"(\\d+)\")?.*? user-perm=\"(\\w*)\" group-perm=\"(\\w*)\" ?/>"_s);
    QStringList rows;
    for (auto match = row.globalMatch(QString::fromUtf8(listing)); match.hasNext();) {
        const auto one = match.next();
        const QString size = one.captured(3).isEmpty() ? QString() : u' ' + one.captured(3);
        rows.append(one.captured(1) + u' ' + one.captured(2) + size + u' ' + one.captured(4) + u'/' +
                    one.captured(5));
    }
    return rows;
}

QByteArray fileHeaders(const QByteArray& name, qsizetype size, const QByteArray& time = "20261121T120000")
{
    return nameHeader(name) + lengthHeader(size) + obexHeader(0x44, time);
}

/// A PUT of a small file in one frame.
QByteArray putFile(const QByteArray& name, const QByteArray& content)
{
    return obexFrame(0x82, fileHeaders(name, content.size()) + obexHeader(0x49, content));
}

/// Puts a file in as many frames as it takes, all but the last filled to the byte. The last answer.
QByteArray putInParts(ObexTalk& talk, const QByteArray& name, const QByteArray& content, qsizetype maxPacket)
{
    const QByteArray headers = fileHeaders(name, content.size());
    const qsizetype room = maxPacket - 6 - headers.size();
    if (content.size() <= room)
        return talk.ask(putFile(name, content));
    QByteArray answer = talk.ask(obexFrame(0x02, headers + obexHeader(0x48, content.left(room))));
    QByteArray rest = content.mid(room);
    for (; answer == obexFrame(0x90); rest.remove(0, maxPacket - 6))
        answer =
            talk.ask(rest.size() > maxPacket - 6 ? obexFrame(0x02, obexHeader(0x48, rest.left(maxPacket - 6)))
                                                 : obexFrame(0x82, obexHeader(0x49, rest)));
    return answer;
}

QByteArray moveFrame(const QByteArray& from, const QByteArray& to)
{
    const auto parameter = [](char tag, const QByteArray& value) {
        return tag + QByteArray(1, static_cast<char>(value.size())) + value;
    };
    const auto path = [](const QByteArray& text) {
        QByteArray wide;
        for (const char letter : text)
            wide += QByteArray(1, '\0') + letter;
        return wide;
    };
    return obexFrame(0x82, obexHeader(0x4C, parameter('\x34', "move") + parameter('\x35', path(from)) +
                                                parameter('\x36', path(to))));
}

QByteArray rightsFrame(const QByteArray& name, const QByteArray& text)
{
    return obexFrame(0x82, nameHeader(name) + obexHeader(0x4C, "\x38\x08" + text));
}

const QByteArray getMemory = hex("8300094C0006320101");
const QByteArray getFree = hex("8300094C0006320102");
const QByteArray getCard = hex("83001A4C00173213011000"
                               "5C004D004D004300610072006400"
                               "00");

} // namespace

/// The file system over OBEX.
class ObexFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void walksFolders();
    void lists_data();
    void lists();
    void sendsInParts_data();
    void sendsInParts();
    void takesInParts();
    void changesFiles();
    void refusals_data();
    void refusals();
    void takesNoMoreThanThereIsRoomFor();
    void tellsMemory();
    void readsTimes_data();
    void readsTimes();
    void keepsFiles();
};

void ObexFiles::walksFolders()
{
    ObexTalk talk({.model = u"S68H"_s});
    talk.ask(connectFolders);
    QCOMPARE(talk.enter("pictures"), ok);
    QCOMPARE(talk.enter("Urlaub 2026"), ok);
    QCOMPARE(rowsOf(talk.fetch(listFolder)), {u"file Stufen.jpg 242 RWD/RWD"_s});
    QCOMPARE(talk.ask(hex("8500050300")), ok); // one up
    QCOMPARE(talk.enter("Stufen.jpg"), obexFrame(0xC4));
    QCOMPARE(talk.enter("Neu", 2), obexFrame(0xC4));
    QCOMPARE(talk.enter("Neu", 0), ok);
    QCOMPARE(rowsOf(talk.fetch(listFolder)), QStringList());
    QCOMPARE(talk.enter("a/b", 0), obexFrame(0xCC));
    QCOMPARE(talk.ask(toRoot), ok);
    QCOMPARE(talk.ask(hex("8500050300")), obexFrame(0xC4));
    QCOMPARE(
        rowsOf(talk.fetch(listFolder)),
        QStringList({u"folder telecom R/R"_s, u"folder Pictures RWD/RWD"_s, u"folder Clip Pictures RWD/RWD"_s,
                     u"folder Sounds RWD/RWD"_s, u"folder System /"_s, u"file Liesmich.txt 64 RWD/R"_s}));
    QCOMPARE(talk.violations(), QStringList());
}

void ObexFiles::lists_data()
{
    QTest::addColumn<handset::ListingForms>("form");
    QTest::addColumn<QByteArray>("rows");

    const QByteArray file = " modified=\"20261003T182030\" user-perm=\"RWD\" group-perm=\"RWD\"";
    const QByteArray silent = " modified=\"20010101T000000\" user-perm=\"R\" group-perm=\"R\"";
    using handset::ListingForm;
    using handset::ListingForms;
    QTest::newRow("plain") << ListingForms(ListingForm::Plain)
                           << "<file name=\"Tonleiter.mid\" size=\"100\"" + file +
                                  " />\r\n<file name=\"Gong.mid\" "
                                  "size=\"61\"" +
                                  silent + " />\r\n";
    QTest::newRow("spaced") << ListingForms(ListingForm::Spaced)
                            << "<file name=\"Tonleiter.mid\" size = \"100\"" + file +
                                   " />\r\n<file name=\"Gong.mid\" "
                                   "size = \"61\"" +
                                   silent + " />\r\n";
    QTest::newRow("one line") << ListingForms(ListingForm::OneLine)
                              << "<file name=\"Tonleiter.mid\" size=\"100\"" + file +
                                     " /><file name=\"Gong.mid\" "
                                     "size=\"61\"" +
                                     silent + " />";
    QTest::newRow("tight") << ListingForms(ListingForm::Tight)
                           << "<file name=\"Tonleiter.mid\" size=\"100\"" + file +
                                  "/>\r\n<file name=\"Gong.mid\" "
                                  "size=\"61\"" +
                                  silent + "/>\r\n";
    QTest::newRow("half spaced, tight, one line")
        << (ListingForm::HalfSpaced | ListingForm::Tight | ListingForm::OneLine)
        << "<file name=\"Tonleiter.mid\" size =\"100\"" + file + "/><file name=\"Gong.mid\" size =\"61\"" +
               silent + "/>";
}

void ObexFiles::lists()
{
    QFETCH(handset::ListingForms, form);
    QFETCH(QByteArray, rows);
    ObexTalk talk({.model = u"S68H"_s, .listing = form});
    talk.ask(connectFolders);
    talk.enter("Sounds");
    const QByteArray listing = talk.fetch(listFolder);
    QVERIFY2(listing.contains(rows), listing.constData());
    QCOMPARE(rowsOf(listing).size(), 3);
}

void ObexFiles::sendsInParts_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<handset::SizeForm>("form");
    QTest::addColumn<QByteArrayList>("heads"); // of the answers to a file of 'x's, up to the body

    using handset::SizeForm;
    const QByteArray wholeHead = hex("A00100") + hex("4900FD");
    QTest::newRow("one part") << 250 << SizeForm::InParts << QByteArrayList{wholeHead};
    QTest::newRow("nothing") << 0 << SizeForm::InParts << QByteArrayList{hex("A00006490003")};
    QTest::newRow("one part with its size")
        << 5 << SizeForm::Always << QByteArrayList{hex("A00010C300000005490008")};
    QTest::newRow("two parts") << 251 << SizeForm::InParts
                               << QByteArrayList{hex("900100C3000000FB4800F8"), hex("A0000C490009")};
    QTest::newRow("three parts without a size")
        << 501 << SizeForm::Never
        << QByteArrayList{hex("9001004800FD"), hex("9001004800FD"), hex("A00007490004")};
}

void ObexFiles::sendsInParts()
{
    QFETCH(int, size);
    QFETCH(handset::SizeForm, form);
    QFETCH(QByteArrayList, heads);
    ObexTalk talk({.model = u"S68H"_s, .maxPacket = 256, .size = form});
    talk.ask(connectFolders);
    QCOMPARE(putInParts(talk, "x", QByteArray(size, 'x'), 256), ok);

    int body = 0;
    QByteArray request = obexFrame(0x83, nameHeader("x"));
    for (const QByteArray& head : heads) {
        const QByteArray answer = talk.ask(request);
        request = obexFrame(0x83);
        QCOMPARE(answer.left(head.size()), head);
        QCOMPARE(answer.mid(head.size()).count('x'), answer.size() - head.size());
        body += static_cast<int>(answer.size() - head.size());
    }
    QCOMPARE(body, size);
    QCOMPARE(talk.violations(), QStringList());
}

void ObexFiles::takesInParts()
{
    ObexTalk talk({.model = u"S68H"_s, .maxPacket = 255});
    talk.ask(connectFolders);
    talk.enter("Pictures");
    const QByteArray content(500, 'p');
    QCOMPARE(putInParts(talk, "b.bmp", content, 255), ok);
    QCOMPARE(talk.fetchFile("B.BMP"), content);

    // An abort forgets what has come so far.
    const QByteArray start = fileHeaders("b.bmp", 500);
    QCOMPARE(talk.ask(obexFrame(0x02, start + obexHeader(0x48, QByteArray(249 - start.size(), 'q')))),
             obexFrame(0x90));
    QCOMPARE(talk.ask(hex("FF0003")), ok);
    QCOMPARE(talk.fetchFile("b.bmp"), content);
    QCOMPARE(talk.violations(), QStringList());
}

void ObexFiles::changesFiles()
{
    ObexTalk talk({.model = u"SL450HX"_s});
    talk.ask(connectFolders);
    talk.enter("Sounds");
    QCOMPARE(talk.ask(putFile("/Sounds/neu.txt", "abc")), ok);
    QCOMPARE(talk.ask(moveFrame("/Sounds/neu.txt", "/Pictures/alt.txt")), ok);
    QCOMPARE(talk.fetchFile("neu.txt"), "");
    QCOMPARE(talk.fetchFile("/Pictures/alt.txt"), "abc");
    QCOMPARE(talk.ask(obexFrame(0x82, nameHeader("/Pictures/alt.txt"))), ok);
    QCOMPARE(talk.ask(moveFrame("/Sounds", "/Klang")), ok);
    QCOMPARE(talk.ask(toRoot), ok);
    QCOMPARE(talk.enter("Klang"), ok);
    QCOMPARE(rowsOf(talk.fetch(listFolder)),
             QStringList({u"file Tonleiter.mid 100 RWD/RWD"_s, u"file Gong.mid 61 R/R"_s,
                          u"file Piep.wav 6444 RWD/RWD"_s}));
    // A file that may not be deleted, until it may.
    QCOMPARE(talk.ask(obexFrame(0x82, nameHeader("/Klang/Gong.mid"))), obexFrame(0xCC));
    QCOMPARE(talk.ask(rightsFrame("/Klang/Gong.mid", "\"RWD\"\"R\"")), ok);
    QCOMPARE(rowsOf(talk.fetch(listFolder))[1], u"file Gong.mid 61 RWD/R"_s);
    QCOMPARE(talk.ask(obexFrame(0x82, nameHeader("/Klang/Gong.mid"))), ok);
    QCOMPARE(talk.violations(), QStringList());
}

void ObexFiles::refusals_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("code");

    const QString older = u"S68H"_s;
    const QString newer = u"SL450HX"_s;
    QTest::newRow("no such file") << older << obexFrame(0x83, nameHeader("x")) << 0xC4;
    QTest::newRow("folder as a file") << older << obexFrame(0x83, nameHeader("Sounds")) << 0xC4;
    QTest::newRow("path in an older family") << older << putFile("/Sounds/x", "x") << 0xC0;
    QTest::newRow("hostile name") << older << putFile("..\\x", "x") << 0xCC;
    QTest::newRow("no such folder") << newer << putFile("/Klang/x", "x") << 0xC4;
    QTest::newRow("over a folder") << newer << putFile("/Sounds", "x") << 0xCC;
    QTest::newRow("folder with something in it") << newer << obexFrame(0x82, nameHeader("/Sounds")) << 0xCC;
    QTest::newRow("telecom deleted") << older << obexFrame(0x82, nameHeader("telecom")) << 0xC3;
    QTest::newRow("onto another") << newer << moveFrame("/Liesmich.txt", "/Sounds/Piep.wav") << 0xC3;
    QTest::newRow("into itself") << newer << moveFrame("/Pictures", "/Pictures/Urlaub 2026/x") << 0xCC;
    QTest::newRow("move of nothing") << newer << moveFrame("/x", "/y") << 0xC4;
    QTest::newRow("too large") << older
                               << obexFrame(0x02,
                                            nameHeader("x") + lengthHeader(2000000) + obexHeader(0x48, {}))
                               << 0xE0;
    QTest::newRow("no card") << older << getCard << 0xC4;
    QTest::newRow("no file system") << u"Sinus 501"_s << getMemory << 0xC4;
    QTest::newRow("nothing asked for") << older << obexFrame(0x83) << 0xC0;
    QTest::newRow("opcode of nobody") << older << obexFrame(0x87) << 0xD1;
}

void ObexFiles::refusals()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, request);
    QFETCH(int, code);
    ObexTalk talk({.model = model});
    talk.ask(connectFolders);
    QCOMPARE(talk.ask(request).toHex(' '), obexFrame(code).toHex(' '));
}

/// A client that announces little and sends more and more.
void ObexFiles::takesNoMoreThanThereIsRoomFor()
{
    ObexTalk talk({.model = u"S68H"_s, .seed = u"none"_s, .maxPacket = 1000, .fileMemory = 2500});
    talk.ask(connectFolders);
    const QByteArray start = fileHeaders("x", 10);
    QCOMPARE(talk.ask(obexFrame(0x02, start + obexHeader(0x48, QByteArray(994 - start.size(), 'x')))),
             obexFrame(0x90));
    const QByteArray part = obexFrame(0x02, obexHeader(0x48, QByteArray(994, 'x')));
    QCOMPARE(talk.ask(part), obexFrame(0x90));
    QCOMPARE(talk.ask(part), obexFrame(0xE0));
    QCOMPARE(rowsOf(talk.fetch(listFolder)), {u"folder telecom R/R"_s});
}

void ObexFiles::tellsMemory()
{
    ObexTalk talk({.model = u"S68H"_s, .seed = u"none"_s, .fileMemory = 100000, .memoryCard = 0x7654321});
    talk.ask(connectFolders);
    talk.ask(putFile("x", "12345"));
    QCOMPARE(talk.ask(getMemory).toHex(), "a0000c4c00093204000186a0");
    QCOMPARE(talk.ask(getFree).toHex(), "a0000c4c000932040001869b");
    QCOMPARE(talk.ask(getCard).toHex(), "a0000c4c0009320407654321");
    QCOMPARE(talk.violations(), QStringList());
}

void ObexFiles::readsTimes_data()
{
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<QString>("modified"); // empty where the handset takes its own clock
    QTest::addColumn<int>("violations");

    QTest::newRow("whole") << QByteArray("20260914T080910") << u"20260914T080910"_s << 0;
    QTest::newRow("short day") << QByteArray("2026094T080910") << u"20260904T080910"_s << 0;
    QTest::newRow("no day") << QByteArray("2026090T080910") << u"20261121T12000"_s << 1;
    QTest::newRow("no such day") << QByteArray("20260931T080910") << u"20261121T12000"_s << 1;
    QTest::newRow("dots") << QByteArray("2026-09-04") << u"20261121T12000"_s << 1;
}

void ObexFiles::readsTimes()
{
    QFETCH(QByteArray, time);
    QFETCH(QString, modified);
    ObexTalk talk(emptyHandset(u"S68H"_s));
    talk.ask(connectFolders);
    QCOMPARE(talk.ask(obexFrame(0x82, fileHeaders("x", 1, time) + obexHeader(0x49, "x"))), ok);
    const QByteArray listing = talk.fetch(listFolder);
    QVERIFY2(listing.contains("modified=\"" + modified.toLatin1()), listing.constData());
    QTEST(static_cast<int>(talk.violations().size()), "violations");
}

void ObexFiles::keepsFiles()
{
    const QTemporaryDir outer;
    const QDir folder(outer.filePath(u"a/state"_s));
    handset::Options options{.model = u"S68H"_s, .stateFolder = folder.path()};
    options.faults.hostileNames = true;
    {
        ObexTalk talk(options);
        talk.ask(connectFolders);
        talk.ask(putFile("\xc4.txt", "abc"));
        talk.ask(obexFrame(0x82, nameHeader("Liesmich.txt")));
        talk.enter("Leer", 0);
    }
    // Somebody puts a file there by hand, and takes another away.
    QVERIFY(QFile::copy(folder.filePath(u"files/Ä.txt"_s), folder.filePath(u"files/Pictures/Hand.txt"_s)));
    QVERIFY(QFile::remove(folder.filePath(u"files/Sounds/Gong.mid"_s)));
    for (int start = 0; start < 2; ++start) {
        ObexTalk talk(options);
        talk.ask(connectFolders);
        const QStringList rows = rowsOf(talk.fetch(listFolder));
        QCOMPARE(rows.size(), 18);
        QVERIFY(rows.contains(u"file Ä.txt 3 RWD/RWD"_s) && rows.contains(u"folder Leer RWD/RWD"_s));
        QVERIFY(rows.contains(u"file ../../x 8 RWD/RWD"_s) &&
                !rows.contains(u"file Liesmich.txt 64 RWD/R"_s));
        talk.enter("Pictures");
        QCOMPARE(talk.fetchFile("Hand.txt"), "abc");
        talk.ask(toRoot);
        talk.enter("Sounds");
        QCOMPARE(rowsOf(talk.fetch(listFolder)),
                 QStringList({u"file Tonleiter.mid 100 RWD/RWD"_s, u"file Piep.wav 6444 RWD/RWD"_s}));
    }
    QVERIFY(!QFileInfo::exists(folder.filePath(u"files/Liesmich.txt"_s)));
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(u' '),
             u"calendar.json contacts.json files files.json notes.json settings.json"_s);
    const auto everything = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden;
    QCOMPARE(QDir(outer.path()).entryList(everything), {u"a"_s});
    QCOMPARE(QDir(outer.filePath(u"a"_s)).entryList(everything), {u"state"_s});
}

QTEST_GUILESS_MAIN(ObexFiles)
#include "tst_ObexFiles.moc"
