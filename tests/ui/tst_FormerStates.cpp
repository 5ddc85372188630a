// The dialog of former states: its rows, a comparison with the phone, and putting back, by keys.

#include "operations/ClassicLists.h"
#include "operations/FolderChanges.h"
#include "operations/PhoneSettings.h"
#include "support/HandsetMemory.h"
#include "support/ListLines.h"
#include "support/TestProgram.h"
#include "ui/forms/FormerStatesDialog.h"
#include "ui/OpenWindow.h"

using operations::RecordedList;

namespace {

void press(QDialog& dialog, const char* button)
{
    QTest::keyClick(&child<QPushButton>(dialog, button), Qt::Key_Space);
}

/// A handset in which a folder was made, by an operation that left its record, and the dialog.
struct ChangedPhone : TestProgram
{
    ChangedPhone() : TestProgram(u"SL450HX"_s, {.atOnce = true}), mmc(std::make_shared<obex::clsMmc>(line))
    {
        QDir(test.storage).mkpath(u"Backup"_s);
        test.clock.runToolkitEvents(true);
        test.sy.PhoneID = u"SL450HX"_s;
        operations::identifyPhone(line);
        empty = memoryOf(port.handset().phone());
        mmc->Online({});
        {
            operations::FileAccess access(mmc, u"test"_s, {});
            auto plan = operations::planNewFolder(obex::PhonePath(u"Neu"_s));
            operations::lookBeforeMaking(access, plan);
            operations::applyNewFolder(access, plan);
        }
        mmc->Offline({});
        changed = memoryOf(port.handset().phone());
    }

    QStringList held() { return memoryOf(port.handset().phone()); }
    ui::FormerStatesDialog& open(RecordedList current = RecordedList::Files)
    {
        dialog = std::make_unique<ui::FormerStatesDialog>(program, operations::UndoJob{line, memory, mmc},
                                                          current);
        dialog->show();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the dialog is not shown");
        return *dialog;
    }
    toolkit::Message question(const QString& difference) const
    {
        return tests::question(
            u"Der Stand vom 21.11.2026  12:00 (Dateien) wird zurückgeholt.\nUnterschiede zu jetzt: "
            u"%1.\n\nDer jetzige Stand wird vorher aufgehoben und kann ebenfalls zurückgeholt "
            u"werden.\nJetzt zurückholen?"_s.arg(difference));
    }

    std::shared_ptr<obex::clsMmc> mmc;
    std::unique_ptr<ui::FormerStatesDialog> dialog;
    QStringList empty;
    QStringList changed;
};

} // namespace

class tst_FormerStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStateIsComparedAndPutBack()
    {
        ChangedPhone made;
        QVERIFY(made.changed != made.empty);
        auto& dialog = made.open();
        auto& list = child<ui::RowsView>(dialog, "lvwFormerStates");
        auto& differences = child<ui::RowsView>(dialog, "lvwDifferences");
        QCOMPARE(linesOf(*list.rows()),
                 QStringList{u"21.11.2026  12:00|Dateien|Ordner angelegt|1|noch nicht verglichen"_s});
        QCOMPARE(list.rows()->selectedRows(), QList{0});

        QTest::keyClick(&list, Qt::Key_Return);
        QCOMPARE(linesOf(*list.rows()),
                 QStringList{u"21.11.2026  12:00|Dateien|Ordner angelegt|1|1 weniger"_s});
        QCOMPARE(linesOf(*differences.rows()), QStringList{u"wird entfernt|/Neu"_s});
        QCOMPARE(made.held(), made.changed);

        made.test.dialogs.expect(made.question(u"1 weniger"_s), Answer::No);
        press(dialog, "cmdPutBack");
        QCOMPARE(made.held(), made.changed);
        QVERIFY(dialog.changedLists().isEmpty());

        made.test.dialogs.expect(made.question(u"1 weniger"_s), Answer::Yes);
        press(dialog, "cmdPutBack");
        QCOMPARE(made.held(), made.empty);
        QCOMPARE(dialog.changedLists(), QSet{RecordedList::Files});
        QCOMPARE(linesOf(*list.rows()).first(),
                 u"21.11.2026  12:00|Dateien|Früherer Stand zurückgeholt|1|noch nicht verglichen"_s);

        made.test.dialogs.expect(made.question(u"1 neu"_s), Answer::Yes); // the undo is the newest now
        press(dialog, "cmdPutBack");
        QCOMPARE(made.held(), made.changed);

        QTest::keyClick(&list, Qt::Key_End);
        QTest::keyClick(&list, Qt::Key_Up); // the undo, which is the state already
        press(dialog, "cmdPutBack");
        QCOMPARE(textOf(dialog, "lblDifferences"), u"Das Telefon enthält diesen Stand bereits."_s);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
    }

    /// A list that was read in this run is compared without a request; only the order may differ.
    void knownDifferencesAreShownAtOnce()
    {
        TestProgram classic(u"GALICIA"_s, {.atOnce = true});
        QDir(classic.test.storage).mkpath(u"Backup"_s);
        classic.test.clock.runToolkitEvents(true);
        classic.test.sy.PhoneID = u"GALICIA"_s;
        const operations::ListJob job{
            .line = classic.line, .memory = classic.memory, .store = phonedata::Store::Providers};
        auto turned = operations::planReplace(job, {}, {}).held.entries;
        std::ranges::reverse(turned);
        operations::ListPlan plan = operations::planReplace(job, turned, {});
        QVERIFY(operations::applyPlan(job, plan, {}).outcome.isDone());
        const phonedata::RingtoneJob tones{classic.line, classic.memory, nullptr, nullptr};
        QVERIFY(
            operations::setRingtone(tones, phonedata::SoundEvent::Alarm, u"Melodie 7"_s, 6).outcome.isDone());

        const int requests = classic.port.handset().phone().faults.commands;
        ui::FormerStatesDialog dialog(classic.program, {classic.line, classic.memory, nullptr},
                                      RecordedList::Providers);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QStringList differences;
        for (const QString& line : linesOf(*child<ui::RowsView>(dialog, "lvwFormerStates").rows()))
            differences.append(line.section(u'|', 1, 1) + u": "_s + line.section(u'|', 4));
        QCOMPARE(differences, (QStringList{u"Klingeltöne: 1 geändert"_s, u"Provider: andere Reihenfolge"_s}));
        QCOMPARE(classic.port.handset().phone().faults.commands, requests);
        press(dialog, "cmdCompare");
        QCOMPARE(linesOf(*child<ui::RowsView>(dialog, "lvwDifferences").rows()),
                 QStringList{u"wird umsortiert|alle Einträge in der früheren Reihenfolge"_s});
    }

    /// While the question is open, a file comes into the folder that is to go.
    void aStateThatHasChangedMeanwhileStays()
    {
        ChangedPhone made;
        auto& dialog = made.open();
        made.test.dialogs.expect(made.question(u"1 weniger"_s), Answer::Yes);
        made.test.dialogs.whileShown([&made] {
            made.test.clock.WaitSeconds(121);
            QVERIFY(made.mmc->CdRoot() && made.mmc->Cd(u"Neu"_s, false));
            QVERIFY(made.mmc->PutBytes({.name = u"a.txt"_s, .bytes = "a", .modified = {}}, {}));
            made.changed = made.held();
        });
        made.test.dialogs.expect(
            Icon::Exclamation,
            u"Die Liste im Telefon hat sich seit dem Vergleich geändert. Bitte vergleichen Sie noch "
            u"einmal.\nDas Telefon enthält, was es vorher enthielt."_s);
        press(dialog, "cmdPutBack");
        QCOMPARE(made.held(), made.changed);
    }

    void aLostLineIsTold()
    {
        ChangedPhone made;
        auto& dialog = made.open(RecordedList::Phonebook);
        made.port.handset().setFaults({.hangUpAt = 1});
        made.test.dialogs.expectStart(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:"_s);
        press(dialog, "cmdCompare");
        QCOMPARE(textOf(dialog, "lblDifferences"), u"Die Verbindung zum Telefon ist unterbrochen."_s);
        press(dialog, "cmdClose");
        QVERIFY(!dialog.isVisible());
    }

    void aComparisonIsStopped()
    {
        ChangedPhone made;
        auto& dialog = made.open();
        const auto& status = child<QLabel>(dialog, "sta");
        QString shown;
        made.test.clock.after(0.3, [&] {
            QTest::keyClick(&dialog, Qt::Key_Escape);
            shown = status.text();
        });
        press(dialog, "cmdCompare");
        QCOMPARE(shown, u"Wird abgebrochen ..."_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(status.text(), u"Bereit."_s);
    }

    /// The list in the window is read again. If the user stops that, it does not show what the phone held
    /// before.
    void noListOutlivesItsState()
    {
        OpenWindow made(u"S68H"_s, {.seed = u"none"_s, .entries = 3, .atOnce = true});
        made.window.goTo(ui::nodes::Phonebook.toString());
        auto& list = made.list("lvwVCF");
        list.rows()->setCurrent(0);
        made.expectQuestion(u"1 gewählte(n) Kontakt(e)"_s, Answer::Yes);
        QTest::keyClick(&list, Qt::Key_Delete);
        QCOMPARE(list.rows()->count(), 2);

        QTimer whenOpen;
        QObject::connect(&whenOpen, &QTimer::timeout, &made.window, [&] {
            auto* dialog = qobject_cast<ui::FormerStatesDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return; // the phone is asked for its number first
            whenOpen.stop();
            made.expectQuestion(u"Der Stand vom"_s, Answer::Yes);
            press(*dialog, "cmdPutBack");
            QTest::keyClick(dialog, Qt::Key_Escape);
            made.test.clock.after(0.1, [&made] { QTest::keyClick(&made.window, Qt::Key_Escape); });
        });
        whenOpen.start(0);
        QTest::keyClick(&made.window, Qt::Key_H, Qt::ControlModifier);
        QCOMPARE(made.contactsInPhone(), 3);
        QCOMPARE(list.rows()->count(), 0);
        QCOMPARE(made.status(), u"Das Lesen wurde abgebrochen."_s);
    }

    void theListIsSearchedAndRemembered()
    {
        ChangedPhone made;
        operations::Records records(made.test.context, operations::identifyPhone(made.line));
        records.begin(RecordedList::Phonebook, operations::RecordCause::Undo, 250, {});
        auto& dialog = made.open();
        auto& list = child<ui::RowsView>(dialog, "lvwFormerStates");
        QCOMPARE(list.rows()->text(list.rows()->selectedRows().value(0), 1), u"Dateien"_s);
        QTest::keyClick(&dialog, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), u"telefonbuch"_s);
        QVERIFY(!child<QPushButton>(dialog, "cmdPutBack").isEnabled()); // the chosen state is hidden
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QStringList offered;
        for (const QAction* action : list.actions())
            offered.append(action->text().remove(u'&'));
        QCOMPARE(offered, (QStringList{u"Vergleichen"_s, u"Zurückholen..."_s, u"Kopieren"_s, u"Suchen"_s}));
        list.header()->resizeSection(2, 217);
        QTest::keyClick(&list, Qt::Key_Escape); // of the search
        QTest::keyClick(&list, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(child<ui::RowsView>(made.open(), "lvwFormerStates").columnWidth(2), 217);
    }
};

KALMO_TEST(tst_FormerStates)
#include "tst_FormerStates.moc"
