#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <utility>

namespace kalmo::tests {

inline constexpr int patience = 20000; ///< milliseconds, for a machine that is busy

/// Path of kalmo-handset.
QString handsetProgram();

/// The emulated handset as a process of its own, as a script would start it. Its memory lies in a folder of
/// its own, below "state".
class RunningHandset
{
public:
    explicit RunningHandset(const QStringList& arguments);
    ~RunningHandset() { end(); }

    QString path; ///< of the terminal, as it was printed
    QString link; ///< to the terminal

    QString folder() const { return m_folder.path(); }
    /// Path of another file in that folder.
    QString filePath(const QString& name) const { return m_folder.filePath(name); }

    /// Asks it to end, or only waits for that. Its exit status, and what it has to say about the client.
    std::pair<int, QString> end(bool ask = true);

    void powerCycle();

    /// Processor time that it has taken so far, in hundredths of a second.
    int processorTime() const;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

} // namespace kalmo::tests
