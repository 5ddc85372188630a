#include "link/PortScan.h"

#include "link/PhoneModels.h"

#include <QScopedValueRollback>

namespace kalmo::link {

namespace {

/// The model's name in the raw answer that identified it.
QString nameIn(const QString& rawId)
{
    QString name;
    return (ParseWppn(rawId, name) ? name : rawId).simplified();
}

} // namespace

FoundAtPort scanPort(Line& line, SearchView& view, app::Desktop& desktop, int number)
{
    app::Sy& sy = line.context().sy;
    const QScopedValueRollback port(sy.ComNoForThisRun, number);
    const QScopedValueRollback shownPort(sy.ComNo);
    const QScopedValueRollback settings(sy.ComSettings);
    const QScopedValueRollback terminator(sy.blnTxLfTerminator);
    const QScopedValueRollback identity(sy.PhoneID);
    FoundAtPort found{.number = number};
    PhoneSearch search(line, view, desktop);
    switch (search.runPass()) {
    case PassResult::PortNotOpened:
        found.kind = FoundAtPort::Kind::NotOpened;
        found.error = line.port().openError();
        break;
    case PassResult::NobodyAnswered:
        break;
    case PassResult::Answered:
        int phoneType = 0;
        QString rawId;
        found.kind = search.IdentifyPhone(phoneType, rawId) ? FoundAtPort::Kind::Phone
                     : rawId.isEmpty()                      ? FoundAtPort::Kind::Nothing
                                                            : FoundAtPort::Kind::Other;
        found.model = nameIn(rawId);
        break;
    }
    line.ClosePort();
    return found;
}

} // namespace kalmo::link
