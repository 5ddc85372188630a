#pragma once

#include "toolkit/ListRows.h"
#include "ui/Program.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace kalmo::ui {

/// Edits one row of the provider list. It writes into the list only: the phone learns of it by the next
/// "Schreiben".
class frmNEentry : public QDialog
{
    Q_OBJECT

public:
    frmNEentry(Program& program, toolkit::ListRows& lvwNE, QWidget* parent = nullptr);

    /// Shows what a row of the list holds, and makes it the current one.
    void loadRow(int row);
    /// Whether the list's current row is to be replaced; exec() follows.
    void Form_Present(bool edit);

Q_SIGNALS:
    void listChanged(); ///< the list differs from the phone's now

private:
    void cmdSpeicher_Click();

    Program& m_program;
    toolkit::ListRows& m_list;
    bool m_edit = false;
    QLineEdit* m_txtName;
    QLineEdit* m_txtNr;
    QPushButton* m_cmdSpeicher;
    QPushButton* m_cmdCancel;
};

} // namespace kalmo::ui
