// Bytes on the wire, in both directions, and codes in words.

#include "obex/ObexFrames.h"
#include "obex/PutFrames.h"
#include "obex/ResponseCodes.h"
#include "obex/ResponseFrame.h"
#include "support/ObexClient.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::obex;
using kalmo::tests::header;
using kalmo::tests::hex;
using kalmo::tests::packet;

class tst_ObexFrames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requests_data();
    void requests();
    void numbersAndTimes();
    void wholeFrames_data();
    void wholeFrames();
    void leadingHeaders_data();
    void leadingHeaders();
    void putFrames_data();
    void putFrames();
    void afterTheFinalFrame();
    void progressOfPuts_data();
    void progressOfPuts();
    void codesInWords_data();
    void codesInWords();
};

void tst_ObexFrames::requests_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* name, const QByteArray& frame, const char* bytes) {
        QTest::newRow(name) << frame << hex(bytes);
    };
    const QDateTime dayOfTwoDigits(QDate(2026, 11, 21), QTime(9, 8, 7));

    row("connect, folder browsing", connectFrame(Target::FlexMemory),
        "80 00 1A 10 00 40 06 46 00 13 6B 01 CB 31 41 06 11 D4 9A 77 00 50 DA 3F 47 1F");
    row("connect, IrMC", connectFrame(Target::IrMC),
        "80 00 13 10 00 40 06 46 00 0C 49 52 4D 43 2D 53 59 4E 43");
    row("disconnect", disconnectFrame(), "81 00 03");
    row("abort", abortFrame(), "FF 00 03");
    row("folder listing", folderListingFrame(),
        "83 00 1C 42 00 19 78 2D 6F 62 65 78 2F 66 6F 6C 64 65 72 2D 6C 69 73 74 69 6E 67 00");
    row("next part", nextPartFrame(), "83 00 03");
    row("get a file", getFrame(u"a"_s), "83 00 0A 01 00 07 00 61 00 00");
    row("get, umlaut", getFrame(u"ä"_s), "83 00 0A 01 00 07 00 E4 00 00");
    row("get, euro sign stays in shifted order", getFrame(u"€b"_s), "83 00 0C 01 00 09 00 AC 20 62 00 00");
    row("get, no name", getFrame({}), "83 00 08 01 00 05 00 00");
    row("root folder", rootFrame(), "85 00 08 02 00 01 00 03");
    row("one level up", oneLevelUpFrame(), "85 00 05 03 00");
    row("enter a folder", enterFolderFrame(u"Pb"_s, false), "85 00 0E 02 00 01 00 09 00 50 00 62 00 00");
    row("enter or make a folder", enterFolderFrame(u"Pb"_s, true),
        "85 00 0E 00 00 01 00 09 00 50 00 62 00 00");
    row("delete", deleteFrame(u"a"_s), "82 00 0A 01 00 07 00 61 00 00");
    row("set attributes", setAttribFrame(u"a"_s, "\"RWD\"\"R\""),
        "82 00 17 01 00 07 00 61 00 00 4C 00 0D 38 08 22 52 57 44 22 22 52 22");
    row("set attributes, always 8", setAttribFrame(u"a"_s, "\"RWD\"\"RWD\""),
        "82 00 19 01 00 07 00 61 00 00 4C 00 0F 38 08 22 52 57 44 22 22 52 57 44 22");
    row("rename", renameFrame(renamePath(u"a/b"_s), renamePath(u"ü"_s)),
        "82 00 1C 4C 00 19 34 04 6D 6F 76 65 35 08 00 2F 00 61 00 2F 00 62 36 04 00 2F 00 FC");
    row("total phone memory", spaceFrame(Memory::Phone, Space::Total), "83 00 09 4C 00 06 32 01 01");
    row("free phone memory", spaceFrame(Memory::Phone, Space::Free), "83 00 09 4C 00 06 32 01 02");
    row("total memory card", spaceFrame(Memory::Card, Space::Total),
        "83 00 1A 4C 00 17 32 13 01 10 00 5C 00 4D 00 4D 00 43 00 61 00 72 00 64 00 00");
    row("free memory card", spaceFrame(Memory::Card, Space::Free),
        "83 00 1A 4C 00 17 32 13 02 10 00 5C 00 4D 00 4D 00 43 00 61 00 72 00 64 00 00");
    row("first and only frame of a file",
        putFrame(true, nameHeader(u"a"_s) + lengthHeader("xyz") + timeHeader(dayOfTwoDigits), "xyz"),
        "82 00 27 01 00 07 00 61 00 00 C3 00 00 00 03"
        "44 00 12 32 30 32 36 31 31 32 31 54 30 39 30 38 30 37 49 00 06 78 79 7A");
    row("first frame of an IrMC object",
        putFrame(false, nameHeader(u"a"_s) + lengthHeader("xyz") + applicationHeader(counterParameters(123)),
                 "x"),
        "02 00 1B 01 00 07 00 61 00 00 C3 00 00 00 03 4C 00 08 11 03 31 32 33 48 00 04 78");
    row("further frame", putFrame(false, {}, "yz"), "02 00 08 48 00 05 79 7A");
    row("last frame", putFrame(true, {}, ""), "82 00 06 49 00 03");
    row("IrMC delete", irmcDeleteFrame(u"a"_s, 7), "82 00 10 01 00 07 00 61 00 00 4C 00 06 11 01 37");
}

void tst_ObexFrames::requests()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, bytes);
    QCOMPARE(frame.toHex(' '), bytes.toHex(' '));
}

void tst_ObexFrames::numbersAndTimes()
{
    QCOMPARE(LenBE16(QByteArray(0x0123, 'x'), 3), hex("01 26"));
    QCOMPARE(LenBE16(QByteArray(0xFFFF, 'x'), 4), hex("00 03"));
    QCOMPARE(LenBE32(QByteArray(0x012345, 'x'), 0), hex("00 01 23 45"));
    QCOMPARE(HexToLong(StrToHex(hex("00 01 E2 40"))), 123456);
    QCOMPARE(HexToLong(u"7fffffff"_s), 0x7FFFFFFF);
    QCOMPARE(HexToLong(u"FFFFFFFFFF"_s), 0x7FFFFFFF);
    QCOMPARE(HexToLong({}), 0);
    QCOMPARE(ObxTimeStamp(QDateTime(QDate(2026, 3, 9), QTime(0, 5, 59))), "2026039T000559"_ba);
    QCOMPARE(ObxTimeStamp(QDateTime(QDate(2026, 3, 10), QTime(23, 5, 9))), "20260310T230509"_ba);
}

void tst_ObexFrames::wholeFrames_data()
{
    QTest::addColumn<QByteArray>("buffer");
    QTest::addColumn<bool>("isWhole");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<bool>("isSound");
    const auto row = [](const char* name, const char* buffer, bool isWhole, const char* payload = "",
                        bool isSound = true) {
        QTest::newRow(name) << hex(buffer) << isWhole << hex(payload) << isSound;
    };
    row("nothing", "", false);
    row("head not whole", "A0 00", false);
    row("head only", "A0 00 03", true);
    row("a byte missing", "90 00 05 48", false);
    row("whole", "90 00 05 48 00", true, "48 00");
    row("surplus stays", "90 00 04 48 01 02", true, "48 01 02");
    row("length below the head", "A0 00 02", true, "", false);
    row("length 0", "A0 00 00 01", true, "01", false);
    row("negative length", "A0 80 00 01", true, "01", false);
    row("length -1", "A0 FF FF", true, "", false);
    row("longest", "A0 7F FF 01", false);
}

void tst_ObexFrames::wholeFrames()
{
    QFETCH(QByteArray, buffer);
    QFETCH(bool, isWhole);
    QFETCH(QByteArray, payload);
    QFETCH(bool, isSound);
    QCOMPARE(isWholeFrame(buffer), isWhole);
    if (!isWhole)
        return;
    const ResponseFrame frame = takeFrame(buffer);
    QCOMPARE(frame.code, static_cast<int>(static_cast<uchar>(buffer[0])));
    QCOMPARE(frame.payload, payload);
    QCOMPARE(frame.lengthIsSound, isSound);
}

void tst_ObexFrames::leadingHeaders_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<qint64>("total"); // -1: none
    QTest::addColumn<bool>("endOfBody");
    const auto row = [](const char* name, const char* payload, const char* data, qint64 total = -1,
                        bool endOfBody = false) {
        QTest::newRow(name) << hex(payload) << hex(data) << total << endOfBody;
    };
    row("nothing", "", "");
    row("body", "48 00 05 01 02", "01 02");
    row("its length is not used", "48 00 04 01 02 03", "01 02 03");
    row("end of body", "49 00 03", "");
    row("application parameters", "4C 00 06 32 01 01", "32 01 01");
    row("length and body", "C3 00 00 01 00 48 00 05 01 02", "01 02", 256);
    row("length and end of body", "C3 FF FF FF FF 49 00 04 01", "01", 0xFFFFFFFF, true);
    row("length and another", "C3 00 00 00 01 44 00 04 01", "44 00 04 01", 1);
    row("length alone", "C3 00 00 00 07", "", 7);
    row("cut length", "C3 00 01", "");
    row("cut body", "48 00", "");
    row("time stays", "44 00 05 01 02", "44 00 05 01 02");
}

void tst_ObexFrames::leadingHeaders()
{
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, data);
    QFETCH(qint64, total);
    QFETCH(bool, endOfBody);
    const LeadingHeader leading = takeLeadingHeader(payload);
    QCOMPARE(payload, data);
    QCOMPARE(leading.totalSize ? static_cast<qint64>(*leading.totalSize) : -1, total);
    QCOMPARE(leading.endOfBodyBehindLength, endOfBody);
}

void tst_ObexFrames::putFrames_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArrayList>("frames"); // the name's header, then what each frame carries
    // Name "a" has 3 bytes: 255 - 36 = 219 in the first frame, 249 in the next ones.
    using Frames = QByteArrayList;
    QTest::newRow("empty") << 0 << Frames{"82:0"};
    QTest::newRow("first chunk exactly") << 219 << Frames{"82:219"};
    QTest::newRow("one byte more") << 220 << Frames{"02:219", "82:1"};
    QTest::newRow("two chunks exactly") << 219 + 249 << Frames{"02:219", "82:249"};
    QTest::newRow("three frames") << 219 + 250 << Frames{"02:219", "02:249", "82:1"};
    QTest::newRow("three chunks exactly") << 219 + 2 * 249 << Frames{"02:219", "02:249", "82:249"};
}

void tst_ObexFrames::putFrames()
{
    QFETCH(int, size);
    QFETCH(QByteArrayList, frames);
    QByteArray object;
    for (int index = 0; index < size; ++index)
        object.append(static_cast<char>(index * 7));
    const QByteArray headers = nameHeader(u"a"_s) + lengthHeader(object) +
                               timeHeader(QDateTime(QDate(2026, 11, 21), QTime(1, 2, 3)));
    PutFrames put(headers, object, fileFirstChunkSize(255, u"a"_s), 255, PutFrames::AfterFinal::Repeat);

    QByteArrayList came;
    QByteArray received;
    for (QByteArray frame = put.first();; frame = put.next()) {
        const QByteArray rest = came.isEmpty() ? frame.mid(3 + headers.size()) : frame.mid(3);
        QVERIFY(frame.size() <= 255);
        QCOMPARE(came.isEmpty() ? frame.mid(3, headers.size()) : QByteArray(),
                 came.isEmpty() ? headers : QByteArray());
        const int bodyId = frame[0] == '\x02' ? 0x48 : 0x49;
        QCOMPARE(frame, packet(static_cast<uchar>(frame[0]),
                               (came.isEmpty() ? headers : QByteArray()) + header(bodyId, rest.mid(3))));
        came.append(frame.first(1).toHex() + ':' + QByteArray::number(rest.size() - 3));
        received += rest.mid(3);
        QCOMPARE(put.isFinalOut(), frame[0] == '\x82');
        if (put.isFinalOut())
            break;
        QCOMPARE(frame.size(), 255); // filled to the byte
    }
    QCOMPARE(came, frames);
    QCOMPARE(received, object);
}

void tst_ObexFrames::afterTheFinalFrame()
{
    const QByteArray object(300, 'x');
    PutFrames file({}, object, 200, 255, PutFrames::AfterFinal::Repeat);
    file.first();
    const QByteArray last = file.next();
    QCOMPARE(file.next(), last);

    PutFrames item({}, object, 200, 255, PutFrames::AfterFinal::EmptyFrame);
    item.first();
    QCOMPARE(item.left(), 100);
    QCOMPARE(item.next(), last);
    QCOMPARE(item.left(), 0);
    QCOMPARE(item.next(), hex("82 00 06 49 00 03"));

    // A name that leaves no room for anything else.
    PutFrames crowded("headers", "x", -1, 255, PutFrames::AfterFinal::Repeat);
    QCOMPARE(crowded.first(), packet(0x02, "headers" + hex("48 00 03")));
    QCOMPARE(crowded.next(), packet(0x82, hex("49 00 04") + "x"));
}

void tst_ObexFrames::progressOfPuts_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("file");
    QTest::addColumn<int>("irmc");
    QTest::newRow("empty") << 0 << 2 << 1;
    QTest::newRow("first chunk") << 100 << 2 << 1;
    QTest::newRow("a byte more") << 101 << 3 << 3;
    QTest::newRow("two chunks") << 150 << 3 << 3;
    QTest::newRow("two chunks and a byte") << 151 << 4 << 3;
    QTest::newRow("three chunks") << 200 << 5 << 4;
    QTest::newRow("three chunks and a byte") << 201 << 5 << 4;
}

void tst_ObexFrames::progressOfPuts()
{
    QFETCH(int, size);
    QTEST(filePutSteps(size, 100, 50), "file");
    QTEST(irmcPutSteps(size, 100, 50), "irmc");
    // The first chunks: 1024 - (3 + 33), and with "counter 123" in 5 bytes 1024 - (3 + 5 + 18).
    QCOMPARE(fileFirstChunkSize(1024, u"a"_s), 988);
    QCOMPARE(irmcFirstChunkSize(1024, u"a"_s, counterParameters(123)), 998);
}

void tst_ObexFrames::codesInWords_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("german");
    QTest::addColumn<QString>("english");
    const auto row = [](int code, const QString& german, const QString& english) {
        QTest::addRow("%d", code) << code << german << english;
    };
    row(0x90, u"ReCode: 100 Continue"_s, u"ReCode: 100 Continue"_s);
    row(0x40, u"ReCode: 400 Bad Request - server couldn’t understand request"_s,
        u"ReCode: 400 Bad Request - server couldn’t understand request"_s);
    row(0xC3, u"ReCode: 403 Forbidden - operation is understood but refused"_s,
        u"ReCode: 403 Forbidden - operation is understood but refused"_s);
    row(0xD0, u"ReCode: 500 Internal Server Error\n\nBitte wiederholen Sie die letzte Aktion."_s,
        u"ReCode: 500 Internal Server Error, please try again"_s);
    row(0xE1,
        u"ReCode: Database Locked\n\n"
        u"Bitte wiederholen Sie die letzte Aktion. Sollte dieser Fehler sofort wieder auftreten, muß das "
        u"Telefon einmal aus- und wieder eingeschaltet sowie Kalmo neu gestartet werden."_s,
        u"ReCode: Database Locked, please try again; if it stays so, switch the phone off and on"_s);
    row(0x7F, u"ReCode: unknown ReCode - &H7F"_s, u"ReCode: unknown ReCode - &H7F"_s);
    row(-1, kalmo::tests::timeoutText,
        u"The phone did not answer in time. Try again; if it stays so, switch the phone off and on"_s);
    row(-4, u"Löschen einer Datei fehlgeschlagen."_s, u"A local file could not be removed"_s);
    row(-2, u"ReCode: unknown ReCode - &HFFFE"_s, u"ReCode: unknown ReCode - &HFFFE"_s);
}

void tst_ObexFrames::codesInWords()
{
    QFETCH(int, code);
    QFETCH(QString, german);
    QFETCH(QString, english);
    QCOMPARE(GetFriedlyErrMsg(code), german);
    QCOMPARE(friendlyErrorEnglish(code), english);
    if (code > 0 && code != 0x7F)
        QCOMPARE(GetFriedlyErrMsg(code ^ 0x80), german); // the final bit makes no difference
}

QTEST_GUILESS_MAIN(tst_ObexFrames)
#include "tst_ObexFrames.moc"
