// The parts of a backslash path. Relies on nothing of the host; the backends hold what does.
#include "platform/paths.h"

namespace kv {

std::string FileNameOf(std::string_view path)
{
    return std::string(path.substr(path.rfind('\\') + 1)); // none: npos + 1 is 0, the whole text
}

std::string FolderOf(std::string_view path)
{
    return std::string(path.substr(0, path.rfind('\\') + 1));
}

std::string WithBackslash(std::string_view folder)
{
    std::string full(folder);
    if (!full.empty() && full.back() != '\\')
        full += '\\';
    return full;
}

} // namespace kv
