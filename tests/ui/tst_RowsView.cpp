#include "ui/lists/RowsView.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace kalmo;
using namespace Qt::StringLiterals;

namespace {

struct ShownList
{
    explicit ShownList(const QStringList& names)
    {
        for (const QString& name : names)
            rows.add({.cells = {{name}}});
        view.resize(400, 300);
        view.setRows(rows);
        view.show();
    }

    QStringList shown() const
    {
        QStringList names;
        for (int row = 0; row < view.model()->rowCount(); ++row)
            names.append(view.model()->index(row, 0).data().toString());
        return names;
    }
    /// What view and list both say; "?" where they differ.
    QString selected() const
    {
        QList<int> onScreen;
        for (const QModelIndex& index : view.selectionModel()->selectedRows())
            onScreen.append(index.row());
        std::sort(onScreen.begin(), onScreen.end());
        QString names;
        for (const int row : rows.selectedRows())
            names += rows.text(row, 0);
        return onScreen == rows.selectedRows() ? names : u"?"_s;
    }
    void clickHead(int column)
    {
        const QHeaderView* head = view.header();
        QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                          QPoint(head->sectionViewportPosition(column) + 5, head->height() / 2));
    }

    toolkit::ListRows rows{u"lvwTest"_s, {{u"Name"_s}, {u"Nummer"_s}}};
    ui::RowsView view;
};

} // namespace

class RowsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headTurnsTheOrderAndKeepsTheSelection();
    void selectionIsOne();
    void rowsComeAndGo();
};

void RowsViewTest::headTurnsTheOrderAndKeepsTheSelection()
{
    ShownList list({u"Zander"_s, u"äpfel"_s, u"Bär"_s});
    list.rows.setCurrent(0);
    list.clickHead(0);
    QCOMPARE(list.shown(), (QStringList{u"äpfel"_s, u"Bär"_s, u"Zander"_s}));
    list.clickHead(0);
    QCOMPARE(list.shown(), (QStringList{u"Zander"_s, u"Bär"_s, u"äpfel"_s}));
    QCOMPARE(list.selected(), u"Zander"_s);
    QCOMPARE(list.view.currentIndex().row(), 0);
    list.clickHead(1);
    list.clickHead(0);
    QCOMPARE(list.shown().first(), u"äpfel"_s);
}

void RowsViewTest::selectionIsOne()
{
    ShownList list({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    list.view.selectAll();
    QCOMPARE(list.selected(), u"abcd"_s);
    list.rows.setSelected(1, false);
    QCOMPARE(list.selected(), u"acd"_s);
    list.view.setCurrentIndex(list.view.model()->index(2, 0));
    QCOMPARE(list.selected(), u"c"_s);
    QCOMPARE(list.rows.current(), 2);
    QSignalSpy opened(&list.view, &ui::RowsView::rowDoubleClicked);
    QTest::keyClick(&list.view, Qt::Key_Return);
    QCOMPARE(opened.value(0), QVariantList{2});
}

void RowsViewTest::rowsComeAndGo()
{
    ShownList list({u"a"_s, u"b"_s, u"c"_s});
    list.view.selectAll();
    list.rows.removeAt(1);
    QCOMPARE(list.selected(), u"ac"_s);
    list.rows.sortBy(0, Qt::AscendingOrder);
    list.rows.add({.cells = {{u"b"_s}}});
    QCOMPARE(list.shown(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(list.selected(), u"ac"_s);
    list.rows.clear();
    QCOMPARE(list.shown(), QStringList());
    QCOMPARE(list.rows.current(), -1);
}

QTEST_MAIN(RowsViewTest)
#include "tst_RowsView.moc"
