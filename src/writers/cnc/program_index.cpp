// Index records, places of programs, and the placing of a program with all that goes with it: index,
// list of programs made, hand-over to the control, notes, program file, in this order. Relies on the
// job's output name and the settings; a failure leaves the old files whole.
#include "writers/cnc/program_index.h"

#include <bit>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/navetta.h"
#include "writers/cnc/notes.h"
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

void Warn(const std::string& text)
{
    ShowBox(text, ProductName, BoxIcon::Warning);
}

void FailWithoutIndex(const std::string& folder)
{
    const std::string shown = folder.empty() ? folder : ShownPath(folder);
    Warn("CNC90/Winner90 Index File " + shown + std::string(IndexFileName) + " Not Found");
    ReportMessage(1, "Import Failed");
    if (folder.empty())
        ReportMessage(1, "No program folder is set");
    else if (!FolderExists(folder))
        ReportMessage(1, shown + ": the program folder does not exist");
    FailDrawing();
}

// False when the index cannot be written. One of a broken length is told and left as it is.
bool StageIndex(const std::string& path, std::string_view record, StagedFile& staged)
{
    std::string index;
    FileOutcome outcome = ReadWholeFile(path, index);
    if (outcome.Ok() && index.size() % IndexRecordSize != 0) {
        Warn("!!! PROBLEM DETECTED WITH " + std::string(IndexFileName) + " FILE !!!");
        ReportMessage(1, ShownPath(path) + ": left as it is, " +
                             WholeText(static_cast<long long>(index.size())) +
                             " bytes are no whole records; the program is not in it");
        return true;
    }
    if (outcome.Ok())
        outcome = CheckWritable(path);
    if (outcome.Ok())
        outcome = StageFile(path, IndexWith(index, record), staged);
    if (outcome.Ok())
        return true;
    Warn("PROBLEM ACCESSING " + ShownPath(path) + " FOR WRITE");
    ReportMessage(1, ShownPath(path) + ": " + outcome.Cause);
    FailDrawing();
    return false;
}

bool MoveIndex(const std::string& path, StagedFile& staged)
{
    if (staged.Aside.empty())
        return true;
    const FileOutcome outcome = MoveStaged(staged);
    if (outcome.Ok())
        return true;
    Warn("PROBLEM ACCESSING " + ShownPath(path) + " FOR WRITE");
    ReportMessage(1, ShownPath(path) + ": " + outcome.Cause);
    FailDrawing();
    return false;
}

// The job's own folder, else the one that the settings name now.
std::string IndexFolder(std::string_view output)
{
    const std::string folder = FolderOf(output);
    return folder.empty() ? ProgramFolder(Run.ControlType) : folder;
}

} // namespace

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

std::string IndexWith(std::string_view index, std::string_view record)
{
    const std::string_view name = record.substr(0, ProgramNameWidth);
    for (std::size_t at = 0; at < index.size(); at += IndexRecordSize) {
        const std::string old = UpperCase(index.substr(at, ProgramNameWidth));
        if (old < name)
            continue;
        const std::size_t replaced = old == name ? IndexRecordSize : 0;
        std::string updated(index.substr(0, at));
        updated += record;
        updated += index.substr(at + replaced);
        return updated;
    }
    return std::string(index) + std::string(record);
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

bool PlaceIndexedProgram(const ProgramPart& part)
{
    const std::string folder = IndexFolder(part.Output);
    const std::string indexPath = folder + std::string(IndexFileName);
    if (folder.empty() || !FileExists(indexPath)) {
        FailWithoutIndex(folder);
        return false;
    }
    const std::string programName = Padded(UpperCase(FileNameOf(part.Name)), ProgramNameWidth);
    const std::string compactName = Compact(programName);
    const std::string path = folder + PlaceUnderIndex(compactName);
    MakeFoldersOrThrow(FolderOf(path));

    StagedSet staged;
    if (!StageProgram(path, part.Contents, staged.Program) ||
        !StageIndex(indexPath, IndexRecord(programName, part.HorizontalWritten), staged.Index))
        return false;
    const std::string navettaPath = StageNavetta(programName, staged.Navetta);
    const std::string notesPath = StageNotes(folder, PlaceByFirstLetter(compactName), staged.Notes);

    if (!MoveIndex(indexPath, staged.Index))
        return false;
    ProgramList.emplace_back(TrimRight(programName));
    MoveOrThrow(navettaPath, staged.Navetta);
    MoveOrThrow(notesPath, staged.Notes);
    if (!MoveProgram(path, staged.Program))
        return false;
    NoteWrittenProgram(TrimRight(programName), path);
    return true;
}

} // namespace kv
