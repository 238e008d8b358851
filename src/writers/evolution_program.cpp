// Programs of the Genesis Evolution control. This version makes none: the drawing fails, so that
// nobody waits at the machine for a program that was never written.
#include "shell/report.h"
#include "writers/program_families.h"

namespace kv {

void WriteEvolutionProgram()
{
    ReportMessage(1, "Genesis Evolution programs are not written by this version.");
    FailDrawing();
}

} // namespace kv
