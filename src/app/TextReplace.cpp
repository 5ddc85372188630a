#include "app/TextReplace.h"

namespace kalmo::app {

QString replacedAll(const QString& text, QStringView part, QStringView by)
{
    qsizetype found = text.indexOf(part);
    if (found < 0)
        return text;
    QString out;
    out.reserve(text.size());
    qsizetype done = 0;
    for (; found >= 0; found = text.indexOf(part, done)) {
        out.append(QStringView(text).sliced(done, found - done)).append(by);
        done = found + part.size();
    }
    return out.append(QStringView(text).sliced(done));
}

} // namespace kalmo::app
