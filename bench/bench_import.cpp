// How long the preview of an import takes, against what a plain reader of a scripting language needs for the
// file.

#include "transfer/import/Preview.h"
#include "transfer/import/TextSource.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace Qt::StringLiterals;
using namespace kalmo::transfer;

namespace {

constexpr int rows = 50'000;
constexpr int held = 10'000;
constexpr int runs = 5; // the quickest counts: the others were disturbed

/// A file as mail programs export it: every cell quoted, eight columns, umlauts.
QByteArray exportedFile(int count)
{
    QByteArray file =
        "\"Nachname\",\"Vorname\",\"Firma\",\"Telefon\",\"Tel. (Mobil)\",\"Tel. (B\xFCro)\",\"Email\","
        "\"Jahrestag\"\r\n";
    for (int row = 0; row < count; ++row) {
        const QByteArray number = QByteArray::number(1'000'000 + row);
        file += "\"M\xFCller " + number + "\",\"J\xF6rg\",\"Firma, GmbH\",\"+49 (221) " + number +
                "\",\"0170 / " + number + "\",\"\",\"m" + number + "@example.org\",\"24.12.1970 08:30\"\r\n";
    }
    return file;
}

ExistingEntries heldContacts(int count)
{
    std::vector<QStringList> cells;
    for (int row = 0; row < count; ++row) {
        const QString number = QString::number(1'000'000 + row * 2);
        cells.push_back({u"MÜLLER "_s + number, u"jörg"_s, u"+49221"_s + number, u"0170"_s + number, {}});
    }
    return {Shape::Vcard, cells};
}

double processorMilliseconds()
{
    return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

template <typename Work>
double quickest(Work work)
{
    double best = -1;
    for (int run = 0; run < runs; ++run) {
        const double start = processorMilliseconds();
        if (!work())
            return -1;
        const double taken = processorMilliseconds() - start;
        best = best < 0 ? taken : std::min(best, taken);
    }
    return best;
}

/// The whole way, from the bytes and the held list to the preview.
double previewing(const QByteArray& file, int rowCount, int heldCount)
{
    return quickest([&] {
        const ExistingEntries existing = heldContacts(heldCount);
        ImportOptions options;
        options.text = openText(u"x.csv"_s, file, Shape::Vcard, {.reading = Reading::Simple}).options;
        const Preview preview = RebuildPreview({.path = u"x.csv"_s, .text = file}, Shape::Vcard, options,
                                               existing, QDate(2026, 11, 21));
        return preview.rows.size() == static_cast<size_t>(rowCount) + 1 &&
               preview.existingCount() == std::min(heldCount, rowCount / 2);
    });
}

/// Milliseconds that python3's csv needs for the file, below 0 where it is not installed.
double plainReading(const QByteArray& bytes)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"rows.csv"_s));
    if (QStandardPaths::findExecutable(u"python3"_s).isEmpty() || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size())
        return -1;
    file.close();
    const QString script = u"import csv, sys, time\n"
                           "best = 1e9\n"
                           "for run in range(5):\n"
                           "    start = time.process_time()\n"
                           "    with open(sys.argv[1], encoding='cp1252', newline='') as f:\n"
                           "        rows = list(csv.reader(f))\n"
                           "    best = min(best, time.process_time() - start)\n"
                           "print(best * 1000)\n"_s;
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s, script, file.fileName()});
    python.waitForFinished();
    bool isNumber = false;
    const double milliseconds = python.readAllStandardOutput().trimmed().toDouble(&isNumber);
    return isNumber ? milliseconds : -1;
}

void printLine(const char* what, double value, double allowed)
{
    std::printf("%-58s %8.1f %8.1f %8.2f\n", what, value, allowed, value / allowed);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QByteArray file = exportedFile(rows);
    const double usual = previewing(file, rows, held);
    const double twiceTheRows = previewing(exportedFile(2 * rows), 2 * rows, held);
    const double twiceHeld = previewing(file, rows, 2 * held);
    if (std::min({usual, twiceTheRows, twiceHeld}) < 0) {
        std::fprintf(stderr, "not all rows came out\n");
        return 1;
    }
    std::printf("%-58s %8s %8s %8s\n", "milliseconds of processor time", "measured", "allowed", "ratio");
    printLine("50,000 rows against 10,000 existing contacts", usual, 500);
    printLine("twice the rows", twiceTheRows, 2.5 * usual);
    printLine("twice the existing contacts", twiceHeld, 1.4 * usual);
    const double plain = plainReading(file);
    if (plain > 0)
        printLine("against 18 times python3's csv reader", usual, 18 * plain);
    else
        std::printf("python3 is not installed: not compared with its csv reader\n");
    return 0;
}
