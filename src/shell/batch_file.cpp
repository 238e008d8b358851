// BATCH.LST as a text: cut into lines, told apart, its commands obeyed and its jobs read. Whoever
// writes it may end lines with CR, LF or both, quote paths and spell them in any case. Upper-casing
// leaves no byte 0xFF in a line, so that none can be taken for the separator of a job line.
#include "shell/batch_file.h"

#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr char PartSeparator = '\xFF'; // between drawing and output of a job line
constexpr std::string_view LineEnds = "\r\n";

struct CommandRow {
    std::string_view Command;
    Int RunBlock::*Flag;
    Int Value;
};
constexpr CommandRow CommandRows[] = {
    {"!CNCOFF", &RunBlock::CncOff, True},
    {"!HBDOFF", &RunBlock::HbdOff, True},
    {"!CNCON", &RunBlock::CncOff, False},
    {"!HBDON", &RunBlock::HbdOff, False},
};

BatchLine ReadLine(std::string_view written)
{
    BatchLine line;
    line.Written = written;
    line.Text = UpperCase(written);
    ReplaceChar(line.Text, '"', ' ');
    line.Text = TrimRight(line.Text);
    if (line.Text.empty())
        line.Kind = BatchLineKind::Blank;
    else
        line.Kind = BeginsWith(line.Text, "!") ? BatchLineKind::Command : BatchLineKind::Job;
    return line;
}

} // namespace

std::vector<BatchLine> BatchLines(std::string_view contents)
{
    std::vector<BatchLine> lines;
    while (!contents.empty()) {
        const std::size_t end = contents.find_first_of(LineEnds);
        lines.push_back(ReadLine(contents.substr(0, end)));
        if (end == std::string_view::npos)
            break;
        contents.remove_prefix(end);
        contents.remove_prefix(BeginsWith(contents, "\r\n") ? 2 : 1);
    }
    return lines;
}

int CountBatchLines(std::string_view contents)
{
    // Quotes at the ends are blanks too.
    constexpr std::string_view ends = " \"\r\n";
    const std::size_t first = contents.find_first_not_of(ends);
    if (first == std::string_view::npos)
        return 1;
    const std::size_t last = contents.find_last_not_of(ends);
    return InCount(contents.substr(first, last - first + 1), '\r') + 1;
}

void ObeyBatchCommand(std::string_view command)
{
    for (const CommandRow& row : CommandRows)
        if (row.Command == command)
            Run.*row.Flag = row.Value;
}

BatchJob ReadBatchJob(std::string_view line, std::string_view sourceFolder, std::string_view programFolder)
{
    std::string text(Trim(line));
    ReplaceChar(text, '/', '\\');
    std::size_t split = text.find('^');
    if (split == std::string::npos)
        split = text.find(' ');
    const std::string input(Trim(std::string_view(text).substr(0, split)));
    const std::string output(split == std::string::npos ? ""
                                                        : Trim(std::string_view(text).substr(split + 1)));

    const std::string file = FileNameOf(input);
    const std::string name = file.substr(0, file.rfind('.')); // a name without point stays
    const std::string folder = FolderOf(input);
    BatchJob job;
    job.Input = (folder.empty() ? WithBackslash(sourceFolder) : folder) + name;
    job.OutputFolder = FolderOf(output);
    if (job.OutputFolder.empty())
        job.OutputFolder = WithBackslash(programFolder);
    job.OutputName = FileNameOf(output);
    if (job.OutputName.empty())
        job.OutputName = name;
    return job;
}

std::string DrawingOf(const BatchJob& job)
{
    return Holds(UpperCase(job.Input), ".DXF") ? job.Input : job.Input + ".DXF";
}

std::string JobLine(const BatchJob& job)
{
    return job.Input + PartSeparator + job.OutputFolder + job.OutputName;
}

} // namespace kv
