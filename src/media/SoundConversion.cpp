#include "media/SoundConversion.h"

#include "app/clsStringBuilder.h"
#include "app/Files.h"
#include "app/mdlKonverter.h"
#include "app/StoragePaths.h"
#include "app/WorkFolder.h"
#include "media/Converters.h"
#include "media/SourceFile.h"
#include "obex/ResponseCodes.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace kalmo::media {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostMemory = 800LL << 20;
constexpr int lowestRate = 1000; // samples a second; less is a damaged head, and would take days to convert
constexpr int highestRate = 768000;
constexpr qint64 bytesPerSecond = 32000; // of the coder's input
constexpr qint64 longestSeconds = obex::largestObject / codesPerSecond;

app::ProgramCall soxCall(const QString& sox, const QStringList& arguments, const QString& folder = {})
{
    return {.file = sox,
            .arguments = arguments,
            .folder = folder,
            .mostMemory = mostMemory,
            .largestFile = 4 * longestSeconds * bytesPerSecond}; // the samples of its scratch file are wider
}

std::optional<Failure> checkInput(const app::Context& context, const QString& path)
{
    if (auto failure = checkSource(path))
        return failure;
    if (!isConvertible(path)) // SoX would follow a list of addresses
        return Failure{Fault::BadSound, path, {}, u"only .wav and .mp3 are sounds"_s};
    const QString sox = converterPath(context, u"sox"_s);
    if (!isThere(sox))
        return Failure{Fault::NoConverter, path, sox};
    return {};
}

/// SoX takes the later of two options for the same thing: the form of the handset, with 16 bits a sample.
QStringList rawArguments(const QString& source, const QString& raw, int trimSeconds)
{
    QStringList arguments{u"--no-glob"_s, source, u"-r"_s, u"32k"_s, u"-e"_s, u"signed"_s, u"-b8"_s,
                          u"-c"_s,        u"1"_s, u"-r"_s, u"16k"_s, u"-b"_s, u"16"_s,     raw};
    if (trimSeconds > 0)
        arguments << u"trim"_s << u"0"_s << QString::number(trimSeconds);
    return arguments << u"gain"_s << u"-n"_s << u"-1"_s;
}

/// Shows the bar and the panel of a conversion, and clears them at its end.
class ProgressScope
{
public:
    explicit ProgressScope(const toolkit::Progress& progress) : m_progress(progress)
    {
        m_progress.start(1, 4);
        m_progress.status(u"Konvertiere Datei..."_s);
    }
    ~ProgressScope()
    {
        m_progress.status({});
        m_progress.hide();
    }
    Q_DISABLE_COPY_MOVE(ProgressScope)

private:
    const toolkit::Progress& m_progress;
};

bool isAbsurd(const SoundFacts& facts, int trimSeconds)
{
    const double kept = trimSeconds > 0 ? std::min<double>(facts.seconds, trimSeconds) : facts.seconds;
    return facts.rate < lowestRate || facts.rate > highestRate || kept > static_cast<double>(longestSeconds);
}

/// Runs the encoder over the samples and reads the words that it wrote.
std::optional<Failure> encode(app::Context& context, const app::WorkFolder& folder, const QString& source,
                              const toolkit::CancelBox* cancel, QByteArray& words)
{
    const QString encoder = converterPath(context, u"g722demo"_s);
    const app::RunResult run = app::RunAndWait(
        context,
        {.file = encoder, .arguments = {u"-enc"_s, u"sound.raw"_s, u"sound.722"_s}, .folder = folder.path()},
        cancel);
    if (auto failure = failureOf(run, {Fault::BadSound, source, encoder, folder.path()}))
        return failure;
    if (!app::readWholeFile(folder.filePath(u"sound.722"_s), words) || words.isEmpty())
        return Failure{Fault::BadSound, source, encoder, u"it holds no sound"_s};
    return {};
}

std::optional<Failure> checkConversion(const app::Context& context, const QString& source)
{
    const QString encoder = converterPath(context, u"g722demo"_s);
    if (auto failure = checkInput(context, source))
        return failure;
    return isThere(encoder) ? std::nullopt : std::optional(Failure{Fault::NoConverter, source, encoder});
}

Converted codesOf(app::Context& context, const QString& source, const toolkit::Progress& progress,
                  int trimSeconds)
{
    SoundFacts facts;
    if (auto failure = readSoundFacts(context, source, facts, progress.cancel))
        return {.failure = failure};
    if (isAbsurd(facts, trimSeconds))
        return {.failure = Failure{Fault::BadSound, source, {}, u"its length or its rate makes no sense"_s}};
    const app::WorkFolder folder(context);
    if (!folder.isValid())
        return {.failure = Failure{Fault::NotWritten, app::workPath(context.sy)}};

    const QString sox = converterPath(context, u"sox"_s);
    const QStringList arguments =
        rawArguments(QFileInfo(source).absoluteFilePath(), folder.filePath(u"sound.raw"_s), trimSeconds);
    const app::RunResult run =
        app::RunAndWait(context, soxCall(sox, arguments, folder.path()), progress.cancel);
    if (auto failure = failureOf(run, {Fault::BadSound, source, sox, folder.path()}))
        return {.failure = failure};
    progress.status(u"Konvertiere Datei..."_s);
    progress.set(2);
    QByteArray words;
    if (auto failure = encode(context, folder, source, progress.cancel, words))
        return {.failure = failure};
    progress.set(3);
    progress.status(u"Lese Datei..."_s);
    progress.status(u"Konvertiere Datei...3/3"_s);
    return {.bytes = thinned(words)};
}

} // namespace

bool isConvertible(const QString& path)
{
    return path.endsWith(u".wav"_s, Qt::CaseInsensitive) || path.endsWith(u".mp3"_s, Qt::CaseInsensitive);
}

app::ProgramCall lengthCall(const app::Context& context, const QString& path)
{
    return soxCall(converterPath(context, u"sox"_s), {u"--i"_s, u"-D"_s, QFileInfo(path).absoluteFilePath()});
}

double withinFile(const QString& path, double seconds)
{
    constexpr qint64 largestHead = 4096; // bytes; recorders put few chunks ahead of the samples
    constexpr qsizetype rateBehind = 16; // bytes from the chunk of the format to its bytes a second
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return seconds;
    const QByteArray head = file.read(largestHead);
    const qsizetype format = head.indexOf("fmt ");
    if (!head.startsWith("RIFF") || format < 0 || format + rateBehind + 4 > head.size())
        return seconds;
    const auto rate = qFromLittleEndian<quint32>(head.constData() + format + rateBehind);
    const qsizetype samples = head.indexOf("data", format);
    const qint64 bytes = file.size() - (samples < 0 ? 0 : samples + 8);
    return rate == 0 ? seconds : std::min(seconds, std::max(0.0, static_cast<double>(bytes) / rate));
}

std::optional<Failure> readSoundFacts(app::Context& context, const QString& path, SoundFacts& facts,
                                      const toolkit::CancelBox* cancel)
{
    if (auto failure = checkInput(context, path))
        return failure;
    const QString sox = converterPath(context, u"sox"_s);
    double answers[2] = {};
    const QString questions[] = {u"-r"_s, u"-D"_s};
    for (size_t index = 0; index < std::size(questions); ++index) {
        const QString source = QFileInfo(path).absoluteFilePath();
        const app::RunResult run =
            app::RunAndWait(context, soxCall(sox, {u"--i"_s, questions[index], source}), cancel);
        if (auto failure = failureOf(run, {Fault::BadSound, path, sox, {}}))
            return failure;
        answers[index] = run.output.trimmed().toDouble();
    }
    facts = {.seconds = withinFile(path, answers[1]), .rate = app::toInt32(answers[0])};
    return {};
}

Converted convertSound(app::Context& context, const QString& source, const toolkit::Progress& progress,
                       int trimSeconds)
{
    if (auto failure = checkConversion(context, source))
        return {.failure = failure};
    const ProgressScope scope(progress);
    return codesOf(context, source, progress, trimSeconds);
}

std::optional<Failure> ConvertAudioToL22(app::Context& context, const QString& source, const QString& target,
                                         const toolkit::Progress& progress, int trimSeconds)
{
    if (auto failure = checkConversion(context, source))
        return failure;
    const ProgressScope scope(progress);
    const Converted sound = codesOf(context, source, progress, trimSeconds);
    if (!sound.failure)
        progress.status(u"Schreibe Datei..."_s);
    return saveConverted(sound, target);
}

QByteArray thinned(const QByteArray& words)
{
    constexpr qsizetype blockSize = 4096; // codes; one call for each of them takes too long
    const qsizetype total = (words.size() + 1) / 2;
    app::clsStringBuilder codes;
    codes.EnsureCapacity(total);
    std::array<char, blockSize> block;
    for (qsizetype start = 0; start < total; start += blockSize) {
        const qsizetype count = std::min(blockSize, total - start);
        const char* word = words.constData() + 2 * start;
        for (char *code = block.data(), *end = code + count; code < end; ++code, word += 2)
            *code = *word;
        codes.Append(QString::fromLatin1(block.data(), count));
    }
    return codes.ToString().toLatin1();
}

} // namespace kalmo::media
