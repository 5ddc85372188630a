#pragma once

#include "cli/Command.h"

#include <QMap>
#include <QStringList>

namespace kalmo::cli {

/// The parsed words of the command line.
struct Invocation
{
    enum class Kind { Run, Help, Version, WrongUse };

    Kind kind = Kind::WrongUse;
    const Command* command = nullptr; ///< to run, or to tell about; null for help about all
    QString topic = {};               ///< help about commands that begin with these words
    QStringList arguments = {};
    QMap<QString, QString> options = {}; ///< by full name, "--port"; a switch has an empty value
    QMap<QString, QStringList> repeated = {};
    QString error = {}; ///< the fault in the use

    bool has(const QString& option) const { return options.contains(option); }
    QString value(const QString& option) const { return options.value(option); }
    /// All values of an option that was given more than once; value() is the last of them.
    QStringList values(const QString& option) const { return repeated.value(option); }

    /// Another command for the same handset and the same storage, ready for a shell: "kalmoctl --port
    /// '/dev/ttyUSB0' phonebook read".
    QString again(const QString& words) const;
};

/// A word in single quotes, for a shell.
QString inShellQuotes(QString word);

/// Parses the words by the table. Options may be anywhere up to "--". Their values follow as the next word or
/// after "=".
Invocation parseWords(const QStringList& words);

} // namespace kalmo::cli
