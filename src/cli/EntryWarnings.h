#pragma once

#include "operations/ClassicLists.h"

namespace kalmo::cli {

/// A line for each thing that the phone can't hold as the plan's entries have it. Of very many only the first
/// ones, and the number of the others.
QString warningLines(const operations::ListPlan& plan);

} // namespace kalmo::cli
