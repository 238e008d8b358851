// Brings what drawings give to the disk to its places, all of it or none: the one transaction of a job, and
// of the drawings of a list together. Under the locks of the installations it settles what index, notes
// and cut list become, flushes all that is written aside, keeps a journal of the moves and makes them:
// programs, notes, index, hand-over, cut list. An index names no program that is not there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "job/job_rows.h"
#include "state/messages.h"

namespace kv {

// A drawing whose files could not be placed although it was done: a later drawing of its list runs, or none.
struct UnplacedJob {
    long Number = 0; // as JobNumber() was
    std::string Drawing;
    MessageLine Line; // for the report
};
struct PlacingHooks {
    void (*Unplaced)(const UnplacedJob& job) = nullptr; // null: the report's line alone
    void (*Waits)(const std::string& line) = nullptr;   // another process keeps the installation
};
extern PlacingHooks Placing;

// Drawings are placed together while it lives: every two seconds, when much is written aside, and when it
// is asked for. Nothing is lost at its end.
struct JobsTogether {
    JobsTogether();
    ~JobsTogether();
    JobsTogether(const JobsTogether&) = delete;
    JobsTogether& operator=(const JobsTogether&) = delete;
};

// For a caller that waits for other processes meanwhile: places what waits when enough has come together, so
// that little is left to do at the end of the list.
void PlaceWhileIdle();

// Whatever waits is in its place and on the disk then. False when some drawing's files are not; those are
// reported and listed as failed.
bool PlaceJobs();

// Of the driver: around each job. A job that ended by an error gives nothing.
void BeginJobOutput();
void FinishJobOutput(bool keep);
// The job begins once more, in another way: what it has handed over is dropped.
void TakeBackJobOutput();

long JobNumber();                              // of the job that runs or ran last; counts from 1
bool JobGaveProgram();                         // of that job; also when it is only recorded
const std::vector<std::string>& JobFiles();    // host paths of what that job replaces or makes
const std::vector<std::string>& JobPrograms(); // of these the programs, by their paths

// At program start: finishes what an ended process left in the installations that the settings name.
void RecoverInstallations();

} // namespace kv
