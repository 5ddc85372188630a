// Sounds on their way to the handset, heard again by a decoder that is not ours.

#include "media/SoundConversion.h"
#include "media/Workshop.h"
#include "support/RecordedProgress.h"
#include "support/TestProgram.h"
#include "support/Tones.h"

#include <algorithm>

using media::Failure;
using media::Fault;

namespace {

/// The second half of what a handset hears: a coder finds its steps first.
std::vector<qint16> heard(const QByteArray& codes)
{
    const std::vector<qint16> samples = decoded(codes);
    return {samples.begin() + static_cast<qsizetype>(samples.size() / 2), samples.end()};
}

Fault faultOf(const std::optional<Failure>& failure)
{
    return failure ? failure->fault : Fault{-1};
}

} // namespace

class tst_Sounds : public QObject
{
    Q_OBJECT

private:
    static std::optional<Failure> convert(Workshop& shop, const QString& source, int trim = 0,
                                          const toolkit::Progress& progress = {})
    {
        return media::ConvertAudioToL22(shop.context, source, shop.path(u"out.L22"_s), progress, trim);
    }

private Q_SLOTS:
    /// A tone above what a handset plays must not come down as another one.
    void highTonesAreLeftOut()
    {
        std::vector<qint16> both = tone(1000, -12, 4 * soundRate);
        const std::vector<qint16> high = tone(6000, -12, 4 * soundRate); // of half the rate: 12 kHz
        std::ranges::transform(both, high, both.begin(), std::plus<>());
        Workshop shop;
        QVERIFY(!convert(shop, shop.makeFile(u"in.wav"_s, wav(both, 2 * soundRate))));
        const std::vector<qint16> samples = heard(shop.contentOf(shop.path(u"out.L22"_s)));
        QVERIFY(clearness(samples, 2000) > 40);
        QVERIFY(clearness(samples, 4000) < -50);
    }

    void lengthsAndNames()
    {
        const Rows<QString, int, int> rows{
            {"whole", u"in.wav"_s, 0, 3},
            {"cut", u"in.wav"_s, 2, 2},
            {"cut behind the end", u"in.wav"_s, 30, 3},
            {"brackets", u"a[1].wav"_s, 1, 1},
            {"a dash ahead", u"-n.wav"_s, 1, 1},
            {"as long as names get", QString(250, u'x') + u".wav"_s, 1, 1},
        };
        rows.each([&](const auto& name, const auto& trim, const auto& seconds) {
            Workshop shop;
            shop.makeFile(u"a1.wav"_s, wav(tone(440, -6, 10 * soundRate)));
            const QString source = shop.makeFile(name, wav(tone(1000, -6, 3 * soundRate)));
            QVERIFY(!convert(shop, source, trim));
            const QByteArray codes = shop.contentOf(shop.path(u"out.L22"_s));
            QCOMPARE(codes.size(), seconds * media::codesPerSecond);
            QVERIFY(clearness(heard(codes), 1000) > 40);
            QCOMPARE(shop.leftovers(), QStringList());
        });
    }

    /// The head of a file that was written to a pipe claims a day.
    void lengthsPastTheFile()
    {
        const QByteArray good = wav(tone(1000, -6, 3 * soundRate));
        for (const auto& [claim] : Rows<quint32>{{"pipe", 0xFFFFFFFF}, {"recorder", 0x7FFFFFFF}}) {
            Workshop shop;
            const QString source =
                shop.makeFile(u"in.wav"_s, QByteArray(good).replace(40, 4, little(claim, 4)));
            media::SoundFacts facts;
            QVERIFY(!media::readSoundFacts(shop.context, source, facts));
            QCOMPARE(facts.seconds, 3.0);
            QVERIFY(!convert(shop, source));
            QCOMPARE(shop.contentOf(shop.path(u"out.L22"_s)).size(), 3 * media::codesPerSecond);
        }
    }

    void mp3()
    {
        Workshop shop;
        shop.makeFile(u"in.wav"_s, wav(tone(1000, -6, 3 * 44100), 44100));
        QCOMPARE(QProcess::execute(u"sox"_s, {shop.path(u"in.wav"_s), shop.path(u"in.mp3"_s)}), 0);
        QVERIFY(!convert(shop, shop.path(u"in.mp3"_s), 2));
        const QByteArray codes = shop.contentOf(shop.path(u"out.L22"_s));
        QCOMPARE(codes.size(), 2 * media::codesPerSecond);
        const std::vector<qint16> samples = heard(codes);
        QVERIFY(clearness(samples, 1000 * 44100.0 / soundRate) > 30);
        media::SoundFacts facts;
        QVERIFY(!media::readSoundFacts(shop.context, shop.path(u"in.mp3"_s), facts));
        QVERIFY(facts.rate == 44100 && facts.seconds > 2.9 && facts.seconds < 3.2);
    }

    void tellsHowFarItIs()
    {
        Workshop shop;
        RecordedProgress progress;
        const QString source = shop.makeFile(u"in.wav"_s, wav(tone(1000, -6, 100)));
        QVERIFY(!convert(shop, source, 0, progress.all()));
        QCOMPARE(progress.panel.texts,
                 (QStringList{u"Konvertiere Datei..."_s, u"Konvertiere Datei..."_s, u"Lese Datei..."_s,
                              u"Konvertiere Datei...3/3"_s, u"Schreibe Datei..."_s, u""_s}));
    }

    void badSounds()
    {
        const QByteArray good = wav(tone(1000, -6, soundRate));
        const Rows<QString, QByteArray, Fault> rows{
            {"nothing", u"in.wav"_s, "", Fault::BadSound},
            {"random bytes", u"in.mp3"_s, QByteArray("\x12\x9f\x00\xe5", 4).repeated(5000), Fault::BadSound},
            {"a head alone", u"in.wav"_s, good.first(44), Fault::BadSound},
            {"one sample a second", u"in.wav"_s, QByteArray(good).replace(24, 4, little(1, 4)),
             Fault::BadSound},
            {"a rate past all", u"in.wav"_s, QByteArray(good).replace(24, 4, little(0x7FFFFFFF, 4)),
             Fault::BadSound},
            {"a list of addresses", u"in.m3u"_s, "http://localhost:9/x.wav\n", Fault::BadSound},
        };
        rows.each([&](const auto& name, const auto& bytes, const auto& fault) {
            Workshop shop;
            QCOMPARE(faultOf(convert(shop, shop.makeFile(name, bytes))), fault);
            QVERIFY(!QFile::exists(shop.path(u"out.L22"_s)));
            QCOMPARE(shop.leftovers(), QStringList());
        });
        Workshop shop;
        QCOMPARE(faultOf(convert(shop, shop.path(u"none.wav"_s))), Fault::NoSource);
        QCOMPARE(faultOf(convert(shop, shop.path({}))), Fault::NoSource);
    }

    void badConverters()
    {
        const QByteArray answers = "case \"$2\" in -r) echo 16000; exit;; -D) echo 3; exit;; esac; ";
        const Rows<QString, QByteArray, Fault> rows{
            {"hangs", u"sox"_s, answers + "sleep 1000", Fault::TooLong},
            {"says nothing", u"sox"_s, "exit 0", Fault::BadSound},
            {"codes nothing", u"g722demo"_s, "exit 0", Fault::BadSound},
            {"is missing", u"g722demo"_s, "", Fault::NoConverter},
            {"can't read MP3", u"sox"_s,
             "echo \"sox FAIL formats: no handler for file extension \\`mp3'\" >&2; exit 2", Fault::NoMp3},
            {"never stops talking", u"sox"_s, "yes >&2", Fault::TooLong},
        };
        rows.each([&](const auto& name, const auto& script, const auto& fault) {
            Workshop shop;
            shop.plugins.replace(name, script);
            QCOMPARE(faultOf(convert(shop, shop.makeFile(u"in.mp3"_s, wav(tone(1000, -6, soundRate))))),
                     fault);
            QVERIFY(!QFile::exists(shop.path(u"out.L22"_s)));
            QCOMPARE(shop.leftovers(), QStringList());
        });
    }

    /// SoX reports success then, and leaves the start of the sound.
    void fullDisks()
    {
        for (const auto& [name, program] :
             Rows<QString, QString>{{"SoX", u"sox"_s, u"sox"_s},
                                    {"coder", u"g722demo"_s, ConverterFolder::built(u"g722demo"_s)}}) {
            Workshop shop;
            shop.plugins.replace(name, withFullDisk(program.toUtf8()));
            const auto failure = convert(shop, shop.makeFile(u"in.wav"_s, wav(tone(1000, -6, soundRate))));
            QCOMPARE(faultOf(failure), Fault::NotWritten);
            QVERIFY(failure->file.startsWith(shop.storage));
            QVERIFY(media::endsBatch(failure->fault) && !media::isBadInput(failure->fault));
            QVERIFY(!QFile::exists(shop.path(u"out.L22"_s)));
        }
    }

    void cancels()
    {
        Workshop shop;
        shop.plugins.replace(u"g722demo"_s, "exec sleep 1000");
        SwitchedCancel cancel;
        cancel.checked = true;
        QCOMPARE(faultOf(convert(shop, shop.makeFile(u"in.wav"_s, wav(tone(1000, -6, 100))), 0,
                                 {.cancel = &cancel})),
                 Fault::Cancelled);
        QCOMPARE(shop.leftovers(), QStringList());
    }

    void missingConvertersAreTold()
    {
        Workshop shop;
        const auto text = [](const QString& program) {
            return media::messageFor({Fault::NoConverter, u"x"_s, program});
        };
        QCOMPARE(text(u"/e/Plugins/sox"_s).text,
                 u"Der sox Konverter /e/Plugins/sox wurde nicht gefunden.\nInstallieren Sie "
                 u"Kalmo als Vollinstallation neu."_s);
        QCOMPARE(text(u"/e/Plugins/m9b"_s).text,
                 u"Klingetonkonverter /e/Plugins/m9b nicht gefunden. Bitte installieren "
                 u"Sie die Vollversion neu."_s);
        QCOMPARE(text(u"/e/Plugins/sox"_s).english,
                 u"the converter sox is missing; install the package \"sox\""_s);
    }
};

KALMO_TEST(tst_Sounds)
#include "tst_Sounds.moc"
