// Index records, places of programs, and a program with all that goes with it: program file, index,
// hand-over to the control, notes, list of programs made. Relies on the job's output name and the
// settings; leaves all of it to those that bring it to its place.
#include "writers/cnc/program_index.h"

#include <bit>
#include <optional>
#include <span>
#include <utility>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/navetta.h"
#include "writers/cnc/notes.h"
#include "writers/installation_files.h"
#include "writers/job_output.h"
#include "writers/output_names.h"
#include "writers/program_families.h"
#include "writers/program_file.h"
#include "writers/program_writers.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr std::size_t DescriptionWidth = 25;
constexpr std::size_t DateWidth = 8;

void AppendSingle(std::string& record, Single value)
{
    std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    for (int i = 0; i < 4; ++i, bits >>= 8)
        record += static_cast<char>(bits & 0xFF); // lowest byte first, on every machine
}

// The strongest kind of work wins: a horizontal bore over a groove over drilling and routes.
char KindLetterOf(const WriterMemory& memory, bool horizontalWritten)
{
    if (horizontalWritten)
        return 'N';
    if (memory.GrooveWritten)
        return 's';
    return memory.TopDrillingWritten || memory.RouteWritten ? 'S' : '\0';
}

char KindLetter(bool horizontalWritten)
{
    const char letter = KindLetterOf(Writers, horizontalWritten);
    if (letter != KindLetterOf(WritersAlone, horizontalWritten))
        NoteTakenOver("kind of work in the index", std::string(1, letter));
    return letter;
}

void Warn(Message number, const std::string& file)
{
    TellInABox(number, {{"file", file}}, ProductName, BoxIcon::Warning);
}

void FailWithoutIndex(const std::string& folder)
{
    const std::string shown = folder.empty() ? folder : ShownPath(folder);
    Warn(Message::IndexNotFound, shown + std::string(IndexFileName));
    Tell(Message::ImportFailed);
    if (folder.empty())
        Tell(Message::NoProgramFolderSet);
    else if (!FolderIsThere(folder))
        Tell(Message::ProgramFolderMissing, {{"folder", shown}});
    FailDrawing();
}

std::optional<std::string> IndexWithRecords(std::optional<std::string> index,
                                            std::span<const FileChange* const> changes)
{
    if (!index || index->size() % IndexRecordSize != 0)
        return std::nullopt;
    IndexFile file(std::move(*index));
    for (const FileChange* const change : changes)
        file.Put(change->Text);
    return file.Text();
}

FileChange RecordChange(const std::string& folder, const std::string& path, std::string record)
{
    FileChange change;
    change.Kind = ChangeKind::Index;
    change.Changed = IndexWithRecords;
    change.Installation = folder;
    change.Path = path;
    change.Text = std::move(record);
    return change;
}

// False when the index cannot be written. One of a broken length is told and left as it is: the program is
// written, but no control finds it, so the drawing is no converted one.
bool HandOverRecord(const std::string& folder, const std::string& path, std::string record)
{
    if (IsRecorded({StepKind::Record, folder, path, record, {}}))
        return true;
    FileStamp stamp;
    FileOutcome outcome = AskStamp(path, stamp).Why;
    if (outcome.Ok() && stamp.Size % IndexRecordSize != 0) {
        ReportBrokenIndex(path, stamp.Size);
        if (Run.RunFailed == False) // a portion before has said so
            FailDrawing();
        return true;
    }
    if (outcome.Ok())
        outcome = HandOverChange(RecordChange(folder, path, std::move(record)));
    if (outcome.Ok())
        return true;
    WarnOfIndex(path);
    Tell(Message::IndexCause, {{"file", ShownPath(path)}, {"cause", outcome.Cause}});
    FailDrawing();
    return false;
}

// The job's own folder, else the one that the settings name now.
std::string IndexFolder(std::string_view output)
{
    const std::string folder = FolderOf(output);
    return folder.empty() ? ProgramFolder(Run.ControlType) : folder;
}

bool IndexIsThere(const std::string& path)
{
    return IsRecorded({StepKind::Index, {}, path, {}, {}}) || FileIsThere(path);
}

} // namespace

FileOutcome HandOverRecordOf(const std::string& folder, const std::string& path, std::string record)
{
    FileStamp stamp;
    FileOutcome outcome = AskStamp(path, stamp).Why;
    if (outcome.Ok() && stamp.Size % IndexRecordSize != 0)
        return {ErrorFileAccess, "no whole records"};
    return outcome.Ok() ? HandOverChange(RecordChange(folder, path, std::move(record))) : outcome;
}

std::string IndexPathIn(const std::string& programFolder)
{
    return programFolder + std::string(IndexFileName);
}

std::string IndexedPlace(const std::string& programFolder, std::string_view name)
{
    return programFolder + PlaceUnderIndex(Compact(Padded(UpperCase(name), ProgramNameWidth)));
}

bool IsInIndexOf(const std::string& programFolder, std::string_view path)
{
    std::string index;
    if (ReadIfThere(IndexPathIn(programFolder), index).Is != Presence::There)
        return false;
    for (const JobOutput& job : Outputs.Waiting)
        for (const FileChange& change : job.Changes)
            if (change.Kind == ChangeKind::Index && change.Installation == programFolder)
                index += change.Text;
    for (std::size_t at = 0; at + IndexRecordSize <= index.size(); at += IndexRecordSize)
        if (EqualIgnoringCase(IndexedPlace(programFolder, index.substr(at, IndexNameWidth)), path))
            return true;
    return false;
}

void WarnOfIndex(const std::string& path)
{
    Warn(Message::IndexNotWritable, ShownPath(path));
}

void ReportBrokenIndex(const std::string& path, std::uint64_t size)
{
    Warn(Message::IndexBroken, std::string(IndexFileName));
    Tell(Message::IndexLeft, {{"file", ShownPath(path)}, {"bytes", static_cast<long long>(size)}});
}

std::string IndexRecord(std::string_view programName, bool horizontalWritten)
{
    std::string record = Padded(programName, ProgramNameWidth);
    record += ' ';
    record += Padded(Run.PartDescription, DescriptionWidth);
    record += Padded(TodayMmDdYy(), DateWidth);
    record += ' ';
    record += static_cast<char>(Run.FlagMask & 0xFF);
    record.append(5, '\0');
    record += Run.DrawingInInch != 0 ? 'I' : 'M';
    AppendSingle(record, Run.SideWidth[Face]);
    AppendSingle(record, Run.SideHeight[Face]);
    AppendSingle(record, Run.PartThickness);
    record.append(4, '\0');
    record += '\1';
    record += '\0';
    record += static_cast<char>((Recall(&WriterMemory::SideMask, "sides in the index") | 0xA0) & 0xFF);
    record += '\0';
    record += KindLetter(horizontalWritten);
    record.append(2, '\0');
    record += '\xA0';
    record += '\0';
    record += "N\r\n";
    return record;
}

std::string PlaceByFirstLetter(std::string_view name)
{
    constexpr Long FirstOfFile = 2;
    constexpr std::size_t FileWidth = 8;
    if (name.size() < 2)
        return "00\\" + std::string(name);
    std::string place(1, name.front());
    place += '\\';
    place += Mid(name, FirstOfFile, FileWidth);
    const std::string_view rest = Mid(name, FirstOfFile + static_cast<Long>(FileWidth));
    if (!rest.empty())
        place += "." + std::string(rest);
    return place;
}

std::string PlaceUnderIndex(std::string_view name)
{
    return "SRG\\" + PlaceByFirstLetter(name);
}

// Letters behind the last one of an index name are lost, and with them what tells two programs apart.
void ReportCutName(std::string_view name, const std::string& path)
{
    if (name.size() > ProgramNameWidth)
        Tell(
            Message::ProgramNameCut,
            {{"name", name}, {"letters", static_cast<long long>(name.size())}, {"program", ShownPath(path)}});
}

bool PlaceIndexedProgram(const ProgramPart& part)
{
    const std::string folder = IndexFolder(part.Output);
    const std::string indexPath = IndexPathIn(folder);
    if (folder.empty() || !IndexIsThere(indexPath)) {
        FailWithoutIndex(folder);
        return false;
    }
    const std::string programName = Padded(UpperCase(FileNameOf(part.Name)), ProgramNameWidth);
    const std::string compactName = Compact(programName);
    const std::string path = folder + PlaceUnderIndex(compactName);
    MakeFoldersOrThrow(FolderOf(path));

    if (!HandOverReported(folder, path, part.Contents) ||
        !HandOverRecord(folder, indexPath, IndexRecord(programName, part.HorizontalWritten)))
        return false;
    HandOverNavetta(folder, programName);
    HandOverNotes(folder, PlaceByFirstLetter(compactName));
    HandOverName(std::string(TrimRight(programName)));
    NoteWrittenProgram(TrimRight(programName), path);
    ReportCutName(TrimRight(FileNameOf(part.Name)), path);
    NoteLines(path, part.Lines, part.Contents);
    return true;
}

} // namespace kv
