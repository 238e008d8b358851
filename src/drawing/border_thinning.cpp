// REMBORDER: a polyline that follows the panel's outline is cut only where it leaves it. Needs the
// panel's origin and size; the records are still in drawing coordinates. Leaves the polyline's
// records replaced by the runs between two stretches of outline.
#include "drawing/border_thinning.h"

#include <cmath>
#include <vector>

#include "state/run.h"

namespace kv {

namespace {

constexpr double EdgeReach = 0.01;   // drawing units between a point and the edge that it lies on
constexpr Long CountOfAnOutline = 3; // both counts are above it

double FromLeft(double x)
{
    return x - Run.OriginX;
}

double FromRight(double x)
{
    return x - Run.OriginX - Run.SideWidth[5];
}

double FromBottom(double y)
{
    return y - Run.OriginY;
}

double FromTop(double y)
{
    return y - Run.OriginY - Run.SideHeight[5];
}

bool BothNear(double a, double b)
{
    return std::abs(a) < EdgeReach && std::abs(b) < EdgeReach;
}

// Both ends on the same edge; a bulged step counts like a straight one.
bool StepOnOutline(const RouteSegment& from, const RouteSegment& to)
{
    return BothNear(FromLeft(from.X), FromLeft(to.X)) || BothNear(FromRight(from.X), FromRight(to.X)) ||
           BothNear(FromBottom(from.Y), FromBottom(to.Y)) || BothNear(FromTop(from.Y), FromTop(to.Y));
}

} // namespace

// Everything left of the panel or below it counts too: these two distances keep their sign.
void EdgeCounts::Add(Single x, Single y)
{
    if (FromLeft(x) < EdgeReach || std::abs(FromRight(x)) < EdgeReach)
        ++X;
    if (FromBottom(y) < EdgeReach || std::abs(FromTop(y)) < EdgeReach)
        ++Y;
}

bool EdgeCounts::TellOutline() const
{
    return X > CountOfAnOutline && Y > CountOfAnOutline;
}

void DropStepsOnOutline(Long first)
{
    const std::vector<RouteSegment> outline(RouteSegments.begin() + first, RouteSegments.end());
    RouteSegments.CutTo(first - 1);
    bool inRun = false;
    for (std::size_t i = 0; i + 1 < outline.size(); ++i) {
        if (StepOnOutline(outline[i], outline[i + 1])) {
            inRun = false;
            continue;
        }
        if (!inRun) {
            RouteSegment& opening = Grow(RouteSegments, "route segments", outline[i]);
            opening.Kind = -5;
        }
        inRun = true;
        const Single depth = RouteSegments[RouteSegments.Last()].Z;
        RouteSegment& end = Grow(RouteSegments, "route segments", outline[i + 1]);
        end.Z = depth;
    }
}

} // namespace kv
