#pragma once

#include "ui/adaptors/ProgressWidgets.h"
#include "ui/forms/ContactCommands.h"
#include "ui/Program.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace kalmo::ui {

class ucCalendar;

/// Makes or changes one contact of the vCard phonebook. Saving writes it to the phone at once.
class frmVCFneu : public QDialog
{
    Q_OBJECT

public:
    /// Empty, for a new contact.
    frmVCFneu(Program& program, std::shared_ptr<phonedata::VcardStore> store, QWidget* parent = nullptr);
    ~frmVCFneu() override;

    /// Shows the contact of a row of the store's list. Saving replaces it.
    void loadRow(int row);
    /// The contact that the fields make.
    phonedata::tVcfEntry entry() const;

    /// Result of the last save, nothing without one.
    std::optional<phonedata::CommandResult> lastSave() const { return m_lastSave; }
    const EditedContact& edited() const { return m_edited; }

    void reject() override;

Q_SIGNALS:
    /// True after a contact was saved, false if the user gave the dialog up or a save failed.
    void listChanged(bool changed);

private:
    QWidget* makeFields();
    void addText(QFormLayout& form, const QString& label, QLineEdit* field, int longest);
    void addNumber(QFormLayout& form, const QString& label, QLineEdit* field);
    void addBirthday(QFormLayout& form);
    QWidget* makeStatusBar();
    void loadBirthday(const QString& birthday);
    void chkGebu_Click(bool checked);
    void cmdSpeichern_Click();
    phonedata::CommandResult send();
    bool rejectNumber(QLineEdit& field);
    bool rejectTime();
    bool rejectAnyNumber();
    bool rejectBirthday();
    bool askAboutLosses();
    void tell(const QString& text) const;

    Program& m_program;
    std::shared_ptr<phonedata::VcardStore> m_store;
    EditedContact m_edited;
    std::optional<phonedata::CommandResult> m_lastSave;
    ucCalendar* m_calGebu;
    QLineEdit* m_txtNachName;
    QLineEdit* m_txtVorname;
    QLineEdit* m_txtTelPrivat;
    QLineEdit* m_txtTelHandy;
    QLineEdit* m_txtTelGeschaeft;
    QLineEdit* m_txtEmail;
    QCheckBox* m_chkGebu;
    QLineEdit* m_txtGebu;
    QToolButton* m_cmdGebuEdit;
    QComboBox* m_cmbGebuTime;
    QLabel* m_lblDate = nullptr;
    QLabel* m_lblcmbGebuTimePre = nullptr;
    QLabel* m_lblSpNr;
    StatusLabel* m_sta;
    ProgressStrip* m_progBarStatus;
    CancelCheck* m_cancel;
    QPushButton* m_cmdSpeichern;
    QPushButton* m_cmdAbbruch;
    std::unique_ptr<WindowBusy> m_busy;
};

} // namespace kalmo::ui
