// `korvanti explain DRAWING`: converts in memory, places nothing, and shows what became of each entity.
#include <cstdio>

#include "console/abort.h"
#include "console/calls.h"
#include "console/explanation_json.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/output_steps.h"

namespace kv {

namespace {

Explanation Explained; // of the drawing that runs, as far as it has come

void KeepExplanation(std::string_view stage)
{
    if (stage == "layers" || stage == "operations" || stage == "programs")
        Explained = ExplanationOfRun();
}

// The page replaces an older one whole. False: told on standard error.
bool WritePage(const std::string& file, const std::vector<ExplainedDrawing>& drawings)
{
    const FileOutcome outcome = ReplaceFile(FromHostPath(file), ExplanationPage(drawings));
    if (!outcome.Ok())
        WriteAtOnce("korvanti: " + file + ": " + Utf8FromAnsi(outcome.Cause) + "\n", stderr);
    return outcome.Ok();
}

void PrintExplanations(const std::vector<ExplainedDrawing>& drawings)
{
    nlohmann::ordered_json shown = nlohmann::ordered_json::array();
    for (const ExplainedDrawing& drawing : drawings)
        shown.push_back(ExplanationJson(drawing));
    const nlohmann::ordered_json document = {{"version", ProductVersion}, {"drawings", std::move(shown)}};
    WriteAtOnce(document.dump(1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n",
                stdout);
}

} // namespace

int ExplainDrawings(const CommandLine& line)
{
    OpenReport(false, IsTerminal(StandardStream::Error));
    Stages.Done = KeepExplanation;
    const StepsRecorded recorded; // the programs reach no disk
    std::vector<ExplainedDrawing> drawings;
    int status = ExitConverted;
    for (const std::string& drawing : line.Drawings) {
        Explained = {};
        const std::string outcome = RunJob(drawing, OutputInMemory(drawing, line), line.System);
        EraseProgress();
        ExplainedDrawing shown{drawing, outcome, std::move(Explained), TakeRows()};
        if (outcome != "converted") {
            status = ExitSomeFailed;
            TellFailure(drawing, outcome);
        }
        if (!line.ReportJson && line.Page.empty())
            WriteAtOnce((drawings.empty() ? "" : "\n") + ExplanationText(shown), stdout);
        drawings.push_back(std::move(shown));
        if (AbortAsked()) {
            status = std::max(status, TellUnconverted(line.Drawings.size() - drawings.size()));
            break;
        }
    }
    if (line.ReportJson)
        PrintExplanations(drawings);
    if (!line.Page.empty() && !WritePage(line.Page, drawings))
        status = ExitSomeFailed;
    return status;
}

} // namespace kv
