#include "handset/program/CommandLine.h"

#include "handset/model/Models.h"

#include <functional>
#include <vector>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

/// Takes one value; what is wrong with it, if it is wrong.
using Setter = std::function<std::optional<QString>(CommandLine&, const QString& value)>;

struct OptionRow
{
    QString name;
    QString argument; // empty for a switch
    QString help;
    Setter set;
};

template <typename Field>
Setter text(Field field)
{
    return [field](CommandLine& line, const QString& value) -> std::optional<QString> {
        field(line) = value;
        return std::nullopt;
    };
}

Setter number(std::function<void(CommandLine&, int)> take, int least, int most)
{
    return [=](CommandLine& line, const QString& value) -> std::optional<QString> {
        bool ok = false;
        const int result = value.toInt(&ok);
        if (!ok || result < least || result > most)
            return u"\"%1\" is no number from %2 to %3."_s.arg(value).arg(least).arg(most);
        take(line, result);
        return std::nullopt;
    };
}

/// One of several words.
template <typename Value>
Setter choice(std::vector<std::pair<QString, Value>> values, std::function<void(CommandLine&, Value)> take)
{
    return [=](CommandLine& line, const QString& value) -> std::optional<QString> {
        QStringList words;
        for (const auto& [word, meaning] : values) {
            words.append(word);
            if (word != value)
                continue;
            take(line, meaning);
            return std::nullopt;
        }
        return u"\"%1\" is none of %2."_s.arg(value, words.join(u", "_s));
    };
}

Setter print(std::function<QString()> text)
{
    return [text](CommandLine& line, const QString&) -> std::optional<QString> {
        line.action = CommandLine::PrintText;
        line.text = text();
        return std::nullopt;
    };
}

QString helpText();

QString modelList()
{
    QString out = u"family  AT+CGMM    name\n"_s;
    for (const Model& model : allModels()) {
        QString name = model.name();
        name.replace(u'\a', u"\\a"_s);
        out += u"%1  %2 %3\n"_s.arg(model.family, 6).arg(model.cgmm, -10).arg(name);
    }
    return out;
}

const std::vector<OptionRow>& optionTable()
{
    static const std::vector<OptionRow> rows = {
        {u"model"_s, u"NAME"_s,
         u"handset, by its name or its answer to AT+CGMM; MODEM for a modem (PICASSO)"_s,
         text([](CommandLine& line) -> QString& { return line.options.model; })},
        {u"list-models"_s, {}, u"lists the handsets"_s, print(modelList)},
        {u"cgmm"_s, u"TEXT"_s, u"an unknown model: its answer to AT+CGMM"_s,
         text([](CommandLine& line) -> QString& { return line.options.cgmm; })},
        {u"wppn"_s, u"TEXT"_s, u"and to AT^WPPN, \"^WPPN: 4,S68X\" for example"_s,
         text([](CommandLine& line) -> QString& { return line.options.wppn; })},
        {u"family"_s, u"N"_s, u"and the family like which it behaves"_s,
         number([](CommandLine& line, int value) { line.options.family = value; }, 0, lastFamily)},
        {u"baud"_s, u"RATE"_s, u"answers at this rate; can be given several times"_s,
         number([](CommandLine& line, int value) { line.options.rates.append(value); }, 300, 4000000)},
        {u"wrong-rate"_s, u"WHAT"_s, u"what it sends at other rates: silence or garbage (silence)"_s,
         choice<WrongRate>({{u"silence"_s, WrongRate::Silence}, {u"garbage"_s, WrongRate::Garbage}},
                           [](CommandLine& line, WrongRate value) { line.options.wrongRate = value; })},
        {u"line-end"_s, u"END"_s, u"how commands have to end: cr or crlf (as the family wants it)"_s,
         choice<LineEnd>({{u"cr"_s, LineEnd::Cr}, {u"crlf"_s, LineEnd::CrLf}},
                         [](CommandLine& line, LineEnd value) { line.options.lineEnd = value; })},
        {u"state"_s, u"DIR"_s, u"folder of its memory; without one it forgets"_s,
         text([](CommandLine& line) -> QString& { return line.options.stateFolder; })},
        {u"seed"_s, u"FILE"_s, u"what an empty memory starts with: a file, sample or none (sample)"_s,
         text([](CommandLine& line) -> QString& { return line.options.seed; })},
        {u"entries"_s, u"N"_s, u"fills the phonebook up to N entries"_s,
         number([](CommandLine& line, int value) { line.options.entries = value; }, 0, 99999)},
        {u"capacity"_s, u"N"_s, u"entries that the phonebook takes (as the family has it)"_s,
         number([](CommandLine& line, int value) { line.options.capacity = value; }, 1, 99999)},
        {u"fault"_s, u"NAME[=VALUE]"_s, u"what goes wrong; can be given several times"_s,
         [](CommandLine& line, const QString& value) { return setFault(line.options.faults, value); }},
        {u"list-faults"_s, {}, u"lists the faults"_s, print(faultList)},
        {u"link"_s, u"PATH"_s, u"makes a symbolic link to the terminal"_s,
         text([](CommandLine& line) -> QString& { return line.link; })},
        {u"until-closed"_s,
         {},
         u"ends when the client closes its port"_s,
         [](CommandLine& line, const QString&) -> std::optional<QString> {
             line.untilClosed = true;
             return std::nullopt;
         }},
        {u"help"_s, {}, u"prints this"_s, print(helpText)},
        {u"version"_s, {}, u"prints the version"_s, print([] { return u"kalmo-handset 1.9.8\n"_s; })},
    };
    return rows;
}

QString helpText()
{
    QString out = u"usage: kalmo-handset [OPTION]...\n\n"
                  u"An emulated handset on a pseudo terminal. Prints the terminal's path when it is ready, "
                  u"and runs until "
                  u"SIGTERM\nor SIGINT.\n\n"_s;
    for (const OptionRow& row : optionTable()) {
        const QString usage = row.argument.isEmpty() ? row.name : row.name + u' ' + row.argument;
        out += u"  --%1 %2\n"_s.arg(usage, -20).arg(row.help);
    }
    return out + u"\nExit status: 0 ended as asked, 1 no terminal or the memory can't be used, 2 wrong use, "
                 u"3 the client broke "
                 u"the protocol\n(what it did stands on stderr).\n"_s;
}

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
    return line;
}

} // namespace kalmo::handset
