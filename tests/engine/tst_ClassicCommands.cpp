// "Lesen" and "Schreiben" of the classic lists. Nothing that the phone holds may be lost: it is on disk
// before it is erased, or the user has said that it need not be.

#include "phonedata/ClassicCommands.h"

#include "app/SettingsKeys.h"
#include "phonedata/BackupFiles.h"
#include "support/ClassicPhone.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
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
    void knows(Certainty how) { memory.phonebook.becomes(held, how); }

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
        script.expect("AT^WSEL=\"TB\"\r").expect("AT\r").expect("AT^WSSL=\"TB\"\r");
        return *this;
    }
    Desk& write()
    {
        erase();
        script.expect(firstWritten).expect(secondWritten).expect("AT\r");
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

class tst_ClassicCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void write_data();
    void write();
    void writingTheBackupRestores();
    void read_data();
    void read();
};

void tst_ClassicCommands::write_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<CommandResult>("result");
    QTest::addColumn<QStringList>("backups");
    const QString ofList = listBackup + u": New Next"_s;
    const QString ofPhone = phoneCopy(u"12-00-00"_s) + u": Held Too"_s;

    QTest::newRow("both halves are saved") << Prepare([](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().write();
    }) << CommandResult::Done << QStringList{ofList, ofPhone};
    QTest::newRow("unknown content is read first")
        << Prepare([](Desk& desk) { desk.probe().read().write(); }) << CommandResult::Done
        << QStringList{ofList, phoneCopy(u"12-00-04"_s) + u": Held Too"_s};
    QTest::newRow("equal content is saved once") << Prepare([](Desk& desk) {
        desk.memory.phonebook.becomes(wanted, Certainty::Known);
        desk.probe().write();
    }) << CommandResult::Done << QStringList{ofList};
    QTest::newRow("automatic backup off: what the phone holds is saved all the same")
        << Prepare([](Desk& desk) {
               app::put(desk.test.settings, app::keys::AutoBackup, 0);
               desk.knows(Certainty::Known);
               desk.probe().write();
           })
        << CommandResult::Done << QStringList{ofPhone};
    QTest::newRow("an empty list makes no file and erases") << Prepare([](Desk& desk) {
        desk.list->clear();
        desk.knows(Certainty::Known);
        desk.probe().erase().script.expect("AT\r");
    }) << CommandResult::Done << QStringList{ofPhone};
    QTest::newRow("an empty phone leaves nothing to save") << Prepare([](Desk& desk) {
        desk.memory.phonebook.becomes({}, Certainty::Known);
        desk.probe().write();
    }) << CommandResult::Done << QStringList{ofList};

    QTest::newRow("doubtful, and the user says no") << Prepare([](Desk& desk) {
        desk.knows(Certainty::Doubtful);
        desk.probe().ask(doubt, Answer::No);
    }) << CommandResult::Refused << QStringList{ofList, ofPhone};
    QTest::newRow("doubtful, and the user says yes") << Prepare([](Desk& desk) {
        desk.knows(Certainty::Doubtful);
        desk.probe().ask(doubt, Answer::Yes).write();
    }) << CommandResult::Done << QStringList{ofList, ofPhone};
    QTest::newRow("unreadable, and the user says no") << Prepare([](Desk& desk) {
        desk.probe()
            .ask(unread, Answer::No)
            .script.expect("AT^WSSL=\"TB\"\r")
            .refuse("AT^WSRE\r")
            .expect("AT\r");
    }) << CommandResult::Refused << QStringList{ofList};
    QTest::newRow("what the phone holds can't be saved, and the user says no") << Prepare([](Desk& desk) {
        app::put(desk.test.settings, app::keys::AutoBackup, 0);
        desk.blockBackups();
        desk.knows(Certainty::Known);
        desk.probe().ask(u"Der bisherige Inhalt des Telefons konnte nicht in der Datei %1 gesichert werden: "
                         u"Not a directory"_s.arg(desk.backup(phoneCopy(u"12-00-00"_s))),
                         Answer::No);
    }) << CommandResult::Refused << QStringList{};
    QTest::newRow("the list can't be saved") << Prepare([](Desk& desk) {
        desk.blockBackups();
        desk.test.dialogs.expect(
            {.text = u"Die Datei %1 konnte nicht geschrieben werden: Not a directory"_s.arg(
                 desk.backup(listBackup)),
             .icon = Icon::Exclamation});
    }) << CommandResult::Failed << QStringList{};

    QTest::newRow("no answer to the probe") << Prepare([](Desk& desk) {
        desk.tellNoAnswer(u"AT+CGMM"_s).tell(u"Das Telefon antwortet nicht."_s).script.refuse("AT+CGMM\r");
    }) << CommandResult::Failed << QStringList{ofList};
    QTest::newRow("fails half-way") << Prepare([](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().erase().script.expect(firstWritten).refuse(secondWritten).expect("AT\r");
        desk.tell(
            failureText(u"Im Telefon stehen jetzt 1 von 2 Einträgen."_s, desk, phoneCopy(u"12-00-00"_s)));
    }) << CommandResult::Failed << QStringList{ofList, ofPhone};
    QTest::newRow("fails in the erase") << Prepare([](Desk& desk) {
        desk.knows(Certainty::Known);
        desk.probe().script.refuse("AT^WSEL=\"TB\"\r").expect("AT\r");
        desk.tell(failureText(u"Was das Telefon jetzt enthält, ist nicht bekannt."_s, desk,
                              phoneCopy(u"12-00-00"_s)));
    }) << CommandResult::Failed << QStringList{ofList, ofPhone};
}

void tst_ClassicCommands::write()
{
    QFETCH(Prepare, prepare);
    QFETCH(CommandResult, result);
    Desk desk;
    prepare(desk);
    const auto listed = classicEntries(*desk.list);
    QCOMPARE(writeCommand(desk.job(), Store::Phonebook), result);
    QTEST(desk.backups(), "backups");
    QCOMPARE(desk.memory.TbDirty, result != CommandResult::Done);
    QCOMPARE(classicEntries(*desk.list), listed); // the list on screen stays as it is, whatever happens
}

void tst_ClassicCommands::writingTheBackupRestores()
{
    Desk desk;
    desk.knows(Certainty::Known);
    desk.probe().erase().script.expect(firstWritten).refuse(secondWritten).expect("AT\r");
    desk.tell(failureText(u"Im Telefon stehen jetzt 1 von 2 Einträgen."_s, desk, phoneCopy(u"12-00-00"_s)));
    QCOMPARE(writeCommand(desk.job(), Store::Phonebook), CommandResult::Failed);

    QVERIFY(LoadTel(desk.test.context, *desk.list, desk.backup(phoneCopy(u"12-00-00"_s))));
    desk.probe()
        .erase()
        .script.expect("AT^WSWE=4,Held,1,1,0,\r\n")
        .expect("AT^WSWE=3,Too,1,2,0,\r\n")
        .expect("AT\r");
    QCOMPARE(writeCommand(desk.job(), Store::Phonebook), CommandResult::Done);
    QCOMPARE(desk.memory.phonebook.entries, held);
}

void tst_ClassicCommands::read_data()
{
    QTest::addColumn<Store>("store");
    QTest::addColumn<QString>("question"); // empty if the list is not dirty
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<CommandResult>("result");
    QTest::addColumn<bool>("staysDirty");
    const QString question =
        u"Es wurden Änderungen %1 vorgenommen, diese wurden jedoch noch nicht durch die Funktion "
        u"\"Schreiben\" übernommen.\n\nTrotzdem fortfahren?"_s;
    const auto nothing = Prepare([](Desk&) {});
    const auto whole = Prepare([](Desk& desk) { desk.read(); });

    QTest::newRow("clean list") << Store::Phonebook << QString() << Answer::Yes << whole
                                << CommandResult::Done << false;
    QTest::newRow("changes kept") << Store::Phonebook << question.arg(u"am Telefonbuch"_s) << Answer::No
                                  << nothing << CommandResult::Refused << true;
    QTest::newRow("changes given up") << Store::Phonebook << question.arg(u"am Telefonbuch"_s) << Answer::Yes
                                      << whole << CommandResult::Done << false;
    QTest::newRow("changed providers kept") << Store::Providers << question.arg(u"an der Providerliste"_s)
                                            << Answer::No << nothing << CommandResult::Refused << true;
    QTest::newRow("failure leaves the flag")
        << Store::Phonebook << question.arg(u"am Telefonbuch"_s) << Answer::Yes << Prepare([](Desk& desk) {
               desk.script.refuse("AT^WSSL=\"TB\"\r");
               desk.tell(accessError);
           })
        << CommandResult::Failed << true;
    QTest::newRow("doubtful reading is told")
        << Store::Phonebook << QString() << Answer::Yes << Prepare([](Desk& desk) {
               desk.script.expect("AT^WSSL=\"TB\"\r").stumble("AT^WSRE\r");
               desk.script.expect("AT\r");
               desk.tell(
                   u"Beim Lesen war die Übertragung gestört. Es ist möglich, dass dabei ein Eintrag übersprungen oder verfälscht wurde. Bitte lesen Sie die Liste noch einmal ein, bevor Sie sie ändern oder schreiben."_s);
           })
        << CommandResult::Done << false;
}

void tst_ClassicCommands::read()
{
    QFETCH(Store, store);
    QFETCH(QString, question);
    QFETCH(Answer, answer);
    QFETCH(Prepare, prepare);
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
    QTEST(readCommand(desk.job(), store), "result");
    QTEST(isDirty(desk.memory, store), "staysDirty");
}

QTEST_GUILESS_MAIN(tst_ClassicCommands)
#include "tst_ClassicCommands.moc"
