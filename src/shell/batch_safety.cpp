// What is left to do of a batch, kept in a file beside it. The file is replaced in one step each time,
// and is on the disk before the caller goes on. Relies on the folder being writable; leaves BATCH.RUN
// while a batch runs, and BATCH.OLD for the operator when one did not come to its end.
#include "shell/batch_safety.h"

#include <algorithm>
#include <map>

#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "shell/batch_file.h"
#include "state/report.h"

namespace kv {

namespace {

std::string PathIn(std::string_view folder, std::string_view name)
{
    return std::string(folder) + std::string(name);
}

// Jobs by their keys, and how often they stand there. Gives the switches that hold after the last line.
BatchSwitches CountJobs(const std::string& text, std::map<std::string, int>& jobs)
{
    BatchSwitches switches;
    for (const BatchLine& line : BatchLines(text)) {
        if (line.Kind == BatchLineKind::Command)
            FollowBatchCommand(line.Text, switches);
        else if (line.Kind == BatchLineKind::Job)
            ++jobs[BatchLineKey(line, switches)];
    }
    return switches;
}

// The lines of `added` after those of `old`, each job with the switches that held for it in its own batch,
// as often as one of the two holds it: what was added before the program ended is not added again, and a
// batch that fails each time it is sent leaves its lines once.
std::string JoinedBatches(const std::string& old, const std::string& added)
{
    std::map<std::string, int> held;
    BatchSwitches now = CountJobs(old, held), wanted;
    std::string text = old, remarks;
    if (!text.empty() && text.back() != '\n')
        text += LineEnd;
    for (const BatchLine& line : BatchLines(added)) {
        if (line.Kind == BatchLineKind::Command && !FollowBatchCommand(line.Text, wanted))
            remarks.append(line.Written).append(LineEnd);
        if (line.Kind != BatchLineKind::Job || held[BatchLineKey(line, wanted)]-- > 0)
            continue;
        text += remarks + CommandsBetween(now, wanted);
        text.append(line.Written).append(LineEnd);
        remarks.clear();
        now = wanted;
    }
    return text;
}

// False: the lines are where they were.
bool MoveLines(const std::string& path, const std::string& lines, const std::string& place)
{
    std::string old;
    switch (ReadIfThere(place, old).Is) {
    case Presence::There:
        break;
    case Presence::NotThere:
        return RenameFile(path, place).Ok() && FlushFiles().Ok();
    case Presence::CannotTell:
        return false;
    }
    if (!ReplaceFile(place, JoinedBatches(old, lines)).Ok() || !FlushFiles().Ok())
        return false;
    static_cast<void>(DeleteFile(path)); // one that stays adds nothing when it is set aside again
    return true;
}

bool HoldsJob(const std::vector<BatchLine>& lines)
{
    return std::any_of(lines.begin(), lines.end(),
                       [](const BatchLine& line) { return line.Kind == BatchLineKind::Job; });
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
    static_cast<void>(DeleteFile(PathIn(folder, BatchRunFile))); // one that stays holds no job
}

std::string SetUnfinishedBatchAside(std::string_view folder, std::string_view head)
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
    if (!HoldsJob(lines)) {
        DropBatchLines(folder);
        return {};
    }
    const auto count = std::count_if(lines.begin(), lines.end(),
                                     [](const BatchLine& line) { return line.Kind != BatchLineKind::Blank; });
    const bool moved = MoveLines(path, contents, place);
    return std::string(head) + WholeText(static_cast<long long>(count)) + " lines kept in " +
           ShownPath(moved ? place : path);
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
