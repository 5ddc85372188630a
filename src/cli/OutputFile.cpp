#include "cli/OutputFile.h"

#include "app/Files.h"
#include "cli/StoreWords.h"

namespace kalmo::cli {

bool saveOutput(Job& job, const Reading& reading)
{
    const QString path = job.invocation.value(u"--output"_s);
    if (path.isEmpty())
        return true;
    if ((reading.count == 0 || reading.isDoubtful) && app::FileExists(path)) {
        job.out.note(u"%1 was there already and stays as it is.\n"_s.arg(path));
        return true;
    }
    QString reason;
    if (!app::writeWholeFile(path, reading.bytes(), &reason)) {
        job.out.error(u"%1 could not be written: %2."_s.arg(path, reason));
        return false;
    }
    job.out.note(u"%1 saved in %2.\n"_s.arg(entryCount(reading.count), path));
    return true;
}

} // namespace kalmo::cli
