#pragma once

#include <QDialog>

namespace kalmo::ui {

/// A small form with a picture. Esc closes it.
class frmFun : public QDialog
{
    Q_OBJECT

public:
    explicit frmFun(QWidget* parent = nullptr);
};

} // namespace kalmo::ui
