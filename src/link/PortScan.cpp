#include "link/PortScan.h"

#include "link/BorrowedPort.h"
#include "link/PhoneModels.h"

#include <QScopedValueRollback>

namespace kalmo::link {

FoundAtPort scanPort(Line& line, SearchView& view, app::Desktop& desktop, int number)
{
    app::Sy& sy = line.context().sy;
    const BorrowedPort port(line, number);
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
        search.askIdentity(phoneType, rawId);
        found.kind = phoneType != 0 ? FoundAtPort::Kind::Phone : FoundAtPort::Kind::Other;
        found.model = modelName(rawId);
        break;
    }
    line.ClosePort();
    return found;
}

} // namespace kalmo::link
