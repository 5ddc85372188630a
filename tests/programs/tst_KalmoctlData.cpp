// Files as users handle them, and the state after a run that was stopped. In real time.

#include "support/RunningPrograms.h"
#include "support/TestProgram.h"

#include <algorithm>
#include <csignal>

namespace {

/// A change of a handset with kalmoctl, which is killed when its log shows `moment` for the n-th time.
struct KilledChange
{
    QByteArray name;
    QStringList handset;
    QString list; ///< the part of the handset's memory that changes, by its name there
    QStringList command;
    QByteArray moment;
    int count = 1;

    RunningPrograms programs = {};
    QByteArray first = {}; ///< content of the handset before
    bool isKilled = false;

    /// Without the numbers that the handset counts up.
    QByteArray held() const
    {
        const QByteArray bytes = programs.contentOf(u"handset/"_s + list);
        const QJsonObject contacts = QJsonDocument::fromJson(bytes).object();
        if (contacts.isEmpty())
            return bytes;
        QByteArrayList cards;
        for (const QJsonValue& value : contacts[u"items"_s].toArray()) {
            QJsonObject contact = value.toObject();
            contact.remove(u"luid"_s);
            contact.remove(u"changed"_s);
            cards.append(QJsonDocument(contact).toJson());
        }
        std::sort(cards.begin(), cards.end());
        return cards.join();
    }

    bool killInTime()
    {
        if (isKilled || programs.contentOf(u"log"_s).count(moment) < count)
            return isKilled;
        kill(static_cast<pid_t>(programs.kalmoctlId()), SIGKILL);
        return isKilled = true;
    }
};

} // namespace

class tst_KalmoctlData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brokenOffInTheMiddle()
    {
        const Rows<int, int, QString, QString> rows{
            {"interrupted: the data channel is closed",
             SIGINT,
             4,
             u"kalmoctl: could not send HOME/größe.bin to /größe.bin: interrupted.\n"
             "kalmoctl: interrupted.\n"_s,
             {}},
            {"killed: the next run takes the handset back",
             SIGKILL,
             -1,
             {},
             u"The last run did not end its data session with ^WPPN: 7,SL450HX; taking the handset back to "
             "commands.\n"_s},
        };
        rows.each([&](const auto& signal, const auto& status, const auto& err, const auto& nextErr) {
            RunningPrograms programs;
            QVERIFY(programs.startHandset({u"--model"_s, u"SL450HX"_s}));
            const QString big = programs.makeFile(u"größe.bin"_s, QByteArray(400000, 'x'));
            programs.startKalmoctl({u"--log"_s, programs.path(u"log"_s), u"files"_s, u"put"_s, big});
            QTRY_VERIFY_WITH_TIMEOUT(programs.contentOf(u"log"_s).count("RE=144 RXall") > 3, 30000);
            kill(static_cast<pid_t>(programs.kalmoctlId()), signal);
            const ProgramRun broken = programs.finishKalmoctl();
            QCOMPARE(broken.status, status);
            QCOMPARE(broken.err, err);
            const ProgramRun next = programs.kalmoctl({u"--json"_s, u"files"_s, u"ls"_s});
            QCOMPARE(next.err, nextErr);
            QCOMPARE(next.status, 0);
            QVERIFY2(!next.out.contains(u"größe.bin"_s), qPrintable(next.out));
            QCOMPARE(programs.stopHandset(), QString());
        });
    }

    /// The runs of all changes overlap, since most of their time is the pauses of the protocol.
    void killedInAChange()
    {
        const QStringList classic{u"--model"_s, u"PICASSO"_s, u"--seed"_s, u"none"_s, u"--entries"_s, u"4"_s};
        const QStringList newest{u"--model"_s, u"SL450HX"_s};
        const QStringList write{u"phonebook"_s, u"write"_s, u"new.json"_s};
        const QStringList put{u"files"_s, u"put"_s, u"Liesmich.txt"_s};
        const QString book = u"phonebook.json"_s;
        const QString contacts = u"contacts.json"_s;
        const QString file = u"files/Liesmich.txt"_s;
        const QByteArray finalPut = ":\t 82 "; // a frame in the log
        KilledChange changes[] = {
            {"list, at the erase", classic, book, write, "AT^WSEL="},
            {"list, at the second entry", classic, book, write, "AT^WSWE=", 2},
            {"contacts, at the first", newest, contacts, write, finalPut},
            {"contacts, at a deletion", newest, contacts, write, finalPut, 3},
            {"file, at the deletion of the old one", newest, file, put, finalPut},
            {"file, in the middle", newest, file, put, "RE=144 RXall", 3},
        };
        for (KilledChange& change : changes) {
            QVERIFY(change.programs.startHandset(change.handset + QStringList{u"--at-once"_s}));
            change.first = change.held();
            QVERIFY2(change.first.size() > 10, change.name.constData());
            change.programs.makeFile(u"new.json"_s,
                                     change.list == book
                                         ? R"([{"name": "A", "number": "1"}, {"name": "B", "number": "2"}])"
                                         : R"([{"lastName": "A", "home": "1"}])");
            change.programs.makeFile(u"Liesmich.txt"_s, QByteArray(100000, 'x'));
            change.programs.startKalmoctl(
                QStringList{u"--yes"_s, u"--log"_s, change.programs.path(u"log"_s)} + change.command);
        }
        const auto killAll = [&] {
            return std::count_if(std::begin(changes), std::end(changes),
                                 [](KilledChange& change) { return change.killInTime(); });
        };
        QTRY_COMPARE_WITH_TIMEOUT(killAll(), std::ssize(changes), 60000);
        const auto runAll = [&](const QStringList& words) {
            QStringList printed;
            for (KilledChange& change : changes)
                change.programs.startKalmoctl(words);
            for (KilledChange& change : changes) {
                const ProgramRun run = change.programs.finishKalmoctl();
                printed.append(run.status == 0 ? run.out : QString::fromUtf8(change.name + ": ") + run.err);
            }
            return printed;
        };
        for (KilledChange& change : changes)
            QCOMPARE(change.programs.finishKalmoctl().status, -1);
        runAll({u"recover"_s});
        for (const QString& history : runAll({u"--json"_s, u"history"_s})) {
            const QJsonArray records = QJsonDocument::fromJson(history.toUtf8()).array();
            QVERIFY2(records.size() == 1 && records[0][u"state"_s] == u"unknown"_s, qPrintable(history));
        }
        const QStringList undone = runAll({u"--yes"_s, u"undo"_s});
        for (const KilledChange& change : changes) {
            const QByteArray told = change.name + '\n' + undone.join(u'\n').toUtf8();
            QVERIFY2(change.held() == change.first, told.constData());
        }
    }
};

KALMO_TEST(tst_KalmoctlData)
#include "tst_KalmoctlData.moc"
