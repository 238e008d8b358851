// The text of a program file, and its way to those that bring it to its place. Relies on the queue of what
// drawings give to the disk; a failure leaves the run aborted.
#include "writers/program_file.h"

#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "state/report.h"
#include "state/run.h"
#include "writers/job_output.h"

namespace kv {

namespace {

constexpr std::size_t BufferLimit = 30000; // characters; the line that passes it still belongs to it
constexpr int BufferCount = 21;

bool Written(const std::string& path, const FileOutcome& outcome)
{
    if (outcome.Ok())
        return true;
    if (outcome.Number == ErrorPathNotFound)
        Tell(Message::DestinationNotFound);
    else
        Tell(Message::FileErrorNumber, {{"error", outcome.Number}});
    Tell(Message::FileErrorCause, {{"file", ShownPath(path)}, {"cause", outcome.Cause}});
    Run.RunFailed = True;
    return false;
}

const std::string& TextOf(const std::string& line)
{
    return line;
}

const std::string& TextOf(const ProgramLine& line)
{
    return line.Text;
}

template <typename Line> std::string BufferedText(const std::vector<Line>& lines)
{
    std::string text;
    std::size_t bufferStart = 0;
    int buffer = 1;
    for (const Line& line : lines) {
        if (text.size() - bufferStart > BufferLimit) {
            if (buffer == BufferCount)
                break; // dropped without a word
            ++buffer;
            bufferStart = text.size();
        }
        text += TextOf(line);
        text += "\r\n";
    }
    return text;
}

} // namespace

std::string TextOfLines(const std::vector<std::string>& lines)
{
    return BufferedText(lines);
}

std::string TextOfProgramLines(const std::vector<ProgramLine>& lines)
{
    return BufferedText(lines);
}

bool HandOverReported(const std::string& folder, const std::string& path, std::string_view contents)
{
    return Written(path, HandOverProgram(folder, path, contents));
}

void MakeFoldersOrThrow(const std::string& folder)
{
    if (!IsRecorded({StepKind::Folders, {}, folder, {}, {}}))
        ThrowUnlessOk(folder, MakeFolders(folder));
}

} // namespace kv
