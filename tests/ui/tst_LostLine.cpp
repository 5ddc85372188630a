// Each section of the main window after the line has gone or the phone has fallen silent: a command, a new
// search, the section once the phone is back, and the end of the window.

#include "link/mdlStatus.h"
#include "support/TestProgram.h"
#include "ui/NotedBoxes.h"

namespace {

/// A section, and the command that is given there: a key, a button or another node.
struct Act
{
    QString model;
    QString node;
    QKeySequence key = {};
    const char* button = nullptr;
    QString toNode = {};
};

struct LostWindow : WatchedWindow
{
    explicit LostWindow(const QString& model) : WatchedWindow(model)
    {
        connection().findChild<QTimer*>()->start(0);
    }

    QWidget& connection() { return child<QWidget>(window, "connection"); }
    void give(const Act& act)
    {
        if (!act.key.isEmpty())
            QTest::keySequence(&window, act.key);
        if (act.button)
            click(window, act.button);
        if (!act.toNode.isEmpty())
            window.goTo(act.toNode);
    }
    void findTheWindowsPhone()
    {
        findAgain();
        QString manufacturer;
        link::GetManufacturer(line, manufacturer);
        window.forgetPhone();
        window.show();
    }
    /// The list or panel, the sentence of the list, the state of the connection, the reminder of an open
    /// channel, and how many boxes there were.
    QString state()
    {
        settle();
        const auto* list = window.findChild<ui::PanelStack*>()->currentWidget()->findChild<ui::RowsView*>();
        QStringList parts{list ? QString::number(list->rows()->count()) : panel()};
        parts.append(list ? list->sentence().section(u'.', 0, 0) : QString());
        parts.append(textOf(window, "lblConnection").section(u'·', 2).trimmed());
        parts.append(front() == u"fraFFScloseReminder"_s ? u"offen"_s : QString());
        parts.append(u"%1 boxes"_s.arg(std::exchange(shown, {}).size()));
        parts.removeAll({});
        return parts.join(u", "_s);
    }

    DialogUser leaver{[](QDialog& dialog) { dialog.reject(); }};
};

/// Loses the line or the phone in a section, gives the command there twice, finds the phone again, loses it
/// once more and closes the window. `lost` is the list and its sentence after the command.
void checkLoss(const Act& act, Loss loss, const QString& entered, const QString& lost)
{
    const bool areFiles = act.node == u"FFS"_s;
    const QString inOrder = entered + u"verbunden"_s + (areFiles ? u", offen"_s : QString()) + u", 0 boxes"_s;
    const QString connection = loss == Loss::Gone ? u"getrennt"_s : u"antwortet nicht"_s;
    const bool staysOpen = areFiles && loss == Loss::Silent;
    const QString afterwards = lost + connection + (staysOpen ? u", offen"_s : QString());
    LostWindow open(act.model);
    const QSignalSpy searched(&open.window, &ui::frmPB::searchRequested);
    const QSignalSpy closed(&open.window, &ui::frmPB::closedByUser);
    open.window.goTo(act.node);
    QCOMPARE(open.state(), inOrder);
    open.lose(loss);
    for (int time = 0; time < 2; ++time) {
        open.give(act);
        QCOMPARE(open.state(), afterwards + u", 1 boxes"_s);
    }
    QVERIFY2(open.status().endsWith(open.connection().toolTip()), qPrintable(open.status()));
    const auto& search = child<QToolButton>(open.window, "cmdReconnect");
    QVERIFY(search.isVisible());
    click(open.window, "cmdReconnect");
    QCOMPARE(open.state(), lost + connection + u", 0 boxes"_s);
    QVERIFY(searched.size() == 1 && !open.window.isVisible());
    open.findTheWindowsPhone();
    QCOMPARE(open.state(), inOrder);
    QVERIFY2(!open.status().contains(u"\"Erneut verbinden\""_s), qPrintable(open.status()));
    QVERIFY(!search.isVisible());
    open.lose(loss);
    open.window.close();
    // A phone that is there and does not leave its data mode is worth a box.
    QCOMPARE(open.state(), entered + u"getrennt"_s + (staysOpen ? u", 1 boxes"_s : u", 0 boxes"_s));
    QVERIFY(closed.size() == 1 && !open.window.isVisible() && !open.port.IsOpen());
}

} // namespace

class LostLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachSectionStaysInOrder()
    {
        const Act phonebook{u"WOODSTOCK"_s, u"TB"_s, QKeySequence(u"Ctrl+L"_s)};
        const Act providers{u"WOODSTOCK"_s, u"NE"_s, QKeySequence(u"Ctrl+L"_s)};
        const Act sounds{u"PICASSO"_s, u"SOUND"_s, Qt::Key_F5};
        const Act contacts{u"SL400H"_s, u"TB"_s, Qt::Key_F5};
        const Act files{u"SL400H"_s, u"FFS"_s, Qt::Key_F5};
        const Act device{u"SL400H"_s, u"DIV"_s, Qt::Key_F5};
        const Act clock{u"WOODSTOCK"_s, u"DIV"_s, {}, "cmdUhrSync"};
        const Act areaCodes{u"SL400H"_s, u"SPONSOR"_s, {}, nullptr, u"VW"_s};
        const QString failed = u"0, Die Liste konnte nicht gelesen werden, "_s;
        const QString noFolder = u"2, Der Ordner konnte nicht gelesen werden, "_s;
        // The state in the section, and that after the command on the line that was lost.
        const Rows<Act, QString, QString> rows{
            {"phonebook", phonebook, u"25, "_s, u"25, "_s},
            {"providers", providers, u"5, "_s, u"5, "_s},
            {"sounds", sounds, u"4, "_s, failed},
            {"contacts", contacts, u"25, "_s, failed},
            {"files", files, u"7, "_s, noFolder},
            {"device", device, u"fraDIV, "_s, u"fraDIV, "_s},
            {"clock", clock, u"fraDIV, "_s, u"fraDIV, "_s},
            {"area codes", areaCodes, u"fraAd, "_s, u"fraAd, "_s},
        };
        rows.each([](const Act& act, const QString& entered, const QString& lost) {
            checkLoss(act, Loss::Gone, entered, lost);
            checkLoss(act, Loss::Silent, entered, lost);
        });
    }

    /// The advice comes while the dialog of a contact is open, and stays when it is left.
    void dialogKeepsTheAdvice()
    {
        const Rows<bool, QString> rows{
            {"left at once", false, u"25 Kontakte gelesen. "_s},
            {"left after a save", true, u"Die Eingabe wurde nicht gespeichert. "_s}};
        rows.each([](bool saves, const QString& sentence) {
            LostWindow open(u"SL400H"_s);
            open.window.goTo(u"TB"_s);
            open.leaver.stop();
            QTimer::singleShot(0, &open.window, [&] {
                QWidget& form = *QApplication::activeModalWidget();
                open.lose(Loss::Gone);
                QTest::keyClicks(&child<QLineEdit>(form, "txtTelHandy"), u"0170"_s);
                if (saves)
                    QTest::mouseClick(&child<QPushButton>(form, "cmdSpeichern"), Qt::LeftButton);
                open.state();
                QTest::keyClick(&form, Qt::Key_Escape);
            });
            QTest::keyClick(&open.window, Qt::Key_N, Qt::ControlModifier);
            open.state();
            QCOMPARE(open.status(), sentence + open.connection().toolTip());
        });
    }
};

KALMO_TEST(LostLine)
#include "tst_LostLine.moc"
