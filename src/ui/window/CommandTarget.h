#pragma once

#include "toolkit/Progress.h"
#include "ui/Program.h"
#include "ui/window/ToolbarTable.h"

class QWidget;

namespace kalmo::ui {

/// What the parts of the main window share: the program, what an operation blocks and reports to, and the
/// window that dialogs belong to.
struct WindowParts
{
    Program& program;
    toolkit::BusyWindow& busy;
    toolkit::Progress progress;
    QWidget* window;
};

/// What the toolbar's commands act on: a list or a panel.
class CommandTarget
{
public:
    virtual ~CommandTarget() = default;

    /// Carries a command out, and does nothing for one that it doesn't know.
    virtual void run(Command command) = 0;
};

} // namespace kalmo::ui
