// Private-profile files by the calls of the system, which take outer blanks and a pair of quotes
// off a value and keep the other lines of the file. They write in place, not beside it.
#include "platform/ini_file.h"

#include <windows.h>
// That header renames the function of ours.
#undef WriteProfileString

#include "platform/paths.h"
#include "platform/windows/wide_text.h"

namespace kv {

std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view missing,
                              std::size_t size, std::string_view path)
{
    std::wstring value(size, L'\0');
    const DWORD length = GetPrivateProfileStringW(
        WideFromAnsi(section).c_str(), WideFromAnsi(key).c_str(), WideFromAnsi(missing).c_str(), value.data(),
        static_cast<DWORD>(size), WideFromAnsi(ToHostPath(path)).c_str());
    return AnsiFromWide(std::wstring_view(value).substr(0, length));
}

bool WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        std::string_view path)
{
    return WritePrivateProfileStringW(WideFromAnsi(section).c_str(), WideFromAnsi(key).c_str(),
                                      WideFromAnsi(value).c_str(),
                                      WideFromAnsi(ToHostPath(path)).c_str()) != 0;
}

// The system keeps the file that was used last in memory.
void ReadProfileStrings(std::string_view section, std::vector<ProfileEntry>& entries,
                        std::string_view missing, std::size_t size, std::string_view path)
{
    for (ProfileEntry& entry : entries)
        entry.Value = ReadProfileString(section, entry.Key, missing, size, path);
}

bool WriteProfileStrings(std::string_view section, const std::vector<ProfileEntry>& entries,
                         std::string_view path)
{
    bool written = true;
    for (const ProfileEntry& entry : entries)
        written = WriteProfileString(section, entry.Key, entry.Value, path) && written;
    return written;
}

} // namespace kv
