#include "ui/panels/PanelFrame.h"

#include <QLabel>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

PanelFrame::PanelFrame(const QString& name, QWidget* parent)
    : QFrame(parent), m_caption(new QLabel(this)), m_content(new QVBoxLayout(this))
{
    setObjectName(name);
    setFrameShape(QFrame::NoFrame);
    QFont font = m_caption->font();
    font.setPointSizeF(font.pointSizeF() * 1.35);
    font.setWeight(QFont::DemiBold);
    m_caption->setFont(font);
    m_caption->setObjectName(name + u"_caption"_s);
    m_caption->setTextFormat(Qt::PlainText);
    m_caption->setWordWrap(true);
    m_content->setContentsMargins(16, 12, 16, 8);
    m_content->setSpacing(10);
    m_content->addWidget(m_caption);
}

QString PanelFrame::caption() const
{
    return m_caption->text();
}

void PanelFrame::setCaption(const QString& text)
{
    m_caption->setText(text);
    setAccessibleName(text);
}

} // namespace kalmo::ui
