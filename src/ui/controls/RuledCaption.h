#pragma once

#include <QWidget>

namespace kalmo::ui {

/// A caption followed by a line, which opens a group of controls.
class RuledCaption : public QWidget
{
    Q_OBJECT

public:
    RuledCaption(const QString& name, const QString& caption, QWidget* parent = nullptr);
};

} // namespace kalmo::ui
