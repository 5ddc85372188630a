#pragma once

#include "app/Context.h"
#include "phonedata/VcfCards.h"
#include "toolkit/ListRows.h"

namespace kalmo::phonedata {

/// The contacts as a file for people: a heading line, then seven quoted fields a line, in the code page.
/// Quotes within a field are not protected, the LUID is left out. An empty list makes no file. Returns true
/// unless the file could not be written; a failure has been shown.
bool SaveVcfCsv(app::Context& context, const toolkit::ListRows& list, const QString& path);
QByteArray vcfCsvBytes(const toolkit::ListRows& list);

/// A contact as a card for other programs, by the rules of vCard 2.1 and not by those of the phones: what is
/// not plain ASCII is quoted-printable UTF-8. What is empty has no line.
/// `others` are lines that tVcfEntry has no field for; they follow, in correct spelling too.
QByteArray vcfCardBytes(const tVcfEntry& entry, const std::vector<CardLine>& others = {});

/// The automatic backup of a list: its headings and all its columns, with tabs between. Returns true if
/// the file was written; a failure has been shown.
bool VCF2BackupFile(app::Context& context, const toolkit::ListRows& list, const QString& path);
QByteArray vcfBackupBytes(const toolkit::ListRows& list);

} // namespace kalmo::phonedata
