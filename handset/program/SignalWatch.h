#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace kalmo::handset {

/// Brings signals of the system into the event loop. There is at most one.
class SignalWatch : public QObject
{
    Q_OBJECT

public:
    SignalWatch();
    ~SignalWatch() override;

Q_SIGNALS:
    /// SIGTERM or SIGINT.
    void endAsked();

private:
    void readSignal();

    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kalmo::handset
