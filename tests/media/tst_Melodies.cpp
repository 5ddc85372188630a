// Melodies on their way to the handset, and the folders in which work is done.

#include "app/clsStringBuilder.h"
#include "app/WorkFolder.h"
#include "media/MelodyConversion.h"
#include "media/Player.h"
#include "media/UploadFiles.h"
#include "media/Workshop.h"
#include "support/Melodies.h"
#include "support/TestProgram.h"

using app::clsStringBuilder;
using media::Fault;

namespace {

const media::UploadOptions toMelodies{.phoneType = 5, .kind = media::UploadKind::Melodies};

} // namespace

class tst_Melodies : public QObject
{
    Q_OBJECT

private:
    static media::PreparedFile prepare(Workshop& shop, const QString& source)
    {
        return media::prepareFile(shop.context, source, toMelodies, {});
    }

private Q_SLOTS:
    void converts()
    {
        Workshop shop;
        const auto file = prepare(
            shop, shop.makeFile(u"abcdefghijklmnopqrst.mid"_s, midiFile(1, {"00 FF 2F 00", scale(3)})));
        QVERIFY(!file.failure);
        QCOMPARE(file.file.name, u"abcdefghijkl.mid"_s);
        QCOMPARE(file.file.bytes->toHex(' '),
                 midiFile(0, {"00C005 00903064 303000 003164 303100 003264 303200 00FF2F00"}).toHex(' '));
        QCOMPARE(shop.leftovers(), QStringList());
    }

    void badMelodies()
    {
        const QByteArray good = midiFile(0, {scale(3)});
        const Rows<QByteArray, QByteArray, Fault> rows{
            {"no melody", "MThd", "exec m9b", Fault::BadMelody},
            {"32000 bytes of something", QByteArray(32000, 'x'), "exec m9b", Fault::BadMelody},
            {"32001 bytes", QByteArray(32001, 'x'), "exec m9b", Fault::LargeMelody},
            {"the converter is silent", good, "exit 0", Fault::BadMelody},
            {"hangs", good, "sleep 1000", Fault::TooLong},
            {"fails behind its work", good, "cp \"$2\" \"$3\"; exit 1", Fault::BadMelody},
            {"is missing", good, "", Fault::NoConverter},
            {"has a full disk", midiFile(0, {scale(900)}),
             withFullDisk(ConverterFolder::built(u"m9b"_s).toUtf8()), Fault::NotWritten},
        };
        rows.each([&](const auto& bytes, const auto& script, const auto& fault) {
            Workshop shop;
            if (!script.startsWith("exec"))
                shop.plugins.replace(u"m9b"_s, script);
            const auto file = prepare(shop, shop.makeFile(u"a.mid"_s, bytes));
            QVERIFY(file.failure);
            QCOMPARE(file.failure->fault, fault);
            QCOMPARE(file.file.bytes, QByteArray());
            QCOMPARE(shop.leftovers(), QStringList());
        });
    }

    /// Work folders of programs that run stay, those of programs that were killed go.
    void workFoldersAreSwept()
    {
        Workshop shop;
        const QString temp = shop.storage + u"/config/temp/"_s;
        auto mine = std::make_unique<app::WorkFolder>(shop.context);
        QVERIFY(mine->isValid());
        QVERIFY(QDir().mkpath(temp + u"work-AAAAAA"_s)); // has no lock yet
        QVERIFY(leaveWorkOfKilled(shop));
        {
            const app::WorkFolder other(shop.context);
            QVERIFY(other.isValid() && other.path() != mine->path());
            QCOMPARE(shop.leftovers().size(), 3);
        }
        QCOMPARE(shop.leftovers(), (QStringList{u"work-AAAAAA"_s, QFileInfo(mine->path()).fileName()}));
        mine.reset();
        QCOMPARE(shop.leftovers(), QStringList{u"work-AAAAAA"_s});
    }

    void playing()
    {
        Workshop shop;
        shop.plugins.replace(u"sox"_s,
                             "case \"$3\" in *long*) exec sleep 1000;; *good*) exit 0;; esac; exit 1");
        media::Player player(shop.context);
        QSignalSpy ended(&player, &media::Player::ended);
        for (const auto& [name, played] :
             Rows<QString, bool>{{"plays", u"good.wav"_s, true}, {"fails", u"bad.mp3"_s, false}}) {
            QVERIFY(player.PlayFile(shop.makeFile(name, "x")));
            QVERIFY(ended.wait());
            QCOMPARE(ended.takeFirst().value(0).toBool(), played);
            QVERIFY(!player.isPlaying());
        }
        QVERIFY(player.PlayFile(shop.makeFile(u"long.wav"_s, "x")));
        QVERIFY(player.isPlaying());
        QVERIFY(player.PlayFile(shop.makeFile(u"good.wav"_s, "x"))); // in its place
        QVERIFY(ended.wait());
        QCOMPARE(ended.size(), 1);
        QVERIFY(player.PlayFile(shop.makeFile(u"long.wav"_s, "x")));
        player.StopPlay();
        QVERIFY(!player.isPlaying());
        QVERIFY(!player.PlayFile(shop.path(u"none.wav"_s)));
    }

    /// The player of this machine takes each melody, the handset's converter refuses the second one.
    void playingMelodies()
    {
        Workshop shop;
        const QByteArray path = qgetenv("PATH");
        QDir().mkpath(shop.path(u"bin"_s));
        QFile program(shop.makeFile(u"bin/fluidsynth"_s, "#!/bin/sh\nexit 0\n"));
        QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        qputenv("PATH", shop.path(u"bin"_s).toUtf8()); // timidity is missing
        const auto restore = qScopeGuard([&path] { qputenv("PATH", path); });
        const QString melody = shop.makeFile(u"a.mid"_s, midiFile(1, {scale(3)}));
        const media::PlayerCall call = media::playerFor(shop.context, melody);
        QCOMPARE(call.program, shop.path(u"bin/fluidsynth"_s));
        QCOMPARE(call.arguments.first(), u"-ni"_s);
        QCOMPARE(call.arguments.last(), melody);

        const QByteArray song = midiFile(1, {scale(3)});
        const Rows<QByteArray, bool> rows{
            {"whole", song, true},
            {"several songs", midiFile(2, {scale(3), scale(3)}), true},
            {"wrapped", "RIFF\x30\0\0\0RMIDdata\x28\0\0\0" + song, true},
            {"a head alone", song.first(14), false},
            {"nothing", "", false},
        };
        rows.each([&](const auto& bytes, const auto& plays) {
            media::Player player(shop.context);
            QSignalSpy ended(&player, &media::Player::ended);
            QCOMPARE(player.PlayFile(shop.makeFile(u"b.mid"_s, bytes)), plays);
            QCOMPARE(plays ? ended.wait() : true, true);
        });
    }

    void longTexts()
    {
        clsStringBuilder text;
        const auto sizes = [&text] { return std::pair<int, int>(text.Capacity(), text.BufferBump()); };
        QCOMPARE(sizes(), std::pair(8192, 2048)); // a quarter
        text.Append(QString(4096, u'a'));
        QCOMPARE(text.Capacity(), 8192);
        text.Append(u'b');
        text.setBufferBump(7); // not with this method
        QCOMPARE(sizes(), std::pair(10240, 2560));
        text.setSizingMethod(0);
        QCOMPARE(text.BufferBump(), 2048);
        text.setBufferBump(7);
        text.setCapacity(9);
        QCOMPARE(sizes(), std::pair(16, 8));
        QCOMPARE(text.ToString(), u"aaaaaaaa"_s);
        text.setLength(-1);
        text.setLength(2);
        QVERIFY(!text.Insert(1, u"xyz") && text.ToString() == u"axyza");
        QVERIFY(!text.Remove(1, 2) && text.ToString() == u"aza");
        QChar last;
        QVERIFY(!text.setChars(2, u'!') && !text.Chars(2, last) && last == u'!');
        text.setLength(4);
        QCOMPARE(text.ToString(), QString(u"az!"_s + QChar()));

        QCOMPARE(text.Chars(4, last)->text, u"Tried reading character past end of buffer."_s);
        QCOMPARE(text.setChars(-1, last)->text, u"Tried assigning character past end of buffer."_s);
        QCOMPARE(text.Insert(5, u"x")->source, u"CStringBuilder.Insert"_s);
        QCOMPARE(text.Remove(3, 2)->source, u"CStringBuilder.Remove"_s);
    }
};

KALMO_TEST(tst_Melodies)
#include "tst_Melodies.moc"
