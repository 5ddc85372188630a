#include "link/mdlSearch.h"

#include "app/CodePage.h"
#include "app/mdlTexts.h"
#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "link/mdlStatus.h"
#include "link/PhoneModels.h"

#include <QUrl>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kalmo::link {

using namespace Qt::StringLiterals;
using app::fromCp1252;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

constexpr int lowestRate = 19200;
constexpr int highRate = 115200;
constexpr int highRateWithLf = -115200;
constexpr int probeSteps = 12;

const QString repeatQuestion = u"Soll die Suche mit den gleichen Einstellungen wiederholt werden ?"_s;

QString startTitle()
{
    return u"Kalmo %1 vom %2 -  Programmstart"_s.arg(app::programVersion(), app::versionDate());
}

} // namespace

QList<int> rateList(int preferred)
{
    const int first = preferred == highRateWithLf ? preferred : std::max(preferred, lowestRate);
    QList<int> rates{first};
    for (const int rate : {lowestRate, highRate, highRateWithLf}) {
        if (rate != first)
            rates.append(rate);
    }
    return rates;
}

QList<int> unsignedRates(const app::Context& context)
{
    QList<int> rates;
    for (const int rate : rateList(app::getInt(context.settings, app::keys::PrefDetectBaud))) {
        if (!rates.contains(std::abs(rate)))
            rates.append(std::abs(rate));
    }
    return rates;
}

PhoneSearch::PhoneSearch(Line& line, SearchView& view, app::Desktop& desktop)
    : m_line(line), m_view(view), m_desktop(desktop), m_context(line.context())
{
}

void PhoneSearch::remark(const QString& text)
{
    m_context.sy.StrStCom += text + u'\n';
    m_context.log.WriteLogHeader();
}

SearchOutcome PhoneSearch::SearchPhone(SearchStart start)
{
    bool isAborted = start == SearchStart::AfterAbort;
    for (;;) {
        Next next = Next::NewPass;
        const PassResult pass = std::exchange(isAborted, false) ? PassResult::NobodyAnswered : runPass();
        if (pass == PassResult::PortNotOpened) {
            next = afterPortFailure();
        } else if (pass == PassResult::NobodyAnswered) {
            next = afterSilence();
        } else {
            QString rawId;
            if (IdentifyPhone(m_context.sy.PhoneType, rawId)) {
                takeOver();
                return SearchOutcome::PhoneFound;
            }
            next = afterUnknownPhone(rawId);
        }
        if (next == Next::Settings)
            return SearchOutcome::Settings;
    }
}

PassResult PhoneSearch::runPass()
{
    m_lostLine = false;
    m_rates += rateList(app::getInt(m_context.settings, app::keys::PrefDetectBaud));
    for (;;) {
        m_view.setProgress(0, probeSteps);
        m_view.clearAborted();
        bool opened = false;
        const bool answered = tryRate(m_rates[m_next++], opened);
        if (!opened)
            return PassResult::PortNotOpened;
        if (answered)
            return PassResult::Answered;
        m_lostLine = m_lostLine || !m_line.port().IsOpen();
        const bool aborted = m_view.aborted();
        if (m_next < m_rates.size() || aborted)
            m_line.ClosePort();
        if (m_next >= m_rates.size() || aborted)
            return PassResult::NobodyAnswered;
    }
}

void PhoneSearch::announceRate(int rate)
{
    choosePort(m_context, std::abs(rate));
    app::Sy& sy = m_context.sy;
    const bool withLf = rate == highRateWithLf;
    remark(u"COM:%1\tSettings: %2"_s.arg(sy.ComNo).arg(sy.ComSettings) +
           (withLf ? u" use LF Terminator"_s : QString()));
    m_view.setStatus(app::ResText(app::TextSearching) + u" COM %1 mit %2 Baud"_s.arg(sy.ComNo).arg(rate) +
                     (withLf ? u"\nModelle M3, S820 und neuer"_s : QString()));
    sy.blnTxLfTerminator = withLf;
}

bool PhoneSearch::tryRate(int rate, bool& opened)
{
    announceRate(rate);
    opened = openPort(m_line);
    if (!opened)
        return false;
    const SPortAx& port = m_line.port();
    remark(u"eComm.InBufferSize=%1\neComm.OutBufferSize=%2"_s.arg(port.InBufferSize())
               .arg(port.OutBufferSize()));
    return ProbeATZ();
}

bool PhoneSearch::ProbeATZ()
{
    int progress = 0;
    const auto waitStep = [&] { m_line.pause(progress / 100.0 + 0.11); };
    const auto waitTwice = [&] {
        for (int count = 0; count < 2; ++count) {
            waitStep();
            m_view.setProgress(++progress, probeSteps);
        }
    };
    const auto sendAtz = [&] {
        m_line.port().WriteText(m_context.sy.blnTxLfTerminator ? "ATZ\r\n" : "ATZ\r");
        remark(u"TX:ATZ"_s);
    };

    m_view.setProgress(0, probeSteps);
    m_line.PurgeQueue();
    sendAtz();
    m_line.pause(0.7);
    m_line.PurgeQueue();
    for (;;) {
        if (m_view.aborted())
            return false;
        m_line.port().ReadText();
        waitTwice();
        sendAtz();
        waitTwice();
        const QByteArray received = m_line.port().ReadText();
        remark(u"RX:"_s + fromCp1252(received));
        waitStep();
        // Kept on purpose: an OK in the last round does not count, since the progress decides.
        if (received.contains("OK") || progress >= probeSteps)
            return progress < probeSteps;
    }
}

bool PhoneSearch::ask(const QByteArray& command, QString& rawId)
{
    QByteArray answer;
    if (!m_line.exchange(answer, command, queryTimeout))
        return false;
    rawId = fromCp1252(answer);
    m_context.sy.PhoneID = rawId;
    m_context.log.WriteLogHeader();
    return true;
}

int PhoneSearch::aliasOf(const QString& key) const
{
    const float value = m_context.settings.GetIniNumber(u"Alias"_s, key, 0);
    return value >= 1 && value <= 13 && value == std::floor(value) ? static_cast<int>(value) : 0;
}

bool PhoneSearch::IdentifyPhone(int& phoneType, QString& rawId)
{
    if (const QByteArray command = askIdentity(phoneType, rawId); !command.isEmpty())
        m_line.tellTransferError(command);
    return phoneType != 0;
}

QByteArray PhoneSearch::askIdentity(int& phoneType, QString& rawId)
{
    phoneType = 0;
    rawId.clear();
    m_context.sy.PhoneSerial.clear(); // another handset of the same model may be connected by now
    if (const QByteArray command = "AT+CGMM\r"; !ask(command, rawId))
        return command;
    const auto first = lookUpCgmm(rawId);
    if (!first) {
        phoneType = aliasOf(rawId);
    } else if (!first->asksWppn) {
        phoneType = first->phoneType;
    } else {
        if (const QByteArray command = "AT^WPPN\r"; !ask(command, rawId))
            return command;
        phoneType = lookUpWppn(rawId);
        if (phoneType == 0)
            phoneType = aliasOf(u"BRUSSELS:"_s + rawId);
    }
    return {};
}

void PhoneSearch::takeOver()
{
    app::Sy& sy = m_context.sy;
    sy.blnTxLfTerminator = needsLfTerminator(sy.PhoneType);
    const int rate = m_line.port().BaudRate();
    app::put(m_context.settings, app::keys::PrefDetectBaud, sy.blnTxLfTerminator ? -rate : rate);
    QByteArray ignored;
    m_line.exchange(ignored, "AT+CMEE=0\r", queryTimeout);
    m_line.pause(0.1);
    if (!GetSoftwareVersion(m_line, sy.PhoneSVN))
        sy.PhoneSVN = u"9999"_s;
    m_context.log.WriteLogHeader();
}

PhoneSearch::Next PhoneSearch::afterPortFailure()
{
    const int number = m_context.sy.ComNo;
    const Answer answer = m_context.dialogs.Show(
        {.text = u"Der gewählte Anschluss (COM%1) konnte nicht geöffnet werden.\n"
                 u"Entweder der Anschluss existiert auf Ihrem Computer nicht oder er wird bereits durch ein "
                 u"anderes Programm benutzt. Wenn ein anderes Programm den Port benutzt, beenden Sie das "
                 u"Programm bitte.\n\n"_s.arg(number) +
                 m_line.port().openError() +
                 u"\n\nMöchten Sie die Suche am gewählten Anschluss wiederholen?"_s,
         .title = u"Kalmo - Problem"_s,
         .buttons = Buttons::YesNoCancel,
         .icon = Icon::Question});
    if (answer == Answer::Yes) {
        m_next = 0;
        return Next::NewPass;
    }
    if (answer == Answer::No)
        return offerSettings();
    m_line.ClosePort();
    m_context.ending.EndProgram(EXIT_SUCCESS);
}

PhoneSearch::Next PhoneSearch::afterSilence()
{
    const Answer answer = m_context.dialogs.Show(
        {.text = u"An COM %1 konnte kein Gigaset gefunden werde.\n\n"
                 u"Bei Gigasets mit Bluetooth Funktion MUSS Bluetooth abgeschaltet sein, wenn ein Datenkabel "
                 u"benutzt wird. Andernfalls wird das Telefon nicht gefunden! Gleichzeitiger Betrieb von "
                 u"Bluetooth und Datenkabel ist NICHT möglich!\n\n"
                 u"Wenn Sie sich sicher sind, daß der gewählte Anschluss der richtige ist, schalten Sie das "
                 u"Gigaset einmal aus und wieder ein und ziehen Sie das Kabel einmal ab. Das hilft "
                 u"oftmals.\n\n"_s.arg(m_context.sy.ComNo) +
                 repeatQuestion,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question});
    return answer == Answer::Yes ? Next::NewPass : offerSettings();
}

PhoneSearch::Next PhoneSearch::afterUnknownPhone(const QString& rawId)
{
    const auto show = [this](const QString& text) {
        return m_context.dialogs.Show(
            {.text = text, .title = startTitle(), .buttons = Buttons::YesNo, .icon = Icon::Question});
    };
    QString modelName;
    const bool parsed = ParseWppn(rawId, modelName);
    if (parsed &&
        show(u"Hat das angeschlossene Telefon die Modellbezeichnung\n\n"_s + modelName + u'?') == Answer::Yes)
        endWithUnsupported(modelName, rawId);

    QString text =
        u"Am gewählten Port wurde ein Gerät namens\n["_s + rawId +
        u"]\njedoch kein bekanntes Siemens Schnurlos Telefon gefunden. Vermutlich haben Sie den Comport "
        u"gewählt, an dem ein Internet- oder Faxmodem oder Handy angeschlossen ist"_s;
    if (parsed)
        text += u".\n"_s;
    else
        text +=
            u" oder ein Telefon angeschlossen, das nicht unterstützt wird.\n"
            u"Wenn Sie ein Gigaset angeschlossen haben, das in der Liste unterstützter Telefone auf der Homepage "_s +
            app::webSite() +
            u" nicht aufgeführt ist und der gewählte COM Port mit Sicherheit richtig ist, wenden Sie sich an "
            u"den Programmautor. Vielleicht ist es möglich, Kalmo auf dieses Telefon anzupassen.\n\n"_s;
    if (show(text + repeatQuestion) != Answer::Yes)
        return offerSettings();
    m_line.ClosePort();
    m_line.pause(0.5);
    return Next::NewPass;
}

void PhoneSearch::endWithUnsupported(const QString& modelName, const QString& rawId)
{
    const Answer answer = m_context.dialogs.Show(
        {.text =
             u"Das "_s + modelName +
             u" wird bisher nicht unterstützt.\n\n"
             u"Möchten Sie die kalmo Seite im Internet mit Informationen zu dem Thema Neue Modelle aufrufen?"_s,
         .title = startTitle(),
         .buttons = Buttons::YesNo,
         .icon = Icon::Question});
    if (answer == Answer::Yes) {
        const auto bracketed = [](const QString& text) {
            return u"["_s + QString::fromLatin1(QUrl::toPercentEncoding(text)) + u']';
        };
        m_desktop.openUrl(QUrl(u"https://"_s + app::webSite() + u"/modell.php?Modell="_s +
                               bracketed(modelName) + u"&Details="_s + bracketed(rawId)));
    }
    m_context.ending.EndProgram();
}

PhoneSearch::Next PhoneSearch::offerSettings()
{
    m_view.clearAborted();
    m_line.pause(0.3);
    const Answer answer = m_context.dialogs.Show(
        {.text = app::ResText(app::TextChangeInterface), .buttons = Buttons::YesNo, .icon = Icon::Question});
    m_line.ClosePort();
    if (answer != Answer::Yes)
        m_context.ending.EndProgram(EXIT_SUCCESS);
    return Next::Settings;
}

} // namespace kalmo::link
