#pragma once

#include "cli/Invocation.h"

namespace kalmo::cli {

/// The text of `--help`: about one command, about those that begin with some words, or about all.
QString helpText(const Invocation& asked);

/// Words, arguments and options of a command as help shows them.
QString usageOf(const Command& command);

} // namespace kalmo::cli
