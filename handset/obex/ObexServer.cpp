#include "handset/obex/ObexServer.h"

#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr double requestSeconds = 0.02;
constexpr double sortSeconds = 0.99; // for a phonebook that has changed; clients wait a second
constexpr quint32 connection = 1;
constexpr quint8 version = 0x10;
constexpr qsizetype leastPacket = 255;
constexpr qsizetype packetForSmallClients = 480; // some clients read an answer at once, and no more

enum SetPathFlags : quint8 { UpOne = 0x01, DontCreate = 0x02 };

const QByteArray folderBrowsing = QByteArray::fromHex("6B01CB31410611D49A770050DA3F471F");
const QByteArray fileService =
    QByteArray::fromHex("F9EC7BC4953C11D2984E525400DC9E09"); // as general clients ask
const QByteArray irmc = "IRMC-SYNC";

} // namespace

ObexServer::Answer ObexServer::answer(quint8 code, const QByteArray& rest, double seconds)
{
    return {.frame = handset::frame(code, rest), .seconds = requestSeconds + seconds};
}

void ObexServer::reset()
{
    m_connected = false;
    m_store.setIrmc(false);
    m_folder.clear();
    m_out = {};
    m_in = {};
}

ObexServer::Answer ObexServer::handle(const ObexPacket& request)
{
    for (const QString& fault : request.faults)
        complain(fault);
    if (m_connected && request.size > m_phone.maxPacket())
        complain(u"a frame of %1 bytes, above MaxPacket %2"_s.arg(request.size).arg(m_phone.maxPacket()));
    Faults& faults = m_phone.faults;
    if (faults.isDueAtRequest(faults.refuseAt)) {
        m_in = {};
        m_out = {};
        return answer(static_cast<quint8>(faults.refuseCode));
    }
    dropTransfers(request);
    return dispatch(request);
}

/// A request of another kind ends an unfinished transfer.
void ObexServer::dropTransfers(const ObexPacket& request)
{
    const quint8 kind = request.opcode == obex::Abort ? obex::Abort : request.opcode & ~obex::FinalBit;
    if (kind != obex::Put && kind != obex::Abort)
        leaveIncoming();
    if (m_out.what.isEmpty() || kind == obex::Get || kind == obex::Abort)
        return;
    leftInTheMiddle(u"GET"_s, m_out.what);
    m_out = {};
}

/// Stores the part of an object that has come.
void ObexServer::leaveIncoming()
{
    if (m_in.what.isEmpty())
        return;
    leftInTheMiddle(u"PUT"_s, m_in.what);
    m_store.put(m_in.path, m_in.request);
    m_in = {};
}

void ObexServer::leftInTheMiddle(const QString& request, const QString& what)
{
    if (!m_phone.faults.confuse())
        complain(u"%1 of \"%2\" left in the middle"_s.arg(request, what));
}

ObexServer::Answer ObexServer::dispatch(const ObexPacket& request)
{
    if (request.opcode == obex::Connect)
        return connectTo(request);
    if (!m_connected)
        complain(u"a request without a connection"_s);
    switch (request.opcode) {
    case obex::Disconnect:
        return disconnect();
    case obex::SetPath:
        return setPath(request);
    case obex::Get:
    case obex::Get | obex::FinalBit:
        return get(request);
    case obex::Put:
    case obex::Put | obex::FinalBit:
        return put(request);
    case obex::Abort:
        return abort();
    default:
        return answer(obex::NotImplemented);
    }
}

ObexServer::Answer ObexServer::connectTo(const ObexPacket& request)
{
    const QByteArray target = request.value(obex::Target);
    const bool known = target == folderBrowsing || target == irmc;
    if (!known && !(m_phone.isTolerant() && (target.isEmpty() || target == fileService))) {
        complain(u"CONNECT to an unknown target"_s);
        return answer(obex::Forbidden);
    }
    reset();
    m_connected = true;
    m_store.setIrmc(target == irmc);
    if (request.fixed.size() == 4)
        m_largestAnswer =
            std::max<qsizetype>(qFromBigEndian<quint16>(request.fixed.constData() + 2), leastPacket);
    m_largestAnswer = std::min<qsizetype>(m_largestAnswer, m_phone.maxPacket());
    if (m_phone.isTolerant())
        m_largestAnswer = std::min(m_largestAnswer, packetForSmallClients);
    QByteArray rest = QByteArray(1, version) + '\0' + bigEndian(static_cast<quint16>(m_phone.maxPacket()));
    rest += header(obex::ConnectionId, connection);
    if (!target.isEmpty())
        rest += header(obex::Who, target);
    return answer(obex::Success, rest);
}

ObexServer::Answer ObexServer::answerChange(const QStringList& path, const ObjectReply& reply)
{
    const bool isContact = isTelecom(path) && path.value(1) == irmcKinds()[ContactStore].folder;
    if (reply.isGood() && isContact)
        m_sortedAt = m_time.now() + requestSeconds + reply.seconds + sortSeconds;
    return answer(reply);
}

ObexServer::Answer ObexServer::disconnect()
{
    if (m_sortedAt && m_time.now() < *m_sortedAt && !m_phone.faults.confuse())
        complain(u"DISCONNECT within a second of a changed contact"_s);
    m_sortedAt.reset();
    reset();
    Answer goodbye = answer(obex::Success);
    goodbye.disconnected = true;
    return goodbye;
}

ObexServer::Answer ObexServer::setPath(const ObexPacket& request)
{
    const quint8 flags = request.fixed.isEmpty() ? 0 : static_cast<quint8>(request.fixed.front());
    const auto name = request.name();
    if (name && !name->isEmpty())
        return enter(*name, (flags & DontCreate) == 0);
    if (name || (flags & UpOne) == 0) { // an empty name means the root
        m_folder.clear();
        return answer(obex::Success);
    }
    if (m_folder.isEmpty())
        return answer(obex::NotFound);
    m_folder.removeLast();
    return answer(obex::Success);
}

ObexServer::Answer ObexServer::enter(const QString& name, bool create)
{
    const QStringList path = m_folder + QStringList{name};
    if (!m_store.isFolder(path)) {
        const ObjectReply made = create ? m_store.makeFolder(path) : ObjectReply{.code = obex::NotFound};
        if (!made.isGood())
            return answer(made.code);
    }
    m_folder = path;
    return answer(obex::Success);
}

ObexServer::Answer ObexServer::abort()
{
    m_in = {};
    m_out = {};
    return answer(obex::Success);
}

bool ObexServer::mayBePath(const QString& name) const
{
    return m_store.isIrmc() || m_phone.isTolerant() ||
           (m_phone.family.data.absoluteNames && name.startsWith(u'/'));
}

/// An object of the current folder whose name looks like a path, by its name alone or after that of the
/// folder.
std::optional<QStringList> ObexServer::asItStands(const QString& name)
{
    const QString folder = u'/' + m_folder.join(u'\\') + u'/';
    for (const QString& prefix : {QString(), folder}) {
        if (!name.startsWith(prefix))
            continue;
        const QStringList path = m_folder + QStringList{name.sliced(prefix.size())};
        if (m_store.has(path))
            return path;
    }
    return std::nullopt;
}

std::optional<QStringList> ObexServer::locate(const QString& name, bool changes)
{
    static const QRegularExpression separator(u"[/\\\\]"_s);
    if (name.contains(u'/')) {
        if (const auto path = asItStands(name))
            return path;
        if (!mayBePath(name))
            return std::nullopt;
        // Clients put "/" only before and after the folder.
        const bool mixed = m_phone.family.data.absoluteNames && name.startsWith(u'/');
        const QStringList parts =
            mixed ? name.split(separator, Qt::SkipEmptyParts) : name.split(u'/', Qt::SkipEmptyParts);
        const bool fromRoot = name.startsWith(u'/') || isTelecom(parts);
        return fromRoot ? parts : m_folder + parts;
    }
    const bool bareIsWrong =
        changes && m_phone.family.data.absoluteNames && !m_store.isIrmc() && !isTelecom(m_folder);
    if (bareIsWrong && !m_phone.isTolerant()) {
        complain(u"\"%1\" without its path"_s.arg(name));
        return std::nullopt;
    }
    return m_folder + QStringList{name};
}

} // namespace kalmo::handset
