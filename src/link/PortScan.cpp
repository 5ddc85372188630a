#include "link/PortScan.h"

#include "link/PhoneModels.h"

#include <QScopedValueRollback>

namespace kalmo::link {

FoundAtPort scanPort(Line& line, SearchView& view, app::Desktop& desktop, int number)
{
    app::Sy& sy = line.context().sy;
    const QScopedValueRollback port(sy.ComNoForThisRun, number);
    const QScopedValueRollback shownPort(sy.ComNo);
    const QScopedValueRollback settings(sy.ComSettings);
    const QScopedValueRollback terminator(sy.blnTxLfTerminator);
    const QScopedValueRollback identity(sy.PhoneID);
    FoundAtPort found{.number = number};
    line.ClosePort(); // another one may be open
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
        search.askIdentity(phoneType, rawId);
        found.kind = phoneType != 0 ? FoundAtPort::Kind::Phone : FoundAtPort::Kind::Other;
        found.model = modelName(rawId);
        break;
    }
    line.ClosePort();
    return found;
}

} // namespace kalmo::link
