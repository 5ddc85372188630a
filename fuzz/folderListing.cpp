// Fuzzes folder listings.

#include "fuzz/Targets.h"

#include "app/CodePage.h"
#include "app/SafeLocalName.h"
#include "app/Utf8Small.h"
#include "obex/FolderRows.h"

namespace kalmo::fuzz {

using namespace Qt::StringLiterals;

void folderListing(const QByteArray& bytes)
{
    const QString text = app::UFT8Dec(app::fromCp1252(bytes));
    const QString folder = obex::rootPath();
    const auto entries = obex::parseFolderListing(text, folder);
    toolkit::ListRows rows(u"rows"_s, {{u"a"_s}, {u"b"_s}, {u"c"_s}, {u"d"_s}});
    obex::DirInLvw(entries, rows);
    require(rows.count() <= entries.size() + 2); // and the two command rows
    for (const obex::tObxDirEntry& entry : entries) {
        require(entry.userPerm >= 0 && entry.userPerm <= 7);
        const QString local = app::safeLocalName(entry.name);
        require(!local.contains(u'/') && !local.contains(u'\\') && local != u".."_s);
    }
    const QStringList pictures = {u".bmp"_s};
    for (const obex::tObxDirEntry& entry : obex::parseFolderListing(text, folder, &pictures))
        require(entry.isFile() && obex::endsInOneOf(entry.name, pictures));
}

} // namespace kalmo::fuzz
