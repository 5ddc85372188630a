#include "operations/ClassicReading.h"

#include "link/PhoneModels.h"
#include "phonedata/ClassicPhonebook.h"
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
bool learnMelodies(const ListJob& job, ListReading& reading)
{
    if (!job.traits().hasDates || !link::hasRingtoneSettings(job.phoneType()))
        return true;
    QStringList first;
    for (int time = 0; time < 2; ++time) {
        const auto rows = phonedata::makeSoundRows();
        if (!phonedata::ReadSoundList({job.line, job.memory, job.window, job.progress.panel}, *rows)) {
            reading.refusedMelodies = job.line.lastFailure() == link::RxFailure::Refused;
            return false;
        }
        if (time == 0)
            first = namesOf(job.memory.sounds);
    }
    job.memory.areSoundsKnown = job.memory.areSoundsKnown && namesOf(job.memory.sounds) == first;
    return job.memory.areSoundsKnown;
}

/// Returns true if an entry has a melody of the phone's own.
bool hasOwnMelody(const ListJob& job)
{
    return job.traits().hasDates &&
           phonedata::haveUnnamedSound(job.content().replies, job.phoneType(), phonedata::SoundList());
}

ListReading readOnce(const ListJob& job, const ReadPolicy& policy)
{
    ListReading reading;
    const bool areMelodiesSure = !policy.readsMelodies || learnMelodies(job, reading);
    const auto count = [&](int entries) {
        reading.given = entries;
        if (job.onEntryRead)
            job.onEntryRead(entries);
    };
    phonedata::StoreContent& content = job.content();
    const bool isClosed =
        phonedata::readStore({job.line, job.memory, nullptr, job.window, job.progress, count}, job.store);
    reading.isWhole = content.certainty != Certainty::Unknown;
    if (!isClosed && job.progress.cancelled())
        reading.cause = Cause::Interrupted;
    else if (!isClosed)
        reading.cause = job.line.port().IsOpen() ? Cause::NotRead : Cause::LineGone;
    if (content.certainty == Certainty::Known && !areMelodiesSure && hasOwnMelody(job))
        content.becomesDoubtfulByMelodies();
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
        const phonedata::StoreContent& content = job.content();
        const bool mayGetMelodies = policy.readsMelodies && !reading.refusedMelodies;
        const bool isAsSureAsCanBe =
            content.certainty == Certainty::Known || (content.lacksOnlyMelodies && !mayGetMelodies);
        if (reading.cause != Cause::None || isAsSureAsCanBe)
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
