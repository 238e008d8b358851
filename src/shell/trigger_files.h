// The files that start the unattended mode: whether they are written to their end, how they are taken so that
// one process alone runs them, and where they go when they are not run or not done. None is deleted unread.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_lock.h"
#include "platform/files.h"
#include "state/messages.h"

namespace kv {

constexpr std::string_view TempDrawing = "Temp.DXF";
constexpr std::string_view TempRunFile = "Temp.DXF.RUN"; // while its job runs; no drawing for any list
constexpr std::string_view BatchList = "BATCH.LST";

// The file cannot be run now; told once for each state of it. `line` is without the file.
void RefuseTrigger(const std::string& path, const FileStamp& stamp, MessageLine line);
// As when it was never seen.
void ForgetTrigger(const std::string& path);
void ForgetTriggers();

// Whether the file is there; that it cannot be told is told once, and is no.
bool TriggerIsThere(const std::string& path);
// All 0 when it is not there, and when that cannot be told: such a file is not run.
FileStamp StampOfTrigger(const std::string& path);
FileStamp StampOrTell(const std::string& path); // reports why it cannot be told
// Whether a drawing is there and is written to its end.
bool ReadyToRun(const std::string& path);
// Until a drawing is written to its end, as far as can be seen.
void WaitUntilWritten(const std::string& path);

// Two installations may watch one folder. Who runs its batch, or its Temp.DXF, holds the lock of the run file
// until that is at its end; so a run file without a holder is one that was cut off. False: another process is
// at it. Where nobody can lock, renames alone part the two.
bool TakeRunLock(FileLock& lock, const std::string& folder, std::string_view runFile);

// Temp.DXF of the folder under its own name for the run, with the lock; empty when there is none to run.
std::string TakeTempDrawing(const std::string& folder, FileLock& lock);
// Its job has run. One that is not done becomes Temp.OLD, which is told.
void EndTempDrawing(const std::string& folder, const FileStamp& stamp, bool done);

// At program start: what an earlier process left in its middle, of a batch and of Temp.DXF, told.
void TellUnfinishedTriggers(const std::string& folder);
// Temp.DXF and BATCH.LST of an earlier start become Temp.OLD and lines of BATCH.OLD, told and not run.
void SetStaleTriggersAside(const std::string& folder);

} // namespace kv
