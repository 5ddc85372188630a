#pragma once

#include <QJsonObject>
#include <QString>

namespace kalmo::handset {

/// One entry of the phonebook or the provider list. A provider has a name and a number only.
struct ClassicEntry
{
    QString name = {};
    QString number = {};
    QString day = {};      ///< the anniversary as month, day, hour and minute, "12240830"; empty for none
    QString reminder = {}; ///< sound of the anniversary: "S" for the display alone, else a number
    bool vip = false;
    QString vipSound = {};

    bool operator==(const ClassicEntry&) const = default;
};

/// The form of a memory or seed file: "name", "number", and if there is one "anniversary" ("24.12. 08:30")
/// with "reminder", and "vipSound" of a VIP.
QJsonObject toJson(const ClassicEntry& entry);
ClassicEntry classicEntryFrom(const QJsonObject& json);

} // namespace kalmo::handset
