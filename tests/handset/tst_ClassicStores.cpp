#include "support/HandsetTalk.h"

#include "app/CodePage.h"
#include "support/Rows.h"

#include <QJsonDocument>
#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

/// The entries of a store as the memory spells them.
QByteArray content(const handset::ClassicStore& store)
{
    return QJsonDocument(store.json()).toJson(QJsonDocument::Compact);
}

/// A client's way of writing a list: erase, close, open, entries, close.
QByteArrayList writing(const QByteArray& store, const QByteArray& close, const QByteArrayList& entries)
{
    return QByteArrayList{"AT^WSEL=\"" + store + "\"\r", close, "AT^WSSL=\"" + store + "\"\r"} + entries +
           QByteArrayList{close};
}

} // namespace

/// The phonebook and the provider list of families 1 to 4.
class ClassicStores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesEntries();
    void checksTheClient();
};

void ClassicStores::takesEntries()
{
    const QString first = u"WOODSTOCK"_s;
    const QString last = u"PICASSO"_s;
    const auto malformed = [](const QByteArray& entry) {
        return QStringList{u"malformed: AT^WSWE="_s + app::fromCp1252(entry)};
    };
    Rows<QString, QByteArray, QByteArray, QStringList> rows;
    rows.add("name and number", last, "4,Abel,3,123,0,", R"({"name":"Abel","number":"123"})", {});
    rows.add("date in families 2 to 4", last, "1,A,1,1,12,000229120012",
             R"({"anniversary":"29.02. 12:00","name":"A","number":"1","reminder":"12"})", {});
    rows.add("VIP", last, "1,A,1,1,0,,1,10", R"({"name":"A","number":"1","vipSound":"10"})", {});
    rows.add("longest", last, "16,Abcdefghijklmn\xdf\xfc,32,+1234567890123456789012345678901,0,",
             R"({"name":"Abcdefghijklmnßü","number":"+1234567890123456789012345678901"})", {});
    rows.add("number too long", last, "1,A,33,123456789012345678901234567890123,0,", {}, {});
    rows.add("character that it can't show", last, "1,[,1,1,0,", {}, {});
    rows.add("VIP in family 1", first, "1,A,1,1,0,,1,5", {}, malformed("1,A,1,1,0,,1,5"));
    rows.add("no such day", last, "1,A,1,1,11,00023012005", {}, malformed("1,A,1,1,11,00023012005"));
    rows.add("enormous length", last, "99999999999,A,1,1,0,", {}, malformed("99999999999,A,1,1,0,"));

    for (const auto& [model, entry, stored, violations] : rows) {
        HandsetTalk talk(emptyHandset(model));
        const QByteArray answer = talk.sayAll({"AT^WSSL=\"TB\"\r", "AT^WSWE=" + entry + "\r\n"});
        QCOMPARE(answer, "AT^WSWE=" + entry + "\r\r\n" + (stored.isEmpty() ? "ERROR\r\n" : "OK\r\n"));
        QCOMPARE(content(talk.port.handset().phone().phonebook), '[' + stored + ']');
        QCOMPARE(talk.violations(), violations);
    }
}

void ClassicStores::checksTheClient()
{
    const QByteArrayList entry = {"AT^WSWE=4,Abel,3,123,0,\r\n"};
    Rows<QString, QByteArrayList, QStringList> rows;
    rows.add("as families 1 and 2 want it", u"WOODY"_s, writing("TB", "AT\r", entry), {});
    rows.add("as families 3 and 4 want it", u"PICASSO"_s, writing("TB", "AT^WSSL\r", entry), {});
    rows.add("preparation of family 3", u"GALICIA"_s, writing("TB", "AT^WSSL\r", {"AT^WSWE=1,A,1,1,0,\r"}),
             {});
    rows.add("providers", u"PICASSO"_s, writing("NE", "AT^WSSL\r", {"AT^WSWE=4,Abel,3,123\r"}), {});
    rows.add("entry ended by CR alone", u"PICASSO"_s,
             writing("TB", "AT^WSSL\r", {"AT^WSWE=4,Abel,3,123,0,\r"}),
             {u"ended by CR alone: AT^WSWE=4,Abel,3,123,0,"_s});
    rows.add("preparation in another family", u"PICASSO"_s,
             writing("TB", "AT^WSSL\r", {"AT^WSWE=1,A,1,1,0,\r"}),
             {u"ended by CR alone: AT^WSWE=1,A,1,1,0,"_s});
    rows.add("other command in a store", u"PICASSO"_s, {"AT^WSSL=\"TB\"\r", "AT+CGMR\r", "AT^WSSL\r"},
             {u"AT+CGMR while a store is open"_s});
    rows.add("close of the wrong family", u"PICASSO"_s, {"AT^WSSL=\"TB\"\r", "AT\r"},
             {u"line closed while the store \"TB\" is open"_s});
    rows.add("nothing open", u"PICASSO"_s, {"AT^WSRE\r", entry.first()},
             {u"AT^WSRE without an open store"_s, u"AT^WSWE=4,Abel,3,123,0, without an open store"_s,
              u"ended by CR LF: AT^WSWE=4,Abel,3,123,0,"_s});

    for (const auto& [model, said, violations] : rows) {
        HandsetTalk talk(emptyHandset(model));
        talk.sayAll(said);
        talk.port.Close();
        QCOMPARE(talk.violations(), violations);
    }
}

QTEST_GUILESS_MAIN(ClassicStores)
#include "tst_ClassicStores.moc"
