// The phone's file system by its frames: listing, moving about, deleting, renaming, permissions, capacities.

#include "support/ObexClient.h"
#include "toolkit/ListRows.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::tests;
using obex::clsMmc;
using obex::GetFriedlyErrMsg;
using toolkit::ListRows;
using toolkit::Progress;

namespace {

const QByteArray done = hex("A0 0003");
const QByteArray listingRequest = hex("83 001C 42 0019") + QByteArray("x-obex/folder-listing\0", 22);
const QByteArray rootRequest = hex("85 0008 02 00 01 0003");

/// A Name header with its shifted UTF-16.
QByteArray name(const QByteArray& latin1)
{
    QByteArray wide;
    for (const char character : latin1)
        wide += QByteArray(1, '\0') + character;
    return header(0x01, wide + hex("00 00"));
}

QByteArray enter(const QByteArray& folder, int flags)
{
    return packet(0x85, QByteArray(1, static_cast<char>(flags)) + '\0' + name(folder));
}

constexpr int silentFailure = 1;

/// One operation on a client that is connected and in the root.
struct Case
{
    const char* name = nullptr;
    std::function<bool(clsMmc&, const Progress&)> run;
    QList<QPair<QByteArray, QByteArray>> exchanges; ///< requests and their answers
    std::optional<int> failure;                     ///< the code that a box tells, or `silentFailure`
    QStringList folders;                            ///< where the client says that it is, in turn
    QStringList panel = {};
    int phoneType = 5;
};

const QByteArray shortListing =
    "<folder-listing><folder name=\"Pics\" modified=\"20021120T164606\" user-perm=\"RWD\"/>"
    "<file name=\"Gr\xC3\xBC\xC3\x9F"
    "e.txt\" size=\"10\" modified=\"20260102T030405\" user-perm=\"R\" group-perm=\"\"/>"
    "</folder-listing>";

} // namespace

class tst_ObexFolders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listing();
    void listingInManyFrames();
    void listingFails();
    void lookingIntoTheListing();
    void operations_data();
    void operations();
    void namesThatDoNotFit();
    void capacities();
    void capacityFails();
    void folderTotals();
    void folderThatHoldsItself();
};

void tst_ObexFolders::listing()
{
    inEveryDelivery([](TestContext& test, ScriptedPort& port) {
        ObexClient client(test, port);
        client.goOnline();
        port.expect(listingRequest, packet(0xA0, header(0x49, shortListing)));
        ListRows rows(u"FFS"_s, {{u"Name"_s}, {u"Typ"_s}, {u"Größe"_s}, {u"Attribut"_s}});
        QList<obex::tObxDirEntry> entries;
        QString decoded;
        QVERIFY(client.mmc->Dir(entries, client.progress.all(), &rows, nullptr, &decoded));
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries[1].path, u"Mobile:\\Grüße.txt"_s);
        QVERIFY(decoded.contains(u"<file name=\"Grüße.txt\" size=\"10\""_s));
        QCOMPARE(rows.count(), 4);
        QVERIFY(rows.indexOfKey(u"FIL_Grüße.txt"_s) >= 0);
        QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BytesRxed 0"_s, u"BusyOff"_s}));
        QCOMPARE(client.progress.panel.texts,
                 (QStringList{u"Verzeichnis wird ausgelesen..."_s, u"Verzeichnis ausgelesen."_s}));
    });
}

void tst_ObexFolders::listingInManyFrames()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    // Cut in the middle of an umlaut.
    const qsizetype cut = shortListing.indexOf('\xC3') + 1;
    port.expect(listingRequest, packet(0x90, header(0x48, shortListing.first(cut))));
    port.expect(hex("83 0003"), packet(0xA0, header(0x49, shortListing.sliced(cut))));
    QList<obex::tObxDirEntry> entries;
    const QStringList filter{u".txt"_s};
    QVERIFY(client.mmc->Dir(entries, client.progress.all(), nullptr, &filter));
    QCOMPARE(entries.size(), 1);
    QCOMPARE(entries[0].name, u"Grüße.txt"_s);
    QCOMPARE(client.events[2], u"BytesRxed %1"_s.arg(cut));
}

void tst_ObexFolders::listingFails()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    ListRows rows(u"FFS"_s, {{u"Name"_s}});
    rows.add({.key = u"old"_s});
    QList<obex::tObxDirEntry> entries(3);
    port.expect(listingRequest, hex("C1 0003"));
    test.dialogs.expect(errorBox(u"ReCode: 401 Unauthorized"_s));
    test.dialogs.whileShown([&] { QVERIFY(client.line.isWaiting()); });
    QVERIFY(!client.mmc->Dir(entries, client.progress.all(), &rows));
    QCOMPARE(entries.size(), 0);
    QCOMPARE(rows.count(), 0);
    QCOMPARE(client.progress.panel.Text(), u"Verzeichnis nicht ausgelesen."_s);
    QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BusyOff"_s}));

    port.expect(listingRequest, packet(0xA0, header(0x49, "<file name=\"a\"/>\xC3"))); // half a letter
    test.dialogs.expect({.text = u"Bei der UTF-8 Dekodierung ist ein Fehler aufgetreten. Ihre Listen werden "
                                 u"daher fehlerhafte Sonderzeichen enthalten. Bitte wenden Sie sich an den "
                                 u"Programmautor."_s});
    QVERIFY(client.mmc->Dir(entries, client.progress.all()));
    QCOMPARE(entries.size(), 1);
}

void tst_ObexFolders::lookingIntoTheListing()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    port.expect(listingRequest, packet(0xA0, header(0x49, shortListing)));
    QList<obex::tObxDirEntry> entries;
    QVERIFY(client.mmc->Dir(entries, {}));
    qint32 size = -1;
    QDateTime moment;
    QVERIFY(client.mmc->IsFileInActDir(u"GRÜßE.TXT"_s));
    QVERIFY(client.mmc->GetFileSizeInActDir(u"grüße.txt"_s, size));
    QCOMPARE(size, 10);
    QVERIFY(client.mmc->GetTimeStampFromFileInActDir(u"grüße.txt"_s, moment));
    QCOMPARE(moment, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)));
    QVERIFY(!client.mmc->IsFileInActDir(u"Pics"_s)); // a folder
    QVERIFY(!client.mmc->GetFileSizeInActDir(u"other"_s, size));
}

void tst_ObexFolders::operations_data()
{
    QTest::addColumn<Case>("aCase");
    const QByteArray refused = hex("C4 0003");
    const QByteArray notFinal = hex("20 0003");
    const QByteArray up = hex("85 0005 03 00");
    const QString root = u"Mobile:\\"_s;
    const QString deletes = u"Datei / Ordner wird gelöscht... ca. 2 Sekunden pro Datei"_s;
    const QString renamed = u"Datei / Ordner umbennant."_s;
    const QString notRenamed = u"Datei / Ordner nicht umbennant."_s;
    const auto attributes = [](const QByteArray& sent, const QByteArray& text) {
        return packet(0x82, name(sent) + header(0x4C, hex("38 08") + text));
    };
    const auto rename = [](const QByteArray& oldPath) {
        return packet(0x82, header(0x4C, hex("34 04") + "move" + '\x35' + static_cast<char>(oldPath.size()) +
                                             oldPath + hex("36 04 00 2F 00 63")));
    };
    const auto renames = [](const QString& from) {
        return [from](clsMmc& mmc, const Progress& progress) { return mmc.Rename(from, u"c"_s, progress); };
    };
    const auto deletesX = [](bool silent, bool force = false) {
        return [silent, force](clsMmc& mmc, const Progress& progress) {
            return mmc.Del(u"x"_s, progress, nullptr, silent, force);
        };
    };
    const QByteArray pathAb = hex("00 2F 00 61 00 2F 00 62");
    const QByteArray longestPath = hex("00 2F") + QByteArray("\0x", 2).repeated(126);

    const QList<Case> cases{
        {"Cd, root and doubled backslash",
         [](auto& mmc, auto&) { return mmc.Cd(u"mobile:\\a\\\\b\\"_s, false); },
         {{enter("a", 2), done}, {enter("b", 2), notFinal}},
         {},
         {u"Mobile:\\a"_s, u"Mobile:\\a\\b"_s}},
        {"Cd, nothing", [&](auto& mmc, auto&) { return mmc.Cd(root, true); }, {}, {}, {}},
        {"Cd, creating",
         [](auto& mmc, auto&) { return mmc.Cd(u"ä"_s, true); },
         {{enter("\xE4", 0), done}},
         {},
         {u"Mobile:\\ä"_s}},
        {"Cd stops where it got to",
         [](auto& mmc, auto&) { return mmc.Cd(u"a\\b\\c"_s, false); },
         {{enter("a", 2), done}, {enter("b", 2), refused}},
         0xC4,
         {u"Mobile:\\a"_s}},
        {"Md goes inside",
         [](auto& mmc, auto&) { return mmc.Md(u"a\\b"_s); },
         {{enter("a", 0), done}, {enter("b", 0), done}},
         {},
         {u"Mobile:\\a"_s, u"Mobile:\\a\\b"_s}},
        {"Md takes the root for a name",
         [](auto& mmc, auto&) { return mmc.Md(u"Mobile:\\a"_s); },
         {{enter("Mobile:", 0), refused}},
         0xC4,
         {}},
        {"entries of the phonebook",
         [](auto& mmc, auto&) { return mmc.CDluidPB(); },
         {{enter("telecom", 2), done}, {enter("pb", 2), done}, {enter("luid", 2), done}},
         {},
         {u"Mobile:\\telecom"_s, u"Mobile:\\telecom\\pb"_s, u"Mobile:\\telecom\\pb\\luid"_s}},
        {"entries of the calendar, first failure",
         [](auto& mmc, auto&) { return mmc.CDluidCAL(); },
         {{enter("telecom", 2), done}, {enter("cal", 2), refused}},
         0xC4,
         {u"Mobile:\\telecom"_s}},
        {"entries of the notes",
         [](auto& mmc, auto&) { return mmc.CDluidNT(); },
         {{enter("telecom", 2), refused}},
         0xC4,
         {}},
        {"CdRoot", [](auto& mmc, auto&) { return mmc.CdRoot(); }, {{rootRequest, done}}, {}, {{}, root}},
        {"CdRoot takes no other success",
         [](auto& mmc, auto&) { return mmc.CdRoot(); },
         {{rootRequest, notFinal}},
         0x20,
         {QString()}},
        {"CdNull", [](auto& mmc, auto&) { return mmc.CdNull(); }, {{up, done}}, {}, {QString()}},
        {"CdNull fails", [](auto& mmc, auto&) { return mmc.CdNull(); }, {{up, refused}}, 0xC4, {QString()}},
        {"CdUp in the root", [](auto& mmc, auto&) { return mmc.CdUp(); }, {}, {}, {}},
        {"CdUp to the root",
         [](auto& mmc, auto&) { return mmc.Cd(u"a"_s, false) && mmc.CdUp(); },
         {{enter("a", 2), done}, {rootRequest, done}},
         {},
         {u"Mobile:\\a"_s, {}, root}},
        {"CdUp by way of the root",
         [](auto& mmc, auto&) { return mmc.Cd(u"a\\b"_s, false) && mmc.CdUp(); },
         {{enter("a", 2), done}, {enter("b", 2), done}, {rootRequest, done}, {enter("a", 0), done}},
         {},
         {u"Mobile:\\a"_s, u"Mobile:\\a\\b"_s, {}, root, u"Mobile:\\a"_s}},
        {"CdUp from nowhere",
         [](auto& mmc, auto&) { return mmc.CdNull() && mmc.CdUp(); },
         {{up, done}, {rootRequest, done}},
         {},
         {{}, {}, root}},
        {"saved and restored",
         [](auto& mmc, auto&) {
             const bool left = mmc.Cd(u"a"_s, false) && (mmc.DirActSave(), mmc.CdRoot());
             return left && mmc.DirActRestore();
         },
         {{enter("a", 2), done}, {rootRequest, done}, {rootRequest, done}, {enter("a", 0), done}},
         {},
         {u"Mobile:\\a"_s, {}, root, {}, root, u"Mobile:\\a"_s}},

        {"delete",
         deletesX(false),
         {{packet(0x82, name("x")), notFinal}},
         {},
         {},
         {deletes, u"Datei / Ordner gelöscht."_s}},
        {"delete, refused",
         deletesX(false),
         {{packet(0x82, name("x")), refused}},
         0xC4,
         {},
         {deletes, u"Datei / Ordner nicht gelöscht."_s}},
        {"delete, silent timeout",
         deletesX(true),
         {{packet(0x82, name("x")), ""}},
         silentFailure,
         {},
         {deletes, u"Datei / Ordner nicht gelöscht."_s}},
        {"delete by the whole path",
         [](auto& mmc, auto& progress) {
             return mmc.Cd(u"Sounds"_s, false) && mmc.Del(u"x.wav"_s, progress);
         },
         {{enter("Sounds", 2), done}, {packet(0x82, name("/Sounds/x.wav")), done}},
         {},
         {u"Mobile:\\Sounds"_s},
         {deletes, u"Datei / Ordner gelöscht."_s},
         11},
        {"delete by force, in the root, attributes refused",
         deletesX(false, true),
         {{attributes("//x", "\"RWD\"\"RWD\""), refused}, {packet(0x82, name("//x")), done}},
         {},
         {},
         {deletes, u"Datei / Ordner gelöscht."_s},
         13},

        {"rename", renames(u"Mobile:\\a\\\\b"_s), {{rename(pathAb), done}}, {}, {}, {renamed}},
        {"rename, from the root", renames(u"a\\b"_s), {{rename(pathAb), done}}, {}, {}, {renamed}},
        {"rename takes no other success",
         renames(u"a\\b"_s),
         {{rename(pathAb), notFinal}},
         0x20,
         {},
         {notRenamed}},
        {"rename, longest path",
         renames(QString(126, u'x')),
         {{rename(longestPath), done}},
         {},
         {},
         {renamed}},
        {"rename, too long a path", renames(QString(127, u'x')), {}, obex::RequestTooLong, {}, {notRenamed}},

        {"read only",
         [](auto& mmc, auto&) { return mmc.SetPermissionReadOnly(u"a"_s); },
         {{attributes("a", "\"RWD\"\"R\""), notFinal}},
         {},
         {}},
        {"all permissions, refused",
         [](auto& mmc, auto&) { return mmc.SetPermissionRWD(u"a"_s); },
         {{attributes("a", "\"RWD\"\"RWD\""), refused}},
         0xC4,
         {}},
        {"attributes, silently",
         [](auto& mmc, auto&) { return mmc.SetAttrib(u"a"_s, {}, u"W"_s, true); },
         {{attributes("a", "\"W\"\"\""), refused}},
         silentFailure,
         {}},
    };
    for (const Case& aCase : cases)
        QTest::newRow(aCase.name) << aCase;
}

void tst_ObexFolders::operations()
{
    QFETCH(Case, aCase);
    TestContext test;
    test.sy.PhoneType = aCase.phoneType;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    for (const auto& [request, answer] : aCase.exchanges)
        port.expect(request, answer);
    if (aCase.failure && *aCase.failure != silentFailure)
        test.dialogs.expect(errorBox(GetFriedlyErrMsg(*aCase.failure)));
    QCOMPARE(aCase.run(*client.mmc, client.progress.all()), !aCase.failure);
    QStringList went;
    for (const QString& event : client.events.filter(u"DirChange"_s))
        went.append(event.section(u' ', 1));
    QCOMPARE(went, aCase.folders);
    QCOMPARE(client.mmc->DirAct(), went.isEmpty() ? u"Mobile:\\"_s : went.last());
    QCOMPARE(client.progress.panel.texts, aCase.panel);
    QCOMPARE(client.events.count(u"BusyOn"_s), client.events.count(u"BusyOff"_s));
}

void tst_ObexFolders::namesThatDoNotFit()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline(255);
    const auto tooLong =
        errorBox(u"Der Name oder Pfad ist zu lang für das Telefon. Es wurde nichts gesendet."_s);
    const QString longName(124, u'x'); // 5 + 4 + 2 * 124 + 1 would be 258
    test.dialogs.expect(tooLong);
    QVERIFY(!client.mmc->Cd(longName, false));
    test.dialogs.expect(tooLong);
    int code = 0;
    QVERIFY(!client.mmc->Del(longName, {}, &code));
    QCOMPARE(code, obex::RequestTooLong);
    port.expect(enter(QByteArray(122, 'x'), 2), done);
    QVERIFY(client.mmc->Cd(QString(122, u'x'), false));
}

void tst_ObexFolders::capacities()
{
    inEveryDelivery([](TestContext& test, ScriptedPort& port) {
        ObexClient client(test, port);
        client.goOnline();
        qint32 bytes = 0;
        port.expect(hex("83 0009 4C 0006 32 01 01"), hex("A0 000C 4C 0009 32 04 00 01 E2 40"));
        QVERIFY(client.mmc->GetSpaceTotal(bytes, client.progress.all()));
        QCOMPARE(bytes, 123456);
        QCOMPARE(client.events, (QStringList{u"BytesRxed 0"_s})); // the one that raises no Busy
        port.expect(hex("83 0009 4C 0006 32 01 02"), hex("A0 000C 4C 0009 32 04 00 00 00 00"));
        QVERIFY(client.mmc->GetSpaceFree(bytes, client.progress.all()));
        QCOMPARE(bytes, 0);
        QCOMPARE(client.events.mid(1), (QStringList{u"BusyOn"_s, u"BytesRxed 0"_s, u"BusyOff"_s}));

        QVERIFY(client.mmc->GetSpaceTotal(bytes, client.progress.all(), true)); // known
        QCOMPARE(bytes, 123456);
        port.expect(hex("83 0009 4C 0006 32 01 02"), hex("A0 000C 4C 0009 32 04 00 00 00 07"));
        QVERIFY(client.mmc->GetSpaceFree(bytes, client.progress.all(), true)); // 0 is not
        QCOMPARE(bytes, 7);
        port.expect(hex("80 0013 10 00 4006 46 000C") + "IRMC-SYNC", hex("A0 0007 10 00 0400"));
        QVERIFY(client.mmc->connect({}, obex::Target::IrMC));
        QVERIFY(client.mmc->GetSpaceFree(bytes, client.progress.all(), true)); // kept within the session
        QCOMPARE(bytes, 7);

        port.expect(hex("83 001A 4C 0017 32 13 01 10 005C 004D 004D 0043 0061 0072 0064 0000"),
                    hex("A0 0010 4C 000D 32 08 00 00 00 01 00 00 00 00"));
        QVERIFY(client.mmc->GetSpaceTotalMmc(bytes, client.progress.all()));
        QCOMPARE(bytes, 0x7FFFFFFF); // more than 32 bits can say
        port.expect(hex("83 001A 4C 0017 32 13 02 10 005C 004D 004D 0043 0061 0072 0064 0000"), done);
        QVERIFY(client.mmc->GetSpaceFreeMmc(bytes, client.progress.all()));
        QCOMPARE(bytes, 0);
        QCOMPARE(client.progress.panel.texts.mid(6),
                 (QStringList{u"Kapazität MMC wird ermittelt..."_s, u"Kapazität MMC ermittelt."_s,
                              u"Freier Speicherplatz MMC wird ermittelt..."_s,
                              u"Freier Speicherplatz MMC ermittelt."_s}));
    });
}

void tst_ObexFolders::capacityFails()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    qint32 bytes = 5;
    port.expect(hex("83 0009 4C 0006 32 01 02"), hex("D1 0003"));
    test.dialogs.expect(errorBox(u"ReCode: 501 Not Implemented"_s));
    QVERIFY(!client.mmc->GetSpaceFree(bytes, client.progress.all()));
    QCOMPARE(bytes, 0);
    QCOMPARE(client.progress.panel.Text(), u"Freier Speicherplatz nicht ermittelt."_s);
    QCOMPARE(client.events.last(), u"BusyOff"_s);
}

void tst_ObexFolders::folderTotals()
{
    TestContext test;
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    const auto listing = [](const QByteArray& text) { return packet(0xA0, header(0x49, text)); };
    port.expect(enter("a", 0), done);
    port.expect(listingRequest,
                listing("<file name=\"1\" size=\"10\"/><folder name=\"b\"/><folder name=\"c\"/>"
                        "<file name=\"2\" size=\"5\"/>"));
    port.expect(enter("b", 0), done).expect(listingRequest, listing("<file name=\"3\" size=\"100\"/>"));
    port.expect(rootRequest, done).expect(enter("a", 0), done);
    port.expect(enter("c", 0), hex("C3 0003")); // closed, but the way back is open
    test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xC3)));
    port.expect(rootRequest, done).expect(enter("a", 0), done);
    port.expect(rootRequest, done);
    qint64 total = 0;
    int count = 0;
    QVERIFY(client.mmc->GetFolderInfosRec(u"a"_s, total, count, client.progress.all(), u"Mobile:\\"_s));
    QCOMPARE(total, 115);
    QCOMPARE(count, 3);
    QVERIFY(client.progress.panel.texts.contains(u"Ordner b wird untersucht..."_s));
    QCOMPARE(client.mmc->DirAct(), u"Mobile:\\"_s);
}

void tst_ObexFolders::folderThatHoldsItself()
{
    TestContext test;
    test.startLog();
    ScriptedPort port(test);
    ObexClient client(test, port);
    client.goOnline();
    constexpr int deepest = 33;
    for (int depth = 1; depth <= deepest; ++depth) {
        port.expect(enter("a", 0), done);
        port.expect(
            listingRequest,
            packet(0xA0, header(0x49, "<file name=\"f\" size=\"1\"/><folder name=\"\"/>"
                                      "<folder name=\"\\\"/><folder name=\"a\"/><folder name=\"b\"/>")));
    }
    port.expect(rootRequest, done);
    qint64 total = 0;
    int count = 0;
    QVERIFY(client.mmc->GetFolderInfosRec(u"a"_s, total, count, {}, u"Mobile:\\"_s));
    QCOMPARE(count, deepest);
    QCOMPARE(test.logged().filter(u"GetFolderInfosRec stops"_s).size(), 1);
}

QTEST_GUILESS_MAIN(tst_ObexFolders)
#include "tst_ObexFolders.moc"
