#include "cli/FolderRows.h"

#include "cli/Job.h"
#include "cli/Tables.h"
#include "obex/FolderRows.h"
#include "obex/PhonePath.h"

#include <QJsonObject>

namespace kalmo::cli {

using obex::tObxDirEntry;

namespace {

QString shownPath(const tObxDirEntry& entry)
{
    return obex::PhonePath(entry.path).shown();
}

QString permissions(int bits)
{
    return obex::permissionText(bits, 0).section(u'/', 0, 0);
}

} // namespace

QJsonObject fileJson(const tObxDirEntry& entry)
{
    return {{u"kind"_s, entry.isFile() ? u"file"_s : u"folder"_s},
            {u"name"_s, entry.name},
            {u"path"_s, shownPath(entry)},
            {u"size"_s, entry.isFile() ? QJsonValue(entry.size) : QJsonValue()},
            {u"modified"_s, entry.modified.isValid() ? QJsonValue(isoTime(entry.modified)) : QJsonValue()},
            {u"userPerm"_s, permissions(entry.userPerm)},
            {u"groupPerm"_s, permissions(entry.groupPerm)}};
}

QJsonArray filesJson(const QList<tObxDirEntry>& entries)
{
    QJsonArray array;
    for (const tObxDirEntry& entry : entries)
        array.append(fileJson(entry));
    return array;
}

QString filesTable(const QList<tObxDirEntry>& entries)
{
    std::vector<QStringList> rows;
    for (const tObxDirEntry& entry : entries) {
        const QString modified = entry.modified.isValid() ? isoTime(entry.modified) : u"-"_s;
        rows.push_back({entry.isFile() ? QString::number(entry.size) : u"-"_s, modified,
                        obex::permissionText(entry.userPerm, entry.groupPerm),
                        entry.isFile() ? entry.name : entry.name + u'/'});
    }
    return alignedTable({u"Bytes"_s, u"Modified"_s, u"Rights"_s, u"Name"_s}, rows);
}

QString sizeText(qint64 bytes)
{
    if (bytes < 1000)
        return u"%1 bytes"_s.arg(bytes);
    const double kilobytes = static_cast<double>(bytes) / 1000;
    return kilobytes < 1000 ? u"%1 kB"_s.arg(kilobytes, 0, 'f', 1)
                            : u"%1 MB"_s.arg(kilobytes / 1000, 0, 'f', 1);
}

} // namespace kalmo::cli
