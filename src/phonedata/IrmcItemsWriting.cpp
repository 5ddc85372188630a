// Writing and deleting single items.

#include "app/CodePage.h"
#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "link/PhoneModels.h"
#include "obex/clsMmcOperation.h"
#include "obex/Patience.h"
#include "phonedata/IrmcItems.h"
#include "phonedata/VcfCodec.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using obex::PutFrames;
using toolkit::Icon;
using toolkit::Progress;

namespace {

constexpr double writeSilence = 60; // seconds; the phone sorts its list anew

/// An item on its way to the phone.
struct Item
{
    QByteArray text;
    QString luid;
    IrmcKindInfo kind;
    std::pair<QString, QString> luidError; ///< log tag and text for an answer without a LUID
};

void show(const clsMmc& client, const toolkit::Message& message)
{
    client.line().context().dialogs.Show(message);
}

QString counted(const QString& text, int index, int total)
{
    return text + u"..."_s + (total > 0 ? u" (%1 / %2)"_s.arg(index).arg(total) : QString());
}

bool encodesNames(const app::Context& context)
{
    return app::isOn(context.settings, app::keys::UseUtf8Contacts) ||
           link::needsUtf8Contacts(context.sy.PhoneType);
}

/// Some phones say no LUIDs, and have no counter either.
bool saysNoLuids(qint32 counter)
{
    return counter == 0 || counter == 255;
}

int sendFrames(clsMmc& client, PutFrames& frames, QByteArray& payload, const Progress& progress)
{
    using Verdict = clsMmc::PutVerdict;
    return client.Put(frames, payload, [&](int code) {
        if (obex::isSuccess(code) && frames.left() == 0)
            return Verdict::Done;
        if (obex::isSuccess(code))
            client.log(u"ABNORMAL"_s, u"RE=%1 but chunks left. Keep on sending."_s.arg(code));
        else if (code != obex::Continue)
            return Verdict::Failed;
        progress.step();
        return Verdict::Next;
    });
}

PutFrames framesOf(const clsMmc& client, const Item& item, qint32 counter, const Progress& progress)
{
    const QString name = item.luid + item.kind.extension;
    const QByteArray parameters = obex::counterParameters(counter);
    const int maxPacket = client.MaxPacket();
    const int firstChunk = obex::irmcFirstChunkSize(maxPacket, name, parameters);
    progress.start(1, obex::irmcPutSteps(item.text.size(), firstChunk, obex::nextChunkSize(maxPacket)));
    return PutFrames(obex::nameHeader(name) + obex::lengthHeader(item.text) +
                         obex::applicationHeader(parameters),
                     item.text, firstChunk, maxPacket, PutFrames::AfterFinal::EmptyFrame);
}

/// Returns true if a code does not say what the phone did with a complete request.
bool isNoAnswer(int code)
{
    return code == obex::Timeout || code == obex::Cancelled || code == obex::NeverEnough;
}

/// Takes LUID and counter out of the answer to an item that the phone has taken.
ItemResult takeAnswer(clsMmc& client, const Item& item, const QByteArray& payload, qint32& counter,
                      QString& luid, const Progress& progress)
{
    const auto answer = parseLuidAnswer(payload);
    if (answer && !answer->luid.isEmpty()) {
        luid = answer->luid;
        counter = answer->counter;
    } else if (saysNoLuids(counter)) {
        luid = noValidLuid(client.line().context().clock.Now());
    } else {
        progress.status(u"Übertragung fehlgeschlagen."_s);
        client.log(item.luidError.first, item.luidError.second);
        luid.clear();
        counter = 0;
        show(client,
             {.text = u"LUID konnte beim Schreiben nicht berechnet werden. Bitte wenden Sie sich an den "
                      u"Programmautor."_s,
              .title = app::productName(),
              .icon = Icon::Critical,
              .english = u"The phone took the entry, but its answer holds no reference to it."_s});
        return ItemResult::Unconfirmed;
    }
    progress.status(u"Übertragung abgeschlossen."_s);
    return ItemResult::Written;
}

ItemResult putItem(clsMmc& client, const Item& item, qint32& counter, QString& luid, const Progress& progress)
{
    luid.clear();
    if (client.stopAsked())
        return ItemResult::NotSent;
    PutFrames frames = framesOf(client, item, counter, progress);
    QByteArray payload;
    const int code = sendFrames(client, frames, payload, progress);
    progress.hide();
    if (obex::isSuccess(code))
        return takeAnswer(client, item, payload, counter, luid, progress);
    progress.status(u"Übertragung fehlgeschlagen."_s);
    client.ErrMsg(code);
    if (!frames.isFinalOut())
        return ItemResult::NotSent;
    return isNoAnswer(code) ? ItemResult::Unconfirmed : ItemResult::Refused;
}

} // namespace

QByteArray cardFor(const app::Context& context, const tVcfEntry& entry, const ContactCard* before)
{
    return VcfBuildItem(entry, encodesNames(context), before);
}

ItemResult VcfWriteItem(clsMmc& client, const tVcfEntry& entry, qint32& counter, QString& luid,
                        const Progress& progress, int index, int total)
{
    const QByteArray card = cardFor(client.line().context(), entry, nullptr);
    return writeCard(client, card, entry.luid, counter, luid, progress, index, total);
}

ItemResult writeCard(clsMmc& client, const QByteArray& card, const QString& luidInPhone, qint32& counter,
                     QString& luid, const Progress& progress, int index, int total)
{
    const clsMmc::Operation operation(client, u"VcfWriteItem"_s, progress);
    if (!operation.isAllowed())
        return ItemResult::NotSent;
    const clsMmc::Uncancelled uncancelled(client);
    const obex::Patience patience(client, writeSilence);
    const clsMmc::Busy busy(client);
    client.log(u"Start VCF - WriteItem >>>>>"_s, u"Start LUID="_s + luidInPhone);
    client.log(u"VCF"_s, app::fromCp1252(card));
    client.log(u"End VCF - WriteItem >>>>>"_s, u"End"_s);
    const Item item{card, luidInPhone, irmcKindInfo(KindContact), {u"LUID-ERROR"_s, u"VcFWrite"_s}};
    operation.progress().status(counted(u"Übertrage Eintrag "_s + item.kind.label, index, total));
    return putItem(client, item, counter, luid, operation.progress());
}

ItemResult VcxWrite(clsMmc& client, qint32 kind, const OrganizerItem& organizerItem, qint32& counter,
                    QString& luid, const Progress& progress, int index, int total)
{
    const clsMmc::Operation operation(client, u"VcxWrite"_s, progress);
    if (!operation.isAllowed())
        return ItemResult::NotSent;
    const clsMmc::Uncancelled uncancelled(client);
    const obex::Patience patience(client, writeSilence);
    const clsMmc::Busy busy(client);
    const Item item{organizerItem.text,
                    organizerItem.luid,
                    irmcKindInfo(kind),
                    {u"LUID-ERROR"_s, u"VcxWrite: "_s + QString::number(kind)}};
    operation.progress().status(counted(u"Übertrage Eintrag "_s + item.kind.label, index, total));
    return putItem(client, item, counter, luid, operation.progress());
}

ItemResult VcxDel(clsMmc& client, qint32 kind, QString& luid, qint32& counter, const Progress& progress,
                  int index, int total)
{
    const clsMmc::Operation operation(client, u"VcxDel"_s, progress);
    if (!operation.isAllowed())
        return ItemResult::NotSent;
    const clsMmc::Uncancelled uncancelled(client);
    const obex::Patience patience(client, writeSilence);
    const clsMmc::Busy busy(client);
    const Progress& shown = operation.progress();
    const IrmcKindInfo& info = irmcKindInfo(kind);
    shown.status(counted(u"Lösche Eintrag "_s + info.label, index, total));
    const bool sent = !client.stopAsked() && client.isInStep() && client.line().port().IsOpen();
    QByteArray payload;
    const int code = client.request(obex::irmcDeleteFrame(luid + info.extension, counter), payload);
    if (code == obex::Continue) {
        show(client,
             {.text = u"?"_s, .english = u"could not delete the entry: the phone asks for more data."_s});
        return ItemResult::Unconfirmed;
    }
    if (!obex::isSuccess(code)) {
        shown.status(u"Löschen Eintrag "_s + info.label + u" fehlgeschlagen."_s);
        client.ErrMsg(code);
        if (!sent || code == obex::ChannelNotOpen || code == obex::RequestTooLong)
            return ItemResult::NotSent;
        return isNoAnswer(code) ? ItemResult::Unconfirmed : ItemResult::Refused;
    }
    const auto answer = parseLuidAnswer(payload);
    if (!answer && !link::deletesSilently(client.line().context().sy.PhoneType)) {
        luid.clear();
        counter = 0;
        shown.status(u"Übertragung Eintrag "_s + info.label + u" fehlgeschlagen."_s);
        client.log(u"LUID-ERROR"_s, u"VcxDel: "_s + info.label);
        show(client, {.text = u"LUID konnte beim schreiben auf "_s + info.label +
                              u" nicht berechnet werden. Bitte wenden Sie sich an den Programmautor."_s,
                      .title = app::productName(),
                      .icon = Icon::Critical,
                      .english = u"The phone deleted the entry, but its answer could not be read."_s});
        return ItemResult::Unconfirmed;
    }
    if (answer)
        luid = answer->luid;
    counter = answer ? answer->counter : -1;
    shown.status(u"Löschen Eintrag "_s + info.label + u" abgeschlossen."_s);
    return ItemResult::Written;
}

} // namespace kalmo::phonedata
