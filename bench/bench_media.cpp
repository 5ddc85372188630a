// Measures the cost of converting pictures and sounds, and the gain of the later arguments of SoX.

#include "Bench.h"
#include "media/PictureFile.h"
#include "media/SoundConversion.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTimer>

#include <cmath>
#include <numbers>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace kalmo;

namespace {

double processorMilliseconds()
{
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// Processor milliseconds of the children that have ended.
double childMilliseconds()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return 1000.0 * static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

/// Most memory of this program, or of the largest of its children that have ended.
double mostMegabytes(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void printRow(const char* what, double value, double allowed)
{
    bench::printRow(QString::fromLatin1(what), value, allowed);
}

/// Measures the longest time without a turn of the event loop.
class LongestPause
{
public:
    LongestPause()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_longest = std::max(m_longest, static_cast<double>(m_watch.nsecsElapsed()) / 1e6);
            m_watch.restart();
        });
        m_watch.start();
        m_timer.start(1);
    }
    double milliseconds() const
    {
        return std::max(m_longest, static_cast<double>(m_watch.nsecsElapsed()) / 1e6);
    }

private:
    QTimer m_timer;
    QElapsedTimer m_watch;
    double m_longest = 0;
};

/// A picture like a photo: soft shapes with noise on them.
QImage photo()
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    unsigned seed = 1;
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            seed = seed * 1664525 + 1013904223;
            const int noise = static_cast<int>(seed >> 28);
            row[x] = qRgb((x * 200 / 4000) + noise, (y * 200 / 3000) + noise, ((x + y) * 100 / 3500) + noise);
        }
    }
    return image;
}

void measurePicture(bench::Engine& engine, const QString& folder)
{
    const QString path = folder + u"/photo.jpg"_s;
    photo().save(path, "JPG", 90);
    const double before = processorMilliseconds();
    const LongestPause pause;
    const auto failure = media::saveConverted(
        media::convertPicture(engine.context, path, {.size = {240, 320}}), folder + u"/small.jpg"_s);
    const double pauseOfAll = pause.milliseconds();
    printRow("JPEG of 4000 x 3000 to 240 x 320, processor ms", processorMilliseconds() - before, 150);
    printRow("  longest turn of the event loop, ms", pauseOfAll, 50);
    if (failure)
        std::printf("  WRONG: no picture came out\n");
}

void measureThinning()
{
    const QByteArray words(1 << 20, 'x');
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
        QElapsedTimer watch;
        watch.start();
        if (media::thinned(words).size() != words.size() / 2)
            std::printf("  WRONG: the thinning gives another length\n");
        best = std::min(best, static_cast<double>(watch.nsecsElapsed()) / 1e6);
    }
    printRow("thinning of 1 MB, ms", best, 5);
}

/// Processor milliseconds of a program and its arguments.
double costOf(const QString& program, const QStringList& arguments)
{
    const double before = childMilliseconds();
    if (QProcess::execute(program, arguments) != 0)
        std::printf("  WRONG: %s failed\n", qPrintable(program));
    return childMilliseconds() - before;
}

void measureSound(bench::Engine& engine, const QString& folder)
{
    const QString wave = folder + u"/wave.wav"_s;
    QProcess::execute(
        u"sox"_s, {u"-n"_s, u"-r"_s, u"44100"_s, u"-c"_s, u"2"_s, wave, u"synth"_s, u"60"_s, u"pinknoise"_s});
    const double alone = costOf(u"sox"_s, {u"--no-glob"_s, wave, u"-r"_s, u"32k"_s, u"-e"_s, u"signed"_s,
                                           u"-b8"_s, u"-c"_s, u"1"_s, u"-r"_s, u"16k"_s, u"-b"_s, u"16"_s,
                                           folder + u"/sound.raw"_s, u"gain"_s, u"-n"_s, u"-1"_s});
    const double before = childMilliseconds() + processorMilliseconds();
    const LongestPause pause;
    const auto failure =
        media::ConvertAudioToL22(engine.context, wave, folder + u"/sound.722"_s, toolkit::Progress(), 0);
    const double pauseOfAll = pause.milliseconds();
    printRow("WAV of 60 s to L22, processor ms (allowed: SoX alone x 2)",
             childMilliseconds() + processorMilliseconds() - before, 2 * alone);
    printRow("  longest turn of the event loop, ms", pauseOfAll, 50);
    if (failure)
        std::printf("  WRONG: no sound came out\n");
}

/// Decibels of a tone of 1 kHz above the noise that SoX adds to it. Takes the middle second of raw samples of
/// 16 bits.
double clearness(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray bytes = file.readAll().mid(2 * 16000, 2 * 16000);
    const auto* samples = reinterpret_cast<const qint16*>(bytes.constData());
    const auto count = bytes.size() / 2;
    double sine = 0;
    double cosine = 0;
    double power = 0;
    for (qsizetype index = 0; index < count; ++index) {
        const double phase = 2 * std::numbers::pi * 1000 * static_cast<double>(index) / 16000;
        sine += samples[index] * std::sin(phase);
        cosine += samples[index] * std::cos(phase);
        power += static_cast<double>(samples[index]) * samples[index];
    }
    const auto all = static_cast<double>(count);
    const double wanted = 2 * (sine * sine + cosine * cosine) / all / all;
    return 10 * std::log10(wanted / std::max(1e-9, power / all - wanted));
}

/// Compares the first arguments for SoX with those that follow them.
void compareArguments(const QString& folder)
{
    std::printf("\n%-40s %16s %16s\n", "tone of 1 kHz before coding, dB", "8 bit, 32 kHz", "16 bit, 16 kHz");
    const QString wave = folder + u"/tone.wav"_s;
    const QString raw = folder + u"/tone.raw"_s;
    for (const QString& level : {u"-6"_s, u"-20"_s, u"-40"_s}) {
        QProcess::execute(u"sox"_s, {u"-n"_s, u"-r"_s, u"44100"_s, wave, u"synth"_s, u"3"_s, u"sine"_s,
                                     u"1000"_s, u"gain"_s, level});
        const QStringList head{u"--no-glob"_s, wave,     u"-r"_s, u"32k"_s, u"-e"_s,
                               u"signed"_s,    u"-b8"_s, u"-c"_s, u"1"_s};
        QProcess::execute(u"sox"_s, head + QStringList{raw});
        const double described = clearness(raw);
        QProcess::execute(u"sox"_s, head + QStringList{u"-r"_s, u"16k"_s, u"-b"_s, u"16"_s, raw, u"gain"_s,
                                                       u"-n"_s, u"-1"_s});
        std::printf("%-40s %16.1f %16.1f\n", qPrintable(u"at %1 dBFS"_s.arg(level)), described,
                    clearness(raw));
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    bench::Engine engine(folder.path() + u"/storage"_s, 12);
    engine.sy.Paths.Exe = QCoreApplication::applicationDirPath() + u"/../bin"_s;
    bench::printHeading();
    measureThinning();
    measureSound(engine, folder.path());
    measurePicture(engine, folder.path());
    printRow("most memory of this process, MB", mostMegabytes(RUSAGE_SELF), 200);
    printRow("most memory of a converter, MB", mostMegabytes(RUSAGE_CHILDREN), 200);
    compareArguments(folder.path());
    return 0;
}
