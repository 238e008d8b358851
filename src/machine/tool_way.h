// The way of the tool's centre beside a programmed way: radius compensation as a control does it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "machine/steps.h"

namespace kv {

struct WayFault {
    std::string Text;     // "narrower than the tool: ..."
    PathPoint At;         // of the programmed way
    std::size_t Line = 0; // of the program
};

struct ToolWay {
    Plane On = Plane::Surface;
    double Radius = 0; // of the tool
    PathPoint Start;   // where the tool comes down
    double StartDepth = 0;
    std::vector<Move> Pieces; // of the tool's centre, each beginning where the last one ends
    std::vector<WayFault> Faults;
};

// The tool begins and ends perpendicular to the first and last move. At an inner corner it turns where
// the two ways beside the moves cross, around an outer one it rolls. An arc whose radius is used up by
// the tool's, a move that is used up between its two corners, and two ways that do not cross are faults;
// the way then goes on along what is left turned over, so it covers what such a control would cut.
// `radiusIfUnknown` serves for a cut that names no radius.
ToolWay WayOf(const RouterCut& cut, double radiusIfUnknown = 0);

// The faults of all cuts.
std::vector<WayFault> WayFaults(const MachineSteps& steps, double radiusIfUnknown = 0);

// Distance of a point from a move: for plain tests of what regions say.
double DistanceFrom(const Move& move, const PathPoint& point);

} // namespace kv
