// The import's dialog, pressed as a user presses it.

#include "app/Files.h"
#include "support/AddressBooks.h"
#include "support/TestProgram.h"
#include "transfer/import/ImportSteps.h"
#include "ui/import/frmImportPb.h"
#include "ui/import/PreviewModel.h"
#include "ui/TestProgram.h"

using phonedata::Store;

namespace {

/// The dialog on a program of fakes.
struct Import : TestProgram
{
    explicit Import(const QString& model, ui::ImportFrom from = ui::ImportFrom::File) : TestProgram(model)
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

QStringList rowsOf(const toolkit::ListRows& list)
{
    QStringList lines;
    for (int row = 0; row < list.count(); ++row) {
        QStringList cells;
        for (const toolkit::ListCell& cell : list.row(row).cells)
            cells.append(cell.text);
        lines.append(cells.join(u'|'));
    }
    return lines;
}

const QByteArray table = "Name;Nummer;Jahrestag\r\nMeier;+49 30;24.12. 08:30\r\nSiebzehn Zeichen.;2;\r\n";

} // namespace

class tst_Import : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classicList()
    {
        Import made(u"PICASSO"_s);
        QSignalSpy added(made.form.get(), &ui::frmImportPb::entriesAdded);
        made.test.dialogs.expect(transfer::messageFor(transfer::ClassicStep::NothingChecked));
        made.click("cmdImport");
        made.phonebook->add(
            phonedata::toRow(phonedata::ClassicEntry{.name = u"MEIER"_s, .number = u"030"_s}));
        made.open(table);
        QCOMPARE(made.rows(),
                 (QStringList{u"- Name||"_s, u"- Meier|030|24.12  08:30"_s, u"x Siebzehn Zeichen.|2|"_s}));
        QCOMPARE(child<QLabel>(*made.form, "lblCounts").text(),
                 u"1 von 3 zum Import ausgewählt, 1 schon vorhanden"_s);
        made.tick(1);
        // Names that are too long are cut by the first press, and taken by the second.
        made.test.dialogs.expect(transfer::messageFor(transfer::ClassicStep::NameTooLong), Answer::Yes);
        made.test.dialogs.expect(transfer::messageOfShortening());
        made.click("cmdImport");
        QCOMPARE(made.phonebook->count(), 1);
        made.test.dialogs.expect(transfer::messageOfTakenEntries());
        made.click("cmdImport");
        QCOMPARE(rowsOf(*made.phonebook).mid(1),
                 (QStringList{u"Meier|030|24.12  08:30|Optisch||"_s, u"Siebzehn Zeichen|2||||"_s}));
        QVERIFY(made.memory.TbDirty && !made.memory.NeDirty);
        QCOMPARE(added.count(), 1);
        // What was taken is not taken twice, unless the user checks it again.
        QVERIFY(child<QPushButton>(*made.form, "cmdAbbruch").hasFocus());
        made.test.dialogs.expect(transfer::messageFor(transfer::ClassicStep::NothingChecked));
        made.click("cmdImport");
        QCOMPARE(child<QLabel>(*made.form, "lblCounts").text(),
                 u"0 von 3 zum Import ausgewählt, 2 schon vorhanden"_s);
        made.tick(1);
        made.tick(2);
        QVERIFY(child<QPushButton>(*made.form, "cmdImport").isDefault());
        made.click("optDest1");
        made.test.dialogs.expect(transfer::messageOfTakenEntries());
        made.click("cmdImport");
        QCOMPARE(rowsOf(*made.providers), (QStringList{u"Meier|030"_s, u"Siebzehn Zeichen|2"_s}));
        QCOMPARE(made.test.settings.GetIniText(u"frmImportPb"_s, u"cmbCsvField2"_s), u"Jahrestag"_s);
    }

    void selectionKeys()
    {
        Import made(u"PICASSO"_s);
        made.open(table);
        made.click("cmdSelNon");
        QCOMPARE(made.rows(),
                 (QStringList{u"- Name||"_s, u"- Meier|030|24.12  08:30"_s, u"- Siebzehn Zeichen.|2|"_s}));
        QTest::keyClick(&made.view(), Qt::Key_A, Qt::ControlModifier);
        made.click("cmdSelSet");
        QCOMPARE(made.rows(),
                 (QStringList{u"- Name||"_s, u"x Meier|030|24.12  08:30"_s, u"x Siebzehn Zeichen.|2|"_s}));
        made.click("cmdSelUnset");
        made.click("cmdSelAll");
        QHeaderView& head = *made.view().header();
        for (int press = 0; press < 2; ++press)
            QTest::mouseClick(head.viewport(), Qt::LeftButton, {}, QPoint(20, head.height() / 2));
        QCOMPARE(made.rows(),
                 (QStringList{u"x Siebzehn Zeichen.|2|"_s, u"- Name||"_s, u"x Meier|030|24.12  08:30"_s}));
        QTest::keyClick(&made.view(), Qt::Key_F5);
        QCOMPARE(made.rows().last(), u"x Siebzehn Zeichen.|2|"_s);
        // A name is corrected in place.
        made.view().setCurrentIndex(made.view().model()->index(2, 0));
        QTest::keyClick(&made.view(), Qt::Key_F2);
        auto& editor = child<QLineEdit>(made.view(), "");
        editor.setText(u"Kurz [x]"_s);
        QTest::keyClick(&editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(made.rows().last(), u"x Kurz x|2|"_s);
        QVERIFY(!made.view().model()->index(2, 0).data(Qt::ForegroundRole).isValid());
        // It is compared again: this one is there already, until the name changes.
        made.phonebook->add(phonedata::toRow(phonedata::ClassicEntry{.name = u"Da"_s, .number = u"2"_s}));
        made.click("cmdRefresh");
        for (const QString& name : {u"Da"_s, u"Siebzehn Zeichen."_s}) {
            QVERIFY(made.view().model()->setData(made.view().model()->index(2, 0), name, Qt::EditRole));
            const QString tip = made.view().model()->index(2, 0).data(Qt::ToolTipRole).toString();
            QCOMPARE(tip, name == u"Da"_s ? u"Dieser Eintrag ist im Telefonbuch schon vorhanden."_s
                                          : u"Zu lang oder unvollständig."_s);
        }
    }

    /// As every list: the search hides rows, which no command changes then; cut cells have a tip, and widths
    /// are remembered.
    void previewIsSearchedAndCopied()
    {
        Import made(u"PICASSO"_s);
        made.open(table);
        QTest::keyClick(&made.view(), Qt::Key_F, Qt::ControlModifier);
        auto& search = child<QLineEdit>(*made.form, "txtSearch");
        QVERIFY(search.hasFocus());
        QTest::keyClicks(&search, u"zeich"_s);
        QCOMPARE(child<QLabel>(*made.form, "lblSearchCount").text(), u"1 von 3"_s);
        made.click("cmdSelNon");
        QCOMPARE(child<QLabel>(*made.form, "lblCounts").text(),
                 u"1 von 3 zum Import ausgewählt (1 davon ausgeblendet)"_s);
        QTest::keyClick(&search, Qt::Key_Down);
        QTest::keyClick(&made.view(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"Siebzehn Zeichen.\t2\t\n"_s);
        made.view().selectAll();
        made.view().actions().at(2)->trigger(); // "Markierte wählen" of the context menu
        QCOMPARE(made.rows(),
                 (QStringList{u"- Name||"_s, u"x Meier|030|24.12  08:30"_s, u"x Siebzehn Zeichen.|2|"_s}));
        QCOMPARE(made.view().selectionModel()->selectedRows().size(), 1);
        made.view().setColumnWidth(0, 40);
        const QPoint at = made.view().visualRect(made.view().model()->index(2, 0)).center();
        QHelpEvent help(QEvent::ToolTip, at, made.view().viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(made.view().viewport(), &help);
        QCOMPARE(QToolTip::text(), u"Siebzehn Zeichen.\nZu lang oder unvollständig."_s);
        QTest::keyClick(&made.view(), Qt::Key_Escape);
        QVERIFY(search.text().isEmpty() && made.form->isVisible());
        made.form.reset();
        made.form = std::make_unique<ui::frmImportPb>(
            made.program, ui::ImportLists{.lvwTB = made.phonebook.get(), .lvwNE = made.providers.get()},
            ui::ImportFrom::File);
        QCOMPARE(made.view().columnWidth(0), 40);
    }

    void optionsRefresh()
    {
        Import made(u"PICASSO"_s);
        made.open("\"Name\",\"Nummer\"\r\n\"M\xFCller\",\"+49 30\"\r\n");
        QVERIFY(child<QCheckBox>(*made.form, "chkCsvImportUmklammernd").isChecked());
        made.click("chk49_00");
        QCOMPARE(made.rows().last(), u"x Müller|+4930|"_s);
        made.click("chkPreviewAutoRefresh");
        made.click("chkAmt");
        QCOMPARE(made.rows().last(), u"x Müller|+4930|"_s);
        made.click("cmdRefresh");
        QCOMPARE(made.rows().last(), u"x Müller|0+4930|"_s);
        child<QComboBox>(*made.form, "cmbCsvSep").setCurrentIndex(1); // rebuilds always
        QCOMPARE(made.rows().last(), u"- Müller,+49 30||"_s);
        made.click("chkCsvImportUmklammernd");
        QCOMPARE(made.rows().last(), u"- \"Müller\",\"+49 30\"||"_s);
        made.test.dialogs.expectStart(u"Bitte geben Sie für die Amtsholung einen Wert"_s, Buttons::Ok,
                                      Answer::Ok);
        child<QLineEdit>(*made.form, "txtAmt").setText(u"x"_s);
        made.click("cmdImport");
    }

    void hintsMend()
    {
        Import made(u"PICASSO"_s);
        made.open(
            "\xEF\xBB\xBF\"Name\",\"Number\"\n\"M\xC3\xBCller\",+49 (0) 30\n\"Garc\xC3\xAD\x61, A\",1\n");
        QCOMPARE(child<QLabel>(*made.form, "lblHint_encoding").text().left(44),
                 u"Umlaute und Akzente kommen falsch heraus (3 "_s);
        made.click("cmdMend_encoding");
        made.click("cmdMend_reading");
        made.click("cmdMend_zero");
        made.click("cmdMend_letters");
        QCOMPARE(made.rows(), (QStringList{u"- Name||"_s, u"x Müller|030|"_s, u"x Garcia, A|1|"_s}));
        QVERIFY(!child<QWidget>(*made.form, "fraHints").isVisible());
        made.test.dialogs.expect(transfer::messageOfTakenEntries());
        made.click("cmdImport");
        // Nothing of it mends the next file.
        made.open("\"Name\",\"Nummer\"\n\"M\xFCller\",\"+49 (0) 31\"\n\"Garc\xED\x61\",\"4\"\n");
        QCOMPARE(made.rows(), (QStringList{u"- Name||"_s, u"x Müller|0031|"_s, u"x Garca|4|"_s}));
        made.open("Name;Nummer\nA;1\n"); // the filter of the file before stays
        QCOMPARE(made.rows(), (QStringList{u"- Name;Nummer||"_s, u"- A;1||"_s}));
        made.click("cmdMend_filter");
        QCOMPARE(made.rows(), (QStringList{u"- Name||"_s, u"x A|1|"_s}));
    }

    /// A click that changes the encoding leaves the columns that the user has chosen.
    void hintsKeepColumns()
    {
        Import made(u"PICASSO"_s);
        made.open("Name;Zuhause;Nummer;Jahrestag\nM\xC3\xBCller;1;2;24.12.\n");
        child<QComboBox>(*made.form, "cmbCsvField1").setCurrentText(u"Zuhause"_s);
        child<QComboBox>(*made.form, "cmbCsvField2").setCurrentText(u"<nicht verwenden>"_s);
        made.click("cmdMend_encoding");
        QCOMPARE(made.rows(), (QStringList{u"- Name||"_s, u"x Müller|1|"_s}));
    }

    /// Escape asks where the choices differ from those that the file was shown with.
    void escapeAsks()
    {
        Import made(u"PICASSO"_s);
        made.open(table);
        made.tick(0);
        const auto asked = question(u"Sie haben Ihre Auswahl noch nicht importiert.\n\n"
                                    u"Soll sie verworfen werden?"_s,
                                    made.form->windowTitle());
        made.test.dialogs.expect(asked, Answer::No);
        QTest::keyClick(&made.view(), Qt::Key_Escape);
        QVERIFY(made.form->isVisible());
        made.tick(0); // as it was
        QTest::keyClick(&made.view(), Qt::Key_Escape);
        QVERIFY(!made.form->isVisible());
    }

    /// A long preview or address book keeps the window painted, and ends by the button or with the dialog.
    void longFiles()
    {
        const QByteArray text = "Name;Nummer\n" + QByteArray("Meier;030\n").repeated(200'000);
        const QByteArray card = "BEGIN:VCARD\nTEL:1\n" + QByteArray("NOTE:\n").repeated(10) + "END:VCARD\n";
        const Rows<bool, bool> rows{{"a text, stopped", false, false},
                                    {"a text, closed", false, true},
                                    {"a book, stopped", true, false}};
        rows.each([&](bool isBook, bool closes) {
            Import made(u"PICASSO"_s, isBook ? ui::ImportFrom::AddressBook : ui::ImportFrom::File);
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
                QCOMPARE(child<QLabel>(*made.form, "lblCounts").text(), u"Die Vorschau wurde abgebrochen."_s);
        });
    }

    /// Nothing else can be used before an import that was closed at once has ended.
    void closedBeforeTheBook()
    {
        Import unseen(u"PICASSO"_s, ui::ImportFrom::AddressBook);
        unseen.form->close(); // ahead of its first event
        QCoreApplication::processEvents();
        QCOMPARE(unseen.test.clock.elapsed(), 0.0);

        Import made(u"PICASSO"_s, ui::ImportFrom::AddressBook);
        bool hasStayed = false;
        made.test.clock.after(0.05, [&] {
            made.form->close();
            hasStayed = made.form->isVisible();
        });
        QTRY_VERIFY(!made.form->isVisible());
        QVERIFY(hasStayed);
    }

    void refusedFiles()
    {
        Import made(u"PICASSO"_s);
        made.open("\r\na;b", u"a.csv"_s, u"Die Datei "_s);
        QCOMPARE(child<QLineEdit>(*made.form, "txtCsvPath").text(), u"Bitte Datei auswählen..."_s);
        made.open(table);
        made.choose({});
        QCOMPARE(child<QLineEdit>(*made.form, "txtCsvPath").text(), u"Bitte Datei auswählen..."_s);
        QTest::keyClick(&made.view(), Qt::Key_F5);
        QCOMPARE(made.rows(), QStringList());
        const QString folder = made.test.path(u"folder.csv"_s);
        QVERIFY(QDir().mkpath(folder));
        made.choose(folder, u"Die Datei %1 kann nicht gelesen werden."_s.arg(folder));
    }

    void contacts()
    {
        Import made(u"SL450HX"_s);
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

    /// The wish to leave is asked about while the import goes on. It stops between two contacts.
    void contactsAreStopped()
    {
        Import made(u"SL450HX"_s);
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
        QCOMPARE(child<QLabel>(*made.form, "sta_text").text(),
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
        Import made(u"PICASSO"_s, ui::ImportFrom::AddressBook);
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
        Import made(u"PICASSO"_s, ui::ImportFrom::AddressBook);
        made.expectBook(made.test.makeFile(u"a.wab"_s, "no book"));
        made.test.dialogs.expect(
            Icon::Exclamation,
            u"Das Windows Adressbuch (WAB / Outlook Express) konnte nicht eingelesen werden.\n"
            u"Die Datei enthält weder ein Adressbuch noch vCards."_s);
        QTRY_VERIFY(!made.form->isVisible());
    }
};

KALMO_TEST(tst_Import)
#include "tst_Import.moc"
