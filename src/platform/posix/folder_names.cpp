// Most names that are not on the disk as they are spelled are new. So one number is remembered for each name
// of a folder: a name without its number is in the folder in no spelling, any other is looked for in the
// folder itself. That is good while the folder's times stay as they were when it was read. Times go in steps:
// a change in the same step as the reading does not show. So a folder that changed within the last seconds is
// believed for a short while alone, a multiple of what it takes to read it; that bounds both the age of a
// wrong answer and the time that reading takes. A name that CP1252 does not hold is compared by its stand-in.
#include "platform/posix/folder_names.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <unordered_map>
#include <utility>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/stand_ins.h"
#include "platform/text.h"

namespace kv {

namespace {

using Steady = std::chrono::steady_clock;

constexpr std::size_t MostFolders = 256;
constexpr std::chrono::seconds CoarsestStep{2}; // of the times of any file system
constexpr std::chrono::milliseconds ShortTrust{50};
constexpr int TrustByReading = 50; // times the time that it took

// Numbers of names; a table with free places, since a folder may hold some ten thousand.
class NameNumbers {
  public:
    void Clear()
    {
        Table.assign(SmallestTable, Free);
        Count = 0;
    }
    void Add(std::uint64_t number)
    {
        if (2 * ++Count > Table.size())
            Grow();
        Table[PlaceOf(number)] = number;
    }
    bool Has(std::uint64_t number) const { return Table[PlaceOf(number)] == number; }

  private:
    static constexpr std::uint64_t Free = 0;
    static constexpr std::size_t SmallestTable = 64; // the size is a power of two

    // Where the number stands, or the free place where it belongs.
    std::size_t PlaceOf(std::uint64_t number) const
    {
        std::size_t place = number & (Table.size() - 1);
        while (Table[place] != Free && Table[place] != number)
            place = (place + 1) & (Table.size() - 1);
        return place;
    }
    void Grow()
    {
        std::vector<std::uint64_t> smaller(2 * Table.size(), Free);
        smaller.swap(Table);
        for (const std::uint64_t number : smaller) {
            if (number != Free)
                Table[PlaceOf(number)] = number;
        }
    }

    std::vector<std::uint64_t> Table = std::vector<std::uint64_t>(SmallestTable, Free);
    std::size_t Count = 0;
};

// The same for all spellings of a name (CP1252); never 0.
std::uint64_t NumberOfName(std::string_view name)
{
    std::uint64_t number = 14695981039346656037U; // FNV-1a
    for (const char c : name)
        number = (number ^ static_cast<unsigned char>(UpperChar(c))) * 1099511628211U;
    number ^= number >> 32; // the low bits choose the place
    return number != 0 ? number : 1;
}

std::uint64_t NumberOfHostName(std::string_view spelled)
{
    const bool ascii = std::ranges::all_of(spelled, [](char c) { return static_cast<signed char>(c) >= 0; });
    return ascii && !MayHoldStandIn(spelled) ? NumberOfName(spelled) : NumberOfName(NameFromUtf8(spelled));
}

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
    NameNumbers Numbers;
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

void ReadAgain(const std::string& folder, FolderNames& names, const FolderTimes& times, int& fault)
{
    const Steady::time_point start = Steady::now();
    names.Numbers.Clear();
    names.Read = ReadNames(folder, fault,
                           [&](std::string_view spelled) { names.Numbers.Add(NumberOfHostName(spelled)); });
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const std::chrono::nanoseconds age(Nanoseconds(now) - std::max(times.Written, times.Changed));
    names.Settled = age > CoarsestStep;
    names.Times = times;
    names.ReadAt = Steady::now();
    names.Trust = std::max<Steady::duration>(ShortTrust, TrustByReading * (names.ReadAt - start));
}

// A single lookup does not pay for remembering.
std::string LookOnce(const std::string& folder, std::string_view name, int& fault)
{
    constexpr std::size_t LongestUtf8 = 3; // bytes of one CP1252 character
    const bool anyLength = MayHoldStandIn(name);
    std::string found;
    const bool whole = ReadNames(folder, fault, [&](std::string_view spelled) {
        if (!anyLength && (spelled.size() < name.size() || spelled.size() > name.size() * LongestUtf8))
            return;
        if (EqualIgnoringCase(NameFromUtf8(spelled), name) && (found.empty() || spelled < found))
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
    const bool good =
        names.Read && names.Times == times && (names.Settled || Steady::now() - names.ReadAt < names.Trust);
    if (!good)
        ReadAgain(folder, names, times, fault);
    const bool isNew = names.Read && !names.Numbers.Has(NumberOfName(name));
    return isNew || !names.Read ? std::string() : LookOnce(folder, name, fault);
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
        names->second.Numbers.Add(NumberOfHostName(newName));
}

} // namespace kv
