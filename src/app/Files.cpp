#include "app/Files.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

namespace kalmo::app {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

bool isNoName(const QString& path)
{
    return path.isEmpty() || path == u"."_s || path == u".."_s;
}

void clearReadOnly(const QString& path)
{
    QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::WriteOwner);
}

bool removeFile(const QString& path, int& error)
{
    clearReadOnly(path);
    errno = 0;
    const bool removed = QFile::remove(path);
    error = removed ? 0 : errno;
    return removed;
}

/// Logs why a file could not be replaced and asks whether to try again.
bool retriesAfter(Context& context, const QString& path, int error)
{
    context.log.WriteDebugLog(u"KillEx"_s, u"Error #%1 file=%2"_s.arg(error).arg(path));
    const Answer answer = context.dialogs.Show({
        .text = u"Die Datei "_s + path +
                u" konnte nicht ersetzt bzw. gelöscht werden. Vermutlich haben Sie kein Schreibrecht in dem "
                u"Ordner oder aber die Datei ist aktuell von einem anderen Programm geöffnet.\n"
                u"Versuch wiederholen?"_s,
        .buttons = Buttons::RetryCancel,
        .icon = Icon::Exclamation,
        .english = u"Could not replace the file %1. Try again?"_s.arg(path),
    });
    return answer == Answer::Retry;
}

/// Makes a folder chain and logs a failure. `error` is the system's number, 0 if the system reported none.
bool makeFolders(Context& context, const QString& operation, const QString& path, int& error)
{
    error = 0;
    if (path.size() >= shortestFolder) {
        errno = 0;
        if (QDir().mkpath(path) && DirExists(path))
            return true;
        error = errno;
    }
    context.log.WriteDebugLog(
        u"Warning"_s,
        operation + (error != 0 ? u" error creating folder - Err:%1"_s.arg(error) : u" failed "_s + path));
    return false;
}

} // namespace

bool FileExists(const QString& path)
{
    return !isNoName(path) && QFileInfo(path).isFile();
}

bool DirExists(const QString& path)
{
    return !isNoName(path) && QFileInfo(path).isDir();
}

void DeleteQuiet(const QString& path)
{
    int error = 0;
    if (FileExists(path))
        removeFile(path, error);
}

bool KillEx(Context& context, const QString& path)
{
    if (!FileExists(path))
        return true;
    for (;;) {
        int error = 0;
        if (removeFile(path, error))
            return true;
        if (!retriesAfter(context, path, error))
            return false;
    }
}

bool moveFile(const QString& from, const QString& to)
{
    return !QFileInfo::exists(to) && QDir().rename(from, to);
}

QString moveAside(Context& context, const QString& path)
{
    QString aside = path + u".alt"_s;
    for (int number = 2; QFileInfo::exists(aside); ++number)
        aside = path + u".alt%1"_s.arg(number);
    for (;;) {
        errno = 0;
        if (moveFile(path, aside))
            return aside;
        if (!retriesAfter(context, path, errno))
            return {};
    }
}

void emptyFolder(const QString& path)
{
    const auto files = QDir(path).entryInfoList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QFileInfo& file : files)
        DeleteQuiet(file.filePath());
}

bool EnsureDirExists(Context& context, const QString& path)
{
    int error = 0;
    if (makeFolders(context, u"EnsureDirExists"_s, path, error))
        return true;
    context.dialogs.Show({
        .text = u"Der Pfad "_s + (error != 0 ? u'"' + path + u'"' : path) +
                u" konnte nicht erstellt werden. Bitte wenden Sie sich an den Programmautor."_s,
        .icon = Icon::Critical,
        .english = u"could not make the folder %1."_s.arg(path),
    });
    return false;
}

bool EnsureDirExistsNoMsgBox(Context& context, const QString& path)
{
    int error = 0;
    return makeFolders(context, u"EnsureDirExistsNoMsgBox"_s, path, error);
}

bool WriteTest(Context& context, const QString& folder)
{
    const QString path = QDir::cleanPath(folder + u"/HddAccessTest.dat"_s);
    const QByteArray line = "LocalTime: " + context.clock.Now().toString(Qt::ISODate).toUtf8() + "\r\n";
    QFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(line) == line.size() && file.flush();
    file.close();
    if (written)
        context.clock.WaitSeconds(0.05);
    if (written && file.remove())
        return true;
    context.dialogs.Show({.text = u"In den Pfad "_s + folder + u" konnte nicht geschrieben werden."_s,
                          .english = u"could not write to the folder %1."_s.arg(folder)});
    return false;
}

bool writeWholeFile(const QString& path, const QByteArray& bytes, QString* error)
{
    const QFileInfo there(path);
    if (there.exists() && !there.isFile() && !there.isDir()) { // a device would be replaced by a plain file
        if (error)
            *error = qt_error_string(ENOTSUP);
        return false;
    }
    QSaveFile file(path);
    // commit() ignores bytes that a full disk did not take. Of the last bytes a part may have been written.
    // Only the next flush reports the rest as an error.
    const auto flushed = [&file] { return file.flush() || file.flush(); };
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && flushed() && file.commit())
        return true;
    if (error)
        *error = file.errorString();
    return false;
}

ReplaceResult replaceFile(Context& context, const QString& path, const QByteArray& bytes)
{
    for (;;) {
        const bool replaces = FileExists(path);
        if (replaces)
            clearReadOnly(path);
        errno = 0;
        if (writeWholeFile(path, bytes))
            return ReplaceResult::Written;
        const int error = errno;
        if (!replaces)
            return ReplaceResult::NotWritten;
        if (!retriesAfter(context, path, error))
            return ReplaceResult::NotReplaced;
    }
}

bool readWholeFile(const QString& path, QByteArray& bytes)
{
    QFile file(path);
    if (!FileExists(path) || !file.open(QIODevice::ReadOnly))
        return false;
    bytes = file.readAll();
    return file.error() == QFileDevice::NoError;
}

QString GetLastInitDir(const Context& context, const QString& use)
{
    const QString folder = context.settings.GetIniText(use + u'_', u"LastInitDir"_s);
    return folder != noValue() && DirExists(folder) ? folder : context.sy.DefUserExpRoot;
}

void SetLastInitDir(Context& context, const QString& use, const QString& path)
{
    const QFileInfo info(path);
    if (!info.isAbsolute())
        return;
    context.settings.PutIniText(use + u'_', u"LastInitDir"_s, info.isDir() ? path : info.path());
}

} // namespace kalmo::app
