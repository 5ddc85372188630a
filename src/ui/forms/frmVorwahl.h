#pragma once

#include "operations/Outcome.h"
#include "phonedata/AreaCodes.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/Program.h"

#include <QDialog>

#include <array>
#include <memory>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kalmo::ui {

/// Shows and sets the four area codes with which a phone rewrites its numbers.
class frmVorwahl : public QDialog
{
    Q_OBJECT

public:
    explicit frmVorwahl(Program& program, QWidget* parent = nullptr);
    ~frmVorwahl() override;

    /// Shows the codes of a phone's answer.
    void Form_Present(const QString& answer);

    void reject() override;

private:
    QGroupBox* makeFields();
    void chkUseVw_Click(bool checked);
    void cmdSpeicher_Click();
    bool rejectCode(const QLineEdit& field) const;
    bool sendCodes(const phonedata::AreaCodes& codes);
    void tellFailure(const operations::Outcome& outcome);

    Program& m_program;
    QCheckBox* m_chkUseVw;
    std::array<QLineEdit*, 4> m_txtVw;
    QList<QLabel*> m_label1;
    QPushButton* m_cmdSpeicher;
    QPushButton* m_cmdCancel;
    StatusLabel* m_sta;
    QGroupBox* m_frame1;
    std::unique_ptr<WindowBusy> m_busy;
};

} // namespace kalmo::ui
