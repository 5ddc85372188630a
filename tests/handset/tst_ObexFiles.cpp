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

/// Rows of a listing as "folder Pictures RWD/R" or "file a.txt 3 RWD/RWD".
QStringList rowsOf(const QByteArray& listing)
{
    static const QRegularExpression row(
        u"<(folder|file) name=\"([^\"]*)\"(?: size ?= ?\"(\\d+)\")?.*? user-perm=\"(\\w*)\" group-perm=\"(\\w*)\" ?/>"_s);
    QStringList rows;
    for (auto match = row.globalMatch(QString::fromUtf8(listing)); match.hasNext();) {
        const auto one = match.next();
        const QString size = one.captured(3).isEmpty() ? QString() : u' ' + one.captured(3);
        rows.append(one.captured(1) + u' ' + one.captured(2) + size + u' ' + one.captured(4) + u'/' +
                    one.captured(5));
    }
    return rows;
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

QByteArray moveFrame(const QByteArray& from, const QByteArray& to)
{
    const auto parameter = [](char tag, const QByteArray& value) {
        return tag + QByteArray(1, static_cast<char>(value.size())) + value;
    };
    const auto path = [](const QByteArray& text) {
        QByteArray wide;
        for (const char letter : text)
            wide += QByteArray(1, '\0') + letter;
        return wide;
    };
    return obexFrame(0x82, obexHeader(0x4C, parameter('\x34', "move") + parameter('\x35', path(from)) +
                                                parameter('\x36', path(to))));
}

QByteArray rightsFrame(const QByteArray& name, const QByteArray& text)
{
    return obexFrame(0x82, nameHeader(name) + obexHeader(0x4C, "\x38\x08" + text));
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
    void changesFiles();
    void refusals();
    void keepsFiles();
};

void ObexFiles::changesFiles()
{
    ObexTalk talk({.model = u"SL450HX"_s});
    talk.ask(connectFolders);
    talk.enter("Sounds");
    QCOMPARE(talk.ask(putFile("/Sounds/neu.txt", "abc")), ok);
    QCOMPARE(talk.ask(moveFrame("/Sounds/neu.txt", "/Pictures/alt.txt")), ok);
    QCOMPARE(talk.fetchFile("neu.txt"), "");
    QCOMPARE(talk.fetchFile("/Pictures/alt.txt"), "abc");
    QCOMPARE(talk.ask(obexFrame(0x82, nameHeader("/Pictures/alt.txt"))), ok);
    QCOMPARE(talk.ask(moveFrame("/Sounds", "/Klang")), ok);
    QCOMPARE(talk.ask(toRoot), ok);
    QCOMPARE(talk.enter("Klang"), ok);
    QCOMPARE(rowsOf(talk.fetch(listFolder)),
             QStringList({u"file Tonleiter.mid 100 RWD/RWD"_s, u"file Gong.mid 61 R/R"_s,
                          u"file Piep.wav 6444 RWD/RWD"_s}));
    // A file that may not be deleted, until it may.
    QCOMPARE(talk.ask(obexFrame(0x82, nameHeader("/Klang/Gong.mid"))), obexFrame(0xCC));
    QCOMPARE(talk.ask(rightsFrame("/Klang/Gong.mid", "\"RWD\"\"R\"")), ok);
    QCOMPARE(rowsOf(talk.fetch(listFolder))[1], u"file Gong.mid 61 RWD/R"_s);
    QCOMPARE(talk.ask(obexFrame(0x82, nameHeader("/Klang/Gong.mid"))), ok);
    QCOMPARE(talk.violations(), QStringList());
}

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
        {"into itself", newer, moveFrame("/Pictures", "/Pictures/Urlaub 2026/x"), 0xCC},
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
        const QStringList rows = rowsOf(talk.fetch(listFolder));
        QCOMPARE(rows.size(), 16);
        QVERIFY(rows.contains(u"file Ä.txt 3 RWD/RWD"_s) && rows.contains(u"folder Leer RWD/RWD"_s));
        QVERIFY(rows.contains(u"file ../../x 8 RWD/RWD"_s) &&
                !rows.contains(u"file Liesmich.txt 64 RWD/R"_s));
        talk.enter("Pictures");
        QCOMPARE(talk.fetchFile("Hand.txt"), "abc");
        talk.ask(toRoot);
        talk.enter("Sounds");
        QCOMPARE(rowsOf(talk.fetch(listFolder)),
                 QStringList({u"file Tonleiter.mid 100 RWD/RWD"_s, u"file Piep.wav 6444 RWD/RWD"_s}));
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
