// Runs one drawing and gathers what a list shows of it. Counts the operations while the arrays still stand.
#include "console/drawing_run.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "console/calls.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "job/placing.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "routes/route_runs.h"
#include "state/run.h"
#include "writers/job_output.h"

namespace kv {

namespace {

using RunClock = std::chrono::steady_clock;

OperationCounts Counts; // of the drawing that runs
constexpr std::size_t CountFields = 5;

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

double SecondsSince(RunClock::time_point start)
{
    return std::chrono::duration<double>(RunClock::now() - start).count();
}

DoneDrawing DoneAs(std::string drawing, std::string outcome, double seconds)
{
    return {std::move(drawing), std::move(outcome), TakeRows(), JobFiles(), Counts, seconds};
}

OperationCounts CountsOf(const ConvertedJob& job)
{
    if (job.Counts.size() != CountFields)
        return {};
    return {job.Counts[0], job.Counts[1], job.Counts[2], job.Counts[3], job.Counts[4]};
}

std::vector<std::string> FailedSince(std::size_t before)
{
    if (Run.FailedFiles.size() <= std::max<std::size_t>(before, 1))
        return {};
    return {Run.FailedFiles.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(before, 1)),
            Run.FailedFiles.end()};
}

ContentsMark MarkOfDrawing(const std::string& path)
{
    std::string contents;
    return ReadIfThere(path, contents).Is == Presence::There ? MarkOf(contents) : ContentsMark{};
}

// Why the drawing that was converted elsewhere cannot be converted here; empty when it can.
std::string WhyNotHere(const ConvertedJob& job)
{
    std::string contents;
    const FileAnswer answer = ReadIfThere(job.SourceFile, contents);
    if (answer.Is == Presence::CannotTell)
        return answer.Why.Cause;
    if (answer.Is == Presence::NotThere)
        return "it is not there";
    return MarkOf(contents) == job.Source ? "" : "it was changed after that";
}

} // namespace

void CountOperationsOfDrawings()
{
    Stages.Done = CountOperations;
}

DoneDrawing ConvertHere(const std::string& drawing, const std::string& outputName, int system)
{
    Counts = {};
    const RunClock::time_point start = RunClock::now();
    std::string outcome = RunJob(drawing, outputName, system);
    return DoneAs(drawing, std::move(outcome), SecondsSince(start));
}

ConvertedJob ConvertForLater(const std::string& drawing, const std::string& outputName, int system,
                             bool withSource)
{
    const StepsRecorded recorded;
    Counts = {};
    ConvertedJob job;
    job.Drawing = drawing;
    job.OutputName = outputName;
    job.System = SystemOfJob(system);
    const std::size_t failed = Run.FailedFiles.size();
    const RunClock::time_point start = RunClock::now();
    job.Failed = HasFailed(RunJob(drawing, outputName, system));
    job.Seconds = SecondsSince(start);
    job.SourceFile = Run.DrawingFile;
    if (withSource)
        job.Source = MarkOfDrawing(job.SourceFile);
    job.FailedFiles = FailedSince(failed);
    job.Rows = TakeRows();
    job.Counts = {Counts.Bores, Counts.Grooves, Counts.HorizontalBores, Counts.Routes, Counts.HeadPositions};
    job.Steps = std::move(Outputs.Steps);
    return job;
}

DoneDrawing ShownOf(const ConvertedJob& job)
{
    const bool gives =
        std::ranges::any_of(job.Steps, [](const OutputStep& step) { return step.Kind == StepKind::Program; });
    return {job.Drawing, job.Failed ? "failed" : gives ? "converted" : "nothing", job.Rows, {}, CountsOf(job),
            job.Seconds};
}

std::optional<DoneDrawing> PlaceHere(const ConvertedJob& job)
{
    if (!PlaceConvertedJob(job))
        return std::nullopt;
    Counts = CountsOf(job);
    return DoneAs(job.Drawing, OutcomeOfJob(), job.Seconds);
}

DoneDrawing ConvertAtItsTurn(const ConvertedJob& job)
{
    const std::string why = WhyNotHere(job);
    if (!why.empty()) {
        ConvertedJob failed =
            FailedForLater(job.Drawing, {Message::MustConvertAnew,
                                         {{"drawing", ShownPath(job.SourceFile)}, {"cause", why}}});
        return *PlaceHere(failed); // it has no step that could come out otherwise
    }
    Counts = {};
    const RunClock::time_point start = RunClock::now();
    std::string outcome = RunJobLine(job.SourceFile, job.OutputName, job.System);
    return DoneAs(job.Drawing, std::move(outcome), SecondsSince(start));
}

ConvertedJob FailedForLater(const std::string& drawing, const MessageLine& line)
{
    ConvertedJob job;
    job.Drawing = drawing;
    job.SourceFile = FromHostPath(drawing);
    job.Failed = true;
    job.FailedFiles = {job.SourceFile};
    job.Rows = {{TextOf(line), 0, 0, 0, false, line}};
    return job;
}

} // namespace kv
