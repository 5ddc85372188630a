#include "ui/adaptors/ProgressWidgets.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPainter>
#include <QStyle>

#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

/// The part of a status text that stays the same while its figures run.
QString stepIn(const QString& text)
{
    const qsizetype dots = text.indexOf(u"..."_s);
    return dots < 0 ? text : text.first(dots);
}

} // namespace

StatusLabel::StatusLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setAccessibleName(u"Status"_s);
}

void StatusLabel::hold(const QString& text)
{
    const QString latest = Text();
    release();
    SetText(text);
    m_latest = latest;
    m_held = true;
}

void StatusLabel::release()
{
    if (std::exchange(m_held, false))
        SetText(m_latest);
}

/// The name of a label for a screen reader replaces its text, so the name is the text. Figures that run are
/// not read out: the sentence at the end would be lost among them.
void StatusLabel::announce(const QString& text)
{
    if (text == accessibleName())
        return;
    const bool isSameStep = stepIn(text) == stepIn(accessibleName());
    setAccessibleName(text.isEmpty() ? u"Status"_s : text);
    if (isSameStep || text.isEmpty())
        return;
    QAccessibleEvent changed(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&changed);
    Q_EMIT announced(text);
}

void StatusLabel::SetText(const QString& text)
{
    if (m_held) {
        m_latest = text;
        return;
    }
    setText(text);
    announce(text);
    setToolTip(fontMetrics().horizontalAdvance(text) > contentsRect().width() ? text : QString());
}

QSize StatusLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void StatusLabel::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    drawFrame(&painter);
    const QString firstLine = text().section(u'\n', 0, 0);
    const QString shown = fontMetrics().elidedText(firstLine, Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading),
                          palette(), isEnabled(), shown, foregroundRole());
    Q_UNUSED(event)
}

ProgressStrip::ProgressStrip(QWidget* parent) : QProgressBar(parent)
{
    setTextVisible(false);
    setFixedHeight(fontMetrics().height() * 3 / 4);
    setAccessibleName(u"Fortschritt"_s);
    hide();
}

CancelCheck::CancelCheck(QWidget* parent) : QToolButton(parent)
{
    setCheckable(true);
    setText(u"&Abbrechen"_s);
    setToolTip(u"Den laufenden Vorgang abbrechen"_s);
    setAccessibleName(u"Vorgang abbrechen"_s);
    setFocusPolicy(Qt::StrongFocus);
    // A request to stop can't be taken back: the operation may have acted on it already.
    connect(this, &QToolButton::toggled, this, [this](bool checked) { setEnabled(!checked); });
}

void CancelCheck::reset()
{
    setChecked(false);
}

void CancelCheck::answerIn(StatusLabel& status)
{
    connect(this, &QToolButton::toggled, &status, [&status](bool isPressed) {
        if (isPressed)
            status.hold(u"Wird abgebrochen ..."_s);
    });
}

WindowBusy::WindowBusy(const QList<QWidget*>& widgets) : m_widgets(widgets) {}

WindowBusy::~WindowBusy()
{
    Q_ASSERT(!isBusy());
}

void WindowBusy::SetBusy(bool busy)
{
    if (busy) {
        if (m_depth++ == 0)
            block();
        return;
    }
    if (m_depth > 0 && --m_depth == 0)
        release();
}

void WindowBusy::block()
{
    ++s_busy;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_focus = nullptr;
    for (QWidget* widget : std::as_const(m_widgets)) {
        if (!widget->isEnabled())
            continue;
        if (!m_focus)
            m_focus = widget->window()->focusWidget();
        m_disabled.append(widget);
        widget->setEnabled(false);
    }
}

void WindowBusy::release()
{
    --s_busy;
    QGuiApplication::restoreOverrideCursor();
    for (const QPointer<QWidget>& widget : std::exchange(m_disabled, {})) {
        if (widget)
            widget->setEnabled(true);
    }
    if (m_focus && m_focus->isEnabled())
        m_focus->setFocus();
}

} // namespace kalmo::ui
