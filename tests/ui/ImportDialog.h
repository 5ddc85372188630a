#pragma once

#include "app/Files.h"
#include "phonedata/StoreTraits.h"
#include "phonedata/VcardStore.h"
#include "ui/import/frmImportPb.h"
#include "ui/TestProgram.h"

namespace kalmo::tests {

using namespace Qt::StringLiterals;

/// The dialog on a program of fakes.
struct ImportDialog : TestProgram
{
    explicit ImportDialog(const QString& model, ui::ImportFrom from = ui::ImportFrom::File)
        : TestProgram(model)
    {
        test.clock.runToolkitEvents(true);
        if (test.sy.PhoneType >= 5) {
            store = std::make_shared<phonedata::VcardStore>(std::make_shared<obex::clsMmc>(line), *contacts);
            store->VcfReadList(progress.all());
        }
        app::SetLastInitDir(test.context, u"frmImportPb_Wab"_s, test.storage); // not that of other files
        form = std::make_unique<ui::frmImportPb>(
            program, ui::ImportLists{.lvwTB = phonebook.get(), .lvwNE = providers.get(), .store = store},
            from);
        form->show();
        QApplication::setActiveWindow(form.get());
    }

    QTreeView& view() { return child<QTreeView>(*form, store ? "lvwVCF" : "lvwPreview"); }
    void click(const char* name) { tests::click(*form, name); }
    QString textOf(const char* label) { return tests::textOf(*form, label); }
    /// Chooses a file by the button's menu.
    void open(const QByteArray& bytes, const QString& name = u"a.csv"_s, const QString& box = {})
    {
        choose(test.makeFile(name, bytes), box);
    }
    void choose(const QString& path, const QString& box = {})
    {
        test.dialogs.expectOpenFile(
            {.title = u"Kalmo - Datei importieren"_s,
             .folder = app::GetLastInitDir(test.context, u"frmImportPb"_s),
             .types = {{u"Importdateien (*.csv; *.txt; *.tel)"_s, {u"*.csv"_s, u"*.txt"_s, u"*.tel"_s}},
                       {u"Alle Dateien (*.*)"_s, {u"*"_s}}}},
            path);
        if (!box.isEmpty())
            test.dialogs.expectStart(box);
        child<QMenu>(*form, "mnuOpen").actions().first()->trigger();
    }
    void expectBook(const QString& path)
    {
        test.dialogs.expectOpenFile({.title = u"Kalmo - Adressbuch öffnen"_s,
                                     .folder = app::GetLastInitDir(test.context, u"frmImportPb_Wab"_s),
                                     .types = {{u"Adressbücher (*.wab; *.vcf)"_s, {u"*.wab"_s, u"*.vcf"_s}},
                                               {u"Alle Dateien (*.*)"_s, {u"*"_s}}}},
                                    path);
    }
    /// Rows as "x Meier|030".
    QStringList rows()
    {
        const QAbstractItemModel& model = *view().model();
        QStringList lines;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells.append(model.index(row, column).data().toString());
            const bool checked = model.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
            lines.append((checked ? u"x "_s : u"- "_s) + cells.join(u'|'));
        }
        return lines;
    }
    /// Clicks the check box of a row.
    void tick(int row)
    {
        const QRect cell = view().visualRect(view().model()->index(row, 0));
        QStyleOptionViewItem option;
        option.initFrom(&view());
        option.rect = cell;
        option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
        const QRect box =
            view().style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view());
        QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, box.center());
    }

    std::unique_ptr<toolkit::ListRows> phonebook = phonedata::makePhonebookRows();
    std::unique_ptr<toolkit::ListRows> providers = phonedata::makeProviderRows();
    std::unique_ptr<toolkit::ListRows> contacts = phonedata::makeVcfRows();
    std::shared_ptr<phonedata::VcardStore> store;
    std::unique_ptr<ui::frmImportPb> form;
};

} // namespace kalmo::tests
