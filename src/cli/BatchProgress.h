#pragma once

#include "cli/Output.h"
#include "toolkit/Clock.h"
#include "toolkit/Progress.h"

namespace kalmo::cli {

/// The line of progress of several transfers as one: which file it is, how far the whole is, at which rate,
/// and how long it will take. The bar of each transfer moves it; a byte count that is known better may too.
class BatchProgress final : public toolkit::ProgressBar
{
public:
    /// `verb` is what is done, "Fetching" for example. Shows nothing before the first next().
    BatchProgress(Output& out, const toolkit::Clock& clock, const QString& verb);
    ~BatchProgress() override { m_out.progress({}); }
    Q_DISABLE_COPY_MOVE(BatchProgress)

    /// A batch of so many files with so many bytes together.
    void expect(qsizetype count, qint64 total);
    /// Begins a file of so many bytes. The file before it counts as done, even if it failed.
    void next(const QString& name, qint64 size);
    /// Reports the bytes of the file that have been transferred.
    void setBytes(qint64 bytes);

    int Value() const override { return m_value; }
    int Maximum() const override { return m_maximum; }
    void SetValue(int value) override;
    void SetMaximum(int maximum) override { m_maximum = maximum; }
    void SetVisible(bool) override {}

private:
    void draw();

    Output& m_out;
    const toolkit::Clock& m_clock;
    QString m_verb;
    qsizetype m_count = 0;
    qint64 m_total = 0;
    double m_start;
    QString m_name;
    qsizetype m_index = 0;
    qint64 m_size = 0;
    qint64 m_passed = 0;      // bytes of the files before
    qint64 m_bytes = 0;       // of this one
    qint64 m_transferred = 0; // bytes that really went over the line, of the files before
    int m_value = 0;
    int m_maximum = 0;
};

/// "0:07", "12:34", "1:02:03".
QString timeText(double seconds);

} // namespace kalmo::cli
