#pragma once

#include <QLineEdit>

class QLabel;

namespace kalmo::ui {

/// Says at the right end of a field with a limit how many characters are left, while the user types there.
/// The field must have its limit already. Belongs to the field.
class RoomLeft : public QObject
{
    Q_OBJECT

public:
    explicit RoomLeft(QLineEdit& field);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show();
    void place();

    QLineEdit& m_field;
    QLabel* m_label;
};

} // namespace kalmo::ui
