// Writing of the program file and of the files beside it, with the words that an operator knows for
// a program that cannot be written. Relies on staged files; a failure leaves the run aborted.
#include "writers/program_file.h"

#include "platform/paths.h"
#include "platform/run_error.h"
#include "state/report.h"
#include "state/run.h"
#include "writers/own_files.h"

namespace kv {

namespace {

constexpr std::size_t BufferLimit = 30000; // characters; the line that passes it still belongs to it
constexpr int BufferCount = 21;

bool Written(const std::string& path, const FileOutcome& outcome)
{
    if (outcome.Ok())
        return true;
    ReportMessage(1, outcome.Number == ErrorPathNotFound ? "ERROR: Destination Path Not Found."
                                                         : WholeText(outcome.Number));
    ReportMessage(1, ShownPath(path) + ": " + outcome.Cause);
    Run.RunFailed = True;
    return false;
}

void ThrowUnlessOk(const std::string& path, const FileOutcome& outcome)
{
    if (!outcome.Ok())
        throw RunError{outcome.Number, ShownPath(path) + ": " + outcome.Cause};
}

} // namespace

std::string TextOfLines(const std::vector<std::string>& lines)
{
    std::string text;
    std::size_t bufferStart = 0;
    int buffer = 1;
    for (const std::string& line : lines) {
        if (text.size() - bufferStart > BufferLimit) {
            if (buffer == BufferCount)
                break; // dropped without a word
            ++buffer;
            bufferStart = text.size();
        }
        text += line;
        text += "\r\n";
    }
    return text;
}

StagedSet::~StagedSet()
{
    for (StagedFile* const file : {&Index, &Navetta, &Notes, &Program}) {
        if (!file->Aside.empty())
            DropStaged(*file);
    }
}

bool StageProgram(const std::string& path, std::string_view contents, StagedFile& staged)
{
    // Never a file of the folder that the program happens to be started in.
    if (FolderOf(path).empty())
        return Written(path, {ErrorPathNotFound, "no program folder is set"});
    if (!FolderExists(FolderOf(path)))
        return Written(path, {ErrorPathNotFound, "the folder does not exist"});
    if (!Written(path, MayBeWritten(path)))
        return false;
    return Written(path, StageFile(path, contents, staged));
}

bool MoveProgram(const std::string& path, StagedFile& staged)
{
    return Written(path, MoveStaged(staged));
}

void StageOrThrow(const std::string& path, std::string_view contents, StagedFile& staged)
{
    ThrowUnlessOk(path, StageFile(path, contents, staged));
}

void MoveOrThrow(const std::string& path, StagedFile& staged)
{
    if (!staged.Aside.empty())
        ThrowUnlessOk(path, MoveStaged(staged));
}

void MakeFoldersOrThrow(const std::string& folder)
{
    ThrowUnlessOk(folder, MakeFolders(folder));
}

} // namespace kv
