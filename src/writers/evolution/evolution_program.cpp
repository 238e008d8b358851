// One drawing as a program of the Genesis Evolution: a template filled field by field, then the
// operations in the order of the panel's sides. Relies on mirrored records, the run block and the
// template in the program's own folder; leaves the program's file, the report and, for later
// drawings, three values in the writers' memory.
#include "platform/paths.h"
#include "state/report.h"
#include "state/settings.h"
#include "writers/evolution/evolution_writer.h"
#include "writers/output_names.h"
#include "writers/program_families.h"
#include "writers/program_writers.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr Int Evolution = 2; // control system

struct OperationClass {
    bool Settings::*Box;
    bool (*Write)(EvolutionProgram& program);
};
constexpr OperationClass OperationClasses[] = {
    {&Settings::EvVBore, WriteEvolutionVBores},
    {&Settings::EvHBore, WriteEvolutionHBores},
    {&Settings::EvRoute, WriteEvolutionRoutes},
    {&Settings::EvGroove, WriteEvolutionGrooves},
};

// False when the operator asked to abort.
bool WriteOperations(EvolutionProgram& program)
{
    program.Total = VBores.Last() + HBores.Last() + RouteSegments.Last();
    for (const OperationClass& operations : OperationClasses) {
        if (Config.*operations.Box && !operations.Write(program))
            return false;
    }
    return true;
}

void PlaceEvolutionProgram(const EvolutionProgram& program)
{
    const std::string path = ProgramFolder(Evolution) + FileNameOf(OutputName()) + ".CNC";
    if (!PlaceSideProgram(path, program.Fields, program.Sides))
        return;
    NoteWrittenProgram(FileNameOf(path), path);
    Tell(Message::EvolutionWritten);
    ReportProcessingTime();
}

} // namespace

SideTexts& For(EvolutionProgram& program, Long drawn)
{
    program.Sides.Drawn = drawn;
    return program.Sides;
}

bool TakeEvolutionRecord(EvolutionProgram& program)
{
    if (!MayTakeRecord())
        return false;
    ++program.Done;
    SetMeter(Meter::PgmCode, 100 * program.Done / program.Total);
    return true;
}

void WriteEvolutionProgram()
{
    EvolutionProgram program;
    if (!LoadEvolutionTemplate(program.Fields))
        return;
    FillEvolutionTemplate(program.Fields);
    if (!WriteOperations(program)) {
        Tell(Message::UserAborted);
        Run.RunFailed = True;
        return;
    }
    AssembleSides(program.Sides);
    FillSideList(program.Fields, SideList(program.Sides));
    if (Recall(&WriterMemory::EvolutionWritten, "output flag"))
        PlaceEvolutionProgram(program);
    else
        Tell(Message::NothingSelected);
}

} // namespace kv
