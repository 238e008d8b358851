// Which outlines are rectangles: each record on a side of the box around them, straight steps along its
// sides, arcs that round its corners. Relies on the route tolerance; leaves the records as they are.
#include "routes/rectangle_outlines.h"

#include <algorithm>
#include <cmath>

#include "routes/pocket_values.h"

namespace kv {

namespace {

constexpr Int PolylinePoint = 5;
enum Sides : unsigned { LeftSide = 1, RightSide = 2, LowSide = 4, HighSide = 8 };

unsigned SidesAt(const OutlineBox& box, const RouteSegment& record, double tolerance)
{
    const auto touches = [tolerance](double place, double side) {
        return std::fabs(place - side) <= tolerance;
    };
    return (touches(record.X, box.MinX) ? LeftSide : 0U) | (touches(record.X, box.MaxX) ? RightSide : 0U) |
           (touches(record.Y, box.MinY) ? LowSide : 0U) | (touches(record.Y, box.MaxY) ? HighSide : 0U);
}

// The arc's circle touches the nearer sides of the box.
bool RoundsCorner(const OutlineBox& box, const RouteSegment& start, double tolerance)
{
    const PlanePoint centre = CentreOf(start);
    const double radius = Distance(PointOf(start), centre);
    const double fromX = std::min(std::fabs(centre.X - box.MinX), std::fabs(centre.X - box.MaxX));
    const double fromY = std::min(std::fabs(centre.Y - box.MinY), std::fabs(centre.Y - box.MaxY));
    return std::fabs(fromX - radius) <= tolerance && std::fabs(fromY - radius) <= tolerance;
}

// Both ends on one side; a polyline's bulge stands in the record in front.
bool FollowsSide(const OutlineBox& box, const RouteSegment& from, const RouteSegment& to, double tolerance)
{
    if (to.Kind == PolylinePoint && from.Aux2 != 0)
        return false;
    return (SidesAt(box, from, tolerance) & SidesAt(box, to, tolerance)) != 0;
}

} // namespace

OutlineBox BoxOf(std::span<const RouteSegment> outline)
{
    const RouteSegment& first = outline.front();
    OutlineBox box{first.X, first.X, first.Y, first.Y};
    for (const RouteSegment& record : outline) {
        box.MinX = std::min<double>(box.MinX, record.X);
        box.MaxX = std::max<double>(box.MaxX, record.X);
        box.MinY = std::min<double>(box.MinY, record.Y);
        box.MaxY = std::max<double>(box.MaxY, record.Y);
    }
    return box;
}

bool EndsArc(std::span<const RouteSegment> outline, std::size_t k)
{
    return k > 0 && k < outline.size() && outline[k].Kind == ArcEnds && outline[k - 1].Kind == ArcOpens;
}

bool IsRectangle(std::span<const RouteSegment> outline, const OutlineBox& box)
{
    const double tolerance = OutlineTolerance();
    if (!(box.Width() > 0) || !(box.Height() > 0) ||
        Distance(PointOf(outline.back()), PointOf(outline.front())) > tolerance)
        return false;
    bool hasLine = false; // a circle of four quarters fills its box too, and is none
    for (std::size_t k = 0; k < outline.size(); ++k) {
        const RouteSegment& record = outline[k];
        if (SidesAt(box, record, tolerance) == 0)
            return false;
        if (k == 0 || record.Kind < 0)
            continue;
        const bool isArc = EndsArc(outline, k);
        hasLine = hasLine || !isArc;
        if (isArc ? !RoundsCorner(box, outline[k - 1], tolerance)
                  : !FollowsSide(box, outline[k - 1], record, tolerance))
            return false;
    }
    return hasLine;
}

bool RunsClockwise(std::span<const RouteSegment> outline)
{
    double area = 0; // twice
    for (std::size_t k = 0; k + 1 < outline.size(); ++k) {
        const PlanePoint from = PointOf(outline[k]);
        const PlanePoint to = PointOf(outline[k + 1]);
        area += from.X * to.Y - to.X * from.Y;
    }
    return area < 0;
}

std::vector<RouteSegment> EndingInALine(std::span<const RouteSegment> outline)
{
    std::size_t end = outline.size();
    while (end > 1 && EndsArc(outline, end - 1))
        end -= 2;
    if (end == 0)
        end = outline.size();
    std::vector<RouteSegment> turned(outline.begin() + static_cast<std::ptrdiff_t>(end), outline.end());
    turned.insert(turned.end(), outline.begin(), outline.begin() + static_cast<std::ptrdiff_t>(end));
    return turned;
}

} // namespace kv
