#include "transfer/export/VcfTarget.h"

#include "operations/ContactFields.h"
#include "phonedata/ClassicEntry.h"
#include "phonedata/VcfEntry.h"
#include "phonedata/VcfFiles.h"

#include <QRegularExpression>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;
using phonedata::tVcfEntry;

namespace {

/// "--12-24" of "24.12  08:30"; empty for a text that is no date.
QString dayWithoutYear(const QString& date)
{
    static const QRegularExpression day(u"^([0-9]{2})\\.([0-9]{2})(?: |$)"_s);
    const auto parts = day.match(date);
    return parts.hasMatch() ? u"--%1-%2"_s.arg(parts.captured(2), parts.captured(1)) : QString();
}

bool isContact(const toolkit::ListRow& row)
{
    return row.cells.size() > phonedata::VcfBirthday;
}

tVcfEntry contactOf(const toolkit::ListRow& row)
{
    return operations::withLongDay(phonedata::vcfEntryFrom(row));
}

tVcfEntry contactOfEntry(const toolkit::ListRow& row)
{
    const phonedata::ClassicEntry entry = phonedata::classicEntryFrom(row);
    return {.lastName = entry.name, .home = entry.number, .birthday = dayWithoutYear(entry.date)};
}

} // namespace

QByteArray vcfCardOf(const toolkit::ListRow& row)
{
    return phonedata::vcfCardBytes(isContact(row) ? contactOf(row) : contactOfEntry(row));
}

QByteArray vcfBytes(const toolkit::ListRows& list, const ExportChoice& choice)
{
    QByteArray cards;
    for (int index = 0; index < list.count(); ++index) {
        if (choice.onlySelected && !list.row(index).selected)
            continue;
        toolkit::ListRow row = list.row(index);
        for (int column = 0; column < row.cells.size(); ++column) {
            if (!choice.columns.contains(column))
                row.cells[column] = {};
        }
        cards += vcfCardOf(row);
    }
    return cards;
}

} // namespace kalmo::transfer
