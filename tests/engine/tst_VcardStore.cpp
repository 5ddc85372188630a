// The vCard phonebook against the emulated handset: what the list, the phone and the disk hold after each
// way that an operation can end, and that the line is back at AT commands after all of them.

#include "app/SettingsKeys.h"
#include "link/mdlStatus.h"
#include "obex/ResponseCodes.h"
#include "phonedata/IrmcItems.h"
#include "phonedata/VcardCommands.h"
#include "support/HandsetPort.h"
#include "support/ObexClient.h"
#include "support/RecordedProgress.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;
using obex::clsMmc;
using obex::Target;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

const tVcfEntry someone{.lastName = u"Zöllner"_s, .home = u"030 1"_s};

struct Contacts
{
    explicit Contacts(const QString& model, handset::Options options = {})
        : port(test.clock, test.verdict, (options.model = model, options)), line(test.context, port),
          client(std::make_shared<clsMmc>(line)), list(makeVcfRows()),
          store(std::make_shared<VcardStore>(client, *list))
    {
        test.sy.PhoneType = port.handset().phone().family.number;
        test.sy.blnTxLfTerminator = test.sy.PhoneType >= 11;
    }

    const handset::IrmcStore& held() { return port.handset().phone().irmc[handset::ContactStore]; }
    void setFaults(const handset::Faults& faults) { port.handset().setFaults(faults); }
    bool read() { return store->VcfReadList(progress.all()); }
    QStringList backups() const { return QDir(test.storage + u"/Backup"_s).entryList(QDir::Files); }
    QString labels() const { return store->lblVCFkap() + u'/' + store->lblVCFbelegt(); }
    QString lastLuid() const { return list->text(list->count() - 1, VcfLuid); }

    /// The line carries AT commands, and the list holds the phone's contacts and nothing else.
    void checkAllIsWell()
    {
        QVERIFY(!port.handset().isInDataMode());
        QCOMPARE(line.mode(), link::LineMode::Text);
        QCOMPARE(client->RxTimeOut(), 25.0);
        QSet<QString> shown;
        for (int row = 0; row < list->count(); ++row)
            shown.insert(list->text(row, VcfLuid) + u' ' + list->text(row, VcfLastName));
        QSet<QString> kept;
        for (const handset::IrmcItem& item : held().items())
            kept.insert(item.luid + u' ' + item.fields[u"lastName"_s].toString());
        QCOMPARE(shown, kept);
        QCOMPARE(list->count(), static_cast<int>(held().items().size()));
        QCOMPARE(labels(), u"%1/%2"_s.arg(held().capacity()).arg(list->count()));
    }

    TestContext test;
    HandsetPort port;
    link::Line line;
    std::shared_ptr<clsMmc> client;
    std::unique_ptr<toolkit::ListRows> list;
    std::shared_ptr<VcardStore> store;
    RecordedProgress progress;
};

const QString lostReference =
    u"LUID konnte beim Schreiben nicht berechnet werden. Bitte wenden Sie sich an den Programmautor."_s;

} // namespace

class tst_VcardStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFamily_data();
    void everyFamily();
    void busyPhone_data();
    void busyPhone();
    void partOfAList_data();
    void partOfAList();
    void failedWrites_data();
    void failedWrites();
    void unconfirmedChange();
    void noRoom();
    void stopsBetweenTwo_data();
    void stopsBetweenTwo();
    void ownerGoes_data();
    void ownerGoes();
    void deletes_data();
    void deletes();
    void refresh();
    void organizer_data();
    void organizer();
};

void tst_VcardStore::everyFamily_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<handset::Options>("options");
    QTest::newRow("5") << u"S68H"_s << handset::Options{.counterLine = true};
    QTest::newRow("7") << u"Sinus 501"_s << handset::Options{.size = handset::SizeForm::Never};
    QTest::newRow("8, smallest frames") << u"SL78H"_s << handset::Options{.maxPacket = 255};
    QTest::newRow("11") << u"S850H"_s << handset::Options{};
    QTest::newRow("12") << u"SL450HX"_s << handset::Options{.cards = handset::CardText::Raw};
    QTest::newRow("13") << u"SL5 prof"_s << handset::Options{};
}

/// Reads, adds, changes, deletes; the window's flows of one evening.
void tst_VcardStore::everyFamily()
{
    QFETCH(QString, model);
    QFETCH(handset::Options, options);
    Contacts phone(model, options);
    QVERIFY(phone.read());
    phone.checkAllIsWell();
    const int before = phone.list->count();
    QVERIFY(before > 3);

    VcardStore::Report report;
    QVERIFY(phone.store->VcfWriteList({someone, {.lastName = u"B;C"_s, .mobile = u"1"_s}},
                                      phone.progress.all(), &report));
    QCOMPARE(report.luids.size(), 2);
    QVERIFY(QFile::exists(report.backup));
    QCOMPARE(phone.list->count(), before + 2);
    phone.checkAllIsWell();

    tVcfEntry changed = vcfEntryFrom(phone.list->row(1));
    changed.lastName = u"Äß"_s;
    changed.birthday = writtenBirthday(QDate(1970, 3, 2), u"12:30"_s);
    changed.home = u"110"_s;
    QCOMPARE(saveContact(*phone.store, changed, 1, phone.progress.all()), CommandResult::Done);
    QCOMPARE(phone.held().find(changed.luid)->fields[u"birthday"_s].toString(), u"1970-03-02T12:30"_s);
    phone.checkAllIsWell();

    phone.list->setSelected(0, true);
    phone.list->setSelected(2, true);
    phone.list->setSelected(before, true);
    QVERIFY(phone.store->VcfDeleteRows(phone.progress.all(), &report));
    QCOMPARE(report.luids.size(), 3);
    phone.checkAllIsWell();
    QVERIFY(phone.read());
    phone.checkAllIsWell();
    QCOMPARE(phone.backups().size(), 3);
}

void tst_VcardStore::busyPhone_data()
{
    QTest::addColumn<int>("busy");
    QTest::newRow("15 times") << 15;
    QTest::newRow("16 times") << 16;
}

void tst_VcardStore::busyPhone()
{
    QFETCH(int, busy);
    Contacts phone(u"SL400H"_s, {.faults = {.busy = busy}});
    if (busy > 15)
        phone.test.dialogs.expect(errorBox(obex::GetFriedlyErrMsg(0xD0)));
    QCOMPARE(phone.read(), busy <= 15);
    QCOMPARE(phone.list->count() > 0, busy <= 15);
    QVERIFY(!phone.port.handset().isInDataMode());
}

void tst_VcardStore::partOfAList_data()
{
    QTest::addColumn<Answer>("answer");
    QTest::newRow("shown") << Answer::Yes;
    QTest::newRow("refused") << Answer::No;
}

/// A phone of paper that says to have two contacts, and more places than there can be, and sends one.
void tst_VcardStore::partOfAList()
{
    QFETCH(Answer, answer);
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    const auto list = makeVcfRows();
    const auto store = std::make_shared<VcardStore>(client.mmc, *list);
    const QByteArray done = hex("A0 0003");
    const auto object = [](const QByteArray& text) { return packet(0xA0, header(0x49, text)); };
    const std::pair<QByteArray, QByteArray> talk[] = {
        {"AT^SQWE=3\r\n", "OK\r\n"},
        {obex::connectFrame(Target::FlexMemory), packet(0xA0, hex("10 00 04 00"))},
        {obex::enterFolderFrame(u"telecom"_s, false), done},
        {obex::enterFolderFrame(u"pb"_s, false), done},
        {obex::getFrame(u"info.log"_s), object("Total-Records:2\r\nMaximum-Records:800\r\n")},
        {obex::oneLevelUpFrame(), done},
        {obex::rootFrame(), done},
        {obex::enterFolderFrame(u"telecom"_s, false), done},
        {obex::getFrame(u"pb.vcf"_s), object("END:VCARD\r\n\r\nX-IRMC-LUID:1\r\nEND:VCARD\r\n")},
        {obex::disconnectFrame(), done},
        {"+++", ""},
        {"AT^SQWE=0\r\n", "OK\r\n"},
    };
    for (const auto& [request, reply] : talk)
        port.expect(request, reply);
    test.dialogs.expect({.text =
                             u"Warnung!\nDas Telefon meldet, daß es 2 Einträge im Telefonbuch gibt. Beim "
                             u"Auslesen wurden aber nur 2 Einträge übermittelt. Es wird empfohlen, den "
                             u"Einlesevorgang zu wiederholen.\n\nSollen die eingelesenen Einträge trotzdem "
                             u"angezeigt werden?"_s,
                         .title = u"Kalmo - Lesefehler"_s,
                         .buttons = Buttons::YesNo,
                         .icon = Icon::Question,
                         .defaultButton = Answer::No},
                        answer);
    QCOMPARE(store->VcfReadList(client.progress.all()), answer == Answer::Yes);
    QCOMPARE(list->count(), answer == Answer::Yes ? 1 : 0);
    QCOMPARE(store->lblVCFkap() + u'/' + store->lblVCFbelegt(),
             answer == Answer::Yes ? u"500/2"_s : u"?/?"_s);
}

void tst_VcardStore::failedWrites_data()
{
    QTest::addColumn<handset::Faults>("faults");
    QTest::addColumn<QString>("told"); // of the client's boxes
    QTest::addColumn<bool>("unconfirmed");

    constexpr int put = 12; // connections, info.log, folders, cc.log come first
    QTest::newRow("full") << handset::Faults{.full = true} << errorBox(obex::GetFriedlyErrMsg(0xE0)).text
                          << false;
    QTest::newRow("refused") << handset::Faults{.refuseAt = put, .refuseCode = 0xC9}
                             << errorBox(obex::GetFriedlyErrMsg(0xC9)).text << false;
    QTest::newRow("silent for long") << handset::Faults{.lateBy = 60.3, .lateRequestAt = put + 1}
                                     << errorBox(timeoutText).text << true;
    QTest::newRow("no LUID") << handset::Faults{.noLuid = true} << QString() << true;
    QTest::newRow("wrong length") << handset::Faults{.wrongLuidLength = true} << QString() << true;
    QTest::newRow("second connection refused")
        << handset::Faults{.refuseAt = 2} << errorBox(obex::GetFriedlyErrMsg(0xC3)).text << false;
    QTest::newRow("first connection refused")
        << handset::Faults{.refuseAt = 1} << errorBox(obex::GetFriedlyErrMsg(0xC3)).text << false;
    QTest::newRow("says to be done early") << handset::Faults{.earlySuccess = true} << u"-"_s << false;
}

void tst_VcardStore::failedWrites()
{
    QFETCH(handset::Faults, faults);
    QFETCH(QString, told);
    QFETCH(bool, unconfirmed);
    Contacts phone(u"SL400H"_s, {.maxPacket = 255});
    QVERIFY(phone.read());
    const int before = phone.list->count();
    phone.setFaults(faults);
    const bool succeeds = told == u"-"_s;
    toolkit::Message box = errorBox({});
    if (!told.isEmpty())
        box.text = told;
    else
        box = {.text = lostReference, .icon = Icon::Critical};
    if (!succeeds)
        phone.test.dialogs.expect(box);
    VcardStore::Report report;
    tVcfEntry entry = someone;
    entry.email = QString(60, u'e');
    entry.birthday = u"1970-03-21T12:30"_s;
    entry.mobile = entry.work = QString(32, u'1');
    QCOMPARE(phone.store->VcfWriteList({entry}, phone.progress.all(), &report), succeeds);
    QCOMPARE(report.unconfirmed, unconfirmed);
    QCOMPARE(phone.list->count(), before + (unconfirmed || succeeds ? 1 : 0));
    QVERIFY(!phone.port.handset().isInDataMode());
    if (unconfirmed) {
        QVERIFY(phone.lastLuid().startsWith(u"NOVALIDLUID_2026-11-21"));
        QCOMPARE(phone.store->lblVCFbelegt(), u"?"_s);
        phone.setFaults({});
        QVERIFY(phone.read());
    }
    phone.port.handset().setFaults({});
    QVERIFY(phone.read());
    phone.checkAllIsWell();
}

void tst_VcardStore::unconfirmedChange()
{
    Contacts phone(u"S68H"_s);
    QVERIFY(phone.read());
    tVcfEntry entry = vcfEntryFrom(phone.list->row(3));
    entry.lastName = u"Neu"_s;
    phone.setFaults({.noLuid = true});
    phone.test.dialogs.expect({.text = lostReference, .icon = Icon::Critical});
    phone.test.dialogs.expect({.text = u"Fehler beim Schreiben des Adressbucheintrags."_s,
                               .title = u"Kalmo - Adressbuch bearbeiten"_s,
                               .icon = Icon::Exclamation});
    QCOMPARE(saveContact(*phone.store, entry, 3, phone.progress.all()), CommandResult::Failed);
    QCOMPARE(phone.list->row(3).key, u"temp_i"_s + entry.luid);
    phone.test.dialogs.expect(
        {.text = u"Der gewählte Eintrag verfügt über keine gültige Referenznummer.\n"_s + readAgainAdvice(),
         .icon = Icon::Information});
    QVERIFY(!mayEditContact(*phone.store, 3));
    QVERIFY(mayEditContact(*phone.store, 2));
    phone.setFaults({});
    app::put(phone.test.settings, app::keys::ShowSuccessPopup, 1);
    phone.test.dialogs.expect({.text = u"Eintrag gespeichert."_s,
                               .title = u"Kalmo - Adressbuch bearbeiten"_s,
                               .icon = Icon::Information});
    QCOMPARE(saveContact(*phone.store, entry, 3, phone.progress.all()), CommandResult::Done);
    phone.checkAllIsWell();
}

void tst_VcardStore::noRoom()
{
    Contacts phone(u"SL400H"_s, {.seed = u"none"_s, .capacity = 1});
    phone.test.dialogs.expect(
        {.text =
             u"Es stehen nicht genügend freie Speicherplätze zur Verfügung, um 2 Einträge zu speichern."_s,
         .icon = Icon::Information});
    QVERIFY(!phone.store->VcfWriteList({someone, someone, someone}, phone.progress.all()));
    phone.checkAllIsWell();
    phone.test.dialogs.expect(errorBox(obex::GetFriedlyErrMsg(0xE0)));
    QVERIFY(!phone.store->VcfWriteList({someone, someone}, phone.progress.all()));
    QCOMPARE(phone.list->count(), 1);
    phone.checkAllIsWell();
    phone.test.dialogs.expect({.text = u"Es ist kein freier Speicherplatz vorhanden."_s,
                               .title = u"Kalmo - neuer Eintrag"_s,
                               .icon = Icon::Information});
    QVERIFY(!mayAddContact(*phone.store));
}

void tst_VcardStore::stopsBetweenTwo_data()
{
    QTest::addColumn<bool>("byBox");
    QTest::newRow("the cancel box") << true;
    QTest::newRow("the wish to stop") << false;
}

void tst_VcardStore::stopsBetweenTwo()
{
    QFETCH(bool, byBox);
    Contacts phone(u"SL450HX"_s);
    QVERIFY(phone.read());
    connect(phone.list.get(), &toolkit::ListRows::inserted, this, [&] {
        phone.progress.cancel.checked = byBox;
        if (!byBox)
            phone.client->askToStop();
    });
    VcardStore::Report report;
    QVERIFY(!phone.store->VcfWriteList({someone, someone}, phone.progress.all(), &report));
    QCOMPARE(report.luids.size(), 1);
    phone.checkAllIsWell();
}

void tst_VcardStore::ownerGoes_data()
{
    QTest::addColumn<double>("after"); // seconds
    for (const double after : {0.5, 1.5, 2.0, 2.5, 3.0, 3.5, 4.5})
        QTest::addRow("%.1f s", after) << after;
}

/// Window, list and store go in the middle of a write; the line is left clean all the same.
void tst_VcardStore::ownerGoes()
{
    QFETCH(double, after);
    Contacts phone(u"SL450HX"_s);
    phone.test.clock.after(after, [&] {
        phone.client->abandon();
        phone.client.reset();
        phone.list.reset();
        phone.store.reset();
    });
    VcardStore* const store = phone.store.get();
    store->VcfWriteList(std::vector<tVcfEntry>(3, someone), phone.progress.all());
    QVERIFY(!phone.store);
    QVERIFY(!phone.port.handset().isInDataMode());
    QCOMPARE(phone.line.mode(), link::LineMode::Text);
}

void tst_VcardStore::deletes_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<int>("counterReads");
    QTest::newRow("a phone that says its counter") << u"S68H"_s << 1;
    QTest::newRow("one that says nothing") << u"SL400H"_s << 3;
}

void tst_VcardStore::deletes()
{
    QFETCH(QString, model);
    Contacts phone(model);
    QVERIFY(phone.read());
    const int before = phone.list->count();
    QCOMPARE(phone.store->VcfDeleteSelected(phone.progress.all()), CommandResult::Refused);
    for (const int row : {0, 2, 3})
        phone.list->setSelected(row, true);
    const toolkit::Message question{.text = u"3 gewählte(n) Kontakt(e) wirklich löschen ?"_s,
                                    .title = u"Kalmo  -  Kontakt löschen"_s,
                                    .buttons = Buttons::YesNo,
                                    .icon = Icon::Question,
                                    .defaultButton = Answer::No};
    phone.test.dialogs.expect(question, Answer::No);
    QCOMPARE(phone.store->VcfDeleteSelected(phone.progress.all()), CommandResult::Refused);
    phone.test.dialogs.expect(question, Answer::Yes);
    phone.progress.panel.texts.clear();
    QCOMPARE(phone.store->VcfDeleteSelected(phone.progress.all()), CommandResult::Done);
    QTEST(static_cast<int>(phone.progress.panel.texts.count(u"Empfange cc.log..."_s)), "counterReads");
    QCOMPARE(phone.list->count(), before - 3);
    phone.checkAllIsWell();

    phone.list->selectAll();
    phone.setFaults({.refuseAt = 10});
    phone.test.dialogs.expect({.text = u"%1 gewählte(n) Kontakt(e) wirklich löschen ?"_s.arg(before - 3),
                               .title = question.title,
                               .buttons = Buttons::YesNo,
                               .icon = Icon::Question,
                               .defaultButton = Answer::No},
                              Answer::Yes);
    phone.test.dialogs.expect(errorBox(obex::GetFriedlyErrMsg(0xC3)));
    phone.test.dialogs.expect(
        {.text = u"Beim Löschen ist ein Fehler aufgetreten. Bitte lesen Sie das Telefonbuch "
                 u"erneut ein, um Inkonsistenzen zu vermeiden."_s,
         .icon = Icon::Information});
    QCOMPARE(phone.store->VcfDeleteSelected(phone.progress.all()), CommandResult::Failed);
    QCOMPARE(phone.list->count(), 0);
    QCOMPARE(phone.labels(), u"?/?"_s);
    QVERIFY(phone.read());
    phone.checkAllIsWell();
    QVERIFY(phone.list->count() > 0);
}

void tst_VcardStore::refresh()
{
    Contacts phone(u"SL78H"_s);
    QStringList shown;
    const auto dialog = [&](const QString& answer) { shown.append(answer); };
    QCOMPARE(refreshContacts(*phone.store, phone.progress.all(), dialog), CommandResult::Done);
    QVERIFY(shown.isEmpty());
    QVERIFY(SetAreaCodes(phone.line, nullptr, {u"0"_s, u"0"_s, u"0"_s, u"0"_s}, true));
    QVERIFY(phone.store->VcfWriteList({{.lastName = u"x"_s, .work = u"f0521"_s}}, phone.progress.all()));
    phone.test.dialogs.expect(
        {.text = u"Mindestens ein Eintrag im Telefonbuch scheint vom Telefon mit einer "
                 u"fehlerhaften (Vorwahl-)Nummer empfangen worden zu sein.\nMeistens sind "
                 u"falsch eingestellte Vorwahl-Einstellungen die Ursache.\n\nMöchten Sie die "
                 u"Vorwahl-Einstellungen bearbeiten?"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question},
        Answer::Yes);
    QCOMPARE(refreshContacts(*phone.store, phone.progress.all(), dialog), CommandResult::Done);
    QCOMPARE(shown, QStringList({u"0,0,0,0"_s, u"0,0,0,0"_s}));
    phone.checkAllIsWell();
}

void tst_VcardStore::organizer_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("appointments") << int(KindAppointment);
    QTest::newRow("notes") << int(KindNote);
}

void tst_VcardStore::organizer()
{
    QFETCH(int, kind);
    Contacts phone(u"SL37"_s);
    const toolkit::Progress progress = phone.progress.all();
    clsMmc& client = *phone.client;
    const handset::IrmcStore& held =
        phone.port.handset().phone().irmc[kind == KindNote ? handset::NoteStore : handset::CalendarStore];
    QString text;
    tVcfInfo info;
    QVERIFY(client.Online(progress) && VcxRead(client, kind, text, progress));
    QVERIFY(text.startsWith(kind == KindNote ? u"BEGIN:VNOTE" : u"BEGIN:VCALENDAR"));
    QVERIFY(VcxGetInfo(client, kind, info, progress));
    QCOMPARE(info.intBelegt, static_cast<qint16>(held.items().size()));
    qint32 counter = 0;
    QString luid;
    QVERIFY(client.connect(progress, Target::IrMC) &&
            (kind == KindNote ? client.CDluidNT() : client.CDluidCAL()));
    QVERIFY(VcfGetCc(client, counter, progress));
    const OrganizerItem item{held.text(held.items().front(), handset::CardText::Raw), {}};
    QCOMPARE(VcxWrite(client, kind, item, counter, luid, progress), ItemResult::Written);
    QCOMPARE(counter, held.counter());
    QVERIFY(held.find(luid));
    QVERIFY(VcxDel(client, kind, luid, counter, progress));
    QVERIFY(!held.find(luid));
    QVERIFY(client.Offline(progress));
}

QTEST_GUILESS_MAIN(tst_VcardStore)
#include "tst_VcardStore.moc"
