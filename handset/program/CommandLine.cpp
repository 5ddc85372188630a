#include "handset/program/CommandLine.h"

#include "handset/program/OptionTable.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

CommandLine refusal(const QString& why)
{
    return {.action = CommandLine::Refuse, .text = why};
}

const OptionRow* findOption(const QString& argument)
{
    const QString name = argument == u"-h"_s ? u"help"_s : argument.mid(2).section(u'=', 0, 0);
    if (!argument.startsWith(u"--"_s) && argument != u"-h"_s)
        return nullptr;
    for (const OptionRow& row : optionTable()) {
        if (row.name == name)
            return &row;
    }
    return nullptr;
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments)
{
    CommandLine line;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        const QString& argument = arguments[index];
        const OptionRow* row = findOption(argument);
        if (!row)
            return refusal(u"Unknown argument \"%1\"; --help lists what there is."_s.arg(argument));
        const bool joined = argument.contains(u'=');
        if (row->argument.isEmpty() ? joined : !joined && index + 1 == arguments.size())
            return refusal(
                u"--%1 takes %2."_s.arg(row->name, row->argument.isEmpty() ? u"no value"_s : row->argument));
        QString value;
        if (joined)
            value = argument.section(u'=', 1);
        else if (!row->argument.isEmpty())
            value = arguments[++index];
        if (const auto problem = row->set(line, value))
            return refusal(u"--%1: %2"_s.arg(row->name, *problem));
        if (line.action == CommandLine::PrintText)
            return line;
    }
    if (line.options.cgmm.isEmpty() && (line.options.family != 0 || !line.options.wppn.isEmpty()))
        return refusal(u"--family and --wppn go with --cgmm."_s);
    return line;
}

} // namespace kalmo::handset
