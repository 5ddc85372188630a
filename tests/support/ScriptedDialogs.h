#pragma once

#include "support/Verdict.h"
#include "toolkit/Dialogs.h"

#include <deque>
#include <functional>
#include <optional>

namespace kalmo::tests {

using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

/// A user who knows beforehand what will be asked. Each box has to be the one that was expected next: text,
/// title, buttons, default button and icon, and the English text where one was expected. A box that nobody
/// expected gets the answer that does least; it and a box that never came fail the test.
class ScriptedDialogs : public toolkit::Dialogs
{
public:
    explicit ScriptedDialogs(Verdict& verdict) : m_verdict(verdict) {}
    ~ScriptedDialogs() override;

    void expect(const toolkit::Message& message, Answer answer = Answer::Ok);
    /// A box that only tells something.
    void expect(Icon icon, const QString& text) { expect({.text = text, .icon = icon}); }
    /// A box with a text that begins like this, and these buttons: where its wording is not what is tested.
    void expectStart(const QString& start, Buttons buttons = Buttons::Ok, Answer answer = Answer::Ok);
    /// The path is what the user chooses; empty where he cancels.
    void expectOpenFile(const toolkit::FileRequest& request, const QString& path);
    void expectSaveFile(const toolkit::FileRequest& request, const QString& path);
    void expectPickFolder(const QString& title, const QString& start, const QString& path);

    /// Runs while the dialog that was expected last is shown.
    void whileShown(std::function<void()> action);

    /// From now on agrees to every box whatever it is, but to no further try, and chooses `path` wherever a
    /// file or folder is to be chosen: where the boxes are not what is tested.
    void agreeToAll(const QString& path) { m_pathForAll = path; }

    /// Complains about what never came, and forgets it. The destructor does the same.
    void finish();

    Answer Show(const toolkit::Message& message) override;
    QString OpenFile(const toolkit::FileRequest& request) override;
    QString SaveFile(const toolkit::FileRequest& request) override;
    QString PickFolder(const QString& title, const QString& start) override;

private:
    struct Step
    {
        QString shown;        // all that is compared, in words
        bool isStart = false; // of the text, and without title, icon and default button
        QString english;
        Answer answer = Answer::Ok;
        QString path = {};
        std::function<void()> action = {};
    };

    /// The step that was expected, null if another or none was.
    std::optional<Step> next(const QString& shown, const QString& english = {});

    Verdict& m_verdict;
    std::deque<Step> m_script;
    std::optional<QString> m_pathForAll; // once nothing is compared any more
};

} // namespace kalmo::tests
