#pragma once

#include "app/Context.h"

#include <QFrame>

class QAbstractButton;
class QCalendarWidget;
class QComboBox;
class QLineEdit;

namespace kalmo::ui {

/// The calendar that drops down from a date field. It also checks all typed dates. It opens as a popup, so
/// that a click beside it cancels it.
class ucCalendar : public QFrame
{
    Q_OBJECT

public:
    explicit ucCalendar(app::Context& context, QWidget* parent = nullptr);

    /// Returns to the last date that was set by Today, setValue or Validate2TxtBox, and emits cancelled.
    void Cancel();
    void Today();

    QDate value() const;
    /// Informs the user of a date out of range, which changes nothing.
    void setValue(QDate date);

    void Value2TxtBox(QLineEdit& textBox) const;
    /// Takes the date of a text box and writes it back in the short form. Returns true if it is no date or
    /// out of range, after it has informed the user and selected the text. The box has to keep the focus
    /// then.
    bool Validate2TxtBox(QLineEdit& textBox);

    /// Drops down from a text box.
    void openBelow(const QWidget& textBox);

Q_SIGNALS:
    void dateChosen(const QDate& date); ///< emitted a tenth of a second after a click on a day
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

/// Connects a date's text box, the button that opens the calendar, and the calendar. Leaving the box checks
/// it, unless it is empty or the user goes to `exit`, the button that gives the dialog up.
void bindDateField(ucCalendar& calendar, QLineEdit& textBox, QAbstractButton& button, const QWidget* exit);

} // namespace kalmo::ui
