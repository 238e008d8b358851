// What is left to do of a batch, kept in a file beside it. The file is replaced in one step each time,
// and is on the disk before the caller goes on. Relies on the folder being writable; leaves BATCH.RUN
// while a batch runs, and BATCH.OLD for the operator when one did not come to its end.
#include "shell/batch_safety.h"

#include <algorithm>
#include <map>
#include <set>

#include "job/job_rows.h"
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

// When it fails the lines are where they were.
FileOutcome MoveLines(const std::string& path, const std::string& lines, const std::string& place)
{
    std::string old;
    const FileAnswer answer = ReadIfThere(place, old);
    if (answer.Is == Presence::CannotTell)
        return answer.Why;
    const bool isFree = answer.Is == Presence::NotThere;
    FileOutcome outcome = isFree ? RenameFile(path, place) : ReplaceFile(place, JoinedBatches(old, lines));
    if (outcome.Ok())
        outcome = FlushFiles();
    if (outcome.Ok() && !isFree)
        static_cast<void>(DeleteFile(path)); // one that stays adds nothing when it is set aside again
    return outcome;
}

long long CountOfLines(const std::vector<BatchLine>& lines)
{
    return std::count_if(lines.begin(), lines.end(),
                         [](const BatchLine& line) { return line.Kind != BatchLineKind::Blank; });
}

bool HoldsJob(const std::vector<BatchLine>& lines)
{
    return std::any_of(lines.begin(), lines.end(),
                       [](const BatchLine& line) { return line.Kind == BatchLineKind::Job; });
}

void AddIdentities(std::string_view folder, const std::string& text, std::set<std::string>& identities)
{
    std::map<std::string, int> equal;
    CountJobs(text, equal);
    BatchSwitches switches;
    for (const BatchLine& line : BatchLines(text)) {
        if (line.Kind == BatchLineKind::Command)
            FollowBatchCommand(line.Text, switches);
        else if (line.Kind == BatchLineKind::Job)
            identities.insert(
                BatchLineIdentity(folder, line, switches, --equal[BatchLineKey(line, switches)]));
    }
}

// Lines that are in none of the two files any more are done, whatever the program did last.
void ForgetDoneLines(std::string_view folder, const std::string& unfinished)
{
    std::string old;
    if (ReadIfThere(PathIn(folder, BatchOldFile), old).Is == Presence::CannotTell)
        return;
    std::set<std::string> open;
    AddIdentities(folder, unfinished, open);
    AddIdentities(folder, old, open);
    KeepOpenIdentities(BatchIdentityHead(folder), open);
}

// Whoever ended the batch has reported it, perhaps to nobody. Empty when no job waits there.
MessageLine LeftBatchLine(std::string_view folder)
{
    const std::string path = PathIn(folder, BatchOldFile);
    std::string contents;
    const FileAnswer answer = ReadIfThere(path, contents);
    if (answer.Is == Presence::CannotTell)
        return {Message::UnfinishedBatchUnread, {{"file", ShownPath(path)}, {"cause", answer.Why.Cause}}};
    const std::vector<BatchLine> lines = BatchLines(contents);
    if (!HoldsJob(lines))
        return {};
    return {Message::EarlierBatchWaits, {{"count", CountOfLines(lines)}, {"file", ShownPath(path)}}};
}

} // namespace

FileOutcome KeepBatchLines(std::string_view folder, const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += line;
        text += LineEnd;
    }
    // The file that stands may belong to whoever wrote the batch and be closed to this program; so it
    // gives way to a new one, and is not asked whether it may be written.
    StagedFile staged;
    FileOutcome outcome = StageFile(PathIn(folder, "BATCH.NEW"), text, staged);
    if (!outcome.Ok())
        return outcome;
    staged.Place = ToHostPath(PathIn(folder, BatchRunFile));
    outcome = MoveStaged(staged);
    return outcome.Ok() ? FlushFiles() : outcome;
}

FileOutcome DropBatchLines(std::string_view folder)
{
    return DeleteFile(PathIn(folder, BatchRunFile));
}

MessageLine SetUnfinishedBatchAside(std::string_view folder, const BatchAsideMessages& messages)
{
    const std::string path = PathIn(folder, BatchRunFile);
    const std::string place = PathIn(folder, BatchOldFile);
    std::string contents;
    const FileAnswer answer = ReadIfThere(path, contents);
    if (answer.Is == Presence::NotThere)
        return {};
    if (answer.Is == Presence::CannotTell)
        return {Message::UnfinishedBatchUnread, {{"file", ShownPath(path)}, {"cause", answer.Why.Cause}}};
    const std::vector<BatchLine> lines = BatchLines(contents);
    if (!HoldsJob(lines)) {
        ForgetDoneLines(folder, contents);
        static_cast<void>(DropBatchLines(folder)); // one that stays holds no job
        return {};
    }
    const FileOutcome moved = MoveLines(path, contents, place);
    ForgetDoneLines(folder, contents);
    const MessageValue number("count", CountOfLines(lines));
    if (moved.Ok())
        return {messages.Kept, {number, {"file", ShownPath(place)}}};
    return {messages.Left,
            {number, {"file", ShownPath(path)}, {"old", ShownPath(place)}, {"cause", moved.Cause}}};
}

void TellUnfinishedBatch(std::string_view folder)
{
    MessageLine line = SetUnfinishedBatchAside(folder);
    if (line.Empty())
        line = LeftBatchLine(folder);
    if (line.Empty())
        return;
    Tell(line);
    ReportMessage(2, "");
}

} // namespace kv
