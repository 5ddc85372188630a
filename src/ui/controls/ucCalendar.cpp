#include "ui/controls/ucCalendar.h"

#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/ReadableColour.h"
#include "ui/controls/ShortDate.h"

#include <QAbstractButton>
#include <QCalendarWidget>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <QTextCharFormat>
#include <QToolButton>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Icon;

namespace {

constexpr int firstYear = 1900;
constexpr int lastYear = 2099;
constexpr double pauseBeforeChosen = 0.1; // seconds for which the chosen day is shown

/// The toolkit paints the days of the neighbouring months, which can be chosen too, like disabled ones.
void makeAllDaysReadable(QCalendarWidget& days)
{
    QPalette colours;
    colours.setColor(QPalette::Disabled, QPalette::Text,
                     readableOn(days.palette().color(QPalette::Disabled, QPalette::Text),
                                days.palette().color(QPalette::Base)));
    days.setPalette(colours);
}

} // namespace

ucCalendar::ucCalendar(app::Context& context, QWidget* parent)
    : QFrame(parent, Qt::Popup), m_context(context), m_savedValue(context.clock.Now().date()),
      m_mvw(named(new QCalendarWidget(this), u"mvw"_s, u"Tag"_s)),
      m_cmbMonth(named(new QComboBox(this), u"cmbMonth"_s, u"Monat"_s)),
      m_cmbYear(named(new QComboBox(this), u"cmbYear"_s, u"Jahr"_s))
{
    setFrameStyle(QFrame::Box | QFrame::Plain); // the dialog below has a colour of its own
    setAccessibleName(u"Kalender"_s);
    fillCombos();
    layOut();
    m_mvw->setNavigationBarVisible(false);
    m_mvw->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        m_mvw->setWeekdayTextFormat(day, {}); // red is not readable on a dark ground
    makeAllDaysReadable(*m_mvw);
    m_mvw->setDateRange(QDate(firstYear, 1, 1), QDate(lastYear, 12, 31));
    m_mvw->setSelectedDate(m_savedValue);
    updateCombos();
    connect(m_mvw, &QCalendarWidget::clicked, this, &ucCalendar::choose);
    connect(m_mvw, &QCalendarWidget::activated, this, [this](QDate date) {
        if (isVisible()) // a click can emit both
            choose(date);
    });
    connect(m_mvw, &QCalendarWidget::currentPageChanged, this, &ucCalendar::updateCombos);
    connect(m_cmbMonth, &QComboBox::activated, this, &ucCalendar::moveToCombos);
    connect(m_cmbYear, &QComboBox::activated, this, &ucCalendar::moveToCombos);
}

void ucCalendar::fillCombos()
{
    for (int month = 1; month <= 12; ++month)
        m_cmbMonth->addItem(locale().standaloneMonthName(month));
    for (int year = firstYear; year <= lastYear; ++year)
        m_cmbYear->addItem(QString::number(year));
}

void ucCalendar::layOut()
{
    auto* imgCancel = named(new QToolButton(this), u"imgCancel"_s, u"Kalender schließen"_s);
    imgCancel->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    imgCancel->setToolTip(u"Kalender schließen"_s);
    imgCancel->setAutoRaise(true);
    connect(imgCancel, &QToolButton::clicked, this, &ucCalendar::Cancel);
    auto* header = new QHBoxLayout;
    header->addWidget(m_cmbMonth, 1);
    header->addWidget(m_cmbYear);
    header->addWidget(imgCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(header);
    layout->addWidget(m_mvw);
}

void ucCalendar::Cancel()
{
    m_mvw->setSelectedDate(m_savedValue);
    updateCombos();
    Q_EMIT cancelled();
}

void ucCalendar::Today()
{
    setValue(m_context.clock.Now().date());
}

QDate ucCalendar::value() const
{
    return m_mvw->selectedDate();
}

void ucCalendar::setValue(QDate date)
{
    if (!isInRange(date)) {
        tellOutOfRange();
        m_context.log.WriteDebugLog(u"Warning"_s, u"Let ucCalendar.Value="_s + toShortDate(date, locale()) +
                                                      u" out of range. Exit."_s);
        return;
    }
    m_mvw->setSelectedDate(date);
    m_savedValue = date;
    updateCombos();
}

void ucCalendar::Value2TxtBox(QLineEdit& textBox) const
{
    textBox.setText(toShortDate(value(), locale()));
}

bool ucCalendar::Validate2TxtBox(QLineEdit& textBox)
{
    const QString text = textBox.text();
    const QDate date = fromShortDate(text, locale(), m_context.clock.Now().date());
    if (date.isValid() && isInRange(date)) {
        setValue(date);
        Value2TxtBox(textBox);
        return false;
    }
    textBox.selectAll();
    if (!date.isValid()) {
        tellNoDate(text);
        return true;
    }
    m_context.log.WriteDebugLog(u"Warning"_s, u"Let ucCalendar.Validate2TxtBox="_s +
                                                  toShortDate(date, locale()) +
                                                  u" out of range. SourceControl="_s + textBox.objectName() +
                                                  u" Content="_s + text + u" >Exit."_s);
    tellOutOfRange();
    return true;
}

void ucCalendar::openBelow(const QWidget& textBox)
{
    adjustSize();
    const QRect screen = textBox.screen()->availableGeometry();
    QPoint place = textBox.mapToGlobal(QPoint(0, textBox.height()));
    if (place.y() + height() > screen.bottom())
        place.setY(textBox.mapToGlobal(QPoint(0, -height())).y());
    place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(place);
    show();
    m_mvw->setFocus();
}

void ucCalendar::closeEvent(QCloseEvent* event)
{
    QFrame::closeEvent(event);
    Cancel();
}

void ucCalendar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}

void ucCalendar::updateCombos()
{
    m_cmbMonth->setCurrentIndex(m_mvw->monthShown() - 1);
    m_cmbYear->setCurrentIndex(m_mvw->yearShown() - firstYear);
}

/// The same day in the chosen month, or that month's last.
void ucCalendar::moveToCombos()
{
    const int year = m_cmbYear->currentIndex() + firstYear;
    const int month = m_cmbMonth->currentIndex() + 1;
    const int day = std::min(value().day(), QDate(year, month, 1).daysInMonth());
    m_mvw->setSelectedDate(QDate(year, month, day));
}

void ucCalendar::choose(QDate date)
{
    m_context.clock.WaitSeconds(pauseBeforeChosen);
    Q_EMIT dateChosen(date);
}

bool ucCalendar::isInRange(QDate date) const
{
    return date >= m_mvw->minimumDate() && date <= m_mvw->maximumDate();
}

void ucCalendar::tellOutOfRange() const
{
    m_context.dialogs.Show({.text = u"Es können nur Datumswerte zwischen "_s +
                                    toShortDate(m_mvw->minimumDate(), locale()) + u" und "_s +
                                    toShortDate(m_mvw->maximumDate(), locale()) + u" verarbeitet werden."_s,
                            .icon = Icon::Exclamation});
}

void ucCalendar::tellNoDate(const QString& text) const
{
    m_context.dialogs.Show(
        {.text =
             u'"' + text +
             u"\" ist keine gültige Datumseingabe.\n\n"
             u"Die aktuellen Ländereinstellungen Ihres Windows verlangen Formatierungen nach dem Muster "_s +
             toShortDate(QDate(2004, 12, 31), locale()) +
             u" für den 31. Dezember 2004\n"
             u"Geben Sie ein Datum manuell nach diesem Muster ein oder verwenden Sie den Kalender."_s,
         .icon = Icon::Information});
}

void bindDateField(ucCalendar& calendar, QLineEdit& textBox, QAbstractButton& button, const QWidget* exit)
{
    button.setFocusPolicy(Qt::TabFocus); // a click must not count as leaving the text box
    const auto backToTextBox = [&calendar, &textBox] {
        calendar.hide();
        textBox.setFocus();
    };
    QObject::connect(&calendar, &ucCalendar::dateChosen, &textBox, [&calendar, &textBox, backToTextBox] {
        calendar.Value2TxtBox(textBox);
        backToTextBox();
    });
    QObject::connect(&calendar, &ucCalendar::cancelled, &textBox, backToTextBox);
    QObject::connect(&button, &QAbstractButton::clicked, &calendar, [&calendar, &textBox] {
        if (textBox.text().isEmpty()) {
            calendar.Today();
            calendar.Value2TxtBox(textBox);
        } else if (calendar.Validate2TxtBox(textBox)) {
            textBox.setFocus();
            return;
        }
        calendar.openBelow(textBox);
    });
    new LeaveCheck(textBox, exit, [&calendar, &textBox] {
        return !textBox.text().isEmpty() && calendar.Validate2TxtBox(textBox);
    });
}

} // namespace kalmo::ui
