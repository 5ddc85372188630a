// The file system panel against the emulated handset: its effects on the files in the phone and on the disk.

#include "app/Files.h"
#include "obex/clsMmc.h"
#include "operations/Records.h"
#include "ui/lists/RowsView.h"
#include "ui/panels/fraFFS.h"
#include "ui/TestProgram.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

struct Panel : TestProgram
{
    explicit Panel(const QString& folder = {}, const handset::Options& options = {},
                   const QString& model = u"S68H"_s)
        : TestProgram(model, options), mmc(std::make_shared<obex::clsMmc>(line)),
          panel(program, mmc, progress.all())
    {
        mmc->Online(progress.all());
        QDir().mkpath(target);
        press("refresh");
        if (!folder.isEmpty())
            enter(u"FOL_"_s + folder);
    }
    ~Panel() { mmc->Offline(progress.all()); }

    void press(const char* key)
    {
        auto& bar = child<QToolBar>(panel, "tlbFFS");
        QTest::keyClick(bar.widgetForAction(&child<QAction>(bar, key)), Qt::Key_Space);
    }
    void enter(const QString& key)
    {
        Q_EMIT child<ui::RowsView>(panel, "lvwFFs").rowDoubleClicked(panel.lvwFFs().indexOfKey(key));
    }
    void select(const QStringList& keys)
    {
        for (int row = 0; row < panel.lvwFFs().count(); ++row)
            panel.lvwFFs().setSelected(row, false);
        for (const QString& key : keys)
            panel.lvwFFs().setSelected(panel.lvwFFs().indexOfKey(key), true);
    }
    QString shown()
    {
        QStringList keys;
        for (int row = 0; row < panel.lvwFFs().count(); ++row)
            keys.append(panel.lvwFFs().row(row).key);
        return keys.join(u' ');
    }
    ui::RowsView& list() { return child<ui::RowsView>(panel, "lvwFFs"); }
    void show()
    {
        panel.show();
        panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        list().setFocus();
    }
    QString current() { return panel.lvwFFs().row(panel.lvwFFs().current()).key; }
    QStringList saved() const { return QDir(target).entryList(QDir::Files); }
    void save(int item)
    {
        press("save");
        auto& menu = child<QMenu>(panel, "mnuFFSsave");
        const QAction* entry = menu.actions().at(item);
        for (int row = 0; row <= item && menu.activeAction() != entry; ++row)
            QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    }
    void expectTarget()
    {
        test.dialogs.expectPickFolder(u"Zielordner für Download auswählen"_s, QString(), target);
    }
    /// The user picks this file, for what the panel asks for.
    void choose(const QString& file)
    {
        panel.setUploadChooser([file](const ui::UploadQuestion& question) {
            return ui::UploadChoice{{file}, {.phoneType = question.phoneType, .kind = question.kind}};
        });
    }
    void expect(const QString& text) { test.dialogs.expect({.text = text, .icon = Icon::Exclamation}); }
    void expectRefusal(int request)
    {
        port.handset().setFaults({.refuseAt = request});
        expect(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"
               u"ReCode: 403 Forbidden - operation is understood but refused"_s);
    }
    void ask(const QString& text, Answer answer, Buttons buttons = Buttons::YesNoCancel)
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
    void foldersAndFiles();
    void downloads();
    void deletes();
    void uploads();
    void aSilenceEndsOneCommandOnly();
    void nothingIsDoneInAnUnknownFolder();
    void theListingDecidesAboutAnEarlyEnd();
    void searchNarrowsTheList();
};

void FileSystemPanel::foldersAndFiles()
{
    Panel made(u"Pictures"_s);
    made.enter(u"FOL_Urlaub 2026"_s);
    QCOMPARE(child<QLineEdit>(made.panel, "txtFFscDirAct").text(), u"Mobile:\\Pictures\\Urlaub 2026"_s);
    QCOMPARE(made.shown(), u"FIL_Stufen.jpg ROT_ CDU_"_s);
    made.enter(u"CDU_"_s);
    QVERIFY(made.shown().contains(u"FOL_Urlaub 2026"_s));
    made.enter(u"ROT_"_s);
    QCOMPARE(made.panel.lvwFFs().selectedRows(), QList<int>{0});
    // What Kalmo can't show goes to the user's own program.
    QVERIFY(made.mmc->PutFile(made.test.makeFile(u"Film.3gp"_s, "x"), made.progress.all()));
    made.press("refresh");
    made.panel.lvwFFs().setCurrent(made.panel.lvwFFs().indexOfKey(u"FIL_Film.3gp"_s));
    made.press("show");
    const QString copy = made.test.storage + u"/config/temp/Film.3gp"_s;
    QCOMPARE(made.desktop.opened, QStringList{u' ' + copy});
    QVERIFY(QFileInfo(copy).size() > 0);
}

void FileSystemPanel::downloads()
{
    Panel made(u"Sounds"_s);
    made.select({u"FIL_Gong.mid"_s, u"FIL_Piep.wav"_s, u"FIL_Tonleiter.mid"_s, u"ROT_"_s});
    const QString mine = made.test.makeFile(u"Ziel/Piep.wav"_s, "meins");
    const QString in = u"Gespeichert im Ordner %1:\n"_s.arg(made.target);
    made.expectTarget();
    made.ask(
        u"Die Datei \"Piep.wav\" ist im Ordner %1 schon vorhanden.\nDatei überschreiben?"_s.arg(made.target),
        Answer::No);
    made.expect(in + u"Gong.mid\nTonleiter.mid\n\nNicht gespeichert:\nPiep.wav"_s);
    made.save(1);
    QCOMPARE(TestContext::contentOf(mine), "meins");
    QCOMPARE(made.saved().size(), 3);

    QVERIFY(QDir(made.target).removeRecursively() && QDir().mkpath(made.target));
    made.expectRefusal(3); // after the listing and the first file
    made.expect(in + u"Gong.mid\n\nNicht gespeichert:\nPiep.wav\nTonleiter.mid"_s);
    made.save(0); // the folder of the last time
    QCOMPARE(made.saved(), QStringList{u"Gong.mid"_s});

    for (const Answer answer : {Answer::No, Answer::Yes}) {
        Panel larger(u"Sounds"_s);
        larger.port.handset().setFaults({.surplusAt = 2});
        larger.select({u"FIL_Piep.wav"_s});
        larger.expectTarget();
        larger.test.dialogs.expectStart(u"Die Datei \"Piep.wav\" ist nicht vollständig angekommen: "_s,
                                        Buttons::YesNo, answer);
        larger.save(1);
        QCOMPARE(larger.saved().size(), answer == Answer::Yes ? 1 : 0);
    }

    Panel hostile({}, {.faults = {.hostileNames = true}});
    hostile.select({u"FIL_.."_s, u"FIL_C:x.txt"_s, u"FIL_"_s + QString(300, u'L'), u"FIL_Liesmich.txt"_s});
    hostile.expectTarget();
    hostile.expect(
        u"Gespeichert im Ordner %1:\nLiesmich.txt\n\nNicht gespeichert, weil Dateien auf diesem "
        u"Computer nicht so heißen können:\n..\nC:x.txt\n%2…"_s.arg(hostile.target, QString(60, u'L')));
    hostile.save(1);
    QCOMPARE(hostile.saved(), QStringList{u"Liesmich.txt"_s});
}

void FileSystemPanel::deletes()
{
    Panel made(u"Sounds"_s);
    const QStringList names{u"Piep.wav"_s, u"Gong.mid"_s, u"Tonleiter.mid"_s};
    made.port.handset().setFaults({});
    QByteArray content;
    for (const QString& name : names)
        QVERIFY(made.mmc->GetFile(name, content, made.progress.all()));
    const int reading = 1 + made.port.handset().phone().faults.requests; // and the listing
    made.select({u"FIL_Piep.wav"_s, u"FIL_Gong.mid"_s, u"FIL_Tonleiter.mid"_s, u"CDU_"_s});
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        made.ask(u"3 ausgewählte Dateien wirklich löschen?"_s, answer, Buttons::YesNo);
        if (answer == Answer::Yes)
            made.expectRefusal(reading + 2); // of the second, from the last on
        made.press("del");
    }
    QCOMPARE(made.shown(), u"FIL_Gong.mid FIL_Piep.wav ROT_ CDU_"_s);

    // All that was to go is in the record, so that it can come back.
    const operations::Records records(made.test.context, operations::knownIdentity(made.test.sy));
    QCOMPARE(records.all().size(), 1u);
    const auto record = records.read(records.all().front().id);
    QVERIFY(record && record->part(u"Sounds/Tonleiter.mid"_s));
    QCOMPARE(record->part(u"Sounds/Tonleiter.mid"_s)->bytes, content);
}

void FileSystemPanel::uploads()
{
    Panel made(u"Sounds"_s, {}, u"SL450HX"_s);
    const QString path = made.test.path(u"Ei,s.L22"_s);
    const auto upload = [&](const QByteArray& content) {
        made.choose(made.test.makeFile(u"Ei,s.L22"_s, content));
    };
    const QString clash =
        u"Die Datei \"Eis.L22\" befindet sich bereits auf dem Mobiltelefon.\nDatei überschreiben?"_s;
    for (const QByteArray content : {"eins", "zwei", "drei"}) {
        upload(content);
        if (content != "eins")
            made.ask(clash, content == "zwei" ? Answer::No : Answer::Yes);
        made.press("open");
        QByteArray held;
        QVERIFY(made.mmc->GetFile(u"Eis.L22"_s, held, made.progress.all()));
        QCOMPARE(held, content == "zwei" ? "eins" : content);
    }
    // What can't be sent costs nothing in the phone, and what it holds is on the disk before it goes.
    const QDir backups(made.test.storage + u"/Backup"_s);
    upload("vier");
    QVERIFY(QFile::remove(path));
    made.expect(u"Datei "_s + path + u" existiert nicht."_s);
    made.press("open");
    QVERIFY(made.shown().contains(u"FIL_Eis.L22"_s) && backups.entryList(QDir::Files).size() == 1);
    upload("vier");
    made.ask(clash, Answer::Yes);
    made.port.handset().setFaults({.full = true});
    made.test.dialogs.expectStart(u"Beim Zugriff auf das Telefon"_s);
    made.test.dialogs.expectStart(
        u"Die Datei \"Eis.L22\" wurde nicht ersetzt. Eine Kopie der bisherigen Datei "
        u"liegt hier:\n"_s +
        backups.filePath(u"Eis 2"_s));
    made.press("open");
    QVERIFY(!made.shown().contains(u"FIL_Eis.L22"_s));
    const QStringList copies = backups.entryList({u"Eis*.L22"_s}, QDir::Files, QDir::Name);
    QCOMPARE(copies.size(), 2);
    QCOMPARE(TestContext::contentOf(backups.filePath(copies.last())), "drei");
    made.port.handset().setFaults({});

    made.choose(made.test.makeFile(u"€.L22"_s, "x"));
    made.expect(u"Nicht übertragen, weil Dateien im Telefon nicht so heißen können:\n€.L22"_s);
    made.press("open");

    // Nothing is replaced if its backup does not match the phone's listing.
    upload("fünf");
    made.press("open");
    upload("sechs");
    made.ask(clash, Answer::Yes);
    made.port.handset().setFaults({.surplusAt = 2}); // after the listing
    made.expect(u"Die Datei \"Eis.L22\" konnte im Telefon nicht vollständig gelesen werden. Ohne Sicherung "
                u"wird sie nicht ersetzt."_s);
    made.press("open");
    QVERIFY(made.shown().contains(u"FIL_Eis.L22"_s));
    made.port.handset().setFaults({});

    upload(QByteArray(30000000, 'x'));
    made.expect(u"Im Telefon ist zu wenig Speicher frei, um den Vorgang ausfürhen zu können."_s);
    made.press("open");
}

void FileSystemPanel::aSilenceEndsOneCommandOnly()
{
    Panel made(u"Sounds"_s);
    made.select({u"FIL_Piep.wav"_s});
    made.port.handset().setFaults({.lateBy = 25.2, .lateRequestAt = 1});
    made.expectTarget();
    made.expect(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"_s +
                obex::GetFriedlyErrMsg(obex::Timeout));
    made.save(1);
    QCOMPARE(made.saved(), QStringList());
    made.save(0);
    QCOMPARE(made.saved(), QStringList{u"Piep.wav"_s});
}

/// The phones of families 11 to 13 would take the name for one in the root.
void FileSystemPanel::nothingIsDoneInAnUnknownFolder()
{
    Panel made(u"Sounds"_s, {}, u"S820"_s);
    made.select({u"FIL_Piep.wav"_s});
    made.port.handset().setFaults({.refuseAt = 1});
    made.expect(u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"
                u"ReCode: 403 Forbidden - operation is understood but refused"_s);
    made.enter(u"CDU_"_s);
    QCOMPARE(made.shown(), u"ROT_ CDU_"_s);
    const QString unknown = u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"_s +
                            obex::GetFriedlyErrMsg(obex::FolderUnknown);
    made.expect(unknown);
    made.press("open");
    made.press("del"); // nothing is selected that could go
    made.press("save");
    auto& menu = child<QMenu>(made.panel, "mnuFFSsave");
    QVERIFY(!menu.actions().first()->isEnabled()); // no folder was chosen yet
    QTest::keyClick(&menu, Qt::Key_Escape);
    QCOMPARE(made.port.handset().phone().faults.requests, 1);
    made.enter(u"ROT_"_s);
    QVERIFY(made.shown().contains(u"FOL_Sounds"_s));
}

/// First chunk and two whole further ones: the count of frames looks like an upload that ended early.
void FileSystemPanel::theListingDecidesAboutAnEarlyEnd()
{
    for (const bool isCutOff : {false, true}) {
        Panel made(u"Sounds"_s, {.maxPacket = 300}, u"SL400H"_s);
        const QString path = made.test.makeFile(u"Eis.L22"_s, QByteArray(252 + 2 * 294, 'e'));
        for (const bool replaces : {false, true}) {
            made.choose(path);
            if (replaces)
                made.ask(u"Die Datei \"Eis.L22\" befindet sich bereits auf dem Mobiltelefon.\nDatei "
                         u"überschreiben?"_s,
                         Answer::Yes);
            made.port.handset().setFaults({.earlySuccess = isCutOff && replaces});
            made.test.dialogs.expectStart(
                u"Das Telefon hat behauptet, bereits die komplette Datei \"Eis.L22\" erhalten zu haben"_s);
            if (isCutOff && replaces) // the old file, in as many frames, can't come back either
                made.test.dialogs.expectStart(u"Die Datei \"Eis.L22\" wurde nicht ersetzt, das Telefon "
                                              u"enthält vielleicht einen Teil davon. "
                                              "Eine Kopie der bisherigen Datei liegt hier:"_s);
            else
                made.test.dialogs.expect(
                    {.text =
                         u"Die Datei \"Eis.L22\" ist vollständig im Telefon: Es führt sie mit 840 Bytes."_s,
                     .icon = Icon::Information});
            made.press("open");
        }
    }
}

void FileSystemPanel::searchNarrowsTheList()
{
    Panel made(u"Sounds"_s);
    made.show();
    auto& field = child<QLineEdit>(made.panel, "txtSearch");
    made.list().wantSearch();
    QTest::keyClicks(&field, u"gong"_s);
    QCOMPARE(made.list().shownRows(), 1);
    QTest::keyClick(&field, Qt::Key_Backspace); // a letter, not a folder
    QCOMPARE(child<QLineEdit>(made.panel, "txtFFscDirAct").text(), u"Mobile:\\Sounds"_s);
    QTest::keyClick(&field, Qt::Key_Down);
    QVERIFY(made.list().hasFocus());
    QCOMPARE(made.current(), u"FIL_Gong.mid"_s);
    QTest::keyClick(&made.list(), Qt::Key_Backspace);
    QCOMPARE(field.text(), QString());
    QVERIFY(made.shown().contains(u"FOL_Sounds"_s));
}

QTEST_MAIN(FileSystemPanel)
#include "tst_FileSystemPanel.moc"
