#include "plugins/g722demo/Encoder.h"

#include <spandsp.h>

#include <memory>

namespace kalmo::g722demo {

namespace {

constexpr int rate = 64000; // bits a second
constexpr std::size_t bytesPerCode = 4;
constexpr std::size_t codesPerBlock = 4096;

} // namespace

std::vector<std::uint8_t> encode(std::span<const std::uint8_t> sound)
{
    std::vector<std::uint8_t> words;
    const std::unique_ptr<g722_encode_state_t, int (*)(g722_encode_state_t*)> state(
        g722_encode_init(nullptr, rate, 0), g722_encode_free);
    const std::size_t count = state ? sound.size() / bytesPerCode : 0;
    words.reserve(2 * count);
    std::vector<std::int16_t> samples;
    std::vector<std::uint8_t> codes(codesPerBlock);
    for (std::size_t done = 0; done < count; done += codesPerBlock) {
        const std::size_t size = std::min(codesPerBlock, count - done);
        const auto block = sound.subspan(done * bytesPerCode, size * bytesPerCode);
        samples.clear();
        for (std::size_t index = 0; index < block.size(); index += 2)
            samples.push_back(static_cast<std::int16_t>(block[index] | block[index + 1] << 8));
        const int made =
            g722_encode(state.get(), codes.data(), samples.data(), static_cast<int>(samples.size()));
        for (int index = 0; index < made; ++index) {
            words.push_back(codes[static_cast<std::size_t>(index)]);
            words.push_back(0);
        }
    }
    return words;
}

} // namespace kalmo::g722demo
