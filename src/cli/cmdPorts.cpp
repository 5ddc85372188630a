// The command ports.

#include "cli/Commands.h"
#include "cli/Job.h"
#include "cli/Tables.h"
#include "link/mdlComInfos.h"

#include <QJsonArray>
#include <QJsonObject>

namespace kalmo::cli {

ExitStatus runPorts(Job& job)
{
    link::ComDescriptions known;
    known.RefreshComDesc(link::deviceEntries(job.ports));
    QJsonArray array;
    std::vector<QStringList> rows;
    for (const int number : job.ports.numbers()) {
        const link::SerialDevice device = job.ports.present(number);
        // The table has numbers of two digits only, and the path for a device that has no description.
        const QString name = known.GetComDescription(number);
        const QString description =
            name.isEmpty() || device.description.isEmpty() ? device.description : name;
        array.append(QJsonObject{{u"number"_s, number},
                                 {u"device"_s, device.path},
                                 {u"description"_s, description},
                                 {u"maker"_s, device.maker},
                                 {u"hardwareId"_s, device.hardwareId}});
        rows.push_back({QString::number(number), device.path, description, device.maker, device.hardwareId});
    }
    job.out.show(array, rows.empty() ? QString()
                                     : alignedTable({u"Port"_s, u"Device"_s, u"Description"_s, u"Maker"_s,
                                                     u"Hardware"_s},
                                                    rows));
    if (rows.empty())
        job.out.note(u"There is no serial port. Is the cable plugged in?\n"_s);
    return ExitDone;
}

} // namespace kalmo::cli
