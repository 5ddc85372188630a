// The calendar with its reading of typed dates, and the memory gauge.

#include "phonedata/EntryRules.h"
#include "ui/controls/MemoryGauge.h"
#include "ui/controls/ShortDate.h"
#include "ui/controls/ucCalendar.h"
#include "ui/TestProgram.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using toolkit::Icon;
using ui::MemoryGauge;

namespace {

QString badDate(const QString& text)
{
    return u'"' + text +
           u"\" ist keine gültige Datumseingabe.\n\n"
           u"Die aktuellen Ländereinstellungen Ihres Windows verlangen Formatierungen nach dem Muster "
           u"31.12.2004 für den 31. Dezember 2004\n"
           u"Geben Sie ein Datum manuell nach diesem Muster ein oder verwenden Sie den Kalender."_s;
}

} // namespace

class Controls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typedDates_data();
    void typedDates();
    void times();
    void calendarValidates();
    void calendarBrowses();
    void dateFieldKeepsTheFocus();
    void gauge_data();
    void gauge();
    void gaugeOverTime();
};

void Controls::typedDates_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("date");

    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale american(QLocale::English, QLocale::UnitedStates);
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    QTest::newRow("whole") << german << u"31.12.2004"_s << u"31.12.2004"_s;
    QTest::newRow("short") << german << u" 1.2.2026 "_s << u"01.02.2026"_s;
    QTest::newRow("no year") << german << u"13.11."_s << u"13.11.2026"_s;
    QTest::newRow("leap day, no year") << german << u"29.2."_s << u"29.02.2024"_s;
    QTest::newRow("last century") << german << u"5.6.70"_s << u"05.06.1970"_s;
    QTest::newRow("this century") << german << u"5-6-29"_s << u"05.06.2029"_s;
    QTest::newRow("year first") << german << u"1970-03-21"_s << u"21.03.1970"_s;
    QTest::newRow("no such day") << german << u"31.2.2026"_s << QString();
    QTest::newRow("month alone") << german << u"12"_s << QString();
    QTest::newRow("words") << german << u"morgen"_s << QString();
    QTest::newRow("month first") << american << u"3/21/1970"_s << u"3/21/1970"_s;
    QTest::newRow("month first, no year") << american << u"2/1"_s << u"2/1/2026"_s;
    QTest::newRow("year first by custom") << swedish << u"70-03-21"_s << u"1970-03-21"_s;
    QTest::newRow("no custom") << QLocale::c() << u"1.2.2026"_s << u"01.02.2026"_s;
}

/// What was read is written in the short form, and that reads the same again.
void Controls::typedDates()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, text);
    const QDate today(2026, 11, 21);
    const QDate date = ui::fromShortDate(text, locale, today);
    const QString written = ui::toShortDate(date, locale);
    QTEST(written, "date");
    QCOMPARE(ui::fromShortDate(written, locale, today), date);
}

void Controls::times()
{
    for (const QString& good : {u"00:00"_s, u"19:30"_s, u"23:59"_s})
        QVERIFY2(phonedata::isTimeOfDay(good), qPrintable(good));
    for (const QString& bad : {u""_s, u"9:30"_s, u"24:00"_s, u"12:60"_s, u"-1:30"_s, u"12.30"_s, u"12:3"_s,
                               u"12:300"_s, u"ab:cd"_s})
        QVERIFY2(!phonedata::isTimeOfDay(bad), qPrintable(bad));
}

void Controls::calendarValidates()
{
    TestContext test;
    ui::ucCalendar calendar(test.context);
    QLineEdit box;
    calendar.Today();
    for (const QString& text : {u"x"_s, u"30.2.2026"_s}) {
        box.setText(text);
        test.dialogs.expect({.text = badDate(text), .icon = Icon::Information});
        QVERIFY(calendar.Validate2TxtBox(box));
        QCOMPARE(box.selectedText(), text);
    }
    const toolkit::Message outOfRange{
        .text = u"Es können nur Datumswerte zwischen 01.01.1900 und 31.12.2099 verarbeitet werden."_s,
        .icon = Icon::Exclamation};
    box.setText(u"1.1.1899"_s);
    test.dialogs.expect(outOfRange);
    QVERIFY(calendar.Validate2TxtBox(box));
    test.dialogs.expect(outOfRange);
    calendar.setValue(QDate(2100, 1, 1));
    QCOMPARE(calendar.value(), QDate(2026, 11, 21));
    box.setText(u"1.1.1900"_s);
    QVERIFY(!calendar.Validate2TxtBox(box));
    QCOMPARE(box.text(), u"01.01.1900"_s);
    QCOMPARE(calendar.value(), QDate(1900, 1, 1));
}

void Controls::calendarBrowses()
{
    TestContext test;
    ui::ucCalendar calendar(test.context);
    QSignalSpy chosen(&calendar, &ui::ucCalendar::dateChosen);
    QSignalSpy cancelled(&calendar, &ui::ucCalendar::cancelled);
    calendar.setValue(QDate(2026, 1, 31));
    auto& month = child<QComboBox>(calendar, "cmbMonth");
    auto& year = child<QComboBox>(calendar, "cmbYear");
    month.setCurrentIndex(1);
    Q_EMIT month.activated(1);
    QCOMPARE(calendar.value(), QDate(2026, 2, 28));
    child<QCalendarWidget>(calendar, "mvw").setCurrentPage(1999, 12);
    QCOMPARE(year.currentText() + month.currentText(), u"1999"_s + QLocale().standaloneMonthName(12));
    child<QToolButton>(calendar, "imgCancel").click();
    QCOMPARE(calendar.value(), QDate(2026, 1, 31));
    QCOMPARE(month.currentIndex(), 0);
    QCOMPARE(cancelled.size(), 1);
    const double before = test.clock.elapsed();
    Q_EMIT child<QCalendarWidget>(calendar, "mvw").clicked(QDate(2026, 1, 5));
    QCOMPARE(chosen.size(), 1);
    QVERIFY(test.clock.elapsed() - before >= 0.1);
    calendar.openBelow(calendar);
    calendar.close(); // as a click beside it does
    QCOMPARE(cancelled.size(), 2);
}

void Controls::dateFieldKeepsTheFocus()
{
    TestContext test;
    QWidget form;
    auto* box = new QLineEdit;
    auto* next = new QLineEdit;
    auto* exit = new QToolButton;
    auto* button = new QToolButton;
    auto* layout = new QVBoxLayout(&form);
    for (QWidget* widget : {static_cast<QWidget*>(box), static_cast<QWidget*>(next),
                            static_cast<QWidget*>(button), static_cast<QWidget*>(exit)})
        layout->addWidget(widget);
    ui::ucCalendar calendar(test.context, &form);
    ui::bindDateField(calendar, *box, *button, exit);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    box->setFocus();
    box->setText(u"nie"_s);
    test.dialogs.expect({.text = badDate(u"nie"_s), .icon = Icon::Information});
    QTest::keyClick(box, Qt::Key_Tab);
    QTRY_VERIFY(box->hasFocus());
    exit->setFocus(Qt::MouseFocusReason); // who gives up isn't asked
    QCoreApplication::processEvents();
    box->setFocus();
    box->clear();
    QTest::keyClick(box, Qt::Key_Tab);
    QCoreApplication::processEvents();
    QVERIFY(next->hasFocus());
    button->click();
    QVERIFY(calendar.isVisible());
    QCOMPARE(box->text(), u"21.11.2026"_s);
    Q_EMIT calendar.dateChosen(calendar.value());
    QVERIFY(!calendar.isVisible());
}

void Controls::gauge_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("free");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("low");

    const auto row = [](const char* name, qint64 total, qint64 free, int maximum, const char* text,
                        bool low) {
        QTest::newRow(name) << total << free << maximum << QString::fromLatin1(text) << low;
    };
    row("scale 1", 10000, 5000, 10001, "50% frei (4.9kB von 9.8kB)", true);
    row("scale 10", 10001, 5000, 1001, "50% frei (4.9kB von 9.8kB)", true);
    row("scale 100", 1000000, 1000000, 10001, "100% frei (976.6kB von 976.6kB)", false);
    row("scale 1000", 1000001, 60000, 1001, "6% frei (58.6kB von 976.6kB)", false);
    row("few bytes of few", 100000, 39999, 10001, "40% frei (39.1kB von 97.7kB)", true);
    row("just enough bytes", 100000, 40000, 10001, "40% frei (39.1kB von 97.7kB)", false);
    row("few percent of many", 10000000, 400000, 10001, "4% frei (390.6kB von 9765.6kB)", true);
    row("less than one percent", 10000000, 40000, 10001, "kleiner 1% frei (39.1kB von 9765.6kB)", true);
}

void Controls::gauge()
{
    QFETCH(qint64, total);
    QFETCH(qint64, free);
    MemoryGauge gauge;
    gauge.setFree(free); // the total comes later
    gauge.setTotal(total);
    QTEST(gauge.barMaximum(), "maximum");
    QTEST(gauge.barText().remove(u','), "text");
    QTEST(gauge.lowMemory(), "low");
}

void Controls::gaugeOverTime()
{
    using Update = MemoryGauge::Update;
    MemoryGauge gauge;
    QCOMPARE(gauge.setFree(500000), Update::None);
    QCOMPARE(gauge.setTotal(1000000), Update::Shown);
    QVERIFY(!gauge.blink());
    QCOMPARE(gauge.setFree(30000), Update::FirstWarning);
    QStringList pictures;
    for (int beat = 0; beat < 3; ++beat) {
        pictures.append(gauge.picture());
        QVERIFY(gauge.blink());
    }
    QCOMPARE(pictures, QStringList({u"warning"_s, u"handy"_s, u"warning"_s}));
    QCOMPARE(gauge.setFree(20000), Update::Shown); // it warns once
    QCOMPARE(gauge.setFree(2000000), Update::None);
    QCOMPARE(gauge.barValue(), 200);
    QCOMPARE(gauge.setFree(600000), Update::Shown);
    QVERIFY(!gauge.blink());
    QCOMPARE(gauge.picture(), u"handy"_s);
}

QTEST_MAIN(Controls)
#include "tst_Controls.moc"
