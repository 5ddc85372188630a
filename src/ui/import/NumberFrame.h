#pragma once

#include "transfer/import/NumberRewriting.h"

#include "toolkit/Dialogs.h"
#include "transfer/import/ImportFields.h"

#include <QGroupBox>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace kalmo::ui {

/// The choices for numbers: the own country's code, for a classic list, and the digits for an outside line.
class NumberFrame : public QGroupBox
{
    Q_OBJECT

public:
    NumberFrame(transfer::Shape shape, const transfer::NumberRules& rules, toolkit::Dialogs& dialogs,
                QWidget* parent = nullptr);

    /// Checks the fields each time they are left, except for `exit`.
    void guardAgainst(const QWidget* exit);
    /// Returns true, after a message, if a field has a bad value.
    bool rejectsFields();
    /// Writes the choices into the rules.
    void take(transfer::NumberRules& rules) const;

Q_SIGNALS:
    void changed();

private:
    QWidget* makeCountryLine();
    QWidget* makeOutsideLine();
    void enableOutside();
    bool rejectsCountry();
    bool rejectsOutside();

    transfer::Shape m_shape;
    toolkit::Dialogs& m_dialogs;
    QCheckBox* m_chk49_00;
    QLineEdit* m_txtCountry;
    QCheckBox* m_chkAmt;
    QLineEdit* m_txtAmt;
    QCheckBox* m_chkAmtNurWenn;
    QComboBox* m_cmbAmtMinLen;
};

} // namespace kalmo::ui
