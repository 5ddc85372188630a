#include "cli/ExportOrder.h"

#include "app/Files.h"
#include "cli/SavedListWords.h"
#include "transfer/export/ExportFile.h"
#include "transfer/export/HtmlTarget.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace kalmo::cli {

namespace {

struct EndingRow
{
    QStringView ending;
    ExportKind kind;
};

constexpr std::array<EndingRow, 6> endings = {{
    {u"csv", ExportKind::Csv},
    {u"xlsx", ExportKind::Xlsx},
    {u"docx", ExportKind::Docx},
    {u"html", ExportKind::Html},
    {u"htm", ExportKind::Html},
    {u"vcf", ExportKind::Vcf},
}};

/// Options that mean something for some kinds of files only.
struct OptionRow
{
    QStringView option;
    QList<ExportKind> kinds;
};

const std::array<OptionRow, 6> optionKinds = {{
    {u"--separator", {ExportKind::Csv}},
    {u"--replace", {ExportKind::Csv}},
    {u"--template", {ExportKind::Html}},
    {u"--fixed-width", {ExportKind::Xlsx, ExportKind::Docx}},
    {u"--no-header", {ExportKind::Csv, ExportKind::Xlsx, ExportKind::Docx, ExportKind::Html}},
    {u"--empty-line", {ExportKind::Csv, ExportKind::Xlsx, ExportKind::Docx}},
}};

/// Takes the words apart one after the other; the first fault is kept.
class OrderReader
{
public:
    explicit OrderReader(const Job& job) : m_job(job), m_words(job.invocation) {}

    std::optional<ExportOrder> read()
    {
        m_order.path = QFileInfo(m_words.arguments.value(0)).absoluteFilePath();
        readKind();
        if (m_words.has(u"--from"_s))
            m_order.from = m_words.value(u"--from"_s);
        if (m_words.has(u"--columns"_s))
            m_order.columns = m_words.value(u"--columns"_s).split(u',');
        if (m_words.has(u"--rows"_s))
            readRows();
        m_order.useHeader = !m_words.has(u"--no-header"_s);
        m_order.addEmptyLine = m_words.has(u"--empty-line"_s);
        m_order.fitsWidths = !m_words.has(u"--fixed-width"_s);
        m_order.mayOverwrite = m_words.has(u"--force"_s);
        readSeparator();
        readTemplate();
        return error.isEmpty() ? std::optional(m_order) : std::nullopt;
    }

    QString error;

private:
    void fail(const QString& reason)
    {
        if (error.isEmpty())
            error = reason;
    }

    void readKind()
    {
        if (transfer::isNetworkPath(m_words.arguments.value(0)))
            return fail(u"could not export to %1: it is not a local file"_s.arg(m_words.arguments.value(0)));
        const QString ending = QFileInfo(m_order.path).suffix();
        const auto row = std::ranges::find_if(endings, [&ending](const EndingRow& known) {
            return ending.compare(known.ending, Qt::CaseInsensitive) == 0;
        });
        if (row == endings.end()) {
            QStringList known;
            for (const EndingRow& one : endings)
                known.append(u'.' + one.ending.toString());
            return fail(u"could not export to %1: its name ends neither in %2"_s.arg(
                m_words.arguments.value(0), endingsInWords(known)));
        }
        m_order.kind = row->kind;
        for (const OptionRow& option : optionKinds) {
            if (m_words.has(option.option.toString()) && !option.kinds.contains(row->kind))
                fail(u"%1 means nothing for a file that ends in .%2"_s.arg(option.option, ending.toLower()));
        }
    }

    void readRows()
    {
        static const QRegularExpression range(u"^([1-9][0-9]{0,8})(?:-([1-9][0-9]{0,8}))?$"_s);
        m_order.rows.emplace();
        for (const QString& word : m_words.value(u"--rows"_s).split(u',')) {
            const auto parts = range.match(word.trimmed());
            const int first = parts.captured(1).toInt();
            const int last = parts.captured(2).isEmpty() ? first : parts.captured(2).toInt();
            if (!parts.hasMatch() || last < first)
                return fail(u"--rows takes numbers and ranges such as 1-5,9, not \"%1\""_s.arg(word));
            m_order.rows->append({first, last});
        }
    }

    void readSeparator()
    {
        const QString word = m_words.value(u"--separator"_s);
        const auto& table = transfer::separatorTable();
        const auto row = std::ranges::find_if(
            table, [&word](const transfer::SeparatorRow& known) { return known.word == word; });
        if (row != table.end())
            m_order.separator = row->separator;
        if (m_words.has(u"--replace"_s))
            m_order.replacement = m_words.value(u"--replace"_s);
        if (!transfer::isReplacement(m_order.replacement, m_order.separator))
            fail(u"--replace must not hold a character of the separator"_s);
    }

    void readTemplate()
    {
        if (m_order.kind != ExportKind::Html)
            return;
        m_order.templatePath = m_words.has(u"--template"_s)
                                   ? QFileInfo(m_words.value(u"--template"_s)).absoluteFilePath()
                                   : transfer::defaultTemplate(m_job.context.sy);
        if (!app::FileExists(m_order.templatePath))
            fail(u"there is no template %1"_s.arg(m_order.templatePath));
        else if (QFileInfo(m_order.templatePath) == QFileInfo(m_order.path))
            fail(u"the template %1 can't be the file that is written"_s.arg(m_order.templatePath));
    }

    const Job& m_job;
    const Invocation& m_words;
    ExportOrder m_order;
};

} // namespace

std::optional<ExportOrder> exportOrder(const Job& job, QString& error)
{
    OrderReader reader(job);
    const auto order = reader.read();
    error = reader.error;
    return order;
}

std::optional<QList<int>> columnsByHeading(const toolkit::ListRows& list, const QList<int>& offered,
                                           const QStringList& headings, QString& error)
{
    QList<int> columns;
    for (const QString& heading : headings) {
        const auto column = std::ranges::find_if(offered, [&](int number) {
            return list.columns()[number].title.compare(heading.trimmed(), Qt::CaseInsensitive) == 0;
        });
        if (column == offered.end()) {
            QStringList known;
            for (const int number : offered)
                known.append(list.columns()[number].title);
            error = u"there is no column \"%1\"; there are %2"_s.arg(heading, known.join(u", "_s));
            return {};
        }
        if (!columns.contains(*column))
            columns.append(*column);
    }
    std::ranges::sort(columns);
    return columns;
}

bool selectRows(toolkit::ListRows& list, const QList<std::pair<int, int>>& ranges, QString& error)
{
    list.selectAll(false);
    for (const auto& [first, last] : ranges) {
        if (last > list.count()) {
            error = u"there is no row %1; the list holds %2"_s.arg(last).arg(list.count());
            return false;
        }
        for (int row = first; row <= last; ++row)
            list.setSelected(row - 1, true);
    }
    return true;
}

} // namespace kalmo::cli
