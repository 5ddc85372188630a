// The command that sets the phone's clock.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/SettingReport.h"
#include "cli/Tables.h"
#include "operations/PhoneSettings.h"

#include <QJsonObject>

namespace kalmo::cli {

ExitStatus runClockSet(Job& job)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    if (job.reportInterruption())
        return ExitRefused;
    const auto [outcome, now] = operations::setClock(job.line);
    const QString time = now ? now->toString(u"yyyy-MM-dd hh:mm:ss"_s) : QString();
    const QJsonObject object{{u"phoneTime"_s, now ? QJsonValue(isoTime(*now)) : QJsonValue()},
                             {u"state"_s, operations::wordOf(outcome.state)}};
    if (now || job.out.isJson())
        job.out.show(object, alignedFields({{u"Phone time"_s, time}}));
    return reportSetting(job, {.name = u"the clock"_s}, outcome);
}

} // namespace kalmo::cli
