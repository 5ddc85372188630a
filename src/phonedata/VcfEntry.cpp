#include "phonedata/VcfEntry.h"

#include "app/mdlKonverter.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::ListRow;
using toolkit::ListRows;

namespace {

const QString noLuidMark = u"NOVALIDLUID"_s;
const QString standInTag = u"StandIn"_s;

} // namespace

std::unique_ptr<ListRows> makeVcfRows()
{
    return std::make_unique<ListRows>(u"lvwVCF"_s,
                                      QList<toolkit::ListColumn>{{u"Nachname"_s},
                                                                 {u"Vorname"_s},
                                                                 {u"Tel. privat"_s},
                                                                 {u"Tel. Handy"_s},
                                                                 {u"Tel. geschäftlich"_s},
                                                                 {u"Email"_s},
                                                                 {u"Jahrestag"_s, toolkit::SortBy::Date},
                                                                 {u"LUID"_s}});
}

QString vcfKey(const QString& luid)
{
    return u'i' + luid;
}

ListRow toRow(const tVcfEntry& entry)
{
    return {.key = vcfKey(entry.luid),
            .cells = {{entry.lastName},
                      {entry.firstName},
                      {entry.home},
                      {entry.mobile},
                      {entry.work},
                      {entry.email},
                      {.text = displayBirthday(entry.birthday), .tag = entry.birthday},
                      {.text = entry.luid, .tag = entry.isStandIn ? standInTag : QString()}}};
}

tVcfEntry vcfEntryFrom(const ListRow& row)
{
    const QString birthday = row.cells.value(VcfBirthday).tag;
    return {.email = row.text(VcfEmail),
            .lastName = row.text(VcfLastName),
            .work = row.text(VcfWork),
            .mobile = row.text(VcfMobile),
            .home = row.text(VcfHome),
            .firstName = row.text(VcfFirstName),
            .birthday = birthday.isEmpty() ? storedBirthday(row.text(VcfBirthday)) : birthday,
            .luid = row.text(VcfLuid),
            .isStandIn = row.cells.value(VcfLuid).tag == standInTag};
}

QString displayBirthday(const QString& birthday)
{
    if (birthday.isEmpty() || birthday == u"0000-00-00"_s)
        return {};
    return birthday.mid(8, 2) + u'.' + birthday.mid(5, 2) + u'.' + birthday.left(4) + u"  "_s +
           birthday.mid(11);
}

QString storedBirthday(const QString& display)
{
    if (display.isEmpty())
        return {};
    return display.mid(6, 4) + u'-' + display.mid(3, 2) + u'-' + display.left(2) + u'T' + display.mid(12);
}

QString writtenBirthday(const QDate& date, const QString& time)
{
    return date.toString(u"yyyy-MM-d"_s) + u'T' + time;
}

QString noValidLuid(const QDateTime& moment)
{
    return noLuidMark + u'_' + app::FormatDateStamp(moment);
}

bool isNoValidLuid(const QString& luid)
{
    return luid.isEmpty() || luid.contains(noLuidMark);
}

} // namespace kalmo::phonedata
