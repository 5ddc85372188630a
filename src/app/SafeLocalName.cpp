#include "app/SafeLocalName.h"

#include <QStringList>

#include <algorithm>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestName = 255; // bytes, NAME_MAX of the usual file systems

bool isDeviceName(const QString& name)
{
    static const QStringList devices = {u"CON"_s, u"PRN"_s, u"AUX"_s, u"NUL"_s, u"CONIN$"_s, u"CONOUT$"_s};
    const QString base = name.section(u'.', 0, 0).trimmed().toUpper();
    const bool numbered = base.size() == 4 && (base[3].isDigit() || u"¹²³"_s.contains(base[3])) &&
                          (base.startsWith(u"COM"_s) || base.startsWith(u"LPT"_s));
    return numbered || devices.contains(base);
}

bool isAllowed(char32_t character)
{
    return QChar::isPrint(character) && !QStringView(u"<>:\"|?*").contains(QChar::fromUcs4(character));
}

} // namespace

QString safeLocalName(const QString& name)
{
    const qsizetype separator = std::max(name.lastIndexOf(u'/'), name.lastIndexOf(u'\\'));
    const QString last = name.sliced(separator + 1);
    if (last.isEmpty() || last.endsWith(u'.') || last.endsWith(u' ') || isDeviceName(last))
        return {};
    const auto characters = last.toUcs4();
    if (last.toUtf8().size() > longestName || !std::all_of(characters.begin(), characters.end(), isAllowed))
        return {};
    return last;
}

} // namespace kalmo::app
