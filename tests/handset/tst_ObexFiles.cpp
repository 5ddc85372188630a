#include "support/ObexTalk.h"
#include "support/Rows.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

const QByteArray ok = obexFrame(0xA0);

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

QByteArray fileHeaders(const QByteArray& name, qsizetype size, const QByteArray& time = "20261121T120000")
{
    return nameHeader(name) + lengthHeader(size) + obexHeader(0x44, time);
}

/// A PUT of a small file in one frame.
QByteArray putFile(const QByteArray& name, const QByteArray& content)
{
    return obexFrame(0x82, fileHeaders(name, content.size()) + obexHeader(0x49, content));
}

const QByteArray getCard = hex("83001A4C00173213011000"
                               "5C004D004D004300610072006400"
                               "00");

} // namespace

/// The file system over OBEX.
class ObexFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusals();
    void keepsFiles();
};

void ObexFiles::refusals()
{
    const QString older = u"S68H"_s;
    const QString newer = u"SL450HX"_s;
    const Rows<QString, QByteArray, int> rows{
        {"no such file", older, obexFrame(0x83, nameHeader("x")), 0xC4},
        {"path in an older family", older, putFile("/Sounds/x", "x"), 0xC0},
        {"hostile name", older, putFile("..\\x", "x"), 0xCC},
        {"no such folder", newer, putFile("/Klang/x", "x"), 0xC4},
        {"folder with something in it", newer, obexFrame(0x82, nameHeader("/Sounds")), 0xCC},
        {"telecom deleted", older, obexFrame(0x82, nameHeader("telecom")), 0xC3},
        {"too large", older, obexFrame(0x02, nameHeader("x") + lengthHeader(2000000) + obexHeader(0x48, {})),
         0xE0},
        {"no card", older, getCard, 0xC4},
        {"opcode of nobody", older, obexFrame(0x87), 0xD1},
    };
    for (const auto& [model, request, code] : rows) {
        ObexTalk talk({.model = model});
        talk.ask(connectFolders);
        QCOMPARE(talk.ask(request).toHex(' '), obexFrame(code).toHex(' '));
    }
}

void ObexFiles::keepsFiles()
{
    const QTemporaryDir outer;
    const QDir folder(outer.filePath(u"a/state"_s));
    handset::Options options{.model = u"S68H"_s, .stateFolder = folder.path()};
    options.faults.hostileNames = true;
    {
        ObexTalk talk(options);
        talk.ask(connectFolders);
        talk.ask(putFile("\xc4.txt", "abc"));
        talk.ask(obexFrame(0x82, nameHeader("Liesmich.txt")));
        talk.enter("Leer", 0);
    }
    // Somebody puts a file there by hand, and takes another away.
    QVERIFY(QFile::copy(folder.filePath(u"files/Ä.txt"_s), folder.filePath(u"files/Pictures/Hand.txt"_s)));
    QVERIFY(QFile::remove(folder.filePath(u"files/Sounds/Gong.mid"_s)));
    for (int start = 0; start < 2; ++start) {
        ObexTalk talk(options);
        talk.ask(connectFolders);
        const QByteArray root = talk.fetch(listFolder);
        QCOMPARE(root.count(" name=\""), 18);
        QVERIFY(root.contains("<file name=\"\xc3\x84.txt\" size=\"3\"") &&
                root.contains("<folder name=\"Leer\""));
        QVERIFY(root.contains("<file name=\"../../x\"") && !root.contains("Liesmich.txt"));
        talk.enter("Pictures");
        QCOMPARE(talk.fetchFile("Hand.txt"), "abc");
        talk.ask(toRoot);
        talk.enter("Sounds");
        QVERIFY(!talk.fetch(listFolder).contains("Gong.mid"));
    }
    QVERIFY(!QFileInfo::exists(folder.filePath(u"files/Liesmich.txt"_s)));
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(u' '),
             u"calendar.json contacts.json files files.json notes.json settings.json"_s);
    const auto everything = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden;
    QCOMPARE(QDir(outer.path()).entryList(everything), {u"a"_s});
    QCOMPARE(QDir(outer.filePath(u"a"_s)).entryList(everything), {u"state"_s});
}

QTEST_GUILESS_MAIN(ObexFiles)
#include "tst_ObexFiles.moc"
