// The command line, and the form of the settings: what it shows, saves and moves.

#include "app/SettingsKeys.h"
#include "app/StoragePaths.h"
#include "support/TestProgram.h"
#include "ui/CommandLine.h"
#include "ui/forms/frmEinstellungen.h"
#include "ui/TestProgram.h"

class tst_Settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheCommandLine()
    {
        // The options' values, the rest, and what is wrong.
        const QList<std::pair<QString, QString>> rows = {
            {{}, u"||||"_s},
            {u"--storage /s --port=3 --log /l /dbg /DELINI"_s, u"/s|3|/l|/dbg /DELINI|"_s},
            {u"/DBG /home/a/Backup.TEL"_s, u"|||/DBG|"_s},
            {u"--port 1 --port 2"_s, u"|2|||"_s},
            {u"--port"_s, u"||||option \"--port\" needs a value"_s},
            {u"--prot=3"_s, u"||||there is no option \"--prot\""_s},
        };
        for (const auto& [words, expected] : rows) {
            const ui::CommandLine read = ui::parseCommandLine(words.split(u' ', Qt::SkipEmptyParts));
            QCOMPARE((QStringList{read.storage, read.port, read.log, read.rest, read.error}.join(u'|')),
                     expected);
            QCOMPARE(read.kind == ui::CommandLine::Kind::Run, read.error.isEmpty());
        }
        for (const QString& file : {u"/home/a/Backup.TEL"_s, u"a.prv"_s, u"b.csv"_s, u"c.WAB"_s, u"d.vcf"_s})
            QCOMPARE(ui::parseCommandLine({u"/DBG"_s, file}).file, file);
        QCOMPARE(ui::parseCommandLine({u"notes.txt"_s}).file, QString());
        QCOMPARE(ui::parseCommandLine({u"/DBG"_s, u"--help"_s, u"--no"_s}).kind, ui::CommandLine::Kind::Help);
    }

    void usesAGivenStorageAndNeverOffersToResetIt()
    {
        TestContext test;
        test.sy.OsClass = 6;
        test.platform.storagePath = u"/elsewhere"_s;
        test.sy.StorageForThisRun = test.path(u"given"_s);
        QVERIFY(app::GetMyPaths(test.context));
        QCOMPARE(test.sy.Paths.Storage, test.path(u"given"_s));

        // It can't be made, and what is set stays set.
        test.sy.StorageForThisRun = test.makeFile(u"file"_s, "x") + u"/below"_s;
        QVERIFY(!app::GetMyPaths(test.context));
        QCOMPARE(test.platform.storagePath, u"/elsewhere"_s);
        QCOMPARE(test.verdict.take().size(), 1); // a question to try again, and no other
    }

    void savesEverySetting()
    {
        TestProgram given(u"WOODSTOCK"_s);
        app::put(given.test.settings, app::keys::ComPortNew, 12);
        app::put(given.test.settings, app::keys::UseUtf8Contacts, 1);
        given.test.sy.ComNoForThisRun = 7;
        ui::frmEinstellungen form(given.program);
        form.present({});
        auto& ports = child<QComboBox>(form, "cmbCom");
        QCOMPARE(ports.currentText(), u"COM 12"_s);
        const auto checks = [&] {
            QString states;
            for (const char* name :
                 {"chkAutoBackup", "chkSwWarnung", "chkShowSuccessPopup", "chkUTF8contcats"})
                states += child<QCheckBox>(form, name).isChecked() ? u'1' : u'0';
            return states;
        };
        QCOMPARE(checks(), u"1101"_s);

        const QSignalSpy saved(&form, &ui::frmEinstellungen::saved);
        form.setLeaveQuestion([&](bool) { // closing the data channel yields, and the user presses again
            click(form, "cmdOK");
            form.close();
            return form.isVisible();
        });
        click(form, "chkAutoBackup");
        ports.setCurrentText(u"COM 1"_s);
        click(form, "cmdOK");
        QCOMPARE(saved.size(), 1);
        QCOMPARE(saved.first().first().toBool(), true);
        QCOMPARE(app::getInt(given.test.settings, app::keys::ComPortNew), 1);
        QCOMPARE(app::get(given.test.settings, app::keys::Version), u"1.9.8"_s);
        QCOMPARE(given.test.sy.ComNoForThisRun, 0); // the user has chosen another one
        QVERIFY(!given.port.IsOpen() && !form.isVisible());
        form.ReadSettingsToForm();
        QCOMPARE(checks(), u"0101"_s);
    }

    /// A phone may be at a port of this run that is not that of the settings.
    void saysIfThePortChanges()
    {
        TestProgram given(u"WOODSTOCK"_s);
        app::put(given.test.settings, app::keys::ComPortNew, 1);
        given.test.sy.ComNoForThisRun = 7;
        ui::frmEinstellungen form(given.program);
        form.present({});
        const QSignalSpy saved(&form, &ui::frmEinstellungen::saved);
        click(form, "cmdOK");
        QCOMPARE(given.test.sy.ComNoForThisRun, 7);
        form.usePort(1);
        QCOMPARE(given.test.sy.ComNoForThisRun, 0);
        form.usePort(1);
        QCOMPARE(saved, (QList<QVariantList>{{false}, {true}, {false}}));
    }

    void movesTheStorageWithItsSettings()
    {
        TestProgram given(u"WOODSTOCK"_s);
        TestContext& test = given.test;
        test.settings.PutIniText(u"Ports"_s, u"COM3"_s, u"/dev/cable"_s);
        ui::frmEinstellungen form(given.program);
        const QSignalSpy saved(&form, &ui::frmEinstellungen::saved);
        const auto moveTo = [&](const QString& folder, const QString& told) {
            form.present({.hasWayBack = true});
            child<QComboBox>(form, "cmbCom").setCurrentText(u"COM 1"_s);
            click(form, "chkAutoBackup");
            test.dialogs.expectPickFolder(u"Wählen Sie einen Ordner aus"_s, test.storage, folder);
            if (!told.isEmpty())
                test.dialogs.expectStart(told);
            click(form, "cmdSpeicherpfad");
            click(form, "cmdOK");
        };
        moveTo(test.path(u"new"_s), {});
        QCOMPARE(test.platform.storagePath, test.path(u"new"_s));
        QCOMPARE(test.settings.GetIniText(u"Ports"_s, u"COM3"_s, app::iniPath(test.path(u"new"_s))),
                 u"/dev/cable"_s);
        QCOMPARE(saved.size(), 1);

        // Of settings that can't be saved with their folder, none is.
        app::put(test.settings, app::keys::ComPortNew, 12);
        const QByteArray before = TestContext::contentOf(app::iniPath(test.storage));
        test.platform.storagePathResult = 5;
        const Rows<QString, QString> rows{
            {"not stored", test.path(u"other"_s), u"Der Speicherpfad konnte nicht geändert werden."_s},
            {"too short", u"/d"_s, u"Der Pfad \"/d\" ist zu kurz."_s},
            {"no folder", test.makeFile(u"file"_s, "x") + u"/below"_s, u"Der Pfad "_s},
        };
        rows.each([&](const auto& folder, const auto& told) {
            moveTo(folder, told);
            QCOMPARE(saved.size(), 1);
            QVERIFY(form.isVisible() && !QFile::exists(app::iniPath(folder)));
            QCOMPARE(TestContext::contentOf(app::iniPath(test.storage)), before);
        });
    }
};

KALMO_TEST(tst_Settings)
#include "tst_Settings.moc"
