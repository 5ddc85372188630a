#include "ui/window/Notices.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Icon;

void tellLaterVersion(app::Context& context, const QString& what)
{
    context.dialogs.Show(
        {.text = what + u" ist in dieser Version von Kalmo noch nicht enthalten und kommt mit einer "
                        u"späteren Version."_s,
         .icon = Icon::Information});
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
