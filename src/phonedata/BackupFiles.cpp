#include "phonedata/BackupFiles.h"

#include "app/CodePage.h"
#include "app/Files.h"
#include "app/mdlKonverter.h"
#include "app/StoragePaths.h"
#include "link/PhoneModels.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::Icon;

namespace {

constexpr qint64 largestFile = 16 * 1024 * 1024;

QString protectedName(QString name)
{
    return name.replace(u'"', quoteStandIn);
}

QString quotedLine(const QStringList& fields)
{
    return u'"' + fields.join(u"\",\""_s) + u"\"\r\n"_s;
}

bool load(app::Context& context, const QString& path, QByteArray& bytes)
{
    if (QFileInfo(path).size() <= largestFile && app::readWholeFile(path, bytes))
        return true;
    context.dialogs.Show({.text = u"Fehler beim Lesen der Datei "_s + path,
                          .icon = Icon::Information,
                          .english = u"could not read %1."_s.arg(path)});
    return false;
}

template <typename Entry>
void fill(toolkit::ListRows& list, const std::vector<Entry>& entries)
{
    std::vector<toolkit::ListRow> rows;
    for (const Entry& entry : entries)
        rows.push_back(toRow(entry));
    list.addAll(std::move(rows));
}

/// Takes one field off the front: a quoted text, or all up to a comma or the end of the line.
QString takeInputField(QStringView& rest)
{
    while (!rest.isEmpty() && rest.front().isSpace())
        rest = rest.sliced(1);
    QStringView field;
    if (rest.startsWith(u'"')) {
        const qsizetype close = rest.indexOf(u'"', 1);
        field = close < 0 ? rest.sliced(1) : rest.sliced(1, close - 1);
        rest = close < 0 ? QStringView() : rest.sliced(close + 1);
    }
    qsizetype end = 0;
    while (end < rest.size() && rest[end] != u',' && rest[end] != u'\r' && rest[end] != u'\n')
        ++end;
    if (field.isNull())
        field = rest.first(end).trimmed();
    rest = rest.sliced(std::min(end + 1, rest.size()));
    return field.toString();
}

} // namespace

toolkit::Message messageOfFailedFile(const QString& path, const QString& reason)
{
    return {.text = u"Die Datei %1 konnte nicht geschrieben werden: %2"_s.arg(path, reason),
            .icon = Icon::Exclamation,
            .english = u"could not write %1: %2."_s.arg(path, reason)};
}

bool saveBackup(app::Context& context, const QString& path, const QByteArray& bytes)
{
    QString reason;
    if (app::writeWholeFile(path, bytes, &reason))
        return true;
    context.dialogs.Show(messageOfFailedFile(path, reason));
    return false;
}

QByteArray telBytes(const std::vector<ClassicEntry>& entries)
{
    QString text;
    for (const ClassicEntry& entry : entries)
        text += quotedLine({protectedName(entry.name), entry.number, entry.date, entry.dateSound, entry.vip,
                            entry.vipSound});
    return app::toCp1252(text);
}

QByteArray prvBytes(const std::vector<ProviderEntry>& entries)
{
    QString text;
    for (const ProviderEntry& entry : entries)
        text += quotedLine({protectedName(entry.name), entry.number});
    return app::toCp1252(text);
}

std::vector<ClassicEntry> telEntries(const QByteArray& bytes, int phoneType)
{
    QString text = app::fromCp1252(bytes);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    std::vector<ClassicEntry> entries;
    for (const QString& line : text.split(u'\n')) {
        const QStringList parts = line.split(u"\",\""_s);
        if (parts.size() < 2)
            continue;
        const auto field = [&parts](int index) { return parts.value(index).remove(u'"'); };
        ClassicEntry entry;
        // A quote within a name was saved under its stand-in, and goes with all other quotes.
        entry.name = field(0).remove(quoteStandIn);
        entry.number = field(1);
        entry.date = field(2);
        entry.dateSound = field(3);
        if (link::marksVip(phoneType)) {
            entry.vip = field(4);
            entry.vipSound = field(5);
        }
        entries.push_back(entry);
    }
    return entries;
}

std::vector<ProviderEntry> prvEntries(const QByteArray& bytes)
{
    const QString text = app::fromCp1252(bytes);
    QStringView rest = QStringView(text).trimmed();
    std::vector<ProviderEntry> entries;
    while (!rest.isEmpty()) {
        ProviderEntry entry;
        entry.name = takeInputField(rest).replace(quoteStandIn, u'"');
        entry.number = takeInputField(rest);
        entries.push_back(entry);
        while (!rest.isEmpty() && rest.front().isSpace())
            rest = rest.sliced(1);
    }
    return entries;
}

bool SaveTel(app::Context& context, const toolkit::ListRows& list, const QString& path)
{
    if (list.count() == 0)
        return true;
    const bool classic = link::isClassic(context.sy.PhoneType);
    return saveBackup(context, path, classic ? telBytes(classicEntries(list)) : QByteArray());
}

bool SavePrv(app::Context& context, const toolkit::ListRows& list, const QString& path)
{
    return list.count() == 0 || saveBackup(context, path, prvBytes(providerEntries(list)));
}

bool LoadTel(app::Context& context, toolkit::ListRows& list, const QString& path)
{
    list.clear();
    QByteArray bytes;
    if (!load(context, path, bytes))
        return false;
    fill(list, telEntries(bytes, context.sy.PhoneType));
    return true;
}

bool LoadPrv(app::Context& context, toolkit::ListRows& list, const QString& path)
{
    list.clear();
    QByteArray bytes;
    if (!load(context, path, bytes))
        return false;
    fill(list, prvEntries(bytes));
    return true;
}

QString backupPath(const app::Context& context, const QString& what, const QString& extension)
{
    const QDir folder(app::backupFolder(context.sy));
    const QString base = what + app::FormatDateStamp(context.clock.Now());
    QString path = folder.filePath(base + extension);
    for (int number = 2; app::FileExists(path); ++number)
        path = folder.filePath(base + u" (%1)"_s.arg(number) + extension);
    return path;
}

QString phoneCopyPath(const app::Context& context, const QString& extension)
{
    return backupPath(context, u"Inhalt des Telefons vom "_s, extension);
}

} // namespace kalmo::phonedata
