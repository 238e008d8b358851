// The table of the stages with the arrays that each has just settled. Relies on the driver calling
// out at a stage while the arrays still stand.
#include "console/trace_stages.h"

#include <algorithm>

#include "writers/job_output.h"
#include "writers/program_lines.h"

namespace kv {

namespace {

struct ShownArray {
    const char* Name;
    Json (*Show)();
};

constexpr ShownArray EntitiesShown{"Entities", [] { return ShowRecords(Entities); }};
constexpr ShownArray EntityTextsShown{"EntityTexts", [] { return ShowTexts(EntityTexts); }};
constexpr ShownArray VBoresShown{"VBores", [] { return ShowRecords(VBores); }};
constexpr ShownArray RouteSegmentsShown{"RouteSegments", [] { return ShowRecords(RouteSegments); }};
constexpr ShownArray RouteCirclesShown{"RouteCircles", [] { return ShowRecords(RouteCircles); }};
constexpr ShownArray GroovesShown{"Grooves", [] { return ShowRecords(Grooves); }};
constexpr ShownArray GroovePassesShown{"GroovePasses", [] { return ShowRecords(GroovePasses); }};
constexpr ShownArray HBoreLinesShown{"HBoreLines", [] { return ShowRecords(HBoreLines); }};
constexpr ShownArray HBoresShown{"HBores", [] { return ShowRecords(HBores); }};
constexpr ShownArray HeadPositionsShown{"HeadPositions", [] { return ShowRecords(HeadPositions); }};

std::string TextOfProgram(const std::string& path)
{
    for (const OutputStep& step : Outputs.Steps)
        if (step.Kind == StepKind::Program && step.Path == path)
            return step.Text;
    return {};
}

std::string_view WithoutReturn(std::string_view line)
{
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

// Each line with what it comes from, which is nothing for the lines of the program itself.
Json ShowProgram(const ProgramTrace& trace)
{
    const std::string text = TextOfProgram(trace.Path);
    Json lines = Json::array();
    std::size_t from = 0;
    for (const Long drawn : trace.Drawn) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        Json line = Json::object();
        line["Text"] = Utf8FromBytes(WithoutReturn(std::string_view(text).substr(from, end - from)));
        if (drawn != 0)
            line["Drawn"] = ShowDrawn(drawn);
        lines.push_back(std::move(line));
        from = std::min(end + 1, text.size());
    }
    return {{"Path", Utf8FromBytes(trace.Path)}, {"Lines", std::move(lines)}};
}

struct Stage {
    std::string Name;
    std::vector<ShownArray> Arrays;
};

const std::vector<Stage> StageTable = {
    {"entities", {EntitiesShown, EntityTextsShown}},
    {"layers", {EntitiesShown}},
    {"border", {}}, // all of it is in the run block
    {"operations", {VBoresShown, GroovesShown, HBoreLinesShown, HBoresShown}},
    {"routes", {RouteSegmentsShown, RouteCirclesShown}},
    {"chained", {RouteSegmentsShown, RouteCirclesShown, GroovePassesShown, HBoresShown}},
    {"pockets", {RouteSegmentsShown, RouteCirclesShown}},
    {"tour", {VBoresShown}},
    {"optimized", {VBoresShown, HeadPositionsShown}},
    {"leads", {RouteSegmentsShown, RouteCirclesShown}},
    {"final",
     {VBoresShown, RouteSegmentsShown, RouteCirclesShown, GroovePassesShown, HBoresShown,
      HeadPositionsShown}},
    {std::string(ProgramsStage), {}},
};

} // namespace

const std::vector<std::string>& StageNames()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        list.reserve(StageTable.size());
        for (const Stage& stage : StageTable)
            list.push_back(stage.Name);
        return list;
    }();
    return names;
}

Json ShowStage(std::string_view stage)
{
    Json shown = Json::object();
    for (const Stage& row : StageTable) {
        if (row.Name != stage)
            continue;
        for (const ShownArray& array : row.Arrays)
            shown[array.Name] = array.Show();
    }
    if (stage == ProgramsStage)
        for (const ProgramTrace& trace : ProgramTraces)
            shown["Programs"].push_back(ShowProgram(trace));
    shown["Run"] = ShowRun();
    return shown;
}

} // namespace kv
