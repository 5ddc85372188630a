#pragma once

#include "media/Player.h"

#include <QLabel>
#include <QPushButton>

namespace kalmo::ui {

/// The two buttons that play a sound on the PC and stop it, with the reason if it can't be played.
class SoundButtons : public QWidget
{
    Q_OBJECT

public:
    explicit SoundButtons(app::Context& context, QWidget* parent = nullptr);

    /// The file that the button plays. Stops another one.
    void setFile(const QString& path);
    void start();
    void stop();
    bool isPlaying() const { return m_player.isPlaying(); }

Q_SIGNALS:
    void started();
    void stopped();

private:
    void showPlaying(bool isPlaying);
    void showFault(bool isFault);

    app::Context& m_context;
    media::Player m_player;
    QString m_path;
    QPushButton* m_cmdSndStart;
    QPushButton* m_cmdSndStop;
    QLabel* m_lblMidiPlaybackErr;
    QLabel* m_lblAdvice;
};

} // namespace kalmo::ui
