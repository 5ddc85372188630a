// The main window while the phone is busy, silent or in data mode: every way out leaves the line in order.

#include "support/ObexClient.h"
#include "support/TestProgram.h"
#include "ui/lists/ListState.h"
#include "ui/OpenWindow.h"
#include "ui/window/StatusArea.h"

namespace {

toolkit::Message closingQuestion()
{
    return question(
        u"Es wurden Änderungen am Telefonbuch vorgenommen, diese wurden jedoch noch nicht durch die "
        u"Funktion \"Schreiben\" gespeichert und gehen verloren, wenn Sie Kalmo beenden.\n\n"
        u"Trotzdem beenden?"_s);
}

} // namespace

class tst_WindowAndLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void closingAsksAndLeavesDataMode()
    {
        OpenWindow open(u"SL400H"_s);
        QSignalSpy closed(&open.window, &ui::frmPB::closedByUser);
        open.test.makeFile(u"storage/config/temp/bild.jpg"_s, "x");
        open.window.goTo(u"FFS"_s);
        QVERIFY(open.port.handset().isInDataMode());
        open.memory.TbDirty = true;
        open.test.dialogs.expect(closingQuestion(), Answer::No);
        open.window.close();
        QVERIFY(closed.isEmpty() && open.window.isVisible() && open.port.IsOpen());
        open.test.dialogs.expect(closingQuestion(), Answer::Yes);
        open.window.close();
        QCOMPARE(closed.size(), 1);
        QVERIFY(!open.port.handset().isInDataMode());
        QVERIFY(!open.port.IsOpen());
        QVERIFY(QDir(open.test.storage + u"/config/temp"_s).isEmpty(QDir::Files));
    }

    void everyWayOutClosesTheChannel()
    {
        OpenWindow calm(u"SL400H"_s, u"TB"_s);
        const int lettingGo = calm.port.handset().phone().faults.requests;
        for (const QString& way : {u"DIV"_s, u"TB"_s, u"SETUP"_s, u"refresh"_s, u"close"_s}) {
            for (const bool isConnectRefused : {true, false}) { // or to let go of the connection is
                OpenWindow open(u"SL400H"_s, {.faults = {.refuseAt = isConnectRefused ? 1 : lettingGo}});
                open.test.dialogs.expect(errorBox(obex::GetFriedlyErrMsg(0xC3)));
                open.window.goTo(isConnectRefused ? u"FFS"_s : u"TB"_s);
                QVERIFY(!isConnectRefused || open.window.focusWidget() == &open.list("lvwFFs"));
                QVERIFY(open.port.handset().isInDataMode());
                if (way == u"refresh"_s)
                    open.press("refresh");
                if (way == u"close"_s)
                    open.window.close();
                open.window.goTo(way); // where it is one of the nodes; the files come back behind a refresh
                QCOMPARE(open.port.handset().isInDataMode(), way == u"refresh"_s && isConnectRefused);
                QVERIFY(way != u"DIV"_s || open.status() == u"Bereit."_s);
            }
        }
    }

    /// The phone hears again by then.
    void closingClosesTheStore()
    {
        OpenWindow open(u"PICASSO"_s);
        const handset::Phone& phone = open.port.handset().phone();
        open.port.handset().setFaults({.silentAfter = 1}); // in the open store
        open.test.dialogs.agreeToAll({});
        open.window.goTo(u"TB"_s);
        QVERIFY(phone.phonebook.open);
        open.port.handset().setFaults({});
        QString meanwhile;
        open.test.clock.after(0, [&] { meanwhile = open.status(); });
        open.window.close();
        QVERIFY(!phone.phonebook.open);
        QCOMPARE(meanwhile, u"Die Liste im Telefon wird geschlossen..."_s);
    }

    void aDeafPhoneHoldsNobodyUp()
    {
        OpenWindow open(u"SL400H"_s, u"FFS"_s);
        open.port.handset().setFaults({.silentFrom = 1});
        for (const int code : {obex::Timeout, obex::ChannelStuck}) {
            open.test.dialogs.expect(errorBox(obex::GetFriedlyErrMsg(code)));
            open.window.goTo(u"DIV"_s);
            QCOMPARE(open.panel(), u"fraDIV"_s);
        }
        open.window.goTo(u"SPONSOR"_s);
        open.port.handset().setFaults({});
        open.window.goTo(u"TB"_s);
        QVERIFY(open.count("lvwVCF") > 0);
    }

    void closingWaitsForAWrite()
    {
        OpenWindow open(u"WOODSTOCK"_s);
        QSignalSpy closed(&open.window, &ui::frmPB::closedByUser);
        open.window.goTo(u"TB"_s);
        open.deleteFirst("lvwTB");
        const int wanted = open.count("lvwTB");
        const auto answer = [&](QMessageBox::StandardButton button) {
            open.window.close();
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box && box->button(QMessageBox::No) == box->defaultButton());
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
            QTest::mouseClick(box->button(button), Qt::LeftButton);
        };
        open.test.clock.after(6, [&] { answer(QMessageBox::No); });
        open.test.clock.after(8, [&] { answer(QMessageBox::Yes); });
        open.expectQuestion(u"Dieses Telefon zählt seine Melodien beim Schreiben anders als beim Lesen."_s,
                            Answer::Yes);
        open.press("write");
        QCOMPARE(open.entriesInPhone(), wanted);
        const QSignalSpy settings(&open.window, &ui::frmPB::settingsRequested);
        const QSignalSpy search(&open.window, &ui::frmPB::searchRequested);
        open.window.goTo(u"SETUP"_s); // clicks that come before the end
        Q_EMIT child<ui::StatusArea>(open.window, "sta").searchWanted();
        QVERIFY(settings.isEmpty() && search.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(closed.size(), 1);
    }

    void closingQuestionOutlivesARead()
    {
        OpenWindow open(u"WOODSTOCK"_s);
        open.test.clock.after(1.5, [&open] { open.window.close(); });
        open.window.goTo(u"TB"_s);
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        QCOMPARE(box->text(), u"Soll Kalmo beendet werden?"_s);
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
        QVERIFY(!QGuiApplication::overrideCursor() && open.window.isVisible());
    }

    void closingQuestionCancelsARead()
    {
        OpenWindow open(u"WOODSTOCK"_s);
        open.test.clock.after(1.5, [&open] {
            QVERIFY(!open.list("lvwTB").isEnabled() && child<QWidget>(open.window, "chkCancel").isVisible());
            open.window.goTo(u"DIV"_s); // a click that comes all the same
            open.window.close();
            for (auto* button : QApplication::activeModalWidget()->findChildren<QPushButton*>()) {
                if (button->text() == u"Nur &abbrechen"_s)
                    QTest::keyClick(button, Qt::Key_Space);
            }
        });
        open.window.goTo(u"TB"_s);
        QVERIFY(open.window.isVisible() && !QApplication::activeModalWidget());
        QCOMPARE(open.panel() + open.node(), u"fraPBTBTB"_s);
        QVERIFY(open.list("lvwTB").isEnabled() && open.count("lvwTB") == 0);
        open.window.goTo(u"TB"_s); // never read, so it is read now
        QCOMPARE(open.count("lvwTB"), open.entriesInPhone());
    }

    /// "Telefon nicht trennen!" is there just while a channel is open.
    void channelIsRemindedOf()
    {
        OpenWindow open(u"SL450HX"_s);
        open.test.sy.PhoneID = u"^WPPN: 7,SL450HX"_s;
        open.window.goTo(u"FFS"_s);
        QCOMPARE(textOf(open.window, "lblConnection"),
                 u"SL450HX · COM%1 · verbunden"_s.arg(open.test.sy.ComNo));
        QVERIFY(open.window.closeChannel());
        QCOMPARE(open.front(), u"fraHinweisTelNichtInMenu"_s);
        QTest::keyClick(&open.list("lvwFFs"), Qt::Key_F5);
        QCOMPARE(open.front(), u"fraFFScloseReminder"_s);
        auto& gauge = child<QProgressBar>(open.window, "prgMe");
        QVERIFY(!gauge.format().isEmpty());
        const QString before = open.status();
        open.port.Close();
        child<QWidget>(open.window, "connection").findChild<QTimer*>()->start(0);
        QTRY_VERIFY(open.status().endsWith(u"drücken Sie \"Erneut verbinden\"."_s));
        QCOMPARE(open.front(), u"fraHinweisTelNichtInMenu"_s);
        open.port.Open({});
        QTRY_COMPARE(open.status(), before);
        open.window.forgetPhone();
        QCOMPARE(gauge.format() + open.status(), u"Bereit."_s);
    }

    void filesComeBackBehindCommands()
    {
        OpenWindow open(u"SL400H"_s);
        bool isBlocked = false;
        open.test.clock.after(0.1, [&] {
            isBlocked = open.status().startsWith(u"Prüfe Vorwahl"_s) && !open.list("lvwVCF").isEnabled() &&
                        !child<QWidget>(open.window, "chkCancel").isVisible();
        });
        open.window.goTo(u"TB"_s);
        QVERIFY(isBlocked);
        open.window.goTo(u"FFS"_s);
        toolkit::ListRows& files = *open.list("lvwFFs").rows();
        files.setCurrent(files.indexOfKey(u"FOL_Pictures"_s));
        QTest::keyClick(&open.list("lvwFFs"), Qt::Key_Return);
        files.setCurrent(1);
        const QString file = files.row(1).key;
        const auto state = [&] { return open.panel() + open.node() + open.front(); };
        open.press("delete"); // no contact is selected
        QCOMPARE(open.status(), u"Im Telefonbuch ist nichts markiert."_s);
        const auto contacts = open.contactsInPhone();
        open.press("refresh");
        QCOMPARE(state(), u"fraFFSFFSfraFFScloseReminder"_s);
        QCOMPARE(child<QLineEdit>(open.window, "txtFFscDirAct").text(), u"Mobile:\\Pictures"_s);
        QCOMPARE(files.row(files.current()).key + open.status(),
                 file + u"%1 Kontakte gelesen."_s.arg(contacts));
        QVERIFY(open.port.handset().isInDataMode());
        std::optional<bool> wasOpen; // beside an import, which has a data session of its own
        const DialogUser user([&](QDialog& form) {
            wasOpen = open.port.handset().isInDataMode();
            QTest::keyClick(&form, Qt::Key_Escape);
        });
        open.press("import");
        QTest::keyClick(&child<QMenu>(open.window, "mnuImport_TB"), Qt::Key_Down);
        QTest::keyClick(&child<QMenu>(open.window, "mnuImport_TB"), Qt::Key_Return);
        QTRY_VERIFY(wasOpen);
        QCOMPARE(*wasOpen, false);
        QTRY_COMPARE(state(), u"fraFFSFFSfraFFScloseReminder"_s);
        open.window.goTo(u"SETUP"_s);
        QCOMPARE(state() + open.status(), u"fraVCFTBfraHinweisTelNichtInMenuBereit."_s);
        open.window.goTo(u"FFS"_s); // the section is the same, but its panel is not there
        QCOMPARE(state(), u"fraFFSFFSfraFFScloseReminder"_s);
        // A new search closes the channel, and the window opens it for the phone that was found.
        click(open.window, "cmdReconnect");
        QVERIFY(!open.window.isVisible() && !open.port.handset().isInDataMode());
        open.window.forgetPhone();
        QCOMPARE(open.list("lvwFFs").model()->rowCount(), 0);
        open.window.show();
        QCoreApplication::processEvents();
        QCOMPARE(state(), u"fraFFSFFSfraFFScloseReminder"_s);
        QVERIFY(open.port.handset().isInDataMode() && open.list("lvwFFs").model()->rowCount() > 0);
    }

    void filesHaveKeysOfTheirOwn()
    {
        OpenWindow open(u"SL400H"_s);
        const auto state = [&] {
            const auto& edit = child<QAction>(open.window, "edit");
            QStringList names;
            for (const QAction* action : open.window.menuBar()->actions().first()->menu()->actions()) {
                if (action->objectName().startsWith(u"ffs"_s) || action == &edit)
                    names.append(action->objectName());
            }
            return names.join(u' ') + u'|' + edit.shortcut().toString() + u'|' + edit.toolTip();
        };
        const QString own = u"ffsUp ffsRename ffsNewFolder||Telefonbuch: Eintrag bearbeiten"_s;
        open.window.goTo(u"TB"_s);
        const QString phonebook = state();
        QCOMPARE(phonebook, u"edit|F2|Eintrag bearbeiten (F2)"_s);
        open.window.goTo(u"FFS"_s);
        QCOMPARE(state(), own);
        QVERIFY(open.list("lvwFFs").hasFocus());
        open.list("lvwFFs").rows()->setCurrent(0);
        const int contacts = open.contactsInPhone();
        open.test.dialogs.expect(question(u"1 ausgewählte Dateien wirklich löschen?"_s), Answer::No);
        QTest::keyClick(&open.list("lvwFFs"), Qt::Key_Delete);
        QTest::keyClick(&open.window, Qt::Key_N, Qt::ControlModifier); // opens no contact
        QVERIFY(!QApplication::activeModalWidget());
        open.list("lvwFFs").setColumnWidth(0, 321);
        open.window.goTo(u"TB"_s);
        QCOMPARE(state(), phonebook);
        QCOMPARE(open.contactsInPhone(), contacts);
        open.window.close();
        QVERIFY(open.test.settings.GetIniText(u"frmPB"_s, u"lvwFFs_Columns"_s).startsWith(u"321|"_s));
    }

    void stoppedListingKeepsTheFiles()
    {
        for (const QString& step :
             {u"Verzeichnis wird ausgelesen"_s, u"Freier Speicherplatz wird ermittelt"_s}) {
            OpenWindow open(u"SL400H"_s, {.maxPacket = 255}); // so that a listing comes in several
            open.window.goTo(u"FFS"_s);
            ui::RowsView& list = open.list("lvwFFs");
            const int files = list.rows()->count();
            open.stopWhen([&] { return open.status().startsWith(step); });
            QTest::keyClick(&list, Qt::Key_F5);
            QCOMPARE(list.rows()->count(), files);
            QCOMPARE(open.status(),
                     u"Das Lesen des Ordners wurde abgebrochen. Die Liste ist, wie sie war."_s);
            list.rows()->setCurrent(0);
            open.test.dialogs.expect(question(u"1 ausgewählte Dateien wirklich löschen?"_s), Answer::No);
            QTest::keyClick(&list, Qt::Key_Delete);
        }
    }

    void failuresLeaveWholeLists()
    {
        const QString failed = u"Fehler beim Zugriff auf das Telefon"_s;
        OpenWindow atEnd(u"PICASSO"_s);
        const int entries = atEnd.entriesInPhone();
        atEnd.port.handset().setFaults({.refuseCommandAt = entries + 3}); // opened, read to the empty reply
        atEnd.test.dialogs.expectStart(failed);
        for (const QString& node : {u"TB"_s, u"SPONSOR_ORV"_s, u"TB"_s}) // reads once
            atEnd.window.goTo(node);
        QCOMPARE(atEnd.count("lvwTB"), entries);

        OpenWindow open(u"PICASSO"_s, u"TB"_s);
        const toolkit::ListRows& rows = *open.list("lvwTB").rows();
        open.deleteFirst("lvwTB");
        open.port.handset().setFaults({.refuseCommandAt = 1});
        open.expectUnsavedChanges(Answer::Yes);
        open.test.dialogs.expectStart(failed);
        open.press("read");
        QCOMPARE(rows.count(), entries - 1);
        open.port.handset().setFaults({});
        open.expectQuestion(u"Einträge ohne Namen im Telefon: 1."_s, Answer::Yes);
        open.press("write"); // and asks nothing about where the list came from
        QCOMPARE(open.entriesInPhone(), entries - 1);
    }

    /// A search has found another handset of the same kind.
    void anotherPhoneIsReadAgain()
    {
        const Rows<QString, bool> rows{
            {"list in front", u"TB"_s, false},
            {"list behind another section", u"SPONSOR_ORV"_s, false},
            {"changed list", u"TB"_s, true},
        };
        rows.each([](const auto& front, bool isChanged) {
            OpenWindow open(u"PICASSO"_s);
            open.window.goTo(u"TB"_s);
            if (isChanged)
                open.deleteFirst("lvwTB");
            else
                open.list("lvwTB").rows()->removeAt(0); // the phone before held one entry less
            if (front != u"TB"_s)
                open.window.goTo(front);
            const toolkit::ListRows& list = *open.list("lvwTB").rows();
            open.window.hide();
            open.window.forgetPhone();
            const int kept = list.count();
            open.window.show();
            open.window.hide(); // at once, for the settings
            QCoreApplication::processEvents();
            QCOMPARE(list.count(), kept);
            open.window.show();
            QCoreApplication::processEvents();
            if (front != u"TB"_s) {
                QCOMPARE(list.count(), 0);
                QCOMPARE(open.list("lvwTB").placeholder(), placeholderFor(ui::ListState::NotRead));
                open.window.goTo(u"TB"_s);
            }
            QCOMPARE(list.count(), open.entriesInPhone() - (isChanged ? 1 : 0));
            QCOMPARE(open.memory.TbDirty, isChanged);
            open.memory.TbDirty = false;
        });
    }

    /// A list that waits to be written goes on over a lost line and a search.
    void changedListOutlivesTheLine()
    {
        OpenWindow open(u"PICASSO"_s, u"NE"_s);
        open.port.Close();
        child<QWidget>(open.window, "connection").findChild<QTimer*>()->start(0);
        QTRY_VERIFY(open.status().endsWith(u"\"Erneut verbinden\"."_s));
        open.deleteFirst("lvwNE");
        QVERIFY2(open.status().startsWith(u"1 Eintrag aus der Liste gelöscht. Ins Telefon kommt das mit "
                                          u"\"Schreiben\". Kalmo ist nicht mehr mit dem Telefon"_s),
                 qPrintable(open.status()));
        open.list("lvwNE").rows()->setCurrent(-1);
        open.press("edit");
        QVERIFY(
            open.status().startsWith(u"In der Providerliste ist nichts markiert. Kalmo ist nicht mehr"_s));
        child<QLabel>(open.window, "sta_text").setText(u"Fertig."_s); // by whom ever
        QTRY_VERIFY(open.status().endsWith(u"\"Erneut verbinden\"."_s));
        click(open.window, "cmdReconnect");
        QVERIFY(!open.window.isVisible());
        open.port.Open(u"COM1"_s);
        open.window.forgetPhone();
        open.window.show();
        QCoreApplication::processEvents();
        QCOMPARE(open.front(), u"fraSaveReminder"_s);
        open.memory.NeDirty = false;
    }

    void stoppedDeletionIsCounted()
    {
        OpenWindow open(u"SL450HX"_s, u"TB"_s);
        toolkit::ListRows& rows = *open.list("lvwVCF").rows();
        const int before = rows.count();
        for (const int row : {0, 1, 2, 3})
            rows.setSelected(row, true);
        open.stopWhen([&] { return rows.count() < before; });
        open.expectQuestion(u"4 gewählte(n) Kontakt(e)"_s, Answer::Yes);
        QTest::keyClick(&open.list("lvwVCF"), Qt::Key_Delete);
        QCOMPARE(open.contactsInPhone(), before - 2); // the second was on its way
        QCOMPARE(rows.count(), before - 2);
        QCOMPARE(open.status(),
                 u"2 Kontakte gelöscht, 2 nicht (abgebrochen). \"Frühere Stände\" bringt sie zurück."_s);
    }
};

KALMO_TEST(tst_WindowAndLine)
#include "tst_WindowAndLine.moc"
