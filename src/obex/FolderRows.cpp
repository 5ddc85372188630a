#include "obex/FolderRows.h"

#include "app/mdlKonverter.h"
#include "obex/FileTypes.h"

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using toolkit::ListCell;
using toolkit::ListRow;
using toolkit::ListRows;

namespace {

constexpr int sizeTagDigits = 16;

QString letters(int permission)
{
    return QString(permission & MayRead ? u"r"_s : QString()) + (permission & MayWrite ? u"w"_s : QString()) +
           (permission & MayDelete ? u"d"_s : QString());
}

ListRow row(QStringView prefix, const QString& name, const QString& tag, const QString& icon,
            QList<ListCell> subItems)
{
    ListRow made;
    made.key = prefix.toString() + name;
    made.tag = tag;
    made.icon = icon;
    made.cells = QList<ListCell>{{name, tag}} + subItems;
    return made;
}

ListRow fileRow(const tObxDirEntry& entry)
{
    const FileTypeInfo type = fileTypeOf(entry.name);
    return row(
        fileKeyPrefix, entry.name, u"D__"_s + entry.name, type.icon,
        {{type.text},
         {app::FormatSizeKB(entry.size), QString::number(entry.size).rightJustified(sizeTagDigits, u'0')},
         {permissionText(entry.userPerm, entry.groupPerm)}});
}

ListRow folderRow(const tObxDirEntry& entry)
{
    const QString icon = entry.userPerm & MayRead ? u"folder"_s : u"folderhidden"_s;
    return row(folderKeyPrefix, entry.name, u"C_"_s + entry.name, icon,
               {{u"Ordner"_s}, {u" "_s}, {permissionText(entry.userPerm, entry.groupPerm)}});
}

ListRow commandRow(QStringView key, const QString& text, const QString& icon)
{
    ListRow made = row({}, text, {}, icon, {{u"Befehl"_s}, {u" "_s}});
    made.key = key.toString();
    made.staysLast = true;
    return made;
}

} // namespace

QString permissionText(int userPerm, int groupPerm)
{
    return letters(userPerm) + u'/' + letters(groupPerm);
}

void DirInLvw(const QList<tObxDirEntry>& entries, ListRows& list, const QStringList* endings)
{
    std::vector<ListRow> rows;
    rows.reserve(static_cast<size_t>(entries.size()));
    for (const tObxDirEntry& entry : entries) {
        const bool untouchable = entry.userPerm + entry.groupPerm == 0;
        if (!entry.isFile())
            rows.push_back(folderRow(entry));
        else if (!untouchable && (!endings || endsInOneOf(entry.name, *endings)))
            rows.push_back(fileRow(entry));
    }
    list.clear();
    list.setSorted(true);
    list.addAll(std::move(rows));
    list.setSorted(false);
    list.add(commandRow(rootKeyPrefix, u"Basisverzeichnis"_s, u"cmd_root"_s));
    list.add(commandRow(upKeyPrefix, u"Verzeichnis aufwärts"_s, u"cmd_up"_s));
}

} // namespace kalmo::obex
