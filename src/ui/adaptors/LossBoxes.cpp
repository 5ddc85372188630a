#include "ui/adaptors/LossBoxes.h"

#include "link/mdlComm.h"
#include "ui/adaptors/ProgressWidgets.h"

#include <QApplication>
#include <QTimer>

#include <chrono>
#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::About;
using toolkit::Answer;

namespace {

constexpr std::chrono::milliseconds lookAgain(10);

/// Shows a text in the status bar of the window in front. Without one there, as while the user works in
/// another program, another window of ours shows it.
void showStatus(const QString& text)
{
    QWidgetList windows = QApplication::topLevelWidgets();
    if (QWidget* active = QApplication::activeWindow())
        windows.prepend(active);
    for (const QWidget* window : std::as_const(windows)) {
        auto* status = window->isVisible() ? window->findChild<StatusLabel*>() : nullptr;
        if (!status)
            continue;
        status->SetText(text.simplified());
        return;
    }
}

} // namespace

bool LossBoxes::isLineDead() const
{
    return m_line && (!m_line->port().IsOpen() || m_line->isSilent());
}

bool LossBoxes::isCommandRunning() const
{
    return m_open > 0 || WindowBusy::isAnyBusy() || (m_line && m_line->isWaiting());
}

Answer LossBoxes::Show(const toolkit::Message& message)
{
    // A request that fails on a dead line means the line, and else perhaps that request alone.
    const bool isLoss =
        message.about == About::LostSession || (message.about == About::Request && isLineDead());
    // A phone that comes back in the middle of the command does not make the box a second one.
    if (m_isTold && message.about != About::Other) {
        showStatus(message.text);
        return Answer::Ok;
    }
    m_isTold = m_isTold || isLoss;
    ++m_open;
    const Answer answer = m_shown.Show(message);
    --m_open;
    if (m_isTold)
        forgetLater();
    return answer;
}

/// The steps of a command follow each other without a turn of the event loop in which nothing is busy.
void LossBoxes::forgetLater()
{
    if (std::exchange(m_isWaiting, true))
        return;
    const auto look = [this] {
        m_isWaiting = false;
        if (isCommandRunning())
            forgetLater();
        else
            m_isTold = false;
    };
    QTimer::singleShot(isCommandRunning() ? lookAgain : std::chrono::milliseconds(0), this, look);
}

} // namespace kalmo::ui
