#pragma once

#include "operations/FileAccess.h"

#include <QStringList>

namespace kalmo::ui {

/// Boxes of the file system panel.

/// The first ten names below a title, one a line; empty without names. Long ones are cut: a box has to fit on
/// the screen.
QStringList titled(const QString& title, const QStringList& names);

/// The reason why something was not saved as a paragraph of their own after a text; empty without any.
QString inParagraph(const operations::SaveFault& fault);

/// The one box at the end of a batch of files.
struct BatchReport
{
    int failure = 0; ///< of a request, as the client gives it; 0 for none
    QStringList paragraphs = {};
};

/// Shows the box, unless there is nothing to report.
void tellReport(const obex::clsMmc& mmc, BatchReport report);

void tell(const obex::clsMmc& mmc, const QString& text, toolkit::Icon icon);

/// Informs the user if the record of a change could not be completed.
void tellOpenRecord(const obex::clsMmc& mmc, const operations::FileAccess& access);

/// Yes, No or Cancel, with No as the default.
toolkit::Answer askToReplace(const obex::clsMmc& mmc, const QString& text);

/// Asks with Yes and No, and No as the default. Returns true for yes.
bool ask(const obex::clsMmc& mmc, const QString& text);

/// A file of the phone of which another number of bytes came than the phone lists.
struct PartOfFile
{
    QString name;
    qint64 listed = 0; ///< bytes
    qint64 came = 0;
};

/// Asks if such a file is to be taken all the same: "gespeichert", for example. True for yes.
bool askToTakePart(const obex::clsMmc& mmc, const PartOfFile& part, const QString& verb);

} // namespace kalmo::ui
