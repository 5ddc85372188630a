// Every toolbar button, menu entry and context entry of every section is pressed by its key, on a phone that
// answers, on one that has fallen silent, and on a line that is gone: each arrives, says at most once that
// the phone is not there, and the window can be used afterwards.

#include "support/TestProgram.h"
#include "ui/NotedBoxes.h"
#include "ui/window/StatusArea.h"

namespace {

/// Leads to an entry of a menu that is open, and presses it.
void chooseByKeys(QMenu& menu, const QAction* entry)
{
    for (qsizetype step = 0; step <= menu.actions().size() && menu.activeAction() != entry; ++step)
        QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
}

QList<QAction*> entriesOf(const QList<QAction*>& actions)
{
    QList<QAction*> entries;
    for (QAction* action : actions) {
        if (!action->isSeparator() && action->isEnabled() && !action->menu())
            entries.append(action);
    }
    return entries;
}

/// The main window in one section, and a user who leaves each form that opens at once.
class PressedWindow : public WatchedWindow
{
public:
    PressedWindow(const QString& model, const QString& section) : WatchedWindow(model), m_section(section)
    {
        QDir().mkpath(test.path(u"Wahl"_s));
        test.dialogs.agreeToAll(test.makeFile(u"Wahl/neu.txt"_s, "neu"));
        QObject::connect(&m_user, &QTimer::timeout, [this] { leaveWhatIsOpen(); });
        m_user.start(0);
        enter();
    }

    void enter()
    {
        window.show();
        settle();
        window.goTo(m_section);
        settle();
        for (ui::RowsView* view : window.findChildren<ui::RowsView*>()) {
            if (view->isVisible() && view->rows()->selectedRows().isEmpty() && view->rows()->count() > 0)
                view->rows()->setCurrent(view->rows()->count() - 1);
        }
    }

    /// Changes the selected contact and saves it. Returns the boxes that ask nothing.
    QStringList saveContact()
    {
        m_user.stop();
        QStringList boxes;
        QTimer::singleShot(0, &window, [this, &boxes] {
            QPointer<QWidget> form = QApplication::activeModalWidget();
            QTest::keyClicks(&child<QLineEdit>(*form, "txtVorname"), u"x"_s);
            shown.clear();
            click(*form, "cmdSpeichern");
            settle();
            boxes = shown;
            if (form)
                form->close();
        });
        QTest::keyClick(&list("lvwVCF"), Qt::Key_Return);
        return boxes;
    }

    void pressAll()
    {
        for (QToolBar* bar : window.findChildren<QToolBar*>()) {
            for (QAction* action : entriesOf(bar->actions()))
                pressButton(*bar, action);
        }
        for (ui::RowsView* view : window.findChildren<ui::RowsView*>()) {
            for (QAction* action : entriesOf(view->actions()))
                pressContext(*view, action);
        }
        QAction* quit = nullptr;
        for (QAction* top : window.menuBar()->actions()) {
            for (QAction* action : entriesOf(top->menu() ? top->menu()->actions() : QList<QAction*>())) {
                if (action->text() == u"Been&den"_s)
                    quit = action;
                else
                    pressEntry(*top->menu(), action);
            }
        }
        pressEntry(*window.menuBar()->actions().first()->menu(), quit);
    }

    QStringList lost;     ///< keys that did not arrive
    QStringList repeated; ///< keys that made more than one box that asks nothing
    int arrived = 0;

private:
    void leaveWhatIsOpen()
    {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            if (const QAction* entry = std::exchange(m_entry, nullptr)) {
                // Not from within: while the timer's own slot runs it leaves no form.
                QTimer::singleShot(0, menu, [menu, entry] { chooseByKeys(*menu, entry); });
            } else {
                m_choices = entriesOf(menu->actions());
                menu->close();
            }
        } else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            dialog->reject();
        }
    }

    /// Does what presses something, and looks for the action that has to follow.
    void expectTrigger(QAction* action, const std::function<void()>& press)
    {
        const QSignalSpy triggered(action, &QAction::triggered);
        shown.clear();
        press();
        settle();
        if (shown.size() > 1)
            repeated.append(action->text() + u": "_s + shown.join(u" | "_s));
        if (triggered.isEmpty())
            lost.append(action->objectName() + u' ' + action->text());
        else
            ++arrived;
        for (QWidget* other : QApplication::topLevelWidgets()) {
            if (other != &window && other->isVisible())
                other->close();
        }
        enter();
    }

    void pressButton(QToolBar& bar, QAction* action)
    {
        QWidget* button = bar.widgetForAction(action);
        if (!button || !button->isVisible() || !button->isEnabled())
            return;
        m_choices.clear();
        expectTrigger(action, [&] { QTest::keyClick(button, Qt::Key_Space); });
        const QList<QAction*> choices = std::exchange(m_choices, {});
        for (QAction* choice : choices) {
            if (!button->isEnabled() || !button->isVisible())
                return;
            expectTrigger(choice, [&] {
                m_entry = choice;
                QTest::keyClick(button, Qt::Key_Space);
            });
        }
    }

    void pressContext(ui::RowsView& view, QAction* action)
    {
        if (!view.isVisible() || !action->isEnabled())
            return;
        expectTrigger(action, [&] {
            m_entry = action;
            QContextMenuEvent event(QContextMenuEvent::Keyboard, view.rect().center(),
                                    view.mapToGlobal(view.rect().center()));
            QApplication::sendEvent(&view, &event);
        });
    }

    void pressEntry(QMenu& menu, QAction* action)
    {
        if (!action->isEnabled())
            return;
        expectTrigger(action, [&] {
            m_entry = action;
            menu.popup(window.mapToGlobal(QPoint()));
        });
    }

    QString m_section;
    QTimer m_user;
    const QAction* m_entry = nullptr; // of the menu that opens next
    QList<QAction*> m_choices;        // of the menu that was closed last
};

} // namespace

class EveryKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QDir::setCurrent(QDir::tempPath()); } // downloads without a folder go there
    void arrives_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("section");
        QTest::addColumn<Loss>("loss");
        const std::pair<QString, QStringList> sections[] = {
            {u"WOODSTOCK"_s, {u"TB"_s, u"NE"_s, u"DIV"_s, u"SPONSOR"_s}},
            {u"PICASSO"_s, {u"TB"_s, u"SOUND"_s}},
            {u"SL400H"_s, {u"TB"_s, u"FFS"_s, u"DIV"_s}},
            {u"S820"_s, {u"FFS"_s}},
        };
        for (const auto& [model, keys] : sections) {
            for (const QString& key : keys) {
                const auto add = [&](const char* line, Loss loss) {
                    QTest::addRow("%s, %s, %s", qPrintable(model), qPrintable(key), line)
                        << model << key << loss;
                };
                add("alive", Loss::None);
                add("silent", Loss::Silent);
                add("gone", Loss::Gone);
            }
        }
    }

    void arrives()
    {
        QFETCH(QString, model);
        QFETCH(QString, section);
        QFETCH(Loss, loss);
        PressedWindow pressed(model, section);
        pressed.lose(loss);
        pressed.pressAll();
        QCOMPARE(pressed.lost, QStringList());
        QVERIFY2(loss == Loss::None || pressed.repeated.isEmpty(), qPrintable(pressed.repeated.join(u'\n')));
        QVERIFY2(pressed.arrived > 10, qPrintable(QString::number(pressed.arrived)));
        QVERIFY(!child<ui::StatusArea>(pressed.window, "sta").isBusy());
    }

    void deadPhoneIsToldOnceBySaving()
    {
        for (const Loss loss : {Loss::Silent, Loss::Gone}) {
            PressedWindow pressed(u"SL400H"_s, u"TB"_s);
            pressed.lose(loss);
            const QStringList boxes = pressed.saveContact();
            QVERIFY2(boxes.size() == 1, qPrintable(boxes.join(u" | "_s)));
        }
    }
};

KALMO_TEST(EveryKey)
#include "tst_EveryKey.moc"
