#pragma once

#include "app/Context.h"

namespace kalmo::app {

struct ScreenSize
{
    int twipsX = 0;
    int twipsY = 0;
    int pixelX = 0;
    int pixelY = 0;
};

/// What the start sequence asks of the splash.
class StartView
{
public:
    virtual ~StartView() = default;
    virtual ScreenSize screen() const = 0;
    virtual void clearAbortFlag() = 0;
    virtual void layOutSplash(const QString& caption) = 0;
    /// Loads the settings form, with the serial port, and fills it from the settings. It stays hidden.
    virtual void ReadSettingsToForm() = 0;
    /// Hides the splash and shows the settings form without waiting for it.
    virtual void showSettings() = 0;
};

enum class StartOutcome {
    Settings, ///< the settings form is up; no search until the user confirms it
    Search,   ///< go on with the phone search
};

/// The start of the program, from the test for a second instance to the point where the search may begin.
/// `commandLine` is all arguments as one text. Whatever forbids the start ends the program.
StartOutcome runStartSequence(Context& context, StartView& view, const QString& commandLine);

/// Text that tells of a data session which did not end; `device` is the phone's name.
QString unclosedSessionText(const QString& device);

} // namespace kalmo::app
