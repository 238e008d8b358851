// The transaction. Relies on programs that are written aside already and on changes that can be worked out
// anew, since another process may have changed a file in between; so what a file becomes is settled under
// the lock. Until the first move a failure leaves every old file whole; a drawing that fails takes what it
// has given out of the set, and the rest is settled again. Leaves the locks free and nothing aside.
#include "job/placing.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "job/installation.h"
#include "platform/clock.h"
#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "writers/installation_files.h"
#include "writers/program_writers.h"

namespace kv {

PlacingHooks Placing;

namespace {

using Steady = std::chrono::steady_clock;

constexpr std::chrono::seconds LongestUnplaced{2};
constexpr std::uint64_t MostBytesAside = std::uint64_t{64} << 20;
constexpr double TrySeconds = 0.02;  // between two tries for a lock
constexpr double ToldSeconds = 10;   // a wait that is reported
constexpr double AbortedSeconds = 2; // longest wait of a run that is aborted

long LastNumber = 0;
bool JobRuns = false; // its own failure is the run's
std::vector<std::string> FilesOfJob;
Steady::time_point FirstWaits; // when the first of the waiting drawings was done
std::uint64_t BytesWaiting = 0;
std::map<std::string, StagedFile> Markers; // of the program folders that are written into

// A file that changes once for all drawings of the set.
struct SetFile {
    ChangeKind Kind = ChangeKind::Index;
    std::string Path, Installation;
    std::vector<std::size_t> Jobs; // by change
    std::vector<FileChange*> Changes;
    StagedFile Staged;
    ContentsMark Mark;
};

struct JobSet {
    std::vector<JobOutput> Jobs;
    std::vector<std::string> Faults;  // by job; empty: none
    std::vector<bool> RowsOut;        // by job: its row of the cut list is out as well
    std::vector<bool> IndexFaults;    // by job: it is the index that cannot be written
    std::vector<SetFile> Files;       // in the order in which they reach the disk
    std::vector<std::string> Anchors; // of the installations whose locks are held
    std::vector<std::unique_ptr<FileLock>> Locks;
};

// --- What fails ---

std::string About(const std::string& path, const FileOutcome& outcome)
{
    return ShownPath(path) + ": " + outcome.Cause;
}

void Fail(JobSet& set, std::size_t job, const std::string& cause)
{
    if (set.Faults[job].empty())
        set.Faults[job] = cause;
    for (ProgramOutput& program : set.Jobs[job].Programs)
        DropStaged(program.Staged); // one that is in its place stays there
}

void FailJobsOf(JobSet& set, const SetFile& file, const std::string& cause)
{
    for (const std::size_t job : file.Jobs) {
        Fail(set, job, cause);
        if (file.Kind >= ChangeKind::CutList)
            set.RowsOut[job] = true;
        set.IndexFaults[job] = file.Kind == ChangeKind::Index;
    }
}

void FailAll(JobSet& set, const std::string& cause)
{
    for (std::size_t job = 0; job < set.Jobs.size(); ++job) {
        Fail(set, job, cause);
        set.RowsOut[job] = true;
    }
}

void DropFiles(JobSet& set)
{
    for (SetFile& file : set.Files)
        DropStaged(file.Staged);
    set.Files.clear();
}

// --- Locks ---

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
        Fail(set, job, cause);
        if (changes && change->Kind >= ChangeKind::CutList)
            set.RowsOut[job] = true;
    }
}

void TellWait(const std::string& anchor, const std::string& holder)
{
    const std::string line = ShownPath(anchor) + " is in use by " + holder + "; waiting";
    ReportMessage(1, line);
    ReportMessage(2, "");
    if (Placing.Waits != nullptr)
        Placing.Waits(line);
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

// What cannot be entered fails the drawings that need it; the others go on.
void EnterInstallations(JobSet& set)
{
    for (const auto& [host, installation] : InstallationsOf(set)) {
        const std::string anchor = AnchorOf(installation);
        const FileOutcome taken = TakeLock(set, anchor);
        if (!taken.Ok()) {
            FailJobsIn(set, host, About(anchor, taken));
            continue;
        }
        const FileOutcome finished = FinishMoves(anchor);
        if (!finished.Ok()) {
            FailJobsIn(set, host, "Moves of an earlier run cannot be finished: " + finished.Cause);
            continue;
        }
        SweepInstallation(installation);
        set.Anchors.push_back(anchor);
    }
}

// --- What the files become ---

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

FileOutcome SettleFile(const JobSet& set, SetFile& file)
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
        ReportBrokenIndex(file.Path, size);
    return {};
}

// False when a drawing fell out: the rest is to be settled again.
bool SettleFiles(JobSet& set)
{
    DropFiles(set);
    GatherFiles(set);
    for (SetFile& file : set.Files) {
        const FileOutcome outcome = SettleFile(set, file);
        if (outcome.Ok())
            continue;
        if (file.Kind == ChangeKind::Index)
            WarnOfIndex(file.Path);
        FailJobsOf(set, file, About(file.Path, outcome));
        return false;
    }
    return true;
}

// --- To the disk ---

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
            Fail(set, programs[i].first, About(programs[i].second->Path, outcomes[i]));
        else
            FailJobsOf(set, set.Files[i - programs.size()],
                       About(set.Files[i - programs.size()].Path, outcomes[i]));
    }
    return all;
}

// Each round that does not end it takes a drawing out.
void SettleAndFlush(JobSet& set)
{
    while (!SettleFiles(set) || !FlushSet(set)) {
    }
}

std::vector<PlannedMove> MovesOf(const JobSet& set)
{
    std::vector<PlannedMove> moves;
    const auto take = [&](const StagedFile& staged, const ContentsMark& mark) {
        if (!staged.Aside.empty())
            moves.push_back({staged, mark});
    };
    for (const JobOutput& job : set.Jobs) {
        for (const ProgramOutput& program : job.Programs)
            take(program.Staged, program.Mark);
    }
    for (const SetFile& file : set.Files)
        take(file.Staged, file.Mark);
    return moves;
}

// Each installation has the moves of all, so that whoever comes to one of them first finishes the set. One
// move is whole by itself.
bool WriteJournals(JobSet& set)
{
    const std::vector<PlannedMove> moves = MovesOf(set);
    if (moves.size() < 2)
        return true;
    for (const std::string& anchor : set.Anchors) {
        const FileOutcome outcome = WriteJournal(anchor, moves);
        if (!outcome.Ok()) {
            FailAll(set, About(JournalOf(anchor), outcome));
            return false;
        }
    }
    return true;
}

bool MovePrograms(JobSet& set)
{
    bool all = true;
    for (std::size_t job = 0; job < set.Jobs.size(); ++job) {
        for (ProgramOutput& program : set.Jobs[job].Programs) {
            const FileOutcome outcome = MoveStaged(program.Staged);
            if (outcome.Ok())
                continue;
            all = false;
            Fail(set, job, About(program.Path, outcome));
        }
    }
    return all;
}

void MoveFiles(JobSet& set)
{
    for (SetFile& file : set.Files) {
        const FileOutcome outcome = MoveStaged(file.Staged);
        if (outcome.Ok())
            continue;
        if (file.Kind == ChangeKind::Index)
            WarnOfIndex(file.Path);
        FailJobsOf(set, file, About(file.Path, outcome));
    }
}

void FlushMoves(JobSet& set)
{
    const FileOutcome outcome = FlushFiles();
    if (!outcome.Ok())
        FailAll(set, "Not on the disk: " + outcome.Cause);
}

void PlaceSet(JobSet& set)
{
    EnterInstallations(set);
    SettleAndFlush(set);
    if (!WriteJournals(set)) {
        DropFiles(set);
    } else {
        if (!MovePrograms(set)) { // no record of a program that did not get there
            SettleAndFlush(set);
            (void)WriteJournals(set);
        }
        MoveFiles(set);
        FlushMoves(set);
    }
    for (const std::string& anchor : set.Anchors)
        (void)DropJournal(anchor); // one that stays names files that are gone
}

// --- What becomes of the jobs ---

void FailRunningJob(const JobOutput& job, const std::string& line)
{
    ReportMessage(1, line);
    if (Run.FailedFiles.empty() || Run.FailedFiles.back() != job.Drawing)
        AddFailedFile(job.Drawing);
    Run.RunFailed = True;
    FilesOfJob.clear();
}

void FailEarlierJob(const JobOutput& job, const std::string& line)
{
    AddFailedFile(job.Drawing);
    ++Shell.FailedJobs;
    if (Placing.Unplaced != nullptr)
        Placing.Unplaced({job.Number, job.Drawing, line});
    else
        ReportMessage(1, MarkRed + line);
}

bool TellOutcomes(JobSet& set)
{
    bool all = true;
    for (std::size_t i = 0; i < set.Jobs.size(); ++i) {
        JobOutput& job = set.Jobs[i];
        if (set.Faults[i].empty()) {
            ProgramList.insert(ProgramList.end(), job.Made.begin(), job.Made.end());
            continue;
        }
        all = false;
        const std::string line = ShownPath(job.Drawing) + ": " + set.Faults[i];
        if (JobRuns && job.Number == LastNumber) // the report of the drawing goes on; the box named the index
            FailRunningJob(job, set.IndexFaults[i] ? set.Faults[i] : line);
        else
            FailEarlierJob(job, line);
    }
    return all;
}

// --- Entering an installation ---

// What an ended process has left half moved; a drawing may read it.
FileOutcome FinishIfLeft(const std::string& installation)
{
    const std::string anchor = AnchorOf(installation);
    if (AskFile(JournalOf(anchor)).Is == Presence::NotThere)
        return {};
    FileLock lock;
    if (lock.TryLock(anchor).Is != LockState::Taken)
        return {}; // who holds it is alive; what cannot be locked is told when files are to be moved
    return FinishMoves(anchor);
}

// A mark in the program folder shows that there may be copies in the folders of the letters, should this
// process end before it has moved them.
FileOutcome EnterBeforeWriting(const std::string& installation)
{
    if (Markers.contains(installation))
        return {};
    const FileOutcome outcome = FinishIfLeft(installation);
    StagedFile& marker = Markers[installation];
    if (outcome.Ok() && installation.ends_with('\\'))
        (void)StageFile(JournalOf(AnchorOf(installation)), {}, marker);
    return outcome;
}

void DropMarkers()
{
    for (auto& [installation, marker] : Markers)
        DropStaged(marker);
    Markers.clear();
}

bool IsTimeToPlace()
{
    return !Outputs.Together || BytesWaiting >= MostBytesAside ||
           Steady::now() - FirstWaits >= LongestUnplaced;
}

} // namespace

JobsTogether::JobsTogether()
{
    Outputs.Together = true;
}

JobsTogether::~JobsTogether()
{
    (void)PlaceJobs();
    Outputs.Together = false;
}

bool PlaceJobs()
{
    JobSet set;
    set.Jobs = std::exchange(Outputs.Waiting, {});
    set.Faults.resize(set.Jobs.size());
    set.RowsOut.resize(set.Jobs.size());
    set.IndexFaults.resize(set.Jobs.size());
    BytesWaiting = 0;
    if (!set.Jobs.empty())
        PlaceSet(set);
    for (JobOutput& job : set.Jobs) {
        for (FileChange& change : job.Changes)
            DropStaged(change.Staged);
    }
    DropMarkers();
    ForgetWaitingPrograms();
    return TellOutcomes(set);
}

void BeginJobOutput()
{
    ++LastNumber;
    FilesOfJob.clear();
    Outputs.Enter = EnterBeforeWriting;
}

void TakeBackJobOutput()
{
    DropOutput(Outputs.Current);
    --LastNumber;
}

void FinishJobOutput(bool keep)
{
    JobOutput& job = Outputs.Current;
    if (!keep)
        DropOutput(job);
    job.Drawing = Run.SourceFile;
    job.Number = LastNumber;
    FilesOfJob = job.Files;
    if (!job.Empty()) {
        const auto row = std::ranges::find(job.Changes, ChangeKind::CutList, &FileChange::Kind);
        if (row != job.Changes.end() && !JobIdentity().empty())
            job.Changes.push_back(JobRowsChange(FileChange(*row), JobIdentity()));
        if (Outputs.Waiting.empty())
            FirstWaits = Steady::now();
        BytesWaiting += job.Bytes;
        Outputs.Waiting.push_back(std::move(job));
    }
    job = {};
    if (!IsTimeToPlace())
        return;
    JobRuns = true;
    (void)PlaceJobs();
    JobRuns = false;
}

long JobNumber()
{
    return LastNumber;
}

const std::vector<std::string>& JobFiles()
{
    return FilesOfJob;
}

void RecoverInstallations()
{
    std::set<std::string> installations = {WithBackslash(Trim(Config.HBDDestinationPath))};
    for (int system = 0; system < ControlSystems; ++system)
        installations.insert(WithBackslash(Trim(DestinationPath(system))));
    installations.insert(WithBackslash(Trim(Config.PTSPath)) + Config.PTSName + ".PTS");
    for (const std::string& installation : installations) {
        if (FolderOf(installation).empty())
            continue;
        (void)FinishIfLeft(installation); // what cannot be finished is told by the first drawing
    }
}

} // namespace kv
