// Appointments, tasks and notes.

#include "app/CodePage.h"
#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/OutputFile.h"
#include "cli/Tables.h"
#include "phonedata/IrmcItems.h"
#include "phonedata/VcfText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <utility>

namespace kalmo::cli {

namespace {

/// A line of an item, by its name.
struct ItemField
{
    QStringView key; ///< in JSON
    QStringView heading;
    QStringView name;
};

struct Organizer
{
    qint32 kind;
    QStringView name;
    QStringView ending;
    QStringView itemEnd; ///< line that ends an item
    std::array<ItemField, 6> fields;
    size_t fieldCount;
};

constexpr Organizer calendar{phonedata::KindAppointment,
                             u"calendar",
                             u".vcs",
                             u"END:VCALENDAR",
                             {{{u"luid", u"LUID", u"X-IRMC-LUID"},
                               {u"summary", u"Summary", u"SUMMARY"},
                               {u"start", u"Start", u"DTSTART"},
                               {u"end", u"End", u"DTEND"},
                               {u"due", u"Due", u"DUE"},
                               {u"repeat", u"Repeat", u"RRULE"}}},
                             6};
constexpr Organizer notes{phonedata::KindNote,
                          u"notes",
                          u".vnt",
                          u"END:VNOTE",
                          {{{u"luid", u"LUID", u"X-IRMC-LUID"}, {u"text", u"Text", u"BODY"}}},
                          2};

ExitStatus readBytes(Job& job, const Organizer& organizer, QByteArray& bytes)
{
    return withDataChannel(job, Intent::Reads, [&](const std::shared_ptr<obex::clsMmc>& client) {
        job.progress.phase(u"Reading the %1"_s.arg(organizer.name));
        const toolkit::Progress progress{.bar = &job.progress, .cancel = &job.stop};
        const bool done = phonedata::VcxReadBytes(*client, organizer.kind, bytes, progress);
        job.progress.clear();
        return done ? ExitDone : brokenOff(job);
    });
}

/// Value of a line: the text after the colon, decoded if the part before it declares an encoding.
QString valueOf(QStringView line)
{
    const qsizetype colon = line.indexOf(u':');
    const QString value = line.sliced(colon + 1).toString();
    const bool isEncoded = line.first(colon).contains(u"QUOTED-PRINTABLE", Qt::CaseInsensitive);
    return isEncoded ? phonedata::VcfQpDec(value) : value;
}

/// The fields of all items in an object. Lines are parted before anything is decoded, since a value may hold
/// line ends of its own.
std::vector<QStringList> itemsIn(const QByteArray& object, const Organizer& organizer)
{
    const QString text = app::fromCp1252(object).remove(u"=\r\n"_s);
    const QStringList none(static_cast<qsizetype>(organizer.fieldCount));
    std::vector<QStringList> items;
    QStringList item = none;
    for (const QString& line : text.split(u"\r\n"_s)) {
        if (line == organizer.itemEnd) {
            items.push_back(std::exchange(item, none));
            continue;
        }
        const QString name = line.section(u':', 0, 0).section(u';', 0, 0);
        for (size_t index = 0; index < organizer.fieldCount; ++index) {
            QString& value = item[static_cast<qsizetype>(index)];
            if (name == organizer.fields[index].name && line.contains(u':') && value.isEmpty())
                value = valueOf(line);
        }
    }
    if (item != none) // cut off
        items.push_back(item);
    return items;
}

ExitStatus runOrganizer(Job& job, const Organizer& organizer)
{
    const QString path = job.invocation.value(u"--output"_s);
    const bool isJson = path.endsWith(u".json"_s, Qt::CaseInsensitive);
    if (!path.isEmpty() && !isJson && !path.endsWith(organizer.ending, Qt::CaseInsensitive)) {
        job.out.error(
            u"could not save in %1: its name ends neither in %2 nor in .json."_s.arg(path, organizer.ending));
        return ExitWrongUse;
    }
    if (!canSaveOutput(job))
        return ExitFailed;
    QByteArray object;
    if (const ExitStatus status = readBytes(job, organizer, object); status != ExitDone)
        return status;
    QStringList headings;
    for (size_t index = 0; index < organizer.fieldCount; ++index)
        headings.append(organizer.fields[index].heading.toString());
    QJsonArray array;
    const std::vector<QStringList> rows = itemsIn(object, organizer);
    for (const QStringList& cells : rows) {
        QJsonObject item;
        for (size_t index = 0; index < organizer.fieldCount; ++index)
            item.insert(organizer.fields[index].key, cells[static_cast<qsizetype>(index)]);
        array.append(item);
    }
    const auto bytes = [&] { return isJson ? QJsonDocument(array).toJson() : object; };
    const bool isSaved = saveOutput(job, {.count = rows.size(), .bytes = bytes});
    if (path.isEmpty() || job.out.isJson())
        job.out.show(array, alignedTable(headings, rows));
    return isSaved ? ExitDone : ExitFailed;
}

} // namespace

ExitStatus runCalendarRead(Job& job)
{
    return runOrganizer(job, calendar);
}

ExitStatus runNotesRead(Job& job)
{
    return runOrganizer(job, notes);
}

} // namespace kalmo::cli
