// Replies of the read command: whether a byte got lost on the line.

#include "phonedata/ClassicStore.h"

#include <QTest>

using namespace kalmo::phonedata;

class tst_ClassicStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lengths_data();
    void lengths();
};

void tst_ClassicStore::lengths_data()
{
    QTest::addColumn<Store>("store");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("addUp");
    const auto row = [](const char* name, Store store, const QByteArray& reply, bool addUp) {
        QTest::newRow(name) << store << reply << addUp;
    };
    row("no date", Store::Phonebook, "^WSRE: 4,Anna,3,110,0,\r\n", true);
    row("end behind the number", Store::Phonebook, "^WSRE:4,Anna,3,110", true);
    row("date", Store::Phonebook, "^WSRE: 4,Anna,3,110,11,00122408303\r\n", true);
    row("date and VIP", Store::Phonebook, "^WSRE: 4,Anna,3,110,11,00122408303,1,5\r\n", true);
    row("VIP", Store::Phonebook, "^WSRE: 4,Anna,3,110,0,,1,12\r\n", true);
    row("no name", Store::Phonebook, "^WSRE: ,,3,110,0,\r\n", true);
    row("comma in the name", Store::Phonebook, "^WSRE: 3,A,B,3,110,0,\r\n", true);
    row("empty name", Store::Phonebook, "^WSRE: 0,,3,110,0,\r\n", true);
    row("provider", Store::Providers, "^WSRE: 4,Call,5,01013\r\n", true);
    row("provider with more behind it", Store::Providers, "^WSRE: 4,Call,5,01013,x\r\n", true);
    row("byte of the prefix lost", Store::Phonebook, "WSRE: 4,Anna,3,110,0,\r\n", false);
    row("byte of a length lost", Store::Phonebook, "^WSRE: ,Anna,3,110,0,\r\n", false);
    row("byte of the name lost", Store::Phonebook, "^WSRE: 4,Ann,3,110,0,\r\n", false);
    row("byte of the number lost", Store::Phonebook, "^WSRE: 4,Anna,3,11,0,\r\n", false);
    row("comma lost", Store::Phonebook, "^WSRE: 4,Anna3,110,0,\r\n", false);
    row("byte of the date lost", Store::Phonebook, "^WSRE: 4,Anna,3,110,11,0012240830\r\n", false);
    row("byte of a provider's number lost", Store::Providers, "^WSRE: 4,Call,5,0103\r\n", false);
    row("length beyond all numbers", Store::Providers, "^WSRE: 99999999999,Call,5,01013\r\n", false);
    row("negative length", Store::Providers, "^WSRE: -1,Call,5,01013\r\n", false);
}

void tst_ClassicStore::lengths()
{
    QFETCH(Store, store);
    QFETCH(QByteArray, reply);
    QTEST(lengthsAddUp(reply, store), "addUp");
}

QTEST_GUILESS_MAIN(tst_ClassicStore)
#include "tst_ClassicStore.moc"
