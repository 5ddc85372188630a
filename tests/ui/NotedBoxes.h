#pragma once

#include "toolkit/Dialogs.h"
#include "ui/adaptors/LossBoxes.h"

namespace kalmo::tests {

/// Notes each box that asks nothing, and passes all on to the script.
struct NotedDialogs : toolkit::Dialogs
{
    toolkit::Dialogs* script = nullptr;
    QStringList shown;

    toolkit::Answer Show(const toolkit::Message& message) override
    {
        if (message.buttons == toolkit::Buttons::Ok)
            shown.append(message.text.simplified().left(120));
        return script->Show(message);
    }
    QString OpenFile(const toolkit::FileRequest& request) override { return script->OpenFile(request); }
    QString SaveFile(const toolkit::FileRequest& request) override { return script->SaveFile(request); }
    QString PickFolder(const QString& title, const QString& start) override
    {
        return script->PickFolder(title, start);
    }
};

struct NotedBoxes : NotedDialogs
{
    ui::LossBoxes losses{*this};
};

} // namespace kalmo::tests
