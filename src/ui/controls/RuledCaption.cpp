#include "ui/controls/RuledCaption.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

namespace kalmo::ui {

RuledCaption::RuledCaption(const QString& name, const QString& caption, QWidget* parent) : QWidget(parent)
{
    setObjectName(name);
    auto* label = new QLabel(caption, this);
    QFont bold = label->font();
    bold.setWeight(QFont::DemiBold);
    bold.setPointSizeF(bold.pointSizeF() * 1.1);
    label->setFont(bold);
    auto* rule = new QFrame(this);
    rule->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(label);
    row->addWidget(rule, 1);
}

} // namespace kalmo::ui
