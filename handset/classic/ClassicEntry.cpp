#include "handset/classic/ClassicEntry.h"

#include <QRegularExpression>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

QString readable(const QString& day)
{
    return u"%1.%2. %3:%4"_s.arg(day.mid(2, 2), day.mid(0, 2), day.mid(4, 2), day.mid(6, 2));
}

QString dayFrom(const QString& text)
{
    static const QRegularExpression form(u"^(\\d\\d)\\.(\\d\\d)\\. (\\d\\d):(\\d\\d)$"_s);
    const auto match = form.match(text);
    return match.captured(2) + match.captured(1) + match.captured(3) + match.captured(4);
}

} // namespace

QJsonObject toJson(const ClassicEntry& entry)
{
    QJsonObject json{{u"name"_s, entry.name}, {u"number"_s, entry.number}};
    if (!entry.day.isEmpty()) {
        json[u"anniversary"_s] = readable(entry.day);
        json[u"reminder"_s] = entry.reminder;
    }
    if (entry.vip)
        json[u"vipSound"_s] = entry.vipSound;
    return json;
}

ClassicEntry classicEntryFrom(const QJsonObject& json)
{
    return {.name = json[u"name"_s].toString(),
            .number = json[u"number"_s].toString(),
            .day = dayFrom(json[u"anniversary"_s].toString()),
            .reminder = json[u"reminder"_s].toString(),
            .vip = json.contains(u"vipSound"_s),
            .vipSound = json[u"vipSound"_s].toString()};
}

} // namespace kalmo::handset
