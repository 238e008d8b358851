// The table of the stages with the arrays that each has just settled. Relies on the driver calling
// out at a stage while the arrays still stand.
#include "console/trace_stages.h"

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
    shown["Run"] = ShowRun();
    return shown;
}

} // namespace kv
