// The loops of the tool's centre in a pocket: which distances they have, and how they are simplified.
#pragma once

#include <vector>

#include "geometry/inset_field.h"

namespace kv {

// The tool's centre runs a hair inside a true inset and cuts its corners round, so that the programmed
// way, one radius and that hair beside it, has no inner corner that the control cannot compensate.
struct ToolReach {
    double Radius = 0; // of the tool
    double Hair = 0;
    double Aside() const { return Radius + Hair; } // from the centre's loop to the programmed way
};
// In a pocket whose middle is so far from its walls: a slot hardly wider than the tool has a finer hair.
ToolReach ReachOf(double toolRadius, double deepest);

// Loops of one distance from the walls.
struct RingLevel {
    double Clearance = 0;
    std::vector<InsetLoop> Rings;
};

// From the walls to the middle. Between two levels that are too far apart for the tool in a corner, or
// in the middle, comes a level for the parts that need it.
std::vector<RingLevel> RingLevelsOf(const InsetField& field, const ToolReach& reach, double pitch,
                                    std::size_t mostPieces);

// The largest step that leaves no floor between two straight loops.
double LargestStep(double toolRadius);

ClosedPath PathOf(const InsetLoop& loop);

} // namespace kv
