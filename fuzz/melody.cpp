// Fuzzes melodies.

#include "fuzz/Targets.h"

#include "plugins/m9b/Melody.h"

namespace kalmo::fuzz {

void melody(const QByteArray& bytes)
{
    const m9b::Result result =
        m9b::convert({reinterpret_cast<const quint8*>(bytes.constData()), static_cast<size_t>(bytes.size())});
    require(result.melody.empty() != result.error.empty());
    if (result.melody.empty())
        return;
    require(result.melody.size() <= m9b::largestMelody);
    const m9b::Result again = m9b::convert(result.melody);
    require(again.melody == result.melody);
}

} // namespace kalmo::fuzz
