// The command find.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/Tables.h"

#include <QJsonObject>

namespace kalmo::cli {

ExitStatus runFind(Job& job)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    const app::Sy& sy = job.context.sy;
    job.out.show(QJsonObject{{u"phoneType"_s, sy.PhoneType},
                             {u"phoneId"_s, sy.PhoneID},
                             {u"svn"_s, sy.PhoneSVN},
                             {u"comSettings"_s, sy.ComSettings},
                             {u"lfTerminator"_s, sy.blnTxLfTerminator}},
                 alignedFields({{u"Handset"_s, sy.PhoneID},
                                {u"Family"_s, QString::number(sy.PhoneType)},
                                {u"Software"_s, sy.PhoneSVN},
                                {u"Port"_s, job.portName()},
                                {u"Line"_s, sy.ComSettings},
                                {u"Line feeds"_s, sy.blnTxLfTerminator ? u"yes"_s : u"no"_s}}));
    return ExitDone;
}

} // namespace kalmo::cli
