// Exports from the window: what is asked and in which order, what is remembered, and that an old file is
// never lost.

#include "app/SystemPlatform.h"
#include "phonedata/ClassicEntry.h"
#include "phonedata/VcfEntry.h"
#include "support/FakeDesktop.h"
#include "support/RecordedProgress.h"
#include "support/SmallDisk.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"
#include "transfer/export/Exporter.h"
#include "transfer/export/HtmlTarget.h"

using namespace kalmo::transfer;
using toolkit::Message;

namespace {

const Message succeeded{.text = u"Export erfolgreich abgeschlossen."_s, .icon = Icon::Information};

struct Export
{
    Export()
    {
        list->add(phonedata::toRow(phonedata::ProviderEntry{u"Anna, A"_s, u"0301"_s}));
        list->add(phonedata::toRow(phonedata::ProviderEntry{u"Bert"_s, u"0302"_s}));
        test.sy.DefUserExpRoot = test.path(u"Dokumente"_s);
        test.sy.Paths.Exe = test.path(u"Programm"_s);
        QDir().mkpath(templateFolder(test.sy));
        test.makeFile(u"Programm/ExportVorlagen/ExportVorlage.html"_s, "[<$Table.Content$>]");
        options = loadExportOptions(test.context, source);
        options.opensFile = false;
    }

    bool run()
    {
        Exporter exporter({test.context, desktop, source, nullptr, progress.all()}, options);
        const bool done = exporter.run();
        options = exporter.options();
        return done;
    }
    /// An export that ends with this box.
    void failsWith(Icon icon, const QString& text)
    {
        test.dialogs.expect(icon, text);
        QVERIFY(!run());
    }
    /// The question about a file that is there.
    void expectQuestion(const QString& path, Answer answer)
    {
        test.dialogs.expect({.text = u"Die Datei \""_s + path +
                                     u"\" existiert bereits. Soll die Datei überschrieben werden?"_s,
                             .buttons = Buttons::OkCancel,
                             .icon = Icon::Exclamation,
                             .defaultButton = Answer::Cancel},
                            answer);
    }
    void expectLostLetters()
    {
        test.dialogs.expect(
            {.text = u"Buchstaben, die es in dieser Art Datei nicht gibt: 3. An ihrer Stelle steht \"?\".\n"
                     u"Dateien für Excel (.xlsx) und Word (.docx) nehmen sie auf."_s,
             .icon = Icon::Exclamation});
    }
    /// Names in a folder of the temporary one.
    QStringList in(const QString& folder) const
    {
        return QDir(test.path(folder)).entryList(QDir::Files, QDir::Name);
    }

    TestContext test;
    FakeDesktop desktop;
    RecordedProgress progress;
    std::unique_ptr<toolkit::ListRows> list = phonedata::makeProviderRows();
    ExportSource source{*list, u"Providerliste"_s};
    ExportOptions options;
};

} // namespace

class tst_Exporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaults()
    {
        Export made;
        QCOMPARE(
            loadExportOptions(made.test.context, made.source),
            (ExportOptions{.csvPath = made.test.path(u"Dokumente/Export/Providerliste.csv"_s),
                           .templatePath = made.test.path(u"Programm/ExportVorlagen/ExportVorlage.html"_s),
                           .htmlPath = made.test.path(u"Dokumente/Export/Providerliste.html"_s),
                           .columns = {0, 1}}));
        const auto contacts = phonedata::makeVcfRows();
        const ExportSource source{*contacts, u"Telefonbuch"_s, {phonedata::VcfLuid}, {phonedata::VcfEmail}};
        QCOMPARE(loadExportOptions(made.test.context, source).columns, (QList<int>{0, 1, 2, 3, 4, 6}));
    }

    /// One list's settings are none of another's, and every one of them comes back.
    void remembersPerList()
    {
        Export made;
        const ExportOptions saved{.destination = Destination::Html,
                                  .separator = CsvSeparator::Tab,
                                  .replacement = u" | "_s,
                                  .csvPath = u"/a/b.csv"_s,
                                  .templatePath = u"/a/t.html"_s,
                                  .htmlPath = u"/a/b.html"_s,
                                  .useHeader = false,
                                  .addEmptyLine = true,
                                  .fitsWidths = false,
                                  .closesAfterExport = true,
                                  .opensFile = false,
                                  .onlySelected = true,
                                  .columns = {1}};
        SaveExportOptions(made.test.context, made.source, saved);
        QCOMPARE(loadExportOptions(made.test.context, made.source), saved);
        const app::Settings& settings = made.test.settings;
        QCOMPARE(settings.GetIniText(u"frmExport"_s, u"lvwNE_optDest3"_s), u"true"_s);
        QCOMPARE(settings.GetIniText(u"frmExport"_s, u"lvwNE_txtCsvReplace"_s), u"| | |"_s);
        QCOMPARE(settings.GetIniText(u"frmExport"_s, u"lvwNE_Col_1_lvwCols"_s), u"false"_s);

        const auto phonebook = phonedata::makePhonebookRows();
        const ExportSource other{*phonebook, u"Telefonbuch"_s};
        QCOMPARE(loadExportOptions(made.test.context, other).destination, Destination::Csv);
        QCOMPARE(loadExportOptions(made.test.context, other).columns.size(), 6);

        setLastDialogFolder(made.test.context, made.source, u"cmdlgPath"_s, made.test.storage + u'/');
        QCOMPARE(lastDialogFolder(made.test.context, made.source, u"cmdlgPath"_s), made.test.storage);
        QCOMPARE(lastDialogFolder(made.test.context, other, u"cmdlgPath"_s), QString());
        setLastDialogFolder(made.test.context, made.source, u"cmdlgPath"_s, u"/gone"_s);
        QCOMPARE(lastDialogFolder(made.test.context, made.source, u"cmdlgPath"_s), QString());
    }

    void refusals()
    {
        const Rows<std::function<void(Export&)>, QString> rows = {
            {"nothing in the list", [](Export& made) { made.list->clear(); },
             u"Sie haben die Exportoption \"Alle Einträge exportieren\" gewählt.\nDie ausgewählte Liste "
             u"enthält "
             u"jedoch keine Einträge für den Export."_s},
            {"nothing selected", [](Export& made) { made.options.onlySelected = true; },
             u"Sie haben die Exportoption \"Nur die markierten Einträge exportieren\" gewählt.\nEs wurden "
             u"jedoch "
             u"keine Einträge markiert, die exportiert werden könnten."_s},
            {"no column offered",
             [](Export& made) {
                 made.source.hiddenColumns = QList<int>{0, 1};
             },
             u"Es wurden keine Spalten gefunden, die exportiert werden könnten."_s},
            {"no column ticked", [](Export& made) { made.options.columns.clear(); },
             u"Es wurden keine Spalten zum Export ausgewählt. Bitte wählen Sie mindestens eine Spalte aus."_s},
            {"no file", [](Export& made) { made.options.csvPath.clear(); },
             u"Bitte wählen Sie eine Datei aus, in die exportiert werden soll."_s},
            {"network", [](Export& made) { made.options.csvPath = made.test.path(u"\\\\server\\a.csv"_s); },
             u"Export in das Netzwerk ist nur möglich, wenn Sie ein verbundenes Netzlaufwerk auswählen. "
             u"Ansonsten kann nur in lokale Dateien exportiert werden."_s},
        };
        rows.each([&](const auto& prepare, const auto& text) {
            Export made;
            prepare(made);
            made.failsWith(Icon::Information, text);
            QCOMPARE(made.progress.panel.texts, QStringList());
            QCOMPARE(made.test.settings.keys(u"frmExport"_s), QStringList());
            QVERIFY(!QFileInfo::exists(made.test.path(u"Dokumente"_s)));
        });
    }

    void csv()
    {
        Export made;
        made.options.onlySelected = true;
        made.list->setSelected(0, true);
        made.test.dialogs.expect(succeeded);
        QVERIFY(made.run());
        QCOMPARE(made.test.contentOf(made.options.csvPath), QByteArray("Name,Nummer\r\nAnna  A,0301\r\n"));
        QCOMPARE(made.progress.panel.texts, (QStringList{u"Export läuft..."_s, succeeded.text}));
        QCOMPARE(made.progress.bar.steps, (QStringList{u"0/2"_s, u"1/2"_s, u"2/2"_s, u"hidden"_s}));
        QVERIFY(loadExportOptions(made.test.context, made.source).onlySelected);

        made.list->add(phonedata::toRow(phonedata::ProviderEntry{u"Łuka\U0001F600ć"_s, u"0303"_s}));
        made.list->selectAll(true);
        made.expectQuestion(made.options.csvPath, Answer::Ok);
        made.test.dialogs.expect(succeeded);
        made.expectLostLetters();
        QVERIFY(made.run());
        QVERIFY(made.test.contentOf(made.options.csvPath).endsWith("\r\n?uka??,0303\r\n"));
        made.options.destination = Destination::Html;
        made.expectLostLetters();
        QVERIFY(made.run());
    }

    void endings()
    {
        const Rows<Destination, QString, QString> rows = {
            {"as it is", Destination::Csv, u"a.CSV"_s, u"a.CSV"_s},
            {"another", Destination::Csv, u"a.txt"_s, u"a.txt.csv"_s},
            {"no page", Destination::Html, u"a.htm.bak"_s, u"a.htm.bak.html"_s},
        };
        rows.each([&](const auto& destination, const auto& name, const auto& expected) {
            Export made;
            made.options.destination = destination;
            made.options.csvPath = made.options.htmlPath = made.test.path(u"ziel/"_s + name);
            if (destination == Destination::Csv)
                made.test.dialogs.expect(succeeded);
            QVERIFY(made.run());
            QCOMPARE(made.in(u"ziel"_s), QStringList(expected));
            const QString path =
                destination == Destination::Csv ? made.options.csvPath : made.options.htmlPath;
            QCOMPARE(path, made.test.path(u"ziel/"_s + expected));
        });
    }

    void oldFileStaysOrGoes()
    {
        Export made;
        made.options.csvPath = made.test.makeFile(u"alt.csv"_s, "old");
        QFile::setPermissions(made.options.csvPath, QFileDevice::ReadOwner);
        made.expectQuestion(made.options.csvPath, Answer::Cancel);
        QVERIFY(!made.run());
        QCOMPARE(made.test.contentOf(made.options.csvPath), QByteArray("old"));

        const QString link = made.test.path(u"link.csv"_s);
        QVERIFY(QFile::link(made.options.csvPath, link));
        made.options.csvPath = link;
        made.expectQuestion(link, Answer::Ok);
        made.test.dialogs.expect(succeeded);
        const double before = made.test.clock.Timer();
        QVERIFY(made.run());
        QVERIFY(made.test.clock.Timer() - before >= 0.5);
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(made.test.contentOf(made.test.path(u"alt.csv"_s)),
                 QByteArray("Name,Nummer\r\nAnna  A,0301\r\nBert,0302\r\n"));
        QCOMPARE(made.in(u"."_s), (QStringList{u"alt.csv"_s, u"link.csv"_s}));
    }

    /// A full disk, a name that is none: after every failure the old file is there again.
    void oldFileComesBack()
    {
        Export made;
        made.options.csvPath = made.test.makeFile(u"alt.csv"_s, "old");
        made.test.makeFile(u"alt.csv.alt"_s, "somebody else's");
        made.test.startLog();
        made.expectQuestion(made.options.csvPath, Answer::Ok);
        made.test.dialogs.expect(Icon::Information,
                                 u"Beim Export ist ein Fehler 27 aufgetreten.\nBitte wenden Sie sich an den "
                                 u"Programmautor."_s); // EFBIG
        std::unique_ptr<SmallDisk> disk;
        made.test.dialogs.whileShown([&disk] { disk.reset(); });
        for (int row = 0; row < 200; ++row)
            made.list->add(phonedata::toRow(phonedata::ProviderEntry{u"Berta"_s, u"0303030303030303"_s}));
        disk = std::make_unique<SmallDisk>(2000);
        QVERIFY(!made.run());
        QCOMPARE(made.test.contentOf(made.options.csvPath), QByteArray("old"));
        QCOMPARE(made.in(u"."_s).filter(u"alt.csv"_s), (QStringList{u"alt.csv"_s, u"alt.csv.alt"_s}));
        QCOMPARE(made.progress.panel.Text(), u"Export abgebrochen"_s);
        QVERIFY(!made.progress.bar.visible);
        QVERIFY(made.test.logged().contains(u"Warning: Export2Csv:Error 27 Source: lvwNE Destination: "_s +
                                            made.options.csvPath));

        QDir().mkpath(made.test.path(u"ordner.csv"_s));
        made.options.csvPath = made.test.path(u"ordner.csv"_s);
        made.failsWith(
            Icon::Information,
            u"Die Exportdatei konnte nicht erstellt werden.\nBitte prüfen Sie, ob der Dateiname und der "
            u"Exportpfad gültig sind und ob Sie Schreibrecht haben. Falls ja, wenden Sie sich bitte an den "
            u"Programmautor."_s);

        QDir().mkpath(made.test.path(u"ordner.html"_s));
        made.options.htmlPath = made.test.path(u"ordner.html"_s);
        made.options.destination = Destination::Html;
        made.test.dialogs.expect({.text = u"Fehler beim Schreiben der Datei "_s + made.options.htmlPath,
                                  .icon = Icon::Exclamation});
        QVERIFY(!made.run());
        QCOMPARE(made.progress.panel.Text(), u"Export beendet."_s);
        made.options.destination = Destination::Csv;

        made.options.csvPath = made.test.path(u"alt.csv/unter/a.csv"_s); // below a file
        const QString folder = made.test.path(u"alt.csv/unter"_s);
        made.test.dialogs.expectStart(u"Der Pfad"_s);
        made.failsWith(Icon::Exclamation, u"Der Ordner \""_s + folder +
                                              u"\" konnte nicht angelegt werden.\nBitte wählen Sie ein "
                                              u"Laufwerk und einen Ordner, in dem Sie "
                                              u"Schreibrecht haben aus."_s);
    }

    /// The questions about the template come once the old page has been moved away, and it comes back after
    /// each.
    void html()
    {
        const Rows<QString, QByteArray, QString> rows = {
            {"the page itself", u"seite.html"_s, "[<$Table.Content$>]",
             u"Als Exportvorlage und als Ausgabedatei kann nicht die gleiche Datei ausgewählt werden, weil "
             u"die "
             u"Vorlage überschrieben würde.\nBitte wählen Sie unterschiedliche Dateien aus."_s},
            {"the page by another name", u"./seite.html"_s, "[<$Table.Content$>]",
             u"Die ausgewählte Exportvorlage \"%1\" existiert nicht."_s},
            {"none", u"fehlt.html"_s, {}, u"Die ausgewählte Exportvorlage \"%1\" existiert nicht."_s},
            {"no place for the table", u"leer.html"_s, "<$Table.content$>",
             u"Der Bezeichner \"<$Table.Content$>\" wurde in der Exportvorlage nicht gefunden - Export nicht möglich."_s},
        };
        rows.each([&](const auto& name, const auto& page, const auto& text) {
            Export made;
            made.options.destination = Destination::Html;
            made.options.htmlPath = made.test.makeFile(u"seite.html"_s, "old");
            made.options.templatePath = made.test.path(name);
            if (!page.isEmpty())
                made.test.makeFile(name, page);
            const QByteArray before = made.test.contentOf(made.options.htmlPath);
            made.expectQuestion(made.options.htmlPath, Answer::Ok);
            made.failsWith(Icon::Exclamation,
                           text.contains(u"%1"_s) ? text.arg(made.options.templatePath) : text);
            QCOMPARE(made.test.contentOf(made.options.htmlPath), before);
            QCOMPARE(made.in(u"."_s).filter(u".alt"_s), QStringList());
            QCOMPARE(made.progress.panel.texts, QStringList());
        });
    }

    /// The office programs get a new file each time, which they can't overwrite. Without one no file is left.
    void office()
    {
        Export made;
        made.desktop.endings = {u"xlsx"_s};
        made.options.destination = Destination::Excel;
        const QString scratch = made.test.storage + u"/config/temp"_s;
        QVERIFY(made.run());
        QVERIFY(made.run());
        QCOMPARE(made.desktop.opened,
                 (QStringList{scratch + u"/Providerliste.xlsx"_s, scratch + u"/Providerliste 2.xlsx"_s}));
        QVERIFY(!QFile::permissions(made.desktop.opened.first()).testFlag(QFileDevice::WriteOwner));
        QCOMPARE(made.progress.panel.texts.first(3),
                 (QStringList{u"Excel wird gestartet..."_s, u"Export läuft..."_s, succeeded.text}));

        made.desktop.endings.clear();
        made.failsWith(
            Icon::Exclamation,
            u"Auf Excel konnte nicht zugegriffen werden.\nWenn bereits eine Excel Mappe geöffnet ist, "
            u"prüfen Sie, "
            u"ob diese auf Eingaben wartet und beenden Sie die Eingabe. (z.B. wenn eine Zelle zum Editieren "
            u"ausgewählt wurde)"_s);
        QCOMPARE(made.progress.panel.Text(), u"Export abgebrochen"_s);
        made.options.destination = Destination::Word;
        made.failsWith(
            Icon::Exclamation,
            u"Auf Word konnte nicht zugegriffen werden.\nWenn bereits ein Word Dokument "
            u"geöffnet ist, prüfen Sie, ob dieses auf Eingaben wartet und beenden Sie die Eingabe."_s);
        QCOMPARE(QDir(scratch).entryList(QDir::Files, QDir::Name),
                 (QStringList{u"Providerliste 2.xlsx"_s, u"Providerliste.xlsx"_s}));

        // On a full disk no half workbook is opened.
        made.desktop.endings = {u"xlsx"_s, u"docx"_s};
        for (const auto destination : {Destination::Excel, Destination::Word}) {
            made.options.destination = destination;
            made.test.dialogs.expectStart(u"Beim Export ist ein Fehler"_s);
            const SmallDisk disk(700);
            QVERIFY(!made.run());
        }
        QCOMPARE(made.desktop.opened.size(), 2);
    }

    void opensWhatWasMade()
    {
        Export made;
        made.options.opensFile = true;
        made.desktop.endings = {u"csv"_s};
        made.test.dialogs.expect(succeeded);
        QVERIFY(made.run());
        QCOMPARE(made.desktop.opened, QStringList(made.options.csvPath));
        made.options.destination = Destination::Html;
        made.test.dialogs.expectOpenFile({.title = u"Kalmo - Programm wählen"_s, .folder = u"/usr/bin"_s},
                                         u"/usr/bin/see"_s);
        QVERIFY(made.run());
        QCOMPARE(made.desktop.opened.last(), u"/usr/bin/see "_s + made.options.htmlPath);

        // The desktop's own program starts in the storage folder.
        const QString program = made.test.makeFile(u"xdg-open"_s, "#!/bin/sh\npwd > \"$1\"\n");
        QFile::setPermissions(program, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        const auto restore = qScopeGuard([&path] { qputenv("PATH", path); });
        qputenv("PATH", QFile::encodeName(made.test.path({})) + ':' + path);
        const QString told = made.test.path(u"told"_s);
        QVERIFY(app::SystemDesktop(made.test.sy).open(told));
        QTRY_COMPARE(made.test.contentOf(told), QFile::encodeName(made.test.storage) + '\n');
    }
};

KALMO_TEST(tst_Exporter)
#include "tst_Exporter.moc"
