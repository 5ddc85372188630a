#pragma once

#include "ui/lists/RowsView.h"
#include "ui/TestProgram.h"
#include "ui/window/ClassicWords.h"
#include "ui/window/frmPB.h"
#include "ui/window/NaviTree.h"
#include "ui/window/PanelStack.h"

namespace kalmo::tests {

using namespace Qt::StringLiterals;

/// The main window, with an emulated handset on its line.
struct OpenWindow : TestProgram
{
    explicit OpenWindow(const QString& model, const handset::Options& options = {},
                        toolkit::Dialogs* user = nullptr)
        : TestProgram(model, options, user), mmc(std::make_shared<obex::clsMmc>(line)), window(program, mmc)
    {
        QDir(test.storage).mkpath(u"Backup"_s);
        test.clock.runToolkitEvents(true);
        window.show();
        QCoreApplication::processEvents();
    }

    /// In the section of that node.
    OpenWindow(const QString& model, const QString& node, const handset::Options& options = {})
        : OpenWindow(model, options)
    {
        window.goTo(node);
    }

    /// Clicks a button of the toolbar.
    void press(const char* key)
    {
        auto& bar = child<QToolBar>(window, "tlb");
        QTest::mouseClick(bar.widgetForAction(&child<QAction>(window, key)), Qt::LeftButton);
    }
    ui::RowsView& list(const char* name) { return child<ui::RowsView>(window, name); }
    int count(const char* name) { return list(name).rows()->count(); }
    QString front()
    {
        const auto* place = child<QWidget>(window, "reminders").findChild<QStackedLayout*>();
        return place->parentWidget()->isHidden() ? QString() : place->currentWidget()->objectName();
    }
    QString node() { return child<ui::NaviTree>(window, "tvwNavi").currentKey(); }
    QString status() { return textOf(window, "sta_text"); }
    QString panel() { return window.findChild<ui::PanelStack*>()->currentWidget()->objectName(); }
    QString offered()
    {
        QString keys;
        for (const ui::CommandRow& row : ui::commandTable()) {
            if (child<QAction>(window, row.key.toLatin1().constData()).isEnabled())
                keys += row.key.first(2);
        }
        return keys;
    }
    void expectUnsavedChanges(Answer answer)
    {
        test.dialogs.expect(question(ui::unsavedChangesText(phonedata::Store::Phonebook)), answer);
    }
    void deleteFirst(const char* name)
    {
        list(name).rows()->setCurrent(0);
        test.dialogs.expect(question(u"1 Einträge wirklich löschen?"_s), Answer::Yes);
        QTest::keyClick(&list(name), Qt::Key_Delete);
    }
    /// Presses Escape as soon as that is so.
    void stopWhen(const std::function<bool()>& isTime)
    {
        test.clock.after(0.02, [this, isTime] {
            if (isTime())
                QTest::keyClick(&window, Qt::Key_Escape);
            else
                stopWhen(isTime);
        });
    }
    int entriesInPhone() { return static_cast<int>(port.handset().phone().phonebook.entries.size()); }
    int contactsInPhone()
    {
        return static_cast<int>(port.handset().phone().irmc[handset::ContactStore].items().size());
    }

    std::shared_ptr<obex::clsMmc> mmc;
    ui::frmPB window;
};

} // namespace kalmo::tests
