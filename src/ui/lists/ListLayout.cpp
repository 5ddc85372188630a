#include "ui/lists/ListLayout.h"

#include "ui/lists/RowsView.h"

#include <QHeaderView>
#include <QSplitter>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

const QString mainSection = u"frmPB"_s;
constexpr int narrowest = 16; // least pixels of a column or a pane, so that the user can find it
constexpr int widest = 10000;

QString joined(const QList<int>& numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(u'|');
}

/// So many numbers. Gives none if the text holds more, fewer or something else.
QList<int> readNumbers(const app::Settings& settings, const QString& section, const QString& key,
                       qsizetype count)
{
    QList<int> numbers;
    for (const QString& text : settings.GetIniText(section, key).split(u'|')) {
        bool isNumber = false;
        numbers.append(text.toInt(&isNumber));
        if (!isNumber)
            return {};
    }
    return numbers.size() == count ? numbers : QList<int>();
}

QList<int> readWidths(const app::Settings& settings, const QString& section, const QString& key,
                      qsizetype count)
{
    const QList<int> widths = readNumbers(settings, section, key, count);
    const bool makeSense =
        std::ranges::all_of(widths, [](int width) { return width >= narrowest && width <= widest; });
    return makeSense ? widths : QList<int>();
}

/// The columns from left to right. None if one is missing.
QList<int> readColumns(const app::Settings& settings, const QString& section, const QString& key, int count)
{
    const QList<int> columns = readNumbers(settings, section, key, count);
    for (int column = 0; column < count; ++column) {
        if (!columns.contains(column))
            return {};
    }
    return columns;
}

} // namespace

void saveColumns(const QTreeView& view, app::Settings& settings, const QString& section)
{
    QList<int> widths;
    QList<int> columns;
    for (int place = 0; place < view.header()->count(); ++place) {
        widths.append(view.columnWidth(place));
        columns.append(view.header()->logicalIndex(place));
    }
    settings.PutIniText(section, view.objectName() + u"_Columns"_s, joined(widths));
    settings.PutIniText(section, view.objectName() + u"_Places"_s, joined(columns));
}

void restoreColumns(QTreeView& view, const app::Settings& settings, const QString& section)
{
    const int count = view.header()->count();
    const QList<int> widths = readWidths(settings, section, view.objectName() + u"_Columns"_s, count);
    for (int column = 0; column < widths.size(); ++column)
        view.setColumnWidth(column, widths[column]);
    const QList<int> columns = readColumns(settings, section, view.objectName() + u"_Places"_s, count);
    for (int place = 0; place < columns.size(); ++place)
        view.header()->moveSection(view.header()->visualIndex(columns[place]), place);
}

void saveListLayout(const RowsView& view, app::Settings& settings)
{
    saveColumns(view, settings, mainSection);
    const toolkit::ListRows* rows = view.rows();
    if (rows && rows->sortColumn() >= 0) // also of a list that is sorted at each listing only
        settings.PutIniText(mainSection, view.objectName() + u"_Order"_s,
                            joined({rows->sortColumn(), rows->sortOrder() == Qt::AscendingOrder ? 0 : 1}));
}

void restoreListLayout(RowsView& view, const app::Settings& settings)
{
    restoreColumns(view, settings, mainSection);
    const QList<int> order = readNumbers(settings, mainSection, view.objectName() + u"_Order"_s, 2);
    if (!order.isEmpty() && order[0] >= 0 && order[0] < view.header()->count())
        view.sortBy(order[0], order[1] == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void saveSplitter(const QSplitter& splitter, app::Settings& settings)
{
    settings.PutIniText(mainSection, splitter.objectName(), joined(splitter.sizes()));
}

void restoreSplitter(QSplitter& splitter, const app::Settings& settings)
{
    const QList<int> sizes = readWidths(settings, mainSection, splitter.objectName(), splitter.count());
    if (!sizes.isEmpty())
        splitter.setSizes(sizes);
}

} // namespace kalmo::ui
