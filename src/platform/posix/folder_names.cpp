// What is remembered of a folder is good while its times stay as they were when it was read. Times go in
// steps: a change in the same step as the reading does not show. So names of a folder that changed within
// the last seconds are believed for a short while alone, a multiple of what it takes to read them; that
// bounds both the age of a wrong answer and the time that reading takes.
#include "platform/posix/folder_names.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <unordered_map>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/text.h"

namespace kv {

namespace {

using Steady = std::chrono::steady_clock;

constexpr std::size_t MostFolders = 256;
constexpr std::chrono::seconds CoarsestStep{2};   // of the times of any file system
constexpr std::chrono::milliseconds ShortTrust{50};
constexpr int TrustByReading = 20; // times the time that it took

struct FolderTimes {
    std::uint64_t Device = 0, Identity = 0;
    std::int64_t Written = 0, Changed = 0; // ns
    bool operator==(const FolderTimes&) const = default;
};

struct FolderNames {
    int Lookups = 0;
    bool Read = false;
    bool Settled = false; // no change can have been in the step of the reading
    FolderTimes Times;
    Steady::time_point ReadAt;
    Steady::duration Trust{};
    std::unordered_map<std::string, std::string> Spelled; // by the name in upper case, CP1252
};
std::unordered_map<std::string, FolderNames> Folders;

bool TellsNotThere(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

std::int64_t Nanoseconds(const timespec& time)
{
    constexpr std::int64_t second = 1000000000;
    return static_cast<std::int64_t>(time.tv_sec) * second + time.tv_nsec;
}

bool TimesOf(const std::string& folder, FolderTimes& times)
{
    struct stat status {};
    if (::stat(folder.empty() ? "." : folder.c_str(), &status) != 0)
        return false;
    times = {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
             Nanoseconds(status.st_mtim), Nanoseconds(status.st_ctim)};
    return true;
}

// Calls `take` with each name. False when the folder cannot be read to its end.
template <typename Take> bool ReadNames(const std::string& folder, int& fault, const Take& take)
{
    DIR* const open = ::opendir(folder.empty() ? "." : folder.c_str());
    if (open == nullptr) {
        if (!TellsNotThere(errno))
            fault = errno;
        return false;
    }
    errno = 0; // the end of a folder and a fault look the same but for this
    while (const dirent* const entry = ::readdir(open)) {
        take(std::string_view(entry->d_name));
        errno = 0;
    }
    const int error = errno;
    ::closedir(open);
    if (error != 0)
        fault = error;
    return error == 0;
}

void RememberName(FolderNames& names, std::string_view spelled)
{
    const auto [place, added] = names.Spelled.try_emplace(UpperCase(AnsiFromUtf8(spelled)), spelled);
    if (!added && spelled < place->second)
        place->second = spelled;
}

void ReadAgain(const std::string& folder, FolderNames& names, const FolderTimes& times, int& fault)
{
    const Steady::time_point start = Steady::now();
    names.Spelled.clear();
    names.Read = ReadNames(folder, fault, [&](std::string_view spelled) { RememberName(names, spelled); });
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const std::chrono::nanoseconds age(Nanoseconds(now) - std::max(times.Written, times.Changed));
    names.Settled = age > CoarsestStep;
    names.Times = times;
    names.ReadAt = Steady::now();
    names.Trust = std::max<Steady::duration>(ShortTrust, TrustByReading * (names.ReadAt - start));
    if (!names.Read)
        names.Spelled.clear();
}

// A single lookup does not pay for remembering.
std::string LookOnce(const std::string& folder, std::string_view name, int& fault)
{
    constexpr std::size_t LongestUtf8 = 3; // bytes of one CP1252 character
    std::string found;
    const bool whole = ReadNames(folder, fault, [&](std::string_view spelled) {
        if (spelled.size() < name.size() || spelled.size() > name.size() * LongestUtf8)
            return;
        if (EqualIgnoringCase(AnsiFromUtf8(spelled), name) && (found.empty() || spelled < found))
            found = spelled;
    });
    return whole ? found : std::string();
}

} // namespace

std::string EntryIgnoringCase(const std::string& folder, std::string_view name, int& fault)
{
    FolderTimes times;
    if (!TimesOf(folder, times))
        return LookOnce(folder, name, fault);
    if (Folders.size() > MostFolders)
        Folders.clear();
    FolderNames& names = Folders[folder];
    if (++names.Lookups == 1)
        return LookOnce(folder, name, fault);
    const bool good = names.Read && names.Times == times &&
                      (names.Settled || Steady::now() - names.ReadAt < names.Trust);
    if (!good)
        ReadAgain(folder, names, times, fault);
    const auto entry = names.Spelled.find(UpperCase(name));
    return entry == names.Spelled.end() ? std::string() : entry->second;
}

OwnFolderChange::OwnFolderChange(std::string folder) : Folder(std::move(folder))
{
    const auto names = Folders.find(Folder);
    FolderTimes times;
    Known = names != Folders.end() && names->second.Read && TimesOf(Folder, times) &&
            times == names->second.Times;
}

void OwnFolderChange::Made(std::string_view newName)
{
    const auto names = Folders.find(Folder);
    FolderTimes times;
    if (!Known || names == Folders.end() || !TimesOf(Folder, times))
        return;
    names->second.Times = times;
    names->second.Settled = false;
    if (!newName.empty())
        RememberName(names->second, newName);
}

} // namespace kv
