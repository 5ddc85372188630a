#pragma once

#include "ui/help/HelpPages.h"

#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kalmo::ui {

/// Parts of all dialogs that edit an entry.

/// Gives a layout the common margins and distances, in proportion to the font.
void makeRoom(QLayout& layout);

/// A row of a form: the label, which may hold a mnemonic, and its field.
QLabel* addField(QFormLayout& form, const QString& label, QWidget* field);

/// Shows a stored text, even one that is longer than the user may type: saving must not cut it.
void showWhole(QLineEdit& field, const QString& text);

/// The frame `Frame1` with the fields `txtName` and `txtNr` of a classic list.
QGroupBox* makeNameAndNumber(QLineEdit* txtName, QLineEdit* txtNr);

/// The two buttons at the foot of a dialog, for Enter and Escape. The second closes it. The dialog blocks its
/// window only, so that the help can be read beside it; F1 opens that at the topic.
QWidget* makeSaveAndCancel(QDialog& dialog, QPushButton* save, QPushButton* cancel,
                           int helpTopic = helpTopicStart);

/// Asks for name and number if one of them is missing.
inline constexpr QStringView nameAndNumberMissing = u"Bitte geben Sie Namen und Nummer ein!";

} // namespace kalmo::ui
