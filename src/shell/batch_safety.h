// What is left to do of a batch, kept beside it: a killed process or a power cut loses no line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

constexpr std::string_view BatchRunFile = "BATCH.RUN";
constexpr std::string_view BatchOldFile = "BATCH.OLD";

// Lines of BATCH.LST in `folder` (with its backslash), as they stood in the file. False: not on the disk.
bool KeepBatchLines(std::string_view folder, const std::vector<std::string>& lines);
void DropBatchLines(std::string_view folder);
// A BATCH.RUN that stands becomes BATCH.OLD, behind the lines that one already holds. Gives the line that
// tells it; empty when there was none.
std::string SetUnfinishedBatchAside(std::string_view folder);
// At program start: a BATCH.RUN of an earlier process becomes BATCH.OLD and is told in the report.
void TellUnfinishedBatch(std::string_view folder);

} // namespace kv
