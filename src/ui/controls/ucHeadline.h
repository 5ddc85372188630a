#pragma once

#include <QWidget>

namespace kalmo::ui {

/// A caption with a rule behind it, which opens a group of controls.
class ucHeadline : public QWidget
{
    Q_OBJECT

public:
    explicit ucHeadline(const QString& caption, QWidget* parent = nullptr);
};

} // namespace kalmo::ui
