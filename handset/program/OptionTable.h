#pragma once

#include "handset/program/CommandLine.h"

#include <functional>
#include <vector>

namespace kalmo::handset {

/// Takes one value. Returns the error, if there is one.
using Setter = std::function<std::optional<QString>(CommandLine&, const QString& value)>;

/// One option of the command line.
struct OptionRow
{
    QString name;
    QString argument; // empty for a switch
    QString help;
    Setter set;
};

/// All options, in the order of the help.
const std::vector<OptionRow>& optionTable();

} // namespace kalmo::handset
