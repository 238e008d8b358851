// Takes over what a drawing gives to the disk. Programs are written aside at once, since a list may make
// more of them than memory should hold; the files that many drawings change are only tried, since another
// process may change them before their turn comes. Relies on the hook that clears an installation of what
// an ended process left; leaves old files as they are.
#include "writers/job_output.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <map>
#include <set>
#include <utility>

#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "writers/own_files.h"

namespace kv {

OutputQueue Outputs;

namespace {

// Programs that wait, by their paths in upper case: the next one of that name in any spelling takes the
// same place, as it would if the file were there.
struct WaitingProgram {
    std::string Path, Place, Head;
};
std::map<std::string, WaitingProgram, std::less<>> WaitingPrograms;
std::set<std::string, std::less<>> ChangedFiles; // paths

void Remember(const ProgramOutput& program)
{
    WaitingPrograms.insert_or_assign(UpperCase(program.Path),
                                     WaitingProgram{program.Path, program.Staged.Place, program.Head});
}

void RememberOutput(const JobOutput& output)
{
    for (const ProgramOutput& program : output.Programs)
        Remember(program);
    for (const FileChange& change : output.Changes)
        ChangedFiles.insert(change.Path);
}

void RememberAgain()
{
    WaitingPrograms.clear();
    ChangedFiles.clear();
    for (const JobOutput& job : Outputs.Waiting)
        RememberOutput(job);
    RememberOutput(Outputs.Current);
}

// With a file of this very spelling on the disk, one of another spelling is another file.
const WaitingProgram* WaitingFor(const std::string& path, bool onDisk)
{
    const auto found = WaitingPrograms.find(UpperCase(path));
    if (found == WaitingPrograms.end() || (onDisk && found->second.Path != path))
        return nullptr;
    return &found->second;
}

FileOutcome MayHoldPrograms(const std::string& folder)
{
    // Never a file of the folder that the program happens to be started in.
    if (folder.empty())
        return {ErrorPathNotFound, "no program folder is set"};
    const FileAnswer answer = AskFolder(folder);
    if (answer.Is == Presence::NotThere)
        return {ErrorPathNotFound, "the folder does not exist"};
    return answer.Why;
}

FileOutcome TryChange(FileChange& change)
{
    std::string text;
    const FileAnswer answer = ReadIfThere(change.Path, text);
    if (answer.Is == Presence::CannotTell)
        return answer.Why;
    std::optional<std::string> old;
    if (answer.Is == Presence::There)
        old = std::move(text);
    const FileChange* const alone = &change;
    const std::optional<std::string> changed = change.Changed(std::move(old), {&alone, 1});
    if (!changed)
        return {};
    const FileOutcome outcome = StageFile(change.Path, *changed, change.Staged);
    if (outcome.Ok())
        change.Mark = MarkOf(*changed);
    return outcome;
}

FileOutcome EnterInstallation(const std::string& installation)
{
    return Outputs.Enter == nullptr ? FileOutcome{} : Outputs.Enter(installation);
}

template <typename Record> void CutTo(std::vector<Record>& records, std::size_t count)
{
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(std::min(count, records.size())),
                  records.end());
}

} // namespace

// FNV-1a over eight bytes at a time: an index of many megabytes is marked at each flush.
ContentsMark MarkOf(std::string_view contents)
{
    constexpr std::uint64_t Start = 14695981039346656037U, Prime = 1099511628211U;
    std::uint64_t sum = Start;
    for (std::size_t at = 0; at < contents.size(); at += sizeof sum) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, contents.data() + at, std::min(sizeof eight, contents.size() - at));
        sum = (std::rotl(sum, 29) ^ eight) * Prime;
    }
    return {contents.size(), sum};
}

FileOutcome HandOverProgram(const std::string& installation, const std::string& path,
                            std::string_view contents)
{
    if (Outputs.KeepsTexts)
        Outputs.Texts.push_back({path, std::string(contents)});
    if (IsRecorded({StepKind::Program, installation, path, std::string(contents), {}}))
        return {};
    FileOutcome outcome = MayHoldPrograms(FolderOf(path));
    if (outcome.Ok())
        outcome = MayBeWritten(path);
    if (outcome.Ok())
        outcome = EnterInstallation(installation);
    if (!outcome.Ok())
        return outcome;
    const FileAnswer answer = AskFile(path);
    if (answer.Is == Presence::CannotTell)
        return answer.Why;
    ProgramOutput program{installation, path, std::string(contents.substr(0, HeadBytesOfPrograms)),
                          {},           {},   {}};
    outcome = StageFile(path, contents, program.Staged);
    if (!outcome.Ok())
        return outcome;
    if (const WaitingProgram* const waiting = WaitingFor(path, answer.Is == Presence::There)) {
        program.Staged.Place = waiting->Place;
        program.ReplacedHead = waiting->Head;
    } else if (answer.Is == Presence::There) {
        static_cast<void>(
            ReadFileHead(path, program.ReplacedHead, HeadBytesOfPrograms)); // else nothing is known
    }
    program.Mark = MarkOf(contents);
    Remember(program);
    Outputs.Current.Files.push_back(program.Staged.Place);
    Outputs.Current.Bytes += contents.size();
    Outputs.Current.Programs.push_back(std::move(program));
    return {};
}

FileOutcome HandOverChange(FileChange change)
{
    FileOutcome outcome = EnterInstallation(change.Installation);
    if (!outcome.Ok())
        return outcome;
    // In a list the files of all drawings are worked out once for many of them.
    const bool ofAll = change.Kind == ChangeKind::Index || change.Kind == ChangeKind::CutList;
    if (!(Outputs.Together && ofAll) && !ChangedFiles.contains(change.Path))
        outcome = TryChange(change);
    if (!outcome.Ok())
        return outcome;
    const std::string place = change.Staged.Place;
    Outputs.Current.Files.push_back(place.empty() ? ToHostPath(change.Path) : place);
    ChangedFiles.insert(change.Path);
    Outputs.Current.Changes.push_back(std::move(change));
    return {};
}

void HandOverWanted(WantedProgram wanted)
{
    const std::vector<std::string> words = {std::to_string(static_cast<int>(wanted.Form)),
                                            wanted.WithoutCode ? "1" : "0"};
    if (!IsRecorded({StepKind::Wanted, wanted.Folder, wanted.Path, wanted.Name, words}))
        Outputs.Current.Wanted.push_back(std::move(wanted));
}

void HandOverName(std::string name)
{
    if (!IsRecorded({StepKind::Name, {}, {}, name, {}}))
        Outputs.Current.Made.push_back(std::move(name));
}

OutputMark MarkOutput()
{
    const JobOutput& output = Outputs.Current;
    return {output.Programs.size(), output.Changes.size(), output.Made.size(), output.Files.size(),
            Outputs.Steps.size()};
}

void DropOutputSince(const OutputMark& mark)
{
    JobOutput& output = Outputs.Current;
    for (std::size_t i = mark.Programs; i < output.Programs.size(); ++i)
        DropStaged(output.Programs[i].Staged);
    for (std::size_t i = mark.Changes; i < output.Changes.size(); ++i)
        DropStaged(output.Changes[i].Staged);
    CutTo(output.Programs, mark.Programs);
    CutTo(output.Changes, mark.Changes);
    CutTo(output.Made, mark.Made);
    CutTo(output.Files, mark.Files);
    CutTo(Outputs.Steps, mark.Steps);
    RememberAgain();
}

void DropOutput(JobOutput& output)
{
    for (ProgramOutput& program : output.Programs)
        DropStaged(program.Staged);
    for (FileChange& change : output.Changes)
        DropStaged(change.Staged);
    output = {};
    if (&output == &Outputs.Current)
        Outputs.Steps.clear();
    RememberAgain();
}

void ForgetWaitingPrograms()
{
    RememberAgain();
}

FileAnswer HeadOfProgram(const std::string& path, std::string& head)
{
    head.clear();
    const FileAnswer answer = AskFile(path);
    if (answer.Is == Presence::CannotTell)
        return answer;
    if (const WaitingProgram* const waiting = WaitingFor(path, answer.Is == Presence::There)) {
        head = waiting->Head;
        return {Presence::There, {}};
    }
    if (answer.Is == Presence::NotThere)
        return answer;
    const FileOutcome outcome = ReadFileHead(path, head, HeadBytesOfPrograms);
    return outcome.Ok() ? answer : FileAnswer{Presence::CannotTell, outcome};
}

} // namespace kv
