// Compares what a drawing gives to the disk with what is there. Relies on outputs that are still aside, so
// that the older files are whole; leaves lines in the report. What cannot be read here is not spoken of: the
// drawing's own files have their own lines.
#include "writers/left_programs.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
#include <utility>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/installation_files.h"
#include "writers/output_names.h"
#include "writers/program_families.h"

namespace kv {

namespace {

constexpr Int EvolutionControl = 2;
constexpr std::string_view OwnDescription = "KORVANTI "; // what a program without description has

std::map<std::string, std::string, std::less<>> WriterOf; // by the program's host path, of this list

// --- Where programs are ---

std::string PathOfName(const WantedProgram& wanted, const std::string& name)
{
    return wanted.Form == ProgramForm::Indexed ? IndexedPlace(wanted.Folder, name)
                                               : GenesisPlace(wanted.Folder, wanted.Name, name);
}

WantedProgram WantedOfControl(const std::string& name)
{
    const std::string folder = FolderOf(Run.PartName);
    WantedProgram wanted;
    wanted.Name = name;
    wanted.Folder = folder.empty() ? ProgramFolder(Run.ControlType) : folder;
    if (Run.ControlType == EvolutionControl) {
        wanted.Folder = ProgramFolder(EvolutionControl);
        wanted.Path = wanted.Folder + name + ".CNC";
        return wanted;
    }
    const bool genesis = Run.ControlType != 0;
    if (genesis && !folder.empty()) { // all its portions go to the same file
        wanted.Path = folder + name;
        return wanted;
    }
    wanted.Form = genesis ? ProgramForm::Genesis : ProgramForm::Indexed;
    wanted.Path = PathOfName(wanted, name);
    return wanted;
}

// Empty where the digits take the place of the name's last characters: those of other names end alike.
std::string PathOfPortion(const WantedProgram& wanted, int portion)
{
    const std::string digits = WholeText(portion);
    const bool hasRoom = wanted.Name.size() + digits.size() <= LongestProgramName;
    return wanted.Form == ProgramForm::Lone || !hasRoom ? std::string()
                                                        : PathOfName(wanted, wanted.Name + digits);
}

void HandOverWantedOf(const std::string& name, bool withoutCode)
{
    if (Compact(name).empty())
        return;
    if (Run.CncOff == 0) {
        WantedProgram wanted = WantedOfControl(name);
        wanted.WithoutCode = withoutCode;
        HandOverWanted(std::move(wanted));
    }
    if (Run.HbdOff == 0 && Config.MakeHBD != 0 && Config.HbdAvailable) {
        WantedProgram wanted;
        wanted.Name = name;
        wanted.Path = HbdProgramPath(name);
        wanted.WithoutCode = withoutCode;
        HandOverWanted(std::move(wanted));
    }
}

// --- What is there ---

std::string_view LineAt(std::string_view text, std::size_t index)
{
    for (; index > 0; --index) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos)
            return {};
        text.remove_prefix(end + 1);
    }
    return text.substr(0, text.find_first_of("\r\n"));
}

// Of the header; 0: it names none.
long long LinesByHeader(std::string_view header)
{
    const std::size_t at = header.rfind('N');
    long long lines = 0;
    if (BeginsWith(header, "G7") && at != std::string_view::npos)
        std::from_chars(header.data() + at + 1, header.data() + header.size(), lines);
    return lines;
}

// A portion repeats the header of the whole program, and so has fewer lines than it says.
bool IsPortion(const std::string& path, std::string_view head)
{
    const long long lines = LinesByHeader(LineAt(head, 0));
    std::string contents;
    return lines > 0 && ReadIfThere(path, contents).Is == Presence::There &&
           std::count(contents.begin(), contents.end(), '\n') < lines;
}

bool IsMade(const JobOutput& job, const std::string& path)
{
    return std::ranges::any_of(
        job.Programs, [&](const ProgramOutput& program) { return EqualIgnoringCase(program.Path, path); });
}

// When the drawings before this one are placed says nothing about them: what waits counts as if it was there.
const ProgramOutput* WaitingAt(const std::string& path)
{
    for (auto job = Outputs.Waiting.rbegin(); job != Outputs.Waiting.rend(); ++job)
        for (const ProgramOutput& program : job->Programs)
            if (program.Path == path)
                return &program;
    return nullptr;
}

void AddLeft(const WantedProgram& wanted, const std::string& path, std::vector<std::string>& left)
{
    const bool listed = wanted.Form == ProgramForm::Indexed && IsInIndexOf(wanted.Folder, path);
    left.push_back(ShownPath(path) + (listed ? " (listed in the index)" : ""));
}

void GatherLeft(const JobOutput& job, const WantedProgram& wanted, std::vector<std::string>& left)
{
    std::string head;
    if (!IsMade(job, wanted.Path) && HeadOfProgram(wanted.Path, head).Is == Presence::There)
        AddLeft(wanted, wanted.Path, left);
    for (int portion = 1;; ++portion) {
        const std::string path = PathOfPortion(wanted, portion);
        if (path.empty())
            return;
        if (IsMade(job, path))
            continue;
        // As it is spelled alone, which costs little: no drawing but one in a thousand has portions.
        const ProgramOutput* const waiting = WaitingAt(path);
        const std::string place = waiting == nullptr ? path : FromHostPath(waiting->Staged.Aside);
        if (!ReadHeadAsSpelled(place, head, HeadBytesOfPrograms) || !IsPortion(place, head))
            return;
        AddLeft(wanted, path, left);
    }
}

// --- What is replaced ---

// Empty where the program names none, or has that of a drawing without one.
std::string_view DescriptionIn(std::string_view head)
{
    constexpr std::string_view ofLine = "G150(", ofField = "$=";
    constexpr std::size_t mostLines = 8;
    for (std::size_t i = 0; i < mostLines; ++i) {
        std::string_view line = LineAt(head, i);
        if (BeginsWith(line, ofLine))
            line = line.substr(ofLine.size(), line.find(')') - ofLine.size());
        else if (BeginsWith(line, ofField))
            line.remove_prefix(ofField.size());
        else
            continue;
        line = Trim(line);
        return BeginsWith(line, OwnDescription) ? std::string_view() : line;
    }
    return {};
}

// By one spelling, without "." and "..".
std::filesystem::path PlainPlace(const std::string& path)
{
    const std::string host = ToHostPath(path);
    return std::filesystem::path(std::u8string(host.begin(), host.end())).lexically_normal();
}

// Two spellings of one path, or two paths to one file, where letters of either case are the same, say.
bool IsSameDrawing(const std::string& one, const std::string& other)
{
    if (one == other)
        return true;
    const std::filesystem::path first = PlainPlace(one), second = PlainPlace(other);
    std::error_code error;
    return first == second || std::filesystem::equivalent(first, second, error);
}

MessageLine LineAboutReplaced(const ProgramOutput& program)
{
    const MessageValue path("program", ShownPath(program.Path));
    const auto writer = WriterOf.find(program.Staged.Place);
    if (writer != WriterOf.end()) {
        if (IsSameDrawing(writer->second, Run.SourceFile))
            return {};
        return {Message::OtherDrawingReplaced, {path, {"other", ShownPath(writer->second)}}};
    }
    const std::string_view older = DescriptionIn(program.ReplacedHead), made = DescriptionIn(program.Head);
    if (older.empty() || made.empty() || older == made)
        return {};
    return {Message::OtherDescriptionReplaced, {path, {"other", older}}};
}

} // namespace

void NoteWantedPrograms(bool withoutCode)
{
    // That a name was changed for its file is reported where a program is made.
    const bool before = std::exchange(Run.FileNameChanged, true);
    HandOverWantedOf(OutputFileName(), withoutCode);
    Run.FileNameChanged = before;
}
void TellReplacedPrograms(const JobOutput& job)
{
    std::set<std::string> seen;
    for (const ProgramOutput& program : job.Programs)
        if (seen.insert(program.Staged.Place).second)
            Tell(LineAboutReplaced(program));
}

void TellLeftPrograms(const JobOutput& job)
{
    std::vector<std::string> left;
    bool wantsCode = false;
    for (const WantedProgram& wanted : job.Wanted) {
        GatherLeft(job, wanted, left);
        wantsCode = wantsCode || !wanted.WithoutCode;
    }
    if (!left.empty())
        Tell(job.Programs.empty() ? Message::OlderProgramLeft : Message::ProgramsLeft,
             {{"programs", FewOf(left)}});
    else if (wantsCode && job.Programs.empty())
        Tell(Message::NothingWritten);
}

void RememberWriter(const JobOutput& job, const std::string& drawing)
{
    for (const ProgramOutput& program : job.Programs)
        WriterOf.insert_or_assign(program.Staged.Place, drawing);
}

void ForgetProgramsOfList()
{
    WriterOf.clear();
}

std::string FewOf(const std::vector<std::string>& names)
{
    constexpr std::size_t most = 10;
    std::string text;
    for (std::size_t i = 0; i < std::min(most, names.size()); ++i)
        text += (i == 0 ? "" : ", ") + names[i];
    if (names.size() > most)
        text += " and " + WholeText(static_cast<long long>(names.size() - most)) + " more";
    return text;
}

} // namespace kv
