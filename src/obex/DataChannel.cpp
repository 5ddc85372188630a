#include "obex/DataChannel.h"

#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "link/mdlSearch.h"
#include "obex/ObexFrames.h"

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using link::Line;
using link::LineMode;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::Progress;

namespace {

constexpr int closingRounds = 3;
constexpr int recoveryRounds = 3;
constexpr double guardSilence = 1.1; // the escape "+++" counts only after a second without a byte
constexpr int pausesAfterEscape = 4;
constexpr double pauseAfterEscape = 0.35;
constexpr double answerTimeout = 2;

bool ask(Line& line, const QByteArray& command, toolkit::StatusPanel* panel)
{
    QByteArray answer;
    line.TxDirect(command);
    return line.RxDirect(answer, 0, panel) == link::RxDirectAnswered;
}

/// Returns true if the phone answered, whatever it said.
bool asksForDataMode(Line& line, const Progress& progress)
{
    line.setMode(LineMode::Switching);
    progress.start(0, 5);
    progress.status(u"Datenkanal wird geöffnet..."_s);
    return ask(line, "AT^SQWE=3\r\n", progress.panel);
}

bool wantsToRetry(Line& line)
{
    const toolkit::Message question{
        .text = u"Der Datenkanal zum Telefon konnte nicht geöffnet werden.\n\n"
                u"Eine mögliche Ursache ist ein aufgerufenes Untermenü am Telefon. Stellen Sie sicher, daß "
                u"das Telefon in keinem Menüpunkt ist - ggf. die rote Taste mehrfach drücken.\n\n"
                u"Versuch wiederholen?"_s,
        .title = app::productName(),
        .buttons = Buttons::OkCancel,
        .icon = Icon::Question,
        .asksToRetry = true,
        .english = u"The phone did not open its data channel. Leave all menus on the phone. Try again?"_s};
    return line.show(question) == Answer::Ok;
}

void remember(app::Settings& settings, const QString& device, const QString& port)
{
    app::put(settings, app::keys::LastUnclosedObexDevice, device);
    app::put(settings, app::keys::LastUnclosedObexDeviceCOM, port);
}

/// The emulated handset ends with the run, and leaves the reminder of the user's own phone alone.
void rememberOwn(Line& line, const QString& device, const QString& port)
{
    if (!line.context().sy.usesEmulated())
        remember(line.context().settings, device, port);
}

void rememberOpen(Line& line)
{
    rememberOwn(line, line.context().sy.PhoneID, QString::number(line.context().sy.ComNo));
}

void forget(Line& line)
{
    rememberOwn(line, app::noValue(), app::noValue());
    line.setMode(LineMode::Text);
}

void escape(Line& line, const Progress& progress)
{
    line.TxDirect("+++");
    for (int pause = 0; pause < pausesAfterEscape; ++pause) {
        line.pause(pauseAfterEscape);
        progress.step();
    }
}

/// Returns true if the phone's answer came while the user read the question.
bool hasSwitchedLate(Line& line)
{
    QByteArray late;
    line.readWaiting(late);
    return late.contains("OK\r\n");
}

/// One round of the way back, with a check that the phone takes AT commands.
bool recoveryRound(Line& line, const Progress& progress)
{
    line.pause(guardSilence);
    escape(line, progress);
    QByteArray answer;
    line.TxDirect("AT^SQWE=0\r\n");
    line.RxDirect(answer, answerTimeout);
    line.TxDirect("AT\r\n");
    line.RxDirect(answer, answerTimeout);
    return answer.contains("OK\r\n");
}

/// Takes the phone back after a command that it did not answer: only the answer may have been lost. Returns
/// true if the phone takes AT commands.
bool comesBack(Line& line, const Progress& progress, bool hasSwitched)
{
    rememberOpen(line);
    if (hasSwitched)
        return closeDataChannel(line, progress);
    progress.start(0, pausesAfterEscape);
    if (!recoveryRound(line, progress))
        return false;
    forget(line);
    return true;
}

ChannelOpening leaveUnopened(const Progress& progress, ChannelOpening outcome)
{
    progress.status(u"Fehler beim Öffnen des Datenkanals."_s);
    progress.hide();
    return outcome;
}

} // namespace

ChannelOpening openDataChannel(Line& line, const Progress& progress)
{
    while (!asksForDataMode(line, progress)) {
        if (!line.port().IsOpen()) {
            rememberOpen(line);
            progress.hide();
            return ChannelOpening::Stuck;
        }
        const bool retries = !progress.cancelled() && wantsToRetry(line);
        const bool hasSwitched = hasSwitchedLate(line);
        if (retries && hasSwitched)
            break;
        // In data mode another AT^SQWE=3 would be the head of a long packet.
        const bool isBack = comesBack(line, progress, hasSwitched);
        if (!retries)
            return leaveUnopened(progress, isBack ? ChannelOpening::GivenUp : ChannelOpening::Stuck);
    }
    line.setMode(LineMode::Data);
    rememberOpen(line);
    progress.step();
    progress.status(u"Datenkanal geöffnet."_s);
    for (int pause = 0; pause < 2; ++pause) {
        line.pause(0.5);
        progress.step();
    }
    progress.hide();
    progress.status(u"Fertig"_s);
    return ChannelOpening::Opened;
}

bool closeDataChannel(Line& line, const Progress& progress)
{
    line.setMode(LineMode::Switching);
    for (int round = 0; round < closingRounds && line.port().IsOpen(); ++round) {
        progress.start(0, 4);
        progress.status(u"Datenkanal wird geschlossen..."_s);
        escape(line, progress);
        if (!ask(line, "AT^SQWE=0\r\n", progress.panel))
            continue;
        progress.hide();
        progress.status(u"Datenkanal geschlossen."_s);
        forget(line);
        return true;
    }
    return false;
}

bool recoverLine(Line& line, const Progress& progress)
{
    line.setMode(LineMode::Switching);
    progress.start(0, (recoveryRounds + 1) * pausesAfterEscape);
    progress.status(u"Verbindung zum Telefon wird wiederhergestellt..."_s);
    bool answers = false;
    const auto goesOn = [&] { return line.port().IsOpen() && !progress.cancelled(); };
    for (int round = 0; round <= recoveryRounds && !answers && goesOn(); ++round) {
        if (round == recoveryRounds) {
            line.TxDirect(disconnectFrame());
            line.pause(answerTimeout);
        }
        answers = recoveryRound(line, progress);
    }
    if (answers)
        forget(line);
    progress.hide();
    progress.status(answers ? u"Verbindung zum Telefon wiederhergestellt."_s
                            : u"Das Telefon antwortet nicht auf AT-Befehle."_s);
    return answers;
}

bool recoverPort(Line& line, int rate, const Progress& progress)
{
    link::choosePort(line.context(), rate);
    return link::openPort(line) && recoverLine(line, progress);
}

std::optional<UnclosedSession> unclosedSession(const app::Context& context)
{
    const QString device = app::get(context.settings, app::keys::LastUnclosedObexDevice);
    if (device == app::noValue())
        return {};
    return UnclosedSession{device, app::get(context.settings, app::keys::LastUnclosedObexDeviceCOM).toInt()};
}

void rememberUnclosed(app::Context& context, const UnclosedSession& session)
{
    remember(context.settings, session.device, QString::number(session.port));
}

bool isSessionUnclosed(const app::Context& context)
{
    const auto session = unclosedSession(context);
    return session && session->port == link::portNumber(context);
}

bool takeBackUnclosed(Line& line, const Progress& progress)
{
    return recoverPort(line, link::unsignedRates(line.context()).first(), progress);
}

void forgetUnclosed(app::Context& context)
{
    if (isSessionUnclosed(context))
        remember(context.settings, app::noValue(), app::noValue());
}

} // namespace kalmo::obex
