#include "obex/FolderListing.h"

#include "app/mdlKonverter.h"
#include "app/TextReplace.h"

#include <algorithm>
#include <array>

namespace kalmo::obex {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView folderKey = u"folder name=";
constexpr QStringView fileKey = u"file name=";
constexpr QStringView lineEnd = u"\r\n";
constexpr qsizetype longestEntity = 10; // "&#1114111;"
constexpr qsizetype stampLength = 15;   // "20021120T164606"

/// The text after a key up to a quote and a blank, without the quotes around it.
QStringView attribute(QStringView line, QStringView key)
{
    const qsizetype place = line.indexOf(key);
    if (place < 0)
        return {};
    QStringView value = line.sliced(place + key.size());
    const qsizetype end = value.indexOf(u"\" ");
    if (end >= 0)
        value = value.first(end);
    if (value.startsWith(u'"'))
        value = value.sliced(1);
    if (value.endsWith(u'"'))
        value.chop(1);
    return value;
}

/// The character that an entity means, empty if it means none.
QString characterOf(QStringView entity)
{
    constexpr std::array<std::pair<QStringView, QChar>, 5> named = {
        {{u"amp", u'&'}, {u"lt", u'<'}, {u"gt", u'>'}, {u"quot", u'"'}, {u"apos", u'\''}}};
    for (const auto& [word, character] : named) {
        if (entity == word)
            return character;
    }
    if (!entity.startsWith(u'#'))
        return {};
    const bool isHex = entity.startsWith(u"#x", Qt::CaseInsensitive);
    bool ok = false;
    const char32_t code = entity.sliced(isHex ? 2 : 1).toUInt(&ok, isHex ? 16 : 10);
    const bool isCharacter =
        ok && code >= U' ' && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
    return isCharacter ? QStringView(QChar::fromUcs4(code)).toString() : QString();
}

constexpr QChar leftLead(0xC2);

/// Returns true if a name goes on with one of the signs from A0 to BF hex. UFT8Dec leaves the first of their
/// two bytes.
bool isLeftLead(QStringView rest)
{
    return rest.size() > 1 && rest[0] == leftLead && rest[1] >= QChar(0xA0) && rest[1] <= QChar(0xBF);
}

/// Converts a name to the form that requests have.
QString plainName(QStringView spelt)
{
    if (!spelt.contains(u'&') && !spelt.contains(leftLead)) // true for nearly all names
        return spelt.toString();
    QString name;
    while (!spelt.isEmpty()) {
        const QChar first = spelt[0];
        const qsizetype end =
            first == u'&' ? spelt.first(std::min(longestEntity, spelt.size())).indexOf(u';') : -1;
        const QString character = end < 0 ? QString() : characterOf(spelt.sliced(1, end - 1));
        if (!character.isEmpty())
            name += character;
        else if (!isLeftLead(spelt))
            name += first;
        spelt = spelt.sliced(character.isEmpty() ? 1 : end + 1);
    }
    return name;
}

int permission(QStringView letters)
{
    return (letters.contains(u'R') ? MayRead : 0) + (letters.contains(u'D') ? MayDelete : 0) +
           (letters.contains(u'W') ? MayWrite : 0);
}

QDateTime moment(QStringView stamp)
{
    if (stamp.size() != stampLength)
        return {};
    const auto number = [&](qsizetype start, qsizetype length) {
        return stamp.sliced(start, length).toInt();
    };
    const QDate date(number(0, 4), number(4, 2), number(6, 2));
    const QTime time(number(9, 2), number(11, 2), number(13, 2));
    // A phone has no time zone, and looking up the PC's rules for each entry would be slow.
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

tObxDirEntry entry(EntryKind kind, QStringView line, QStringView nameKey, const QString& folder)
{
    tObxDirEntry made;
    made.kind = kind;
    made.name = plainName(attribute(line, nameKey));
    made.path = pathIn(folder, made.name);
    made.modified = moment(attribute(line, u"modified="));
    made.userPerm = permission(attribute(line, u"user-perm="));
    made.groupPerm = permission(attribute(line, u"group-perm="));
    return made;
}

/// Phones write "size = " and "size =" too.
qint32 fileSize(QStringView line)
{
    QString text = line.toString();
    if (text.contains(u"size ="))
        text.replace(u"size = "_s, u"size="_s).replace(u"size ="_s, u"size="_s);
    return std::max(app::ValInt(attribute(text, u"size=")), 0);
}

bool isHidden(const tObxDirEntry& folderEntry, const QString& folder)
{
    return folder == rootPath() && folderEntry.name.compare(u"telecom", Qt::CaseInsensitive) == 0;
}

} // namespace

QString rootPath()
{
    return u"Mobile:\\"_s;
}

QString pathIn(const QString& folder, const QString& name)
{
    return QString(folder + u'\\' + name).replace(u"\\\\"_s, u"\\"_s);
}

QString withoutRoot(const QString& path)
{
    return path.startsWith(rootPath(), Qt::CaseInsensitive) ? path.sliced(rootPath().size()) : path;
}

bool endsInOneOf(const QString& name, const QStringList& endings)
{
    return std::any_of(endings.begin(), endings.end(),
                       [&](const QString& ending) { return name.endsWith(ending, Qt::CaseInsensitive); });
}

QList<tObxDirEntry> parseFolderListing(const QString& listing, const QString& folder,
                                       const QStringList* filter)
{
    const QString text = app::replacedAll(app::replacedAll(listing, u"><", u">\r\n<"), u"\"/>", u"\" />");
    const bool takesFolders = !filter || (!filter->isEmpty() && filter->first() == addFolders);
    QList<tObxDirEntry> entries;
    for (const QStringView line : QStringTokenizer(text, lineEnd)) {
        if (line.contains(folderKey)) {
            const tObxDirEntry made = entry(EntryKind::Folder, line, folderKey, folder);
            if (takesFolders && !isHidden(made, folder))
                entries.append(made);
        } else if (line.contains(fileKey)) {
            tObxDirEntry made = entry(EntryKind::File, line, fileKey, folder);
            made.size = fileSize(line);
            if (!filter || endsInOneOf(made.name, *filter))
                entries.append(made);
        }
    }
    return entries;
}

} // namespace kalmo::obex
