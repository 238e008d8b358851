// Marks, and what is done when one is found. A mark is itself a file of the kind that it stands for, so that
// whoever sweeps the settings' folder takes it along. Its contents are the installations that the settings do
// not name. Relies on the settings being loaded; where no mark can be left, as in a folder that is closed to
// the person, the installation is cleared before it is written into.
#include "job/left_asides.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "job/installation.h"
#include "platform/directory.h"
#include "platform/file_lock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/installation_files.h"

namespace kv {

namespace {

constexpr std::string_view MarkLine = "aside 1";
constexpr std::string_view NameOfNoFile = ".kv-mark"; // a mark is never moved to its place

std::set<std::string> Marked; // installations
std::vector<StagedFile> Marks;

std::set<std::string> InstallationsOfSettings()
{
    std::set<std::string> installations = {WithBackslash(Trim(Config.HBDDestinationPath))};
    for (int system = 0; system < ControlSystems; ++system)
        installations.insert(WithBackslash(Trim(DestinationPath(system))));
    installations.insert(WithBackslash(Trim(Config.PTSPath)) + Config.PTSName + ".PTS");
    std::erase_if(installations,
                  [](const std::string& installation) { return FolderOf(installation).empty(); });
    return installations;
}

std::set<std::string> InstallationsOfMark(std::string_view contents)
{
    std::set<std::string> installations;
    bool first = true;
    while (!contents.empty()) {
        const std::size_t end = contents.find('\n');
        const std::string_view line = contents.substr(0, end);
        if (first && line != MarkLine)
            break; // another file that was written aside
        if (!first && end != std::string_view::npos && !FolderOf(line).empty())
            installations.insert(std::string(line));
        first = false;
        contents.remove_prefix(end == std::string_view::npos ? contents.size() : end + 1);
    }
    return installations;
}

// --- Where copies may be ---

// False: not all of them could be seen.
bool AddFoldersIn(const std::string& folder, std::vector<std::string>& folders)
{
    std::vector<std::string> names;
    const FileAnswer answer = ReadFolders(folder, names);
    for (const std::string& name : names)
        folders.push_back(folder + name + "\\");
    return answer.Is != Presence::CannotTell;
}

bool FindFolders(const std::string& installation, std::vector<std::string>& folders)
{
    folders = {FolderOf(installation)};
    if (!installation.ends_with('\\'))
        return true; // a cut list
    bool all = AddFoldersIn(installation + "SRG\\", folders);
    const std::string notes = NotesRoot(installation);
    if (!notes.empty()) {
        all = AddFoldersIn(notes, folders) && all;
        all = AddFoldersIn(notes + "NOC\\", folders) && all;
    }
    if (Holds(UpperCase(installation), "CNC90"))
        folders.push_back(NavettaFolder());
    return all;
}

// --- Clearing ---

struct LeftFiles {
    std::vector<std::string> Copies;
    bool All = true; // every folder could be looked into
    bool Journal = false;
};

// A mark in a folder of an installation, which may be that of the settings, stays to the end.
bool IsOneOf(const std::vector<std::string>& marks, const std::string& copy)
{
    return std::ranges::any_of(marks,
                               [&](const std::string& mark) { return FileNameOf(mark) == FileNameOf(copy); });
}

LeftFiles LookFor(const std::string& installation, const std::vector<std::string>& marks)
{
    LeftFiles left;
    std::vector<std::string> folders;
    left.All = FindFolders(installation, folders);
    for (const std::string& folder : folders) {
        std::vector<std::string> copies;
        left.All = ListLeftAsides(folder, copies).Ok() && left.All;
        for (const std::string& copy : copies) {
            if (!IsOneOf(marks, copy))
                left.Copies.push_back(copy);
        }
    }
    left.Journal = AskFile(JournalOf(AnchorOf(installation))).Is != Presence::NotThere;
    return left;
}

bool DeleteCopies(const std::vector<std::string>& copies)
{
    return std::ranges::count_if(copies, [](const std::string& copy) { return !DeleteFile(copy).Ok(); }) == 0;
}

// A journal may still want the copies: they go when its moves are finished. False when something is left.
bool ClearInstallation(const std::string& installation, const std::vector<std::string>& marks)
{
    const LeftFiles left = LookFor(installation, marks);
    if (left.Copies.empty() && !left.Journal)
        return left.All;
    const std::string anchor = AnchorOf(installation);
    FileLock lock;
    if (lock.TryLock(anchor).Is != LockState::Taken)
        return false; // another process works there
    return FinishMoves(anchor).Ok() && DeleteCopies(left.Copies) && left.All;
}

// Those of another machine's processes, and those that a power cut has brought back, have no mark.
void FinishJournals(const std::set<std::string>& installations)
{
    for (const std::string& installation : installations)
        (void)FinishIfLeft(installation);
}

// Of folders without a journal.
bool ClearFolder(const std::string& folder)
{
    int swept = 0;
    return folder.empty() || SweepAsides(folder, swept).Ok();
}

std::string ContentsOfMark(const std::string& installation)
{
    return InstallationsOfSettings().contains(installation)
               ? std::string()
               : std::string(MarkLine) + "\n" + installation + "\n";
}

} // namespace

void MarkAsides(const std::string& installation)
{
    if (ExeFolder.empty() || !Marked.insert(installation).second)
        return;
    const std::string contents = ContentsOfMark(installation);
    if (contents.empty() && !Marks.empty())
        return; // any mark stands for all installations of the settings
    StagedFile mark;
    if (StageFile(ExeFolder + std::string(NameOfNoFile), contents, mark).Ok() &&
        (contents.empty() || FlushStaged(mark).Ok()) && FlushNameOfStaged(mark).Ok()) {
        Marks.push_back(mark);
        return;
    }
    DropStaged(mark);
    std::vector<std::string> marks;
    if (ListLeftAsides(ExeFolder, marks).Ok())
        ClearInstallation(installation, marks);
}

bool IsMarked(const std::string& installation)
{
    return Marked.contains(installation);
}

void DropAsideMarks()
{
    if (!std::exchange(CopyStays, false)) { // else the next start finds the marks and clears up
        for (StagedFile& mark : Marks)
            DropStaged(mark);
    }
    Marks.clear();
    Marked.clear();
}

AsideMark::AsideMark(const std::string& installation) : Alone(Marked.empty())
{
    MarkAsides(installation);
}

AsideMark::~AsideMark()
{
    if (Alone)
        DropAsideMarks();
}

void ClearLeftAsides()
{
    if (ExeFolder.empty() || !SettingsFault.Ok())
        return; // nobody knows the folders
    std::set<std::string> installations = InstallationsOfSettings();
    FinishJournals(installations);
    std::vector<std::string> marks;
    bool all = ListLeftAsides(ExeFolder, marks).Ok();
    if (marks.empty())
        return;
    for (const std::string& mark : marks) {
        std::string contents;
        all = ReadIfThere(mark, contents).Is != Presence::CannotTell && all;
        installations.merge(InstallationsOfMark(contents));
    }
    for (const std::string& installation : installations)
        all = ClearInstallation(installation, marks) && all;
    for (int system = 0; system < ControlSystems; ++system)
        all = ClearFolder(std::string(Trim(SourcePath(system)))) && all;
    if (all)
        DeleteCopies(marks);
}

} // namespace kv
