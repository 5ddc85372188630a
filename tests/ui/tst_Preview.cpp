// The preview of pictures, sounds, texts and unknown files.

#include "support/ConverterFolder.h"
#include "support/TestProgram.h"
#include "ui/FilePanel.h"
#include "ui/forms/frmMmc_View.h"

namespace {

QString pictureFile(const TestContext& test, const QString& name, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(test.path(name));
    return test.path(name);
}

const QString natural = u"Anzeige in originaler Größe"_s;

/// The preview of a picture of 100 by 100 pixels.
struct PictureView : TestProgram
{
    PictureView() : TestProgram(u"SL450HX"_s), file(pictureFile(test, u"a.bmp"_s, {100, 100}))
    {
        QVERIFY(view.Form_Present(file, u"a.bmp"_s));
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QCoreApplication::processEvents();
    }
    void closeAfter(
        double seconds, const std::function<void()>& look = [] {})
    {
        hasStayed = false;
        test.clock.after(seconds, [this, look] {
            look();
            view.close();
            hasStayed = view.isVisible();
        });
    }

    QString file;
    ui::frmMmc_View view{program};
    bool hasStayed = false; ///< when it was closed
};

} // namespace

class tst_Preview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictures()
    {
        const QSize screen = QGuiApplication::primaryScreen()->availableSize();
        const Rows<QSize, bool, QString, bool> rows{
            {"small", {100, 100}, false, natural, true},
            {"larger than the screen", screen * 2, false,
             u"1:1 nicht möglich - verkleinerter Darstellung um Faktor "_s, false},
            {"as large as it is", screen * 2, true, natural, true},
        };
        rows.each([&screen](const QSize& size, bool original, const QString& told, bool isNatural) {
            TestProgram made(u"SL450HX"_s);
            ui::frmMmc_View view(made.program);
            QVERIFY(view.Form_Present(pictureFile(made.test, u"a.png"_s, size), u"a.png"_s, original));
            view.show();
            QVERIFY(textOf(view, "sta").startsWith(told));
            QCOMPARE(child<QLabel>(view, "imgBmp").size() == size, isNatural);
            QVERIFY(view.width() >= 274 && view.height() >= 228);
            QVERIFY(view.width() <= screen.width() && view.height() <= screen.height());
            if (!isNatural) {
                click(view, "cmdBmp1zu1");
                QCOMPARE(child<QLabel>(view, "imgBmp").size(), size);
            }
        });
    }

    void picturesFollowTheWindow()
    {
        PictureView made;
        made.view.resize(500, 400);
        QCOMPARE(textOf(made.view, "sta"), u"Größe manuell verändert."_s);
        QVERIFY(child<QLabel>(made.view, "imgBmp").width() > 400);
        made.test.settings.PutIniNumber(u"frmMmc_View"_s, u"WindowState"_s, 2); // it was closed maximised
        ui::frmMmc_View maximised(made.program);
        QVERIFY(maximised.Form_Present(made.file, u"a.bmp"_s));
        maximised.show();
        QVERIFY(QTest::qWaitForWindowExposed(&maximised));
        QVERIFY(maximised.isMaximized() && maximised.width() > 500);
        QCOMPARE(textOf(maximised, "sta"), natural);
        QCOMPARE(child<QLabel>(maximised, "imgBmp").size(), QSize(100, 100));
    }

    /// A form that is closed meanwhile stays, and blocks the window below it, while a reading or the test of
    /// a folder is on the stack.
    void closedMeanwhile()
    {
        PictureView made;
        const auto& zoom = child<QToolButton>(made.view, "cmdBmp1zu1");
        bool wasOn = true;
        made.closeAfter(0, [&] { wasOn = zoom.isEnabled(); });
        click(made.view, "cmdBmp1zu1");
        QVERIFY(!wasOn && made.hasStayed && zoom.isEnabled() && !made.view.isVisible());

        const QString target = made.test.path(u"copy.bmp"_s);
        made.test.dialogs.expectSaveFile({.title = u"Kalmo - Datei auf Festplatte speichern"_s,
                                          .folder = made.test.sy.DefUserExpRoot,
                                          .name = u"a.bmp"_s,
                                          .types = {{u"Quelldateityp (*.bmp)"_s, {u"*.bmp"_s}}},
                                          .confirmOverwrite = true},
                                         target);
        made.test.dialogs.expect(Icon::Information, u"Datei unter %1 gespeichert."_s.arg(target));
        QVERIFY(made.view.Form_Present(made.file, u"../a.bmp"_s)); // no way to another folder
        made.view.show();
        made.closeAfter(0.02);
        click(made.view, "cmdSave");
        QVERIFY(made.hasStayed && !made.view.isVisible());
        QCOMPARE(TestContext::contentOf(target), TestContext::contentOf(made.file));
    }

    void unreadablePicture()
    {
        TestProgram made(u"SL450HX"_s);
        ui::frmMmc_View view(made.program);
        const QString bad = made.test.makeFile(u"bad.gif"_s, "GIF89a");
        made.test.dialogs.expect(
            Icon::Critical, u"Beim Anzeigen der Datei "_s + bad +
                                u" ist ein Fehler aufgetreten. Bitte wiederholen Sie die letzte Aktion."_s);
        QVERIFY(!view.Form_Present(bad, u"bad.gif"_s));
    }

    void soundsAndTexts()
    {
        const Rows<QString, bool> names{{"", u"a.MID"_s, true},   {"", u"b.txt"_s, true},
                                        {"", u"c.JPEG"_s, false}, {"", u"d.L22"_s, false},
                                        {"", u".png"_s, true},    {"", u"png"_s, false}};
        for (const auto& [name, isSupported] : names)
            QCOMPARE(ui::frmMmc_View::IsSupported(name), isSupported);

        TestProgram made(u"SL450HX"_s);
        ConverterFolder converters(made.test);
        converters.replace(u"sox"_s, "case \"$3\" in *long*) exec sleep 1000;; esac; exit 1");
        for (const auto& [name, plays] :
             Rows<QString, bool>{{"plays at once", u"long.WAV"_s, true}, {"can't", u"b.mp3"_s, false}}) {
            ui::frmMmc_View view(made.program);
            QVERIFY(view.Form_Present(made.test.makeFile(name, "x"), name));
            view.show();
            if (plays)
                QTRY_VERIFY(child<QPushButton>(view, "cmdSndStop").isEnabled());
            else
                QTRY_VERIFY(child<QLabel>(view, "lblMidiPlaybackErr").isVisible());
            view.close();
            QVERIFY(child<QPushButton>(view, "cmdSndStart").isEnabled());
        }
        ui::frmMmc_View view(made.program);
        for (const QByteArray bytes : {"Gr\xC3\xBC\xC3\x9F\x65 \xC3\xA9", "Gr\xFC\xDF\x65 \xE9"}) {
            QVERIFY(view.Form_Present(made.test.makeFile(u"t.TXT"_s, bytes), u"t.TXT"_s));
            QCOMPARE(child<QPlainTextEdit>(view, "txtText").toPlainText(), u"Grüße é"_s);
        }
        QVERIFY(view.Form_Present(made.test.path(u"gone.txt"_s), u"gone.txt"_s));
        QCOMPARE(child<QPlainTextEdit>(view, "txtText").toPlainText(), QString());
        made.test.dialogs.agreeToAll(made.test.path(u"target.txt"_s));
        click(view, "cmdSave");
        QVERIFY(!QFile::exists(made.test.path(u"target.txt"_s)));
    }

    /// Of other files, from the phone on: what they are, and the way to the disk.
    void unknownFiles()
    {
        const Rows<QString, int, QString> rows{
            {"ringtone", u"a.L22"_s, 120000,
             u"Art: Klingelton für Telefone (G.722), 0:15 min\nGröße: 117.2kB"_s},
            {"the same", u"a.722"_s, 8000, u"Art: Klingelton für Telefone (G.722), 0:01 min\nGröße: 7.8kB"_s},
            {"recording", u"a.VMO"_s, 100, u"Art: Sprachaufnahme eines Telefons\n"_s},
            {"other", u"a.bin"_s, 100, u"Art: "_s}};
        FilePanel made(u"Sounds"_s, {}, u"SL450HX"_s);
        made.desktop.knowsAll = false;
        for (const auto& [name, size, told] : rows) {
            QVERIFY(made.mmc->PutBytes({.name = name, .bytes = QByteArray(size, 'x'), .modified = {}},
                                       made.progress.all()));
            made.press("refresh");
            const bool isRingtone = size >= 8000;
            made.test.dialogs.expectStart(
                isRingtone ? u"Aus urheberrechtlichen Gründen"_s : u"Für die Datei "_s,
                isRingtone ? Buttons::Ok : Buttons::YesNo, isRingtone ? Answer::Ok : Answer::No);
            QString shown;
            made.inDialog(u"frmMmc_View"_s, [&shown](QWidget& view) {
                shown = textOf(view, "lblUnknown");
                view.close();
            });
            made.enter(u"FIL_"_s + name);
            QVERIFY2(shown.startsWith(told), qPrintable(shown));
        }
    }
};

KALMO_TEST(tst_Preview)
#include "tst_Preview.moc"
