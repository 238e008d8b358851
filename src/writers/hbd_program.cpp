// Programs of the horizontal drilling machine. This version makes none and says so, since the box
// "MakeHBD" asks for them; it takes no bore away, so all bores stay with the program of the control.
#include "shell/report.h"
#include "writers/program_families.h"

namespace kv {

void WriteHbdProgram()
{
    ReportMessage(1, "HBD programs are not written by this version.");
}

} // namespace kv
