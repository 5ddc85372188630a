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

/// How a WAV, MP3 or MIDI file is played on this machine.
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

    /// Plays a file in the place of what plays now. False if there is no program for it, or the file is no
    /// melody; a machine without a sound device is known a moment later, by `ended`.
    bool PlayFile(const QString& path);
    /// Ends what plays, without a word.
    void StopPlay();
    bool isPlaying() const { return m_process != nullptr; }

Q_SIGNALS:
    /// The playing came to an end by itself. `played` is false if it failed.
    void ended(bool played);

private:
    app::Context& m_context;
    int m_request = 0; ///< counts starts and stops: a start that waits sees that it is outdated
    std::unique_ptr<QProcess> m_process;
};

} // namespace kalmo::media
