#pragma once

#include "toolkit/Dialogs.h"
#include "toolkit/Ending.h"

class QMessageBox;
class QWidget;

namespace kalmo::ui {

/// Gives a box the look that all boxes of the program share: its picture, buttons without the toolkit's
/// icons, and a text that can be selected.
void dressBox(QMessageBox& box, toolkit::Icon icon);

/// A question with "Ja" and "Nein" that stays open beside an operation: a box that waits would hold that up.
/// It has the usual mouse pointer, "Nein" is the default, and it deletes itself. The caller opens it.
QMessageBox* makeSideQuestion(const QString& text, QWidget* parent);

/// Message boxes and file dialogs, modal to the active window.
class QtDialogs final : public toolkit::Dialogs
{
public:
    toolkit::Answer Show(const toolkit::Message& message) override;
    QString OpenFile(const toolkit::FileRequest& request) override;
    QStringList OpenFiles(const toolkit::FileRequest& request) override;
    QString SaveFile(const toolkit::FileRequest& request) override;
    QString PickFolder(const QString& title, const QString& start) override;
};

/// Ends the process at once. Resources outside of the process, such as the port, are released by the system.
class QtEnding final : public toolkit::Ending
{
    [[noreturn]] void end(int status) override;
};

} // namespace kalmo::ui
