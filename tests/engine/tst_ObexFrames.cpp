// Bytes on the wire, in both directions, and codes in words.

#include "obex/ObexFrames.h"
#include "obex/PutFrames.h"
#include "obex/ResponseCodes.h"
#include "obex/ResponseFrame.h"
#include "support/ObexClient.h"
#include "support/TestProgram.h"

using namespace kalmo::obex;
using kalmo::tests::header;
using kalmo::tests::hex;
using kalmo::tests::packet;
using kalmo::tests::Rows;

class tst_ObexFrames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requests();
    void wholeFrames();
    void leadingHeaders();
    void codesInWords();
};

void tst_ObexFrames::requests()
{
    const QDateTime dayOfTwoDigits(QDate(2026, 11, 21), QTime(9, 8, 7));
    const Rows<QByteArray, QByteArray> rows{
        {"get, euro sign stays in shifted order", getFrame(u"€b"_s),
         hex("83 00 0C 01 00 09 00 AC 20 62 00 00")},
        {"first frame of an IrMC object",
         putFrame(false, nameHeader(u"a"_s) + lengthHeader("xyz") + applicationHeader(counterParameters(123)),
                  "x"),
         hex("02 00 1B 01 00 07 00 61 00 00 C3 00 00 00 03 4C 00 08 11 03 31 32 33 48 00 04 78")},
        {"IrMC delete", irmcDeleteFrame(u"a"_s, 7), hex("82 00 10 01 00 07 00 61 00 00 4C 00 06 11 01 37")},
    };
    rows.each([&](const auto& frame, const auto& bytes) { QCOMPARE(frame.toHex(' '), bytes.toHex(' ')); });
}

void tst_ObexFrames::wholeFrames()
{
    const Rows<QByteArray, bool, QByteArray, bool> rows{
        {"head only", hex("A0 00 03"), true, hex(""), true},
        {"a byte missing", hex("90 00 05 48"), false, hex(""), true},
        {"whole", hex("90 00 05 48 00"), true, hex("48 00"), true},
        {"surplus stays", hex("90 00 04 48 01 02"), true, hex("48 01 02"), true},
        {"length below the head", hex("A0 00 02"), true, hex(""), false},
        {"longest", hex("A0 7F FF 01"), false, hex(""), true},
    };
    rows.each([&](const auto& buffer, const auto& isWhole, const auto& payload, const auto& isSound) {
        QCOMPARE(isWholeFrame(buffer), isWhole);
        if (!isWhole)
            return;
        const ResponseFrame frame = takeFrame(buffer);
        QCOMPARE(frame.code, static_cast<int>(static_cast<uchar>(buffer[0])));
        QCOMPARE(frame.payload, payload);
        QCOMPARE(frame.lengthIsSound, isSound);
    });
}

void tst_ObexFrames::leadingHeaders()
{
    const Rows<QByteArray, QByteArray, qint64, bool> rows{
        {"body", hex("48 00 05 01 02"), hex("01 02"), -1, false},
        {"application parameters", hex("4C 00 06 32 01 01"), hex("32 01 01"), -1, false},
        {"length and body", hex("C3 00 00 01 00 48 00 05 01 02"), hex("01 02"), 256, false},
        {"length and end of body", hex("C3 FF FF FF FF 49 00 04 01"), hex("01"), 0xFFFFFFFF, true},
        {"length alone", hex("C3 00 00 00 07"), hex(""), 7, false},
        {"cut length", hex("C3 00 01"), hex(""), -1, false},
        {"time stays", hex("44 00 05 01 02"), hex("44 00 05 01 02"), -1, false},
    };
    rows.each([&](QByteArray payload, const auto& data, const auto& total, const auto& endOfBody) {
        const LeadingHeader leading = takeLeadingHeader(payload);
        QCOMPARE(payload, data);
        QCOMPARE(leading.totalSize ? static_cast<qint64>(*leading.totalSize) : -1, total);
        QCOMPARE(leading.endOfBodyBehindLength, endOfBody);
    });
}

void tst_ObexFrames::codesInWords()
{
    const QString continues = u"ReCode: 100 Continue"_s;
    const Rows<int, QString, QString> rows{
        {"continue", 0x90, continues, continues},
        {"of two languages", 0xD0,
         u"ReCode: 500 Internal Server Error\n\nBitte wiederholen Sie die letzte Aktion."_s,
         u"ReCode: 500 Internal Server Error, please try again"_s},
        {"of the client", -4, u"Löschen einer Datei fehlgeschlagen."_s,
         u"a local file could not be removed"_s},
        {"unknown, below 0", -2, u"ReCode: unknown ReCode - &HFFFE"_s, u"ReCode: unknown ReCode - &HFFFE"_s},
    };
    rows.each([&](const auto& code, const auto& german, const auto& english) {
        QCOMPARE(GetFriedlyErrMsg(code), german);
        QCOMPARE(friendlyErrorEnglish(code), english);
    });
}

KALMO_TEST(tst_ObexFrames)
#include "tst_ObexFrames.moc"
