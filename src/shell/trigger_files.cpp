// Trigger files from the moment they are seen to the moment they are gone. A drawing is taken by one rename
// to a name that is free: of two processes that see it one gets it. Relies on the source folder; leaves
// Temp.OLD (Temp2.OLD, ...) for drawings that were not done, so that a person can look at them.
#include "shell/trigger_files.h"

#include <algorithm>
#include <map>
#include <vector>

#include "platform/clock.h"
#include "platform/free_name.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "shell/batch_file.h"
#include "shell/batch_safety.h"
#include "state/report.h"
#include "state/run.h"
#include "state/shell_state.h"

namespace kv {

namespace {

constexpr double StillSeconds = 2;      // a file that does not change so long is written
constexpr double LookSeconds = 0.1;     // between two looks at a drawing that is being written
constexpr std::size_t TailLength = 512; // bytes that hold the last lines of a drawing
constexpr double SecondsOfDay = 86400;
constexpr int MostAsides = 10000; // names that are tried for a drawing that is set aside
constexpr FileStamp OutOfReach{~std::uint64_t{0}, 0,
                               0}; // of a file that cannot be asked for; none is so long

// Of a trigger file, by its path.
struct TriggerMemory {
    FileStamp Seen;    // the state that was looked at last
    double Since = 0;  // seconds since midnight when it was first seen
    FileStamp Refused; // the state that was told to be out of reach
    FileStamp Done;    // the state that was run and could not be deleted
};
std::map<std::string, TriggerMemory> Triggers;

// `outcome`: of the reading.
bool HoldsEndLine(const std::string& path, FileOutcome& outcome)
{
    std::string tail;
    outcome = ReadFileTail(path, tail, TailLength);
    if (!outcome.Ok())
        return false;
    const std::vector<BatchLine> lines = BatchLines(tail); // any line end
    return std::any_of(lines.begin(), lines.end(),
                       [](const BatchLine& line) { return Trim(line.Text) == "EOF"; });
}

std::string AsideName(int number)
{
    return number == 1 ? "Temp.OLD" : "Temp" + WholeText(number) + ".OLD";
}

bool SameContents(const std::string& path, const std::string& contents)
{
    std::string other;
    return ReadWholeFile(path, other).Ok() && other == contents;
}

// Under the first free name, or given up for one of the same contents: a drawing that fails each time it is
// sent stands there once. `place` is where it is then.
FileOutcome SetDrawingAside(const std::string& folder, const std::string& path, std::string& place)
{
    std::string contents;
    const bool known = ReadWholeFile(path, contents).Ok();
    FileOutcome outcome;
    for (int number = 1; number <= MostAsides; ++number) {
        place = folder + AsideName(number);
        outcome = RenameToFree(path, place);
        if (outcome.Number != ErrorFileExists)
            break;
        if (known && SameContents(place, contents))
            return DeleteFile(path);
    }
    if (!outcome.Ok())
        place = path;
    return outcome;
}

// Where the drawing has its new name, and where it could not get one.
struct AsideMessages {
    Message Kept, Left;
};
constexpr AsideMessages UnfinishedAside = {Message::UnfinishedDrawingKept, Message::UnfinishedDrawingLeft};
constexpr AsideMessages UncertainAside = {Message::UncertainDrawingKept, Message::UncertainDrawingLeft};
constexpr AsideMessages UndoneAside = {Message::UndoneDrawingKept, Message::UndoneDrawingLeft};
constexpr AsideMessages StaleAside = {Message::StaleDrawingKept, Message::StaleDrawingLeft};

// Gives the text that was told, if any.
std::string TellDrawingAside(const std::string& folder, const std::string& path,
                             const AsideMessages& messages)
{
    std::string place;
    const FileOutcome outcome = SetDrawingAside(folder, path, place);
    if (outcome.Number == ErrorFileNotFound)
        return {}; // another process has taken it
    MessageLine line = {messages.Kept, {{"file", ShownPath(place)}}};
    if (!outcome.Ok()) {
        line.Number = messages.Left;
        line.Values.emplace_back("cause", outcome.Cause);
    }
    Tell(line);
    return TextOf(line);
}

// The lines of BATCH.LST go the way of a batch that was cut off, by way of BATCH.RUN.
void SetStaleBatchAside(const std::string& folder)
{
    const std::string path = folder + std::string(BatchList);
    const FileOutcome outcome = RenameToFree(path, folder + std::string(BatchRunFile));
    if (outcome.Number == ErrorFileNotFound || outcome.Number == ErrorPathNotFound)
        return;
    if (!outcome.Ok()) {
        Tell(Message::StaleBatchNotAside, {{"file", ShownPath(path)}, {"cause", outcome.Cause}});
        return;
    }
    const MessageLine line = SetUnfinishedBatchAside(folder, StaleBatch);
    Tell(line.Empty() ? MessageLine{Message::StaleBatchWithoutJob} : line);
}

// Of an earlier process, or one that was done and could not be deleted.
void TellUnfinishedDrawing(const std::string& folder)
{
    const std::string path = folder + std::string(TempRunFile);
    if (AskFile(path).Is == Presence::NotThere)
        return;
    const FileStamp done = Triggers[path].Done;
    if (done != FileStamp{} && done == StampOfTrigger(path))
        static_cast<void>(DeleteFile(path)); // the rename over it says why it cannot be
    else
        TellDrawingAside(folder, path, UnfinishedAside);
}

} // namespace

void RefuseTrigger(const std::string& path, const FileStamp& stamp, MessageLine line)
{
    FileStamp& refused = Triggers[path].Refused;
    if (refused == stamp)
        return;
    refused = stamp;
    line.Values.emplace_back("file", ShownPath(path));
    Tell(std::move(line));
    ReportMessage(2, "");
}

void ForgetTrigger(const std::string& path)
{
    Triggers.erase(path);
}

void ForgetTriggers()
{
    Triggers.clear();
}

bool TriggerIsThere(const std::string& path)
{
    const FileAnswer answer = AskFile(path);
    if (answer.Is == Presence::CannotTell)
        RefuseTrigger(path, OutOfReach, {Message::TriggerNotLookedFor, {{"cause", answer.Why.Cause}}});
    else if (const auto known = Triggers.find(path);
             known != Triggers.end() && known->second.Refused == OutOfReach)
        known->second.Refused = {};
    return answer.Is == Presence::There;
}

FileStamp StampOfTrigger(const std::string& path)
{
    FileStamp stamp;
    static_cast<void>(AskStamp(path, stamp));
    return stamp;
}

FileStamp StampOrTell(const std::string& path)
{
    FileStamp stamp;
    const FileAnswer answer = AskStamp(path, stamp);
    if (answer.Is == Presence::CannotTell)
        RefuseTrigger(path, OutOfReach, {Message::TriggerNotAskedFor, {{"cause", answer.Why.Cause}}});
    return stamp;
}

bool ReadyToRun(const std::string& path)
{
    if (!TriggerIsThere(path))
        return false;
    FileStamp stamp;
    const FileAnswer answer = AskStamp(path, stamp);
    FileOutcome outcome = answer.Why;
    const bool ended = stamp.Size > 0 && HoldsEndLine(path, outcome);
    if (!outcome.Ok() && !outcome.Missing)
        RefuseTrigger(path, answer.Is == Presence::There ? stamp : OutOfReach,
                      {Message::TriggerUnread, {{"cause", outcome.Cause}}});
    if (ended || stamp.Size == 0)
        return ended;
    TriggerMemory& memory = Triggers[path];
    const double now = SecondsSinceMidnight();
    if (memory.Seen != stamp) {
        memory.Seen = stamp;
        memory.Since = now;
        return false;
    }
    const double still = now - memory.Since;
    return (still < 0 ? still + SecondsOfDay : still) >= StillSeconds;
}

void WaitUntilWritten(const std::string& path)
{
    double still = 0;
    FileOutcome read; // a fault is the job's to report
    FileStamp stamp = StampOfTrigger(path);
    while (AskFile(path).Is != Presence::NotThere && !HoldsEndLine(path, read) && still < StillSeconds &&
           !UserAborted()) {
        PauseSeconds(LookSeconds);
        const FileStamp now = StampOfTrigger(path);
        still = now == stamp ? still + LookSeconds : 0;
        stamp = now;
    }
}

bool TakeRunLock(FileLock& lock, const std::string& folder, std::string_view runFile)
{
    return lock.TryLock(folder + std::string(runFile)).Is != LockState::Held;
}

std::string TakeTempDrawing(const std::string& folder, FileLock& lock)
{
    const std::string path = folder + std::string(TempDrawing);
    const std::string place = folder + std::string(TempRunFile);
    if (!ReadyToRun(path) || !TakeRunLock(lock, folder, TempRunFile))
        return {};
    TellUnfinishedDrawing(folder);
    const FileStamp ready = StampOfTrigger(path);
    const FileOutcome outcome = RenameToFree(path, place);
    if (outcome.Number == ErrorFileNotFound)
        return {}; // another process was faster
    if (!outcome.Ok()) {
        RefuseTrigger(path, ready, {Message::TriggerNotTaken, {{"cause", outcome.Cause}}});
        return {};
    }
    ForgetTrigger(path);
    if (StampOfTrigger(place) != ready) // another one than the one that was looked at
        WaitUntilWritten(place);
    return place;
}

void EndTempDrawing(const std::string& folder, const FileStamp& stamp, bool done)
{
    const std::string path = folder + std::string(TempRunFile);
    const FileStamp now = StampOrTell(path);
    if (stamp == FileStamp{} || now == FileStamp{}) {
        TellDrawingAside(folder, path, UncertainAside);
        return;
    }
    // Whoever wrote it has written more into it meanwhile: that is another job.
    const bool changed = now != stamp;
    if (changed && RenameToFree(path, folder + std::string(TempDrawing)).Ok())
        return;
    if (changed || !done) {
        const std::string told = TellDrawingAside(folder, path, UndoneAside);
        if (!told.empty())
            NoteLeft(told);
        return;
    }
    const FileOutcome outcome = DeleteFile(path);
    if (outcome.Ok())
        return;
    Triggers[path].Done = stamp;
    Tell(Message::DoneFileNotDeleted, {{"file", ShownPath(path)}, {"cause", outcome.Cause}});
}

void TellUnfinishedTriggers(const std::string& folder)
{
    FileLock batch, drawing;
    if (TakeRunLock(batch, folder, BatchRunFile))
        TellUnfinishedBatch(folder);
    if (TakeRunLock(drawing, folder, TempRunFile))
        TellUnfinishedDrawing(folder);
    ReportMessage(2, "");
}

void SetStaleTriggersAside(const std::string& folder)
{
    const std::string temp = folder + std::string(TempDrawing);
    FileLock batch, drawing;
    if (AskFile(temp).Is != Presence::NotThere && TakeRunLock(drawing, folder, TempRunFile))
        TellDrawingAside(folder, temp, StaleAside);
    if (AskFile(folder + std::string(BatchList)).Is != Presence::NotThere &&
        TakeRunLock(batch, folder, BatchRunFile))
        SetStaleBatchAside(folder);
    ReportMessage(2, "");
}

} // namespace kv
