// Measures the cost of a long phonebook: the processor time of reading it, and the time beyond that of the
// protocol itself. The emulated handset is at the other end of a pseudo terminal and paces its bytes to the
// line's rate. It answers at once in one run, and after its usual delay in the other.

#include "Bench.h"
#include "handset/at/AtCommand.h"
#include "phonedata/ClassicPhonebook.h"

#include <QTemporaryDir>

using namespace kalmo;
using namespace kalmo::bench;

namespace {

constexpr int entries = 200;
constexpr int baudRate = 19200;
constexpr int phoneType = 4;
constexpr double mostProcessor = 0.02;
constexpr double mostElapsed = 1.05;

/// Pauses in the reading of a store, in seconds: after opening, after each reply, in closing.
double pausesOfReading(int count)
{
    return 0.5 + (count + 1) * 0.1 + 3.5;
}

/// Seconds that the emulated handset thinks about its answers.
double thinkingSeconds(int count)
{
    double seconds = 0;
    for (const handset::AtCommand& command : handset::storeCommands()) {
        if (QByteArrayView(command.name) == QByteArrayView("^WSRE"))
            seconds += (count + 1) * command.seconds;
        else if (QByteArrayView(command.name) == QByteArrayView("^WSSL") &&
                 command.forms == handset::Form::Set)
            seconds += command.seconds;
    }
    return seconds;
}

/// Reads the phonebook and prints what it cost; false if it did not come whole.
bool measure(bool thinks)
{
    const QTemporaryDir folder;
    const QString device = folder.filePath(u"line"_s);
    QStringList arguments{u"--model"_s, u"PICASSO"_s, u"--entries"_s, QString::number(entries)};
    if (!thinks)
        arguments.append(u"--at-once"_s);
    const HandsetProcess handset(device, arguments);
    Engine engine(folder.path(), phoneType);
    if (!handset.isReady || !engine.open(device, baudRate))
        return false;
    phonedata::PhoneMemory memory;
    const auto list = phonedata::makePhonebookRows();
    const Watch watch(engine.port);
    const bool done = phonedata::ReadPB_TB({engine.line, memory, list.get(), nullptr, {}});
    const double elapsed = watch.elapsed();
    const double processor = watch.processor();
    const double pauses = pausesOfReading(entries);
    const double onTheLine = watch.bytes() * bitsPerByte / baudRate;
    const double thinking = thinks ? thinkingSeconds(entries) : 0;
    const QString manner = thinks ? u"handset thinks %1 s"_s.arg(thinking) : u"handset answers at once"_s;
    std::printf("%s: %.2f s, of which %.2f s pauses of the protocol, %.2f s bytes on the line\n",
                qPrintable(manner), elapsed, pauses, onTheLine);
    printRow(u"  processor time, as a share of the time elapsed"_s, processor / elapsed, mostProcessor);
    printRow(u"  time elapsed, over pauses and bytes"_s, elapsed / (pauses + onTheLine), mostElapsed);
    if (thinks)
        printRow(u"  the same with the handset's thinking"_s, elapsed / (pauses + onTheLine + thinking),
                 mostElapsed);
    return done && list->count() == entries;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::printf("%d entries at %d baud\n\n", entries, baudRate);
    printHeading();
    if (measure(false) && measure(true))
        return 0;
    std::fprintf(stderr, "the phonebook could not be read\n");
    return 1;
}
