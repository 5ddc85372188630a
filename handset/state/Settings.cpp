#include "handset/state/Settings.h"

#include <QJsonArray>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, ringtoneEvents> eventNames = {u"external", u"internal", u"appointment",
                                                                u"alarm"};

QJsonObject ringtonesJson(const Settings& settings)
{
    QJsonObject out;
    for (size_t event = 0; event < eventNames.size(); ++event) {
        const Ringtone& ringtone = settings.ringtones[event];
        out[eventNames[event].toString()] =
            QJsonObject{{u"sound"_s, ringtone.sound}, {u"volume"_s, ringtone.volume}};
    }
    return out;
}

QJsonArray melodiesJson(const Settings& settings)
{
    QJsonArray out;
    for (const Melody& melody : settings.melodies) {
        out.append(QJsonObject{{u"name"_s, melody.name},
                               {u"kind"_s, melody.kind},
                               {u"size"_s, melody.size},
                               {u"id"_s, melody.id}});
    }
    return out;
}

} // namespace

QJsonObject Settings::json() const
{
    return {{u"serialNumber"_s, serialNumber},
            {u"signal"_s, signal},
            {u"battery"_s, battery},
            {u"clockAhead"_s, clockAhead},
            {u"areaCodes"_s, QJsonArray::fromStringList(areaCodes)},
            {u"ringtones"_s, ringtonesJson(*this)},
            {u"melodies"_s, melodiesJson(*this)}};
}

void Settings::load(const QJsonObject& json)
{
    serialNumber = json[u"serialNumber"_s].toString(serialNumber);
    signal = json[u"signal"_s].toInt(signal);
    battery = json[u"battery"_s].toInt(battery);
    clockAhead = json[u"clockAhead"_s].toInteger(clockAhead);
    const QJsonArray codes = json[u"areaCodes"_s].toArray();
    for (qsizetype field = 0; field < areaCodes.size(); ++field)
        areaCodes[field] = codes[field].toString(areaCodes[field]);
    for (size_t event = 0; event < eventNames.size(); ++event) {
        const QJsonObject ringtone = json[u"ringtones"_s][eventNames[event].toString()].toObject();
        ringtones[event] = {ringtone[u"sound"_s].toInt(1), ringtone[u"volume"_s].toInt(3)};
    }
    melodies.clear();
    for (const auto& value : json[u"melodies"_s].toArray()) {
        melodies.push_back({value[u"name"_s].toString(), value[u"kind"_s].toString(),
                            value[u"size"_s].toInt(), value[u"id"_s].toInt()});
    }
}

} // namespace kalmo::handset
