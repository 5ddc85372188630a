// Storage paths and the start sequence.

#include "app/SettingsKeys.h"
#include "app/StartSequence.h"
#include "app/StoragePaths.h"
#include "support/ConverterFolder.h"
#include "support/TestProgram.h"

namespace {

class FakeSplash : public app::StartView
{
public:
    app::ScreenSize size{15360, 11520, 1024, 768};
    QStringList calls;

    app::ScreenSize screen() const override { return size; }
    void clearAbortFlag() override { calls.append(u"clear"_s); }
    void layOutSplash(const QString& caption) override { calls.append(caption); }
    void ReadSettingsToForm() override { calls.append(u"read settings"_s); }
    void showSettings() override { calls.append(u"show settings"_s); }
};

const QStringList untilSettings{u"clear"_s, u"Kalmo Version 1.9.8 vom 17.09.2026"_s, u"read settings"_s};

const QString resetPath = u"Soll der bisherige Speicherpfad auf den Standartwert zurückgesetzt werden?"_s;

void expectMissing(TestContext& test, const QString& path, Answer answer)
{
    test.dialogs.expectStart(u"Der Ordner \""_s + path + u"\" existiert nicht"_s, Buttons::RetryCancel,
                             answer);
}

} // namespace

class tst_Start : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pathsByTheStoredValue()
    {
        const Rows<QString, bool, QString, QString, QString> rows{
            {"beside the program", u"$APPPATH"_s, false, u"program"_s, u"program"_s, u"$APPPATH"_s},
            {"default", u"$DEFAULTPATH"_s, true, u"data/Merrow Works/Kalmo"_s, u"documents"_s,
             u"$DEFAULTPATH"_s},
            {"first run", {}, false, u"data/Merrow Works/Kalmo"_s, u"documents"_s, u"$DEFAULTPATH"_s},
        };
        rows.each([&](const auto& stored, const auto& settingsBesideProgram, const auto& storage,
                      const auto& exports, const auto& storedAfter) {
            TestContext test;
            const QString tmp = test.folder.path();
            test.sy.OsClass = 6;
            test.platform.storagePath = QString(stored).replace(u"TMP"_s, tmp);
            if (settingsBesideProgram) {
                QDir(tmp).mkpath(u"program/config"_s);
                test.makeFile(u"program/config/Kalmo.ini"_s, "[x]\n");
            }
            QCOMPARE(app::currentStoragePath(test.platform), test.path(storage));
            QVERIFY(app::GetMyPaths(test.context));
            QCOMPARE(test.sy.Paths.Storage, test.path(storage));
            QCOMPARE(test.sy.DefUserExpRoot, test.path(exports));
            QCOMPARE(test.platform.storagePath, QString(storedAfter).replace(u"TMP"_s, tmp));
            QVERIFY(QDir(test.path(storage)).exists());
            QVERIFY(!QFile::exists(test.path(storage) + u"/HddAccessTest.dat"_s));
        });
    }

    void pathThatCannotBeMade()
    {
        const Rows<Answer, int, QString> rows{
            {"not reset", Answer::No, 0, {}},
            {"reset", Answer::Yes, 0, u"Speicherpfad zurückgesetzt."_s},
            {"reset fails", Answer::Yes, 5, u"Der Standardpfad konnte nicht definiert werden (A8)."_s},
        };
        rows.each([&](const auto& reset, const auto& storing, const auto& told) {
            TestContext test;
            test.sy.OsClass = 6;
            const QString path = test.makeFile(u"file"_s, "x") + u"/below a file"_s;
            test.platform.storagePath = path;
            expectMissing(test, path, Answer::Retry);
            expectMissing(test, path, Answer::Cancel);
            test.dialogs.expectStart(resetPath, Buttons::YesNo, reset);
            test.platform.storagePathResult = storing;
            if (reset == Answer::No) {
                QVERIFY(!app::GetMyPaths(test.context));
                QCOMPARE(test.platform.storagePath, path);
                return;
            }
            test.dialogs.expectStart(told);
            QVERIFY_THROWS_EXCEPTION(ProgramEnded, app::GetMyPaths(test.context));
            QCOMPARE(test.platform.storagePath, storing == 0 ? u"$DEFAULTPATH"_s : path);
        });
    }

    void startsThatEnd()
    {
        using Prepare = std::function<void(TestContext&, FakeSplash&)>;
        Rows<QString, QStringList, Prepare> rows;
        rows.add("second instance", u"/DBG"_s, {},
                 [](TestContext& test, FakeSplash&) { test.platform.alone = false; });
        rows.add("screen too low", {}, {}, [](TestContext& test, FakeSplash& splash) {
            splash.size.pixelY = 599;
            test.dialogs.expectStart(
                u"Dieses Programm benötigt mindestens 800x600 Pixel Bildschirmauflösung."_s);
        });
        rows.add("settings deleted", u"/DELINI"_s, {u"clear"_s}, [](TestContext& test, FakeSplash&) {
            test.platform.storagePath = test.storage;
            test.makeFile(u"storage/config/Kalmo.ini"_s, "[x]\n");
            test.dialogs.expectStart(u"Ini-Datei löschen, alle Einstellungen zurücksetzen?"_s, Buttons::YesNo,
                                     Answer::Yes);
            test.dialogs.expectStart(u"Programm bitte neu starten"_s);
        });
        rows.add("no folder", {}, {u"clear"_s}, [](TestContext& test, FakeSplash&) {
            test.platform.storagePath = test.makeFile(u"file"_s, "x") + u"/below"_s;
            expectMissing(test, test.platform.storagePath, Answer::Cancel);
            test.dialogs.expectStart(resetPath, Buttons::YesNo, Answer::No);
            test.dialogs.expectStart(u"Abbruch nach Überprüfung der Ordner"_s);
        });

        rows.each([&](const auto& arguments, const auto& calls, const auto& prepare) {
            TestContext test;
            FakeSplash splash;
            prepare(test, splash);
            QVERIFY_THROWS_EXCEPTION(ProgramEnded, app::runStartSequence(test.context, splash, arguments));
            QCOMPARE(splash.calls, calls);
            QVERIFY(arguments != u"/DELINI"_s || !QFile::exists(app::iniPath(test.storage)));
        });
    }

    void firstRunAndNewVersion()
    {
        const Rows<QByteArray, bool> rows{
            {"first run", {}, false},
            {"older version", "[frmEinstellungen]\nVersion=1.9.7\n", false},
            {"this version", "[frmEinstellungen]\nVersion=1.9.8\n", true},
        };
        rows.each([&](const auto& ini, const auto& search) {
            TestContext test;
            FakeSplash splash;
            splash.size = {9600, 9000, 640, 600}; // just enough
            test.platform.storagePath = test.storage;
            if (!ini.isEmpty())
                test.makeFile(u"storage/config/Kalmo.ini"_s, ini);
            test.makeFile(u"storage/config/temp/o"_s, "left");
            QVERIFY(leaveWorkOfKilled(test));
            const auto outcome = app::runStartSequence(test.context, splash, {});
            QCOMPARE(workLeftIn(test), QStringList());
            QCOMPARE(outcome, search ? app::StartOutcome::Search : app::StartOutcome::Settings);
            QCOMPARE(splash.calls, search ? untilSettings : untilSettings + QStringList{u"show settings"_s});
            QCOMPARE(test.sy.PixelX, 640);
            QCOMPARE(test.sy.PrgVersion, u"1.9.8"_s);
            QVERIFY(QDir(test.storage + u"/Backup"_s).exists());
        });
    }

    void debugLogWithoutADesktop()
    {
        const Rows<QString, bool> rows{
            {"no folder yet", u"new/desktop"_s, false},
            {"no folder can be made", u"file/desktop"_s, true},
        };
        rows.each([&](const auto& desktop, const auto& isElsewhere) {
            TestContext test;
            test.makeFile(u"file"_s, "x");
            app::DebugLog log(test.sy, test.clock, test.path(desktop));
            app::Context context{test.sy,       test.clock,    test.dialogs, test.ending,
                                 test.platform, test.settings, log};
            FakeSplash splash;
            test.platform.storagePath = test.storage;
            test.dialogs.expectStart(u"Debugger aktiv - Protokolldatei wird erstellt."_s);
            app::runStartSequence(context, splash, u"/DBG"_s);
            QCOMPARE(log.fault(), QString());
            const QString folder = isElsewhere ? QDir::tempPath() : test.path(desktop);
            QCOMPARE(QFileInfo(test.sy.logPath).path(), folder);
            QVERIFY(QFile::remove(test.sy.logPath));
        });
    }

    void reminderOfAnUnclosedSession()
    {
        TestContext test;
        FakeSplash splash;
        test.platform.storagePath = test.storage;
        app::put(test.settings, app::keys::LastUnclosedObexDevice, u"SL450"_s);
        app::runStartSequence(test.context, splash, {}); // goes to the settings: not yet
        QCOMPARE(app::get(test.settings, app::keys::LastUnclosedObexDevice), u"SL450"_s);

        app::put(test.settings, app::keys::Version, u"1.9.8"_s);
        test.dialogs.expectStart(u"SL450 wurde beim letzten Betrieb nicht vollständig beendent."_s);
        QCOMPARE(app::runStartSequence(test.context, splash, {}), app::StartOutcome::Search);
        QCOMPARE(app::get(test.settings, app::keys::LastUnclosedObexDevice), app::noValue());
        QCOMPARE(app::runStartSequence(test.context, splash, {}), app::StartOutcome::Search);
    }
};

KALMO_TEST(tst_Start)
#include "tst_Start.moc"
