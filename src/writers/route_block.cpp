// Routes as lines of the program: circles, the drawing's second G-code texts, paths, the third ones.
// Circles and paths are not made yet; the texts stand where they stand among them.
#include "shell/report.h"
#include "writers/cnc_writer.h"

namespace kv {

namespace {

void WriteTexts(CncProgram& program, const std::vector<std::string>& texts)
{
    for (std::size_t i = 1; i < texts.size(); ++i)
        program.Lines.push_back(texts[i]);
}

} // namespace

bool WriteRouteBlock(CncProgram& program)
{
    SetMeter(Meter::PgmCode, 75);
    WriteTexts(program, Run.GCode2);
    WriteTexts(program, Run.GCode3);
    return true;
}

} // namespace kv
