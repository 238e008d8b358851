// `korvanti convert`: the drawings one after the other, their report as text or as one JSON
// document. Counts the operations of a drawing while its arrays still stand.
#include "console/calls.h"

#include <algorithm>
#include <chrono>
#include <optional>

#include <nlohmann/json.hpp>

#include "console/abort.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "job/placing.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "routes/route_runs.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

using Json = nlohmann::ordered_json;

// Of the drawing that runs.
struct OperationCounts {
    Long Bores = 0, Grooves = 0, HorizontalBores = 0, Routes = 0, HeadPositions = 0;
};
OperationCounts Counts;
std::vector<UnplacedJob> Unplaced; // since the last look

void CountOperations(std::string_view stage)
{
    if (stage != "final")
        return;
    Counts.Bores = VBores.Last();
    Counts.Grooves = GroovePasses.Last();
    Counts.HorizontalBores = HBores.Last();
    Counts.HeadPositions = HeadPositions.Last();
    Counts.Routes = static_cast<Long>(
        std::count_if(RouteSegments.begin(), RouteSegments.end(), StartsRoute) +
        std::count_if(RouteCircles.begin(), RouteCircles.end(),
                      [](const RouteCircle& circle) { return circle.Pass > 0; })); // cut as they stand
}

Json ShowLines()
{
    Json lines = Json::array();
    for (const ReportRow& row : TakeRows())
        lines.push_back({{"text", Utf8FromAnsi(row.Text)}, {"colour", ColourName(row)}});
    return lines;
}

Json ShowDrawing(const std::string& drawing, const std::string& outcome, double seconds)
{
    Json shown;
    shown["drawing"] = drawing;
    shown["outcome"] = outcome;
    shown["lines"] = ShowLines();
    shown["files"] = JobFiles();
    shown["operations"] = {{"bores", Counts.Bores},
                           {"grooves", Counts.Grooves},
                           {"horizontalBores", Counts.HorizontalBores},
                           {"routes", Counts.Routes},
                           {"headPositions", Counts.HeadPositions}};
    shown["seconds"] = seconds;
    return shown;
}

// File names may hold bytes that are no UTF-8.
void PrintDocument(const Json& document)
{
    const std::string text = document.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void KeepUnplaced(const UnplacedJob& job)
{
    Unplaced.push_back(job);
}

void TellWaitAtOnce(const std::string& line)
{
    EraseProgress();
    WriteAtOnce("korvanti: " + Utf8FromAnsi(line) + "\n", stderr);
}

// The drawings of a list are placed some at a time; one whose files cannot be placed then has failed, and
// what was shown of it is put right. `first` is the number of the list's first job. False: there are some.
bool TakeUnplaced(const CommandLine& line, long first, Json& drawings)
{
    for (const UnplacedJob& job : Unplaced) {
        const auto place = static_cast<std::size_t>(job.Number - first);
        TellFailure(line.Drawings[place], "failed");
        const ReportRow row = {job.Cause, 155, 0, 0, false};
        if (!line.ReportJson) {
            WriteAtOnce(RowLine(row, RowColours::None) + "\n", stdout);
            continue;
        }
        Json& shown = drawings[place];
        shown["outcome"] = "failed";
        shown["files"] = Json::array();
        shown["lines"].push_back({{"text", Utf8FromAnsi(row.Text)}, {"colour", ColourName(row)}});
    }
    const bool none = Unplaced.empty();
    Unplaced.clear();
    return none;
}

} // namespace

int ConvertDrawings(const CommandLine& line)
{
    using Clock = std::chrono::steady_clock;
    const std::string outputName = line.Output.empty() ? std::string() : OutputName(line.Output);
    if (line.Drawings.size() > 1 && !outputName.empty() && outputName.back() != '\\') {
        TellUsage("with several drawings -o must name a folder", Call::Convert);
        return ExitUsage;
    }
    OpenReport(!line.ReportJson && IsTerminal(StandardStream::Output), IsTerminal(StandardStream::Error));
    Stages.Done = CountOperations;
    Placing = {KeepUnplaced, TellWaitAtOnce};
    RecoverInstallations();
    Json drawings = Json::array();
    int status = ExitConverted;
    const long first = JobNumber() + 1;
    std::optional<JobsTogether> together;
    if (line.Drawings.size() > 1)
        together.emplace();
    std::size_t left = line.Drawings.size();
    for (const std::string& drawing : line.Drawings) {
        --left;
        Counts = {};
        const Clock::time_point start = Clock::now();
        const std::string outcome = RunJob(drawing, outputName, line.System);
        const std::chrono::duration<double> seconds = Clock::now() - start;
        if (line.ReportJson)
            drawings.push_back(ShowDrawing(drawing, outcome, seconds.count()));
        else
            WriteRows(stdout);
        if (outcome != "converted") {
            status = ExitSomeFailed;
            TellFailure(drawing, outcome);
        }
        if (!TakeUnplaced(line, first, drawings))
            status = ExitSomeFailed;
        if (AbortAsked()) {
            status = std::max(status, TellUnconverted(left));
            break;
        }
    }
    together.reset();
    if (!TakeUnplaced(line, first, drawings))
        status = ExitSomeFailed;
    if (line.ReportJson) {
        PrintDocument({{"version", ProductVersion}, {"drawings", std::move(drawings)}});
        return status;
    }
    for (std::string& path : Run.FailedFiles)
        path = ShownPath(path);
    ReportFailedFiles(Run.FailedFiles);
    WriteRows(stdout);
    return status;
}

} // namespace kv
