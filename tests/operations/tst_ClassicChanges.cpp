// Changes of classic lists and of settings: what is planned, what a plan keeps, and the outcome of each fault
// while a setting is changed.

#include "operations/ClassicLists.h"
#include "operations/PhoneSettings.h"
#include "operations/ReadingAge.h"
#include "operations/Records.h"
#include "operations/Undo.h"
#include "phonedata/RawReplies.h"
#include "support/HandsetMemory.h"
#include "support/HandsetPort.h"
#include "support/RecordedProgress.h"
#include "support/SeedFile.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

using namespace kalmo::operations;
using phonedata::ClassicEntry;
using phonedata::Store;

namespace {

const PhoneIdentity identity{u"Emulated"_s, u"1"_s};

/// A phonebook with melodies of the handset's own, one of which it no longer lists.
const QByteArray ownMelodies =
    R"({"settings": {"melodies": [{"name": "Walzer", "kind": "MID", "size": 99, "id": 12}]},
            "phonebook": [{"name": "Anna", "number": "1", "anniversary": "24.12. 08:30", "reminder": "12"},
                          {"name": "", "number": "2"},
                          {"name": "Gone", "number": "3", "anniversary": "01.02. 03:04", "reminder": "77"}],
            "providers": [{"name": "Nord", "number": "01031"}]})";

/// An emulated handset without a search ahead.
struct Bench
{
    explicit Bench(const QString& model = u"GALICIA"_s, int phoneType = 3)
        : port(test.clock, {.model = model, .seed = phoneType == 3 ? seedFile(ownMelodies) : u"sample"_s}),
          line(test.context, port)
    {
        test.sy.PhoneType = phoneType;
        test.sy.PhoneID = identity.model;
        test.sy.PhoneSerial = identity.serial;
        memory.sounds.add({u"Walzer"_s, u"MID"_s, 99, 12});
        memory.areSoundsKnown = true;
        QDir(test.storage).mkpath(u"Backup"_s);
        test.clock.WaitSeconds(5);
    }
    ListJob job(Store store = Store::Phonebook)
    {
        return {.line = line, .memory = memory, .store = store, .progress = progress.all()};
    }
    phonedata::RingtoneJob ringtones() { return {line, memory, nullptr, nullptr}; }
    const handset::Phone& phone() { return port.handset().phone(); }
    QStringList content() { return named(memoryOf(phone())); }
    std::optional<Record> newestRecord() const
    {
        const Records records(test.context, identity);
        const auto all = records.all();
        return all.empty() ? std::nullopt : records.read(all.front().id);
    }
    /// The line is there again, and so is the phone.
    void recover()
    {
        port.handset().setFaults({});
        test.clock.WaitSeconds(10);
        port.Open({});
    }

    TestContext test;
    HandsetPort port;
    link::Line line;
    phonedata::PhoneMemory memory;
    RecordedProgress progress;
};

const std::vector<ClassicEntry> fourEntries = {{.name = u"A"_s, .number = u"1"_s},
                                               {.name = u"B"_s, .number = u"2"_s},
                                               {.name = u"C"_s, .number = u"3"_s},
                                               {.name = u"D"_s, .number = u"4"_s}};

Outcome replace(Bench& bench)
{
    ListPlan plan = planReplace(bench.job(), fourEntries, {});
    return applyPlan(bench.job(), plan, {}).outcome;
}

ListOutcome append(const ListJob& job, const ClassicEntry& entry, const WritePolicy& policy = {})
{
    ListPlan plan = planAppend(job, {entry}, policy);
    return applyPlan(job, plan, policy);
}

} // namespace

class tst_ClassicChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Melodies that have no name in the list, and entries without a name.
    void keptEntriesKeepTheirCodes()
    {
        Bench bench;
        const ListPlan replacing = planReplace(bench.job(), bench.memory.phonebook.entries, {});
        QCOMPARE(replacing.unnamedMelodies, 0); // an empty list keeps none
        QCOMPARE(replacing.diff.remove.size(), 3U);
        ListPlan plan = planReplace(bench.job(), replacing.held.entries, {});
        QCOMPARE(plan.unnamedMelodies, 1);
        QVERIFY(!plan.changesNothing);

        plan = planAppend(bench.job(), {fourEntries.front()}, {});
        QCOMPARE(plan.diff.add.size(), 1U);
        QVERIFY(plan.diff.change.empty() && plan.diff.remove.empty());
        const Outcome outcome = applyPlan(bench.job(), plan, {}).outcome;
        QVERIFY(outcome.isDone());
        QStringList reminders;
        for (const auto& entry : bench.phone().phonebook.entries)
            reminders.append(entry.name + u' ' + entry.reminder);
        QCOMPARE(reminders, (QStringList{u"Anna 12"_s, u"Ohne Name "_s, u"Gone 77"_s, u"A "_s}));

        // A list that was read without the melodies is doubtful, and nothing is erased on the strength of it.
        bench.memory.forget();
        QCOMPARE(append(bench.job(), fourEntries.front()).outcome.cause, Cause::Doubtful);
        // A list of melodies that has shrunk since leaves an entry whose melody has no code: it gets the
        // first one.
        ClassicEntry tango{u"Tango"_s, u"5"_s, u"24.12  08:30"_s, u"Tango"_s, u"Ja"_s, u"Tango"_s};
        ListPlan unknown = planReplace(bench.job(), {tango}, {.mayUseDoubtful = true});
        QVERIFY(applyPlan(bench.job(), unknown, {.mayUseDoubtful = true}).outcome.isDone());
        const auto& taken = bench.phone().phonebook.entries;
        QCOMPARE(taken.size(), 1U);
        QCOMPARE(taken.front().reminder + u" "_s + taken.front().vipSound, u"1 1"_s);
        // The oldest family shifts what it reads by one melody.
        Bench oldest(u"WOODSTOCK"_s, 1);
        const ListPlan first = planReplace(oldest.job(), {}, {});
        const ListPlan same = planReplace(oldest.job(), first.held.entries, {});
        QVERIFY(same.changesNothing);
        auto changed = first.held.entries;
        changed.push_back(fourEntries.front());
        QCOMPARE(planReplace(oldest.job(), changed, {}).movedMelodies, 3);
    }

    /// A question may wait for hours. Meanwhile somebody uses the handset.
    void aPlanHoldsForALimitedTime()
    {
        const Rows<bool, Cause> rows{{"nothing happened", false, Cause::None},
                                     {"an entry came", true, Cause::Doubtful}};
        rows.each([&](const auto& isChanged, const auto& cause) {
            Bench bench;
            ListPlan plan = planReplace(bench.job(), fourEntries, {});
            phonedata::PhoneMemory another;
            if (isChanged)
                QVERIFY(append({.line = bench.line, .memory = another, .store = Store::Phonebook},
                               fourEntries.back(), {.mayUseDoubtful = true})
                            .outcome.isDone());
            bench.test.clock.WaitSeconds(readingHolds + 1);
            const ListOutcome result = applyPlan(bench.job(), plan, {});
            QCOMPARE(result.outcome.cause, cause);
            QCOMPARE(result.hasChangedMeanwhile, cause == Cause::Doubtful);
            QCOMPARE(result.sentNothing(), cause == Cause::Doubtful);
            QVERIFY(result.sentNothing() || result.outcome.isDone());
        });
    }

    /// A list that is only sorted differs from the former one, and an entry that is there twice is one too
    /// many.
    void ordersAndDoublesAreCompared()
    {
        Bench bench;
        const QByteArrayList held = planReplace(bench.job(), {}, {}).held.replies;
        const QByteArrayList sorted{held[2], held[0], held[1]};
        const ListPlan reordered = planRestore(bench.job(), sorted, {});
        QVERIFY(reordered.diff.isEmpty() && reordered.isReordered && !reordered.changesNothing);
        const ListPlan shorter = planRestore(bench.job(), {held[2]}, {});
        QVERIFY(shorter.diff.add.empty() && shorter.diff.change.empty());
        QCOMPARE(shorter.diff.remove.size(), 2U);
        const ListPlan longer = planRestore(bench.job(), {held[2], held[2]}, {});
        QCOMPARE(longer.diff.add.size(), 1U);
    }

    /// A phone that refuses the list of its melodies takes its own codes back all the same.
    void undoWithoutMelodies()
    {
        Bench bench;
        const QStringList before = bench.content();
        QVERIFY(replace(bench).isDone());
        bench.memory.forget();
        bench.test.dialogs.agreeToAll({});
        bench.port.handset().setFaults({.refuseCommandAt = 1}); // AT^WFFO
        const auto undo = makeUndo({bench.line, bench.memory, nullptr}, *bench.newestRecord());
        QCOMPARE(undo->plan().cause, Cause::None);
        QCOMPARE(undo->diff().add, (QStringList{u"Anna 1"_s, u"Ohne Name 2"_s, u"Gone 3"_s}));
        QCOMPARE(undo->diff().remove.size(), 4);
        bench.port.handset().setFaults({});
        QVERIFY(undo->apply().isDone());
        QCOMPARE(bench.content(), before);
        const auto again = makeUndo({bench.line, bench.memory, nullptr}, *bench.newestRecord());
        const int requests = bench.phone().faults.commands;
        QCOMPARE(again->compareWithKnown()->remove, undo->diff().add); // without a request
        QCOMPARE(bench.phone().faults.commands, requests);
    }

    /// A fault may leave the store open, in which a phone takes no other command than those of the store.
    void aStoreThatStayedOpenIsClosedFirst()
    {
        const Rows<Faults (*)(int)> rows{
            {"no more answers", [](int at) { return Faults{.silentAfter = at - 1}; }},
            {"an answer is late", [](int at) { return Faults{.lateAt = at, .lateBy = 20}; }},
            {"the line drops", [](int at) { return Faults{.hangUpAt = at}; }}};
        int stayedOpen = 0;
        rows.each([&](const auto& makeFaults) {
            int requests = 1;
            for (int at = 1; at <= requests; ++at) {
                Bench bench;
                bench.port.handset().setFaults(makeFaults(at));
                bench.test.dialogs.agreeToAll({});
                replace(bench);
                requests = std::max(requests, bench.phone().faults.commands);
                stayedOpen += bench.phone().phonebook.open ? 1 : 0;
                bench.recover();
                const QStringList violations = bench.port.handset().violations();
                const ListPlan plan = planReplace(bench.job(), {}, {.reading = {.readings = 2}});
                const QByteArray why = "at " + QByteArray::number(at);
                QVERIFY2(plan.isRead(), why.constData());
                QCOMPARE(bench.port.handset().violations(), violations);
                QVERIFY2(!bench.phone().phonebook.open, why.constData());
            }
        });
        QVERIFY(stayedOpen > 0);
    }

    void clock()
    {
        const Rows<QString, Cause, int, bool, Faults> rows{
            {"all well", u"done"_s, Cause::None, 1, true, Faults{}},
            {"refused, and read back", u"unchanged"_s, Cause::PhoneRefused, 0, true,
             Faults{.refuseCommandAt = 1}},
            {"confirmed, but not read back", u"unknown"_s, Cause::PhoneRefused, 1, false,
             Faults{.refuseCommandAt = 2}},
            {"the line drops", u"unknown"_s, Cause::LineGone, 0, false, Faults{.hangUpAt = 1}},
        };
        rows.each([&](const auto& state, const auto& cause, const auto& confirmed, const auto& isReadBack,
                      const auto& faults) {
            Bench bench(u"WOODSTOCK"_s, 1);
            bench.port.handset().setFaults(faults);
            bench.test.dialogs.agreeToAll({});
            const auto [outcome, now] = setClock(bench.line);
            QCOMPARE(now.has_value(), isReadBack);
            QCOMPARE(wordOf(outcome.state), state);
            QCOMPARE(outcome.cause, cause);
            QCOMPARE(outcome.confirmed, confirmed);
        });
    }

    /// One lost byte or one late answer never makes a value, and a name without a melody none either.
    void doubtfulSettings()
    {
        Bench undisturbed;
        QCOMPARE(readRingtones(undisturbed.ringtones()), Cause::None);
        const auto wanted = undisturbed.memory.soundSettings;
        const int requests = undisturbed.phone().faults.commands;
        for (int at = 1; at <= 2 * requests; ++at) {
            Bench bench;
            bench.port.handset().setFaults(at % 2 == 0 ? Faults{.loseByteAt = at / 2}
                                                       : Faults{.lateAt = (at + 1) / 2, .lateBy = 3.2});
            bench.test.dialogs.agreeToAll({});
            const Cause cause = readRingtones(bench.ringtones());
            QVERIFY2(cause != Cause::None || bench.memory.soundSettings == wanted,
                     QByteArray::number(at).constData());
            QVERIFY2(cause == Cause::None || cause == Cause::Doubtful, QByteArray::number(at).constData());
        }
        undisturbed.port.handset().setFaults({});
        const Outcome unnamed =
            setRingtone(undisturbed.ringtones(), phonedata::SoundEvent::Alarm, u"Polka"_s, 6).outcome;
        QCOMPARE(unnamed.cause, Cause::NotPossible);
        QCOMPARE(undisturbed.phone().faults.commands, 0);
    }

    void rawReplies()
    {
        const QByteArrayList replies{"^WSRE: 4,A\r\nb,1,1,0,", "", QByteArray("3:\n\0", 4)};
        const QByteArray bytes = phonedata::repliesBytes(replies);
        QCOMPARE(phonedata::repliesFrom(bytes), replies);
        QCOMPARE(phonedata::repliesFrom({}), QByteArrayList());
        for (const QByteArray& broken : {bytes.chopped(1), "x" + bytes, bytes + "9:a\n", QByteArray("-1:\n"),
                                         QByteArray("99999999999999999999:a\n")})
            QCOMPARE(phonedata::repliesFrom(broken), std::nullopt);
    }
};

KALMO_TEST(tst_ClassicChanges)
#include "tst_ClassicChanges.moc"
