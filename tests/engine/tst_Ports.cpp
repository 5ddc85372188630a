// Numbers of serial ports, their descriptions and the list that the settings offer.

#include "link/mdlComInfos.h"
#include "link/PortAccess.h"
#include "support/ScriptedPort.h"
#include "support/TestProgram.h"

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
    void descriptions();
    void modemsByTheirInterface();
    void numbersStayWithTheirDevices();
    void numbersHoldBeforeSettingsCanBeWritten();
};

void tst_Ports::descriptions()
{
    const auto port = [](const QString& name) { return DeviceEntry{u"Ports"_s, name, u"M"_s, u"H"_s, {}}; };
    const auto modem = [](const QString& attached) {
        return DeviceEntry{u"Modem"_s, u"Siemens Mobile Phone USB Modem #2"_s, {}, {}, attached};
    };
    const Rows<QList<DeviceEntry>, int, QString> rows{
        {"name without its mark", QList{port(u"Prolific USB (COM3)"_s)}, 3, u"Prolific USB"_s},
        {"first device keeps the slot", QList{port(u"A (COM1)"_s), port(u"B (COM1)"_s)}, 1, u"A"_s},
        {"replacement, any case", QList{port(u"SIEMENS usb data cable (COM4)"_s)}, 4,
         u"Siemens USB Kabel DCA-510"_s},
        {"modem by its port", QList{modem(u"COM5"_s)}, 5,
         u"Siemens USB Kabel DCA-140, DCA-540, DSC-600 #2"_s},
    };
    rows.each([&](const auto& devices, const auto& number, const auto& description) {
        link::ComDescriptions table;
        table.RefreshComDesc(devices);
        QCOMPARE(table.GetComDescription(number), description);
        table.RefreshComDesc({});
        QCOMPARE(table.GetComDescription(number), QString());
    });
}

void tst_Ports::modemsByTheirInterface()
{
    const QString name = u"Siemens Mobile Phone USB Modem"_s;
    const QString cable = u"Siemens USB Kabel DCA-140, DCA-540, DSC-600"_s;
    const Rows<QByteArray, QString> rows{
        // class, subclass, protocol
        {"AT commands", "02 02 01", cable},
        {"no commands", "02 02 00", name},
        {"no USB interface", "", name},
    };
    rows.each([&](const auto& numbers, const auto& description) {
        TestContext test;
        QStringList files{u"bInterfaceClass"_s, u"bInterfaceSubClass"_s, u"bInterfaceProtocol"_s};
        for (const QByteArray& number : numbers.split(' '))
            test.makeFile(files.takeFirst(), number + '\n');
        FakeDevices devices;
        devices.list = {{u"/dev/ttyACM0"_s, {}, name, {}, {}, link::isModemInterface(test.folder.path())}};
        link::PortTable ports(test.settings, devices);
        link::ComDescriptions table;
        table.RefreshComDesc(link::deviceEntries(ports));
        QCOMPARE(table.GetComDescription(1), description);
    });
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
        QCOMPARE(link::PortTable(test.settings, devices).numberForThisRun(u"/dev/pts/5"_s), 2);
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
    QCOMPARE(table.numberForThisRun(u"/dev/pts/6"_s), 3);
    QCOMPARE(table.numberOf(u"/dev/pts/7"_s), 4);
    QCOMPARE(table.numberOf(u"/dev/pts/7"_s), 4);
    QCOMPARE(table.devicePath(9), QString());
    table.useDevice(9, u"/dev/pts/8"_s);
    QCOMPARE(table.devicePath(9), u"/dev/pts/8"_s);
    devices.list = {{u"COM7"_s, {}, u"Numbered by the system"_s, {}, {}}};
    QCOMPARE(table.numbers(), QList<int>{7});
    QVERIFY(
        link::examinePort(u"/dev/null"_s, true, u"Belegt"_s).english.contains(u"another program uses it"_s));
}

void tst_Ports::numbersHoldBeforeSettingsCanBeWritten()
{
    TestContext test;
    FakeDevices devices;
    devices.list = {{u"/dev/ttyS0"_s, {}, {}, {}, {}}, {u"/dev/ttyS1"_s, {}, {}, {}, {}}};
    test.sy.Paths.Storage = test.makeFile(u"file"_s, "x"); // no folder, so nothing can be below it
    link::PortTable table(test.settings, devices);
    QCOMPARE(table.numberForThisRun(u"/dev/ttyS1"_s), 2);
    QCOMPARE(table.numbers(), (QList<int>{1, 2}));
    test.sy.Paths.Storage = test.storage; // the first start has made the folder
    QCOMPARE(table.numbers(), (QList<int>{1, 2}));
    QCOMPARE(table.devicePath(2), u"/dev/ttyS1"_s);
    devices.list.removeFirst();
    QCOMPARE(link::PortTable(test.settings, devices).numbers(), QList<int>{2});
}

KALMO_TEST(tst_Ports)
#include "tst_Ports.moc"
