#include "cli/HandsetKind.h"

#include "link/PhoneModels.h"

#include <QStringList>

namespace kalmo::cli {

using namespace Qt::StringLiterals;

constexpr HandsetKind clockHandset{link::hasClock, u"a handset whose clock can be set from outside"};
constexpr HandsetKind classicHandset{link::isClassic, u"a handset with a classic phonebook"};
constexpr HandsetKind ringingHandset{link::hasRingtoneSettings, u"a handset with ringtone settings"};
constexpr HandsetKind vcardHandset{link::hasVcards, u"a handset with a vCard phonebook"};
constexpr HandsetKind rewritingHandset{link::hasAreaCodes, u"a handset with area codes"};
constexpr HandsetKind filingHandset{link::hasFileSystem, u"a handset with a file system"};

QString HandsetKind::inWords() const
{
    QStringList ranges;
    for (int first = 1; first <= link::lastFamily; ++first) {
        if (!fits(first))
            continue;
        int last = first;
        while (last < link::lastFamily && fits(last + 1))
            ++last;
        if (last == first + 1)
            ranges += {QString::number(first), QString::number(last)};
        else
            ranges += last == first ? QString::number(first) : u"%1 to %2"_s.arg(first).arg(last);
        first = last;
    }
    const bool isOne = ranges.size() == 1 && !ranges.first().contains(u' ');
    const QString last = ranges.takeLast();
    const QString all = ranges.isEmpty() ? last : u"%1 and %2"_s.arg(ranges.join(u", "_s), last);
    return u"%1 (%2 %3)"_s.arg(subject, isOne ? u"family"_s : u"families"_s, all);
}

} // namespace kalmo::cli
