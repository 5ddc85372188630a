#pragma once

#include "cli/Output.h"
#include "toolkit/BatchMeter.h"
#include "toolkit/Progress.h"

namespace kalmo::cli {

/// The line of progress of several transfers as one, as toolkit::BatchMeter measures it. The bar of each
/// transfer moves it; a byte count that is known better may too.
class BatchProgress final : public toolkit::ProgressBar
{
public:
    /// `verb` is what is done, "Fetching" for example. Shows nothing before the first next().
    BatchProgress(Output& out, const toolkit::Clock& clock, const QString& verb);
    ~BatchProgress() override { m_out.progress({}); }
    Q_DISABLE_COPY_MOVE(BatchProgress)

    /// A batch of so many files with so many bytes together.
    void expect(qsizetype count, qint64 total) { m_meter.expect(count, total); }
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
    QString m_verb;
    toolkit::BatchMeter m_meter;
    QString m_name;
    int m_value = 0;
    int m_maximum = 0;
};

} // namespace kalmo::cli
