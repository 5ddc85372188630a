// Contacts in the .csv file of the window.

#include "operations/ContactFields.h"
#include "operations/ContactFiles.h"
#include "operations/SavedText.h"
#include "phonedata/VcfFiles.h"

#include <QRegularExpression>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::tVcfEntry;

namespace {

const QString csvHeading = u"\"Nachname\",\"Vorname\","_s;

/// Turns a displayed birthday into the phone's form. It may lack the time, or have seconds. Returns false for
/// any other text.
bool readBirthday(QString& text)
{
    static const QRegularExpression date(
        u"^([0-9]{1,2})\\.([0-9]{2})\\.([0-9]{4})\\s*([0-9]{2}:[0-9]{2}(:[0-9]{2})?)?$"_s);
    if (text.isEmpty())
        return true;
    const auto parts = date.match(text);
    if (!parts.hasMatch())
        return false;
    text = u"%1-%2-%3"_s.arg(parts.captured(3), parts.captured(2), parts.captured(1).rightJustified(2, u'0'));
    if (!parts.captured(4).isEmpty())
        text += u'T' + parts.captured(4);
    return true;
}

SavedListFault readLine(const QString& line, tVcfEntry& contact)
{
    const auto fields = contactFields().first(contactFields().size() - 1); // all but the LUID
    QStringList texts;
    if (!splitQuoted(line, texts) || texts.size() != std::ssize(fields))
        return {.kind = FileFault::FieldCount};
    for (qsizetype index = 0; index < texts.size(); ++index)
        contact.*(fields[static_cast<size_t>(index)].text) = texts[index];
    if (!readBirthday(contact.birthday))
        return {.kind = FileFault::Birthday};
    return faultOf(contact);
}

} // namespace

QByteArray contactCsvBytes(const SavedList& list)
{
    const auto rows = phonedata::makeVcfRows();
    for (const tVcfEntry& contact : list.contacts)
        rows->add(phonedata::toRow(withLongDay(contact)));
    return phonedata::vcfCsvBytes(*rows);
}

bool readContactCsv(const QByteArray& bytes, const ReadingRules&, SavedList& list, SavedListFault& fault)
{
    list.contacts.clear();
    QString text;
    if (!decodeInput(bytes, text, fault))
        return false;
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        tVcfEntry contact;
        ++number;
        if (line.isEmpty() || (number == 1 && line.startsWith(csvHeading)))
            continue;
        fault = readLine(line, contact);
        if (fault.kind != FileFault::None) {
            fault.place = SavedListFault::Place::Line;
            fault.number = number;
            return false;
        }
        list.contacts.push_back(contact);
    }
    if (list.contacts.empty())
        fault = {.kind = FileFault::NothingInIt};
    return !list.contacts.empty();
}

} // namespace kalmo::operations
