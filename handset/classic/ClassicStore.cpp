#include "handset/classic/ClassicStore.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

QString ClassicStore::section() const
{
    return kind == StoreKind::Phonebook ? u"phonebook"_s : u"providers"_s;
}

QJsonArray ClassicStore::json() const
{
    QJsonArray out;
    for (const ClassicEntry& entry : entries)
        out.append(toJson(entry));
    return out;
}

void ClassicStore::load(const QJsonArray& json)
{
    entries.clear();
    for (const auto& value : json)
        entries.push_back(classicEntryFrom(value.toObject()));
}

} // namespace kalmo::handset
