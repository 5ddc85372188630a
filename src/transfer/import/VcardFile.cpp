#include "transfer/import/VcardFile.h"

#include "transfer/import/GeneralDate.h"
#include "transfer/import/TextDecoding.h"
#include "transfer/import/VcardLines.h"

#include <algorithm>

namespace kalmo::transfer {

namespace {

using NumberField = QString WabContact::*;

struct CardNumber
{
    QString number;
    NumberField field; ///< null for one without a type
    bool isPreferred;
};

/// The year that the address books of one maker write for a birthday without one.
constexpr QStringView yearLeftOut = u"1604";
constexpr QStringView extensionMark = u";ext=";

/// The field that the types of a number stand for, null for none.
NumberField fieldOfTypes(const VcardLine& line)
{
    if (line.hasType("FAX"))
        return line.hasType("WORK") ? &WabContact::businessFax : &WabContact::homeFax;
    if (line.hasType("CELL") || line.hasType("IPHONE"))
        return &WabContact::mobilePhone;
    if (line.hasType("WORK"))
        return &WabContact::businessPhone;
    return line.hasType("HOME") ? &WabContact::homePhone : nullptr;
}

/// A number without the scheme and the parameters of an address like "tel:030;ext=5".
QString plainNumber(const QString& value)
{
    const bool isAddress = value.startsWith(u"tel:"_s, Qt::CaseInsensitive);
    const QString number = isAddress ? value.sliced(4) : value;
    const qsizetype end = isAddress ? number.indexOf(u';') : number.indexOf(extensionMark);
    return (end < 0 ? number : number.first(end)).trimmed();
}

/// Reads one card. Numbers and e-mail addresses wait for its end.
class CardReader
{
public:
    explicit CardReader(QDate today) : m_today(today) {}

    void take(const VcardLine& line);
    /// The contact, nothing for the card of a group.
    std::optional<WabContact> finish();

private:
    void takeNumber(const VcardLine& line);
    void takeAddress(const VcardLine& line);
    void takeBirthday(const VcardLine& line);
    void placeNumber(const CardNumber& number);

    QDate m_today;
    WabContact m_contact;
    std::vector<CardNumber> m_numbers;
    QStringList m_emails;
    bool m_isGroup = false;
};

void CardReader::take(const VcardLine& line)
{
    const QByteArray& name = line.name;
    if (line.isBase64)
        return;
    if (name == "TEL") {
        takeNumber(line);
    } else if (name == "N") {
        const QStringList parts = vcardParts(line.text());
        m_contact.surname = parts.value(0).trimmed();
        m_contact.givenName = parts.value(1).trimmed();
        m_contact.middleName = parts.value(2).trimmed();
    } else if (name == "FN") {
        m_contact.displayName = vcardText(line.text()).trimmed();
    } else if (name == "NICKNAME") {
        m_contact.nickname = vcardText(line.text()).trimmed();
    } else if (name == "ORG") {
        m_contact.company = vcardParts(line.text()).first().trimmed();
    } else if (name == "EMAIL") {
        const QString address = vcardText(line.text()).trimmed();
        if (line.hasType("PREF"))
            m_emails.prepend(address);
        else
            m_emails.append(address);
    } else if (name == "BDAY") {
        takeBirthday(line);
    } else if (name == "ADR") {
        takeAddress(line);
    } else if (name == "URL") {
        (line.hasType("WORK") ? m_contact.businessPage : m_contact.homePage) = vcardText(line.text());
    } else if (name == "KIND" || name == "X-ADDRESSBOOKSERVER-KIND") {
        m_isGroup = line.value.trimmed().toLower() == "group";
    }
}

void CardReader::takeNumber(const VcardLine& line)
{
    const QString value = vcardText(line.text());
    const QString number = plainNumber(value);
    m_contact.lostExtensions += value.contains(extensionMark) ? 1 : 0;
    if (!number.isEmpty() && line.hasType("PAGER"))
        ++m_contact.numbersWithoutPlace;
    else if (!number.isEmpty())
        m_numbers.push_back({number, fieldOfTypes(line), line.hasType("PREF")});
}

void CardReader::takeAddress(const VcardLine& line)
{
    const QStringList parts =
        vcardParts(line.text()); // box, extended, street, city, region, postal code, country
    const bool isWork = line.hasType("WORK");
    (isWork ? m_contact.businessStreet : m_contact.homeStreet) = parts.value(2);
    (isWork ? m_contact.businessCity : m_contact.homeCity) = parts.value(3);
    (isWork ? m_contact.businessPostalCode : m_contact.homePostalCode) = parts.value(5);
    (isWork ? m_contact.businessCountry : m_contact.homeCountry) = parts.value(6);
}

/// Takes the date of "1970-03-21", "19700321", "--0321", each with a time after it or without.
void CardReader::takeBirthday(const VcardLine& line)
{
    const QString written = vcardText(line.text()).trimmed();
    QString date = written;
    date = date.first(date.indexOf(u'T') < 0 ? date.size() : date.indexOf(u'T'));
    if (date.startsWith(u"--"_s) && date.size() == 6)
        date.insert(4, u'-');
    else if (date.size() == 8 && !date.contains(u'-') && !date.contains(u'.'))
        date = date.first(4) + u'-' + date.sliced(4, 2) + u'-' + date.sliced(6);
    if (date.startsWith(yearLeftOut))
        date.replace(0, yearLeftOut.size(), u"-"_s);
    const auto read = readGeneralDate(date, DateOrder::DayFirst, m_today);
    m_contact.birthday = read ? std::optional(read->date) : std::nullopt;
    m_contact.birthdayHasYear = read && read->hasYear;
    m_contact.unreadBirthday = read ? QString() : written;
}

void CardReader::placeNumber(const CardNumber& number)
{
    constexpr NumberField untyped[] = {&WabContact::homePhone, &WabContact::businessPhone,
                                       &WabContact::mobilePhone};
    NumberField place = number.field;
    if (!place) {
        const auto free = std::find_if(std::begin(untyped), std::end(untyped),
                                       [this](NumberField field) { return (m_contact.*field).isEmpty(); });
        place = free == std::end(untyped) ? nullptr : *free;
    }
    if (place && (m_contact.*place).isEmpty())
        m_contact.*place = number.number;
    else
        ++m_contact.numbersWithoutPlace;
}

std::optional<WabContact> CardReader::finish()
{
    if (m_isGroup)
        return std::nullopt;
    // Numbers with a type go first, preferred ones ahead of the others.
    std::stable_sort(m_numbers.begin(), m_numbers.end(), [](const CardNumber& left, const CardNumber& right) {
        const auto rank = [](const CardNumber& number) {
            return (number.field ? 0 : 2) + (number.isPreferred ? 0 : 1);
        };
        return rank(left) < rank(right);
    });
    for (const CardNumber& number : m_numbers)
        placeNumber(number);
    m_contact.email1 = m_emails.value(0);
    m_contact.email2 = m_emails.value(1);
    return m_contact;
}

/// Splits the lines of a file into cards.
class CardSequence
{
public:
    explicit CardSequence(QDate today) : m_today(today) {}

    void take(const VcardLine& line);
    bool isFull() const { return m_contacts.size() > mostContacts; }
    std::vector<WabContact> finish();

private:
    enum class End { There, Missing };
    void closeCard(End end);

    QDate m_today;
    std::optional<CardReader> m_card;
    int m_agents = 0; // cards within the card
    std::vector<WabContact> m_contacts;
};

void CardSequence::take(const VcardLine& line)
{
    const bool isCard = line.value.trimmed().toUpper() == "VCARD";
    const bool begins = isCard && line.name.endsWith("BEGIN"); // a byte order mark may stand ahead
    const bool ends = isCard && line.name == "END";
    if (line.name == "AGENT") {
        const QByteArray agent = line.value.trimmed().toUpper();
        m_agents += agent.isEmpty() || agent.startsWith("BEGIN:") ? 1 : 0;
    } else if (m_agents > 0) {
        m_agents -= ends ? 1 : 0;
    } else if (begins || ends) {
        closeCard(ends ? End::There : End::Missing);
        if (begins)
            m_card.emplace(m_today);
    } else if (m_card) {
        m_card->take(line);
    }
}

void CardSequence::closeCard(End end)
{
    auto contact = m_card ? m_card->finish() : std::nullopt;
    m_card.reset();
    if (!contact)
        return;
    contact->entryNumber = static_cast<int>(m_contacts.size()) + 1;
    contact->isCutOff = end == End::Missing;
    m_contacts.push_back(*contact);
}

std::vector<WabContact> CardSequence::finish()
{
    closeCard(End::Missing); // the last card of a file that was cut off
    return std::move(m_contacts);
}

} // namespace

bool isVcardFile(QByteArrayView bytes)
{
    constexpr qsizetype headSize = 200;
    const QString head = decodeText(bytes.first(std::min(bytes.size(), headSize)), detectEncoding(bytes));
    return head.trimmed().startsWith(u"BEGIN:VCARD"_s, Qt::CaseInsensitive);
}

std::vector<WabContact> readVcardFile(QByteArrayView bytes, QDate today, const std::function<bool()>& goesOn)
{
    constexpr int linesPerQuestion = 4096;
    QByteArray recoded;
    if (detectEncoding(bytes) == Encoding::Utf16) {
        recoded = decodeText(bytes, Encoding::Utf16).toUtf8();
        bytes = recoded;
    }
    CardSequence cards(today);
    VcardLines lines(bytes);
    for (int count = 1; !cards.isFull(); ++count) {
        const auto line = lines.next();
        if (!line || (goesOn && count % linesPerQuestion == 0 && !goesOn()))
            break;
        cards.take(*line);
    }
    return cards.finish();
}

} // namespace kalmo::transfer
