#include "ui/controls/SoundButtons.h"

#include "ui/controls/Named.h"
#include "ui/icons/Icons.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

SoundButtons::SoundButtons(app::Context& context, QWidget* parent)
    : QWidget(parent), m_context(context), m_player(context),
      m_cmdSndStart(named(new QPushButton(icon(u"play"_s), u"Wieder&gabe starten"_s), u"cmdSndStart"_s)),
      m_cmdSndStop(named(new QPushButton(icon(u"stop"_s), u"Wiedergabe &beenden"_s), u"cmdSndStop"_s)),
      m_lblMidiPlaybackErr(
          named(new QLabel(u"Kalmo kann die Datei nicht abspielen. Im Telefon kann sie evtl. "
                           u"trotzdem funktionieren."_s),
                u"lblMidiPlaybackErr"_s)),
      m_lblAdvice(named(new QLabel, u"lblPlaybackAdvice"_s))
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_cmdSndStart);
    buttons->addWidget(m_cmdSndStop);
    buttons->addStretch();
    rows->addLayout(buttons);
    for (QLabel* label : {m_lblMidiPlaybackErr, m_lblAdvice}) {
        label->setWordWrap(true);
        label->hide();
        rows->addWidget(label);
    }
    showPlaying(false);
    connect(m_cmdSndStart, &QPushButton::clicked, this, &SoundButtons::start);
    connect(m_cmdSndStop, &QPushButton::clicked, this, &SoundButtons::stop);
    connect(&m_player, &media::Player::ended, this, [this](bool played) {
        showPlaying(false);
        showFault(!played);
        Q_EMIT stopped();
    });
}

void SoundButtons::setFile(const QString& path)
{
    if (m_path == path)
        return;
    stop();
    m_path = path;
    showFault(false);
}

void SoundButtons::start()
{
    m_player.StopPlay();
    const bool plays = !m_path.isEmpty() && m_player.PlayFile(m_path);
    showPlaying(plays);
    showFault(!plays);
    if (plays)
        Q_EMIT started();
}

void SoundButtons::stop()
{
    m_player.StopPlay();
    showPlaying(false);
    Q_EMIT stopped();
}

void SoundButtons::showPlaying(bool isPlaying)
{
    const bool hadFocus = m_cmdSndStart->hasFocus() || m_cmdSndStop->hasFocus();
    m_cmdSndStart->setEnabled(!isPlaying);
    m_cmdSndStop->setEnabled(isPlaying);
    if (hadFocus)
        (isPlaying ? m_cmdSndStop : m_cmdSndStart)->setFocus();
}

void SoundButtons::showFault(bool isFault)
{
    m_lblMidiPlaybackErr->setVisible(isFault);
    m_lblAdvice->setVisible(isFault);
    const bool hasPlayer = !media::playerFor(m_context, m_path).program.isEmpty();
    m_lblAdvice->setText(
        hasPlayer
            ? u"Die Datei ist vielleicht beschädigt, oder dem PC fehlt ein Audiogerät. Nötige Pakete: %1."_s
                  .arg(media::playerPackages(m_path))
            : u"Dem PC fehlt ein Programm dafür. Nötige Pakete: %1."_s.arg(media::playerPackages(m_path)));
}

} // namespace kalmo::ui
