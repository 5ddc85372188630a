#pragma once

#include "obex/clsMmc.h"
#include "support/ObexBytes.h"
#include "support/RecordedProgress.h"
#include "support/ScriptedPort.h"

namespace kalmo::tests {

/// The message box of ErrMsg.
toolkit::Message errorBox(const QString& friendlyText);
inline const QString timeoutText = QStringLiteral(
    "TimeOut - Das Telefon hat in der vorgegebenen Zeit nicht geantwortet. Bitte wiederholen Sie "
    "die letzte Aktion.\n\n"
    "Sollte dieser Fehler sofort wieder auftauchen, muß das aktuelle Programmfenster geschlossen "
    "und wieder aufgerufen werden, um die Kommunikation mit dem Telefon erneut aufzubauen. Taucht "
    "der Fehler danach immer noch sofort wieder auf, muß das Telefon einmal aus- und wieder "
    "eingeschaltet und Kalmo neu gestartet werden.");

/// The OBEX client on a scripted line, with what it reports and raises.
struct ObexClient
{
    ObexClient(TestContext& test, ScriptedPort& port);

    TestContext& test;
    ScriptedPort& port;
    link::Line line;
    std::shared_ptr<obex::clsMmc> mmc;
    RecordedProgress progress;
    QStringList events; ///< "BusyOn", "DirChange Mobile:\", "LongTimeOutMsg ..." and so on, in order

    /// Runs the client's Online against a phone that does what it should, and forgets what was reported
    /// meanwhile.
    void goOnline(int maxPacket = 0x0400);
    void forgetReports();
};

/// A client for the handset "phone" at COM7, with all that it needs: `auto&& [test, port, client] =
/// OfflineClient();`
struct OfflineClient
{
    OfflineClient()
    {
        test.sy.PhoneID = QStringLiteral("phone");
        test.sy.ComNo = 7;
    }

    TestContext test;
    ScriptedPort port{test};
    ObexClient client{test, port};
};

/// One that is connected, and in the root.
struct OnlineClient : OfflineClient
{
    explicit OnlineClient(int maxPacket = 0x0400) { client.goOnline(maxPacket); }
};

} // namespace kalmo::tests
