// How long a person waits for the first sign of the program: from starting it to the splash on screen. Where
// a display is there, the window system is asked when the splash has come; without one the program itself is
// looked at, from the making of its first object to the splash as drawn.

#include "app/Version.h"
#include "ui/Engine.h"
#include "ui/forms/frmStart.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;
using namespace kalmo;

namespace {

constexpr double mostMilliseconds = 300;
constexpr int rounds = 7;
constexpr int longestWait = 10000; // milliseconds
constexpr int lookEvery = 2;       // milliseconds

double millisecondsOf(const QElapsedTimer& watch)
{
    return static_cast<double>(watch.nsecsElapsed()) / 1e6;
}

/// Returns true if the window system shows a window of that name.
bool isOnScreen(const QString& name)
{
    QProcess search;
    search.start(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, name});
    search.waitForFinished();
    return search.exitCode() == 0 && !search.readAllStandardOutput().trimmed().isEmpty();
}

/// Measures one look, whose milliseconds are no cost of the program's.
double millisecondsOfLooking()
{
    QElapsedTimer watch;
    watch.start();
    isOnScreen(u"^no such window$"_s);
    return millisecondsOf(watch);
}

/// Settings that were confirmed once: the splash stays, and searches.
bool writeSettings(const QString& folder)
{
    QFile file(folder + u"/config/Kalmo.ini"_s);
    return QDir(folder).mkpath(u"config"_s) && file.open(QIODevice::WriteOnly) &&
           file.write("[frmEinstellungen]\r\nVersion=" + app::programVersion().toLatin1() + "\r\n") > 0;
}

/// One start of the program itself; negative if the splash never came.
double measureProgram(const QString& folder)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, folder); // it is the only instance there
    program.setProcessEnvironment(environment);
    QElapsedTimer watch;
    watch.start();
    program.start(QCoreApplication::applicationDirPath() + u"/../bin/kalmo"_s,
                  {u"--storage"_s, folder, u"--port"_s, folder + u"/no-port"_s});
    while (!isOnScreen(u"^Kalmo"_s)) {
        if (watch.elapsed() > longestWait)
            return -1;
        QThread::msleep(lookEvery);
    }
    const double elapsed = millisecondsOf(watch);
    program.kill();
    program.waitForFinished();
    return elapsed;
}

/// The same within this process, from the engine to the splash as drawn.
double measureForms()
{
    QElapsedTimer watch;
    watch.start();
    ui::Engine engine;
    ui::frmStart splash;
    splash.present();
    QCoreApplication::processEvents();
    splash.grab();
    return millisecondsOf(watch);
}

void print(const char* what, std::vector<double> times)
{
    std::ranges::sort(times);
    const double median = times[times.size() / 2];
    std::printf("%-46s %8.1f %8.0f %8.2f\n", what, median, mostMilliseconds, median / mostMilliseconds);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    if (!writeSettings(folder.path()))
        return 1;
    const bool hasDisplay = QGuiApplication::platformName() == u"xcb"_s;
    std::vector<double> program;
    std::vector<double> forms;
    for (int round = 0; round < rounds; ++round) {
        forms.push_back(measureForms());
        if (!hasDisplay)
            continue;
        program.push_back(measureProgram(folder.path()));
        if (program.back() < 0) {
            std::fprintf(stderr, "the splash did not come, or xdotool is missing\n");
            return 1;
        }
    }
    std::printf("median of %d starts, in milliseconds%s:\n\n", rounds,
                hasDisplay ? "" : "; the program itself needs a display");
    std::printf("%-46s %8s %8s %8s\n", "", "measured", "allowed", "ratio");
    if (hasDisplay) {
        print("from the start of the program to the splash", program);
        std::printf("%-46s %8.1f\n", "  of that one look at the screen", millisecondsOfLooking());
    }
    print("from the first object to the splash as drawn", forms);
    return 0;
}
