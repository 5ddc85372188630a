// The file system panel against the emulated handset: its list and its keys.

#include "support/SmallDisk.h"
#include "support/TestProgram.h"
#include "ui/FilePanel.h"

class FileSystemPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldersAndFiles()
    {
        FilePanel made(u"Pictures"_s);
        made.enter(u"FOL_Urlaub 2026"_s);
        QCOMPARE(made.path(), u"Mobile:\\Pictures\\Urlaub 2026"_s);
        QCOMPARE(made.shown(), u"FIL_Stufen.jpg ROT_ CDU_"_s);
        made.enter(u"CDU_"_s);
        QVERIFY(made.shown().contains(u"FOL_Urlaub 2026"_s));
        made.enter(u"ROT_"_s);
        QCOMPARE(made.panel.lvwFFs().selectedRows(), QList<int>{0});
        made.enter(u"FOL_Sounds"_s);
        QStringList orders{made.shown()};
        for (int click = 0; click < 3; ++click) {
            QTest::mouseClick(made.list().header()->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
            orders.append(made.shown());
            made.press("refresh");
            orders.append(made.shown());
        }
        const QString up = u"FIL_Gong.mid FIL_Piep.wav FIL_Tonleiter.mid ROT_ CDU_"_s;
        const QString down = u"FIL_Tonleiter.mid FIL_Piep.wav FIL_Gong.mid ROT_ CDU_"_s;
        QCOMPARE(orders, (QStringList{up, up, up, down, down, up, up}));
        // A file that Kalmo can't show goes to the user's own program.
        QVERIFY(made.mmc->PutFile(made.test.makeFile(u"Film.3gp"_s, "x"), made.progress.all()));
        made.press("refresh");
        made.panel.lvwFFs().setCurrent(made.panel.lvwFFs().indexOfKey(u"FIL_Film.3gp"_s));
        made.press("show");
        const QString copy = made.test.storage + u"/config/temp/Film.3gp"_s;
        QCOMPARE(made.desktop.opened, QStringList{u' ' + copy});
        QVERIFY(QFileInfo(copy).size() > 0);
    }

    /// The list itself says why it shows no files, below the rows that lead out.
    void theListSaysItsState()
    {
        FilePanel made({}, {.maxPacket = 300});
        made.show();
        QStringList notes;
        bool isStopped = false;
        QObject::connect(made.mmc.get(), &obex::clsMmc::BytesRxed, made.mmc.get(), [&] {
            made.progress.cancel.checked = isStopped;
            const QString note = QString::number(made.panel.lvwFFs().count()) + u": "_s + made.list().note();
            if (notes.isEmpty() || notes.last() != note)
                notes.append(note);
        });
        made.enter(u"FOL_Sounds"_s);
        QCOMPARE(notes,
                 QStringList{u"0: Der Ordner wird gelesen..."_s}); // without the files of the folder before
        QCOMPARE(made.list().note(), QString());
        isStopped = true;
        made.enter(u"ROT_"_s);
        isStopped = made.progress.cancel.checked = false;
        const QString stopped = u"Das Lesen des Ordners wurde abgebrochen. \"Neu laden\" liest ihn."_s;
        QCOMPARE(made.list().note(), stopped);
        const QImage before = made.list().viewport()->grab().toImage();
        made.list().setNote({});
        QVERIFY(made.list().viewport()->grab().toImage() != before);
        made.expectRefusal(3); // after the capacities
        made.press("refresh");
        QCOMPARE(made.list().note(), u"Der Ordner konnte nicht gelesen werden. \"Neu laden\" liest ihn."_s);
        QCOMPARE(made.list().accessibleDescription(), made.list().note());
    }

    /// The phones of families 11 to 13 would take the name for one in the root.
    void nothingIsDoneInAnUnknownFolder()
    {
        FilePanel made(u"Sounds"_s, {}, u"S820"_s);
        made.select({u"FIL_Piep.wav"_s});
        made.expectRefusal(1);
        made.enter(u"CDU_"_s);
        QCOMPARE(made.shown(), u"ROT_ CDU_"_s);
        made.expect(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"_s +
                    obex::GetFriedlyErrMsg(obex::FolderUnknown));
        made.press("open");
        made.press("del"); // nothing is selected that could go
        made.press("save");
        QVERIFY(!child<QMenu>(made.panel, "mnuFFSsave").isVisible());
        QCOMPARE(made.status(), u"Im Ordner ist nichts markiert."_s);
        QCOMPARE(made.port.handset().phone().faults.requests, 1);
        made.enter(u"ROT_"_s);
        QVERIFY(made.shown().contains(u"FOL_Sounds"_s));
        made.select({u"FOL_Sounds"_s});
        made.press("save");
        QCOMPARE(made.status(), u"Ordner werden nicht gespeichert. Markieren Sie die Dateien darin."_s);
    }

    void keysOfTheList()
    {
        FilePanel made(u"Sounds"_s);
        made.show();
        made.giveName(u"Neu"_s);
        auto& search = child<QLineEdit>(made.panel, "txtSearch");
        made.list().wantSearch();
        QTest::keyClicks(&search, u"gong"_s);
        QTest::keyClick(&search, Qt::Key_Backspace); // a letter, not a folder
        QCOMPARE(made.path() + QString::number(made.list().shownRows()), u"Mobile:\\Sounds1"_s);
        QTest::keyClick(&search, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(made.current(), u"FOL_Neu"_s);
        QCOMPARE(made.status(), u"Ordner Neu angelegt."_s);
        made.key(Qt::Key_Return);
        QCOMPARE(made.path(), u"Mobile:\\Sounds\\Neu"_s);
        QCOMPARE(made.shown(), u"ROT_ CDU_"_s);
        QCOMPARE(made.list().note(), u"Der Ordner ist leer."_s);
        made.key(Qt::Key_Backspace);
        QCOMPARE(made.path(), u"Mobile:\\Sounds"_s);
        made.panel.lvwFFs().setCurrent(made.panel.lvwFFs().indexOfKey(u"FOL_Neu"_s));
        made.giveName(u"R&B"_s);
        made.key(Qt::Key_F2);
        QCOMPARE(made.current(), u"FOL_R&B"_s);
        QCOMPARE(made.status(), u"Neu heißt jetzt R&B."_s);
        QString asked;
        made.inDialog(u"dlgName"_s, [&asked](QWidget& dialog) {
            asked = dialog.findChild<QLabel*>()->text();
            QTest::keyClicks(dialog.findChild<QLineEdit*>(), u"Alt\r"_s);
        });
        made.key(Qt::Key_F2);
        QCOMPARE(asked, u"Neuer &Name für R&&B:"_s);
        QCOMPARE(made.current(), u"FOL_Alt"_s);
        QCOMPARE(made.dialogs, 3);
        made.ask(u"1 ausgewählte Dateien wirklich löschen?"_s, Answer::Yes, Buttons::YesNo);
        made.key(Qt::Key_Delete);
        QVERIFY(!made.shown().contains(u"FOL_"_s));
        QCOMPARE(made.status(), u"Alt gelöscht."_s);
        QCOMPARE(made.current(), u"FIL_Gong.mid"_s); // the next one
        made.panel.lvwFFs().setCurrent(made.panel.lvwFFs().indexOfKey(u"FIL_Piep.wav"_s));
        made.inDialog(u"dlgName"_s, [](QWidget& dialog) {
            QCoreApplication::processEvents();
            QTest::keyClicks(dialog.findChild<QLineEdit*>(), u"Ton\r"_s);
        });
        made.key(Qt::Key_F2);
        QCOMPARE(made.current(), u"FIL_Ton.wav"_s);
        made.giveName(u"Ton"_s);
        made.ask(u"Ohne die Endung .wav erkennt das Telefon die Datei vielleicht nicht mehr.\n\nTrotzdem "
                 u"umbenennen?"_s,
                 Answer::No, Buttons::YesNo);
        made.key(Qt::Key_F2);
        made.key(Qt::Key_F5);
        QCOMPARE(made.current(), u"FIL_Ton.wav"_s);
        made.key(Qt::Key_Backspace);
        QVERIFY(made.shown().contains(u"FOL_Sounds"_s));
    }

    void foldersThatCanNotBeMade()
    {
        FilePanel made(u"Sounds"_s);
        made.show();
        made.giveName(u"Alt"_s);
        made.key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        // A separator would lead into another folder.
        for (const auto& [key, modifiers] : {std::pair<Qt::Key, Qt::KeyboardModifiers>(Qt::Key_F2, {}),
                                             {Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier}}) {
            for (const QString& name : {u"Alt/b"_s, u"Alt\\b"_s, u".."_s}) {
                made.giveName(name);
                made.expect(u"Im Telefon kann nichts so heißen: "_s + name);
                made.key(key, modifiers);
            }
        }
        // Without a record nothing is changed, and one that lacks its end is reported.
        QDirIterator record(made.test.storage, {u"1.record"_s}, QDir::Files, QDirIterator::Subdirectories);
        const std::pair<int, QString> disks[] = {
            {100, u"Im Telefon wurde nichts geändert, weil der bisherige Stand auf diesem Computer nicht "
                  "gesichert werden konnte.\n\n"_s},
            {static_cast<int>(record.nextFileInfo().size()) - 1,
             u"Der frühere Stand ist gesichert. Das Ergebnis"_s},
        };
        for (const auto& [room, text] : disks) {
            made.giveName(u"Neu"_s);
            made.test.dialogs.expectStart(text);
            const SmallDisk disk(room);
            made.key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        }
        QVERIFY(made.shown().contains(u"FOL_Neu"_s)); // of the second try
        QCOMPARE(made.dialogs, 9);
    }

    void aSilentPhoneLeavesTheList()
    {
        FilePanel made(u"Sounds"_s);
        made.show();
        const QString list = made.shown();
        made.setFaults({.silentFrom = 1});
        made.test.dialogs.expectStart(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:"_s);
        made.key(Qt::Key_Backspace);
        QCOMPARE(made.shown(), list);
        made.setFaults();
        made.key(Qt::Key_F5); // connects again
        QVERIFY(made.shown().contains(u"FOL_Sounds"_s));
    }
};

KALMO_TEST(FileSystemPanel)
#include "tst_FileSystemPanel.moc"
