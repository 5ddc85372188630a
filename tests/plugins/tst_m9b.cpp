// The converter of melodies: each message of a song, what it refuses, and the program around it.

#include "plugins/m9b/Melody.h"
#include "support/Melodies.h"
#include "support/TestProgram.h"

namespace {

m9b::Result convert(const QByteArray& file)
{
    return m9b::convert(
        {reinterpret_cast<const quint8*>(file.constData()), static_cast<size_t>(file.size())});
}

QByteArray bytesOf(const m9b::Result& result)
{
    return {reinterpret_cast<const char*>(result.melody.data()),
            static_cast<qsizetype>(result.melody.size())};
}

const QByteArray end = " 00 FF 2F 00";

} // namespace

class tst_m9b : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convertsEachMessage()
    {
        const QByteArray note = "00 90 3C 40 60 3C 00";
        const Rows<QByteArray, QByteArray> rows{
            {"the first track comes first at equal ticks",
             midiFile(1, {"00 C0 01" + end, note + end, "60 C2 03" + end}),
             "00 C0 01 00 90 3C 40 60 3C 00 00 C2 03" + end},
            {"a note without length ends behind its start", midiFile(1, {"00 90 3C 40 00 80 3C 40" + end}),
             "00 90 3C 40 00 3C 00" + end},
            {"the status is left out, but not behind a meta event",
             midiFile(0, {"00 90 3C 40 10 90 3E 40 10 FF 51 03 070000 00 90 3E 00 00 90 3C 00" + end}),
             "00 90 3C 40 10 3E 40 10 FF 51 03 070000 00 90 3E 00 00 3C 00" + end},
            {"tempo in the middle", midiFile(1, {"81 00 FF 51 03 060000" + end, note + end}),
             "00 90 3C 40 60 3C 00 20 FF 51 03 060000" + end},
            {"SP-MIDI stays, other system-exclusive data goes and leaves its time",
             midiFile(0,
                      {"00 F0 08 7F7F0B01 0004 01 F7 10 F0 02 43F7 10 F7 01 F8 10 90 3C 40 60 3C 00" + end}),
             "00 F0 08 7F7F0B01 0004 01 F7 30 90 3C 40 60 3C 00" + end},
            {"texts, channel prefixes and strange lengths go",
             midiFile(
                 0, {"00 FF 01 02 4142 10 FF 20 01 00 00 FF 51 02 0000 00 FF 51 03 000000 00 FF 59 02 FF00 " +
                     note + end}),
             "10 FF 59 02 FF00 " + note + end},
            {"controllers, bend and pressures",
             midiFile(0, {"00 B0 01 7F 00 E0 00 40 00 D0 11 00 A0 3C 22 " + note + end}),
             "00 B0 01 7F 00 E0 00 40 00 D0 11 00 A0 3C 22 " + note + end},
            {"the last track ends it", midiFile(1, {note + end, "83 60 FF 2F 00"}), note + " 83 00 FF 2F 00"},
            {"an alien chunk in between",
             midiFile(0, {}).replace(10, 2, bigEndian(1, 2)) + chunk("XFIH", "abc") +
                 chunk("MTrk", QByteArray::fromHex(note + end)),
             note + end},
            {"a longer header",
             QByteArray(midiFile(0, {note + end})).replace(4, 4, bigEndian(8, 4)).insert(14, "xy"),
             note + end},
            {"a RIFF wrapper",
             "RIFF" + QByteArray(4, '\0') + "RMIDLIST" + QByteArray::fromHex("01000000") + "x\0"_ba + "data" +
                 QByteArray::fromHex("28000000") + midiFile(0, {note + end}) + QByteArray(9, '\0'),
             note + end},
        };
        rows.each([&](const auto& file, const auto& track) {
            const m9b::Result result = convert(file);
            QCOMPARE(result.error, std::string());
            QCOMPARE(bytesOf(result).toHex(' '), midiFile(0, {track}).toHex(' '));
            QCOMPARE(bytesOf(convert(bytesOf(result))).toHex(' '), bytesOf(result).toHex(' '));
        });
    }

    void refuses()
    {
        const QByteArray note = "00 90 3C 40 60 3C 00";
        const QByteArray good = midiFile(0, {note + end});
        const Rows<QByteArray, std::string> rows{
            {"nothing", "", "this is no MIDI file"},
            {"a wrapper without data", "RIFFxxxxRMIDdata\xff\xff\xff\xff", "this is no MIDI file"},
            {"format 2", midiFile(2, {note + end}), "only MIDI files of format 0 and 1 can be converted"},
            {"two tracks in format 0", midiFile(0, {note + end, note + end}),
             "a MIDI file of format 0 has one track"},
            {"a missing track", QByteArray(good).replace(8, 4, bigEndian(0x10002, 4)),
             "the MIDI file is cut off"},
            {"a track past the end", good.chopped(1), "the MIDI file is cut off"},
            {"no end of track", midiFile(0, {note}), "a track has no end"},
            {"data without status", midiFile(0, {"00 3C 40" + end}),
             "a track holds data where a message has to begin"},
            {"a status within a message", midiFile(0, {"00 90 3C 80" + end}),
             "a track holds a message in the middle of another"},
            {"a message that is cut off", midiFile(0, {"00 90 3C"}), "a track is cut off"},
            {"no note", midiFile(0, {"00 C0 01 00 90 3C 00" + end}), "the MIDI file holds no note"},
            {"a silence that no file holds", midiFile(0, {note + " FF FF FF 7F FF 01 00 01 90 3C 40" + end}),
             "the MIDI file holds a silence that is too long"},
        };
        rows.each([&](const auto& file, const auto& error) { QCOMPARE(convert(file).error, error); });
    }

    void limitsTheSize()
    {
        const auto sized = [](int longTimes) {
            QByteArray track = scale(5328); // six bytes each in the result
            while (longTimes-- > 0)
                track.replace(track.indexOf(" 64 30 "), 7, " 64 81 30 ");
            return convert(midiFile(0, {track}));
        };
        QCOMPARE(sized(2).melody.size(), size_t{32000});
        QCOMPARE(sized(3).error, std::string("the melody is larger than 32000 bytes"));
    }
};

KALMO_TEST(tst_m9b)
#include "tst_m9b.moc"
