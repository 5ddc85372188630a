#include "phonedata/ClassicPhonebook.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "link/PhoneModels.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t leastRowsToPrepare = 3;

/// Month, day, hour and minute stand in this order from `at` on, two digits each.
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

void parseDate(ClassicEntry& entry, const QString& text)
{
    const qsizetype comma = text.indexOf(u',');
    const QString date = comma < 0 ? QString() : text.mid(comma + 1);
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
        entry.date = dateFromWire(parts[1], 2); // behind "00"
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
    job.list.clear();
    job.memory.phonebook.forget();
    return false;
}

/// Writes a dummy entry and erases the store once more, which this family needs before longer lists.
bool prepareStore(const StoreJob& job)
{
    job.progress.status(u"Bereite Telefonbuch vor..."_s);
    job.memory.phonebook.forget(); // the dummy entry is there until the store is erased
    writeNextEntry(job.line, "AT^WSWE=1,A,1,1,0,\r");
    CloseStore(job.line, job.progress);
    if (!EraseStore(job.line, Store::Phonebook, job.progress))
        return false;
    job.memory.phonebook.becomes({}, Certainty::Known);
    if (!OpenStore(job.line, Store::Phonebook, job.progress))
        return false;
    job.line.pause(1);
    return true;
}

} // namespace

ClassicEntry parsePhonebookReply(const QByteArray& reply, int phoneType, const SoundList& sounds,
                                 app::DebugLog& log)
{
    QString text = app::fromCp1252(reply);
    text = text.remove(u"^WSRE:"_s).remove(u'\r').remove(u'\n').trimmed();
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
    job.list.clear();

    bool doubtful = false;
    const auto take = [&](const QByteArray& reply) {
        if (context.log.isOn())
            context.log.WriteDebugLog(u"ReadPB_TB_Data="_s, app::fromCp1252(reply));
        if (!reply.isEmpty())
            job.list.add(toRow(parsePhonebookReply(reply, job.phoneType(), job.memory.sounds, context.log)));
        context.log.WriteDebugLog(u"ReadPB_TB"_s, reply.isEmpty() ? u"EmptyEntrySkipped"_s : u"EntryDone"_s);
    };
    if (!readEntries(job, Store::Phonebook, take, doubtful))
        return abandonRead(job);
    job.memory.phonebook.becomes(classicEntries(job.list), doubtful ? Certainty::Doubtful : Certainty::Known);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    return closed;
}

QByteArray phonebookWriteCommand(const ClassicEntry& entry, int phoneType, const SoundList& sounds)
{
    QByteArray command = "AT^WSWE=" + lengthPrefixed(entry.name) + ',' + lengthPrefixed(entry.number);
    const bool marksVip = link::marksVip(phoneType);
    if (entry.date.isEmpty()) {
        command += ",0,";
    } else {
        const QString date = (marksVip ? u"00"_s : QString()) + dateToWire(entry.date) +
                             GetSoundCode(entry.dateSound, phoneType, sounds);
        command += ',' + lengthPrefixed(date);
    }
    if (marksVip && entry.vip == u"Ja"_s)
        command += ",1," + app::toCp1252(GetSoundCode(entry.vipSound, phoneType, sounds));
    return command + "\r\n";
}

bool WritePB_TB(const StoreJob& job)
{
    const toolkit::BusyScope busy(job.window);
    std::vector<ClassicEntry> entries = classicEntries(job.list);
    job.memory.phonebook.forget();
    if (!EraseStore(job.line, Store::Phonebook, job.progress))
        return false;
    job.memory.phonebook.becomes({}, Certainty::Known);
    if (!OpenStore(job.line, Store::Phonebook, job.progress))
        return false;
    job.line.pause(1);
    if (link::needsPreparedPhonebook(job.phoneType()) && entries.size() >= leastRowsToPrepare &&
        !prepareStore(job))
        return false;

    QByteArrayList commands;
    for (const ClassicEntry& entry : entries)
        commands.append(phonebookWriteCommand(entry, job.phoneType(), job.memory.sounds));
    bool doubtful = false;
    const int written = writeEntries(job, commands, u"Schreibe Telefonbuch..."_s, doubtful);
    const bool isWhole = written == commands.size();
    entries.resize(written);
    job.memory.phonebook.becomes(std::move(entries),
                                 isWhole && doubtful ? Certainty::Doubtful : Certainty::Known);
    job.line.pause(isWhole ? 1 : 0.5);
    const bool closed = CloseStore(job.line, job.progress);
    job.progress.status(u"Fertig"_s);
    job.progress.hide();
    return isWhole && closed;
}

} // namespace kalmo::phonedata
