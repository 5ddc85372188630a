#include "app/StoragePaths.h"

#include "app/Files.h"

#include <QDir>

namespace kalmo::app {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

const QString appPath = u"$APPPATH"_s;
const QString defaultPath = u"$DEFAULTPATH"_s;
constexpr int firstClassWithUserFolders = 4;

enum class PathFault { None, Missing, NotWritable };

void remark(Context& context, const QString& text)
{
    context.sy.StrStCom += text + u'\n';
    context.log.WriteLogHeader();
}

bool tellDefaultFailed(Context& context, QStringView code)
{
    context.dialogs.Show({.text = u"Der Standardpfad konnte nicht definiert werden ("_s + code.toString() +
                                  u"). Bitte wenden Sie sich an den Programmautor"_s,
                          .icon = Icon::Exclamation});
    return false;
}

void usePath(Sy& sy, const QString& storage, const QString& exports)
{
    sy.Paths.Storage = storage;
    sy.DefUserExpRoot = exports;
}

/// Chooses the path at the very first run: beside the program if settings are there already, else in the
/// user's own folder.
bool chooseFirstPath(Context& context)
{
    Sy& sy = context.sy;
    const QString besideProgram = iniPath(sy.Paths.Exe);
    if (FileExists(besideProgram)) {
        remark(context, besideProgram + u" Exists!"_s);
        usePath(sy, sy.Paths.Exe, sy.Paths.Exe);
        return context.platform.setStoragePathValue(appPath) == 0 || tellDefaultFailed(context, u"A1");
    }
    if (context.platform.setStoragePathValue(defaultPath) != 0)
        return tellDefaultFailed(context, u"A2");
    usePath(sy, defaultStoragePath(context.platform),
            context.platform.SpecialFolder(Folder::Documents, true));
    return true;
}

bool readPath(Context& context)
{
    Sy& sy = context.sy;
    if (!sy.StorageForThisRun.isEmpty()) {
        usePath(sy, sy.StorageForThisRun, context.platform.SpecialFolder(Folder::Documents, true));
        return true;
    }
    const QString stored = context.platform.storagePathValue();
    remark(context, u"StoragePath="_s + stored);
    if (stored.isEmpty())
        return chooseFirstPath(context);
    if (stored == appPath) {
        usePath(sy, sy.Paths.Exe, sy.Paths.Exe);
        return true;
    }
    const QString storage = stored == defaultPath ? defaultStoragePath(context.platform) : stored;
    usePath(sy, storage, context.platform.SpecialFolder(Folder::Documents, true));
    return true;
}

bool askRetry(Context& context, const QString& text)
{
    return context.dialogs.Show({.text = text, .buttons = Buttons::RetryCancel, .icon = Icon::Critical}) ==
           Answer::Retry;
}

/// Tests the path as often as the user asks for it.
PathFault testPath(Context& context)
{
    const QString path = context.sy.Paths.Storage;
    for (;;) {
        remark(context, u"TestPath:\""_s + path + u'"');
        if (!EnsureDirExistsNoMsgBox(context, path)) {
            remark(context, u"EnsureDirExistsNoMsgBox ("_s + path + u") failed"_s);
            if (!askRetry(context,
                          u"Der Ordner \""_s + path +
                              u"\" existiert nicht und konnte auch nicht angelegt werden.\n"
                              u"Wenn Sie diesen Ordner selbst als Speicherpfad in den "
                              u"Programmeinstellungen festgelegt haben, legen Sie ihn manuell an oder "
                              u"richten Sie im übergeordneten Ordner Schreibrecht ein.\n"
                              u"Versuch wiederholen?"_s))
                return PathFault::Missing;
        } else if (!WriteTest(context, path)) {
            remark(context, u"WriteTest ("_s + path + u") failed"_s);
            if (!askRetry(context,
                          u"Im Ordner \""_s + path +
                              u"\" hat Kalmo kein Schreibrecht.\n"
                              u"Wenn Sie diesen Ordner selbst als Speicherpfad in den "
                              u"Programmeinstellungen festgelegt haben, richten Sie Schreibrecht ein.\n"
                              u"Versuch wiederholen?"_s))
                return PathFault::NotWritable;
        } else {
            remark(context, u"GetMyPaths: OK"_s);
            return PathFault::None;
        }
    }
}

void offerReset(Context& context, PathFault fault)
{
    const Answer answer = context.dialogs.Show(
        {.text = u"Soll der bisherige Speicherpfad auf den Standartwert zurückgesetzt werden?"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question,
         .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        return;
    if (context.platform.setStoragePathValue(defaultPath) != 0)
        tellDefaultFailed(context, fault == PathFault::NotWritable ? u"A9" : u"A8");
    else
        context.dialogs.Show({.text = u"Speicherpfad zurückgesetzt. Bitte starten Sie das Programm neu."_s,
                              .icon = Icon::Information});
    context.ending.EndProgram();
}

} // namespace

int osClassOf(const OsVersion& version, bool classicNumbers)
{
    if (!classicNumbers || version.major == 6)
        return 6;
    if (version.major == 5)
        return version.minor == 0 ? 4 : version.minor <= 2 ? 5 : 0;
    if (version.major != 4)
        return 0;
    if (version.platform == 1)
        return version.minor == 0 || version.minor == 10 ? 1 : version.minor == 90 ? 2 : 0;
    return version.platform == 2 && version.minor == 0 ? 3 : 0;
}

void DetectOsClass(Context& context)
{
    Sy& sy = context.sy;
    sy.osVersion = context.platform.osVersion();
    sy.OsClass = osClassOf(sy.osVersion, context.platform.hasClassicVersionNumbers());
    remark(context, u"OsClass="_s + QString::number(sy.OsClass));
    if (sy.OsClass != 0)
        return;
    context.dialogs.Show(
        {.text = u"Das Betriebssystem konnte nicht ermittelt werden. Bitte wenden Sie sich an den "
                 u"Programmautor."_s,
         .icon = Icon::Critical});
    context.log.WriteDebugLog(u"Terminate"_s, u"Init NoOS"_s);
    context.ending.EndProgram();
}

QString defaultStoragePath(const Platform& platform)
{
    return QDir(platform.SpecialFolder(Folder::LocalAppData, true)).filePath(u"Merrow Works/Kalmo"_s);
}

QString workPath(const Sy& sy)
{
    return QDir(sy.Paths.Storage).filePath(u"config/temp"_s);
}

QString backupFolder(const Sy& sy)
{
    return QDir(sy.Paths.Storage).filePath(u"Backup"_s);
}

QString currentStoragePath(const Platform& platform)
{
    const QString stored = platform.storagePathValue();
    const bool besideProgram =
        stored == appPath || (stored.isEmpty() && FileExists(iniPath(platform.ExePath())));
    if (besideProgram)
        return platform.ExePath();
    return stored.isEmpty() || stored == defaultPath ? defaultStoragePath(platform) : stored;
}

bool GetMyPaths(Context& context)
{
    Sy& sy = context.sy;
    remark(context, u"Enter:GetMyPaths"_s);
    const bool hasUserFolders = sy.OsClass >= firstClassWithUserFolders;
    if (!hasUserFolders) {
        usePath(sy, sy.Paths.Exe, sy.Paths.Exe);
        remark(context, u"OS is old"_s);
    } else if (!readPath(context)) {
        return false;
    }
    const PathFault fault = testPath(context);
    if (fault == PathFault::None)
        return true;
    if (hasUserFolders && sy.StorageForThisRun.isEmpty())
        offerReset(context, fault);
    return false;
}

} // namespace kalmo::app
