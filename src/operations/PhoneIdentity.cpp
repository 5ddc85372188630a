#include "operations/PhoneIdentity.h"

#include "app/CodePage.h"
#include "link/PhoneModels.h"

#include <algorithm>
#include <optional>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestSerial = 40; // an IPEI has 13 digits, an IMEI 15
constexpr int serialAttempts = 4;

bool looksLikeSerial(const QString& text)
{
    const auto isAllowed = [](QChar c) {
        return c.unicode() < 128 && (c.isLetterOrNumber() || u" -./"_s.contains(c));
    };
    return !text.isEmpty() && text.size() <= longestSerial &&
           std::any_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); }) &&
           std::all_of(text.begin(), text.end(), isAllowed);
}

/// One answer alone may lack a byte or belong to an earlier command, so two in a row have to agree. Unknown
/// after answers that give no serial number, nothing without an answer.
std::optional<QString> askForSerial(link::Line& line)
{
    if (line.mode() != link::LineMode::Text || line.isWaiting() || !line.port().IsOpen())
        return {};
    QString last;
    for (int attempt = 0; attempt < serialAttempts; ++attempt) {
        QByteArray answer;
        if (!line.exchange(answer, "AT+CGSN\r", link::queryTimeout))
            return {};
        const QString serial = app::fromCp1252(answer).simplified();
        if (serial == last && line.wasEchoed() && looksLikeSerial(serial))
            return serial;
        last = serial;
    }
    return unknownSerial();
}

} // namespace

QString unknownSerial()
{
    return u"unknown"_s;
}

PhoneIdentity identifyPhone(link::Line& line)
{
    app::Sy& sy = line.context().sy;
    if (sy.PhoneSerial.isEmpty())
        sy.PhoneSerial = askForSerial(line).value_or(QString());
    return knownIdentity(sy);
}

PhoneIdentity knownIdentity(const app::Sy& sy)
{
    return {link::modelName(sy.PhoneID), sy.PhoneSerial.isEmpty() ? unknownSerial() : sy.PhoneSerial};
}

} // namespace kalmo::operations
