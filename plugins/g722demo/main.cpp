// g722demo: codes sound for handsets by ITU-T G.722.

#include "plugins/g722demo/Encoder.h"
#include "plugins/WholeFile.h"

#include <string_view>

using namespace kalmo;

namespace {

constexpr std::size_t largestFile = std::size_t{256} << 20; // bytes; more than two hours of sound

int fail(const std::string& why)
{
    std::fprintf(stderr, "g722demo: %s\n", why.c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4 || std::string_view(argv[1]) != "-enc") {
        std::fputs("usage: g722demo -enc IN OUT\n", stderr);
        return 2;
    }
    const auto sound = plugins::readFile(argv[2], largestFile);
    if (!sound)
        return fail(std::string(argv[2]) + " can't be read or is too large");
    const plugins::Bytes words = g722demo::encode(*sound);
    if (words.size() != sound->size() / 4 * 2)
        return fail("the coder failed");
    if (!plugins::writeFile(argv[3], words))
        return fail(std::string(argv[3]) + " can't be written");
    return 0;
}
