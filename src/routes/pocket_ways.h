// The tool's ways that clear a region of any shape: inset loops one pitch apart, joined from the middle
// outward. Geometry alone: no records, no settings.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "geometry/inset_field.h"

namespace kv {

struct PocketTask {
    std::vector<ClosedPath> Walls;  // the outline counter-clockwise, islands clockwise; none may meet
    double ToolRadius = 0;          // drawing units, above 0, as all that follow
    double Pitch = 0;               // between loops; more than the tool can clear is cut down
    double Depth = 0;               // how steep a ramp is depends on it; 0: no ramp
    std::optional<PlanePoint> Mark; // near which the tool comes down straight, once
    std::size_t MostPoints = 0;     // more end the work
    std::size_t MostPerWay = 0;     // a longer way is cut into several; 0: no limit
};

// A point of the programmed way, which the tool keeps to its left by its radius, and the span to the
// next point.
struct WayPoint {
    PlanePoint At;
    double Bulge = 0;
    double DepthShare = 1; // of the pocket's depth; below 1 on a ramp
};

// One way from the tool's coming down to its leaving.
struct PocketWay {
    std::vector<WayPoint> Points;
    PlanePoint Leaves; // where the tool's centre is at the end
};

struct PocketWays {
    std::vector<PocketWay> Ways;       // in their order; none: the tool does not fit
    std::vector<NarrowPlace> Narrow;   // that the tool cannot pass or reach
    std::optional<PlanePoint> Meeting; // where walls meet after all: nothing is made of them
    bool IsTooMuch = false;            // more points than allowed
    bool IsUnsound = false;            // no ways were found that a control can compensate
};

PocketWays WaysOf(const PocketTask& task);

} // namespace kv
