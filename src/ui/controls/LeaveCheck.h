#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

namespace kalmo::ui {

/// Runs a check each time the user leaves a field by key or mouse, unless it is for `exit`, the button that
/// gives the dialog up. A check that returns true takes the focus back to the field. It runs once the focus
/// has arrived elsewhere, so that it may show a box. Belongs to the field.
class LeaveCheck : public QObject
{
    Q_OBJECT

public:
    LeaveCheck(QWidget& field, const QWidget* exit, std::function<bool()> keepsFocus);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void check();

    QWidget& m_field;
    QPointer<const QWidget> m_exit;
    std::function<bool()> m_keepsFocus;
};

} // namespace kalmo::ui
