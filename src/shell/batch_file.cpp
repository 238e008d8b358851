// BATCH.LST as a text: cut into lines, told apart, its commands obeyed and its jobs read. Whoever
// writes it may end lines with CR, LF or both, quote paths and spell them in any case. Upper-casing
// leaves no byte 0xFF in a line, so that none can be taken for the separator of a job line. Names that CP1252
// does not hold get their stand-ins.
#include "shell/batch_file.h"

#include <algorithm>

#include "job/job_driver.h"
#include "platform/nearest_letters.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/stand_ins.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr std::string_view LineEnds = "\r\n";
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

struct CommandRow {
    std::string_view Command;
    bool BatchSwitches::*Switch;
    bool Off;
};
constexpr CommandRow CommandRows[] = {
    {"!CNCOFF", &BatchSwitches::CncOff, true},
    {"!HBDOFF", &BatchSwitches::HbdOff, true},
    {"!CNCON", &BatchSwitches::CncOff, false},
    {"!HBDON", &BatchSwitches::HbdOff, false},
};

// Of a line in UTF-8: each of its two paths by itself, parted where ReadBatchJob parts them.
std::string AnsiOfLine(std::string_view written)
{
    std::string line(written);
    ReplaceChar(line, '"', ' ');
    const std::string_view text = Trim(line);
    std::size_t split = text.find('^');
    if (split == std::string_view::npos)
        split = text.find(' ');
    if (split == std::string_view::npos)
        return PathFromUtf8(text);
    return PathFromUtf8(TrimRight(text.substr(0, split))) + text[split] +
           PathFromUtf8(TrimLeft(text.substr(split + 1)));
}

// Lists are CP1252. Programs that know no code pages write UTF-8 all the same, and letters of CP1252 that
// happen to be UTF-8 are in no name.
std::string TextOfLine(std::string_view written)
{
    const bool plain = std::ranges::all_of(written, [](char c) { return static_cast<signed char>(c) >= 0; });
    return plain || !IsUtf8(written) ? std::string(written) : AnsiOfLine(written);
}

BatchLine ReadLine(std::string_view written)
{
    BatchLine line;
    line.Written = written;
    line.Text = UpperCase(TextOfLine(written));
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
    if (BeginsWith(contents, Utf8Mark))
        contents.remove_prefix(Utf8Mark.size());
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

bool FollowBatchCommand(std::string_view command, BatchSwitches& switches)
{
    for (const CommandRow& row : CommandRows) {
        if (row.Command != command)
            continue;
        switches.*row.Switch = row.Off;
        return true;
    }
    return false;
}

std::string CommandsBetween(const BatchSwitches& from, const BatchSwitches& to)
{
    std::string text;
    for (const CommandRow& row : CommandRows) {
        if (from.*row.Switch == to.*row.Switch || to.*row.Switch != row.Off)
            continue;
        text += row.Command;
        text += LineEnd;
    }
    return text;
}

void ObeyBatchCommand(std::string_view command)
{
    BatchSwitches switches{Run.CncOff != False, Run.HbdOff != False};
    FollowBatchCommand(command, switches);
    Run.CncOff = switches.CncOff ? True : False;
    Run.HbdOff = switches.HbdOff ? True : False;
}

std::string BatchLineKey(const BatchLine& line, const BatchSwitches& switches)
{
    std::string key = switches.CncOff ? "-" : "+";
    key += switches.HbdOff ? '-' : '+';
    return key.append(Trim(line.Text));
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

std::string BatchIdentityHead(std::string_view folder)
{
    return UpperCase(folder) + '|';
}

std::string BatchLineIdentity(std::string_view folder, const BatchLine& line, const BatchSwitches& switches,
                              int equalOnesAfterIt)
{
    return BatchIdentityHead(folder) + BatchLineKey(line, switches) + '|' + WholeText(equalOnesAfterIt);
}

std::string JobLine(const BatchJob& job)
{
    return job.Input + PartSeparator + job.OutputFolder + job.OutputName;
}

} // namespace kv
