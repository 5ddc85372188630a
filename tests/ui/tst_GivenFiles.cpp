// Files that come into the main window: those that are given to the program, and those of an import.

#include "support/TestProgram.h"
#include "ui/FileHandover.h"
#include "ui/OpenWindow.h"
#include "ui/window/StatusArea.h"

namespace {

void expectBoxes(OpenWindow& open, const QStringList& starts)
{
    for (const QString& start : starts)
        open.test.dialogs.expectStart(start);
}

const QString lostAccess = u"Fehler beim Zugriff auf das Telefon"_s;

/// Closes the dialog of each import once its preview is there, and notes its counts.
struct ImportUser
{
    QStringList counts;
    DialogUser user{[this](QDialog& form) {
        const QString text = textOf(form, "lblCounts");
        if (text.startsWith(u"0 von 0"_s))
            return;
        counts.append(text);
        form.reject();
    }};
};

} // namespace

class tst_GivenFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// A second start ends after it has handed its file to the first, which may have a box open.
    void fileOfASecondStartIsOpened()
    {
        OpenWindow open(u"PICASSO"_s);
        const QString socket = open.test.makeFile(u"open"_s, {}); // left by a program that was killed
        ui::FileHandover first(socket);
        ui::FileHandover second(socket);
        const QString path = open.test.makeFile(u"Jörg.prv"_s, "\"Alt\",\"110\"\r\n");
        QVERIFY(!second.handOver(path));
        QVERIFY(first.listen());
        QVERIFY(!second.listen());
        connect(&first, &ui::FileHandover::received, &open.window, &ui::frmPB::openGiven);
        QSignalSpy received(&first, &ui::FileHandover::received);
        QDialog box(&open.window);
        box.open();
        QVERIFY(second.handOver(path));
        QTRY_COMPARE(received.size(), 1);
        QVERIFY(!open.memory.NeDirty);
        QTest::keyClick(&box, Qt::Key_Escape);
        QTRY_VERIFY(open.memory.NeDirty);
        QCOMPARE(open.panel() + open.list("lvwNE").rows()->text(0, 0), u"fraPBNEAlt"_s);
        open.memory.NeDirty = false;
        open.window.hide(); // for the settings
        open.window.openGiven(open.test.makeFile(u"Alt.tel"_s, "\"Alt\",\"110\",\"\",\"\",\"\",\"\"\r\n"));
        QCOMPARE(open.count("lvwTB"), 0);
        open.window.show();
        QTRY_COMPARE(open.count("lvwTB"), 1);
        QCOMPARE(open.panel() + open.list("lvwTB").rows()->text(0, 0), u"fraPBTBAlt"_s);
        QVERIFY(open.memory.TbDirty && open.entriesInPhone() > 1);
        open.memory.TbDirty = false;
    }

    /// Two files that come at once. None opens where the user wants to stay, or where the phone has no such
    /// list.
    void oneFileAfterTheOther()
    {
        OpenWindow open(u"PICASSO"_s);
        open.window.goTo(u"TB"_s);
        QStringList forms;
        const DialogUser user([&](QDialog& form) {
            const QWidgetList all = QApplication::topLevelWidgets();
            forms.append(QString::number(std::ranges::count_if(all, [](const QWidget* window) {
                return window->isVisible() && qobject_cast<const QDialog*>(window);
            })));
            form.reject();
        });
        const QString path = open.test.makeFile(u"a.csv"_s, "Name;Nummer\nNeu;0521\n");
        for (int file = 0; file < 2; ++file)
            QTimer::singleShot(0, &open.window, [&] { open.window.openGiven(path); });
        QTRY_COMPARE(forms, QStringList({u"1"_s, u"1"_s}));
        const int before = open.list("lvwTB").rows()->count();
        open.window.goTo(u"NE"_s);
        open.deleteFirst("lvwNE");
        open.expectQuestion(ui::unsavedChangesText(phonedata::Store::Providers), Answer::No);
        open.window.openGiven(open.test.makeFile(u"Alt.tel"_s, "\"Alt\",\"110\",\"\",\"\",\"\",\"\"\r\n"));
        QCOMPARE(open.panel() + QString::number(open.list("lvwTB").rows()->count()),
                 u"fraPBNE"_s + QString::number(before));
        open.memory.NeDirty = false;
        OpenWindow vcard(u"SL400H"_s);
        expectBoxes(vcard, {u"Eine Providerliste gibt es bei diesem Telefon nicht."_s});
        vcard.window.openGiven(u"Alt.prv"_s);
    }

    void importReadsTheListAhead()
    {
        OpenWindow open(u"PICASSO"_s);
        const QString path = open.test.makeFile(u"a.csv"_s, "Name;Nummer\nMUTTER;052134567\n");
        ImportUser user;
        open.port.handset().setFaults({.refuseCommandAt = 1});
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            expectBoxes(open, {lostAccess});
            open.expectQuestion(u"Das Telefonbuch ist nicht eingelesen."_s, answer);
            open.window.openGiven(path);
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(user.counts,
                     QStringList(u"1 von 2 zum Import ausgewählt, nicht mit dem Telefonbuch verglichen"_s));
        open.port.handset().setFaults({});
        auto& status = child<ui::StatusArea>(open.window, "sta");
        status.SetBusy(true); // a file of the command line waits for the start
        open.window.openGiven(path);
        status.SetBusy(false);
        QTRY_COMPARE(user.counts.value(1), u"0 von 2 zum Import ausgewählt, 1 schon vorhanden"_s);
        open.port.handset().setFaults({.refuseCommandAt = 1});
        expectBoxes(open,
                    {lostAccess, u"Die Providerliste wurde bisher noch nicht eingelesen."_s, lostAccess});
        // Entries are compared with the phonebook all the same.
        open.expectQuestion(u"Die Providerliste ist nicht eingelesen. Beim Schreiben"_s, Answer::No);
        open.window.goTo(u"NE"_s);
        child<QMenu>(open.window, "mnuImport_NE").actions().first()->trigger();
        QCoreApplication::processEvents();
    }

    void importReadsTheContactsAhead()
    {
        OpenWindow open(u"SL400H"_s);
        const QStringList failure{u"Beim Zugriff auf das Telefon"_s, u"Fehler beim Lesen des Adressbuchs."_s};
        open.port.handset().setFaults({.refuseAt = 1});
        expectBoxes(open, failure);
        open.expectQuestion(u"Das Telefonbuch ist nicht eingelesen."_s, Answer::No);
        const QString table = open.test.makeFile(u"a.csv"_s, "Name;Telefon\nMUTTER;052134567\n");
        open.window.openGiven(table);
        QCoreApplication::processEvents();
        QVERIFY(!QApplication::activeModalWidget());
        // A save reads the whole phonebook, which the import is compared with then.
        open.port.handset().setFaults({.refuseAt = 8});
        expectBoxes(open, failure);
        QTest::keyClick(&open.window, Qt::Key_F5);
        open.port.handset().setFaults({});
        QTimer::singleShot(0, &open.window, [] {
            QWidget& form = *QApplication::activeModalWidget();
            QTest::keyClicks(&child<QLineEdit>(form, "txtTelHandy"), u"0170"_s);
            QTest::mouseClick(&child<QPushButton>(form, "cmdSpeichern"), Qt::LeftButton);
        });
        QTest::keyClick(&open.window, Qt::Key_N, Qt::ControlModifier);
        ImportUser user;
        open.window.openGiven(table);
        QTRY_COMPARE(user.counts, QStringList(u"1 von 2 zum Import ausgewählt"_s));
    }

    /// The settings hide the window.
    void noImportInAHiddenWindow()
    {
        OpenWindow left(u"PICASSO"_s, u"TB"_s);
        child<QMenu>(left.window, "mnuImport_TB").actions().first()->trigger();
        left.window.hide();
        QCoreApplication::processEvents();
        QVERIFY(!QApplication::activeModalWidget());
    }

    void importIsToldInTheWindow()
    {
        const Rows<QString, QString, QString> rows{
            {"list", u"PICASSO"_s, u"Nummer"_s,
             u"1 Eintrag importiert. Ins Telefon kommt das mit \"Schreiben\"."_s},
            {"contacts", u"SL400H"_s, u"Telefon"_s,
             u"1 Kontakt importiert. \"Frühere Stände\" nimmt ihn zurück."_s},
        };
        rows.each([](const auto& model, const auto& heading, const auto& status) {
            OpenWindow open(model, u"TB"_s);
            const int held = open.contactsInPhone();
            DialogUser user([&user](QDialog& form) {
                if (!textOf(form, "lblCounts").startsWith(u"1 von"_s))
                    return;
                user.stop();
                click(form, "cmdImport");
                QTest::keyClick(&form, Qt::Key_Escape);
            });
            open.test.dialogs.agreeToAll({});
            open.window.openGiven(
                open.test.makeFile(u"a.csv"_s, "Name;" + heading.toLatin1() + "\nNeumann;0521445\n"));
            QTRY_COMPARE(open.status(), status);
            QCOMPARE(open.contactsInPhone(), held + (model == u"SL400H"_s));
            open.memory.TbDirty = false;
        });
    }
};

KALMO_TEST(tst_GivenFiles)
#include "tst_GivenFiles.moc"
