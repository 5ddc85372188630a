// m9b: converts a Standard MIDI File to a melody for handsets.

#include "plugins/m9b/Melody.h"
#include "plugins/WholeFile.h"

#include <string_view>

using namespace kalmo;

namespace {

constexpr std::size_t largestFile = 4 << 20; // bytes; far more than a melody of 32000 bytes comes from

int fail(const std::string& why)
{
    std::fprintf(stderr, "m9b: %s\n", why.c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4 || std::string_view(argv[1]) != "t") {
        std::fputs("usage: m9b t IN OUT\n", stderr);
        return 2;
    }
    const auto file = plugins::readFile(argv[2], largestFile);
    if (!file)
        return fail(std::string(argv[2]) + " can't be read or is too large");
    const m9b::Result result = m9b::convert(*file);
    if (!result.error.empty())
        return fail(result.error);
    if (!plugins::writeFile(argv[3], result.melody))
        return fail(std::string(argv[3]) + " can't be written");
    return 0;
}
