// Appointments, tasks and notes.

#include "app/CodePage.h"
#include "app/Files.h"
#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "phonedata/IrmcItems.h"
#include "phonedata/VcfCodec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace kalmo::cli {

namespace {

/// What a phone says of an item in one line of it.
struct ItemField
{
    QStringView key; ///< in JSON
    QStringView heading;
    QStringView line;
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
                             {{{u"luid", u"LUID", u"X-IRMC-LUID:"},
                               {u"summary", u"Summary", u"SUMMARY:"},
                               {u"start", u"Start", u"DTSTART:"},
                               {u"end", u"End", u"DTEND:"},
                               {u"due", u"Due", u"DUE:"},
                               {u"repeat", u"Repeat", u"RRULE:"}}},
                             6};
constexpr Organizer notes{phonedata::KindNote,
                          u"notes",
                          u".vnt",
                          u"END:VNOTE",
                          {{{u"luid", u"LUID", u"X-IRMC-LUID:"}, {u"text", u"Text", u"BODY:"}}},
                          2};

ExitStatus readText(Job& job, const Organizer& organizer, QString& text)
{
    return withDataChannel(job, [&](const std::shared_ptr<obex::clsMmc>& client) {
        job.progress.phase(u"Reading the %1"_s.arg(organizer.name));
        const toolkit::Progress progress{.bar = &job.progress, .cancel = &job.stop};
        const bool done = phonedata::VcxRead(*client, organizer.kind, text, progress);
        job.progress.clear();
        return done ? ExitDone : brokenOff(job);
    });
}

ExitStatus runOrganizer(Job& job, const Organizer& organizer)
{
    const QString path = job.invocation.value(u"--output"_s);
    const bool isJson = path.endsWith(u".json"_s, Qt::CaseInsensitive);
    if (!path.isEmpty() && !isJson && !path.endsWith(organizer.ending, Qt::CaseInsensitive)) {
        job.out.error(u"%1 ends neither in %2 nor in .json."_s.arg(path, organizer.ending));
        return ExitWrongUse;
    }
    QString text;
    if (const ExitStatus status = readText(job, organizer, text); status != ExitDone)
        return status;
    QStringList headings;
    for (size_t index = 0; index < organizer.fieldCount; ++index)
        headings.append(organizer.fields[index].heading.toString());
    QJsonArray array;
    std::vector<QStringList> rows;
    for (const QString& item : text.split(organizer.itemEnd.toString())) {
        if (!item.contains(u"BEGIN:"_s))
            continue;
        QJsonObject object;
        QStringList cells;
        for (size_t index = 0; index < organizer.fieldCount; ++index) {
            cells.append(phonedata::GetVcfValue(item, organizer.fields[index].line));
            object.insert(organizer.fields[index].key, cells.last());
        }
        array.append(object);
        rows.push_back(cells);
    }
    QString reason;
    const QByteArray bytes = isJson ? QJsonDocument(array).toJson() : app::toCp1252(text);
    if (!path.isEmpty() && !app::writeWholeFile(path, bytes, &reason)) {
        job.out.error(u"%1 could not be written: %2."_s.arg(path, reason));
        return ExitFailed;
    }
    if (path.isEmpty() || job.out.isJson())
        job.out.show(array, alignedTable(headings, rows));
    if (!path.isEmpty())
        job.out.note(u"%1 saved in %2.\n"_s.arg(entryCount(rows.size()), path));
    return ExitDone;
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
