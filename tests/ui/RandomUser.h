#pragma once

#include "ui/adaptors/QtDialogs.h"

#include <QObject>
#include <QRandomGenerator>
#include <QStringList>

class QFileDialog;
class QMenu;
class QMessageBox;

namespace kalmo::tests {

/// Boxes as in the program. Files and folders are chosen at random from one folder, or none is.
class RandomDialogs : public toolkit::Dialogs
{
public:
    explicit RandomDialogs(QRandomGenerator& random) : m_random(random) {}
    void setFolder(const QString& folder) { m_folder = folder; }

    toolkit::Answer Show(const toolkit::Message& message) override { return m_boxes.Show(message); }
    QString OpenFile(const toolkit::FileRequest& request) override;
    QString SaveFile(const toolkit::FileRequest& request) override;
    QString PickFolder(const QString& title, const QString& start) override;

private:
    QRandomGenerator& m_random;
    QString m_folder;
    ui::QtDialogs m_boxes;
};

/// Presses keys and clicks at random, like a user who sees the screen: in the menu that is open, in the
/// dialog in front, else in a window. Acts once in each turn of the event loop, from nested ones too.
class RandomUser : public QObject
{
    Q_OBJECT

public:
    /// `dialogs` chooses files for the toolkit's own file dialogs too.
    RandomUser(QRandomGenerator& random, RandomDialogs& dialogs, std::function<bool()> isBusy);

    void start();
    /// From now on only leaves what is open.
    void finish() { m_isLeaving = true; }
    /// Returns true if no dialog, box or menu is open.
    static bool hasLeft();
    /// The latest acts, each as one line.
    const QStringList& trace() const { return m_trace; }
    int acts() const { return m_acts; }

private:
    void act();
    void note(const QString& what);
    int below(int limit) { return static_cast<int>(m_random.bounded(limit)); }
    void disturb(QWidget& window);
    void useMenu(QMenu& menu);
    void answer(QMessageBox& box);
    void chooseFile(QFileDialog& dialog);
    void use(QWidget& window);
    void useControl(QWidget& control);
    void type(QWidget& field);
    void press(QWidget& target, int key, Qt::KeyboardModifiers modifiers = {});

    QRandomGenerator& m_random;
    RandomDialogs& m_dialogs;
    std::function<bool()> m_isBusy;
    bool m_isLeaving = false;
    int m_acts = 0;
    QStringList m_trace;
};

} // namespace kalmo::tests
