#include "platform/needed_files.h"

#include "platform/paths.h"
#include "platform/run_error.h"

namespace kv {

bool IsThere(std::string_view path, const FileAnswer& answer)
{
    switch (answer.Is) {
    case Presence::There:
        return true;
    case Presence::NotThere:
        return false;
    case Presence::CannotTell:
        break;
    }
    ThrowFault(path, answer.Why);
}

void ThrowFault(std::string_view path, const FileOutcome& outcome)
{
    throw RunError{outcome.Number, ShownPath(path) + ": " + outcome.Cause};
}

void ThrowUnlessOk(std::string_view path, const FileOutcome& outcome)
{
    if (!outcome.Ok())
        ThrowFault(path, outcome);
}

bool FileIsThere(std::string_view path)
{
    return IsThere(path, AskFile(path));
}

bool FolderIsThere(std::string_view path)
{
    return IsThere(path, AskFolder(path));
}

bool ReadFileOfJob(std::string_view path, std::string& contents, std::uint64_t limit)
{
    return IsThere(path, ReadIfThere(path, contents, limit));
}

} // namespace kv
