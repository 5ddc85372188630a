#include "cli/Job.h"

namespace kalmo::cli {

QString Job::portName() const
{
    const int number = context.sy.ComNo;
    const QString device = ports.devicePath(number);
    const QString name = u"COM%1"_s.arg(number);
    if (device.isEmpty())
        return name;
    return ports.isForThisRun(number) ? device : u"%1 (%2)"_s.arg(device, name);
}

bool Job::reportInterruption(const QString& outcome)
{
    if (!stop.Checked())
        return false;
    progress.clear();
    out.error(u"interrupted; %1."_s.arg(outcome));
    return true;
}

QString isoTime(const QDateTime& moment)
{
    return moment.toString(u"yyyy-MM-dd'T'hh:mm:ss"_s);
}

} // namespace kalmo::cli
