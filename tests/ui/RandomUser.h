#pragma once

#include "ui/adaptors/LossBoxes.h"
#include "ui/adaptors/QtDialogs.h"

#include <QObject>
#include <QRandomGenerator>
#include <QStringList>

#include <utility>

class QFileDialog;
class QMenu;
class QMessageBox;

namespace kalmo::ui {
class RowsView;
}

namespace kalmo::tests {

/// Boxes as in the program. Files and folders are chosen at random from one folder, or none is. Answers that
/// end the program on the spot, in the middle of a search, are never given.
class RandomDialogs : public toolkit::Dialogs
{
public:
    explicit RandomDialogs(QRandomGenerator& random) : m_random(random) {}
    void setFolder(const QString& folder) { m_folder = folder; }

    /// From now on notes boxes that repeat that the phone is gone.
    void watch(const ui::LossBoxes& losses) { m_losses = &losses; }
    /// The command has ended. Returns the boxes that its loss had, if there was more than one.
    QStringList endCommand();

    toolkit::Answer Show(const toolkit::Message& message) override;
    QString OpenFile(const toolkit::FileRequest& request) override;
    QString SaveFile(const toolkit::FileRequest& request) override;
    QString PickFolder(const QString& title, const QString& start) override;

private:
    QRandomGenerator& m_random;
    QString m_folder;
    ui::QtDialogs m_boxes;
    const ui::LossBoxes* m_losses = nullptr;
    QStringList m_sinceLoss; // boxes that ask nothing
};

/// Presses keys and clicks at random, like a user who sees the screen: in the menu that is open, in the
/// dialog in front, else in a window; drops files on the list of files, and closes the program. Acts once in
/// each turn of the event loop, from nested ones too.
class RandomUser : public QObject
{
    Q_OBJECT

public:
    /// `dialogs` chooses files for the toolkit's own file dialogs too. `beforeAct` runs ahead of each act.
    RandomUser(QRandomGenerator& random, RandomDialogs& dialogs, std::function<void()> beforeAct);

    void start();
    /// From now on only leaves what is open.
    void finish() { m_isLeaving = true; }
    /// Returns true if no dialog, box or menu is open.
    static bool hasLeft();
    /// Returns true if the user sees that the program works: data go to and fro, or a phone is looked for.
    static bool isWaiting();
    /// The window or menu that the user sees in front.
    static QString nameOfFront();
    /// Adds a line to the trace.
    void note(const QString& what);
    /// The latest acts, each as one line.
    const QStringList& trace() const { return m_trace; }
    int acts() const { return m_acts; }

private:
    void act();
    int below(int limit) { return static_cast<int>(m_random.bounded(limit)); }
    void disturb(QWidget& window);
    void useMenu(QMenu& menu);
    void answer(QMessageBox& box);
    void chooseFile(QFileDialog& dialog);
    void use(QWidget& window);
    void useControl(QWidget& control);
    void useFiles(ui::RowsView& files);
    void closeProgram();
    void type(QWidget& field);
    void press(QWidget& target, int key, Qt::KeyboardModifiers modifiers = {});

    QRandomGenerator& m_random;
    RandomDialogs& m_dialogs;
    std::function<void()> m_beforeAct;
    bool m_isLeaving = false;
    int m_acts = 0;
    QStringList m_trace;
};

} // namespace kalmo::tests
