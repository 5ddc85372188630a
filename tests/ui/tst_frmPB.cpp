// The main window against the emulated handset: its sections, and what its commands do with the lists.

#include "phonedata/BackupFiles.h"
#include "phonedata/Ringtones.h"
#include "support/TestProgram.h"
#include "ui/OpenWindow.h"

namespace {

const QString classicCommands = u"rewrneeddeopsaeximhe"_s;
const QString vcardCommands = u"needdereopsaeximhe"_s;

} // namespace

class frmPBTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sections()
    {
        // Node, panel, ToolbarMode/ActiveSection, and the commands that are offered.
        const QString phonebook = u"TB fraPBTB 1/1 "_s + classicCommands;
        const QString providers = u"NE fraPBNE 2/2 "_s + classicCommands;
        const QString contacts = u"TB fraVCF 1/1 "_s + vcardCommands;
        const QString diverse = u"DIV fraDIV 0/4 rehe"_s;
        const QString sponsor = u"SPONSOR_ORV fraAd 3/3 he"_s;
        const QString files = u"FFS fraFFS 1/6 "_s + vcardCommands;
        const Rows<QString, QStringList> rows{
            {"1", u"WOODSTOCK"_s, {phonebook, providers, diverse, sponsor}},
            {"4", u"PICASSO"_s, {phonebook, u"SOUND fraSounds 5/1 rehe"_s, providers, diverse, sponsor}},
            {"5", u"To S600"_s, {contacts, files, diverse, sponsor}},
            {"7", u"Sinus 501"_s, {contacts, diverse, sponsor}},
            {"10", u"SL400H"_s, {contacts, files, contacts, files, diverse, sponsor}},
            {"13", u"SL750H PRO"_s, {contacts, files, diverse, sponsor}},
        };
        rows.each([](const auto& model, const auto& visits) {
            OpenWindow open(model);
            QCOMPARE(open.panel(), u"fraAd"_s);
            QStringList found;
            for (const QString& visit : visits) {
                const QString key = visit.section(u' ', 0, 0);
                open.window.goTo(key);
                found.append(u"%1 %2 %3/%4 %5"_s.arg(key, open.panel())
                                 .arg(open.window.ToolbarMode())
                                 .arg(open.window.ActiveSection())
                                 .arg(open.offered()));
                QCOMPARE(open.port.handset().isInDataMode(), key == u"FFS"_s);
                QCOMPARE(open.front() == u"fraFFScloseReminder"_s, key == u"FFS"_s);
                QVERIFY(open.panel() != u"fraDIV"_s || open.status() == u"Bereit."_s);
            }
            QCOMPARE(found, visits);
        });
    }

    /// The sentence about one section does not stay below another one.
    void statusIsOfItsSection()
    {
        const Rows<QString, QStringList, QString> rows{
            {"sponsors after contacts", u"SL400H"_s, {u"TB"_s, u"SPONSOR_ORV"_s}, u"Bereit."_s},
            {"contacts after the files", u"SL400H"_s, {u"TB"_s, u"FFS"_s, u"TB"_s}, u"Bereit."_s},
            {"melodies after providers", u"PICASSO"_s, {u"NE"_s, u"SOUND"_s}, u"Bereit."_s},
            {"the same list again", u"PICASSO"_s, {u"NE"_s, u"NE"_s}, u"5 Einträge gelesen."_s},
        };
        rows.each([](const auto& model, const auto& nodes, const auto& status) {
            OpenWindow open(model);
            for (const QString& node : nodes)
                open.window.goTo(node);
            QCOMPARE(open.status(), status);
        });
    }

    void noLeadsBack()
    {
        OpenWindow open(u"WOODSTOCK"_s, u"TB"_s);
        open.deleteFirst("lvwTB");
        const int count = open.count("lvwTB");
        open.expectUnsavedChanges(Answer::No);
        open.window.goTo(u"DIV"_s);
        QCOMPARE(open.panel() + open.node() + open.front() + open.offered(),
                 u"fraPBTBTBfraSaveReminder"_s + classicCommands);
        QCOMPARE(open.count("lvwTB"), count);
        open.expectUnsavedChanges(Answer::Yes);
        open.window.goTo(u"NE"_s);
        QVERIFY(open.memory.TbDirty);
        QCOMPARE(open.panel() + open.front(), u"fraPBNEfraHinweisTelNichtInMenu"_s);
    }

    void classicListIsWritten()
    {
        OpenWindow open(u"PICASSO"_s, u"TB"_s);
        const int before = open.entriesInPhone();
        QCOMPARE(open.count("lvwTB"), before);
        open.deleteFirst("lvwTB");
        QCOMPARE(open.front(), u"fraSaveReminder"_s);
        QCOMPARE(open.entriesInPhone(), before);
        open.expectQuestion(u"Einträge ohne Namen im Telefon: 1."_s, Answer::Yes);
        open.press("write");
        QCOMPARE(open.entriesInPhone(), before - 1);
        QVERIFY(!open.memory.TbDirty);
        QCOMPARE(open.front(), u"fraHinweisTelNichtInMenu"_s);
        QCOMPARE(QDir(open.test.storage + u"/Backup"_s).entryList(QDir::Files).size(), 2);
        QTest::keyClick(&open.list("lvwTB"), Qt::Key_A);
        QCOMPARE(open.list("lvwTB").rows()->selectedRows().size(), qsizetype{before - 1});
        open.test.dialogs.expect(question(u"%1 Einträge wirklich löschen?"_s.arg(before - 1)), Answer::Yes);
        QTest::keyClick(&open.list("lvwTB"), Qt::Key_Delete);
        QVERIFY(open.list("lvwTB").placeholder().startsWith(u"Die Liste ist leer. Das Telefon behält"_s));
        QVERIFY(
            open.status().endsWith(u"aus der Liste gelöscht. Ins Telefon kommt das mit \"Schreiben\"."_s));
        open.expectUnsavedChanges(Answer::No);
        open.press("read");
        QVERIFY(open.list("lvwTB").placeholder().startsWith(u"Die Liste ist leer. Das Telefon behält"_s));
    }

    void listsAreSearched()
    {
        OpenWindow open(u"PICASSO"_s);
        open.window.activateWindow();
        QVERIFY(!child<QAction>(open.window, "editSearch").isEnabled()); // on the sponsors' panel
        QTest::keyClick(&open.window, Qt::Key_1, Qt::AltModifier);
        ui::RowsView& list = open.list("lvwTB");
        const int all = list.rows()->count();
        QVERIFY(list.hasFocus());
        QCOMPARE(textOf(open.window, "fraPBTB_caption"), u"Telefonbuch - %1 Einträge"_s.arg(all));
        QTest::keyClick(&open.window, Qt::Key_F, Qt::ControlModifier);
        auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(field);
        for (const ui::CommandRow& row : ui::commandTable()) // in the context menu
            QCOMPARE(list.actions().contains(&child<QAction>(open.window, row.key.toLatin1().constData())),
                     row.command != ui::Command::Help);
        list.rows()->setCurrent(0);
        QTest::keyClicks(field, u"vater buro"_s);
        bool isOpened = false;
        QTimer::singleShot(0, &open.window, [&isOpened] {
            QWidget* opened = QApplication::activeModalWidget();
            isOpened = opened && opened->close();
        });
        QTest::keyClick(field, Qt::Key_F2); // must not open the hidden first row
        QCoreApplication::processEvents();
        QVERIFY(!isOpened);
        QTest::keyClick(field, Qt::Key_Return);
        QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QGuiApplication::clipboard()->text().startsWith(u"Vater Büro\t"_s));
        const QByteArray card = QGuiApplication::clipboard()->mimeData()->data(u"text/vcard"_s);
        QVERIFY(card.contains(list.rows()->text(list.rows()->current(), 1).toUtf8()));
        QTest::keyClick(&list, Qt::Key_Escape);
        list.rows()->setCurrent(0);
        QTest::keyClicks(&list, u"va"_s); // where "a" alone selects all
        QCOMPARE(list.rows()->selectedRows(), QList{list.rows()->current()});
        QVERIFY(list.rows()->text(list.rows()->current(), 0).startsWith(u"Va"_s));
    }

    void backupsAreOpenedAndSaved()
    {
        OpenWindow open(u"WOODSTOCK"_s, u"TB"_s);
        const QString file = open.test.makeFile(u"alt.tel"_s, "\"Anna\",\"\"\r\n"); // without a number
        const toolkit::FileRequest request{.title = u"Kalmo - Telefonbuch öffnen"_s,
                                           .folder = open.test.storage + u"/Backup"_s,
                                           .types = {{u" (*.tel Telefonbuch)"_s, {u"*.tel"_s}}}};
        QAction* automatic = child<QMenu>(open.window, "mnuOpen").actions()[1];
        const QString missing = open.test.path(u"fehlt.tel"_s);
        const QString empty = open.test.makeFile(u"leer.tel"_s, "\"Anna\"\r\n"); // a field alone is no entry
        const int count = open.count("lvwTB");
        for (const QString& path : {missing, empty}) {
            open.test.dialogs.expectOpenFile(request, path);
            open.test.dialogs.expectStart(path == missing
                                              ? u"Fehler beim Lesen der Datei "_s + path
                                              : u"Die Datei %1 enthält keinen lesbaren Eintrag."_s.arg(path));
            automatic->trigger();
            QCOMPARE(open.count("lvwTB"), count);
            QVERIFY(!open.memory.TbDirty);
        }
        open.test.dialogs.expectOpenFile(request, file);
        automatic->trigger();
        QCOMPARE(open.count("lvwTB"), 1);
        QVERIFY(open.memory.TbDirty);
        open.expectUnsavedChanges(Answer::Yes);
        open.test.dialogs.expectOpenFile(
            request,
            open.test.makeFile(u"copy.json"_s, R"([{"name":"A","number":"1"},{"name":"B","number":"2"}])"));
        automatic->trigger();
        QCOMPARE(open.count("lvwTB"), 2); // such copies are made of what lines can't hold
        const int held = open.entriesInPhone();
        open.expectQuestion(u"Die Liste im Fenster wurde nicht aus dem Telefon gelesen.\n\nBeim "
                            u"Schreiben:\nneu: 2 (A, B)\ngeändert: 0\nentfernt: %1 ("_s.arg(held),
                            Answer::No);
        open.press("write");
        QCOMPARE(open.entriesInPhone(), held);
        open.test.dialogs.expect(
            question(u"Das Telefonbuch wurde verändert, d.h. die aktuell angezeigte Liste "
                     u"entspricht nicht dem Inhalt des Telefons.\n\nTrotzdem speichern?"_s),
            Answer::No);
        open.press("save");
    }

    /// A file may bring an entry without a name, and the phone takes it as it is.
    void listAfterAWriteIsThatOfAReading()
    {
        OpenWindow open(u"PICASSO"_s, u"NE"_s);
        open.window.openGiven(open.test.makeFile(u"a.prv"_s, "\"\",\"0521\"\r\n\"Alt\",\"110\"\r\n"));
        QTRY_COMPARE(open.count("lvwNE"), 2);
        QTest::keyClicks(&child<QLineEdit>(child<QWidget>(open.window, "fraPBNE"), "txtSearch"), u"alt"_s);
        open.list("lvwNE").rows()->setCurrent(1);
        open.expectQuestion(u"Die Liste im Fenster wurde nicht aus dem Telefon gelesen."_s, Answer::Yes);
        open.expectQuestion(u"Das Telefon kann nicht alles so aufnehmen, wie es in der Liste steht."_s,
                            Answer::Yes);
        QStringList names;
        for (const char* key : {"write", "read"}) {
            open.press(key);
            names.append(open.list("lvwNE").rows()->text(0, 0) + open.list("lvwNE").rows()->text(1, 0));
            QCOMPARE(open.list("lvwNE").rows()->selectedRows(), QList<int>{1});
            QCOMPARE(open.list("lvwNE").shownRows(), 1);
        }
        QCOMPARE(names, QStringList({u"Ohne NameAlt"_s, u"Ohne NameAlt"_s}));
        QVERIFY(open.port.handset().phone().providers.entries.front().name.isEmpty());
    }

    void contactsAreDeletedAtOnce()
    {
        OpenWindow open(u"SL400H"_s, u"TB"_s);
        const int before = open.contactsInPhone();
        toolkit::ListRows& rows = *open.list("lvwVCF").rows();
        QCOMPARE(rows.count(), before);
        QTest::keyClick(&open.list("lvwVCF"), Qt::Key_A); // selects by Ctrl only
        QVERIFY(rows.selectedRows().size() < rows.count());
        rows.setCurrent(1);
        open.test.dialogs.expect(
            question(u"1 gewählte(n) Kontakt(e) wirklich löschen ?"_s, u"Kalmo  -  Kontakt löschen"_s),
            Answer::Yes);
        open.press("delete");
        QCOMPARE(open.contactsInPhone(), before - 1);
        QCOMPARE(open.status(), u"1 Kontakt gelöscht. \"Frühere Stände\" bringt ihn zurück."_s);
        QCOMPARE(rows.count(), before - 1);
        QVERIFY(!open.port.handset().isInDataMode());
        QVERIFY(textOf(open.window, "fraVCF_caption").endsWith(u", %1 belegt"_s.arg(before - 1)));
        const QString file = open.test.path(u"alle.csv"_s);
        open.test.dialogs.expectSaveFile({.title = u"Kalmo - Telefonbuch Backup erstellen"_s,
                                          .folder = open.test.sy.DefUserExpRoot,
                                          .types = {{u" (*.csv Telefonbuch)"_s, {u"*.csv"_s}}},
                                          .confirmOverwrite = true},
                                         file);
        open.test.dialogs.expect(Icon::Information, u"Datei gespeichert."_s);
        open.press("save");
        QCOMPARE(TestContext::contentOf(file).count("\r\n"), qsizetype{before});
        open.window.hide();
        open.window.forgetPhone();
        QCOMPARE(rows.count(), 0); // LUIDs of another phone
        open.window.show();
        QCoreApplication::processEvents();
        QCOMPARE(rows.count(), before - 1);
    }

    void secretWordsAreHeard()
    {
        OpenWindow open(u"WOODSTOCK"_s);
        const QString caption = open.window.windowTitle();
        const auto type = [&] {
            for (const char key : QByteArray("danke?"))
                QTest::keyClick(open.window.windowHandle(), key);
        };
        open.test.clock.after(1, type); // the phone is asked
        open.window.goTo(u"TB"_s);
        QCOMPARE(open.window.windowTitle(), caption);
        type();
        QVERIFY(open.window.windowTitle().startsWith(u"Vielen Dank"_s));
    }

    void ringtonesAreSet()
    {
        OpenWindow open(u"PICASSO"_s);
        auto& volume = child<QComboBox>(open.window, "cmbWrinVol");
        auto& tone = child<QComboBox>(open.window, "cmbWrinID");
        QVERIFY(!tone.currentText().isEmpty()); // read when the window opened
        open.window.activateWindow();
        open.window.goTo(u"SOUND"_s);
        QTest::keyClick(&open.window, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(child<QLineEdit>(child<QWidget>(open.window, "fraSounds"), "txtSearch").hasFocus());
        const auto choose = [&](int index) {
            QTest::keyClick(&volume, Qt::Key_Down); // opens the choice
            auto* choices = volume.view();
            choices->setCurrentIndex(choices->model()->index(index, 0));
            QTest::keyClick(choices, Qt::Key_Return);
        };
        choose(5);
        QCOMPARE(open.status(),
                 u"%1: %2, Lautstärke ansteigend."_s.arg(
                     phonedata::captionOf(phonedata::SoundEvent::Internal), tone.currentText()));
        const double sentAt = open.test.clock.elapsed();
        choose(5); // the same again, which is sent like any choice
        QVERIFY(open.test.clock.elapsed() > sentAt);
        const auto setting = open.memory.soundSettings[static_cast<size_t>(phonedata::SoundEvent::Internal)];
        QCOMPARE(setting.volume, 6);
        QCOMPARE(volume.currentText(), u"ansteigend"_s);
        open.port.handset().setFaults({.refuseCommandAt = 4}); // the first reading back
        open.test.dialogs.expectStart(u"Es ist ein Übertragungsfehler aufgetreten."_s);
        open.test.dialogs.expectStart(u"Das Telefon hat die Einstellung bestätigt, sie konnte"_s);
        choose(2);
        open.test.dialogs.finish();
        open.memory.soundSettings[static_cast<size_t>(phonedata::SoundEvent::Internal)].soundId = 77;
        open.port.handset().setFaults({});
        open.expectQuestion(u"Die eigene Melodie für \"Interne Anrufe\" ist nicht bekannt."_s, Answer::No);
        choose(3);
        open.test.dialogs.finish();
        QCOMPARE(volume.currentIndex(), 2); // as in the phone
        QCOMPARE(open.status(), u"Nichts geändert."_s);
        open.port.handset().setFaults({.silentAfter = 1, .commands = 1});
        open.test.dialogs.agreeToAll({});
        open.press("refresh");
        open.port.handset().setFaults({});
        choose(1);
        QCOMPARE(open.status(), u"Die Einstellung war noch nicht gelesen. Bitte wählen Sie noch einmal."_s);
    }

    void focusGoesDownwards()
    {
        OpenWindow classic(u"PICASSO"_s);
        OpenWindow vcard(u"SL400H"_s);
        QStringList faults;
        for (auto* control :
             classic.window.findChildren<QWidget*>() + vcard.window.findChildren<QWidget*>()) {
            const bool takesKeys = control->focusPolicy() & Qt::TabFocus;
            const QWidget* next = control->nextInFocusChain();
            if (takesKeys && next->focusPolicy() & Qt::TabFocus && next->parent() == control->parent() &&
                next->geometry().bottom() < control->geometry().top() && control->isVisible() &&
                next->isVisible())
                faults.append(u"upwards: %1 to %2"_s.arg(control->objectName(), next->objectName()));
        }
        QCOMPARE(faults, QStringList());
    }
};

KALMO_TEST(frmPBTest)
#include "tst_frmPB.moc"
