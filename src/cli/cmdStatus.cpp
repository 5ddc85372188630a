// The command status.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/Tables.h"
#include "link/mdlStatus.h"
#include "link/PhoneModels.h"

#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

namespace {

/// The content of the window's status panel. A field is empty if the family has none, or did not answer.
struct Status
{
    QString manufacturer;
    QString model;
    QString version;
    QString serial;
    std::optional<link::SignalQuality> signal;
    std::optional<int> battery;
    std::optional<QDateTime> phoneTime;
    QDateTime pcTime;
};

bool readIdentity(Job& job, Status& status)
{
    struct Query
    {
        bool (*ask)(link::Line& line, QString& answer);
        QString Status::*field;
    };
    constexpr Query queries[] = {{link::GetManufacturer, &Status::manufacturer},
                                 {link::GetPhoneModelText, &Status::model},
                                 {link::GetSoftwareVersion, &Status::version},
                                 {link::GetSerialNumber, &Status::serial}};
    return std::all_of(std::begin(queries), std::end(queries), [&](const Query& query) {
        return !job.stop.Checked() && query.ask(job.line, status.*(query.field));
    });
}

bool readGauges(Job& job, Status& status)
{
    const int phoneType = job.phoneType();
    bool complete = true;
    if (link::hasGauges(phoneType)) {
        const link::SignalQuality signal = link::GetSignalQuality(job.line);
        if (!signal.text.isEmpty())
            status.signal = signal;
        int percent = 0;
        if (!job.stop.Checked() && link::GetBattery(job.line, percent))
            status.battery = percent;
        complete = status.signal && status.battery;
    }
    QDateTime time;
    if (link::hasClock(phoneType)) {
        if (!job.stop.Checked() && link::GetPhoneTime(job.line, time))
            status.phoneTime = time;
        complete = complete && status.phoneTime;
    }
    return complete;
}

QJsonValue toJson(const Status& status)
{
    const auto time = [](const std::optional<QDateTime>& moment) {
        return moment ? QJsonValue(isoTime(*moment)) : QJsonValue();
    };
    return QJsonObject{{u"manufacturer"_s, status.manufacturer},
                       {u"model"_s, status.model},
                       {u"version"_s, status.version},
                       {u"serial"_s, status.serial},
                       {u"signal"_s, status.signal ? QJsonValue(status.signal->gauge) : QJsonValue()},
                       {u"signalText"_s, status.signal ? QJsonValue(status.signal->text) : QJsonValue()},
                       {u"battery"_s, status.battery ? QJsonValue(*status.battery) : QJsonValue()},
                       {u"phoneTime"_s, time(status.phoneTime)},
                       {u"pcTime"_s, time(status.pcTime)}};
}

QString toText(const Status& status)
{
    const auto time = [](const QDateTime& moment) { return moment.toString(u"yyyy-MM-dd hh:mm:ss"_s); };
    return alignedFields(
        {{u"Manufacturer"_s, status.manufacturer},
         {u"Model"_s, status.model},
         {u"Version"_s, status.version},
         {u"Serial number"_s, status.serial},
         {u"Signal"_s,
          status.signal ? u"%1 (%2 %)"_s.arg(status.signal->text).arg(status.signal->gauge) : QString()},
         {u"Battery"_s, status.battery ? u"%1 %"_s.arg(*status.battery) : QString()},
         {u"Phone time"_s, status.phoneTime ? time(*status.phoneTime) : QString()},
         {u"PC time"_s, time(status.pcTime)}});
}

} // namespace

ExitStatus runStatus(Job& job)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    job.progress.phase(u"Asking the handset"_s);
    Status status;
    const bool isIdentified = readIdentity(job, status);
    const bool complete = isIdentified && !job.stop.Checked() && readGauges(job, status);
    if (job.isInterrupted())
        return ExitRefused;
    if (!isIdentified)
        return ExitFailed;
    status.pcTime = job.context.clock.Now();
    job.out.show(toJson(status), toText(status));
    return complete ? ExitDone : ExitFailed;
}

} // namespace kalmo::cli
