#include "phonedata/ClassicEntry.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::ListRow;
using toolkit::ListRows;

std::unique_ptr<ListRows> makePhonebookRows()
{
    return std::make_unique<ListRows>(u"lvwTB"_s,
                                      QList<toolkit::ListColumn>{{u"Name"_s},
                                                                 {u"Nummer"_s},
                                                                 {u"Jahrestag"_s, toolkit::SortBy::Date},
                                                                 {u"Erinnerung"_s},
                                                                 {u"VIP"_s},
                                                                 {u"Sound"_s}});
}

std::unique_ptr<ListRows> makeProviderRows()
{
    return std::make_unique<ListRows>(u"lvwNE"_s, QList<toolkit::ListColumn>{{u"Name"_s}, {u"Nummer"_s}});
}

ListRow toRow(const ClassicEntry& entry)
{
    ListRow row;
    row.cells = {{entry.name}, {entry.number, entry.languageTag},
                 {entry.date}, {entry.dateSound},
                 {entry.vip},  {entry.vipSound}};
    return row;
}

ListRow toRow(const ProviderEntry& entry)
{
    ListRow row;
    row.cells = {{entry.name}, {entry.number}};
    return row;
}

ClassicEntry classicEntryFrom(const ListRow& row)
{
    return {row.text(NameColumn),
            row.text(NumberColumn),
            row.text(DateColumn),
            row.text(DateSoundColumn),
            row.text(VipColumn),
            row.text(VipSoundColumn),
            row.cells.value(NumberColumn).tag};
}

ProviderEntry providerEntryFrom(const ListRow& row)
{
    return {row.text(NameColumn), row.text(NumberColumn)};
}

std::vector<ClassicEntry> classicEntries(const ListRows& list)
{
    std::vector<ClassicEntry> entries;
    for (int index = 0; index < list.count(); ++index)
        entries.push_back(classicEntryFrom(list.row(index)));
    return entries;
}

std::vector<ProviderEntry> providerEntries(const ListRows& list)
{
    std::vector<ProviderEntry> entries;
    for (int index = 0; index < list.count(); ++index)
        entries.push_back(providerEntryFrom(list.row(index)));
    return entries;
}

} // namespace kalmo::phonedata
