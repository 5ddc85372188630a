#pragma once

#include "toolkit/Dialogs.h"
#include "ui/adaptors/LossBoxes.h"
#include "ui/OpenWindow.h"

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

enum class Loss { None, Gone, Silent };

/// The main window with the boxes that it shows, and a phone that can be lost.
struct WatchedWindow : NotedBoxes, OpenWindow
{
    explicit WatchedWindow(const QString& model) : OpenWindow(model, {}, &losses)
    {
        script = &test.dialogs;
        losses.watch(line);
        test.dialogs.agreeToAll({});
    }
    void lose(Loss loss)
    {
        if (loss == Loss::Gone)
            port.Close();
        if (loss == Loss::Silent)
            port.handset().setFaults({.silentAfter = 1, .silentFrom = 1, .commands = 1, .requests = 1});
    }
    void settle()
    {
        for (int round = 0; round < 3 || losses.isLossTold(); ++round)
            QCoreApplication::processEvents();
    }
};

} // namespace kalmo::tests
