#include "handset/irmc/IrmcStore.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

QByteArray organizerText(const IrmcItem& item, const QByteArray& end)
{
    QByteArray out;
    bool told = false;
    for (const auto& line : item.fields[u"lines"_s].toArray()) {
        const QByteArray text = app::toCp1252(line.toString());
        if (text.startsWith(end) && !std::exchange(told, true))
            out += "X-IRMC-LUID:" + item.luid.toLatin1() + "\r\n";
        out += text + "\r\n";
    }
    return out;
}

std::optional<QJsonObject> parseOrganizer(const QByteArray& text, const QByteArray& begin)
{
    if (!text.startsWith(begin))
        return std::nullopt;
    QJsonArray lines;
    for (QByteArray line : text.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (!line.startsWith("X-IRMC-LUID:"))
            lines.append(app::fromCp1252(line));
    }
    while (!lines.isEmpty() && lines.last().toString().isEmpty())
        lines.removeLast();
    return QJsonObject{{u"lines"_s, lines}};
}

QJsonObject itemJson(const IrmcItem& item)
{
    QJsonObject json = item.fields;
    json[u"luid"_s] = item.luid;
    json[u"changed"_s] = item.changed;
    return json;
}

IrmcItem itemFrom(QJsonObject json)
{
    const QString luid = json.take(u"luid"_s).toString();
    const int changed = json.take(u"changed"_s).toInt();
    return {luid, changed, json};
}

} // namespace

const std::array<IrmcKind, irmcStores>& irmcKinds()
{
    static const std::array<IrmcKind, irmcStores> kinds = {{
        {u"contacts"_s, u"pb"_s, u"pb.vcf"_s, u".vcf"_s, "BEGIN:VCARD", {}},
        {u"calendar"_s, u"cal"_s, u"cal.vcs"_s, u".vcs"_s, "BEGIN:VCALENDAR", "END:V"},
        {u"notes"_s, u"nt"_s, u"nt.vnt"_s, u".vnt"_s, "BEGIN:VNOTE", "END:V"},
    }};
    return kinds;
}

const IrmcItem* IrmcStore::find(const QString& luid) const
{
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [&](const IrmcItem& item) { return item.luid == luid; });
    return found == m_items.end() ? nullptr : &*found;
}

QString IrmcStore::add(const QJsonObject& fields)
{
    if (std::ssize(m_items) >= m_capacity)
        return {};
    const QString luid = freshLuid();
    m_items.push_back({luid, ++m_counter, fields});
    return luid;
}

QString IrmcStore::freshLuid()
{
    return u"%1"_s.arg(m_nextLuid++, 4, 10, QChar(u'0'));
}

void IrmcStore::giveLuids(const QStringList& luids)
{
    const auto count = std::min(luids.size(), static_cast<qsizetype>(m_items.size()));
    for (qsizetype index = 0; index < count; ++index)
        m_items[static_cast<std::size_t>(index)].luid = luids[index];
}

void IrmcStore::change(const QString& luid, const QJsonObject& fields)
{
    for (IrmcItem& item : m_items) {
        if (item.luid == luid)
            item = {luid, ++m_counter, fields};
    }
}

void IrmcStore::remove(const QString& luid)
{
    if (std::erase_if(m_items, [&](const IrmcItem& item) { return item.luid == luid; }) > 0)
        ++m_counter;
}

QByteArray IrmcStore::text(const IrmcItem& item, CardText form) const
{
    return m_index == ContactStore ? cardText(item.fields, item.luid, form) : organizerText(item, kind().end);
}

QByteArray IrmcStore::wholeText(CardText form, const QString& ownLuid) const
{
    QByteArray out = m_index == ContactStore ? cardText({}, ownLuid, form) : QByteArray();
    for (const IrmcItem& item : m_items)
        out += text(item, form);
    return out;
}

std::optional<QJsonObject> IrmcStore::parse(const QByteArray& text) const
{
    return m_index == ContactStore ? parseCard(text) : parseOrganizer(text, kind().begin);
}

QByteArray IrmcStore::infoLog(qsizetype surplus) const
{
    const QByteArray total = QByteArray::number(m_items.size() + surplus);
    return "Total-Records:" + total + "\r\nLast-Used-Index:" + total +
           "\r\nMaximum-Records:" + QByteArray::number(m_capacity) + "\r\nIEL:8\r\nHD:NO\r\nSAT:CC\r\n";
}

QJsonObject IrmcStore::json() const
{
    QJsonArray items;
    for (const IrmcItem& item : m_items)
        items.append(itemJson(item));
    return {{u"changeCounter"_s, m_counter}, {u"nextLuid"_s, m_nextLuid}, {u"items"_s, items}};
}

void IrmcStore::load(const QJsonValue& json)
{
    const QJsonArray items = json.isArray() ? json.toArray() : json[u"items"_s].toArray();
    const auto count = static_cast<int>(items.size());
    m_counter = json[u"changeCounter"_s].toInt(count);
    m_nextLuid = json[u"nextLuid"_s].toInt(1);
    m_items.clear();
    for (const auto& item : items) {
        m_items.push_back(itemFrom(item.toObject()));
        m_nextLuid = std::max(m_nextLuid, m_items.back().luid.toInt() + 1);
    }
    for (IrmcItem& item : m_items) {
        if (item.luid.isEmpty())
            item.luid = freshLuid();
    }
}

} // namespace kalmo::handset
