#include "ui/forms/StorageChoice.h"

#include "app/Files.h"
#include "app/StoragePaths.h"

#include <QDir>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

/// Returns true if the folder has settings after that, or if there are none yet.
bool copySettings(app::Context& context, const QString& folder)
{
    const QString source = app::iniPath(context.sy.Paths.Storage);
    const QString target = app::iniPath(folder);
    if (app::FileExists(target) || !app::FileExists(source))
        return true;
    QByteArray bytes;
    QString error = u"\"%1\" kann nicht gelesen werden."_s.arg(source);
    if (app::readWholeFile(source, bytes) && app::writeWholeFile(target, bytes, &error))
        return true;
    context.dialogs.Show(
        {.text = u"Die Einstellungen konnten nicht nach \"%1\" kopiert werden.\n%2"_s.arg(target, error),
         .icon = toolkit::Icon::Exclamation});
    return false;
}

void tellWhoseSettingsHold(app::Context& context, const QString& folder)
{
    context.dialogs.Show(
        {.text =
             u"Der Ordner \"%1\" enthält schon Einstellungen von Kalmo. Ab dem nächsten Start gelten diese. "
             u"Die bisherigen Einstellungen bleiben in \"%2\"."_s.arg(
                 QDir::toNativeSeparators(folder), QDir::toNativeSeparators(context.sy.Paths.Storage)),
         .icon = toolkit::Icon::Information});
}

} // namespace

bool canBeStorage(app::Context& context, const QString& folder)
{
    if (folder.size() < app::shortestFolder) { // the next start would refuse it
        context.dialogs.Show(
            {.text = u"Der Pfad \"%1\" ist zu kurz. Bitte wählen Sie einen anderen Ordner."_s.arg(folder),
             .icon = toolkit::Icon::Exclamation});
        return false;
    }
    return app::EnsureDirExists(context, QDir(folder).filePath(u"config"_s)) &&
           app::WriteTest(context, folder);
}

bool changeStorage(app::Context& context, const QString& folder)
{
    const bool hasOwnSettings = app::FileExists(app::iniPath(folder));
    if (!copySettings(context, folder))
        return false;
    const bool isDefault = folder == app::defaultStoragePath(context.platform);
    if (context.platform.setStoragePathValue(isDefault ? u"$DEFAULTPATH"_s : folder) == 0) {
        if (hasOwnSettings)
            tellWhoseSettingsHold(context, folder);
        return true;
    }
    if (!hasOwnSettings)
        app::DeleteQuiet(app::iniPath(folder));
    context.dialogs.Show(
        {.text = u"Der Speicherpfad konnte nicht geändert werden."_s, .icon = toolkit::Icon::Exclamation});
    return false;
}

} // namespace kalmo::ui
