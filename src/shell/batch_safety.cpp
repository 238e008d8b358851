// What is left to do of a batch, kept in a file beside it. The file is replaced in one step each time,
// and is on the disk before the caller goes on. Relies on the folder being writable; leaves BATCH.RUN
// while a batch runs, and BATCH.OLD for the operator when one did not come to its end.
#include "shell/batch_safety.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "shell/batch_file.h"
#include "state/report.h"

namespace kv {

namespace {

std::string PathIn(std::string_view folder, std::string_view name)
{
    return std::string(folder) + std::string(name);
}

// The lines of `path` go behind those that BATCH.OLD holds, so that none is lost.
bool MoveLines(const std::string& path, const std::string& lines, const std::string& place)
{
    std::string text;
    switch (ReadIfThere(place, text).Is) {
    case Presence::There:
        break;
    case Presence::NotThere:
        return RenameFile(path, place).Ok() && FlushFiles().Ok();
    case Presence::CannotTell:
        return false;
    }
    if (!text.empty() && text.back() != '\n')
        text += LineEnd;
    if (!ReplaceFile(place, text + lines).Ok() || !FlushFiles().Ok())
        return false;
    return DeleteFile(path).Ok();
}

} // namespace

bool KeepBatchLines(std::string_view folder, const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += line;
        text += LineEnd;
    }
    // The file that stands may belong to whoever wrote the batch and be closed to this program; so it
    // gives way to a new one, and is not asked whether it may be written.
    StagedFile staged;
    if (!StageFile(PathIn(folder, "BATCH.NEW"), text, staged).Ok())
        return false;
    staged.Place = ToHostPath(PathIn(folder, BatchRunFile));
    return MoveStaged(staged).Ok() && FlushFiles().Ok();
}

void DropBatchLines(std::string_view folder)
{
    static_cast<void>(DeleteFile(PathIn(folder, BatchRunFile))); // one that stays is told at the next start
}

std::string SetUnfinishedBatchAside(std::string_view folder)
{
    const std::string path = PathIn(folder, BatchRunFile);
    const std::string place = PathIn(folder, BatchOldFile);
    std::string contents;
    const FileAnswer answer = ReadIfThere(path, contents);
    if (answer.Is == Presence::NotThere)
        return {};
    if (answer.Is == Presence::CannotTell)
        return "Unfinished batch in " + ShownPath(path) + " cannot be read: " + answer.Why.Cause;
    const std::vector<BatchLine> lines = BatchLines(contents);
    const auto count = std::count_if(lines.begin(), lines.end(),
                                     [](const BatchLine& line) { return line.Kind != BatchLineKind::Blank; });
    const bool moved = MoveLines(path, contents, place);
    return "Unfinished batch: " + std::to_string(count) + " lines kept in " + ShownPath(moved ? place : path);
}

void TellUnfinishedBatch(std::string_view folder)
{
    const std::string line = SetUnfinishedBatchAside(folder);
    if (line.empty())
        return;
    ReportMessage(1, line);
    ReportMessage(2, "");
}

} // namespace kv
