// Chooses the writers of a drawing, in the order that keeps a bore from being made twice, and holds
// the writers' working variables. Relies on mirrored records and on the shell's and the batch's
// switches; leaves the programs on the disk and a closing line in the report.
#include "writers/program_writers.h"

#include "platform/clock.h"
#include "platform/events.h"
#include "state/carry_over.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/left_programs.h"
#include "writers/number_format.h"
#include "writers/program_families.h"
#include "writers/writer_memory.h"

namespace kv {

std::vector<std::string> ProgramList;
WriterMemory Writers;
WriterMemory WritersAlone;
WrittenProgram LastProgram;

void NoteWrittenProgram(std::string_view fileName, std::string_view path)
{
    Run.ProgramFileName = fileName;
    LastProgram = {std::string(fileName), std::string(path), Run.PartDescription};
}

void RunProgramWriters()
{
    if (Run.HbdOff == 0 && Config.MakeHBD != 0 && Config.HbdAvailable)
        WriteHbdProgram();
    if (Run.CncOff == 0 && (Run.ControlType == 0 || Run.ControlType == 1))
        WriteCncProgram();
    if (Run.CncOff == 0 && Run.ControlType == 2)
        WriteEvolutionProgram();
}

void EndProgramsReport()
{
    if (Run.RunFailed == False)
        NoteWantedPrograms(false);
    ReportTakenOver();
    ReportMessage(
        1, MarkPink +
               std::string(
                   "     ---------------------------------------***------------------------------------"));
}

void ResetWriters()
{
    StartWriterMemory(true);
    ProgramList.clear();
    ForgetProgramsOfList();
    LastProgram = WrittenProgram{};
}

void RememberSides(Int sides)
{
    Writers.SideMask |= sides;
    WritersAlone.SideMask |= sides;
}

void RememberWork(bool WriterMemory::*written, Int sides)
{
    Remember(written, true);
    RememberSides(sides);
}

void StartWriterMemory(bool clean)
{
    WritersAlone = WriterMemory{};
    if (clean)
        Writers = WriterMemory{};
}

bool MayTakeRecord()
{
    DoEvents();
    return !UserAborted();
}

void ReportProcessingTime()
{
    const double now = ToSingle(SecondsSinceMidnight());
    const Single seconds = ToSingle(now - static_cast<double>(Run.RunStartTime));
    Tell(Message::ProcessingTime, {{"seconds", PlainText(RoundToPrecision(seconds))}});
}

void FailDrawing()
{
    Run.RunFailed = True;
    AddFailedFile(Run.SourceFile);
}

} // namespace kv
