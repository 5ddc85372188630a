// Pictures and sounds from a terminal: what is printed, how it ends, and what is in the phone then.

#include "Shell.h"
#include "support/ConverterFolder.h"
#include "support/MediaFamilies.h"
#include "support/Melodies.h"
#include "support/TestProgram.h"
#include "support/Tones.h"

#include <algorithm>

namespace {

struct MediaShell : Handset
{
    explicit MediaShell(const QString& model = u"SL450HX"_s, handset::Options options = {})
        : Handset((options.model = model, options))
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
    // The value that is printed, or the message.
    Rows<QString, ExitStatus, QString> rows;
    rows.add("sound", u"sound tone.wav out.L22"_s, ExitDone,
             u"{'bytes':24000,'file':'out.L22','seconds':3}"_s);
    rows.add("cut", u"sound tone.wav out.722 --trim 2"_s, ExitDone,
             u"{'bytes':16000,'file':'out.722','seconds':2}"_s);
    rows.add("melody", u"melody song.mid out"_s, ExitDone, u"{'bytes':60,'file':'out'}"_s);
    rows.add("picture", u"picture photo.bmp out.bmp --family 5 --clip"_s, ExitDone,
             u"{'bits':24,'bytes':38454,'file':'out.bmp','height':100,'width':128}"_s);
    rows.add("of 32 bits", u"picture photo.bmp out.bmp --family 13"_s, ExitDone,
             u"{'bits':32,'bytes':307254,'file':'out.bmp','height':320,'width':240}"_s);
    rows.add("over a file by force", u"melody song.mid there --force"_s, ExitDone,
             u"{'bytes':60,'file':'there'}"_s);
    rows.add("over a file", u"melody song.mid there"_s, ExitRefused,
             u"Replace there?\nNobody can answer here; run this on a terminal, or say --yes.\n"
             "kalmoctl: there stays as it is.\n"_s);
    rows.add("over itself", u"melody song.mid ./song.mid --yes"_s, ExitWrongUse,
             u"song.mid can't be its own result.\n"_s);
    rows.add("no file", u"sound none.wav out"_s, ExitWrongUse, u"there is no file none.wav.\n"_s);
    rows.add("no family", u"picture photo.bmp out.jpg"_s, ExitWrongUse,
             u"say for which --family of handsets, 5, 6 or 8 to 13.\n"_s);
    rows.add("one without JPEG", u"picture photo.bmp out.jpg --family 6"_s, ExitWrongUse,
             u"family 6 takes no JPEG; end the result in .bmp.\n"_s);
    rows.add("no sound", u"sound bad.wav out"_s, ExitWrongUse,
             u"bad.wav can't be converted to a sound for handsets: RIFF header not found.\n"_s);
    rows.add("nowhere to write", u"melody song.mid none/out"_s, ExitFailed,
             u"none/out can't be written: No such file or directory.\n"_s);
    rows.add("no converter", u"sound tone.wav out"_s, ExitFailed,
             u"the converter g722demo is missing; install the package \"kalmo\".\n"_s);
    rows.each([](const auto& line, const auto& status, const auto& outcome) {
        MediaShell shell;
        if (outcome.contains(u"the converter g722demo is missing"_s))
            shell.converters.replace(u"g722demo"_s, {});
        const QStringList before = QDir(shell.test.folder.path()).entryList(QDir::Files);
        QCOMPARE(shell(u"--json --quiet media "_s + line), status);
        const QString value = shell.value().replace(u'"', u'\'');
        QCOMPARE(status == ExitDone ? value : shell.told,
                 status == ExitDone ? outcome : u"kalmoctl: "_s + outcome);
        QVERIFY(value.isEmpty() != shell.told.isEmpty());
        QCOMPARE(QDir(shell.test.folder.path()).entryList(QDir::Files) == before, !value.contains(u"out"));
        QCOMPARE(TestContext::contentOf(shell.test.path(u"there"_s)) == "mine", !line.contains(u"--force"));
        QCOMPARE(workLeftIn(shell.test), QStringList());
    });
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
    const QString otherFolder =
        u"only Pictures, Clip Pictures and Sounds take converted files; name one of them by --to.\n"_s;
    // The files of the result as "name:sent as:written", and the message.
    Rows<QString, ExitStatus, QString, QString> rows;
    rows.add("what is unfit is passed over", u"bad.wav tone.wav song.mid --trim 1"_s, ExitWrongUse,
             u"bad.wav:-:false tone.wav:tone.722:true song.mid:-:false"_s,
             u"bad.wav can't be converted to a sound for handsets: RIFF header not found.\n"
             "kalmoctl: song.mid is of a kind that the folder does not take.\n"_s);
    rows.add("names that are cut alike", u"a-name-of-sixteen-one.wav a-name-of-sixteen-two.wav"_s,
             ExitWrongUse,
             u"a-name-of-sixteen-one.wav:a-name-of-sixtee.722:true "
             "a-name-of-sixteen-two.wav:a-name-of-sixtee.722:false"_s,
             u"a-name-of-sixteen-two.wav would replace another one of these files, "
             "/Sounds/a-name-of-sixtee.722.\n"_s);
    rows.add("without commas", u"x,;y.wav"_s, ExitDone, u"x,;y.wav:xy.722:true"_s, {});
    rows.add("kinds of two folders", u"tone.wav photo.bmp"_s, ExitWrongUse, {}, otherFolder);
    rows.add("a folder of another kind", u"--to Sounds/new tone.wav"_s, ExitWrongUse, {}, otherFolder);
    rows.add("a converter is missing", u"c.L22 tone.wav photo.bmp --to Sounds"_s, ExitFailed,
             u"c.L22:c.L22:false tone.wav:-:false photo.bmp:-:false"_s,
             u"the converter g722demo is missing; install the package \"kalmo\".\n"
             "kalmoctl: c.L22 was not sent.\nkalmoctl: photo.bmp was not sent.\n"_s);
    rows.add("MP3 is not read", u"song.mp3 tone.wav"_s, ExitFailed,
             u"song.mp3:-:false tone.wav:tone.722:true"_s,
             u"song.mp3 can't be converted: SoX reads no MP3 here; install the package "
             "\"libsox-fmt-mp3\".\n"_s);
    rows.each([](const auto& line, const auto& status, const auto& files, const auto& told) {
        MediaShell shell;
        for (const QString& name :
             {u"a-name-of-sixteen-one.wav"_s, u"a-name-of-sixteen-two.wav"_s, u"x,;y.wav"_s})
            shell.file(name, wav(tone(500, -6, 100)));
        shell.file(u"c.L22"_s, "codes");
        shell.file(u"song.mp3"_s, "x");
        if (told.contains(u"g722demo is missing"_s))
            shell.converters.replace(u"g722demo"_s, {});
        shell.converters.replace(u"sox"_s,
                                 "case \"$*\" in *.mp3*) echo \"sox FAIL formats: no handler for file "
                                 "extension \\`mp3'\" >&2; exit 2;; esac; exec sox \"$@\"");
        QCOMPARE(shell(u"--json --quiet files put --convert "_s + line), status);
        QStringList found;
        for (const QJsonValue& file : QJsonDocument::fromJson(shell.printed.toUtf8()).array())
            found.append(u"%1:%2:%3"_s.arg(file[u"name"_s].toString(), file[u"sentAs"_s].toString(u"-"_s),
                                           QVariant(file[u"written"_s].toBool()).toString()));
        std::ranges::sort(found);
        QStringList wanted = files.split(u' ', Qt::SkipEmptyParts);
        std::ranges::sort(wanted);
        QCOMPARE(found, wanted);
        QCOMPARE(shell.told, told.isEmpty() ? QString() : u"kalmoctl: "_s + told);
        QCOMPARE(workLeftIn(shell.test), QStringList());
    });
    MediaShell full(u"SL450HX"_s, {.fileMemory = 1000});
    QCOMPARE(full(u"--quiet files put --convert tone.wav"_s), ExitFailed);
    QCOMPARE(full.told, u"kalmoctl: the phone has too little room left for /Sounds/tone.722.\n"_s);
}

KALMO_TEST(tst_MediaCommands)
#include "tst_MediaCommands.moc"
