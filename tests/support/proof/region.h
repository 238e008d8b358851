// Regions of a plane, their sums and differences, and what tools sweep. Places are held on a grid of
// 1e-5 mm; arcs are many chords, at most 0.002 mm beside them.
#pragma once

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "machine/steps.h"
#include "machine/tool_way.h"

namespace kv::test {

struct GridPoint {
    long long X = 0, Y = 0; // 1e-5 mm
};
using Ring = std::vector<GridPoint>;

// Outer rings counter-clockwise, holes clockwise; no two cross. Made by the functions below alone.
struct Region {
    std::vector<Ring> Rings;

    bool IsEmpty() const { return Rings.empty(); }
};

// The inside of a closed polygon, of either turning; where it crosses itself, what is inside an odd number
// of times.
Region Polygon(const std::vector<PathPoint>& points);
// The inside of closed ways of moves (contours), each ending where it begins. A hole is a contour inside
// another.
Region Inside(const std::vector<std::vector<Move>>& contours);
Region DiscOf(const PathPoint& centre, double radius);
Region BoxOf(const PathPoint& low, const PathPoint& high, double cornerRadius = 0);

Region Union(const Region& a, const Region& b);
Region Union(const std::vector<Region>& regions); // faster than one by one
Region Difference(const Region& a, const Region& b);
Region Intersection(const Region& a, const Region& b);

// All places within `by` of the region; those that lie deeper in it than `by`. Rounded at corners.
Region Grown(const Region& region, double by);
Region Shrunk(const Region& region, double by);
// What a disc of the diameter reaches without leaving the region: narrower places and corners are gone.
Region ReachedBy(const Region& region, double discDiameter);
// Is it somewhere wider than that?
bool IsWiderThan(const Region& region, double width);

double AreaOf(const Region& region); // mm2
bool Holds(const Region& region, const PathPoint& point);

// A connected part of a region, with its holes.
struct RegionPiece {
    double Area = 0;  // mm2
    PathPoint Inside; // a place in it
    Region Itself;
};
std::vector<RegionPiece> PiecesOf(const Region& region); // the largest first
// "2.25 mm2 at X100.5 Y20, .3 mm2 at ...": at most `most` pieces. Empty for an empty region.
std::string Described(const Region& region, std::size_t most = 3);

// What a tool of the radius covers on the way of its centre.
Region SweptAlong(const std::vector<Move>& pieces, double radius);
Region SweptBy(const ToolWay& way);
Region SweptBy(const std::vector<ToolWay>& ways);

struct Sweep {
    double RadiusIfUnknown = 0;                              // of a cut that names none
    std::function<bool(const RouterCut&)> Take;              // empty: all cuts
    double Depth = -std::numeric_limits<double>::infinity(); // moves that are nowhere as deep are left out
};
// What the router cuts on each plane.
std::map<Plane, Region> SweptAreas(const MachineSteps& steps, const Sweep& how = {});
Region SweptFace(const MachineSteps& steps, const Sweep& how = {});

} // namespace kv::test
