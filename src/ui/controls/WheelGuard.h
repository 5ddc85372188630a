#pragma once

#include <QObject>

namespace kalmo::ui {

/// Keeps the mouse wheel from changing a box that the user has not clicked. Over a box without the focus it
/// scrolls the page and does not give the focus. Watches all widgets of the program during its lifetime.
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    explicit WheelGuard(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace kalmo::ui
