#include "handset/Faults.h"

#include <functional>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

struct FaultRow
{
    QString name;
    QString argument; // empty for a switch
    QString help;
    std::function<bool(Faults&, const QString& value)> set;
};

auto count(int Faults::*field)
{
    return [field](Faults& faults, const QString& value) {
        bool ok = false;
        faults.*field = value.toInt(&ok);
        return ok && faults.*field > 0;
    };
}

/// Does the same, but the number may be negative.
auto number(int Faults::*field)
{
    return [field](Faults& faults, const QString& value) {
        bool ok = false;
        faults.*field = value.toInt(&ok);
        return ok;
    };
}

auto code(int Faults::*field)
{
    return [field](Faults& faults, const QString& value) {
        bool ok = false;
        faults.*field = value.toInt(&ok, 16);
        return ok && faults.*field >= 0x10 && faults.*field <= 0xFF;
    };
}

auto seconds(double Faults::*field)
{
    return [field](Faults& faults, const QString& value) {
        bool ok = false;
        faults.*field = value.toDouble(&ok);
        return ok && faults.*field > 0;
    };
}

auto flag(bool Faults::*field)
{
    return [field](Faults& faults, const QString& value) {
        faults.*field = true;
        return value.isEmpty();
    };
}

const std::vector<FaultRow> faultTable = {
    {u"silent-after"_s, u"N"_s, u"answers N commands and then nothing more"_s, count(&Faults::silentAfter)},
    {u"refuse-command"_s, u"N"_s, u"the N-th command is refused, each time it is sent"_s,
     count(&Faults::refuseCommandAt)},
    {u"hangup-at"_s, u"N"_s, u"the line drops instead of the answer to the N-th command"_s,
     count(&Faults::hangUpAt)},
    {u"late-at"_s, u"N"_s, u"the N-th command is answered late"_s, count(&Faults::lateAt)},
    {u"late-by"_s, u"SECONDS"_s, u"how late, in seconds (2)"_s, seconds(&Faults::lateBy)},
    {u"noise-at"_s, u"N"_s, u"noise before the answer to the N-th command"_s, count(&Faults::noiseAt)},
    {u"lose-byte-at"_s, u"N"_s, u"the answer to the N-th command lacks a byte"_s, count(&Faults::loseByteAt)},
    {u"no-echo"_s, {}, u"commands are not echoed"_s, flag(&Faults::noEcho)},
    {u"read-error"_s, u"N"_s, u"the N-th entry can't be read"_s, count(&Faults::readErrorAt)},
    {u"read-error-once"_s, u"N"_s, u"the same at the first try only"_s, count(&Faults::readErrorOnceAt)},
    {u"write-error"_s, u"N"_s, u"the N-th entry can't be written"_s, count(&Faults::writeErrorAt)},
    {u"write-error-once"_s, u"N"_s, u"the same at the first try only"_s, count(&Faults::writeErrorOnceAt)},
    {u"menu-open"_s, u"N"_s, u"N requests for data mode stay unanswered"_s, count(&Faults::menuOpen)},
    {u"ignore-escape"_s, {}, u"+++ does not lead out of data mode"_s, flag(&Faults::ignoresEscape)},
    {u"silent-from"_s, u"N"_s, u"no answer to the N-th OBEX request and all that follow"_s,
     count(&Faults::silentFrom)},
    {u"hangup-after"_s, u"BYTES"_s, u"the line drops after so many bytes in data mode"_s,
     count(&Faults::hangUpAfter)},
    {u"refuse-at"_s, u"N"_s, u"the N-th OBEX request is refused"_s, count(&Faults::refuseAt)},
    {u"refuse-code"_s, u"HEX"_s, u"with this code (C3)"_s, code(&Faults::refuseCode)},
    {u"busy"_s, u"N"_s, u"N requests for a whole phonebook are answered with D0"_s, count(&Faults::busy)},
    {u"miscount"_s, u"N"_s, u"N answers about a store's room name one entry too many"_s,
     count(&Faults::miscounts)},
    {u"early-success"_s,
     {},
     u"the first of several parts is answered like the last"_s,
     flag(&Faults::earlySuccess)},
    {u"full"_s, {}, u"nothing more can be stored"_s, flag(&Faults::full)},
    {u"trickle"_s, {}, u"every byte comes by itself"_s, flag(&Faults::trickle)},
    {u"wrong-length-at"_s, u"N"_s, u"the answer to the N-th OBEX request declares a wrong length"_s,
     count(&Faults::wrongLengthAt)},
    {u"wrong-length-by"_s, u"BYTES"_s, u"so many too many, or with a minus too few (5)"_s,
     number(&Faults::wrongLengthBy)},
    {u"late-request-at"_s, u"N"_s, u"the N-th OBEX request is answered late, by late-by"_s,
     count(&Faults::lateRequestAt)},
    {u"surplus-at"_s, u"N"_s, u"bytes after the answer to the N-th OBEX request"_s,
     count(&Faults::surplusAt)},
    {u"hostile-names"_s,
     {},
     u"dangerous names in the root folder, and a folder that holds itself"_s,
     flag(&Faults::hostileNames)},
    {u"hostile-luids"_s, {}, u"dangerous LUIDs of the first contacts"_s, flag(&Faults::hostileLuids)},
    {u"no-luid"_s, {}, u"writes are answered without LUID and counter"_s, flag(&Faults::noLuid)},
    {u"wrong-luid-length"_s,
     {},
     u"writes are answered with a wrong length before LUID and counter"_s,
     flag(&Faults::wrongLuidLength)},
};

QString usage(const FaultRow& row)
{
    return row.argument.isEmpty() ? row.name : row.name + u'=' + row.argument;
}

} // namespace

std::optional<QString> setFault(Faults& faults, const QString& text)
{
    const QString name = text.section(u'=', 0, 0);
    for (const FaultRow& row : faultTable) {
        if (row.name != name)
            continue;
        if (row.set(faults, text.section(u'=', 1)))
            return std::nullopt;
        return u"The fault \"%1\" has to be given as %2."_s.arg(text, usage(row));
    }
    return u"There is no fault \"%1\"."_s.arg(name);
}

QString faultList()
{
    QString out;
    for (const FaultRow& row : faultTable)
        out += u"  %1 %2\n"_s.arg(usage(row), -24).arg(row.help);
    return out;
}

} // namespace kalmo::handset
