// The vCard phonebook against the emulated handset: what the list, the phone and the disk hold after each
// way that an operation can end, and that the line is back at AT commands after all of them.

#include "phonedata/IrmcItems.h"
#include "support/ContactBoxes.h"
#include "support/ContactPhone.h"
#include "support/ListLines.h"
#include "support/ObexClient.h"
#include "support/TestProgram.h"

using namespace kalmo::phonedata;
using obex::clsMmc;
using obex::GetFriedlyErrMsg;

namespace {

const tVcfEntry ofTwoFrames{.email = QString(60, u'e'),
                            .lastName = u"Zöllner"_s,
                            .work = QString(32, u'1'),
                            .mobile = QString(32, u'1'),
                            .home = u"030 1"_s};

struct Contacts : ContactPhone
{
    using ContactPhone::ContactPhone;

    bool read() { return store->VcfReadList(progress.all()); }
    bool write(const std::vector<tVcfEntry>& entries)
    {
        return store->VcfWriteList(entries, progress.all(), &report);
    }
    QString labels() const { return store->lblVCFkap() + u'/' + store->lblVCFbelegt(); }

    /// The line carries AT commands, and the list holds the phone's contacts and nothing else.
    void checkAllIsWell()
    {
        QVERIFY(!port.handset().isInDataMode() && line.mode() == link::LineMode::Text);
        QStringList shown = linesOf(*list, {VcfLuid, VcfLastName});
        QStringList kept;
        for (const handset::IrmcItem& item : held().items())
            kept.append(item.luid + u'|' + item.fields[u"lastName"_s].toString());
        shown.sort();
        kept.sort();
        QCOMPARE(shown, kept);
        QCOMPARE(labels(), u"%1/%2"_s.arg(held().capacity()).arg(list->count()));
    }

    ContactReport report;
};

} // namespace

class tst_VcardStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Reads, adds, changes, deletes: one evening of a user.
    void everyFamily()
    {
        const Rows<QString, handset::Options, int> rows{
            {"5", u"S68H"_s, handset::Options{.counterLine = true}, 1},
            {"7", u"Sinus 501"_s, handset::Options{.size = handset::SizeForm::Never}, 1},
            {"8, small", u"SL78H"_s, handset::Options{.maxPacket = 255}, 3},
            {"12", u"SL450HX"_s, handset::Options{.cards = handset::CardText::Raw}, 3},
        };
        rows.each([&](const auto& model, const auto& options,
                      const auto& counterReads) { // of these, for a delete of three
            Contacts phone(model, options);
            QVERIFY(phone.read());
            phone.checkAllIsWell();
            const int before = phone.list->count();
            QVERIFY(phone.write({someone, {.lastName = u"B;C"_s, .mobile = u"1"_s}}));
            QCOMPARE(phone.report.luids.size(), 2);
            QCOMPARE(TestContext::contentOf(phone.report.backup).count('\n'), before + 1);
            phone.checkAllIsWell();

            tVcfEntry changed = vcfEntryFrom(phone.list->row(1));
            changed.lastName = u"Äß"_s;
            changed.birthday = writtenBirthday(QDate(1970, 3, 2), u"12:30"_s);
            QVERIFY(phone.write({changed}));
            QCOMPARE(phone.held().find(changed.luid)->fields[u"birthday"_s].toString(),
                     u"1970-03-02T12:30"_s);
            phone.checkAllIsWell();

            for (const int row : {0, 2, before})
                phone.list->setSelected(row, true);
            phone.progress.panel.texts.clear();
            QVERIFY(phone.store->VcfDeleteRows(phone.progress.all(), &phone.report));
            QCOMPARE(phone.progress.panel.texts.count(u"Empfange cc.log..."_s), counterReads);
            QCOMPARE(phone.report.luids.size(), 3);
            phone.checkAllIsWell();
            QVERIFY(phone.read());
            QCOMPARE(phone.list->count(), before - 1);
            phone.checkAllIsWell();
        });
    }

    void busyPhone()
    {
        for (const int busy : {15, 16}) {
            Contacts phone(u"SL400H"_s, {.faults = {.busy = busy}});
            if (busy > 15)
                phone.test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xD0)));
            QCOMPARE(phone.read(), busy <= 15);
            QVERIFY(!phone.port.handset().isInDataMode());
        }
    }

    /// A scripted phone that claims two contacts, and more places than there can be, and sends one.
    void partOfAList()
    {
        const auto object = [](const QByteArray& text) { return packet(0xA0, header(0x49, text)); };
        for (const Answer answer : {Answer::Yes, Answer::No}) {
            TestContext test;
            ScriptedPort port(test);
            ObexClient client(test, port);
            const auto list = makeVcfRows();
            const auto store = std::make_shared<VcardStore>(client.mmc, *list);
            port.expect("AT^SQWE=3\r\n", "OK\r\n");
            port.expect(obex::connectFrame(obex::Target::FlexMemory), packet(0xA0, hex("10 00 04 00")));
            port.expect(obex::enterFolderFrame(u"telecom"_s, false), done);
            port.expect(obex::enterFolderFrame(u"pb"_s, false), done);
            port.expect(obex::getFrame(u"info.log"_s), object("Total-Records:2\r\nMaximum-Records:800\r\n"));
            port.expect(obex::oneLevelUpFrame(), done);
            port.expect(obex::rootFrame(), done);
            port.expect(obex::enterFolderFrame(u"telecom"_s, false), done);
            port.expect(obex::getFrame(u"pb.vcf"_s),
                        object("END:VCARD\r\n\r\nX-IRMC-LUID:1\r\nEND:VCARD\r\n"
                               "N;ENCODING=QUOTED-PRINTABLE:=C3")); // half a letter
            port.expect(obex::disconnectFrame(), done);
            port.expect("+++");
            port.expect("AT^SQWE=0\r\n", "OK\r\n");
            test.dialogs.expectStart(u"Bei der UTF-8 Dekodierung ist ein Fehler aufgetreten."_s);
            test.dialogs.expect(
                titledQuestion(u"Warnung!\nDas Telefon meldet, daß es 2 Einträge im Telefonbuch "
                               u"gibt. Beim Auslesen wurden "
                               u"aber nur 2 Einträge übermittelt. Es wird empfohlen, den "
                               u"Einlesevorgang zu wiederholen.\n\n"
                               u"Sollen die eingelesenen Einträge trotzdem angezeigt werden?"_s,
                               u" - Lesefehler"_s),
                answer);
            const bool wanted = answer == Answer::Yes;
            QCOMPARE(store->VcfReadList(client.progress.all()), wanted);
            QCOMPARE(list->count(), wanted ? 1 : 0);
            QCOMPARE(store->lblVCFkap() + store->lblVCFbelegt(), wanted ? u"5002"_s : u"??"_s);
        }
    }

    void failedWrites()
    {
        constexpr int put = 12; // connections, info.log, folders, cc.log come first
        // Code of the client's box, 0 for that of the store, 1 for none: it succeeds; whether it is in doubt.
        const Rows<Faults, int, bool> rows{
            {"full", Faults{.full = true}, 0xE0, false},
            {"refused", Faults{.refuseAt = put, .refuseCode = 0xC9}, 0xC9, false},
            {"silent in the middle", Faults{.lateBy = 60.3, .lateRequestAt = put}, -1, false},
            {"silent at the end", Faults{.lateBy = 60.3, .lateRequestAt = put + 1}, -1, true},
            {"no LUID", Faults{.noLuid = true}, 0, true},
            {"wrong length", Faults{.wrongLuidLength = true}, 0, true},
            {"second connection refused", Faults{.refuseAt = 2}, 0xC3, false},
            {"says to be done early", Faults{.earlySuccess = true}, 1, false},
        };
        rows.each([&](const auto& faults, const auto& shown, const auto& unconfirmed) {
            Contacts phone(u"SL400H"_s, {.maxPacket = 255});
            QVERIFY(phone.read());
            const int before = phone.list->count();
            phone.port.handset().setFaults(faults);
            if (shown != 1)
                phone.test.dialogs.expect(shown == 0 ? lostReference : errorBox(GetFriedlyErrMsg(shown)));
            QCOMPARE(phone.write({ofTwoFrames}), shown == 1);
            QCOMPARE(phone.report.unconfirmed, unconfirmed);
            QCOMPARE(phone.list->count(), before + (unconfirmed || shown == 1 ? 1 : 0));
            QVERIFY(!phone.port.handset().isInDataMode());
            if (unconfirmed) {
                QVERIFY(phone.list->text(before, VcfLuid).startsWith(u"NOVALIDLUID_2026-11-21"));
                QCOMPARE(phone.store->lblVCFbelegt(), u"?"_s);
            }
            phone.port.handset().setFaults({});
            QVERIFY(phone.read());
            phone.checkAllIsWell();
        });
    }

    void noRoom()
    {
        Contacts phone(u"SL400H"_s, {.seed = u"none"_s, .capacity = 1});
        phone.test.dialogs.expect(box(
            Icon::Information,
            u"Es stehen nicht genügend freie Speicherplätze zur Verfügung, um 2 Einträge zu speichern."_s));
        QVERIFY(!phone.write({someone, someone, someone}));
        phone.checkAllIsWell();
        phone.test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xE0)));
        QVERIFY(!phone.write({someone, someone})); // one too many is left to the phone
        QCOMPARE(phone.list->count(), 1);
        phone.checkAllIsWell();
    }

    void stopsBetweenTwo()
    {
        Contacts phone(u"SL450HX"_s);
        QVERIFY(phone.read());
        connect(phone.list.get(), &toolkit::ListRows::inserted, this, [&] { phone.client->askToStop(); });
        QVERIFY(!phone.write({someone, someone}));
        QCOMPARE(phone.report.luids.size(), 1);
        phone.checkAllIsWell();
    }

    void cancelSparesWhatIsUnderWay()
    {
        int stoppedBehind[4] = {};
        for (double after = 1; after < 8; after += 0.1) {
            Contacts phone(u"SL450HX"_s, {.maxPacket = 255});
            QVERIFY(phone.read());
            phone.test.clock.after(after, [&] { phone.progress.cancel.checked = true; });
            phone.write({ofTwoFrames, ofTwoFrames, ofTwoFrames});
            QVERIFY(!phone.report.unconfirmed);
            ++stoppedBehind[phone.report.luids.size()];
            phone.checkAllIsWell();
        }
        QVERIFY(stoppedBehind[1] > 0 && stoppedBehind[2] > 0);
    }

    void oneContactAlone()
    {
        Contacts phone(u"SL450HX"_s);
        clsMmc& client = *phone.client;
        qint32 counter = 0;
        QString luid;
        QVERIFY(client.Online({}) && client.connect({}, obex::Target::IrMC));
        QVERIFY(client.CDluidPB() && VcfGetCc(client, counter, {}));
        QCOMPARE(VcfWriteItem(client, someone, counter, luid, {}, 1, 1), ItemResult::Written);
        QVERIFY(phone.held().find(luid) && counter == phone.held().counter());
        phone.line.pause(settlePause);
        QVERIFY(client.Offline({}));
    }

    void organizer()
    {
        for (const IrmcKind kind : {KindAppointment, KindNote}) {
            Contacts phone(u"SL37"_s);
            const toolkit::Progress progress = phone.progress.all();
            clsMmc& client = *phone.client;
            const bool note = kind == KindNote;
            const handset::IrmcStore& held =
                phone.port.handset().phone().irmc[note ? handset::NoteStore : handset::CalendarStore];
            QString text;
            tVcfInfo info;
            QVERIFY(client.Online(progress) && VcxRead(client, kind, text, progress));
            QVERIFY(text.startsWith(note ? u"BEGIN:VNOTE" : u"BEGIN:VCALENDAR"));
            QVERIFY(VcxGetInfo(client, kind, info, progress));
            QCOMPARE(info.intBelegt, static_cast<qint16>(held.items().size()));
            qint32 counter = 0;
            QString luid;
            QVERIFY(client.connect(progress, obex::Target::IrMC));
            QVERIFY((note ? client.CDluidNT() : client.CDluidCAL()) && VcfGetCc(client, counter, progress));
            const OrganizerItem item{held.text(held.items().front(), handset::CardText::Raw), {}};
            QCOMPARE(VcxWrite(client, kind, item, counter, luid, progress), ItemResult::Written);
            QVERIFY(held.find(luid) && counter == held.counter());
            QVERIFY(VcxDel(client, kind, luid, counter, progress) == ItemResult::Written);
            QVERIFY(!held.find(luid) && client.Offline(progress));
        }
    }
};

KALMO_TEST(tst_VcardStore)
#include "tst_VcardStore.moc"
