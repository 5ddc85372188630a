// Saving a contact whose answer is lost, or that the phone holds otherwise than it was entered.

#include "support/TestProgram.h"
#include "ui/PhoneContacts.h"

class tst_ContactSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The phone took the card, but its answer has no LUID: reading back finds it.
    void lostAnswer()
    {
        PhoneContacts phone(u"S68H"_s);
        const auto count = phone.luids().size();
        tVcfEntry entry = vcfEntryFrom(phone.list->row(3));
        entry.lastName = u"Neu"_s;
        phone.port.handset().setFaults({.noLuid = true});
        phone.test.dialogs.expect(lostReference);
        QCOMPARE(phone.save(entry, 3), CommandResult::Done);
        QVERIFY(phone.isInOrder());
        QCOMPARE(phone.luids().size(), count);
        phone.test.dialogs.expect(lostReference);
        QCOMPARE(phone.save(someone), CommandResult::Done);
        QVERIFY(phone.isInOrder());
        QCOMPARE(phone.luids().size(), count + 1);
    }

    /// The next save looks for the contact ahead of all else, and does so in a whole reading only.
    void unknownSaveIsLookedFor()
    {
        PhoneContacts phone(u"S68H"_s);
        const auto count = phone.luids().size();
        EditedContact edited;
        const auto save = [&](const handset::Faults& faults) {
            phone.port.handset().setFaults(faults);
            return saveContact(*phone.store, someone, edited, phone.progress.all());
        };
        phone.test.dialogs.expect(lostReference);
        phone.test.dialogs.expect(
            box(Icon::Exclamation,
                u"Fehler beim Schreiben des Adressbucheintrags.\n\nEs ist nicht bekannt, ob "
                u"das Telefon den Kontakt gespeichert hat. Wenn Sie noch einmal speichern, "
                u"sieht Kalmo zuerst nach."_s,
                editTitle));
        QCOMPARE(save({.miscounts = 100, .noLuid = true}), CommandResult::Failed);
        phone.test.dialogs.expectStart(u"Das Telefonbuch kam nicht vollständig an."_s);
        QCOMPARE(save({.miscounts = 100}), CommandResult::Refused);
        QCOMPARE(save({}), CommandResult::Done);
        QVERIFY(phone.isInOrder());
        QCOMPARE(phone.luids().size(), count + 1);
        QCOMPARE(phone.list->current(), phone.list->count() - 1);
        QCOMPARE(phone.records().size(), 1U);
    }

    /// Wherever the line is lost, saving again brings the contact into the phone once, as it is entered then.
    void unknownSaveComesOnce()
    {
        using FaultsAt = handset::Faults (*)(int step);
        const FaultsAt lateAnswer = [](int step) {
            return handset::Faults{.lateBy = 200, .lateRequestAt = step};
        };
        const FaultsAt lineGone = [](int step) { return handset::Faults{.hangUpAfter = 150 * step}; };
        const Rows<FaultsAt, bool> rows{{"new, late answer", lateAnswer, true},
                                        {"new, line gone", lineGone, true},
                                        {"changed, late answer", lateAnswer, false},
                                        {"changed, line gone", lineGone, false}};
        rows.each([](FaultsAt faultsAt, bool isNew) {
            int unknown = 0;
            for (int step = 1; step <= 30; ++step) {
                PhoneContacts phone(u"SL450HX"_s, {.seed = u"none"_s, .entries = 3, .atOnce = true});
                const auto count = phone.luids().size();
                tVcfEntry entry = someone;
                EditedContact edited;
                if (!isNew)
                    edited.shown = vcfEntryFrom(phone.list->row(1));
                phone.test.dialogs.agreeToAll({});
                phone.port.handset().setFaults(faultsAt(step));
                if (saveContact(*phone.store, entry, edited, phone.progress.all()) == CommandResult::Done)
                    continue;
                unknown += edited.openSave ? 1 : 0;
                phone.findAgain();
                if (step % 2 == 0)
                    entry.firstName = u"Anna"_s;
                const QByteArray where = QByteArray::number(step);
                QVERIFY2(saveContact(*phone.store, entry, edited, phone.progress.all()) ==
                             CommandResult::Done,
                         where.constData());
                QVERIFY2(phone.isInOrder() && phone.luids().size() == count + (isNew ? 1 : 0),
                         where.constData());
                QVERIFY2(haveSameContent(vcfEntryFrom(phone.list->row(phone.list->current())), entry),
                         where.constData());
            }
            QVERIFY(unknown > 0);
        });
    }

    /// A "=" in one name is read as a code because another name makes the phone use codes.
    void otherThanEntered()
    {
        PhoneContacts phone(u"S68H"_s);
        QCOMPARE(phone.save({.lastName = u"Ayşe"_s, .home = u"1"_s}), CommandResult::Done);
        phone.test.dialogs.expectStart(
            u"Das Telefon hat den Eintrag anders gespeichert, als Sie ihn eingegeben haben."
            u"\n\nEingegeben: A=41, 1, 01.01.2000  \nGespeichert: AA, 1, 01.01.2000  00:00"_s);
        QCOMPARE(phone.save({.lastName = u"A=41"_s, .home = u"1"_s, .birthday = u"2000-01-01"_s}),
                 CommandResult::Done);
        const int last = phone.list->count() - 1;
        QCOMPARE(phone.list->text(last - 1, VcfLastName) + phone.list->text(last, VcfLastName), u"AyşeAA"_s);
        QVERIFY(phone.isInOrder());
        QCOMPARE(phone.list->selectedRows(), QList<int>{last});

        phone.port.handset().setFaults({.miscounts = 3});
        phone.test.dialogs.expectStart(u"Das Telefon hat die Änderung bestätigt. Danach konnte"_s);
        tVcfEntry entry = vcfEntryFrom(phone.list->row(last));
        entry.lastName = u"A=42"_s;
        QCOMPARE(phone.save(entry, last), CommandResult::Done);
        QCOMPARE(phone.list->text(last, VcfLastName), u"A=42"_s);
        QCOMPARE(phone.save(someone), CommandResult::Done); // reads the phonebook
        QCOMPARE(phone.list->text(last, VcfLastName), u"AB"_s);
    }
};

KALMO_TEST(tst_ContactSaving)
#include "tst_ContactSaving.moc"
