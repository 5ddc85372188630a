#pragma once

#include "app/Sy.h"
#include "toolkit/Clock.h"

#include <QIODevice>

namespace kalmo::app {

/// The debug log: a plain text file on the user's desktop with the facts of the start and every exchange with
/// the phone. Off unless `Sy::debug` is set; then each call costs one test. File errors are never shown here;
/// fault() keeps the first. If there is no desktop and none can be made, the log is in the folder for
/// temporary files.
class DebugLog
{
public:
    /// `desktop` is the folder that the log is made in.
    DebugLog(Sy& sy, toolkit::Clock& clock, QString desktop);

    bool isOn() const { return m_sy.debug; }

    /// Replaces the log by the header block alone, until the first main window is shown. From then on the
    /// header is appended (`Sy::logKeepsAll`).
    void WriteLogHeader();

    /// Appends one line. Unless `keepRaw` is set, line ends within the text are written as words.
    void WriteDebugLog(const QString& tag, QString text, bool keepRaw = false);

    /// The system's reason for the first write that failed, empty if none did.
    const QString& fault() const { return m_fault; }

private:
    void chooseFile();
    void write(const QString& text, QIODevice::OpenMode how);

    Sy& m_sy;
    toolkit::Clock& m_clock;
    QString m_desktop;
    QString m_fault;
};

} // namespace kalmo::app
