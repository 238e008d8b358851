// A batch from BATCH.LST to PROC.LST: taken out of its folder in one step, run line by line, each line taken
// off when its programs are on the disk. Each line ends done (in PROC.LST alone), failed or waiting (in
// BATCH.OLD), however the batch ends. Relies on the settings; leaves programs, PROC.LST and the report.
#include "shell/batch_run.h"

#include <algorithm>
#include <limits>
#include <map>

#include "job/job_rows.h"
#include "platform/clock.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/free_name.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/stand_ins.h"
#include "shell/autostart.h"
#include "shell/batch_file.h"
#include "shell/batch_safety.h"
#include "shell/conversion_start.h"
#include "shell/list_count.h"
#include "shell/trigger_files.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "toolchain/binaries.h"
#include "writers/left_programs.h"

namespace kv {

namespace {

constexpr std::string_view ProcessedList = "PROC.LST";
constexpr double BatchSettleSeconds = 0.5;       // the program that writes the batch closes it meanwhile
constexpr std::uint64_t LargestBatch = 1U << 24; // bytes

struct Look {
    FileStamp Stamp;
    FileOutcome Outcome;
    std::string Contents;
};

Look LookAt(const std::string& path)
{
    Look look;
    look.Stamp = StampOfTrigger(path);
    look.Outcome = ReadWholeFile(path, look.Contents, LargestBatch);
    return look;
}

// A batch that has been taken.
struct TakenBatch {
    std::string Contents;
    MessageLine Earlier; // about one that was cut off before
};

// Whatever stands under the name now becomes BATCH.RUN in one step: no moment in which the lines stand
// nowhere, and none in which a newer batch could be deleted in place of the one that was read.
bool MoveToRunFile(const std::string& folder, const Look& read, TakenBatch& batch)
{
    const std::string path = folder + std::string(BatchList);
    const std::string place = folder + std::string(BatchRunFile);
    batch.Earlier = SetUnfinishedBatchAside(folder);
    const FileOutcome outcome = RenameToFree(path, place);
    if (outcome.Number == ErrorFileExists) {
        RefuseTrigger(path, read.Stamp, {Message::EarlierBatchInTheWay, {{"earlier", ShownPath(place)}}});
        return false;
    }
    if (outcome.Number == ErrorFileNotFound)
        return false; // another process was faster
    if (!outcome.Ok()) {
        RefuseTrigger(path, read.Stamp, {Message::TriggerNotTaken, {{"cause", outcome.Cause}}});
        return false;
    }
    batch.Contents = read.Contents;
    for (;;) {
        Look now = LookAt(place);
        if (!now.Outcome.Ok()) {
            RefuseTrigger(
                path, read.Stamp,
                {Message::BatchLinesElsewhere, {{"place", ShownPath(place)}, {"cause", now.Outcome.Cause}}});
            return false;
        }
        if (now.Contents == batch.Contents)
            break;
        batch.Contents = std::move(now.Contents); // a newer batch after all; it may still be written
        PauseSeconds(BatchSettleSeconds);
    }
    ForgetTrigger(path);
    return true;
}

// False: there is no batch to run now.
bool TakeBatch(const std::string& folder, TakenBatch& batch)
{
    const std::string path = folder + std::string(BatchList);
    const Look first = LookAt(path);
    PauseSeconds(BatchSettleSeconds);
    const Look second = LookAt(path);
    if (Shell.Ended || second.Stamp == FileStamp{})
        return false;
    if (first.Stamp != second.Stamp || first.Contents != second.Contents)
        return false; // still being written
    if (!second.Outcome.Ok()) {
        RefuseTrigger(path, second.Stamp, {Message::BatchUnread, {{"cause", second.Outcome.Cause}}});
        return false;
    }
    if (!second.Contents.empty())
        return MoveToRunFile(folder, second, batch);
    const FileOutcome outcome = DeleteFile(path);
    if (!outcome.Ok())
        RefuseTrigger(path, second.Stamp, {Message::EmptyBatchNotDeleted, {{"cause", outcome.Cause}}});
    return false;
}

// Without a batch to run after it. What could not be set aside is told with the batch that waits for it.
void TellEarlier(const std::string& folder, const TakenBatch& batch)
{
    if (batch.Earlier.Empty() || AskFile(folder + std::string(BatchRunFile)).Is != Presence::NotThere)
        return;
    Tell(batch.Earlier);
    ReportMessage(2, "");
}

// What is known of the batch that runs.
struct BatchWork {
    std::string Folder;
    Int System = 0;
    std::vector<std::string> Rest;    // lines that are not done; commands stay in it for the jobs after them
    std::size_t Place = 0;            // of the next line in the rest
    std::map<std::string, int> Equal; // job lines that are not done, by their keys
    BatchSwitches Switches;
    std::string Processed; // the text for PROC.LST
};

BatchWork PlanBatch(const std::string& folder, Int system, const std::vector<BatchLine>& lines)
{
    BatchWork work;
    work.Folder = folder;
    work.System = system;
    BatchSwitches switches;
    for (const BatchLine& line : lines) {
        if (line.Kind != BatchLineKind::Blank)
            work.Rest.push_back(line.Written);
        if (line.Kind == BatchLineKind::Command)
            FollowBatchCommand(line.Text, switches);
        if (line.Kind == BatchLineKind::Job)
            ++work.Equal[BatchLineKey(line, switches)];
    }
    return work;
}

// Programs first, then the line: a job whose line is gone is done. False when the line cannot be taken off.
bool TakeLineOff(BatchWork& work)
{
    work.Rest.erase(work.Rest.begin() + static_cast<std::ptrdiff_t>(work.Place));
    const FileOutcome outcome = KeepBatchLines(work.Folder, work.Rest);
    if (outcome.Ok())
        return true;
    const std::string path = work.Folder + std::string(BatchRunFile);
    Tell(Message::BatchFileNotWritten, {{"file", ShownPath(path)}, {"cause", outcome.Cause}});
    return false;
}

// False: the batch stops.
bool RunBatchLine(BatchWork& work, const BatchLine& line)
{
    const BatchJob job = ReadBatchJob(line.Text, work.Folder, DestinationPath(work.System));
    const int equalOnes = --work.Equal[BatchLineKey(line, work.Switches)];
    WaitUntilWritten(DrawingOf(job));
    const std::string identity = BatchLineIdentity(work.Folder, line, work.Switches, equalOnes);
    RunJobLine(JobLine(job), work.System, identity);
    work.Processed += NameForMachines(job.OutputName);
    work.Processed += LineEnd;
    const bool done = BringJobToDisk();
    const bool goesOn = done && TakeLineOff(work);
    if (goesOn)
        ForgetJobIdentities({&identity, 1}); // else its cut list row is replaced when the line is tried again
    FinishJob(job.OutputFolder, job.OutputName);
    CountFinishedJob();
    return goesOn;
}

void RunBatchLines(BatchWork& work, const std::vector<BatchLine>& lines)
{
    for (const BatchLine& line : lines) {
        if (line.Kind == BatchLineKind::Blank)
            continue;
        if (line.Kind == BatchLineKind::Command) {
            FollowBatchCommand(line.Text, work.Switches);
            ObeyBatchCommand(line.Text);
            ++work.Place;
            continue;
        }
        if (UserAborted() || Shell.Ended || !RunBatchLine(work, line))
            break;
    }
}

int JobsOf(const std::vector<std::string>& lines)
{
    int jobs = 0;
    for (const std::string& line : lines)
        for (const BatchLine& read : BatchLines(line))
            jobs += read.Kind == BatchLineKind::Job ? 1 : 0;
    return jobs;
}

// The first ones by their drawings' names.
std::string NamesOfJobs(const BatchWork& work)
{
    std::vector<std::string> names;
    for (const std::string& line : work.Rest)
        for (const BatchLine& read : BatchLines(line)) {
            if (read.Kind != BatchLineKind::Job)
                continue;
            const BatchJob job = ReadBatchJob(read.Text, work.Folder, DestinationPath(work.System));
            names.push_back(ShownPath(FileNameOf(DrawingOf(job))));
        }
    return FewOf(names);
}

// What is not done goes to BATCH.OLD. The file holds what the memory does, unless it could not be written.
void KeepRest(const BatchWork& work, int jobs)
{
    Shell.JobsLeft += jobs;
    const FileOutcome kept = KeepBatchLines(work.Folder, work.Rest);
    MessageLine told;
    if (kept.Ok())
        told = SetUnfinishedBatchAside(work.Folder);
    if (told.Empty()) {
        told = {kept.Ok() ? Message::BatchUnfinished : Message::BatchUnfinishedNotKept,
                {{"count", jobs}, {"file", ShownPath(work.Folder + std::string(BatchRunFile))}}};
        if (!kept.Ok())
            told.Values.emplace_back("cause", kept.Cause);
    }
    Tell(told);
    NoteLeft(TextOf(told));
    Tell(Message::BatchNotDone, {{"names", NamesOfJobs(work)}});
}

bool WriteProcessedList(const BatchWork& work)
{
    const std::string path = work.Folder + std::string(ProcessedList);
    const FileOutcome outcome = ReplaceFile(path, work.Processed);
    if (!outcome.Ok())
        Tell(Message::BatchFileNotWritten, {{"file", ShownPath(path)}, {"cause", outcome.Cause}});
    return FlushJobFiles() && outcome.Ok();
}

// What is left is kept before PROC.LST says that the batch has ended.
void EndBatch(const BatchWork& work)
{
    const int jobs = JobsOf(work.Rest);
    if (jobs > 0)
        KeepRest(work, jobs);
    if (!WriteProcessedList(work) || jobs > 0)
        return;
    const FileOutcome dropped = DropBatchLines(work.Folder);
    if (!dropped.Ok())
        Tell(Message::DoneFileNotDeleted,
             {{"file", ShownPath(work.Folder + std::string(BatchRunFile))}, {"cause", dropped.Cause}});
}

} // namespace

bool RunBatch(const std::string& folder)
{
    FileLock lock;
    if (!TakeRunLock(lock, folder, BatchRunFile))
        return false;
    const ActiveRun active(StartedBy::Trigger);
    const Int system = Run.ControlType;
    Run.RunFailed = False;
    Run.RunState = 0; // an abort of an earlier run is over
    TakenBatch batch;
    if (!TakeBatch(folder, batch)) {
        TellEarlier(folder, batch);
        return false;
    }
    const bool stopped = UserAborted();
    PrepareRun();
    if (stopped)
        Run.RunState = 1;
    Tell(batch.Earlier);
    DoEvents();
    const int count = CountBatchLines(batch.Contents);
    Shell.BatchCount = static_cast<Int>(std::min<int>(count, std::numeric_limits<Int>::max()));
    const std::vector<BatchLine> lines = BatchLines(batch.Contents);
    BatchWork work = PlanBatch(folder, system, lines);
    const CountedList counted(JobsOf(work.Rest));
    RunBatchLines(work, lines);
    EndBatch(work);
    KeepStatesOfRun();
    TellFailedFiles();
    TellListCount();
    ReportMessage(2, "");
    if (!Shell.Ended)
        MakeBinaries();
    Shell.BtnAbortShown = false;
    Run.ControlType = system;
    Run.CncOff = False;
    Run.HbdOff = False;
    if (!HasSwitch("/K"))
        return true;
    Shell.Ended = true;
    ShellChanged();
    return false;
}

} // namespace kv
