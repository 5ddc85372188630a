#pragma once

#include "toolkit/Dialogs.h"

#include <QObject>

namespace kalmo::link {
class Line;
}

namespace kalmo::ui {

/// Shows one box in each command about a phone that does not answer. Several steps of a command may report
/// that. The box shows the first report, and the status bar the others. Questions and boxes about the state
/// of data are always shown.
class LossBoxes final : public QObject, public toolkit::Dialogs
{
    Q_OBJECT

public:
    /// `shown` outlives this object.
    explicit LossBoxes(toolkit::Dialogs& shown) : m_shown(shown) {}
    /// The line to the phone. Without one every box is shown.
    void watch(const link::Line& line) { m_line = &line; }

    /// Returns true from the first such box until the command has ended: no operation runs, no box is open,
    /// and the event loop has taken its next turn.
    bool isLossTold() const { return m_isTold; }

    toolkit::Answer Show(const toolkit::Message& message) override;
    QString OpenFile(const toolkit::FileRequest& request) override { return m_shown.OpenFile(request); }
    QStringList OpenFiles(const toolkit::FileRequest& request) override { return m_shown.OpenFiles(request); }
    QString SaveFile(const toolkit::FileRequest& request) override { return m_shown.SaveFile(request); }
    QString PickFolder(const QString& title, const QString& start) override
    {
        return m_shown.PickFolder(title, start);
    }

private:
    bool isLineDead() const;
    bool isCommandRunning() const;
    void forgetLater();

    toolkit::Dialogs& m_shown;
    const link::Line* m_line = nullptr;
    bool m_isTold = false;
    bool m_isWaiting = false; // for the end of the command
    int m_open = 0;           // boxes
};

} // namespace kalmo::ui
