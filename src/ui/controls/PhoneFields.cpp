#include "ui/controls/PhoneFields.h"

#include "phonedata/EntryRules.h"
#include "phonedata/PhoneCharacters.h"

#include <QKeyEvent>

namespace kalmo::ui {

namespace {

/// Reduces a field to the result of `accepted`. The cursor goes to its end.
void restrictTo(QLineEdit& field, QString (*accepted)(const QString&))
{
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&field, accepted](const QString& text) {
        const QString rest = accepted(text);
        if (rest != text)
            field.setText(rest);
    });
}

/// The one character that a key types; null for all other keys.
QChar typedCharacter(const QKeyEvent& event)
{
    const QString text = event.text();
    return text.size() == 1 && text[0].isPrint() ? text[0] : QChar();
}

} // namespace

NameField::NameField(QWidget* parent) : QLineEdit(parent)
{
    setMaxLength(phonedata::longestName);
    restrictTo(*this, phonedata::acceptedName);
}

NumberField::NumberField(QWidget* parent) : QLineEdit(parent)
{
    setMaxLength(phonedata::longestNumber);
    restrictTo(*this, phonedata::acceptedNumber);
}

void NumberField::keyPressEvent(QKeyEvent* event)
{
    const QChar typed = typedCharacter(*event);
    if (typed == u'p' || typed == u'r')
        insert(typed.toUpper());
    else
        QLineEdit::keyPressEvent(event);
}

ContactNumberField::ContactNumberField(QWidget* parent) : QLineEdit(parent)
{
    setMaxLength(phonedata::longestNumber);
}

void ContactNumberField::keyPressEvent(QKeyEvent* event)
{
    const QChar typed = typedCharacter(*event);
    const bool passes = typed.isNull() || typed.unicode() >= 256 || phonedata::isContactNumberChar(typed);
    if (passes)
        QLineEdit::keyPressEvent(event);
}

} // namespace kalmo::ui
