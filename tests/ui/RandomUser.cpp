#include "ui/RandomUser.h"

#include "app/mdlTexts.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/forms/frmMmcOpenControls.h"
#include "ui/forms/frmStart.h"
#include "ui/forms/frmWelcome.h"
#include "ui/lists/RowsView.h"
#include "ui/TestProgram.h"
#include "ui/window/frmPB.h"

#include <cstdio>

namespace kalmo::tests {

using namespace Qt::StringLiterals;
using toolkit::Answer;

namespace {

constexpr qsizetype tracedActs = 150;

const QStringList texts = {u"Müller"_s,
                           u"0301234567"_s,
                           u"+49 30 12 34"_s,
                           u""_s,
                           u"Ä ö ü ß €"_s,
                           u"12:30"_s,
                           u"31.12."_s,
                           u"wer@wo.de"_s,
                           u"25:99"_s,
                           u"../neu"_s,
                           u"*#"_s,
                           u"neu"_s,
                           u"abcdefghijklmnopqrstuvwxyz"_s};

/// With Ctrl.
constexpr int letters[] = {Qt::Key_N, Qt::Key_A, Qt::Key_C, Qt::Key_F, Qt::Key_E, Qt::Key_I,
                           Qt::Key_O, Qt::Key_S, Qt::Key_L, Qt::Key_T, Qt::Key_Z};
constexpr int plainKeys[] = {Qt::Key_Tab,    Qt::Key_Down,   Qt::Key_Up,   Qt::Key_Return,   Qt::Key_Space,
                             Qt::Key_Delete, Qt::Key_Escape, Qt::Key_F2,   Qt::Key_F5,       Qt::Key_Home,
                             Qt::Key_End,    Qt::Key_Right,  Qt::Key_Left, Qt::Key_Backspace};
constexpr int sections[] = {Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_3, Qt::Key_4, Qt::Key_5}; // with Alt

QString nameOf(const QWidget& widget)
{
    const QString text = widget.property("text").toString();
    return QString::fromLatin1(widget.metaObject()->className()) + u' ' + widget.objectName() +
           (text.isEmpty() ? QString() : u" \""_s + text.left(40) + u'"');
}

/// Everything in a part of a window that takes keys or clicks now.
QList<QWidget*> controlsOf(const QWidget& part, const QWidget& window)
{
    QList<QWidget*> controls;
    for (QWidget* widget : part.findChildren<QWidget*>()) {
        const bool isUsable = widget->isVisible() && widget->isEnabled() && widget->window() == &window;
        if (isUsable && (widget->focusPolicy() != Qt::NoFocus || qobject_cast<QAbstractButton*>(widget) ||
                         qobject_cast<QMenuBar*>(widget)))
            controls.append(widget);
    }
    return controls;
}

/// The window in front: a dialog before the others.
QWidget* windowInFront()
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    QWidget* active = QApplication::activeWindow();
    if (active && active->isVisible() && active->windowType() != Qt::Popup)
        return active;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->isVisible() || widget->windowType() == Qt::Popup)
            continue;
        widget->activateWindow(); // as a window manager does, or a user by a click
        return widget;
    }
    return nullptr;
}

} // namespace

Answer RandomDialogs::Show(const toolkit::Message& message)
{
    if (message.text == app::ResText(app::TextChangeInterface))
        return Answer::Yes;
    if (message.text.startsWith(u"Der gewählte Anschluss (COM"_s))
        return m_random.bounded(2) == 0 ? Answer::Yes : Answer::No;
    if (message.text.contains(u" verloren."_s) && message.text.endsWith(u"Trotzdem schreiben?"_s))
        return Answer::No; // a list that could not be read has no record
    const bool isReminder = message.text.contains(u"wurde beim letzten Betrieb nicht vollständig"_s);
    const bool isEndOfImport = message.text.contains(u"beim Importieren aufgetreten"_s) ||
                               message.text.startsWith(u"Importieren erfolgreich"_s); // both are described
    if (!isReminder && !isEndOfImport && m_losses && m_losses->isLossTold() &&
        message.buttons == toolkit::Buttons::Ok)
        m_sinceLoss.append(message.text.simplified().left(120));
    return m_boxes.Show(message);
}

/// One box about the loss, and one about the state of the data.
QStringList RandomDialogs::endCommand()
{
    static const QRegularExpression aboutLoss(
        u"TimeOut|Übertragungsfehler|antwortet nicht|reagiert nicht|Fehler beim|nicht ermittelt"_s);
    const QStringList boxes = std::exchange(m_sinceLoss, {});
    return boxes.size() > 2 || boxes.filter(aboutLoss).size() > 1 ? boxes : QStringList();
}

QString RandomDialogs::OpenFile(const toolkit::FileRequest&)
{
    const QFileInfoList files = QDir(m_folder).entryInfoList(QDir::Files, QDir::Name);
    const auto chosen = static_cast<qsizetype>(m_random.bounded(files.size() + 1));
    return chosen < files.size() ? files[chosen].filePath() : QString();
}

QString RandomDialogs::SaveFile(const toolkit::FileRequest& request)
{
    const QString pattern = request.types.empty() ? u"*.txt"_s : request.types.front().patterns.value(0);
    const auto number = m_random.bounded(3);
    return number == 0 ? QString() : m_folder + u"/saved%1%2"_s.arg(number).arg(pattern.sliced(1));
}

QString RandomDialogs::PickFolder(const QString&, const QString&)
{
    return m_random.bounded(3) == 0 ? QString() : m_folder;
}

RandomUser::RandomUser(QRandomGenerator& random, RandomDialogs& dialogs, std::function<void()> beforeAct)
    : m_random(random), m_dialogs(dialogs), m_beforeAct(std::move(beforeAct))
{
}

void RandomUser::start()
{
    QTimer::singleShot(0, this, &RandomUser::act);
}

bool RandomUser::hasLeft()
{
    return !QApplication::activePopupWidget() && !QApplication::activeModalWidget();
}

QString RandomUser::nameOfFront()
{
    const QWidget* popup = QApplication::activePopupWidget();
    const QWidget* front = popup ? popup : windowInFront();
    return front ? nameOf(*front) : u"nothing"_s;
}

bool RandomUser::isWaiting()
{
    const auto* welcome = shown<ui::frmWelcome>();
    const auto* search = welcome ? welcome->findChild<QProgressBar*>() : nullptr;
    return ui::WindowBusy::isAnyBusy() || shown<ui::frmStart>() || (search && search->isVisible());
}

void RandomUser::note(const QString& what)
{
    ++m_acts;
    m_trace.append(what);
    if (m_trace.size() > tracedActs)
        m_trace.removeFirst();
    if (qEnvironmentVariableIsSet("KALMO_TRACE"))
        std::fprintf(stderr, "%d %s\n", m_acts, qPrintable(what));
}

/// The next act is planned first: this one may open a dialog with an event loop of its own.
void RandomUser::act()
{
    QTimer::singleShot(0, this, &RandomUser::act);
    m_beforeAct();
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* window = windowInFront();
    if (auto* menu = qobject_cast<QMenu*>(popup))
        useMenu(*menu);
    else if (popup)
        press(*popup, m_isLeaving || below(3) == 0 ? Qt::Key_Escape : plainKeys[below(4)]);
    else if (auto* box = qobject_cast<QMessageBox*>(window))
        answer(*box);
    else if (auto* files = qobject_cast<QFileDialog*>(window); files && !m_isLeaving)
        chooseFile(*files);
    else if (window && m_isLeaving && window == QApplication::activeModalWidget())
        press(*window, Qt::Key_Escape);
    else if (window && isWaiting())
        disturb(*window);
    else if (window && !m_isLeaving && !window->isModal() && !window->inherits("QMainWindow") &&
             below(5) == 0)
        press(*window, Qt::Key_Escape); // the help, which stays in front, or the settings
    else if (window && !m_isLeaving)
        use(*window);
}

/// Somebody who waits for the end of an operation presses a key now and then, or has had enough.
void RandomUser::disturb(QWidget& window)
{
    const int chance = m_isLeaving ? 600 : below(600);
    if (chance == 0)
        press(window, Qt::Key_Escape);
    else if (chance < 3)
        press(window, plainKeys[below(std::ssize(plainKeys))]);
    else if (chance < 5)
        closeProgram();
}

void RandomUser::closeProgram()
{
    auto* window = shown<ui::frmPB>();
    if (!window || QApplication::activeModalWidget()) // the dialog keeps the user from it
        return;
    note(u"close the program"_s);
    window->close();
}

void RandomUser::useMenu(QMenu& menu)
{
    const int chance = m_isLeaving ? 0 : below(10);
    if (chance == 0)
        press(menu, Qt::Key_Escape);
    else if (chance < 7)
        press(menu, Qt::Key_Down);
    else
        press(menu, Qt::Key_Return);
}

void RandomUser::answer(QMessageBox& box)
{
    const QList<QAbstractButton*> buttons = box.buttons();
    QAbstractButton* button = buttons[below(static_cast<int>(buttons.size()))];
    note(u"%1 to: %2"_s.arg(button->text(), box.text().simplified().left(100)));
    QTest::mouseClick(button, Qt::LeftButton);
}

/// Nothing else is pressed there: the toolkit's file dialog can delete and rename files of this machine.
void RandomUser::chooseFile(QFileDialog& dialog)
{
    auto* panel = dialog.findChild<ui::frmMmcOpenControls*>();
    const QList<QWidget*> controls = panel ? controlsOf(*panel, dialog) : QList<QWidget*>();
    const int chance = below(10);
    if (chance == 0) {
        press(dialog, Qt::Key_Escape);
    } else if (chance < 6 && !controls.isEmpty()) {
        useControl(*controls[below(static_cast<int>(controls.size()))]);
    } else if (auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)) {
        const QString path = m_dialogs.OpenFile({});
        note(u"choose "_s + path);
        QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
        QInputMethodEvent typed; // the path may hold letters that no key of the test library has
        typed.setCommitString(path.isEmpty() ? u"none"_s : path);
        QApplication::sendEvent(name, &typed);
        QTest::keyClick(name, Qt::Key_Return);
    }
}

void RandomUser::use(QWidget& window)
{
    QWidget* focus = window.focusWidget() ? window.focusWidget() : &window;
    const QList<QWidget*> controls = controlsOf(window, window);
    auto* files = window.findChild<ui::RowsView*>(u"lvwFFs"_s);
    auto* reconnect = window.findChild<QToolButton*>(u"cmdReconnect"_s);
    const int chance = below(100);
    if (reconnect && reconnect->isVisible() && reconnect->isEnabled() && chance < 10)
        useControl(*reconnect);
    else if (files && files->isVisible() && files->isEnabled() && chance < 15)
        useFiles(*files);
    else if (chance < 55 && !controls.isEmpty())
        useControl(*controls[below(static_cast<int>(controls.size()))]);
    else if (chance < 72)
        press(*focus, plainKeys[below(std::ssize(plainKeys))]);
    else if (chance < 85)
        press(*focus, letters[below(std::ssize(letters))], Qt::ControlModifier);
    else if (chance < 91)
        press(*focus, sections[below(std::ssize(sections))], Qt::AltModifier);
    else if (chance < 99)
        type(*focus);
    else if (below(4) == 0)
        closeProgram();
}

/// Drops files of the desktop on the list, or takes files of the list to the desktop.
void RandomUser::useFiles(ui::RowsView& files)
{
    if (below(3) == 0) {
        note(u"drag files out"_s);
        const auto content = files.dragContent();
        if (!content)
            return;
        Q_EMIT files.dragDropped();
        (void)content->urls();
        return;
    }
    QMimeData content;
    QList<QUrl> urls;
    for (int count = below(3); count >= 0; --count)
        urls.append(QUrl::fromLocalFile(m_dialogs.OpenFile({}))); // an empty path is a wrong one
    content.setUrls(urls);
    const QModelIndex row = files.model()->index(below(files.model()->rowCount() + 1), 0);
    const QPoint at = row.isValid() ? files.visualRect(row).center() : files.viewport()->rect().center();
    note(u"drop %1 files"_s.arg(urls.size()));
    QDragEnterEvent enter(at, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(files.viewport(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &content, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(files.viewport(), &drop);
}

void RandomUser::useControl(QWidget& control)
{
    note(u"click "_s + nameOf(control));
    if (auto* view = qobject_cast<QAbstractItemView*>(&control); view && view->model()) {
        const int rows = view->model()->rowCount();
        const QModelIndex row = rows > 0 ? view->model()->index(below(rows), 0) : QModelIndex();
        view->scrollTo(row);
        QTest::mouseClick(view->viewport(), Qt::LeftButton,
                          below(4) == 0 ? Qt::ControlModifier : Qt::KeyboardModifiers(),
                          view->visualRect(row).center());
    } else if (auto* bar = qobject_cast<QMenuBar*>(&control)) {
        QAction* menu = bar->actions()[below(static_cast<int>(bar->actions().size()))];
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu).center());
    } else if (auto* tabs = qobject_cast<QTabBar*>(&control)) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(below(tabs->count())).center());
    } else {
        QTest::mouseClick(&control, Qt::LeftButton);
    }
}

void RandomUser::type(QWidget& field)
{
    const QString& text = texts[below(static_cast<int>(texts.size()))];
    note(u"type \"%1\" into %2"_s.arg(text, nameOf(field)));
    const QPointer<QWidget> there(&field);
    if (below(2) == 0 && qobject_cast<QLineEdit*>(&field))
        QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    for (const QChar character : text) {
        if (there && there->isVisible() && there->isEnabled())
            QTest::sendKeyEvent(QTest::Click, there, Qt::Key_unknown, QString(character), Qt::NoModifier);
    }
}

void RandomUser::press(QWidget& target, int key, Qt::KeyboardModifiers modifiers)
{
    note(QKeySequence(key | static_cast<int>(modifiers)).toString() + u" in "_s + nameOf(target));
    QTest::keyClick(&target, static_cast<Qt::Key>(key), modifiers);
}

} // namespace kalmo::tests
