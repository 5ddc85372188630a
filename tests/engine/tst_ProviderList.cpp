// The provider list of classic handsets: where it differs from the phonebook.

#include "phonedata/ProviderList.h"
#include "support/ClassicPhone.h"
#include "support/Rows.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;

namespace {

const QByteArray openStore = "AT^WSSL=\"NE\"\r";
const QByteArray eraseStore = "AT^WSEL=\"NE\"\r";
const QByteArray readNext = "AT^WSRE\r";
const std::vector<ProviderEntry> providers = {{u"Billig, AG"_s, u"01013"_s}, {u"Ohne Name"_s, u"01070"_s}};

} // namespace

class tst_ProviderList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reply();
    void readKeepsItsPauses();
    void writeKeepsItsPauses();
};

void tst_ProviderList::reply()
{
    const Rows<QByteArray, QString> rows{
        {"without a blank", "^WSRE:4,Call,5,01013\r\n", u"Call|01013"_s},
        {"no name", "^WSRE: ,,5,01013\r\n", u"Ohne Name|01013"_s},
        {"more behind the number", "^WSRE: 4,Call,5,01013,0,\r\n", u"Call|01013"_s},
        {"shorter than the prefix", "^WS", u"Ohne Name|"_s},
    };
    for (const auto& [reply, wantedEntry] : rows) {
        const ProviderEntry entry = parseProviderReply(reply);
        QCOMPARE(entry.name + u'|' + entry.number, wantedEntry);
    }
}

void tst_ProviderList::readKeepsItsPauses()
{
    ClassicPhone phone(3, Store::Providers);
    phone.script.expect(openStore)
        .expect(readNext, "^WSRE: 10,Billig, AG,5,01013")
        .expect(readNext, "^WSRE: ,,5,01070")
        .expect(readNext)
        .expect("AT^WSSL\r");
    QVERIFY(ReadPB_NE(phone.job()));

    QCOMPARE(phone.script.timeline(), (QStringList{u"0.00 AT^WSSL=\"NE\""_s, u"0.52 AT^WSRE"_s,
                                                   u"0.64 AT^WSRE"_s, u"0.76 AT^WSRE"_s, u"1.08 AT^WSSL"_s}));
    QCOMPARE(providerEntries(*phone.list), providers);
    QCOMPARE(phone.memory.providers.entries, providers);
    QCOMPARE(phone.memory.providers.certainty, Certainty::Known);
    QCOMPARE(phone.window.states, (QList<bool>{true, false}));
    QCOMPARE(phone.progress.panel.texts.filter(u"Provider"_s), (QStringList{u"Lese Provider..."_s}));
}

void tst_ProviderList::writeKeepsItsPauses()
{
    // Three entries on family 3: the provider list is not prepared, and its command ends in CR alone.
    ClassicPhone phone(3, Store::Providers);
    phone.fill(providers);
    phone.fill(std::vector<ProviderEntry>{{u"Jörg"_s, u"1"_s}});
    phone.script.expectAll({eraseStore, "AT^WSSL\r", openStore, "AT^WSWE=10,Billig, AG,5,01013\r",
                            "AT^WSWE=9,Ohne Name,5,01070\r", "AT^WSWE=4,J\xF6rg,1,1\r", "AT^WSSL\r"});
    QVERIFY(WritePB_NE(phone.job()));

    QCOMPARE(phone.script.timeline().mid(2),
             (QStringList{u"4.02 AT^WSSL=\"NE\""_s, u"4.54 AT^WSWE=10,Billig, AG,5,01013"_s,
                          u"4.76 AT^WSWE=9,Ohne Name,5,01070"_s, u"4.98 AT^WSWE=4,Jörg,1,1"_s,
                          u"5.70 AT^WSSL"_s}));
    QCOMPARE(phone.progress.bar.steps, (QStringList{u"0/3"_s, u"1/3"_s, u"2/3"_s, u"3/3"_s, u"hidden"_s}));
    QCOMPARE(phone.progress.panel.texts.filter(u"Schreibe"_s),
             (QStringList{u"Schreibe Provider...(1 von 3)"_s, u"Schreibe Provider...(2 von 3)"_s,
                          u"Schreibe Provider...(3 von 3)"_s}));
    QCOMPARE(phone.memory.providers.entries.size(), 3U);
    QCOMPARE(phone.memory.providers.certainty, Certainty::Known);
}

QTEST_GUILESS_MAIN(tst_ProviderList)
#include "tst_ProviderList.moc"
