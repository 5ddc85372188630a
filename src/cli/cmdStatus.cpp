// The command status.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/SettingReport.h"
#include "cli/Tables.h"
#include "link/mdlStatus.h"
#include "link/PhoneModels.h"
#include "operations/Asking.h"

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

/// Asks until the answer is sure. Prints a message if no two answers agree; the query itself prints the
/// others.
template <typename Value, typename Ask>
std::optional<Value> askSurely(Job& job, const QString& name, const Ask& ask)
{
    const auto asked = operations::askUntilSure(
        job.line, [&]() -> std::optional<Value> { return job.stop.Checked() ? std::nullopt : ask(); });
    if (!asked.value && asked.cause == operations::Cause::Doubtful)
        job.out.error(u"could not read the %1: %2."_s.arg(name, reasonText(job, asked.cause)));
    return asked.value;
}

bool readIdentity(Job& job, Status& status)
{
    struct Query
    {
        QStringView name;
        bool (*ask)(link::Line& line, QString& answer);
        QString Status::*field;
    };
    constexpr Query queries[] = {{u"manufacturer", link::GetManufacturer, &Status::manufacturer},
                                 {u"model", link::GetPhoneModelText, &Status::model},
                                 {u"software version", link::GetSoftwareVersion, &Status::version},
                                 {u"serial number", link::GetSerialNumber, &Status::serial}};
    return std::all_of(std::begin(queries), std::end(queries), [&](const Query& query) {
        const auto answer = askSurely<QString>(job, query.name.toString(), [&]() -> std::optional<QString> {
            QString text;
            return query.ask(job.line, text) ? std::optional(text) : std::nullopt;
        });
        status.*(query.field) = answer.value_or(QString());
        return answer.has_value();
    });
}

bool readGauges(Job& job, Status& status)
{
    const int phoneType = job.phoneType();
    bool complete = true;
    if (link::hasGauges(phoneType)) {
        status.signal =
            askSurely<link::SignalQuality>(job, u"signal"_s, [&job]() -> std::optional<link::SignalQuality> {
                const link::SignalQuality signal = link::GetSignalQuality(job.line);
                return signal.text.isEmpty() ? std::nullopt : std::optional(signal);
            });
        status.battery = askSurely<int>(job, u"battery"_s, [&job]() -> std::optional<int> {
            int percent = 0;
            return link::GetBattery(job.line, percent) ? std::optional(percent) : std::nullopt;
        });
        complete = status.signal && status.battery;
    }
    if (link::hasClock(phoneType)) {
        status.phoneTime = askSurely<QDateTime>(job, u"clock"_s, [&job]() -> std::optional<QDateTime> {
            QDateTime time;
            return link::GetPhoneTime(job.line, time) ? std::optional(time) : std::nullopt;
        });
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
    if (job.reportInterruption())
        return ExitRefused;
    if (!isIdentified)
        return ExitFailed;
    status.pcTime = job.context.clock.Now();
    job.out.show(toJson(status), toText(status));
    return complete ? ExitDone : ExitFailed;
}

} // namespace kalmo::cli
