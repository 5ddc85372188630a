#pragma once

#include "toolkit/ListRows.h"

#include <QDate>
#include <QString>

#include <memory>

namespace kalmo::phonedata {

/// One contact of a vCard phonebook.
struct tVcfEntry
{
    QString email = {};
    QString lastName = {};
    QString work = {};
    QString mobile = {};
    QString home = {};
    QString firstName = {};
    QString birthday = {};  ///< "1970-03-21T12:30" or empty
    QString luid = {};      ///< the phone's reference; empty for a new entry
    bool isStandIn = false; ///< true if `luid` replaces one that the phone left empty

    bool hasNumber() const { return !home.isEmpty() || !mobile.isEmpty() || !work.isEmpty(); }
    bool operator==(const tVcfEntry&) const = default;
};

/// Columns of the list of contacts.
enum VcfColumn {
    VcfLastName,
    VcfFirstName,
    VcfHome,
    VcfMobile,
    VcfWork,
    VcfEmail,
    VcfBirthday, ///< the text for reading; the cell's tag is the birthday as the phone has it
    VcfLuid
};

/// The list with its column titles, named `lvwVCF`.
std::unique_ptr<toolkit::ListRows> makeVcfRows();

/// Key of the row with that LUID.
QString vcfKey(const QString& luid);

toolkit::ListRow toRow(const tVcfEntry& entry);
tVcfEntry vcfEntryFrom(const toolkit::ListRow& row);

/// "21.03.1970  12:30" for "1970-03-21T12:30", by fixed positions; empty for none and for "0000-00-00".
QString displayBirthday(const QString& birthday);

/// The birthday of a displayed one.
QString storedBirthday(const QString& display);

/// A birthday for the phone from a date and a time of the form hh:mm. The day has no leading zero.
QString writtenBirthday(const QDate& date, const QString& time);

/// Replaces a LUID that the phone has not reported. Until the list has been read again, such an
/// entry can be neither changed nor deleted.
QString noValidLuid(const QDateTime& moment);
/// Returns true for that, and for the empty text, by which the phone would make a new entry.
bool isNoValidLuid(const QString& luid);

} // namespace kalmo::phonedata
