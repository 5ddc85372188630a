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

    /// Shows a row of the list, and makes it the current one.
    void loadRow(int row);
    /// `existing`: saving replaces the list's current row. exec() follows.
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
