#pragma once

#include "obex/clsMmc.h"
#include "ui/lists/RowsView.h"
#include "ui/panels/fraFFS.h"
#include "ui/TestProgram.h"

#include <algorithm>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

/// The file system panel, online to the emulated handset in this folder, with a folder for downloads.
struct FilePanel : TestProgram
{
    explicit FilePanel(const QString& folder = {}, const handset::Options& options = {},
                       const QString& model = u"S68H"_s)
        : TestProgram(model, options), mmc(std::make_shared<obex::clsMmc>(line)),
          panel(program, mmc, progress.all())
    {
        mmc->Online(progress.all());
        QDir().mkpath(target);
        press("refresh");
        if (!folder.isEmpty())
            enter(u"FOL_"_s + folder);
    }
    ~FilePanel() { mmc->Offline(progress.all()); }

    void press(const char* key)
    {
        auto& bar = child<QToolBar>(panel, "tlbFFS");
        QTest::keyClick(bar.widgetForAction(&child<QAction>(bar, key)), Qt::Key_Space);
    }
    void enter(const QString& key)
    {
        Q_EMIT child<ui::RowsView>(panel, "lvwFFs").rowDoubleClicked(panel.lvwFFs().indexOfKey(key));
    }
    void select(const QStringList& keys)
    {
        for (int row = 0; row < panel.lvwFFs().count(); ++row)
            panel.lvwFFs().setSelected(row, false);
        for (const QString& key : keys)
            panel.lvwFFs().setSelected(panel.lvwFFs().indexOfKey(key), true);
    }
    QString shown()
    {
        QStringList keys;
        for (int row = 0; row < panel.lvwFFs().count(); ++row)
            keys.append(panel.lvwFFs().row(row).key);
        return keys.join(u' ');
    }
    ui::RowsView& list() { return child<ui::RowsView>(panel, "lvwFFs"); }
    void show()
    {
        panel.show();
        panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        list().setFocus();
    }
    /// Presses a key where the user would: in the list, which has to have the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        QCOMPARE(panel.focusWidget(), &list());
        QTest::keyClick(&list(), key, modifiers);
    }
    /// Does this in the next dialog of that name.
    void inDialog(const QString& name, const std::function<void(QWidget& dialog)>& action)
    {
        auto* timer = new QTimer(&panel);
        QObject::connect(timer, &QTimer::timeout, timer, [this, timer, name, action] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog || dialog->objectName() != name)
                return;
            delete timer;
            ++dialogs;
            action(*dialog);
        });
        timer->start(0);
    }
    void giveName(const QString& name)
    {
        inDialog(u"dlgName"_s, [name](QWidget& dialog) {
            auto* field = dialog.findChild<QLineEdit*>();
            field->selectAll();
            QTest::keyClicks(field, name);
            QTest::keyClick(field, Qt::Key_Return);
        });
    }
    QString path() { return child<QLineEdit>(panel, "txtFFscDirAct").text(); }
    QString status() const { return progress.panel.Text(); }
    QString current() { return panel.lvwFFs().row(panel.lvwFFs().current()).key; }
    QStringList saved() const { return QDir(target).entryList(QDir::Files); }
    void save(int item)
    {
        press("save");
        auto& menu = child<QMenu>(panel, "mnuFFSsave");
        const QAction* entry = menu.actions().at(item);
        for (int row = 0; row <= item && menu.activeAction() != entry; ++row)
            QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    }
    void expectTarget()
    {
        test.dialogs.expectPickFolder(u"Zielordner für Download auswählen"_s, QString(), target);
    }
    /// The user picks these files, for what the panel asks for.
    void choose(const QStringList& files)
    {
        panel.setUploadChooser([files](const ui::UploadQuestion& question) {
            return ui::UploadChoice{files, {.phoneType = question.phoneType, .kind = question.kind}};
        });
    }
    /// Bytes of a file in the phone's folder that the client is in.
    QByteArray held(const QString& name)
    {
        QByteArray bytes;
        mmc->GetFile(name, bytes, progress.all());
        return bytes;
    }
    void setFaults(const handset::Faults& faults = {}) { port.handset().setFaults(faults); }
    /// Number of requests since setFaults().
    int requests() { return port.handset().phone().faults.requests; }
    /// Asserts that the bar only moved on, from the first file to the last, and went then.
    void requireOneBar()
    {
        const QStringList& steps = progress.bar.steps;
        QList<int> thousandths;
        for (const QString& step : steps.filter(u"/1000"_s))
            thousandths.append(step.section(u'/', 0, 0).toInt());
        QVERIFY(thousandths.size() > 2 && std::ranges::is_sorted(thousandths));
        QVERIFY(thousandths.first() == 0 && thousandths.last() == 1000);
        QCOMPARE(steps.indexOf(u"hidden"_s, steps.indexOf(u"0/1000"_s)),
                 steps.lastIndexOf(u"1000/1000"_s) + 1);
    }
    void expect(const QString& text) { test.dialogs.expect(Icon::Exclamation, text); }
    void expectRefusal(int request, const QString& report = {})
    {
        port.handset().setFaults({.refuseAt = request});
        expect(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"
               u"ReCode: 403 Forbidden - operation is understood but refused"_s +
               report);
    }
    void ask(const QString& text, Answer answer, Buttons buttons = Buttons::YesNoCancel)
    {
        test.dialogs.expect(
            {.text = text, .buttons = buttons, .icon = Icon::Question, .defaultButton = Answer::No}, answer);
    }

    std::shared_ptr<obex::clsMmc> mmc;
    ui::fraFFS panel;
    int dialogs = 0; ///< that came and were answered
    QString target = test.path(u"Ziel"_s);
};

} // namespace kalmo::tests
