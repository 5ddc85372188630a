#pragma once

#include "handset/classic/ClassicEntry.h"

namespace kalmo::handset {

/// A person of a made-up town, for benchmarks and full stores. The same index always gives the same person,
/// and no two have the same number.
struct GeneratedPerson
{
    QString lastName;
    QString firstName;
    QString home;
    QString mobile;
    QString work;  ///< empty for most
    QString email; ///< empty for some
    QString day;   ///< birthday as month, day, hour and minute, "12240830"; empty for some
};

GeneratedPerson generatedPerson(int index);

/// That person as an entry of a classic phonebook; every tenth is a VIP.
ClassicEntry generatedEntry(int index);

} // namespace kalmo::handset
