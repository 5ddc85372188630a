// The commands of the vCard phonebook in the window, with the boxes that they show, against the emulated
// handset.

#include "operations/ContactEdit.h"
#include "support/TestProgram.h"
#include "ui/forms/FormerStatesDialog.h"
#include "ui/PhoneContacts.h"

using obex::GetFriedlyErrMsg;

namespace {

const QString advice =
    u"Dies kann aufgrund eines Fehler im Gigaset, der bisher von der Firma Gigaset nicht behoben wurde unter "
    u"ungünstigen Umständen vorkommen. Bitte lesen Sie das Telefonbuch einmal komplett neu ein "
    u"(Schaltfläche \"Neu Laden\"). Danach können Sie den betroffenen Eintrag beliebig ändern oder löschen."_s;

} // namespace

class tst_ContactCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allows()
    {
        PhoneContacts full(u"SL400H"_s, {.seed = u"none"_s, .capacity = 1, .faults = {.noLuid = true}});
        QVERIFY(allowNewContact(*full.store));
        QCOMPARE(full.save(someone), CommandResult::Done); // a phone without LUIDs
        full.test.dialogs.expect(
            box(Icon::Information, u"Es ist kein freier Speicherplatz vorhanden."_s, u" - neuer Eintrag"_s));
        QVERIFY(!allowNewContact(*full.store));
        full.list->selectAll();
        full.test.dialogs.expect(
            box(Icon::Information, u"Der gewählte bzw. ein gewählter Eintrag verfügt über keine gültige "
                                   u"Referenznummer.\n"_s +
                                       advice));
        QCOMPARE(full.remove(), CommandResult::Refused);
        full.test.dialogs.expect(
            box(Icon::Information,
                u"Der gewählte Eintrag verfügt über keine gültige Referenznummer.\n"_s + advice));
        QVERIFY(!allowChange(*full.store, 0));
        full.test.dialogs.expect(box(Icon::Information,
                                     u"Bitte geben Sie mindestens eine Telefonnummer ein."_s,
                                     u" - Eintrag speichern"_s));
        QCOMPARE(full.save({.lastName = u"x"_s}), CommandResult::Refused);

        // The phone's own card is left out of a deletion.
        PhoneContacts own(u"SL400H"_s, {.seed = u"none"_s, .entries = 2, .ownCardLuid = true});
        const auto expectNotice = [&own] {
            own.test.dialogs.expect(box(
                Icon::Information,
                u"Das Telefon hat für diese Einträge keine Referenznummer, oder es ist sein eigener Eintrag. "
                u"Sie lassen sich nur am Telefon ändern oder löschen:\n\n0000"_s));
        };
        expectNotice();
        own.expectQuestion(u"2 gewählte(n)"_s, Answer::Yes);
        own.list->selectAll();
        QCOMPARE(own.remove(), CommandResult::Done);
        QCOMPARE(own.luids(), QStringList(u"0000"_s));
        expectNotice();
        QVERIFY(!allowChange(*own.store, 0));
        expectNotice();
        own.list->selectAll();
        QCOMPARE(own.remove(), CommandResult::Refused);
    }

    void savesNothingWithoutRecord()
    {
        PhoneContacts phone(u"SL450HX"_s);
        const QString blocked = phone.test.storage + u"/Verlauf"_s;
        QFile file(blocked);
        QVERIFY(file.open(QIODevice::WriteOnly)); // where the folder would be
        phone.test.dialogs.expectStart(
            u"Der bisherige Stand des Telefonbuchs konnte nicht gesichert werden: "_s);
        QCOMPARE(phone.save(someone), CommandResult::Refused);
        QVERIFY(file.remove());
        QVERIFY(QDir().mkpath(blocked + u"/anderes"_s));
        QVERIFY(!phone.test.makeFile(u"storage/Verlauf/anderes/999999999.record"_s, {}).isEmpty());
        phone.list->setCurrent(0);
        phone.expectQuestion(u"1 gewählte(n)"_s, Answer::Yes);
        phone.test.dialogs.expect(
            box(Icon::Exclamation, u"Der bisherige Stand des Telefonbuchs konnte nicht gesichert werden: "
                                   u"Im Ordner %1 ist keine Nummer mehr frei\n\n"
                                   u"Im Telefon wurde nichts geändert."_s.arg(blocked)));
        QCOMPARE(phone.remove(), CommandResult::Refused);
        QVERIFY(phone.isInOrder());
    }

    /// The phone's user has changed or deleted the contact since the list was read.
    void staleRow()
    {
        const QString changed =
            u"Der Eintrag wurde im Telefon geändert, seit das Telefonbuch eingelesen wurde."_s;
        const QString missing = u"Der Eintrag wurde im Telefon nicht gefunden."_s;
        enum class Way { Save, Delete };
        const Rows<Way, std::optional<Answer>> rows{
            {"save, deleted in the phone", Way::Save, {}},
            {"delete, deleted in the phone", Way::Delete, {}},
            {"save, changed in the phone, no", Way::Save, Answer::No},
            {"delete, changed in the phone, no", Way::Delete, Answer::No},
            {"save, changed in the phone, yes", Way::Save, Answer::Yes},
            {"delete, changed in the phone, yes", Way::Delete, Answer::Yes},
        };
        rows.each([&](const auto& way, const auto& answer) {
            const auto result = answer == Answer::Yes ? CommandResult::Done : CommandResult::Refused;
            PhoneContacts phone(u"S68H"_s);
            tVcfEntry entry = vcfEntryFrom(phone.list->row(3));
            entry.lastName = u"Neu"_s;
            const auto otherList = makeVcfRows();
            const auto other =
                std::make_shared<VcardStore>(std::make_shared<obex::clsMmc>(phone.line), *otherList);
            tVcfEntry onPhone = vcfEntryFrom(phone.list->row(3));
            onPhone.home = u"0999"_s;
            QVERIFY(answer ? other->VcfWriteList({onPhone}, phone.progress.all())
                           : other->deleteContacts({entry.luid}, phone.progress.all()));
            const QByteArray before = phone.cards();
            phone.list->setSelected(3, true);
            if (way == Way::Delete)
                phone.expectQuestion(u"1 gewählte(n)"_s, Answer::Yes);
            if (answer)
                phone.expectQuestion(changed, *answer);
            else
                phone.test.dialogs.expectStart(missing);
            const QString key = phone.list->row(3).key;
            QCOMPARE(way == Way::Save ? phone.save(entry, 3) : phone.remove(), result);
            QCOMPARE(phone.cards() == before, result == CommandResult::Refused);
            QCOMPARE(phone.records().empty(), result == CommandResult::Refused);
            if (result == CommandResult::Refused)
                QCOMPARE(phone.list->row(3).key, key);
            else
                QVERIFY(phone.isInOrder());
        });
    }

    /// The record of a change on a doubtful reading shows that it may lack contacts.
    void doubtfulReading()
    {
        const Rows<int, bool> rows{{"the second reading is whole", 1, false},
                                   {"it is not", 2, true},
                                   {"nor is the one after the change", 3, true}};
        rows.each([&](int miscounts, bool isMarked) {
            PhoneContacts phone(u"S68H"_s);
            phone.test.settings.PutIniNumber(u"frmEinstellungen"_s, u"chkShowSuccessPopup"_s, 1);
            phone.test.dialogs.expectStart(
                miscounts == 3 ? u"Das Telefon hat die Änderung bestätigt. Danach konnte das "
                                 u"Telefonbuch nicht vollständig zur Kontrolle gelesen werden. "
                                 u"Die Liste zeigt, was Kalmo gesendet hat.\n\nBitte lesen"_s
                               : u"Eintrag gespeichert."_s);
            phone.port.handset().setFaults({.miscounts = miscounts});
            tVcfEntry entry = vcfEntryFrom(phone.list->row(3));
            entry.home = u"0123"_s;
            QCOMPARE(phone.save(entry, 3), CommandResult::Done);
            const auto record = phone.read(phone.records().front());
            QCOMPARE(record.part(operations::incompletePart) != nullptr, isMarked);
        });
    }

    /// The state that is put back is called so only if the phone was read again as a whole.
    void undoneAndNotCompared()
    {
        PhoneContacts phone(u"SL450HX"_s, {.atOnce = true});
        QCOMPARE(phone.save(someone), CommandResult::Done);
        FormerStatesDialog dialog(phone.program, {phone.line, phone.memory, phone.mmc},
                                  operations::RecordedList::Phonebook);
        phone.port.handset().setFaults({.miscounts = 100});
        phone.expectQuestion(u"Das Telefon nennt eine andere Anzahl von Kontakten, als es sendet"_s,
                             Answer::Yes);
        phone.test.dialogs.expectStart(u"Das Telefon hat jede Änderung bestätigt. Danach konnte"_s);
        child<QPushButton>(dialog, "cmdPutBack").click();
        QVERIFY(textOf(dialog, "sta").endsWith(u"aber nicht kontrolliert."));
    }

    /// An import ends as the phone's content says, and the list shows that content.
    void imports()
    {
        const tVcfEntry other{.lastName = u"Adam"_s, .home = u"030 2"_s};
        PhoneContacts phone(u"S68H"_s);
        const auto before = phone.luids().size();
        phone.port.handset().setFaults({.noLuid = true});
        phone.test.dialogs.expectStart(lostReference.text);
        QCOMPARE(importContacts(*phone.store, {someone}, phone.progress.all()).result, CommandResult::Done);
        QVERIFY(phone.isInOrder());
        QCOMPARE(phone.luids().size(), before + 1);
        phone.port.handset().setFaults({});
        QCOMPARE(phone.save({.lastName = u"Ayşe"_s, .home = u"1"_s}), CommandResult::Done);
        phone.test.dialogs.expectStart(u"Das Telefon hat 1 von 2 Kontakten nicht so gespeichert, wie sie "
                                       u"importiert wurden:\n\nA=41, 1 → AA, 1"_s);
        QCOMPARE(importContacts(*phone.store, {{.lastName = u"A=41"_s, .home = u"1"_s}, other},
                                phone.progress.all())
                     .result,
                 CommandResult::Done);
        QVERIFY(phone.isInOrder());

        phone.list->clear(); // as after a reading that was stopped
        QCOMPARE(importContacts(*phone.store, {someone}, phone.progress.all()).result, CommandResult::Done);
        QVERIFY(phone.isInOrder());

        // Whatever fails, the saved contact never stands there as the phone's only one.
        for (int at = 1; at <= 20; ++at) {
            PhoneContacts unread(u"S68H"_s);
            const auto held = unread.luids().size();
            unread.list->clear();
            unread.port.handset().setFaults({.refuseAt = at});
            unread.test.dialogs.agreeToAll({});
            unread.save(other);
            QVERIFY2(unread.list->count() == 0 || unread.list->count() >= held,
                     QByteArray::number(at).constData());
        }
    }

    void deletes()
    {
        PhoneContacts phone(u"SL400H"_s);
        QCOMPARE(phone.remove(), CommandResult::Refused);
        phone.list->setSelected(0, true);
        phone.list->setSelected(3, true);
        const auto asked =
            titledQuestion(u"2 gewählte(n) Kontakt(e) wirklich löschen ?"_s, u"  -  Kontakt löschen"_s);
        phone.test.dialogs.expect(asked, Answer::No);
        QCOMPARE(phone.remove(), CommandResult::Refused);

        const QStringList before = phone.luids();
        phone.port.handset().setFaults({.refuseAt = 17}); // the second of them
        phone.test.dialogs.expect(asked, Answer::Yes);
        phone.test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xC3)));
        phone.test.dialogs.expect(box(
            Icon::Information, u"Beim Löschen ist ein Fehler aufgetreten. Bitte lesen Sie das Telefonbuch "
                               u"erneut ein, um Inkonsistenzen zu vermeiden."_s));
        QCOMPARE(phone.remove(), CommandResult::Failed);
        QCOMPARE(phone.list->count(), 0);
        QCOMPARE(phone.store->lblVCFkap() + phone.store->lblVCFbelegt(), u"??"_s);
        QVERIFY(phone.store->VcfReadList(phone.progress.all()));
        QVERIFY(phone.isInOrder());
        QCOMPARE(phone.luids(), before.filter(QRegularExpression(u"^(?!0004)"_s)));
        phone.list->setSelected(0, true);
        phone.test.dialogs.expect(
            titledQuestion(u"1 gewählte(n) Kontakt(e) wirklich löschen ?"_s, u"  -  Kontakt löschen"_s),
            Answer::Yes);
        QCOMPARE(phone.remove(), CommandResult::Done);
        QVERIFY(phone.isInOrder());
        QCOMPARE(phone.records().size(), 2U);
    }

    /// Without a box, and the list shows what the phone holds.
    void stopsAtTheUsersWish()
    {
        PhoneContacts phone(u"SL450HX"_s);
        for (const int row : {0, 1, 2})
            phone.list->setSelected(row, true);
        connect(phone.list.get(), &toolkit::ListRows::removed, this,
                [&] { phone.progress.cancel.checked = true; });
        phone.expectQuestion(u"3 gewählte(n)"_s, Answer::Yes);
        const ContactDeletion deletion = VcfDeleteSelected(*phone.store, phone.progress.all());
        QCOMPARE(deletion.result, CommandResult::Cancelled);
        QCOMPARE(deletion.deleted, 1);
        QVERIFY(phone.isInOrder());
    }

    void refreshes()
    {
        PhoneContacts phone(u"SL78H"_s);
        QStringList shown;
        const auto dialog = [&](const QString& answer) { shown.append(answer); };
        QCOMPARE(refreshContacts(*phone.store, phone.progress.all(), nullptr, dialog), CommandResult::Done);
        QVERIFY(shown.isEmpty());
        QVERIFY(sendAreaCodes(phone.line, {u"0"_s, u"0"_s, u"0"_s, u"0"_s}));
        QCOMPARE(phone.save({.lastName = u"x"_s, .work = u"f0521"_s}), CommandResult::Done);
        phone.test.dialogs.expect(
            titledQuestion(
                u"Mindestens ein Eintrag im Telefonbuch scheint vom Telefon mit einer fehlerhaften "
                u"(Vorwahl-)Nummer empfangen worden zu sein.\nMeistens sind falsch eingestellte "
                u"Vorwahl-Einstellungen die Ursache.\n\nMöchten Sie die Vorwahl-Einstellungen bearbeiten?"_s,
                {}, Answer::Ok),
            Answer::Yes);
        QCOMPARE(refreshContacts(*phone.store, phone.progress.all(), nullptr, dialog), CommandResult::Done);
        QCOMPARE(shown, QStringList({u"0,0,0,0"_s, u"0,0,0,0"_s}));
        phone.progress.cancel.checked = true;
        QCOMPARE(refreshContacts(*phone.store, phone.progress.all(), nullptr, dialog),
                 CommandResult::Cancelled);
        QVERIFY(phone.isInOrder());
        QVERIFY(phone.store->lastReading()); // of which a file gets the cards
    }
};

KALMO_TEST(tst_ContactCommands)
#include "tst_ContactCommands.moc"
