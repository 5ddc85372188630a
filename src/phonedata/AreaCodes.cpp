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

/// The text with a blank in it counts as empty for this test, and is sent as it is.
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

bool ReadAreaCodes(link::Line& line, toolkit::StatusPanel* panel, QString& answer)
{
    setStatus(panel, u"Prüfe Vorwahl Einstellungen..."_s);
    QByteArray bytes;
    const bool answered = line.exchange(bytes, "AT^SACO?\r", timeout);
    answer = answered ? app::fromCp1252(bytes).remove(prefix).trimmed() : QString();
    setStatus(panel, u"Bereit."_s);
    if (!answered)
        line.context().dialogs.Show(
            {.text =
                 u"Die Vorwahleinstellungen konnten nicht ermittelt werden. Bitte starten Sie Telefon und "
                 u"Programm neu.\n"
                 u"Bleibt das Problem bestehen, wenden Sie sich bitte an den Programmautor."_s,
             .icon = Icon::Exclamation,
             .english = u"The area codes could not be read."_s});
    return !notSetUp.contains(answer);
}

bool SetAreaCodes(link::Line& line, toolkit::StatusPanel* panel, const AreaCodes& codes, bool inUse)
{
    toolkit::Dialogs& dialogs = line.context().dialogs;
    if (inUse && std::any_of(codes.begin(), codes.end(), isBlank)) {
        dialogs.Show({.text = u"Mindestens eines der Eingabefelder A-D ist leer. Diese Eingabe macht keinen "
                              u"Sinn. Bitte prüfen Sie Ihre Eingabe oder schalten Sie die Verwendung von "
                              u"Vorwalen aus."_s,
                      .icon = Icon::Exclamation,
                      .english = u"At least one of the codes A to D is empty."_s});
        return false;
    }
    setStatus(panel, u"Setze Vorwahl Einstellungen..."_s);
    QByteArray answer;
    if (line.exchange(answer, "AT^SACO=" + app::toCp1252(joined(codes)) + '\r', timeout)) {
        setStatus(panel, u"Bereit."_s);
        return true;
    }
    dialogs.Show({.text = u"Die Vorwahleinstellungen konnten nicht gesetzt werden. Bitte prüfen Sie Ihre "
                          u"Eingaben."_s,
                  .icon = Icon::Information,
                  .english = u"The phone did not take the area codes."_s});
    setStatus(panel, u"Vorwahl nicht gesetzt."_s);
    return false;
}

} // namespace kalmo::phonedata
