// How long a large list takes to become a file of each kind.

#include "Bench.h"
#include "phonedata/VcfEntry.h"
#include "transfer/export/CsvTarget.h"
#include "transfer/export/DocxTarget.h"
#include "transfer/export/HtmlTarget.h"
#include "transfer/export/VcfTarget.h"
#include "transfer/export/XlsxTarget.h"

#include <QTemporaryDir>

#include <algorithm>

using namespace kalmo;
using namespace kalmo::bench;

namespace {

constexpr int rows = 10000;
constexpr int runs = 3;       // the quickest counts: the others were disturbed
constexpr double allowed = 1; // seconds

std::unique_ptr<toolkit::ListRows> contacts()
{
    auto list = phonedata::makeVcfRows();
    std::vector<toolkit::ListRow> made;
    for (int index = 0; index < rows; ++index) {
        const QString number = QString::number(index);
        made.push_back(phonedata::toRow({.email = u"anna%1@beispiel.example"_s.arg(index),
                                         .lastName = u"Müller-Lüdenscheidt "_s + number,
                                         .work = u"+49221"_s + number,
                                         .mobile = u"0171"_s + number,
                                         .home = u"030"_s + number,
                                         .firstName = u"Anna"_s,
                                         .birthday = u"1970-03-21T12:30"_s,
                                         .luid = number}));
    }
    list->addAll(std::move(made));
    return list;
}

/// False if nothing comes out.
bool measure(const QString& what, const std::function<qsizetype()>& work)
{
    double quickest = 0;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer watch;
        watch.start();
        if (work() == 0)
            return false;
        const double seconds = static_cast<double>(watch.nsecsElapsed()) / 1e9;
        quickest = run == 0 ? seconds : std::min(quickest, seconds);
    }
    printRow(what, quickest, allowed);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir scratch;
    const auto list = contacts();
    const transfer::ExportChoice choice{.columns = {0, 1, 2, 3, 4, 5, 6}};
    const auto table = [&] { return transfer::makeExportTable(*list, choice); };
    const QByteArray page(transfer::tableMark.data(), transfer::tableMark.size());
    const transfer::OfficeLook look{u"Telefonbuch"_s};
    printHeading();
    const bool isMade =
        measure(u"10000 contacts to .csv (s)"_s,
                [&] {
                    return transfer::csvBytes(table(), transfer::CsvSeparator::QuotedComma, u" "_s).size();
                }) &&
        measure(u"10000 contacts to .html (s)"_s,
                [&] {
                    return transfer::filledTemplate(page, look.title, table()).value_or(QByteArray()).size();
                }) &&
        measure(u"10000 contacts to .vcf (s)"_s, [&] { return transfer::vcfBytes(*list, choice).size(); }) &&
        measure(u"10000 contacts to .xlsx (s)"_s,
                [&] { return transfer::xlsxWorkbook(table(), look, scratch.path()).bytes.size(); }) &&
        measure(u"10000 contacts to .docx (s)"_s,
                [&] { return transfer::docxBytes(table(), look).value_or(QByteArray()).size(); });
    return isMade ? 0 : 1;
}
