#include "support/ObexTalk.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

const QByteArray ok = obexFrame(0xA0);
const QByteArray more = obexFrame(0x90);

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

/// A frame of a PUT that is `size` bytes long.
QByteArray filled(int opcode, const QByteArray& headers, qsizetype size)
{
    return obexFrame(opcode, headers + obexHeader(opcode == 0x82 ? 0x49 : 0x48,
                                                  QByteArray(size - 6 - headers.size(), 'x')));
}

QByteArray start(const QByteArray& name, qsizetype length, const QByteArray& time = "20261121T120000")
{
    return nameHeader(name) + lengthHeader(length) + obexHeader(0x44, time);
}

} // namespace

/// What the handset notes about a client in data mode, and what can be made to go wrong there.
class ObexWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void violations_data();
    void violations();
    void impatience();
    void faults_data();
    void faults();
    void faultsTogether();
    void dropsTheLine();
    void refusesDataMode();
    void ignoresTheEscape();
    void survivesAnything();
};

void ObexWatch::violations_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<int>("maxPacket");
    QTest::addColumn<QByteArrayList>("requests");
    QTest::addColumn<QStringList>("violations");

    const auto row = [](const char* name, const QByteArrayList& requests, const QStringList& violations = {},
                        int maxPacket = 300, const QString& of = u"S68H"_s) {
        QTest::newRow(name) << of << maxPacket << requests << violations;
    };
    const QByteArray rest = filled(0x82, {}, 100);
    row("full frames", {filled(0x02, start("x", 652), 300), filled(0x02, {}, 300), rest});
    row("wrong size announced", {filled(0x02, start("x", 359), 300), rest},
        {u"\"x\" of 358 bytes was announced with 359"_s});
    row("first frame on days below 10", {filled(0x02, start("x", 358, "2026111T120000"), 299), rest});
    row("first frame too short", {filled(0x02, start("x", 357), 299), rest},
        {u"a part of \"x\" in a frame of 299 bytes, not 300"_s});
    row("frame above MaxPacket", {filled(0x02, start("x", 360), 302), rest},
        {u"a frame of 302 bytes, above MaxPacket 300"_s,
         u"a part of \"x\" in a frame of 302 bytes, not 300"_s});
    row("no more than a client sends at once", {filled(0x02, start("x", 10058), 10000), rest}, {}, 16390);
    row("what a client reads as negative", {filled(0x02, start("x", 313), 255), rest}, {}, 65535);
    row("header longer than the frame", {obexFrame(0x83, hex("01000A0061"))},
        {u"the length of header 01 is not true"_s});
    row("header shorter than itself", {obexFrame(0x83, hex("010002"))},
        {u"the length of header 01 is not true"_s});
    row("name without its end", {obexFrame(0x83, hex("0100050061"))}, {u"a name without its end"_s});
    row("half a character", {obexFrame(0x83, hex("01000400"))}, {u"a name of 1 bytes"_s});
    row("memory of the card, as the protocol has it", {hex("83001A4C0017321301100"
                                                           "05C004D004D00430061007200640000")});
    row("rights, as the protocol has them",
        {obexFrame(0x82, nameHeader("Liesmich.txt") + obexHeader(0x4C, "\x38\x08\"RWD\"\"RWD\""))});
    row("malformed rights", {obexFrame(0x82, nameHeader("Liesmich.txt") + obexHeader(0x4C, "\x38\x08RWD,R"))},
        {u"malformed permissions: RWD,R"_s});
    row("parameter longer than its header",
        {obexFrame(0x82, nameHeader("x") + obexHeader(0x4C, "\x11\x05"
                                                            "12"))},
        {u"parameter 11 declares 5 bytes of 2"_s});
    row("PUT left in the middle", {filled(0x02, start("x", 1000), 300), obexFrame(0x83, nameHeader("x"))},
        {u"PUT of \"x\" left in the middle"_s});
    row("PUT of another in the middle",
        {filled(0x02, start("x", 1000), 300), obexFrame(0x82, start("y", 1) + obexHeader(0x49, "y"))},
        {u"PUT of \"x\" left in the middle"_s});
    row("Body in the last frame", {obexFrame(0x82, start("x", 1) + obexHeader(0x48, "x"))},
        {u"Body in a last frame"_s});
    row("headers in another order",
        {obexFrame(0x82, lengthHeader(1) + nameHeader("x") + obexHeader(0x49, "x"))},
        {u"headers of \"x\" in another order"_s});
    row("next part of nothing", {obexFrame(0x83)}, {u"the next part of nothing was asked for"_s});
    row("item deleted without IrMC", {obexFrame(0x82, nameHeader("/telecom/pb/luid/0001.vcf"))},
        {u"an item is changed without a connection to IrMC"_s}, 300, u"S820"_s);
    row("abort", {filled(0x02, start("x", 1000), 300), hex("FF0003"), obexFrame(0x83, nameHeader("x"))});
    row("bare name", {obexFrame(0x82, nameHeader("Liesmich.txt"))}, {u"\"Liesmich.txt\" without its path"_s},
        300, u"S820"_s);
    row("request without a connection", {obexFrame(0x81), toRoot}, {u"a request without a connection"_s});
    row("no request", {"\x1B\rAT\r"}, {u"no request: 1B 0D"_s});
}

void ObexWatch::violations()
{
    QFETCH(QString, model);
    QFETCH(int, maxPacket);
    QFETCH(QByteArrayList, requests);
    ObexTalk talk({.model = model, .maxPacket = maxPacket});
    talk.ask(connectFolders);
    for (const QByteArray& request : requests)
        talk.ask(request);
    QTEST(talk.violations(), "violations");
}

void ObexWatch::impatience()
{
    ObexTalk talk({.model = u"S68H"_s, .maxPacket = 255});
    talk.ask(connectFolders);
    talk.enter("Sounds");
    QVERIFY(talk.ask(obexFrame(0x83, nameHeader("Piep.wav"))).startsWith('\x90'));
    talk.ask(toRoot);
    QCOMPARE(talk.say(toRoot + toRoot), ok + ok);
    // But whoever gives a late answer up can't know better.
    talk.port.handset().setFaults({.lateBy = 3, .lateRequestAt = 1});
    QCOMPARE(talk.say(toRoot, 2.9), "");
    QCOMPARE(talk.say(toRoot), ok + ok);
    QCOMPARE(talk.violations(), QStringList({u"GET of \"Piep.wav\" left in the middle"_s,
                                             u"sent before the answer to a request"_s}));
}

void ObexWatch::faults_data()
{
    QTest::addColumn<QStringList>("faults");
    QTest::addColumn<QByteArrayList>("requests");
    QTest::addColumn<QByteArrayList>("answers");

    const auto row = [](const char* name, const QStringList& faults, const QByteArrayList& requests,
                        const QByteArrayList& answers) {
        QTest::newRow(name) << faults << requests << answers;
    };
    const QByteArray small = obexFrame(0x82, start("x", 1) + obexHeader(0x49, "x"));
    const QByteArrayList parts = {filled(0x02, start("x", 357 - 1), 300), filled(0x82, {}, 98)};
    row("refused", {u"refuse-at=2"_s}, {toRoot, toRoot, toRoot}, {ok, obexFrame(0xC3), ok});
    row("refused with a code", {u"refuse-at=2"_s, u"refuse-code=d0"_s}, parts, {more, obexFrame(0xD0)});
    row("silence in the middle", {u"silent-from=2"_s}, {toRoot, toRoot, toRoot}, {ok, {}, {}});
    row("early success", {u"early-success"_s}, parts, {ok, ok});
    row("full", {u"full"_s}, {small}, {obexFrame(0xE0)});
    row("length too small", {u"wrong-length-at=1"_s, u"wrong-length-by=-2"_s}, {toRoot, toRoot},
        {hex("A00001"), ok});
    row("length too large", {u"wrong-length-at=1"_s}, {toRoot, toRoot}, {{}, ok});
    row("no new folders when full", {u"full"_s},
        {obexFrame(0x85, hex("0000") + nameHeader("Neu")),
         obexFrame(0x85, hex("0000") + nameHeader("Sounds"))},
        {obexFrame(0xE0), ok});
}

void ObexWatch::faults()
{
    QFETCH(QStringList, faults);
    QFETCH(QByteArrayList, requests);
    ObexTalk talk({.model = u"S68H"_s, .maxPacket = 300});
    talk.ask(connectFolders);
    handset::Faults set;
    for (const QString& fault : faults)
        QCOMPARE(handset::setFault(set, fault), std::nullopt);
    talk.port.handset().setFaults(set);
    QByteArrayList answers;
    for (const QByteArray& request : requests)
        answers.append(talk.ask(request));
    QTEST(answers, "answers");
    QCOMPARE(talk.violations(), QStringList());
}

void ObexWatch::faultsTogether()
{
    ObexTalk talk({.model = u"S68H"_s});
    talk.ask(connectFolders);
    talk.port.handset().setFaults({.busy = 2, .trickle = true, .surplusAt = 1, .noLuid = true});
    QCOMPARE(talk.say(toRoot), ok + "\x01\x02\x03");
    talk.enter("telecom");
    const QByteArray book = obexFrame(0x83, nameHeader("pb.vcf"));
    QCOMPARE(talk.ask(book), obexFrame(0xD0));
    QCOMPARE(talk.ask(book), obexFrame(0xD0));
    QVERIFY(talk.fetch(book).size() > 2000);

    talk.ask(connectIrmc);
    for (const char* name : {"telecom", "pb", "luid"})
        talk.enter(name);
    const QByteArray put = obexFrame(0x82, nameHeader(".vcf") + lengthHeader(30) + counterHeader("25") +
                                               obexHeader(0x49, "BEGIN:VCARD\r\nN:A;\r\nEND:VCARD"));
    QCOMPARE(talk.ask(put), ok);
    talk.port.handset().setFaults({.wrongLuidLength = true});
    QByteArray next = put;
    next.replace("25", "26");
    QCOMPARE(talk.ask(next), hex("A000104C000F01043030323702023237"));
    talk.port.handset().setFaults({.wrongLengthAt = 1, .wrongLengthBy = -4});
    QCOMPARE(talk.say(toRoot), hex("A0FFFF")); // of both bytes of the length
}

void ObexWatch::dropsTheLine()
{
    ObexTalk talk({.model = u"S68H"_s});
    talk.ask(connectFolders);
    talk.enter("Sounds");
    talk.port.handset().setFaults({.hangUpAfter = 200});
    QCOMPARE(talk.ask(obexFrame(0x83, nameHeader("Piep.wav"))), "");
    QVERIFY(!talk.port.IsOpen());
    talk.clock.WaitSeconds(1);
    QVERIFY(talk.port.Open({}));
    QVERIFY(talk.port.handset().isInDataMode());
    QCOMPARE(talk.sayAll({"+++", "AT\r"}, 1.4), "AT\r\r\nOK\r\n");
    QCOMPARE(talk.violations(), QStringList());
}

void ObexWatch::refusesDataMode()
{
    HandsetTalk talk({.model = u"S68H"_s});
    talk.port.handset().setFaults({.menuOpen = 1});
    QCOMPARE(talk.say("AT^SQWE=3\r\n", 6), "AT^SQWE=3\r");
    QCOMPARE(talk.say("AT^SQWE=3\r\n"), "AT^SQWE=3\r\r\nOK\r\n");
    HandsetTalk classic({.model = u"PICASSO"_s});
    QCOMPARE(classic.say("AT^SQWE=3\r\n"), "AT^SQWE=3\r\r\nERROR\r\n");
}

void ObexWatch::ignoresTheEscape()
{
    ObexTalk talk({.model = u"S68H"_s});
    talk.port.handset().setFaults({.ignoresEscape = true});
    talk.ask(connectFolders);
    talk.clock.WaitSeconds(1);
    QCOMPARE(talk.sayAll({"+++", "AT^SQWE=0\r\n"}, 1.4), "");
    QVERIFY(talk.port.handset().isInDataMode());
}

/// Bytes of any kind, cut anywhere: no crash, and the way back is always open.
void ObexWatch::survivesAnything()
{
    const QByteArrayList frames = {connectFolders, listFolder, filled(0x02, start("x", 999), 255),
                                   obexFrame(0x82, nameHeader("Sounds") + counterHeader("1")), toRoot};
    for (int seed = 0; seed < 200; ++seed) {
        ObexTalk talk({.model = seed % 2 == 0 ? u"S68H"_s : u"SL450HX"_s, .maxPacket = 255});
        quint32 state = static_cast<quint32>(seed) * 2654435761u + 1;
        const auto random = [&](qsizetype below) {
            state = state * 1664525u + 1013904223u;
            return static_cast<qsizetype>(state >> 8) % below;
        };
        for (int round = 0; round < 20; ++round) {
            QByteArray bytes = frames[random(frames.size())];
            for (qsizetype damage = random(4); damage > 0; --damage)
                bytes[random(bytes.size())] = static_cast<char>(random(256));
            talk.say(bytes.left(bytes.size() - (random(5) == 0 ? random(bytes.size()) : 0)), 0.2);
        }
        talk.clock.WaitSeconds(30);
        talk.say("+++", 1.4);
        QVERIFY(!talk.port.handset().isInDataMode());
    }
}

QTEST_GUILESS_MAIN(ObexWatch)
#include "tst_ObexWatch.moc"
