// Files that are dragged between the file system panel and the desktop, and the small pictures beside them.

#include "media/Failure.h"
#include "support/TestProgram.h"
#include "ui/FilePanel.h"
#include "ui/panels/Thumbnails.h"

namespace {

/// Drags these onto a row of the list and drops them. False if the list does not take them.
bool drop(FilePanel& made, const QMimeData& content, const QString& key)
{
    QWidget* area = made.list().viewport();
    const QModelIndex index = made.list().model()->index(made.panel.lvwFFs().indexOfKey(key), 0);
    const QPoint at = made.list().visualRect(index).center();
    QDragEnterEvent enter(at, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &enter);
    QDropEvent event(at, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &event);
    return enter.isAccepted() && event.isAccepted();
}

} // namespace

class tst_DraggedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Through the questions and rules of the upload button, into the folder below the mouse.
    void filesFromTheDesktop()
    {
        FilePanel made({}, {}, u"SL450HX"_s);
        made.show();
        QMimeData content;
        content.setText(u"Text"_s);
        QVERIFY(!drop(made, content, u"FOL_Sounds"_s));
        content.setUrls({QUrl::fromLocalFile(made.test.storage)}); // a folder
        QVERIFY(!drop(made, content, u"FOL_Sounds"_s));
        QCOMPARE(made.status(), u"Ordner werden nicht gesendet."_s);
        content.setUrls({QUrl::fromLocalFile(made.test.makeFile(u"Neu.L22"_s, "neu")),
                         QUrl::fromLocalFile(made.test.storage)});
        made.test.dialogs.expect(media::messageFor({media::Fault::NoFolder}));
        QVERIFY(drop(made, content, u"ROT_"_s)); // the root takes none
        QCoreApplication::processEvents();
        made.test.dialogs.finish();

        made.inDialog(u"dlgGiven"_s, [](QWidget& dialog) {
            QTest::keyClick(dialog.findChild<QDialogButtonBox*>()->buttons().first(), Qt::Key_Space);
        });
        QVERIFY(drop(made, content, u"FOL_Sounds"_s));
        made.panel.hide(); // the user is in another section by then
        QCoreApplication::processEvents();
        QCOMPARE(made.dialogs, 0);
        made.panel.show();
        QVERIFY(drop(made, content, u"FOL_Sounds"_s));
        QCoreApplication::processEvents();
        QCOMPARE(made.dialogs, 1);
        QCOMPARE(made.status().section(u',', 0, 0), u"Neu.L22 gesendet"_s);
        QVERIFY(made.status().endsWith(u" s. 1 ausgelassen. Ordner werden nicht gesendet."_s));
        QVERIFY(made.shown().contains(u"FOL_Sounds"_s)); // still the root
        made.enter(u"FOL_Sounds"_s);
        QVERIFY(made.shown().contains(u"FIL_Neu.L22"_s));

        content.setUrls({QUrl::fromLocalFile(made.test.makeFile(u"Nie.L22"_s, "nie"))});
        for (const auto answer : {Answer::No, Answer::Yes}) {
            made.test.dialogs.expect(
                question(
                    u"Die Dateien sind noch nicht übertragen.\n\nSollen Ihre Angaben verworfen werden?"_s,
                    u"Zum Telefon übertragen"_s),
                answer);
        }
        bool stayed = false;
        made.inDialog(u"dlgGiven"_s, [&stayed](QWidget& dialog) {
            QTest::keyClick(&child<QCheckBox>(dialog, "chkTrimWav"), Qt::Key_Space);
            QTest::keyClick(&dialog, Qt::Key_Escape);
            stayed = dialog.isVisible();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QVERIFY(drop(made, content, u"ROT_"_s));
        QCoreApplication::processEvents();
        QVERIFY(stayed && made.dialogs == 2);
        QVERIFY(!made.shown().contains(u"FIL_Nie.L22"_s));
    }

    /// Nothing is transferred while the mouse moves, and nothing twice.
    void filesToTheDesktop()
    {
        FilePanel made(u"Sounds"_s);
        made.show();
        made.select({u"ROT_"_s});
        QVERIFY(!made.list().dragContent());
        made.select({u"FIL_Gong.mid"_s, u"FIL_Piep.wav"_s, u"CDU_"_s});
        made.setFaults({});
        const QModelIndex row = made.list().model()->index(0, 0);
        QVERIFY(made.list().dragEnabled() && row.flags().testFlag(Qt::ItemIsDragEnabled));
        const auto content = made.list().dragContent();
        QVERIFY(content->hasUrls());
        QCOMPARE(content->urls(), QList<QUrl>());
        QCOMPARE(made.requests(), 0);
        Q_EMIT made.list().dragDropped();
        const QList<QUrl> urls = content->urls();
        const int requests = made.requests();
        QVERIFY(requests > 0 && content->urls() == urls);
        QCOMPARE(made.requests(), requests);
        QStringList names;
        for (const QUrl& url : urls) {
            names.append(url.fileName());
            QCOMPARE(TestContext::contentOf(url.toLocalFile()), made.held(url.fileName()));
        }
        QCOMPARE(names, QStringList({u"Gong.mid"_s, u"Piep.wav"_s}));
    }

    /// Pictures show as what they are once they were saved, by no request more.
    void thumbnails()
    {
        FilePanel made(u"Pictures"_s);
        made.enter(u"FOL_Urlaub 2026"_s);
        const auto shown = [&] {
            const QModelIndex index =
                made.list().model()->index(made.panel.lvwFFs().indexOfKey(u"FIL_Stufen.jpg"_s), 0);
            return index.data(Qt::DecorationRole).value<QIcon>().pixmap(28).toImage();
        };
        const QImage before = shown();
        made.select({u"FIL_Stufen.jpg"_s});
        made.expectTarget();
        made.save(1);
        made.setFaults({});
        QTRY_VERIFY(shown() != before);
        QCOMPARE(made.requests(), 0);
    }

    /// Bitmaps of one size in pixels have one size in bytes.
    void aReplacedPictureHasItsOwnThumbnail()
    {
        const TestContext test;
        obex::tObxDirEntry entry;
        entry.kind = obex::EntryKind::File;
        entry.name = u"Bild.bmp"_s;
        const obex::PhonePath folder(u"Pictures"_s);
        ui::Thumbnails thumbnails(nullptr);
        QImage before;
        for (const Qt::GlobalColor color : {Qt::red, Qt::blue}) {
            QImage image(32, 32, QImage::Format_RGB32);
            image.fill(color);
            const QString path = test.path(color == Qt::red ? u"rot.bmp"_s : u"blau.bmp"_s);
            QVERIFY(image.save(path));
            entry.size = static_cast<qint32>(QFileInfo(path).size());
            thumbnails.show(folder, {entry});
            thumbnails.note(folder.below(entry.name), entry.size, path);
            const auto shown = [&] { return thumbnails.of(entry.name).pixmap(16).toImage(); };
            QTRY_VERIFY(!shown().isNull() && shown() != before);
            QCOMPARE(shown().pixelColor(8, 8), QColor(color));
            before = shown();
        }
        for (const int day : {1, 2}) { // a file of another day is another file
            entry.modified = QDateTime(QDate(2026, 1, day), QTime(12, 0));
            thumbnails.show(folder, {entry});
            QCOMPARE(thumbnails.of(entry.name).isNull(), day == 2);
        }
    }
};

KALMO_TEST(tst_DraggedFiles)
#include "tst_DraggedFiles.moc"
