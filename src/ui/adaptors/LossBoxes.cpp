#include "ui/adaptors/LossBoxes.h"

#include "app/mdlTexts.h"
#include "link/mdlComm.h"
#include "obex/ResponseCodes.h"
#include "ui/adaptors/ProgressWidgets.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Answer;

namespace {

constexpr std::chrono::milliseconds lookAgain(10);

const QString accessError = u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"_s;

bool startsWithAny(const QString& text, const QStringList& starts)
{
    return std::ranges::any_of(starts, [&text](const QString& start) { return text.startsWith(start); });
}

/// Boxes about one request. They mean the line if it is dead, and else perhaps that request alone.
bool isAboutRequest(const QString& text)
{
    static const QStringList starts = {app::ResText(app::TextTransferError), accessError,
                                       u"Das Telefon antwortet nicht."_s,
                                       u"Die Vorwahleinstellungen konnten nicht"_s,
                                       u"Die bisherige Einstellung konnte nicht gelesen werden."_s};
    return startsWithAny(text, starts);
}

/// Failures of the data mode that no request of the same command gets over.
bool isLossInDataMode(const QString& text)
{
    static const QStringList starts = {accessError + obex::GetFriedlyErrMsg(obex::Timeout),
                                       accessError + obex::GetFriedlyErrMsg(obex::ChannelStuck),
                                       accessError + obex::GetFriedlyErrMsg(obex::ChannelNotOpen)};
    return startsWithAny(text, starts);
}

/// Boxes that only say that a command has failed. That of an import is none of them: the box of its success
/// follows it.
bool isResult(const QString& text)
{
    static const QStringList starts = {
        u"Fehler beim Zugriff auf das Telefon"_s, u"Fehler beim Lesen des Adressbuchs."_s,
        u"Fehler beim Schreiben des Adressbucheintrags."_s, u"Beim Löschen ist ein Fehler aufgetreten."_s};
    return startsWithAny(text, starts);
}

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
    const QString& text = message.text;
    const bool asksNothing = message.buttons == toolkit::Buttons::Ok;
    const bool isLoss = asksNothing && (isLossInDataMode(text) || (isLineDead() && isAboutRequest(text)));
    // A phone that comes back in the middle of the command does not make the box a second one.
    if (m_isTold && asksNothing && (isLoss || isAboutRequest(text) || isResult(text))) {
        showStatus(text);
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
