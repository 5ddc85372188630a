#pragma once

#include "toolkit/Progress.h"
#include "ui/Program.h"
#include "ui/window/ToolbarTable.h"

class QWidget;

namespace kalmo::ui {

/// Shared by the parts of the main window: the program, the widgets that an operation blocks and reports to,
/// and the window that dialogs belong to.
struct WindowParts
{
    Program& program;
    toolkit::BusyWindow& busy;
    toolkit::Progress progress;
    QWidget* window;
};

/// The list or panel that the toolbar's commands act on.
class CommandTarget
{
public:
    virtual ~CommandTarget() = default;

    /// Says why a command has nothing to act on. Empty if it has.
    virtual QString obstacleTo(Command) const { return {}; }

    /// Carries a command out that has no obstacle: the caller asks obstacleTo() first. Does nothing for a
    /// command that it doesn't know.
    virtual void run(Command command) = 0;
};

} // namespace kalmo::ui
