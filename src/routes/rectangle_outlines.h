// The outline of a rectangular pocket: whether it is one, which way it runs, where its loops begin.
#pragma once

#include <span>
#include <vector>

#include "routes/route_runs.h"

namespace kv {

struct OutlineBox {
    double MinX = 0, MaxX = 0, MinY = 0, MaxY = 0;
    double Width() const { return MaxX - MinX; }
    double Height() const { return MaxY - MinY; }
};

OutlineBox BoxOf(std::span<const RouteSegment> outline);
// Whether the record at k is the second one of an arc.
bool EndsArc(std::span<const RouteSegment> outline, std::size_t k);
// Straight steps along the sides of the box, arcs that round its corners, the last point at the first.
bool IsRectangle(std::span<const RouteSegment> outline, const OutlineBox& box);
// By its own turning, the signed area.
bool RunsClockwise(std::span<const RouteSegment> outline);
// The same way from another point on: its last piece is a line, where it has one.
std::vector<RouteSegment> EndingInALine(std::span<const RouteSegment> outline);

} // namespace kv
