// The import's dialog, pressed as a user presses it: the file, the preview, and entries for classic lists.

#include "support/ListLines.h"
#include "support/TestProgram.h"
#include "transfer/import/ImportSteps.h"
#include "ui/ImportDialog.h"

namespace {

const QByteArray entryTable =
    "Name;Nummer;Jahrestag\r\nMeier;+49 30;24.12. 08:30\r\nSiebzehn Zeichen.;2;\r\n";

} // namespace

class tst_Import : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classicList()
    {
        ImportDialog made(u"PICASSO"_s);
        QSignalSpy added(made.form.get(), &ui::frmImportPb::entriesAdded);
        made.test.dialogs.expect(transfer::messageFor(transfer::ClassicStep::NothingChecked));
        made.click("cmdImport");
        made.phonebook->add(
            phonedata::toRow(phonedata::ClassicEntry{.name = u"MEIER"_s, .number = u"030"_s}));
        made.open(entryTable);
        QCOMPARE(made.rows(),
                 (QStringList{u"- Name||"_s, u"- Meier|030|24.12  08:30"_s, u"x Siebzehn Zeichen.|2|"_s}));
        QCOMPARE(made.textOf("lblCounts"), u"1 von 3 zum Import ausgewählt, 1 schon vorhanden"_s);
        made.tick(1);
        // Names that are too long are cut by the first press, and taken by the second.
        made.test.dialogs.expect(transfer::messageFor(transfer::ClassicStep::NameTooLong), Answer::Yes);
        made.test.dialogs.expect(transfer::messageOfShortening());
        made.click("cmdImport");
        QCOMPARE(made.phonebook->count(), 1);
        made.test.dialogs.expect(transfer::messageOfTakenEntries());
        made.click("cmdImport");
        QCOMPARE(linesOf(*made.phonebook).mid(1),
                 (QStringList{u"Meier|030|24.12  08:30|Optisch||"_s, u"Siebzehn Zeichen|2||||"_s}));
        QVERIFY(made.memory.TbDirty && !made.memory.NeDirty);
        QCOMPARE(added.count(), 1);
        // The next import leaves out these entries, unless the user checks them again.
        QVERIFY(child<QPushButton>(*made.form, "cmdAbbruch").hasFocus());
        made.test.dialogs.expect(transfer::messageFor(transfer::ClassicStep::NothingChecked));
        made.click("cmdImport");
        QCOMPARE(made.textOf("lblCounts"), u"0 von 3 zum Import ausgewählt, 2 schon vorhanden"_s);
        made.tick(1);
        made.tick(2);
        QVERIFY(child<QPushButton>(*made.form, "cmdImport").isDefault());
        made.click("optDest1");
        made.test.dialogs.expect(transfer::messageOfTakenEntries());
        made.click("cmdImport");
        QCOMPARE(linesOf(*made.providers), (QStringList{u"Meier|030"_s, u"Siebzehn Zeichen|2"_s}));
        QCOMPARE(made.test.settings.GetIniText(u"frmImportPb"_s, u"cmbCsvField2"_s), u"Jahrestag"_s);
    }

    void selectionKeys()
    {
        ImportDialog made(u"PICASSO"_s);
        made.open(entryTable);
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
        ImportDialog made(u"PICASSO"_s);
        made.open(entryTable);
        QTest::keyClick(&made.view(), Qt::Key_F, Qt::ControlModifier);
        auto& search = child<QLineEdit>(*made.form, "txtSearch");
        QVERIFY(search.hasFocus());
        QTest::keyClicks(&search, u"zeichx"_s);
        QCOMPARE(made.view().accessibleDescription(), u"Nichts gefunden. Esc zeigt wieder alle."_s);
        QTest::keyClick(&search, Qt::Key_Backspace);
        QCOMPARE(made.view().accessibleDescription(), QString());
        QCOMPARE(made.textOf("lblSearchCount"), u"1 von 3"_s);
        made.click("cmdSelNon");
        QCOMPARE(made.textOf("lblCounts"), u"1 von 3 zum Import ausgewählt (1 davon ausgeblendet)"_s);
        QTest::keyClick(&search, Qt::Key_Return);
        QTest::keyClick(&made.view(), Qt::Key_Return);
        made.test.dialogs.expect(question(u"Zum Import sind auch Einträge ausgewählt, die die Suche gerade "
                                          u"ausblendet: 1.\n\nAuch diese importieren?"_s),
                                 Answer::No);
        made.click("cmdImport");
        QCOMPARE(made.phonebook->count(), 0);
        QTest::keyClick(&search, Qt::Key_Down);
        QTest::keyClick(&made.view(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"Siebzehn Zeichen.\t2\t\n"_s);
        QTest::keyClick(&made.view(), Qt::Key_A, Qt::ControlModifier);
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
        ImportDialog made(u"PICASSO"_s);
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
        ImportDialog made(u"PICASSO"_s);
        made.open(
            "\xEF\xBB\xBF\"Name\",\"Number\"\n\"M\xC3\xBCller\",+49 (0) 30\n\"Garc\xC3\xAD\x61, A\",1\n");
        QCOMPARE(made.textOf("lblHint_encoding").left(44), u"Umlaute und Akzente kommen falsch heraus (3 "_s);
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
        ImportDialog made(u"PICASSO"_s);
        made.open("Name;Zuhause;Nummer;Jahrestag\nM\xC3\xBCller;1;2;24.12.\n");
        child<QComboBox>(*made.form, "cmbCsvField1").setCurrentText(u"Zuhause"_s);
        child<QComboBox>(*made.form, "cmbCsvField2").setCurrentText(u"<nicht verwenden>"_s);
        made.click("cmdMend_encoding");
        QCOMPARE(made.rows(), (QStringList{u"- Name||"_s, u"x Müller|1|"_s}));
    }

    /// Escape asks where the choices differ from those that the file was shown with.
    void escapeAsks()
    {
        ImportDialog made(u"PICASSO"_s);
        made.open(entryTable);
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

    void refusedFiles()
    {
        ImportDialog made(u"PICASSO"_s);
        made.open("\r\na;b", u"a.csv"_s, u"Die Datei "_s);
        QCOMPARE(child<QLineEdit>(*made.form, "txtCsvPath").text(), u"Bitte Datei auswählen..."_s);
        made.open(entryTable);
        made.choose({});
        QCOMPARE(child<QLineEdit>(*made.form, "txtCsvPath").text(), u"Bitte Datei auswählen..."_s);
        QTest::keyClick(&made.view(), Qt::Key_F5);
        QCOMPARE(made.rows(), QStringList());
        const QString folder = made.test.path(u"folder.csv"_s);
        QVERIFY(QDir().mkpath(folder));
        made.choose(folder, u"Die Datei %1 kann nicht gelesen werden."_s.arg(folder));
        const QString large = made.test.makeFile(u"large.csv"_s, "a;b\n");
        QVERIFY(QFile::resize(large, 33 * 1024 * 1024)); // sparse
        made.choose(large,
                    u"Die Datei %1 ist größer als 32 MB oder hat mehr als 250000 Zeilen."_s.arg(large));
    }
};

KALMO_TEST(tst_Import)
#include "tst_Import.moc"
