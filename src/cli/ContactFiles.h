#pragma once

#include "phonedata/VcfEntry.h"

#include <QJsonArray>

#include <vector>

namespace kalmo::cli {

using Contacts = std::vector<phonedata::tVcfEntry>;

/// Contacts as an array of objects with the texts `lastName`, `firstName`, `home`, `mobile`, `work`, `email`,
/// `birthday` ("1970-03-21T12:30") and `luid`.
QJsonArray contactJson(const Contacts& contacts);
QByteArray contactJsonBytes(const Contacts& contacts);

/// Headings and cells of a table of contacts.
QStringList contactHeadings();
QStringList contactCells(const phonedata::tVcfEntry& contact);
/// "Hans Müller", or what else tells a contact from others.
QString contactName(const phonedata::tVcfEntry& contact);

/// Whether nothing but a LUID is in a contact; phones have such entries.
bool holdsNothing(const phonedata::tVcfEntry& contact);

/// Whether a file's ending is one that contacts are saved under: .csv, .json or .vcf.
bool hasContactEnding(const QString& path);
/// What a file of that ending holds for the contacts.
QByteArray contactFileBytes(const QString& path, const Contacts& contacts);

/// Reads a .csv or .json file of contacts. One that is not understood refuses the whole file. False, with the
/// place and the fault in `error`.
bool readContactFile(const QString& path, Contacts& contacts, QString& error);
bool readContactCsv(const QByteArray& bytes, Contacts& contacts, QString& error);
bool readContactJson(const QByteArray& bytes, Contacts& contacts, QString& error);

/// What a phone may cut or refuse of a contact, each in a few words.
QStringList warningsAbout(const phonedata::tVcfEntry& contact);

} // namespace kalmo::cli
