// Patterns and short names of a listing. Old file systems keep a second name of eight and three
// characters for each file; patterns were compared with it too, which is why "*.DXF" counts a file that
// ends in ".dxfx". Here no host is relied on to have such names: they are made anew for each listing, in
// its order, so that the same files always get the same ones.
#include "platform/directory_names.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "platform/stand_ins.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t ShortBase = 8;
constexpr std::size_t ShortExtension = 3;
constexpr std::size_t Nowhere = std::string_view::npos;

// "*" stands for any characters, "?" for one.
bool Matches(std::string_view name, std::string_view pattern)
{
    std::size_t at = 0, in = 0;
    std::size_t star = Nowhere, behindStar = 0; // the last star, and what it leaves of the name
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            behindStar = at;
        } else if (in < pattern.size() &&
                   (pattern[in] == '?' || UpperChar(pattern[in]) == UpperChar(name[at]))) {
            ++in;
            ++at;
        } else if (star != Nowhere) {
            in = star + 1;
            at = ++behindStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == Nowhere;
}

// Without extension, blanks and points; upper case.
std::string SqueezedBase(std::string_view name)
{
    std::string base;
    for (const char c : name.substr(0, name.rfind('.'))) {
        if (c != ' ' && c != '.')
            base += UpperChar(c);
    }
    return base;
}

std::string ExtensionOf(std::string_view name)
{
    const std::size_t point = name.rfind('.');
    if (point == Nowhere || name.size() - point - 1 > ShortExtension)
        return {};
    return std::string(name.substr(point + 1));
}

struct ShortNames {
    std::unordered_set<std::string> Taken;            // by bases that fit
    std::unordered_map<std::string, Long> LastNumber; // by stem and its first number; all bases share it
};

// The base's first characters, "~" and the next free number; more digits leave fewer characters.
std::string NumberedName(std::string_view base, ShortNames& names)
{
    Long first = 1;
    for (std::size_t digits = 1;; ++digits, first *= 10) {
        const std::string stem = std::string(base.substr(0, ShortBase - 1 - digits)) + '~';
        Long& last = names.LastNumber.try_emplace(stem + WholeText(first), first - 1).first->second;
        while (last + 1 < first * 10) {
            std::string name = stem + WholeText(++last);
            if (!names.Taken.contains(name))
                return name;
        }
    }
}

} // namespace

bool HasWildcard(std::string_view name)
{
    return name.find_first_of("*?") != Nowhere;
}

bool MatchesPattern(std::string_view name, std::string_view pattern)
{
    if (Matches(name, pattern))
        return true;
    const std::size_t point = name.rfind('.');
    if (point == Nowhere) // "*.*" counts every name
        return pattern.ends_with(".*") && Matches(name, pattern.substr(0, pattern.size() - 2));
    const std::size_t shortEnd = point + 1 + ShortExtension;
    const bool anyBase = pattern.substr(0, pattern.rfind('.')).find('*') != Nowhere;
    return anyBase && name.size() > shortEnd && Matches(name.substr(0, shortEnd), pattern);
}

bool CanBeNamed(std::string_view name)
{
    return name.find_first_of("?\\") == Nowhere;
}

std::string_view CauseOfUnnamed(std::string_view hostName)
{
    return CanBeNamed(hostName) ? "its name cannot be told from that of another file"
                                : "its name holds a question mark or a backslash";
}

void FinishListing(std::vector<DirectoryEntry>& entries, Long count)
{
    std::sort(entries.begin(), entries.end(),
              [](const DirectoryEntry& a, const DirectoryEntry& b) { return a.LongName < b.LongName; });
    entries.resize(std::min(entries.size(), static_cast<std::size_t>(std::max<Long>(count, 0))));
    ShortNames names;
    std::vector<std::size_t> numbered; // bases that fit come first: they keep their name
    for (std::size_t i = 0; i < entries.size(); ++i) {
        DirectoryEntry& entry = entries[i];
        entry.Extension = ExtensionOf(entry.LongName);
        entry.ShortName = SqueezedBase(NameForMachines(entry.LongName));
        const bool fits = !entry.ShortName.empty() && entry.ShortName.size() <= ShortBase;
        if (!fits || !names.Taken.insert(entry.ShortName).second)
            numbered.push_back(i);
    }
    for (const std::size_t i : numbered)
        entries[i].ShortName = NumberedName(entries[i].ShortName, names);
}

} // namespace kv
