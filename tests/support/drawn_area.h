// Draws a program with its tool and measures it beside an outline: what is cut outside, what is left
// inside. Reads the lines alone, with arithmetic of its own.
#pragma once

#include <string>
#include <vector>

#include "support/plane.h"

namespace kv::test {

struct DrawnArea {
    double CutOutside = 0; // square drawing units
    double LeftInside = 0;
    std::string Fault; // a line that cannot be drawn; empty in a sound program
};

// Routes on the face: the tool has the radius of the R word and lies beside the way for G41 and G42. It
// meets inner corners where both ways beside it cross and rolls round outer ones. The outline is a
// polygon; the area is counted on a grid of half a unit, 0.01 of the tool's edge being left open.
DrawnArea AreaBeside(const std::vector<std::string>& program, const std::vector<PathPoint>& outline);

// Outlines to measure against: arcs as many short steps.
std::vector<PathPoint> RoundedBox(const PathPoint& low, const PathPoint& high, double cornerRadius);
std::vector<PathPoint> Disc(const PathPoint& centre, double radius);

} // namespace kv::test
