#pragma once

#include <QWidget>

#include <functional>

namespace kalmo::ui {

/// Checks a field each time the user leaves it by key or mouse, except for `exit`, the button that gives the
/// dialog up. If `rejects` returns true the focus goes back to the field. It runs once the focus has arrived
/// elsewhere, so that it may show a box. Belongs to the field.
class LeaveCheck : public QObject
{
    Q_OBJECT

public:
    LeaveCheck(QWidget& field, const QWidget* exit, std::function<bool()> rejects);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void check();

    QWidget& m_field;
    const QWidget* m_exit;
    std::function<bool()> m_rejects;
};

} // namespace kalmo::ui
