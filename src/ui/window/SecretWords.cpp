#include "ui/window/SecretWords.h"

#include "ui/forms/frmFun.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype remembered = 16;
constexpr int captionTick = 150; // milliseconds

const QString funWord = u"spass?"_s;
const QString creditsWord = u"danke?"_s;
const QString thanks =
    u"Vielen Dank an alle, die Kalmo ausprobiert, Fehler gemeldet und Kabel verliehen haben! "
    u"+++ "_s;

} // namespace

SecretWords::SecretWords(QWidget* window, std::function<bool()> isBusy)
    : QObject(window), m_window(window), m_isBusy(std::move(isBusy))
{
    tmrCredits.setInterval(captionTick);
    connect(&tmrCredits, &QTimer::timeout, this, &SecretWords::moveCaption);
    QCoreApplication::instance()->installEventFilter(this);
}

bool SecretWords::eventFilter(QObject* watched, QEvent* event)
{
    // The native window gets each key once; widgets pass it on to their parents.
    if (event->type() == QEvent::KeyPress && watched == m_window->windowHandle())
        typed(static_cast<QKeyEvent*>(event)->text());
    return false;
}

void SecretWords::typed(const QString& text)
{
    // Without a text it is Shift, before a question mark.
    if (text.isEmpty() || m_isBusy())
        return;
    if (tmrCredits.isActive()) {
        tmrCredits.stop();
        m_window->setWindowTitle({});
    }
    m_typed = (m_typed + text).right(remembered);
    if (m_typed.endsWith(funWord))
        showFun();
    else if (m_typed.endsWith(creditsWord))
        startCredits();
}

void SecretWords::showFun()
{
    auto* form = new frmFun;
    form->setAttribute(Qt::WA_DeleteOnClose);
    connect(form, &QObject::destroyed, m_window, &QWidget::show);
    m_window->hide();
    form->show();
}

void SecretWords::startCredits()
{
    m_window->setWindowTitle(thanks);
    tmrCredits.start();
}

void SecretWords::moveCaption()
{
    const QString caption = m_window->windowTitle();
    m_window->setWindowTitle(caption.sliced(1) + caption.first(1));
}

} // namespace kalmo::ui
