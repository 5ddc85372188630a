#include "link/mdlComInfos.h"

#include "app/mdlKonverter.h"

#include <QRegularExpression>

#include <algorithm>

namespace kalmo::link {

using namespace Qt::StringLiterals;

namespace {

struct Replacement
{
    QStringView found;
    QStringView by;
    bool forModems;
};

constexpr std::array<Replacement, 4> replacements = {{
    {u"Siemens Mobile Phone USB Modem", u"Siemens USB Kabel DCA-140, DCA-540, DSC-600", true},
    {u"Kommunikationsanschluss", u"Standard COM Port", false},
    {u"Siemens USB Data Cable", u"Siemens USB Kabel DCA-510", false},
    {u"Gigaset handset virtual COM port", u"Gigaset virtueller COM Port", false},
}};

QString withReplacements(QString name, bool modem)
{
    for (const Replacement& row : replacements) {
        const qsizetype place = row.forModems == modem ? name.indexOf(row.found, 0, Qt::CaseInsensitive) : -1;
        if (place >= 0)
            name.replace(place, row.found.size(), row.by.toString());
    }
    return name;
}

/// Number and name of a port from its friendly name; number 0 if the name carries none of one or two digits.
int splitFriendlyName(const QString& friendly, QString& name)
{
    static const QRegularExpression pattern(u"\\(COM\\d{1,2}\\)"_s);
    const qsizetype from = friendly.lastIndexOf(u"(COM"_s);
    if (!friendly.contains(pattern) || from < 0)
        return 0;
    const qsizetype to = friendly.indexOf(u')', from);
    if (to < 0)
        return 0;
    bool numeric = false;
    const int number = QStringView(friendly).sliced(from + 4, to - from - 4).toInt(&numeric);
    name = (friendly.first(from) + friendly.sliced(to + 1)).trimmed();
    return numeric ? number : 0;
}

int modemPort(const QString& attachedTo)
{
    static const QRegularExpression pattern(u"^COM(\\d{1,2})$"_s);
    return pattern.match(attachedTo).captured(1).toInt();
}

} // namespace

void ComDescriptions::fill(int number, const DeviceEntry& device, const QString& description)
{
    if (number < 0 || number >= static_cast<int>(m_slots.size()) || m_slots[number].filled)
        return;
    m_slots[number] = {true, description, device.maker, device.hardwareId};
}

void ComDescriptions::RefreshComDesc(const QList<DeviceEntry>& devices)
{
    m_slots.fill({});
    for (const DeviceEntry& device : devices) {
        const QString className = device.className.toUpper();
        if (className == u"PORTS"_s || className == u"USB"_s) {
            QString name;
            if (const int number = splitFriendlyName(device.friendlyName, name); number > 0)
                fill(number, device, withReplacements(name, false));
        } else if (className == u"MODEM"_s) {
            if (const int number = modemPort(device.attachedTo); number > 0)
                fill(number, device, withReplacements(device.friendlyName, true));
        }
    }
}

QString ComDescriptions::GetComDescription(int number, QString& maker, QString& hardwareId) const
{
    if (number < 0 || number >= static_cast<int>(m_slots.size()))
        return {};
    maker = m_slots[number].maker;
    hardwareId = m_slots[number].hardwareId;
    return m_slots[number].description;
}

QString ComDescriptions::GetComDescription(int number) const
{
    QString maker;
    QString hardwareId;
    return GetComDescription(number, maker, hardwareId);
}

QList<DeviceEntry> deviceEntries(PortTable& ports)
{
    QList<DeviceEntry> entries;
    for (const int number : ports.numbers()) {
        const SerialDevice device = ports.present(number);
        const QString name = device.description.isEmpty() ? device.path : device.description;
        const QString port = u"COM%1"_s.arg(number);
        if (device.isModem)
            entries.append({u"MODEM"_s, name, device.maker, device.hardwareId, port});
        else
            entries.append({u"PORTS"_s, name + u" (%1)"_s.arg(port), device.maker, device.hardwareId, {}});
    }
    return entries;
}

void AddPortSorted(QList<int>& numbers, int number)
{
    const auto place = std::lower_bound(numbers.begin(), numbers.end(), number);
    if (place == numbers.end() || *place != number)
        numbers.insert(place, number);
}

void clsComEnum::Refresh()
{
    m_names.clear();
    for (const int number : m_ports.numbers())
        m_names.append(u"COM"_s + QString::number(number));
}

bool TestPortObject(SPortAx& port)
{
    const int count = port.CountPorts();
    for (int index = 0; index < count; ++index) {
        if (port.PortName(index).isEmpty())
            return false;
    }
    return count >= 0;
}

QString portItemText(int number, const QString& name)
{
    const QString port = u"COM "_s + QString::number(number);
    if (name.isEmpty())
        return port;
    return port + (number < 10 ? u"    ("_s : u"  ("_s) + name + u')';
}

int portItemNumber(const QString& text)
{
    return app::ValInt(QStringView(text).mid(4));
}

namespace {

/// Logs the steps of the port list, in the form of the occasion.
class Steps
{
public:
    Steps(app::Context& context, PortListFor purpose)
        : m_context(context), m_start(purpose == PortListFor::Start)
    {
    }
    void atStart(const QString& text) const
    {
        if (!m_start)
            return;
        const QString time = QString::number(m_context.clock.Timer(), 'f', 2).rightJustified(10, u'0');
        m_context.sy.StrStCom += u'@' + time + text + u'\n';
    }
    void atRebuild(const QString& text) const
    {
        if (!m_start)
            m_context.log.WriteDebugLog(u"RebuildCmbCom"_s, text);
    }

private:
    app::Context& m_context;
    bool m_start;
};

template <typename Source>
QList<int> collectNumbers(Source& source, const QString& sourceName, const Steps& steps)
{
    QList<int> numbers;
    const int count = source.CountPorts();
    steps.atStart(u" Enter: GetComDescr %1:CountPorts=%2"_s.arg(sourceName).arg(count));
    steps.atRebuild(sourceName == u"eComm"_s ? u"eComm.CountPorts=%1"_s.arg(count)
                                             : u"Sport Failure - cComEnum.CountPorts=%1"_s.arg(count));
    for (int index = 0; index < count; ++index) {
        const QString name = source.PortName(index);
        steps.atStart(u" sPort(%1)=%2"_s.arg(index).arg(name));
        steps.atRebuild(u"sPortName="_s + name);
        if (!name.startsWith(u"COM"_s))
            continue;
        const int number = app::ValInt(QStringView(name).sliced(3));
        AddPortSorted(numbers, number);
        steps.atRebuild(u"Added:%1"_s.arg(number));
    }
    steps.atStart(u" Done: GetComDescr %1:CountPorts=%2"_s.arg(sourceName).arg(count));
    return numbers;
}

} // namespace

QStringList listPorts(app::Context& context, SPortAx& port, PortTable& table, ComDescriptions& descriptions,
                      PortListFor purpose)
{
    const Steps steps(context, purpose);
    steps.atRebuild(u"Enter"_s);
    QList<int> numbers;
    if (TestPortObject(port)) {
        numbers = collectNumbers(port, u"eComm"_s, steps);
    } else {
        clsComEnum known(table);
        known.Refresh();
        numbers = collectNumbers(known, u"cComEnum"_s, steps);
    }
    steps.atStart(u" Call: RefreshComDesc"_s);
    descriptions.RefreshComDesc(deviceEntries(table));
    steps.atStart(u" Done: RefreshComDesc"_s);

    steps.atStart(u" Enter: GetComDescr/Names"_s);
    steps.atRebuild(u"Loop"_s);
    QStringList items;
    for (const int number : numbers) {
        QString maker;
        QString hardwareId;
        const QString name = descriptions.GetComDescription(number, maker, hardwareId);
        steps.atStart(
            u" COM(%1)=>%2< MFG=%3 HwID=%4"_s.arg(QString::number(number), name, maker, hardwareId));
        steps.atRebuild(
            u"AdCmb COM %1 Desc=%2 MFG=%3 HwID=%4"_s.arg(QString::number(number), name, maker, hardwareId));
        items.append(portItemText(number, name));
    }
    steps.atStart(u" Done: GetComDescr/Names"_s);
    steps.atRebuild(u"All done"_s);
    return items;
}

} // namespace kalmo::link
