#include "ui/window/frmPB.h"

#include <QCloseEvent>

namespace kalmo::ui {

frmPB::frmPB(Program&, std::shared_ptr<obex::clsMmc> mmc, QWidget* parent)
    : QMainWindow(parent), m_mmc(std::move(mmc))
{
    setObjectName(QStringLiteral("frmPB"));
}

void frmPB::closeEvent(QCloseEvent* event)
{
    event->accept();
    Q_EMIT closedByUser();
}

} // namespace kalmo::ui
