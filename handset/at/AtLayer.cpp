#include "handset/at/AtLayer.h"

#include "app/CodePage.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;
using app::fromCp1252;

namespace {

constexpr qsizetype longestLine = 1024;
constexpr double unknownCommandSeconds = 0.02;
constexpr char escape = 0x1B;
constexpr QByteArrayView noise("\x7f\xf8\x00\xff", 4);

/// Sent before the client knows how lines have to end.
bool isProbe(const QByteArray& line)
{
    return line == "ATZ" || line == "AT" || line.isEmpty();
}

/// Family 3 needs an entry written and erased before it takes a list of some length; that write ends in CR. A
/// true entry of that text ends as all others do, so both line ends are accepted.
bool isPreparation(const AtRequest& request, int family)
{
    return family == 3 && request.argument == "1,A,1,1,0,";
}

Ending endingOf(const AtCommand* command, const AtRequest& request, const Phone& phone)
{
    if (!command)
        return Ending::Either;
    if (command->ending != Ending::ByStore)
        return command->ending;
    if (isPreparation(request, phone.family.number))
        return Ending::Either;
    return phone.phonebook.open ? Ending::CrLf : Ending::Cr;
}

} // namespace

AtLayer::AtLayer(Phone& phone, TimeSource& time, Line line)
    : m_phone(phone), m_time(time), m_timers(time), m_line(std::move(line)), m_echo(phone.echoesAtFirst())
{
}

void AtLayer::reset()
{
    m_timers.forgetAll();
    m_pauses.reset();
    m_state = State::Reading;
    m_pending.clear();
    m_isQueued = false;
    m_text.clear();
    m_sawCr = false;
    m_echo = m_phone.echoesAtFirst();
    m_cmeLevel = 0;
}

void AtLayer::receive(const QByteArray& bytes)
{
    m_pending += bytes;
    takePending();
}

void AtLayer::takePending()
{
    qsizetype taken = 0;
    while (m_state == State::Reading && taken < m_pending.size())
        takeByte(m_pending[taken++]);
    m_pending.remove(0, taken);
    if (!m_echoed.isEmpty())
        m_line.send(std::exchange(m_echoed, {}));
    if (m_state == State::Running)
        lookBehindCr();
    m_isQueued = m_isQueued || (m_state != State::Reading && !m_pending.isEmpty());
    if (m_state != State::Reading && !m_pending.isEmpty() && !m_running.late && !m_running.disturbed) {
        m_running.disturbed = true;
        complain(u"sent into the answer to "_s + fromCp1252(m_running.request.text()));
    }
}

/// A line feed right after the CR that has started a command belongs to that command.
void AtLayer::lookBehindCr()
{
    if (m_pending.isEmpty() || m_running.cameWithLf || !m_pending.startsWith('\n'))
        return;
    m_running.cameWithLf = true;
    m_pending.remove(0, 1);
}

void AtLayer::takeByte(char byte)
{
    const bool wantsLf = m_phone.lineEnd() == LineEnd::CrLf;
    if (byte == '\n' && !wantsLf)
        return;
    if (m_sawCr && byte != '\n')
        endedByCrAlone();
    echo(byte);
    if (byte == '\r' && wantsLf) {
        m_sawCr = true;
    } else if (byte == '\r' || (byte == '\n' && m_sawCr)) {
        endLine();
    } else if (byte == escape) {
        m_text.clear();
    } else if (m_text.size() < longestLine) {
        m_text += byte;
    }
}

void AtLayer::endedByCrAlone()
{
    if (!isProbe(m_text.toUpper()))
        complain(u"ended by CR alone: "_s + fromCp1252(m_text));
    m_text.clear();
    m_sawCr = false;
}

void AtLayer::endLine()
{
    const QByteArray line = fromAttention(std::exchange(m_text, {}));
    m_sawCr = false;
    if (!line.isEmpty())
        run(line);
}

QByteArray AtLayer::fromAttention(const QByteArray& line)
{
    const qsizetype start = line.toUpper().indexOf("AT");
    QByteArray before = start < 0 ? line : line.first(start);
    // "+++" in command mode is no fault.
    before.replace("+++", "");
    if (!before.trimmed().isEmpty())
        complain(u"no command: "_s + fromCp1252(before));
    return start < 0 ? QByteArray() : line.sliced(start);
}

void AtLayer::run(const QByteArray& line)
{
    Faults& faults = m_phone.faults;
    const bool isRefused = faults.refusesNext(line);
    const AtRequest request = parseAtLine(line);
    const AtCommand* command = findCommand(request, m_phone);
    m_running = {.request = request,
                 .ending = endingOf(command, request, m_phone),
                 .late = faults.isDueAtCommand(faults.lateAt)};
    m_state = State::Running;
    if (m_phone.lineEnd() == LineEnd::CrLf)
        m_running.ending = Ending::Either; // it has been read as CR LF already

    if (std::exchange(m_isQueued, false))
        m_pauses.forgive();
    const bool isInPlace = checkPlace(request, command);
    if (const QString complaint = m_pauses.arrives(request, m_phone, m_time.now()); !complaint.isEmpty())
        complain(complaint);
    AtContext context{m_phone, m_time, m_echo, m_cmeLevel};
    const AtAnswer result =
        command && isInPlace && !isRefused ? command->run(context, request) : AtAnswer::error(NotSupported);
    const double own = (command ? command->seconds : unknownCommandSeconds) + result.seconds;
    const double late = m_running.late ? faults.lateBy : 0;
    m_timers.after((m_phone.options.atOnce ? 0 : own) + late,
                   [this, result, hangUp = faults.isDueAtCommand(faults.hangUpAt)] {
                       if (hangUp)
                           m_line.hangUp();
                       else
                           answer(result);
                   });
}

bool AtLayer::checkPlace(const AtRequest& request, const AtCommand* command)
{
    if (!m_phone.openStore() || (command && command->whileStoreIsOpen))
        return true;
    complain(fromCp1252(request.text()) + u" while a store is open"_s);
    return !FamilySet(3, 4).contains(m_phone.family.number);
}

void AtLayer::checkEnding()
{
    const bool wrong = (m_running.ending == Ending::Cr && m_running.cameWithLf) ||
                       (m_running.ending == Ending::CrLf && !m_running.cameWithLf);
    if (!wrong)
        return;
    complain((m_running.cameWithLf ? u"ended by CR LF: "_s : u"ended by CR alone: "_s) +
             fromCp1252(m_running.request.text()));
}

void AtLayer::answer(const AtAnswer& answer)
{
    checkEnding();
    m_pauses.answered(answer.result == AtAnswer::Ok, m_time.now());
    if (answer.result == AtAnswer::Silence) {
        m_state = State::Reading;
        takePending();
        return;
    }
    m_state = State::Answering;
    m_then = answer.then;
    m_line.send(wireForm(answer));
}

QByteArray AtLayer::wireForm(const AtAnswer& answer) const
{
    QByteArray text = "\r\n";
    if (!answer.payload.isEmpty())
        text += answer.payload + "\r\n\r\n";
    if (answer.result == AtAnswer::Ok)
        text += "OK\r\n";
    else if (answer.result == AtAnswer::Connect)
        text += "CONNECT\r\n";
    else if (m_cmeLevel == 0)
        text += "ERROR\r\n";
    else
        text += "+CME ERROR: " + QByteArray::number(answer.why) + "\r\n";

    const Faults& faults = m_phone.faults;
    if (faults.isDueAtCommand(faults.noiseAt))
        text.prepend(noise.toByteArray());
    if (faults.isDueAtCommand(faults.loseByteAt))
        text.remove(text.size() / 2, 1);
    return text;
}

void AtLayer::echo(char byte)
{
    if (m_echo && !m_phone.faults.noEcho)
        m_echoed += byte;
}

void AtLayer::outputDrained()
{
    if (m_state != State::Answering)
        return;
    m_state = State::Reading;
    if (std::exchange(m_then, AtAnswer::StayInCommandMode) == AtAnswer::EnterDataMode)
        m_line.enterDataMode();
    else
        takePending();
}

} // namespace kalmo::handset
