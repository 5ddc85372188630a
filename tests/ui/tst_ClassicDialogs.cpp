// The dialogs of the classic lists: what their fields take, and what a save makes of the list.

#include "support/TestProgram.h"
#include "ui/forms/frmNEentry.h"
#include "ui/forms/frmTBentry.h"
#include "ui/lists/RowsView.h"
#include "ui/TestProgram.h"

using phonedata::ClassicEntry;
using phonedata::ProviderEntry;
using Entries = std::vector<ClassicEntry>;

class ClassicDialogs : public QObject
{
    Q_OBJECT

    static void save(TestProgram& made, QDialog& form, const QString& complaint = {})
    {
        if (!complaint.isEmpty())
            made.test.dialogs.expect(Icon::Information, complaint);
        child<QPushButton>(form, "cmdSpeicher").click();
    }

private Q_SLOTS:
    void fields()
    {
        struct Row
        {
            const char* field;
            QString typed, pasted, stands;
        };
        const Row rows[] = {{"txtNr", u"+0p1R2r+"_s, {}, u"+0P1R2R"_s},
                            {"txtNr", {}, u"12a45"_s, u"12"_s},
                            {"txtNr", {}, u"+49 (30) 123"_s, u"+49"_s},
                            {"txtNr", {}, QString(40, u'7'), QString(32, u'7')},
                            {"txtName", u"Jo[b"_s, u"Großmann€uro"_s, u"JobGroßmann"_s}};
        TestProgram made(u"WOODY"_s);
        const auto list = phonedata::makePhonebookRows();
        for (const Row& row : rows) {
            ui::frmTBentry form(made.program, *list);
            auto& edit = child<QLineEdit>(form, row.field);
            QTest::keyClicks(&edit, row.typed);
            edit.insert(row.pasted);
            QCOMPARE(edit.text(), row.stands);
            QCOMPARE(edit.cursorPosition(), static_cast<int>(row.stands.size()));
        }
    }

    void whatIsLoadedIsSaved()
    {
        const Entries entries = {
            {u"Plain"_s, u"1"_s, {}, {}, {}, {}, u"7"_s},
            {u"All"_s, u"+1"_s, u"24.12  19:30"_s, u"Melodie 3"_s, u"Ja"_s, u"Optisch"_s, {}},
            {u"Leap day"_s, u"1"_s, u"29.02  08:17"_s, u"Optisch"_s, {}, {}, {}},
            {u"Unknown melody"_s, u"1"_s, u"01.01  00:00"_s, u"Polka"_s, u"Ja"_s, u"Polka"_s, {}}};
        TestProgram made(u"PICASSO"_s);
        const auto list = phonedata::makePhonebookRows();
        for (const ClassicEntry& entry : entries)
            list->add(phonedata::toRow(entry));
        for (size_t edited = 0; edited < entries.size(); ++edited) {
            ui::frmTBentry form(made.program, *list);
            form.Form_Present(0);
            save(made, form); // the entry goes to the end
        }
        QCOMPARE(phonedata::classicEntries(*list), entries);
        QVERIFY(made.memory.TbDirty);

        const auto providers = phonedata::makeProviderRows();
        providers->add(phonedata::toRow(ProviderEntry{u"Alt"_s, u"010"_s}));
        ui::frmNEentry form(made.program, *providers);
        form.Form_Present(0);
        child<QLineEdit>(form, "txtNr").clear();
        save(made, form, u"Bitte geben Sie Namen und Nummer ein!"_s);
        QVERIFY(!made.memory.NeDirty);
        child<QLineEdit>(form, "txtNr").setText(u"01033"_s);
        save(made, form);
        QCOMPARE(phonedata::providerEntries(*providers), std::vector({ProviderEntry{u"Alt"_s, u"01033"_s}}));
        QVERIFY(made.memory.NeDirty);
    }

    /// A time or date that is none costs nothing in the list, whether the field is left or Enter pressed in
    /// it.
    void badTimeChangesNothing()
    {
        const QString badTime = u"Bitte geben Sie eine gültige Uhrzeit ein! (z.B. 12:30)"_s;
        TestProgram made(u"WOODY"_s);
        const Entries before = {{.name = u"A"_s, .number = u"1"_s, .date = u"01.02  10:00"_s},
                                {.name = u"B"_s, .number = u"2"_s}};
        const auto list = phonedata::makePhonebookRows();
        for (const ClassicEntry& entry : before)
            list->add(phonedata::toRow(entry));
        ui::frmTBentry form(made.program, *list);
        form.Form_Present(0);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        auto& time = child<QComboBox>(form, "cmbTime");
        time.setFocus();
        time.setCurrentText(u"24:00"_s);
        made.test.dialogs.expect(Icon::Information, badTime);
        QTest::keyClick(&time, Qt::Key_Tab);
        QCoreApplication::processEvents();
        QVERIFY(time.hasFocus());
        save(made, form, badTime);
        time.setCurrentText(u"23:59"_s);
        child<QLineEdit>(form, "txtbDate").clear();
        save(made, form, u"Bitte geben Sie ein gültiges Datum ein! (z.B. 13.11.)"_s);
        QCOMPARE(phonedata::classicEntries(*list), before);
        QVERIFY(!made.memory.TbDirty);
        child<QLineEdit>(form, "txtbDate").setText(u"13.11."_s);
        save(made, form);
        QCOMPARE(list->count(), 2);
        QCOMPARE(phonedata::classicEntries(*list).back().date, u"13.11  23:59"_s);
    }

    /// Escape asks where something was changed, and only there.
    void escapeKeepsChanges()
    {
        TestProgram made(u"WOODY"_s);
        const auto list = phonedata::makePhonebookRows();
        list->add(phonedata::toRow(ClassicEntry{.name = u"A"_s, .number = u"1"_s}));
        const auto asked =
            question(u"Ihre Änderungen sind noch nicht gespeichert.\n\nSollen sie verworfen werden?"_s,
                     u"Kalmo - Telefonbuch"_s);
        ui::frmTBentry form(made.program, *list);
        form.Form_Present(0);
        form.show();
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(!form.isVisible());
        form.show();
        auto& name = child<QLineEdit>(form, "txtName");
        QTest::keyClicks(&name, u"nna"_s);
        made.test.dialogs.expect(asked, Answer::No);
        QTest::keyClick(&name, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        made.test.dialogs.expect(asked, Answer::No);
        form.close();
        QVERIFY(form.isVisible());
        QCOMPARE(name.text(), u"Anna"_s);
        made.test.dialogs.expect(asked, Answer::Yes);
        QTest::keyClick(&name, Qt::Key_Escape);
        QVERIFY(!form.isVisible());
        QCOMPARE(list->text(0, 0), u"A"_s);
    }

    void roomLeftIsShown()
    {
        TestProgram made(u"WOODY"_s);
        const auto list = phonedata::makePhonebookRows();
        ui::frmTBentry form(made.program, *list);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        auto& name = child<QLineEdit>(form, "txtName");
        const auto& left = child<QLabel>(form, "txtName_left");
        name.setFocus();
        QTest::keyClicks(&name, u"Anna"_s);
        QCOMPARE(left.text(), u"noch 12 Zeichen"_s);
        QVERIFY(left.isVisible() && left.geometry().right() < name.width());
        child<QLineEdit>(form, "txtNr").setFocus();
        QVERIFY(!left.isVisible());
    }
};

KALMO_TEST(ClassicDialogs)
#include "tst_ClassicDialogs.moc"
