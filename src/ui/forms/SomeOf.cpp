#include "ui/forms/SomeOf.h"

#include <algorithm>

namespace kalmo::ui {

QString someOf(const QStringList& names, qsizetype most, const QString& separator)
{
    const QString shown = names.first(std::min(names.size(), most)).join(separator);
    if (names.size() <= most)
        return shown;
    const QString gap = separator.contains(u'\n') ? separator : QStringLiteral(" ");
    return shown + gap + QStringLiteral("und %1 weitere").arg(names.size() - most);
}

} // namespace kalmo::ui
