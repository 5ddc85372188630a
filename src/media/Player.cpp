#include "media/Player.h"

#include "app/Files.h"
#include "app/Programs.h"
#include "media/Converters.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace kalmo::media {

using namespace Qt::StringLiterals;

namespace {

constexpr int farewell = 300;        // milliseconds in which a player may end by itself
constexpr qint64 largestHead = 4096; // bytes; a usual head has 14, a wrapped one few more

// A font of 6 MB, and the one that timidity looks for by itself.
const QString smallFontSettings = u"/etc/timidity/timgm6mb.cfg"_s;
const QString ownFontSettings = u"/etc/timidity/fluidr3_gm.cfg"_s;
const QString fluidFont = u"/usr/share/sounds/sf2/default-GM.sf2"_s;

bool isMelody(const QString& path)
{
    return path.endsWith(u".mid"_s, Qt::CaseInsensitive);
}

PlayerCall melodyPlayer(const QString& path)
{
    const QString timidity = QStandardPaths::findExecutable(u"timidity"_s);
    if (!timidity.isEmpty() && app::FileExists(ownFontSettings))
        return {timidity, {path}};
    if (!timidity.isEmpty() && app::FileExists(smallFontSettings))
        return {timidity, {u"-c"_s, smallFontSettings, path}};
    const QString fluidsynth = QStandardPaths::findExecutable(u"fluidsynth"_s);
    if (!fluidsynth.isEmpty() && app::FileExists(fluidFont))
        return {fluidsynth, {u"-ni"_s, fluidFont, path}};
    return {};
}

/// Returns true if a file has a head of a melody with at least one track. Players take any other file for a
/// silent melody. The rest is not checked: players play many a melody that handsets refuse.
bool hasMelody(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.read(largestHead);
    const qsizetype head = bytes.startsWith("RIFF") ? bytes.indexOf("MThd") : 0;
    return head >= 0 && bytes.sliced(head).startsWith("MThd") && bytes.indexOf("MTrk", head) > 0;
}

} // namespace

PlayerCall playerFor(const app::Context& context, const QString& path)
{
    const QString file = QFileInfo(path).absoluteFilePath();
    if (isMelody(path))
        return melodyPlayer(file);
    const QString sox = converterPath(context, u"sox"_s);
    return isThere(sox) ? PlayerCall{sox, {u"-q"_s, u"--no-glob"_s, file, u"-d"_s}} : PlayerCall{};
}

QString playerPackages(const QString& path)
{
    if (isMelody(path))
        return u"timidity, timgm6mb-soundfont"_s;
    return path.endsWith(u".mp3"_s, Qt::CaseInsensitive) ? u"sox, libsox-fmt-mp3"_s : u"sox"_s;
}

Player::Player(app::Context& context, QObject* parent) : QObject(parent), m_context(context) {}

Player::~Player()
{
    StopPlay();
}

bool Player::PlayFile(const QString& path)
{
    StopPlay();
    const PlayerCall call = playerFor(m_context, path);
    if (call.program.isEmpty() || !app::FileExists(path) || (isMelody(path) && !hasMelody(path)))
        return false;
    m_process = std::make_unique<QProcess>();
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(QProcess::nullDevice());
    app::confine(*m_process, {.file = call.program});
    connect(m_process.get(), &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
        m_process.release()->deleteLater(); // this runs within its signal
        Q_EMIT ended(how == QProcess::NormalExit && status == 0);
    });
    m_process->start(call.program, call.arguments);
    if (m_process->waitForStarted())
        return true;
    m_process.reset();
    return false;
}

void Player::StopPlay()
{
    const std::unique_ptr<QProcess> process = std::move(m_process);
    if (!process)
        return;
    process->disconnect(this);
    process->terminate();
    if (!process->waitForFinished(farewell))
        app::endNow(*process);
}

} // namespace kalmo::media
