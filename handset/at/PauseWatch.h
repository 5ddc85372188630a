#pragma once

#include "handset/at/AtCommand.h"

namespace kalmo::handset {

/// Watches the pauses that handsets need between two commands: of stores and ringtones, after AT+CMEE, and
/// around the two ATZ by which a client goes on after an error. Watches the preparation of a longer phonebook
/// as well. A real handset loses entries without them.
class PauseWatch
{
public:
    /// Call it for each command before it runs. Returns a complaint, empty if there is nothing to complain
    /// about.
    QString arrives(const AtRequest& request, const Phone& phone, double now);
    /// Call it when the answer to that command begins.
    void answered(bool isOk, double now);
    /// Call it for a command that came before the last answer: its own time is not known.
    void forgive();
    void reset() { *this = {}; }

private:
    enum Step { Other, Open, Read, Write, Prepare, Close, Erase, SoundQuery, SoundSet, ErrorLevel, Restart };

    static Step stepOf(const AtRequest& request, const Phone& phone);
    bool countsFromArrival() const { return m_last == Close || m_last == Restart; }
    double neededPause(Step next, bool isPhonebook) const;
    QString preparationComplaint(Step next, const Phone& phone);

    static constexpr double longAgo = -1e9;

    Step m_last = Other;
    bool m_isLastOk = false;
    double m_lastArrived = longAgo;
    double m_lastAnswered = longAgo;
    bool m_hasDummy = false;   // the dummy entry was written since the last erase
    bool m_isPrepared = false; // it was, before the last erase
};

} // namespace kalmo::handset
