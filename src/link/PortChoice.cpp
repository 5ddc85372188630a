#include "link/PortChoice.h"

#include <QDir>
#include <QFileInfo>

namespace kalmo::link {

using namespace Qt::StringLiterals;

namespace {

/// Accepts a device's name without its folder, where devices are files.
QString devicePath(const QString& word)
{
    const bool isName = !word.contains(u'/') && QFileInfo::exists(u"/dev/"_s + word);
    return isName ? u"/dev/"_s + word : QDir::cleanPath(QFileInfo(word).absoluteFilePath());
}

} // namespace

int portForThisRun(PortTable& table, const QString& word)
{
    const bool isNamed = word.startsWith(u"COM"_s, Qt::CaseInsensitive);
    bool isNumber = false;
    int number = (isNamed ? word.sliced(3) : word).toInt(&isNumber);
    if (!isNumber)
        number = table.numberForThisRun(devicePath(word));
    return number >= 1 && number <= largestPort ? number : 0;
}

} // namespace kalmo::link
