#include "ui/window/Notices.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Icon;

int rowToEdit(const toolkit::ListRows& rows)
{
    const QList<int> selected = rows.selectedRows();
    return selected.contains(rows.current()) ? rows.current() : selected.value(0, rows.current());
}

QString obstacleIn(const toolkit::ListRows& rows, Command command, const QString& place)
{
    const bool hasNone = (command == Command::Delete && rows.selectedRows().isEmpty()) ||
                         (command == Command::Edit && rowToEdit(rows) < 0);
    return hasNone ? place + u" ist nichts markiert."_s : QString();
}

bool tellIfEmpty(app::Context& context, const toolkit::ListRows& rows)
{
    if (rows.count() > 0)
        return false;
    context.dialogs.Show(
        {.text = u"Die Liste ist leer, es wurde keine Datei gespeichert."_s, .icon = Icon::Information});
    return true;
}

} // namespace kalmo::ui
