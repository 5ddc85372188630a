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

const std::vector<ProviderEntry> providers = {{u"Billig, AG"_s, u"01013"_s}, {u"Ohne Name"_s, u"01070"_s}};

} // namespace

class tst_ProviderList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reply();
    void listKeepsItsPauses();
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

/// Family 3: the provider list is not prepared, and the command that writes it ends in CR alone.
void tst_ProviderList::listKeepsItsPauses()
{
    ClassicPhone phone(3, Store::Providers);
    phone.script.expect("AT^WSSL=\"NE\"\r").expect("AT^WSRE\r", "^WSRE: 10,Billig, AG,5,01013");
    phone.script.expect("AT^WSRE\r", "^WSRE: ,,5,01070").expectAll({"AT^WSRE\r", "AT^WSSL\r"});
    QVERIFY(ReadPB_NE(phone.job()));
    QCOMPARE(providerEntries(*phone.list), providers);
    QCOMPARE(phone.memory.providers.entries, providers);
    QCOMPARE(phone.memory.providers.certainty, Certainty::Known);

    phone.list->add(toRow(ProviderEntry{u"Jörg"_s, u"1"_s}));
    phone.script.expectAll({"AT^WSEL=\"NE\"\r", "AT^WSSL\r", "AT^WSSL=\"NE\"\r",
                            "AT^WSWE=10,Billig, AG,5,01013\r", "AT^WSWE=9,Ohne Name,5,01070\r",
                            "AT^WSWE=4,J\xF6rg,1,1\r", "AT^WSSL\r"});
    phone.progress.bar.steps.clear();
    QVERIFY(WritePB_NE(phone.job()));
    QCOMPARE(phone.memory.providers.entries.size(), 3U);
    QCOMPARE(phone.window.states, (QList<bool>{true, false, true, false}));
    QCOMPARE(phone.progress.bar.steps, (QStringList{u"0/3"_s, u"1/3"_s, u"2/3"_s, u"3/3"_s, u"hidden"_s}));
    QCOMPARE(phone.progress.panel.texts.filter(u"Provider"_s),
             (QStringList{u"Lese Provider..."_s, u"Schreibe Provider...(1 von 3)"_s,
                          u"Schreibe Provider...(2 von 3)"_s, u"Schreibe Provider...(3 von 3)"_s}));
    QCOMPARE(phone.script.timeline().join(u'|'),
             u"0.00 AT^WSSL=\"NE\"|0.52 AT^WSRE|0.64 AT^WSRE|0.76 AT^WSRE|1.08 AT^WSSL|"
             "5.08 AT^WSEL=\"NE\"|5.10 AT^WSSL|8.60 AT^WSSL=\"NE\"|9.12 AT^WSWE=10,Billig, AG,5,01013|"
             "9.34 AT^WSWE=9,Ohne Name,5,01070|9.56 AT^WSWE=4,Jörg,1,1|10.28 AT^WSSL"_s);
}

QTEST_GUILESS_MAIN(tst_ProviderList)
#include "tst_ProviderList.moc"
