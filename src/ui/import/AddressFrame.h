#pragma once

#include "toolkit/Dialogs.h"
#include "transfer/import/ImportOptions.h"

#include <QGroupBox>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;

namespace kalmo::ui {

/// The choices for an address book, `fraWab` for a classic list or `fraWabVcf` for contacts: the book, and
/// which of its fields go where.
class AddressFrame : public QGroupBox
{
    Q_OBJECT

public:
    AddressFrame(transfer::Shape shape, const transfer::AddressOptions& options, toolkit::Dialogs& dialogs,
                 QWidget* parent = nullptr);

    void showPath(const QString& path);
    /// Checks the fields each time they are left, except for `exit`.
    void guardAgainst(const QWidget* exit);
    /// Checks the numbers of characters. Returns true after a message if one of them is none; it has the
    /// focus then.
    bool rejectsFields();
    /// Writes the choices into the options.
    void take(transfer::AddressOptions& options) const;

Q_SIGNALS:
    void bookWanted(bool isFolder);
    void changed();

private:
    /// The controls for one of a contact's numbers.
    struct NumberLine
    {
        QCheckBox* chkProcessNr;
        QComboBox* cmbCount1;
        QComboBox* cmbField1;
        QLineEdit* txtMiddle;
        QComboBox* cmbCount2;
        QComboBox* cmbField2;
        QLineEdit* txtEnd;
    };

    QWidget* makeBookLine();
    QWidget* makeNumbers(const transfer::AddressOptions& options);
    NumberLine makeNumberLine(size_t kind, const transfer::SubNumberOptions& options, QGridLayout& grid);
    QComboBox* makeCount(const QString& name, const QStringList& counts, const QString& shown);
    QLineEdit* makeText(const QString& name, const QString& text, const QString& spoken);
    QWidget* makeContactFields(const transfer::AddressOptions& options);
    QWidget* makeBirthdays(const transfer::AddressOptions& options);
    bool rejectsCount(QComboBox& box, const QString& which);

    transfer::Shape m_shape;
    toolkit::Dialogs& m_dialogs;
    QPushButton* m_cmdWabOpen;
    QLineEdit* m_txtWabPath;
    QList<NumberLine> m_numbers;
    QList<QComboBox*> m_fields;
    QCheckBox* m_chkBirthdays;
    QComboBox* m_cmbTime;
};

} // namespace kalmo::ui
