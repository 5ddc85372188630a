// The way from the command line through splash and settings to the main window.

#include "app/SettingsKeys.h"
#include "app/StoragePaths.h"
#include "phonedata/BackupFiles.h"
#include "ui/CommandLine.h"
#include "ui/forms/frmEinstellungen.h"
#include "ui/forms/frmStart.h"
#include "ui/forms/frmWelcome.h"
#include "ui/icons/Icons.h"
#include "ui/lists/RowsView.h"
#include "ui/StartFlow.h"
#include "ui/TestProgram.h"
#include "ui/window/ClassicWords.h"
#include "ui/window/frmPB.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

/// The form that is on screen, null if there is none of the kind.
template <typename Form>
Form* shown()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* form = qobject_cast<Form*>(widget); form && form->isVisible())
            return form;
    }
    return nullptr;
}

/// A run of the program, with a handset at the only port.
struct Run : TestProgram
{
    Run() : TestProgram(u"WOODSTOCK"_s, {.cgmm = u"OTHER"_s, .family = 1}), flow(program, {})
    {
        test.clock.runToolkitEvents(true);
        test.sy.StorageForThisRun = test.storage;
        test.settings.PutIniNumber(u"Alias"_s, u"OTHER"_s, 1);
        port.Close();
        test.sy.PhoneType = 0;
    }
    template <typename Form>
    Form* waitFor()
    {
        for (int round = 0; round < 1000 && !shown<Form>(); ++round)
            QCoreApplication::processEvents();
        return shown<Form>();
    }

    ui::StartFlow flow;
};

} // namespace

class tst_Start : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheCommandLine();
    void usesAGivenStorageAndNeverOffersToResetIt();
    void goesFromTheFirstStartToTheMainWindowAndBack();
    void keepsTheMainWindowForTheSamePhoneOnly();
    void losesNoListThatWaitsToBeWritten();
    void newcomerFindsThePhone();
    void stopsTheSearchByKey();
    void savesEverySetting();
    void movesTheStorageWithItsSettings();
};

void tst_Start::readsTheCommandLine()
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

void tst_Start::usesAGivenStorageAndNeverOffersToResetIt()
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

void tst_Start::goesFromTheFirstStartToTheMainWindowAndBack()
{
    Run run;
    run.flow.begin();
    QVERIFY(shown<ui::frmStart>());
    QVERIFY(!kalmo::ui::programIcon().isNull()); // in the splash
    auto* settings = run.waitFor<ui::frmEinstellungen>();
    QVERIFY(settings && !shown<ui::frmStart>());
    QTest::keyClick(settings, Qt::Key_Escape);
    QVERIFY(settings->isVisible()); // there is no way back yet

    child<QPushButton>(*settings, "cmdOK").click();
    auto* window = run.waitFor<ui::frmPB>();
    QVERIFY(window && !shown<ui::frmEinstellungen>() && !shown<ui::frmStart>());
    QCOMPARE(run.test.sy.PhoneType, 1);

    window->goTo(u"SETUP"_s);
    QVERIFY(shown<ui::frmEinstellungen>() && !window->isVisible());
    child<QCheckBox>(*settings, "chkAutoBackup").click();
    settings->close();
    QVERIFY(child<QCheckBox>(*settings, "chkAutoBackup").isChecked()); // nothing was kept
    QVERIFY(window->isVisible() && !shown<ui::frmEinstellungen>());
}

void tst_Start::keepsTheMainWindowForTheSamePhoneOnly()
{
    Run run;
    app::put(run.test.settings, app::keys::Version, u"1.9.8"_s);
    run.flow.begin();
    QPointer<ui::frmPB> window = run.waitFor<ui::frmPB>();
    QVERIFY(window);
    run.memory.TbDirty = true;
    run.memory.phonebook.becomes({}, phonedata::Certainty::Known);
    run.memory.providers.becomes({}, phonedata::Certainty::Known);
    const auto searchAgain = [&] {
        Q_EMIT window->settingsRequested();
        child<QPushButton>(*shown<ui::frmEinstellungen>(), "cmdOK").click();
        return run.waitFor<ui::frmPB>();
    };
    window->goTo(u"DIV"_s);
    auto& model = child<QLabel>(*window, "lblTyp");
    const QString name = model.text();
    QString whileSearching;
    run.test.clock.after(1, [&] { whileSearching = model.text(); });
    QCOMPARE(searchAgain(), window.data());
    QCoreApplication::processEvents();
    QCOMPARE(whileSearching + model.text(), u"–"_s + name); // read again
    QVERIFY(run.memory.TbDirty);                            // what is on screen still waits to be written
    // It may be another handset of the same kind.
    QCOMPARE(run.memory.phonebook.certainty, phonedata::Certainty::Unknown);
    QCOMPARE(run.memory.providers.certainty, phonedata::Certainty::Unknown);

    run.test.settings.PutIniNumber(u"Alias"_s, u"OTHER"_s, 7);
    QVERIFY(searchAgain());
    QVERIFY(!window && !run.memory.TbDirty);
}

void tst_Start::losesNoListThatWaitsToBeWritten()
{
    Run run;
    app::put(run.test.settings, app::keys::Version, u"1.9.8"_s);
    run.flow.begin();
    auto* window = run.waitFor<ui::frmPB>();
    window->goTo(u"TB"_s);
    run.memory.TbDirty = true;
    Q_EMIT window->settingsRequested();
    auto* settings = shown<ui::frmEinstellungen>();
    auto& ports = child<QComboBox>(*settings, "cmbCom");
    const int port = app::getInt(run.test.settings, app::keys::ComPortNew);
    ports.setCurrentIndex(ports.currentIndex() == 0 ? 1 : 0);
    run.test.dialogs.expect({.text = kalmo::ui::unsavedChangesText(phonedata::Store::Phonebook),
                             .buttons = toolkit::Buttons::YesNo,
                             .icon = toolkit::Icon::Question,
                             .defaultButton = toolkit::Answer::No},
                            toolkit::Answer::No);
    child<QPushButton>(*settings, "cmdOK").click();
    QVERIFY(settings->isVisible() && run.port.IsOpen());
    QCOMPARE(app::getInt(run.test.settings, app::keys::ComPortNew), port);

    // The program may end anywhere in the search.
    const QString file =
        phonedata::backupPath(run.test.context, u"Nicht geschriebene Liste vom "_s, u".tel"_s);
    run.test.dialogs.expect(
        {.text = u"Änderungen, die noch nicht ins Telefon geschrieben sind, sind gesichert in:\n"_s + file,
         .icon = toolkit::Icon::Information});
    QVERIFY_THROWS_EXCEPTION(ProgramEnded, run.test.ending.EndProgram());
    QCOMPARE(TestContext::contentOf(file).count("\r\n"),
             static_cast<qsizetype>(child<ui::RowsView>(*window, "lvwTB").rows()->count()));
}

/// At the first start every port is looked at, and the phone that was found is connected by one click.
void tst_Start::newcomerFindsThePhone()
{
    struct OneDevice : link::DeviceList
    {
        QList<link::SerialDevice> devices() override
        {
            return {{u"/dev/ttyUSB7"_s, {}, u"Datenkabel"_s, {}, {}}};
        }
    } oneDevice;
    Run run;
    link::PortTable ports{run.test.settings, oneDevice};
    ui::Program program{run.test.context, run.line, run.desktop, ports, run.memory};
    ui::StartFlow flow(program, {});
    flow.begin();
    auto* welcome = run.waitFor<ui::frmWelcome>();
    QVERIFY(welcome);
    auto& connectButton = child<QPushButton>(*welcome, "cmdConnect");
    QVERIFY(!connectButton.isEnabled());
    QTest::keyClick(&child<QPushButton>(*welcome, "cmdSearch"), Qt::Key_Space);
    const auto& found = child<QTreeWidget>(*welcome, "lvwFound");
    QCOMPARE(found.topLevelItemCount(), 1);
    QCOMPARE(found.topLevelItem(0)->text(1), u"Datenkabel"_s);
    QCOMPARE(found.topLevelItem(0)->text(2), u"OTHER"_s);
    QVERIFY(!run.port.IsOpen());
    QTest::mouseClick(&connectButton, Qt::LeftButton);
    QVERIFY(run.waitFor<ui::frmPB>() && !shown<ui::frmWelcome>() && !shown<ui::frmEinstellungen>());
    QCOMPARE(app::getInt(run.test.settings, app::keys::ComPortNew),
             found.topLevelItem(0)->data(0, Qt::UserRole).toInt());
}

void tst_Start::stopsTheSearchByKey()
{
    TestProgram given(u"WOODSTOCK"_s, {.faults = {.silentAfter = 1, .commands = 1}});
    ui::frmStart splash;
    splash.present();
    given.test.clock.runToolkitEvents(true);
    given.test.clock.after(1, [&] { QTest::keyClick(splash.windowHandle(), Qt::Key_Escape); });
    link::PhoneSearch search(given.line, splash, given.desktop);
    QCOMPARE(search.runPass(), link::PassResult::NobodyAnswered);
    QVERIFY(given.test.clock.elapsed() < 3); // and not all rates
    QVERIFY(!child<QPushButton>(splash, "lblEsc").isEnabled());
}

void tst_Start::savesEverySetting()
{
    TestProgram given(u"WOODSTOCK"_s);
    app::put(given.test.settings, app::keys::ComPortNew, 12);
    app::put(given.test.settings, app::keys::UseUtf8Contacts, 1);
    given.test.sy.ComNoForThisRun = 7;
    ui::frmEinstellungen form(given.program);
    form.present(false);
    auto& ports = child<QComboBox>(form, "cmbCom");
    QCOMPARE(ports.currentText(), u"COM 12"_s);
    const auto checks = [&] {
        QString states;
        for (const char* name : {"chkAutoBackup", "chkSwWarnung", "chkShowSuccessPopup", "chkUTF8contcats"})
            states += child<QCheckBox>(form, name).isChecked() ? u'1' : u'0';
        return states;
    };
    QCOMPARE(checks(), u"1101"_s);

    const QSignalSpy saved(&form, &ui::frmEinstellungen::saved);
    form.setLeaveQuestion([&](bool) { // closing the data channel yields, and the user presses again
        child<QPushButton>(form, "cmdOK").click();
        form.close();
        return form.isVisible();
    });
    child<QCheckBox>(form, "chkAutoBackup").click();
    ports.setCurrentText(u"COM 1"_s);
    child<QPushButton>(form, "cmdOK").click();
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.first().first().toBool(), true);
    QCOMPARE(app::getInt(given.test.settings, app::keys::ComPortNew), 1);
    QCOMPARE(app::get(given.test.settings, app::keys::Version), u"1.9.8"_s);
    QCOMPARE(given.test.sy.ComNoForThisRun, 0); // the user has chosen another one
    QVERIFY(!given.port.IsOpen() && !form.isVisible());
    form.ReadSettingsToForm();
    QCOMPARE(checks(), u"0101"_s);
}

void tst_Start::movesTheStorageWithItsSettings()
{
    TestProgram given(u"WOODSTOCK"_s);
    TestContext& test = given.test;
    test.settings.PutIniText(u"Ports"_s, u"COM3"_s, u"/dev/cable"_s);
    ui::frmEinstellungen form(given.program);
    const QSignalSpy saved(&form, &ui::frmEinstellungen::saved);
    const auto moveTo = [&](const QString& folder) {
        form.present(true);
        test.dialogs.expectPickFolder(u"Wählen Sie einen Ordner aus"_s, test.storage, folder);
        if (test.platform.storagePathResult != 0)
            test.dialogs.expect({.text = u"Der Speicherpfad konnte nicht geändert werden."_s,
                                 .icon = toolkit::Icon::Exclamation});
        child<QPushButton>(form, "cmdSpeicherpfad").click();
        child<QPushButton>(form, "cmdOK").click();
    };
    moveTo(test.path(u"new"_s));
    QCOMPARE(test.platform.storagePath, test.path(u"new"_s));
    QCOMPARE(test.settings.GetIniText(u"Ports"_s, u"COM3"_s, app::iniPath(test.path(u"new"_s))),
             u"/dev/cable"_s);
    QCOMPARE(saved.size(), 1);
    test.platform.storagePathResult = 5;
    moveTo(test.path(u"other"_s));
    QCOMPARE(saved.size(), 1);
    QVERIFY(form.isVisible());
}

QTEST_MAIN(tst_Start)
#include "tst_Start.moc"
