// The command that shows the result of an import without a phone.

#include "cli/Commands.h"
#include "cli/ImportWork.h"
#include "cli/SavedListWords.h"

#include <QJsonObject>

namespace kalmo::cli {

using transfer::Shape;

namespace {

/// The list to compare with, empty if no file is named for it. Returns nothing for a bad file, after it has
/// reported that.
std::optional<transfer::ExistingEntries> listToCompare(Job& job, Shape shape)
{
    if (!job.invocation.has(u"--against"_s))
        return transfer::ExistingEntries();
    const QString path = job.invocation.value(u"--against"_s);
    const auto kind =
        shape == Shape::Classic ? operations::SavedKind::Phonebook : operations::SavedKind::Contacts;
    operations::SavedListFault fault;
    const auto list = operations::readSavedList(path, kind, {}, fault);
    if (!list) {
        job.out.error(inWords(fault, path, kind) + u'.');
        return std::nullopt;
    }
    return shape == Shape::Classic ? existingEntries(list->entries) : existingEntries(list->contacts);
}

} // namespace

ExitStatus runPreview(Job& job)
{
    if (!job.invocation.has(u"--for"_s)) {
        job.out.error(u"\"preview\" needs --for classic or --for vcard."_s);
        return ExitWrongUse;
    }
    const Shape shape = job.invocation.value(u"--for"_s) == u"classic"_s ? Shape::Classic : Shape::Vcard;
    const auto existing = listToCompare(job, shape);
    if (!existing)
        return ExitWrongUse;
    const auto work = importWork(job, job.invocation.arguments.first(), shape);
    if (!work)
        return ExitWrongUse;
    const transfer::Preview preview =
        makePreview(*work, *existing, job.context.clock.Now().date(),
                    [&job](qsizetype, qsizetype) { return !job.stop.Checked(); });
    if (!preview.isWhole)
        return ExitRefused;
    job.out.show(previewJson(preview), previewTable(preview));
    job.out.note(hintLines(preview));
    return ExitDone;
}

} // namespace kalmo::cli
