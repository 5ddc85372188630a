#include "phonedata/AreaCodes.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using toolkit::Icon;
using toolkit::setStatus;

namespace {

constexpr double timeout = 1; // seconds
const QString prefix = u"^SACO:"_s;
const QStringList notSetUp = {u"0,0,0,0"_s, u"00,49,0,"_s};

QString joined(const AreaCodes& codes)
{
    return QStringList(codes.begin(), codes.end()).join(u',');
}

/// A text of blanks counts as empty here. It is sent as it is.
bool isBlank(const QString& text)
{
    return text.trimmed().isEmpty();
}

} // namespace

std::optional<AreaCodes> parseAreaCodes(const QString& answer)
{
    const QStringList parts = answer.split(u',');
    AreaCodes codes;
    if (parts.size() != std::ssize(codes))
        return std::nullopt;
    std::copy(parts.begin(), parts.end(), codes.begin());
    return codes;
}

bool usesAreaCodes(const QString& answer)
{
    return answer != u",,,"_s;
}

bool isAreaCode(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar character) { return character >= u'0' && character <= u'9'; });
}

bool askAreaCodes(link::Line& line, QByteArray& answer)
{
    return line.exchange(answer, "AT^SACO?\r", timeout);
}

QString areaCodeText(const QByteArray& answer)
{
    return app::fromCp1252(answer).remove(prefix).trimmed();
}

bool areSetUp(const QString& text)
{
    return !notSetUp.contains(text);
}

bool ReadAreaCodes(link::Line& line, toolkit::StatusPanel* panel, QString& answer)
{
    setStatus(panel, u"Prüfe Vorwahl Einstellungen..."_s);
    QByteArray bytes;
    const bool answered = askAreaCodes(line, bytes);
    answer = answered ? areaCodeText(bytes) : QString();
    setStatus(panel, u"Bereit."_s);
    if (!answered)
        line.context().dialogs.Show(
            {.text =
                 u"Die Vorwahleinstellungen konnten nicht ermittelt werden. Bitte starten Sie Telefon und "
                 u"Programm neu.\n"
                 u"Bleibt das Problem bestehen, wenden Sie sich bitte an den Programmautor."_s,
             .icon = Icon::Exclamation,
             .english = u"could not read the area codes: the phone did not answer."_s,
             .about = toolkit::About::Request});
    return areSetUp(answer);
}

bool hasBlankCode(const AreaCodes& codes)
{
    return std::any_of(codes.begin(), codes.end(), isBlank);
}

bool sendAreaCodes(link::Line& line, const AreaCodes& codes)
{
    QByteArray answer;
    return line.exchange(answer, "AT^SACO=" + app::toCp1252(joined(codes)) + '\r', timeout);
}

} // namespace kalmo::phonedata
