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

/// The operations of the splash that the start sequence needs.
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
/// `commandLine` holds all arguments as one text. Ends the program if it may not start.
StartOutcome runStartSequence(Context& context, StartView& view, const QString& commandLine);

/// Text about a data session that did not end. `device` is the phone's name.
QString unclosedSessionText(const QString& device);

} // namespace kalmo::app
