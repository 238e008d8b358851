// `korvanti prepare`: what an import makes of a drawing, as a drawing that a person can open in a CAD.
#include <cstdio>
#include <new>

#include "console/calls.h"
#include "console/report_output.h"
#include "import/import_reading.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "state/report.h"

namespace kv {

namespace {

std::string DrawingPath(const std::string& typed)
{
    const std::string path = FromHostPath(typed);
    return Holds(UpperCase(path), ".DXF") ? path : path + ".DXF";
}

FileOutcome WriteClean(const std::string& drawing, const std::string& clean)
{
    try {
        return WriteCleanDrawing(drawing, clean);
    } catch (const RunError& error) {
        return {error.Number, error.Cause};
    } catch (const std::bad_alloc&) {
        return {ErrorDeviceIo, "Out of memory"};
    }
}

} // namespace

int PrepareDrawing(const CommandLine& line)
{
    const bool terminal = IsTerminal(StandardStream::Output);
    OpenReport(terminal, IsTerminal(StandardStream::Error));
    const std::string drawing = DrawingPath(line.Drawings.front());
    const std::string clean = FromHostPath(line.Output);
    if (EqualIgnoringCase(drawing, clean)) {
        TellUsage("-o names the drawing itself", Call::Prepare);
        return ExitUsage;
    }
    const FileOutcome outcome = WriteClean(drawing, clean);
    EraseProgress();
    ReportMessage(2, "");
    WriteRows(stdout);
    if (outcome.Ok())
        return ExitConverted;
    WriteAtOnce("korvanti: " + line.Drawings.front() + ": " + Utf8FromAnsi(outcome.Cause) +
                    "; nothing was written to " + line.Output + "\n",
                stderr);
    return ExitSomeFailed;
}

} // namespace kv
