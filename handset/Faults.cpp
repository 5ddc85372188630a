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

const std::vector<FaultRow>& faultTable()
{
    static const std::vector<FaultRow> rows = {
        {u"silent-after"_s, u"N"_s, u"answers N commands and then nothing more"_s,
         count(&Faults::silentAfter)},
        {u"hangup-at"_s, u"N"_s, u"the line drops instead of the answer to the N-th command"_s,
         count(&Faults::hangUpAt)},
        {u"late-at"_s, u"N"_s, u"the N-th command is answered late"_s, count(&Faults::lateAt)},
        {u"late-by"_s, u"SECONDS"_s, u"how late (2)"_s, seconds(&Faults::lateBy)},
        {u"noise-at"_s, u"N"_s, u"noise before the answer to the N-th command"_s, count(&Faults::noiseAt)},
        {u"lose-byte-at"_s, u"N"_s, u"the answer to the N-th command lacks a byte"_s,
         count(&Faults::loseByteAt)},
        {u"no-echo"_s, {}, u"commands are not echoed"_s, flag(&Faults::noEcho)},
        {u"read-error"_s, u"N"_s, u"the N-th entry can't be read"_s, count(&Faults::readErrorAt)},
        {u"read-error-once"_s, u"N"_s, u"the same at the first try only"_s, count(&Faults::readErrorOnceAt)},
        {u"write-error"_s, u"N"_s, u"the N-th entry can't be written"_s, count(&Faults::writeErrorAt)},
        {u"write-error-once"_s, u"N"_s, u"the same at the first try only"_s,
         count(&Faults::writeErrorOnceAt)},
    };
    return rows;
}

QString usage(const FaultRow& row)
{
    return row.argument.isEmpty() ? row.name : row.name + u'=' + row.argument;
}

} // namespace

std::optional<QString> setFault(Faults& faults, const QString& text)
{
    const QString name = text.section(u'=', 0, 0);
    for (const FaultRow& row : faultTable()) {
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
    for (const FaultRow& row : faultTable())
        out += u"  %1 %2\n"_s.arg(usage(row), -24).arg(row.help);
    return out;
}

} // namespace kalmo::handset
