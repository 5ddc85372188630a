// "Lesen" and "Schreiben" of the classic lists. Nothing that the phone holds may be lost: it is on disk
// before it is erased, or the user has said that it need not be.

#include "support/TestProgram.h"
#include "ui/ClassicDesk.h"

namespace {

const ClassicEntry dated{u"Held"_s, u"1"_s, u"24.12  08:30"_s, u"Melodie 1"_s};
const QByteArrayList datedReplies{"^WSRE: 4,Held,1,1,12,001224083033", "^WSRE: 3,Too,1,2,0,"};
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

/// Each writes the list on screen. "done: list phone" is the result, and what was saved of both lists;
/// "later" is the phone's list that was read for it.
using Writings = Rows<QString, Prepare>;

void checkWritings(const Writings& writings)
{
    static const QMap<CommandResult, QString> words{{CommandResult::Done, u"done:"_s},
                                                    {CommandResult::Failed, u"failed:"_s},
                                                    {CommandResult::Refused, u"refused:"_s}};
    static const QMap<QString, QString> halves{{listBackup + u": New Next"_s, u"list"_s},
                                               {phoneCopy(u"12-00-00"_s) + u": Held Too"_s, u"phone"_s},
                                               {phoneCopy(u"12-00-04"_s) + u": Held Too"_s, u"later"_s}};
    writings.each([](const auto& wanted, const auto& prepare) {
        Desk desk;
        prepare(desk);
        const auto listed = classicEntries(*desk.list);
        QStringList said{words[kalmo::ui::writeClassicList(desk.listJob(), *desk.list, desk.origin)]};
        for (const QString& backup : desk.backups())
            said.append(halves.value(backup, backup));
        QCOMPARE(said.join(u' '), wanted);
        if (wanted.startsWith(u"done"_s) && wanted.endsWith(u"phone"_s))
            QVERIFY2(desk.record().endsWith(u": ^WSRE: 4,Held,1,1,0,|^WSRE: 3,Too,1,2,0,"_s),
                     qPrintable(desk.record()));
        QCOMPARE(desk.memory.TbDirty, !wanted.startsWith(u"done"_s));
        QCOMPARE(classicEntries(*desk.list), listed); // the list on screen never changes
    });
}

/// The window has read the list so long ago.
Prepare writesAfter(qint64 seconds, bool isReadAgain)
{
    return [seconds, isReadAgain](Desk& desk) {
        desk.knows(Certainty::Known, seconds).probe();
        (isReadAgain ? desk.read() : desk).write();
    };
}

Prepare holdsOthers(Certainty certainty)
{
    return [certainty](Desk& desk) {
        desk.knows({held.front()}, {"^WSRE: 4,Held,1,1,0,"}, certainty, 121);
        desk.probe().read().ask(otherEntries + difference, Answer::No);
    };
}

/// The write fails after the erase was sent.
Prepare fails(const QString& told, const std::function<void(Desk&)>& script)
{
    return [script, told](Desk& desk) {
        script(desk.knows().probe());
        desk.script.expect("AT\r");
        desk.tellFailure(told);
    };
}

/// All is confirmed, and reading back finds something else.
void expectOtherContent(Desk& desk, const QByteArrayList& found, const QString& counts)
{
    desk.readBack(found).test.dialogs.expectStart(
        u"Das Telefon enthält nach dem Schreiben nicht, was geschrieben wurde. "_s + counts);
}

} // namespace

class tst_ClassicLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads();
    void writes();
    void asksBeforeTheErase();
    void warnsOfOtherEntries();
    void erasesNothingUnsaved();
    void saysWhatThePhoneHolds();
};

void tst_ClassicLists::reads()
{
    const QString changed =
        u"Es wurden Änderungen am Telefonbuch vorgenommen, diese wurden jedoch noch nicht durch die Funktion "
        u"\"Schreiben\" übernommen.\n\nTrotzdem fortfahren?"_s;
    using Ask = std::optional<Answer>;
    const Rows<Ask, CommandResult, Prepare> rows{
        {"failure leaves the flag", Answer::Yes, CommandResult::Failed,
         [](Desk& desk) { desk.tell(accessError).script.refuse("AT^WSSL=\"TB\"\r"); }},
        {"doubtful reading is told", Ask(), CommandResult::Done,
         [](Desk& desk) {
             desk.script.expect("AT^WSSL=\"TB\"\r").stumble("AT^WSRE\r").expect("AT\r");
             desk.test.dialogs.expectStart(u"Beim Lesen war die Übertragung gestört."_s);
         }},
        {"own melodies without names are told", Ask(), CommandResult::Done,
         [](Desk& desk) {
             desk.readBack({"4,Held,1,1,12,001224083033"})
                 .test.dialogs.expectStart(u"Die Liste enthält eigene Melodien des Telefons, deren Namen "
                                           u"nicht bekannt sind."_s);
         }},
    };
    rows.each([&](const auto& answer, const auto& result, const auto& prepare) {
        Desk desk;
        desk.memory.TbDirty = answer.has_value();
        if (answer)
            desk.test.dialogs.expect(question(changed), *answer);
        prepare(desk);
        QCOMPARE(kalmo::ui::readClassicList(desk.job(), Store::Phonebook), result);
        QCOMPARE(desk.memory.TbDirty, result != CommandResult::Done);
    });
}

void tst_ClassicLists::writes()
{
    checkWritings({
        {"both halves are saved", u"done: list phone"_s, [](Desk& desk) { desk.knows().probe().write(); }},
        {"trusted", u"done: list phone"_s, writesAfter(120, false)},
        {"too old", u"done: list later"_s, writesAfter(121, true)},
        {"clock set back since", u"done: list later"_s, writesAfter(-60, true)},
        {"automatic backup off: what the phone holds is saved all the same", u"done: phone"_s,
         [](Desk& desk) {
             app::put(desk.test.settings, app::keys::AutoBackup, 0);
             desk.knows().probe().write();
         }},
        {"an empty list makes no file and erases", u"done: phone"_s,
         [](Desk& desk) {
             desk.list->clear();
             desk.knows().probe().erase().script.expect("AT\r");
             desk.readBack({});
         }},
    });
}

void tst_ClassicLists::asksBeforeTheErase()
{
    checkWritings({
        {"a list that was not read from the phone: the user sees the difference", u"done: list later"_s,
         [](Desk& desk) { desk.probe().read().ask(notFromPhone + difference, Answer::Yes).write(); }},
        {"the phone holds something else than what the list was made from", u"refused: list later"_s,
         holdsOthers(Certainty::Known)},
        {"the same, and the reading was doubtful", u"refused: list later"_s,
         holdsOthers(Certainty::Doubtful)},
        {"an own melody was read without its name, which is known now", u"refused: phone"_s,
         [](Desk& desk) {
             desk.shows({dated, held[1]});
             desk.knows({dated, held[1]}, datedReplies);
             desk.memory.phonebook.becomesDoubtfulByMelodies();
             desk.memory.sounds.add({u"Walzer"_s, u"MID"_s, 99, 33});
             desk.memory.areSoundsKnown = true;
             desk.probe().ask(otherEntries +
                                  u"\n\nBeim Schreiben:\nneu: 0\ngeändert: 1 (Held)\nentfernt: 0"_s,
                              Answer::No);
         }},
        {"the question was answered too late: the list has changed", u"refused: list later"_s,
         [](Desk& desk) {
             desk.probe().read().ask(notFromPhone + difference, Answer::Yes);
             desk.test.dialogs.whileShown([&desk] { desk.test.clock.WaitSeconds(121); });
             desk.readBack({"4,Held,1,1,0,"})
                 .test.dialogs.expect(Icon::Exclamation,
                                      u"Die Liste im Telefon hat sich inzwischen geändert. Bitte lesen Sie "
                                      u"sie noch einmal ein.\n\nIm Telefon wurde nichts geändert."_s);
         }},
        {"the line went during the question", u"refused: list phone"_s,
         [](Desk& desk) {
             desk.knows(Certainty::Doubtful).probe().ask(doubt + difference, Answer::Yes);
             desk.test.dialogs.whileShown([&desk] { desk.port.Close(); });
             desk.test.dialogs.expect(
                 Icon::Exclamation,
                 u"Die Verbindung zum Telefon ist unterbrochen.\n\nIm Telefon wurde nichts geändert."_s);
         }},
        {"doubtful, and the user says no", u"refused: list phone"_s,
         [](Desk& desk) { desk.knows(Certainty::Doubtful).probe().ask(doubt + difference, Answer::No); }},
        {"doubtful, and the user says yes", u"done: list phone"_s,
         [](Desk& desk) {
             desk.knows(Certainty::Doubtful).probe().ask(doubt + difference, Answer::Yes).write();
         }},
        {"unreadable, and the user says no", u"refused: list"_s,
         [](Desk& desk) {
             ClassicScript& script = desk.probe().ask(unread, Answer::No).script;
             script.expect("AT^WSSL=\"TB\"\r").refuse("AT^WSRE\r").expect("AT\r");
         }},
    });
}

/// Entries that the phone would hold otherwise than the list.
void tst_ClassicLists::warnsOfOtherEntries()
{
    checkWritings({
        {"what the phone can't hold", u"refused: phone"_s,
         [](Desk& desk) {
             desk.shows({{u"A\x1b"_s, u"1"_s, u"31.02  08:30"_s, u"Tango"_s},
                         {.name = u"Held"_s, .number = u"1"_s}});
             desk.knows().probe().ask(
                 u"Das Telefon kann nicht alles so aufnehmen, wie es in der Liste steht. Nimmt es einen "
                 "Eintrag nicht an, fehlen ihm auch alle folgenden.\n\n"
                 "Eintrag 1 (A\x1b): Ein Steuerzeichen im Namen kann nicht gesendet werden und entfällt.\n"
                 "Eintrag 1 (A\x1b): \"31.02  08:30\" ist kein Tag mit Uhrzeit.\n"
                 "Eintrag 1 (A\x1b): Das Telefon hat für die Erinnerung keine Melodie \"Tango\".\n"
                 "Eintrag 1 (A\x1b): Im Telefon steht dann \"A\" statt \"A\x1b\".\n"
                 "Eintrag 1 (A\x1b): Im Telefon steht dann \"Melodie 1\" statt \"Tango\"."_s,
                 Answer::No);
         }},
        {"a melody without a name would be replaced", u"refused: phone"_s,
         [](Desk& desk) {
             ClassicEntry edited = dated; // another day does not change the melody
             edited.date = u"25.12  08:30"_s;
             desk.shows({edited});
             desk.knows({dated, held[1]}, datedReplies);
             desk.memory.phonebook.becomesDoubtfulByMelodies(); // asks nothing else
             desk.probe().ask(
                 u"Von 1 Einträgen ist die eigene Melodie nicht mit Namen bekannt. Sie würde beim Schreiben "
                 u"durch \"Melodie 1\" ersetzt. Besser ist es, zuerst die Klingeltöne und danach die Liste "
                 u"neu einzulesen."_s,
                 Answer::No);
         }},
        {"an entry without a name gets one", u"refused: "_s + phoneCopy(u"12-00-00"_s) + u": Ohne Name"_s,
         [](Desk& desk) {
             const ClassicEntry nameless{.name = u"Ohne Name"_s, .number = u"1"_s};
             desk.shows({nameless, held[1]});
             desk.knows({nameless}, {"^WSRE: ,,1,1,0,"});
             desk.probe().ask(
                 u"Einträge ohne Namen im Telefon: 1. Sie heißen nach dem Schreiben \"Ohne Name\"."_s,
                 Answer::No);
         }},
    });
}

void tst_ClassicLists::erasesNothingUnsaved()
{
    checkWritings({
        {"no backup", u"refused:"_s,
         [](Desk& desk) {
             app::put(desk.test.settings, app::keys::AutoBackup, 0);
             desk.blockBackups();
             desk.knows().probe().test.dialogs.expect(
                 Icon::Exclamation,
                 u"Der bisherige Inhalt des Telefons konnte nicht in der Datei %1 gesichert werden: Not a "
                 u"directory\n\nIm Telefon wurde nichts geändert."_s.arg(
                     desk.backup(phoneCopy(u"12-00-00"_s))));
         }},
        {"no record", u"refused: list phone"_s,
         [](Desk& desk) {
             desk.test.makeFile(u"storage/Verlauf"_s, {});
             desk.knows().probe().test.dialogs.expectStart(
                 u"Der bisherige Inhalt des Telefons konnte nicht im Ordner \"Verlauf\" gesichert werden: "_s);
         }},
        {"no answer to the probe", u"refused: list"_s,
         [](Desk& desk) {
             desk.tellNoAnswer(u"AT+CGMM"_s)
                 .tell(u"Das Telefon antwortet nicht."_s)
                 .script.refuse("AT+CGMM\r");
         }},
    });
}

/// After the erase. A count is no fact where an answer was lost.
void tst_ClassicLists::saysWhatThePhoneHolds()
{
    const QByteArrayList bothWritten{firstWritten, secondWritten, "AT\r"};
    const QString notReadBack =
        u"Das Telefon hat alle 2 Einträge bestätigt, konnte danach aber nicht zur Kontrolle gelesen werden. "_s;
    checkWritings({
        {"the erase is refused", u"failed: list phone"_s,
         fails(u"Das Telefon hat das Löschen der bisherigen Liste abgelehnt. Es enthält, was es vorher "
               u"enthielt."_s,
               [](Desk& desk) { desk.script.refuse("AT^WSEL=\"TB\"\r"); })},
        {"no answer to the erase", u"failed: list phone"_s,
         fails(u"Was das Telefon jetzt enthält, ist nicht bekannt."_s,
               [](Desk& desk) { desk.script.ignore("AT^WSEL=\"TB\"\r"); })},
        {"fails half-way", u"failed: list phone"_s,
         fails(u"Im Telefon stehen jetzt 1 von 2 Einträgen."_s,
               [](Desk& desk) { desk.erase().script.expect(firstWritten).refuse(secondWritten); })},
        {"an answer is lost", u"failed: list phone"_s,
         fails(u"Das Telefon hat 1 von 2 Einträgen bestätigt. Ob auch der nächste angekommen ist, ist nicht "
               u"bekannt."_s,
               [](Desk& desk) { desk.erase().script.expect(firstWritten).ignore(secondWritten); })},
        {"an entry was sent again after a lost answer", u"failed: list phone"_s,
         fails(u"Das Telefon hat 1 von 2 Einträgen bestätigt. Die Übertragung war gestört: Ein Eintrag kann "
               u"doppelt im Telefon stehen."_s,
               [](Desk& desk) { desk.erase().script.loseAnswer(firstWritten).refuse(secondWritten); })},
        {"something else, and the end was not confirmed", u"failed: list phone"_s,
         [](Desk& desk) {
             desk.knows().probe().erase().script.expectAll({firstWritten, secondWritten}).refuse("AT\r");
             desk.script.expect("AT\r"); // once more ahead of the next command
             expectOtherContent(desk, {"3,New,1,3,0,"},
                                u"Fehlende Einträge: 1, geänderte: 0, überzählige: 0."_s);
         }},
        {"confirmed, but not read back", u"done: list phone"_s,
         [&](Desk& desk) {
             desk.knows().probe().erase().script.expectAll(bothWritten).refuse("AT^WSSL=\"TB\"\r");
             desk.tell(notReadBack + u"Bitte lesen Sie die Liste noch einmal ein."_s);
         }},
        {"an entry sent again is there twice, and the list was clean before", u"failed: list phone"_s,
         [](Desk& desk) {
             desk.memory.TbDirty = false;
             desk.knows().probe().erase().script.loseAnswer(firstWritten).expectAll({secondWritten, "AT\r"});
             expectOtherContent(desk, {"3,New,1,3,0,", "3,New,1,3,0,", "4,Next,1,4,0,"},
                                u"Fehlende Einträge: 0, geänderte: 0, überzählige: 1."_s);
         }},
        {"an entry sent again may be there twice: reading back skipped one both times", u"done: list phone"_s,
         [&](Desk& desk) {
             desk.knows().probe().erase().script.loseAnswer(firstWritten).expectAll({secondWritten, "AT\r"});
             for (int reading = 0; reading < 2; ++reading)
                 desk.script.expect("AT^WSSL=\"TB\"\r")
                     .loseAnswer("AT^WSRE\r", "^WSRE: 3,New,1,3,0,")
                     .expect("AT^WSRE\r", "^WSRE: 4,Next,1,4,0,")
                     .expectAll({"AT^WSRE\r", "AT\r"});
             desk.tell(notReadBack + u"Die Übertragung war gestört: Ein Eintrag kann doppelt im Telefon "
                                     u"stehen. Bitte lesen Sie die Liste noch einmal ein."_s);
         }},
    });
}

KALMO_TEST(tst_ClassicLists)
#include "tst_ClassicLists.moc"
