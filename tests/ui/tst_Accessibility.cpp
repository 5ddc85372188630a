// Every form, for those who use a keyboard, a screen reader, large letters or dark colours.

#include "support/TestProgram.h"
#include "ui/AllForms.h"
#include "ui/controls/ReadablePalette.h"
#include "ui/FormWalk.h"

namespace {

QPalette darkColours()
{
    QPalette dark(QColor(49, 54, 59), QColor(42, 46, 50));
    dark.setColor(QPalette::Base, QColor(35, 38, 41));
    dark.setColor(QPalette::Text, QColor(252, 252, 252));
    dark.setColor(QPalette::Highlight, QColor(61, 139, 205));
    return dark;
}

/// How the desktop shows all forms.
enum Look { Light, Dark, LargeLetters };

QStringList faultsOf(QWidget& form, Look look)
{
    if (look == Dark) // nothing but pale texts depends on colours
        return paleTexts(form);
    QCoreApplication::processEvents(); // lays out the parts that were shown last
    QStringList faults = cutTexts(form) + overlaps(form) + beyondScreen(form);
    if (look == Light)
        faults += paleTexts(form) + unspokenParts(form) + sharedMnemonics(form) + unreachableControls(form) +
                  wrongTabOrder(form) + unspokenMenus(form);
    return faults;
}

/// Letters of another size for the forms that are made meanwhile.
struct Letters
{
    explicit Letters(double size)
    {
        QFont font = before;
        font.setPointSizeF(font.pointSizeF() * size);
        QApplication::setFont(font);
    }
    ~Letters() { QApplication::setFont(before); }
    Q_DISABLE_COPY_MOVE(Letters)

    QFont before = QApplication::font();
};

/// Looks at the dialog once it is in front, and closes it.
QStringList faultsOfDialog(Shown& shown, Maker open, Look look)
{
    QStringList faults{u"no dialog"_s};
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->isActiveWindow() || !QApplication::focusWidget())
            return;
        timer.stop();
        faults = faultsOf(*dialog, look);
        dialog->close();
    });
    timer.start(0);
    open(shown);
    while (timer.isActive() && QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }))
        QCoreApplication::processEvents();
    return faults;
}

} // namespace

class Accessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyForm_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<Look>("look");
        for (int row = 0; row < static_cast<int>(std::size(allForms)); ++row) {
            QTest::addRow("%s, light", allForms[row].name) << row << Light;
            QTest::addRow("%s, dark", allForms[row].name) << row << Dark;
            if (QApplication::primaryScreen()->devicePixelRatio() == 1)
                QTest::addRow("%s, large letters", allForms[row].name) << row << LargeLetters;
        }
    }

    void everyForm()
    {
        QFETCH(int, row);
        QFETCH(Look, look);
        const ui::ReadablePalette colours;
        QApplication::setPalette(look == Dark ? darkColours() : QPalette());
        const Letters letters(look == LargeLetters ? 2 : 1);
        Shown shown(allForms[row].model);
        allForms[row].make(shown);
        QWidget& form = *shown.form;
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QStringList faults;
        if (allForms[row].isBusy) {
            faults = {u"not busy"_s};
            shown.made.test.clock.after(1.5, [&] {
                QVERIFY(!child<QWidget>(form, "tvwNavi").isEnabled());
                faults = paleTexts(form) + unspokenParts(form) + cutTexts(form) + overlaps(form);
            });
        }
        if (auto* window = qobject_cast<ui::frmPB*>(&form))
            window->goTo(allForms[row].section);
        if (!QApplication::focusWidget())
            form.setFocus();
        if (allForms[row].open)
            faults = faultsOfDialog(shown, allForms[row].open, look);
        else if (!allForms[row].isBusy)
            faults = faultsOf(form, look);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }

    void walkFindsFaults()
    {
        QWidget form;
        auto* above = new QLabel(u"Name"_s, &form);
        auto* below = new QLineEdit(&form);
        auto* list = new QTreeWidget(&form);
        list->setHeaderLabels({u"Erinnerung"_s, u"VIP"_s});
        const auto place = [&](int second, int width) {
            above->setGeometry(0, 0, 100, 30);
            below->setGeometry(0, second, 100, 30);
            list->setGeometry(0, 200, 300, 100);
            list->header()->resizeSection(0, width);
            return QList<qsizetype>{overlaps(form).size(), cutTexts(form).size()};
        };
        form.show();
        QCOMPARE(place(30, 200), (QList<qsizetype>{0, 0}));
        QCOMPARE(place(29, 40), (QList<qsizetype>{1, 1}));
    }
};

KALMO_TEST(Accessibility)
#include "tst_Accessibility.moc"
