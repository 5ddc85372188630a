// "Lesen" and "Schreiben" of the classic lists. Nothing that the phone holds may be lost: it is on disk
// before it is erased, or the user has said that it need not be.

#include "support/TestProgram.h"
#include "ui/window/ClassicWriting.h"

#include "app/SettingsKeys.h"
#include "operations/Records.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/RawReplies.h"
#include "support/ClassicPhone.h"

#include <QDir>

using namespace kalmo::phonedata;
using toolkit::Message;

namespace {

const std::vector<ClassicEntry> held = {{.name = u"Held"_s, .number = u"1"_s},
                                        {.name = u"Too"_s, .number = u"2"_s}};
const std::vector<ClassicEntry> wanted = {{.name = u"New"_s, .number = u"3"_s},
                                          {.name = u"Next"_s, .number = u"4"_s}};
const QByteArray firstWritten = "AT^WSWE=3,New,1,3,0,\r\n";
const QByteArray secondWritten = "AT^WSWE=4,Next,1,4,0,\r\n";

const QString listBackup = u"Backup von 2026-11-21  12-00-00.tel"_s;
const QString accessError = u"Fehler beim Zugriff auf das Telefon"_s;
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

/// A handset of family 2 whose list on screen has been changed.
struct Desk : ClassicPhone
{
    Desk() : ClassicPhone(2)
    {
        QDir().mkpath(test.storage + u"/Backup"_s);
        fill(wanted);
        memory.TbDirty = true;
    }
    void knows(Certainty how, qint64 secondsAgo = 0)
    {
        knows(held, {"^WSRE: 4,Held,1,1,0,", "^WSRE: 3,Too,1,2,0,"}, how, secondsAgo);
    }
    void knows(const std::vector<ClassicEntry>& entries, const QByteArrayList& replies,
               Certainty how = Certainty::Known, qint64 secondsAgo = 0)
    {
        memory.phonebook.becomes(entries, how, replies);
        memory.phonebook.since = line.context().clock.Now().addSecs(-secondsAgo);
        origin = memory.phonebook;
    }
    void shows(const std::vector<ClassicEntry>& entries)
    {
        app::put(test.settings, app::keys::AutoBackup, 0);
        list->clear();
        fill(entries);
    }

    Desk& probe()
    {
        script.expect("AT+CGMM\r", "WOODY");
        return *this;
    }
    Desk& read()
    {
        script.expect("AT^WSSL=\"TB\"\r").expect("AT^WSRE\r", "^WSRE: 4,Held,1,1,0,");
        script.expect("AT^WSRE\r", "^WSRE: 3,Too,1,2,0,").expect("AT^WSRE\r").expect("AT\r");
        return *this;
    }
    Desk& erase()
    {
        script.expectAll({"AT^WSEL=\"TB\"\r", "AT\r", "AT^WSSL=\"TB\"\r"});
        return *this;
    }
    Desk& write()
    {
        erase();
        script.expectAll({firstWritten, secondWritten, "AT\r"});
        return readBack({"3,New,1,3,0,", "4,Next,1,4,0,"});
    }
    Desk& readBack(const QByteArrayList& entries)
    {
        script.expect("AT^WSSL=\"TB\"\r");
        for (const QByteArray& entry : entries)
            script.expect("AT^WSRE\r", "^WSRE: " + entry);
        script.expect("AT^WSRE\r").expect("AT\r");
        return *this;
    }
    Desk& ask(const QString& text, Answer answer)
    {
        test.dialogs.expect({.text = text + u"\n\nTrotzdem schreiben?"_s,
                             .buttons = Buttons::YesNo,
                             .icon = Icon::Exclamation,
                             .defaultButton = Answer::No},
                            answer);
        return *this;
    }
    Desk& tell(const QString& text)
    {
        test.dialogs.expect({.text = text, .icon = Icon::Information});
        return *this;
    }
    Desk& tellNoAnswer(const QString& command)
    {
        test.dialogs.expect(
            {.text = u"Es ist ein Übertragungsfehler aufgetreten. ... Fehlercode: "_s + command,
             .icon = Icon::Exclamation});
        return *this;
    }
    operations::ListJob listJob()
    {
        return {line, memory, Store::Phonebook, &window, progress.all(), list.get()};
    }
    /// State and raw replies of the newest record.
    QString record() const
    {
        const operations::Records records(test.context, {u"Emulated"_s, u"1"_s});
        const auto all = records.all();
        const auto newest = all.empty() ? std::nullopt : records.read(all.front().id);
        if (!newest || newest->before.empty())
            return {};
        const auto replies = repliesFrom(newest->before.front().bytes);
        return operations::wordOf(newest->state) + u": "_s +
               QString::fromLatin1(replies.value_or(QByteArrayList()).join('|'));
    }
    StoreContent origin; ///< content that the list was made from

    QString backup(const QString& name) const { return test.storage + u"/Backup/"_s + name; }
    void blockBackups()
    {
        QDir(test.storage).rmdir(u"Backup"_s);
        QFile file(test.storage + u"/Backup"_s); // a file in its place: no folder that could take one
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    /// "name: names of the entries in it" for each backup.
    QStringList backups() const
    {
        QStringList lines;
        for (const QString& name : QDir(test.storage + u"/Backup"_s).entryList(QDir::Files)) {
            QStringList names;
            for (const ClassicEntry& entry : telEntries(TestContext::contentOf(backup(name)), 2))
                names.append(entry.name);
            lines.append(name + u": "_s + names.join(u' '));
        }
        return lines;
    }
};

using Prepare = std::function<void(Desk&)>;

QString phoneCopy(const QString& time)
{
    return u"Inhalt des Telefons vom 2026-11-21  "_s + time + u".tel"_s;
}

QString failureText(const QString& state, const Desk& desk, const QString& copy)
{
    return accessError + u"\n\n"_s + state +
           u"\n\nDie Liste, die geschrieben werden sollte, ist gesichert in:\n"_s + desk.backup(listBackup) +
           u"\n\nDer bisherige Inhalt des Telefons ist gesichert in:\n"_s + desk.backup(copy) +
           u"\n\nDie Liste im Fenster ist unverändert. Stellen Sie die Verbindung wieder her und führen Sie "
           u"\"Schreiben\" noch einmal aus, oder öffnen Sie vorher eine dieser Sicherungen."_s;
}

} // namespace

class tst_ClassicWriting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void write();
    void read();
};

void tst_ClassicWriting::write()
{
    const QString ofList = listBackup + u": New Next"_s;
    const QString ofPhone = phoneCopy(u"12-00-00"_s) + u": Held Too"_s;
    Rows<CommandResult, QStringList, Prepare> rows;
    rows.add("both halves are saved", CommandResult::Done, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().write();
    });
    rows.add("a list that was not read from the phone: the user sees the difference", CommandResult::Done,
             {ofList, phoneCopy(u"12-00-04"_s) + u": Held Too"_s},
             [](Desk& desk) { desk.probe().read().ask(notFromPhone + difference, Answer::Yes).write(); });
    rows.add("the phone holds something else than what the list was made from", CommandResult::Refused,
             {ofList, phoneCopy(u"12-00-04"_s) + u": Held Too"_s}, [](Desk& desk) {
                 desk.knows({held.front()}, {"^WSRE: 4,Held,1,1,0,"}, Certainty::Known, 121);
                 desk.probe().read().ask(otherEntries + difference, Answer::No);
             });
    rows.add("the list was made from a doubtful reading, and a later one differs", CommandResult::Refused,
             {ofList, phoneCopy(u"12-00-04"_s) + u": Held Too"_s}, [](Desk& desk) {
                 desk.knows({held.front()}, {"^WSRE: 4,Held,1,1,0,"}, Certainty::Doubtful, 121);
                 desk.probe().read().ask(otherEntries + difference, Answer::No);
             });
    rows.add("an own melody was read without its name, which is known now", CommandResult::Refused, {ofPhone},
             [](Desk& desk) {
                 const ClassicEntry dated{u"Held"_s, u"1"_s, u"24.12  08:30"_s, u"Melodie 1"_s};
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
             {ofList, phoneCopy(u"12-00-04"_s) + u": Held Too"_s}, [](Desk& desk) {
                 desk.probe().read().ask(notFromPhone + difference, Answer::Yes);
                 desk.test.dialogs.whileShown([&desk] { desk.test.clock.WaitSeconds(121); });
                 desk.readBack({"4,Held,1,1,0,"})
                     .test.dialogs.expect({.text =
                                               u"Die Liste im Telefon hat sich inzwischen geändert. Bitte "
                                               u"lesen Sie sie noch einmal ein.\n\nIm Telefon wurde nichts "
                                               u"geändert."_s,
                                           .icon = Icon::Exclamation});
             });
    rows.add("the line went during the question", CommandResult::Failed, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Doubtful);
        desk.probe().ask(doubt + difference, Answer::Yes);
        desk.test.dialogs.whileShown([&desk] { desk.port.Close(); });
        desk.test.dialogs.expect(
            {.text = u"Die Verbindung zum Telefon ist unterbrochen.\n\nIm Telefon wurde nichts geändert."_s,
             .icon = Icon::Exclamation});
    });
    using Age = std::tuple<const char*, qint64, bool>;
    for (const auto& [what, age, isReadAgain] :
         {Age("trusted", 120, false), Age("too old", 121, true), Age("clock set back since", -60, true)})
        rows.add(what, CommandResult::Done,
                 {ofList, phoneCopy(isReadAgain ? u"12-00-04"_s : u"12-00-00"_s) + u": Held Too"_s},
                 [age, isReadAgain](Desk& desk) {
                     desk.knows(Certainty::Known, age);
                     desk.probe();
                     (isReadAgain ? desk.read() : desk).write();
                 });
    rows.add("automatic backup off: what the phone holds is saved all the same", CommandResult::Done,
             {ofPhone}, [](Desk& desk) {
                 app::put(desk.test.settings, app::keys::AutoBackup, 0);
                 desk.knows(Certainty::Known);
                 desk.probe().write();
             });
    rows.add("an empty list makes no file and erases", CommandResult::Done, {ofPhone}, [](Desk& desk) {
        desk.list->clear();
        desk.knows(Certainty::Known);
        desk.probe().erase().script.expect("AT\r");
        desk.readBack({});
    });
    rows.add("doubtful, and the user says no", CommandResult::Refused, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Doubtful);
        desk.probe().ask(doubt + difference, Answer::No);
    });
    rows.add("doubtful, and the user says yes", CommandResult::Done, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Doubtful);
        desk.probe().ask(doubt + difference, Answer::Yes).write();
    });
    rows.add("unreadable, and the user says no", CommandResult::Refused, {ofList}, [](Desk& desk) {
        desk.probe()
            .ask(unread, Answer::No)
            .script.expect("AT^WSSL=\"TB\"\r")
            .refuse("AT^WSRE\r")
            .expect("AT\r");
    });
    rows.add("nothing is erased that can't be saved", CommandResult::Failed, {}, [](Desk& desk) {
        app::put(desk.test.settings, app::keys::AutoBackup, 0);
        desk.blockBackups();
        desk.knows(Certainty::Known);
        desk.probe().test.dialogs.expect(
            {.text =
                 u"Der bisherige Inhalt des Telefons konnte nicht in der Datei %1 gesichert werden: Not a "
                 u"directory\n\nIm Telefon wurde nichts geändert."_s.arg(
                     desk.backup(phoneCopy(u"12-00-00"_s))),
             .icon = Icon::Exclamation});
    });
    rows.add(
        "nothing is erased that can't be recorded", CommandResult::Failed, {ofList, ofPhone}, [](Desk& desk) {
            desk.knows(Certainty::Known);
            desk.test.makeFile(u"storage/Verlauf"_s, {});
            desk.probe().test.dialogs.expectStart(
                u"Der bisherige Inhalt des Telefons konnte nicht im Ordner \"Verlauf\" gesichert werden: "_s);
        });
    rows.add("no answer to the probe", CommandResult::Failed, {ofList}, [](Desk& desk) {
        desk.tellNoAnswer(u"AT+CGMM"_s).tell(u"Das Telefon antwortet nicht."_s).script.refuse("AT+CGMM\r");
    });
    rows.add("fails half-way", CommandResult::Failed, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().erase().script.expect(firstWritten).refuse(secondWritten).expect("AT\r");
        desk.tell(
            failureText(u"Im Telefon stehen jetzt 1 von 2 Einträgen."_s, desk, phoneCopy(u"12-00-00"_s)));
    });
    rows.add(
        "an answer is lost: a count is no fact", CommandResult::Failed, {ofList, ofPhone}, [](Desk& desk) {
            desk.knows(Certainty::Known);
            desk.probe().erase().script.expect(firstWritten).ignore(secondWritten).expect("AT\r");
            desk.tell(
                failureText(u"Das Telefon hat 1 von 2 Einträgen bestätigt. Ob auch der nächste angekommen "
                            u"ist, ist nicht bekannt."_s,
                            desk, phoneCopy(u"12-00-00"_s)));
        });
    rows.add(
        "what the phone can't hold is told before the erase", CommandResult::Refused, {ofPhone},
        [](Desk& desk) {
            desk.shows(
                {{u"A\x1b"_s, u"1"_s, u"31.02  08:30"_s, u"Tango"_s}, {.name = u"Held"_s, .number = u"1"_s}});
            desk.knows(Certainty::Known);
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
    rows.add("a melody without a name would be replaced", CommandResult::Refused, {ofPhone}, [](Desk& desk) {
        const ClassicEntry dated{u"Held"_s, u"1"_s, u"24.12  08:30"_s, u"Melodie 1"_s};
        ClassicEntry edited = dated; // another day does not change the melody
        edited.date = u"25.12  08:30"_s;
        desk.shows({edited});
        desk.knows({dated, held[1]}, {"^WSRE: 4,Held,1,1,12,001224083033", "^WSRE: 3,Too,1,2,0,"});
        desk.memory.phonebook.becomesDoubtfulByMelodies(); // asks nothing else
        desk.probe().ask(u"Von 1 Einträgen ist die eigene Melodie nicht mit Namen bekannt. Sie würde beim "
                         u"Schreiben durch \"Melodie 1\" ersetzt. Besser ist es, zuerst die Klingeltöne und "
                         u"danach die Liste neu einzulesen."_s,
                         Answer::No);
    });
    rows.add("an entry without a name gets one", CommandResult::Refused,
             {phoneCopy(u"12-00-00"_s) + u": Ohne Name"_s}, [](Desk& desk) {
                 const ClassicEntry nameless{.name = u"Ohne Name"_s, .number = u"1"_s};
                 desk.shows({nameless, held[1]});
                 desk.knows({nameless}, {"^WSRE: ,,1,1,0,"});
                 desk.probe().ask(
                     u"Einträge ohne Namen im Telefon: 1. Sie heißen nach dem Schreiben \"Ohne Name\"."_s,
                     Answer::No);
             });
    rows.add("the phone holds something else afterwards, and did not confirm the end", CommandResult::Failed,
             {ofList, ofPhone}, [](Desk& desk) {
                 desk.knows(Certainty::Known);
                 desk.probe().erase().script.expectAll({firstWritten, secondWritten}).refuse("AT\r");
                 desk.readBack({"3,New,1,3,0,"})
                     .test.dialogs.expectStart(u"Das Telefon enthält nach dem Schreiben nicht, was "
                                               u"geschrieben wurde. Fehlende Einträge: 1, "
                                               u"geänderte: 0, überzählige: 0."_s);
             });
    rows.add("confirmed, but not read back", CommandResult::Done, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().erase().script.expectAll({firstWritten, secondWritten, "AT\r"});
        desk.script.refuse("AT^WSSL=\"TB\"\r");
        desk.tell(
            u"Das Telefon hat alle 2 Einträge bestätigt, konnte danach aber nicht zur Kontrolle gelesen "
            u"werden. Bitte lesen Sie die Liste noch einmal ein."_s);
    });
    rows.add("the erase is refused", CommandResult::Failed, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().script.refuse("AT^WSEL=\"TB\"\r").expect("AT\r");
        desk.tell(
            failureText(u"Das Telefon hat das Löschen der bisherigen Liste abgelehnt. Es enthält, was es "
                        u"vorher enthielt."_s,
                        desk, phoneCopy(u"12-00-00"_s)));
    });
    rows.add("no answer to the erase", CommandResult::Failed, {ofList, ofPhone}, [](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().script.ignore("AT^WSEL=\"TB\"\r").expect("AT\r");
        desk.tell(failureText(u"Was das Telefon jetzt enthält, ist nicht bekannt."_s, desk,
                              phoneCopy(u"12-00-00"_s)));
    });
    rows.add("an entry was sent again after a lost answer", CommandResult::Failed, {ofList, ofPhone},
             [](Desk& desk) {
                 desk.knows(Certainty::Known);
                 desk.probe().erase().script.loseAnswer(firstWritten).refuse(secondWritten).expect("AT\r");
                 desk.tell(failureText(u"Das Telefon hat 1 von 2 Einträgen bestätigt. Die Übertragung war "
                                       u"gestört: Ein Eintrag kann doppelt im Telefon stehen."_s,
                                       desk, phoneCopy(u"12-00-00"_s)));
             });
    rows.add("an entry sent again is there twice, and the list was clean before", CommandResult::Failed,
             {ofList, ofPhone}, [](Desk& desk) {
                 desk.memory.TbDirty = false;
                 desk.knows(Certainty::Known);
                 desk.probe().erase().script.loseAnswer(firstWritten).expectAll({secondWritten, "AT\r"});
                 desk.readBack({"3,New,1,3,0,", "3,New,1,3,0,", "4,Next,1,4,0,"})
                     .test.dialogs.expectStart(u"Das Telefon enthält nach dem Schreiben nicht, was "
                                               u"geschrieben wurde. Fehlende Einträge: 0, "
                                               u"geänderte: 0, überzählige: 1."_s);
             });
    rows.add("an entry sent again may be there twice: reading back skipped one both times",
             CommandResult::Done, {ofList, ofPhone}, [](Desk& desk) {
                 desk.knows(Certainty::Known);
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

    rows.each([&](const auto& result, const auto& backups, const auto& prepare) {
        Desk desk;
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

void tst_ClassicWriting::read()
{
    const QString changed =
        u"Es wurden Änderungen %1 vorgenommen, diese wurden jedoch noch nicht durch die Funktion "
        u"\"Schreiben\" übernommen.\n\nTrotzdem fortfahren?"_s;
    const auto nothing = Prepare([](Desk&) {});
    const auto whole = Prepare([](Desk& desk) { desk.read(); });
    Rows<Store, QString, Answer, CommandResult, bool, Prepare> rows;
    rows.add("clean list", Store::Phonebook, {}, Answer::Yes, CommandResult::Done, false, whole);
    rows.add("changes kept", Store::Phonebook, changed.arg(u"am Telefonbuch"_s), Answer::No,
             CommandResult::Refused, true, nothing);
    rows.add("failure leaves the flag", Store::Phonebook, changed.arg(u"am Telefonbuch"_s), Answer::Yes,
             CommandResult::Failed, true, [](Desk& desk) {
                 desk.script.refuse("AT^WSSL=\"TB\"\r");
                 desk.tell(accessError);
             });
    rows.add("doubtful reading is told", Store::Phonebook, {}, Answer::Yes, CommandResult::Done, false,
             [](Desk& desk) {
                 desk.script.expect("AT^WSSL=\"TB\"\r").stumble("AT^WSRE\r");
                 desk.script.expect("AT\r");
                 desk.test.dialogs.expectStart(u"Beim Lesen war die Übertragung gestört."_s);
             });
    rows.add("own melodies without names are told", Store::Phonebook, {}, Answer::Yes, CommandResult::Done,
             false, [](Desk& desk) {
                 desk.readBack({"4,Held,1,1,12,001224083033"});
                 desk.test.dialogs.expectStart(u"Die Liste enthält eigene Melodien des Telefons, deren Namen "
                                               u"nicht bekannt sind."_s);
             });

    rows.each([&](const auto& store, const auto& question, const auto& answer, const auto& result,
                  const auto& staysDirty, const auto& prepare) {
        Desk desk;
        setDirty(desk.memory, Store::Phonebook, false);
        setDirty(desk.memory, store, !question.isEmpty());
        if (!question.isEmpty())
            desk.test.dialogs.expect({.text = question,
                                      .buttons = Buttons::YesNo,
                                      .icon = Icon::Question,
                                      .defaultButton = Answer::No},
                                     answer);
        prepare(desk);
        QCOMPARE(kalmo::ui::readClassicList(desk.job(), store), result);
        QCOMPARE(isDirty(desk.memory, store), staysDirty);
    });
}

KALMO_TEST(tst_ClassicWriting)
#include "tst_ClassicWriting.moc"
