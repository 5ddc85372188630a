#pragma once

#include "link/Machine.h"
#include "ui/adaptors/LossBoxes.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/CommandLine.h"
#include "ui/Program.h"

namespace kalmo::ui {

/// One run of the program: everything that the window's forms work with, bound to this machine.
class Engine
{
public:
    Engine() { m_dialogs.watch(m_machine.line); }
    Q_DISABLE_COPY_MOVE(Engine)

    /// Takes over the options of the command line for this run. Returns the error, in English, or an empty
    /// text.
    QString take(const CommandLine& commandLine);

    Program& program() { return m_program; }

private:
    QtDialogs m_boxes;
    LossBoxes m_dialogs{m_boxes};
    QtEnding m_ending;
    link::Machine m_machine{m_dialogs, m_ending};
    phonedata::PhoneMemory m_memory;
    Program m_program{m_machine.context, m_machine.line, m_machine.desktop, m_machine.ports, m_memory};
};

} // namespace kalmo::ui
