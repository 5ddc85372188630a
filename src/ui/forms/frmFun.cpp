#include "ui/forms/frmFun.h"

#include "ui/panels/SponsorPicture.h"

#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

frmFun::frmFun(QWidget* parent) : QDialog(parent)
{
    setObjectName(u"frmFun"_s);
    setWindowTitle(u"Kalmo"_s);
    auto* picture = new SponsorPicture(u"fun.svg"_s, this);
    picture->setAccessibleName(u"Ein winkendes Telefon. Schließen mit Esc"_s);
    connect(picture, &SponsorPicture::clicked, this, &QDialog::accept);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->addWidget(picture);
    setFixedSize(picture->sizeHint());
}

} // namespace kalmo::ui
