// Fuzzes the coder of sounds.

#include "fuzz/Targets.h"

#include "plugins/g722demo/Encoder.h"

namespace kalmo::fuzz {

void codedSound(const QByteArray& bytes)
{
    const std::vector<std::uint8_t> words = g722demo::encode(
        {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
    require(words.size() == static_cast<std::size_t>(bytes.size()) / 4 * 2);
    for (std::size_t index = 1; index < words.size(); index += 2)
        require(words[index] == 0);
}

} // namespace kalmo::fuzz
