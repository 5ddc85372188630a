// The file system panel against the emulated handset: what becomes of the files in the phone and on the disk.

#include "app/Files.h"
#include "obex/clsMmc.h"
#include "ui/lists/RowsView.h"
#include "ui/panels/fraFFS.h"
#include "ui/TestProgram.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

struct Panel : TestProgram
{
    explicit Panel(const handset::Options& options = {})
        : TestProgram(u"S68H"_s, options), mmc(std::make_shared<obex::clsMmc>(line)),
          panel(program, mmc, progress.all())
    {
        mmc->Online(progress.all());
        QDir().mkpath(target);
        child<QAction>(panel, "refresh").trigger();
    }
    ~Panel() { mmc->Offline(progress.all()); }

    void enter(const QString& key)
    {
        Q_EMIT child<ui::RowsView>(panel, "lvwFFs").rowDoubleClicked(rowOf(key));
    }
    int rowOf(const QString& key) { return panel.lvwFFs().indexOfKey(key); }
    void select(const QStringList& keys)
    {
        panel.lvwFFs().selectAll(false);
        for (const QString& key : keys)
            panel.lvwFFs().setSelected(rowOf(key), true);
    }
    QStringList shown()
    {
        QStringList keys;
        for (int row = 0; row < panel.lvwFFs().count(); ++row)
            keys.append(panel.lvwFFs().row(row).key);
        return keys;
    }
    QStringList saved() const { return QDir(target).entryList(QDir::Files); }
    void expectTarget(const QString& start = {})
    {
        test.dialogs.expectPickFolder(u"Zielordner für Download auswählen"_s, start, target);
    }
    void save(int item) { child<QMenu>(panel, "mnuFFSsave").actions().at(item)->trigger(); }
    void expectRefusal()
    {
        expect(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"
               u"ReCode: 403 Forbidden - operation is understood but refused"_s);
    }
    void expectFile(const QString& path)
    {
        const QString start = app::GetLastInitDir(test.context, u"UploadToPhone"_s);
        test.dialogs.expectOpenFile({.title = u"Datei auf zum Telefon übertragen"_s, .folder = start}, path);
    }
    void upload(const QString& path, const QString& question = {}, Answer answer = Answer::Yes)
    {
        expectFile(path);
        if (!question.isEmpty())
            expectQuestion(question, Buttons::YesNoCancel, answer);
        child<QAction>(panel, "open").trigger();
    }
    void expect(const QString& text) { test.dialogs.expect({.text = text, .icon = Icon::Exclamation}); }
    void expectQuestion(const QString& text, Buttons buttons, Answer answer)
    {
        test.dialogs.expect(
            {.text = text, .buttons = buttons, .icon = Icon::Question, .defaultButton = Answer::No}, answer);
    }

    std::shared_ptr<obex::clsMmc> mmc;
    ui::fraFFS panel;
    QString target = test.path(u"Ziel"_s);
};

} // namespace

class FileSystemPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldersAndGauge();
    void opensFiles();
    void downloads();
    void hostileNamesStayInTheFolder();
    void deletes();
    void uploads();
};

void FileSystemPanel::foldersAndGauge()
{
    Panel made;
    QVERIFY(child<QProgressBar>(made.panel, "prgMe").text().contains(u"% frei ("_s));
    made.enter(u"FOL_Pictures"_s);
    made.enter(u"FOL_Urlaub 2026"_s);
    QCOMPARE(child<QLineEdit>(made.panel, "txtFFscDirAct").text(), u"Mobile:\\Pictures\\Urlaub 2026"_s);
    QCOMPARE(made.shown(), QStringList({u"FIL_Stufen.jpg"_s, u"ROT_"_s, u"CDU_"_s}));
    made.enter(u"CDU_"_s);
    QVERIFY(made.rowOf(u"FOL_Urlaub 2026"_s) >= 0);
    made.enter(u"ROT_"_s);
    QCOMPARE(child<QLineEdit>(made.panel, "txtFFscDirAct").text(), u"Mobile:\\"_s);
    QCOMPARE(made.panel.lvwFFs().selectedRows(), QList<int>{0});
}

void FileSystemPanel::opensFiles()
{
    Panel made;
    child<QAction>(made.panel, "show").trigger(); // with nothing selected
    made.select({u"FIL_Liesmich.txt"_s});
    const QString copy = made.test.storage + u"/config/temp/Liesmich.txt"_s;
    child<QAction>(made.panel, "show").trigger();
    QCOMPARE(made.desktop.opened, QStringList{copy});
    QVERIFY(QFileInfo(copy).size() > 0);
    made.desktop.knowsFiles = false;
    made.enter(u"FOL_Sounds"_s);
    made.test.dialogs.expect(
        {.text =
             u"Für die Datei Piep.wav ist auf Ihrem Rechner aktuell kein Programm als Standard zum Öffnen "
             u"dieses Dateityps festgelegt.\nBitte installieren Sie ein Programm, das mit *.wav Dateien "
             u"umgehen kann. Wenn ein solche Programm schon vorhanden sein sollte, wählen Sie \"JA\" und "
             u"geben Sie den Pfad zu diesen Programm an.\n\nProgramme zum Öffnen manuell wählen?"_s,
         .title = u"Kalmo - fehlende Dateiassoziation"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question},
        Answer::Yes);
    made.test.dialogs.expectOpenFile({.title = u"Kalmo - Programm wählen"_s, .folder = u"/usr/bin"_s},
                                     u"/usr/bin/play"_s);
    made.enter(u"FIL_Piep.wav"_s);
    QCOMPARE(made.desktop.opened.last(),
             u"/usr/bin/play "_s + made.test.storage + u"/config/temp/Piep.wav"_s);
}

void FileSystemPanel::downloads()
{
    Panel made;
    made.enter(u"FOL_Sounds"_s);
    made.select({u"FIL_Gong.mid"_s, u"FIL_Piep.wav"_s, u"FIL_Tonleiter.mid"_s, u"ROT_"_s});
    const QString mine = made.test.makeFile(u"Ziel/Piep.wav"_s, "meins");
    made.expectTarget();
    made.expectQuestion(
        u"Die Datei \"Piep.wav\" ist im Ordner %1 schon vorhanden.\nDatei überschreiben?"_s.arg(made.target),
        Buttons::YesNoCancel, Answer::No);
    made.expect(u"Gespeichert im Ordner %1:\nGong.mid\nTonleiter.mid\n\nNicht gespeichert:\nPiep.wav"_s.arg(
        made.target));
    made.save(1);
    QCOMPARE(made.saved(), QStringList({u"Gong.mid"_s, u"Piep.wav"_s, u"Tonleiter.mid"_s}));
    QCOMPARE(TestContext::contentOf(mine), "meins");

    for (const QString& name : made.saved())
        QFile::remove(made.target + u'/' + name);
    made.port.handset().setFaults({.refuseAt = 2});
    made.expectRefusal();
    made.expect(u"Gespeichert im Ordner %1:\nGong.mid\n\nNicht gespeichert:\nPiep.wav\nTonleiter.mid"_s.arg(
        made.target));
    made.save(0); // the folder of the last time
    QCOMPARE(made.saved(), QStringList{u"Gong.mid"_s});
    made.enter(u"ROT_"_s);
    made.select({u"FOL_Sounds"_s});
    made.save(0); // nothing to save, nothing to tell
}

void FileSystemPanel::hostileNamesStayInTheFolder()
{
    Panel made({.faults = {.hostileNames = true}});
    made.select(
        {u"FIL_.."_s, u"FIL_C:x.txt"_s, u"FIL_CON"_s, u"FIL_"_s + QString(300, u'L'), u"FIL_Liesmich.txt"_s});
    made.expectTarget();
    made.expect(
        u"Gespeichert im Ordner %1:\nLiesmich.txt\n\nNicht gespeichert, weil Dateien auf diesem "
        u"Computer nicht so heißen können:\n..\nC:x.txt\nCON\n%2…"_s.arg(made.target, QString(60, u'L')));
    made.save(1);
    QCOMPARE(made.saved(), QStringList{u"Liesmich.txt"_s});
}

void FileSystemPanel::deletes()
{
    Panel made;
    child<QAction>(made.panel, "del").trigger(); // with nothing selected
    made.enter(u"FOL_Sounds"_s);
    made.select({u"FIL_Piep.wav"_s, u"FIL_Gong.mid"_s, u"FIL_Tonleiter.mid"_s, u"CDU_"_s});
    const QString question = u"3 ausgewählte Dateien wirklich löschen?"_s;
    made.expectQuestion(question, Buttons::YesNo, Answer::No);
    child<QAction>(made.panel, "del").trigger();
    QCOMPARE(made.shown().size(), 5);
    made.port.handset().setFaults({.refuseAt = 2});
    made.expectQuestion(question, Buttons::YesNo, Answer::Yes);
    made.expectRefusal();
    child<QAction>(made.panel, "del").trigger();
    QCOMPARE(made.shown().first(2), QStringList({u"FIL_Gong.mid"_s, u"FIL_Piep.wav"_s})); // from the last on
    QCOMPARE(made.shown().size(), 4);
}

void FileSystemPanel::uploads()
{
    Panel made;
    made.enter(u"FOL_Pictures"_s);
    const QString path = made.test.makeFile(u"Ei,s.png"_s, "neu");
    made.upload(path);
    QVERIFY(made.rowOf(u"FIL_Eis.png"_s) >= 0);
    const QString question =
        u"Die Datei \"Eis.png\" befindet sich bereits auf dem Mobiltelefon.\nDatei überschreiben?"_s;
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        made.test.makeFile(u"Ei,s.png"_s, "neuer");
        made.upload(path, question, answer);
        QByteArray held;
        QVERIFY(made.mmc->GetFile(u"Eis.png"_s, held, made.progress.all()));
        QCOMPARE(held, answer == Answer::No ? "neu" : "neuer");
    }
    made.test.makeFile(u"Ei,s.png"_s, QByteArray(30000000, 'x'));
    made.expectFile(path);
    made.expect(u"Im Telefon ist zu wenig Speicher frei, um den Vorgang ausfürhen zu können."_s);
    child<QAction>(made.panel, "open").trigger();
    QVERIFY(made.rowOf(u"FIL_Eis.png"_s) >= 0);
}

QTEST_MAIN(FileSystemPanel)
#include "tst_FileSystemPanel.moc"
