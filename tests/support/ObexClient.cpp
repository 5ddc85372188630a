#include "support/ObexClient.h"

#include <QTest>

namespace kalmo::tests {

using namespace Qt::StringLiterals;
using obex::clsMmc;

toolkit::Message errorBox(const QString& friendlyText)
{
    return {.text = u"Beim Zugriff auf das Telefon ist folgender Fehler aufgetaucht:\n\n"_s + friendlyText,
            .title = u"Kalmo"_s,
            .icon = toolkit::Icon::Exclamation};
}

ObexClient::ObexClient(TestContext& usedTest, ScriptedPort& usedPort)
    : test(usedTest), port(usedPort), line(usedTest.context, usedPort), mmc(std::make_shared<clsMmc>(line))
{
    const auto note = [this](const QString& event) { events.append(event); };
    QObject::connect(mmc.get(), &clsMmc::BusyOn, mmc.get(), [note] { note(u"BusyOn"_s); });
    QObject::connect(mmc.get(), &clsMmc::BusyOff, mmc.get(), [note] { note(u"BusyOff"_s); });
    QObject::connect(mmc.get(), &clsMmc::DirChange, mmc.get(),
                     [note](const QString& folder) { note(u"DirChange "_s + folder); });
    QObject::connect(mmc.get(), &clsMmc::BytesRxed, mmc.get(),
                     [note](qint64 count) { note(u"BytesRxed "_s + QString::number(count)); });
    QObject::connect(mmc.get(), &clsMmc::LongTimeOutMsg, mmc.get(),
                     [note](const QString& text) { note(u"LongTimeOutMsg "_s + text); });
}

void ObexClient::forgetReports()
{
    progress = {};
    events.clear();
}

void ObexClient::goOnline(int maxPacket)
{
    port.expect("AT^SQWE=3\r\n", "\r\nOK\r\n");
    port.expect(connectFolders, packet(0xA0, hex("10 00") + big16(maxPacket)));
    QVERIFY(mmc->Online(progress.all()));
    forgetReports();
}

} // namespace kalmo::tests
