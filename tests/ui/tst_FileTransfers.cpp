// Transfers of the file system panel: their effects on the files in the phone and on the disk.

#include "app/Files.h"
#include "operations/FileAccess.h"
#include "operations/Records.h"
#include "support/HandsetMemory.h"
#include "support/TestProgram.h"
#include "ui/FilePanel.h"
#include "ui/panels/BatchDisplay.h"

namespace {

/// The client's words for a code.
QString failureWords(int code)
{
    return u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"_s +
           obex::GetFriedlyErrMsg(code);
}

/// The user picks files of these sizes in bytes, "1.L22" and so on.
void chooseFiles(FilePanel& made, const QList<int>& sizes)
{
    QStringList paths;
    for (const int size : sizes)
        paths.append(made.test.makeFile(u"%1.L22"_s.arg(paths.size() + 1), QByteArray(size, 'x')));
    made.choose(paths);
}

const QString clash =
    u"Die Datei \"Eis.L22\" befindet sich bereits auf dem Mobiltelefon.\nDatei überschreiben?"_s;

/// Sends a file that is "Eis.L22" in the phone.
struct Uploads : FilePanel
{
    Uploads() : FilePanel(u"Sounds"_s, {}, u"SL450HX"_s) {}

    void choose(const QByteArray& content) { FilePanel::choose({test.makeFile(u"Ei,s.L22"_s, content)}); }
    /// Replaces the phone's file at these faults, which end in a box that begins like this.
    void replaceIn(const Faults& faults, const QString& box)
    {
        ask(clash, Answer::Yes);
        setFaults(faults);
        test.dialogs.expectStart(box);
        press("open");
        setFaults({});
    }

    const QString path = test.path(u"Ei,s.L22"_s);
};

} // namespace

class FileTransfers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void downloads()
    {
        FilePanel made(u"Sounds"_s);
        made.select({u"FIL_Gong.mid"_s, u"FIL_Piep.wav"_s, u"FIL_Tonleiter.mid"_s, u"ROT_"_s});
        const QString mine = made.test.makeFile(u"Ziel/Piep.wav"_s, "meins");
        const QString in = u"Gespeichert im Ordner %1:\n"_s.arg(made.target);
        made.press("save");
        auto& menu = child<QMenu>(made.panel, "mnuFFSsave");
        QVERIFY(!menu.actions().first()->isEnabled()); // no folder was chosen yet
        QTest::keyClick(&menu, Qt::Key_Escape);
        made.expectTarget();
        made.ask(u"Die Datei \"Piep.wav\" ist im Ordner %1 schon vorhanden.\nDatei überschreiben?"_s.arg(
                     made.target),
                 Answer::No);
        made.save(1);
        QVERIFY(made.status().endsWith(u" in weniger als 1 s. 1 ausgelassen."_s));
        QCOMPARE(TestContext::contentOf(mine), "meins");
        QCOMPARE(made.saved().size(), 3);

        QVERIFY(QDir(made.target).removeRecursively() && QDir().mkpath(made.target));
        made.expectRefusal(3, // after the listing and the first file
                           u"\n\n"_s + in + u"Gong.mid\n\nNicht gespeichert:\nPiep.wav\nTonleiter.mid"_s);
        made.save(0); // the folder of the last time
        QCOMPARE(made.saved(), QStringList{u"Gong.mid"_s});

        FilePanel older(u"Sounds"_s);
        older.select({u"FIL_Piep.wav"_s});
        QVERIFY(older.mmc->Del(u"Piep.wav"_s, older.progress.all(), nullptr, false, false));
        older.expectTarget();
        older.expect(u"Nicht mehr im Telefon vorhanden, bitte laden Sie das Verzeichnis neu:\nPiep.wav"_s);
        older.save(1);
    }

    /// A file that is larger than the listing says is kept by consent only.
    void partialDownloads()
    {
        const Rows<QString, int, Answer> partial{
            // the request for the file, after those for the listing
            {"not saved", u"Piep.wav"_s, 2, Answer::No},
            {"saved", u"Piep.wav"_s, 2, Answer::Yes},
            {"not opened", u"Liesmich.txt"_s, 3, Answer::No},
            {"opened", u"Liesmich.txt"_s, 3, Answer::Yes},
        };
        partial.each([](const auto& name, const auto& request, const auto& answer) {
            const bool isOpened = name.endsWith(u".txt"_s);
            FilePanel larger(isOpened ? QString() : u"Sounds"_s);
            larger.setFaults({.surplusAt = request});
            if (!isOpened)
                larger.expectTarget();
            larger.expectQuestion(u"Die Datei \"%1\" ist nicht vollständig angekommen: "_s.arg(name), answer);
            if (isOpened) {
                larger.inDialog(u"frmMmc_View"_s, [](QWidget& view) { view.close(); });
                larger.enter(u"FIL_"_s + name);
            } else {
                larger.select({u"FIL_"_s + name});
                larger.save(1);
            }
            QCOMPARE(isOpened ? larger.dialogs : larger.saved().size(), answer == Answer::Yes ? 1 : 0);
        });
    }

    void namesThatNoFileHereCanHave()
    {
        FilePanel hostile({}, {.faults = {.hostileNames = true}});
        hostile.select(
            {u"FIL_.."_s, u"FIL_C:x.txt"_s, u"FIL_"_s + QString(300, u'L'), u"FIL_Liesmich.txt"_s});
        hostile.expectTarget();
        hostile.expect(
            u"Gespeichert im Ordner %1:\nLiesmich.txt\n\nNicht gespeichert, weil Dateien auf diesem "
            u"Computer nicht so heißen können:\n..\nC:x.txt\n%2…"_s.arg(hostile.target, QString(60, u'L')));
        hostile.save(1);
        QCOMPARE(hostile.saved(), QStringList{u"Liesmich.txt"_s});
    }

    /// The phone falls silent in the second of three files, while it is saved or read to be deleted: one box
    /// says what happened, what is done and what is not. The phone keeps all files.
    void aBrokenLineHasOneBox()
    {
        const QString failure = failureWords(obex::Timeout);
        for (const bool isDeletion : {false, true}) {
            FilePanel made(u"Sounds"_s);
            const QStringList held = memoryOf(made.port.handset().phone());
            made.select({u"FIL_Gong.mid"_s, u"FIL_Piep.wav"_s, u"FIL_Tonleiter.mid"_s});
            made.setFaults({.silentFrom = 3});
            if (isDeletion) {
                made.ask(u"3 ausgewählte Dateien wirklich löschen?"_s, Answer::Yes, Buttons::YesNo);
                made.expect(failure + u"\n\nNicht gelöscht:\nTonleiter.mid\nPiep.wav\nGong.mid"_s);
                made.press("del");
                QCOMPARE(made.status(), u"Nichts gelöscht."_s);
            } else {
                made.expectTarget();
                made.expect(failure + u"\n\nGespeichert im Ordner %1:\nGong.mid\n\nNicht gespeichert:\n"
                                      u"Piep.wav\nTonleiter.mid"_s.arg(made.target));
                made.save(1);
                QVERIFY2(made.status().endsWith(u" s. 2 nicht gespeichert."_s), qPrintable(made.status()));
                QCOMPARE(made.saved(), QStringList{u"Gong.mid"_s});
            }
            QCOMPARE(memoryOf(made.port.handset().phone()), held);
            made.expect(failure); // when the section is left
        }
    }

    /// The same while the second of three files is sent, or if the user stops that.
    void aBrokenUploadHasOneBox()
    {
        const QString lost = failureWords(obex::Timeout) +
                             u"\n\nDas Telefon enthält vielleicht nur einen Teil der Datei \"2.L22\".\n\n"
                             u"Zum Telefon übertragen:\n1.L22\n\nNicht übertragen:\n3.L22"_s;
        const QString open = u" s. 1 vielleicht gesendet. 1 nicht gesendet."_s;
        const Rows<handset::Faults, QString, QString> rows{
            {"silence", {.silentFrom = 9}, lost, open},
            {"line gone", {.hangUpAfter = 20000}, lost, open},
            {"refusal",
             {.refuseAt = 9},
             failureWords(0xC3) + u"\n\nZum Telefon übertragen:\n1.L22\n\nNicht übertragen:\n2.L22\n3.L22"_s,
             u" s. 2 nicht gesendet."_s},
            {"wish", {}, QString(), u" s. 2 nicht gesendet (abgebrochen)."_s},
        };
        rows.each([](const auto& faults, const auto& box, const auto& end) {
            FilePanel made(u"Sounds"_s, {}, u"SL450HX"_s);
            chooseFiles(made, {30, 100000, 30});
            made.setFaults(faults);
            auto& cancel = made.progress.cancel;
            QObject::connect(made.mmc.get(), &obex::clsMmc::BusyOff, made.mmc.get(),
                             [&cancel] { cancel.checked = false; });
            std::function<void()> stopInTheSecond = [&] {
                cancel.checked = made.status().startsWith(u"2 von 3: Übertrage"_s);
                if (!cancel.checked)
                    made.test.clock.after(0.05, stopInTheSecond);
            };
            if (end.contains(u"abgebrochen"_s))
                stopInTheSecond();
            if (!box.isEmpty())
                made.expect(box);
            made.press("open");
            QVERIFY2(made.status().startsWith(u"1.L22 gesendet, "_s) && made.status().endsWith(end),
                     qPrintable(made.status()));
            if (made.mmc->IsOnline() != obex::clsMmc::Connected || !made.mmc->isInStep())
                made.expect(failureWords(obex::Timeout)); // when the section is left
        });
    }

    void aWishToStopHasNone()
    {
        FilePanel made(u"Sounds"_s);
        made.select({u"FIL_Gong.mid"_s, u"FIL_Piep.wav"_s, u"FIL_Tonleiter.mid"_s});
        made.expectTarget();
        QObject::connect(made.mmc.get(), &obex::clsMmc::BytesRxed, made.mmc.get(),
                         [&] { made.progress.cancel.checked = made.status().startsWith(u"2 von 3"_s); });
        made.save(1);
        QVERIFY2(made.status().endsWith(u" nicht gespeichert (abgebrochen)."_s), qPrintable(made.status()));
        QVERIFY(!made.saved().contains(u"Tonleiter.mid"_s) && made.saved().contains(u"Gong.mid"_s));
    }

    /// A phone need not say how many bytes a file has.
    void receivedBytesAreCounted()
    {
        FilePanel made;
        ui::BatchDisplay display(made.progress.all(), made.test.clock);
        const ui::ReceivedBytes received(*made.mmc, display);
        Q_EMIT made.mmc->BytesRxed(300); // of a listing ahead of the files
        display.expect(2, 3000);
        display.next(1000);
        display.progress().status(u"Empfange a..."_s);
        made.test.clock.WaitSeconds(2);
        Q_EMIT made.mmc->BytesRxed(500);
        QCOMPARE(made.status(), u"1 von 2: Empfange a...   0.5kB von 2.9kB, 0.2kB/s, noch 0:10"_s);
        QCOMPARE(made.progress.bar.value, 167);
    }

    void deletes()
    {
        FilePanel made(u"Sounds"_s);
        const QStringList names{u"Piep.wav"_s, u"Gong.mid"_s, u"Tonleiter.mid"_s};
        made.setFaults({});
        QByteArray content;
        for (const QString& name : names)
            content = made.held(name);
        const int reading = 1 + made.requests(); // and the listing
        made.select({u"FIL_Piep.wav"_s, u"FIL_Gong.mid"_s, u"FIL_Tonleiter.mid"_s, u"CDU_"_s});
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            made.ask(u"3 ausgewählte Dateien wirklich löschen?"_s, answer, Buttons::YesNo);
            if (answer == Answer::Yes)
                made.expectRefusal(reading + 2, // of the second, from the last on
                                   u"\n\nGelöscht:\nTonleiter.mid\n\nNicht gelöscht:\nPiep.wav\nGong.mid"_s);
            made.press("del");
        }
        QCOMPARE(made.shown(), u"FIL_Gong.mid FIL_Piep.wav ROT_ CDU_"_s);

        // All that was to go is in the record, so that it can come back.
        const operations::Records records(made.test.context, operations::knownIdentity(made.test.sy));
        QCOMPARE(records.all().size(), 1u);
        const auto record = records.read(records.all().front().id);
        QVERIFY(record && record->part(u"Sounds/Tonleiter.mid"_s));
        QCOMPARE(record->part(u"Sounds/Tonleiter.mid"_s)->bytes, content);

        made.setFaults({});
        made.select({u"FIL_Piep.wav"_s});
        QVERIFY(made.mmc->Del(u"Piep.wav"_s, made.progress.all(), nullptr, false, false));
        made.ask(u"1 ausgewählte Dateien wirklich löschen?"_s, Answer::Yes, Buttons::YesNo);
        made.expect(u"Nicht mehr im Telefon vorhanden:\nPiep.wav"_s);
        made.press("del");
        QCOMPARE(made.shown(), u"FIL_Gong.mid ROT_ CDU_"_s);
    }

    void uploads()
    {
        Uploads made;
        for (const QByteArray content : {"eins", "zwei", "drei"}) {
            made.choose(content);
            if (content != "eins")
                made.ask(clash, content == "zwei" ? Answer::No : Answer::Yes);
            made.press("open");
            QCOMPARE(made.held(u"Eis.L22"_s), content == "zwei" ? "eins" : content);
        }
        made.FilePanel::choose({made.test.makeFile(u"€.L22"_s, "x")});
        made.expect(u"Nicht übertragen, weil Dateien im Telefon nicht so heißen können:\n€.L22"_s);
        made.press("open");
        made.choose(QByteArray(30000000, 'x'));
        made.expect(u"Im Telefon ist zu wenig Speicher frei, um den Vorgang ausfürhen zu können."_s);
        made.press("open");
    }

    /// A file of the phone is saved before it goes, and one that can't be sent costs nothing in the phone.
    void replacedFilesAreSaved()
    {
        Uploads made;
        made.choose("drei");
        made.press("open");
        const QDir backups(made.test.storage + u"/Backup"_s);
        made.choose("vier");
        QVERIFY(QFile::remove(made.path));
        made.expect(u"Datei "_s + made.path + u" existiert nicht."_s);
        made.press("open");
        QVERIFY(made.shown().contains(u"FIL_Eis.L22"_s) && backups.entryList(QDir::Files).isEmpty());
        const QString full =
            failureWords(0xE0) +
            u"\n\nDie Datei \"Eis.L22\" wurde nicht ersetzt. Eine Kopie der bisherigen Datei "
            u"liegt hier:\n"_s +
            backups.filePath(u"Eis 2"_s);
        made.choose("vier");
        made.replaceIn({.full = true}, full);
        QVERIFY(!made.shown().contains(u"FIL_Eis.L22"_s));
        const QStringList copies = backups.entryList({u"Eis*.L22"_s}, QDir::Files);
        QCOMPARE(copies.size(), 1);
        QCOMPARE(TestContext::contentOf(backups.filePath(copies.last())), "drei");

        made.choose("fünf");
        made.press("open");
        made.choose("sechs"); // the backup does not match the phone's listing
        made.replaceIn(
            {.surplusAt = 2},
            u"Die Datei \"Eis.L22\" konnte im Telefon nicht vollständig gelesen werden. Ohne Sicherung "
            u"wird sie nicht ersetzt."_s);
        QVERIFY(made.shown().contains(u"FIL_Eis.L22"_s));

        // Several files have one box for what the client does not say.
        made.FilePanel::choose({made.path, made.test.makeFile(u"Zwei.L22"_s, "zwei")});
        made.replaceIn({.full = true}, full);
    }

    /// First chunk and two whole further ones: the count of frames looks like an upload that ended early.
    void theListingDecidesAboutAnEarlyEnd()
    {
        for (const bool isCutOff : {false, true}) {
            FilePanel made(u"Sounds"_s, {.maxPacket = 300}, u"SL400H"_s);
            const QString path = made.test.makeFile(u"Eis.L22"_s, QByteArray(252 + 2 * 294, 'e'));
            for (const bool replaces : {false, true}) {
                made.choose({path});
                if (replaces)
                    made.ask(clash, Answer::Yes);
                made.setFaults({.earlySuccess = isCutOff && replaces});
                made.test.dialogs.expectStart(
                    u"Das Telefon hat behauptet, bereits die komplette Datei \"Eis.L22\" erhalten zu haben"_s);
                if (isCutOff && replaces) // the old file, in as many frames, can't come back either
                    made.test.dialogs.expectStart(u"Die Datei \"Eis.L22\" wurde nicht ersetzt, das Telefon "
                                                  u"enthält vielleicht einen Teil davon. "
                                                  "Eine Kopie der bisherigen Datei liegt hier:"_s);
                else
                    made.test.dialogs.expect(
                        Icon::Information,
                        u"Die Datei \"Eis.L22\" ist vollständig im Telefon: Es führt sie mit 840 Bytes."_s);
                made.press("open");
                QCOMPARE(made.status().startsWith(u"1 vielleicht gesendet."_s), isCutOff && replaces);
            }
        }
    }

    /// Phones that list no sizes show 0 bytes for all files.
    void anEmptyEntryIsNoWholeFile()
    {
        FilePanel made;
        operations::FileAccess access(made.mmc, u"Test"_s, made.progress.all());
        const auto isWhole = [&](qint32 listed, bool isConfirmed) {
            obex::tObxDirEntry entry;
            entry.kind = obex::EntryKind::File;
            entry.name = u"A.mid"_s;
            entry.size = listed;
            return access.showsWhole({entry}, {u"a.mid"_s, 300, isConfirmed});
        };
        QVERIFY(isWhole(300, false) && isWhole(0, true));
        QVERIFY(!isWhole(299, true) && !isWhole(0, false));
        QVERIFY(access.list(obex::PhonePath(u"Sounds"_s))); // with sizes
        QVERIFY(isWhole(300, false) && !isWhole(0, true));
    }
};

KALMO_TEST(FileTransfers)
#include "tst_FileTransfers.moc"
