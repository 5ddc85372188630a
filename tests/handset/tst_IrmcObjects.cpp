#include "support/ObexTalk.h"
#include "support/Rows.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

QByteArray card(const QByteArray& lines)
{
    return "BEGIN:VCARD\r\n" + lines + "END:VCARD\r\n\r\n";
}

/// PUT of one item, with the change counter that the client expects.
QByteArray putItem(const QByteArray& name, const QByteArray& counter, const QByteArray& text)
{
    return obexFrame(0x82, nameHeader(name) + lengthHeader(text.size()) + counterHeader(counter) +
                               obexHeader(0x49, text));
}

QByteArray deleteItem(const QByteArray& name, const QByteArray& counter)
{
    return obexFrame(0x82, nameHeader(name) + counterHeader(counter));
}

/// The answer to a change, with its LUID and the new counter.
QByteArray told(const QByteArray& luid, const QByteArray& counter)
{
    return obexFrame(0xA0, obexHeader(0x4C, QByteArray(1, '\x01') + static_cast<char>(luid.size()) + luid +
                                                '\x02' + static_cast<char>(counter.size()) + counter));
}

/// A client in telecom/<folder>/luid, where changes are made.
void openStore(ObexTalk& talk, const QByteArray& folder)
{
    talk.ask(connectFolders);
    talk.ask(connectIrmc);
    for (const QByteArray& name : {QByteArray("telecom"), folder, QByteArray("luid")})
        talk.enter(name);
}

} // namespace

/// The phonebook and the organizer of families 5 to 13.
class IrmcObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changes();
    void readsCards();
};

void IrmcObjects::changes()
{
    const QString older = u"S68H"_s;
    const QString newer = u"SL450HX"_s;
    const QByteArray text = card("N:Neu;Nina\r\nTEL;HOME:1\r\n");
    const QByteArray ok = obexFrame(0xA0);
    Rows<QString, QByteArrayList, QByteArrayList, QStringList> rows;
    rows.add("new", newer, {putItem(".vcf", "25", text), putItem(".vcf", "26", text)},
             {told("0026", "26"), told("0027", "27")}, {});
    rows.add("changed", newer, {putItem("0003.vcf", "25", text)}, {told("0003", "26")}, {});
    rows.add("deleted, newer", newer, {deleteItem("0003.vcf", "25"), deleteItem("0003.vcf", "26")},
             {ok, obexFrame(0xC4)}, {});
    rows.add("somebody else was faster", newer, {putItem(".vcf", "24", text), deleteItem("0003.vcf", "26")},
             {obexFrame(0xC9), obexFrame(0xC9)}, {});
    rows.add("no counter", newer,
             {obexFrame(0x82, nameHeader(".vcf") + lengthHeader(text.size()) + obexHeader(0x49, text))},
             {told("0026", "26")}, {u"a change without the change counter"_s});

    for (const auto& [model, requests, wantedAnswers, violations] : rows) {
        ObexTalk talk({.model = model});
        openStore(talk, "pb");
        QByteArrayList answers;
        for (const QByteArray& request : requests)
            answers.append(talk.ask(request));
        QCOMPARE(answers, wantedAnswers);
        QCOMPARE(talk.violations(), violations);
    }
}

void IrmcObjects::readsCards()
{
    const Rows<QByteArray, QByteArray> rows{
        {"all",
         "N:A;B\r\nEMAIL;INTERNET:a@b\r\nTEL;HOME:1\r\nTEL;WORK:2\r\nTEL;CELL:3\r\nX-IRMC-LUID:\r\nBDAY:\r\n",
         "N:A;B\r\nTEL;HOME:1\r\nTEL;CELL:3\r\nTEL;WORK:2\r\nEMAIL:a@b\r\n"},
        {"quoted-printable", "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:M=C3=BC=\r\nller;=41\r\n",
         "N:M\xfcller;A\r\n"},
        {"beyond the code page", "N;CHARSET=UTF-8:\xc5\x81;\r\n",
         "N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C5=81;\r\n"},
        {"semicolons", "N:a\\;b;c\\;d;e\r\n", "N:a\\;b;c\\;d\r\n"},
        {"birthday of zeros", "N:A;\r\nBDAY:0000-00-00T00:00\r\n", "N:A;\r\n"},
        {"birthday", "N:A;\r\nBDAY:1970-03-02T08:15\r\n", "N:A;\r\nBDAY:1970-03-02T08:15\r\n"},
        {"general client", "N:A;\r\nTEL;CELL;VOICE:1\r\nTEL;TYPE=WORK:2\r\nNOTE:x\r\n",
         "N:A;\r\nTEL;CELL:1\r\nTEL;WORK:2\r\n"},
    };
    for (const auto& [lines, stored] : rows) {
        ObexTalk talk(emptyHandset(u"S68H"_s));
        openStore(talk, "pb");
        QCOMPARE(talk.ask(putItem(".vcf", "0", card(lines))), told("0001", "1"));
        QCOMPARE(talk.fetchFile("0001.vcf"),
                 "BEGIN:VCARD\r\nVERSION:2.1\r\n" + stored + "X-IRMC-LUID:0001\r\nEND:VCARD\r\n");
    }
}

QTEST_GUILESS_MAIN(IrmcObjects)
#include "tst_IrmcObjects.moc"
