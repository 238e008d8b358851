// Private-profile files, the same on every host, with the manners of the Windows calls that wrote the
// shops' files: names without case, the first section and the first key of a name win. Those calls write
// in place, where a reader or a crash meets half a file; here a write changes one line, leaves every other
// byte and replaces the file whole. Reading takes the whole file each time: it is small, and another
// program may have changed it.
#include "platform/ini_file.h"

#include <algorithm>
#include <unordered_map>

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::uint64_t LongestIniFile = 16 * 1024 * 1024; // bytes; no shop's is near it
constexpr std::string_view Blanks = " \t";

std::string_view WithoutBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) + 1 - first);
}

// One line of the file: its text without the line end, and where the next one starts.
struct IniLine {
    std::string_view Text;
    std::size_t Start = 0;
    std::size_t Next = 0;
};

bool TakeLine(std::string_view file, std::size_t at, IniLine& line)
{
    if (at >= file.size())
        return false;
    const std::size_t feed = file.find('\n', at);
    const std::size_t end = feed == std::string_view::npos ? file.size() : feed;
    line.Start = at;
    line.Next = feed == std::string_view::npos ? file.size() : feed + 1;
    line.Text = file.substr(at, end - at);
    if (!line.Text.empty() && line.Text.back() == '\r')
        line.Text.remove_suffix(1);
    return true;
}

bool IsSectionLine(std::string_view line, std::string_view& name)
{
    line = WithoutBlanks(line);
    if (line.empty() || line[0] != '[')
        return false;
    name = WithoutBlanks(line.substr(1, line.find(']') - 1)); // without a bracket: all that follows
    return true;
}

// The name of the key on a line; false for a comment and any other line.
bool HasKeyName(std::string_view line, std::string_view& name)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return false;
    name = WithoutBlanks(line.substr(0, equals));
    return !BeginsWith(name, ";");
}

bool IsKeyLine(std::string_view line, std::string_view key)
{
    std::string_view name;
    return HasKeyName(line, name) && EqualIgnoringCase(name, key);
}

std::string_view ValueOf(std::string_view keyLine)
{
    return WithoutBlanks(keyLine.substr(keyLine.find('=') + 1));
}

// All keys of a section by their upper-cased names; the first of a name counts, as in FindPlace.
using SectionKeys = std::unordered_map<std::string, std::string_view>;

SectionKeys KeysOf(std::string_view file, std::string_view section)
{
    section = WithoutBlanks(section);
    SectionKeys keys;
    bool inside = false;
    IniLine line;
    for (std::size_t at = 0; TakeLine(file, at, line); at = line.Next) {
        std::string_view name;
        if (IsSectionLine(line.Text, name)) {
            if (inside)
                break;
            inside = EqualIgnoringCase(name, section);
        } else if (inside && HasKeyName(line.Text, name)) {
            keys.emplace(UpperCase(name), ValueOf(line.Text));
        }
    }
    return keys;
}

// Where a section and a key stand in a file's text.
struct IniPlace {
    bool HasSection = false;
    bool HasKey = false;
    IniLine Line;               // of the key
    std::size_t SectionEnd = 0; // behind the last line of the section that is not blank
};

IniPlace FindPlace(std::string_view file, std::string_view section, std::string_view key)
{
    section = WithoutBlanks(section);
    key = WithoutBlanks(key);
    IniPlace place;
    IniLine line;
    for (std::size_t at = 0; TakeLine(file, at, line); at = line.Next) {
        std::string_view name;
        const bool header = IsSectionLine(line.Text, name);
        if (header && place.HasSection)
            break;
        if (header)
            place.HasSection = EqualIgnoringCase(name, section);
        if (!place.HasSection)
            continue;
        if (!WithoutBlanks(line.Text).empty())
            place.SectionEnd = line.Next;
        if (!header && IsKeyLine(line.Text, key)) {
            place.HasKey = true;
            place.Line = line;
            break;
        }
    }
    return place;
}

// The line end of the file's first line; a new file gets that of the system these files come from.
std::string_view LineEndOf(std::string_view file)
{
    const std::size_t feed = file.find('\n');
    if (feed == std::string_view::npos || (feed > 0 && file[feed - 1] == '\r'))
        return "\r\n";
    return "\n";
}

std::string WithNewSection(std::string_view file, std::string_view section, std::string_view entry)
{
    const std::string_view lineEnd = LineEndOf(file);
    std::string text(file);
    if (!text.empty() && text.back() != '\n')
        text += lineEnd;
    const bool endsBlank = text.empty() || text.ends_with("\n\n") || text.ends_with("\n\r\n");
    if (!endsBlank)
        text += lineEnd;
    return text.append("[").append(section).append("]").append(lineEnd).append(entry).append(lineEnd);
}

std::string WithNewKey(std::string_view file, std::size_t at, std::string_view entry)
{
    const std::string_view lineEnd = LineEndOf(file);
    std::string text(file.substr(0, at));
    if (text.back() != '\n')
        text += lineEnd;
    return text.append(entry).append(lineEnd).append(file.substr(at));
}

std::string WithNewValue(std::string_view file, const IniLine& line, std::string_view value)
{
    const std::size_t valueAt = line.Start + line.Text.find('=') + 1;
    std::string text(file.substr(0, valueAt));
    return text.append(value).append(file.substr(line.Start + line.Text.size()));
}

// A value is one line; what would tear the file apart ends it.
std::string_view OneLine(std::string_view value)
{
    return value.substr(0, value.find_first_of(std::string_view("\r\n\0", 3)));
}

std::string WithEntry(std::string_view file, std::string_view section, const ProfileEntry& entry)
{
    const std::string_view value = OneLine(entry.Value);
    const IniPlace place = FindPlace(file, section, entry.Key);
    if (place.HasKey)
        return WithNewValue(file, place.Line, value);
    const std::string line = std::string(entry.Key).append("=").append(value);
    if (place.HasSection)
        return WithNewKey(file, place.SectionEnd, line);
    return WithNewSection(file, section, line);
}

std::string CutTo(std::size_t size, std::string_view value)
{
    return std::string(value.substr(0, size > 0 ? size - 1 : 0));
}

} // namespace

FileAnswer ReadProfileText(std::string_view path, std::string& text)
{
    return ReadIfThere(path, text, LongestIniFile);
}

void TakeProfileStrings(std::string_view text, std::string_view section, std::vector<ProfileEntry>& entries,
                        std::string_view missing, std::size_t size)
{
    const SectionKeys keys = KeysOf(text, section);
    for (ProfileEntry& entry : entries) {
        const auto key = keys.find(UpperCase(WithoutBlanks(entry.Key)));
        entry.Value = CutTo(size, key == keys.end() ? missing : key->second);
    }
}

FileAnswer ReadProfileString(std::string_view section, std::string_view key, std::string_view missing,
                             std::size_t size, std::string_view path, std::string& value)
{
    std::vector<ProfileEntry> entries = {{std::string(key), value}};
    const FileAnswer answer = ReadProfileStrings(section, entries, missing, size, path);
    value = entries[0].Value;
    return answer;
}

FileOutcome WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                               std::string_view path)
{
    return WriteProfileStrings(section, {{std::string(key), std::string(value)}}, path);
}

FileAnswer ReadProfileStrings(std::string_view section, std::vector<ProfileEntry>& entries,
                              std::string_view missing, std::size_t size, std::string_view path)
{
    std::string text;
    const FileAnswer answer = ReadProfileText(path, text);
    if (answer.Is != Presence::CannotTell)
        TakeProfileStrings(text, section, entries, missing, size);
    return answer;
}

FileOutcome WriteProfileStrings(std::string_view section, const std::vector<ProfileEntry>& entries,
                                std::string_view path)
{
    std::string file;
    const FileAnswer answer = ReadProfileText(path, file);
    if (answer.Is == Presence::CannotTell)
        return answer.Why;
    std::string changed = file;
    for (const ProfileEntry& entry : entries)
        changed = WithEntry(changed, section, entry);
    if (answer.Is == Presence::There && changed == file)
        return {};
    return ReplaceFile(path, changed);
}

} // namespace kv
