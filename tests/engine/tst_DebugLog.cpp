#include "support/Rows.h"
#include "support/TestContext.h"

#include <QDir>
#include <QtTest>

using namespace kalmo::tests;
using namespace Qt::StringLiterals;

class tst_DebugLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headerBlock();
    void lines();
};

void tst_DebugLog::headerBlock()
{
    TestContext test;
    test.sy.debug = true;
    test.sy.startDate = u"21.11.2026 12:00:00"_s;
    test.sy.PrgVersion = u"1.9.8"_s;
    test.sy.Paths.Exe = u"/exe"_s;
    test.sy.Paths.Storage = u"/store"_s;
    test.sy.DefUserExpRoot = u"/docs"_s;
    test.sy.osVersion = {6, 1, 140, 0};
    test.sy.ScreenX = 15360;
    test.sy.PixelX = 1024;
    test.sy.ComNo = 3;
    test.sy.ComSettings = u"19200,N,8,1"_s;
    test.sy.PhoneID = u"GAM"_s;
    test.sy.PhoneType = 5;
    test.sy.PhoneSVN = u"12"_s;
    test.sy.StrStCom = u"TX:ATZ"_s;
    test.log.WriteLogHeader();
    QCOMPARE(test.sy.logPath, test.path(u"Kalmo_debugFile_21-11-2026  12-00-00.log"_s));
    QCOMPARE(TestContext::contentOf(test.sy.logPath),
             QByteArray("----------------- Kalmo! - Debug Log ---------------------\n"
                        "           Date:\t21.11.2026 12:00:00\n"
                        "     PrgVersion:\t1.9.8\n"
                        "   Sy.Paths.Exe:/exe\n"
                        "  Paths.Storage:/store\n"
                        ".DefUserExpRoot:/docs\n"
                        "\n"
                        "----------------- OS Info -----------------------------------\n"
                        "    OS Platform:\t0\n"
                        "OS MajorVersion:\t6\n"
                        "OS MinorVersion:\t1\n"
                        "       OS Build:\t140\n"
                        "\n"
                        "----------------- Screen Info -------------------------------\n"
                        "        ScreenX:\t15360\n"
                        "        ScreenY:\t0\n"
                        "         PixelX:\t1024\n"
                        "         PixelY:\t0\n"
                        "\n"
                        "----------------- COM ---------------------------------------\n"
                        "          ComNo:\t3\n"
                        "    ComSettings:\t19200,N,8,1\n"
                        "\n"
                        "------------------- Program Startup ------------------------\n"
                        "        PhoneID:\tGAM\n"
                        "     PhoneIDHex:\t 47 41 4D\n"
                        "      PhoneType:\t5\n"
                        "       PhoneSVN:\t12\n"
                        " blnTxLfTermina:\tFalse\n"
                        "       StrStCom:\tTX:ATZ\n"
                        "\n"
                        "------------------- Program --------------------------------\n"));
}

void tst_DebugLog::lines()
{
    const Rows<QString, QString, bool, QByteArray> rows{
        {"plain", u"Tx"_s, u"AT"_s, false, "@0043200.00:                   Tx:\tAT\n"},
        {"long tag loses its beginning", u"0123456789ABCDEFGHIJKL"_s, u"x"_s, false,
         "@0043200.00: 23456789ABCDEFGHIJKL:\tx\n"},
        {"line ends become words", u"Rx"_s, u"a\r\nb\rc\nd"_s, false,
         "@0043200.00:                   Rx:\ta #vbCRLF# b #vbCR# c #vblf# d\n"},
        {"raw", u"Rx"_s, u"a\nb"_s, true, "@0043200.00:                   Rx:\ta\nb\n"},
    };
    for (const auto& [tag, text, raw, line] : rows) {
        TestContext test;
        test.startLog();
        test.log.WriteDebugLog(tag, text, raw);
        QCOMPARE(TestContext::contentOf(test.sy.logPath), line);
    }
}

QTEST_GUILESS_MAIN(tst_DebugLog)
#include "tst_DebugLog.moc"
