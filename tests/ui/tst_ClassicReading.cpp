// "Lesen" of the classic lists: what is asked ahead, and what is said of a reading that is not sure.

#include "support/TestProgram.h"
#include "ui/ClassicDesk.h"

class tst_ClassicReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void read();
};

void tst_ClassicReading::read()
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

KALMO_TEST(tst_ClassicReading)
#include "tst_ClassicReading.moc"
