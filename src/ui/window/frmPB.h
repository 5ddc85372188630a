#pragma once

#include "obex/clsMmc.h"
#include "ui/Program.h"

#include <QMainWindow>

#include <memory>

namespace kalmo::ui {

/// Stands in for the main window until the one with its sections is merged.
class frmPB : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmPB(Program& program, std::shared_ptr<obex::clsMmc> mmc, QWidget* parent = nullptr);

Q_SIGNALS:
    void settingsRequested();
    void closedByUser();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::shared_ptr<obex::clsMmc> m_mmc;
};

} // namespace kalmo::ui
