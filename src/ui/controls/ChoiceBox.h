#pragma once

#include <QComboBox>

namespace kalmo::ui {

/// A box whose choices take effect at once, in the phone for example. Keys and wheel open its list instead of
/// walking through the choices, so that `activated` comes for a choice alone and not for each step to it.
class ChoiceBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace kalmo::ui
