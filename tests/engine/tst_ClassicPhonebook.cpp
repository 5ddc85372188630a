// The phonebook of classic handsets: its bytes on the wire, its pauses, and what is known of the phone
// afterwards.

#include "phonedata/ClassicPhonebook.h"
#include "support/ClassicPhone.h"
#include "support/TestProgram.h"

using namespace kalmo::phonedata;

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
    /// An erase is done only if the store was closed after it too.
    void erases()
    {
        const Rows<bool, bool> rows{
            {"done", true, true}, {"not erased", false, true}, {"not closed", true, false}};
        rows.each([](const auto& isErased, const auto& isClosed) {
            ClassicPhone phone(2);
            isErased ? phone.script.expect(eraseStore) : phone.script.refuse(eraseStore);
            isClosed ? phone.script.expect("AT\r") : phone.script.refuse("AT\r");
            QCOMPARE(EraseStore(phone.line, Store::Phonebook, phone.progress.all()), isErased && isClosed);
        });
    }

    void lengths()
    {
        const Rows<Store, QByteArray, bool> rows{
            {"no date", Store::Phonebook, "^WSRE: 4,Anna,3,110,0,\r\n", true},
            {"date and VIP", Store::Phonebook, "^WSRE: 4,Anna,3,110,11,00122408303,1,5\r\n", true},
            {"no name", Store::Phonebook, "^WSRE: ,,3,110,0,\r\n", true},
            {"comma in the name", Store::Phonebook, "^WSRE: 3,A,B,3,110,0,\r\n", true},
            {"byte of the prefix lost", Store::Phonebook, "WSRE: 4,Anna,3,110,0,\r\n", false},
            {"byte of a length lost", Store::Phonebook, "^WSRE: ,Anna,3,110,0,\r\n", false},
            {"byte of the name lost", Store::Phonebook, "^WSRE: 4,Ann,3,110,0,\r\n", false},
            {"byte of a provider's number lost", Store::Providers, "^WSRE: 4,Call,5,0103\r\n", false},
            {"length beyond all numbers", Store::Providers, "^WSRE: 99999999999,Call,5,01013\r\n", false},
        };
        rows.each([&](const auto& store, const auto& reply, const auto& addUp) {
            QCOMPARE(lengthsAddUp(reply, store), addUp);
        });
    }

    void reply()
    {
        const Rows<int, QByteArray, QString> rows{
            {"name and number", 2, "^WSRE: 5,Meier,5,12345,0,\r\n", u"Meier|12345|||||"_s},
            {"no name", 2, "^WSRE: ,,5,12345,0,\r\n", u"Ohne Name|12345|||||"_s},
            {"comma and quote in the name", 3, "^WSRE: 7,A,\"B\",C,3,110,0,\r\n", u"A,\"B\",C|110|||||"_s},
            {"date, built-in melody", 2, "^WSRE: 4,Anna,3,110,11,00122408303,\r\n",
             u"Anna|110|24.12  08:30|Melodie 3|||"_s},
            {"date, silent", 3, "^WSRE: 4,Anna,3,110,11,0012240830S\r\n",
             u"Anna|110|24.12  08:30|Optisch|||"_s},
            {"code 0 is the tenth", 4, "^WSRE: 4,Anna,3,110,11,00122408300\r\n",
             u"Anna|110|24.12  08:30|Melodie 10|||"_s},
            {"own melody", 2, "^WSRE: 4,Anna,3,110,12,001224083033\r\n",
             u"Anna|110|24.12  08:30|Walzer|||"_s},
            {"unknown melody", 2, "^WSRE: 4,Anna,3,110,12,001224083077\r\n",
             u"Anna|110|24.12  08:30|Melodie 1|||"_s},
            {"VIP without date", 2, "^WSRE: 4,Anna,3,110,0,,1,5\r\n", u"Anna|110|||Ja|Melodie 5|"_s},
            {"length beyond all numbers", 2, "^WSRE: 99999999999999999999,Anna\r\n", u"Anna||||||"_s},
        };
        rows.each([&](const auto& phoneType, const auto& reply, const auto& entry) {
            TestContext test;
            QCOMPARE(inWords(parsePhonebookReply(reply, phoneType, ownMelodies(), test.log)), entry);
        });
    }

    void writeCommand()
    {
        const auto dated = [](const QString& sound) {
            return ClassicEntry{
                .name = u"Anna"_s, .number = u"110"_s, .date = u"24.12  08:30"_s, .dateSound = sound};
        };
        const ClassicEntry vip{
            .name = u"Anna"_s, .number = u"110"_s, .vip = u"Ja"_s, .vipSound = u"Walzer"_s};
        const Rows<int, ClassicEntry, QByteArray> rows{
            {"character that the code page lacks", 2, ClassicEntry{.name = u"Ł😀"_s, .number = u"1"_s},
             "AT^WSWE=2,??,1,1,0,\r\n"},
            {"date, own melody", 4, dated(u"Walzer"_s), "AT^WSWE=4,Anna,3,110,12,001224083033\r\n"},
            {"date, melody that is gone", 3, dated(u"Tango"_s), "AT^WSWE=4,Anna,3,110,10,0012240830\r\n"},
            {"date of the oldest family", 1, dated(u"Melodie 10"_s), "AT^WSWE=4,Anna,3,110,9,122408309\r\n"},
            {"VIP", 3, vip, "AT^WSWE=4,Anna,3,110,0,,1,33\r\n"},
            {"oldest family has no VIP", 1, vip, "AT^WSWE=4,Anna,3,110,0,\r\n"},
        };
        rows.each([&](const auto& phoneType, const auto& entry, const auto& command) {
            QCOMPARE(phonebookWriteCommand(entry, phoneType, ownMelodies()), command);
        });
        // A phone gives it back in that form, but without the length of an empty name.
        QCOMPARE(replyFor("AT^WSWE=4,Anna,3,110,0,\r\n"), QByteArray("^WSRE: 4,Anna,3,110,0,\r\n"));
        QCOMPARE(replyFor("AT^WSWE=0,,3,110,0,\r\n"), QByteArray("^WSRE: ,,3,110,0,\r\n"));
    }

    /// An entry goes back exactly as it came, whatever the list can show of it.
    void exactCommand()
    {
        // the last two: if the reminder, and if the VIP call, has a melody without a name
        const Rows<int, QByteArray, QByteArray, bool, bool> rows{
            {"melody without a name", 2, "^WSRE: 4,Anna,3,110,12,001224083077,0,\r\n",
             "AT^WSWE=4,Anna,3,110,12,001224083077\r\n", true, false},
            {"own melody", 2, "^WSRE: 4,Anna,3,110,12,001224083033\r\n",
             "AT^WSWE=4,Anna,3,110,12,001224083033\r\n", false, false},
            {"the tenth in its other spelling", 4, "^WSRE: 4,Anna,3,110,11,00122408300\r\n",
             "AT^WSWE=4,Anna,3,110,11,00122408300\r\n", false, false},
            {"VIP without a name", 3, "^WSRE: ,,3,110,0,,1,77\r\n", "AT^WSWE=9,Ohne Name,3,110,0,,1,77\r\n",
             false, true},
            {"oldest family", 1, "^WSRE: 4,Anna,3,110,9,122408303\r\n",
             "AT^WSWE=4,Anna,3,110,9,122408303\r\n", false, false},
        };
        rows.each([&](const auto& phoneType, const auto& reply, const auto& command, const auto& reminder,
                      const auto& vip) {
            QCOMPARE(phonebookCommandFromReply(reply, phoneType), command);
            const UnnamedSounds found = unnamedSounds(reply, phoneType, ownMelodies());
            QCOMPARE(found.reminder, reminder);
            QCOMPARE(found.vip, vip);
        });
    }

    void readKeepsItsPauses()
    {
        const Rows<int, QByteArray> rows{
            {"2", 2, "AT\r"},
            {"4", 4, "AT^WSSL\r"},
        };
        rows.each([&](const auto& phoneType, const auto& close) {
            ClassicPhone phone(phoneType);
            phone.fill(std::vector<ClassicEntry>{{.name = u"old"_s}});
            phone.list->sortBy(NameColumn, Qt::DescendingOrder);
            phone.script.expect(openStore)
                .expect(readNext, "^WSRE: 4,Anna,3,110,0,")
                .expect(readNext, "^WSRE: 4,Bert,3,112,0,")
                .expect(readNext)
                .expect(close);

            QVERIFY(ReadPB_TB(phone.job()));

            const QString closed = QString::fromLatin1(close.trimmed());
            QCOMPARE(phone.script.timeline(),
                     (QStringList{u"0.00 AT^WSSL=\"TB\""_s, u"0.52 AT^WSRE"_s, u"0.64 AT^WSRE"_s,
                                  u"0.76 AT^WSRE"_s, u"0.88 "_s + closed}));
            QCOMPARE(QString::number(phone.test.clock.elapsed(), 'f', 1),
                     u"4.4"_s); // closing waits 3.5 s in silence
            // The list has its own order. What is known of the phone has the phone's, as its replies have.
            QCOMPARE(classicEntries(*phone.list), (std::vector{annaAndBert[1], annaAndBert[0]}));
            QCOMPARE(phone.memory.phonebook.entries, annaAndBert);
            QCOMPARE(phone.memory.phonebook.certainty, Certainty::Known);
            QCOMPARE(phone.memory.phonebook.replies,
                     (QByteArrayList{"^WSRE: 4,Anna,3,110,0,\r\n", "^WSRE: 4,Bert,3,112,0,\r\n"}));
            QCOMPARE(phone.window.states, (QList<bool>{true, false}));
        });
    }

    void failedReadLeavesNothing()
    {
        const QByteArray anna = "^WSRE: 4,Anna,3,110,0,";
        Rows<bool, Prepare> rows;
        rows.add("an entry is refused", true,
                 [&](ClassicPhone& phone) { phone.script.expect(readNext, anna).refuse(readNext); });
        rows.add("the user stops it", true, [&](ClassicPhone& phone) {
            phone.script.expect(readNext, anna).then([&phone] { phone.progress.cancel.checked = true; });
        });
        rows.add("the store has no end", true, [&](ClassicPhone& phone) {
            for (int entry = 0; entry <= mostEntries; ++entry)
                phone.script.expect(readNext, anna);
        });
        rows.add("the store does not open", false, [](ClassicPhone&) {});
        rows.each([&](const auto& opens, const auto& prepare) {
            ClassicPhone phone(2);
            phone.memory.phonebook.becomes(annaAndBert, Certainty::Known);
            phone.fill(annaAndBert);
            if (opens) {
                phone.script.expect(openStore);
                prepare(phone);
                phone.script.expect("AT\r");
            } else {
                phone.script.refuse(openStore);
            }
            QVERIFY(!ReadPB_TB(phone.job()));

            // A store that did not open left everything as it was, the knowledge of it too.
            QCOMPARE(classicEntries(*phone.list), opens ? std::vector<ClassicEntry>() : annaAndBert);
            QCOMPARE(phone.memory.phonebook.certainty, opens ? Certainty::Unknown : Certainty::Known);
            QCOMPARE(phone.window.states, (QList<bool>{true, false}));
        });
    }

    void disturbedLineMakesDoubtful()
    {
        Rows<Prepare> rows;
        rows.add("a command had to be repeated", [](ClassicPhone& phone) {
            phone.script.stumble(readNext, "^WSRE: 4,Bert,3,112,0,").expect(readNext);
        });
        rows.add("a byte got lost in a reply", [](ClassicPhone& phone) {
            phone.script.expect(readNext, "^WSRE: 4,Brt,3,112,0,").expect(readNext);
        });
        rows.add("an own melody, and no list of melodies", [](ClassicPhone& phone) {
            phone.script.expect(readNext, "^WSRE: 4,Bert,3,112,12,001224083033").expect(readNext);
        });
        rows.add("an earlier command is answered",
                 [](ClassicPhone& phone) { phone.port.expect(readNext, "ATZ\r\r\nOK\r\n"); });

        rows.each([&](const auto& prepare) {
            ClassicPhone phone(2);
            phone.script.expect(openStore);
            prepare(phone);
            phone.script.expect("AT\r");
            QVERIFY(ReadPB_TB(phone.job()));
            QCOMPARE(phone.memory.phonebook.certainty, Certainty::Doubtful);
        });
    }

    void writeKeepsItsPauses()
    {
        ClassicPhone phone(4);
        phone.fill(annaAndBert);
        phone.script.expectAll({eraseStore, "AT^WSSL\r", openStore, annaWritten, bertWritten, "AT^WSSL\r"});

        QVERIFY(WritePB_TB(phone.job()));

        QCOMPARE(phone.script.timeline(),
                 (QStringList{u"0.50 AT^WSEL=\"TB\""_s, u"0.52 AT^WSSL"_s, u"4.02 AT^WSSL=\"TB\""_s,
                              u"5.04 AT^WSWE=4,Anna,3,110,0,"_s, u"5.26 AT^WSWE=4,Bert,3,112,0,"_s,
                              u"6.48 AT^WSSL"_s}));
        QCOMPARE(phone.memory.phonebook.entries, annaAndBert);
        QCOMPARE(phone.memory.phonebook.certainty, Certainty::Known);
    }

    void failedWriteSaysWhatIsThere()
    {
        const auto beginWriting = [](ClassicPhone& phone) {
            phone.test.sy.PhoneType = 4;
            phone.script.expectAll({eraseStore, "AT^WSSL\r", openStore, annaWritten});
        };
        Rows<Certainty, int, Prepare> rows;
        rows.add("the store does not close after the erase", Certainty::Unknown, 0,
                 [](ClassicPhone& phone) { phone.script.expect(eraseStore).refuse("AT^WSSL\r"); });
        rows.add("the store does not open again", Certainty::Known, 0, [](ClassicPhone& phone) {
            phone.script.expect(eraseStore).expect("AT^WSSL\r").refuse(openStore);
        });
        rows.add("the dummy entry can't be erased", Certainty::Unknown, 0, [](ClassicPhone& phone) {
            phone.script.expectAll({eraseStore, "AT^WSSL\r", openStore});
            phone.script.expect("AT^WSWE=1,A,1,1,0,\r")
                .expect("AT^WSSL\r")
                .refuse(eraseStore)
                .expect("AT^WSSL\r");
        });
        rows.add("the second entry is refused", Certainty::Known, 1, [=](ClassicPhone& phone) {
            beginWriting(phone);
            phone.script.refuse(bertWritten).expect("AT^WSSL\r");
        });
        rows.add("the second entry gets no answer", Certainty::Doubtful, 1, [=](ClassicPhone& phone) {
            beginWriting(phone);
            phone.script.ignore(bertWritten).expect("AT^WSSL\r");
        });
        rows.add("the user stops after the first", Certainty::Known, 1, [=](ClassicPhone& phone) {
            beginWriting(phone);
            phone.script.then([&phone] { phone.progress.cancel.checked = true; }).expect("AT^WSSL\r");
        });

        rows.each([&](const auto& certainty, const auto& entries, const auto& prepare) {
            ClassicPhone phone(3);
            phone.memory.phonebook.becomes(annaAndBert, Certainty::Known);
            phone.fill(annaAndBert);
            phone.fill(std::vector{annaAndBert.front()});
            prepare(phone);

            QVERIFY(!WritePB_TB(phone.job()));

            QCOMPARE(phone.memory.phonebook.certainty, certainty);
            QCOMPARE(static_cast<int>(phone.memory.phonebook.entries.size()), entries);
            QCOMPARE(phone.list->count(), 3);
            QVERIFY(!phone.progress.bar.visible);
            QCOMPARE(phone.window.states, (QList<bool>{true, false}));
        });
    }
};

KALMO_TEST(tst_ClassicPhonebook)
#include "tst_ClassicPhonebook.moc"
