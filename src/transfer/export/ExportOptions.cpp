#include "transfer/export/ExportOptions.h"

#include "app/Files.h"
#include "app/mdlKonverter.h"
#include "transfer/export/HtmlTarget.h"

#include <QDir>

#include <algorithm>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

namespace {

const QString section = u"frmExport"_s;
const QString blankMark = u"|"_s;       // around a value whose blanks the settings file has to keep
constexpr qsizetype longestValue = 255; // that the settings file gives back
constexpr qsizetype shortestPath = 3;

/// The options of one list in the settings, which it has for itself.
class Store
{
public:
    Store(const app::Settings& settings, const QString& list) : m_settings(settings), m_prefix(list + u'_') {}

    QString text(const QString& key, const QString& fallback) const
    {
        const QString value = m_settings.GetIniText(section, m_prefix + key);
        return value == app::noValue() ? fallback : value;
    }
    /// A text between two marks; one without them is taken as it is.
    QString markedText(const QString& key, const QString& fallback) const
    {
        const QString value = text(key, blankMark + fallback + blankMark);
        const bool isMarked = value.size() > 1 && value.startsWith(blankMark) && value.endsWith(blankMark);
        return isMarked ? value.sliced(1).chopped(1) : value;
    }
    bool truth(const QString& key, bool fallback) const
    {
        const QString value = text(key, fallback ? u"true"_s : u"false"_s);
        return value.compare(u"true"_s, Qt::CaseInsensitive) == 0 || value.toInt() != 0;
    }
    int number(const QString& key, int fallback) const
    {
        return app::toInt32(m_settings.GetIniNumber(section, m_prefix + key, static_cast<float>(fallback)));
    }

private:
    const app::Settings& m_settings;
    QString m_prefix;
};

class StoreWriter
{
public:
    StoreWriter(app::Settings& settings, const QString& list) : m_settings(settings), m_prefix(list + u'_') {}

    /// Writes only what differs: each change rewrites the whole file.
    void text(const QString& key, const QString& value)
    {
        const QString name = m_prefix + key;
        if (value.size() <= longestValue && m_settings.GetIniText(section, name) != value)
            m_settings.PutIniText(section, name, value);
    }
    void truth(const QString& key, bool value) { text(key, value ? u"true"_s : u"false"_s); }
    void number(const QString& key, int value) { text(key, QString::number(value)); }

private:
    app::Settings& m_settings;
    QString m_prefix;
};

QString columnKey(int column)
{
    return u"Col_%1_lvwCols"_s.arg(column + 1);
}

QString defaultPath(const app::Context& context, const QString& title, const QString& ending)
{
    return QDir(context.sy.DefUserExpRoot).filePath(u"Export/"_s + title + ending);
}

Destination storedDestination(const Store& store, Destination fallback)
{
    for (int index = 0; index <= static_cast<int>(Destination::Html); ++index) {
        const auto destination = static_cast<Destination>(index);
        if (store.truth(u"optDest%1"_s.arg(index), destination == fallback))
            return destination;
    }
    return fallback;
}

} // namespace

QList<int> ExportSource::offeredColumns() const
{
    QList<int> columns;
    for (int column = 0; column < list.columns().size(); ++column) {
        if (!hiddenColumns.contains(column))
            columns.append(column);
    }
    return columns;
}

ExportOptions loadExportOptions(const app::Context& context, const ExportSource& source)
{
    const Store store(context.settings, source.list.name());
    ExportOptions options;
    options.destination = storedDestination(store, options.destination);
    const int separator = store.number(u"cmbCsvSep"_s, static_cast<int>(source.defaultSeparator));
    const bool isSeparator = separator >= 0 && separator < separatorTable().size();
    options.separator = isSeparator ? static_cast<CsvSeparator>(separator) : source.defaultSeparator;
    options.replacement = store.markedText(u"txtCsvReplace"_s, options.replacement);
    options.csvPath = store.text(u"txtCsvPath"_s, defaultPath(context, source.title, u".csv"_s));
    options.templatePath = store.text(u"txtHtmlTemplatePath"_s, defaultTemplate(context.sy));
    options.htmlPath = store.text(u"txtHtmlDestPath"_s, defaultPath(context, source.title, u".html"_s));
    options.useHeader = store.number(u"chkUseHeader"_s, options.useHeader) != 0;
    options.addEmptyLine = store.number(u"chkAddEmptyCol"_s, options.addEmptyLine) != 0;
    options.fitsWidths = store.number(u"chkOptimizeColWidth"_s, options.fitsWidths) != 0;
    options.closesAfterExport = store.number(u"chkCloseAfterExport"_s, options.closesAfterExport) != 0;
    options.opensFile = store.number(u"chkAutoOpenExportFile"_s, options.opensFile) != 0;
    options.onlySelected = store.truth(u"optRows1"_s, options.onlySelected);
    for (const int column : source.offeredColumns()) {
        if (store.truth(columnKey(column), !source.untickedColumns.contains(column)))
            options.columns.append(column);
    }
    return options;
}

void SaveExportOptions(app::Context& context, const ExportSource& source, const ExportOptions& options)
{
    StoreWriter store(context.settings, source.list.name());
    for (int index = 0; index <= static_cast<int>(Destination::Html); ++index)
        store.truth(u"optDest%1"_s.arg(index), index == static_cast<int>(options.destination));
    store.number(u"cmbCsvSep"_s, static_cast<int>(options.separator));
    store.text(u"txtCsvReplace"_s, blankMark + options.replacement + blankMark);
    store.text(u"txtCsvPath"_s, options.csvPath);
    store.text(u"txtHtmlTemplatePath"_s, options.templatePath);
    store.text(u"txtHtmlDestPath"_s, options.htmlPath);
    store.number(u"chkUseHeader"_s, options.useHeader);
    store.number(u"chkAddEmptyCol"_s, options.addEmptyLine);
    store.number(u"chkOptimizeColWidth"_s, options.fitsWidths);
    store.number(u"chkCloseAfterExport"_s, options.closesAfterExport);
    store.number(u"chkAutoOpenExportFile"_s, options.opensFile);
    store.truth(u"optRows0"_s, !options.onlySelected);
    store.truth(u"optRows1"_s, options.onlySelected);
    for (const int column : source.offeredColumns())
        store.truth(columnKey(column), options.columns.contains(column));
}

QString lastDialogFolder(const app::Context& context, const ExportSource& source, const QString& dialog)
{
    const QString folder = Store(context.settings, source.list.name()).text(dialog, {});
    return app::DirExists(folder) ? folder : QString();
}

void setLastDialogFolder(app::Context& context, const ExportSource& source, const QString& dialog,
                         const QString& folder)
{
    StoreWriter(context.settings, source.list.name()).text(dialog, QDir::cleanPath(folder));
}

QString exportPathFault(const QString& path)
{
    if (path.size() < shortestPath)
        return u"Bitte geben Sie einen gültigen Pfad- und Dateinamen ein oder verwenden Sie die Knopf neben "
               u"dem "
               u"Eingabelfeld, um eine Datei auszuwählen."_s;
    // A slash separates folders here.
    const QString tested = path.sliced(2);
    const bool isRefused = std::any_of(tested.begin(), tested.end(),
                                       [](QChar character) { return u":*?<>"_s.contains(character); });
    return isRefused
               ? u"Der neue Ordner- bzw. Dateiname darf folgende Zeichen nicht enthalten\n/ : * ? < > "_s
               : QString();
}

} // namespace kalmo::transfer
