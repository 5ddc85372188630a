#include "app/FileAssociations.h"
#include "app/Files.h"
#include "support/TestContext.h"

#include <QDir>
#include <QFileInfo>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using toolkit::Answer;

namespace {

/// While it lives no file can grow: what a full disk looks like to the program.
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit none{0, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
};

} // namespace

class tst_Files : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void existence_data();
    void existence();
    void foldersAreMade_data();
    void foldersAreMade();
    void readOnlyFilesAreDeleted();
    void killAsksAgain();
    void wholeFilesOrNothing();
    void emptyingAFolder();
    void lastFolder();
    void missingAssociations_data();
    void missingAssociations();
};

void tst_Files::existence_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isFile");
    QTest::addColumn<bool>("isFolder");
    QTest::newRow("empty") << QString() << false << false;
    QTest::newRow("here") << u"."_s << false << false;
    QTest::newRow("above") << u".."_s << false << false;
    QTest::newRow("file") << u"file"_s << true << false;
    QTest::newRow("folder") << u"storage"_s << false << true;
    QTest::newRow("missing") << u"missing"_s << false << false;
}

void tst_Files::existence()
{
    QFETCH(QString, path);
    TestContext test;
    test.makeFile(u"file"_s, "x");
    const QString full = path.size() > 2 ? test.path(path) : path;
    QTEST(app::FileExists(full), "isFile");
    QTEST(app::DirExists(full), "isFolder");
}

void tst_Files::foldersAreMade_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("made");
    QTest::newRow("chain") << u"a/b/c"_s << true;
    QTest::newRow("separator at the end") << u"d/"_s << true;
    QTest::newRow("there already") << u"storage"_s << true;
    QTest::newRow("a file is in the way") << u"file/x"_s << false;
    QTest::newRow("too short") << u"/x"_s << false;
}

void tst_Files::foldersAreMade()
{
    QFETCH(QString, path);
    QFETCH(bool, made);
    TestContext test;
    test.makeFile(u"file"_s, "x");
    const QString full = path.startsWith(u'/') ? path : test.path(path);
    QCOMPARE(app::EnsureDirExistsNoMsgBox(test.context, full), made);
    QCOMPARE(QFileInfo(full).isDir(), made);
    const QString shown = path.startsWith(u'/') ? full : u'"' + full + u'"'; // refused, or failed
    if (!made)
        test.dialogs.expect(
            {.text = u"Der Pfad "_s + shown +
                     u" konnte nicht erstellt werden. Bitte wenden Sie sich an den Programmautor."_s,
             .icon = toolkit::Icon::Critical});
    QCOMPARE(app::EnsureDirExists(test.context, full), made);
}

void tst_Files::readOnlyFilesAreDeleted()
{
    TestContext test;
    const QString path = test.makeFile(u"file"_s, "x");
    QFile::setPermissions(path, QFileDevice::ReadOwner);
    QVERIFY(app::KillEx(test.context, path));
    QVERIFY(!QFile::exists(path));
    QVERIFY(app::KillEx(test.context, path)); // missing is as good
    QVERIFY(app::KillEx(test.context, {}));
    app::DeleteQuiet(path);
    app::DeleteQuiet({});
}

void tst_Files::killAsksAgain()
{
    if (!QFile::exists(u"/proc/version"_s))
        QSKIP("needs a file that nobody can delete");
    TestContext test;
    const QString path = u"/proc/version"_s;
    const toolkit::Message question{
        .text =
            u"Die Datei /proc/version konnte nicht ersetzt bzw. gelöscht werden. Vermutlich haben Sie kein "
            u"Schreibrecht in dem Ordner oder aber die Datei ist aktuell von einem anderen Programm "
            u"geöffnet.\n"
            u"Versuch wiederholen?"_s,
        .buttons = toolkit::Buttons::RetryCancel,
        .icon = toolkit::Icon::Exclamation};
    test.dialogs.expect(question, Answer::Retry);
    test.dialogs.expect(question, Answer::Cancel);
    QVERIFY(!app::KillEx(test.context, path));
}

void tst_Files::wholeFilesOrNothing()
{
    TestContext test;
    const QString path = test.makeFile(u"file"_s, "old");
    QVERIFY(app::writeWholeFile(path, "new"));
    QCOMPARE(TestContext::contentOf(path), QByteArray("new"));
    QString reason;
    QVERIFY(!app::writeWholeFile(test.path(u"missing/file"_s), "new", &reason));
    QVERIFY(!reason.isEmpty());
    {
        const FullDisk full;
        QVERIFY(!app::writeWholeFile(path, QByteArray(100000, 'x'), &reason));
    }
    QByteArray bytes;
    QVERIFY(app::readWholeFile(path, bytes));
    QCOMPARE(bytes, QByteArray("new"));
    QVERIFY(!app::readWholeFile(test.path(u"missing"_s), bytes));
}

void tst_Files::emptyingAFolder()
{
    TestContext test;
    const QString temp = test.storage + u"/config/temp"_s;
    test.makeFile(u"storage/config/temp/.hidden"_s, "x");
    QFile::setPermissions(test.makeFile(u"storage/config/temp/readonly"_s, "x"), QFileDevice::ReadOwner);
    QDir(temp).mkdir(u"sub"_s);
    app::emptyFolder(temp);
    QCOMPARE(QDir(temp).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{u"sub"_s});
    app::emptyFolder(test.path(u"missing"_s));
}

void tst_Files::lastFolder()
{
    TestContext test;
    QCOMPARE(app::GetLastInitDir(test.context, u"use"_s), test.sy.DefUserExpRoot);
    app::SetLastInitDir(test.context, u"use"_s, test.makeFile(u"storage/list.tel"_s, "x"));
    QCOMPARE(app::GetLastInitDir(test.context, u"use"_s), test.storage);
    QCOMPARE(test.settings.GetIniText(u"use_"_s, u"LastInitDir"_s), test.storage);
    app::SetLastInitDir(test.context, u"use"_s, u"relative/list.tel"_s);
    QCOMPARE(app::GetLastInitDir(test.context, u"use"_s), test.storage);
    app::SetLastInitDir(test.context, u"use"_s, test.path(u"gone/list.tel"_s));
    QCOMPARE(app::GetLastInitDir(test.context, u"use"_s), test.sy.DefUserExpRoot);
}

namespace {

class NoDesktop : public app::Desktop
{
public:
    QString program;
    bool hasAssociation(const QString&) const override { return false; }
    bool open(const QString&) override { return false; }
    bool openWith(const QString& chosen, const QString&) override
    {
        program = chosen;
        return true;
    }
    bool openUrl(const QUrl&) override { return false; }
};

} // namespace

void tst_Files::missingAssociations_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("begins");
    QTest::addColumn<toolkit::Buttons>("buttons");
    QTest::newRow("video") << u"a.3gp"_s
                           << u"Auf Ihrem Rechner ist aktuell kein Programm zum Öffnen von *.3GP Videos"_s
                           << toolkit::Buttons::Ok;
    QTest::newRow("ringtone") << u"a.L22"_s
                              << u"Aus urheberrechtlichen Gründen können mit Kalmo keine Klingeltöne"_s
                              << toolkit::Buttons::Ok;
    QTest::newRow("other") << u"a.vmo"_s
                           << u"Für die Datei a.vmo ist auf Ihrem Rechner aktuell kein Programm"_s
                           << toolkit::Buttons::YesNo;
}

void tst_Files::missingAssociations()
{
    QFETCH(QString, file);
    QFETCH(QString, begins);
    QFETCH(toolkit::Buttons, buttons);

    class Reader : public toolkit::Dialogs
    {
    public:
        toolkit::Message shown;
        Answer Show(const toolkit::Message& message) override
        {
            shown = message;
            return Answer::Yes;
        }
        QString OpenFile(const toolkit::FileRequest&) override { return u"/usr/bin/player"_s; }
        QString SaveFile(const toolkit::FileRequest&) override { return {}; }
        QString PickFolder(const QString&, const QString&) override { return {}; }
    } reader;
    TestContext test;
    app::Context context{test.sy, test.clock, reader, test.ending, test.platform, test.settings, test.log};
    NoDesktop desktop;
    app::NoAssociationDialog(context, desktop, test.path(file), u"title"_s);
    QVERIFY2(reader.shown.text.startsWith(begins), qPrintable(reader.shown.text));
    QCOMPARE(reader.shown.buttons, buttons);
    QCOMPARE(desktop.program, buttons == toolkit::Buttons::YesNo ? u"/usr/bin/player"_s : QString());
}

QTEST_GUILESS_MAIN(tst_Files)
#include "tst_Files.moc"
