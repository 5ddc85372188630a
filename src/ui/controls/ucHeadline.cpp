#include "ui/controls/ucHeadline.h"

<<<<<<< HEAD
#include <QFrame>
=======
#include "ui/icons/Icons.h"

>>>>>>> ui-window
#include <QHBoxLayout>
#include <QLabel>

namespace kalmo::ui {

<<<<<<< HEAD
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
=======
namespace {

constexpr int pictureSize = 32; // logical pixels
constexpr double titleScale = 1.25;

} // namespace

ucHeadline::ucHeadline(const QString& iconName, const QString& title, const QString& help, QWidget* parent)
    : QFrame(parent)
{
    auto* picture = new QLabel;
    picture->setPixmap(pixmap(iconName, pictureSize, devicePixelRatioF()));
    auto* shownTitle = new QLabel(title);
    QFont font = shownTitle->font();
    font.setPointSizeF(font.pointSizeF() * titleScale);
    font.setBold(true);
    shownTitle->setFont(font);
    auto* texts = new QVBoxLayout;
    texts->addWidget(shownTitle);
    if (!help.isEmpty()) {
        auto* shownHelp = new QLabel(help);
        shownHelp->setObjectName(QStringLiteral("lblHilf"));
        shownHelp->setWordWrap(true);
        texts->addWidget(shownHelp);
    }
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(layout->spacing() * 2);
    layout->addWidget(picture, 0, Qt::AlignTop);
    layout->addLayout(texts, 1);
>>>>>>> ui-window
}

} // namespace kalmo::ui
