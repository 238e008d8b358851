// The manual way into the conversion: the selected rows of the file list, or drawings that were
// dropped on it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

// `Start` is pressed, then released. Nothing happens while jobs run.
void PressStart();
void StartConversion();
// The same for drawings by their full paths.
void ConvertDroppedDrawings(const std::vector<std::string>& paths);

// Meters to 0, their timer off: after each file.
void RestMeters();
// Before the first job of a list: report, program list, failed files, switches of the window.
void PrepareList();

// Who has started jobs, and may be there to answer: boxes and questions hold up nobody's run.
enum class StartedBy { Operator, Trigger };

// Jobs run while it lives. At its end the abort button is gone and the meters rest.
struct ActiveRun {
    explicit ActiveRun(StartedBy starter);
    ~ActiveRun();
    ActiveRun(const ActiveRun&) = delete;
    ActiveRun& operator=(const ActiveRun&) = delete;
};
// One job by its job line. `system` is the control's, unless the drawing's border names another. `identity`
// is the same when the same line of a batch is tried again, and empty for any other job.
void RunJobLine(std::string jobLine, Int system, std::string_view identity = {});
// The report's list of failed files, by the paths that people know.
void TellFailedFiles();
// What became of the drawings, at the end of a run.
void KeepStatesOfRun();
// What the jobs have written is in its place and on the disk then. False: some of it is not; that is told in
// the report.
bool FlushJobFiles();
// The same after a lone job, which fails when the disk refuses. Whether it is done.
bool BringJobToDisk();
// The viewer of the job's control on its program, until it is closed.
void ShowGraphic(std::string_view programFolder, std::string_view programName);

} // namespace kv
