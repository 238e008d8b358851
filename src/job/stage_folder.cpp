// Stages on the disk. Relies on files that are replaced whole; a manifest ends with the sum of its own text
// and lists size and sum of each part, so that half a stage, a copy that was cut off or another file of the
// name is told from a stage.
#include "job/stage_folder.h"

#include <algorithm>
#include <utility>

#include "drilling/drill_head.h"
#include "platform/aside_names.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/settings_grids.h"
#include "writers/program_writers.h"

namespace kv {

namespace {

constexpr std::string_view StageHead = "korvanti stage ";
constexpr std::string_view StageForm = "1\n";
constexpr std::size_t PartBytes = std::size_t{16} << 20; // a part is written when it has as many
constexpr unsigned AsideFolderCounter = 0;               // no file aside has it
constexpr std::size_t MostMarksTold = 4;

std::string ManifestPath(const std::string& folder)
{
    return folder + "manifest";
}

std::string PartPath(const std::string& folder, std::size_t number)
{
    return folder + "part-" + WholeText(static_cast<long long>(number));
}

std::string ProgressPath(const std::string& folder)
{
    return folder + "placed";
}

std::string MarkText(const ContentsMark& mark)
{
    return std::to_string(mark.Size) + " " + std::to_string(mark.Sum);
}

SettingText MarkOfFile(std::string_view name)
{
    std::string contents;
    const FileAnswer answer = ReadIfThere(ExeFolder + std::string(name), contents);
    std::string value = "is not there";
    if (answer.Is == Presence::There)
        value = MarkText(MarkOf(contents));
    if (answer.Is == Presence::CannotTell)
        value = answer.Why.Cause;
    return {std::string(name), value};
}

void PutMark(FieldsText& fields, const ContentsMark& mark)
{
    fields.PutNumber(static_cast<long long>(mark.Size));
    fields.PutNumber(static_cast<long long>(mark.Sum));
}

ContentsMark TakeMark(FieldsReader& reader)
{
    const auto size = static_cast<std::uint64_t>(reader.TakeNumber());
    return {size, static_cast<std::uint64_t>(reader.TakeNumber())};
}

std::string ProgressText(long long placed)
{
    FieldsText fields;
    fields.PutNumber(placed);
    fields.Put(TodayMmDdYy());
    return std::move(fields.Text);
}

} // namespace

std::vector<SettingText> InstallationMarks()
{
    std::vector<SettingText> marks = SettingsOfPrograms();
    const bool genesis = Holds(UpperCase(ExeFolder), "GENESIS");
    marks.push_back({"GENESIS in the program's folder", genesis ? "yes" : "no"});
    for (const std::string_view name : {HeadFileName, EvolutionTemplateName, HbdToolFile, SortOptionFile})
        marks.push_back(MarkOfFile(name));
    return marks;
}

std::string DifferentMarks(const std::vector<SettingText>& theirs, const std::vector<SettingText>& ours)
{
    std::string told;
    std::size_t differ = 0;
    for (std::size_t i = 0; i < std::max(theirs.size(), ours.size()); ++i) {
        if (i < theirs.size() && i < ours.size() && theirs[i] == ours[i])
            continue;
        if (++differ > MostMarksTold)
            continue;
        told += (told.empty() ? "" : ", ") + (i < ours.size() ? ours[i].Key : theirs[i].Key);
    }
    if (differ > MostMarksTold)
        told += " and " + std::to_string(differ - MostMarksTold) + " more";
    return told;
}

std::string StageManifestText(const StageManifest& manifest)
{
    FieldsText fields;
    fields.Text = std::string(StageHead) + std::string(StageForm);
    fields.Put(manifest.Version);
    fields.PutNumber(manifest.Number);
    fields.PutNumber(manifest.Drawings);
    fields.PutNumber(static_cast<long long>(manifest.Marks.size()));
    for (const SettingText& mark : manifest.Marks) {
        fields.Put(mark.Key);
        fields.Put(mark.Value);
    }
    fields.PutNumber(static_cast<long long>(manifest.Parts.size()));
    for (const ContentsMark& part : manifest.Parts)
        PutMark(fields, part);
    PutMark(fields, MarkOf(fields.Text));
    return std::move(fields.Text);
}

std::optional<StageManifest> StageManifestOf(std::string_view text, std::string& cause)
{
    if (!BeginsWith(text, StageHead)) {
        cause = "is no stage: its manifest is another file";
        return std::nullopt;
    }
    const std::string_view whole = text;
    text.remove_prefix(StageHead.size());
    if (!BeginsWith(text, StageForm)) {
        cause = "was made by another version of the program, whose stages have another form";
        return std::nullopt;
    }
    text.remove_prefix(StageForm.size());
    FieldsReader reader(text);
    StageManifest manifest;
    manifest.Version = reader.Take();
    manifest.Number = reader.TakeNumber();
    manifest.Drawings = reader.TakeNumber();
    for (std::size_t left = reader.TakeCount(); left > 0; --left) {
        const std::string_view key = reader.Take();
        manifest.Marks.push_back({std::string(key), std::string(reader.Take())});
    }
    for (std::size_t left = reader.TakeCount(); left > 0; --left)
        manifest.Parts.push_back(TakeMark(reader));
    const std::size_t length = whole.size() - reader.Left(); // of what the sum is taken
    const ContentsMark own = TakeMark(reader);
    if (!reader.Ok || !reader.AtEnd() || own != MarkOf(whole.substr(0, length))) {
        cause = "is half a stage: its manifest is cut off or was changed";
        return std::nullopt;
    }
    return manifest;
}

// --- Writing ---

StageWriter::~StageWriter()
{
    if (!Aside.empty())
        RemoveFolder(FsPath(Aside));
}

FileOutcome StageWriter::Begin(const std::string& folder)
{
    Place = folder;
    while (Place.size() > 1 && Place.ends_with('\\'))
        Place.pop_back();
    const FileAnswer file = AskFile(Place), there = AskFolder(Place);
    if (file.Is == Presence::There || there.Is == Presence::There)
        return {ErrorFileAccess, "is there already"};
    if (file.Is == Presence::CannotTell)
        return file.Why;
    const std::string above = FolderOf(Place);
    FileOutcome outcome = MakeFolders(above);
    if (!outcome.Ok())
        return outcome;
    SweepFolders(FsPath(above));
    Manifest = {};
    Manifest.Version = VersionAndCommit();
    Manifest.Marks = InstallationMarks();
    const std::string aside = above + AsideName(AsideFolderCounter) + "\\";
    RemoveFolder(FsPath(aside)); // of an earlier process of this number
    outcome = MakeFolder(aside);
    if (outcome.Ok())
        Aside = aside;
    return outcome;
}

FileOutcome StageWriter::WritePart()
{
    Manifest.Parts.push_back(MarkOf(Part));
    const FileOutcome outcome = ReplaceFile(PartPath(Aside, Manifest.Parts.size()), Part);
    Part.clear();
    return outcome;
}

FileOutcome StageWriter::Add(const ConvertedJob& job)
{
    FieldsText field;
    field.Put(ConvertedJobText(job));
    Part += field.Text;
    ++Manifest.Drawings;
    return Part.size() < PartBytes ? FileOutcome{} : WritePart();
}

FileOutcome StageWriter::Finish(long long number)
{
    Manifest.Number = number;
    FileOutcome outcome = Part.empty() ? FileOutcome{} : WritePart();
    if (outcome.Ok())
        outcome = ReplaceFile(ManifestPath(Aside), StageManifestText(Manifest));
    if (outcome.Ok() && AskFolder(Place).Is != Presence::NotThere)
        outcome = {ErrorFileAccess, "is there already"};
    if (outcome.Ok())
        outcome = RenameFile(Aside.substr(0, Aside.size() - 1), Place);
    if (outcome.Ok())
        Aside.clear();
    const FileOutcome flushed = FlushFiles();
    return outcome.Ok() ? flushed : outcome;
}

// --- Reading ---

std::string StageReader::Open(const std::string& folder)
{
    *this = {};
    Place = WithBackslash(folder);
    std::string text;
    const FileAnswer answer = ReadIfThere(ManifestPath(Place), text);
    if (answer.Is == Presence::CannotTell)
        return answer.Why.Cause;
    if (answer.Is == Presence::NotThere)
        return AskFolder(Place).Is == Presence::There ? "is no stage: it has no manifest" : "is not there";
    std::string cause;
    std::optional<StageManifest> manifest = StageManifestOf(text, cause);
    if (!manifest)
        return cause;
    Read = std::move(*manifest);
    for (std::size_t part = 1; part <= Read.Parts.size(); ++part) {
        FileStamp stamp;
        const FileAnswer there = AskStamp(PartPath(Place, part), stamp);
        if (there.Is == Presence::CannotTell)
            return there.Why.Cause;
        if (there.Is == Presence::NotThere || stamp.Size != Read.Parts[part - 1].Size)
            return "is half a stage: part " + std::to_string(part) + " of " +
                   std::to_string(Read.Parts.size()) +
                   (there.Is == Presence::NotThere ? " is missing" : " has another size");
    }
    return {};
}

bool StageReader::ReadPart(std::string& cause)
{
    const ContentsMark& mark = Read.Parts[PartsRead++];
    At = 0;
    const FileOutcome outcome = ReadWholeFile(PartPath(Place, PartsRead), Part);
    if (!outcome.Ok())
        cause = outcome.Cause;
    else if (MarkOf(Part) != mark)
        cause = "part " + std::to_string(PartsRead) + " was changed after it was written";
    return cause.empty();
}

std::optional<ConvertedJob> StageReader::Next(std::string& cause)
{
    cause.clear();
    while (At >= Part.size()) {
        if (PartsRead >= Read.Parts.size() || !ReadPart(cause))
            return std::nullopt;
    }
    FieldsReader reader(std::string_view(Part).substr(At));
    const std::string_view field = reader.Take();
    At = Part.size() - reader.Left();
    std::optional<ConvertedJob> job = ConvertedJobOf(field);
    if (!reader.Ok || !job) {
        cause = "part " + std::to_string(PartsRead) + " cannot be understood";
        At = Part.size();
        return std::nullopt;
    }
    return job;
}

// --- What has been placed ---

FileOutcome ReadStageProgress(const std::string& folder, StageProgress& progress)
{
    progress = {};
    std::string text;
    const FileAnswer answer = ReadIfThere(ProgressPath(folder), text);
    if (answer.Is != Presence::There)
        return answer.Why;
    FieldsReader reader(text);
    progress.Placed = reader.TakeNumber();
    progress.When = reader.Take();
    return reader.Ok ? FileOutcome{} : FileOutcome{ErrorFileAccess, "its file `placed` cannot be understood"};
}

std::vector<FileOutcome> WriteStageProgress(const std::vector<StagePlaced>& stages)
{
    std::vector<FileOutcome> outcomes;
    std::vector<StagedFile> files(stages.size());
    std::vector<StagedFile*> staged;
    for (std::size_t i = 0; i < stages.size(); ++i) {
        outcomes.push_back(
            StageFile(ProgressPath(stages[i].Folder), ProgressText(stages[i].Placed), files[i]));
        staged.push_back(&files[i]);
    }
    (void)FlushStaged(staged); // the move of one that could not be says why
    for (std::size_t i = 0; i < stages.size(); ++i)
        if (outcomes[i].Ok())
            outcomes[i] = MoveStaged(files[i]);
    const FileOutcome flushed = FlushFiles();
    for (FileOutcome& outcome : outcomes)
        if (outcome.Ok())
            outcome = flushed;
    return outcomes;
}

} // namespace kv
