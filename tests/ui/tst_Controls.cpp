// The calendar with its reading of typed dates, the memory gauge, boxes that keep their choice, forms that
// scroll, and a box that is not shown twice.

#include "support/TestProgram.h"
#include "ui/adaptors/LossBoxes.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/controls/ChoiceBox.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/MemoryGauge.h"
#include "ui/controls/ShortDate.h"
#include "ui/controls/ucCalendar.h"
#include "ui/controls/WheelGuard.h"
#include "ui/TestProgram.h"

#include <qtestspontaneevent.h>

using toolkit::About;
using ui::MemoryGauge;

class Controls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// A search destroys its splash, which may have a box of the main window.
    void boxOutlivesItsWindow()
    {
        auto window = std::make_unique<QWidget>();
        window->show();
        QTimer::singleShot(0, [&window] { window.reset(); });
        ui::QtDialogs dialogs;
        QCOMPARE(dialogs.Show(question(u"?"_s)), Answer::No);
        QVERIFY(!window);
    }

    /// A date that was read is written in the short form, which reads the same again.
    void typedDates()
    {
        const QLocale german(QLocale::German, QLocale::Germany);
        const QLocale american(QLocale::English, QLocale::UnitedStates);
        const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
        const std::tuple<QLocale, QString, QString> rows[] = {{german, u" 1.2.2026 "_s, u"01.02.2026"_s},
                                                              {german, u"13.11."_s, u"13.11.2026"_s},
                                                              {german, u"29.2."_s, u"29.02.2024"_s},
                                                              {german, u"5.6.70"_s, u"05.06.1970"_s},
                                                              {german, u"5-6-29"_s, u"05.06.2029"_s},
                                                              {german, u"1970-03-21"_s, u"21.03.1970"_s},
                                                              {german, u"31.2.2026"_s, {}},
                                                              {german, u"12"_s, {}},
                                                              {german, u"morgen"_s, {}},
                                                              {american, u"2/1"_s, u"2/1/2026"_s},
                                                              {swedish, u"70-03-21"_s, u"1970-03-21"_s},
                                                              {QLocale::c(), u"1.2.2026"_s, u"01.02.2026"_s}};
        const QDate today(2026, 11, 21);
        for (const auto& [locale, text, expected] : rows) {
            const QDate date = ui::fromShortDate(text, locale, today);
            const QString written = ui::toShortDate(date, locale);
            QVERIFY2(written == expected, qPrintable(text + u" gives "_s + written));
            QCOMPARE(ui::fromShortDate(written, locale, today), date);
        }
    }

    void calendar()
    {
        TestContext test;
        QWidget form;
        QLineEdit box(&form);
        QLineEdit next(&form);
        QToolButton button(&form);
        ui::ucCalendar calendar(test.context, &form);
        ui::bindDateField(calendar, box, button, nullptr);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        box.setFocus();
        box.setText(u"30.2.2026"_s);
        test.dialogs.expect(
            Icon::Information,
            u"\"30.2.2026\" ist keine gültige Datumseingabe.\n\n"
            u"Die aktuellen Ländereinstellungen Ihres Windows verlangen Formatierungen nach dem Muster "
            u"31.12.2004 für den 31. Dezember 2004\n"
            u"Geben Sie ein Datum manuell nach diesem Muster ein oder verwenden Sie den Kalender."_s);
        QTest::keyClick(&box, Qt::Key_Tab);
        QTRY_VERIFY(box.hasFocus() && box.selectedText() == u"30.2.2026"_s);
        box.setText(u"31.1.2026"_s);
        button.click();
        QVERIFY(calendar.isVisible());
        auto& month = child<QComboBox>(calendar, "cmbMonth");
        month.setCurrentIndex(1);
        Q_EMIT month.activated(1);
        QCOMPARE(calendar.value(), QDate(2026, 2, 28));
        child<QCalendarWidget>(calendar, "mvw").setCurrentPage(1999, 12);
        QCOMPARE(child<QComboBox>(calendar, "cmbYear").currentText(), u"1999"_s);
        QCOMPARE(month.currentIndex(), 11);
        calendar.close(); // as a click beside it does
        QCOMPARE(calendar.value(), QDate(2026, 1, 31));
        button.click();
        calendar.setValue(QDate(2026, 1, 5));
        Q_EMIT child<QCalendarWidget>(calendar, "mvw").clicked(QDate(2026, 1, 5));
        QVERIFY(!calendar.isVisible() && test.clock.elapsed() >= 0.1);
        QCOMPARE(box.text(), u"05.01.2026"_s);
    }

    void gauge()
    {
        const Rows<qint64, qint64, int, QString, bool> rows{
            {"small", 10000, 5000, 10001, u"50% frei (4.9kB von 9.8kB)"_s, true},
            {"just beyond the small ones", 10001, 5000, 1001, u"50% frei (4.9kB von 9.8kB)"_s, true},
            {"little is free, and enough", 1000001, 60000, 1001, u"6% frei (58.6kB von 976.6kB)"_s, false},
            {"below 40%", 100000, 39999, 10001, u"40% frei (39.1kB von 97.7kB)"_s, true},
            {"at 40%", 100000, 40000, 10001, u"40% frei (39.1kB von 97.7kB)"_s, false},
            {"below 5%", 10000000, 400000, 10001, u"4% frei (390.6kB von 9765.6kB)"_s, true},
            {"below 1%", 10000000, 40000, 10001, u"kleiner 1% frei (39.1kB von 9765.6kB)"_s, true},
        };
        using Update = MemoryGauge::Update;
        rows.each([](qint64 total, qint64 free, int maximum, const QString& text, bool isLow) {
            MemoryGauge gauge;
            QCOMPARE(gauge.setFree(free), Update::None); // the total comes later
            QCOMPARE(gauge.setTotal(total), isLow ? Update::FirstWarning : Update::Shown);
            QCOMPARE(gauge.barMaximum(), maximum);
            QCOMPARE(gauge.barText().remove(u','), text);
            QString pictures = gauge.picture();
            while (gauge.blink() && pictures.size() < 20)
                pictures += gauge.picture();
            QCOMPARE(pictures, isLow ? u"warninghandywarninghandy"_s : u"handy"_s);
            QCOMPARE(gauge.setFree(free), Update::Shown); // it warns once
            gauge.forget();
            gauge.setFree(free);
            QCOMPARE(gauge.setTotal(total), Update::Shown); // of another phone too
        });
    }

    /// A box without the focus passes the wheel on to its parent.
    void wheelScrollsThePage()
    {
        const ui::WheelGuard guard;
        QScrollArea page;
        auto* content = new QWidget;
        content->resize(100, 2000);
        QComboBox boxes[2];
        for (QComboBox& box : boxes) {
            box.setParent(content);
            box.addItems({u"a"_s, u"b"_s, u"c"_s});
            box.setCurrentIndex(1);
        }
        boxes[1].move(0, 100);
        page.setWidget(content);
        page.resize(200, 300);
        page.show();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        boxes[1].setFocus();
        for (QComboBox& box : boxes) {
            const QPointF place = QRectF(box.rect()).center();
            QWheelEvent turn(place, box.mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                             Qt::NoScrollPhase, false);
            QSpontaneKeyEvent::setSpontaneous(&turn); // as from a mouse; others do not reach the page
            qApp->notify(&box, &turn);
        }
        QCOMPARE(boxes[0].currentIndex(), 1);
        QVERIFY(!boxes[0].hasFocus());
        QVERIFY(page.verticalScrollBar()->value() > 0);
        QCOMPARE(boxes[1].currentIndex(), 2); // the user has clicked that one
        for (QComboBox& box : boxes)
            box.setParent(nullptr);
    }

    void choicesAreNotSteps()
    {
        ui::ChoiceBox box;
        box.addItems({u"Melodie 1"_s, u"Melodie 2"_s, u"Optisch"_s});
        box.show();
        QVERIFY(QTest::qWaitForWindowActive(&box));
        box.setFocus();
        const QSignalSpy chosen(&box, &QComboBox::activated);
        for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            QTest::keyClick(box.view()->isVisible() ? static_cast<QWidget*>(box.view()) : &box, Qt::Key(key));
        QCOMPARE(box.currentText(), u"Melodie 2"_s);
        QCOMPARE(chosen.size(), 1);
        QTest::keyClick(&box, Qt::Key_O);
        QCOMPARE(box.currentText(), u"Melodie 2"_s);
        QVERIFY(box.view()->isVisible());
        QTest::keyClick(box.view(), Qt::Key_Escape);
        QCOMPARE(chosen.size(), 1);
    }

    /// A screen reader reads the step once and the sentence at the end, not each of the figures.
    void statusIsAnnouncedOnce()
    {
        ui::StatusLabel status;
        const QSignalSpy announced(&status, &ui::StatusLabel::announced);
        for (int bytes = 0; bytes < 2000; bytes += 500)
            status.SetText(u"Lese a.bmp ...   %1 Bytes empfangen"_s.arg(bytes));
        status.SetText(u"1 Datei gespeichert."_s);
        QCOMPARE(announced.size(), 2);
        QCOMPARE(announced.last().first().toString(), u"1 Datei gespeichert."_s);
    }

    /// The user may work in another program, or in a dialog without a status bar.
    void suppressedBoxReachesAStatusBar()
    {
        TestProgram given(u"WOODSTOCK"_s);
        ui::LossBoxes boxes(given.test.dialogs);
        boxes.watch(given.line);
        given.port.Close();
        QWidget window;
        const ui::StatusLabel status(&window);
        window.show();
        QWidget inFront;
        inFront.show();
        QVERIFY(QTest::qWaitForWindowActive(&inFront));
        const toolkit::Message loss{.text = u"Das Telefon antwortet nicht."_s, .about = About::Request};
        // A box of success follows that of an import.
        const toolkit::Message import{.text = u"Es ist ein Fehler beim Importieren aufgetreten."_s};
        const toolkit::Message result{.text = u"Fehler beim Lesen des Adressbuchs."_s,
                                      .about = About::Result};
        given.test.dialogs.expect(loss);
        given.test.dialogs.expect(import);
        for (const toolkit::Message& message : {loss, import, result})
            boxes.Show(message);
        QCOMPARE(status.Text(), result.text);
    }

    /// A form of twice the screen's height: its button stays in sight, what gets the focus scrolls, and Tab
    /// leads from the last field to the button.
    void tallFormsScroll()
    {
        QWidget form;
        const int room = form.screen()->availableSize().height();
        auto* column = new QVBoxLayout(&form);
        auto* first = new QLineEdit;
        auto* last = new QLineEdit;
        auto* button = new QPushButton;
        column->addWidget(first);
        column->addSpacing(room * 2);
        column->addWidget(last);
        column->addWidget(button);
        ui::scrollAbove(*column, column->indexOf(button));
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QVERIFY(form.frameGeometry().height() <= room);
        const auto inSight = [&] {
            QStringList names;
            for (const auto& [widget, name] : {std::pair<QWidget*, QString>(first, u"first"_s),
                                               {last, u"last"_s},
                                               {button, u"button"_s}}) {
                if (widget->visibleRegion() == widget->rect())
                    names.append(name + (widget->hasFocus() ? u"*"_s : QString()));
            }
            return names.join(u' ');
        };
        QStringList seen;
        last->setFocus();
        seen.append(inSight());
        QTest::keyClick(last, Qt::Key_Tab);
        seen.append(inSight());
        QTest::keyClick(button, Qt::Key_Tab);
        seen.append(inSight());
        QTest::keyClick(first, Qt::Key_PageDown);
        seen.append(inSight());
        QCOMPARE(seen, (QStringList{u"last* button"_s, u"last button*"_s, u"first* button"_s, u"button"_s}));
        auto* bar = form.findChild<ui::FormScroll*>()->verticalScrollBar();
        bar->setValue(bar->maximum() - last->height() / 2);
        const int value = bar->value();
        const QPoint inSightYet = last->mapTo(&form, QPoint(5, last->height() / 4));
        QTest::mousePress(form.windowHandle(), Qt::LeftButton, {}, inSightYet);
        QVERIFY(last->hasFocus());
        QCOMPARE(bar->value(), value); // or the release would miss it
        QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, {}, inSightYet);
    }
};

KALMO_TEST(Controls)
#include "tst_Controls.moc"
