#pragma once

#include <QLineEdit>

namespace kalmo::ui {

/// A handset's name field: what it can't hold is cut off, with all that stands behind it.
class NameField : public QLineEdit
{
    Q_OBJECT

public:
    explicit NameField(QWidget* parent = nullptr);
};

/// The same for a number. "p" and "r" are typed as "P" and "R".
class NumberField : public QLineEdit
{
    Q_OBJECT

public:
    explicit NumberField(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A number of a contact: keys that can't stand in one do nothing. What is pasted is looked at later.
class ContactNumberField : public QLineEdit
{
    Q_OBJECT

public:
    explicit ContactNumberField(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace kalmo::ui
