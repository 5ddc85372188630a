// The text of folder listings.

#include "handset/obex/Objects.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

/// Spellings of one form.
struct Spelling
{
    const char* size;      // attribute up to its opening quote
    const char* end;       // of an element
    const char* lineBreak; // between elements
};

Spelling spellingOf(ListingForms form)
{
    const char* size = form.testFlag(ListingForm::Spaced)       ? "size = "
                       : form.testFlag(ListingForm::HalfSpaced) ? "size ="
                                                                : "size=";
    return {size, form.testFlag(ListingForm::Tight) ? "/>" : " />",
            form.testFlag(ListingForm::OneLine) ? "" : "\r\n"};
}

QByteArray quoted(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    bytes.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;").replace('"', "&quot;");
    return '"' + bytes + '"';
}

QByteArray rowText(const ListingRow& row, const Spelling& spelling)
{
    QByteArray text = (row.isFolder ? "<folder name=" : "<file name=") + quoted(row.name);
    if (!row.isFolder)
        text += ' ' + QByteArray(spelling.size) + '"' + QByteArray::number(row.size) + '"';
    if (row.modified.isValid())
        text += " modified=\"" + row.modified.toString(u"yyyyMMdd'T'hhmmss"_s).toLatin1() + '"';
    text += " user-perm=" + quoted(row.user) + " group-perm=" + quoted(row.group);
    return text + spelling.end + spelling.lineBreak;
}

} // namespace

QByteArray listingText(const std::vector<ListingRow>& rows, ListingForms form)
{
    const Spelling spelling = spellingOf(form);
    QByteArray text = QByteArray("<?xml version=\"1.0\"?>") + spelling.lineBreak;
    text += QByteArray("<!DOCTYPE folder-listing SYSTEM \"obex-folder-listing.dtd\">") + spelling.lineBreak;
    text += QByteArray("<folder-listing version=\"1.0\">") + spelling.lineBreak;
    for (const ListingRow& row : rows)
        text += rowText(row, spelling);
    return text + "</folder-listing>" + spelling.lineBreak;
}

} // namespace kalmo::handset
