#pragma once

#include <QDate>
#include <QStringList>

#include <optional>
#include <vector>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

/// One contact of an address book.
struct WabContact
{
    int entryNumber = 0; ///< position in the address book, from 1
    QString givenName = {};
    QString middleName = {};
    QString surname = {};
    QString displayName = {};
    QString nickname = {};
    std::optional<QDate> birthday = {};
    bool birthdayHasYear = true;
    QString email1 = {};
    QString email2 = {};
    QString homeStreet = {};
    QString homeCity = {};
    QString homePostalCode = {};
    QString homeCountry = {};
    QString homePhone = {};
    QString homeFax = {};
    QString mobilePhone = {};
    QString homePage = {};
    QString company = {};
    QString businessStreet = {};
    QString businessCity = {};
    QString businessPostalCode = {};
    QString businessCountry = {};
    QString businessPhone = {};
    QString businessFax = {};
    QString businessPage = {};
    int numbersWithoutPlace = 0; ///< telephone numbers that none of the fields could take
    int lostExtensions = 0;      ///< extensions that a card has apart from the number
    QString unreadBirthday = {}; ///< a text that stands for a birthday and is none
    bool isCutOff = false;       ///< the file breaks off within it, so that fields may be missing

    bool operator==(const WabContact&) const = default;
};

/// All that a reading of address books leaves out.
struct ReadingLosses
{
    QStringList skippedFiles = {}; ///< of a folder: those that hold no card
    int damagedRecords = 0;        ///< entries of a Windows Address Book that can't be read

    bool operator==(const ReadingLosses&) const = default;
};

/// Property tags of the address book: the number of the property in the high 16 bits, its type in the low
/// ones.
namespace tags {

inline constexpr quint32 displayName = 0x3001001E;
inline constexpr quint32 email = 0x3003001E;
inline constexpr quint32 givenName = 0x3A06001E;
inline constexpr quint32 businessPhone = 0x3A08001E;
inline constexpr quint32 homePhone = 0x3A09001E;
inline constexpr quint32 surname = 0x3A11001E;
inline constexpr quint32 company = 0x3A16001E;
inline constexpr quint32 mobilePhone = 0x3A1C001E;
inline constexpr quint32 businessFax = 0x3A24001E;
inline constexpr quint32 homeFax = 0x3A25001E;
inline constexpr quint32 businessCountry = 0x3A26001E;
inline constexpr quint32 businessCity = 0x3A27001E;
inline constexpr quint32 businessStreet = 0x3A29001E;
inline constexpr quint32 businessPostalCode = 0x3A2A001E;
inline constexpr quint32 birthday = 0x3A420040;
inline constexpr quint32 middleName = 0x3A44001E;
inline constexpr quint32 nickname = 0x3A4F001E;
inline constexpr quint32 homePage = 0x3A50001E;
inline constexpr quint32 businessPage = 0x3A51001E;
inline constexpr quint32 emails = 0x3A56101E;
inline constexpr quint32 homeCity = 0x3A59001E;
inline constexpr quint32 homeCountry = 0x3A5A001E;
inline constexpr quint32 homePostalCode = 0x3A5B001E;
inline constexpr quint32 homeStreet = 0x3A5D001E;

} // namespace tags

/// The field of a contact that a property's text goes to, null for every property without one of its own.
QString WabContact::*fieldOfTag(quint32 tag);

/// Stores e-mail addresses: one in the first place, two or more, parted by "|", in both.
void storeEmails(WabContact& contact, const QString& addresses);

/// More contacts than this are refused, so that no file takes memory without bound.
inline constexpr size_t mostContacts = 100'000;

} // namespace kalmo::transfer
