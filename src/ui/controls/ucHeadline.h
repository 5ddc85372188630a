#pragma once

#include <QFrame>

namespace kalmo::ui {

/// The head of a dialog: a picture, what the dialog is for, and a line of help below it, if there is any.
class ucHeadline : public QFrame
{
    Q_OBJECT

public:
    ucHeadline(const QString& iconName, const QString& title, const QString& help = {},
               QWidget* parent = nullptr);
};

} // namespace kalmo::ui
