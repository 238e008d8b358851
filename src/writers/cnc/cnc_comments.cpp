// Keeps the comment head that an operator wrote into a program when the program is made again.
// Relies on the old file's place, which is found by rules of its own; leaves nothing behind.
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/genesis_names.h"
#include "writers/cnc/program_index.h"
#include "writers/installation_files.h"
#include "writers/job_output.h"
#include "writers/output_names.h"
#include "writers/program_file.h"

namespace kv {

namespace {

constexpr std::size_t HeadLines = 10;

struct OldProgramPlace {
    std::string Index; // empty: needs none
    std::string Path;  // empty: nowhere
};

// The old program under an index. A name of one character and a folder without index lead nowhere, and the
// folder is always that of the settings.
OldProgramPlace OldIndexedProgram()
{
    const bool folderOnly = Run.PartName.ends_with('\\');
    const std::string name = OutputFileName();
    const std::string folder = folderOnly ? Run.PartName : ProgramFolder(Run.ControlType);
    if (name.size() < 2 || folder.empty())
        return {};
    return {folder + std::string(IndexFileName), folder + PlaceUnderIndex(name)};
}

OldProgramPlace OldProgram()
{
    if (!IsGenesisInstallation())
        return OldIndexedProgram();
    const std::string folder = ProgramFolder(Run.ControlType);
    const std::string name = GenesisFileName(OutputName(), OutputName());
    return {{}, folder.empty() || name.empty() ? std::string() : folder + name};
}

std::vector<std::string> CommentsInHead(const std::string& head)
{
    std::vector<std::string> comments;
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

// What is likely to be there at the drawing's turn. Looked for as it is spelled alone: the folder changes all
// the time while others place programs in it, and would be listed anew for each drawing.
std::vector<std::string> LikelyComments(const std::string& path)
{
    std::string head;
    return ReadHeadAsSpelled(path, head, HeadBytesOfPrograms) ? CommentsInHead(head)
                                                              : std::vector<std::string>{};
}

} // namespace

std::vector<std::string> CommentsOfProgramAt(const std::string& index, const std::string& path)
{
    if (!index.empty() && !FileIsThere(index))
        return {};
    std::string head;
    const FileAnswer answer = HeadOfProgram(path, head);
    ThrowUnlessOk(path, answer.Why);
    if (answer.Is != Presence::There)
        return {};
    return CommentsInHead(head);
}

std::vector<std::string> CommentsOfOldProgram()
{
    const OldProgramPlace place = OldProgram();
    if (place.Path.empty())
        return {};
    if (!Outputs.Recording)
        return CommentsOfProgramAt(place.Index, place.Path);
    std::vector<std::string> comments = LikelyComments(place.Path);
    (void)IsRecorded({StepKind::Comments, place.Index, place.Path, {}, comments});
    return comments;
}

} // namespace kv
