#include "ui/lists/SearchLine.h"

#include "ui/controls/SearchField.h"
#include "ui/lists/FilteredView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

SearchLine::SearchLine(FilteredView& view, QWidget* parent)
    : QWidget(parent), m_view(view), m_field(new QLineEdit(this)), m_count(new QLabel(this))
{
    m_field->setObjectName(u"txtSearch"_s);
    m_field->setAccessibleName(u"Liste durchsuchen"_s);
    m_field->setToolTip(u"Zeigt nur Zeilen, in denen alle Wörter vorkommen. Esc zeigt wieder alle."_s);
    makeSearchField(*m_field, u"Suchen (Strg+F)"_s);
    m_field->setMaximumWidth(m_field->fontMetrics().averageCharWidth() * 60);
    m_field->installEventFilter(this);
    m_view.installEventFilter(this);
    m_count->setObjectName(u"lblSearchCount"_s);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_field, 1);
    row->addWidget(m_count);
    row->addStretch(1);
    connect(m_field, &QLineEdit::textChanged, &m_view, &FilteredView::setFilter);
    connect(&m_view, &FilteredView::searchWanted, this, &SearchLine::startTyping);
    connect(&m_view, &FilteredView::filtered, this, &SearchLine::showCount);
}

void SearchLine::startTyping()
{
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void SearchLine::clear()
{
    m_field->clear();
}

bool SearchLine::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (watched == m_field && handleKey(key))
            return true;
        if (watched == &m_view && key == Qt::Key_Escape && m_view.isFiltered()) {
            clear();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool SearchLine::handleKey(int key)
{
    if (key == Qt::Key_Escape)
        clear();
    else if (key != Qt::Key_Down && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    m_view.enter();
    return true;
}

void SearchLine::showCount()
{
    if (!m_view.isFiltered()) { // the list may have removed the filter itself
        m_field->clear();
        m_count->clear();
        return;
    }
    m_count->setText(
        u"%1 von %2"_s.arg(QString::number(m_view.shownRows()), QString::number(m_view.model()->rowCount())));
}

} // namespace kalmo::ui
