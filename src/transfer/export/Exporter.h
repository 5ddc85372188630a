#pragma once

#include "app/Context.h"
#include "transfer/export/ExportOptions.h"

#include <QByteArray>

#include <optional>

namespace kalmo::transfer {

/// Everything that an export from the window works with.
struct ExportJob
{
    app::Context& context;
    app::Desktop& desktop;
    const ExportSource& source;
    toolkit::BusyWindow* busy = nullptr; ///< blocked while the export runs; may be absent
    toolkit::Progress progress = {};
};

/// The page that a template makes of a table, for a file at `path`. Nothing if the template is that file, is
/// not there, or has no place for the table; the user sees a message.
std::optional<QByteArray> htmlPage(app::Context& context, const QString& templatePath, const QString& path,
                                   const QString& title, const std::function<ExportTable()>& table);

/// Carries out the order of the export dialog: looks for what is missing, writes the file, remembers the
/// options and opens the file. It shows all messages.
class Exporter
{
public:
    Exporter(const ExportJob& job, ExportOptions options) : m_job(job), m_options(std::move(options)) {}

    /// Returns true if the list was exported.
    bool run();

    /// As given, but for the ending that a path of a file may have got.
    const ExportOptions& options() const { return m_options; }

    /// The four targets. They return true if the list was exported. The first two leave a new file with the
    /// user's office program.
    bool ExportExcel();
    bool ExportWord();
    bool ExportCsv();
    bool ExportHtml();

private:
    struct OfficeWords;
    struct OfficeFile;

    bool isPossible();
    bool toDestination();
    bool claimFile(QString& path, const QStringList& endings, const QString& missing);
    bool exportToOffice(const OfficeWords& words, const std::function<OfficeFile(const ExportTable&)>& make);
    bool openInOffice(const OfficeWords& words, const QString& path);
    QString scratchPath(const QString& ending) const;
    ExportTable table() const;
    bool finish(bool done, const QString& status);
    void openFile(const QString& path);
    void tell(const QString& text);
    void tellLost(qsizetype letters);

    ExportJob m_job;
    ExportOptions m_options;
};

} // namespace kalmo::transfer
