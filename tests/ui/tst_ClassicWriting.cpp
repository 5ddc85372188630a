// "Schreiben" of the classic lists. Nothing that the phone holds may be lost: it is on disk before it is
// erased, or the user has said that it need not be.

#include "support/TestProgram.h"
#include "ui/ClassicDesk.h"

namespace {

const ClassicEntry dated{u"Held"_s, u"1"_s, u"24.12  08:30"_s, u"Melodie 1"_s};
const QString doubt =
    u"Beim letzten Lesen war die Übertragung gestört, und dabei kann ein Eintrag übersprungen oder "
    u"verfälscht worden sein. "
    u"Ein solcher Eintrag geht beim Schreiben verloren. Besser ist es, die Liste vorher noch einmal zu lesen."_s;
const QString difference = u"\n\nBeim Schreiben:\nneu: 2 (New, Next)\ngeändert: 0\nentfernt: 2 (Held, Too)"_s;
const QString notFromPhone = u"Die Liste im Fenster wurde nicht aus dem Telefon gelesen."_s;
const QString otherEntries =
    u"Das Telefon enthält nicht mehr die Einträge, aus denen die Liste im Fenster entstanden ist."_s;
const QString unread =
    u"Der bisherige Inhalt des Telefons konnte nicht gelesen und daher nicht gesichert werden. "
    u"Beim Schreiben geht er verloren."_s;

} // namespace

class tst_ClassicWriting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void write();
};

void tst_ClassicWriting::write()
{
    const QString ofList = listBackup + u": New Next"_s;
    const QString ofPhone = phoneCopy(u"12-00-00"_s) + u": Held Too"_s;
    const QString ofLater = phoneCopy(u"12-00-04"_s) + u": Held Too"_s;
    Rows<CommandResult, QStringList, std::optional<Certainty>, Prepare> rows;
    rows.add("both halves are saved", CommandResult::Done, {ofList, ofPhone}, Certainty::Known,
             [](Desk& desk) { desk.probe().write(); });
    rows.add("a list that was not read from the phone: the user sees the difference", CommandResult::Done,
             {ofList, ofLater}, {},
             [](Desk& desk) { desk.probe().read().ask(notFromPhone + difference, Answer::Yes).write(); });
    for (const Certainty certainty : {Certainty::Known, Certainty::Doubtful})
        rows.add("the phone holds something else than what the list was made from", CommandResult::Refused,
                 {ofList, ofLater}, {}, [certainty](Desk& desk) {
                     desk.knows({held.front()}, {"^WSRE: 4,Held,1,1,0,"}, certainty, 121);
                     desk.probe().read().ask(otherEntries + difference, Answer::No);
                 });
    rows.add("an own melody was read without its name, which is known now", CommandResult::Refused, {ofPhone},
             {}, [](Desk& desk) {
                 desk.shows({dated, held[1]});
                 desk.knows({dated, held[1]}, {"^WSRE: 4,Held,1,1,12,001224083033", "^WSRE: 3,Too,1,2,0,"});
                 desk.memory.phonebook.becomesDoubtfulByMelodies();
                 desk.memory.sounds.add({u"Walzer"_s, u"MID"_s, 99, 33});
                 desk.memory.areSoundsKnown = true;
                 desk.probe().ask(otherEntries +
                                      u"\n\nBeim Schreiben:\nneu: 0\ngeändert: 1 (Held)\nentfernt: 0"_s,
                                  Answer::No);
             });
    rows.add("the question was answered too late: the list has changed", CommandResult::Failed,
             {ofList, ofLater}, {}, [](Desk& desk) {
                 desk.probe().read().ask(notFromPhone + difference, Answer::Yes);
                 desk.test.dialogs.whileShown([&desk] { desk.test.clock.WaitSeconds(121); });
                 desk.readBack({"4,Held,1,1,0,"})
                     .test.dialogs.expect(Icon::Exclamation,
                                          u"Die Liste im Telefon hat sich inzwischen geändert. Bitte "
                                          u"lesen Sie sie noch einmal ein.\n\nIm Telefon wurde nichts "
                                          u"geändert."_s);
             });
    rows.add("the line went during the question", CommandResult::Failed, {ofList, ofPhone},
             Certainty::Doubtful, [](Desk& desk) {
                 desk.probe().ask(doubt + difference, Answer::Yes);
                 desk.test.dialogs.whileShown([&desk] { desk.port.Close(); });
                 desk.test.dialogs.expect(
                     Icon::Exclamation,
                     u"Die Verbindung zum Telefon ist unterbrochen.\n\nIm Telefon wurde nichts geändert."_s);
             });
    using Age = std::tuple<const char*, qint64, bool>;
    for (const auto& [what, age, isReadAgain] :
         {Age("trusted", 120, false), Age("too old", 121, true), Age("clock set back since", -60, true)})
        rows.add(what, CommandResult::Done, {ofList, isReadAgain ? ofLater : ofPhone}, {},
                 [age, isReadAgain](Desk& desk) {
                     desk.knows(Certainty::Known, age);
                     desk.probe();
                     (isReadAgain ? desk.read() : desk).write();
                 });
    rows.add("automatic backup off: what the phone holds is saved all the same", CommandResult::Done,
             {ofPhone}, Certainty::Known, [](Desk& desk) {
                 app::put(desk.test.settings, app::keys::AutoBackup, 0);
                 desk.probe().write();
             });
    rows.add("an empty list makes no file and erases", CommandResult::Done, {ofPhone}, Certainty::Known,
             [](Desk& desk) {
                 desk.list->clear();
                 desk.probe().erase().script.expect("AT\r");
                 desk.readBack({});
             });
    rows.add("doubtful, and the user says no", CommandResult::Refused, {ofList, ofPhone}, Certainty::Doubtful,
             [](Desk& desk) { desk.probe().ask(doubt + difference, Answer::No); });
    rows.add("doubtful, and the user says yes", CommandResult::Done, {ofList, ofPhone}, Certainty::Doubtful,
             [](Desk& desk) { desk.probe().ask(doubt + difference, Answer::Yes).write(); });
    rows.add("unreadable, and the user says no", CommandResult::Refused, {ofList}, {}, [](Desk& desk) {
        desk.probe()
            .ask(unread, Answer::No)
            .script.expect("AT^WSSL=\"TB\"\r")
            .refuse("AT^WSRE\r")
            .expect("AT\r");
    });
    rows.add(
        "nothing is erased that can't be saved", CommandResult::Failed, {}, Certainty::Known, [](Desk& desk) {
            app::put(desk.test.settings, app::keys::AutoBackup, 0);
            desk.blockBackups();
            desk.probe().test.dialogs.expect(
                Icon::Exclamation,
                u"Der bisherige Inhalt des Telefons konnte nicht in der Datei %1 gesichert werden: Not a "
                u"directory\n\nIm Telefon wurde nichts geändert."_s.arg(
                    desk.backup(phoneCopy(u"12-00-00"_s))));
        });
    rows.add(
        "nothing is erased that can't be recorded", CommandResult::Failed, {ofList, ofPhone},
        Certainty::Known, [](Desk& desk) {
            desk.test.makeFile(u"storage/Verlauf"_s, {});
            desk.probe().test.dialogs.expectStart(
                u"Der bisherige Inhalt des Telefons konnte nicht im Ordner \"Verlauf\" gesichert werden: "_s);
        });
    rows.add("no answer to the probe", CommandResult::Failed, {ofList}, {}, [](Desk& desk) {
        desk.tellNoAnswer(u"AT+CGMM"_s).tell(u"Das Telefon antwortet nicht."_s).script.refuse("AT+CGMM\r");
    });
    rows.add(
        "what the phone can't hold is told before the erase", CommandResult::Refused, {ofPhone},
        Certainty::Known, [](Desk& desk) {
            desk.shows(
                {{u"A\x1b"_s, u"1"_s, u"31.02  08:30"_s, u"Tango"_s}, {.name = u"Held"_s, .number = u"1"_s}});
            desk.probe().ask(
                u"Das Telefon kann nicht alles so aufnehmen, wie es in der Liste steht. Nimmt es einen "
                "Eintrag nicht an, fehlen ihm auch alle folgenden.\n\n"
                "Eintrag 1 (A\x1b): Ein Steuerzeichen im Namen kann nicht gesendet werden und entfällt.\n"
                "Eintrag 1 (A\x1b): \"31.02  08:30\" ist kein Tag mit Uhrzeit.\n"
                "Eintrag 1 (A\x1b): Das Telefon hat für die Erinnerung keine Melodie \"Tango\".\n"
                "Eintrag 1 (A\x1b): Im Telefon steht dann \"A\" statt \"A\x1b\".\n"
                "Eintrag 1 (A\x1b): Im Telefon steht dann \"Melodie 1\" statt \"Tango\"."_s,
                Answer::No);
        });
    rows.add("a melody without a name would be replaced", CommandResult::Refused, {ofPhone}, {},
             [](Desk& desk) {
                 ClassicEntry edited = dated; // another day does not change the melody
                 edited.date = u"25.12  08:30"_s;
                 desk.shows({edited});
                 desk.knows({dated, held[1]}, {"^WSRE: 4,Held,1,1,12,001224083033", "^WSRE: 3,Too,1,2,0,"});
                 desk.memory.phonebook.becomesDoubtfulByMelodies(); // asks nothing else
                 desk.probe().ask(
                     u"Von 1 Einträgen ist die eigene Melodie nicht mit Namen bekannt. Sie würde beim "
                     u"Schreiben durch \"Melodie 1\" ersetzt. Besser ist es, zuerst die Klingeltöne und "
                     u"danach die Liste neu einzulesen."_s,
                     Answer::No);
             });
    rows.add("an entry without a name gets one", CommandResult::Refused,
             {phoneCopy(u"12-00-00"_s) + u": Ohne Name"_s}, {}, [](Desk& desk) {
                 const ClassicEntry nameless{.name = u"Ohne Name"_s, .number = u"1"_s};
                 desk.shows({nameless, held[1]});
                 desk.knows({nameless}, {"^WSRE: ,,1,1,0,"});
                 desk.probe().ask(
                     u"Einträge ohne Namen im Telefon: 1. Sie heißen nach dem Schreiben \"Ohne Name\"."_s,
                     Answer::No);
             });
    rows.add("the phone holds something else afterwards, and did not confirm the end", CommandResult::Failed,
             {ofList, ofPhone}, Certainty::Known, [](Desk& desk) {
                 desk.probe().erase().script.expectAll({firstWritten, secondWritten}).refuse("AT\r");
                 desk.script.expect("AT\r"); // once more ahead of the next command
                 desk.readBack({"3,New,1,3,0,"})
                     .test.dialogs.expectStart(u"Das Telefon enthält nach dem Schreiben nicht, was "
                                               u"geschrieben wurde. Fehlende Einträge: 1, "
                                               u"geänderte: 0, überzählige: 0."_s);
             });
    rows.add(
        "confirmed, but not read back", CommandResult::Done, {ofList, ofPhone}, Certainty::Known,
        [](Desk& desk) {
            desk.probe().erase().script.expectAll({firstWritten, secondWritten, "AT\r"});
            desk.script.refuse("AT^WSSL=\"TB\"\r");
            desk.tell(
                u"Das Telefon hat alle 2 Einträge bestätigt, konnte danach aber nicht zur Kontrolle gelesen "
                u"werden. Bitte lesen Sie die Liste noch einmal ein."_s);
        });
    using Failure = std::tuple<const char*, std::function<void(Desk&)>, QString>;
    for (const auto& [what, script, told] : {
             Failure(
                 "the erase is refused", [](Desk& desk) { desk.script.refuse("AT^WSEL=\"TB\"\r"); },
                 u"Das Telefon hat das Löschen der bisherigen Liste abgelehnt. Es enthält, was es vorher "
                 u"enthielt."_s),
             Failure(
                 "no answer to the erase", [](Desk& desk) { desk.script.ignore("AT^WSEL=\"TB\"\r"); },
                 u"Was das Telefon jetzt enthält, ist nicht bekannt."_s),
             Failure(
                 "fails half-way",
                 [](Desk& desk) { desk.erase().script.expect(firstWritten).refuse(secondWritten); },
                 u"Im Telefon stehen jetzt 1 von 2 Einträgen."_s),
             Failure(
                 "an answer is lost: a count is no fact",
                 [](Desk& desk) { desk.erase().script.expect(firstWritten).ignore(secondWritten); },
                 u"Das Telefon hat 1 von 2 Einträgen bestätigt. Ob auch der nächste angekommen ist, ist "
                 u"nicht bekannt."_s),
             Failure(
                 "an entry was sent again after a lost answer",
                 [](Desk& desk) { desk.erase().script.loseAnswer(firstWritten).refuse(secondWritten); },
                 u"Das Telefon hat 1 von 2 Einträgen bestätigt. Die Übertragung war gestört: Ein Eintrag "
                 u"kann doppelt im Telefon stehen."_s),
         })
        rows.add(what, CommandResult::Failed, {ofList, ofPhone}, Certainty::Known,
                 [script, told](Desk& desk) {
                     script(desk.probe());
                     desk.script.expect("AT\r");
                     desk.tellFailure(told);
                 });
    rows.add("an entry sent again is there twice, and the list was clean before", CommandResult::Failed,
             {ofList, ofPhone}, Certainty::Known, [](Desk& desk) {
                 desk.memory.TbDirty = false;
                 desk.probe().erase().script.loseAnswer(firstWritten).expectAll({secondWritten, "AT\r"});
                 desk.readBack({"3,New,1,3,0,", "3,New,1,3,0,", "4,Next,1,4,0,"})
                     .test.dialogs.expectStart(u"Das Telefon enthält nach dem Schreiben nicht, was "
                                               u"geschrieben wurde. Fehlende Einträge: 0, "
                                               u"geänderte: 0, überzählige: 1."_s);
             });
    rows.add("an entry sent again may be there twice: reading back skipped one both times",
             CommandResult::Done, {ofList, ofPhone}, Certainty::Known, [](Desk& desk) {
                 desk.probe().erase().script.loseAnswer(firstWritten).expectAll({secondWritten, "AT\r"});
                 for (int reading = 0; reading < 2; ++reading)
                     desk.script.expect("AT^WSSL=\"TB\"\r")
                         .loseAnswer("AT^WSRE\r", "^WSRE: 3,New,1,3,0,")
                         .expect("AT^WSRE\r", "^WSRE: 4,Next,1,4,0,")
                         .expectAll({"AT^WSRE\r", "AT\r"});
                 desk.tell(u"Das Telefon hat alle 2 Einträge bestätigt, konnte danach aber nicht zur "
                           u"Kontrolle gelesen werden. Die Übertragung war gestört: Ein Eintrag kann doppelt "
                           u"im Telefon stehen. Bitte lesen Sie die Liste noch einmal ein."_s);
             });

    rows.each([&](const auto& result, const auto& backups, const auto& known, const auto& prepare) {
        Desk desk;
        if (known)
            desk.knows(*known);
        prepare(desk);
        const auto listed = classicEntries(*desk.list);
        QCOMPARE(kalmo::ui::writeClassicList(desk.listJob(), *desk.list, desk.origin), result);
        QCOMPARE(desk.backups(), backups);
        if (result == CommandResult::Done && backups.contains(ofPhone))
            QVERIFY2(desk.record().endsWith(u": ^WSRE: 4,Held,1,1,0,|^WSRE: 3,Too,1,2,0,"_s),
                     qPrintable(desk.record()));
        QCOMPARE(desk.memory.TbDirty, result != CommandResult::Done);
        QCOMPARE(classicEntries(*desk.list), listed); // the list on screen never changes
    });
}

KALMO_TEST(tst_ClassicWriting)
#include "tst_ClassicWriting.moc"
