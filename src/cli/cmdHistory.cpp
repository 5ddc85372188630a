// The records of former states.

#include "cli/Commands.h"
#include "cli/Job.h"
#include "cli/Tables.h"
#include "operations/Records.h"

#include <QJsonArray>
#include <QJsonObject>

namespace kalmo::cli {

using operations::Record;

ExitStatus runHistory(Job& job)
{
    QJsonArray array;
    std::vector<QStringList> rows;
    for (const Record& record : operations::Records::ofAllPhones(job.context)) {
        array.append(QJsonObject{{u"id"_s, record.id},
                                 {u"time"_s, isoTime(record.time)},
                                 {u"phone"_s, record.phone.model},
                                 {u"serial"_s, record.phone.serial},
                                 {u"list"_s, operations::wordOf(record.list)},
                                 {u"cause"_s, record.cause},
                                 {u"entries"_s, record.entries},
                                 {u"state"_s, operations::wordOf(record.state)}});
        rows.push_back({record.id, record.time.toString(u"yyyy-MM-dd  hh:mm:ss"_s),
                        printable(record.phone.model), printable(record.phone.serial),
                        operations::wordOf(record.list), printable(record.cause),
                        QString::number(record.entries), operations::wordOf(record.state)});
    }
    const QStringList headings{u"Id"_s,   u"Time"_s,  u"Phone"_s,   u"Serial number"_s,
                               u"List"_s, u"Cause"_s, u"Entries"_s, u"State"_s};
    job.out.show(array, rows.empty() ? QString() : alignedTable(headings, rows));
    if (rows.empty())
        job.out.note(u"Kalmo has not changed any phone yet.\n"_s);
    return ExitDone;
}

} // namespace kalmo::cli
