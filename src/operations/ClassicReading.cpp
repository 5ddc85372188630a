#include "operations/ClassicReading.h"

#include "link/PhoneModels.h"
#include "phonedata/Ringtones.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::Certainty;

namespace {

QStringList namesOf(const phonedata::SoundList& sounds)
{
    QStringList names;
    for (int row = 1; row <= sounds.upperBound(); ++row)
        names.append(QString::number(sounds.row(row).id) + u' ' + sounds.row(row).name);
    return names;
}

/// Reads the phone's own melodies, by whose names the list says which of them is set. Returns true if they
/// came twice the same, or if the list does not need them.
bool learnMelodies(const ListJob& job)
{
    if (!job.traits().hasDates || !link::hasRingtoneSettings(job.phoneType()))
        return true;
    QStringList first;
    for (int time = 0; time < 2; ++time) {
        const auto rows = phonedata::makeSoundRows();
        if (!phonedata::ReadSoundList({job.line, job.memory, job.window, job.progress.panel}, *rows))
            return false;
        if (time == 0)
            first = namesOf(job.memory.sounds);
    }
    return namesOf(job.memory.sounds) == first;
}

ListReading readOnce(const ListJob& job, const ReadPolicy& policy)
{
    const bool areMelodiesSure = !policy.readsMelodies || learnMelodies(job);
    const auto rows = job.traits().makeRows();
    ListReading reading;
    QObject::connect(rows.get(), &toolkit::ListRows::inserted, rows.get(), [&] {
        reading.given = rows->count();
        if (job.onEntryRead)
            job.onEntryRead(reading.given);
    });
    phonedata::StoreContent& content = job.content();
    content.forget(); // the content is known only as far as this reading knows it
    const bool isClosed =
        phonedata::readStore({job.line, job.memory, *rows, job.window, job.progress}, job.store);
    reading.isWhole = content.certainty != Certainty::Unknown;
    if (!isClosed && job.progress.cancelled())
        reading.cause = Cause::Interrupted;
    else if (!isClosed)
        reading.cause = job.line.port().IsOpen() ? Cause::NotRead : Cause::LineGone;
    if (reading.isWhole && !areMelodiesSure)
        content.certainty = Certainty::Doubtful;
    return reading;
}

} // namespace

ListReading readList(const ListJob& job, const ReadPolicy& policy)
{
    ListReading reading;
    for (int number = 1; number <= policy.readings; ++number) {
        if (job.onStep)
            job.onStep(number == 1 ? ListStep::Reading : ListStep::ReadingAgain);
        reading = readOnce(job, policy);
        if (reading.cause != Cause::None || job.content().certainty == Certainty::Known)
            break;
    }
    return reading;
}

Cause causeOf(link::RxFailure failure)
{
    switch (failure) {
    case link::RxFailure::None:
        break;
    case link::RxFailure::NotSent:
        return Cause::NotPossible;
    case link::RxFailure::Refused:
        return Cause::PhoneRefused;
    case link::RxFailure::Silent:
        return Cause::NoAnswer;
    case link::RxFailure::Gone:
        return Cause::LineGone;
    }
    return Cause::None;
}

} // namespace kalmo::operations
