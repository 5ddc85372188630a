// The command clock set.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/Tables.h"
#include "link/mdlStatus.h"

#include <QJsonObject>

namespace kalmo::cli {

ExitStatus runClockSet(Job& job)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    if (!link::SetPhoneTime(job.line))
        return ExitFailed;
    job.context.clock.WaitSeconds(0.5);
    if (job.isInterrupted(u"the clock was set, but not read back"_s))
        return ExitRefused;
    QDateTime phoneTime;
    if (!link::GetPhoneTime(job.line, phoneTime)) {
        job.out.error(u"the clock could not be read back."_s);
        return ExitFailed;
    }
    job.out.show(QJsonObject{{u"phoneTime"_s, isoTime(phoneTime)}},
                 alignedFields({{u"Phone time"_s, phoneTime.toString(u"yyyy-MM-dd hh:mm:ss"_s)}}));
    return ExitDone;
}

} // namespace kalmo::cli
