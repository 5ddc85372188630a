#pragma once

#include "toolkit/ListRows.h"

#include <QString>

#include <memory>
#include <vector>

namespace kalmo::phonedata {

/// One row of the classic phonebook, as the list shows it.
struct ClassicEntry
{
    QString name = {};
    QString number = {};
    QString date = {};        ///< "24.12  08:30" (day, month, two blanks, hour, minute) or empty
    QString dateSound = {};   ///< display name of a sound; empty when there is no date
    QString vip = {};         ///< "Ja" or empty
    QString vipSound = {};    ///< display name of a sound; empty unless VIP
    QString languageTag = {}; ///< held with the number, never sent

    bool operator==(const ClassicEntry&) const = default;
};

/// One row of the provider list.
struct ProviderEntry
{
    QString name = {};
    QString number = {};

    bool operator==(const ProviderEntry&) const = default;
};

/// Columns of the two lists; the provider list has the first two.
enum ClassicColumn { NameColumn, NumberColumn, DateColumn, DateSoundColumn, VipColumn, VipSoundColumn };

/// The lists with their column titles, named `lvwTB` and `lvwNE`.
std::unique_ptr<toolkit::ListRows> makePhonebookRows();
std::unique_ptr<toolkit::ListRows> makeProviderRows();

toolkit::ListRow toRow(const ClassicEntry& entry);
toolkit::ListRow toRow(const ProviderEntry& entry);
ClassicEntry classicEntryFrom(const toolkit::ListRow& row);
ProviderEntry providerEntryFrom(const toolkit::ListRow& row);

/// All rows of a list, from top to bottom.
std::vector<ClassicEntry> classicEntries(const toolkit::ListRows& list);
std::vector<ProviderEntry> providerEntries(const toolkit::ListRows& list);

} // namespace kalmo::phonedata
