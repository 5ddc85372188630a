#pragma once

#include "support/HandsetTalk.h"
#include "support/ObexBytes.h"

namespace kalmo::tests {

/// Header of application parameters with the change counter that a client expects.
inline QByteArray counterHeader(const QByteArray& digits)
{
    return header(0x4C, '\x11' + QByteArray(1, static_cast<char>(digits.size())) + digits);
}

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
        return ask(packet(0x85, QByteArray(1, static_cast<char>(flags)) + '\0' + nameHeader(folder)));
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
        for (QByteArray answer = ask(request);; answer = ask(packet(0x83))) {
            const qsizetype skipped = answer.mid(3, 1) == "\xC3" ? 11 : 6;
            object += answer.mid(skipped);
            if (!answer.startsWith('\x90'))
                return answer.startsWith('\xA0') ? object : QByteArray();
        }
    }

    QByteArray fetchFile(const QByteArray& name) { return fetch(packet(0x83, nameHeader(name))); }

    bool opened;
};

} // namespace kalmo::tests
