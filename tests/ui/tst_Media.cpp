// Pictures and sounds on their way into the phone: the panel of an upload, and what is sent.

#include "support/ConverterFolder.h"
#include "support/Melodies.h"
#include "support/TestProgram.h"
#include "support/Tones.h"
#include "ui/FilePanel.h"
#include "ui/forms/frmMmcOpenControls.h"

using media::UploadKind;
using UploadPanel = ui::frmMmcOpenControls;

namespace {

/// The file system panel, with converters.
struct Surroundings : FilePanel
{
    explicit Surroundings(const QString& folder = {}) : FilePanel(folder, {}, u"SL450HX"_s) {}

    QString picture(const QString& name, QSize size) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(test.path(name));
        return test.path(name);
    }
    QString sound(const QString& name, int seconds) const
    {
        return test.makeFile(name, wav(tone(1000, -6, seconds * soundRate)));
    }

    ConverterFolder converters{test};
};

} // namespace

class tst_Media : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void picturesInThePanel()
    {
        const Rows<UploadKind, int, QSize, QString, bool> rows{
            {"small ones as they are", UploadKind::Pictures, 9, {128, 160}, u"Originalgröße"_s, true},
            {"tall ones are made smaller", UploadKind::Pictures, 12, {150, 200}, u"verkleinert"_s, true},
            {"without JPEG", UploadKind::ClipPictures, 5, {128, 100}, u"Originalgröße"_s, false},
        };
        for (const auto& [kind, phoneType, shown, caption, asJpeg] : rows) {
            Surroundings made;
            UploadPanel panel(made.program, {.kind = kind, .phoneType = phoneType, .freeBytes = 1000000});
            panel.show();
            const QSize size = media::pictureSize(phoneType, kind);
            QVERIFY(textOf(panel, "label1")
                        .startsWith(u"Bilder werden grundsätzlich auf %1x%2 Pixel "_s.arg(size.width())
                                        .arg(size.height())));
            QCOMPARE(child<QComboBox>(panel, "cmbJPGCompression").isVisible(), asJpeg);
            panel.showSelection({made.picture(u"a.png"_s, {1000, 500})});
            QCOMPARE(panel.TypeOfSelFile(), UploadPanel::Picture);
            auto& preview = child<QLabel>(panel, "imgPrev");
            QTRY_VERIFY(!preview.pixmap(Qt::ReturnByValue).isNull());
            QCOMPARE(preview.size(), shown);
            QCOMPARE(child<QGroupBox>(panel, "fraBmpPrev").title(), u"Vorschau (%1)"_s.arg(caption));
            QVERIFY(textOf(panel, "lblResult").contains(u"Danach sind im Telefon noch"));
            const auto green = [&] {
                return preview.pixmap(Qt::ReturnByValue).toImage().pixelColor(2, 2).green();
            };
            QVERIFY(green() < 40); // red from edge to edge, or with white above and below
            QTest::keyClick(&child<QRadioButton>(panel, "optInside"), Qt::Key_Space);
            QVERIFY(green() > 200);

            child<QComboBox>(panel, "cmbJPGCompression").setCurrentIndex(2);
            const auto choice = panel.GetSelFiles({made.test.path(u"a.png"_s)});
            QVERIFY(choice && choice->options.quality == 100 && choice->options.fit == media::Fit::Inside);
            made.test.dialogs.expect(
                Icon::Information,
                u"Datei wurde nicht im zugehörigen Ordner ausgewählt - Auswahl ungültig."_s);
            QVERIFY(!panel.GetSelFiles({made.test.path(u"none.png"_s)}));
        }
    }

    void soundsInThePanel()
    {
        Surroundings made;
        made.converters.replace(u"sox"_s, "case \"$2\" in -D) echo 20.4; exit;; esac; exec sleep 1000");
        UploadPanel panel(made.program, {.kind = UploadKind::Sounds, .phoneType = 12});
        panel.show();
        panel.showSelection({made.sound(u"a.wav"_s, 21)});
        QTRY_COMPARE(textOf(panel, "lblSndLength"), u"Länge: 0:20 min"_s);
        QVERIFY(textOf(panel, "lblResult").contains(u"163"));
        auto& trim = child<QCheckBox>(panel, "chkTrimWav");
        auto& seconds = child<QComboBox>(panel, "cmbTrimWav");
        QVERIFY(!seconds.isEnabled());
        QTest::keyClick(&trim, Qt::Key_Space);
        QVERIFY(seconds.isEnabled());
        QCOMPARE(panel.GetSelFiles({made.test.path(u"a.wav"_s)})->options.trimSeconds, 15);
        QVERIFY(textOf(panel, "lblResult").contains(u"120"));

        auto& start = child<QPushButton>(panel, "cmdSndStart");
        auto& stop = child<QPushButton>(panel, "cmdSndStop");
        auto& timer = child<QTimer>(panel, "tmrStopWav");
        seconds.setCurrentText(u"999999999"_s);
        QTest::keyClick(&start, Qt::Key_Space);
        QVERIFY(!start.isEnabled() && stop.isEnabled());
        QCOMPARE(timer.interval(), 24 * 3600 * 1000);
        timer.start(0); // where the trimmed sound will end
        QTRY_VERIFY(start.isEnabled() && !stop.isEnabled());
        for (const QString& wrong : {u"0"_s, u"1.5"_s, u"viel"_s}) {
            seconds.setCurrentText(wrong);
            made.test.dialogs.expect(Icon::Information,
                                     u"Bitte geben Sie die Sekunden als ganze Zahl größer Null ein."_s);
            QTest::keyClick(&start, Qt::Key_Space);
            QVERIFY(start.isEnabled()); // the preview stops
        }
        seconds.setCurrentText(u"0"_s);
        QCOMPARE(textOf(panel, "lblResult"),
                 u"Bitte geben Sie die Sekunden als ganze Zahl größer Null ein."_s);
        seconds.setCurrentText(u"30"_s); // a choice while the sound plays moves its end
        QTest::keyClick(&start, Qt::Key_Space);
        seconds.setCurrentText(u"9"_s);
        QVERIFY(timer.isActive() && timer.interval() > 0 && timer.interval() <= 9000);
        QTest::keyClick(&trim, Qt::Key_Space);
        QVERIFY(!timer.isActive() && stop.isEnabled());
        QTest::keyClick(&stop, Qt::Key_Space);
        QTest::keyClick(&trim, Qt::Key_Space);
        seconds.setCurrentText(u"viel"_s);
        QCOMPARE(panel.GetSelFiles({made.test.path(u"a.wav"_s)})->options.trimSeconds, 15); // no number
        seconds.setCurrentText(u"0"_s); // would be the whole sound
        made.test.dialogs.expectStart(u"Bitte geben Sie die Sekunden"_s);
        QVERIFY(!panel.GetSelFiles({made.test.path(u"a.wav"_s)}));

        made.converters.replace(u"sox"_s, "exec sleep 1000"); // also for the length
        panel.showSelection({made.sound(u"b.wav"_s, 1)});
        QCOMPARE(textOf(panel, "lblSndLength"), u"Länge wird ermittelt..."_s);
        auto& limit = child<QTimer>(panel, "tmrLimit");
        QVERIFY(limit.isActive() && limit.interval() == 30000);
        limit.start(0);
        QTRY_COMPARE(textOf(panel, "lblSndLength"), u"Die Länge ist nicht bekannt."_s);
    }

    /// The panel shows the bytes left free for several files, too, and for a melody by its later size.
    void sizesInThePanel()
    {
        Surroundings made;
        made.converters.replace(u"sox"_s, "case \"$3\" in *b.mp3) echo 10;; *) exit 1;; esac");
        const QByteArray melody = midiFile(1, {"00 FF 2F 00", scale(3)});
        const QString melodySize =
            u"Größe im Telefon: 0.1kB (48 Bytes)\nDanach sind im Telefon noch 97.6kB frei."_s;
        const QStringList sources{made.test.makeFile(u"a.L22"_s, QByteArray(1000, 'x')),
                                  made.test.makeFile(u"b.mp3"_s, "x"),
                                  made.test.makeFile(u"c.wav"_s, "x"),
                                  made.test.makeFile(u"d.mid"_s, melody),
                                  made.test.makeFile(u"e.mid"_s, "x"),
                                  made.picture(u"f.png"_s, {30, 20}),
                                  made.picture(u"g.bmp"_s, {20, 30})};
        const Rows<UploadKind, int, int, QString> rows{
            // first file, number of files, result
            {"a codes' file", UploadKind::Sounds, 0, 1,
             u"Größe im Telefon: 1.0kB (1,000 Bytes)\nDanach sind im Telefon noch 96.7kB frei."_s},
            {"sounds", UploadKind::Sounds, 0, 3,
             u"1 von 3 Dateien passen nicht und werden ausgelassen.\nGröße im Telefon: 79.1kB (81,000 "
             u"Bytes)\n"
             "Danach sind im Telefon noch 18.6kB frei."_s},
            {"a melody", UploadKind::Melodies, 3, 1, melodySize},
            {"melodies", UploadKind::Melodies, 3, 2,
             u"1 von 2 Dateien passen nicht und werden ausgelassen.\n"_s + melodySize},
            {"a bad melody", UploadKind::Melodies, 4, 1,
             u"Diese Datei lässt sich nicht umwandeln und wird nicht übertragen."_s},
            {"no sound", UploadKind::Sounds, 3, 1, {}},
            {"no melody", UploadKind::Melodies, 0, 1, {}},
            {"no picture", UploadKind::Pictures, 1, 1, {}},
            {"pictures", UploadKind::Pictures, 5, 2,
             u"Größe im Telefon: 120.1kB (122,988 Bytes)\nIm Telefon sind nur noch 97.7kB frei."_s},
        };
        for (const auto& [kind, first, count, told] : rows) {
            UploadPanel panel(
                made.program,
                {.kind = kind, .phoneType = kind == UploadKind::Sounds ? 12 : 5, .freeBytes = 100000});
            panel.show();
            panel.showSelection(sources.mid(first, count));
            QTRY_COMPARE(textOf(panel, "lblResult"), told);
            const bool isUnfit = !media::isFit(sources[first], kind);
            QCOMPARE(textOf(panel, "fraPrevDesc").startsWith(u"Diese Datei passt nicht in den Ordner"_s),
                     isUnfit);
            QCOMPARE(panel.TypeOfSelFile() == UploadPanel::NoneOrSeveral,
                     kind != UploadKind::Melodies || count > 1 || isUnfit);
        }
        QCOMPARE(workLeftIn(made.test), QStringList());

        made.converters.replace(u"m9b"_s, {}); // no fault of the files
        UploadPanel panel(made.program, {.kind = UploadKind::Melodies, .phoneType = 5});
        panel.showSelection({sources[3]});
        QTRY_VERIFY(textOf(panel, "lblResult").startsWith(u"Klingetonkonverter "_s));
    }

    void badFilesInThePanel()
    {
        Surroundings made;
        UploadPanel pictures(made.program, {.kind = UploadKind::Pictures, .phoneType = 12});
        const QString bad = made.test.makeFile(u"bad.jpg"_s, "hello");
        bool isTold = false;
        made.test.dialogs.expect(
            Icon::Exclamation,
            u"Die Datei bad.jpg ist fehlerhaft und kann nicht geladen werden. Sie sollten diese "
            u"Datei überprüfen und ggf. löschen."_s);
        made.test.dialogs.whileShown([&isTold] { isTold = true; });
        pictures.showSelection({bad});
        QTRY_VERIFY(isTold);

        UploadPanel melodies(made.program, {.kind = UploadKind::Melodies, .phoneType = 5});
        melodies.show();
        for (const auto& [bytes, isTooLarge] :
             Rows<int, bool>{{"fits", 32000, false}, {"too large", 32001, true}}) {
            melodies.showSelection({made.test.makeFile(u"%1.mid"_s.arg(bytes), QByteArray(bytes, 'x'))});
            QCOMPARE(melodies.TypeOfSelFile(), UploadPanel::Midi);
            QCOMPARE(child<QLabel>(melodies, "lblMidiToLarge").isVisible(), isTooLarge);
            QCOMPARE(child<QPushButton>(melodies, "cmdSndStart").isVisible(), !isTooLarge);
        }
        melodies.showSelection({made.test.makeFile(u"x.mid"_s, "hello")});
        QTest::keyClick(&child<QPushButton>(melodies, "cmdSndStart"), Qt::Key_Space);
        QVERIFY(child<QLabel>(melodies, "lblMidiPlaybackErr").isVisible());
        QVERIFY(textOf(melodies, "lblPlaybackAdvice").contains(u"timidity"));
        melodies.showSelection({u"a.mid"_s, u"b.mid"_s});
        QCOMPARE(melodies.TypeOfSelFile(), UploadPanel::NoneOrSeveral);
    }

    /// From the button to the phone's memory.
    void uploadsConvert()
    {
        Surroundings made;
        made.test.dialogs.expect(
            Icon::Information,
            u"In den gewählten Ordner können keine Dateien übertragen werden. Verwenden Sie "
            u"folgende Ordner als Ziele:\n- Clip Pictures oder Pictures für Bilder\n- Sounds für "
            u"Klingeltöne"_s);
        made.press("open");

        made.enter(u"FOL_Pictures"_s);
        made.choose({made.picture(u"eins.png"_s, {400, 300}), made.test.makeFile(u"defekt.jpg"_s, "x"),
                     made.picture(u"drei.bmp"_s, {30, 20})});
        made.test.dialogs.expectStart(u"Die Datei defekt.jpg ist fehlerhaft"_s);
        made.progress.panel.texts.clear();
        made.progress.bar.steps.clear();
        made.press("open");
        made.requireOneBar(); // for both stages
        QVERIFY(made.progress.panel.texts.contains(u"1 von 3: eins.png wird umgewandelt..."_s));
        QVERIFY(made.progress.panel.texts.contains(u"3 von 3: drei.bmp wird umgewandelt..."_s));
        QVERIFY(!made.progress.panel.texts.filter(u"2 von 2: Übertrage drei.jpg..."_s).isEmpty());
        for (const QString& name : {u"eins.jpg"_s, u"drei.jpg"_s})
            QCOMPARE(QImage::fromData(made.held(name), "JPG").size(), QSize(240, 320));
        QCOMPARE(workLeftIn(made.test), QStringList());

        made.progress.cancel.checked = true; // nothing is sent
        const QString before = made.shown();
        made.press("open");
        made.progress.cancel.checked = false;
        QCOMPARE(made.status(), u"Nichts gesendet (abgebrochen)."_s);
        made.choose({made.test.path(u"defekt.jpg"_s)});
        made.test.dialogs.expectStart(u"Die Datei defekt.jpg ist fehlerhaft"_s);
        made.press("open");
        QCOMPARE(made.status(), u"Nichts gesendet. 1 ausgelassen."_s);
        made.press("refresh");
        QCOMPARE(made.shown(), before);

        made.enter(u"ROT_"_s);
        made.enter(u"FOL_Sounds"_s);
        made.choose({made.test.makeFile(u"kaputt.wav"_s, "x"), made.sound(u"zwanzig Zeichen lang.wav"_s, 1)});
        made.expect(u"Die Umwandlung in eine telefongerechte 722-Audio-Datei ist gescheitert.\nkaputt.wav"_s);
        made.press("open");
        QCOMPARE(made.held(u"zwanzig Zeichen .722"_s).size(), 8000);
    }
};

KALMO_TEST(tst_Media)
#include "tst_Media.moc"
