#pragma once

#include "toolkit/Progress.h"

#include <utility>

namespace kalmo::obex {

/// Passes the reports of a client on to the receiver of its present operation, and lets it switch the cancel
/// box off. Code that runs within an operation holds the relay's own reports: an operation inside it may take
/// them as its receiver, and a cancel box that is switched off stays so for all of them.
class ProgressRelay
{
public:
    toolkit::Progress progress() { return {&m_panel, &m_bar, &m_cancel}; }

    const toolkit::Progress& target() const { return m_target; }
    /// While it is off, the cancel box reads as not checked.
    bool setCancelOn(bool on) { return std::exchange(m_cancel.isOn, on); }
    /// Setting the relay's own reports as its target changes nothing.
    void setTarget(const toolkit::Progress& target)
    {
        if (target.panel != &m_panel)
            m_target = target;
    }

private:
    struct Panel : toolkit::StatusPanel
    {
        explicit Panel(const toolkit::Progress& relayTarget) : target(relayTarget) {}
        QString Text() const override { return target.panel ? target.panel->Text() : QString(); }
        void SetText(const QString& text) override { target.status(text); }
        const toolkit::Progress& target;
    };

    struct Bar : toolkit::ProgressBar
    {
        explicit Bar(const toolkit::Progress& relayTarget) : target(relayTarget) {}
        int Value() const override { return target.bar ? target.bar->Value() : 0; }
        int Maximum() const override { return target.bar ? target.bar->Maximum() : 0; }
        void SetValue(int value) override { target.set(value); }
        void SetMaximum(int maximum) override
        {
            if (target.bar)
                target.bar->SetMaximum(maximum);
        }
        void SetVisible(bool visible) override
        {
            if (target.bar)
                target.bar->SetVisible(visible);
        }
        const toolkit::Progress& target;
    };

    struct Cancel : toolkit::CancelBox
    {
        explicit Cancel(const toolkit::Progress& relayTarget) : target(relayTarget) {}
        bool Checked() const override { return isOn && target.cancelled(); }
        const toolkit::Progress& target;
        bool isOn = true;
    };

    toolkit::Progress m_target;
    Panel m_panel{m_target};
    Bar m_bar{m_target};
    Cancel m_cancel{m_target};
};

} // namespace kalmo::obex
