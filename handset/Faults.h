#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace kalmo::handset {

/// Faults of a handset, and when they happen. Everything counts from 1 and happens the same way each time; 0
/// means never.
struct Faults
{
    int silentAfter = 0;     ///< answers so many commands, and nothing more
    int refuseCommandAt = 0; ///< that command is answered with ERROR each time it is sent
    int hangUpAt = 0;        ///< the line drops instead of the answer to that command
    int lateAt = 0;          ///< the answer to that command is late
    double lateBy = 2;       ///< seconds more than usual
    int noiseAt = 0;         ///< a few bytes of noise come before the answer to that command
    int loseByteAt = 0;      ///< the answer to that command lacks its middle byte
    bool noEcho = false;
    int readErrorAt = 0;      ///< the n-th entry that is read is refused each time
    int readErrorOnceAt = 0;  ///< the same, once
    int writeErrorAt = 0;     ///< the n-th entry that is written is refused each time
    int writeErrorOnceAt = 0; ///< the same, once

    int menuOpen = 0;           ///< so many requests for data mode stay unanswered
    bool ignoresEscape = false; ///< "+++" does not lead out of data mode

    // In data mode. Requests are counted, all kinds together.
    int silentFrom = 0;        ///< that request is not answered, and no later one
    int hangUpAfter = 0;       ///< the line drops when so many bytes have gone over it, both ways together
    int refuseAt = 0;          ///< that request is refused
    int refuseCode = 0xC3;     ///< with this code
    int busy = 0;              ///< so many requests for a whole phonebook or calendar are answered with D0
    int miscounts = 0;         ///< so many answers about a store's room report one entry more than it holds
    bool earlySuccess = false; ///< the first part of an object in several parts is answered like the last
    bool full = false;         ///< nothing more can be stored
    bool trickle = false;      ///< every byte comes alone
    int wrongLengthAt = 0;     ///< the answer to that request declares a wrong length
    int wrongLengthBy = 5;     ///< bytes too many, or too few
    int lateRequestAt = 0;     ///< that request is answered late, by `lateBy`
    int surplusAt = 0;         ///< a few bytes follow the answer to that request
    bool hostileNames =
        false; ///< from the start, the root holds dangerous names, and a folder that contains itself
    bool hostileLuids = false;    ///< from the start, the first contacts have dangerous LUIDs
    bool noLuid = false;          ///< writes are answered without LUID and counter
    bool wrongLuidLength = false; ///< they report a wrong length before them

    /// Returns true if a client may lose track through no fault of its own.
    bool confuse() const { return earlySuccess || wrongLengthAt > 0 || surplusAt > 0 || lateRequestAt > 0; }

    // Counters.
    int commands = 0;
    QByteArray refusedCommand = {};
    int reads = 0;  ///< entries given
    int writes = 0; ///< entries taken
    int requests = 0;
    qint64 dataBytes = 0;

    /// Return true if the fault happens at the command, or request, that runs. The counters are 0 if the
    /// faults were set in the middle of it.
    bool isDueAtCommand(int at) const { return at > 0 && commands == at; }
    bool isDueAtRequest(int at) const { return at > 0 && requests == at; }

    /// Counts an AT command. Returns true if it is one to refuse.
    bool refusesNext(const QByteArray& command)
    {
        if (++commands == refuseCommandAt)
            refusedCommand = command;
        return !refusedCommand.isEmpty() && command == refusedCommand;
    }

    /// Returns true if the answer that is due is one of the wrong ones.
    bool takeMiscount() { return miscounts > 0 && miscounts-- > 0; }

    bool isSilent() const
    {
        return (silentAfter > 0 && commands >= silentAfter) || (silentFrom > 0 && requests >= silentFrom);
    }
};

/// Sets the fault of that name, "write-error=3" for example. Returns the error, if there is one.
std::optional<QString> setFault(Faults& faults, const QString& text);

/// The names that setFault takes, one in each line.
QString faultList();

} // namespace kalmo::handset
