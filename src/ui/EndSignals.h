#pragma once

#include <QSocketNotifier>

#include <array>
#include <memory>

namespace kalmo::ui {

/// Turns the signals that ask a program to end (SIGTERM, SIGHUP, SIGINT) into one of this object. The first
/// one only: the next ends the program on the spot. Signals that the program was started to ignore stay so.
class EndSignals : public QObject
{
    Q_OBJECT

public:
    EndSignals();
    ~EndSignals() override;

Q_SIGNALS:
    void received();

private:
    std::array<int, 2> m_pipe = {-1, -1}; // from the handler to the event loop
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace kalmo::ui
