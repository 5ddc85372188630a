#pragma once

#include "handset/at/AtCommand.h"

namespace kalmo::handset {

/// Watches the pauses that the stores and ringtones of classic handsets need between two commands, and the
/// preparation of a longer phonebook. A real one loses entries without them.
class PauseWatch
{
public:
    /// Call it for each command before it runs. Returns a complaint, empty if there is nothing to complain
    /// about.
    QString arrives(const AtRequest& request, const Phone& phone, double now);
    /// Call it when the answer to that command begins.
    void answered(bool isOk, double now);
    void reset() { *this = {}; }

private:
    enum Step { Other, Open, Read, Write, Prepare, Close, Erase, SoundQuery, SoundSet };

    static Step stepOf(const AtRequest& request, const Phone& phone);
    double neededPause(Step next, bool isPhonebook) const;
    QString preparationComplaint(Step next, const Phone& phone);

    Step m_last = Other;
    bool m_isLastOk = false;
    double m_lastArrived = -1e9;
    double m_lastAnswered = -1e9;
    bool m_hasDummy = false;   // the dummy entry was written since the last erase
    bool m_isPrepared = false; // it was, before the last erase
};

} // namespace kalmo::handset
