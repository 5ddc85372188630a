// Violations and faults of the emulated handset in data mode.

#include "support/ObexTalk.h"
#include "support/TestProgram.h"

namespace {

const QByteArray ok = packet(0xA0);

/// A frame of a PUT that is `size` bytes long.
QByteArray filled(int opcode, const QByteArray& headers, qsizetype size)
{
    return packet(opcode,
                  headers + header(opcode == 0x82 ? 0x49 : 0x48, QByteArray(size - 6 - headers.size(), 'x')));
}

QByteArray start(const QByteArray& name, qsizetype length, const QByteArray& time = "20261121T120000")
{
    return nameHeader(name) + lengthHeader(length) + header(0x44, time);
}

} // namespace

/// The handset's notes about a client in data mode, and the faults that it can be given there.
class ObexWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void violations()
    {
        const QByteArray rest = filled(0x82, {}, 100);
        Rows<QByteArrayList, QStringList> rows;
        rows.add("full frames", {filled(0x02, start("x", 652), 300), filled(0x02, {}, 300), rest}, {});
        rows.add("wrong size announced", {filled(0x02, start("x", 359), 300), rest},
                 {u"\"x\" of 358 bytes was announced with 359"_s});
        rows.add("first frame too short", {filled(0x02, start("x", 357), 299), rest},
                 {u"a part of \"x\" in a frame of 299 bytes, not 300"_s});
        rows.add("header longer than the frame", {packet(0x83, hex("01000A0061"))},
                 {u"the length of header 01 is not true"_s});
        rows.add("malformed rights",
                 {packet(0x82, nameHeader("Liesmich.txt") + header(0x4C, "\x38\x08RWD,R"))},
                 {u"malformed permissions: RWD,R"_s});
        rows.add("PUT left in the middle",
                 {filled(0x02, start("x", 1000), 300), packet(0x83, nameHeader("x"))},
                 {u"PUT of \"x\" left in the middle"_s});
        rows.add("Body in the last frame", {packet(0x82, start("x", 1) + header(0x48, "x"))},
                 {u"Body in a last frame"_s});
        rows.add("headers in another order",
                 {packet(0x82, lengthHeader(1) + nameHeader("x") + header(0x49, "x"))},
                 {u"headers of \"x\" in another order"_s});
        rows.add("request without a connection", {packet(0x81), toRoot},
                 {u"a request without a connection"_s});
        rows.add("no request", {"\x1B\rAT\r"}, {u"no request: 1B 0D"_s});

        rows.each([&](const auto& requests, const auto& violations) {
            ObexTalk talk({.model = u"S68H"_s, .maxPacket = 300});
            talk.ask(connectFolders);
            for (const QByteArray& request : requests)
                talk.ask(request);
            QCOMPARE(talk.violations(), violations);
        });
    }

    void faults()
    {
        const QByteArray small = packet(0x82, start("x", 1) + header(0x49, "x"));
        const QByteArrayList parts = {filled(0x02, start("x", 357 - 1), 300), filled(0x82, {}, 98)};
        Rows<QStringList, QByteArrayList, QByteArrayList> rows;
        rows.add("early success", {u"early-success"_s}, parts, {ok, ok});
        rows.add("full", {u"full"_s}, {small}, {packet(0xE0)});
        rows.add("length too small", {u"wrong-length-at=1"_s, u"wrong-length-by=-2"_s}, {toRoot, toRoot},
                 {hex("A00001"), ok});

        rows.each([&](const auto& faults, const auto& requests, const auto& wantedAnswers) {
            ObexTalk talk({.model = u"S68H"_s, .maxPacket = 300});
            talk.ask(connectFolders);
            handset::Faults set;
            for (const QString& fault : faults)
                QCOMPARE(handset::setFault(set, fault), std::nullopt);
            talk.port.handset().setFaults(set);
            QByteArrayList answers;
            for (const QByteArray& request : requests)
                answers.append(talk.ask(request));
            QCOMPARE(answers, wantedAnswers);
            QCOMPARE(talk.violations(), QStringList());
        });

        ObexTalk talk({.model = u"S68H"_s});
        talk.ask(connectFolders);
        talk.clock.after(0.01, [&] { talk.port.handset().setFaults({}); }); // in the middle of the request
        QCOMPARE(talk.ask(toRoot), ok);
    }

    /// Bytes of any kind, cut anywhere: no crash, and the way back is always open.
    void survivesAnything()
    {
        const QByteArrayList frames = {connectFolders, listFolder, filled(0x02, start("x", 999), 255),
                                       packet(0x82, nameHeader("Sounds") + counterHeader("1")), toRoot};
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

    void findsTheWayBack()
    {
        const QByteArray answer = "AT^SQWE=0\r\r\nOK\r\n";
        const QByteArray newAnswer = "AT^SQWE=0\r\n\r\nOK\r\n";
        Rows<QString, double, double, QByteArray, QByteArray, QStringList> rows;
        rows.add("silent about it", u"S68H"_s, 1.0, 1.4, {}, answer, {});
        rows.add("says OK", u"SL450HX"_s, 1.0, 1.4, "\r\nOK\r\n", newAnswer, {});
        rows.add("no silence before", u"S68H"_s, 0.5, 1.4, {}, {}, {u"no silence before +++"_s});
        rows.add("no silence after", u"S68H"_s, 1.0, 0.7, {}, {},
                 {u"no silence after +++"_s, u"no silence before +++"_s});

        rows.each([&](const auto& model, const auto& before, const auto& after, const auto& toEscape,
                      const auto& toCommand, const auto& violations) {
            ObexTalk talk({.model = model});
            talk.ask(connectFolders);
            QCOMPARE(talk.ask(packet(0x81)), ok);
            talk.clock.WaitSeconds(before);
            QCOMPARE(talk.say("+++", after), toEscape);
            QCOMPARE(talk.say("AT^SQWE=0\r\n"), toCommand);
            QCOMPARE(talk.violations(), violations);
        });
    }
};

KALMO_TEST(ObexWatch)
#include "tst_ObexWatch.moc"
