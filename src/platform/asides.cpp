// What every host does alike with files that are written aside. Relies on the backend.
#include <utility>

#include "platform/files.h"

namespace kv {

bool CopyStays = false;

FileOutcome MoveStaged(StagedFile& staged)
{
    FileOutcome outcome = MoveOrKeepStaged(staged);
    if (!outcome.Ok())
        DropStaged(staged);
    return outcome;
}

FileOutcome SweepAsides(std::string_view folder, int& swept)
{
    swept = 0;
    std::vector<std::string> paths;
    FileOutcome outcome = ListLeftAsides(folder, paths);
    for (const std::string& path : paths) {
        FileOutcome deleted = DeleteFile(path); // another process may sweep too
        if (deleted.Ok())
            ++swept;
        else if (outcome.Ok())
            outcome = std::move(deleted);
    }
    return outcome;
}

} // namespace kv
