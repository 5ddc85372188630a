#pragma once

#include <QMessageBox>

namespace kalmo::ui {

/// A message box that scrolls a text for which the screen has no room, so that its buttons stay in sight.
class ScrolledBox : public QMessageBox
{
    Q_OBJECT

public:
    using QMessageBox::QMessageBox;

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void scrollText();

    bool m_isScrolled = false;
};

} // namespace kalmo::ui
