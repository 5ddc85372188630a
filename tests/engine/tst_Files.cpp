// Files that the program keeps for itself: folders, settings, and the log.

#include "app/Files.h"
#include "app/IniFile.h"
#include "app/SettingsKeys.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

class tst_Files : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldersAreMade()
    {
        const Rows<QString, bool> rows{
            {"chain", u"a/b/c"_s, true},           {"separator at the end", u"d/"_s, true},
            {"there already", u"storage"_s, true}, {"a file is in the way", u"file/x"_s, false},
            {"too short", u"/x"_s, false},
        };
        rows.each([&](const auto& path, const auto& made) {
            TestContext test;
            test.makeFile(u"file"_s, "x");
            const QString full = path.startsWith(u'/') ? path : test.path(path);
            QCOMPARE(app::EnsureDirExistsNoMsgBox(test.context, full), made);
            QCOMPARE(QFileInfo(full).isDir(), made);
            const QString shown = path.startsWith(u'/') ? full : u'"' + full + u'"'; // refused, or failed
            if (!made)
                test.dialogs.expectStart(u"Der Pfad "_s + shown + u" konnte nicht erstellt werden."_s);
            QCOMPARE(app::EnsureDirExists(test.context, full), made);
        });
    }

    void readOnlyFilesAreDeleted()
    {
        TestContext test;
        const QString path = test.makeFile(u"file"_s, "x");
        QFile::setPermissions(path, QFileDevice::ReadOwner);
        QVERIFY(app::KillEx(test.context, path));
        QVERIFY(!QFile::exists(path));
        QVERIFY(app::KillEx(test.context, path)); // missing is as good
        QVERIFY(app::KillEx(test.context, {}));
        app::DeleteQuiet(path);
        app::DeleteQuiet({});
    }

    void emptyingAFolder()
    {
        TestContext test;
        const QString temp = test.storage + u"/config/temp"_s;
        test.makeFile(u"storage/config/temp/.hidden"_s, "x");
        QFile::setPermissions(test.makeFile(u"storage/config/temp/readonly"_s, "x"), QFileDevice::ReadOwner);
        QDir(temp).mkdir(u"sub"_s);
        app::emptyFolder(temp);
        QCOMPARE(QDir(temp).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList{u"sub"_s});
        app::emptyFolder(test.path(u"missing"_s));
    }

    void settings()
    {
        const Rows<QByteArray, QString> rows{
            {"plain", "[S]\r\nk=v\r\n", u"v"_s},
            {"blanks and quotes go", "[S]\nk = \" v \" \n", u" v "_s},
            {"empty value", "[S]\nk=\n", {}},
            {"no file", {}, u"<no value>"_s},
            {"UTF-8 with mark", "\xEF\xBB\xBF[S]\nk=\xC3\xBC\n", u"ü"_s},
            {"Windows-1252", "[S]\nk=\xFC\n", u"ü"_s},
        };
        rows.each([&](const auto& file, const auto& value) {
            TestContext test;
            if (!file.isEmpty())
                test.makeFile(u"storage/config/Kalmo.ini"_s, file);
            QCOMPARE(test.settings.GetIniText(u"S"_s, u"k"_s), value);
            QCOMPARE(test.settings.GetIniText(u"S"_s, u"missing"_s, {}, u"fallback"_s), u"fallback"_s);
        });
    }

    void otherSettingsAreKept()
    {
        TestContext test;
        const QString path =
            test.makeFile(u"storage/config/Kalmo.ini"_s,
                          "; by hand\r\n[Alias]\r\n^X: 1,\x07 y=3\r\n\r\n[Other]\r\nk=v\r\nnonsense\r\n");
        test.settings.PutIniNumber(u"Alias"_s, u"new"_s, 4);
        test.settings.PutIniText(u"other"_s, u"K"_s, u"w"_s);
        test.settings.PutIniText(u"Fresh"_s, u"a"_s, u"b"_s);
        QCOMPARE(TestContext::contentOf(path),
                 QByteArray("; by hand\r\n[Alias]\r\n^X: 1,\x07 "
                            "y=3\r\n\r\nnew=4\r\n[Other]\r\nK=w\r\nnonsense\r\n[Fresh]\r\n"
                            "a=b\r\n"));
        QCOMPARE(test.settings.GetIniNumber(u"Alias"_s, u"^X: 1,\u0007 y"_s, 0), 3.f);
    }

    void valuesCannotAddLines()
    {
        TestContext test;
        test.settings.PutIniText(u"Reminder"_s, u"Device"_s, u"SL1\r\n[Alias]\r\nevil=1"_s);
        QCOMPARE(test.settings.GetIniText(u"Alias"_s, u"evil"_s), app::noValue());
        QCOMPARE(test.settings.GetIniText(u"Reminder"_s, u"Device"_s), u"SL1  [Alias]  evil=1"_s);
    }

    void settingsOfAnyBytes()
    {
        app::IniFile file = app::IniFile::parse("[[[]]]\n[\n]\n=\n==\n[x\nk=\"\n[S]\n\xC3\x28=\xFF\xFE\n");
        file.setValue(u"S"_s, u"new"_s, u"1"_s);
        const app::IniFile again = app::IniFile::parse(file.toBytes());
        QCOMPARE(again.value(u"S"_s, u"new"_s), std::optional(u"1"_s));
        QCOMPARE(again.toBytes(), file.toBytes());
    }

    void headOfTheLog()
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
        static const QRegularExpression lineEnd(u"\\s*\\n\\s*"_s);
        const QString head =
            QString::fromUtf8(TestContext::contentOf(test.sy.logPath)).remove(u'-').trimmed();
        QCOMPARE(
            QString(head).replace(lineEnd, u"|"_s),
            u"Kalmo!  Debug Log|Date:\t21.11.2026 12:00:00|PrgVersion:\t1.9.8|Sy.Paths.Exe:/exe|"
            u"Paths.Storage:/store|.DefUserExpRoot:/docs|OS Info|OS Platform:\t0|OS MajorVersion:\t6|"
            u"OS MinorVersion:\t1|OS Build:\t140|Screen Info|ScreenX:\t15360|ScreenY:\t0|PixelX:\t1024|"
            u"PixelY:\t0|COM|ComNo:\t3|ComSettings:\t19200,N,8,1|Program Startup|PhoneID:\tGAM|"
            u"PhoneIDHex:\t 47 41 4D|PhoneType:\t5|PhoneSVN:\t12|blnTxLfTermina:\tFalse|StrStCom:\tTX:ATZ|"
            u"Program"_s);
    }

    void linesOfTheLog()
    {
        const Rows<QString, QString, bool, QByteArray> rows{
            {"plain", u"Tx"_s, u"AT"_s, false, "@0043200.00:                   Tx:\tAT\n"},
            {"long tag loses its beginning", u"0123456789ABCDEFGHIJKL"_s, u"x"_s, false,
             "@0043200.00: 23456789ABCDEFGHIJKL:\tx\n"},
            {"line ends become words", u"Rx"_s, u"a\r\nb\rc\nd"_s, false,
             "@0043200.00:                   Rx:\ta #vbCRLF# b #vbCR# c #vblf# d\n"},
        };
        rows.each([&](const auto& tag, const auto& text, const auto& raw, const auto& line) {
            TestContext test;
            test.startLog();
            test.log.WriteDebugLog(tag, text, raw);
            QCOMPARE(TestContext::contentOf(test.sy.logPath), line);
        });
    }
};

KALMO_TEST(tst_Files)
#include "tst_Files.moc"
