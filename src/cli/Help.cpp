#include "cli/Help.h"

#include <algorithm>

namespace kalmo::cli {

namespace {

using Lines = std::vector<std::pair<QString, QString>>;

constexpr qsizetype widestColumn = 33; // characters

/// Two columns with a heading, or nothing if there are no lines. What is too long for the left one has a line
/// of its own.
QString section(const QString& heading, const Lines& lines)
{
    if (lines.empty())
        return {};
    qsizetype width = 0;
    for (const auto& line : lines) {
        if (line.first.size() <= widestColumn)
            width = std::max(width, line.first.size());
    }
    QString text = u'\n' + heading + u":\n"_s;
    for (const auto& [left, right] : lines)
        text +=
            u"  "_s +
            (left.size() <= width ? left.leftJustified(width + 2) : left + u'\n' + QString(width + 4, u' ')) +
            right + u'\n';
    return text;
}

Lines optionLines(const std::vector<Option>& options)
{
    Lines lines;
    for (const Option& option : options) {
        QString left = option.letter.isEmpty() ? option.name.toString()
                                               : option.letter.toString() + u", "_s + option.name.toString();
        if (!option.value.isEmpty())
            left += u' ' + option.value.toString();
        lines.emplace_back(left, option.help.toString());
    }
    return lines;
}

QString shape(const Argument& argument)
{
    const QString name = argument.name.toString();
    if (argument.count == Count::OneOrNone)
        return u'[' + name + u']';
    return argument.count == Count::OneOrMore ? name + u"..."_s : name;
}

QString commandHelp(const Command& command)
{
    Lines arguments;
    for (const Argument& argument : command.arguments)
        arguments.emplace_back(argument.name.toString(), argument.help.toString());
    QString text = u"Usage: kalmoctl [OPTION]... "_s + usageOf(command) + u'\n';
    text += command.help.first(1).toString().toUpper() + command.help.sliced(1).toString() + u".\n"_s;
    if (!command.details.isEmpty())
        text += u'\n' + command.details.toString();
    if (command.handset)
        text += u"\nFor %1.\n"_s.arg(command.handset->inWords());
    text += section(u"Arguments"_s, arguments) + section(u"Options"_s, optionLines(command.options));
    if (command.group)
        text += section(command.group->heading.toString(), optionLines(command.group->options));
    return text + section(u"Options of every command"_s, optionLines(globalOptions()));
}

} // namespace

QString usageOf(const Command& command)
{
    QString text = command.words.toString();
    for (const Argument& argument : command.arguments)
        text += u' ' + shape(argument);
    if (command.group)
        return text + u" ["_s + command.group->name.toString() + u"]..."_s;
    for (const Option& option : command.options) {
        const QString name = (option.letter.isEmpty() ? option.name : option.letter).toString();
        text += u" ["_s + name + (option.value.isEmpty() ? QString() : u' ' + option.value.toString()) + u']';
    }
    return text;
}

QString helpText(const Invocation& asked)
{
    if (asked.command)
        return commandHelp(*asked.command);
    Lines commands;
    for (const Command& command : commandTable()) {
        if (asked.topic.isEmpty() || command.words.startsWith(asked.topic + u' '))
            commands.emplace_back(usageOf(command), command.help.toString());
    }
    Lines statuses;
    for (const ExitMeaning& row : exitMeanings())
        statuses.emplace_back(QString::number(row.status), row.meaning.toString());
    return u"Usage: kalmoctl [OPTION]... COMMAND [ARGUMENT]...\n"
           u"Looks after a DECT cordless handset that is connected by a serial line.\n"_s +
           section(u"Commands"_s, commands) + section(u"Options"_s, optionLines(globalOptions())) +
           section(u"Exit status"_s, statuses) +
           u"\n\"kalmoctl COMMAND --help\" tells more of a command, \"man kalmoctl\" of everything.\n"_s;
}

} // namespace kalmo::cli
