// `korvanti compare`: one drawing converted in memory for each control, its programs read back and counted.
#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "console/abort.h"
#include "console/calls.h"
#include "console/comparison_views.h"
#include "console/program_pictures.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "shell/drawing_overlay.h"
#include "shell/program_origins.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/job_output.h"

namespace kv {

namespace {

struct ControlNames {
    const char* Name;
    const char* Option;
};
constexpr std::array<ControlNames, 3> Controls = {
    {{"CNC90", "cnc90"}, {"GENESIS", "genesis"}, {"Genesis Evolution", "evolution"}}}; // by their numbers

std::size_t LinesOf(const std::string& text)
{
    const auto ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    return ends + (text.empty() || text.back() == '\n' ? 0 : 1);
}

void TakeToldLines(ComparedControl& row)
{
    for (const ReportRow& told : TakeRows()) {
        const MessagePage* const page = FindPage(static_cast<long long>(told.Line.Number));
        if (page == nullptr || page->Severity == MessageSeverity::Note)
            continue;
        ++(page->Severity == MessageSeverity::Doubt ? row.Doubts : row.Faults);
        row.Told.push_back(Utf8FromAnsi(TextOf(told.Line)));
    }
}

void AddProgram(PictureRun& run, ComparedControl& row, const ProgramText& program)
{
    run.Pictures.push_back(PictureOf(program, StepsOf(run, program)));
    ++row.Programs;
    row.Lines += LinesOf(program.Text);
    row.Figures.Add(FiguresOf(run.Pictures.back().Picture));
}

std::string FailureOf(const ComparedControl& row, const std::string& outcome)
{
    if (!row.Told.empty() && HasFailed(outcome))
        return row.Told.back();
    return outcome == "nothing" ? "the drawing gives none" : outcome;
}

ComparedControl ConvertFor(PictureRun& run, std::size_t system)
{
    const StepsRecorded recorded; // the programs reach no disk
    const ControlNames& control = Controls[system];
    ComparedControl row;
    row.Control = control.Name;
    row.Option = control.Option;
    CommandLine line = run.Line;
    line.System = static_cast<int>(system);
    const std::string& drawing = line.Drawings.front();
    const std::string outcome = RunJob(drawing, OutputInMemory(drawing, line), line.System);
    EraseProgress();
    TakeToldLines(row);
    if (outcome != "converted") {
        row.Failure = FailureOf(row, outcome);
        run.Fault(drawing + ": " + row.Control + ": " + row.Failure);
        return row;
    }
    ProgramFacts facts = FactsOfCall(line);
    facts.From = {Run.OriginRight != 0, Run.OriginTop != 0};
    const std::vector<DrawnShape> drawn = DrawnShapesOfRun();
    const DrawingOrigins origins = OriginsOfRun();
    for (const OutputStep& step : Outputs.Steps) {
        if (step.Kind != StepKind::Program)
            continue;
        const ProgramOrigins* const program = OriginsOfProgram(origins, step.Path);
        if (program != nullptr)
            facts.HbdEdge = program->BackEdge;
        AddProgram(run, row, {row.Control + ": " + Utf8FromAnsi(FileNameOf(step.Path)), step.Text, facts});
        Scene& picture = run.Pictures.back().Picture;
        picture.Drawn = drawn;
        if (program != nullptr)
            NameOrigins(picture, origins, *program);
    }
    return row;
}

bool IsToldElsewhere(const Comparison& comparison, const ComparedControl& row, const std::string& line)
{
    return std::ranges::any_of(comparison.Rows, [&](const ComparedControl& other) {
        return &other != &row && std::ranges::find(other.Told, line) != other.Told.end();
    });
}

// A control that has no program says nothing of what it would do with the rest: it counts all the same, since
// a line that two have is not of one alone.
void FindOwnLines(Comparison& comparison)
{
    for (ComparedControl& row : comparison.Rows)
        for (const std::string& line : row.Told)
            if (!IsToldElsewhere(comparison, row, line))
                row.OnlyHere.push_back(line);
}

} // namespace

int CompareControls(const CommandLine& line)
{
    OpenReport(false, IsTerminal(StandardStream::Error));
    Config.CarryOver = "clean"; // no control starts as another has left things
    PictureRun run{line, {}, {}, {}, ExitConverted};
    LoadTools(run);
    Stages.Done = KeepDrawnShapes;
    Comparison comparison{line.Drawings.front(), {}};
    for (std::size_t system = 0; system < Controls.size() && !AbortAsked(); ++system)
        comparison.Rows.push_back(ConvertFor(run, system));
    if (AbortAsked())
        run.Status = ExitSomeFailed;
    FindOwnLines(comparison);
    WriteAtOnce(line.ReportJson ? ComparisonJson(comparison) : ComparisonText(comparison), stdout);
    if (!line.Output.empty())
        WritePictureFile(run, line.Output, PicturePage(run.Pictures, ComparisonHeader(comparison)));
    return run.Status;
}

} // namespace kv
