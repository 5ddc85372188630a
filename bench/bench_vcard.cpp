// How long contacts and folder listings keep the user waiting once their bytes are there.

#include "app/CodePage.h"
#include "app/Utf8Small.h"
#include "handset/irmc/ContactCard.h"
#include "handset/state/GeneratedEntries.h"
#include "obex/FolderListing.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfText.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace kalmo;

namespace {

constexpr int cards = 10000;
constexpr int listed = 2000;
constexpr int runs = 5; // the quickest counts: the others were disturbed

QByteArray phonebook(int count, handset::CardText form)
{
    QByteArray text = handset::cardText({}, {}, form);
    for (int index = 0; index < count; ++index)
        text += handset::cardText(handset::generatedContact(index), QString::number(index), form);
    return text;
}

/// From the phone's bytes to the rows of the list, as the store does it.
bool decode(const QByteArray& bytes, int count)
{
    std::vector<toolkit::ListRow> rows;
    for (const phonedata::ContactCard& card : phonedata::parseCards(bytes).cards)
        rows.push_back(phonedata::toRow(card.entry));
    const auto list = phonedata::makeVcfRows();
    list->addAll(std::move(rows));
    return list->count() == count;
}

QByteArray listing(int count)
{
    QByteArray text = "<?xml version=\"1.0\"?>\r\n<folder-listing version=\"1.0\">\r\n";
    for (int index = 0; index < count; ++index)
        text +=
            "<file name=\"K\xC3\xBCste " + QByteArray::number(index) +
            ".png\" size=\"48123\" modified=\"20261121T164606\" user-perm=\"RWD\" group-perm=\"R\" />\r\n";
    return text + "</folder-listing>";
}

bool parse(const QByteArray& bytes, int count)
{
    const QString text = app::UFT8Dec(app::fromCp1252(bytes));
    return obex::parseFolderListing(text, obex::rootPath()).size() == count;
}

/// Milliseconds of the quickest run; below 0 if a run gave a wrong result.
template <typename Work>
double quickest(Work work)
{
    double best = -1;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer watch;
        watch.start();
        if (!work())
            return -1;
        const double elapsed = static_cast<double>(watch.nsecsElapsed()) / 1e6;
        best = best < 0 ? elapsed : std::min(best, elapsed);
    }
    return best;
}

double decoding(int count, handset::CardText form)
{
    const QByteArray bytes = phonebook(count, form);
    return quickest([&] { return decode(bytes, count); });
}

void printRow(const char* what, double value, double allowed)
{
    std::printf("%-46s %8.2f %8.2f %8.2f\n", what, value, allowed, value / allowed);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const double raw = decoding(cards, handset::CardText::Raw);
    const double quoted = decoding(cards, handset::CardText::QuotedPrintable);
    const double twice = decoding(2 * cards, handset::CardText::QuotedPrintable);
    const QByteArray entries = listing(listed);
    const double list = quickest([&] { return parse(entries, listed); });
    if (std::min({raw, quoted, twice, list}) < 0) {
        std::fprintf(stderr, "not all entries came out\n");
        return 1;
    }
    std::printf("%-46s %8s %8s %8s\n", "milliseconds", "measured", "allowed", "ratio");
    printRow("10,000 cards into rows", raw, 200);
    printRow("10,000 quoted-printable cards into rows", quoted, 200);
    printRow("20,000 of them", twice, 2.2 * quoted);
    printRow("2,000 entries of a folder listing", list, 10);
    return 0;
}
