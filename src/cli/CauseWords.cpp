#include "cli/CauseWords.h"

#include <algorithm>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::Cause;
using operations::SaveFault;

QString causeInWords(Cause cause, const QString& line, std::initializer_list<CauseWords> own)
{
    const auto row = std::ranges::find(own, cause, &CauseWords::cause);
    if (row != own.end())
        return row->words;
    switch (cause) { // without a default, so that the compiler names a cause that is missing
    case Cause::Interrupted:
        return u"interrupted"_s;
    case Cause::PhoneRefused:
        return u"the phone refused it"_s;
    case Cause::NoAnswer:
        return u"the phone did not answer"_s;
    case Cause::LineGone:
        return u"%1 is gone"_s.arg(line);
    case Cause::NotSaved:
        return u"what the phone holds could not be saved first"_s;
    case Cause::Doubtful:
        return u"it is not safely known what the phone holds"_s;
    case Cause::NoRoom:
        return u"the phone has too little room left"_s;
    case Cause::Mismatch:
        return u"the phone does not hold what was sent"_s;
    case Cause::NotPossible:
        return u"this phone can't do that"_s;
    case Cause::None:
    case Cause::NotRead:
        break;
    }
    return u"could not read what the phone holds"_s;
}

QString saveFaultInWords(const SaveFault& fault)
{
    switch (fault.kind) {
    case SaveFault::Kind::None:
    case SaveFault::Kind::System:
        break;
    case SaveFault::Kind::Locked:
        return u"could not lock %1"_s.arg(fault.detail);
    case SaveFault::Kind::NoNumberLeft:
        return u"%1 has no number left"_s.arg(fault.detail);
    }
    return fault.detail;
}

} // namespace kalmo::cli
