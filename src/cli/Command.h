#pragma once

#include "cli/HandsetKind.h"

#include <QString>

#include <vector>

namespace kalmo::cli {

using namespace Qt::StringLiterals;

struct Job;

/// Exit status of the program.
enum ExitStatus {
    ExitDone = 0,
    ExitFailed = 1,   ///< the phone or the line failed, or a file could not be written
    ExitWrongUse = 2, ///< words that are not understood, or a bad input file
    ExitNoPhone = 3,  ///< nothing answers, or nothing that is a known handset
    ExitRefused = 4,  ///< the user said no, or interrupted
};

/// Meaning of an exit status, for `--help` and the manual.
struct ExitMeaning
{
    ExitStatus status;
    QStringView meaning;
};
const std::vector<ExitMeaning>& exitMeanings();

/// Number of words for an argument. Only the last argument of a command may be other than One.
enum class Count { One, OneOrNone, OneOrMore };

struct Argument
{
    QStringView name; ///< as help shows it, in capitals
    QStringView help;
    std::vector<QStringView> choices = {}; ///< the only words that are allowed; empty for any text
    Count count = Count::One;
};

enum class EmptyValue { Refused, Allowed };

struct Option
{
    QStringView name;        ///< "--output"
    QStringView letter = {}; ///< "-o", empty where there is none
    QStringView value = {};  ///< its value's name in help; empty for a switch
    QStringView help = {};
    std::vector<QStringView> choices = {}; ///< the only values that are allowed; empty for any text
    EmptyValue emptyValue = EmptyValue::Refused;
};

/// Options that several commands share, too many to name each in a line of usage.
struct OptionGroup
{
    QStringView name;    ///< stands in usage for all options of the command
    QStringView heading; ///< in help: "Import options"
    std::vector<Option> options;
};

/// One command: all that parsing, help and completion know of it, and the function that runs it.
struct Command
{
    QStringView words; ///< "phonebook read"
    QStringView help;  ///< one line
    std::vector<Argument> arguments = {};
    std::vector<Option> options = {};
    const OptionGroup* group = nullptr;   ///< further options
    QStringView details = {};             ///< more help, in whole lines
    const HandsetKind* handset = nullptr; ///< that the command is for; null is all
    ExitStatus (*run)(Job& job) = nullptr;
};

const std::vector<Command>& commandTable();

/// The options of a command, those of its group too.
std::vector<Option> optionsOf(const Command& command);

/// Options of the commands that import.
const OptionGroup& importOptionGroup();

/// Options of the commands that export.
const OptionGroup& exportOptionGroup();

/// Options that every command has.
const std::vector<Option>& globalOptions();

} // namespace kalmo::cli
