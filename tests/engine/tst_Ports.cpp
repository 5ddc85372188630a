// Numbers of serial ports, their descriptions and the list that the settings offer.

#include "link/mdlComInfos.h"
#include "link/PortAccess.h"
#include "support/ScriptedPort.h"

#include <QtTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using link::DeviceEntry;
using link::SerialDevice;

namespace {

class FakeDevices : public link::DeviceList
{
public:
    QList<SerialDevice> list;
    QList<SerialDevice> devices() override { return list; }
};

} // namespace

class tst_Ports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void descriptions_data();
    void descriptions();
    void numbersStayWithTheirDevices();
    void portItems_data();
    void portItems();
    void listForTheSettings();
    void listWithoutThePortObject();
    void faults_data();
    void faults();
};

void tst_Ports::descriptions_data()
{
    QTest::addColumn<QList<DeviceEntry>>("devices");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("description");
    const auto port = [](const QString& name) { return DeviceEntry{u"Ports"_s, name, u"M"_s, u"H"_s, {}}; };
    const auto modem = [](const QString& attached) {
        return DeviceEntry{u"Modem"_s, u"Siemens Mobile Phone USB Modem #2"_s, {}, {}, attached};
    };
    QTest::newRow("name without its mark") << QList{port(u"Prolific USB (COM3)"_s)} << 3 << u"Prolific USB"_s;
    QTest::newRow("two digits") << QList{port(u"X (COM12)"_s)} << 12 << u"X"_s;
    QTest::newRow("three digits do not match") << QList{port(u"X (COM100)"_s)} << 100 << QString();
    QTest::newRow("last mark counts") << QList{port(u"A (COM1) B (COM2)"_s)} << 2 << u"A (COM1) B"_s;
    QTest::newRow("first device keeps the slot")
        << QList{port(u"A (COM1)"_s), port(u"B (COM1)"_s)} << 1 << u"A"_s;
    QTest::newRow("replacement, any case")
        << QList{port(u"SIEMENS usb data cable (COM4)"_s)} << 4 << u"Siemens USB Kabel DCA-510"_s;
    QTest::newRow("modem by its port")
        << QList{modem(u"COM5"_s)} << 5 << u"Siemens USB Kabel DCA-140, DCA-540, DSC-600 #2"_s;
    QTest::newRow("modem without a port") << QList{modem({})} << 0 << QString();
    QTest::newRow("other classes") << QList{DeviceEntry{u"Mouse"_s, u"X (COM6)"_s, {}, {}, {}}} << 6
                                   << QString();
}

void tst_Ports::descriptions()
{
    QFETCH(QList<DeviceEntry>, devices);
    QFETCH(int, number);
    link::ComDescriptions table;
    table.RefreshComDesc(devices);
    QTEST(table.GetComDescription(number), "description");
    table.RefreshComDesc({});
    QCOMPARE(table.GetComDescription(number), QString());
}

void tst_Ports::numbersStayWithTheirDevices()
{
    TestContext test;
    FakeDevices devices;
    const SerialDevice cable{u"/dev/ttyUSB0"_s, u"/dev/serial/by-id/cable"_s, u"Cable"_s, {}, {}};
    const SerialDevice board{u"/dev/ttyS0"_s, {}, {}, {}, {}};
    {
        link::PortTable table(test.settings, devices);
        devices.list = {cable};
        QCOMPARE(table.numbers(), QList<int>{1});
        devices.list = {board, cable};
        QCOMPARE(table.numbers(), (QList<int>{1, 2}));
    }
    // Another run, the cable plugged in again under another name.
    link::PortTable table(test.settings, devices);
    devices.list = {board};
    QCOMPARE(table.numbers(), QList<int>{2});
    QCOMPARE(table.devicePath(1), u"/dev/serial/by-id/cable"_s); // remembered, to be named when it is missed
    devices.list = {{u"/dev/ttyUSB3"_s, cable.stablePath, u"Cable"_s, {}, {}}, board};
    QCOMPARE(table.numbers(), (QList<int>{1, 2}));
    QCOMPARE(table.devicePath(1), u"/dev/ttyUSB3"_s);
    QCOMPARE(table.numberOf(u"/dev/pts/7"_s), 3);
    QCOMPARE(table.numberOf(u"/dev/pts/7"_s), 3);
    QCOMPARE(table.devicePath(9), QString());
    table.useDevice(9, u"/dev/pts/8"_s);
    QCOMPARE(table.devicePath(9), u"/dev/pts/8"_s);
    devices.list = {{u"COM7"_s, {}, u"Numbered by the system"_s, {}, {}}};
    QCOMPARE(table.numbers(), QList<int>{7});
}

void tst_Ports::portItems_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("one digit") << 3 << u"Cable"_s << u"COM 3    (Cable)"_s;
    QTest::newRow("two digits") << 12 << u"Cable"_s << u"COM 12  (Cable)"_s;
    QTest::newRow("no name") << 4 << QString() << u"COM 4"_s;
}

void tst_Ports::portItems()
{
    QFETCH(int, number);
    QFETCH(QString, name);
    QFETCH(QString, text);
    QCOMPARE(link::portItemText(number, name), text);
    QCOMPARE(link::portItemNumber(text), number);
}

void tst_Ports::listForTheSettings()
{
    TestContext test;
    FakeDevices devices;
    devices.list = {{u"/dev/ttyS0"_s, {}, u"Kommunikationsanschluss"_s, u"M"_s, u"H"_s},
                    {u"/dev/ttyS1"_s, {}, {}, {}, {}}};
    link::PortTable table(test.settings, devices);
    link::ComDescriptions descriptions;
    ScriptedPort port(test);
    port.names = {u"COM2"_s, u"LPT1"_s, u"COM1"_s};
    test.startLog();
    QCOMPARE(link::listPorts(test.context, port, table, descriptions, link::PortListFor::Start),
             (QStringList{u"COM 1    (Standard COM Port)"_s, u"COM 2    (/dev/ttyS1)"_s}));
    const QStringList remarks = test.sy.StrStCom.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(remarks.first(), u"@0043200.00 Enter: GetComDescr eComm:CountPorts=3"_s);
    QCOMPARE(remarks.at(2), u"@0043200.00 sPort(1)=LPT1"_s);
    QVERIFY(remarks.contains(u"@0043200.00 COM(1)=>Standard COM Port< MFG=M HwID=H"_s));
    QCOMPARE(test.logged(), QStringList());
}

void tst_Ports::listWithoutThePortObject()
{
    class BrokenPort : public ScriptedPort
    {
    public:
        using ScriptedPort::ScriptedPort;
        int CountPorts() override { return -1; }
    };
    TestContext test;
    FakeDevices devices;
    devices.list = {{u"/dev/ttyS0"_s, {}, u"Board"_s, {}, {}}};
    link::PortTable table(test.settings, devices);
    link::ComDescriptions descriptions;
    BrokenPort port(test);
    test.startLog();
    QCOMPARE(link::listPorts(test.context, port, table, descriptions, link::PortListFor::Rebuild),
             QStringList{u"COM 1    (Board)"_s});
    QVERIFY(test.logged().contains(u"RebuildCmbCom: Sport Failure - cComEnum.CountPorts=1"_s));
    QCOMPARE(test.logged().last(), u"RebuildCmbCom: All done"_s);
}

void tst_Ports::faults_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("system");
    QTest::addColumn<QString>("part");
    QTest::newRow("missing") << u"/dev/no-such-device"_s << QString()
                             << u"/dev/no-such-device ist nicht vorhanden"_s;
    QTest::newRow("busy") << u"/dev/null"_s << u"Permission error while locking the device"_s
                          << u"/dev/null wird bereits von einem anderen Programm benutzt"_s;
    QTest::newRow("no device") << u"/proc/version"_s << QString() << u"keine serielle Schnittstelle"_s;
    QTest::newRow("anything else") << u"/dev/null"_s << u"Invalid argument"_s << u"Invalid argument"_s;
}

void tst_Ports::faults()
{
    QFETCH(QString, path);
    QFETCH(QString, system);
    QFETCH(QString, part);
    const link::PortFault fault = link::examinePort(path, system);
    QVERIFY2(fault.german.contains(part), qPrintable(fault.german));
    QVERIFY(fault.english.contains(path));
}

QTEST_GUILESS_MAIN(tst_Ports)
#include "tst_Ports.moc"
