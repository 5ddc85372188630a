#include "handset/obex/Packet.h"

#include <QtEndian>

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype frameHead = 3;
constexpr qsizetype headerHead = 3;
constexpr quint8 formBits = 0xC0;
constexpr quint8 oneByteForm = 0x80;
constexpr quint8 fourByteForm = 0xC0;

QString hex(quint8 byte)
{
    return u"%1"_s.arg(byte, 2, 16, QChar(u'0')).toUpper();
}

quint16 number16(const QByteArray& bytes, qsizetype at)
{
    return qFromBigEndian<quint16>(bytes.constData() + at);
}

qsizetype fixedSize(quint8 opcode)
{
    if (opcode == obex::Connect)
        return 4;
    return opcode == obex::SetPath ? 2 : 0;
}

/// Takes one header off the front. Null if its length is wrong.
std::optional<ObexHeader> takeHeader(QByteArray& rest)
{
    ObexHeader taken{static_cast<quint8>(rest.front())};
    qsizetype head = 1;
    qsizetype length = 0;
    if ((taken.id & formBits) == fourByteForm) {
        length = 5;
    } else if ((taken.id & formBits) == oneByteForm) {
        length = 2;
    } else {
        head = headerHead;
        length = rest.size() < headerHead ? 0 : number16(rest, 1);
    }
    if (length < head || length > rest.size())
        return std::nullopt;
    taken.value = rest.mid(head, length - head);
    rest.remove(0, length);
    return taken;
}

} // namespace

const ObexHeader* ObexPacket::find(quint8 id) const
{
    const auto found = std::find_if(headers.begin(), headers.end(),
                                    [id](const ObexHeader& header) { return header.id == id; });
    return found == headers.end() ? nullptr : &*found;
}

QByteArray ObexPacket::value(quint8 id) const
{
    const ObexHeader* found = find(id);
    return found ? found->value : QByteArray();
}

std::optional<QString> ObexPacket::name() const
{
    const ObexHeader* found = find(obex::Name);
    return found ? std::optional(fromUtf16(found->value)) : std::nullopt;
}

quint32 ObexPacket::number(quint8 id) const
{
    const QByteArray bytes = value(id);
    return bytes.size() == 4 ? qFromBigEndian<quint32>(bytes.constData()) : 0;
}

qsizetype declaredSize(const QByteArray& bytes)
{
    return bytes.size() < frameHead ? 0 : std::max<qsizetype>(number16(bytes, 1), frameHead);
}

ObexPacket parsePacket(const QByteArray& frame)
{
    ObexPacket packet{.opcode = static_cast<quint8>(frame.front()), .size = frame.size()};
    QByteArray rest = frame.sliced(frameHead);
    packet.fixed = rest.left(fixedSize(packet.opcode));
    rest.remove(0, packet.fixed.size());
    if (packet.fixed.size() < fixedSize(packet.opcode))
        packet.faults.append(u"a frame with opcode %1 is too short"_s.arg(hex(packet.opcode)));
    if (number16(frame, 1) < frameHead)
        packet.faults.append(u"a frame declares %1 bytes"_s.arg(number16(frame, 1)));
    while (!rest.isEmpty()) {
        const quint8 id = static_cast<quint8>(rest.front());
        auto taken = takeHeader(rest);
        if (!taken) {
            packet.faults.append(u"the length of header %1 is not true"_s.arg(hex(id)));
            break;
        }
        if (id == obex::Name && taken->value.size() % 2 != 0)
            packet.faults.append(u"a name of %1 bytes"_s.arg(taken->value.size()));
        // The bytes of a last character beyond U+00FF may be swapped before its one zero.
        else if (id == obex::Name && !taken->value.isEmpty() && !taken->value.endsWith('\0'))
            packet.faults.append(u"a name without its end"_s);
        packet.headers.push_back(std::move(*taken));
    }
    return packet;
}

QByteArray header(quint8 id, const QByteArray& value)
{
    return static_cast<char>(id) + bigEndian(static_cast<quint16>(value.size() + headerHead)) + value;
}

QByteArray header(quint8 id, quint32 number)
{
    return static_cast<char>(id) + bigEndian(number);
}

QByteArray frame(quint8 code, const QByteArray& rest)
{
    return static_cast<char>(code) + bigEndian(static_cast<quint16>(rest.size() + frameHead)) + rest;
}

QString fromUtf16(const QByteArray& bytes)
{
    QString text;
    for (qsizetype at = 0; at + 1 < bytes.size(); at += 2)
        text += QChar(number16(bytes, at));
    while (text.endsWith(QChar(u'\0')))
        text.chop(1);
    return text;
}

std::vector<ObexParameter> parseParameters(const QByteArray& value, QStringList& faults)
{
    std::vector<ObexParameter> parameters;
    qsizetype at = 0;
    while (at + 2 <= value.size()) {
        const auto tag = static_cast<quint8>(value[at]);
        qsizetype length = static_cast<quint8>(value[at + 1]);
        const qsizetype rest = value.size() - at - 2;
        if (tag == TagPermissions || (tag == TagMemory && length == rest + 1))
            length = rest;
        if (length > rest) {
            faults.append(u"parameter %1 declares %2 bytes of %3"_s.arg(hex(tag)).arg(length).arg(rest));
            length = rest;
        }
        parameters.push_back({tag, value.mid(at + 2, length)});
        at += 2 + length;
    }
    if (at < value.size())
        faults.append(u"a parameter without a length"_s);
    return parameters;
}

QByteArray parameter(quint8 tag, const QByteArray& value)
{
    return static_cast<char>(tag) + QByteArray(1, static_cast<char>(value.size())) + value;
}

} // namespace kalmo::handset
