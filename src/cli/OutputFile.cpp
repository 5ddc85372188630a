#include "cli/OutputFile.h"

#include "app/Files.h"
#include "cli/StoreWords.h"

#include <QFileInfo>

namespace kalmo::cli {

namespace {

/// Returns true if a file is there that an empty reading must not replace.
bool holdsMore(const QString& path, const Reading& reading)
{
    QByteArray older;
    return app::FileExists(path) &&
           (!app::readWholeFile(path, older) || (!older.isEmpty() && older != reading.bytes()));
}

} // namespace

bool canSaveOutput(Job& job)
{
    const QString path = job.invocation.value(u"--output"_s);
    return path.isEmpty() || canWriteFile(job, path);
}

bool canWriteFile(Job& job, const QString& path)
{
    const QString target = QFileInfo(path).canonicalFilePath(); // empty for a new file
    const QFileInfo folder(QFileInfo(target.isEmpty() ? path : target).absolutePath());
    QString reason;
    if (!folder.isDir())
        reason = u"there is no folder %1"_s.arg(folder.filePath());
    else if (QFileInfo(path).isDir())
        reason = u"it is a folder"_s;
    else if (!folder.isWritable())
        reason = u"the folder %1 may not be written to"_s.arg(folder.filePath());
    else
        return true;
    job.out.error(u"could not write %1: %2."_s.arg(path, reason));
    return false;
}

bool saveOutput(Job& job, const Reading& reading)
{
    const QString path = job.invocation.value(u"--output"_s);
    if (path.isEmpty())
        return true;
    if (reading.isDoubtful && app::FileExists(path)) {
        job.out.error(u"did not replace the older file %1."_s.arg(path));
        return true;
    }
    if (reading.count == 0 && holdsMore(path, reading)) {
        job.out.error(u"did not replace the older file %1: the phone holds no entries."_s.arg(path));
        return false;
    }
    QString reason;
    if (!app::writeWholeFile(path, reading.bytes(), &reason)) {
        job.out.error(u"could not write %1: %2."_s.arg(path, reason));
        return false;
    }
    job.out.note(u"%1 saved in %2.\n"_s.arg(entryCount(reading.count), path));
    return true;
}

} // namespace kalmo::cli
