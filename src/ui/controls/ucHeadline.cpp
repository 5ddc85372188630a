#include "ui/controls/ucHeadline.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

namespace kalmo::ui {

ucHeadline::ucHeadline(const QString& caption, QWidget* parent) : QWidget(parent)
{
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
