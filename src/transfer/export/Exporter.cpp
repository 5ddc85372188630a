#include "transfer/export/Exporter.h"

#include "app/FileAssociations.h"
#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/Version.h"
#include "transfer/export/DocxTarget.h"
#include "transfer/export/ExportFile.h"
#include "transfer/export/HtmlTarget.h"
#include "transfer/export/XlsxTarget.h"

#include <QDir>
#include <QFile>

#include <cerrno>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;
using toolkit::Icon;

namespace {

constexpr double pauseAfterOld = 0.5; // seconds

const QString running = u"Export läuft..."_s;
const QString succeeded = u"Export erfolgreich abgeschlossen."_s;
const QString brokenOff = u"Export abgebrochen"_s;

} // namespace

/// The texts that name an office program to the user.
struct Exporter::OfficeWords
{
    QString ending;
    QString starting;
    QString refused;
};

/// A file for an office program, or the number of the error that prevented it.
struct Exporter::OfficeFile
{
    std::optional<QByteArray> bytes = {};
    int error = 0;
};

std::optional<QByteArray> htmlPage(app::Context& context, const QString& templatePath, const QString& path,
                                   const QString& title, const std::function<ExportTable()>& table)
{
    const auto refuse = [&context](const QString& text, const QString& english) {
        context.dialogs.Show({.text = text, .icon = Icon::Exclamation, .english = english});
        return std::nullopt;
    };
    if (templatePath == path)
        return refuse(
            u"Als Exportvorlage und als Ausgabedatei kann nicht die gleiche Datei ausgewählt werden, "
            u"weil die Vorlage überschrieben würde.\nBitte wählen Sie unterschiedliche Dateien aus."_s,
            u"The template %1 can't be the file that is written."_s.arg(templatePath));
    QByteArray page;
    if (!app::FileExists(templatePath))
        return refuse(u"Die ausgewählte Exportvorlage \""_s + templatePath + u"\" existiert nicht."_s,
                      u"There is no template %1."_s.arg(templatePath));
    if (!app::readWholeFile(templatePath, page))
        return refuse(u"Die ausgewählte Exportvorlage \""_s + templatePath +
                          u"\" kann nicht gelesen werden."_s,
                      u"The template %1 can't be read."_s.arg(templatePath));
    // Without the mark there is nothing to fill in, so the list is not read.
    if (!page.contains(tableMark))
        return refuse(u"Der Bezeichner \"<$Table.Content$>\" wurde in der Exportvorlage nicht gefunden - "
                      u"Export nicht möglich."_s,
                      u"The template %1 holds no <$Table.Content$>."_s.arg(templatePath));
    return filledTemplate(page, app::productName() + u" - "_s + title, table());
}

bool Exporter::run()
{
    if (!isPossible() || !toDestination())
        return false;
    SaveExportOptions(m_job.context, m_job.source, m_options);
    if (m_options.opensFile && m_options.destination == Destination::Csv)
        openFile(m_options.csvPath);
    if (m_options.opensFile && m_options.destination == Destination::Html)
        openFile(m_options.htmlPath);
    return true;
}

bool Exporter::isPossible()
{
    const toolkit::ListRows& list = m_job.source.list;
    if (!m_options.onlySelected && list.count() == 0)
        tell(u"Sie haben die Exportoption \"Alle Einträge exportieren\" gewählt.\n"
             u"Die ausgewählte Liste enthält jedoch keine Einträge für den Export."_s);
    else if (m_options.onlySelected && list.selectedRows().isEmpty())
        tell(u"Sie haben die Exportoption \"Nur die markierten Einträge exportieren\" gewählt.\n"
             u"Es wurden jedoch keine Einträge markiert, die exportiert werden könnten."_s);
    else if (m_job.source.offeredColumns().isEmpty())
        tell(u"Es wurden keine Spalten gefunden, die exportiert werden könnten."_s);
    else if (m_options.columns.isEmpty())
        tell(
            u"Es wurden keine Spalten zum Export ausgewählt. Bitte wählen Sie mindestens eine Spalte aus."_s);
    else
        return true;
    return false;
}

bool Exporter::toDestination()
{
    const toolkit::BusyScope busy(m_job.busy);
    switch (m_options.destination) {
    case Destination::Excel:
        return ExportExcel();
    case Destination::Word:
        return ExportWord();
    case Destination::Csv:
        return ExportCsv();
    case Destination::Html:
        return ExportHtml();
    }
    return false;
}

/// The checks of a file before an export to it begins.
bool Exporter::claimFile(QString& path, const QStringList& endings, const QString& missing)
{
    if (path.isEmpty()) {
        tell(missing);
        return false;
    }
    if (isRefusedNetworkPath(m_job.context, path) || !makeFolderOf(m_job.context, path))
        return false;
    path = withEnding(path, endings);
    return mayOverwrite(m_job.context, path);
}

bool Exporter::ExportCsv()
{
    if (!claimFile(m_options.csvPath, {u"csv"_s},
                   u"Bitte wählen Sie eine Datei aus, in die exportiert werden soll."_s))
        return false;
    qsizetype lost = 0;
    const bool done = writeExportFile(
        m_job.context, {m_options.csvPath, u"Export2Csv"_s, m_job.source.list.name(), pauseAfterOld},
        [this, &lost] {
            const ExportTable cells = table();
            lost = cells.lettersBeyondCodePage();
            return csvBytes(cells, m_options.separator, m_options.replacement);
        });
    if (!finish(done, done ? succeeded : brokenOff))
        return false;
    tell(succeeded);
    tellLost(lost);
    return true;
}

bool Exporter::ExportHtml()
{
    if (!claimFile(m_options.htmlPath, {u"html"_s, u"htm"_s},
                   u"Bitte wählen Sie eine Ausgabedatei aus, in die exportiert werden soll."_s))
        return false;
    qsizetype lost = 0;
    bool wasRefused = false;
    const auto cells = [this, &lost] {
        const ExportTable made = table();
        lost = made.lettersBeyondCodePage();
        return made;
    };
    const bool done = writeExportFile(
        m_job.context,
        {m_options.htmlPath, u"Export2Html"_s, m_job.source.list.name(), pauseAfterOld, WriteWords::OfFile},
        [&] {
            const auto page = htmlPage(m_job.context, m_options.templatePath, m_options.htmlPath,
                                       m_job.source.title, cells);
            wasRefused = !page;
            return page;
        });
    if (wasRefused)
        return false;
    finish(done, u"Export beendet."_s);
    if (done)
        tellLost(lost);
    return done;
}

bool Exporter::ExportExcel()
{
    static const OfficeWords words{u".xlsx"_s, u"Excel wird gestartet..."_s,
                                   u"Auf Excel konnte nicht zugegriffen werden.\nWenn bereits eine Excel "
                                   u"Mappe geöffnet ist, prüfen Sie, ob "
                                   u"diese auf Eingaben wartet und beenden Sie die Eingabe. (z.B. wenn eine "
                                   u"Zelle zum Editieren ausgewählt "
                                   u"wurde)"_s};
    return exportToOffice(words, [this](const ExportTable& table) {
        const Workbook book =
            xlsxWorkbook(table, {m_job.source.title, m_options.fitsWidths}, app::workPath(m_job.context.sy));
        return book.error == 0 ? OfficeFile{book.bytes} : OfficeFile{{}, book.error};
    });
}

bool Exporter::ExportWord()
{
    static const OfficeWords words{u".docx"_s, u"Word wird gestartet..."_s,
                                   u"Auf Word konnte nicht zugegriffen werden.\nWenn bereits ein Word "
                                   u"Dokument geöffnet ist, prüfen Sie, ob "
                                   u"dieses auf Eingaben wartet und beenden Sie die Eingabe."_s};
    return exportToOffice(words, [this](const ExportTable& table) {
        return OfficeFile{docxBytes(table, {m_job.source.title, m_options.fitsWidths})};
    });
}

bool Exporter::exportToOffice(const OfficeWords& words,
                              const std::function<OfficeFile(const ExportTable&)>& make)
{
    m_job.progress.status(words.starting);
    const OfficeFile file = make(table());
    const QString path = scratchPath(words.ending);
    errno = 0;
    if (!file.bytes || !app::writeWholeFile(path, *file.bytes)) {
        const int error = file.bytes ? errno : file.error;
        finish(false, brokenOff);
        m_job.context.dialogs.Show(
            {.text = u"Beim Export ist ein Fehler %1 aufgetreten."_s.arg(error), .icon = Icon::Exclamation});
        return false;
    }
    if (openInOffice(words, path))
        return finish(true, succeeded);
    app::DeleteQuiet(path);
    return finish(false, brokenOff);
}

/// The scratch folder is emptied when the window closes and at the next start, so the file is read-only: the
/// office program then asks for a name before it saves what the user has changed.
bool Exporter::openInOffice(const OfficeWords& words, const QString& path)
{
    QFile::setPermissions(path, QFileDevice::ReadOwner);
    if (m_job.desktop.hasAssociation(path) && m_job.desktop.open(path))
        return true;
    m_job.context.dialogs.Show({.text = words.refused, .icon = Icon::Exclamation});
    return false;
}

/// A name of its own for each export: the one before may still be open.
QString Exporter::scratchPath(const QString& ending) const
{
    const QDir scratch(app::workPath(m_job.context.sy));
    QString path = scratch.filePath(m_job.source.title + ending);
    for (int number = 2; app::FileExists(path); ++number)
        path = scratch.filePath(u"%1 %2%3"_s.arg(m_job.source.title).arg(number).arg(ending));
    return path;
}

ExportTable Exporter::table() const
{
    const toolkit::ListRows& list = m_job.source.list;
    m_job.progress.start(0, list.count());
    m_job.progress.status(running);
    return makeExportTable(list, m_options.choice(), m_job.progress);
}

bool Exporter::finish(bool done, const QString& status)
{
    m_job.progress.hide();
    m_job.progress.status(status);
    return done;
}

void Exporter::openFile(const QString& path)
{
    if (!app::FileExists(path) || (m_job.desktop.hasAssociation(path) && m_job.desktop.open(path)))
        return;
    app::OpenWithDialog(m_job.context, m_job.desktop, path);
}

void Exporter::tellLost(qsizetype letters)
{
    if (letters > 0)
        m_job.context.dialogs.Show(lostLetters(letters));
}

void Exporter::tell(const QString& text)
{
    m_job.context.dialogs.Show({.text = text, .icon = Icon::Information});
}

} // namespace kalmo::transfer
