#pragma once

#include "toolkit/Progress.h"

#include <QStringList>

namespace kalmo::tests {

class RecordedPanel : public toolkit::StatusPanel
{
public:
    QStringList texts; ///< all texts that were ever shown; the last one is shown now

    QString Text() const override { return texts.isEmpty() ? QString() : texts.last(); }
    void SetText(const QString& text) override { texts.append(text); }
};

class RecordedBar : public toolkit::ProgressBar
{
public:
    int value = 0;
    int maximum = 0;
    bool visible = false;
    QStringList
        steps; ///< "value/maximum" after each change while the bar was shown, "hidden" for each hiding

    int Value() const override { return value; }
    int Maximum() const override { return maximum; }
    void SetValue(int newValue) override
    {
        value = newValue;
        note();
    }
    void SetMaximum(int newMaximum) override { maximum = newMaximum; }
    void SetVisible(bool nowVisible) override
    {
        if (visible && !nowVisible)
            steps.append(QStringLiteral("hidden"));
        const bool appears = nowVisible && !visible;
        visible = nowVisible;
        if (appears)
            note();
    }

private:
    void note()
    {
        if (visible)
            steps.append(QStringLiteral("%1/%2").arg(value).arg(maximum));
    }
};

class SwitchedCancel : public toolkit::CancelBox
{
public:
    bool checked = false;
    bool Checked() const override { return checked; }
};

/// A status bar that remembers what it showed, and a cancel box that the test can check.
struct RecordedProgress
{
    RecordedPanel panel;
    RecordedBar bar;
    SwitchedCancel cancel;

    toolkit::Progress all() { return {&panel, &bar, &cancel}; }
};

} // namespace kalmo::tests
