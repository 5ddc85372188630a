#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace kalmo::link {

// Families of handsets, by `PhoneType`. There is no record of capabilities: the number of its family says
// what a phone can do. These functions compare the number; the help texts repeat it in words.

/// Families are numbered from 1 to this.
inline constexpr int lastFamily = 13;

/// Phonebook and provider list are reached by AT commands.
constexpr bool isClassic(int phoneType)
{
    return phoneType >= 1 && phoneType <= 4;
}
/// Has melodies of its own, and the tone of each event can be set.
constexpr bool hasRingtoneSettings(int phoneType)
{
    return phoneType >= 2 && phoneType <= 4;
}
/// Entries of the phonebook can be marked as VIP and have a tone of their own. Their dates begin with "00".
constexpr bool marksVip(int phoneType)
{
    return phoneType >= 2 && phoneType <= 4;
}
/// The code of a melody that is written is one less than the code that is read.
constexpr bool countsMelodiesFromZero(int phoneType)
{
    return phoneType == 1;
}
/// A store is closed by a plain "AT".
constexpr bool closesStoreByAt(int phoneType)
{
    return phoneType == 1 || phoneType == 2;
}
/// Needs a dummy entry written and erased before a longer phonebook is written.
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
/// Reports the strength of the radio signal and the charge of the battery.
constexpr bool hasGauges(int phoneType)
{
    return phoneType == 1 || hasVcards(phoneType);
}
constexpr bool hasFileSystem(int phoneType)
{
    return hasVcards(phoneType) && phoneType != 7;
}
/// Rewrites every number by its own area codes, also those that it sends.
constexpr bool hasAreaCodes(int phoneType)
{
    return phoneType >= 8 && phoneType <= 13;
}
/// Takes sounds, and pictures as JPEG. The other phones with files take melodies, and pictures as BMP.
constexpr bool takesSounds(int phoneType)
{
    return phoneType >= 8 && phoneType <= 13;
}
/// Commands end with a line feed after the carriage return.
constexpr bool needsLfTerminator(int phoneType)
{
    return phoneType >= 11 && phoneType <= 13;
}
/// Sends names of files with their whole path. Deletes need the file's attributes set first.
constexpr bool usesAbsoluteNames(int phoneType)
{
    return needsLfTerminator(phoneType);
}
/// Writes names in vCards as UTF-8 whatever the settings say.
constexpr bool needsUtf8Contacts(int phoneType)
{
    return needsLfTerminator(phoneType);
}
/// Answers a delete without the change counter, which then has to be read again.
constexpr bool deletesSilently(int phoneType)
{
    return phoneType >= 8 && phoneType <= 13;
}

/// Result of looking up the answer to "AT+CGMM".
struct FirstStage
{
    int phoneType = 0;     ///< 0 if the second stage or an alias decides
    bool asksWppn = false; ///< the answer to "AT^WPPN" names the model
};

/// Looks up the first table. Gives nothing for a model that it doesn't list.
std::optional<FirstStage> lookUpCgmm(const QString& answer);

/// Looks up the second table: family of an answer to "AT^WPPN", 0 if it isn't listed.
int lookUpWppn(const QString& answer);

/// Models whose name is shown together with their answer to "AT^WPPN".
bool showsWppn(const QString& cgmmAnswer);

/// Returns true if `raw` has the form "^WPPN: <n>,<name>" with n characters of name, and puts the name into
/// `modelName`.
bool ParseWppn(const QString& raw, QString& modelName);

/// The name of the model in the raw answer that identified it.
QString modelName(const QString& rawId);

} // namespace kalmo::link
