// Which drawings of a set go on, and the locks under which they do. A drawing that fails takes what it has
// given out of the set. Relies on an order of the locks that is the same for all processes, so that none
// waits for the other; leaves the moves of ended processes finished.
#include "job/placing_set.h"

#include <algorithm>
#include <map>
#include <utility>

#include "job/installation.h"
#include "job/placing.h"
#include "platform/clock.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double ToldSeconds = 10;   // a wait that is reported
constexpr double AbortedSeconds = 2; // longest wait of a run that is aborted

// In one order for all processes: the host's paths of the anchors.
std::map<std::string, std::string> InstallationsOf(const JobSet& set)
{
    std::map<std::string, std::string> installations;
    const auto take = [&](const std::string& installation) {
        installations.insert_or_assign(ToHostPath(AnchorOf(installation)), installation);
    };
    for (const JobOutput& job : set.Jobs) {
        for (const ProgramOutput& program : job.Programs)
            take(program.Installation);
        for (const FileChange& change : job.Changes)
            take(change.Installation);
    }
    return installations;
}

// `host` is the host's path of the anchor: an installation may be spelled in several ways.
void FailJobsIn(JobSet& set, const std::string& host, const std::string& cause)
{
    const auto isThere = [&](const auto& output) {
        return ToHostPath(AnchorOf(output.Installation)) == host;
    };
    for (std::size_t job = 0; job < set.Jobs.size(); ++job) {
        const JobOutput& output = set.Jobs[job];
        const auto change = std::ranges::find_if(output.Changes, isThere);
        const bool changes = change != output.Changes.end();
        if (!changes && std::ranges::none_of(output.Programs, isThere))
            continue;
        FailOne(set, job, cause);
        if (changes && change->Kind >= ChangeKind::CutList)
            set.RowsOut[job] = true;
    }
}

void TellWait(const std::string& anchor, const std::string& holder)
{
    const MessageLine line = {Message::InstallationInUse, {{"file", ShownPath(anchor)}, {"holder", holder}}};
    Tell(line);
    ReportMessage(2, "");
    if (Placing.Waits != nullptr)
        Placing.Waits(TextOf(line));
}

FileOutcome TakeLock(JobSet& set, const std::string& anchor)
{
    auto lock = std::make_unique<FileLock>();
    double waited = 0;
    bool told = false;
    for (;;) {
        const LockAnswer answer = lock->TryLock(anchor);
        if (answer.Is == LockState::CannotBe)
            return answer.Why;
        // Two names of one folder: the lock is ours already.
        const bool ours =
            answer.Is == LockState::Held && !set.Locks.empty() && answer.Holder == HolderOf(LockHolderText());
        if (answer.Is == LockState::Taken || ours) {
            set.Locks.push_back(std::move(lock));
            return {};
        }
        if (UserAborted() && waited >= AbortedSeconds)
            return {ErrorPermission, "aborted while it was in use by " + answer.Holder};
        if (!told && waited >= ToldSeconds) {
            told = true;
            TellWait(anchor, answer.Holder);
        }
        PauseSeconds(TrySeconds);
        waited += TrySeconds;
    }
}

} // namespace

std::string AboutFile(const std::string& path, const FileOutcome& outcome)
{
    return ShownPath(path) + ": " + outcome.Cause;
}

void FailOne(JobSet& set, std::size_t job, const std::string& cause)
{
    if (set.Faults[job].empty())
        set.Faults[job] = cause;
    for (ProgramOutput& program : set.Jobs[job].Programs)
        DropStaged(program.Staged); // one that is in its place stays there
}

void FailJobsOf(JobSet& set, const SetFile& file, const std::string& cause)
{
    for (const std::size_t job : file.Jobs) {
        FailOne(set, job, cause);
        if (file.Kind >= ChangeKind::CutList)
            set.RowsOut[job] = true;
        set.IndexFaults[job] = file.Kind == ChangeKind::Index;
    }
}

void FailAll(JobSet& set, const std::string& cause)
{
    for (std::size_t job = 0; job < set.Jobs.size(); ++job) {
        FailOne(set, job, cause);
        set.RowsOut[job] = true;
    }
}

void DropSetFiles(JobSet& set)
{
    for (SetFile& file : set.Files)
        DropStaged(file.Staged);
    set.Files.clear();
}

void EnterInstallations(JobSet& set)
{
    for (const auto& [host, installation] : InstallationsOf(set)) {
        const std::string anchor = AnchorOf(installation);
        const FileOutcome taken = TakeLock(set, anchor);
        if (!taken.Ok()) {
            FailJobsIn(set, host, AboutFile(anchor, taken));
            continue;
        }
        const FileOutcome finished = FinishMoves(anchor);
        if (!finished.Ok()) {
            FailJobsIn(set, host, "Moves of an earlier run cannot be finished: " + finished.Cause);
            continue;
        }
        set.Anchors.push_back(anchor);
    }
}

} // namespace kv
