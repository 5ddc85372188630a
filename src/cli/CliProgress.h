#pragma once

#include "cli/Output.h"
#include "toolkit/Progress.h"

namespace kalmo::cli {

/// The line of progress: what is being done, and how far it is. With a bar it shows a share, without one how
/// many there are so far.
class CliProgress final : public toolkit::ProgressBar
{
public:
    explicit CliProgress(Output& out) : m_out(out) {}
    ~CliProgress() override { clear(); }

    /// Begins something new, "Reading the phonebook" for example. `withBar` is what it is called from the
    /// moment that a bar is shown, if that is something else.
    void phase(const QString& text, const QString& withBar = {});
    /// So many so far, of an unknown number.
    void count(int number);
    void clear();

    int Value() const override { return m_value; }
    int Maximum() const override { return m_maximum; }
    void SetValue(int value) override;
    void SetMaximum(int maximum) override;
    void SetVisible(bool visible) override;

private:
    void draw();

    Output& m_out;
    QString m_phase;
    QString m_phaseWithBar;
    int m_count = 0;
    int m_value = 0;
    int m_maximum = 0;
    bool m_hasBar = false;
};

} // namespace kalmo::cli
