#include "phonedata/ClassicPhonebook.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "link/PhoneModels.h"

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t leastRowsToPrepare = 3;

/// Month, day, hour and minute are in this order from `at` on, two digits each.
QString dateFromWire(const QString& text, qsizetype at)
{
    return text.mid(at + 2, 2) + u'.' + text.mid(at, 2) + u"  "_s + text.mid(at + 4, 2) + u':' +
           text.mid(at + 6, 2);
}

QString dateToWire(const QString& date)
{
    return date.mid(3, 2) + date.mid(0, 2) + date.mid(7, 2) + date.mid(10, 2);
}

QString soundFromCode(const QString& code, const SoundList& sounds, app::DebugLog& log)
{
    if (code == u"S"_s)
        return u"Optisch"_s;
    if (code == u"0"_s)
        return u"Melodie 10"_s;
    const QString name = GetSoundName(app::ValInt(code), sounds, log);
    return name.isEmpty() ? u"Melodie "_s + code : name;
}

/// A reply without the prefix and line ends.
QString textOf(const QByteArray& reply)
{
    return app::fromCp1252(reply).remove(u"^WSRE:"_s).remove(u'\r').remove(u'\n').trimmed();
}

/// The fields after name and number in the phone's own spelling.
struct WireDetails
{
    QString date; ///< with the code of the reminder's sound
    bool isVip = false;
    QString vipCode;
};

/// Takes apart the rest of a reply after the number.
WireDetails detailsOf(const QString& text, int phoneType)
{
    if (!link::marksVip(phoneType)) {
        const qsizetype comma = text.indexOf(u',');
        return {.date = comma < 0 ? QString() : text.mid(comma + 1), .isVip = false, .vipCode = {}};
    }
    const QStringList parts = text.split(u',');
    const bool isVip = parts.size() >= 4 && parts[2] == u"1"_s;
    return {parts.value(1), isVip, isVip ? parts[3] : QString()};
}

QByteArray commandFor(const QString& name, const QString& number, const WireDetails& details)
{
    QByteArray command =
        "AT^WSWE=" + lengthPrefixed(name) + ',' + lengthPrefixed(number) + ',' + lengthPrefixed(details.date);
    if (details.isVip)
        command += ",1," + app::toCp1252(details.vipCode);
    return command + "\r\n";
}

bool isUnnamed(const QString& code, const SoundList& sounds)
{
    constexpr int builtInMelodies = 10;
    const int id = app::ValInt(code);
    return !code.isEmpty() && code != u"S"_s && (id < 0 || id > builtInMelodies) && !sounds.withId(id);
}

void parseDate(ClassicEntry& entry, const QString& text)
{
    const QString date = detailsOf(text, 1).date;
    if (date.isEmpty())
        return;
    entry.date = dateFromWire(date, 0);
    const QString code = date.mid(8, 1);
    if (code == u"S"_s)
        entry.dateSound = u"Optisch"_s;
    else
        entry.dateSound = u"Melodie "_s + (code == u"0"_s ? u"10"_s : code);
}

void parseDateAndVip(ClassicEntry& entry, const QString& text, const SoundList& sounds, app::DebugLog& log)
{
    if (!text.contains(u','))
        return;
    const QStringList parts = text.split(u',');
    if (!parts[1].isEmpty()) {
        entry.date = dateFromWire(parts[1], 2); // after "00"
        entry.dateSound = soundFromCode(parts[1].mid(10), sounds, log);
    }
    if (parts.size() < 4)
        return;
    if (parts[2] == u"1"_s)
        entry.vip = u"Ja"_s;
    if (!parts[3].isEmpty())
        entry.vipSound = soundFromCode(parts[3], sounds, log);
}

bool abandonRead(const StoreJob& job)
{
    job.context().log.WriteDebugLog(u"ReadPB_TB"_s, u"RxPreExit"_s);
    CloseStore(job.line, job.progress);
    if (job.list)
        job.list->clear();
    job.memory.phonebook.forget();
    return false;
}

/// Erases the phonebook and opens it again. Returns true if both succeeded.
bool eraseAndOpen(const StoreJob& job, StoreWriting& writing)
{
    job.memory.phonebook.forget();
    const StoreErasing erasing = eraseAndClose(job.line, Store::Phonebook, job.progress);
    writing.isErased = erasing.isErased;
    writing.isUntouched = erasing.isRefused;
    writing.failure = erasing.failure;
    if (!erasing.isErased || !erasing.isClosed)
        return false;
    job.memory.phonebook.becomes({}, Certainty::Known);
    const bool opened = OpenStore(job.line, Store::Phonebook, job.progress);
    writing.failure = job.line.lastFailure();
    if (opened)
        job.line.pause(1);
    return opened;
}

/// Writes a dummy entry and erases the store once more, which this family needs before longer lists.
bool prepareStore(const StoreJob& job, StoreWriting& writing)
{
    job.progress.status(u"Bereite Telefonbuch vor..."_s);
    // Its result does not matter, and it ends in CR alone: only true entries end in CR LF.
    writeNextEntry(job.line, "AT^WSWE=1,A,1,1,0,\r");
    CloseStore(job.line, job.progress);
    const bool isPrepared = eraseAndOpen(job, writing);
    writing.isUntouched = false; // the first erase succeeded
    return isPrepared;
}

} // namespace

ClassicEntry parsePhonebookReply(const QByteArray& reply, int phoneType, const SoundList& sounds,
                                 app::DebugLog& log)
{
    QString text = textOf(reply);
    ClassicEntry entry;
    entry.name = takeName(text);
    entry.number = takeField(text);
    if (link::marksVip(phoneType))
        parseDateAndVip(entry, text, sounds, log);
    else
        parseDate(entry, text);
    return entry;
}

bool ReadPB_TB(const StoreJob& job)
{
    const toolkit::BusyScope busy(job.window);
    app::Context& context = job.context();
    if (!OpenStore(job.line, Store::Phonebook, job.progress))
        return false;
    job.progress.status(u"Lese Telefonbuch..."_s);
    job.line.pause(0.5);
    if (job.list)
        job.list->clear();

    const auto entryFrom = [&](const QByteArray& reply) -> std::optional<ClassicEntry> {
        if (context.log.isOn())
            context.log.WriteDebugLog(u"ReadPB_TB_Data="_s, app::fromCp1252(reply));
        std::optional<ClassicEntry> entry;
        if (!reply.isEmpty())
            entry = parsePhonebookReply(reply, job.phoneType(), job.memory.sounds, context.log);
        context.log.WriteDebugLog(u"ReadPB_TB"_s, entry ? u"EntryDone"_s : u"EmptyEntrySkipped"_s);
        return entry;
    };
    auto content = readEntries(job, Store::Phonebook, entryFrom);
    if (!content)
        return abandonRead(job);
    // Without the list of melodies an own one is shown under a wrong name.
    if (content->certainty == Certainty::Known && !job.memory.areSoundsKnown &&
        haveUnnamedSound(content->replies, job.phoneType(), job.memory.sounds))
        content->becomesDoubtfulByMelodies();
    job.memory.phonebook = std::move(*content);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    return closed;
}

QByteArray phonebookWriteCommand(const ClassicEntry& entry, int phoneType, const SoundList& sounds)
{
    const bool marksVip = link::marksVip(phoneType);
    WireDetails details;
    if (!entry.date.isEmpty())
        details.date = (marksVip ? u"00"_s : QString()) + dateToWire(entry.date) +
                       GetSoundCode(entry.dateSound, phoneType, sounds);
    details.isVip = marksVip && entry.vip == u"Ja"_s;
    if (details.isVip)
        details.vipCode = GetSoundCode(entry.vipSound, phoneType, sounds);
    return commandFor(entry.name, entry.number, details);
}

QByteArray phonebookCommandFromReply(const QByteArray& reply, int phoneType)
{
    QString text = textOf(reply);
    const QString name = takeName(text);
    const QString number = takeField(text);
    return commandFor(name, number, detailsOf(text, phoneType));
}

UnnamedSounds unnamedSounds(const QByteArray& reply, int phoneType, const SoundList& sounds)
{
    if (!link::hasRingtoneSettings(phoneType))
        return {}; // the oldest family has no melodies of its own
    QString text = textOf(reply);
    takeName(text);
    takeField(text);
    const WireDetails details = detailsOf(text, phoneType);
    constexpr int dateLength = 10; // "00" and four pairs of digits, then the code
    return {.reminder = isUnnamed(details.date.mid(dateLength), sounds),
            .vip = isUnnamed(details.vipCode, sounds)};
}

bool haveUnnamedSound(const QByteArrayList& replies, int phoneType, const SoundList& sounds)
{
    return std::any_of(replies.begin(), replies.end(), [&](const QByteArray& reply) {
        return bool(unnamedSounds(reply, phoneType, sounds));
    });
}

bool isNameless(const QByteArray& reply)
{
    return textOf(reply).startsWith(u",,"_s);
}

bool WritePB_TB(const StoreJob& job)
{
    StoreEntries wanted{classicEntries(*job.list), {}};
    for (const ClassicEntry& entry : wanted.entries)
        wanted.commands.append(phonebookWriteCommand(entry, job.phoneType(), job.memory.sounds));
    return writePhonebook(job, wanted).isDone();
}

StoreWriting writePhonebook(const StoreJob& job, const StoreEntries& wanted)
{
    const toolkit::BusyScope busy(job.window);
    StoreWriting writing{.planned = static_cast<int>(wanted.commands.size())};
    if (!eraseAndOpen(job, writing))
        return writing;
    if (link::needsPreparedPhonebook(job.phoneType()) && wanted.entries.size() >= leastRowsToPrepare &&
        !prepareStore(job, writing))
        return writing;
    writeEntries(job, wanted.commands, u"Schreibe Telefonbuch..."_s, writing);
    noteWritten(job.memory.phonebook, wanted, writing);
    // Kept on purpose: this pause follows the one after the last entry.
    const bool hasFailed = writing.failure != link::RxFailure::None;
    job.line.pause(hasFailed ? 0.5 : 1);
    writing.isClosed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    job.progress.hide();
    return writing;
}

} // namespace kalmo::phonedata
