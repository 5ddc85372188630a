#pragma once

#include "support/HandsetTalk.h"

namespace kalmo::tests {

/// Length of the bytes after it and of itself, as OBEX writes it.
inline QByteArray big16(qsizetype number)
{
    return QByteArray(1, static_cast<char>(number >> 8)) + static_cast<char>(number);
}

inline QByteArray big32(qsizetype number)
{
    return big16(number >> 16) + big16(number & 0xFFFF);
}

inline QByteArray obexFrame(int code, const QByteArray& rest = {})
{
    return static_cast<char>(code) + big16(rest.size() + 3) + rest;
}

inline QByteArray obexHeader(int id, const QByteArray& value)
{
    return static_cast<char>(id) + big16(value.size() + 3) + value;
}

/// Header of a name in letters of Latin-1.
inline QByteArray nameHeader(const QByteArray& name)
{
    QByteArray value;
    for (const char letter : name)
        value += QByteArray(1, '\0') + letter;
    return obexHeader(0x01, value + QByteArray(2, '\0'));
}

inline QByteArray lengthHeader(qsizetype length)
{
    return '\xC3' + big32(length);
}

/// Header of application parameters with the change counter that a client expects.
inline QByteArray counterHeader(const QByteArray& digits)
{
    return obexHeader(0x4C, '\x11' + QByteArray(1, static_cast<char>(digits.size())) + digits);
}

inline const QByteArray connectFolders =
    QByteArray::fromHex("80001A100040064600136B01CB31410611D49A770050DA3F471F");
inline const QByteArray connectIrmc = QByteArray::fromHex("8000131000400646000C49524D432D53594E43");
inline const QByteArray toRoot = QByteArray::fromHex("8500080200010003");
inline const QByteArray listFolder =
    obexFrame(0x83, obexHeader(0x42, QByteArray("x-obex/folder-listing\0", 22)));

/// A client that has led the handset into data mode.
class ObexTalk : public HandsetTalk
{
public:
    explicit ObexTalk(const handset::Options& options) : HandsetTalk(options)
    {
        opened = say("AT^SQWE=3\r\n", 1.5).endsWith("\r\nOK\r\n");
    }

    /// Into the folder, from where it is.
    QByteArray enter(const QByteArray& folder, int flags = 2)
    {
        return ask(obexFrame(0x85, QByteArray(1, static_cast<char>(flags)) + '\0' + nameHeader(folder)));
    }

    /// Returns the answer to one request. Empty if no whole frame comes within 30 seconds.
    QByteArray ask(const QByteArray& request)
    {
        port.ReadText();
        port.WriteText(request);
        QByteArray answer;
        const auto isWhole = [&] {
            return answer.size() >= 3 &&
                   answer.size() >= (static_cast<quint8>(answer[1]) << 8 | static_cast<quint8>(answer[2]));
        };
        for (const double end = clock.elapsed() + 30; !isWhole() && clock.elapsed() < end;) {
            clock.DoEvents(0.1);
            answer += port.ReadText();
        }
        return isWhole() ? answer : QByteArray();
    }

    /// The whole object that a GET gives, by the code of the last answer: empty unless that is a success.
    QByteArray fetch(const QByteArray& request)
    {
        QByteArray object;
        for (QByteArray answer = ask(request);; answer = ask(obexFrame(0x83))) {
            const qsizetype skipped = answer.mid(3, 1) == "\xC3" ? 11 : 6;
            object += answer.mid(skipped);
            if (!answer.startsWith('\x90'))
                return answer.startsWith('\xA0') ? object : QByteArray();
        }
    }

    QByteArray fetchFile(const QByteArray& name) { return fetch(obexFrame(0x83, nameHeader(name))); }

    bool opened;
};

} // namespace kalmo::tests
