// The phone's file system by its frames: listing, moving about, deleting, renaming, permissions, capacities.

#include "support/ObexClient.h"
#include "support/TestProgram.h"
#include "toolkit/ListRows.h"

using obex::clsMmc;
using obex::GetFriedlyErrMsg;
using toolkit::ListRows;

namespace {

QByteArray enter(const QByteArray& folder, int flags)
{
    return packet(0x85, QByteArray(1, static_cast<char>(flags)) + '\0' + nameHeader(folder));
}

const QByteArray refusal = hex("C4 0003");
const QByteArray otherSuccess = hex("20 0003");
constexpr int succeeds = 0;
constexpr int failsSilently = 1;

const QByteArray shortListing =
    "<folder-listing><folder name=\"Pics\" modified=\"20021120T164606\" user-perm=\"RWD\"/>"
    "<file name=\"Gr\xC3\xBC\xC3\x9F"
    "e.txt\" size=\"10\" modified=\"20260102T030405\" user-perm=\"R\" group-perm=\"\"/></folder-listing>";

/// Sends a request that names something in the current folder.
bool sendInFolder(clsMmc& mmc, const QByteArray& what, const QString& local)
{
    QList<obex::tObxDirEntry> entries;
    QByteArray bytes;
    return what == "Cd"        ? mmc.Cd(u"x"_s, true)
           : what == "Md"      ? mmc.Md(u"x"_s)
           : what == "Dir"     ? mmc.Dir(entries, {})
           : what == "Del"     ? mmc.Del(u"x"_s, {})
           : what == "GetFile" ? mmc.GetFile(u"x"_s, bytes, {})
           : what == "PutFile" ? mmc.PutFile(local, {})
                               : mmc.SetAttrib(u"x"_s, {}, {}, false);
}

/// In turn: requests and their answers, the failure, the folders that the client reports.
using Operations = Rows<QList<QPair<QByteArray, QByteArray>>, int, QString, std::function<bool(ObexClient&)>>;

void checkOperations(const Operations& operations)
{
    operations.each([](const auto& exchanges, const auto& failure, const auto& folders, const auto& run) {
        auto&& [test, port, client] = OnlineClient();
        for (const auto& [request, answer] : exchanges)
            port.expect(request, answer);
        if (failure != succeeds && failure != failsSilently && failure != obex::FolderUnknown)
            test.dialogs.expect(errorBox(GetFriedlyErrMsg(failure)));
        QCOMPARE(run(client), failure == succeeds);
        QStringList went;
        for (const QString& event : client.events.filter(u"DirChange"_s))
            went.append(event.section(u' ', 1));
        QCOMPARE(went.join(u'|').remove(u"Mobile:"_s), folders);
        QCOMPARE(client.mmc->DirAct(), went.isEmpty() ? u"Mobile:\\"_s : went.last());
        QCOMPARE(client.events.count(u"BusyOn"_s), client.events.count(u"BusyOff"_s));
    });
}

} // namespace

class tst_ObexFolders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listing();
    void walking();
    void changes();
    void folderIsUnknown();
    void capacities();
    void folderTotals();
};

void tst_ObexFolders::listing()
{
    inEveryDelivery([](TestContext& test, ScriptedPort& port) {
        ObexClient client(test, port);
        client.goOnline();
        port.expect(listFolder, packet(0xA0, header(0x49, shortListing)));
        ListRows rows(u"FFS"_s, {{u"Name"_s}, {u"Typ"_s}, {u"Größe"_s}, {u"Attribut"_s}});
        QList<obex::tObxDirEntry> entries;
        QString decoded;
        QVERIFY(client.mmc->Dir(entries, client.progress.all(), &rows, nullptr, &decoded));
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries[1].path, u"Mobile:\\Grüße.txt"_s);
        QVERIFY(decoded.contains(u"<file name=\"Grüße.txt\" size=\"10\""_s));
        QCOMPARE(rows.count(), 4);
        QVERIFY(rows.indexOfKey(u"FIL_Grüße.txt"_s) >= 0);
        QVERIFY(client.mmc->IsFileInActDir(u"GRÜßE.TXT"_s) && !client.mmc->IsFileInActDir(u"Pics"_s));
        qint32 size = 0;
        QVERIFY(client.mmc->GetFileSizeInActDir(u"grüße.txt"_s, size) && size == 10);
        QCOMPARE(client.events, (QStringList{u"BusyOn"_s, u"BytesRxed 0"_s, u"BusyOff"_s}));
        QCOMPARE(client.progress.panel.texts,
                 (QStringList{u"Verzeichnis wird ausgelesen..."_s, u"Verzeichnis ausgelesen."_s}));

        port.expect(listFolder, packet(0xC4));
        test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xC4)));
        QVERIFY(!client.mmc->Dir(entries, client.progress.all(), &rows));
        QCOMPARE(rows.count(), 0);
        QCOMPARE(client.progress.panel.Text(), u"Verzeichnis nicht ausgelesen."_s);
    });
}

void tst_ObexFolders::walking()
{
    const QByteArray up = hex("85 0005 03 00");
    const auto cd = [](const QString& path, bool isCreated = false) {
        return [=](ObexClient& c) { return c.mmc->Cd(path, isCreated); };
    };
    Operations rows;
    rows.add("Cd, root and doubled backslash", {{enter("a", 2), done}, {enter("b", 2), otherSuccess}},
             succeeds, uR"(\a|\a\b)"_s, cd(u"mobile:\\a\\\\b\\"_s));
    rows.add("Cd, creating", {{enter("\xE4", 0), done}}, succeeds, uR"(\ä)"_s, cd(u"ä"_s, true));
    rows.add("Cd, the longest name", {{enter(QByteArray(506, 'x'), 2), done}}, succeeds,
             u"\\"_s + QString(506, u'x'), cd(QString(506, u'x')));
    rows.add("Cd, a name that no packet holds", {}, obex::RequestTooLong, {}, cd(QString(508, u'x')));
    rows.add("Cd stops where it got to", {{enter("a", 2), done}, {enter("b", 2), refusal}}, 0xC4, uR"(\a)"_s,
             cd(u"a\\b\\c"_s));
    rows.add("Md goes inside", {{enter("a", 0), done}, {enter("b", 0), done}}, succeeds, uR"(\a|\a\b)"_s,
             [](ObexClient& c) { return c.mmc->Md(u"a\\b"_s); });
    rows.add("CdRoot", {{toRoot, done}}, succeeds, uR"(|\)"_s, [](ObexClient& c) { return c.mmc->CdRoot(); });
    rows.add("CdRoot takes no other success", {{toRoot, otherSuccess}}, 0x20, {},
             [](ObexClient& c) { return c.mmc->CdRoot(); });
    rows.add("CdUp in the root", {}, succeeds, {}, [](ObexClient& c) { return c.mmc->CdUp(); });
    rows.add("CdUp by way of the root",
             {{enter("a", 2), done}, {enter("b", 2), done}, {toRoot, done}, {enter("a", 0), done}}, succeeds,
             uR"(\a|\a\b||\|\a)"_s,
             [](ObexClient& c) { return c.mmc->Cd(u"a\\b"_s, false) && c.mmc->CdUp(); });
    rows.add("CdUp from nowhere", {{up, done}, {toRoot, done}}, succeeds, uR"(||\)"_s,
             [](ObexClient& c) { return c.mmc->CdNull() && c.mmc->CdUp(); });
    rows.add("saved and restored",
             {{enter("a", 2), done}, {toRoot, done}, {toRoot, done}, {enter("a", 0), done}}, succeeds,
             uR"(\a||\||\|\a)"_s, [](ObexClient& c) {
                 const bool left = c.mmc->Cd(u"a"_s, false) && (c.mmc->DirActSave(), c.mmc->CdRoot());
                 return left && c.mmc->DirActRestore();
             });
    checkOperations(rows);
}

void tst_ObexFolders::changes()
{
    const QByteArray deleteX = packet(0x82, nameHeader("x"));
    const auto attributes = [](const QByteArray& sent, const QByteArray& text) {
        return packet(0x82, nameHeader(sent) + header(0x4C, hex("38 08") + text));
    };
    const auto renameTo = [](const QByteArray& oldPath) {
        return packet(0x82, header(0x4C, hex("34 04") + "move" + '\x35' + static_cast<char>(oldPath.size()) +
                                             oldPath + hex("36 04 00 2F 00 63")));
    };
    const auto rename = [](const QString& from) {
        return [from](ObexClient& c) { return c.mmc->Rename(from, u"c"_s, c.progress.all()); };
    };
    const QByteArray renameAb = renameTo(hex("00 2F 00 61 00 2F 00 62"));
    const QByteArray renameLongest = renameTo(hex("00 2F") + QByteArray("\0x", 2).repeated(126));
    const auto del = [](bool silent, bool force = false) {
        return [=](ObexClient& c) { return c.mmc->Del(u"x"_s, c.progress.all(), nullptr, silent, force); };
    };
    Operations rows;
    rows.add("delete, silent timeout", {{deleteX, ""}}, failsSilently, {}, del(true));
    rows.add("delete by the whole path",
             {{enter("Sounds", 2), done}, {packet(0x82, nameHeader("/Sounds/x")), done}}, succeeds,
             uR"(\Sounds)"_s, [&](ObexClient& c) {
                 c.test.sy.PhoneType = 11;
                 return c.mmc->Cd(u"Sounds"_s, false) && del(false)(c);
             });
    rows.add("delete by force, attributes refused",
             {{attributes("x", "\"RWD\"\"RWD\""), refusal}, {deleteX, done}}, succeeds, {}, del(false, true));
    rows.add("delete, a name that no packet holds", {}, obex::RequestTooLong, {},
             [](ObexClient& c) { return c.mmc->Del(QString(510, u'x'), c.progress.all()); });
    rows.add("rename", {{renameAb, done}}, succeeds, {}, rename(u"Mobile:\\a\\\\b"_s));
    rows.add("rename takes no other success", {{renameAb, otherSuccess}}, 0x20, {}, rename(u"a\\b"_s));
    rows.add("rename, longest path", {{renameLongest, done}}, succeeds, {}, rename(QString(126, u'x')));
    rows.add("rename, too long a path", {}, obex::RequestTooLong, {}, rename(QString(127, u'x')));
    rows.add("read only", {{attributes("a", "\"RWD\"\"R\""), otherSuccess}}, succeeds, {},
             [](ObexClient& c) { return c.mmc->SetPermissionReadOnly(u"a"_s); });
    checkOperations(rows);
}

/// After a step that the phone refused, nothing that names something in the current folder is sent.
void tst_ObexFolders::folderIsUnknown()
{
    Operations rows;
    for (const char* what : {"Cd", "Md", "Dir", "Del", "GetFile", "PutFile", "SetAttrib"}) {
        rows.add(what, {{toRoot, refusal}}, obex::FolderUnknown, u""_s, [what](ObexClient& c) {
            c.test.sy.PhoneType = 12;
            c.test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xC4)));
            c.test.dialogs.expect(errorBox(GetFriedlyErrMsg(obex::FolderUnknown)));
            return c.mmc->CdRoot() || sendInFolder(*c.mmc, what, c.test.makeFile(u"x"_s, "x"));
        });
    }
    checkOperations(rows);
}

void tst_ObexFolders::capacities()
{
    inEveryDelivery([](TestContext& test, ScriptedPort& port) {
        ObexClient client(test, port);
        client.goOnline();
        qint32 bytes = 0;
        const QByteArray getFree = hex("83 0009 4C 0006 32 01 02");
        port.expect(hex("83 0009 4C 0006 32 01 01"), hex("A0 000C 4C 0009 32 04 00 01 E2 40"));
        QVERIFY(client.mmc->GetSpaceTotal(bytes, client.progress.all()));
        QVERIFY(client.mmc->GetSpaceTotal(bytes, client.progress.all(), true)); // known
        QCOMPARE(bytes, 123456);
        port.expect(getFree, hex("A0 000C 4C 0009 32 04 00 00 00 07"));
        QVERIFY(client.mmc->GetSpaceFree(bytes, client.progress.all()));
        QCOMPARE(bytes, 7);
        port.expect(hex("80 0013 10 00 4006 46 000C") + "IRMC-SYNC", hex("A0 0007 10 00 0400"));
        QVERIFY(client.mmc->connect({}, obex::Target::IrMC));
        QVERIFY(client.mmc->GetSpaceFree(bytes, client.progress.all(), true)); // kept within the session
        QCOMPARE(bytes, 7);
        port.expect(getFree, hex("D1 0003"));
        test.dialogs.expect(errorBox(u"ReCode: 501 Not Implemented"_s));
        QVERIFY(!client.mmc->GetSpaceFree(bytes, client.progress.all()));
        QCOMPARE(bytes, 0);
        QCOMPARE(client.progress.panel.Text(), u"Freier Speicherplatz nicht ermittelt."_s);
        port.expect(hex("83 001A 4C 0017 32 13 01 10 005C 004D 004D 0043 0061 0072 0064 0000"),
                    hex("A0 0010 4C 000D 32 08 00 00 00 01 00 00 00 00"));
        QVERIFY(client.mmc->GetSpaceTotalMmc(bytes, client.progress.all()));
        QCOMPARE(bytes, 0x7FFFFFFF); // more than 32 bits can say
    });
}

void tst_ObexFolders::folderTotals()
{
    auto&& [test, port, client] = OnlineClient();
    const auto listing = [](const QByteArray& text) { return packet(0xA0, header(0x49, text)); };
    port.expect(enter("a", 0), done);
    port.expect(
        listFolder,
        listing("<file name=\"1\" size=\"10\"/><folder name=\"b\"/><folder name=\"\"/><folder name=\"\\\"/>"
                "<folder name=\"c\"/><file name=\"2\" size=\"5\"/>\xC3"));
    test.dialogs.expectStart(u"Bei der UTF-8 Dekodierung ist ein Fehler aufgetreten."_s); // half a letter
    port.expect(enter("b", 0), done).expect(listFolder, listing("<file name=\"3\" size=\"100\"/>"));
    port.expect(toRoot, done).expect(enter("a", 0), done);
    port.expect(enter("c", 0), hex("C3 0003")); // closed, but the way back is open
    test.dialogs.expect(errorBox(GetFriedlyErrMsg(0xC3)));
    port.expect(toRoot, done).expect(enter("a", 0), done);
    port.expect(toRoot, done);
    qint64 total = 0;
    int count = 0;
    QVERIFY(client.mmc->GetFolderInfosRec(u"a"_s, total, count, client.progress.all(), u"Mobile:\\"_s));
    QCOMPARE(total, 115);
    QCOMPARE(count, 3);
    QVERIFY(client.progress.panel.texts.contains(u"Ordner b wird untersucht..."_s));
    QCOMPARE(client.mmc->DirAct(), u"Mobile:\\"_s);
}

KALMO_TEST(tst_ObexFolders)
#include "tst_ObexFolders.moc"
