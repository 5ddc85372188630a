#include "support/HandsetTalk.h"

#include "app/CodePage.h"

#include <QJsonDocument>
#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

/// The entries of a store as the memory spells them.
QByteArray content(const handset::ClassicStore& store)
{
    return QJsonDocument(store.json()).toJson(QJsonDocument::Compact);
}

/// A client's way of writing a list: erase, close, open, entries, close.
QByteArrayList writing(const QByteArray& store, const QByteArray& close, const QByteArrayList& entries)
{
    return QByteArrayList{"AT^WSEL=\"" + store + "\"\r", close, "AT^WSSL=\"" + store + "\"\r"} + entries +
           QByteArrayList{close};
}

} // namespace

/// The phonebook and the provider list of families 1 to 4.
class ClassicStores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void takesEntries_data();
    void takesEntries();
    void isFullAtItsCapacity();
    void takesItsTime();
    void checksTheClient_data();
    void checksTheClient();
    void startsWithWhatItIsTold();
    void keepsItsMemory();
};

void ClassicStores::reads_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("store");
    QTest::addColumn<QByteArrayList>("entries"); // the first three

    QTest::newRow("family 1") << u"WOODSTOCK"_s << QByteArray("TB")
                              << QByteArrayList{"^WSRE:6,Mutter,9,052134567,9,05030900S",
                                                "^WSRE:10,Vater B\xfcro,10,0521880123,0,",
                                                "^WSRE:14,M\xfcller, J\xfcrgen,9,030901820,9,122408303"};
    QTest::newRow("families 2 to 4") << u"PICASSO"_s << QByteArray("TB")
                                     << QByteArrayList{
                                            "^WSRE: 6,Mutter,9,052134567,11,0005030900S,1,5",
                                            "^WSRE: 10,Vater B\xfcro,10,0521880123,0,,0,",
                                            "^WSRE: 14,M\xfcller, J\xfcrgen,9,030901820,11,00122408303,0,"};
    QTest::newRow("providers") << u"CAMARGUE"_s << QByteArray("NE")
                               << QByteArrayList{"^WSRE: 7,Nordruf,5,01031",
                                                 "^WSRE: 7,S\xfc"
                                                 "d-Tel,5,01052",
                                                 "^WSRE: 7,Callino,6,010018"};
}

void ClassicStores::reads()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, store);
    HandsetTalk talk({.model = model});
    QCOMPARE(talk.say("AT^WSSL=\"" + store + "\"\r"), "AT^WSSL=\"" + store + "\"\r\r\nOK\r\n");
    const QByteArray echo = "AT^WSRE\r\r\n";
    const QByteArray tail = "\r\n\r\nOK\r\n";
    QByteArrayList entries;
    for (QByteArray answer = talk.say("AT^WSRE\r"); answer != echo + "OK\r\n";
         answer = talk.say("AT^WSRE\r")) {
        QVERIFY(answer.startsWith(echo) && answer.endsWith(tail) && entries.size() < 100);
        entries.append(answer.sliced(echo.size()).chopped(tail.size()));
    }
    QCOMPARE(entries.size(), store == "TB" ? 25 : 5);
    if (store == "TB")
        QVERIFY2(entries[17].contains(":,,11,05215550199") || entries[17].contains(": ,,11,05215550199"),
                 "no name");
    QTEST(entries.first(3), "entries");
    talk.say(model == u"WOODSTOCK"_s ? "AT\r" : "AT^WSSL\r");
    talk.port.Close();
    QCOMPARE(talk.violations(), QStringList());
}

void ClassicStores::takesEntries_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("stored"); // empty where it is refused
    QTest::addColumn<QStringList>("violations");

    const auto row = [](const char* name, const QString& model, const QByteArray& entry,
                        const QByteArray& stored, const QStringList& violations = {}) {
        QTest::newRow(name) << model << entry << stored << violations;
    };
    const QString first = u"WOODSTOCK"_s;
    const QString last = u"PICASSO"_s;
    const auto malformed = [](const QByteArray& entry) {
        return QStringList{u"malformed: AT^WSWE="_s + app::fromCp1252(entry)};
    };
    row("name and number", last, "4,Abel,3,123,0,", R"({"name":"Abel","number":"123"})");
    row("comma in the name", last, "6,A, B,C,3,123,0,", R"({"name":"A, B,C","number":"123"})");
    row("date in family 1", first, "1,A,1,1,9,022912008",
        R"({"anniversary":"29.02. 12:00","name":"A","number":"1","reminder":"8"})");
    row("date in families 2 to 4", last, "1,A,1,1,12,000229120012",
        R"({"anniversary":"29.02. 12:00","name":"A","number":"1","reminder":"12"})");
    row("VIP", last, "1,A,1,1,0,,1,10", R"({"name":"A","number":"1","vipSound":"10"})");
    row("longest", last, "16,Abcdefghijklmn\xdf\xfc,32,+1234567890123456789012345678901,0,",
        R"({"name":"Abcdefghijklmnßü","number":"+1234567890123456789012345678901"})");
    row("name too long", last, "17,Abcdefghijklmnopq,1,1,0,", {});
    row("number too long", last, "1,A,33,123456789012345678901234567890123,0,", {});
    row("character that it can't show", last, "1,[,1,1,0,", {});
    row("number that it can't dial", last, "1,A,2,1+,0,", {});
    row("VIP in family 1", first, "1,A,1,1,0,,1,5", {}, malformed("1,A,1,1,0,,1,5"));
    row("no such day", last, "1,A,1,1,11,00023012005", {}, malformed("1,A,1,1,11,00023012005"));
    row("wrong length", last, "5,Abel,3,123,0,", {}, malformed("5,Abel,3,123,0,"));
    row("no date", last, "1,A,1,1", {}, malformed("1,A,1,1"));
    row("enormous length", last, "99999999999,A,1,1,0,", {}, malformed("99999999999,A,1,1,0,"));
}

void ClassicStores::takesEntries()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, entry);
    QFETCH(QByteArray, stored);
    HandsetTalk talk(emptyHandset(model));
    const QByteArray answer = talk.sayAll({"AT^WSSL=\"TB\"\r", "AT^WSWE=" + entry + "\r\n"});
    QCOMPARE(answer, "AT^WSWE=" + entry + "\r\r\n" + (stored.isEmpty() ? "ERROR\r\n" : "OK\r\n"));
    QCOMPARE(content(talk.port.handset().phone().phonebook), '[' + stored + ']');
    QTEST(talk.violations(), "violations");
}

void ClassicStores::isFullAtItsCapacity()
{
    handset::Options options = emptyHandset(u"PICASSO"_s);
    options.capacity = 2;
    HandsetTalk talk(options);
    const QByteArrayList all = writing("TB", "AT^WSSL\r", {3, "AT^WSWE=1,A,1,1,0,\r\n"});
    QCOMPARE(talk.sayAll(all.first(all.size() - 1)), "AT^WSWE=1,A,1,1,0,\r\r\nERROR\r\n");
    QCOMPARE(talk.port.handset().phone().phonebook.entries.size(), 2u);
}

void ClassicStores::takesItsTime()
{
    handset::Options options = emptyHandset(u"PICASSO"_s);
    options.entries = 200;
    HandsetTalk talk(options);
    QCOMPARE(talk.say("AT^WSEL=\"TB\"\r", 10), "AT^WSEL=\"TB\"\r");
    QCOMPARE(talk.say({}, 1), "\r\nOK\r\n"); // 0.4 s and 0.05 s for each entry
    QCOMPARE(talk.port.handset().phone().phonebook.entries.size(), 0u);
}

void ClassicStores::checksTheClient_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArrayList>("said");
    QTest::addColumn<QStringList>("violations");

    const auto row = [](const char* name, const QString& model, const QByteArrayList& said,
                        const QStringList& violations = {}) {
        QTest::newRow(name) << model << said << violations;
    };
    const QByteArrayList entry = {"AT^WSWE=4,Abel,3,123,0,\r\n"};
    row("as families 1 and 2 want it", u"WOODY"_s, writing("TB", "AT\r", entry));
    row("as families 3 and 4 want it", u"PICASSO"_s, writing("TB", "AT^WSSL\r", entry));
    row("preparation of family 3", u"GALICIA"_s, writing("TB", "AT^WSSL\r", {"AT^WSWE=1,A,1,1,0,\r"}));
    row("providers", u"PICASSO"_s, writing("NE", "AT^WSSL\r", {"AT^WSWE=4,Abel,3,123\r"}));

    row("entry ended by CR alone", u"PICASSO"_s, writing("TB", "AT^WSSL\r", {"AT^WSWE=4,Abel,3,123,0,\r"}),
        {u"ended by CR alone: AT^WSWE=4,Abel,3,123,0,"_s});
    row("preparation in another family", u"PICASSO"_s, writing("TB", "AT^WSSL\r", {"AT^WSWE=1,A,1,1,0,\r"}),
        {u"ended by CR alone: AT^WSWE=1,A,1,1,0,"_s});
    row("provider ended by CR LF", u"PICASSO"_s, writing("NE", "AT^WSSL\r", {"AT^WSWE=4,Abel,3,123\r\n"}),
        {u"ended by CR LF: AT^WSWE=4,Abel,3,123"_s});
    row("other command in a store", u"PICASSO"_s, {"AT^WSSL=\"TB\"\r", "AT+CGMR\r", "AT^WSSL\r"},
        {u"AT+CGMR while a store is open"_s});
    row("store opened twice", u"PICASSO"_s, {"AT^WSSL=\"TB\"\r", "AT^WSSL=\"NE\"\r", "AT^WSSL\r"},
        {u"AT^WSSL=\"NE\" while a store is open"_s});
    row("close of the wrong family", u"PICASSO"_s, {"AT^WSSL=\"TB\"\r", "AT\r"},
        {u"line closed while the store \"TB\" is open"_s});
    row("close of the other wrong family", u"WOODY"_s, {"AT^WSSL=\"NE\"\r", "AT^WSSL\r"},
        {u"AT^WSSL while a store is open"_s, u"line closed while the store \"NE\" is open"_s});
    row("nothing open", u"PICASSO"_s, {"AT^WSRE\r", entry.first()},
        {u"AT^WSRE without an open store"_s, u"AT^WSWE=4,Abel,3,123,0, without an open store"_s,
         u"ended by CR LF: AT^WSWE=4,Abel,3,123,0,"_s});
}

void ClassicStores::checksTheClient()
{
    QFETCH(QString, model);
    QFETCH(QByteArrayList, said);
    HandsetTalk talk(emptyHandset(model));
    talk.sayAll(said);
    talk.port.Close();
    QTEST(talk.violations(), "violations");
}

void ClassicStores::startsWithWhatItIsTold()
{
    HandsetTalk full({.model = u"PICASSO"_s, .entries = 2000});
    const handset::Phone& phone = full.port.handset().phone();
    QCOMPARE(phone.phonebook.entries.size(), 2000u);
    QCOMPARE(phone.phonebook.capacity, 2000);
    QSet<QString> numbers;
    for (const handset::ClassicEntry& entry : phone.phonebook.entries) {
        QVERIFY2(entry.name.size() <= 16, qPrintable(entry.name));
        numbers.insert(entry.number);
    }
    QCOMPARE(numbers.size(), 2000);

    const QTemporaryDir folder;
    QFile seed(folder.filePath(u"seed.json"_s));
    QVERIFY(seed.open(QIODevice::WriteOnly));
    seed.write(R"({"phonebook": [{"name": "Ölmann", "number": "1"}]})");
    seed.close();
    const handset::Options options{.model = u"PICASSO"_s, .seed = seed.fileName()};
    HandsetTalk talk(options);
    QCOMPARE(talk.sayAll({"AT^WSSL=\"TB\"\r", "AT^WSRE\r"}),
             "AT^WSRE\r\r\n^WSRE: 6,\xd6lmann,1,1,0,,0,\r\n\r\nOK\r\n");

    QString error;
    QVERIFY(seed.open(QIODevice::WriteOnly));
    seed.write("{\"phonebook\": [");
    seed.close();
    QVERIFY(!handset::makePhone(options, error));
    QVERIFY2(error.startsWith(seed.fileName() + u": "_s), qPrintable(error));
}

void ClassicStores::keepsItsMemory()
{
    const QTemporaryDir folder;
    const handset::Options options{.model = u"PICASSO"_s, .stateFolder = folder.path()};
    {
        HandsetTalk talk(options);
        talk.sayAll(writing("TB", "AT^WSSL\r", {"AT^WSWE=1,\xc4,1,1,11,00010203045,1,6\r\n"}), 3);
    }
    HandsetTalk talk(options);
    QCOMPARE(
        content(talk.port.handset().phone().phonebook),
        QByteArray(
            R"([{"anniversary":"02.01. 03:04","name":"Ä","number":"1","reminder":"5","vipSound":"6"}])"));
    QCOMPARE(talk.port.handset().phone().providers.entries.size(), 5u);
}

QTEST_GUILESS_MAIN(ClassicStores)
#include "tst_ClassicStores.moc"
