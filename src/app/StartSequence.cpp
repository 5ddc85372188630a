#include "app/StartSequence.h"

#include "app/Files.h"
#include "app/SettingsKeys.h"
#include "app/StoragePaths.h"
#include "app/Version.h"
#include "app/WorkFolder.h"

#include <QDir>

namespace kalmo::app {

using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

constexpr int leastPixels = 600;

QString storageFolder(const Context& context, const QString& name)
{
    return QDir(context.sy.Paths.Storage).filePath(name);
}

void testScreen(Context& context, const ScreenSize& screen)
{
    if (screen.pixelX >= leastPixels && screen.pixelY >= leastPixels)
        return;
    // The text names 800 pixels of width, but 600 are enough.
    context.dialogs.Show({.text = u"Dieses Programm benötigt mindestens 800x600 Pixel Bildschirmauflösung."_s,
                          .icon = Icon::Exclamation});
    context.ending.EndProgram();
}

/// Returns true if the user wants all settings deleted.
bool readCommandLine(Context& context, const QString& commandLine)
{
    const QString argument = commandLine.trimmed().toUpper();
    if (argument == u"/DBG"_s || argument == u"/DEBUG"_s) {
        context.sy.debug = true;
        context.dialogs.Show(
            {.text = u"Debugger aktiv - Protokolldatei wird erstellt."_s, .icon = Icon::Information});
    }
    if (argument != u"/DELINI"_s)
        return false;
    const Answer answer =
        context.dialogs.Show({.text = u"Ini-Datei löschen, alle Einstellungen zurücksetzen?"_s,
                              .buttons = Buttons::YesNo,
                              .icon = Icon::Question,
                              .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        context.ending.EndProgram(EXIT_SUCCESS);
    return true;
}

void findPaths(Context& context)
{
    if (GetMyPaths(context))
        return;
    context.dialogs.Show({.text = u"Abbruch nach Überprüfung der Ordner"_s, .icon = Icon::Exclamation});
    context.ending.EndProgram();
}

void deleteSettings(Context& context)
{
    DeleteQuiet(iniPath(context.sy.Paths.Exe));
    DeleteQuiet(iniPath(context.sy.Paths.Storage));
    context.dialogs.Show({.text = u"Programm bitte neu starten"_s, .icon = Icon::Information});
    context.ending.EndProgram(EXIT_SUCCESS);
}

void fillSession(Context& context, const ScreenSize& screen)
{
    Sy& sy = context.sy;
    sy.startDate = context.clock.Now().toString(u"dd.MM.yyyy hh:mm:ss"_s);
    sy.PrgVersion = programVersion();
    sy.ScreenX = screen.twipsX;
    sy.ScreenY = screen.twipsY;
    sy.PixelX = screen.pixelX;
    sy.PixelY = screen.pixelY;
    context.log.WriteLogHeader();
}

void remindOfUnclosedSession(Context& context)
{
    const QString device = get(context.settings, keys::LastUnclosedObexDevice);
    if (device != noValue())
        context.dialogs.Show({.text = unclosedSessionText(device), .icon = Icon::Exclamation});
    put(context.settings, keys::LastUnclosedObexDeviceCOM, noValue());
    put(context.settings, keys::LastUnclosedObexDevice, noValue());
}

} // namespace

QString unclosedSessionText(const QString& device)
{
    return device + u" wurde beim letzten Betrieb nicht vollständig beendent.\n"
                    u"Wenn Sie das gleiche Telefon wieder angeschlossen haben, ziehen Sie es bitte JETZT für "
                    u"fünf Sekunde vom Datenkabel ab, stecken es wieder an und klicken erst dann auf OK.\n"
                    u"Mit dieser Prozedur stellen Sie sicher, daß das Telefon wieder gefunden wird. Sollte "
                    u"das Telefon trotzdem nicht gefunden werden, schalten Sie es bitte einmal aus und "
                    u"wieder ein und starten dann Kalmo erneut."_s;
}

StartOutcome runStartSequence(Context& context, StartView& view, const QString& commandLine)
{
    if (!context.platform.claimSingleInstance())
        context.ending.EndProgram();
    const ScreenSize screen = view.screen();
    testScreen(context, screen);
    view.clearAbortFlag();
    const bool deleteIni = readCommandLine(context, commandLine);
    context.sy.Paths.Exe = context.platform.ExePath();
    DetectOsClass(context);
    findPaths(context);
    if (deleteIni)
        deleteSettings(context);
    fillSession(context, screen);
    view.layOutSplash(productName() + u" Version "_s + programVersion() + u" vom "_s + versionDate());

    EnsureDirExists(context, storageFolder(context, u"config"_s));
    EnsureDirExists(context, workPath(context.sy));
    EnsureDirExists(context, backupFolder(context.sy));
    emptyFolder(workPath(context.sy));
    WorkFolder::sweep(context);

    const bool firstRun = !FileExists(iniPath(context.sy.Paths.Storage));
    view.ReadSettingsToForm();
    if (firstRun || get(context.settings, keys::Version) != programVersion()) {
        view.showSettings();
        return StartOutcome::Settings;
    }
    remindOfUnclosedSession(context);
    return StartOutcome::Search;
}

} // namespace kalmo::app
