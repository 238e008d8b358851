// The transaction from outside: when drawings are placed, and what becomes of each of them. Relies on
// programs that are written aside already. Leaves the locks free and nothing aside.
#include "job/placing.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "job/installation.h"
#include "job/left_asides.h"
#include "job/placing_set.h"
#include "platform/paths.h"
#include "state/report.h"
#include "state/run.h"
#include "state/shell_state.h"
#include "state/strict_setting.h"
#include "writers/left_programs.h"
#include "writers/program_writers.h"

namespace kv {

PlacingHooks Placing;

namespace {

using Steady = std::chrono::steady_clock;

constexpr std::chrono::seconds LongestUnplaced{2};
constexpr double IdleSeconds = 0.2;   // at least, between two placings while others work
constexpr double IdleBySettling = 25; // times what settling costs: a large index takes 4 % at most
constexpr std::uint64_t MostBytesAside = std::uint64_t{64} << 20;

long LastNumber = 0;
bool JobRuns = false; // its own failure is the run's
std::vector<std::string> FilesOfJob, ProgramsOfJob;
WrittenProgram LastBeforeJob;
bool GaveProgram = false;      // the job that ran last
Steady::time_point FirstWaits; // when the first of the waiting drawings was done
std::uint64_t BytesWaiting = 0;

void PlaceSet(JobSet& set)
{
    EnterInstallations(set);
    SettleAndFlush(set);
    MoveSet(set);
    DropSetFiles(set); // what has not been moved
    for (const std::string& anchor : set.Anchors)
        (void)DropJournal(anchor); // one that stays names files that are gone
}

// --- What becomes of the jobs ---

void FailRunningJob(const JobOutput& job, MessageLine line)
{
    Tell(std::move(line));
    if (Run.FailedFiles.empty() || Run.FailedFiles.back() != job.Drawing)
        AddFailedFile(job.Drawing);
    Run.RunFailed = True;
    FilesOfJob.clear();
    ProgramsOfJob.clear();
}

void FailEarlierJob(const JobOutput& job, const std::string& cause)
{
    MessageLine line = {Message::EarlierDrawingNotPlaced,
                        {{"drawing", ShownPath(job.Drawing)}, {"cause", cause}}};
    AddFailedFile(job.Drawing);
    ++Shell.FailedJobs;
    if (Placing.Unplaced != nullptr)
        Placing.Unplaced({job.Number, job.Drawing, line});
    else
        Tell(std::move(line));
}

// Its programs are in their places, and the index has been named.
void FailUnlistedJob(const JobOutput& job)
{
    if (!JobRuns || job.Number != LastNumber) {
        FailEarlierJob(job, "the program is not in the index");
        return;
    }
    if (Run.FailedFiles.empty() || Run.FailedFiles.back() != job.Drawing)
        AddFailedFile(job.Drawing);
    Run.RunFailed = True;
}

bool TellOutcomes(JobSet& set)
{
    bool all = true;
    for (std::size_t i = 0; i < set.Jobs.size(); ++i) {
        JobOutput& job = set.Jobs[i];
        if (set.Faults[i].empty()) {
            ProgramList.insert(ProgramList.end(), job.Made.begin(), job.Made.end());
            if (set.Unlisted[i]) {
                all = false;
                FailUnlistedJob(job);
            }
            continue;
        }
        all = false;
        const MessageValue cause("cause", set.Faults[i]);
        if (!JobRuns || job.Number != LastNumber)
            FailEarlierJob(job, set.Faults[i]);
        else if (set.IndexFaults[i]) // the report of the drawing goes on; the box named the index
            FailRunningJob(job, {Message::IndexNotPlaced, {cause}});
        else
            FailRunningJob(job, {Message::DrawingNotPlaced, {{"drawing", ShownPath(job.Drawing)}, cause}});
    }
    return all;
}

// --- Entering an installation ---

// What an ended process has left there is finished first.
FileOutcome EnterBeforeWriting(const std::string& installation)
{
    if (IsMarked(installation))
        return {};
    const FileOutcome outcome = FinishIfLeft(installation);
    if (outcome.Ok())
        MarkAsides(installation);
    return outcome;
}

// --- The end of a job ---

void TellAboutPrograms(const JobOutput& job)
{
    if (Outputs.Recording || Run.RunFailed != False)
        return; // at their turn in the installation; a failed drawing leaves all as it was
    TellReplacedPrograms(job);
    TellLeftPrograms(job);
}

bool GivesProgram(const JobOutput& job)
{
    return !job.Programs.empty() || std::ranges::any_of(Outputs.Steps, [](const OutputStep& step) {
        return step.Kind == StepKind::Program;
    });
}

// A job that failed and gives nothing has its lines already.
bool RefuseIfDoubtful(const JobOutput& job)
{
    const long long doubts = RefusesDoubts() ? DoubtsTold() : 0;
    const bool givesNothing = job.Empty() && Outputs.Steps.empty();
    if (doubts == 0 || (Run.RunFailed != False && givesNothing))
        return false;
    LastProgram = LastBeforeJob;
    if (Run.FailedFiles.empty() || Run.FailedFiles.back() != Run.SourceFile || Run.RunFailed == False)
        AddFailedFile(Run.SourceFile);
    Run.RunFailed = True;
    Tell(Message::DoubtfulRefused, {{"drawing", ShownPath(Run.SourceFile)}, {"count", doubts}});
    return true;
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

void PlaceWhileIdle()
{
    const std::chrono::duration<double> waited = Steady::now() - FirstWaits;
    if (!Outputs.Waiting.empty() &&
        waited.count() >= std::max(IdleSeconds, IdleBySettling * LastSettlingSeconds()))
        (void)PlaceJobs();
}

bool PlaceJobs()
{
    JobSet set;
    set.Jobs = std::exchange(Outputs.Waiting, {});
    set.Faults.resize(set.Jobs.size());
    set.RowsOut.resize(set.Jobs.size());
    set.IndexFaults.resize(set.Jobs.size());
    set.Unlisted.resize(set.Jobs.size());
    BytesWaiting = 0;
    if (!set.Jobs.empty())
        PlaceSet(set);
    for (JobOutput& job : set.Jobs) {
        for (FileChange& change : job.Changes)
            DropStaged(change.Staged);
    }
    DropAsideMarks();
    ForgetWaitingPrograms();
    return TellOutcomes(set);
}

void BeginJobOutput()
{
    ++LastNumber;
    FilesOfJob.clear();
    ProgramsOfJob.clear();
    LastBeforeJob = LastProgram;
    ForgetDoubts();
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
    if (keep)
        TellAboutPrograms(job);
    if (!keep || RefuseIfDoubtful(job))
        DropOutput(job);
    GaveProgram = GivesProgram(job);
    RememberWriter(job, Run.SourceFile);
    job.Drawing = Run.SourceFile;
    job.Number = LastNumber;
    FilesOfJob = job.Files;
    for (const ProgramOutput& program : job.Programs)
        ProgramsOfJob.push_back(program.Path);
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

bool JobGaveProgram()
{
    return GaveProgram;
}

const std::vector<std::string>& JobFiles()
{
    return FilesOfJob;
}

const std::vector<std::string>& JobPrograms()
{
    return ProgramsOfJob;
}

void RecoverInstallations()
{
    ClearLeftAsides(); // what cannot be finished is told by the first drawing that needs it
}

} // namespace kv
