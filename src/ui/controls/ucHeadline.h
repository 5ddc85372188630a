#pragma once

#include <QFrame>

namespace kalmo::ui {

/// The head of a dialog: a picture, the purpose of the dialog, and perhaps a line of help below it.
class ucHeadline : public QFrame
{
    Q_OBJECT

public:
    ucHeadline(const QString& iconName, const QString& title, const QString& help = {},
               QWidget* parent = nullptr);
};

} // namespace kalmo::ui
