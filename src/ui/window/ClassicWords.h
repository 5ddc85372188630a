#pragma once

#include "operations/ClassicLists.h"

namespace kalmo::ui {

/// The names and sentences for one of the two classic lists.
struct ClassicWords
{
    QStringView openTitle;
    QStringView saveTitle;
    QStringView fileType;
    QStringView pattern;
    QStringView changed;   ///< "... wurde verändert, d.h. ..."
    QStringView changesTo; ///< "Änderungen am Telefonbuch"
};

const ClassicWords& wordsOf(phonedata::Store store);

/// Question before unsaved changes of a list are passed over; ends in "Trotzdem fortfahren?".
QString unsavedChangesText(phonedata::Store store);

/// Question ahead of a write about all that the phone can't hold as the list has it; empty if there is
/// nothing.
QString objectionsText(const operations::ListPlan& plan);

/// Paragraph about the entries that a write adds, changes and removes; empty if it leaves all as they are.
QString differenceText(const operations::ListPlan& plan);

/// Files on the disk that a message names.
struct SavedFiles
{
    QString list;  ///< the list that was to be written
    QString phone; ///< the phone's list before
};

/// Message after a write that did not begin: the reason, and that the phone holds what it held.
QString notSentText(const operations::ListOutcome& result);

/// Message after a write that failed: the phone's content as far as it is known, the files, the next step.
QString failedWriteText(const operations::ListOutcome& result, const SavedFiles& files);

/// Message after a write that the phone confirmed, but that could not be checked, or turned out otherwise.
QString uncheckedWriteText(const operations::ListOutcome& result, const SavedFiles& files);

} // namespace kalmo::ui
