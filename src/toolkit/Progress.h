#pragma once

#include <QString>

namespace kalmo::toolkit {

/// One panel of text in a status bar.
class StatusPanel
{
public:
    virtual ~StatusPanel() = default;
    virtual QString Text() const = 0;
    virtual void SetText(const QString& text) = 0;
};

/// A progress bar. It starts hidden; a long operation shows it, moves it and hides it again.
class ProgressBar
{
public:
    virtual ~ProgressBar() = default;
    virtual int Value() const = 0;
    virtual int Maximum() const = 0;
    virtual void SetValue(int value) = 0;
    virtual void SetMaximum(int maximum) = 0;
    virtual void SetVisible(bool visible) = 0;
};

/// Answers a running operation when it asks whether the user wants it to stop.
class CancelBox
{
public:
    virtual ~CancelBox() = default;
    virtual bool Checked() const = 0;
};

/// The window that is blocked while the phone is busy: disabled, with an hourglass.
class BusyWindow
{
public:
    virtual ~BusyWindow() = default;
    virtual void SetBusy(bool busy) = 0;
};

/// Blocks a window, which may be absent, for as long as it lives.
class BusyScope
{
public:
    explicit BusyScope(BusyWindow* window) : m_window(window)
    {
        if (m_window)
            m_window->SetBusy(true);
    }
    ~BusyScope()
    {
        if (m_window)
            m_window->SetBusy(false);
    }
    Q_DISABLE_COPY_MOVE(BusyScope)

private:
    BusyWindow* m_window;
};

/// Sets a text if there is a panel for it. Most operations take a panel that may be absent.
inline void setStatus(StatusPanel* panel, const QString& text)
{
    if (panel)
        panel->SetText(text);
}

/// The displays of a long operation. Each of them may be absent.
struct Progress
{
    StatusPanel* panel = nullptr;
    ProgressBar* bar = nullptr;
    CancelBox* cancel = nullptr;

    void status(const QString& text) const { setStatus(panel, text); }
    void start(int value, int maximum) const
    {
        if (!bar)
            return;
        bar->SetMaximum(maximum);
        bar->SetValue(value);
        bar->SetVisible(true);
    }
    void step() const
    {
        if (bar)
            bar->SetValue(bar->Value() + 1);
    }
    void set(int value) const
    {
        if (bar)
            bar->SetValue(value);
    }
    void hide() const
    {
        if (bar)
            bar->SetVisible(false);
    }
    bool cancelled() const { return cancel && cancel->Checked(); }
};

} // namespace kalmo::toolkit
