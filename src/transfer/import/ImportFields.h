#pragma once

#include "transfer/import/WabContact.h"

#include <array>
#include <span>

namespace kalmo::transfer {

/// The two forms of an import: entries of a classic list, or contacts of a vCard phonebook.
enum class Shape { Classic, Vcard };

/// The form for the phones of a family.
Shape shapeFor(int phoneType);

enum class FieldKind { Name, Number, Email, Birthday };

/// A field of a preview row.
struct ImportField
{
    QStringView key;   ///< in JSON: "lastName"
    QStringView title; ///< column of the preview
    FieldKind kind;
    qsizetype longest;      ///< characters that may be imported, 0 for any number
    QStringView candidates; ///< headings of its column in a file, parted by "|", the likeliest first
};

inline constexpr size_t mostFields = 7;

/// The fields of a form in the order of the preview's columns.
std::span<const ImportField> fieldsOf(Shape shape);

/// Columns of the preview.
enum ClassicField : size_t { PreviewName, PreviewNumber, PreviewBirthday };
enum VcardField : size_t {
    PreviewLastName,
    PreviewFirstName,
    PreviewHome,
    PreviewMobile,
    PreviewWork,
    PreviewEmail,
    PreviewAnniversary
};

/// The five numbers of a contact that become an entry of a classic list each.
struct SubNumberKind
{
    QStringView key; ///< at the command line: "home-fax"
    QStringView caption;
    QStringView toolTip;
    QString WabContact::*field;
    QStringView end; ///< end of its names, unless the user chooses another
};

inline constexpr size_t subNumberCount = 5;
std::span<const SubNumberKind, subNumberCount> subNumberKinds();

/// A field of a contact that can be chosen, with the property that it stands for.
struct AddressField
{
    QStringView text;
    quint32 tag; ///< `notUsed` for none
};

inline constexpr quint32 notUsed = 0xFFFFFFFF;
inline constexpr QStringView notUsedText = u"<nicht verwenden>";

std::span<const AddressField> nameChoices();   ///< of `cmbField1`, `cmbField2` and the names of `cmbWabVCF`
std::span<const AddressField> numberChoices(); ///< of the numbers of `cmbWabVCF`
std::span<const AddressField> emailChoices();  ///< of the e-mail of `cmbWabVCF`
/// The choices for a field of the contacts' preview.
std::span<const AddressField> choicesOf(FieldKind kind);

/// The contact's text for a property, empty for one without a field here. The property of all e-mail
/// addresses stands for the second one.
QString WabFieldByTag(const WabContact& contact, quint32 tag);

} // namespace kalmo::transfer
