// The import's dialog with contacts for the phone and with address books, stopped and closed meanwhile.

#include "support/AddressBooks.h"
#include "support/TestProgram.h"
#include "transfer/import/ImportSteps.h"
#include "ui/ImportDialog.h"

class tst_ContactImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// A long preview or address book keeps the window painted, and ends by the button or with the dialog.
    void longFiles()
    {
        const QByteArray text = "Name;Nummer\n" + QByteArray("Meier;030\n").repeated(200'000);
        const QByteArray card = "BEGIN:VCARD\nTEL:1\n" + QByteArray("NOTE:\n").repeated(10) + "END:VCARD\n";
        const Rows<bool, bool> rows{{"a text, stopped", false, false},
                                    {"a text, closed", false, true},
                                    {"a book, stopped", true, false}};
        rows.each([&](bool isBook, bool closes) {
            ImportDialog made(u"PICASSO"_s, isBook ? ui::ImportFrom::AddressBook : ui::ImportFrom::File);
            auto& cancel = child<QAbstractButton>(*made.form, "chkCancel");
            const auto& bar = child<QWidget>(*made.form, "prg");
            QStringList seen;
            QTimer user;
            connect(&user, &QTimer::timeout, made.form.get(), [&] {
                if (!cancel.isVisible() || !seen.isEmpty())
                    return;
                seen.append(bar.isVisible() && !made.view().isEnabled() ? u"progress"_s : u"nothing"_s);
                if (closes)
                    QTest::keyClick(made.form.get(), Qt::Key_Escape);
                else
                    cancel.click();
            });
            user.start(0);
            if (isBook)
                made.expectBook(made.test.makeFile(u"a.vcf"_s, card.repeated(99'000)));
            else
                made.open(text);
            QTRY_COMPARE(seen, QStringList(u"progress"_s));
            QTRY_VERIFY(!cancel.isVisible());
            QCOMPARE(made.rows(), QStringList());
            QCOMPARE(made.form->isVisible(), !closes);
            if (isBook)
                QCOMPARE(child<QLineEdit>(*made.form, "txtWabPath").text(),
                         u"Bitte Adressbuch auswählen..."_s);
            else if (!closes)
                QCOMPARE(made.textOf("lblCounts"), u"Die Vorschau wurde abgebrochen."_s);
        });
    }

    /// Nothing else can be used before an import that was closed at once has ended.
    void closedBeforeTheBook()
    {
        ImportDialog unseen(u"PICASSO"_s, ui::ImportFrom::AddressBook);
        unseen.form->close(); // ahead of its first event
        QCoreApplication::processEvents();
        QCOMPARE(unseen.test.clock.elapsed(), 0.0);

        ImportDialog made(u"PICASSO"_s, ui::ImportFrom::AddressBook);
        bool hasStayed = false;
        made.test.clock.after(0.05, [&] {
            made.form->close();
            hasStayed = made.form->isVisible();
        });
        QTRY_VERIFY(!made.form->isVisible());
        QVERIFY(hasStayed);
    }

    void contacts()
    {
        ImportDialog made(u"SL450HX"_s);
        const int before = made.contacts->count();
        made.open("Nachname;Vorname;Telefon;Jahrestag\nNeumann-Oberhausen;A;030;24.12.2005 08:30\nB;;;\n");
        QVERIFY(!child<QWidget>(*made.form, "chk49_00").isVisible());
        made.test.dialogs.expect(transfer::messageOfRefusedCheck());
        made.tick(2);
        QCoreApplication::processEvents();
        QCOMPARE(made.rows().mid(1),
                 (QStringList{u"x Neumann-Oberhausen|A|030||||24.12.2005  08:30"_s, u"- B||||||"_s}));
        made.test.dialogs.expect(Icon::Information, u"Importieren erfolgreich abgeschlossen."_s);
        made.click("cmdImport");
        QCOMPARE(made.contacts->count(), before + 1);
        const phonedata::tVcfEntry written = phonedata::vcfEntryFrom(made.contacts->row(before));
        QCOMPARE(written.lastName + u'|' + written.home + u'|' + written.birthday,
                 u"Neumann-Oberhaus|030|2005-12-24T08:30"_s);
        QVERIFY(made.form->isVisible());
        QCOMPARE(made.rows()[1].left(2), u"- "_s);
        made.contacts->clear();
        made.store->forget();
        made.tick(1);
        made.test.dialogs.expect(transfer::messageFor(transfer::VcardStep::RoomUnknown, {}, 0));
        made.click("cmdImport");
    }

    /// Nothing is sent without a copy of what the phone holds, and one box says so.
    void contactsWithoutACopy()
    {
        ImportDialog made(u"SL450HX"_s);
        const int before = made.contacts->count();
        made.open("Nachname;Vorname;Telefon\nNeu;A;030\n");
        made.test.makeFile(u"storage/Verlauf"_s, {});
        made.test.dialogs.expectStart(
            u"Der bisherige Stand des Telefonbuchs konnte nicht gesichert werden"_s);
        made.click("cmdImport");
        QCOMPARE(made.textOf("sta_text"), u"Es wurde nichts importiert."_s);
        QVERIFY(made.form->isVisible() && made.contacts->count() == before);
    }

    /// The wish to leave is asked about while the import goes on. It stops between two contacts.
    void contactsAreStopped()
    {
        ImportDialog made(u"SL450HX"_s);
        const int before = made.contacts->count();
        made.open("Nachname;Telefon\nA;1\nB;2\nC;3\nD;4\n");
        const std::function<void()> watch = [&] {
            auto* box = made.form->findChild<QMessageBox*>(u"stopQuestion"_s);
            if (made.contacts->count() == before) // the first one is on its way
                made.test.clock.after(0.02, watch);
            else if (!box)
                QTest::keyClick(made.form.get(), Qt::Key_Escape), made.test.clock.after(0, watch);
            else
                QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
        };
        made.test.clock.after(0.02, watch);
        made.click("cmdImport"); // and no box
        const int arrived = made.contacts->count() - before;
        QVERIFY(arrived > 0 && arrived < 4);
        QCOMPARE(made.textOf("sta_text"),
                 u"Der Import wurde abgebrochen. %1 von 4 Kontakten %2 im Telefon."_s.arg(arrived).arg(
                     arrived == 1 ? u"ist"_s : u"sind"_s));
        QCOMPARE(made.rows().filter(u"x "_s).size(), 4 - arrived); // for the next import
        QVERIFY(made.form->isVisible() && !QGuiApplication::overrideCursor());
        made.test.dialogs.expect(Icon::Information, u"Importieren erfolgreich abgeschlossen."_s);
        made.click("cmdImport");
        QCOMPARE(made.contacts->count(), before + 4);
    }

    void addressBook()
    {
        WabBuilder book;
        book.add({WabBuilder::wide(0x3A11, u"Müller"_s), WabBuilder::wide(0x3A06, u"Jörg"_s),
                  WabBuilder::wide(0x3A09, u"+49 30"_s), WabBuilder::wide(0x3A1C, u"0170"_s)});
        ImportDialog made(u"PICASSO"_s, ui::ImportFrom::AddressBook);
        made.expectBook(made.test.makeFile(u"a.wab"_s, book.bytes()));
        QTRY_COMPARE(made.rows(), (QStringList{u"x Müller, J P|030|"_s, u"x Müller, J H|0170|"_s}));
        made.click("chkProcessNr1");
        child<QLineEdit>(*made.form, "txtEnd0").setText(u"^x"_s);
        QCOMPARE(made.rows(), QStringList(u"x Müller, Jx|030|"_s));
        QVERIFY(!child<QComboBox>(*made.form, "cmbCount11").isEnabled());
        auto& count = child<QComboBox>(*made.form, "cmbCount10");
        count.setFocus();
        count.setEditText(u"x"_s);
        made.test.dialogs.expectStart(u"Bitte geben Sie einen gültigen Zahlenwert für die Länge"_s);
        QTest::keyClick(count.lineEdit(), Qt::Key_Return); // presses the button
        count.setEditText(u"15"_s);
        made.expectBook(made.test.makeFile(u"b.wab"_s, "no book")); // leaves the first one in front
        made.test.dialogs.expectStart(u"Das Windows Adressbuch "_s);
        child<QMenu>(*made.form, "mnuWabOpen").actions().first()->trigger();
        made.click("cmdRefresh");
        QCOMPARE(made.rows(), QStringList(u"x Müller, Jx|030|"_s));
    }

    void brokenAddressBook()
    {
        ImportDialog made(u"PICASSO"_s, ui::ImportFrom::AddressBook);
        made.expectBook(made.test.makeFile(u"a.wab"_s, "no book"));
        made.test.dialogs.expect(
            Icon::Exclamation,
            u"Das Windows Adressbuch (WAB / Outlook Express) konnte nicht eingelesen werden.\n"
            u"Die Datei enthält weder ein Adressbuch noch vCards."_s);
        QTRY_VERIFY(!made.form->isVisible());
    }
};

KALMO_TEST(tst_ContactImport)
#include "tst_ContactImport.moc"
