#pragma once

#include "cli/Questions.h"
#include "toolkit/Dialogs.h"

namespace kalmo::cli {

/// Shows the engine's messages and questions on a terminal: messages on standard error, questions as prompts.
/// A message without an English text is shown in German.
class CliDialogs final : public toolkit::Dialogs
{
public:
    CliDialogs(Output& out, Questions& questions) : m_out(out), m_questions(questions) {}

    toolkit::Answer Show(const toolkit::Message& message) override;

    /// There is no file dialog here: tells what would have been asked, and chooses nothing.
    QString OpenFile(const toolkit::FileRequest& request) override;
    QString SaveFile(const toolkit::FileRequest& request) override;
    QString PickFolder(const QString& title, const QString& start) override;

private:
    QString nothingChosen(const QString& title);

    Output& m_out;
    Questions& m_questions;
};

} // namespace kalmo::cli
