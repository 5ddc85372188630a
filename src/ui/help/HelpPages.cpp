#include "ui/help/HelpPages.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocumentFragment>

// Outside of any namespace, as the macro needs it. Without it the linker leaves the pages out.
static void loadPages()
{
    Q_INIT_RESOURCE(help);
}

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

struct PageRow
{
    int topic;
    QStringView file;
};

constexpr PageRow pageTable[] = {
    {helpTopicStart, u"start.html"},
    {helpTopicPort, u"anschluss.html"},
    {helpTopicBluetooth, u"bluetooth.html"},
    {1003, u"nicht-gefunden.html"},
    {1004, u"telefonbuch.html"},
    {1005, u"vcard.html"},
    {1006, u"vorwahlen.html"},
    {1007, u"provider.html"},
    {1008, u"sicherung.html"},
    {helpTopicImport, u"import.html"},
    {helpTopicExport, u"export.html"},
    {1009, u"dateisystem.html"},
    {1015, u"bilder.html"},
    {1016, u"toene.html"},
    {1017, u"vorschau.html"},
    {1010, u"klingeltoene.html"},
    {1011, u"geraet.html"},
    {1012, u"einstellungen.html"},
};

QString plain(const QString& html)
{
    return QTextDocumentFragment::fromHtml(html).toPlainText().simplified();
}

HelpPage readPage(const PageRow& row)
{
    static const QRegularExpression title(u"<h1>(.*?)</h1>"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression section(u"<h2><a name=\"(.*?)\">(.*?)</a></h2>"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    HelpPage page{row.topic, row.file.toString(), {}, {}, {}};
    QFile file(helpRoot() + page.file);
    if (!file.open(QIODevice::ReadOnly))
        return page;
    const QString html = QString::fromUtf8(file.readAll());
    page.title = plain(title.match(html).captured(1));
    for (auto found = section.globalMatch(html); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const qsizetype next = html.indexOf(u"<h2>"_s, match.capturedEnd());
        const qsizetype end = next < 0 ? html.size() : next;
        page.sections.append({plain(match.captured(2)), match.captured(1),
                              plain(html.sliced(match.capturedStart(), end - match.capturedStart()))});
    }
    page.words = plain(html);
    return page;
}

} // namespace

QString helpRoot()
{
    loadPages();
    return u":/help/"_s;
}

QList<HelpPage> readHelpPages()
{
    QList<HelpPage> pages;
    for (const PageRow& row : pageTable)
        pages.append(readPage(row));
    return pages;
}

} // namespace kalmo::ui
