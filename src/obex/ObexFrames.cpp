#include "obex/ObexFrames.h"

#include "app/mdlKonverter.h"

#include <algorithm>
#include <initializer_list>

namespace kalmo::obex {

using namespace Qt::StringLiterals;

namespace {

enum Opcode : uchar {
    Connect = 0x80,
    Disconnect = 0x81,
    Put = 0x02,
    PutFinal = 0x82,
    GetFinal = 0x83,
    SetPath = 0x85,
    Abort = 0xFF,
};

/// Tags of the application parameters.
enum Tag : uchar {
    MaximumExpectedCounter = 0x11,
    SpaceTag = 0x32,
    ActionTag = 0x34,
    OldPathTag = 0x35,
    NewPathTag = 0x36,
    AttributeTag = 0x38,
};

constexpr uchar mayCreate = 0x00;
constexpr uchar mustExist = 0x02;
constexpr uchar upAndMustExist = 0x03;
constexpr uchar attributeLength = 8;   // whatever the length of the text
constexpr uchar cardPathLength = 0x13; // one more than the bytes that follow

QByteArray bytes(std::initializer_list<uchar> values)
{
    QByteArray made;
    for (const uchar value : values)
        made.append(static_cast<char>(value));
    return made;
}

QByteArray bigEndian(qint64 number, int size)
{
    QByteArray made;
    for (int shift = (size - 1) * 8; shift >= 0; shift -= 8)
        made.append(static_cast<char>(number >> shift & 0xFF));
    return made;
}

QByteArray header(HeaderId::Value id, QByteArrayView value)
{
    return bytes({id}) + bigEndian(value.size() + 3, 2) + value.toByteArray();
}

QByteArray frame(Opcode opcode, const QByteArray& rest)
{
    return bytes({opcode}) + LenBE16(rest, 3) + rest;
}

QByteArray item(Tag tag, const QByteArray& value)
{
    return bytes({tag, static_cast<uchar>(value.size())}) + value;
}

QByteArray utf16LittleEndian(const QString& text)
{
    QByteArray made;
    made.reserve(text.size() * 2);
    for (const QChar character : text)
        made += bytes({character.cell(), character.row()});
    return made;
}

} // namespace

QByteArray LenBE16(const QByteArray& data, int add)
{
    return bigEndian(data.size() + add, 2);
}

QByteArray LenBE32(const QByteArray& data, int add)
{
    return bigEndian(data.size() + add, 4);
}

QString StrToHex(const QByteArray& data)
{
    return app::HexFromTextPlain(data);
}

qint32 HexToLong(const QString& hex)
{
    double value = 0;
    for (const QChar digit : hex)
        value = value * 16 + QString(digit).toInt(nullptr, 16);
    return app::toInt32(value);
}

QByteArray ObxTimeStamp(const QDateTime& moment)
{
    return moment.toString(u"yyyyMMd'T'hhmmss"_s).toLatin1();
}

bool fitsNameBytes(const QString& name)
{
    return std::all_of(name.begin(), name.end(), [](QChar character) { return character.row() == 0; });
}

QByteArray nameBytes(const QString& name)
{
    return utf16LittleEndian(name) + '\0';
}

QByteArray nameHeader(const QString& name)
{
    return header(HeaderId::Name, '\0' + nameBytes(name));
}

QByteArray lengthHeader(const QByteArray& object)
{
    return bytes({HeaderId::Length}) + LenBE32(object, 0);
}

QByteArray timeHeader(const QDateTime& moment)
{
    return header(HeaderId::Time, ObxTimeStamp(moment));
}

QByteArray applicationHeader(const QByteArray& parameters)
{
    return header(HeaderId::ApplicationParameters, parameters);
}

QByteArray connectFrame(Target target)
{
    // The Target of folder browsing is the id that the makers of the phones chose.
    const QByteArray service =
        target == Target::IrMC ? "IRMC-SYNC"_ba : QByteArray::fromHex("6B01CB31 4106 11D4 9A77 0050DA3F471F");
    return frame(Connect, QByteArray::fromHex("10 00 40 06") + header(HeaderId::TargetId, service));
}

QByteArray disconnectFrame()
{
    return frame(Disconnect, {});
}

QByteArray abortFrame()
{
    return frame(Abort, {});
}

QByteArray folderListingFrame()
{
    return frame(GetFinal, header(HeaderId::Type, "x-obex/folder-listing\0"_ba));
}

QByteArray nextPartFrame()
{
    return frame(GetFinal, {});
}

QByteArray getFrame(const QString& name)
{
    return frame(GetFinal, nameHeader(name));
}

QByteArray rootFrame()
{
    // The phones' own short form: an empty Name without a terminator.
    return frame(SetPath, bytes({mustExist, 0}) + header(HeaderId::Name, {}));
}

QByteArray oneLevelUpFrame()
{
    return frame(SetPath, bytes({upAndMustExist, 0}));
}

QByteArray enterFolderFrame(const QString& name, bool allowCreation)
{
    return frame(SetPath, bytes({allowCreation ? mayCreate : mustExist, 0}) + nameHeader(name));
}

QByteArray deleteFrame(const QString& name)
{
    return frame(PutFinal, nameHeader(name));
}

QByteArray setAttribFrame(const QString& name, const QByteArray& text)
{
    return frame(PutFinal,
                 nameHeader(name) + applicationHeader(bytes({AttributeTag, attributeLength}) + text));
}

QByteArray renamePath(const QString& path)
{
    QByteArray text = utf16LittleEndian(path);
    text.chop(1);
    return bytes({0, '/', 0}) + text;
}

QByteArray renameFrame(const QByteArray& oldPath, const QByteArray& newPath)
{
    return frame(PutFinal, applicationHeader(item(ActionTag, "move") + item(OldPathTag, oldPath) +
                                             item(NewPathTag, newPath)));
}

QByteArray spaceFrame(Memory memory, Space space)
{
    const auto which = static_cast<uchar>(space);
    if (memory == Memory::Phone)
        return frame(GetFinal, applicationHeader(item(SpaceTag, bytes({which}))));
    const QByteArray path = '\0' + nameBytes(u"\\MMCard"_s);
    return frame(
        GetFinal,
        applicationHeader(bytes({SpaceTag, cardPathLength, which, static_cast<uchar>(path.size())}) + path));
}

QByteArray counterParameters(qint32 counter)
{
    return item(MaximumExpectedCounter, QByteArray::number(counter));
}

QByteArray irmcDeleteFrame(const QString& name, qint32 counter)
{
    return frame(PutFinal, nameHeader(name) + applicationHeader(counterParameters(counter)));
}

QByteArray putFrame(bool isFinal, const QByteArray& headers, QByteArrayView chunk)
{
    return frame(isFinal ? PutFinal : Put,
                 headers + header(isFinal ? HeaderId::EndOfBody : HeaderId::Body, chunk));
}

} // namespace kalmo::obex
