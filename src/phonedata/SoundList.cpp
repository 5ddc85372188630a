#include "phonedata/SoundList.h"

#include "link/PhoneModels.h"

#include <algorithm>
#include <array>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

constexpr int builtInCount = 10;

struct CodeRow
{
    QStringView name;
    QStringView codeFromZero;
    QStringView code;
};

// Those that count from 0 when they are written count from 1 when they are read.
constexpr std::array<CodeRow, 11> codes = {{
    {u"Optisch", u"S", u"S"},
    {u"Melodie 1", u"0", u"1"},
    {u"Melodie 2", u"1", u"2"},
    {u"Melodie 3", u"2", u"3"},
    {u"Melodie 4", u"3", u"4"},
    {u"Melodie 5", u"4", u"5"},
    {u"Melodie 6", u"5", u"6"},
    {u"Melodie 7", u"6", u"7"},
    {u"Melodie 8", u"7", u"8"},
    {u"Melodie 9", u"8", u"9"},
    {u"Melodie 10", u"9", u"10"},
}};

} // namespace

const Melody* SoundList::withId(qint32 id) const
{
    const auto found =
        std::find_if(m_rows.begin() + 1, m_rows.end(), [id](const Melody& row) { return row.id == id; });
    return found == m_rows.end() ? nullptr : &*found;
}

const Melody* SoundList::withName(const QString& name) const
{
    const auto found = std::find_if(m_rows.begin() + 1, m_rows.end(),
                                    [&name](const Melody& row) { return row.name == name; });
    return found == m_rows.end() ? nullptr : &*found;
}

QStringList builtInMelodies()
{
    QStringList names;
    for (int number = 1; number <= builtInCount; ++number)
        names.append(u"Melodie "_s + QString::number(number));
    return names;
}

QString GetSoundName(qint32 id, const SoundList& sounds, app::DebugLog& log)
{
    if (id >= 1 && id <= builtInCount)
        return u"Melodie "_s + QString::number(id);
    if (const Melody* melody = sounds.withId(id))
        return melody->name;
    log.WriteDebugLog(u"Warning:"_s, u"GetSoundName(%1) Element not found, default Melodie 1 used"_s.arg(id));
    return firstMelody.toString();
}

QString GetSoundCode(const QString& name, int phoneType, const SoundList& sounds)
{
    if (!link::isClassic(phoneType))
        return {};
    const bool fromZero = link::countsMelodiesFromZero(phoneType);
    for (const CodeRow& row : codes) {
        if (row.name == name)
            return (fromZero ? row.codeFromZero : row.code).toString();
    }
    const Melody* melody = link::hasRingtoneSettings(phoneType) ? sounds.withName(name) : nullptr;
    return melody ? QString::number(melody->id) : QString();
}

} // namespace kalmo::phonedata
