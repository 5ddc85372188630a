// Reading: capacities, the change counter, whole objects.

#include "phonedata/IrmcItems.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "app/TextReplace.h"
#include "obex/clsMmcOperation.h"
#include "phonedata/VcfText.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using toolkit::Progress;

namespace {

constexpr int mostRounds = 16; // of asking a busy phone
constexpr double pauseBetweenRounds = 0.5;

bool goToRoot(clsMmc& client)
{
    return client.DirAct() == obex::rootPath() || client.CdRoot();
}

/// Reads "info.log" of a folder in "telecom" and goes back to the root.
bool readInfo(clsMmc& client, const QString& folder, tVcfInfo& info, const Progress& progress)
{
    if (!goToRoot(client) || !client.Cd(u"telecom"_s, false) ||
        (!folder.isEmpty() && !client.Cd(folder, false)))
        return false;
    QByteArray bytes;
    if (!client.GetFile(u"info.log"_s, bytes, progress))
        return false;
    const auto read = parseInfoLog(bytes);
    if (!read)
        return false;
    info = *read;
    client.CdNull();
    return client.isInStep() && client.CdRoot(); // a timeout is shown once
}

bool isBusy(int code)
{
    return (code | 0x80) == obex::InternalError; // with or without the final bit
}

} // namespace

bool VcfGetInfo(clsMmc& client, tVcfInfo& info, const Progress& progress)
{
    const clsMmc::Operation operation(client, u"VcfGetInfo"_s, progress);
    if (!operation.isAllowed())
        return false;
    client.log(u"VcfGetInfo"_s, u"Enter Funktion"_s);
    const clsMmc::Busy busy(client);
    if (!readInfo(client, u"pb"_s, info, operation.progress()))
        return false;
    if (info.intKap > mostContacts) {
        client.log(u"Warning"_s, u"tVcfInfo.intKap>500 - should not be possible. Set tVcfInfo.intKap=500"_s);
        info.intKap = mostContacts;
    }
    client.log(u"tVcfInfo.intKap"_s, u"%1, %2"_s.arg(info.intKap).arg(info.intBelegt));
    client.log(u"VcfGetInfo"_s, u"Exit Funktion"_s);
    return true;
}

bool VcxGetInfo(clsMmc& client, qint32 kind, tVcfInfo& info, const Progress& progress)
{
    const clsMmc::Operation operation(client, u"VcxGetInfo"_s, progress);
    if (!operation.isAllowed())
        return false;
    const clsMmc::Busy busy(client);
    return readInfo(client, irmcKindInfo(kind).folder, info, operation.progress());
}

bool VcfGetCc(clsMmc& client, qint32& counter, const Progress& progress)
{
    QByteArray bytes;
    if (!client.GetFile(u"cc.log"_s, bytes, progress))
        return false;
    counter = app::ValInt(app::fromCp1252(bytes));
    return true;
}

bool VcxRead(clsMmc& client, qint32 kind, QString& text, const Progress& progress)
{
    QByteArray bytes;
    const bool done = VcxReadBytes(client, kind, bytes, progress);
    text = VcfStripCharset(app::replacedAll(app::fromCp1252(bytes), u"=\r\n"));
    return done;
}

bool VcxReadBytes(clsMmc& client, qint32 kind, QByteArray& bytes, const Progress& progress)
{
    bytes.clear();
    const clsMmc::Operation operation(client, u"VcxRead"_s, progress);
    if (!operation.isAllowed())
        return false;
    const clsMmc::Busy busy(client);
    if (!goToRoot(client) || !client.Cd(u"telecom"_s, false))
        return false;
    const QString object = irmcKindInfo(kind).object;
    int code = obex::InternalError;
    for (int round = 1; isBusy(code) && round <= mostRounds; ++round) {
        client.line().pause(pauseBetweenRounds);
        if (operation.progress().cancelled())
            code = obex::Cancelled;
        if (code != obex::Cancelled && client.GetFile(object, bytes, operation.progress(), {}, &code, true))
            return true;
        if (isBusy(code))
            client.log(u"Warning:"_s, u"VcxRead, File: "_s + object + u"#%1 ERROR=%2"_s.arg(round).arg(code) +
                                          (round == mostRounds ? u" EXIT"_s : QString()));
    }
    bytes.clear();
    if (code != obex::Timeout) // GetFile has shown that already
        client.ErrMsg(code);
    return false;
}

} // namespace kalmo::phonedata
