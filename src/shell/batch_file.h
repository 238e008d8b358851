// BATCH.LST as a text: its lines, its commands, the jobs that it names. No disk is touched.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

enum class BatchLineKind { Blank, Command, Job };

struct BatchLine {
    BatchLineKind Kind = BatchLineKind::Blank;
    std::string Text;    // upper-cased, right-trimmed
    std::string Written; // as it stands in the file, without its line end
};

constexpr std::string_view LineEnd = "\r\n"; // of each line that is written

// Double quotes are blanks; lines end at CR LF (a lone CR or LF ends one too).
std::vector<BatchLine> BatchLines(std::string_view contents);
// Carriage returns plus one, of the text without blanks and line ends at its ends.
int CountBatchLines(std::string_view contents);

// "!CNCOFF", "!HBDOFF", "!CNCON", "!HBDON" set their flags of the run; any other command nothing.
void ObeyBatchCommand(std::string_view command);

struct BatchJob {
    std::string Input;        // path without what stands behind the last point of its name
    std::string OutputFolder; // with its trailing backslash
    std::string OutputName;
};
// What a line names; folders that it does not name are the given ones.
BatchJob ReadBatchJob(std::string_view line, std::string_view sourceFolder, std::string_view programFolder);
// The drawing's file, as the conversion looks for it.
std::string DrawingOf(const BatchJob& job);
// The job line of the conversion: input, the byte 0xFF, output folder and name.
std::string JobLine(const BatchJob& job);

} // namespace kv
