// What circles and paths of the routes share: tool word, start line, motion line.
#pragma once

#include <string>

#include "state/run.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/route_planes.h"

namespace kv {

// Group 2, stored back, for tools outside the router's magazine; a record without tool counts too.
template <typename Record> void SettleRouteGroup(Record& record)
{
    constexpr Int LowestRouterTool = 21, HighestRouterTool = 200;
    constexpr Int OtherTools = 2;
    if (record.ToolNo < LowestRouterTool || record.ToolNo > HighestRouterTool)
        record.Group = OtherTools;
}
// "T", group and tool.
std::string NamedToolWord(Int group, Int tool);

// The line that opens a route. E, feeds, B and parameters are those of `first`, compensation and
// speed those of `shape`: an arc has them at its end.
struct RouteOpening {
    const RouteSegment& First;
    const RouteSegment& Shape;
    std::string_view SideWord;
    WorkingPoint At;
    std::string Parameters; // "C1V2" or empty
};
void OpenRoute(CncProgram& program, const RouteOpening& opening);

// "G1G90F5000X300Y10Z5"
std::string MotionLine(std::string_view code, Single feed, const WorkingPoint& to);

} // namespace kv
