#include "link/PortTable.h"

#include <QFileInfo>

namespace kalmo::link {

using namespace Qt::StringLiterals;

namespace {

const QString section = u"Ports"_s;
constexpr int mostNumbers = 256;

/// The number in "COM<n>", 0 for any other name.
int numberIn(const QString& name)
{
    return name.startsWith(u"COM"_s, Qt::CaseInsensitive) ? name.sliced(3).toInt() : 0;
}

bool sameDevice(const QString& left, const QString& right)
{
    if (left == right)
        return true;
    const QString target = QFileInfo(left).canonicalFilePath();
    return !target.isEmpty() && target == QFileInfo(right).canonicalFilePath();
}

/// Number of a device in a table, 0 if it has none.
int numberIn(const QMap<int, QString>& known, const QString& path)
{
    for (auto entry = known.cbegin(); entry != known.cend(); ++entry) {
        if (sameDevice(entry.value(), path))
            return entry.key();
    }
    return 0;
}

} // namespace

PortTable::PortTable(app::Settings& settings, DeviceList& devices) : m_settings(settings), m_devices(devices)
{
}

QMap<int, QString> PortTable::remembered() const
{
    QMap<int, QString> paths = m_unsaved;
    for (const QString& key : m_settings.keys(section)) {
        const QString path = m_settings.GetIniText(section, key);
        if (numberIn(key) > 0 && path != app::noValue() && !path.isEmpty())
            paths.insert(numberIn(key), path);
    }
    return paths;
}

int PortTable::numberOf(const QString& path)
{
    if (const int own = numberIn(path); own > 0)
        return own;
    const auto known = remembered();
    int number = numberIn(known, path);
    if (number > 0 && !m_unsaved.contains(number))
        return number;
    if (number == 0)
        number = lowestFree(known);
    if (number > 0)
        remember(number, path);
    return number;
}

void PortTable::remember(int number, const QString& path)
{
    const QString key = u"COM"_s + QString::number(number);
    m_settings.PutIniText(section, key, path);
    if (m_settings.GetIniText(section, key) == path)
        m_unsaved.remove(number);
    else
        m_unsaved.insert(number, path);
}

int PortTable::lowestFree(const QMap<int, QString>& known) const
{
    for (int number = 1; number < mostNumbers; ++number) {
        if (!known.contains(number) && !m_forThisRun.contains(number))
            return number;
    }
    return 0;
}

void PortTable::refresh()
{
    m_present.clear();
    const auto known = remembered();
    for (const SerialDevice& device : m_devices.devices()) {
        int number = numberIn(device.path);
        if (number == 0)
            number = known.key(device.lastingPath());
        if (number == 0 || m_unsaved.contains(number))
            number = numberOf(device.lastingPath());
        if (number > 0)
            m_present.insert(number, device);
    }
}

QList<int> PortTable::numbers()
{
    refresh();
    return m_present.keys();
}

SerialDevice PortTable::present(int number)
{
    return m_present.value(number);
}

QString PortTable::devicePath(int number)
{
    if (m_forThisRun.contains(number))
        return m_forThisRun.value(number);
    refresh();
    if (m_present.contains(number))
        return m_present.value(number).path;
    return remembered().value(number);
}

void PortTable::useDevice(int number, const QString& path)
{
    m_forThisRun.insert(number, path);
}

int PortTable::numberForThisRun(const QString& path)
{
    if (const int own = numberIn(path); own > 0)
        return own;
    refresh(); // a device of this machine has a number, or gets one that lasts
    const auto known = remembered();
    int number = numberIn(known, path);
    if (number == 0)
        number = lowestFree(known);
    if (number > 0)
        useDevice(number, path);
    return number;
}

} // namespace kalmo::link
