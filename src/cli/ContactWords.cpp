#include "cli/ContactWords.h"

#include "operations/CardLosses.h"
#include "operations/ContactFields.h"
#include "phonedata/EntryRules.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::ContactField;
using phonedata::tVcfEntry;

namespace {

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control;
}

/// Returns true for no birthday, for the zeros that phones have instead, and for a day and time that exist.
bool isBirthday(const QString& text)
{
    static const QRegularExpression form(
        u"^([0-9]{4}-[0-9]{2}-[0-9]{1,2})(?:T([0-9]{2}:[0-9]{2}(?::[0-9]{2})?))?$"_s);
    const auto parts = form.match(text);
    if (!parts.hasMatch())
        return text.isEmpty();
    const QString time = parts.captured(2);
    return (QDate::fromString(parts.captured(1), u"yyyy-MM-d"_s).isValid() ||
            parts.captured(1) == u"0000-00-00"_s) &&
           (time.isEmpty() || QTime::fromString(time, QString(u"hh:mm:ss"_s).first(time.size())).isValid());
}

QStringList warningsAboutField(const ContactField& field, const QString& text)
{
    QStringList warnings;
    if (std::any_of(text.begin(), text.end(), isControl))
        warnings.append(u"there is a control character in \"%1\""_s.arg(field.key));
    if (field.longest != operations::anyLength && text.size() > field.longest)
        warnings.append(u"\"%1\" is longer than %2 characters"_s.arg(text, QString::number(field.longest)));
    if (field.isNumber && phonedata::acceptedContactNumber(text) != text)
        warnings.append(u"\"%1\" is more than digits, #, *, + and ?"_s.arg(text));
    return warnings;
}

} // namespace

QStringList contactHeadings()
{
    return {u"Last name"_s, u"First name"_s, u"Home"_s,     u"Mobile"_s,
            u"Work"_s,      u"E-mail"_s,     u"Birthday"_s, u"LUID"_s};
}

QStringList contactCells(const tVcfEntry& contact)
{
    QStringList cells;
    for (const ContactField& field : operations::contactFields())
        cells.append(contact.*(field.text));
    return cells;
}

QStringList warningsAbout(const tVcfEntry& contact)
{
    QStringList warnings;
    for (const ContactField& field : operations::contactFields())
        warnings += warningsAboutField(field, contact.*(field.text));
    if (!contact.hasNumber())
        warnings.append(u"it has no telephone number"_s);
    if (!isBirthday(contact.birthday))
        warnings.append(u"\"%1\" is no birthday of the form 1970-03-21T12:30"_s.arg(contact.birthday));
    const operations::CardLosses losses = operations::lossesWhenSent(contact);
    if (!losses.characters.isEmpty())
        warnings.append(u"the phone may give back \"%1\" as something else"_s.arg(losses.characters));
    for (const auto& [wanted, back] : losses.edited) {
        if (losses.characters.isEmpty())
            warnings.append(u"\"%1\" would come back as \"%2\""_s.arg(wanted, back));
    }
    return warnings;
}

QStringList warningsAboutHeld(const tVcfEntry& contact, const phonedata::ContactCard& held)
{
    QStringList warnings;
    for (const auto& [wanted, back] : operations::lossesWhenSent(contact, &held).hidden)
        warnings.append(
            u"in the phone it says \"%1\"; \"%2\" would be written, as it is shown here"_s.arg(wanted, back));
    return warnings;
}

} // namespace kalmo::cli
