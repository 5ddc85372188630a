// The dialogs of the classic lists: what their fields take, and what a save makes of the list.

#include "ui/forms/frmNEentry.h"
#include "ui/forms/frmTBentry.h"
#include "ui/TestProgram.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;
using toolkit::Icon;

namespace {

const QString needsBoth = u"Bitte geben Sie Namen und Nummer ein!"_s;

struct Phonebook : TestProgram
{
    explicit Phonebook(const QString& model = u"WOODY"_s)
        : TestProgram(model), list(phonedata::makePhonebookRows()), form(program, *list)
    {
        memory.sounds.add({u"Walzer"_s, {}, 0, 40});
    }

    void add(const ClassicEntry& entry) { list->add(phonedata::toRow(entry)); }
    void fill(const char* field, const QString& text) { child<QLineEdit>(form, field).setText(text); }
    void save() { child<QPushButton>(form, "cmdSpeicher").click(); }
    void expect(const QString& text) { test.dialogs.expect({.text = text, .icon = Icon::Information}); }
    QStringList names() const
    {
        QStringList all;
        for (const ClassicEntry& entry : phonedata::classicEntries(*list))
            all.append(entry.name + (entry.date.isEmpty() ? u""_s : u" "_s + entry.date));
        return all;
    }

    std::unique_ptr<toolkit::ListRows> list;
    ui::frmTBentry form;
};

} // namespace

class ClassicDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fields_data();
    void fields();
    void whatIsLoadedIsSaved_data();
    void whatIsLoadedIsSaved();
    void newEntry();
    void badTimeLeavesHalfARow();
    void familyDecidesOnSounds();
    void provider();
};

void ClassicDialogs::fields_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("stands");

    QTest::newRow("typed letter") << u"txtNr"_s << u"12a45"_s << QString() << u"1245"_s;
    QTest::newRow("pause and recall") << u"txtNr"_s << u"0p1R2r"_s << QString() << u"0P1R2R"_s;
    QTest::newRow("late plus") << u"txtNr"_s << u"+49+"_s << QString() << u"+49"_s;
    QTest::newRow("pasted letter") << u"txtNr"_s << QString() << u"12a45"_s << u"12"_s;
    QTest::newRow("pasted brackets") << u"txtNr"_s << QString() << u"+49 (30) 123"_s << u"+49"_s;
    QTest::newRow("longest number") << u"txtNr"_s << QString() << QString(40, u'7') << QString(32, u'7');
    QTest::newRow("name") << u"txtName"_s << u"Jo[b"_s << u"Ähm"_s << u"JobÄhm"_s;
    QTest::newRow("pasted name") << u"txtName"_s << QString() << u"Großmann€uro"_s << u"Großmann"_s;
}

void ClassicDialogs::fields()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, pasted);
    Phonebook phonebook;
    auto& edit = child<QLineEdit>(phonebook.form, field.toUtf8().constData());
    QTest::keyClicks(&edit, typed);
    edit.insert(pasted);
    QTEST(edit.text(), "stands");
    QCOMPARE(edit.cursorPosition(), static_cast<int>(edit.text().size()));
}

void ClassicDialogs::whatIsLoadedIsSaved_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("sound");
    QTest::addColumn<QString>("vip");

    QTest::newRow("plain") << u"WOODY"_s << QString() << QString() << QString();
    QTest::newRow("all") << u"PICASSO"_s << u"24.12  19:30"_s << u"Melodie 3"_s << u"Optisch"_s;
    QTest::newRow("leap day") << u"PICASSO"_s << u"29.02  08:17"_s << u"Optisch"_s << QString();
    QTest::newRow("a melody that isn't known") << u"WOODY"_s << u"01.01  00:00"_s << u"Polka"_s << u"Polka"_s;
}

void ClassicDialogs::whatIsLoadedIsSaved()
{
    QFETCH(QString, model);
    QFETCH(QString, date);
    QFETCH(QString, sound);
    QFETCH(QString, vip);
    const ClassicEntry entry{u"Anna"_s, u"+49301"_s, date, sound, vip.isEmpty() ? QString() : u"Ja"_s,
                             vip,       u"7"_s};
    Phonebook phonebook(model);
    phonebook.add(entry);
    phonebook.add({.name = u"Berta"_s, .number = u"2"_s});
    phonebook.form.loadRow(0);
    phonebook.form.Form_Present(true);
    phonebook.save();
    QCOMPARE(phonebook.names(), QStringList({u"Berta"_s, date.isEmpty() ? u"Anna"_s : u"Anna "_s + date}));
    QCOMPARE(phonedata::classicEntryFrom(phonebook.list->row(1)), entry);
}

void ClassicDialogs::newEntry()
{
    Phonebook phonebook;
    QSignalSpy changed(&phonebook.form, &ui::frmTBentry::listChanged);
    phonebook.add({.name = u"Anna"_s, .number = u"1"_s});
    phonebook.list->setCurrent(0);
    phonebook.fill("txtName", u"Carl"_s);
    phonebook.expect(needsBoth);
    phonebook.save();
    QVERIFY(!phonebook.memory.TbDirty && changed.isEmpty());
    phonebook.fill("txtNr", u"3"_s);
    child<QCheckBox>(phonebook.form, "chkUsebDate").setChecked(true);
    child<QCheckBox>(phonebook.form, "chkVip").setChecked(true);
    phonebook.save();
    const ClassicEntry made{u"Carl"_s, u"3"_s, u"21.11  00:00"_s, u"Melodie 1"_s, u"Ja"_s, u"Melodie 1"_s};
    QCOMPARE(phonedata::classicEntries(*phonebook.list),
             std::vector<ClassicEntry>({{.name = u"Anna"_s, .number = u"1"_s}, made}));
    QVERIFY(phonebook.memory.TbDirty);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(phonebook.form.result(), static_cast<int>(QDialog::Accepted));
}

/// The checks of the date come after the old row has gone, and each further try takes the row that is current
/// then.
void ClassicDialogs::badTimeLeavesHalfARow()
{
    Phonebook phonebook;
    for (const QString& name : {u"Anna"_s, u"Berta"_s, u"Carl"_s})
        phonebook.add({.name = name, .number = u"1"_s, .date = u"01.02  10:00"_s});
    phonebook.form.loadRow(0);
    phonebook.form.Form_Present(true);
    child<QComboBox>(phonebook.form, "cmbTime").setCurrentText(u"24:00"_s);
    phonebook.expect(u"Bitte geben Sie eine gültige Uhrzeit ein! (z.B. 12:30)"_s);
    phonebook.save();
    QCOMPARE(phonebook.names(), QStringList({u"Berta 01.02  10:00"_s, u"Carl 01.02  10:00"_s, u"Anna"_s}));
    QVERIFY(phonebook.memory.TbDirty);

    child<QComboBox>(phonebook.form, "cmbTime").setCurrentText(u"23:59"_s);
    phonebook.fill("txtbDate", QString());
    phonebook.list->setCurrent(2);
    phonebook.expect(u"Bitte geben Sie ein gültiges Datum ein! (z.B. 13.11.)"_s);
    phonebook.save();
    phonebook.fill("txtbDate", u"13.11."_s);
    phonebook.list->setCurrent(1);
    phonebook.save();
    QCOMPARE(phonebook.names(), QStringList({u"Berta 01.02  10:00"_s, u"Anna"_s, u"Anna 13.11  23:59"_s}));
}

void ClassicDialogs::familyDecidesOnSounds()
{
    Phonebook micro(u"WOODSTOCK"_s);
    QCOMPARE(child<QComboBox>(micro.form, "cmbAlarm").count(), 11);
    QVERIFY(!child<QCheckBox>(micro.form, "chkVip").isEnabled());
    QCOMPARE(child<QComboBox>(micro.form, "cmbVipSnd").currentText(),
             u"Nicht vom Gigaset micro unterstützt"_s);

    Phonebook other(u"GALICIA"_s);
    ui::frmTBentry form(other.program, *other.list); // with the melodies that are known now
    const auto& sounds = child<QComboBox>(form, "cmbVipSnd");
    QCOMPARE(sounds.itemText(10) + sounds.itemText(11), u"OptischWalzer"_s);
    QCOMPARE(child<QComboBox>(form, "cmbAlarm").count(), 12);
    const auto& times = child<QComboBox>(form, "cmbTime");
    QCOMPARE(times.count(), 47);
    QCOMPARE(times.findText(u"19:30"_s), -1);
    QCOMPARE(times.findText(u"23:30"_s), 46);
}

void ClassicDialogs::provider()
{
    TestProgram made(u"WOODY"_s);
    const auto list = phonedata::makeProviderRows();
    list->add(phonedata::toRow(phonedata::ProviderEntry{u"Alt"_s, u"010"_s}));
    ui::frmNEentry form(made.program, *list);
    form.loadRow(0);
    form.Form_Present(true);
    child<QLineEdit>(form, "txtNr").clear();
    made.test.dialogs.expect({.text = needsBoth, .icon = Icon::Information});
    child<QPushButton>(form, "cmdSpeicher").click();
    QVERIFY(!made.memory.NeDirty);
    child<QLineEdit>(form, "txtNr").setText(u"01033"_s);
    child<QPushButton>(form, "cmdSpeicher").click();
    QCOMPARE(phonedata::providerEntries(*list),
             std::vector({phonedata::ProviderEntry{u"Alt"_s, u"01033"_s}}));
    QVERIFY(made.memory.NeDirty);
}

QTEST_MAIN(ClassicDialogs)
#include "tst_ClassicDialogs.moc"
