#include "transfer/export/ExportFile.h"

#include "app/Files.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

/// Errors of the name, the folder or its rights. 0: the toolkit refused the name itself.
constexpr std::array nameErrors = {0,      ENOENT, ENOTDIR, EISDIR, EINVAL, ENAMETOOLONG,
                                   EACCES, EPERM,  EROFS,   ELOOP};

void tellWriteError(app::Context& context, const ExportFile& file, int error, const QString& reason)
{
    context.log.WriteDebugLog(u"Warning"_s, u"%1:Error %2 Source: "_s.arg(file.operation).arg(error) +
                                                file.list + u" Destination: "_s + file.path);
    if (file.words == WriteWords::OfFile) {
        context.dialogs.Show({.text = u"Fehler beim Schreiben der Datei "_s + file.path,
                              .icon = Icon::Exclamation,
                              .english = u"%1 could not be written: %2."_s.arg(file.path, reason)});
        return;
    }
    const bool isName = std::ranges::find(nameErrors, error) != nameErrors.end();
    context.dialogs.Show(
        {.text = isName ? u"Die Exportdatei konnte nicht erstellt werden.\nBitte prüfen Sie, ob der "
                          u"Dateiname und der Exportpfad gültig sind und ob Sie Schreibrecht haben. Falls "
                          u"ja, wenden Sie sich bitte an den Programmautor."_s
                        : u"Beim Export ist ein Fehler %1 aufgetreten.\nBitte wenden Sie sich an den "
                          u"Programmautor."_s.arg(error),
         .icon = Icon::Information,
         .english = u"%1 could not be written: %2."_s.arg(file.path, reason)});
}

/// Moves the old file back to its place. If that fails, a message names its new path.
void bringBack(app::Context& context, const QString& aside, const QString& path)
{
    if (aside.isEmpty() || app::moveFile(aside, path))
        return;
    context.dialogs.Show({.text = u"Die bisherige Datei \"%1\" liegt jetzt unter \"%2\"."_s.arg(path, aside),
                          .icon = Icon::Exclamation,
                          .english = u"The previous file %1 is now %2."_s.arg(path, aside)});
}

bool writeContent(app::Context& context, const ExportFile& file, const QString& target,
                  const MakeContent& content)
{
    const std::optional<QByteArray> bytes = content();
    if (!bytes)
        return false;
    QString reason;
    errno = 0;
    if (app::writeWholeFile(target, *bytes, &reason))
        return true;
    tellWriteError(context, file, errno, reason);
    return false;
}

} // namespace

bool isNetworkPath(QStringView path)
{
    return path.contains(u"\\\\");
}

bool isRefusedNetworkPath(app::Context& context, const QString& path)
{
    if (!isNetworkPath(path))
        return false;
    context.dialogs.Show(
        {.text = u"Export in das Netzwerk ist nur möglich, wenn Sie ein verbundenes Netzlaufwerk auswählen. "
                 u"Ansonsten kann nur in lokale Dateien exportiert werden."_s,
         .icon = Icon::Information,
         .english = u"%1 is not a local file."_s.arg(path)});
    return true;
}

bool makeFolderOf(app::Context& context, const QString& path)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (app::DirExists(folder) || (app::EnsureDirExists(context, folder) && app::DirExists(folder)))
        return true;
    context.dialogs.Show(
        {.text = u"Der Ordner \""_s + folder +
                 u"\" konnte nicht angelegt werden.\nBitte wählen Sie ein Laufwerk und einen Ordner, in dem "
                 u"Sie Schreibrecht haben aus."_s,
         .icon = Icon::Exclamation,
         .english = u"The folder %1 could not be created."_s.arg(folder)});
    return false;
}

QString withEnding(const QString& path, const QStringList& endings)
{
    const QString ending = QFileInfo(path).suffix();
    return endings.contains(ending, Qt::CaseInsensitive) ? path : path + u'.' + endings.first();
}

bool mayOverwrite(app::Context& context, const QString& path)
{
    return !app::FileExists(path) ||
           context.dialogs.Show({.text = u"Die Datei \""_s + path +
                                         u"\" existiert bereits. Soll die Datei überschrieben werden?"_s,
                                 .buttons = Buttons::OkCancel,
                                 .icon = Icon::Exclamation,
                                 .defaultButton = Answer::Cancel,
                                 .english = u"%1 is there already. Overwrite it?"_s.arg(path)}) == Answer::Ok;
}

bool writeExportFile(app::Context& context, const ExportFile& file, const MakeContent& content)
{
    // A link stays one: its target is replaced.
    const QString linked = QFileInfo(file.path).canonicalFilePath();
    const QString target = linked.isEmpty() ? file.path : linked;
    QString aside;
    if (app::FileExists(target)) {
        aside = app::moveAside(context, target);
        if (aside.isEmpty())
            return false;
        context.clock.WaitSeconds(file.pauseAfterOld);
    }
    if (writeContent(context, file, target, content)) {
        app::DeleteQuiet(aside);
        return true;
    }
    bringBack(context, aside, target);
    return false;
}

toolkit::Message lostLetters(qsizetype count)
{
    return {.text = u"Buchstaben, die es in dieser Art Datei nicht gibt: %1. An ihrer Stelle steht \"?\".\n"
                    u"Dateien für Excel (.xlsx) und Word (.docx) nehmen sie auf."_s.arg(count),
            .icon = Icon::Exclamation,
            .english =
                u"Letters that such a file can't hold: %1. A \"?\" takes their place. Files that end in "
                u".xlsx, .docx or .vcf hold them."_s.arg(count)};
}

} // namespace kalmo::transfer
