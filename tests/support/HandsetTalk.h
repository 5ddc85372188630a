#pragma once

#include "support/HandsetPort.h"

namespace kalmo::tests {

/// A client without any rules: sends everything that the test wants to an emulated handset, and listens.
class HandsetTalk
{
public:
    explicit HandsetTalk(const handset::Options& options) : port(clock, options) {}

    /// Returns the bytes that come back within so many seconds.
    QByteArray say(const QByteArray& bytes, double seconds = 1)
    {
        port.WriteText(bytes);
        clock.WaitSeconds(seconds);
        return port.ReadText();
    }

    /// Says one after the other, each in so many seconds, and gives what came back to the last.
    QByteArray sayAll(const QByteArrayList& all, double seconds = 1)
    {
        QByteArray last;
        for (const QByteArray& bytes : all)
            last = say(bytes, seconds);
        return last;
    }

    QStringList violations() { return port.handset().violations(); }

    VirtualClock clock;
    HandsetPort port;
};

/// A handset of that model with nothing in it.
inline handset::Options emptyHandset(const QString& model)
{
    return {.model = model, .seed = QStringLiteral("none")};
}

} // namespace kalmo::tests
