// The `korvanti` command: finds the program's folder, loads the settings and makes the call. All
// that people type or read is Unicode here and nowhere below.
#include <cstdio>

#include "console/abort.h"
#include "console/calls.h"
#include "console/command_line.h"
#include "console/report_output.h"
#include "platform/command_words.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "shell/start_up.h"
#include "state/settings.h"

namespace {

using namespace kv;

int MakeCall(const CommandLine& line)
{
    if (line.Asked == Call::Work)
        return WorkForPool(line);
    if (line.Asked == Call::Explain && line.Drawings.empty())
        return ExplainMessage(line);
    const std::string folder = InstallationFolder(line.Home);
    if (folder.empty()) {
        TellUsage("the folder named by --home or KORVANTI_HOME is not there", Call::None);
        return ExitUsage;
    }
    SetExeFolder(folder);
    if (line.Asked == Call::Watch)
        return WatchFolders(line);
    LoadAllSettings();
    if (!TakeOverrides(line))
        return ExitUsage;
    InstallAbort();
    if (line.Asked == Call::Place)
        return PlaceStages(line);
    if (line.Asked == Call::Explain)
        return ExplainDrawings(line);
    if (line.Asked == Call::Draw)
        return DrawPrograms(line);
    if (line.Asked == Call::Compare)
        return CompareControls(line);
    if (line.Asked == Call::Check)
        return CheckDrawings(line);
    if (line.Asked == Call::Prepare)
        return PrepareDrawing(line);
    return line.Asked == Call::Trace ? TraceDrawings(line) : ConvertDrawings(line);
}

} // namespace

int main(int argc, char** argv)
{
    PrepareStreams();
    const CommandLine line = ReadCommandLine(CommandWords(argc, argv));
    int status = line.Asked == Call::None ? line.ExitStatus : MakeCall(line);
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        WriteAtOnce("korvanti: standard output cannot be written\n", stderr);
        status = status == ExitConverted ? ExitSomeFailed : status;
    }
    RestoreStreams();
    return status;
}
