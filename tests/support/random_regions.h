// Random regions with walls of lines and arcs, islands inside: star-shaped outlines of either turning.
// No wall meets another or itself. Arithmetic of its own, apart from the one of the passes.
#pragma once

#include <random>
#include <vector>

#include "machine/path_point.h"
#include "support/dxf.h"

namespace kv::test {

// The last vertex leads back to the first.
using Contour = std::vector<Vertex>;

struct RandomRegion {
    Contour Outline;
    std::vector<Contour> Islands;
};

struct RegionSize {
    PathPoint Centre;
    double Radius = 100; // the outline stays within
    int MostVertices = 10;
    int MostIslands = 3;
};
RandomRegion DrawRegion(std::mt19937& numbers, const RegionSize& size);

// The contour as short chords.
std::vector<PathPoint> Chords(const Contour& contour, int perArc = 48);
// By chords.
bool HoldsPoint(const Contour& contour, const PathPoint& point);
// From the lines and arcs themselves.
double DistanceFromContour(const Contour& contour, const PathPoint& point);

} // namespace kv::test
