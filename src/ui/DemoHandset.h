#pragma once

#include <QProcess>

namespace kalmo::ui {

/// The emulated handset that comes with the program, for those who have no phone at hand. It runs until the
/// object goes, and forgets everything then.
class DemoHandset
{
public:
    DemoHandset() = default;
    ~DemoHandset();
    Q_DISABLE_COPY_MOVE(DemoHandset)

    /// Starts it, beside the program in `programFolder`, and waits until its terminal can be opened. `link`
    /// is the path that the terminal gets. False, with the reason in words in `error`, if that fails.
    bool start(const QString& programFolder, const QString& link, QString& error);
    void stop();
    bool isRunning() const { return m_process.state() == QProcess::Running; }

private:
    QProcess m_process;
};

} // namespace kalmo::ui
