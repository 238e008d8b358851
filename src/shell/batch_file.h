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

// What the commands so far have switched off for the lines after them.
struct BatchSwitches {
    bool CncOff = false, HbdOff = false;
    bool operator==(const BatchSwitches&) const = default;
};
// "!CNCOFF", "!HBDOFF", "!CNCON", "!HBDON" set their switch. False: any other command, which means nothing.
bool FollowBatchCommand(std::string_view command, BatchSwitches& switches);
// The commands that lead from one state to the other, each on a line of its own.
std::string CommandsBetween(const BatchSwitches& from, const BatchSwitches& to);
// The same for the flags of the run.
void ObeyBatchCommand(std::string_view command);

// A job line with the switches that hold for it, however it is spelled: equal keys ask for the same work.
std::string BatchLineKey(const BatchLine& line, const BatchSwitches& switches);

struct BatchJob {
    std::string Input;        // path without what stands behind the last point of its name
    std::string OutputFolder; // with its trailing backslash
    std::string OutputName;
};
// What a line names; folders that it does not name are the given ones.
BatchJob ReadBatchJob(std::string_view line, std::string_view sourceFolder, std::string_view programFolder);
// The drawing's file, as the conversion looks for it.
std::string DrawingOf(const BatchJob& job);
// Tells the line from all others of its folder, and is the same when what is left of a batch is tried again:
// lines go off a batch at its head, so equal ones are numbered from its end.
std::string BatchIdentityHead(std::string_view folder); // what they all begin with
std::string BatchLineIdentity(std::string_view folder, const BatchLine& line, const BatchSwitches& switches,
                              int equalOnesAfterIt);
// The job line of the conversion: input, the byte 0xFF, output folder and name.
std::string JobLine(const BatchJob& job);

} // namespace kv
