// The way from the start through splash and settings to the main window.

#include "app/mdlTexts.h"
#include "app/SettingsKeys.h"
#include "phonedata/BackupFiles.h"
#include "support/SeedFile.h"
#include "support/TestProgram.h"
#include "ui/forms/frmEinstellungen.h"
#include "ui/forms/frmStart.h"
#include "ui/forms/frmWelcome.h"
#include "ui/icons/Icons.h"
#include "ui/lists/RowsView.h"
#include "ui/StartFlow.h"
#include "ui/TestProgram.h"
#include "ui/window/frmPB.h"

namespace {

template <typename Form>
Form* waitFor()
{
    for (int round = 0; round < 1000 && !shown<Form>(); ++round)
        QCoreApplication::processEvents();
    return shown<Form>();
}

/// A run of the program, with a handset at the only port.
struct Run : TestProgram
{
    explicit Run(const QString& model = u"WOODSTOCK"_s,
                 const handset::Options& options = {.cgmm = u"OTHER"_s, .family = 1})
        : TestProgram(model, options), flow(program, {})
    {
        test.clock.runToolkitEvents(true);
        test.sy.StorageForThisRun = test.storage;
        test.settings.PutIniNumber(u"Alias"_s, u"OTHER"_s, 1);
        port.Close();
        test.sy.PhoneType = 0;
    }
    /// Begins as a program that is not new here, and returns its main window.
    ui::frmPB* begin()
    {
        app::put(test.settings, app::keys::Version, u"1.9.8"_s);
        flow.begin();
        return waitFor<ui::frmPB>();
    }
    void expectNobodyFound()
    {
        expectQuestion(u"An COM"_s, Answer::No);
        expectQuestion(app::ResText(app::TextChangeInterface), Answer::Yes);
    }

    ui::StartFlow flow;
};

/// Starts the demo. A program that only runs stands for its handset: the test's port has one of its own.
ui::frmPB* startDemo(Run& run)
{
    const QString program = run.test.makeFile(u"kalmo-handset"_s, "#!/bin/sh\n"
                                                                  "echo $$ > \"$0.pid\"\n"
                                                                  "echo ready\n"
                                                                  "exec tail -f /dev/null\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    const auto* welcome = waitFor<ui::frmWelcome>();
    run.test.sy.Paths.Exe = QFileInfo(program).path();
    click(*welcome, "cmdDemo");
    return waitFor<ui::frmPB>();
}

bool isDemoRunning(const Run& run)
{
    const QByteArray number = TestContext::contentOf(run.test.path(u"kalmo-handset.pid"_s)).trimmed();
    return !number.isEmpty() && QFileInfo::exists(u"/proc/"_s + QString::fromLatin1(number));
}

void checkOwnPhone(const Run& run)
{
    QVERIFY(!shown<ui::frmEinstellungen>() && !isDemoRunning(run));
    QVERIFY(!textOf(*shown<ui::frmPB>(), "lblConnection").contains(u"nachgebildet"_s));
    QCOMPARE(run.test.sy.ComNo, app::getInt(run.test.settings, app::keys::ComPortNew));
}

} // namespace

class tst_Start : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesFromTheFirstStartToTheMainWindowAndBack()
    {
        Run run;
        run.flow.begin();
        QVERIFY(shown<ui::frmStart>());
        QVERIFY(!kalmo::ui::programIcon().isNull()); // in the splash
        auto* settings = waitFor<ui::frmEinstellungen>();
        QVERIFY(settings && !shown<ui::frmStart>());
        QTest::keyClick(settings, Qt::Key_Escape);
        QVERIFY(settings->isVisible()); // there is no way back yet

        click(*settings, "cmdOK");
        auto* window = waitFor<ui::frmPB>();
        QVERIFY(window && !shown<ui::frmEinstellungen>() && !shown<ui::frmStart>());
        QCOMPARE(run.test.sy.PhoneType, 1);

        window->goTo(u"SETUP"_s);
        QVERIFY(shown<ui::frmEinstellungen>() && !window->isVisible());
        click(*settings, "chkAutoBackup");
        const auto discards =
            question(u"Ihre Änderungen sind noch nicht gespeichert.\n\nSollen sie verworfen werden?"_s,
                     settings->windowTitle());
        run.test.dialogs.expect(discards, Answer::No);
        QTest::keyClick(settings, Qt::Key_Escape);
        QVERIFY(settings->isVisible());
        run.test.dialogs.expect(discards, Answer::Yes);
        settings->close();
        QVERIFY(child<QCheckBox>(*settings, "chkAutoBackup").isChecked()); // nothing was kept
        QVERIFY(window->isVisible() && !shown<ui::frmEinstellungen>());
    }

    /// An import reads the list ahead, and needs the melodies' names for it.
    void opensAFileAfterTheMelodies()
    {
        const QString memory = seedFile(R"({"phonebook":[{"name":"A","number":"1","vipSound":"33"}]})");
        Run run(u"PICASSO"_s, {.seed = memory});
        run.flow.openFile(run.test.makeFile(u"a.csv"_s, "Name;Nummer\nNeu;0521\n"));
        QStringList seen;
        const DialogUser user([&](QDialog& form) {
            seen.append(form.objectName());
            form.reject();
        });
        const auto* window = run.begin();
        QTRY_COMPARE(seen, QStringList(u"frmImportPb"_s));
        QCOMPARE(child<ui::RowsView>(*window, "lvwTB").rows()->count(), 1);
    }

    void keepsTheMainWindowForTheSamePhoneOnly()
    {
        Run run;
        QPointer<ui::frmPB> window = run.begin();
        QVERIFY(window);
        run.memory.TbDirty = true;
        run.memory.phonebook.becomes({}, phonedata::Certainty::Known);
        run.memory.providers.becomes({}, phonedata::Certainty::Known);
        const auto searchAgain = [&] {
            Q_EMIT window->settingsRequested();
            click(*shown<ui::frmEinstellungen>(), "cmdOK");
            return waitFor<ui::frmPB>();
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
        run.test.startLog();
        run.test.log.WriteDebugLog(u"Tx"_s, u"before the search"_s);
        QVERIFY(searchAgain());
        QCOMPARE(run.test.logged().value(0), u"Tx: before the search"_s);
        QVERIFY(!window && !run.memory.TbDirty);
    }

    void losesNoListThatWaitsToBeWritten()
    {
        Run run;
        const QPointer<ui::frmPB> window = run.begin();
        window->goTo(u"TB"_s);

        // A search that finds nothing leads back to the window.
        run.port.handset().setFaults({.silentAfter = 1, .commands = 1});
        run.test.dialogs.expectStart(u"Es ist ein Übertragungsfehler aufgetreten."_s);
        window->goTo(u"DIV"_s);
        run.memory.TbDirty = true;
        run.expectNobodyFound();
        click(*window, "cmdReconnect");
        auto* settings = waitFor<ui::frmEinstellungen>();
        QVERIFY(settings && !window->isVisible());
        click(*settings, "lblWelcome");
        auto* welcome = waitFor<ui::frmWelcome>();
        QVERIFY(welcome);
        QTest::keyClick(welcome, Qt::Key_Escape);
        QTest::keyClick(settings, Qt::Key_Escape);
        QVERIFY(window->isVisible() && run.memory.TbDirty && run.test.sy.PhoneType == 1);
        QVERIFY(child<ui::RowsView>(*window, "lvwTB").rows()->count() > 0);

        // The program may end anywhere in the search.
        const QString file =
            phonedata::backupPath(run.test.context, u"Nicht geschriebene Liste vom "_s, u".tel"_s);
        run.test.dialogs.expect(
            Icon::Information,
            u"Änderungen, die noch nicht ins Telefon geschrieben sind, sind gesichert in:\n"_s + file);
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, run.test.ending.EndProgram());
        QCOMPARE(TestContext::contentOf(file).count("\r\n"),
                 static_cast<qsizetype>(child<ui::RowsView>(*window, "lvwTB").rows()->count()));

        // Another port is a way out of the window too.
        run.port.handset().setFaults({});
        Q_EMIT window->settingsRequested();
        auto& ports = child<QComboBox>(*settings, "cmbCom");
        ports.setCurrentIndex(ports.currentIndex() == 0 ? 1 : 0);
        run.test.dialogs.expectStart(
            u"Änderungen, die noch nicht ins Telefon geschrieben sind, sind gesichert in:"_s);
        click(*settings, "cmdOK");
        QVERIFY(!window);
        QVERIFY(waitFor<ui::frmPB>());
    }

    /// At the first start every port is looked at, and the phone that was found is connected by one click.
    void newcomerFindsThePhone()
    {
        OneDevice oneDevice;
        Run run;
        link::PortTable ports{run.test.settings, oneDevice};
        ui::Program program{run.test.context, run.line, run.desktop, ports, run.memory};
        ui::StartFlow flow(program, {});
        flow.begin();
        auto* welcome = waitFor<ui::frmWelcome>();
        QVERIFY(welcome);
        auto& connectButton = child<QPushButton>(*welcome, "cmdConnect");
        QVERIFY(!connectButton.isEnabled());
        click(*welcome, "cmdSearch");
        QCOMPARE(textOf(*welcome, "lblStatus"), u"Die Suche ist beendet: 1 Telefon gefunden."_s);
        const auto& found = child<QTreeWidget>(*welcome, "lvwFound");
        QCOMPARE(found.topLevelItemCount(), 1);
        QCOMPARE(found.topLevelItem(0)->text(1) + found.topLevelItem(0)->text(2), u"DatenkabelOTHER"_s);
        connectButton.setEnabled(false); // as on a row without a phone
        auto& list = child<QTreeWidget>(*welcome, "lvwFound");
        list.setFocus();
        const double searchedAt = run.test.clock.elapsed();
        QTest::keyClick(&list, Qt::Key_Return); // does not search again
        QCOMPARE(run.test.clock.elapsed(), searchedAt);
        connectButton.setEnabled(true);
        QVERIFY(!run.port.IsOpen());
        QTest::mouseClick(&connectButton, Qt::LeftButton);
        auto* window = waitFor<ui::frmPB>();
        QVERIFY(window && !shown<ui::frmWelcome>() && !shown<ui::frmEinstellungen>());
        const int number = found.topLevelItem(0)->data(0, Qt::UserRole).toInt();
        QCOMPARE(app::getInt(run.test.settings, app::keys::ComPortNew), number);

        // Later, a search of all ports that is not followed up leaves the phone connected as before.
        const auto connection = [&run] {
            return u"%1 %2 %3"_s.arg(run.test.sy.ComNo).arg(run.test.sy.ComSettings).arg(run.port.IsOpen());
        };
        const QString before = connection();
        QVERIFY(before.endsWith(u" 1"_s));
        window->goTo(u"DIV"_s);
        oneDevice.path = u"/dev/ttyUSB8"_s; // the phone's port number is not the last one that is looked at
        window->goTo(u"SETUP"_s);
        auto* settings = shown<ui::frmEinstellungen>();
        click(*settings, "lblWelcome");
        welcome = waitFor<ui::frmWelcome>();
        click(*welcome, "cmdSearch");
        QVERIFY(child<QTreeWidget>(*welcome, "lvwFound").topLevelItem(0)->data(0, Qt::UserRole) != number);
        QCOMPARE(textOf(*window, "lblTyp"), u"–"_s); // of the phone before the search
        QTest::keyClick(welcome, Qt::Key_Escape);
        QTest::keyClick(settings, Qt::Key_Escape);
        QCOMPARE(waitFor<ui::frmPB>(), window);
        QCOMPARE(connection(), before);
    }

    /// The search of all ports takes back a phone that the last run left.
    void findsAPhoneInItsDataMode()
    {
        OneDevice oneDevice;
        TestProgram left(u"S68H"_s);
        left.test.clock.runToolkitEvents(true);
        left.test.sy.StorageForThisRun = left.test.storage;
        link::PortTable ports{left.test.settings, oneDevice};
        left.test.sy.ComNo = ports.numbers().first();
        left.test.sy.PhoneID = u"S68H"_s;
        app::put(left.test.settings, app::keys::PrefDetectBaud, left.port.BaudRate());
        QVERIFY(std::make_shared<obex::clsMmc>(left.line)->Online({}));
        left.port.Close();
        ui::Program program{left.context, left.line, left.desktop, ports, left.memory};
        ui::StartFlow flow(program, {});
        flow.begin();
        const auto* welcome = waitFor<ui::frmWelcome>();
        QVERIFY(welcome && left.port.handset().isInDataMode());
        click(*welcome, "cmdSearch");
        QVERIFY(child<QPushButton>(*welcome, "cmdConnect").isEnabled());
        QVERIFY(!left.port.handset().isInDataMode());
    }

    void demoIsConnectedAgain()
    {
        Run run;
        app::put(run.test.settings, app::keys::LastUnclosedObexDevice, u"SL450"_s);
        run.flow.begin();
        auto* window = startDemo(run);
        QVERIFY(window && textOf(*window, "lblConnection").contains(u" (nachgebildet) · "_s));
        run.port.Close();
        run.test.dialogs.expectStart(u"Es ist ein Übertragungsfehler aufgetreten."_s);
        window->goTo(u"DIV"_s);
        click(*window, "cmdReconnect");
        QVERIFY(!window->isVisible());
        QCOMPARE(waitFor<ui::frmPB>(), window);
        QVERIFY(!shown<ui::frmEinstellungen>() && !shown<ui::frmWelcome>());
        QCOMPARE(app::get(run.test.settings, app::keys::LastUnclosedObexDevice),
                 u"SL450"_s); // the own phone's
        QVERIFY(isDemoRunning(run));
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, run.test.ending.EndProgram());
        QVERIFY(!isDemoRunning(run));
    }

    /// The lists of one phone must not reach the other, which is of the same kind.
    void leavesTheOwnPhoneForTheDemo()
    {
        Run run;
        QPointer<ui::frmPB> own = run.begin();
        own->goTo(u"TB"_s);
        own->goTo(u"SETUP"_s);
        run.memory.TbDirty = true;
        click(*shown<ui::frmEinstellungen>(), "lblWelcome");
        run.test.dialogs.expectStart(
            u"Änderungen, die noch nicht ins Telefon geschrieben sind, sind gesichert in:"_s);
        auto* window = startDemo(run);
        QVERIFY(window && !own && !run.memory.TbDirty);
        QCOMPARE(child<ui::RowsView>(*window, "lvwTB").rows()->count(), 0);
    }

    void leavesTheDemoForTheOwnPhone()
    {
        for (const bool choosesPort : {false, true}) {
            Run run;
            run.flow.begin();
            QPointer<ui::frmPB> window = startDemo(run);
            window->goTo(u"SETUP"_s);
            const auto* settings = shown<ui::frmEinstellungen>();
            QVERIFY(textOf(*settings, "lblPortHinweis").startsWith(u"Sie nutzen das nachgebildete"_s));
            auto& ports = child<QComboBox>(*settings, "cmbCom");
            if (choosesPort)
                ports.setCurrentIndex(ports.currentIndex() == 0 ? 1 : 0);
            click(*settings, "cmdOK");
            QVERIFY(!window && waitFor<ui::frmPB>());
            checkOwnPhone(run);
        }
    }

    /// The demo is not found, and the way leads back to the phone.
    void neverShowsTheOwnPhoneAsTheDemo()
    {
        Run run;
        auto* window = run.begin();
        window->goTo(u"SETUP"_s);
        auto* settings = shown<ui::frmEinstellungen>();
        click(*settings, "lblWelcome");
        run.port.handset().setFaults({.silentAfter = 1, .commands = 1});
        run.expectNobodyFound();
        QVERIFY(!startDemo(run));
        run.port.handset().setFaults({});
        QTest::keyClick(settings, Qt::Key_Escape);
        click(*window, "cmdReconnect");
        QVERIFY(waitFor<ui::frmPB>());
        checkOwnPhone(run);
    }

    void stopsTheSearchByKey()
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

    void stopsWhileAPhoneIsTakenBack()
    {
        Run run;
        run.port.handset().setFaults({.silentAfter = 1, .commands = 1});
        app::put(run.test.settings, app::keys::Version, u"1.9.8"_s);
        app::put(run.test.settings, app::keys::LastUnclosedObexDevice, u"SL450"_s);
        app::put(run.test.settings, app::keys::LastUnclosedObexDeviceCOM, u"1"_s);
        run.test.dialogs.expectStart(u"SL450 wurde beim letzten Betrieb nicht vollständig beendent."_s);
        run.expectNobodyFound();
        run.test.clock.after(1,
                             [] { QTest::keyClick(shown<ui::frmStart>()->windowHandle(), Qt::Key_Escape); });
        run.flow.begin();
        QVERIFY(waitFor<ui::frmEinstellungen>()); // and no search before it
        QVERIFY2(run.test.clock.elapsed() < 10, qPrintable(QString::number(run.test.clock.elapsed())));
        QCOMPARE(app::get(run.test.settings, app::keys::LastUnclosedObexDevice),
                 u"SL450"_s); // for the next run
    }
};

KALMO_TEST(tst_Start)
#include "tst_Start.moc"
