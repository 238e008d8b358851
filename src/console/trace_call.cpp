// `korvanti trace`: the drawings up to the writers, with what stands in the arrays after each stage
// as JSON. Report lines go to standard error, so that the document stays clean.
#include "console/calls.h"

#include <algorithm>
#include <cstdio>

#include "console/abort.h"
#include "console/report_output.h"
#include "console/trace_stages.h"
#include "job/job_driver.h"
#include "platform/terminal.h"
#include "state/settings.h"
#include "writers/output_steps.h"

namespace kv {

namespace {

std::vector<std::string> Wanted; // stages; empty: all
Json Shown;                      // of the drawing that runs, keyed by stage

void KeepStage(std::string_view stage)
{
    if (Wanted.empty() || std::find(Wanted.begin(), Wanted.end(), stage) != Wanted.end())
        Shown[std::string(stage)] = ShowStage(stage);
}

void Print(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

} // namespace

int TraceDrawings(const CommandLine& line)
{
    OpenReport(IsTerminal(StandardStream::Error), IsTerminal(StandardStream::Error));
    Wanted = line.After;
    Stages.Done = KeepStage;
    Stages.StopBeforeWriters = std::find(Wanted.begin(), Wanted.end(), ProgramsStage) == Wanted.end();
    Config.Strict.clear();        // what a refused drawing would have become is wanted all the more
    const StepsRecorded recorded; // the writers' programs reach no disk
    const std::string outputName = line.Output.empty() ? std::string() : OutputName(line.Output);
    const bool many = line.Drawings.size() > 1;
    int status = ExitConverted;
    const char* lead = many ? "[\n" : "";
    std::size_t left = line.Drawings.size();
    for (const std::string& drawing : line.Drawings) {
        --left;
        Shown = Json::object();
        const std::string outcome = RunJob(drawing, outputName, line.System);
        EraseProgress();
        // One at a time: the traces of many drawings would not fit in memory together.
        Print(lead + Shown.dump(1));
        lead = ",\n";
        WriteRows(stderr);
        if (HasFailed(outcome)) {
            status = ExitSomeFailed;
            TellFailure(drawing, outcome);
        }
        if (AbortAsked()) {
            status = std::max(status, TellUnconverted(left));
            break;
        }
    }
    Print(many ? "\n]\n" : "\n");
    return status;
}

} // namespace kv
