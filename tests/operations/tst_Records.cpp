// Records of former states: complete or absent at any moment, one folder for each phone, a hundred at most.

#include "operations/Records.h"
#include "support/HandsetPort.h"
#include "support/SmallDisk.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

using namespace kalmo::operations;

namespace {

const PhoneIdentity phone{u"SL450HX"_s, u"02979 0123456"_s};
const std::vector<RecordedPart> parts{{u"pb.vcf"_s, QByteArray("BEGIN:VCARD\r\n\0\xFF\n{}\n", 18)},
                                      {u"empty"_s, {}},
                                      {u"Bilder/Ä.bmp"_s, QByteArray(70000, '\n')}};

QString begun(Records& records, RecordCause cause = RecordCause::Write)
{
    return records.begin(RecordedList::Phonebook, cause, 3, parts).value_or(QString());
}

/// All of a record but its time.
QStringList inWords(const Record& record)
{
    QStringList words{record.id,           record.phone.model, record.phone.serial,
                      wordOf(record.list), record.cause,       QString::number(record.entries),
                      wordOf(record.state)};
    for (auto it = record.details.begin(); it != record.details.end(); ++it)
        words.append(it.key() + u'=' + it.value().toVariant().toString());
    for (const RecordedPart& part : record.before)
        words.append(u"%1:%2"_s.arg(part.name).arg(part.bytes.size()));
    return words;
}

QStringList ids(const Records& records)
{
    QStringList found;
    for (const Record& record : records.all())
        found.append(record.id);
    return found;
}

QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

class tst_Records : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordKeepsEveryByte()
    {
        TestContext test;
        Records records(test.context, phone);
        QCOMPARE(records.all().size(), 0u);
        const QString id = begun(records);
        const QString folder = test.storage + u"/Verlauf/SL450HX_02979_0123456"_s;
        QCOMPARE(records.folder(), folder);
        QCOMPARE(namesIn(folder), QStringList{u"1.record"_s});

        auto record = records.read(id);
        QVERIFY(record);
        QCOMPARE(record->before, parts);
        QCOMPARE(record->part(u"pb.vcf"_s)->bytes, parts[0].bytes);
        QVERIFY(!record->part(u"other"_s));
        QCOMPARE(record->time, test.clock.Now());
        QCOMPARE(inWords(*record),
                 (QStringList{u"1"_s, phone.model, phone.serial, u"phonebook"_s, u"write"_s, u"3"_s,
                              u"unknown"_s, u"pb.vcf:18"_s, u"empty:0"_s, u"Bilder/Ä.bmp:70000"_s}));

        QVERIFY(records.finish(id, State::Done, {{u"written"_s, 5}}));
        QCOMPARE(inWords(records.all().front()),
                 (QStringList{u"1"_s, phone.model, phone.serial, u"phonebook"_s, u"write"_s, u"3"_s,
                              u"done"_s, u"written=5"_s}));
        record = records.read(id);
        QCOMPARE(record->before, parts);
        QCOMPARE(namesIn(folder), QStringList{u"1.record"_s});
    }

    /// A kill leaves what was on the disk at that moment: nothing, a part of a temporary file, or all.
    void killedAtAnyMoment()
    {
        TestContext test;
        Records records(test.context, phone);
        const QByteArray whole =
            TestContext::contentOf(records.folder() + u'/' + begun(records) + u".record"_s);
        QVERIFY(whole.size() > 70000);
        for (const qsizetype length : {0, 1, 100, 400, 1000, 70000}) {
            const QString leftover = records.folder() + u"/2.record.aB3xYz"_s;
            test.makeFile(QDir(test.path({})).relativeFilePath(leftover), whole.first(length));
            QCOMPARE(ids(records), QStringList{u"1"_s});
            const QString next = begun(records);
            QVERIFY2(!QFile::exists(leftover), qPrintable(next));
            QCOMPARE(ids(records).front(), next);
            QFile::remove(records.folder() + u'/' + next + u".record"_s);
        }
    }

    void brokenFilesArePassedOver()
    {
        TestContext test;
        Records records(test.context, phone);
        for (int i = 0; i < 2; ++i)
            begun(records);
        const QByteArray whole = TestContext::contentOf(records.folder() + u"/2.record"_s);
        const auto swapped = [&whole](const char* from, const char* to) {
            return QByteArray(whole).replace(from, to);
        };
        const Rows<QByteArray, bool> rows{
            {"empty", {}, false},
            {"cut off in the parts", whole.chopped(1), false},
            {"bytes too many", whole + "x", false},
            {"other version", swapped("\"kalmoRecord\":1", "\"kalmoRecord\":2"), false},
            {"unknown list", swapped("\"phonebook\"", "\"photobook\""), false},
            {"no time", swapped("\"time\"", "\"tame\""), false},
            {"size beyond all numbers", swapped("\"size\":0", "\"size\":9e300"), false},
            {"of another number", swapped("\"id\":\"2\"", "\"id\":\"3\""), false},
            {"of another phone", swapped("02979 0123456", "02979-0123456"), false},
            {"as it was", whole, true},
        };
        rows.each([&](const auto& bytes, const auto& isListed) {
            test.makeFile(u"storage/Verlauf/SL450HX_02979_0123456/2.record"_s, bytes);
            QCOMPARE(ids(records), isListed ? (QStringList{u"2"_s, u"1"_s}) : QStringList{u"1"_s});
            QCOMPARE(records.read(u"2"_s).has_value(), isListed);
            QCOMPARE(records.finish(u"2"_s, State::Unknown), isListed);
        });
        // A changed byte shows only when the parts are read.
        test.makeFile(u"storage/Verlauf/SL450HX_02979_0123456/2.record"_s, whole.chopped(1) + "x");
        QCOMPARE(ids(records).size(), 2);
        QVERIFY(!records.read(u"2"_s));
        test.makeFile(u"storage/Verlauf/SL450HX_02979_0123456/2.record"_s, "broken");
        QCOMPARE(begun(records), u"3"_s); // no number twice
    }

    void idsAreNoPaths()
    {
        TestContext test;
        Records records(test.context, phone);
        begun(records);
        for (const QString& id : {u""_s, u"0"_s, u"01"_s, u"-1"_s, u"+1"_s, u" 1"_s, u"../1"_s, u"1.record"_s,
                                  u"٣"_s, u"99999999999999999999"_s}) {
            QVERIFY2(!records.read(id), qPrintable(id));
            QVERIFY2(!records.finish(id, State::Done), qPrintable(id));
        }
    }

    void theOldestGo()
    {
        TestContext test;
        Records records(test.context, phone);
        Records other(test.context, {phone.model, u"other"_s});
        begun(other);
        const auto begin = [&] {
            return records.begin(RecordedList::Providers, RecordCause::Write, 1, {}).value_or(QString());
        };
        const auto range = [&] {
            const auto all = records.all();
            return QStringList{all.front().id, all.back().id, QString::number(all.size())};
        };
        for (int i = 0; i < Records::mostRecords + 3; ++i)
            QVERIFY(records.finish(begin(), State::Done));
        QCOMPARE(range(), (QStringList{u"104"_s, u"5"_s, u"100"_s}));
        // The change under way may put back the oldest: it goes only when that is done.
        for (const State failed : {State::Unknown, State::Unchanged})
            QVERIFY(records.finish(begin(), failed));
        QCOMPARE(range(), (QStringList{u"106"_s, u"5"_s, u"102"_s}));
        QVERIFY(records.finish(begin(), State::Done));
        QCOMPARE(range(), (QStringList{u"107"_s, u"8"_s, u"100"_s}));
        QCOMPARE(ids(other), QStringList{u"1"_s});
    }

    void nothingIsBegunThatIsNotOnTheDisk()
    {
        TestContext test;
        Records records(test.context, phone);
        const QString id = begun(records);
        SaveFault fault;
        {
            const SmallDisk disk(30000);
            QVERIFY(!records.begin(RecordedList::Phonebook, RecordCause::Write, 3, parts, &fault));
            QVERIFY(!records.finish(id, State::Done));
        }
        QCOMPARE(fault.kind, SaveFault::Kind::System);
        QVERIFY2(fault.detail.startsWith(records.folder() + u"/2.record: "_s), qPrintable(fault.detail));
        QCOMPARE(ids(records), QStringList{id});
        QCOMPARE(records.read(id)->state, State::Unknown);
        QVERIFY(records.finish(id, State::Done));

        TestContext other;
        other.makeFile(u"storage/Verlauf"_s, "a file is in the way");
        Records nowhere(other.context, phone);
        QVERIFY(!nowhere.begin(RecordedList::Files, RecordCause::RemoveFiles, 1, parts, &fault));
        QCOMPARE(fault.kind, SaveFault::Kind::System);
        QVERIFY2(fault.detail.contains(nowhere.folder()), qPrintable(fault.detail));
        QCOMPARE(nowhere.all().size(), 0u);

        QVERIFY(
            !test.makeFile(u"storage/Verlauf/%1/999999999.record"_s.arg(QDir(records.folder()).dirName()), {})
                 .isEmpty());
        QVERIFY(!records.begin(RecordedList::Phonebook, RecordCause::Write, 3, parts, &fault));
        QCOMPARE(fault.kind, SaveFault::Kind::NoNumberLeft);
        QCOMPARE(fault.detail, test.storage + u"/Verlauf"_s);
    }

    void namesFromThePhoneStayInTheFolder()
    {
        const Rows<PhoneIdentity, QString> rows{
            {"ordinary", {u"C475"_s, u"01234"_s}, u"C475_01234"_s},
            {"climbing", {u"../../etc"_s, u".."_s}, u"_.._.._etc__.."_s},
            {"nothing", {{}, {}}, u"___"_s},
            {"hidden", {u".x"_s, u".y"_s}, u"_.x__.y"_s},
            {"control characters", {u"a\n\0b"_s, u"1\t2"_s}, u"a__b_1_2"_s},
            {"endless",
             {QString(5000, u'm'), QString(5000, u's')},
             QString(60, u'm') + u'_' + QString(60, u's')},
        };
        rows.each([&](const auto& hostile, const auto& name) {
            TestContext test;
            Records records(test.context, hostile);
            QCOMPARE(begun(records), u"1"_s);
            QCOMPARE(namesIn(test.storage + u"/Verlauf"_s), QStringList{name});
            QCOMPARE(records.all().front().phone, hostile);
        });
    }

    /// A folder may serve two phones whose names differ in other signs only.
    void otherPhonesRecordsAreNotShown()
    {
        TestContext test;
        Records one(test.context, {u"A/B"_s, u"1"_s});
        Records two(test.context, {u"A:B"_s, u"1"_s});
        QCOMPARE(begun(one), u"1"_s);
        QCOMPARE(begun(two), u"2"_s);
        QCOMPARE(one.folder(), two.folder());
        QCOMPARE(ids(one), QStringList{u"1"_s});
        QCOMPARE(ids(two), QStringList{u"2"_s});
        QVERIFY(!one.read(u"2"_s));
        Records third(test.context, {u"C"_s, u"1"_s});
        QCOMPARE(begun(third), u"3"_s);
        QCOMPARE(begun(one), u"4"_s);
        QStringList all;
        for (const Record& record : Records::ofAllPhones(test.context))
            all.append(record.id + record.phone.model);
        QCOMPARE(all, (QStringList{u"4A/B"_s, u"3C"_s, u"2A:B"_s, u"1A/B"_s}));
    }

    void recordsOfAnUnknownSerialNumberBelongToTheModel()
    {
        TestContext test;
        Records unknown(test.context, {u"A"_s, unknownSerial()});
        Records known(test.context, {u"A"_s, u"1"_s});
        Records other(test.context, {u"B"_s, u"1"_s});
        QCOMPARE(begun(unknown), u"1"_s);
        QCOMPARE(begun(known), u"2"_s);
        QCOMPARE(begun(unknown), u"3"_s);
        QVERIFY(known.finish(u"1"_s, State::Done));
        const auto shown = [](const Records& records) {
            QStringList all;
            for (const Record& record : records.all()) {
                if (records.read(record.id))
                    all.append(record.id + (Records::mayBeOfAnotherPhone(record) ? u"?"_s : QString()) +
                               wordOf(record.state));
            }
            return all;
        };
        QCOMPARE(shown(known), (QStringList{u"3?unknown"_s, u"2unknown"_s, u"1?done"_s}));
        QCOMPARE(shown(unknown), (QStringList{u"3?unknown"_s, u"1?done"_s}));
        QCOMPARE(shown(other), QStringList());
    }

    void theSerialNumberIsAskedForUntilAnAnswer()
    {
        const Rows<QString, handset::Faults, QString, bool, int, bool> rows{
            {"ordinary", u"C475"_s, {}, u"C475"_s, true, 2, true},
            {"model told by WPPN", u"^WPPN: 7,SL450HX"_s, {}, u"SL450HX"_s, true, 2, true},
            {"without echo", u"C475"_s, {.noEcho = true}, u"C475"_s, false, 4, true},
            {"byte lost in the second answer", u"C475"_s, {.loseByteAt = 2}, u"C475"_s, true, 4, true},
            {"first answer too late", u"C475"_s, {.lateAt = 1, .lateBy = 1.1}, u"C475"_s, true, 5, true},
            {"line gone", u"C475"_s, {.hangUpAt = 1}, u"C475"_s, false, 1, true},
            {"silent", u"C475"_s, {.silentAfter = 1}, u"C475"_s, false, 1, false},
        };
        rows.each([&](const auto& phoneId, const auto& faults, const auto& model, const auto& isKnown,
                      const auto& commands, const auto& isAnswered) {
            TestContext test;
            HandsetPort port(test.clock, {.model = u"PICASSO"_s, .atOnce = true, .faults = faults});
            link::Line line(test.context, port);
            test.sy.PhoneID = phoneId;
            const QString serial = isKnown ? port.handset().phone().settings.serialNumber : u"unknown"_s;
            QCOMPARE(knownIdentity(test.sy), (PhoneIdentity{model, u"unknown"_s}));
            QCOMPARE(identifyPhone(line), (PhoneIdentity{model, serial}));
            QCOMPARE(port.handset().phone().faults.commands, commands);

            port.handset().setFaults({});
            const QString later = isAnswered ? serial : port.handset().phone().settings.serialNumber;
            QCOMPARE(identifyPhone(line).serial, later);
            QCOMPARE(port.handset().phone().faults.commands, isAnswered ? 0 : 2);
        });
    }
};

KALMO_TEST(tst_Records)
#include "tst_Records.moc"
