#pragma once

#include "app/Context.h"

#include <QObject>
#include <QStringList>

#include <memory>

class QProcess;

namespace kalmo::media {

/// A program that plays a file.
struct PlayerCall
{
    QString program; ///< absolute path, empty where none is installed
    QStringList arguments = {};
};

/// The call that plays a WAV, MP3 or MIDI file on this machine.
PlayerCall playerFor(const app::Context& context, const QString& path);

/// The Debian packages that are needed to play such a file.
QString playerPackages(const QString& path);

/// Plays one file at a time, by a program of this machine.
class Player : public QObject
{
    Q_OBJECT

public:
    explicit Player(app::Context& context, QObject* parent = nullptr);
    ~Player() override;

    /// Stops a sound that plays, and plays a file. Returns false if no program is installed for it, or if the
    /// file is no melody. A machine without a sound device shows a moment later, by `ended`.
    bool PlayFile(const QString& path);
    /// Stops the sound. Emits nothing.
    void StopPlay();
    bool isPlaying() const { return m_process != nullptr; }

Q_SIGNALS:
    /// The playing came to an end by itself. `played` is false if it failed.
    void ended(bool played);

private:
    app::Context& m_context;
    std::unique_ptr<QProcess> m_process;
};

} // namespace kalmo::media
