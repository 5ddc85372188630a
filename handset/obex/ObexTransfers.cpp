// PUT and GET of the OBEX server.

#include "handset/obex/ObexServer.h"

#include <QRegularExpression>

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype bodyHead = 6; // of a frame and of the header of the body
constexpr qsizetype lengthHeader = 5;
constexpr qsizetype longestRaw = 10000; // bytes that the line takes at once

QByteArray capabilityText(const Phone& phone)
{
    return QByteArray(
               "<?xml version=\"1.0\"?>\r\n<Capability Version=\"1.0\">\r\n<General>\r\n<Manufacturer>") +
           phone.family.manufacturer + "</Manufacturer>\r\n<Model>" +
           phone.model.name().toHtmlEscaped().toUtf8() + "</Model>\r\n</General>\r\n</Capability>\r\n";
}

const ObexParameter* find(const std::vector<ObexParameter>& parameters, quint8 tag)
{
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [tag](const ObexParameter& parameter) { return parameter.tag == tag; });
    return found == parameters.end() ? nullptr : &*found;
}

/// Time of the header of that name, local: "20260917T101500", or with one digit for days below 10. Invalid if
/// it is in neither form.
QDateTime headerTime(const QByteArray& text)
{
    static const QRegularExpression form(u"^(\\d{4})(\\d\\d)(\\d|\\d\\d)T(\\d\\d)(\\d\\d)(\\d\\d)Z?$"_s);
    const auto match = form.match(QString::fromLatin1(text));
    const auto number = [&](int group) { return match.captured(group).toInt(); };
    const bool shortDay = match.captured(3).size() == 1;
    if (!match.hasMatch() || (shortDay && number(3) == 0))
        return {};
    return QDateTime(QDate(number(1), number(2), number(3)), QTime(number(4), number(5), number(6)));
}

/// The first frame of an object has its headers in one order.
bool isInOrder(const ObexPacket& request)
{
    constexpr quint8 order[] = {obex::Name,       obex::Length, obex::Time,
                                obex::Parameters, obex::Body,   obex::EndOfBody};
    const auto place = [&](const ObexHeader& header) {
        return std::find(std::begin(order), std::end(order), header.id) - std::begin(order);
    };
    return std::is_sorted(
        request.headers.begin(), request.headers.end(),
        [&](const ObexHeader& one, const ObexHeader& other) { return place(one) < place(other); });
}

} // namespace

std::vector<ObexParameter> ObexServer::parametersOf(const ObexPacket& request)
{
    QStringList faults;
    auto parameters = parseParameters(request.value(obex::Parameters), faults);
    for (const QString& fault : faults)
        complain(fault);
    return parameters;
}

ObexServer::Answer ObexServer::get(const ObexPacket& request)
{
    const auto name = request.name();
    const bool startsAnew = name || request.has(obex::Type) || request.has(obex::Parameters);
    if (!startsAnew && !m_out.what.isEmpty())
        return nextPart();
    if (!startsAnew && request.faults.isEmpty() && !m_phone.faults.confuse())
        complain(u"the next part of nothing was asked for"_s);
    if (!m_out.what.isEmpty())
        leftInTheMiddle(u"GET"_s, m_out.what);
    m_out = {};
    QByteArray type = request.value(obex::Type);
    while (type.endsWith('\0'))
        type.chop(1);
    if (type == "x-obex/folder-listing")
        return startSending(
            u"folder-listing"_s,
            m_store.list(name.value_or(QString()).isEmpty() ? m_folder : m_folder + QStringList{*name}));
    if (type == "x-obex/capability")
        return startSending(u"capability"_s, {.content = capabilityText(m_phone)});
    const auto parameters = parametersOf(request);
    if (const ObexParameter* memory = find(parameters, TagMemory))
        return answer(m_store.memory(memory->value));
    const auto path = name && !name->isEmpty() ? locate(*name, false) : std::nullopt;
    if (path && m_store.isIrmc() && path->last() == irmcKinds()[ContactStore].whole)
        complain(u"the whole phonebook is asked for over IrMC"_s);
    return path ? startSending(*name, m_store.get(*path)) : answer(obex::BadRequest);
}

ObexServer::Answer ObexServer::startSending(const QString& what, const ObjectReply& reply)
{
    if (!reply.isGood())
        return answer(reply.code);
    m_out = {what, reply.content};
    Answer first = nextPart();
    first.seconds += reply.seconds;
    return first;
}

ObexServer::Answer ObexServer::nextPart()
{
    const qsizetype left = m_out.body.size() - m_out.sent;
    qsizetype room = m_largestAnswer - bodyHead;
    const SizeForm form = m_phone.options.size;
    const bool saysSize =
        m_out.sent == 0 && (form == SizeForm::Always || (form == SizeForm::InParts && left > room));
    if (saysSize)
        room -= lengthHeader;
    const qsizetype count = std::min(left, room);
    const bool last = count == left;
    const QByteArray size =
        saysSize ? header(obex::Length, static_cast<quint32>(m_out.body.size())) : QByteArray();
    const QByteArray part = header(last ? obex::EndOfBody : obex::Body, m_out.body.mid(m_out.sent, count));
    m_out.sent += count;
    if (last)
        m_out = {};
    return answer(last ? obex::Success : obex::Continue, size + part);
}

ObexServer::Answer ObexServer::put(const ObexPacket& request)
{
    const bool hasBody = request.has(obex::Body) || request.has(obex::EndOfBody);
    const bool startsAnew = request.has(obex::Name);
    if (!m_in.what.isEmpty() && !startsAnew)
        return takePart(request);
    leaveIncoming();
    if (!hasBody && (request.opcode & obex::FinalBit) != 0)
        return change(request);
    return startReceiving(request);
}

std::optional<QByteArray> ObexServer::expectedCounter(const ObexPacket& request)
{
    const auto parameters = parametersOf(request);
    const ObexParameter* counter = find(parameters, TagExpectedCounter);
    return counter ? std::optional(counter->value) : std::nullopt;
}

ObexServer::Answer ObexServer::startReceiving(const ObexPacket& request)
{
    const auto name = request.name();
    const auto path = name && !name->isEmpty() ? locate(*name, true) : std::nullopt;
    if (!path)
        return answer(obex::BadRequest);
    if (!isInOrder(request))
        complain(u"headers of \"%1\" in another order"_s.arg(*name));
    m_in = {.what = *name, .path = *path};
    if (request.has(obex::Length))
        m_in.length = request.number(obex::Length);
    m_in.request.expectedCounter = expectedCounter(request);
    if (request.has(obex::Time)) {
        m_in.request.modified = headerTime(request.value(obex::Time));
        if (!m_in.request.modified.isValid())
            complain(u"a time of the form "_s + QString::fromLatin1(request.value(obex::Time)));
    }
    const quint8 room = m_store.room(*path, m_in.length.value_or(0));
    if (room != obex::Success) {
        m_in = {};
        return answer(room);
    }
    return takePart(request);
}

ObexServer::Answer ObexServer::takePart(const ObexPacket& request)
{
    const bool last = (request.opcode & obex::FinalBit) != 0;
    const bool first = m_in.parts++ == 0;
    if (request.has(last ? obex::Body : obex::EndOfBody))
        complain(last ? u"Body in a last frame"_s : u"End of Body before the last frame"_s);
    m_in.request.content += request.value(obex::Body) + request.value(obex::EndOfBody);
    const quint8 room = m_store.room(m_in.path, m_in.request.content.size());
    if (room != obex::Success) {
        m_in = {};
        return answer(room);
    }
    if (last)
        return finishReceiving();
    checkFullFrame(request);
    return answer(first && m_phone.faults.earlySuccess ? obex::Success : obex::Continue);
}

/// Frames before the last are filled to the byte. Only the time of days below 10 makes the first one shorter.
void ObexServer::checkFullFrame(const ObexPacket& request)
{
    const qsizetype wanted = std::min<qsizetype>(m_phone.maxPacket(), longestRaw);
    const qsizetype size = request.size + (request.value(obex::Time).size() == 14 ? 1 : 0);
    if (size != wanted)
        complain(u"a part of \"%1\" in a frame of %2 bytes, not %3"_s.arg(
            m_in.what, QString::number(request.size), QString::number(wanted)));
}

ObexServer::Answer ObexServer::finishReceiving()
{
    const Incoming object = std::exchange(m_in, {});
    const qsizetype size = object.request.content.size();
    if (object.length && *object.length != size)
        complain(u"\"%1\" of %2 bytes was announced with %3"_s.arg(object.what, QString::number(size),
                                                                   QString::number(*object.length)));
    const bool isDelete = m_phone.isTolerant() && size == 0 && isTelecom(object.path);
    return answerChange(object.path, isDelete ? m_store.remove(object.path, object.request)
                                              : m_store.put(object.path, object.request));
}

/// A PUT without a body: rights, a move, or a delete.
ObexServer::Answer ObexServer::change(const ObexPacket& request)
{
    const auto parameters = parametersOf(request);
    if (find(parameters, TagCommand))
        return move(parameters);
    const auto name = request.name();
    const ObexParameter* rights = find(parameters, TagPermissions);
    const auto path = name && !name->isEmpty() ? locate(*name, rights == nullptr) : std::nullopt;
    if (!path)
        return answer(obex::BadRequest);
    if (rights)
        return answer(m_store.setRights(*path, rights->value));
    const ObexParameter* counter = find(parameters, TagExpectedCounter);
    return answerChange(
        *path,
        m_store.remove(*path, {.expectedCounter = counter ? std::optional(counter->value) : std::nullopt}));
}

ObexServer::Answer ObexServer::move(const std::vector<ObexParameter>& parameters)
{
    const ObexParameter* from = find(parameters, TagFrom);
    const ObexParameter* to = find(parameters, TagTo);
    if (find(parameters, TagCommand)->value != "move" || !from || !to)
        return answer(obex::BadRequest);
    const auto pathOf = [this](const QString& name) {
        const QStringList parts = name.split(u'/', Qt::SkipEmptyParts);
        return name.startsWith(u'/') ? parts : m_folder + parts;
    };
    const QString source = fromUtf16(from->value);
    const QString target = fromUtf16(to->value);
    if (!source.startsWith(u'/') || !target.startsWith(u'/'))
        complain(u"a move without whole paths"_s);
    return answer(m_store.move(pathOf(source), pathOf(target)));
}

} // namespace kalmo::handset
