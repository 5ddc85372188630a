// Changes of a vCard phonebook: what is planned, and that phone, record and result agree in any case.

#include "operations/CardLosses.h"
#include "operations/ContactEdit.h"
#include "operations/ContactFiles.h"
#include "operations/Records.h"
#include "support/ContactPhone.h"
#include "support/ObexClient.h"
#include "support/SmallDisk.h"
#include "support/TestProgram.h"

#include <algorithm>

using namespace kalmo::operations;
using namespace kalmo::phonedata;

namespace {

/// The card of a contact as a phone sends it. `name` is what follows the key N.
QByteArray card(const QByteArray& luid, const QByteArray& name, const QByteArray& home)
{
    return "BEGIN:VCARD\r\nVERSION:2.1\r\nN" + name + "\r\nTEL;HOME:" + home + "\r\nX-IRMC-LUID:" + luid +
           "\r\nEND:VCARD\r\n";
}

ContactReading readingOf(const QByteArray& cards, int used)
{
    const QByteArray own = "BEGIN:VCARD\r\nN:\r\nEND:VCARD\r\n";
    ContactReading reading{parseCards(own + cards), tVcfInfo{250, static_cast<qint16>(used)}};
    markOwnCard(reading.cards, used);
    return reading;
}

QString inWords(const ContactPlan& plan)
{
    QStringList words;
    for (const ContactWrite& write : plan.add)
        words.append(u"add "_s + write.entry.lastName);
    for (const ContactPlan::Change& change : plan.change)
        words.append(u"change %1 to %2"_s.arg(change.from.luid, change.to.entry.lastName));
    for (const tVcfEntry& entry : plan.remove)
        words.append(u"remove "_s + entry.luid);
    for (const tVcfEntry& entry : plan.stuck)
        words.append(u"stuck "_s + entry.lastName);
    for (const tVcfEntry& entry : plan.kept)
        words.append(u"kept "_s + entry.lastName);
    return words.join(u", "_s);
}

struct Phone : ContactPhone
{
    using ContactPhone::ContactPhone;

    std::vector<Record> records() { return Records(test.context, knownIdentity(test.sy)).all(); }

    /// One change from begin to end.
    using MakePlan = std::function<ContactPlan(const ContactReading& held)>;
    ContactOutcome change(const MakePlan& makePlan, const ContactPolicy& policy = {.checksRoom = true})
    {
        ContactEdit edit(store, policy, progress.all());
        ContactOutcome outcome;
        outcome.facts = edit.begin();
        return outcome.facts.isDone() ? edit.apply(makePlan(edit.held()), RecordCause::Write) : outcome;
    }
};

} // namespace

class tst_ContactEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plansEqual()
    {
        const ContactReading held =
            readingOf(card("1", ":A;a", "10") + card("2", ":B;b", "20") + card("", ":D;d", "40"), 3);
        const Rows<Contacts, QString> rows{
            {"as it is", contactsOf(held), {}},
            {"by the LUID", {{.lastName = u"X"_s, .luid = u"2"_s}}, u"change 2 to X, remove 1, stuck D"_s},
            {"by content under another LUID",
             {{.lastName = u"B"_s, .home = u"20"_s, .firstName = u"b"_s, .luid = u"77"_s}},
             u"remove 1, stuck D"_s},
            {"by the name",
             {{.lastName = u"A"_s, .home = u"11"_s, .firstName = u"a"_s}},
             u"change 1 to A, remove 2, stuck D"_s},
            {"the LUID goes before the content",
             {{.lastName = u"B"_s, .home = u"20"_s, .firstName = u"b"_s, .luid = u"1"_s},
              {.lastName = u"A"_s, .home = u"10"_s, .firstName = u"a"_s}},
             u"add A, change 1 to B, remove 2, stuck D"_s},
            {"two of the same, one is new",
             {{.lastName = u"A"_s, .home = u"10"_s, .firstName = u"a"_s},
              {.lastName = u"A"_s, .home = u"10"_s, .firstName = u"a"_s}},
             u"add A, remove 2, stuck D"_s},
            {"nameless contacts are no match", {{.home = u"5"_s}}, u"add , remove 1, remove 2, stuck D"_s},
        };
        rows.each([&](const auto& wanted, const auto& words) {
            QCOMPARE(inWords(planEqual(held, wanted)), words);
        });
    }

    void plansRestore()
    {
        const QByteArray before = card("1", ":A;a", "10") + card("2", ";CHARSET=UTF-8:\xC5\x81;b", "20");
        const ContactReading held = readingOf(card("2", ":L;b", "20") + card("3", ":A;a", "10"), 2);
        const ContactPlan plan = planRestore(held, parseCards(before));
        QCOMPARE(inWords(plan), u"change 2 to Ł"_s); // the first is there under another LUID
        QCOMPARE(plan.change[0].to.card, card("2", ";CHARSET=UTF-8:\xC5\x81;b", "20"));
        QCOMPARE(inWords(planRestore(held, parseCards(card("3", ":A;a", "11")))),
                 u"change 3 to A, remove 2"_s);
        // A reading that may lack contacts removes only those that came later.
        const VcfCards third = parseCards(card("3", ":A;a", "11"));
        QCOMPARE(inWords(planRestore(held, third, Completeness::Doubtful)), u"change 3 to A, kept L"_s);
        QCOMPARE(inWords(planRestore(held, third, Completeness::Doubtful, {u"2"_s})),
                 u"change 3 to A, remove 2"_s);
        ContactReading miscounted = held;
        miscounted.info->intBelegt = 4;
        QCOMPARE(inWords(planRestore(miscounted, third)), u"change 3 to A, kept L"_s);
        const ContactPlan anew = planRestore(readingOf({}, 0), parseCards(before));
        QCOMPARE(anew.add.size(), 2U);
        QCOMPARE(anew.add[1].card, card("", ";CHARSET=UTF-8:\xC5\x81;b", "20"));
    }

    void removesFirstWhatNeedsTheRoom()
    {
        ContactPlan plan;
        plan.add.resize(3);
        plan.remove.resize(2);
        const std::pair<int, int> table[] = {{5, 0}, {3, 0}, {2, 1}, {1, 2}, {0, 2}, {-1, 2}};
        for (const auto& [room, first] : table)
            QCOMPARE(plan.removedFirst(room), first);
        QVERIFY(plan.fits(1) && !plan.fits(0));

        Phone full(u"S68H"_s, {.seed = u"none"_s, .entries = 3, .capacity = 3});
        const auto outcome = full.change([](const ContactReading& held) {
            Contacts wanted = contactsOf(held);
            wanted.erase(wanted.begin());
            wanted.push_back({.lastName = u"Neu"_s, .home = u"1"_s});
            return planEqual(held, wanted);
        });
        QCOMPARE(outcome.facts.state, State::Done);
        QCOMPARE(full.held().items().size(), 3U);
    }

    /// The number of pieces decides whether a reading is whole. A LUID line in the phone's own card does not.
    void ownCardWithLuid()
    {
        Phone phone(u"SL450HX"_s, {.ownCardLuid = true});
        const auto count = phone.held().items().size();
        const auto outcome = phone.change([](const ContactReading& held) {
            if (!held.isWhole() || planDelete(held, {u"0000"_s}).isSound() ||
                planDelete(held, {QString()}).isSound())
                qFatal("the phone's own card is taken for a contact");
            return planEqual(held, contactsOf(held)).isEmpty()
                       ? planAdd({{.lastName = u"Neu"_s, .home = u"1"_s}})
                       : ContactPlan{};
        });
        QCOMPARE(outcome.facts.state, State::Done);
        QCOMPARE(phone.held().items().size(), count + 1);
        phone.change([](const ContactReading& held) { return planEqual(held, {{.home = u"1"_s}}); });
        QCOMPARE(phone.held().items().size(), 1U);
    }

    /// A changed number leaves the bytes of a name alone that the described decoder does not know.
    void uneditedBytes()
    {
        for (const auto cards :
             {handset::CardText::Utf8, handset::CardText::QuotedPrintable, handset::CardText::Folded}) {
            Phone phone(u"S68H"_s, {.seed = u"none"_s, .cards = cards});
            const tVcfEntry entry{
                .email = u"ş@ü.de"_s, .lastName = u"A=B; Ä"_s, .home = u"1"_s, .firstName = u"Ayşe"_s};
            QCOMPARE(phone.change([&](const ContactReading&) { return planAdd({entry}); }).facts.state,
                     State::Done);
            tVcfEntry changed;
            const auto outcome = phone.change([&](const ContactReading& held) {
                changed = held.cards.cards.front().entry;
                changed.home = u"2"_s;
                return planChange(held, changed).plan;
            });
            QCOMPARE(outcome.facts.state, State::Done);
            const QJsonObject held = phone.held().items().front().fields;
            QCOMPARE(held[u"lastName"_s].toString() + held[u"firstName"_s].toString() +
                         held[u"email"_s].toString(),
                     entry.lastName + entry.firstName + entry.email);
            QCOMPARE(held[u"home"_s].toString(), u"2"_s);
        }
    }

    /// A contact that was edited while a question was open is neither overwritten nor missing in the record.
    void changedDuringAQuestion()
    {
        const Rows<bool, double, Cause, qsizetype> rows{
            {"a long question", false, 121, Cause::None, 1},
            {"a change elsewhere meanwhile", true, 121, Cause::Doubtful, 0},
        };
        rows.each([](bool isEdited, double seconds, Cause cause, qsizetype records) {
            Phone phone(u"S68H"_s, {.seed = u"none"_s, .entries = 3});
            ContactEdit edit(phone.store, {}, phone.progress.all());
            QVERIFY(edit.begin().isDone());
            tVcfEntry entry = edit.held().cards.cards.front().entry;
            const ContactPlan plan = planDelete(edit.held(), {entry.luid}).plan;
            entry.home = u"4711"_s;
            QVERIFY(!isEdited || phone.store->writeContacts({{entry}}, phone.progress.all()));
            phone.test.clock.WaitSeconds(seconds);
            const ContactOutcome outcome = edit.apply(plan, RecordCause::Delete);
            QCOMPARE(outcome.facts.cause, cause);
            QCOMPARE(outcome.hasChangedMeanwhile, isEdited);
            QCOMPARE(std::ssize(phone.records()), records);
            QCOMPARE(phone.held().items().size(), isEdited ? 3U : 2U);
        });
    }

    void nothingWithoutRoomOrCount()
    {
        Phone full(u"S68H"_s, {.seed = u"none"_s, .entries = 2, .capacity = 2});
        const auto add = [](const ContactReading&) {
            return planAdd({{.lastName = u"Neu"_s, .home = u"1"_s}});
        };
        QCOMPARE(full.change(add).facts.cause, Cause::NoRoom);
        full.port.handset().setFaults({.miscounts = 2});
        QCOMPARE(full.change(add, {.readsAgain = true}).facts.cause, Cause::Doubtful);
        QVERIFY(full.records().empty());
        QCOMPARE(full.held().items().size(), 2U);

        const auto remove = [](const ContactReading& held) {
            return planDelete(held, {held.cards.cards[0].entry.luid}).plan;
        };
        const ContactPolicy lenient{.mayUseDoubtfulReading = true};
        const Rows<bool, ContactPolicy, Phone::MakePlan, Cause, size_t> rows{
            {"no count, which the strict policy needs", false, {}, remove, Cause::Doubtful, 2},
            {"no count, which a new contact needs", false, lenient, add, Cause::Doubtful, 2},
            {"no count, and a deletion does not need it", false, lenient, remove, Cause::None, 1},
            {"no count, and perhaps the phone's own card", true, lenient, remove, Cause::None, 2},
        };
        rows.each([](bool hasOwnLuid, const auto& policy, const auto& makePlan, Cause cause, size_t left) {
            Phone phone(u"S68H"_s, {.seed = u"none"_s, .entries = 2, .ownCardLuid = hasOwnLuid});
            phone.port.handset().setFaults({.refuseAt = 4}); // info.log
            phone.test.dialogs.expect(errorBox(obex::GetFriedlyErrMsg(0xC3)));
            QCOMPARE(phone.change(makePlan, policy).facts.cause, cause);
            QCOMPARE(phone.held().items().size(), left);
            const auto records = phone.records();
            QCOMPARE(records.size(), 2 - left);
            for (const Record& record : records)
                QVERIFY(Records(phone.test.context, record.phone).read(record.id)->part(incompletePart));
        });
    }

    /// Some room is enough for the record before the change, and not for its result.
    void aRecordThatCanNotBeCompleted()
    {
        int open = 0;
        State state = State::Unchanged;
        for (int room = 200; room < 20000 && state != State::Done; room += 40) {
            Phone phone(u"S68H"_s, {.seed = u"none"_s, .entries = 3});
            ContactOutcome outcome;
            {
                const SmallDisk disk(room);
                outcome = phone.change([](const ContactReading& held) {
                    return planDelete(held, {held.cards.cards[0].entry.luid}).plan;
                });
            }
            const auto records = phone.records();
            state = records.empty() ? State::Unchanged : records[0].state;
            QCOMPARE(phone.held().items().size(), records.empty() ? 3U : 2U);
            QCOMPARE(outcome.facts.isRecordOpen, !records.empty() && state == State::Unknown);
            open += outcome.facts.isRecordOpen ? 1 : 0;
        }
        QVERIFY(open > 0 && state == State::Done);
    }

    void lossesOfCards()
    {
        const QByteArray marks = ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:";
        Rows<QByteArray, tVcfEntry, CardLosses> rows;
        rows.add("nothing", {}, {.email = u"ş;@x"_s, .lastName = u"Ελένη;="_s, .firstName = u"Ö"_s}, {});
        rows.add("a code", {}, {.lastName = u"A=3B"_s},
                 {.characters = u"="_s, .edited = {{u"A=3B"_s, u"A"_s}, {u""_s, u";"_s}}});
        rows.add("no letter of the phone", {}, {.home = u"ş"_s},
                 {.characters = u"ş"_s, .edited = {{u"ş"_s, u"?"_s}}});
        rows.add("hides a separator", {}, {.lastName = u"a\\"_s, .firstName = u"b"_s},
                 {.characters = u"\\"_s, .edited = {{u"a\\"_s, u"a;b"_s}, {u"b"_s, u""_s}}});
        rows.add("half of a name", ":A=B;C", {.lastName = u"A"_s, .firstName = u"D"_s},
                 {.hidden = {{u"A=B"_s, u"A"_s}}});
        rows.add("the whole name", ":A=B;C", {.lastName = u"E"_s, .firstName = u"D"_s}, {});
        rows.add("half of a name that came through", marks + "A=3DB;C",
                 {.lastName = u"A=B"_s, .firstName = u"D"_s},
                 {.characters = u"="_s, .edited = {{u"A=B"_s, u"A"_s}, {u"D"_s, u""_s}}});
        rows.add("another form of a birthday", ":B;C\r\nBDAY:1972-11-02T08:00",
                 {.lastName = u"D"_s, .firstName = u"C"_s, .birthday = u"1972-11-2T08:00"_s}, {});
        rows.each([&](const auto& name, auto entry, const auto& losses) {
            // Another card in quoted-printable has all of them decoded.
            const VcfCards held = parseCards(card("7", name, "1") + card("8", marks + "=C3=BC", "1"));
            entry.luid = name.isEmpty() ? QString() : u"7"_s;
            if (!name.isEmpty() && entry.home.isEmpty())
                entry.home = u"1"_s;
            const CardLosses found = lossesWhenSent(entry, name.isEmpty() ? nullptr : &held.cards[0]);
            QCOMPARE(found.characters, losses.characters);
            QVERIFY(found.edited == losses.edited && found.hidden == losses.hidden);
        });
    }

    /// They say what the phone's card says, not what the list shows of it; files of fields can't.
    void cardsForOtherPrograms()
    {
        const ContactReading held =
            readingOf(card("1", ":A=B; \xC4", "1") + card("2", ";ENCODING=QUOTED-PRINTABLE:x=C3=40", "2") +
                          card("3", ":C", "3\r\nTEL;FAX:4"),
                      3);
        QCOMPARE(held.cards.cards[0].entry.lastName, u"A"_s);
        const QByteArray bytes = contactCardBytes(held);
        const QByteArray mark = ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:";
        for (const QByteArray& line :
             {"N" + mark + "A=3DB; =C3=84", "N" + mark + "x=E2=82=AC;", "TEL;FAX:4"_ba})
            QVERIFY2(bytes.contains(line + "\r\n"), bytes.constData());
        QCOMPARE(contactsBeyondFields(held.cards), QStringList({u"A"_s, u"C"_s}));
    }

    void cardsBringBack()
    {
        const tVcfEntry full{.email = u"ş;@x"_s,
                             .lastName = u"Ελένη;="_s,
                             .work = u"1"_s,
                             .mobile = u"2"_s,
                             .home = u"3"_s,
                             .firstName = u"Ö"_s,
                             .birthday = u"1970-03-21T12:30"_s,
                             .luid = u"7"_s};
        const SavedList list{.kind = SavedKind::Contacts, .contacts = {full, {.home = u"1"_s}}};
        QVERIFY(bringsBack(u"x.vcf"_s, list) && bringsBack(u"x.json"_s, list));
        QVERIFY(!bringsBack(u"x.csv"_s, list)); // Windows-1252
        SavedList latin{.kind = SavedKind::Contacts};
        SavedListFault none;
        QVERIFY(readContactCards(
            "BEGIN:VCARD\nN;ENCODING=QUOTED-PRINTABLE:M=FCller;J\nTEL;HOME:1\nEND:VCARD\n", {}, latin, none));
        QCOMPARE(latin.contacts[0].lastName, u"Müller"_s);
        QCOMPARE(
            droppedKeys("BEGIN:VCARD\nFN:a\nN:a\nTEL;FAX:1\nTEL;HOME:1\nNOTE:x\nADR:\nNOTE:y\nEND:VCARD\n"),
            QStringList({u"TEL;FAX"_s, u"NOTE"_s}));
        const Rows<QByteArray, FileFault> rows{
            {"none", "hello", FileFault::NothingInIt},
            {"cut off", "BEGIN:VCARD\nN:a\nBEGIN:VCARD\nN:b\nEND:VCARD\n", FileFault::CardWithoutEnd},
            {"version", "BEGIN:VCARD\nVERSION:4.0\nEND:VCARD\n", FileFault::OtherVersion},
            {"two numbers", "BEGIN:VCARD\nTEL;HOME:1\nTEL;HOME;VOICE:2\nEND:VCARD\n", FileFault::FieldTwice},
            {"a number of letters", "BEGIN:VCARD\nTEL;HOME;CHARSET=UTF-8:\xC5\x9F\nEND:VCARD\n",
             FileFault::ForeignLetter},
        };
        rows.each([&](const auto& bytes, const auto& kind) {
            SavedList read{.kind = SavedKind::Contacts};
            SavedListFault fault;
            QVERIFY(!readContactCards(bytes, {}, read, fault));
            QCOMPARE(fault.kind, kind);
        });
    }
};

KALMO_TEST(tst_ContactEdit)
#include "tst_ContactEdit.moc"
