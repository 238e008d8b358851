// What a file may be called. Relies on nothing of the host: the rules of Windows hold everywhere.
#include "platform/file_names.h"

#include <algorithm>

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view Forbidden = "\"<>|?*:/\\";
constexpr std::string_view FolderEnds = "\\/:";
constexpr char Delete = '\x7F'; // the control character above the letters
constexpr std::string_view Devices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};
constexpr std::string_view NumberedDevices[] = {"COM", "LPT"};
constexpr std::string_view DeviceDigits = "0123456789\xB9\xB2\xB3"; // raised digits count too

bool IsForbidden(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == Delete || Forbidden.find(c) != std::string_view::npos;
}

// A point and what stands behind it does not make another file of a device, nor do blanks.
bool IsDevice(std::string_view name)
{
    const std::string word = UpperCase(Trim(name.substr(0, name.find('.'))));
    if (std::find(std::begin(Devices), std::end(Devices), word) != std::end(Devices))
        return true;
    for (const std::string_view head : NumberedDevices)
        if (word.size() == head.size() + 1 && BeginsWith(word, head) &&
            DeviceDigits.find(word.back()) != std::string_view::npos)
            return true;
    return false;
}

} // namespace

std::string NameForFile(std::string_view name)
{
    std::string made(name);
    std::replace_if(made.begin(), made.end(), IsForbidden, '_');
    if (IsDevice(made))
        made.insert(std::min(made.find('.'), made.size()), "_");
    return made;
}

std::string_view FolderPartOf(std::string_view text)
{
    const std::size_t last = text.find_last_of(FolderEnds);
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

} // namespace kv
