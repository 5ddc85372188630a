#include "app/Files.h"
#include "support/Rows.h"
#include "support/TestContext.h"

#include <QDir>
#include <QFileInfo>
#include <QtTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

class tst_Files : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldersAreMade();
    void readOnlyFilesAreDeleted();
    void emptyingAFolder();
};

void tst_Files::foldersAreMade()
{
    const Rows<QString, bool> rows{
        {"chain", u"a/b/c"_s, true},           {"separator at the end", u"d/"_s, true},
        {"there already", u"storage"_s, true}, {"a file is in the way", u"file/x"_s, false},
        {"too short", u"/x"_s, false},
    };
    for (const auto& [path, made] : rows) {
        TestContext test;
        test.makeFile(u"file"_s, "x");
        const QString full = path.startsWith(u'/') ? path : test.path(path);
        QCOMPARE(app::EnsureDirExistsNoMsgBox(test.context, full), made);
        QCOMPARE(QFileInfo(full).isDir(), made);
        const QString shown = path.startsWith(u'/') ? full : u'"' + full + u'"'; // refused, or failed
        if (!made)
            test.dialogs.expectStart(u"Der Pfad "_s + shown + u" konnte nicht erstellt werden."_s);
        QCOMPARE(app::EnsureDirExists(test.context, full), made);
    }
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

QTEST_GUILESS_MAIN(tst_Files)
#include "tst_Files.moc"
