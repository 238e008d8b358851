// Keeps the comment head that an operator wrote into a program when the program is made again.
// Relies on the old file's place, which is found by rules of its own; leaves nothing behind.
#include "platform/files.h"
#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/genesis_names.h"
#include "writers/cnc/program_index.h"
#include "writers/job_output.h"
#include "writers/output_names.h"
#include "writers/program_file.h"

namespace kv {

namespace {

constexpr std::size_t HeadLines = 10;

// The old program under an index; empty where none can be found. A name of one character and a folder
// without index lead nowhere, and the folder is always that of the settings.
std::string OldIndexedProgram()
{
    const bool folderOnly = Run.PartName.ends_with('\\');
    const std::string name = OutputFileName();
    const std::string folder = folderOnly ? Run.PartName : ProgramFolder(Run.ControlType);
    if (name.size() < 2 || folder.empty() || !FileIsThere(folder + std::string(IndexFileName)))
        return {};
    return folder + PlaceUnderIndex(name);
}

std::string OldProgram()
{
    if (!IsGenesisInstallation())
        return OldIndexedProgram();
    const std::string folder = ProgramFolder(Run.ControlType);
    const std::string name = GenesisFileName(OutputName(), OutputName());
    return folder.empty() || name.empty() ? std::string() : folder + name;
}

} // namespace

std::vector<std::string> CommentsOfOldProgram()
{
    std::vector<std::string> comments;
    const std::string path = OldProgram();
    if (path.empty())
        return comments;
    std::string head;
    const FileAnswer answer = HeadOfProgram(path, head);
    ThrowUnlessOk(path, answer.Why);
    if (answer.Is != Presence::There)
        return comments;

    Long position = 1;
    for (std::size_t i = 0; i < HeadLines && position > 0; ++i) {
        std::string_view line = ParseString(position, head, "\r");
        if (BeginsWith(line, "\n"))
            line.remove_prefix(1);
        const std::string comment = UpperCase(Trim(line));
        if (BeginsWith(comment, "*") || BeginsWith(comment, "-"))
            comments.push_back(comment);
    }
    return comments;
}

} // namespace kv
