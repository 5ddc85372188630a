#include "handset/at/PauseWatch.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 0.005; // of the clocks at both ends
constexpr double pauseAfterClose = 3.5;
constexpr double pauseBeforeErase = 0.5;
constexpr double pauseBeforeFirstQuery = 0.85;
constexpr double pauseAfterErrorLevel = 0.1;
constexpr double pauseAfterRestart = 0.15;
constexpr double pauseBetweenRestarts = 0.3;
constexpr double pauseAfterError = 0.35; // before the first ATZ
constexpr size_t leastEntriesToPrepare = 3;
constexpr QByteArrayView soundCommandNames[] = {"^WREX", "^WRIN", "^WRAP", "^WRAL"};

} // namespace

PauseWatch::Step PauseWatch::stepOf(const AtRequest& request, const Phone& phone)
{
    const QByteArray& name = request.name;
    if (name == "Z")
        return Restart;
    if (name == "+CMEE" && request.form == Form::Set)
        return ErrorLevel;
    if (name == "^WSSL")
        return request.form == Form::Set ? Open : Close;
    if (name.isEmpty())
        return phone.phonebook.open || phone.providers.open ? Close : Other;
    if (name == "^WSEL")
        return Erase;
    if (name == "^WSRE")
        return Read;
    if (name == "^WSWE")
        return phone.family.number == 3 && phone.phonebook.open && request.argument == "1,A,1,1,0," &&
                       phone.phonebook.entries.empty()
                   ? Prepare
                   : Write;
    const bool isSound = std::find(std::begin(soundCommandNames), std::end(soundCommandNames), name) !=
                         std::end(soundCommandNames);
    if (!isSound)
        return Other;
    return request.form == Form::Set ? SoundSet : SoundQuery;
}

double PauseWatch::neededPause(Step next, bool isPhonebook) const
{
    struct Rule
    {
        Step last;
        Step next;
        double inPhonebook;
        double inProviders;
    };
    // Seconds from the answer to the first command to the second one.
    static constexpr Rule rules[] = {
        {Open, Read, 0.5, 0.5},  {Read, Read, 0.1, 0.1},       {Open, Write, 1, 0.5},
        {Open, Prepare, 1, 1},   {Write, Write, 0.2, 0.2},     {Write, Close, 1.2, 0.7},
        {Read, Close, 0.1, 0.3}, {SoundSet, SoundQuery, 1, 1}, {SoundQuery, SoundQuery, 0.17, 0.17},
    };
    if (m_last == Close)
        return pauseAfterClose;
    if (m_last == Restart)
        return next == Restart ? pauseBetweenRestarts : pauseAfterRestart;
    if (m_last == ErrorLevel)
        return pauseAfterErrorLevel;
    if (next == Restart)
        return m_isLastOk ? 0 : pauseAfterError;
    if (next == Erase)
        return pauseBeforeErase;
    for (const Rule& rule : rules) {
        if (rule.last == m_last && rule.next == next)
            return !m_isLastOk ? 0 : isPhonebook ? rule.inPhonebook : rule.inProviders;
    }
    return next == SoundQuery ? pauseBeforeFirstQuery : 0;
}

QString PauseWatch::preparationComplaint(Step next, const Phone& phone)
{
    if (next == Erase) {
        m_isPrepared = m_hasDummy;
        m_hasDummy = false;
    }
    m_hasDummy = m_hasDummy || next == Prepare;
    const bool isTooMany = next == Write && phone.family.number == 3 && phone.phonebook.open &&
                           phone.phonebook.entries.size() + 1 >= leastEntriesToPrepare;
    return isTooMany && !m_isPrepared ? u"a third entry without the preparation of the store"_s : QString();
}

QString PauseWatch::arrives(const AtRequest& request, const Phone& phone, double now)
{
    const Step next = stepOf(request, phone);
    const double gap = now - (countsFromArrival() ? m_lastArrived : m_lastAnswered);
    const double needed = neededPause(next, !phone.providers.open);
    QString complaint = preparationComplaint(next, phone);
    if (gap < needed - tolerance)
        complaint = u"%1 came %2 s after the last command, not %3 s"_s.arg(app::fromCp1252(request.text()))
                        .arg(gap, 0, 'f', 2)
                        .arg(needed);
    // Closing what is not open needs no pause after it.
    m_last = next == Close && !phone.phonebook.open && !phone.providers.open ? Other : next;
    m_lastArrived = now;
    m_isLastOk = false;
    return complaint;
}

void PauseWatch::forgive()
{
    m_last = Other;
    m_lastArrived = m_lastAnswered = longAgo;
}

void PauseWatch::answered(bool isOk, double now)
{
    m_isLastOk = isOk;
    m_lastAnswered = now;
    if (m_last == Close && !isOk)
        m_last = Other; // a refused close closes nothing, so it needs no pause after it
}

} // namespace kalmo::handset
