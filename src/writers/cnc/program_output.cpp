// Sends the finished lines to the disk: whole, or cut into portions that the control can hold, never
// inside a route. Relies on the line limit and the output name; leaves files and their report lines.
#include <algorithm>

#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/left_programs.h"
#include "writers/output_names.h"
#include "writers/program_families.h"
#include "writers/program_file.h"

namespace kv {

namespace {

constexpr Long FirstBodyLine = 2; // behind header and name line, which every portion repeats
constexpr std::string_view ControlCaptions[] = {"CNC90/WINNER90", "Genesis"};

bool Place(const ProgramPart& part)
{
    return Run.ControlType == 0 ? PlaceIndexedProgram(part) : PlaceGenesisProgram(part);
}

void ReportCompleted(const CncProgram& program)
{
    Tell(Message::ProgramCompleted, {{"lines", program.LastLine() + 1}});
}

// G183 and G184 lines are no places to cut.
bool StartsOperation(std::string_view line)
{
    return BeginsWith(line, "G81") || BeginsWith(line, "G88") || BeginsWith(line, "G85") ||
           BeginsWith(line, "G86");
}

// The line before the last one behind `first`, up to `last`, that starts an operation; -1 for none.
Long CutBefore(const std::vector<ProgramLine>& lines, Long first, Long last)
{
    for (Long i = last; i > first; --i) {
        if (StartsOperation(lines[static_cast<std::size_t>(i)].Text))
            return i - 1;
    }
    return -1;
}

// The header is the whole program's and states its count of lines.
std::vector<ProgramLine> PortionLines(const std::vector<ProgramLine>& lines, Long first, Long last)
{
    std::vector<ProgramLine> portion(lines.begin(), lines.begin() + FirstBodyLine);
    for (Long i = std::max(first, FirstBodyLine); i <= last; ++i)
        portion.push_back(lines[static_cast<std::size_t>(i)]);
    if (lines[static_cast<std::size_t>(last)].Text != "M2")
        portion.push_back({"M2", 0});
    return portion;
}

// A name that fills its room has the count in place of its last characters.
std::string PortionName(std::string output, int count)
{
    const std::string digits = WholeText(count);
    if (FileNameOf(output).size() < ProgramNameWidth)
        output += digits;
    else
        output.replace(output.size() - digits.size(), digits.size(), digits);
    return FolderOf(output) + ProgramNameFor(FileNameOf(output)); // "COM" and 1 are a device
}

void ReportPortion(int count, const std::string& name)
{
    const std::string shown = Holds(name, "\\") ? ShownPath(name) : name;
    Tell(Message::PortionCompleted, {{"portion", count}, {"program", shown}});
}

bool WritePortions(const CncProgram& program, const std::string& output, Long limit)
{
    const Long total = program.LastLine();
    std::vector<std::string> made;
    Long first = 0;
    Long last = limit;
    for (int count = 1;; ++count) {
        Tell(Message::BreakingUp);
        if (last - first >= limit)
            last = CutBefore(program.Lines, first, last);
        if (last < first) {
            Tell(Message::RouteTooLong);
            Tell(Message::ImportAborted);
            if (!made.empty())
                Tell(Message::FailedPartsStay,
                     {{"programs", FewOf(made)},
                      {"place",
                       Run.ControlType == 0 ? "the program folder and its index" : "the program folder"}});
            FailDrawing();
            return true; // the portions so far are programs
        }
        const std::string name = PortionName(output, count);
        const std::vector<ProgramLine> lines = PortionLines(program.Lines, first, last);
        if (!Place({output, name, TextOfProgramLines(lines), lines, program.HorizontalWritten}))
            return false;
        ReportPortion(count, name);
        made.push_back(Holds(name, "\\") ? ShownPath(name) : name);
        if (last + 1 >= total)
            break;
        first = last + 1;
        last = std::min(first + limit, total);
    }
    ReportCompleted(program);
    return true;
}

} // namespace

bool WriteOutput(const CncProgram& program)
{
    const std::string output = OutputName();
    const Long limit = ToLong(Val(Config.LineLimit));
    if (program.LastLine() > limit)
        return WritePortions(program, output, limit);
    if (!Place({output, output, TextOfProgramLines(program.Lines), program.Lines, program.HorizontalWritten}))
        return false;
    Tell(Message::ControlOfProgram, {{"control", ControlCaptions[Run.ControlType]}});
    ReportCompleted(program);
    return true;
}

} // namespace kv
