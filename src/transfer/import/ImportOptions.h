#pragma once

#include "app/mdlRegIni.h"
#include "transfer/import/Birthdays.h"
#include "transfer/import/CsvText.h"
#include "transfer/import/ImportFields.h"
#include "transfer/import/NumberRewriting.h"
#include "transfer/import/TextDecoding.h"

namespace kalmo::transfer {

inline constexpr int noColumn = -1;     ///< none has been chosen
inline constexpr int unusedColumn = -2; ///< "<nicht verwenden>" has been chosen

/// How a text file is read.
struct TextOptions
{
    TextLayout layout = {};
    Encoding encoding = Encoding::Ansi;
    std::array<int, mostFields> columns = {noColumn, noColumn, noColumn, noColumn,
                                           noColumn, noColumn, noColumn};
    QString defaultTime = u"12:00"_s; ///< `cmbGebuTimeDefault`, for contacts
    DateOrder dateOrder = DateOrder::DayFirst;
    bool skipHeading = false; ///< leaves the first line out

    bool operator==(const TextOptions&) const = default;
};

/// Characters of the longest text between and after the fields of a name.
inline constexpr int longestComposedText = 10;

/// How the entry for one of a contact's numbers is made.
struct SubNumberOptions
{
    bool process = true;      ///< `chkProcessNr`
    int field1 = 0;           ///< `cmbField1`, position in nameChoices()
    int field2 = 1;           ///< `cmbField2`
    QString count1 = u"15"_s; ///< `cmbCount1`, characters of the first field
    QString count2 = u"01"_s; ///< `cmbCount2`
    QString middle = u", "_s; ///< `txtMiddle`
    QString end = {};         ///< `txtEnd`

    bool operator==(const SubNumberOptions&) const = default;
};

/// How an address book becomes entries.
struct AddressOptions
{
    AddressOptions();

    std::array<SubNumberOptions, subNumberCount> numbers;
    bool birthdays = true;             ///< `chkBirthdays`
    QString birthdayTime = u"10:00"_s; ///< `cmbWabTimeGebu`
    std::array<int, PreviewAnniversary> fields = {0, 1, 0,
                                                  1, 2, 0}; ///< `cmbWabVCF`, positions in choicesOf()
    bool vcardBirthdays = true;                             ///< `chkWabVcfUseGebu`
    QString vcardBirthdayTime = u"10:00"_s;                 ///< `cmbGebuTimeDefaultWaB`
    bool fillNames = false;    ///< where the chosen names are empty: Anzeige, else Firma
    bool ownBirthdays = false; ///< a birthday goes to a row of its own contact only

    bool operator==(const AddressOptions&) const = default;
};

/// The options of a preview.
struct ImportOptions
{
    TextOptions text = {};
    NumberRules numbers = {};
    AddressOptions addresses = {};
    bool markExisting = true;      ///< `chkMarkExistingContacts`(0)
    bool existingByNumber = false; ///< `chkMarkExistingContacts`(1)
    bool baseLetters = false;      ///< "Garcia" for "García", where the handsets lack a letter

    bool operator==(const ImportOptions&) const = default;
};

/// The options that the dialog remembers, with the last chosen headings and its own switch.
struct RememberedChoices
{
    ImportOptions options = {};
    std::array<QString, 3> classicHeadings = {};        ///< `cmbCsvField`, empty where none is remembered
    std::array<QString, mostFields> vcardHeadings = {}; ///< `cmbCsvFieldVCF`; read, never written
    bool refreshAtOnce = true;                          ///< `chkPreviewAutoRefresh`

    bool operator==(const RememberedChoices&) const = default;
};

/// Reads and writes what is remembered in section `frmImportPb` of the settings. `chk49_00`, `chkAmtNurWenn`,
/// `cmbAmtMinLen` and `cmbGebuTimeDefault` always start anew.
RememberedChoices loadImportOptions(const app::Settings& settings);
void SaveImportOptions(app::Settings& settings, const RememberedChoices& choices);
/// Writes the two switches of `chkMarkExistingContacts` alone.
void saveMarkingOptions(app::Settings& settings, const ImportOptions& options);

/// Returns true for `cmbCount1` and `cmbCount2` that hold a number above 0.
bool isCharacterCount(QStringView text);

/// "00:00" to "23:30" in steps of half an hour.
QStringList halfHours();

} // namespace kalmo::transfer
