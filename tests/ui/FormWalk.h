#pragma once

#include <QStringList>

class QWidget;

namespace kalmo::tests {

/// Each of these walks a form that is shown, and returns one line for each fault, none where the form is
/// fine.

/// Parts of the form as the accessibility bus has them, down to rows, heads and menu entries: those without
/// a name or role where one is needed, whose text or value can't be read, or whose state is not the widget's.
QStringList unspokenParts(QWidget& form);

/// The same of the form's menus. Opens each. Those of buttons, which have an object name, need a spoken one
/// too.
QStringList unspokenMenus(const QWidget& form);

/// Letters that two labels, buttons or menus claim by Alt at the same time.
QStringList sharedMnemonics(const QWidget& form);

/// Controls that the Tab key does not reach, in either direction. The form must be the active window.
QStringList unreachableControls(QWidget& form);

/// Rows and columns of controls that the Tab key goes through in another order than that of their places.
QStringList wrongTabOrder(const QWidget& form);

/// Texts whose contrast with what they are painted on is below 4.5, the ratio that WCAG 2.1 asks for, down to
/// the cells, nodes and heads that are in sight. Controls that are disabled are passed over, as there.
QStringList paleTexts(QWidget& form);

/// Labels, buttons, fields and heads of columns that have less room than their text needs.
QStringList cutTexts(const QWidget& form);

/// Texts and fields that lie over their neighbours.
QStringList overlaps(const QWidget& form);

/// The form, if it is larger than the screen, or scrolls sideways.
QStringList beyondScreen(const QWidget& form);

} // namespace kalmo::tests
