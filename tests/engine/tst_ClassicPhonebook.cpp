// The phonebook of classic handsets: its bytes on the wire, its pauses, and what is known of the phone
// afterwards.

#include "phonedata/ClassicPhonebook.h"
#include "support/ClassicPhone.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;

Q_DECLARE_METATYPE(kalmo::phonedata::ClassicEntry)

namespace {

SoundList ownMelodies()
{
    SoundList sounds;
    sounds.add({u"Walzer"_s, u"MID"_s, 1200, 33});
    return sounds;
}

QString inWords(const ClassicEntry& entry)
{
    return QStringList{entry.name, entry.number,   entry.date,       entry.dateSound,
                       entry.vip,  entry.vipSound, entry.languageTag}
        .join(u'|');
}

using Prepare = std::function<void(ClassicPhone&)>;

const QByteArray openStore = "AT^WSSL=\"TB\"\r";
const QByteArray eraseStore = "AT^WSEL=\"TB\"\r";
const QByteArray readNext = "AT^WSRE\r";
const QByteArray annaWritten = "AT^WSWE=4,Anna,3,110,0,\r\n";
const QByteArray bertWritten = "AT^WSWE=4,Bert,3,112,0,\r\n";
const std::vector<ClassicEntry> annaAndBert = {{.name = u"Anna"_s, .number = u"110"_s},
                                               {.name = u"Bert"_s, .number = u"112"_s}};

} // namespace

class tst_ClassicPhonebook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reply_data();
    void reply();
    void writeCommand_data();
    void writeCommand();
    void readKeepsItsPauses_data();
    void readKeepsItsPauses();
    void failedReadLeavesNothing_data();
    void failedReadLeavesNothing();
    void disturbedLineMakesDoubtful_data();
    void disturbedLineMakesDoubtful();
    void writeKeepsItsPauses();
    void preparation_data();
    void preparation();
    void failedWriteSaysWhatIsThere_data();
    void failedWriteSaysWhatIsThere();
    void reportsToTheUser();
};

void tst_ClassicPhonebook::reply_data()
{
    QTest::addColumn<int>("phoneType");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("entry");

    QTest::newRow("name and number") << 2 << QByteArray("^WSRE: 5,Meier,5,12345,0,\r\n")
                                     << u"Meier|12345|||||"_s;
    QTest::newRow("no name") << 2 << QByteArray("^WSRE: ,,5,12345,0,\r\n") << u"Ohne Name|12345|||||"_s;
    QTest::newRow("comma and quote in the name")
        << 3 << QByteArray("^WSRE: 7,A,\"B\",C,3,110,0,\r\n") << u"A,\"B\",C|110|||||"_s;
    QTest::newRow("umlaut") << 4 << QByteArray("^WSRE:4,J\xF6rg,3,110,0,\r\n") << u"Jörg|110|||||"_s;
    QTest::newRow("prefix within the name goes")
        << 2 << QByteArray("^WSRE: 4,Anna^WSRE:,3,110,0,\r\n") << u"Anna|110|||||"_s;
    QTest::newRow("date, built-in melody") << 2 << QByteArray("^WSRE: 4,Anna,3,110,11,00122408303,\r\n")
                                           << u"Anna|110|24.12  08:30|Melodie 3|||"_s;
    QTest::newRow("date, silent") << 3 << QByteArray("^WSRE: 4,Anna,3,110,11,0012240830S\r\n")
                                  << u"Anna|110|24.12  08:30|Optisch|||"_s;
    QTest::newRow("code 0 is the tenth") << 4 << QByteArray("^WSRE: 4,Anna,3,110,11,00122408300\r\n")
                                         << u"Anna|110|24.12  08:30|Melodie 10|||"_s;
    QTest::newRow("own melody") << 2 << QByteArray("^WSRE: 4,Anna,3,110,12,001224083033\r\n")
                                << u"Anna|110|24.12  08:30|Walzer|||"_s;
    QTest::newRow("unknown melody") << 2 << QByteArray("^WSRE: 4,Anna,3,110,12,001224083077\r\n")
                                    << u"Anna|110|24.12  08:30|Melodie 1|||"_s;
    QTest::newRow("VIP without date")
        << 2 << QByteArray("^WSRE: 4,Anna,3,110,0,,1,5\r\n") << u"Anna|110|||Ja|Melodie 5|"_s;
    QTest::newRow("VIP sound without mark")
        << 2 << QByteArray("^WSRE: 4,Anna,3,110,0,,0,S\r\n") << u"Anna|110||||Optisch|"_s;
    QTest::newRow("three parts are no VIP")
        << 2 << QByteArray("^WSRE: 4,Anna,3,110,0,,1\r\n") << u"Anna|110|||||"_s;
    QTest::newRow("oldest family, date")
        << 1 << QByteArray("^WSRE: 4,Anna,3,110,9,122408303\r\n") << u"Anna|110|24.12  08:30|Melodie 3|||"_s;
    QTest::newRow("oldest family, code 0")
        << 1 << QByteArray("^WSRE: 4,Anna,3,110,9,122408300\r\n") << u"Anna|110|24.12  08:30|Melodie 10|||"_s;
    QTest::newRow("oldest family, silent")
        << 1 << QByteArray("^WSRE: 4,Anna,3,110,9,12240830S\r\n") << u"Anna|110|24.12  08:30|Optisch|||"_s;
    QTest::newRow("oldest family, no date")
        << 1 << QByteArray("^WSRE: 4,Anna,3,110,0,\r\n") << u"Anna|110|||||"_s;
    QTest::newRow("oldest family, end behind the length")
        << 1 << QByteArray("^WSRE: 4,Anna,3,110,0\r\n") << u"Anna|110|||||"_s;
    QTest::newRow("length beyond the end") << 2 << QByteArray("^WSRE: 99,Anna\r\n") << u"Anna||||||"_s;
    QTest::newRow("length beyond all numbers")
        << 2 << QByteArray("^WSRE: 99999999999999999999,Anna\r\n") << u"Anna||||||"_s;
    QTest::newRow("no field at all") << 2 << QByteArray("xyz\r\n") << u"Ohne Name||||||"_s;
}

void tst_ClassicPhonebook::reply()
{
    QFETCH(int, phoneType);
    QFETCH(QByteArray, reply);
    TestContext test;
    QTEST(inWords(parsePhonebookReply(reply, phoneType, ownMelodies(), test.log)), "entry");
}

void tst_ClassicPhonebook::writeCommand_data()
{
    QTest::addColumn<int>("phoneType");
    QTest::addColumn<ClassicEntry>("entry");
    QTest::addColumn<QByteArray>("command");
    const auto dated = [](const QString& sound) {
        return ClassicEntry{
            .name = u"Anna"_s, .number = u"110"_s, .date = u"24.12  08:30"_s, .dateSound = sound};
    };
    const ClassicEntry vip{.name = u"Anna"_s, .number = u"110"_s, .vip = u"Ja"_s, .vipSound = u"Walzer"_s};

    QTest::newRow("umlaut counts once") << 2 << ClassicEntry{.name = u"Jörg"_s, .number = u"+49*#"_s}
                                        << QByteArray("AT^WSWE=4,J\xF6rg,5,+49*#,0,\r\n");
    QTest::newRow("character that the code page lacks")
        << 2 << ClassicEntry{.name = u"Ł😀"_s, .number = u"1"_s} << QByteArray("AT^WSWE=2,??,1,1,0,\r\n");
    QTest::newRow("date") << 2 << dated(u"Melodie 10"_s)
                          << QByteArray("AT^WSWE=4,Anna,3,110,12,001224083010\r\n");
    QTest::newRow("date, own melody")
        << 4 << dated(u"Walzer"_s) << QByteArray("AT^WSWE=4,Anna,3,110,12,001224083033\r\n");
    QTest::newRow("date, melody that is gone")
        << 3 << dated(u"Tango"_s) << QByteArray("AT^WSWE=4,Anna,3,110,10,0012240830\r\n");
    QTest::newRow("date of the oldest family")
        << 1 << dated(u"Melodie 10"_s) << QByteArray("AT^WSWE=4,Anna,3,110,9,122408309\r\n");
    QTest::newRow("oldest family has no own melody")
        << 1 << dated(u"Walzer"_s) << QByteArray("AT^WSWE=4,Anna,3,110,8,12240830\r\n");
    QTest::newRow("silent") << 1 << dated(u"Optisch"_s) << QByteArray("AT^WSWE=4,Anna,3,110,9,12240830S\r\n");
    QTest::newRow("VIP") << 3 << vip << QByteArray("AT^WSWE=4,Anna,3,110,0,,1,33\r\n");
    QTest::newRow("oldest family has no VIP") << 1 << vip << QByteArray("AT^WSWE=4,Anna,3,110,0,\r\n");
}

void tst_ClassicPhonebook::writeCommand()
{
    QFETCH(int, phoneType);
    QFETCH(ClassicEntry, entry);
    QTEST(phonebookWriteCommand(entry, phoneType, ownMelodies()), "command");
}

void tst_ClassicPhonebook::readKeepsItsPauses_data()
{
    QTest::addColumn<int>("phoneType");
    QTest::addColumn<QByteArray>("close");
    QTest::newRow("1") << 1 << QByteArray("AT\r");
    QTest::newRow("2") << 2 << QByteArray("AT\r");
    QTest::newRow("3") << 3 << QByteArray("AT^WSSL\r");
    QTest::newRow("4") << 4 << QByteArray("AT^WSSL\r");
}

void tst_ClassicPhonebook::readKeepsItsPauses()
{
    QFETCH(int, phoneType);
    QFETCH(QByteArray, close);
    ClassicPhone phone(phoneType);
    phone.fill(std::vector<ClassicEntry>{{.name = u"old"_s}});
    phone.script.expect(openStore)
        .expect(readNext, "^WSRE: 4,Anna,3,110,0,")
        .expect(readNext, "^WSRE: 4,Bert,3,112,0,")
        .expect(readNext)
        .expect(close);

    QVERIFY(ReadPB_TB(phone.job()));

    const QString closed = QString::fromLatin1(close.trimmed());
    QCOMPARE(phone.script.timeline(),
             (QStringList{u"0.00 AT^WSSL=\"TB\""_s, u"0.52 AT^WSRE"_s, u"0.64 AT^WSRE"_s, u"0.76 AT^WSRE"_s,
                          u"0.88 "_s + closed}));
    QCOMPARE(QString::number(phone.test.clock.elapsed(), 'f', 1), u"4.4"_s); // closing waits 3.5 s in silence
    QCOMPARE(classicEntries(*phone.list), annaAndBert);
    QCOMPARE(phone.memory.phonebook.entries, annaAndBert);
    QCOMPARE(phone.memory.phonebook.certainty, Certainty::Known);
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
}

void tst_ClassicPhonebook::failedReadLeavesNothing_data()
{
    QTest::addColumn<bool>("opens");
    QTest::addColumn<bool>("isCancelled");
    QTest::newRow("an entry is refused") << true << false;
    QTest::newRow("the user stops it") << true << true;
    QTest::newRow("the store does not open") << false << false;
}

void tst_ClassicPhonebook::failedReadLeavesNothing()
{
    QFETCH(bool, opens);
    QFETCH(bool, isCancelled);
    ClassicPhone phone(2);
    phone.memory.phonebook.becomes(annaAndBert, Certainty::Known);
    phone.fill(annaAndBert);
    if (!opens) {
        phone.script.refuse(openStore);
    } else {
        phone.script.expect(openStore).expect(readNext, "^WSRE: 4,Anna,3,110,0,");
        if (isCancelled)
            phone.script.then([&] { phone.progress.cancel.checked = true; });
        else
            phone.script.refuse(readNext);
        phone.script.expect("AT\r");
    }
    QVERIFY(!ReadPB_TB(phone.job()));

    // A store that did not open left everything as it was, the knowledge of it too.
    QCOMPARE(classicEntries(*phone.list), opens ? std::vector<ClassicEntry>() : annaAndBert);
    QCOMPARE(phone.memory.phonebook.certainty, opens ? Certainty::Unknown : Certainty::Known);
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
}

void tst_ClassicPhonebook::disturbedLineMakesDoubtful_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::newRow("a command had to be repeated") << Prepare([](ClassicPhone& phone) {
        phone.script.stumble(readNext, "^WSRE: 4,Bert,3,112,0,").expect(readNext);
    });
    QTest::newRow("a byte got lost in a reply") << Prepare(
        [](ClassicPhone& phone) { phone.script.expect(readNext, "^WSRE: 4,Brt,3,112,0,").expect(readNext); });
    QTest::newRow("an earlier command is answered")
        << Prepare([](ClassicPhone& phone) { phone.port.expect(readNext, "ATZ\r\r\nOK\r\n"); });
}

void tst_ClassicPhonebook::disturbedLineMakesDoubtful()
{
    QFETCH(Prepare, prepare);
    ClassicPhone phone(2);
    phone.script.expect(openStore);
    prepare(phone);
    phone.script.expect("AT\r");
    QVERIFY(ReadPB_TB(phone.job()));
    QCOMPARE(phone.memory.phonebook.certainty, Certainty::Doubtful);
}

void tst_ClassicPhonebook::writeKeepsItsPauses()
{
    ClassicPhone phone(4);
    phone.fill(annaAndBert);
    phone.script.expect(eraseStore)
        .expect("AT^WSSL\r")
        .expect(openStore)
        .expect(annaWritten)
        .expect(bertWritten)
        .expect("AT^WSSL\r");

    QVERIFY(WritePB_TB(phone.job()));

    QCOMPARE(phone.script.timeline(),
             (QStringList{u"0.50 AT^WSEL=\"TB\""_s, u"0.52 AT^WSSL"_s, u"4.02 AT^WSSL=\"TB\""_s,
                          u"5.04 AT^WSWE=4,Anna,3,110,0,"_s, u"5.26 AT^WSWE=4,Bert,3,112,0,"_s,
                          u"6.48 AT^WSSL"_s}));
    QCOMPARE(phone.memory.phonebook.entries, annaAndBert);
    QCOMPARE(phone.memory.phonebook.certainty, Certainty::Known);
}

void tst_ClassicPhonebook::preparation_data()
{
    QTest::addColumn<int>("phoneType");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("prepares");
    QTest::newRow("family 3, two entries") << 3 << 2 << false;
    QTest::newRow("family 3, three entries") << 3 << 3 << true;
    QTest::newRow("family 4, three entries") << 4 << 3 << false;
    QTest::newRow("no entry") << 3 << 0 << false;
}

void tst_ClassicPhonebook::preparation()
{
    QFETCH(int, phoneType);
    QFETCH(int, count);
    QFETCH(bool, prepares);
    ClassicPhone phone(phoneType);
    const QByteArray close = "AT^WSSL\r";
    phone.script.expect(eraseStore).expect(close).expect(openStore);
    if (prepares) // the dummy's answer does not matter
        phone.script.refuse("AT^WSWE=1,A,1,1,0,\r")
            .expect(close)
            .expect(eraseStore)
            .expect(close)
            .expect(openStore);
    for (int index = 0; index < count; ++index) {
        phone.fill(std::vector{annaAndBert.front()});
        phone.script.expect(annaWritten);
    }
    phone.script.expect(close);
    QVERIFY(WritePB_TB(phone.job()));
}

void tst_ClassicPhonebook::failedWriteSaysWhatIsThere_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<Certainty>("certainty");
    QTest::addColumn<int>("entries");

    QTest::newRow("the erase is refused")
        << Prepare([](ClassicPhone& phone) { phone.script.refuse(eraseStore).expect("AT^WSSL\r"); })
        << Certainty::Unknown << 0;
    QTest::newRow("the store does not close after the erase")
        << Prepare([](ClassicPhone& phone) { phone.script.expect(eraseStore).refuse("AT^WSSL\r"); })
        << Certainty::Unknown << 0;
    QTest::newRow("the store does not open again") << Prepare([](ClassicPhone& phone) {
        phone.script.expect(eraseStore).expect("AT^WSSL\r").refuse(openStore);
    }) << Certainty::Known << 0;
    QTest::newRow("the dummy entry can't be erased") << Prepare([](ClassicPhone& phone) {
        phone.script.expect(eraseStore).expect("AT^WSSL\r").expect(openStore);
        phone.script.expect("AT^WSWE=1,A,1,1,0,\r")
            .expect("AT^WSSL\r")
            .refuse(eraseStore)
            .expect("AT^WSSL\r");
    }) << Certainty::Unknown << 0;
    const auto beginWriting = [](ClassicPhone& phone) {
        phone.test.sy.PhoneType = 4;
        phone.script.expect(eraseStore).expect("AT^WSSL\r").expect(openStore).expect(annaWritten);
    };
    QTest::newRow("the second entry is refused") << Prepare([=](ClassicPhone& phone) {
        beginWriting(phone);
        phone.script.refuse(bertWritten).expect("AT^WSSL\r");
    }) << Certainty::Known << 1;
    QTest::newRow("the user stops after the first") << Prepare([=](ClassicPhone& phone) {
        beginWriting(phone);
        phone.script.then([&phone] { phone.progress.cancel.checked = true; }).expect("AT^WSSL\r");
    }) << Certainty::Known << 1;
}

void tst_ClassicPhonebook::failedWriteSaysWhatIsThere()
{
    QFETCH(Prepare, prepare);
    ClassicPhone phone(3);
    phone.memory.phonebook.becomes(annaAndBert, Certainty::Known);
    phone.fill(annaAndBert);
    phone.fill(std::vector{annaAndBert.front()});
    prepare(phone);

    QVERIFY(!WritePB_TB(phone.job()));

    QTEST(phone.memory.phonebook.certainty, "certainty");
    QTEST(static_cast<int>(phone.memory.phonebook.entries.size()), "entries");
    QCOMPARE(phone.list->count(), 3);
    QVERIFY(!phone.progress.bar.visible);
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
}

void tst_ClassicPhonebook::reportsToTheUser()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    ClassicPhone phone(4);
    phone.fill(annaAndBert);
    phone.script.expect(eraseStore)
        .expect("AT^WSSL\r")
        .expect(openStore)
        .expect(annaWritten)
        .expect(bertWritten)
        .expect("AT^WSSL\r");
    QVERIFY(WritePB_TB(phone.job()));
    QLocale::setDefault(QLocale::c());

    QCOMPARE(phone.progress.panel.texts,
             (QStringList{u"Lösche Telefonbuch...(Dauer: bis zu 180 Sekunden)"_s,
                          u"Schließe Telefonbuch...(Dauer: 3,5 Sekunden)"_s, u"Fertig"_s,
                          u"Öffne Telefonbuch...(Dauer: 3 Sekunden)"_s, u"Fertig"_s,
                          u"Schreibe Telefonbuch...(1 von 2)"_s, u"Schreibe Telefonbuch...(2 von 2)"_s,
                          u"Schließe Telefonbuch...(Dauer: 3,5 Sekunden)"_s, u"Fertig"_s}));
    QCOMPARE(phone.progress.bar.steps, (QStringList{u"0/2"_s, u"1/2"_s, u"2/2"_s, u"hidden"_s}));
    QCOMPARE(phone.list->current(), 1); // the row that is being written is selected
}

QTEST_GUILESS_MAIN(tst_ClassicPhonebook)
#include "tst_ClassicPhonebook.moc"
