// How fast the main window's list is: what a person waits for when a long phonebook is filled in, sorted by a
// click on a column's head, and selected as a whole.

#include "phonedata/ClassicEntry.h"
#include "ui/lists/RowsView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;
using namespace kalmo;

namespace {

constexpr int entries = 5000;
constexpr double mostMilliseconds = 100;

/// Entries in no order, with German letters, so that sorting has its work.
std::vector<toolkit::ListRow> makeRows()
{
    static const QStringList names = {u"Ärzte"_s, u"Bäcker"_s, u"Oma"_s, u"Öhler"_s, u"Straßner"_s, u"Zoë"_s};
    std::vector<toolkit::ListRow> rows;
    for (int index = 0; index < entries; ++index) {
        const int mixed = index * 7919 % entries;
        rows.push_back(phonedata::toRow(
            phonedata::ClassicEntry{.name = names[mixed % names.size()] + QString::number(mixed),
                                    .number = u"0521"_s + QString::number(mixed).rightJustified(6, u'0'),
                                    .date = u"24.12  08:30"_s,
                                    .dateSound = u"Melodie 3"_s}));
    }
    return rows;
}

/// Until the list is on screen again, which is what the user sees.
double millisecondsOf(ui::RowsView& view, const std::function<void()>& action)
{
    QElapsedTimer watch;
    watch.start();
    action();
    QCoreApplication::sendPostedEvents();
    view.viewport()->grab();
    return static_cast<double>(watch.nsecsElapsed()) / 1e6;
}

void printRow(const char* what, double value)
{
    std::printf("%-46s %8.2f %8.0f %8.2f\n", what, value, mostMilliseconds, value / mostMilliseconds);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const auto list = phonedata::makePhonebookRows();
    ui::RowsView view;
    view.resize(900, 600);
    view.setRows(*list);
    view.show();
    QCoreApplication::processEvents();
    auto rows = makeRows();
    const auto clickHead = [&view](int column) { Q_EMIT view.header()->sectionClicked(column); };
    std::printf("%d rows, in milliseconds\n%-46s %8s %8s %8s\n", entries, "", "measured", "allowed", "ratio");
    printRow("filled at once", millisecondsOf(view, [&] { list->addAll(std::move(rows)); }));
    list->clear();
    rows = makeRows();
    printRow("filled row by row, as a phone gives them", millisecondsOf(view, [&] {
                 for (toolkit::ListRow& row : rows)
                     list->add(std::move(row));
             }));
    printRow("sorted by name", millisecondsOf(view, [&] { clickHead(phonedata::NameColumn); }));
    printRow("turned round", millisecondsOf(view, [&] { clickHead(phonedata::NameColumn); }));
    printRow("sorted by number", millisecondsOf(view, [&] { clickHead(phonedata::NumberColumn); }));
    printRow("all selected", millisecondsOf(view, [&] { view.selectAll(); }));
    printRow("sorted with all selected", millisecondsOf(view, [&] { clickHead(phonedata::NameColumn); }));
    return list->selectedRows().size() == entries ? 0 : 1;
}
