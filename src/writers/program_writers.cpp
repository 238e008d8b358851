// Chooses the writers of a drawing, in the order that keeps a bore from being made twice, and holds
// the writers' working variables. Relies on mirrored records and on the shell's and the batch's
// switches; leaves the programs on the disk and a closing line in the report.
#include "writers/program_writers.h"

#include "conversion/run.h"
#include "shell/report.h"
#include "shell/settings.h"
#include "writers/cnc_writer.h"
#include "writers/program_families.h"

namespace kv {

std::vector<std::string> ProgramList;
WriterMemory Writers;
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
    ReportMessage(
        1, MarkPink +
               std::string(
                   "     ---------------------------------------***------------------------------------"));
}

void ResetWriters()
{
    Writers = WriterMemory{};
    ProgramList.clear();
    LastProgram = WrittenProgram{};
}

void FailDrawing()
{
    Run.RunFailed = True;
    AddFailedFile(Run.SourceFile);
}

} // namespace kv
