#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace kalmo::link {

// Families of handsets, by `PhoneType`. There is no record of capabilities: what a phone can do follows from
// the number of its family, and nowhere else are these numbers compared.

/// Phonebook and provider list are reached by AT commands.
constexpr bool isClassic(int phoneType)
{
    return phoneType >= 1 && phoneType <= 4;
}
/// Has melodies of its own, and each event's tone can be chosen among them.
constexpr bool hasRingtoneSettings(int phoneType)
{
    return phoneType >= 2 && phoneType <= 4;
}
/// Entries of the phonebook can be marked as VIP, with a tone of their own. Dates then have "00" ahead of
/// them.
constexpr bool marksVip(int phoneType)
{
    return phoneType >= 2 && phoneType <= 4;
}
/// The codes of melodies that are written are one less than those that are read.
constexpr bool countsMelodiesFromZero(int phoneType)
{
    return phoneType == 1;
}
/// A store is closed by a plain "AT".
constexpr bool closesStoreByAt(int phoneType)
{
    return phoneType == 1 || phoneType == 2;
}
/// A dummy entry has to be written and erased before a longer phonebook is written.
constexpr bool needsPreparedPhonebook(int phoneType)
{
    return phoneType == 3;
}
/// The folder by which "AT^WFFO" lists the melodies.
constexpr QByteArrayView melodyFolder(int phoneType)
{
    return phoneType == 2 ? "MEL" : phoneType == 3 ? "0" : "3";
}
/// The clock can be read and set.
constexpr bool hasClock(int phoneType)
{
    return phoneType == 1;
}
/// Phonebook, calendar and notes are objects of the data mode.
constexpr bool hasVcards(int phoneType)
{
    return phoneType >= 5 && phoneType <= 13;
}
/// Says how strong the radio signal is and how full the battery.
constexpr bool hasGauges(int phoneType)
{
    return phoneType == 1 || hasVcards(phoneType);
}
constexpr bool hasFileSystem(int phoneType)
{
    return hasVcards(phoneType) && phoneType != 7;
}
/// Rewrites every number by its own settings of area codes, those that it sends too.
constexpr bool hasAreaCodes(int phoneType)
{
    return phoneType >= 8 && phoneType <= 13;
}
/// Takes sounds, and pictures as JPEG. The other phones with files take melodies, and pictures as BMP.
constexpr bool takesSounds(int phoneType)
{
    return phoneType >= 8 && phoneType <= 13;
}
/// Commands end with a line feed behind the carriage return.
constexpr bool needsLfTerminator(int phoneType)
{
    return phoneType >= 11 && phoneType <= 13;
}
/// Names of files go out with their whole path, and deletes need the file's attributes set first.
constexpr bool usesAbsoluteNames(int phoneType)
{
    return needsLfTerminator(phoneType);
}
/// Names in vCards go out as UTF-8 whatever the settings say.
constexpr bool needsUtf8Contacts(int phoneType)
{
    return needsLfTerminator(phoneType);
}
/// A delete is answered without the change counter, which then has to be read again.
constexpr bool deletesSilently(int phoneType)
{
    return phoneType >= 8 && phoneType <= 13;
}

/// Result of looking up the answer to "AT+CGMM".
struct FirstStage
{
    int phoneType = 0;     ///< 0 where the second stage or an alias must decide
    bool asksWppn = false; ///< the model says itself by "AT^WPPN"
};

/// The first table; nothing for a model that it doesn't list.
std::optional<FirstStage> lookUpCgmm(const QString& answer);

/// The second table: family of an answer to "AT^WPPN", 0 if it isn't listed.
int lookUpWppn(const QString& answer);

/// Models whose name is shown together with their answer to "AT^WPPN".
bool showsWppn(const QString& cgmmAnswer);

/// True when `raw` has the form "^WPPN: <n>,<name>" with n characters of name, which goes to `modelName`.
bool ParseWppn(const QString& raw, QString& modelName);

} // namespace kalmo::link
