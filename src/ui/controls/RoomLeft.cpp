#include "ui/controls/RoomLeft.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int gap = 6; // pixels between the text, the number and the frame

QString wordsFor(qsizetype left)
{
    return left == 1 ? u"noch 1 Zeichen"_s : u"noch %1 Zeichen"_s.arg(left);
}

} // namespace

RoomLeft::RoomLeft(QLineEdit& field) : QObject(&field), m_field(field), m_label(new QLabel(&field))
{
    m_label->setObjectName(field.objectName() + u"_left"_s);
    QFont font = m_label->font();
    font.setItalic(true);
    m_label->setFont(font);
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_label->hide();
    field.installEventFilter(this);
    connect(&field, &QLineEdit::textChanged, this, &RoomLeft::show);
}

bool RoomLeft::eventFilter(QObject* watched, QEvent* event)
{
    if (!qobject_cast<QLineEdit*>(watched)) // the field is being destroyed
        return false;
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        show();
    else if (event->type() == QEvent::Resize)
        place();
    return false;
}

void RoomLeft::show()
{
    const qsizetype left = std::max<qsizetype>(m_field.maxLength() - m_field.text().size(), 0);
    m_label->setText(wordsFor(left));
    m_field.setAccessibleDescription(wordsFor(left));
    m_label->setVisible(m_field.hasFocus() && m_field.isEnabled());
    m_field.setTextMargins(0, 0, m_label->isVisible() ? m_label->sizeHint().width() + gap : 0, 0);
    place();
}

void RoomLeft::place()
{
    const QSize size = m_label->sizeHint();
    m_label->setGeometry(m_field.width() - size.width() - gap, (m_field.height() - size.height()) / 2,
                         size.width(), size.height());
}

} // namespace kalmo::ui
