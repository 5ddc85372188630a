// Bytes on the wire, in both directions, and codes in words.

#include "obex/ObexFrames.h"
#include "obex/PutFrames.h"
#include "obex/ResponseCodes.h"
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
