// Objects of the emulated handset over OBEX.

#include "support/ObexTalk.h"
#include "support/TestProgram.h"

namespace {

/// A PUT of a small file in one frame.
QByteArray putFile(const QByteArray& name, const QByteArray& content)
{
    return packet(0x82, nameHeader(name) + lengthHeader(content.size()) + header(0x44, "20261121T120000") +
                            header(0x49, content));
}

QByteArray card(const QByteArray& lines)
{
    return "BEGIN:VCARD\r\n" + lines + "END:VCARD\r\n\r\n";
}

/// PUT of a new contact; with the change counter that the client expects, if it says one.
QByteArray putContact(const QByteArray& counter, const QByteArray& text)
{
    return packet(0x82, nameHeader(".vcf") + lengthHeader(text.size()) +
                            (counter.isEmpty() ? counter : counterHeader(counter)) + header(0x49, text));
}

/// The answer to a change, with its LUID and the new counter.
QByteArray told(const QByteArray& luid, const QByteArray& counter)
{
    return packet(0xA0, header(0x4C, QByteArray(1, '\x01') + static_cast<char>(luid.size()) + luid + '\x02' +
                                         static_cast<char>(counter.size()) + counter));
}

/// A client in telecom/pb/luid, where contacts are changed.
void openContacts(ObexTalk& talk)
{
    talk.ask(connectFolders);
    talk.ask(connectIrmc);
    for (const char* name : {"telecom", "pb", "luid"})
        talk.enter(name);
}

} // namespace

/// The file system and the phonebook of families 5 to 13 over OBEX.
class ObexObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusals();
    void keepsFiles();
    void changes();
    void readsCards();
};

void ObexObjects::refusals()
{
    const QString older = u"S68H"_s;
    const QString newer = u"SL450HX"_s;
    const Rows<QString, QByteArray, int> rows{
        {"no such file", older, packet(0x83, nameHeader("x")), 0xC4},
        {"path in an older family", older, putFile("/Sounds/x", "x"), 0xC0},
        {"hostile name", older, putFile("..\\x", "x"), 0xCC},
        {"folder with something in it", newer, packet(0x82, nameHeader("/Sounds")), 0xCC},
        {"telecom deleted", older, packet(0x82, nameHeader("telecom")), 0xC3},
        {"too large", older, packet(0x02, nameHeader("x") + lengthHeader(2000000) + header(0x48, {})), 0xE0},
        {"no card", older, QByteArray::fromHex("83001A4C001732130110005C004D004D00430061007200640000"), 0xC4},
    };
    rows.each([&](const auto& model, const auto& request, const auto& code) {
        ObexTalk talk({.model = model});
        talk.ask(connectFolders);
        QCOMPARE(talk.ask(request).toHex(' '), packet(code).toHex(' '));
    });
}

void ObexObjects::keepsFiles()
{
    const QTemporaryDir outer;
    const QDir folder(outer.filePath(u"a/state"_s));
    handset::Options options{.model = u"S68H"_s, .stateFolder = folder.path()};
    options.faults.hostileNames = true;
    {
        ObexTalk talk(options);
        talk.ask(connectFolders);
        talk.ask(putFile("\xc4.txt", "abc"));
        talk.ask(packet(0x82, nameHeader("Liesmich.txt")));
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

void ObexObjects::changes()
{
    const QByteArray text = card("N:Neu;Nina\r\nTEL;HOME:1\r\n");
    const Rows<QByteArray, QByteArray, QStringList> rows{
        {"new", putContact("25", text), told("0026", "26"), {}},
        {"somebody else was faster", putContact("24", text), packet(0xC9), {}},
        {"no counter", putContact({}, text), told("0026", "26"), {u"a change without the change counter"_s}},
    };
    rows.each([&](const auto& request, const auto& answer, const auto& violations) {
        ObexTalk talk({.model = u"SL450HX"_s});
        openContacts(talk);
        QCOMPARE(talk.ask(request), answer);
        QCOMPARE(talk.violations(), violations);
    });
}

void ObexObjects::readsCards()
{
    const Rows<QByteArray, QByteArray> rows{
        {"all",
         "N:A;B\r\nEMAIL;INTERNET:a@b\r\nTEL;HOME:1\r\nTEL;WORK:2\r\nTEL;CELL:3\r\nX-IRMC-LUID:\r\nBDAY:\r\n",
         "N:A;B\r\nTEL;HOME:1\r\nTEL;CELL:3\r\nTEL;WORK:2\r\nEMAIL:a@b\r\n"},
        {"quoted-printable", "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BC=\r\nller;=41\r\n",
         "N:M\xfcller;A\r\n"},
        {"beyond the code page", "N;CHARSET=UTF-8:\xc5\x81;\r\n",
         "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C5=81;\r\n"},
        {"birthday", "N:A;\r\nBDAY:1970-03-02T08:15\r\n", "N:A;\r\nBDAY:1970-03-02T08:15\r\n"},
        {"general client", "N:A;\r\nTEL;CELL;VOICE:1\r\nTEL;TYPE=WORK:2\r\nNOTE:x\r\n",
         "N:A;\r\nTEL;CELL:1\r\nTEL;WORK:2\r\n"},
    };
    rows.each([&](const auto& lines, const auto& stored) {
        ObexTalk talk(emptyHandset(u"S68H"_s));
        openContacts(talk);
        QCOMPARE(talk.ask(putContact("0", card(lines))), told("0001", "1"));
        QCOMPARE(talk.fetchFile("0001.vcf"),
                 "BEGIN:VCARD\r\nVERSION:2.1\r\n" + stored + "X-IRMC-LUID:0001\r\nEND:VCARD\r\n");
    });
}

KALMO_TEST(ObexObjects)
#include "tst_ObexObjects.moc"
