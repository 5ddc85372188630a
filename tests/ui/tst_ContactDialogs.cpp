// The dialogs of contacts and area codes against the emulated handset.

#include "support/ListLines.h"
#include "support/TestProgram.h"
#include "ui/forms/frmVCFneu.h"
#include "ui/forms/frmVorwahl.h"
#include "ui/TestProgram.h"

namespace {

struct ContactForm : TestProgram
{
    ContactForm() : TestProgram(u"SL400H"_s) { store->VcfReadList(progress.all()); }

    QLineEdit& field(const char* name) { return child<QLineEdit>(form, name); }
    void save() { child<QPushButton>(form, "cmdSpeichern").click(); }
    void expect(const QString& text, const QString& title = u"Kalmo"_s, Icon icon = Icon::Information)
    {
        test.dialogs.expect({.text = text, .title = title, .icon = icon});
    }
    phonedata::tVcfEntry last() { return phonedata::vcfEntryFrom(list->row(list->count() - 1)); }

    std::unique_ptr<toolkit::ListRows> list = phonedata::makeVcfRows();
    std::shared_ptr<phonedata::VcardStore> store =
        std::make_shared<phonedata::VcardStore>(std::make_shared<obex::clsMmc>(line), *list);
    ui::frmVCFneu form{program, store};
    QSignalSpy changed{&form, &ui::frmVCFneu::listChanged};
};

} // namespace

class ContactDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newContact()
    {
        ContactForm made;
        const int before = made.list->count();
        made.field("txtNachName").setText(u"Neumann-Oberhausen"_s);
        made.field("txtTelHandy").setText(u"0170"_s);
        child<QCheckBox>(made.form, "chkGebu").setChecked(true);
        made.field("txtGebu").setText(u"5.3.70"_s);
        child<QComboBox>(made.form, "cmbGebuTime").setCurrentText(u"7 Uhr"_s);
        made.expect(u"Bitte geben Sie eine gültige Startzeit im Format hh:mm ein. (z.B. 12:30)"_s);
        made.save();
        QCOMPARE(made.list->count(), before);
        child<QComboBox>(made.form, "cmbGebuTime").setCurrentText(u"07:05"_s);
        made.field("txtVorname").setText(u"€"_s);
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            made.expectQuestion(u"Das Telefon gibt diese Zeichen möglicherweise nicht so zurück, wie "
                                u"Sie sie eingegeben haben: €\n"_s,
                                answer);
            made.save();
            QCOMPARE(made.list->count(), before + (answer == Answer::Yes));
        }
        QCOMPARE(made.last().lastName + made.last().birthday, u"Neumann-Oberhaus1970-03-5T07:05"_s);
        QCOMPARE(made.changed, QList<QVariantList>{{true}});
    }

    /// A save that fails leaves the dialog open, and can be tried again.
    void changedContact()
    {
        ContactForm made;
        phonedata::tVcfEntry expected = phonedata::vcfEntryFrom(made.list->row(0));
        const int before = made.list->count();
        made.form.loadRow(0);
        made.field("txtNachName").setText(expected.lastName = u"Anders"_s);
        made.port.handset().setFaults({.refuseAt = 1});
        made.expect(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"
                    u"ReCode: 403 Forbidden - operation is understood but refused"_s,
                    u"Kalmo"_s, Icon::Exclamation);
        made.expect(u"Fehler beim Schreiben des Adressbucheintrags."_s, u"Kalmo - Adressbuch bearbeiten"_s,
                    Icon::Exclamation);
        made.save();
        QCOMPARE(made.changed, QList<QVariantList>{{false}});
        QVERIFY(made.list->row(0).key.startsWith(u"temp_i"_s) && made.form.result() != QDialog::Accepted);
        made.save();
        QCOMPARE(made.list->count(), before);
        expected.luid = made.last().luid; // the phone chooses it
        QCOMPARE(made.last(), expected);
        QCOMPARE(made.form.result(), static_cast<int>(QDialog::Accepted));
    }

    /// The dialog stays, and the contact can be saved again.
    void escapeStopsASave()
    {
        ContactForm made;
        const int before = made.list->count();
        made.form.show();
        made.field("txtNachName").setText(u"Neu"_s);
        made.field("txtTelHandy").setText(u"0170"_s);
        const auto& status = child<QLabel>(made.form, "sta");
        QString shown;
        made.test.clock.after(0.3, [&] {
            QTest::keyClick(&made.form, Qt::Key_Escape);
            shown = status.text();
        });
        made.save(); // and no box
        QVERIFY(shown.startsWith(u"Wird abgebrochen"_s));
        QCOMPARE(status.text(), u"Abgebrochen. Im Telefon wurde nichts geändert."_s);
        QVERIFY(made.form.isVisible() && made.changed.isEmpty());
        QCOMPARE(made.list->count(), before);
        made.save();
        QCOMPARE(made.list->count(), before + 1);
        QCOMPARE(made.list->current(), before);
    }

    /// Also where the save brings contacts into the list that the phone's user has added meanwhile.
    void stoppedSaveKeepsItsContact()
    {
        ContactForm made;
        const auto otherList = phonedata::makeVcfRows();
        const auto other =
            std::make_shared<phonedata::VcardStore>(std::make_shared<obex::clsMmc>(made.line), *otherList);
        other->VcfWriteList({{.lastName = u"Am Telefon"_s, .home = u"1"_s}}, made.progress.all());
        QStringList expected = linesOf(*made.list, {phonedata::VcfLastName});
        expected[0] = u"Anders"_s;
        expected.append(u"Am Telefon"_s);
        made.form.loadRow(0);
        made.form.show();
        made.field("txtNachName").setText(u"Anders"_s);
        const QMetaObject::Connection stopping =
            QObject::connect(made.list.get(), &toolkit::ListRows::inserted, &made.form, [&] {
                made.test.clock.after(0, [&] { QTest::keyClick(&made.form, Qt::Key_Escape); });
            });
        made.save();
        QVERIFY(made.form.isVisible() && made.list->count() == expected.size());
        QObject::disconnect(stopping);
        made.save(); // and no box
        QCOMPARE(made.form.result(), static_cast<int>(QDialog::Accepted));
        QStringList names = linesOf(*made.list, {phonedata::VcfLastName});
        names.sort();
        expected.sort();
        QCOMPARE(names, expected);
    }

    void numbersAreChecked()
    {
        ContactForm made;
        QLineEdit& number = made.field("txtTelPrivat");
        QTest::keyClicks(&number, u"+1-2a(3)#?"_s);
        QCOMPARE(number.text(), u"+123#?"_s);
        number.setText(u"+49 (0)30 123"_s);
        made.form.show();
        QVERIFY(QTest::qWaitForWindowActive(&made.form));
        number.setFocus();
        const QString complaint =
            u"Die eingegebene Telefonnummer enthielt unzulässige Zeichen und wurde gekürzt. "
            u"Bitte überprüfen Sie Ihre Eingabe."_s;
        made.expect(complaint);
        QTest::keyClick(&number, Qt::Key_Tab);
        QTRY_VERIFY(number.hasFocus() && number.text() == u"+49"_s);
        const int before = made.list->count();
        QLineEdit& work = made.field("txtTelGeschäft");
        work.setText(u"030/123"_s);
        made.expect(complaint);
        QTest::keyClick(&number, Qt::Key_Return); // leaves no field
        QVERIFY(work.hasFocus() && work.text() == u"030"_s);
        QCOMPARE(made.list->count(), before);
        made.test.dialogs.expect(question(u"Ihre Änderungen sind noch nicht gespeichert.\n\n"
                                          u"Sollen sie verworfen werden?"_s,
                                          u"Kalmo - Telefonbuch"_s),
                                 Answer::Yes);
        QTest::keyClick(&made.form, Qt::Key_Escape);
        QCOMPARE(made.changed, QList<QVariantList>{{false}});
    }

    void areaCodes()
    {
        TestProgram made(u"SL400H"_s);
        const QStringList& held = made.port.handset().phone().settings.areaCodes;
        ui::frmVorwahl form(made.program);
        form.Form_Present(u"00,49,0,3a"_s);
        auto& city = child<QLineEdit>(form, "txtVw3");
        auto& save = child<QPushButton>(form, "cmdSpeicher");
        made.test.dialogs.expect(Icon::Information, u"Bitte geben Sie nur Ziffern ein."_s);
        save.click();
        QVERIFY(form.result() != QDialog::Accepted);
        city.setText(u" "_s);
        made.test.dialogs.expectStart(u"Mindestens eines der Eingabefelder A-D ist leer."_s);
        save.click();
        city.setText(u"521"_s);
        form.show();
        city.setText(u"522"_s);
        made.expectQuestion(u"Ihre Änderungen sind noch nicht gespeichert."_s, Answer::No);
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        city.setText(u"521"_s);
        save.click();
        QCOMPARE(form.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(held.join(u','), u"00,49,0,521"_s);
        form.Form_Present(u",,,"_s);
        QVERIFY(!city.isEnabled());
        save.click();
        QCOMPARE(held.join(u','), u",,,"_s);
    }

    /// The message says what the phone has confirmed, and no more.
    void areaCodesThatAreNotSet()
    {
        const QString notSet =
            u"Die Vorwahleinstellungen konnten nicht gesetzt werden. Bitte prüfen Sie Ihre Eingaben."_s;
        const Rows<handset::Faults, QString> rows{
            {"not read before",
             {.refuseCommandAt = 1},
             u"Die bisherigen Vorwahlen konnten nicht gelesen werden. Im Telefon wurde nichts geändert."_s},
            {"refused", {.refuseCommandAt = 3}, notSet},
            {"no answer",
             {.silentAfter = 2},
             notSet +
                 u"\n\nDas Telefon hat nicht geantwortet. Welche Vorwahlen jetzt gelten, ist nicht bekannt."_s},
            {"not read back",
             {.refuseCommandAt = 4},
             u"Das Telefon hat die Vorwahlen bestätigt, sie konnten aber nicht zurückgelesen werden."_s},
        };
        rows.each([](const auto& faults, const auto& text) {
            TestProgram made(u"SL400H"_s);
            made.test.sy.PhoneID = made.test.sy.PhoneSerial = u"known"_s;
            made.port.handset().setFaults(faults);
            ui::frmVorwahl form(made.program);
            form.Form_Present(u"00,49,0,521"_s);
            made.test.dialogs.expect(Icon::Information, text);
            child<QPushButton>(form, "cmdSpeicher").click();
            QVERIFY(form.result() != QDialog::Accepted);
        });
    }
};

KALMO_TEST(ContactDialogs)
#include "tst_ContactDialogs.moc"
