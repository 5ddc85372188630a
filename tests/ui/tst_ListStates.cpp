// The sentences of the lists and of the status bar before, during and after a reading.

#include "support/ContactBoxes.h"
#include "support/TestProgram.h"
#include "ui/OpenWindow.h"

namespace {

struct Section
{
    QString model;
    QString node;
    const char* list;
};

const Section phonebook{u"WOODSTOCK"_s, u"TB"_s, "lvwTB"};
const Section providers{u"WOODSTOCK"_s, u"NE"_s, "lvwNE"};
const Section contacts{u"To S600"_s, u"TB"_s, "lvwVCF"};

enum class User { Waits, Cancels, Accepts, Declines };

struct Reading
{
    Section section;
    handset::Options options = {};
    QStringList boxes = {}; // their beginnings
    User user = User::Waits;
};

/// Returns what the list and, at the end, the status bar say.
QStringList sentencesOf(const Reading& reading)
{
    OpenWindow open(reading.section.model, reading.options);
    for (const QString& text : reading.boxes) {
        const bool isQuestion = text.startsWith(u"Warnung!"_s);
        open.test.dialogs.expectStart(text, isQuestion ? Buttons::YesNo : Buttons::Ok,
                                      !isQuestion                     ? Answer::Ok
                                      : reading.user == User::Accepts ? Answer::Yes
                                                                      : Answer::No);
    }
    ui::RowsView& list = open.list(reading.section.list);
    QStringList said{list.sentence()};
    const std::function<void()> look = [&] {
        if (!list.sentence().isEmpty() && list.sentence() != said.last())
            said.append(list.sentence());
        if (reading.user == User::Cancels && child<QWidget>(open.window, "chkCancel").isVisible())
            QTest::keyClick(&open.window, Qt::Key_Escape);
        open.test.clock.after(0.05, look);
    };
    open.test.clock.after(0.05, look);
    open.window.goTo(reading.section.node);
    const bool isEmpty = list.rows()->count() == 0;
    said.append((isEmpty ? u"empty: "_s : u"rows: "_s) + list.accessibleDescription());
    return said << open.status();
}

} // namespace

class ListStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachReadingSaysItsEnd()
    {
        const QString noAccess = u"Fehler beim Zugriff auf das Telefon"_s;
        const QString noTransfer = u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht"_s;
        const QString notRead = u"Fehler beim Lesen des Adressbuchs."_s;
        const QString other = u"Warnung!\nDas Telefon meldet, daß es "_s;
        const QString empty = u"empty: Die Liste im Telefon ist leer."_s;
        const QString failed =
            u"empty: Die Liste konnte nicht gelesen werden. Prüfen Sie die Verbindung und lesen Sie noch einmal."_s;
        const QStringList failing{failed, u"Die Liste konnte nicht gelesen werden."_s};
        const QStringList cancelled{u"empty: Das Lesen wurde abgebrochen."_s,
                                    u"Das Lesen wurde abgebrochen. Die Liste ist, wie sie war."_s};
        const QString more = u" gelesen. Das Telefon nennt mehr, als es gesendet hat."_s;
        const handset::Options none{.seed = u"none"_s};
        const handset::Options mute{.faults = {.silentAfter = 1}};
        const Rows<Reading, QStringList> rows{
            {"phonebook", {phonebook}, {u"rows: "_s, u"25 Einträge gelesen."_s}},
            {"phonebook, empty", {phonebook, none}, {empty, u"0 Einträge gelesen."_s}},
            {"phonebook, cancelled", {phonebook, {}, {}, User::Cancels}, cancelled},
            {"phonebook, silent", {phonebook, mute, {noAccess}}, failing},
            {"phonebook, breaks off", {phonebook, {.faults = {.readErrorAt = 2}}, {noAccess}}, failing},
            {"providers", {providers}, {u"rows: "_s, u"5 Einträge gelesen."_s}},
            {"contacts", {contacts}, {u"rows: "_s, u"25 Kontakte gelesen."_s}},
            {"contacts, empty", {contacts, none}, {empty, u"0 Kontakte gelesen."_s}},
            {"contacts, cancelled",
             {contacts, {}, {}, User::Cancels},
             {cancelled.first(), u"Das Lesen wurde abgebrochen."_s}},
            {"contacts, silent",
             {contacts, {.faults = {.silentFrom = 3}}, {noTransfer, noTransfer, notRead}},
             failing},
            {"contacts, one missing",
             {contacts, {.faults = {.miscounts = 1}}, {other}, User::Accepts},
             {u"rows: "_s, u"25 von 26 Kontakten"_s + more}},
            {"contacts, discarded",
             {contacts, {.faults = {.miscounts = 1}}, {other, notRead}, User::Declines},
             {u"empty: Die gelesene Liste wurde verworfen. Lesen Sie noch einmal."_s,
              u"Die gelesene Liste wurde verworfen."_s}},
            {"contacts, all missing",
             {contacts, {.seed = u"none"_s, .faults = {.miscounts = 1}}, {other}, User::Accepts},
             {failed, u"0 von 1 Kontakt"_s + more}},
            {"contacts, not counted",
             {contacts, {.faults = {.refuseAt = 2}}, {noTransfer}},
             {u"rows: "_s, u"25 Kontakte gelesen. Das Telefon nennt keine Anzahl."_s}},
        };
        rows.each([](const Reading& reading, const QStringList& end) {
            QStringList said{u"Die Liste wurde noch nicht aus dem Telefon gelesen."_s,
                             u"Die Liste wird aus dem Telefon gelesen ..."_s};
            QCOMPARE(sentencesOf(reading), said + end);
        });
    }
};

KALMO_TEST(ListStates)
#include "tst_ListStates.moc"
