#include "ui/controls/UploadSizes.h"

#include "app/StoragePaths.h"
#include "media/Converters.h"
#include "media/MelodyConversion.h"
#include "media/SoundConversion.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using media::Fault;
using media::UploadKind;

namespace {

constexpr double longestSound = 1e9; // seconds; a longer one is a damaged head

bool isMelodyFile(const QString& path)
{
    return media::isFit(path, UploadKind::Melodies);
}

} // namespace

UploadSizes::UploadSizes(app::Context& context, QObject* parent) : QObject(parent), m_context(context)
{
    m_limit.setObjectName(u"tmrLimit"_s);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, [this] { m_run->end(app::RunEnd::TooLong); });
    connect(&m_loader, &PictureLoader::loaded, this, &UploadSizes::takePicture);
}

UploadSizes::~UploadSizes()
{
    stop();
}

void UploadSizes::measure(const QStringList& paths, const media::UploadOptions& options)
{
    stop();
    m_paths = paths;
    m_options = options;
    m_sum = {};
    next();
}

void UploadSizes::stop()
{
    m_loader.drop();
    m_limit.stop();
    m_run.reset();
    m_paths.clear();
    m_sum = {};
}

/// Counts the files whose sizes are known, and begins with the next that has to be converted.
void UploadSizes::next()
{
    while (!isDone()) {
        const QString path = m_paths[m_sum.measured];
        const std::optional<qint64> size = knownSize(path);
        if (!size) {
            begin(path);
            return;
        }
        count(*size < 0 ? std::nullopt : size);
    }
}

void UploadSizes::count(std::optional<qint64> bytes)
{
    ++m_sum.measured;
    m_sum.bytes += bytes.value_or(0);
    m_sum.unfit += bytes ? 0 : 1;
    Q_EMIT changed();
}

/// Returns -1 for a file that is known to be unfit, and nothing for a file that was not measured yet.
std::optional<qint64> UploadSizes::knownSize(const QString& path) const
{
    if (!media::isFit(path, m_options.kind))
        return -1;
    if (media::isPicture(m_options.kind))
        return {};
    if (isMelodyFile(path)) {
        const auto found = m_melodies.find(path);
        if (found != m_melodies.end())
            return *found;
        return QFileInfo(path).size() > media::largestMelody ? std::optional<qint64>(-1) : std::nullopt;
    }
    if (!media::isConvertible(path))
        return QFileInfo(path).size();
    const auto found = m_seconds.find(path);
    if (found == m_seconds.end())
        return {};
    const int trim = m_options.trimSeconds;
    const double kept = trim > 0 ? std::min<double>(trim, *found) : *found;
    return *found > 0 ? static_cast<qint64>(kept * media::codesPerSecond) : -1;
}

void UploadSizes::begin(const QString& path)
{
    if (media::isPicture(m_options.kind)) {
        m_loader.load(path, media::pictureSize(m_options.phoneType, m_options.kind));
        return;
    }
    if (!isMelodyFile(path)) {
        run(media::lengthCall(m_context, path));
        return;
    }
    if (!m_folder)
        m_folder = std::make_unique<app::WorkFolder>(m_context);
    if (!m_folder->isValid()) {
        m_sum.failure = media::Failure{Fault::NotWritten, app::workPath(m_context.sy)};
        count({});
        next();
        return;
    }
    QFile::remove(m_folder->filePath(u"o"_s));
    app::ProgramCall call = media::melodyCall(m_context, QFileInfo(path).absoluteFilePath(), u"o"_s);
    call.folder = m_folder->path();
    run(call);
}

void UploadSizes::run(const app::ProgramCall& call)
{
    m_run = std::make_unique<app::ProgramRun>(call);
    connect(m_run.get(), &app::ProgramRun::ended, this, [this, program = call.file] { takeResult(program); });
    m_limit.start(std::chrono::milliseconds(static_cast<qint64>(call.longest * 1000)));
    m_run->start();
}

void UploadSizes::takeResult(const QString& program)
{
    m_limit.stop();
    app::ProgramRun* run = m_run.release();
    run->deleteLater(); // this runs within its signal
    const QString path = m_paths[m_sum.measured];
    const Fault refused = isMelodyFile(path) ? Fault::BadMelody : Fault::BadSound;
    const auto failure = media::failureOf(run->result(), {refused, path, program, {}});
    if (!failure) {
        takeOutput(path, run->result().output);
    } else {
        m_sum.failure = failure; // it is tried again with the next choice
        count({});
    }
    next();
}

/// Notes the size of a melody or the seconds of a sound.
void UploadSizes::takeOutput(const QString& path, const QByteArray& output)
{
    if (isMelodyFile(path)) {
        const QFileInfo made(m_folder->filePath(u"o"_s));
        m_melodies[path] = made.size() > 0 ? made.size() : -1;
        return;
    }
    const double seconds = media::withinFile(path, output.trimmed().toDouble());
    m_seconds[path] = seconds > 0 && seconds < longestSound ? seconds : 0;
}

void UploadSizes::takePicture(const media::LoadedPicture& picture)
{
    const QByteArray bytes =
        picture.failure ? QByteArray() : media::pictureBytes(picture.image, media::pictureForm(m_options));
    count(bytes.isEmpty() ? std::nullopt : std::optional(bytes.size()));
    next();
}

} // namespace kalmo::ui
