// Pictures and sounds from a terminal: what is printed, how it ends, and what is in the phone then.

#include "Shell.h"
#include "support/ConverterFolder.h"
#include "support/MediaFamilies.h"
#include "support/Melodies.h"
#include "support/Rows.h"
#include "support/TestProgram.h"
#include "support/Tones.h"

#include <QJsonArray>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::cli;
using namespace kalmo::tests;

namespace {

struct MediaShell : Handset
{
    explicit MediaShell(const QString& model = u"SL450HX"_s, const handset::Options& options = {})
        : Handset([&] {
              handset::Options all = options;
              all.model = model;
              return all;
          }())
    {
        test.sy.Paths.Exe = test.platform.exePath;
        file(u"tone.wav"_s, wav(tone(1000, -6, 3 * soundRate)));
        file(u"song.mid"_s, midiFile(1, {scale(5)}));
        file(u"photo.bmp"_s, picture(300, 200));
        file(u"there"_s, "mine");
        file(u"bad.wav"_s, "hello");
        file(u"bad.bmp"_s, "hello");
        file(u"bad.mid"_s, "hello");
        file(u"large.mid"_s, QByteArray(32001, 'x'));
    }
    ConverterFolder converters{test};
};

} // namespace

class tst_MediaCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAPhone();
    void toEachFamily();
    void batches();
};

void tst_MediaCommands::withoutAPhone()
{
    const auto nothing = [](MediaShell&) {};
    Rows<QString, ExitStatus, QString, QString, std::function<void(MediaShell&)>> rows{
        {"sound",
         u"media sound tone.wav out.L22"_s,
         ExitDone,
         u"{'bytes':24000,'file':'out.L22','seconds':3}"_s,
         {},
         nothing},
        {"cut",
         u"media sound tone.wav out.722 --trim 2"_s,
         ExitDone,
         u"{'bytes':16000,'file':'out.722','seconds':2}"_s,
         {},
         nothing},
        {"whole",
         u"media sound tone.wav out.L22 --trim 0"_s,
         ExitDone,
         u"{'bytes':24000,'file':'out.L22','seconds':3}"_s,
         {},
         nothing},
        {"melody", u"media melody song.mid out"_s, ExitDone, u"{'bytes':60,'file':'out'}"_s, {}, nothing},
        {"picture",
         u"media picture photo.bmp out.bmp --family 5 --clip"_s,
         ExitDone,
         u"{'bits':24,'bytes':38454,'file':'out.bmp','height':100,'width':128}"_s,
         {},
         nothing},
        {"of 32 bits",
         u"media picture photo.bmp out.bmp --family 13"_s,
         ExitDone,
         u"{'bits':32,'bytes':307254,'file':'out.bmp','height':320,'width':240}"_s,
         {},
         nothing},
        {"over a file by force",
         u"media melody song.mid there --force"_s,
         ExitDone,
         u"{'bytes':60,'file':'there'}"_s,
         {},
         nothing},
        {"over a file",
         u"media melody song.mid there"_s,
         ExitRefused,
         {},
         u"kalmoctl: Replace there?\nNobody can answer here; run this on a terminal, or say --yes.\n"
         "kalmoctl: there stays as it is.\n"_s,
         nothing},
        {"over itself",
         u"--yes media melody song.mid ./song.mid"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: song.mid can't be its own result.\n"_s,
         nothing},
        {"no file",
         u"media sound none.wav out"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: there is no file none.wav.\n"_s,
         nothing},
        {"no number",
         u"media sound tone.wav out --trim 1.5"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: --trim takes whole seconds, or 0 for the whole sound.\n"_s,
         nothing},
        {"no family",
         u"media picture photo.bmp out.jpg"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: say for which --family of handsets, 5, 6 or 8 to 13.\n"_s,
         nothing},
        {"one without JPEG",
         u"media picture photo.bmp out.jpg --family 6"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: family 6 takes no JPEG; end the result in .bmp.\n"_s,
         nothing},
        {"another form",
         u"media picture photo.bmp out.png --family 8"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: out.png has to end in .jpg or .bmp.\n"_s,
         nothing},
        {"no sound",
         u"media sound bad.wav out"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: bad.wav can't be converted to a sound for handsets: RIFF header not found.\n"_s,
         nothing},
        {"no melody",
         u"media melody bad.mid out"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: bad.mid can't be converted to a melody for handsets: this is no MIDI file.\n"_s,
         nothing},
        {"too much of one",
         u"media melody large.mid out"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: large.mid is larger than 32000 bytes, the most that handsets take.\n"_s,
         nothing},
        {"no picture",
         u"media picture bad.bmp out.bmp --family 8"_s,
         ExitWrongUse,
         {},
         u"kalmoctl: bad.bmp can't be read as a picture: it is no picture that is known here.\n"_s,
         nothing},
        {"nowhere to write",
         u"media melody song.mid none/out"_s,
         ExitFailed,
         {},
         u"kalmoctl: none/out can't be written: No such file or directory.\n"_s,
         nothing},
        {"no converter",
         u"media sound tone.wav out"_s,
         ExitFailed,
         {},
         u"kalmoctl: the converter g722demo is missing; install the package \"kalmo\".\n"_s,
         [](MediaShell& shell) { shell.converters.replace(u"g722demo"_s, {}); }},
    };
    for (const auto& [line, status, value, told, prepare] : rows) {
        MediaShell shell;
        prepare(shell);
        const QStringList before = QDir(shell.test.folder.path()).entryList(QDir::Files);
        QCOMPARE(shell(u"--json --quiet "_s + line), status);
        QCOMPARE(shell.value().replace(u'"', u'\''), value);
        QCOMPARE(shell.told, told);
        QCOMPARE(QDir(shell.test.folder.path()).entryList(QDir::Files) == before, !value.contains(u"out"));
        QCOMPARE(TestContext::contentOf(shell.test.path(u"there"_s)) == "mine", !line.contains(u"--force"));
        QCOMPARE(workLeftIn(shell.test), QStringList());
    }
}

/// Each family gets its own form, by the folder where files of their kind belong.
void tst_MediaCommands::toEachFamily()
{
    for (const auto& [model, whole, clip, takesSounds] : mediaFamilies) {
        MediaShell shell(model);
        const QString put = u"--quiet files put --convert"_s;
        QVERIFY2(shell(put + u" photo.bmp"_s) == ExitDone, qPrintable(shell.told));
        QVERIFY2(shell(put + u" photo.bmp --to"_s, {u"Clip Pictures"_s}) == ExitDone, qPrintable(shell.told));
        QVERIFY2(shell(put + (takesSounds ? u" tone.wav"_s : u" song.mid"_s)) == ExitDone,
                 qPrintable(shell.told));
        const QString picture = takesSounds ? u"photo.jpg"_s : u"photo.bmp"_s;
        const QString sound = takesSounds ? u"tone.722"_s : u"song.mid"_s;
        const auto held = [&](const QString& path) {
            QDir(shell.test.folder.path()).mkpath(u"got"_s);
            QFile::remove(shell.test.path(u"got/"_s + QFileInfo(path).fileName()));
            shell(u"files get -o got"_s, {path});
            return TestContext::contentOf(shell.test.path(u"got/"_s + QFileInfo(path).fileName()));
        };
        QCOMPARE(formOf(held(u"Pictures/"_s + picture)), whole);
        QCOMPARE(formOf(held(u"Clip Pictures/"_s + picture)), clip);
        QCOMPARE(held(u"Sounds/"_s + sound).size(), takesSounds ? 24000 : 60);
        QCOMPARE(shell.port.handset().violations(), QStringList());
        QCOMPARE(workLeftIn(shell.test), QStringList());
    }
}

void tst_MediaCommands::batches()
{
    const auto nothing = [](MediaShell&) {};
    Rows<QString, ExitStatus, QString, QString, std::function<void(MediaShell&)>> rows{
        {"what is unfit is passed over", u"bad.wav tone.wav song.mid --trim 1"_s, ExitWrongUse,
         u"bad.wav:-:false tone.wav:tone.722:true song.mid:-:false"_s,
         u"kalmoctl: bad.wav can't be converted to a sound for handsets: RIFF header not found.\n"
         "kalmoctl: song.mid is of a kind that the folder does not take.\n"_s,
         nothing},
        {"names that are cut alike", u"a-name-of-sixteen-one.wav a-name-of-sixteen-two.wav"_s, ExitWrongUse,
         u"a-name-of-sixteen-one.wav:a-name-of-sixtee.722:true a-name-of-sixteen-two.wav:a-name-of-sixtee.722:false"_s,
         u"kalmoctl: a-name-of-sixteen-two.wav would replace another one of these files, "
         "/Sounds/a-name-of-sixtee.722.\n"_s,
         [](MediaShell& shell) {
             for (const QString& name : {u"a-name-of-sixteen-one.wav"_s, u"a-name-of-sixteen-two.wav"_s})
                 shell.file(name, wav(tone(500, -6, 100)));
         }},
        {"without commas",
         u"x,;y.wav"_s,
         ExitDone,
         u"x,;y.wav:xy.722:true"_s,
         {},
         [](MediaShell& shell) { shell.file(u"x,;y.wav"_s, wav(tone(500, -6, 100))); }},
        {"codes go as they are",
         u"c.L22"_s,
         ExitDone,
         u"c.L22:c.L22:true"_s,
         {},
         [](MediaShell& shell) { shell.file(u"c.L22"_s, "codes"); }},
        {"kinds of two folders", u"tone.wav photo.bmp"_s, ExitWrongUse, u""_s,
         u"kalmoctl: only Pictures, Clip Pictures and Sounds take converted files; name one of them by --to.\n"_s,
         nothing},
        {"a folder of another kind", u"--to Sounds/new tone.wav"_s, ExitWrongUse, u""_s,
         u"kalmoctl: only Pictures, Clip Pictures and Sounds take converted files; name one of them by --to.\n"_s,
         nothing},
        {"a converter is missing", u"c.L22 tone.wav photo.bmp --to Sounds"_s, ExitFailed,
         u"c.L22:c.L22:false tone.wav:-:false photo.bmp:-:false"_s,
         u"kalmoctl: the converter g722demo is missing; install the package \"kalmo\".\n"
         "kalmoctl: c.L22 was not sent.\nkalmoctl: photo.bmp was not sent.\n"_s,
         [](MediaShell& shell) {
             shell.file(u"c.L22"_s, "codes");
             shell.converters.replace(u"g722demo"_s, {});
         }},
        {"MP3 is not read", u"song.mp3 tone.wav"_s, ExitFailed, u"song.mp3:-:false tone.wav:tone.722:true"_s,
         u"kalmoctl: song.mp3 can't be converted: SoX reads no MP3 here; install the package "
         "\"libsox-fmt-mp3\".\n"_s,
         [](MediaShell& shell) {
             shell.file(u"song.mp3"_s, "x");
             shell.converters.replace(u"sox"_s,
                                      "case \"$*\" in *.mp3*) echo \"sox FAIL formats: no handler for file "
                                      "extension \\`mp3'\" >&2; exit 2;; esac; exec sox \"$@\"");
         }},
    };
    for (const auto& [line, status, files, told, prepare] : rows) {
        MediaShell shell;
        prepare(shell);
        QCOMPARE(shell(u"--json --quiet files put --convert "_s + line), status);
        QStringList found;
        for (const QJsonValue& file : QJsonDocument::fromJson(shell.printed.toUtf8()).array())
            found.append(u"%1:%2:%3"_s.arg(file[u"name"_s].toString(), file[u"sentAs"_s].toString(u"-"_s),
                                           QVariant(file[u"written"_s].toBool()).toString()));
        std::ranges::sort(found);
        QStringList wanted = files.split(u' ', Qt::SkipEmptyParts);
        std::ranges::sort(wanted);
        QCOMPARE(found, wanted);
        QCOMPARE(shell.told, told);
        QCOMPARE(workLeftIn(shell.test), QStringList());
    }
    MediaShell full(u"SL450HX"_s, {.fileMemory = 1000});
    QCOMPARE(full(u"--quiet files put --convert tone.wav"_s), ExitFailed);
    QCOMPARE(full.told, u"kalmoctl: the phone has too little room left for /Sounds/tone.722.\n"_s);
}

KALMO_TEST(tst_MediaCommands)
#include "tst_MediaCommands.moc"
