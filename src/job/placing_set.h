// The drawings that are placed together, within the transaction: what each of them has failed by, the files
// that change once for all of them, and the locks of their installations. placing.h is for everybody else.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/file_lock.h"
#include "platform/files.h"
#include "writers/job_output.h"

namespace kv {

constexpr double TrySeconds = 0.02; // between two tries for a file that another process keeps

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
    std::vector<bool> Unlisted;       // by job: placed, but the index is broken and does not name it
    std::vector<SetFile> Files;       // in the order in which they reach the disk
    std::vector<std::string> Anchors; // of the installations whose locks are held
    std::vector<std::unique_ptr<FileLock>> Locks;
};

// placing_set: what fails, and the locks.
std::string AboutFile(const std::string& path, const FileOutcome& outcome);
void FailOne(JobSet& set, std::size_t job, const std::string& cause);
void FailJobsOf(JobSet& set, const SetFile& file, const std::string& cause);
void FailAll(JobSet& set, const std::string& cause);
void DropSetFiles(JobSet& set);
// What cannot be entered fails the drawings that need it; the others go on.
void EnterInstallations(JobSet& set);

// placing_files: settles what the files become and brings all copies to the disk. A drawing that fails falls
// out, and the rest is settled again.
void SettleAndFlush(JobSet& set);
// What settling cost the last time: it grows with the files that are there, not with the drawings.
double LastSettlingSeconds();

// placing_moves: the journal and the moves. What is not moved stays aside.
void MoveSet(JobSet& set);

} // namespace kv
