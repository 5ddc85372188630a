// One request and one response, and the responses that come in many frames.

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "obex/clsMmcOperation.h"
#include "obex/ResponseFrame.h"

#include <algorithm>

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using app::fromCp1252;
using app::HexFromText;

namespace {

constexpr double countdownPart = 5;               // share of RxTimeOut after which the countdown starts
constexpr double patienceForStop = 2;             // seconds of silence after a request to stop
constexpr int mostStrayFrames = 5;                // each of them shows a box
constexpr qint64 mostReserved = 16 * 1024 * 1024; // an announced size may be wrong

bool isExpectedInGet(int code)
{
    return isSuccess(code) || code == Continue || code == ContinueNotFinal;
}

} // namespace

int clsMmc::TxObx(const QByteArray& frame)
{
    m_wasLastSent = false;
    if (isRefused(u"TxObx"_s))
        return ChannelNotOpen;
    if (m_line.mode() != link::LineMode::Data) {
        log(u"Warning:"_s, u"TxObx refused, the line carries no data"_s);
        return ChannelNotOpen;
    }
    if (frame.size() > m_maxPacket)
        return RequestTooLong;
    if (m_stopAsked && !m_pastStop)
        return Cancelled;
    if ((!m_inStep && !m_pastStop) || !m_line.port().IsOpen())
        return Timeout;
    m_wasLastSent = true;
    m_line.TxDirect(frame);
    return 0;
}

int clsMmc::request(const QByteArray& frame, QByteArray& payload)
{
    payload.clear();
    const int refusal = TxObx(frame);
    return noted(refusal != 0 ? refusal : RxObxFra(payload));
}

bool clsMmc::gaveUp(double silence) const
{
    return m_stopAsked && !m_pastStop && silence > patienceForStop;
}

int clsMmc::afterSilence(const QByteArray& buffer)
{
    log(u"RxObxFra (ASC)"_s, u"Timeout Buffer:"_s + fromCp1252(buffer));
    log(u"RxObxFra (HEX)"_s, u"Timeout Buffer: "_s + HexFromText(buffer));
    m_line.markDirty();
    m_inStep = false;
    return m_stopAsked && !m_pastStop && m_line.port().IsOpen() ? Cancelled : Timeout;
}

int clsMmc::RxObxFra(QByteArray& payload)
{
    payload.clear();
    if (isRefused(u"RxObxFra"_s))
        return ChannelNotOpen;
    QByteArray buffer;
    double lastByte = m_context.clock.Timer();
    while (!isWholeFrame(buffer)) {
        if (m_line.readWaiting(buffer))
            lastByte = m_context.clock.Timer();
        const double silence = m_context.clock.secondsSince(lastByte);
        if (silence > m_rxTimeOut / countdownPart) {
            const int left = static_cast<int>(std::max(m_rxTimeOut - silence, 0.0));
            Q_EMIT LongTimeOutMsg(u"Telefon reorganisiert... "_s + QString::number(left));
        }
        const bool isGone = !m_line.port().IsOpen() && !isWholeFrame(buffer);
        if (silence > m_rxTimeOut || gaveUp(silence) || isGone)
            return afterSilence(buffer);
        const bool goesOn = isWholeFrame(buffer) || m_line.port().InCount() > 0; // no answer can come
        m_line.yieldUpTo(goesOn ? 0 : m_rxTimeOut - silence);
    }
    if (m_context.log.isOn()) {
        const QString code = u"RE="_s + QString::number(static_cast<uchar>(buffer[0])) + u" RXall: "_s;
        log(u"RxObxFra (ASC)"_s, code + fromCp1252(buffer));
        log(u"RxObxFra (HEX)"_s, code + HexFromText(buffer));
    }
    ResponseFrame frame = takeFrame(std::move(buffer));
    if (!frame.lengthIsSound)
        m_line.markDirty();
    payload = std::move(frame.payload);
    return frame.code;
}

int clsMmc::get(const QByteArray& frame, QByteArray& data)
{
    data.clear();
    const int refusal = TxObx(frame);
    return noted(refusal != 0 ? refusal : ObxRx(data));
}

void clsMmc::showBare(const QString& text, const QString& english)
{
    m_line.show({.text = text, .english = english});
}

/// Logs details that help only in the search for the cause of a fault.
void clsMmc::showLengthNote()
{
    log(u"Warning:"_s, u"Length is followed by End of Body."_s);
    m_line.show({.text = u"hiB"_s, .forWindowOnly = true});
}

void clsMmc::showTotal(qint64 received, qint64 total)
{
    if (total == 0)
        return;
    const double part = std::min(static_cast<double>(received) / static_cast<double>(total), 1.0);
    m_progress.set(static_cast<int>(part * m_progress.bar->Maximum()));
}

int clsMmc::ObxRx(QByteArray& data)
{
    log(u"Enter"_s, u"ObxRx"_s);
    m_progress.start(0, 100);
    data.clear();
    quint32 total = 0;
    int code = Continue;
    for (int strays = 0; code == Continue;) {
        QByteArray payload;
        code = RxObxFra(payload);
        if (!isExpectedInGet(code))
            break;
        const LeadingHeader leading = takeLeadingHeader(payload);
        if (leading.totalSize) {
            total = *leading.totalSize;
            data.reserve(std::min<qint64>(total, mostReserved));
        }
        if (leading.endOfBodyBehindLength)
            showLengthNote();
        Q_EMIT BytesRxed(data.size());
        if (code == ContinueNotFinal || code == SuccessNotFinal) {
            showBare(u"hier fehlt was"_s, u"An unexpected response was passed over."_s);
            code = ++strays < mostStrayFrames ? Continue : Timeout;
            continue;
        }
        data.append(payload);
        if (code == Success)
            break;
        showTotal(data.size(), total);
        if (data.size() > largestObject)
            code = TooMuchData;
        else if (m_progress.cancelled())
            code = Cancelled;
        else if (const int refusal = TxObx(nextPartFrame()))
            code = refusal;
    }
    if (code == Cancelled || code == TooMuchData)
        Abort();
    if (code != Success)
        data.clear();
    m_progress.hide();
    log(u"Exit"_s, u"ObxRx="_s + QString::number(code));
    return code;
}

} // namespace kalmo::obex
