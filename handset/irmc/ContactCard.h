#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace kalmo::handset {

/// How a handset writes letters beyond ASCII into cards.
enum class CardText {
    Raw,             ///< one byte of Windows-1252 each; names that it doesn't have as QuotedPrintable
    QuotedPrintable, ///< UTF-8 as quoted-printable, and the line says so
    Folded,          ///< the same, with soft line ends in long lines
    Utf8,            ///< UTF-8 as it is, and the line says so
};

/// A contact in the memory: "lastName", "firstName", "home", "work", "mobile", "email", "birthday"
/// ("1970-03-21T12:30"). Empty fields are left out.
using Contact = QJsonObject;

/// The card (vCard 2.1) of a contact. Without a LUID it is the card of the handset itself.
QByteArray cardText(const Contact& contact, const QString& luid, CardText text);

/// Parses a card that a client has sent. Gives nothing if it is none, or if its birthday is no date.
std::optional<Contact> parseCard(const QByteArray& text);

/// Returns true if the fields fit: 16 characters for each name, 32 for a number, 60 for the e-mail.
bool fits(const Contact& contact);

} // namespace kalmo::handset
