// One drawing as one text program for the CNC90, WINNER90 and GENESIS controls: header, comments,
// offsets, blocks in the order of the sequence, end. Relies on mirrored records and the run block;
// leaves the program's files, the report and, for later drawings, the writers' memory. The run goes
// on behind it whatever happens here.
#include <utility>

#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"
#include "writers/cnc/cnc_words.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/genesis_names.h"
#include "writers/job_output.h"
#include "writers/number_format.h"
#include "writers/program_families.h"
#include "writers/program_writers.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr std::size_t SequenceLength = 4;
constexpr std::string_view DesignedSequence = "VGHR";
constexpr std::size_t NameLineWidth = 25; // of the description

struct Block {
    char Letter;
    bool (*Write)(CncProgram& program);
};
constexpr Block Blocks[] = {
    {'V', WriteVerticalBlock},
    {'G', WriteGrooveBlock},
    {'H', WriteHorizontalBlock},
    {'R', WriteRouteBlock},
};

// The setting turns the run's own flag over, although the records are mirrored already.
std::string SettleOffsetWord()
{
    if (Val(Config.Origin) != 0)
        Run.OriginTop = Run.OriginTop != 0 ? False : True;
    if (Run.OriginRight != 0)
        return Run.OriginTop != 0 ? "G56" : "G57";
    return Run.OriginTop != 0 ? "G54" : "G55";
}

// "V1=d" and a blank for a value that begins with a lower-case letter, else name and value.
std::string VariablesText()
{
    std::string text;
    if (Run.HasVars == 0)
        return text;
    for (std::size_t i = 1; i < Run.VarNames.size(); ++i) {
        const std::string& value = Run.VarValues[i];
        const bool letter = !value.empty() && value[0] >= 'a' && value[0] <= 'z';
        text += Run.VarNames[i] + (letter ? "=" + value + " " : value);
    }
    return text;
}

// Stands as built: blanks stay.
std::string NameLine()
{
    const std::string description =
        IsGenesisInstallation() ? Run.PartDescription : Run.PartDescription.substr(0, NameLineWidth);
    return "G150(" + description + ")" + VariablesText();
}

// "G54" is fixed here, whatever the work offset word is.
void WriteOffsets(CncProgram& program)
{
    if (Run.OffsetX == 0 && Run.OffsetY == 0 && Run.OffsetZ == 0)
        return;
    program.Add("G92G54P5" + PlainWord("Z", Run.OffsetZ) + PlainWord("Y", Run.OffsetY) +
                PlainWord("X", Run.OffsetX));
}

std::string SequenceOfSettings()
{
    return std::string(Config.Sequence.empty() ? DesignedSequence : Config.Sequence)
        .substr(0, SequenceLength);
}

// Other letters run nothing, one that stands twice runs its block twice.
bool WriteBlocks(CncProgram& program)
{
    const std::string sequence = SequenceInForce();
    if (sequence != SequenceOfSettings() && Run.SequenceName != Run.Alone.SequenceName)
        NoteTakenOver("sequence", sequence);
    for (const char letter : sequence) {
        for (const Block& block : Blocks) {
            if (block.Letter == letter && !block.Write(program))
                return false;
        }
    }
    Run.SequenceName.clear();
    Run.Alone.SequenceName.clear();
    return true;
}

std::string HeaderLine(const CncProgram& program)
{
    if (Run.Outfit != Run.Alone.Outfit)
        NoteTakenOver("outfit", WholeText(Run.Outfit));
    return StripBlanks((Run.DrawingInInch != 0 ? "G70X" : "G71X") + FormatCoord(Run.SideWidth[Face]) + "Y" +
                       FormatCoord(Run.SideHeight[Face]) + "Z" + FormatCoord(Run.PartThickness) + "T" +
                       TwoDigits(Run.Outfit) + WholeWord("F", Run.FlagMask) + "N" +
                       WholeText(program.LastLine() + 1) + "L" + WholeText(program.LastLine() - 2));
}

bool AnyWork(const WriterMemory& memory)
{
    return memory.TopDrillingWritten || memory.GrooveWritten || memory.RouteWritten;
}

std::string KindsOfWork(const WriterMemory& memory)
{
    std::string kinds;
    for (const auto& [isWritten, kind] :
         {std::pair{memory.TopDrillingWritten, "drilling"}, std::pair{memory.GrooveWritten, "groove"},
          std::pair{memory.RouteWritten, "route"}})
        if (isWritten)
            kinds += (kinds.empty() ? "" : " and ") + std::string(kind);
    return kinds;
}

bool AnyOperation(const CncProgram& program)
{
    if (program.HorizontalWritten || AnyWork(WritersAlone))
        return true;
    if (AnyWork(Writers))
        NoteTakenOver("output flags", KindsOfWork(Writers));
    return AnyWork(Writers);
}

// False when the operator asked to abort.
bool BuildProgram(CncProgram& program)
{
    program.Lines.resize(1); // the header is written last
    program.OffsetWord = SettleOffsetWord();
    if (Trim(Run.PartDescription).empty())
        Run.PartDescription = "KORVANTI DXF IMPORT";
    program.Add(NameLine());
    for (std::string& comment : CommentsOfOldProgram())
        program.Add(std::move(comment));
    WriteOffsets(program);
    for (std::size_t i = 1; i < Run.GCode1.size(); ++i)
        program.Add(Run.GCode1[i]);
    if (!WriteBlocks(program))
        return false;
    program.Drawn = 0;
    program.Add("M2");
    program.Lines[0].Text = HeaderLine(program);
    return true;
}

// False when it cannot be written.
bool WriteProgramOfDrawing()
{
    SetMeter(Meter::PgmCode, 25);
    CncProgram program;
    if (!BuildProgram(program)) {
        Tell(Message::UserAborted);
        Run.RunFailed = True;
        return true;
    }
    if (Recall(&WriterMemory::ToolSubstituted, "tool substitution"))
        Tell(Message::ToolSubstituted);
    if (Val(Config.DRAlternate) != 0 || Run.DrAlt != 0)
        AlternateDrillingsAndRoutes(program.Lines);
    bool written = true;
    if (AnyOperation(program)) {
        ReportProcessingTime();
        written = WriteOutput(program);
    } else {
        Tell(Message::NothingSelected);
    }
    SetMeter(Meter::PgmCode, 100);
    return written;
}

} // namespace

std::string SequenceInForce()
{
    return Run.SequenceName.size() == SequenceLength ? Run.SequenceName : SequenceOfSettings();
}

void WriteCncProgram()
{
    // A drawing's portions are placed together or not at all.
    const OutputMark before = MarkOutput();
    const WrittenProgram last = LastProgram;
    const auto drop = [&] {
        DropOutputSince(before);
        LastProgram = last;
    };
    try {
        if (!WriteProgramOfDrawing())
            drop();
    } catch (const RunError& error) {
        drop();
        if (error.Number == ErrorPathNotFound)
            Tell(Message::ProgramPathNotFound);
        else
            Tell(Message::ProgramNotProcessed, {{"error", error.Number}});
        if (!error.Cause.empty())
            Tell(Message::ProgramCause, {{"drawing", ShownPath(Run.SourceFile)}, {"cause", error.Cause}});
        FailDrawing();
    }
}

} // namespace kv
