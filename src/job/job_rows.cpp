// The rows that jobs of interrupted batches have written, in a file beside the cut list. Relies on the
// list's lock; leaves no file when no job is open.
#include "job/job_rows.h"

#include <charconv>
#include <functional>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "job/left_asides.h"
#include "platform/aside_names.h"
#include "platform/clock.h"
#include "platform/directory.h"
#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr int MostRowsTries = 50;
constexpr double RowsTrySeconds = 0.1;

std::string RunningIdentity;
std::map<std::string, std::string> ListOfJob; // path of the list, by identity

// Identities and rows may hold any byte, so each is led by its length.
void AppendField(std::string& text, std::string_view field)
{
    text += std::to_string(field.size());
    text += ' ';
    text += field;
    text += '\n';
}

std::optional<std::string> TakeField(std::string_view& text)
{
    std::size_t length = 0;
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), length);
    const auto at = static_cast<std::size_t>(read.ptr - text.data()) + 1; // behind the blank
    if (read.ec != std::errc() || at > text.size() || length >= text.size() - at)
        return std::nullopt;
    std::string field(text.substr(at, length));
    text.remove_prefix(at + length + 1);
    return field;
}

std::string JobRowsName(const std::string& listName)
{
    return std::string(OwnNameHead) + listName + ".rows";
}

// Under the list's lock; without it the rows stay on file.
void ForgetRows(const std::string& list, const std::function<bool(const std::string&)>& isDone)
{
    FileLock lock;
    for (int tries = 0; lock.TryLock(list).Is == LockState::Held && tries < MostRowsTries; ++tries)
        PauseSeconds(RowsTrySeconds);
    std::string text;
    const std::string path = JobRowsPath(list);
    if (!lock.IsTaken() || ReadIfThere(path, text).Is != Presence::There)
        return;
    RowsByJob rows = RowsOf(text);
    if (std::erase_if(rows, [&](const auto& row) { return isDone(row.first); }) == 0)
        return;
    if (rows.empty()) {
        (void)DeleteFile(path);
        return;
    }
    const AsideMark mark(list);
    (void)ReplaceFile(path, JobRowsText(rows));
}

std::optional<std::string> RowsWith(std::optional<std::string> text,
                                    std::span<const FileChange* const> changes)
{
    RowsByJob rows = RowsOf(text.value_or(""));
    for (const FileChange* const change : changes)
        rows.insert_or_assign(change->Root, change->Text);
    return JobRowsText(rows);
}

} // namespace

std::string JobRowsPath(const std::string& list)
{
    return FolderOf(list) + JobRowsName(FileNameOf(list));
}

RowsByJob RowsOf(std::string_view text)
{
    RowsByJob rows;
    while (!text.empty()) {
        std::optional<std::string> identity = TakeField(text);
        std::optional<std::string> row = identity ? TakeField(text) : std::nullopt;
        if (!row)
            break;
        rows.insert_or_assign(std::move(*identity), std::move(*row));
    }
    return rows;
}

std::string JobRowsText(const RowsByJob& rows)
{
    std::string text;
    for (const auto& [identity, row] : rows) {
        AppendField(text, identity);
        AppendField(text, row);
    }
    return text;
}

FileChange JobRowsChange(const FileChange& list, const std::string& identity)
{
    FileChange change;
    change.Kind = ChangeKind::JobRows;
    change.Changed = RowsWith;
    change.Installation = list.Installation;
    change.Path = JobRowsPath(list.Path);
    change.Text = list.Text;
    change.Root = identity;
    ListOfJob.insert_or_assign(identity, list.Path);
    return change;
}

void SetJobIdentity(std::string identity)
{
    RunningIdentity = std::move(identity);
}

const std::string& JobIdentity()
{
    return RunningIdentity;
}

void ForgetJobIdentities(std::span<const std::string> identities)
{
    std::map<std::string, std::set<std::string>> byList;
    for (const std::string& identity : identities) {
        const auto found = ListOfJob.find(identity);
        if (found == ListOfJob.end())
            continue;
        byList[found->second].insert(identity);
        ListOfJob.erase(found);
    }
    for (const auto& [list, done] : byList)
        ForgetRows(list, [&done = done](const std::string& identity) { return done.contains(identity); });
}

void KeepOpenIdentities(std::string_view head, const std::set<std::string>& open)
{
    const std::string folder = WithBackslash(Trim(Config.PTSPath));
    constexpr Long most = 1000;
    std::vector<DirectoryEntry> files;
    (void)ReadFileX(folder + JobRowsName("*"), most, files); // what cannot be listed does no harm yet
    const std::size_t around = JobRowsName("").size();
    const std::size_t before = OwnNameHead.size();
    for (const DirectoryEntry& file : files) {
        const std::string list = file.LongName.substr(before, file.LongName.size() - around);
        ForgetRows(folder + list, [&](const std::string& identity) {
            return identity.starts_with(head) && !open.contains(identity);
        });
    }
}

} // namespace kv
