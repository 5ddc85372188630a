// Storage paths and the start sequence.

#include "app/SettingsKeys.h"
#include "app/StartSequence.h"
#include "app/StoragePaths.h"
#include "support/TestContext.h"

#include <QDir>
#include <QtTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::Message;

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

Message missingFolder(const QString& path)
{
    return {
        .text =
            u"Der Ordner \""_s + path +
            u"\" existiert nicht und konnte auch nicht angelegt werden.\nWenn Sie diesen Ordner selbst als "
            u"Speicherpfad in den Programmeinstellungen festgelegt haben, legen Sie ihn manuell an oder "
            u"richten Sie im übergeordneten Ordner Schreibrecht ein.\nVersuch wiederholen?"_s,
        .buttons = Buttons::RetryCancel,
        .icon = Icon::Critical};
}

const Message resetPath{.text =
                            u"Soll der bisherige Speicherpfad auf den Standartwert zurückgesetzt werden?"_s,
                        .buttons = Buttons::YesNo,
                        .icon = Icon::Question,
                        .defaultButton = Answer::No};

Message exclamation(const QString& text)
{
    return {.text = text, .icon = Icon::Exclamation};
}

Message information(const QString& text)
{
    return {.text = text, .icon = Icon::Information};
}

} // namespace

class tst_Start : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void osClasses_data();
    void osClasses();
    void pathsByTheStoredValue_data();
    void pathsByTheStoredValue();
    void firstPathCannotBeStored();
    void oldSystemsHaveNoStoredValue();
    void pathThatCannotBeMade_data();
    void pathThatCannotBeMade();
    void userMakesThePathAndRetries();
    void commandLine_data();
    void commandLine();
    void startsThatEnd_data();
    void startsThatEnd();
    void firstRunAndNewVersion_data();
    void firstRunAndNewVersion();
    void reminderOfAnUnclosedSession();
    void scratchFilesGo();
};

void tst_Start::osClasses_data()
{
    QTest::addColumn<app::OsVersion>("version");
    QTest::addColumn<bool>("classic");
    QTest::addColumn<int>("osClass");
    const auto row = [](const char* name, app::OsVersion version, int osClass) {
        QTest::newRow(name) << version << true << osClass;
    };
    row("4.0 platform 1", {4, 0, 0, 1}, 1);
    row("4.10", {4, 10, 0, 1}, 1);
    row("4.90", {4, 90, 0, 1}, 2);
    row("4.0 platform 2", {4, 0, 0, 2}, 3);
    row("5.0", {5, 0, 0, 2}, 4);
    row("5.1", {5, 1, 0, 2}, 5);
    row("5.2", {5, 2, 0, 2}, 5);
    row("6.3", {6, 3, 0, 2}, 6);
    row("5.3", {5, 3, 0, 2}, 0);
    row("4.10 platform 2", {4, 10, 0, 2}, 0);
    row("10.0", {10, 0, 0, 2}, 0);
    QTest::newRow("another platform") << app::OsVersion{6, 1, 0, 0} << false << 6;
    QTest::newRow("another platform, any number") << app::OsVersion{4, 0, 0, 1} << false << 6;
}

void tst_Start::osClasses()
{
    QFETCH(app::OsVersion, version);
    QFETCH(bool, classic);
    QFETCH(int, osClass);
    QCOMPARE(app::osClassOf(version, classic), osClass);
    TestContext test;
    test.platform.version = version;
    test.platform.classicVersionNumbers = classic;
    if (osClass == 0) {
        test.dialogs.expect(
            {.text = u"Das Betriebssystem konnte nicht ermittelt werden. Bitte wenden Sie sich an den "
                     u"Programmautor."_s,
             .icon = Icon::Critical});
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, app::DetectOsClass(test.context));
        return;
    }
    app::DetectOsClass(test.context);
    QCOMPARE(test.sy.OsClass, osClass);
}

void tst_Start::pathsByTheStoredValue_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("settingsBesideProgram");
    QTest::addColumn<QString>("storage"); // below the temporary folder
    QTest::addColumn<QString>("exports");
    QTest::addColumn<QString>("storedAfter");
    QTest::newRow("beside the program")
        << u"$APPPATH"_s << false << u"program"_s << u"program"_s << u"$APPPATH"_s;
    QTest::newRow("default") << u"$DEFAULTPATH"_s << true << u"data/Merrow Works/Kalmo"_s << u"documents"_s
                             << u"$DEFAULTPATH"_s;
    QTest::newRow("first run") << QString() << false << u"data/Merrow Works/Kalmo"_s << u"documents"_s
                               << u"$DEFAULTPATH"_s;
    QTest::newRow("first run, settings beside the program")
        << QString() << true << u"program"_s << u"program"_s << u"$APPPATH"_s;
    QTest::newRow("chosen by the user")
        << u"TMP/mine"_s << false << u"mine"_s << u"documents"_s << u"TMP/mine"_s;
}

void tst_Start::pathsByTheStoredValue()
{
    QFETCH(QString, stored);
    QFETCH(bool, settingsBesideProgram);
    QFETCH(QString, storage);
    QFETCH(QString, exports);
    QFETCH(QString, storedAfter);
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
    QCOMPARE(test.platform.storagePath, storedAfter.replace(u"TMP"_s, tmp));
    QVERIFY(QDir(test.path(storage)).exists());
    QVERIFY(!QFile::exists(test.path(storage) + u"/HddAccessTest.dat"_s));
}

void tst_Start::firstPathCannotBeStored()
{
    TestContext test;
    test.sy.OsClass = 6;
    test.platform.storagePathResult = 5;
    test.dialogs.expect(exclamation(
        u"Der Standardpfad konnte nicht definiert werden (A2). Bitte wenden Sie sich an den Programmautor"_s));
    QVERIFY(!app::GetMyPaths(test.context));
    QDir(test.folder.path()).mkpath(u"program/config"_s);
    test.makeFile(u"program/config/Kalmo.ini"_s, "[x]\n");
    test.dialogs.expect(exclamation(
        u"Der Standardpfad konnte nicht definiert werden (A1). Bitte wenden Sie sich an den Programmautor"_s));
    QVERIFY(!app::GetMyPaths(test.context));
}

void tst_Start::oldSystemsHaveNoStoredValue()
{
    TestContext test;
    test.sy.OsClass = 3;
    test.sy.Paths.Exe = test.makeFile(u"file"_s, "x") + u"/in the way"_s;
    test.platform.storagePath = u"$DEFAULTPATH"_s;
    test.dialogs.expect(missingFolder(test.sy.Paths.Exe), Answer::Cancel); // and no offer of a reset
    QVERIFY(!app::GetMyPaths(test.context));
    QCOMPARE(test.sy.Paths.Storage, test.sy.Paths.Exe);
}

void tst_Start::pathThatCannotBeMade_data()
{
    QTest::addColumn<Answer>("reset");
    QTest::addColumn<int>("storing");
    QTest::addColumn<QString>("told");
    QTest::newRow("not reset") << Answer::No << 0 << QString();
    QTest::newRow("reset") << Answer::Yes << 0
                           << u"Speicherpfad zurückgesetzt. Bitte starten Sie das Programm neu."_s;
    QTest::newRow("reset fails")
        << Answer::Yes << 5
        << u"Der Standardpfad konnte nicht definiert werden (A8). Bitte wenden Sie sich an den Programmautor"_s;
}

void tst_Start::pathThatCannotBeMade()
{
    QFETCH(Answer, reset);
    QFETCH(int, storing);
    QFETCH(QString, told);
    TestContext test;
    test.sy.OsClass = 6;
    const QString path = test.makeFile(u"file"_s, "x") + u"/below a file"_s;
    test.platform.storagePath = path;
    test.dialogs.expect(missingFolder(path), Answer::Retry);
    test.dialogs.expect(missingFolder(path), Answer::Cancel);
    test.dialogs.expect(resetPath, reset);
    test.platform.storagePathResult = storing;
    if (reset == Answer::No) {
        QVERIFY(!app::GetMyPaths(test.context));
        QCOMPARE(test.platform.storagePath, path);
        return;
    }
    test.dialogs.expect(storing == 0 ? information(told) : exclamation(told));
    QVERIFY_THROWS_EXCEPTION(ProgramEnded, app::GetMyPaths(test.context));
    QCOMPARE(test.platform.storagePath, storing == 0 ? u"$DEFAULTPATH"_s : path);
}

void tst_Start::userMakesThePathAndRetries()
{
    TestContext test;
    test.sy.OsClass = 6;
    const QString blocked = test.makeFile(u"blocked"_s, "x");
    test.platform.storagePath = blocked;
    test.dialogs.expect(missingFolder(blocked), Answer::Retry);
    test.dialogs.whileShown([&] { QFile::remove(blocked); });
    QVERIFY(app::GetMyPaths(test.context));
    QVERIFY(QDir(blocked).exists());
}

void tst_Start::commandLine_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<bool>("debug");
    QTest::newRow("none") << QString() << false;
    QTest::newRow("short, any case, blanks around") << u" /dbg "_s << true;
    QTest::newRow("long") << u"/Debug"_s << true;
    QTest::newRow("two in one match neither") << u"/DBG /DELINI"_s << false;
    QTest::newRow("unknown") << u"/HELP"_s << false;
}

void tst_Start::commandLine()
{
    QFETCH(QString, arguments);
    QFETCH(bool, debug);
    TestContext test;
    FakeSplash splash;
    if (debug)
        test.dialogs.expect(information(u"Debugger aktiv - Protokolldatei wird erstellt."_s));
    app::runStartSequence(test.context, splash, arguments);
    QCOMPARE(test.sy.debug, debug);
}

void tst_Start::startsThatEnd_data()
{
    using Prepare = std::function<void(TestContext&, FakeSplash&)>;
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QStringList>("calls");

    QTest::newRow("second instance") << Prepare([](TestContext& test, FakeSplash&) {
        test.platform.alone = false;
    }) << u"/DBG"_s << QStringList();
    QTest::newRow("screen too low") << Prepare([](TestContext& test, FakeSplash& splash) {
        splash.size.pixelY = 599;
        test.dialogs.expect(
            exclamation(u"Dieses Programm benötigt mindestens 800x600 Pixel Bildschirmauflösung."_s));
    }) << QString() << QStringList();
    QTest::newRow("settings not deleted after all") << Prepare([](TestContext& test, FakeSplash&) {
        test.dialogs.expect({.text = u"Ini-Datei löschen, alle Einstellungen zurücksetzen?"_s,
                             .buttons = Buttons::YesNo,
                             .icon = Icon::Question,
                             .defaultButton = Answer::No},
                            Answer::No);
    }) << u"/delini"_s << QStringList{u"clear"_s};
    QTest::newRow("settings deleted") << Prepare([](TestContext& test, FakeSplash&) {
        test.platform.storagePath = test.storage;
        test.makeFile(u"storage/config/Kalmo.ini"_s, "[x]\n");
        test.dialogs.expect({.text = u"Ini-Datei löschen, alle Einstellungen zurücksetzen?"_s,
                             .buttons = Buttons::YesNo,
                             .icon = Icon::Question,
                             .defaultButton = Answer::No},
                            Answer::Yes);
        test.dialogs.expect(information(u"Programm bitte neu starten"_s));
    }) << u"/DELINI"_s << QStringList{u"clear"_s};
    QTest::newRow("no folder") << Prepare([](TestContext& test, FakeSplash&) {
        test.platform.storagePath = test.makeFile(u"file"_s, "x") + u"/below"_s;
        test.dialogs.expect(missingFolder(test.platform.storagePath), Answer::Cancel);
        test.dialogs.expect(resetPath, Answer::No);
        test.dialogs.expect(exclamation(u"Abbruch nach Überprüfung der Ordner"_s));
    }) << QString() << QStringList{u"clear"_s};
}

void tst_Start::startsThatEnd()
{
    using Prepare = std::function<void(TestContext&, FakeSplash&)>;
    QFETCH(Prepare, prepare);
    QFETCH(QString, arguments);
    TestContext test;
    FakeSplash splash;
    prepare(test, splash);
    QVERIFY_THROWS_EXCEPTION(ProgramEnded, app::runStartSequence(test.context, splash, arguments));
    QTEST(splash.calls, "calls");
    QVERIFY(arguments != u"/DELINI"_s || !QFile::exists(app::iniPath(test.storage)));
}

void tst_Start::firstRunAndNewVersion_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<bool>("search");
    QTest::newRow("first run") << QByteArray() << false;
    QTest::newRow("older version") << QByteArray("[frmEinstellungen]\nVersion=1.9.7\n") << false;
    QTest::newRow("this version") << QByteArray("[frmEinstellungen]\nVersion=1.9.8\n") << true;
}

void tst_Start::firstRunAndNewVersion()
{
    QFETCH(QByteArray, ini);
    QFETCH(bool, search);
    TestContext test;
    FakeSplash splash;
    splash.size = {9600, 9000, 640, 600}; // just enough
    test.platform.storagePath = test.storage;
    if (!ini.isEmpty())
        test.makeFile(u"storage/config/Kalmo.ini"_s, ini);
    const auto outcome = app::runStartSequence(test.context, splash, {});
    QCOMPARE(outcome, search ? app::StartOutcome::Search : app::StartOutcome::Settings);
    QCOMPARE(splash.calls, search ? untilSettings : untilSettings + QStringList{u"show settings"_s});
    QCOMPARE(test.sy.PixelX, 640);
    QCOMPARE(test.sy.PrgVersion, u"1.9.8"_s);
    QVERIFY(QDir(test.storage + u"/Backup"_s).exists());
}

void tst_Start::reminderOfAnUnclosedSession()
{
    TestContext test;
    FakeSplash splash;
    test.platform.storagePath = test.storage;
    app::put(test.settings, app::keys::LastUnclosedObexDevice, u"SL450"_s);
    app::runStartSequence(test.context, splash, {}); // goes to the settings: not yet
    QCOMPARE(app::get(test.settings, app::keys::LastUnclosedObexDevice), u"SL450"_s);

    app::put(test.settings, app::keys::Version, u"1.9.8"_s);
    test.dialogs.expect(exclamation(u"SL450 wurde beim letzten Betrieb nicht vollständig beendent.\nWenn Sie "
                                    u"das gleiche Telefon wieder angeschlossen "
                                    u"haben, ziehen Sie es bitte JETZT für fünf Sekunde vom Datenkabel ab, "
                                    u"stecken es wieder an und klicken erst dann "
                                    u"auf OK.\nMit dieser Prozedur stellen Sie sicher, daß das Telefon "
                                    u"wieder gefunden wird. Sollte das Telefon "
                                    u"trotzdem nicht gefunden werden, schalten Sie es bitte einmal aus und "
                                    u"wieder ein und starten dann Kalmo "
                                    u"erneut."_s));
    QCOMPARE(app::runStartSequence(test.context, splash, {}), app::StartOutcome::Search);
    QCOMPARE(app::get(test.settings, app::keys::LastUnclosedObexDevice), app::noValue());
    QCOMPARE(app::runStartSequence(test.context, splash, {}), app::StartOutcome::Search);
}

void tst_Start::scratchFilesGo()
{
    TestContext test;
    FakeSplash splash;
    test.platform.storagePath = test.storage;
    const QString scratch = test.makeFile(u"storage/config/temp/sox.bat"_s, "x");
    app::runStartSequence(test.context, splash, {});
    QVERIFY(!QFile::exists(scratch));
}

QTEST_GUILESS_MAIN(tst_Start)
#include "tst_Start.moc"
