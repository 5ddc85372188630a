#pragma once

#include <QLineEdit>

namespace kalmo::ui {

/// A handset's name field. The first character that it can't hold and everything after it are cut off.
class NameField : public QLineEdit
{
    Q_OBJECT

public:
    explicit NameField(QWidget* parent = nullptr);
};

/// Does the same for a number. "p" and "r" are typed as "P" and "R".
class NumberField : public QLineEdit
{
    Q_OBJECT

public:
    explicit NumberField(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A number of a contact. Keys for characters that it can't contain do nothing. Pasted text is checked later.
class ContactNumberField : public QLineEdit
{
    Q_OBJECT

public:
    explicit ContactNumberField(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace kalmo::ui
