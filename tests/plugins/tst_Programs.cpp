// Both converters as programs: how they end, what they say, and which files they leave.

#include "support/ConverterFolder.h"
#include "support/Melodies.h"
#include "support/TestProgram.h"
#include "support/Tones.h"

class tst_Programs : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString make(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? name : QString();
    }
    QByteArray content(const QString& name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    /// Exit status and standard error of a run in the folder.
    std::pair<int, QString> run(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(program, arguments);
        const bool ended = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
        return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardError())};
    }

private Q_SLOTS:
    void wrongUseAndFailures()
    {
        make(u"good.mid"_s, midiFile(0, {scale(1)}));
        make(u"bad.mid"_s, "MThd");
        make(u"good.raw"_s, QByteArray(400, 'x'));
        QDir(m_folder.path()).mkpath(u"folder"_s);
        const QString m9bUse = u"usage: m9b t IN OUT\n"_s;
        const QString codeUse = u"usage: g722demo -enc IN OUT\n"_s;
        const Rows<QString, QString, int, QString> rows{
            {"nothing", u"m9b"_s, u""_s, 2, m9bUse},
            {"no file", u"m9b"_s, u"t none out"_s, 1, u"m9b: none can't be read or is too large\n"_s},
            {"no melody", u"m9b"_s, u"t bad.mid out"_s, 1, u"m9b: this is no MIDI file\n"_s},
            {"a folder in the way", u"m9b"_s, u"t good.mid folder"_s, 1, u"m9b: folder can't be written\n"_s},
            {"nothing to code", u"g722demo"_s, u"-enc good.raw"_s, 2, codeUse},
            {"no sound", u"g722demo"_s, u"-enc none out"_s, 1,
             u"g722demo: none can't be read or is too large\n"_s},
            {"nowhere to write", u"g722demo"_s, u"-enc good.raw none/out"_s, 1,
             u"g722demo: none/out can't be written\n"_s},
        };
        rows.each([&](const auto& program, const auto& words, const auto& status, const auto& error) {
            const QStringList arguments = words.split(u' ', Qt::SkipEmptyParts);
            QCOMPARE(run(ConverterFolder::built(program), arguments), std::pair(status, error));
            QCOMPARE(QDir(m_folder.path()).entryList({u"out*"_s, u"*.part"_s}, QDir::Files), QStringList());
        });
    }

    /// A user's own file and the part of another run stay.
    void partsOfOthersStay()
    {
        const QString mine = m_folder.filePath(u"m.out.0.part"_s);
        QVERIFY(QFile::copy(m_folder.filePath(u"good.raw"_s), mine));
        const qint64 size = QFileInfo(mine).size();
        QCOMPARE(run(ConverterFolder::built(u"m9b"_s), {u"t"_s, u"good.mid"_s, u"m.out"_s}).first, 0);
        QCOMPARE(QFileInfo(mine).size(), size);
        QCOMPARE(QDir(m_folder.path()).entryList({u"m.out*"_s}),
                 (QStringList{u"m.out"_s, u"m.out.0.part"_s}));
        QVERIFY(QFile::remove(mine));
    }

    /// One code for two samples, each in a word; a lone sample and a lone byte are left out.
    void codesAreWords()
    {
        for (const auto& [samples, words] : Rows<int, int>{{"none", 0, 0},
                                                           {"one byte", 1, 0},
                                                           {"three", 3, 0},
                                                           {"two samples", 4, 1},
                                                           {"an odd end", 4 * 5000 + 3, 5000}}) {
            make(u"in"_s, bytesOf(tone(500, -3, samples)).first(samples));
            QCOMPARE(run(ConverterFolder::built(u"g722demo"_s), {u"-enc"_s, u"in"_s, u"out"_s}),
                     std::pair(0, QString()));
            const QByteArray out = content(u"out"_s);
            QCOMPARE(out.size(), 2 * words);
            for (qsizetype index = 1; index < out.size(); index += 2)
                QCOMPARE(out[index], '\0');
        }
    }

    /// Every second byte is the stream that a decoder takes.
    void tonesComeBack()
    {
        for (const auto& [level, least] :
             Rows<double, double>{{"loud", -6, 45}, {"soft", -20, 44}, {"faint", -40, 35}}) {
            make(u"in"_s, bytesOf(tone(1000, level, 2 * soundRate)));
            QCOMPARE(run(ConverterFolder::built(u"g722demo"_s), {u"-enc"_s, u"in"_s, u"out"_s}),
                     std::pair(0, QString()));
            const QByteArray words = content(u"out"_s);
            QByteArray codes;
            for (qsizetype index = 0; index < words.size(); index += 2)
                codes.append(words[index]);
            std::vector<qint16> samples = decoded(codes);
            samples.erase(samples.begin(), samples.begin() + soundRate); // the coder finds its steps first
            const double clear = clearness(samples, 1000);
            QVERIFY2(clear > least, qPrintable(QString::number(clear)));
        }
    }

    /// A player that knows nothing of Kalmo plays the same before and after.
    void melodiesSoundTheSame()
    {
        const QString player = QStandardPaths::findExecutable(u"timidity"_s);
        QVERIFY2(!player.isEmpty(), "timidity is needed");
        const QByteArray tail = " 00 FF 2F 00";
        const QByteArray tempo = "00 FF 03 04 536F6E67 00 FF 51 03 07A120 83 00 FF 51 03 0927C0";
        const QByteArray voice = "00 C0 0B 00 B0 07 64 00 90 3C 64 60 80 3C 40 00 90 40 64 60 80 40 40 ";
        const QByteArray drums = "00 C1 20 00 91 24 70 60 24 00 00 99 26 60 18 26 00 18 F0 03 7D01F7 "
                                 "00 99 2A 40 30 89 2A 00";
        make(u"in.mid"_s,
             midiFile(1, {tempo + tail, voice + "81 40 90 43 50 60 43 00" + tail, drums + tail}));
        QCOMPARE(run(ConverterFolder::built(u"m9b"_s), {u"t"_s, u"in.mid"_s, u"out.mid"_s}),
                 std::pair(0, QString()));
        QByteArrayList sounds;
        for (const QString& name : {u"in"_s, u"out"_s}) {
            QCOMPARE(run(player, {u"-c"_s, u"/etc/timidity/timgm6mb.cfg"_s, u"-Ow"_s, u"-o"_s,
                                  name + u".wav"_s, name + u".mid"_s})
                         .first,
                     0);
            sounds.append(content(name + u".wav"_s));
        }
        QVERIFY(sounds[0].size() > 100000);
        QVERIFY(sounds[0].count('\0') < sounds[0].size() / 2); // it is no silence
        QVERIFY(sounds[0] == sounds[1]);
    }
};

KALMO_TEST(tst_Programs)
#include "tst_Programs.moc"
