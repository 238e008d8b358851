// `korvanti convert`: the drawings one after the other, their report as text or as one JSON
// document. Counts the operations of a drawing while its arrays still stand.
#include "console/calls.h"

#include <algorithm>
#include <chrono>

#include <nlohmann/json.hpp>

#include "console/abort.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "platform/files.h"
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
std::vector<std::string> Written; // host paths

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
    shown["files"] = Written;
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

// Brings the files of a list to the disk, at least every two seconds and at its end. False when the disk
// refuses.
struct ListFlush {
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds Longest{2};
    Clock::time_point Last = Clock::now();

    bool AfterDrawing() { return Clock::now() - Last < Longest || AtEnd(); }
    bool AtEnd()
    {
        const FileOutcome outcome = FlushFiles();
        Last = Clock::now();
        if (!outcome.Ok())
            TellFailure("not on the disk", Utf8FromAnsi(outcome.Cause));
        return outcome.Ok();
    }
};

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
    WrittenFiles = &Written;
    Json drawings = Json::array();
    int status = ExitConverted;
    ListFlush flush;
    std::size_t left = line.Drawings.size();
    for (const std::string& drawing : line.Drawings) {
        --left;
        Counts = {};
        Written.clear();
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
        if (!flush.AfterDrawing())
            status = ExitSomeFailed;
        if (AbortAsked()) {
            status = std::max(status, TellUnconverted(left));
            break;
        }
    }
    if (!flush.AtEnd())
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
