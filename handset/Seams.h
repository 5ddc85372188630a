#pragma once

#include <QByteArray>
#include <QDateTime>

#include <functional>

namespace kalmo::handset {

/// The handset's time. Everything in it that takes time uses this.
class TimeSource
{
public:
    virtual ~TimeSource() = default;

    /// Seconds since some moment before the handset was made; never falls back.
    virtual double now() const = 0;
    /// Local date and time. The handset's clock is an offset to it.
    virtual QDateTime dateTime() const = 0;
    /// Runs `action` once, `seconds` from now, and never inside of this call.
    virtual void after(double seconds, std::function<void()> action) = 0;
};

/// The cable, seen from the handset.
class Wire
{
public:
    virtual ~Wire() = default;

    /// Bytes for the client, already paced to the line's rate.
    virtual void send(const QByteArray& bytes) = 0;
    /// The line drops, as if the cable was pulled out.
    virtual void hangUp() = 0;
};

} // namespace kalmo::handset
