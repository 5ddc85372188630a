#include "link/mdlStatus.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "link/PhoneModels.h"

#include <algorithm>
#include <cmath>

namespace kalmo::link {

using namespace Qt::StringLiterals;
using app::fromCp1252;
using app::Val;
using toolkit::Icon;

namespace {

constexpr double clockTimeout = 2;

/// The failed answer that could be shown is always empty, so the transfer error with the command is shown.
bool query(Line& line, const QByteArray& command, QString& text, double timeout = queryTimeout)
{
    QByteArray answer;
    if (!line.exchange(answer, command, timeout)) {
        line.tellTransferError(command);
        return false;
    }
    text = fromCp1252(answer);
    return true;
}

/// Date of a year, month and day that may be out of range, for example 14 as a month.
QDate dateFrom(int year, int month, int day)
{
    if (year >= 0 && year < 100)
        year += year < 30 ? 2000 : 1900;
    return QDate(year, 1, 1).addMonths(month - 1).addDays(day - 1);
}

bool parseClock(const QString& answer, QDateTime& dateTime)
{
    QString text = answer;
    text.remove(u"+CCLK: "_s).remove(u'"');
    const QStringList parts = text.split(u',');
    const QStringList date = parts.value(0).split(u'/');
    const QStringList time = parts.value(1).split(u':');
    if (date.size() < 3 || time.size() < 3)
        return false;
    const auto number = [](const QString& part) {
        return static_cast<int>(std::clamp(Val(part), -32768.0, 32767.0));
    };
    const qint64 seconds = (number(time[0]) * 60LL + number(time[1])) * 60 + number(time[2]);
    // The phone knows no summer time: it may show an hour that the PC's clock leaves out.
    const QDateTime shown =
        QDateTime(dateFrom(number(date[0]), number(date[1]), number(date[2])), QTime(0, 0), Qt::UTC)
            .addSecs(seconds);
    dateTime = QDateTime(shown.date(), shown.time());
    return shown.isValid();
}

} // namespace

bool GetManufacturer(Line& line, QString& text)
{
    return query(line, "AT+CGMI\r", text);
}

bool GetSoftwareVersion(Line& line, QString& text)
{
    return query(line, "AT+CGMR\r", text);
}

bool GetSerialNumber(Line& line, QString& text)
{
    return query(line, "AT+CGSN\r", text);
}

bool GetPhoneModelText(Line& line, QString& text)
{
    QString model;
    if (!query(line, "AT+CGMM\r", model))
        return false;
    if (showsWppn(model)) {
        QString name;
        if (!query(line, "AT^WPPN\r", name))
            return false;
        model += u" ["_s + name + u']';
    }
    text = model;
    return true;
}

SignalQuality GetSignalQuality(Line& line)
{
    QString text; // "+CSQ: nn,mm" or "+CSQ: n,mm"
    if (!query(line, "AT+CSQ\r", text))
        return {};
    const int digits = text.mid(7, 1) == u","_s ? 1 : 2;
    const int rssi = app::ValInt(text.mid(6, digits));
    return {u"-- %1 dBm"_s.arg(113 - 2 * rssi), static_cast<int>(std::floor(rssi * 3.21))};
}

int GetBattery(Line& line)
{
    int percent = 0;
    return GetBattery(line, percent) ? percent : 0;
}

bool GetBattery(Line& line, int& percent)
{
    QString text; // "+CBC: s,nn" or "+CBC: s,nnn", which is 11 characters long
    if (!query(line, "AT+CBC\r", text))
        return false;
    percent = app::ValInt(text.mid(8, text.size() == 11 ? 3 : 2));
    return true;
}

bool GetPhoneTime(Line& line, QDateTime& dateTime)
{
    QString answer;
    if (!query(line, "AT+CCLK?\r", answer, clockTimeout))
        return false;
    if (parseClock(answer, dateTime))
        return true;
    line.context().dialogs.Show(
        {.text = u"Uhrzeit des Telefon konnte nicht ermittelt werden."_s,
         .icon = Icon::Information,
         .english = u"could not read the phone's clock: its answer holds no time."_s});
    return false;
}

bool SetPhoneTime(Line& line)
{
    app::Context& context = line.context();
    const QByteArray command =
        "AT+CCLK=" + context.clock.Now().toString(u"yy/MM/dd,hh:mm:ss"_s).toLatin1() + '\r';
    QString answer;
    if (!query(line, command, answer))
        return false;
    if (answer.isEmpty()) {
        context.dialogs.Show(
            {.text =
                 u"Sychronisation erfolgreich. Übernahme kann bis zu 1 Minute dauern.\n\n"
                 u"Das Gigaset unterstützt keine Sekundenanzeige, daher endet die angezeigte Zeit immer auf "
                 u"\"00\""_s,
             .title = u"Kalmo  -  Zeitsychronisation"_s,
             .icon = Icon::Information,
             .english =
                 u"The phone confirmed the clock. It may take a minute to show it, and shows no seconds."_s});
    }
    return true;
}

} // namespace kalmo::link
