// `korvanti convert`: the drawings one after the other, or by several processes, their report as text or as
// one JSON document; or into a stage, for an installation that is elsewhere or whose turn comes later.
#include "console/calls.h"

#include <memory>
#include <optional>

#include "console/abort.h"
#include "console/drawing_run.h"
#include "console/list_report.h"
#include "console/report_output.h"
#include "console/worker_pool.h"
#include "job/placing.h"
#include "job/stage_folder.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/settings.h"

namespace kv {

namespace {

// Drawings of several processes start as in a fresh one. False: the call asks for something else.
bool StartClean(const CommandLine& line)
{
    for (const auto& [key, value] : line.Overrides)
        if (EqualIgnoringCase(key, "CarryOver") && !EqualIgnoringCase(Trim(value), "clean")) {
            TellUsage("--jobs and --stage convert each drawing as in a fresh process; CarryOver=" + value +
                          " cannot be had with them",
                      Call::Convert);
            return false;
        }
    Config.CarryOver = "clean";
    return true;
}

// None where one process does it.
std::unique_ptr<WorkerPool> PoolFor(const CommandLine& line, const std::string& outputName)
{
    const bool many = line.Jobs > 1 && line.Drawings.size() > 1;
    return many ? std::make_unique<WorkerPool>(line, outputName) : nullptr;
}

int ConvertAndPlace(const CommandLine& line, const std::string& outputName)
{
    ListReport report(line.ReportJson, line.Drawings.size());
    RecoverInstallations();
    const std::unique_ptr<WorkerPool> pool = PoolFor(line, outputName);
    std::optional<JobsTogether> together;
    if (line.Drawings.size() > 1)
        together.emplace();
    for (std::size_t i = 0; i < line.Drawings.size(); ++i) {
        std::optional<DoneDrawing> done;
        if (pool) {
            const std::optional<ConvertedJob> converted = pool->Take(i);
            if (AbortAsked()) {
                report.ShowStop(line.Drawings.size() - i);
                break;
            }
            if (converted)
                done = PlaceHere(*converted);
        }
        report.Show(done ? *done : ConvertHere(line.Drawings[i], outputName, line.System));
        if (AbortAsked()) {
            report.ShowStop(line.Drawings.size() - i - 1);
            break;
        }
    }
    together.reset();
    return report.Finish();
}

int TellStageFault(const CommandLine& line, const FileOutcome& outcome)
{
    EraseProgress();
    WriteAtOnce("korvanti: " + line.Stage + ": " + Utf8FromAnsi(outcome.Cause) + "; no stage was made\n",
                stderr);
    return ExitSomeFailed;
}

// The report of a drawing is shown when it is converted, and once more when it is placed.
int ConvertIntoStage(const CommandLine& line, const std::string& outputName)
{
    ListReport report(line.ReportJson, line.Drawings.size());
    StageWriter stage;
    FileOutcome outcome = stage.Begin(FromHostPath(line.Stage));
    if (!outcome.Ok())
        return TellStageFault(line, outcome);
    const std::unique_ptr<WorkerPool> pool = PoolFor(line, outputName);
    for (const std::string& drawing : line.Drawings) {
        std::optional<ConvertedJob> converted;
        if (pool)
            converted = pool->Take(static_cast<std::size_t>(&drawing - line.Drawings.data()));
        if (!converted && !AbortAsked())
            converted = ConvertForLater(drawing, outputName, line.System, true);
        if (AbortAsked())
            return TellStageFault(line, {ErrorFileAccess, "the list was stopped"});
        report.Show(ShownOf(*converted));
        outcome = stage.Add(*converted);
        if (!outcome.Ok())
            return TellStageFault(line, outcome);
    }
    outcome = stage.Finish(line.Number);
    return outcome.Ok() ? report.Finish() : TellStageFault(line, outcome);
}

} // namespace

int ConvertDrawings(const CommandLine& line)
{
    const std::string outputName = line.Output.empty() ? std::string() : OutputName(line.Output);
    if (line.Drawings.size() > 1 && !outputName.empty() && outputName.back() != '\\') {
        TellUsage("with several drawings -o must name a folder", Call::Convert);
        return ExitUsage;
    }
    const bool elsewhere = line.Jobs > 0 || !line.Stage.empty();
    if (elsewhere && !StartClean(line))
        return ExitUsage;
    CountOperationsOfDrawings();
    return line.Stage.empty() ? ConvertAndPlace(line, outputName) : ConvertIntoStage(line, outputName);
}

} // namespace kv
