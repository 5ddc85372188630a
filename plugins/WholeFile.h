#pragma once

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kalmo::plugins {

using Bytes = std::vector<std::uint8_t>;

/// Content of a file of at most `largest` bytes; nothing if it can't be read or is larger.
inline std::optional<Bytes> readFile(const std::string& path, std::size_t largest)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file)
        return {};
    Bytes bytes;
    std::uint8_t block[65536];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
        if (bytes.size() + count > largest)
            return {};
        bytes.insert(bytes.end(), block, block + count);
    }
    if (std::ferror(file.get()) != 0)
        return {};
    return bytes;
}

/// Opens a new file for a part of `path`, beside it and under a name that no other file has. Returns nothing
/// if that fails; `part` is its name.
inline std::FILE* openPart(const std::string& path, std::string& part)
{
    constexpr int mostParts = 100; // of programs that were killed, or run at the same time
    for (int number = 0; number < mostParts; ++number) {
        part = path + '.' + std::to_string(number) + ".part";
        std::FILE* file = std::fopen(part.c_str(), "wbx");
        if (file || errno != EEXIST)
            return file;
    }
    return nullptr;
}

/// Writes a file under another name and renames it once it is whole. Returns false if that fails: then an old
/// file of that name stays, and no other is left.
inline bool writeFile(const std::string& path, std::span<const std::uint8_t> bytes)
{
    std::string part;
    std::error_code error;
    std::FILE* file = openPart(path, part);
    if (!file)
        return false;
    const bool taken = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (std::fclose(file) == 0 && taken) {
        std::filesystem::rename(part, path, error);
        if (!error)
            return true;
    }
    std::filesystem::remove(part, error);
    return false;
}

} // namespace kalmo::plugins
