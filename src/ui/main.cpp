// The window program: command line, language, start.

#include "app/Version.h"
#include "ui/controls/ReadablePalette.h"
#include "ui/controls/WheelGuard.h"
#include "ui/EndSignals.h"
#include "ui/Engine.h"
#include "ui/FileHandover.h"
#include "ui/icons/Icons.h"
#include "ui/StartFlow.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <cstdio>

namespace {

using namespace kalmo;
using namespace Qt::StringLiterals;

constexpr int exitWrongUse = 2;

void print(FILE* stream, const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
}

int wrongUse(const QString& error)
{
    print(stderr, u"kalmo: %1.\nTry \"kalmo --help\".\n"_s.arg(error));
    return exitWrongUse;
}

/// Help and version need no display.
bool answersAtOnce(int argc, char** argv)
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    const ui::CommandLine::Kind kind = ui::parseCommandLine(arguments).kind;
    if (kind == ui::CommandLine::Kind::Help)
        print(stdout, ui::commandLineHelp());
    else if (kind == ui::CommandLine::Kind::Version)
        print(stdout, u"kalmo %1\n"_s.arg(app::programVersion()));
    else
        return false;
    return true;
}

/// The texts are German in every locale. Dates and numbers follow the user's locale.
void speakGerman(QTranslator& buttons)
{
    if (QLocale::system().language() == QLocale::C)
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    if (buttons.load(u"qtbase_de"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&buttons);
}

} // namespace

int main(int argc, char** argv)
{
    if (answersAtOnce(argc, argv))
        return 0;
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Merrow Works"_s);
    QCoreApplication::setApplicationName(u"Kalmo"_s);
    QCoreApplication::setApplicationVersion(app::programVersion());
    QGuiApplication::setDesktopFileName(u"kalmo"_s);
    QGuiApplication::setWindowIcon(ui::programIcon());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QTranslator buttons;
    speakGerman(buttons);

    const ui::WheelGuard wheel;
    const ui::ReadablePalette colours;

    const ui::CommandLine commandLine = ui::parseCommandLine(QCoreApplication::arguments().mid(1));
    if (commandLine.kind == ui::CommandLine::Kind::WrongUse)
        return wrongUse(commandLine.error);
    const QString file = commandLine.file.isEmpty() ? QString() : link::absolutePath(commandLine.file);
    ui::FileHandover handover;
    if (!file.isEmpty() && handover.handOver(file))
        return 0;
    ui::Engine engine;
    if (const QString error = engine.take(commandLine); !error.isEmpty())
        return wrongUse(error);
    ui::StartFlow flow(engine.program(), commandLine.rest);
    if (!file.isEmpty())
        flow.openFile(file);
    QObject::connect(&handover, &ui::FileHandover::received, &flow, &ui::StartFlow::openFile);
    const ui::EndSignals signals;
    QObject::connect(&signals, &ui::EndSignals::received, &flow, &ui::StartFlow::endUnasked);
    handover.listen(); // beside another Kalmo the start ends by itself
    flow.begin();
    return QApplication::exec();
}
