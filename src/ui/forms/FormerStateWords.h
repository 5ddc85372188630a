#pragma once

#include "operations/Undo.h"

namespace kalmo::ui {

/// The German words for records and for putting them back.

QString inWords(operations::RecordedList list);
/// "Liste geschrieben" for "write".
QString causeInWords(const QString& cause);
/// "3 neu, 1 geändert, 2 weniger", "keine" for no difference.
QString differenceInWords(const operations::UndoDiff& diff);
/// The reason why a former state could not be compared or put back, as a whole sentence.
QString reasonInWords(const operations::Outcome& outcome);
/// The reason why something could not be saved, without a full stop; empty if it is not known.
QString reasonInWords(const operations::SaveFault& fault);
/// The reason for a reading that may be incomplete, as a whole sentence.
QString doubtInWords(operations::Undo::Doubt doubt);
/// A paragraph about the files that are gone from the phone, empty without any.
QString lostInWords(const operations::Outcome& outcome);
/// Sentences for a record that could not be completed after the change.
QString openRecordInWords();
/// Sentences for a state that is put back and could not be compared with the phone.
QString uncomparedInWords();
/// "21.11.2026  12:30"
QString momentInWords(const QDateTime& moment);

} // namespace kalmo::ui
