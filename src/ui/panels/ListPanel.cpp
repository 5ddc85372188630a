#include "ui/panels/ListPanel.h"

#include "ui/icons/Icons.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

ListPanel::ListPanel(const QString& name, toolkit::ListRows& rows, bool plainASelects, QWidget* parent)
    : PanelFrame(name, parent), m_view(new RowsView(this)), m_search(new SearchLine(*m_view, this)),
      m_note(new QLabel(this)), m_plainASelects(plainASelects)
{
    m_view->setRows(rows);
    m_view->setIconSource([](const toolkit::ListRow& row) { return icon(row.icon); });
    m_view->installEventFilter(this);
    m_note->setWordWrap(true);
    m_note->setTextFormat(Qt::PlainText);
    keepNoteReadable();
    content()->addWidget(m_search);
    content()->addWidget(m_view, 1);
    content()->addWidget(m_note);
    setTabOrder(m_search->findChild<QLineEdit*>(), m_view);
    connect(m_view, &RowsView::rowDoubleClicked, this, [this] { Q_EMIT commandWanted(Command::Edit); });
}

void ListPanel::setNote(const QStringList& lines, const QString& name)
{
    m_note->setText(lines.join(u'\n'));
    m_note->setObjectName(name);
}

void ListPanel::changeEvent(QEvent* event)
{
    PanelFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        keepNoteReadable();
}

/// Also while the phone is busy, when the window is disabled.
void ListPanel::keepNoteReadable()
{
    QPalette colours;
    colours.setColor(QPalette::Disabled, QPalette::WindowText,
                     palette().color(QPalette::Active, QPalette::WindowText));
    m_note->setPalette(colours);
}

bool ListPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (handleKey(key->key(), key->modifiers()))
            return true;
    }
    return PanelFrame::eventFilter(watched, event);
}

bool ListPanel::handleKey(int key, Qt::KeyboardModifiers modifiers)
{
    const bool isCommand = modifiers.testFlag(Qt::ControlModifier);
    const bool isLetterOfName = !isCommand && m_view->isTypingName();
    if (key == Qt::Key_A && (isCommand || m_plainASelects) && !isLetterOfName) {
        m_view->selectAll();
        return true;
    }
    if (key != Qt::Key_Delete)
        return false;
    Q_EMIT commandWanted(Command::Delete);
    return true;
}

} // namespace kalmo::ui
