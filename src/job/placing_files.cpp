// What index, notes, hand-over and cut list become. Changes can be worked out anew, since another process may
// have changed a file in between; so it is settled under the lock. Until the first move a failure leaves
// every old file whole.
#include "job/placing_set.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include "job/job_rows.h"
#include "platform/clock.h"
#include "platform/run_error.h"
#include "writers/installation_files.h"

namespace kv {

namespace {

double SettlingSeconds = 0;

// No other program holds the index. Asked under the installation's lock alone, since processes that ask at
// the same moment find each other; a control that reads it is done within half a second.
FileOutcome CheckFree(const std::string& path)
{
    constexpr int mostTries = 25;
    FileOutcome outcome = CheckWritable(path);
    for (int tries = 1; outcome.Number == ErrorPermission && tries < mostTries; ++tries) {
        PauseSeconds(TrySeconds);
        outcome = CheckWritable(path);
    }
    return outcome;
}

void GatherFiles(JobSet& set)
{
    std::map<std::pair<ChangeKind, std::string>, SetFile> files;
    for (std::size_t job = 0; job < set.Jobs.size(); ++job) {
        for (FileChange& change : set.Jobs[job].Changes) {
            const bool out = change.Kind >= ChangeKind::CutList ? set.RowsOut[job] : !set.Faults[job].empty();
            if (out)
                continue;
            SetFile& file = files[{change.Kind, change.Path}];
            file.Kind = change.Kind;
            file.Path = change.Path;
            file.Installation = change.Installation;
            file.Jobs.push_back(job);
            file.Changes.push_back(&change);
        }
    }
    for (auto& [key, file] : files)
        set.Files.push_back(std::move(file));
}

// The rows that the same jobs wrote before they were interrupted.
FileOutcome FindEarlierRows(const JobSet& set, const SetFile& file)
{
    RowsByJob rows;
    bool asked = false;
    for (std::size_t i = 0; i < file.Changes.size(); ++i) {
        const JobOutput& job = set.Jobs[file.Jobs[i]];
        const auto mark = std::ranges::find(job.Changes, ChangeKind::JobRows, &FileChange::Kind);
        if (mark == job.Changes.end())
            continue;
        std::string text;
        if (!std::exchange(asked, true)) {
            const FileAnswer answer = ReadIfThere(JobRowsPath(file.Path), text);
            if (answer.Is == Presence::CannotTell)
                return answer.Why;
            rows = RowsOf(text);
        }
        const auto row = rows.find(mark->Root);
        file.Changes[i]->Earlier = row == rows.end() ? std::string() : row->second;
    }
    return {};
}

// What was tried within the drawing serves when it is what the file becomes.
FileOutcome StageText(SetFile& file, const std::string& text)
{
    file.Mark = MarkOf(text);
    for (FileChange* const change : file.Changes) {
        if (change->Staged.Aside.empty())
            continue;
        if (file.Staged.Aside.empty() && change->Mark == file.Mark)
            std::swap(file.Staged, change->Staged);
        else
            DropStaged(change->Staged);
    }
    return file.Staged.Aside.empty() ? StageFile(file.Path, text, file.Staged) : FileOutcome{};
}

void LeaveBrokenIndex(JobSet& set, const SetFile& file, std::size_t size)
{
    ReportBrokenIndex(file.Path, size);
    for (const std::size_t job : file.Jobs)
        set.Unlisted[job] = true;
}

FileOutcome SettleFile(JobSet& set, SetFile& file)
{
    std::string text;
    const FileAnswer answer = ReadIfThere(file.Path, text);
    if (answer.Is == Presence::CannotTell)
        return answer.Why;
    if (file.Kind == ChangeKind::Index) {
        if (answer.Is == Presence::NotThere)
            return {ErrorFileNotFound, "is not there any more"};
        FileOutcome outcome = CheckFree(file.Path);
        if (!outcome.Ok())
            return outcome;
    }
    if (file.Kind == ChangeKind::CutList) {
        FileOutcome outcome = FindEarlierRows(set, file);
        if (!outcome.Ok())
            return outcome;
    }
    const std::size_t size = text.size();
    std::optional<std::string> old;
    if (answer.Is == Presence::There)
        old = std::move(text);
    const std::vector<const FileChange*> changes(file.Changes.begin(), file.Changes.end());
    const std::optional<std::string> changed = file.Changes[0]->Changed(std::move(old), changes);
    if (changed)
        return StageText(file, *changed);
    if (file.Kind == ChangeKind::Index)
        LeaveBrokenIndex(set, file, size);
    return {};
}

// False when a drawing fell out: the rest is to be settled again.
bool SettleGathered(JobSet& set)
{
    for (SetFile& file : set.Files) {
        const FileOutcome outcome = SettleFile(set, file);
        if (outcome.Ok())
            continue;
        if (file.Kind == ChangeKind::Index)
            WarnOfIndex(file.Path);
        FailJobsOf(set, file, AboutFile(file.Path, outcome));
        return false;
    }
    return true;
}

bool SettleFiles(JobSet& set)
{
    DropSetFiles(set);
    GatherFiles(set);
    const auto start = std::chrono::steady_clock::now();
    const bool all = SettleGathered(set);
    SettlingSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return all;
}

bool FlushSet(JobSet& set)
{
    std::vector<StagedFile*> staged;
    std::vector<std::pair<std::size_t, const ProgramOutput*>> programs;
    for (std::size_t job = 0; job < set.Jobs.size(); ++job) {
        for (ProgramOutput& program : set.Jobs[job].Programs) {
            if (program.Staged.Aside.empty())
                continue;
            staged.push_back(&program.Staged);
            programs.emplace_back(job, &program);
        }
    }
    for (SetFile& file : set.Files)
        staged.push_back(&file.Staged);
    const std::vector<FileOutcome> outcomes = FlushStaged(staged);
    bool all = true;
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        if (outcomes[i].Ok())
            continue;
        all = false;
        if (i < programs.size())
            FailOne(set, programs[i].first, AboutFile(programs[i].second->Path, outcomes[i]));
        else
            FailJobsOf(set, set.Files[i - programs.size()],
                       AboutFile(set.Files[i - programs.size()].Path, outcomes[i]));
    }
    return all;
}

} // namespace

double LastSettlingSeconds()
{
    return SettlingSeconds;
}

// Each round that does not end it takes a drawing out.
void SettleAndFlush(JobSet& set)
{
    while (!SettleFiles(set) || !FlushSet(set)) {
    }
}

} // namespace kv
