// Folders by the standard library. Relies on names that say which process made them; a folder that cannot be
// looked through or removed stays.
#include "platform/folders.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "platform/aside_names.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace fs = std::filesystem;

namespace {

constexpr unsigned MostTries = 1000; // for a name that an earlier process of the same number has left

} // namespace

fs::path FsPath(std::string_view path)
{
    const std::string host = ToHostPath(path); // UTF-8 on every host
    return std::u8string(host.begin(), host.end());
}

fs::path MakeOwnFolder()
{
    std::error_code error;
    const fs::path above = fs::temp_directory_path(error);
    if (error)
        return {};
    SweepFolders(above);
    for (unsigned counter = 1; counter < MostTries; ++counter) {
        fs::path folder = above / AsideName(counter);
        if (fs::create_directory(folder, error))
            return folder;
        if (error)
            return {};
    }
    return {};
}

void RemoveFolder(const fs::path& folder)
{
    std::error_code error;
    fs::remove_all(folder, error);
}

void SweepFolders(const fs::path& above)
{
    std::error_code error;
    fs::directory_iterator entries(above, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        const std::u8string name = entries->path().filename().u8string();
        std::error_code unknown;
        if (OwnerOfAside({reinterpret_cast<const char*>(name.data()), name.size()}) == AsideOwner::Ended &&
            entries->is_directory(unknown))
            RemoveFolder(entries->path());
    }
}

bool WriteOwnFile(const fs::path& file, std::string_view contents)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    stream.close();
    return stream.good();
}

bool ReadHeadAsSpelled(std::string_view path, std::string& head, std::size_t length)
{
    int handle = -1;
    if (!OpenAsSpelled(path, handle))
        return false;
    head.resize(length);
    std::size_t total = 0, got = 1;
    while (total < length && got > 0 && ReadSome(handle, head.data() + total, length - total, got).Ok())
        total += got;
    CloseReading(handle);
    head.resize(total);
    return true;
}

bool ReadOwnFile(const fs::path& file, std::string& contents)
{
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    if (!stream)
        return false;
    contents.resize(static_cast<std::size_t>(stream.tellg()));
    stream.seekg(0);
    stream.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    return stream.good() || contents.empty();
}

} // namespace kv
