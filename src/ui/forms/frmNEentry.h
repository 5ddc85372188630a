#pragma once

#include "toolkit/ListRows.h"
#include "ui/Program.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace kalmo::ui {

/// Edits one row of the provider list. It writes into the list only; "Schreiben" sends the list to the phone.
class frmNEentry : public QDialog
{
    Q_OBJECT

public:
    frmNEentry(Program& program, toolkit::ListRows& lvwNE, QWidget* parent = nullptr);

    /// Shows a row of the list and makes it the current one; saving replaces it. -1 for a new entry. exec()
    /// follows.
    void Form_Present(int row);

Q_SIGNALS:
    void listChanged(); ///< the list differs from the phone's now

private:
    void cmdSpeicher_Click();

    Program& m_program;
    toolkit::ListRows& m_list;
    int m_row = -1;
    QLineEdit* m_txtName;
    QLineEdit* m_txtNr;
    QPushButton* m_cmdSpeicher;
    QPushButton* m_cmdCancel;
};

} // namespace kalmo::ui
