#pragma once

#include "cli/Output.h"

#include <QHash>

namespace kalmo::cli {

/// Asks the user by a prompt on a terminal. `--yes` answers every question. Without both nobody can answer;
/// that is reported and counts as no.
class Questions
{
public:
    /// Reads one line. Gives nothing if there is no more. An empty function means that there is no terminal.
    using Reader = std::function<std::optional<QString>()>;

    Questions(Output& out, bool yes, Reader reader);

    /// Returns true if confirm() can return true at all.
    bool canBeAnswered() const { return m_yes || m_reader; }
    /// Returns true if a user can answer at a terminal.
    bool someoneIsThere() const { return !m_yes && m_reader; }

    /// Returns true for yes. Asks again after an unclear answer; the end of the input is a no.
    bool confirm(const QString& question);

    /// The same for something to be tried again. `--yes` answers each question twice with yes and then with
    /// no, and says so: without an end it could go on for ever.
    bool confirmRetry(const QString& question);

    /// Tells that nobody can answer a question.
    void tellUnanswered(const QString& question);

private:
    bool ask(const QString& question);
    bool retriesByItself(const QString& question);

    Output& m_out;
    bool m_yes;
    Reader m_reader;
    QHash<QString, int> m_retries; // how often --yes has answered a question
};

} // namespace kalmo::cli
