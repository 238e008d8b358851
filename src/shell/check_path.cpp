// The path fields of Setup: what a field keeps when it is left, and the questions for folders that are
// not there. Relies on the questions and boxes of the front end; leaves the folders made that were
// agreed to, and the typed path in its field whatever was answered.
#include "platform/dialogs.h"
#include "platform/directory.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/setup_rules.h"
#include "state/report.h"

namespace kv {

namespace {

// Where the part of a path begins whose folders can be made: behind the host's root, or behind the name
// of a share ("\\server\share\"). A drive's own root is asked for like any folder.
std::size_t FirstFolder(std::string_view path)
{
    if (!path.starts_with("\\\\"))
        return path.starts_with('\\') ? 1 : 0;
    const std::size_t server = path.find('\\', 2);
    const std::size_t share = server == std::string_view::npos ? server : path.find('\\', server + 1);
    return share == std::string_view::npos ? path.size() : share + 1;
}

// Asked for each missing level; the detail says for which.
bool WantsFolder(std::string_view path, std::string_view level)
{
    const std::string detail =
        level.size() < path.size() ? "This makes the folder " + ShownPath(level) : std::string();
    return AskYesNo(ShownPath(path) + "\r\nPath Does Not Exist.\r\nDo You Wish to Create Path?", ProductName,
                    detail);
}

} // namespace

std::string CheckPath(std::string_view path)
{
    if (path.ends_with('\\'))
        path.remove_suffix(1);
    const std::string kept = std::string(path) + '\\';
    if (AskDrive(path).Is == Presence::NotThere) {
        TellInABox(Message::DriveInvalid, {{"drive", path.substr(0, 2)}}, ProductName, BoxIcon::None);
        return kept;
    }
    std::size_t start = FirstFolder(path);
    while (start < path.size()) {
        const std::size_t end = path.find('\\', start);
        const std::string_view prefix = path.substr(0, end == std::string_view::npos ? end : end + 1);
        start = prefix.size();
        const FileAnswer folder = AskFolder(prefix);
        if (folder.Is == Presence::There)
            continue;
        if (folder.Is == Presence::CannotTell) {
            TellInABox(Message::FolderUnknown, {{"folder", ShownPath(prefix)}, {"cause", folder.Why.Cause}},
                       ProductName, BoxIcon::Warning);
            break;
        }
        if (!WantsFolder(path, prefix))
            break;
        static_cast<void>(MakeFolder(prefix)); // a refusal shows at the next level, which is missing too
    }
    return kept;
}

std::string LeavePathField(std::string_view text, bool trimmed)
{
    const std::string_view field = trimmed ? Trim(text) : text;
    if (field.empty())
        return {};
    return CheckPath(WithBackslash(field));
}

std::string BrowsedPath(std::string_view chosen)
{
    return WithBackslash(chosen);
}

} // namespace kv
