#pragma once

#include "app/Context.h"

#include <QFrame>

class QAbstractButton;
class QCalendarWidget;
class QComboBox;
class QLineEdit;

namespace kalmo::ui {

/// The calendar that drops down from a date field, and the one place where typed dates are checked. It opens
/// as a popup, so that a click beside it cancels it.
class ucCalendar : public QFrame
{
    Q_OBJECT

public:
    explicit ucCalendar(app::Context& context, QWidget* parent = nullptr);

    /// Goes back to the last date that was set by Today, setValue or Validate2TxtBox, and raises cancelled.
    void Cancel();
    void Today();

    QDate value() const;
    /// A date that the calendar doesn't reach is told, and changes nothing.
    void setValue(QDate date);

    void Value2TxtBox(QLineEdit& textBox) const;
    /// Takes the date of a text box and writes it back in the short form. True, told to the user and with the
    /// text selected, if it is none or out of reach: the box has to keep the focus.
    bool Validate2TxtBox(QLineEdit& textBox);

    /// Drops down from a text box.
    void openBelow(const QWidget& textBox);

Q_SIGNALS:
    void dateChosen(const QDate& date); ///< a tenth of a second after a day was clicked
    void cancelled();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fillCombos();
    void layOut();
    void updateCombos();
    void moveToCombos();
    void choose(QDate date);
    bool isInRange(QDate date) const;
    void tellOutOfRange() const;
    void tellNoDate(const QString& text) const;

    app::Context& m_context;
    QDate m_savedValue;
    QCalendarWidget* m_mvw;
    QComboBox* m_cmbMonth;
    QComboBox* m_cmbYear;
};

/// Makes one of a date's text box, the button that opens the calendar, and the calendar itself. Leaving the
/// box checks it, unless it is empty or the user goes to `exit`, the button that gives the dialog up.
void bindDateField(ucCalendar& calendar, QLineEdit& textBox, QAbstractButton& button, const QWidget* exit);

} // namespace kalmo::ui
