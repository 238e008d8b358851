// One job of the console: builds the job line, sets what the shell owns of the run and hands it to
// the driver. The byte 0xFF parts drawing and output name.
#include "console/calls.h"

#include "console/abort.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "job/placing.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/output_names.h"

namespace kv {

Int SystemOfJob(int system)
{
    return system == SystemOfSettings ? SelectedSystem() : static_cast<Int>(system);
}

std::string OutputInMemory(const std::string& drawing, const CommandLine& line)
{
    if (!line.Output.empty() && line.Asked != Call::Draw && line.Asked != Call::Compare)
        return OutputName(line.Output);
    if (Trim(ProgramFolder(SystemOfJob(line.System))).empty())
        return WithBackslash(FolderOf(FromHostPath(drawing)));
    return {};
}

std::string RunJob(const std::string& drawing, std::string_view outputName, int system)
{
    return RunJobLine(FromHostPath(drawing), outputName, SystemOfJob(system));
}

std::string OutcomeOfJob()
{
    if (Run.RunFailed == False)
        return JobGaveProgram() ? "converted" : "nothing";
    return AbortAsked() ? "aborted" : "failed";
}

bool HasFailed(std::string_view outcome)
{
    return outcome != "converted" && outcome != "nothing";
}

std::string RunJobLine(std::string jobLine, std::string_view outputName, Int system)
{
    Run.RunState = 0;
    Run.RunFailed = False;
    Run.ControlType = system;
    if (!outputName.empty()) {
        jobLine += PartSeparator;
        jobLine += outputName;
    }
    BeginDrawing();
    ProcessDrawingFile(jobLine);
    ZeroMeters();
    SetMeterInterval(0);
    return OutcomeOfJob();
}

void TellFailure(const std::string& drawing, std::string_view outcome)
{
    EraseProgress();
    WriteAtOnce("korvanti: " + drawing + ": " + std::string(outcome) + "\n", stderr);
}

int TellUnconverted(std::size_t count)
{
    if (count == 0)
        return ExitConverted;
    EraseProgress();
    const std::string text = "korvanti: stopped before " + std::to_string(count) + " more\n";
    WriteAtOnce(text, stderr);
    return ExitSomeFailed;
}

bool TakeOverrides(const CommandLine& line)
{
    for (const auto& [key, value] : line.Overrides) {
        const bool folder = IsPathSetting(key) && !value.empty();
        if (OverrideSetting(AnsiFromUtf8(key), folder ? FromHostPath(value) : AnsiFromUtf8(value)))
            continue;
        TellUsage("there is no setting \"" + key + "\"", line.Asked);
        return false;
    }
    return true;
}

std::string OutputName(const std::string& typed)
{
    const std::string path = FromHostPath(typed);
    const char last = typed.back();
    // Where it cannot be told the path is that of a program, whose writing says why it cannot be.
    if (last == '/' || last == '\\' || AskFolder(path).Is == Presence::There)
        return WithBackslash(path);
    if (typed.find_first_of("/\\:") == std::string::npos)
        return FileNameOf(path);
    return path;
}

} // namespace kv
