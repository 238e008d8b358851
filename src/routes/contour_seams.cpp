#include "routes/contour_seams.h"

#include <cmath>

#include "routes/route_runs.h"

namespace kv {

namespace {

constexpr double SmoothSeam = 0.01; // degrees

// G41 runs left of the way.
int ToolSide(const RouteSegment& record)
{
    const std::string_view code = record.Comp.Padded().substr(0, 3);
    return code == "G41" ? 1 : code == "G42" ? -1 : 0;
}

bool ClosesAt(const RouteSegment& start, const RouteSegment& end)
{
    const double tolerance = Run.RouteTolerance;
    return std::fabs(static_cast<double>(start.X) - end.X) < tolerance &&
           std::fabs(static_cast<double>(start.Y) - end.Y) < tolerance;
}

// The way turns to the left (1) or to the right (-1) from `out` to `in`, the short way round.
int TurningSense(double in, double out)
{
    const double turned = std::fabs(in - out);
    if (360 - out + in < turned)
        return 1;
    if (360 - in + out < turned)
        return -1;
    return in > out ? 1 : -1;
}

} // namespace

std::optional<ContourSeam> SeamOf(std::span<const RouteSegment> route)
{
    const RouteSegment& start = route.front();
    const RouteSegment& end = route.back();
    ContourSeam seam;
    seam.Side = ToolSide(start);
    if (seam.Side == 0 || !ClosesAt(start, end))
        return std::nullopt;
    seam.Start = PointOf(start);
    seam.End = PointOf(end);
    seam.First = FirstElement(start, route[1]);
    seam.Last = LastElement(route[route.size() - 2], end);
    const double in = seam.First.Direction, out = seam.Last.Direction;
    seam.Closed = TurningSense(in, out) == -seam.Side || AngleBetween(in, out) < SmoothSeam;
    return seam;
}

} // namespace kv
