// Files of the source tree, and the bytes of any file.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace kv::test {

inline const std::filesystem::path SourceFolder = KORVANTI_SOURCE_DIR;

// Empty for a file that cannot be read.
inline std::string FileBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file)
        return {};
    std::string bytes(static_cast<std::size_t>(file.tellg()), '\0');
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

} // namespace kv::test
