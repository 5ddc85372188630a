// The dialog that exports a list: what it offers for each list and target, what a click and a key do, what it
// remembers.

#include "phonedata/VcfEntry.h"
#include "support/TestProgram.h"
#include "transfer/export/HtmlTarget.h"
#include "ui/forms/frmExport.h"
#include "ui/TestProgram.h"

namespace {

const toolkit::Message succeeded{.text = u"Export erfolgreich abgeschlossen."_s, .icon = Icon::Information};

struct Dialog
{
    explicit Dialog(const QString& model = u"WOODY"_s) : made(model)
    {
        made.test.sy.DefUserExpRoot = made.test.path(u"Dokumente"_s);
        made.test.sy.Paths.Exe = made.test.path(u"Programm"_s);
        list->add(
            phonedata::toRow(phonedata::ClassicEntry{.name = u"Anna"_s, .number = u"1"_s, .vip = u"Ja"_s}));
        list->add(phonedata::toRow(phonedata::ClassicEntry{.name = u"Bert"_s, .number = u"2"_s}));
    }

    /// Shows the form as the window does.
    ui::frmExport& show()
    {
        form = std::make_unique<ui::frmExport>(made.program);
        form->formPresent(*list, u"Telefonbuch"_s);
        form->show();
        if (!QTest::qWaitForWindowActive(form.get()))
            qFatal("the form is not shown");
        return *form;
    }
    template <typename Widget>
    Widget& at(const char* name)
    {
        return child<Widget>(*form, name);
    }
    void press(const char* button) { QTest::mouseClick(&at<QAbstractButton>(button), Qt::LeftButton); }

    TestProgram made;
    std::unique_ptr<toolkit::ListRows> list = phonedata::makePhonebookRows();
    std::unique_ptr<ui::frmExport> form;
};

QStringList columnsOf(const QListWidget& list)
{
    QStringList columns;
    for (int row = 0; row < list.count(); ++row)
        columns.append(list.item(row)->text() +
                       (list.item(row)->checkState() == Qt::Checked ? u"+"_s : u"-"_s));
    return columns;
}

} // namespace

class ExportDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void offersTheList()
    {
        Dialog dialog;
        dialog.list->setSelected(1, true);
        dialog.show();
        QCOMPARE(dialog.at<QRadioButton>("optRows0").text().remove(u'&'), u"Alle 2 Einträge exportieren"_s);
        QCOMPARE(dialog.at<QRadioButton>("optRows1").text().remove(u'&'),
                 u"Nur die markierten 1 Einträge exportieren"_s);
        QCOMPARE(columnsOf(dialog.at<QListWidget>("lvwCols")),
                 (QStringList{u"Name+"_s, u"Nummer+"_s, u"Jahrestag+"_s, u"Erinnerung+"_s, u"VIP+"_s,
                              u"Sound+"_s}));

        const auto contacts = phonedata::makeVcfRows();
        ui::frmExport form(dialog.made.program);
        form.formPresent(*contacts, u"Telefonbuch"_s, {phonedata::VcfLuid}, {phonedata::VcfEmail});
        QCOMPARE(columnsOf(child<QListWidget>(form, "lvwCols")).last(2),
                 (QStringList{u"Email-"_s, u"Jahrestag+"_s}));
        child<QPushButton>(form, "cmdSelAllCols").click();
        QCOMPARE(columnsOf(child<QListWidget>(form, "lvwCols")).filter(u"-"_s), QStringList());
    }

    void targets()
    {
        // Parts for CSV are shown, they are enabled, parts for pages are shown, and widths are offered.
        const Rows<const char*, bool, bool, bool, bool> rows{
            {"Excel", "imgOptDest0", true, false, false, true},
            {"page", "imgOptDest3", false, false, true, false},
            {"Word", "imgOptDest1", true, false, false, true},
            {"CSV", "imgOptDest2", true, true, false, false}};
        Dialog dialog;
        dialog.show();
        for (const auto& [picture, csvShown, csvEnabled, htmlShown, widths] : rows) {
            dialog.press(picture);
            for (const char* name :
                 {"cmbCsvSep", "txtCsvPath", "txtCsvReplace", "cmdPathSet", "lblCsvPreStatic"}) {
                QCOMPARE(dialog.at<QWidget>(name).isVisible(), csvShown);
                QCOMPARE(dialog.at<QWidget>(name).isEnabled() && csvShown, csvEnabled);
            }
            QCOMPARE(dialog.at<QWidget>("picDestHtml").isVisible(), htmlShown);
            QCOMPARE(dialog.at<QCheckBox>("chkOptimizeColWidth").isEnabled(), widths);
        }
        dialog.press("chkUseHeader");
        QVERIFY(!dialog.at<QCheckBox>("chkAddEmptyCol").isEnabled());
    }

    /// Two columns away and the second row only, with nothing but keys.
    void exportsByKeys()
    {
        Dialog dialog;
        dialog.list->setSelected(1, true);
        ui::frmExport& form = dialog.show();
        auto& columns = dialog.at<QListWidget>("lvwCols");
        columns.setFocus();
        for (int row = 2; row < columns.count(); ++row) {
            columns.setCurrentRow(row);
            QTest::keyClick(&columns, Qt::Key_Space);
        }
        for (const char* choice : {"optRows1", "chkAddEmptyCol"}) {
            dialog.at<QWidget>(choice).setFocus();
            QTest::keyClick(&dialog.at<QWidget>(choice), Qt::Key_Space);
        }
        dialog.made.test.dialogs.expect(
            question(u"Kalmo merkt sich Ihre neuen Einstellungen erst beim Export.\n\n"
                     u"Sollen sie verworfen werden?"_s,
                     form.windowTitle()),
            Answer::No);
        QTest::keyClick(&columns, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        dialog.made.test.dialogs.expect(succeeded);
        QTest::keyClick(&form, Qt::Key_Return);
        const QString path = dialog.made.test.path(u"Dokumente/Export/Telefonbuch.csv"_s);
        QCOMPARE(dialog.made.test.contentOf(path), QByteArray("Name,Nummer\r\n\r\nBert,2\r\n"));
        QCOMPARE(dialog.made.desktop.opened, QStringList(u' ' + path));
        QVERIFY(form.isVisible());
        QVERIFY(dialog.at<QPushButton>("cmdExport").isEnabled());
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(!form.isVisible());
    }

    /// A field that is wrong keeps the keyboard, unless the way leads out of the dialog.
    void fields()
    {
        Dialog dialog;
        ui::frmExport& form = dialog.show();
        auto& replacement = dialog.at<QLineEdit>("txtCsvReplace");
        replacement.setFocus();
        replacement.setText(u";"_s);
        dialog.at<QComboBox>("cmbCsvSep").setCurrentIndex(3);
        const toolkit::Message refusal{.text =
                                           u"Als Trennzeichen ist Semikolon + Anführungszeichen gewählt. Das "
                                           u"Feld für die Ersatzzeichen darf kein "
                                           u"Semikolon und kein Anführungszeichen enthalten."_s,
                                       .icon = Icon::Information};
        dialog.made.test.dialogs.expect(refusal);
        QTest::keyClick(&replacement, Qt::Key_Tab);
        QCoreApplication::processEvents();
        QVERIFY(replacement.hasFocus());
        dialog.made.test.dialogs.expect(refusal);
        QTest::keyClick(&replacement, Qt::Key_Return);
        QVERIFY(!QFileInfo::exists(dialog.made.test.path(u"Dokumente"_s)));
        replacement.setText(u"-"_s);

        auto& path = dialog.at<QLineEdit>("txtCsvPath");
        path.setFocus();
        path.setText(u"/a<b"_s);
        dialog.made.test.dialogs.expectStart(u"Der neue Ordner- bzw. Dateiname"_s);
        QTest::keyClick(&path, Qt::Key_Return);
        dialog.press("cmdAbbruch");
        QCoreApplication::processEvents();
        QVERIFY(!form.isVisible());
    }

    void fileDialogs()
    {
        Dialog dialog;
        const QString exports = dialog.made.test.storage + u"/Export"_s;
        const auto request = [](const QString& what, const QString& folder, const QString& name,
                                bool isPage) {
            const toolkit::FileType page{u"HTML Datei (*.htm;*.html)"_s, {u"*.htm"_s, u"*.html"_s}};
            return toolkit::FileRequest{
                .title = u"Kalmo - "_s + what,
                .folder = folder,
                .name = name,
                .types = {isPage ? page : toolkit::FileType{u"CSV Datei (*.csv)"_s, {u"*.csv"_s}}},
                .acceptLabel = u"OK"_s};
        };
        const QString chosen = dialog.made.test.makeFile(u"eigene.html"_s, "<$Table.Content$>");
        dialog.show();
        dialog.press("imgOptDest3");
        const QString ofTemplate = u"html Vorlage für Export wählen"_s;
        dialog.made.test.dialogs.expectOpenFile(
            request(ofTemplate, transfer::templateFolder(dialog.made.test.sy), u"ExportVorlage.html"_s, true),
            chosen);
        dialog.press("cmdSelHtmlTemplate");
        QCOMPARE(dialog.at<QLineEdit>("txtHtmlTemplatePath").text(), chosen);
        dialog.made.test.dialogs.expectSaveFile(
            request(u"html Datei für Export wählen"_s, exports, u"Telefonbuch.html"_s, true), {});
        dialog.press("cmdSelHtmlDestPath");
        // The folder that was left last is only asked where that of the path is gone.
        dialog.at<QLineEdit>("txtHtmlTemplatePath").setText(u"/gone/a.html"_s);
        dialog.made.test.dialogs.expectOpenFile(
            request(ofTemplate, dialog.made.test.folder.path(), u"a.html"_s, true), {});
        dialog.press("cmdSelHtmlTemplate");
        dialog.press("imgOptDest2");
        dialog.made.test.dialogs.expectSaveFile(
            request(u"Exportdatei wählen"_s, exports, u"Telefonbuch.csv"_s, false), {});
        dialog.press("cmdPathSet");
    }

    void closesWhereWanted()
    {
        Dialog dialog;
        ui::frmExport& form = dialog.show();
        dialog.press("chkAutoOpenExportFile");
        dialog.press("chkCloseAfterExport");
        dialog.at<QListWidget>("lvwCols").item(0)->setCheckState(Qt::Unchecked);
        auto& path = dialog.at<QLineEdit>("txtCsvPath");
        path.setText(dialog.made.test.path(u"liste"_s));
        dialog.made.test.dialogs.expect(succeeded);
        dialog.press("cmdExport");
        QCOMPARE(path.text(), dialog.made.test.path(u"liste.csv"_s));
        QVERIFY(!form.isVisible());
        QCOMPARE(dialog.made.desktop.opened, QStringList());
        dialog.show(); // the last export is remembered
        QVERIFY(!dialog.at<QCheckBox>("chkAutoOpenExportFile").isChecked());
        dialog.press("optDest1");
        dialog.show(); // and what was not exported isn't
        QVERIFY(dialog.at<QRadioButton>("optDest2").isChecked());
    }
};

KALMO_TEST(ExportDialog)
#include "tst_ExportDialog.moc"
