#include "ui/import/HintList.h"

#include "ui/controls/Named.h"
#include "ui/icons/Icons.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

HintList::HintList(QWidget* parent) : QFrame(parent), m_lines(new QWidget), m_layout(new QVBoxLayout(m_lines))
{
    setObjectName(u"fraHints"_s);
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setAutoFillBackground(true);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(fontMetrics().lineSpacing() / 4);
    auto* column = new QVBoxLayout(this);
    const int margin = fontMetrics().lineSpacing() / 3;
    column->setContentsMargins(margin * 2, margin, margin * 2, margin);
    column->addWidget(m_lines);
    hide();
}

void HintList::show(const std::vector<transfer::ImportHint>& hints)
{
    if (hints == m_shown)
        return;
    m_shown = hints;
    // A button's own click may have led here.
    for (QWidget* line : m_lines->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        m_layout->removeWidget(line);
        line->hide();
        line->deleteLater();
    }
    for (const transfer::ImportHint& hint : hints)
        m_layout->addWidget(makeLine(hint));
    orderButtons();
    setVisible(!hints.empty());
}

/// New widgets are last for the Tab key. These follow the control ahead of the list.
void HintList::orderButtons()
{
    QWidget* last = previousInFocusChain();
    while (last->focusPolicy() == Qt::NoFocus && last != this)
        last = last->previousInFocusChain();
    for (QWidget* button : m_lines->findChildren<QPushButton*>()) {
        setTabOrder(last, button);
        last = button;
    }
}

QWidget* HintList::makeLine(const transfer::ImportHint& hint)
{
    const QString key = transfer::textOf(hint.kind).key.toString();
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    auto* picture = new QLabel;
    const int size = fontMetrics().height();
    picture->setPixmap(icon(u"warning"_s).pixmap(size, size));
    auto* text = named(new QLabel(transfer::germanOf(hint) + u'.'), u"lblHint_"_s + key);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setForegroundRole(QPalette::ToolTipText);
    row->addWidget(picture);
    row->addWidget(text, 1);
    const QString mending = transfer::mendingOf(hint);
    if (mending.isEmpty())
        return line;
    auto* button = named(new QPushButton(mending), u"cmdMend_"_s + key, mending);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, hint] { Q_EMIT mendingWanted(hint); });
    row->addWidget(button);
    return line;
}

} // namespace kalmo::ui
