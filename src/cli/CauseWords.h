#pragma once

#include "operations/Outcome.h"

#include <initializer_list>

namespace kalmo::cli {

/// Words of a command of its own for a cause.
struct CauseWords
{
    operations::Cause cause;
    QString words;
};

/// A cause in words that come after "could not VERB OBJECT: ": those of `own`, or the usual ones. `line` is
/// the name of the line for "... is gone".
QString causeInWords(operations::Cause cause, const QString& line,
                     std::initializer_list<CauseWords> own = {});

/// The reason why something could not be saved, in words that come after a colon; empty if it is not known.
QString saveFaultInWords(const operations::SaveFault& fault);

} // namespace kalmo::cli
