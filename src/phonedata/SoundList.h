#pragma once

#include "app/mdlDebugLog.h"

#include <QString>

#include <vector>

namespace kalmo::phonedata {

/// One of the phone's own melodies.
struct Melody
{
    QString name;
    QString kind;
    qint32 size = 0; ///< bytes
    qint32 id = 0;

    bool operator==(const Melody&) const = default;
};

/// The phone's own melodies. Row 0 always exists and stays empty; real rows start at 1.
class SoundList
{
public:
    SoundList() { clear(); }

    void clear() { m_rows.assign(1, {}); }
    void add(const Melody& melody) { m_rows.push_back(melody); }
    int upperBound() const { return static_cast<int>(m_rows.size()) - 1; }
    const Melody& row(int index) const { return m_rows[index]; }

    const Melody* withId(qint32 id) const;
    const Melody* withName(const QString& name) const;

private:
    std::vector<Melody> m_rows;
};

/// The melody that takes the place of one that is not known.
inline constexpr QStringView firstMelody = u"Melodie 1";

/// The names "Melodie 1" to "Melodie 10", which every classic handset has.
QStringList builtInMelodies();

/// Display name of a sound id. "Melodie 1", and a line in the log, for an id that no melody has.
QString GetSoundName(qint32 id, const SoundList& sounds, app::DebugLog& log);

/// Wire code of a display name for a family of handsets, empty if there is none.
QString GetSoundCode(const QString& name, int phoneType, const SoundList& sounds);

} // namespace kalmo::phonedata
