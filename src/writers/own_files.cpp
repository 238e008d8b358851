// Keeps the settings, the drill head, the template and the like from being replaced by a program of their
// name. Relies on the program's own folder; what stands in it and does not begin as a program or a cut
// list does is one of its files.
#include "writers/own_files.h"

#include <algorithm>

#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::string_view NeverReplaced[] = {"KV90.INI", "INDICE.PRG"}; // in any folder
constexpr std::string_view OwnBeginnings[] = {"G70X", "G71X", "TPA\\", "2.00,"};
constexpr std::string_view EvolutionEnding = ".CNC"; // its programs begin as the template does
constexpr std::size_t LongestBeginning = 5;

bool IsEarlierOutput(const std::string& path)
{
    if (UpperCase(path).ends_with(EvolutionEnding))
        return true;
    std::string head;
    if (!ReadFileHead(path, head, LongestBeginning).Ok())
        return false;
    return std::any_of(std::begin(OwnBeginnings), std::end(OwnBeginnings),
                       [&](std::string_view beginning) { return BeginsWith(head, beginning); });
}

// However the path to it is spelled: where the settings are, an installation is.
bool IsOwnFolder(const std::string& folder)
{
    return EqualIgnoringCase(folder, ExeFolder) || FileIsThere(folder + std::string(NeverReplaced[0]));
}

bool IsOwnFile(const std::string& path)
{
    std::string name = UpperCase(FileNameOf(path));
    while (name.ends_with('.') || name.ends_with(' ')) // Windows leaves them out
        name.pop_back();
    if (std::find(std::begin(NeverReplaced), std::end(NeverReplaced), name) != std::end(NeverReplaced))
        return true;
    return IsOwnFolder(FolderOf(path)) && FileIsThere(path) && !IsEarlierOutput(path);
}

} // namespace

FileOutcome MayBeWritten(const std::string& path)
{
    if (IsOwnFile(path))
        return {ErrorFileAccess, "a file of Korvanti itself or of the control; it is not replaced"};
    return {};
}

} // namespace kv
