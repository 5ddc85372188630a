#pragma once

<<<<<<< HEAD
#include <QWidget>

namespace kalmo::ui {

/// A caption with a rule behind it, which opens a group of controls.
class ucHeadline : public QWidget
=======
#include <QFrame>

namespace kalmo::ui {

/// The head of a dialog: a picture, what the dialog is for, and a line of help below it, if there is any.
class ucHeadline : public QFrame
>>>>>>> ui-window
{
    Q_OBJECT

public:
<<<<<<< HEAD
    explicit ucHeadline(const QString& caption, QWidget* parent = nullptr);
=======
    ucHeadline(const QString& iconName, const QString& title, const QString& help = {},
               QWidget* parent = nullptr);
>>>>>>> ui-window
};

} // namespace kalmo::ui
