#include "cli/StoreWords.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using phonedata::Store;

const StoreWords& wordsOf(Store store)
{
    static constexpr std::array<StoreWords, 2> words = {
        {{u"phonebook", u"phonebook"}, {u"list of providers", u"providers"}}};
    return phonedata::rowOf(words, store);
}

QStringList entryHeadings(Store store)
{
    QStringList headings{u"Name"_s, u"Number"_s};
    if (phonedata::traitsOf(store).hasDates)
        headings += {u"Date"_s, u"Reminder"_s, u"VIP"_s, u"Sound"_s};
    return headings;
}

QStringList entryCells(const phonedata::ClassicEntry& entry, Store store)
{
    QStringList cells{entry.name, entry.number};
    if (phonedata::traitsOf(store).hasDates)
        cells += {entry.date, entry.dateSound, entry.vip.isEmpty() ? QString() : u"yes"_s, entry.vipSound};
    return cells;
}

QString entryCount(size_t count)
{
    return count == 1 ? u"1 entry"_s : u"%1 entries"_s.arg(count);
}

} // namespace kalmo::cli
