// The view of a list: order, selection, search and keys.

#include "app/mdlRegIni.h"
#include "support/TestProgram.h"
#include "ui/icons/Icons.h"
#include "ui/lists/ListLayout.h"
#include "ui/lists/RowPlace.h"
#include "ui/lists/RowsView.h"
#include "ui/lists/SearchLine.h"

#include <algorithm>

namespace {

struct ShownList
{
    explicit ShownList(const QStringList& names)
    {
        for (const QString& name : names)
            rows.add({.cells = {{name}}});
        view.resize(600, 300);
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
    /// The selection, if view and list agree on it; "?" where they differ.
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

    toolkit::ListRows rows{u"lvwTest"_s,
                           {{u"Name"_s}, {u"Nummer"_s, toolkit::SortBy::Text, true}, {u"Ort"_s}}};
    ui::RowsView view;
};

/// Makes each letter begin a new word.
struct PauseAfterEachLetter
{
    PauseAfterEachLetter() { QGuiApplication::styleHints()->setKeyboardInputInterval(0); }
    ~PauseAfterEachLetter() { QGuiApplication::styleHints()->setKeyboardInputInterval(interval); }
    const int interval = QGuiApplication::styleHints()->keyboardInputInterval();
};

} // namespace

class RowsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headTurnsTheOrderAndKeepsTheSelection()
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

    /// Of the view and the list, however rows come and go.
    void selectionIsOne()
    {
        ShownList list({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
        list.view.selectAll();
        list.rows.removeAt(1);
        QCOMPARE(list.selected(), u"acd"_s);
        list.rows.setSelected(2, false);
        list.rows.sortBy(0, Qt::AscendingOrder);
        list.rows.add({.cells = {{u"b"_s}}});
        QCOMPARE(list.shown().join(u' ') + u": "_s + list.selected(), u"a b c d: ac"_s);
        list.view.setCurrentIndex(list.view.model()->index(2, 0));
        QCOMPARE(list.selected() + QString::number(list.rows.current()), u"c2"_s);
        QSignalSpy opened(&list.view, &ui::RowsView::rowDoubleClicked);
        QTest::keyClick(&list.view, Qt::Key_Return);
        QCOMPARE(opened.value(0), QVariantList{2});
        list.rows.clear();
        QVERIFY(list.shown().isEmpty() && list.rows.current() == -1);
    }

    /// A command must not act on what a search hides.
    void searchHidesRows()
    {
        ShownList list({u"Ötzi"_s, u"Bär"_s, u"Otter"_s});
        ui::SearchLine line(list.view);
        line.show();
        auto& field = *line.findChild<QLineEdit*>(u"txtSearch"_s);
        const auto& count = *line.findChild<QLabel*>(u"lblSearchCount"_s);
        const QSignalSpy opened(&list.view, &ui::RowsView::rowDoubleClicked);
        list.rows.setCurrent(1);
        list.view.selectAll();
        list.view.wantSearch();
        QTest::keyClicks(&field, u"ot"_s);
        QCOMPARE(count.text(), u"2 von 3"_s);
        QCOMPARE(list.selected(), u"ÖtziOtter"_s);
        QCOMPARE(list.rows.current(), -1);
        list.rows.add({.cells = {{u"Otto"_s}}});
        list.rows.add({.cells = {{u"Ina"_s}}});
        list.rows.sortBy(0, Qt::AscendingOrder);
        QCOMPARE(count.text(), u"3 von 5"_s);
        list.rows.selectAll(false);
        QTest::keyClick(&field, Qt::Key_Down);
        QCOMPARE(list.selected(), u"Otter"_s);
        list.view.selectAll();
        QCOMPARE(list.selected(), u"OtterOttoÖtzi"_s);
        QTest::keyClick(&field, Qt::Key_Escape);
        QCOMPARE(field.text(), QString());
        QCOMPARE(list.view.shownRows(), 5);
        QTest::keyClicks(&field, u"zzz"_s);
        QCOMPARE(list.selected(), QString());
        QTest::keyClick(&field, Qt::Key_Return);
        QTest::keyClick(&list.view, Qt::Key_Return);
        QVERIFY(opened.isEmpty());
        list.rows.setCurrent(0);
        QCOMPARE(list.selected(), u"Bär"_s);
        QCOMPARE(field.text(), QString());
    }

    void deletionLeadsToTheNextShownRow()
    {
        ShownList list({u"Sonne"_s, u"Adam"_s, u"Sommer"_s, u"Berg"_s, u"Sohn"_s});
        list.view.setFilter(u"so"_s);
        list.rows.setCurrent(2);
        QStringList places;
        for (int row = 2; row >= 0; row = list.rows.current()) {
            list.rows.removeAt(row);
            places.append(list.rows.current() < 0 ? u"-"_s : list.rows.text(list.rows.current(), 0));
        }
        QCOMPARE(places, QStringList({u"Sohn"_s, u"Sonne"_s, u"-"_s}));
        QCOMPARE(list.selected(), QString());
        QVERIFY(list.view.isFiltered() && list.view.shownRows() == 0);
    }

    /// Rows without keys are found by their texts.
    void placeOutlivesAReading()
    {
        const QStringList before{u"Sonne"_s, u"Sohn"_s, u"Adam"_s, u"Sohn"_s, u"Sommer"_s};
        const Rows<QString, int, QStringList, QString> rows{
            {"one more before", {}, 3, {u"Neu"_s, u"Sonne"_s, u"Sohn"_s, u"Adam"_s, u"Sohn"_s}, u"4: Sohn"_s},
            {"gone", {}, 2, {u"Sonne"_s, u"Sohn"_s, u"Sohn"_s}, u"2: "_s},
            {"the last is gone", {}, 4, {u"Sonne"_s}, u"0: "_s},
            {"a hidden one follows", u"so"_s, 3, {u"Sonne"_s, u"Sohn"_s, u"Adam"_s, u"Berg"_s}, u"1: "_s},
            {"not found now", u"so"_s, 4, {u"Zander"_s, u"Adam"_s}, u"-1: "_s},
        };
        rows.each([&](const auto& search, int current, const auto& after, const auto& expected) {
            ShownList list(before);
            list.view.setFilter(search);
            list.rows.setCurrent(current);
            ui::RowPlace place(list.rows);
            list.rows.clear();
            for (const QString& name : after)
                list.rows.add({.cells = {{name}}});
            place.restore();
            QCOMPARE(u"%1: %2"_s.arg(list.rows.current()).arg(list.selected()), expected);
            QCOMPARE(list.view.isFiltered(), !search.isEmpty());
        });
    }

    void lettersLeadToNames()
    {
        ShownList list({u"Adam"_s, u"Müller"_s, u"Mutter"_s, u"Meier"_s, u"von Aa"_s, u"von der Ah"_s});
        list.rows.add({.cells = {{}, {u"Ötzi"_s}}}); // a contact with a first name alone
        QTest::keyClicks(&list.view, u"mut"_s);
        QCOMPARE(list.selected(), u"Mutter"_s);
        const PauseAfterEachLetter pauses;
        QTest::keyClicks(&list.view, u"o"_s);
        QCOMPARE(list.rows.current(), 6);
        QTest::keyClicks(&list.view, u"v"_s);
        QCOMPARE(list.selected(), u"von Aa"_s);
        QGuiApplication::styleHints()->setKeyboardInputInterval(pauses.interval);
        QTest::keyClicks(&list.view, u"on d"_s);
        QCOMPARE(list.selected(), u"von der Ah"_s);
        QGuiApplication::styleHints()->setKeyboardInputInterval(0);
        list.rows.setCurrent(2);
        QTest::keyClicks(&list.view, u"m"_s);
        QCOMPARE(list.selected(), u"Meier"_s);
        QTest::keyClicks(&list.view, u"m"_s);
        QCOMPARE(list.selected(), u"Müller"_s);
        list.view.setFilter(u"e"_s);
        QTest::keyClicks(&list.view, u"a"_s); // hidden
        QCOMPARE(list.selected(), u"Müller"_s);
    }

    void selectedRowsAreCopied()
    {
        ShownList list({u"a"_s, u"b\tc"_s, u"d"_s});
        list.rows.setText(1, 1, u"0521"_s);
        list.view.setRowFormat({.mediaType = u"text/vcard"_s, .bytesOf = [](const toolkit::ListRow& row) {
                                    return row.text(0).toUtf8() + ';';
                                }});
        list.rows.setCurrent(0);
        list.rows.setSelected(1, true);
        QTest::keySequence(&list.view, QKeySequence::Copy);
        const QMimeData& copied = *QGuiApplication::clipboard()->mimeData();
        QCOMPARE(copied.text(), u"a\t\t\nb c\t0521\t\n"_s);
        QCOMPARE(copied.data(u"text/vcard"_s), QByteArray("a;b\tc;"));
    }

    void layoutOutlivesTheView()
    {
        QTemporaryDir folder;
        app::Sy sy;
        sy.Paths.Storage = folder.path();
        QDir(folder.path()).mkdir(u"config"_s);
        app::Settings settings(sy);
        {
            ShownList list({u"b"_s, u"a"_s});
            list.view.setColumnWidth(0, 123);
            list.view.header()->moveSection(2, 1);
            list.clickHead(0);
            list.clickHead(0);
            list.rows.setSorted(false); // as a listing of files ends
            ui::saveListLayout(list.view, settings);
        }
        ShownList list({u"a"_s, u"b"_s});
        ui::restoreListLayout(list.view, settings);
        QCOMPARE(list.view.columnWidth(0), 123);
        QCOMPARE(list.shown(), (QStringList{u"b"_s, u"a"_s}));
        QCOMPARE(list.view.header()->sortIndicatorOrder(), Qt::DescendingOrder);
        QCOMPARE(list.view.header()->logicalIndex(1), 2);
        for (const QString& broken : {u"123"_s, u"5|-3|5"_s, u"a|b|c"_s, u"99999999|50|50"_s, u"0|1|1"_s}) {
            for (const QString& key : {u"Columns"_s, u"Places"_s, u"Order"_s})
                settings.PutIniText(u"frmPB"_s, u"lvwTest_"_s + key, broken);
            ui::restoreListLayout(list.view, settings);
            QCOMPARE(list.view.columnWidth(0), 123);
            QCOMPARE(list.view.header()->logicalIndex(1), 2);
        }
    }

    void screenReadersGetThePaintedText()
    {
        ShownList list({});
        const auto told = [&list] { return list.view.accessibleDescription(); };
        const QString nothingFound = u"Nichts gefunden. Esc zeigt wieder alle."_s;
        list.view.setPlaceholder(u"leer"_s);
        QStringList found{told()};
        list.rows.addAll({{.cells = {{u"a"_s}}}, {.cells = {{u"b"_s}}}});
        found.append(told());
        list.view.setPlaceholder(u"gelesen"_s);
        list.view.setNote(u"unten"_s);
        found.append(told());
        list.view.setFilter(u"c"_s);
        found.append(told());
        list.rows.add({.cells = {{u"c"_s}}});
        found.append(told());
        list.rows.removeAt(2);
        found.append(told());
        list.view.setFilter({});
        list.view.setNote({});
        list.rows.clear();
        found.append(told());
        QCOMPARE(
            found,
            (QStringList{u"leer"_s, {}, u"unten"_s, nothingFound, u"unten"_s, nothingFound, u"gelesen"_s}));
    }

    /// A double click beside a head makes its column as wide as its widest cell.
    void cellsFitOrHaveAToolTip()
    {
        const QString wide = u"Urlaub im Sommer am Meer "_s;
        Rows<int, QString, int> rows{
            {"text", 0, {}, 16}, {"picture", 0, u"folder"_s, 28}, {"number", 1, {}, 28}};
        rows.each([&](const auto& column, const auto& picture, const auto& pixels) {
            ShownList list({});
            list.view.setIconSource([](const toolkit::ListRow& row) { return ui::icon(row.icon); });
            list.view.setPictureSize(pixels);
            const QString text = wide + QString::number(column) + picture;
            list.rows.add({.cells = {{}, {}, {}}, .icon = picture});
            list.rows.setText(0, column, text);
            const auto isShownWhole = [&] {
                const QModelIndex cell = list.view.model()->index(0, column);
                const QPoint at = list.view.visualRect(cell).center();
                QHelpEvent help(QEvent::ToolTip, at, list.view.viewport()->mapToGlobal(at));
                QCoreApplication::sendEvent(list.view.viewport(), &help);
                return QToolTip::text() != text;
            };
            list.view.setColumnWidth(column, 60);
            QVERIFY(!isShownWhole());
            QToolTip::showText({}, u"?"_s);
            const QHeaderView* head = list.view.header();
            const QPoint divider(head->sectionViewportPosition(column) + 59, head->height() / 2);
            QTest::mouseMove(head->viewport(), divider);
            QTest::mouseDClick(head->viewport(), Qt::LeftButton, {}, divider);
            const int width = list.view.columnWidth(column);
            QVERIFY(width >
                    list.view.fontMetrics().horizontalAdvance(text) + (picture.isEmpty() ? 0 : pixels));
            QVERIFY(isShownWhole());
            list.view.setColumnWidth(column, width - 1);
            QVERIFY(!isShownWhole());
            QCOMPARE(list.view.visualRect(list.view.model()->index(0, 0)).height(),
                     std::max(list.view.fontMetrics().height(), pixels) + 8);
        });
    }
};

KALMO_TEST(RowsViewTest)
#include "tst_RowsView.moc"
