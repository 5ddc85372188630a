#pragma once

#include "toolkit/ListRows.h"
#include "ui/Program.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace kalmo::ui {

class ucCalendar;

/// Edits one row of the classic phonebook. It writes into the list only; "Schreiben" sends the list to the
/// phone.
class frmTBentry : public QDialog
{
    Q_OBJECT

public:
    frmTBentry(Program& program, toolkit::ListRows& lvwTB, QWidget* parent = nullptr);

    /// Shows a row of the list and makes it the current one; saving replaces it. -1 for a new entry. exec()
    /// follows.
    void Form_Present(int row);

Q_SIGNALS:
    void listChanged(); ///< the list differs from the phone's now

private:
    QWidget* makeDatePart();
    QWidget* makeVipPart();
    void fillCombos();
    void chkUsebDate_Click(bool checked);
    void chkVip_Click(bool checked);
    void cmdSpeicher_Click();
    bool refuseTime();
    bool isDateGiven();
    phonedata::ClassicEntry entry() const;
    void tell(const QString& text, QWidget& field);

    Program& m_program;
    toolkit::ListRows& m_list;
    int m_row = -1;
    ucCalendar* m_calDate;
    QLineEdit* m_txtName;
    QLineEdit* m_txtNr;
    QCheckBox* m_chkUsebDate;
    QLineEdit* m_txtbDate;
    QToolButton* m_cmdEditDate;
    QComboBox* m_cmbTime;
    QComboBox* m_cmbAlarm;
    QLabel* m_lblCalNotive;
    QCheckBox* m_chkVip;
    QComboBox* m_cmbVipSnd;
    QLabel* m_lblcmbVipSndPre;
    QLabel* m_lblSprache;
    QPushButton* m_cmdSpeicher;
    QPushButton* m_cmdCancel;
    QList<QWidget*> m_dateControls;
};

} // namespace kalmo::ui
