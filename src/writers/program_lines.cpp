#include "writers/program_lines.h"

#include <algorithm>

#include "platform/paths.h"
#include "state/report.h"

namespace kv {

std::vector<ProgramTrace> ProgramTraces;

void ForgetProgramTraces()
{
    ProgramTraces.clear();
}

void NoteLines(std::string_view path, std::vector<Long> drawn)
{
    const auto replaced =
        std::erase_if(ProgramTraces, [&](const ProgramTrace& trace) { return trace.Path == path; });
    if (replaced > 0 && !WasTold(Message::PortionReplaced))
        Tell(Message::PortionReplaced, {{"program", ShownPath(path)}});
    ProgramTraces.push_back({std::string(path), std::move(drawn), 0});
}

// A text of the drawing may hold line ends of its own.
void NoteLines(std::string_view path, const std::vector<ProgramLine>& lines, std::string_view contents)
{
    constexpr std::size_t lineEnd = 2; // bytes
    std::vector<Long> drawn;
    std::size_t bytes = 0;
    Long left = static_cast<Long>(lines.size());
    for (const ProgramLine& line : lines) {
        bytes += line.Text.size() + lineEnd;
        if (bytes > contents.size())
            break;
        --left;
        const auto own = std::count(line.Text.begin(), line.Text.end(), '\n') + 1;
        drawn.insert(drawn.end(), static_cast<std::size_t>(own), line.Drawn);
    }
    NoteLines(path, std::move(drawn));
    if (left > 0)
        Tell(Message::ProgramCut, {{"program", ShownPath(path)}, {"count", left}});
}

} // namespace kv
