// The rows of an address book.

#include "transfer/import/BaseLetters.h"
#include "transfer/import/PreviewSources.h"

#include <QFileInfo>

namespace kalmo::transfer {

namespace {

QString chosenName(const WabContact& contact, int position)
{
    return WabFieldByTag(contact, nameChoices()[static_cast<size_t>(position)].tag);
}

/// The name of a contact whose chosen fields are empty.
QString standInName(const WabContact& contact)
{
    return contact.displayName.isEmpty() ? contact.company : contact.displayName;
}

QString exampleOf(const WabContact& contact)
{
    return standInName(contact).isEmpty() ? contact.email1 : standInName(contact);
}

/// A name for the user, of a contact that may lack most fields.
QString nameOf(const WabContact& contact)
{
    const QString name = (contact.givenName + u' ' + contact.surname).trimmed();
    return name.isEmpty() ? exampleOf(contact) : name;
}

class AddressPreview
{
public:
    AddressPreview(const ImportSource& source, Shape shape, const ImportOptions& options)
        : m_source(source), m_options(options)
    {
        m_preview.shape = shape;
    }

    Preview make(const Advance& advance);

private:
    void addEntries(const WabContact& contact);
    void addContact(const WabContact& contact);
    QString contactText(const WabContact& contact, size_t field);
    QString entryName(const WabContact& contact, const SubNumberOptions& options);
    QString fitting(const QString& name);
    void addBirthday(const WabContact& contact, bool hasOwnRow);
    void hintAtContact(const WabContact& contact);
    int numbersLeftOut(const WabContact& contact) const;

    const ImportSource& m_source;
    const ImportOptions& m_options;
    Preview m_preview;
    HintCounter m_hints;
};

Preview AddressPreview::make(const Advance& advance)
{
    constexpr int contactsPerReport = 256;
    const auto total = static_cast<qsizetype>(m_source.contacts.size());
    for (qsizetype index = 0; index < total && m_preview.isWhole; ++index) {
        const WabContact& contact = m_source.contacts[static_cast<size_t>(index)];
        if (m_preview.shape == Shape::Classic)
            addEntries(contact);
        else
            addContact(contact);
        hintAtContact(contact);
        if (advance && index % contactsPerReport == 0)
            m_preview.isWhole = advance(index, total);
    }
    for (const QString& path : m_source.losses.skippedFiles)
        m_hints.add(HintKind::SkippedFiles, QFileInfo(path).fileName());
    if (m_source.losses.damagedRecords > 0)
        m_hints.add(HintKind::DamagedRecords, m_source.losses.damagedRecords, {});
    m_preview.hints = m_hints.hints();
    return std::move(m_preview);
}

void AddressPreview::addEntries(const WabContact& contact)
{
    const size_t before = m_preview.rows.size();
    bool hasName = true;
    for (size_t kind = 0; kind < subNumberCount; ++kind) {
        const SubNumberOptions& options = m_options.addresses.numbers[kind];
        const QString number = contact.*(subNumberKinds()[kind].field);
        if (!options.process || number.isEmpty())
            continue;
        m_hints.lookAtNumber(number, m_options.numbers);
        PreviewRow row;
        row.cells[PreviewName] = entryName(contact, options);
        row.cells[PreviewNumber] = numberOf(number, m_options.numbers);
        hasName =
            hasName && (m_options.addresses.fillNames || !chosenName(contact, options.field1).isEmpty() ||
                        !chosenName(contact, options.field2).isEmpty());
        m_preview.rows.push_back(std::move(row));
    }
    if (!hasName && !standInName(contact).isEmpty())
        m_hints.add(HintKind::EmptyNames, exampleOf(contact));
    if (m_options.addresses.birthdays && contact.birthday)
        addBirthday(contact, m_preview.rows.size() > before);
}

/// The birthday goes to the row that was added last. A contact without a row replaces the birthday of the
/// contact before it. This is on purpose; a hint reports it.
void AddressPreview::addBirthday(const WabContact& contact, bool hasOwnRow)
{
    if (!hasOwnRow && m_options.addresses.ownBirthdays)
        return;
    if (m_preview.rows.empty())
        return m_hints.add(HintKind::LostBirthdays, exampleOf(contact));
    if (!hasOwnRow)
        m_hints.add(HintKind::MovedBirthdays, exampleOf(contact));
    const QTime time = QTime(0, 0).addSecs(secondsOf(m_options.addresses.birthdayTime));
    m_preview.rows.back().cells[PreviewBirthday] =
        contact.birthday->toString(u"dd.MM"_s) + u"  "_s + time.toString(u"hh:mm"_s);
}

QString AddressPreview::entryName(const WabContact& contact, const SubNumberOptions& options)
{
    const bool isNameless =
        chosenName(contact, options.field1).isEmpty() && chosenName(contact, options.field2).isEmpty();
    if (m_options.addresses.fillNames && isNameless)
        return fitting(standInName(contact).left(leadingNumber(options.count1)) + options.end);
    return fitting(ComposeWabName(contact, options));
}

void AddressPreview::addContact(const WabContact& contact)
{
    PreviewRow row;
    for (size_t field = 0; field < PreviewAnniversary; ++field)
        row.cells[field] = contactText(contact, field);
    if (row.cells[PreviewLastName].isEmpty() && row.cells[PreviewFirstName].isEmpty()) {
        if (m_options.addresses.fillNames)
            row.cells[PreviewLastName] = fitting(standInName(contact));
        else if (!standInName(contact).isEmpty())
            m_hints.add(HintKind::EmptyNames, exampleOf(contact));
    }
    if (m_options.addresses.vcardBirthdays && contact.birthday) {
        row.cells[PreviewAnniversary] =
            contact.birthday->toString(u"dd.MM.yyyy"_s) + u"  "_s + m_options.addresses.vcardBirthdayTime;
        if (!contact.birthdayHasYear)
            m_hints.add(HintKind::BirthdaysWithoutYear, exampleOf(contact));
    }
    m_preview.rows.push_back(std::move(row));
}

QString AddressPreview::contactText(const WabContact& contact, size_t field)
{
    const FieldKind kind = fieldsOf(Shape::Vcard)[field].kind;
    const auto position = static_cast<size_t>(m_options.addresses.fields[field]);
    const QString text = WabFieldByTag(contact, choicesOf(kind)[position].tag);
    if (kind == FieldKind::Name)
        return fitting(text);
    if (kind != FieldKind::Number)
        return text;
    m_hints.lookAtNumber(text, m_options.numbers);
    return numberOf(text, m_options.numbers);
}

/// A name is not filtered here; a hint reports letters that the handsets lack.
QString AddressPreview::fitting(const QString& name)
{
    const QString text = m_options.baseLetters ? withBaseLetters(name) : name;
    m_hints.lookAtName(text, FilterName(text));
    return text;
}

void AddressPreview::hintAtContact(const WabContact& contact)
{
    if (contact.isCutOff)
        m_hints.add(HintKind::CutContacts, nameOf(contact));
    const bool takesBirthdays = m_preview.shape == Shape::Classic ? m_options.addresses.birthdays
                                                                  : m_options.addresses.vcardBirthdays;
    if (takesBirthdays && !contact.unreadBirthday.isEmpty())
        m_hints.add(HintKind::UnreadBirthdays, contact.unreadBirthday);
    if (contact.lostExtensions > 0)
        m_hints.add(HintKind::LostExtensions, contact.lostExtensions, exampleOf(contact));
    if (const int numbers = numbersLeftOut(contact); numbers > 0)
        m_hints.add(HintKind::NumbersWithoutPlace, numbers, exampleOf(contact));
}

/// Number of the contact's numbers that are not imported. For contacts these include the numbers that no
/// field takes, such as those of faxes; for entries the user has chosen the kinds.
int AddressPreview::numbersLeftOut(const WabContact& contact) const
{
    int count = contact.numbersWithoutPlace;
    if (m_preview.shape == Shape::Classic)
        return count;
    for (const SubNumberKind& kind : subNumberKinds()) {
        bool isTaken = (contact.*(kind.field)).isEmpty();
        for (const size_t field : {PreviewHome, PreviewMobile, PreviewWork}) {
            const auto position = static_cast<size_t>(m_options.addresses.fields[field]);
            isTaken = isTaken || fieldOfTag(numberChoices()[position].tag) == kind.field;
        }
        count += isTaken ? 0 : 1;
    }
    return count;
}

} // namespace

QString ComposeWabName(const WabContact& contact, const SubNumberOptions& options)
{
    const QString first = chosenName(contact, options.field1);
    const QString second = chosenName(contact, options.field2);
    return first.left(leadingNumber(options.count1)) + options.middle +
           second.left(leadingNumber(options.count2)) + options.end;
}

Preview previewOfContacts(const ImportSource& source, Shape shape, const ImportOptions& options,
                          const Advance& advance)
{
    return AddressPreview(source, shape, options).make(advance);
}

} // namespace kalmo::transfer
