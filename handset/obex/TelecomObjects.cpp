// The objects below the folder "telecom".

#include "handset/obex/Objects.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr double itemSeconds = 0.4;
constexpr double prepareSeconds = 0.2;
const QString itemFolder = u"luid"_s;
const QString ownLuid = u"0000"_s; // of the handset's own card, where it has one
const QString informationFile = u"devinfo.txt"_s;

ListingRow folderRow(const QString& name)
{
    return {.isFolder = true, .name = name};
}

ListingRow fileRow(const QString& name, const QByteArray& content)
{
    return {.name = name, .size = content.size()};
}

} // namespace

bool TelecomObjects::isFolder(const QStringList& path) const
{
    if (path.isEmpty())
        return true;
    const auto& kinds = irmcKinds();
    const bool known =
        std::any_of(kinds.begin(), kinds.end(), [&](const IrmcKind& kind) { return kind.folder == path[0]; });
    return known && (path.size() == 1 || (path.size() == 2 && path[1] == itemFolder));
}

std::vector<ListingRow> TelecomObjects::list(const QStringList& path) const
{
    std::vector<ListingRow> rows;
    if (path.isEmpty())
        rows.push_back(fileRow(informationFile, deviceInformation()));
    for (const IrmcStore& store : m_phone.irmc) {
        const IrmcKind& kind = store.kind();
        if (path.isEmpty()) {
            rows.push_back(folderRow(kind.folder));
            rows.push_back(fileRow(kind.whole, wholeText(store)));
        } else if (path == QStringList{kind.folder}) {
            rows.push_back(folderRow(itemFolder));
            rows.push_back(fileRow(u"info.log"_s, store.infoLog()));
        } else if (path == QStringList{kind.folder, itemFolder}) {
            rows.push_back(fileRow(u"cc.log"_s, counterText(store)));
            for (const IrmcItem& item : store.items())
                rows.push_back(fileRow(item.luid + kind.extension, store.text(item, m_phone.cardText())));
        }
    }
    return rows;
}

TelecomObjects::ItemPath TelecomObjects::itemAt(const QStringList& path) const
{
    if (path.size() != 3 || path[1] != itemFolder)
        return {};
    for (IrmcStore& store : m_phone.irmc) {
        if (path[0] == store.kind().folder && path[2].endsWith(store.kind().extension))
            return {&store, path[2].chopped(store.kind().extension.size())};
    }
    return {};
}

bool TelecomObjects::hasItem(const QStringList& path) const
{
    const ItemPath found = itemAt(path);
    return found.store && found.store->find(found.luid);
}

QByteArray TelecomObjects::wholeText(const IrmcStore& store) const
{
    return store.wholeText(m_phone.cardText(), m_phone.options.ownCardLuid ? ownLuid : QString());
}

ObjectReply TelecomObjects::whole(const IrmcStore& store)
{
    if (m_phone.faults.busy > 0) {
        --m_phone.faults.busy;
        return {.code = obex::InternalError};
    }
    return {.content = wholeText(store), .seconds = prepareSeconds};
}

ObjectReply TelecomObjects::get(const QStringList& path)
{
    if (path == QStringList{informationFile})
        return {.content = deviceInformation()};
    for (const IrmcStore& store : m_phone.irmc) {
        const QString& folder = store.kind().folder;
        if (path == QStringList{store.kind().whole})
            return whole(store);
        if (path == QStringList{folder, u"info.log"_s})
            return {.content = store.infoLog(m_phone.faults.takeMiscount() ? 1 : 0)};
        if (path == QStringList{folder, itemFolder, u"cc.log"_s})
            return {.content = counterText(store)};
    }
    const ItemPath found = itemAt(path);
    const IrmcItem* item = found.store ? found.store->find(found.luid) : nullptr;
    return item ? ObjectReply{.content = found.store->text(*item, m_phone.cardText())}
                : ObjectReply{.code = obex::NotFound};
}

/// Reason why a store can't be changed now: another client has changed it since this one read its counter.
std::optional<quint8> TelecomObjects::refusal(const IrmcStore& store, const ChangeRequest& request) const
{
    if (!request.answersLuid)
        m_phone.violations.record(u"an item is changed without a connection to IrMC"_s);
    if (!request.expectedCounter) {
        if (request.answersLuid)
            m_phone.violations.record(u"a change without the change counter"_s);
        return std::nullopt;
    }
    if (*request.expectedCounter != QByteArray::number(store.counter()))
        return obex::Conflict;
    return std::nullopt;
}

ObjectReply TelecomObjects::changed(const IrmcStore& store, const QString& luid, bool tells)
{
    m_phone.keep(store);
    ObjectReply reply{.seconds = itemSeconds};
    if (!tells || m_phone.faults.noLuid)
        return reply;
    reply.headers = header(obex::Parameters, parameter(TagLuid, luid.toLatin1()) +
                                                 parameter(TagCounter, QByteArray::number(store.counter())));
    if (m_phone.faults.wrongLuidLength)
        reply.headers[2] = static_cast<char>(reply.headers[2] + 2);
    return reply;
}

ObjectReply TelecomObjects::put(const QStringList& path, const ChangeRequest& request)
{
    const ItemPath found = itemAt(path);
    if (!found.store)
        return {.code = obex::Forbidden};
    IrmcStore& store = *found.store;
    if (const auto code = refusal(store, request))
        return {.code = *code};
    const auto fields = store.parse(request.content);
    if (!fields)
        return {.code = obex::BadRequest};
    if (&store == &m_phone.irmc[ContactStore] && !fits(*fields))
        return {.code = obex::TooLarge};
    QString luid = found.luid;
    if (luid.isEmpty())
        luid = m_phone.faults.full ? QString() : store.add(*fields);
    else if (store.find(luid))
        store.change(luid, *fields);
    else
        return {.code = obex::NotFound};
    if (luid.isEmpty())
        return {.code = obex::DatabaseFull};
    return changed(store, luid, request.answersLuid);
}

ObjectReply TelecomObjects::remove(const QStringList& path, const ChangeRequest& request)
{
    const ItemPath found = itemAt(path);
    if (!found.store)
        return {.code = obex::Forbidden};
    if (const auto code = refusal(*found.store, request))
        return {.code = *code};
    if (!found.store->find(found.luid))
        return {.code = obex::NotFound};
    found.store->remove(found.luid);
    return changed(*found.store, found.luid, request.answersLuid && m_phone.family.data.tellsDeletes);
}

QByteArray TelecomObjects::counterText(const IrmcStore& store) const
{
    return QByteArray::number(store.counter()) + (m_phone.options.counterLine ? "\r\n" : "");
}

QByteArray TelecomObjects::deviceInformation() const
{
    const auto line = [](const QByteArray& key, const QByteArray& value) {
        return key + ':' + value + "\r\n";
    };
    return line("MANU", m_phone.family.manufacturer) + line("MOD", app::toCp1252(m_phone.model.name())) +
           line("SN", app::toCp1252(m_phone.settings.serialNumber)) +
           line("SW-VERSION", m_phone.family.version) + line("SW-DATE", "20260917") +
           line("PB-TYPE-TX", "VCARD2.1") + line("PB-TYPE-RX", "VCARD2.1") + line("CAL-TYPE-TX", "VCAL1.0") +
           line("CAL-TYPE-RX", "VCAL1.0") + line("NOTE-TYPE-TX", "VNOTE1.1") +
           line("NOTE-TYPE-RX", "VNOTE1.1") + line("INBOX", "NO") + line("MSG-SENT-BOX", "NO");
}

} // namespace kalmo::handset
