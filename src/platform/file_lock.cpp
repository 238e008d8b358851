// The names and texts of lock files, the same on every host.
#include "platform/file_lock.h"

#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/this_process.h"

namespace kv {

// Without case, since two processes may spell the file in two ways.
std::string LockFileName(std::string_view fileName)
{
    return ".kv-" + UpperCase(fileName) + ".lock";
}

std::string LockHolderText()
{
    return FileNameOf(ExeName()) + ", process " + WholeText(ProcessNumber()) + " on " + MachineName() + "\n";
}

std::string HolderOf(std::string_view lockFileText)
{
    const std::string_view line = lockFileText.substr(0, lockFileText.find('\n'));
    return line.empty() ? "another process" : std::string(line);
}

} // namespace kv
