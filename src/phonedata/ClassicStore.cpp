#include "phonedata/ClassicStore.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "link/PhoneModels.h"
#include "phonedata/StoreTraits.h"

#include <QLocale>

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using link::Line;
using toolkit::Progress;

namespace {

// Seconds.
constexpr double openTimeout = 3;
constexpr double closeTimeout = 3.5;
constexpr double eraseTimeout = 180;
constexpr double readTimeout = 8;
constexpr double writeTimeout = 15;

constexpr QByteArrayView writeStart = "AT^WSWE=";

QByteArray quotedName(Store store)
{
    return '"' + traitsOf(store).wireName.toByteArray() + '"';
}

QByteArray closeCommand(int phoneType)
{
    return link::closesStoreByAt(phoneType) ? "AT\r" : "AT^WSSL\r";
}

/// Drops a length-prefixed field and the comma after it. Returns false if it is not as long as it says.
bool dropField(QByteArray& rest)
{
    const qsizetype comma = rest.indexOf(',');
    bool isNumber = false;
    const int length = comma < 0 ? -1 : rest.first(comma).toInt(&isNumber);
    const qsizetype end = comma + 1 + length;
    if (!isNumber || length < 0 || end > rest.size() || (end < rest.size() && rest[end] != ','))
        return false;
    rest = rest.mid(end + 1);
    return true;
}

} // namespace

bool OpenStore(Line& line, Store store, const Progress& progress)
{
    progress.status(u"Öffne Telefonbuch...(Dauer: 3 Sekunden)"_s);
    QByteArray answer;
    const bool answered = line.exchange(answer, "AT^WSSL=" + quotedName(store) + '\r', openTimeout);
    if (!answered && line.lostAnswers()) // it may be open all the same
        line.owe(closeCommand(line.context().sy.PhoneType), closeTimeout);
    progress.status(u"Fertig"_s);
    return answered;
}

bool CloseStore(Line& line, const Progress& progress)
{
    const int phoneType = line.context().sy.PhoneType;
    if (!link::isClassic(phoneType))
        return false;
    progress.status(u"Schließe Telefonbuch...(Dauer: "_s + QLocale().toString(closeTimeout) +
                    u" Sekunden)"_s);
    const QByteArray command = closeCommand(phoneType);
    line.Tx(command);
    line.pause(closeTimeout);
    QByteArray answer;
    const bool answered = line.Rx(answer, command, closeTimeout);
    line.owe(answered ? QByteArray() : command, closeTimeout);
    return answered;
}

bool EraseStore(Line& line, Store store, const Progress& progress)
{
    const StoreErasing erasing = eraseAndClose(line, store, progress);
    return erasing.isErased && erasing.isClosed;
}

StoreErasing eraseAndClose(Line& line, Store store, const Progress& progress)
{
    line.pause(0.5);
    progress.status(u"Lösche Telefonbuch...(Dauer: bis zu 180 Sekunden)"_s);
    StoreErasing erasing;
    {
        const link::RepeatStopScope stop(line, progress.cancel);
        QByteArray answer;
        erasing.isErased = line.exchange(answer, "AT^WSEL=" + quotedName(store) + '\r', eraseTimeout);
        erasing.failure = line.lastFailure();
        erasing.isRefused = erasing.failure == link::RxFailure::Refused && !line.lostAnswers();
    }
    erasing.isClosed = CloseStore(line, progress);
    if (erasing.isErased) {
        erasing.failure = line.lastFailure();
        progress.status(u"Fertig"_s);
    }
    return erasing;
}

void closeLeftStore(Line& line)
{
    constexpr double answerTimeout = 1.5;
    QByteArray answer;
    const link::LineMode mode = line.mode();
    line.setMode(link::LineMode::Switching); // Rx would send the command again, and most phones refuse it
    line.TxDirect("AT^WSSL\r\n");
    line.RxDirect(answer, answerTimeout);
    line.setMode(mode);
    if (answer.contains("OK\r\n"))
        line.pause(closeTimeout);
}

NextEntry readNextEntry(Line& line, Store store, QByteArray& reply, bool& doubtful)
{
    if (!line.exchange(reply, "AT^WSRE\r", readTimeout, true))
        return NextEntry::Failed;
    // An "OK" that came late would pass for the end of the store.
    doubtful = doubtful || !line.isAnswerSafe() || (!reply.isEmpty() && !lengthsAddUp(reply, store));
    return reply.isEmpty() ? NextEntry::End : NextEntry::Entry;
}

bool lengthsAddUp(const QByteArray& reply, Store store)
{
    QByteArray rest = reply.trimmed();
    if (!rest.startsWith("^WSRE:"))
        return false;
    rest = rest.sliced(6).trimmed();
    const bool hasName = !rest.startsWith(",,");
    if (!hasName)
        rest.remove(0, 2);
    for (int field = hasName ? 0 : 1; field < 2; ++field) {
        if (!dropField(rest))
            return false;
    }
    if (!traitsOf(store).hasDates || rest.isEmpty())
        return true;
    // The date is the last field with a length; what follows it in some families has none.
    const QByteArrayList parts = rest.split(',');
    bool isNumber = false;
    const int length = parts[0].toInt(&isNumber);
    return isNumber && (parts.size() < 2 ? 0 : parts[1].size()) == length;
}

bool writeNextEntry(Line& line, const QByteArray& command)
{
    QByteArray answer;
    return line.exchange(answer, command, writeTimeout, true);
}

std::optional<StoreContent> readEntries(const StoreJob& job, Store store, const EntryFromReply& entryFrom)
{
    StoreContent content;
    bool isDoubtful = false;
    for (int count = 1; count <= mostEntries + 1; ++count) {
        QByteArray reply;
        const NextEntry next =
            job.progress.cancelled() ? NextEntry::Failed : readNextEntry(job.line, store, reply, isDoubtful);
        if (next == NextEntry::Failed)
            return {};
        if (const auto entry = entryFrom(reply)) {
            content.replies.append(reply);
            content.entries.push_back(*entry);
            if (job.list)
                job.list->add(toRow(*entry));
            if (job.onEntryRead)
                job.onEntryRead(count);
        }
        job.line.pause(0.1);
        content.certainty = isDoubtful ? Certainty::Doubtful : Certainty::Known;
        if (next == NextEntry::End)
            return content;
    }
    job.context().log.WriteDebugLog(u"Warning:"_s, u"Store without an end"_s);
    return {};
}

void writeEntries(const StoreJob& job, const QByteArrayList& commands, const QString& status,
                  StoreWriting& writing)
{
    const int count = static_cast<int>(commands.size());
    writing.planned = count;
    if (count > 0)
        job.progress.start(0, count);
    for (int index = 0; index < count; ++index) {
        job.progress.set(index + 1);
        job.progress.status(status + u"(%1 von %2)"_s.arg(index + 1).arg(count));
        if (job.list && index < job.list->count() && !job.list->row(index).hidden)
            job.list->setCurrent(index);
        writing.wasCancelled = job.progress.cancelled();
        if (writing.wasCancelled)
            return;
        if (job.line.port().IsOpen())
            ++writing.sent;
        const bool isTaken = writeNextEntry(job.line, commands[index]);
        writing.failure = job.line.lastFailure();
        // A repeated command may have been carried out twice, one without an answer once.
        const bool isSure = isTaken ? job.line.isAnswerSafe() : !job.line.lostAnswers();
        writing.isDoubtful = writing.isDoubtful || !isSure;
        writing.mayHoldDoubles = writing.mayHoldDoubles || (isTaken && job.line.lostAnswers());
        writing.isLastUnknown = !isTaken && job.line.lostAnswers();
        if (!isTaken)
            return;
        ++writing.confirmed;
        job.line.pause(0.2);
    }
}

void noteWritten(StoreContent& content, StoreEntries written, const StoreWriting& writing)
{
    written.entries.resize(writing.confirmed);
    QByteArrayList replies;
    for (int index = 0; index < writing.confirmed; ++index)
        replies.append(replyFor(written.commands[index]));
    content.becomes(std::move(written.entries), writing.isDoubtful ? Certainty::Doubtful : Certainty::Known,
                    std::move(replies));
}

QByteArray replyFor(const QByteArray& writeCommand)
{
    // The read command answers an entry in the form in which the write command takes it, but leaves out the
    // length of an empty name.
    const QByteArray entry = writeCommand.sliced(writeStart.size());
    return "^WSRE: " + (entry.startsWith("0,,") ? entry.sliced(1) : entry);
}

QString takeField(QString& text)
{
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0) {
        text.clear();
        return {};
    }
    const double stated = app::Val(QStringView(text).first(comma));
    const qsizetype rest = text.size() - comma - 1;
    const auto length = static_cast<qsizetype>(std::clamp(stated, 0.0, static_cast<double>(rest)));
    const QString value = text.sliced(comma + 1, length);
    text = text.mid(comma + 1 + length + 1);
    return value;
}

QString takeName(QString& text)
{
    const qsizetype comma = text.indexOf(u',');
    // A name without a length loses its first two characters, as described for the ",," of nameless entries.
    if (comma > 0 && app::IsNumeric(QStringView(text).first(comma)))
        return takeField(text);
    text.remove(0, 2);
    return namelessEntry;
}

QByteArray lengthPrefixed(const QString& text)
{
    const QByteArray bytes = app::toCp1252(text);
    return QByteArray::number(bytes.size()) + ',' + bytes;
}

} // namespace kalmo::phonedata
