#include "ui/window/StatusArea.h"

#include "ui/window/ConnectionLight.h"

#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {
constexpr int barWidth = 220;
const QString ready = u"Bereit."_s;
} // namespace

StatusArea::StatusArea(const link::Line& line, QWidget* parent)
    : QStatusBar(parent), m_text(new StatusLabel(this)), m_bar(new ProgressStrip(this)),
      m_cancel(new CancelCheck(this)), m_connection(new ConnectionLight(line, this))
{
    setObjectName(u"sta"_s);
    setAccessibleName(u"Statusleiste"_s);
    m_text->setObjectName(u"sta_text"_s);
    m_bar->setObjectName(u"prg"_s);
    m_bar->setFixedWidth(barWidth);
    m_cancel->setObjectName(u"chkCancel"_s);
    m_cancel->hide();
    m_cancel->answerIn(*m_text);
    setContentsMargins(12, 0, 4, 0);
    addWidget(m_text, 1);
    addPermanentWidget(m_bar);
    addPermanentWidget(m_cancel);
    addPermanentWidget(m_connection);
    connect(m_connection, &ConnectionLight::lost, this, &StatusArea::showAdvice);
    connect(m_connection, &ConnectionLight::regained, this, &StatusArea::takeAdviceBack);
    connect(m_connection, &ConnectionLight::searchWanted, this, &StatusArea::searchWanted);
    // Otherwise the bar would grow and shrink with the button.
    setMinimumHeight(m_cancel->sizeHint().height() + 6);
}

void StatusArea::setBlocked(const QList<QWidget*>& widgets)
{
    m_busy = std::make_unique<WindowBusy>(widgets);
}

void StatusArea::SetBusy(bool busy)
{
    const bool wasBusy = isBusy();
    if (busy && !wasBusy)
        m_cancel->reset();
    m_busy->SetBusy(busy);
    offerCancel(m_offersCancel && (isBusy() || !wasBusy));
    m_connection->offerSearch(!isBusy());
    if (!wasBusy || isBusy())
        return;
    m_text->release();
    m_connection->noteEnd();
    Q_EMIT becameIdle();
}

void StatusArea::offerCancel(bool offered)
{
    m_offersCancel = offered;
    m_cancel->setVisible(offered && isBusy());
}

void StatusArea::cancel()
{
    if (isBusy() && m_offersCancel)
        m_cancel->setChecked(true);
}

void StatusArea::showEmulated(bool isEmulated)
{
    m_connection->showEmulated(isEmulated);
}

/// Keeps the sentence that says how the last operation has ended.
void StatusArea::showAdvice(const QString& advice)
{
    if (advice == m_advice && m_text->Text().contains(advice))
        return;
    QString before = m_text->Text();
    before = before.remove(std::exchange(m_advice, advice)).trimmed();
    const bool isResult = before.endsWith(u'.') && !before.endsWith(u"..."_s) && before != ready;
    m_text->SetText(isResult ? before + u' ' + advice : advice);
    Q_EMIT connectionLost();
}

/// Keeps what was shown beside the advice.
void StatusArea::takeAdviceBack()
{
    const QString advice = std::exchange(m_advice, {});
    QString text = m_text->Text();
    if (advice.isEmpty() || !text.contains(advice))
        return;
    text = text.remove(advice).trimmed();
    m_text->SetText(text.isEmpty() ? ready : text);
}

void StatusArea::showResult(const QString& sentence)
{
    m_text->SetText(m_advice.isEmpty() ? sentence : sentence + u' ' + m_advice);
}

void StatusArea::showReady()
{
    m_text->SetText(m_advice.isEmpty() ? ready : m_advice);
}

void StatusArea::showBytes(qint64 count)
{
    const QString text = m_text->Text();
    const qsizetype dots = text.indexOf(u"..."_s);
    if (text == u"Datenkanal geschlossen."_s || dots < 0)
        return;
    m_text->SetText(text.first(dots + 3) + u"   %1 Bytes empfangen"_s.arg(count));
}

} // namespace kalmo::ui
