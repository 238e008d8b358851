// Seen along the diagonal of a corner, in X and in Y alike, from the wall inward:
//
//      a loop with a sharp corner, its inset d, clears from d + 0.293 R, where the corner's own rest
//      ends, and beside its two ways as far as d + 2 R;
//      so the next loop's rest is cleared where its inset is d + 1.707 R at most, and is an island else.
//
// A corner that is still an arc clears further in than a sharp one.
#include "routes/rectangle_doubts.h"

#include <algorithm>
#include <cmath>

#include "routes/route_elements.h"

namespace kv {

namespace {

const double HalfDiagonal = std::sqrt(0.5); // of a square of side 1
const double CornerRest = 1 - HalfDiagonal; // of a radius of 1, along each side

// As the loops have it: 0 where the corner is a sharp one.
double RadiusAt(const RectangleLoops& loops, double corner, double inset)
{
    const bool lasts = corner > loops.ToolRadius && (inset == 0 || corner - inset > loops.Pitch);
    return lasts ? corner - inset : 0;
}

// Whether the loop of an inset leaves a rest in its corner that the loop around it, `outer`, does not reach.
bool LeavesIsland(const RectangleLoops& loops, double corner, double outer, double inset)
{
    if (RadiusAt(loops, corner, inset) > 0)
        return false;
    const double beyondTool = RadiusAt(loops, corner, outer) - 2 * loops.ToolRadius;
    const double cleared = outer + 2 * loops.ToolRadius + CornerRest * std::max(beyondTool, 0.0);
    return inset + CornerRest * loops.ToolRadius > cleared + OutlineTolerance();
}

double WidthAt(const RectangleLoops& loops, double inset)
{
    return std::min(loops.Bounds.Width(), loops.Bounds.Height()) - 2 * inset;
}

// Between two loops, or inside the only one; the one on the wall clears a pocket of two tools' width.
bool LeavesWood(const RectangleLoops& loops)
{
    const double tool = 2 * loops.ToolRadius;
    return loops.Pitch > tool + OutlineTolerance() && WidthAt(loops, 0) > 2 * tool + OutlineTolerance();
}

// Only in loops that the tool fits into; narrower ones are told as such.
bool LeavesIslands(const RectangleLoops& loops)
{
    if (loops.Pitch <= loops.ToolRadius)
        return false; // and no walk through the loops of a tiny pitch
    for (int loop = 1;; ++loop) {
        const double inset = loop * loops.Pitch;
        if (inset > loops.LastInset || WidthAt(loops, inset) < 2 * loops.ToolRadius)
            return false;
        for (const double corner : loops.Corners)
            if (LeavesIsland(loops, corner, (loop - 1) * loops.Pitch, inset))
                return true;
    }
}

// The tool beside the first point of the way reaches over the wall behind it.
bool BeginsInACorner(const RectangleLoops& loops, const RouteSegment& first, const RouteSegment& next)
{
    const double side = loops.Side == PocketSide::Left ? 90 : -90;
    const double direction = FirstElement(first, next).Direction;
    const PlanePoint centre = Polar(PointOf(first), loops.ToolRadius, direction + side);
    const OutlineBox& box = loops.Bounds;
    const double room =
        std::min({centre.X - box.MinX, box.MaxX - centre.X, centre.Y - box.MinY, box.MaxY - centre.Y});
    return loops.ToolRadius - room > OutlineTolerance();
}

} // namespace

void TellRectangleDoubts(const PocketSpot& spot, const RectangleLoops& loops, const RouteSegment& first,
                         const RouteSegment& next)
{
    if (!(loops.ToolRadius > 0) || WidthAt(loops, 0) < 2 * loops.ToolRadius)
        return;
    if (BeginsInACorner(loops, first, next))
        TellOfPocket(spot, {Message::PocketBeginsInCorner});
    if (LeavesWood(loops))
        TellOfPocket(spot, {Message::PocketLeavesWood});
    else if (LeavesIslands(loops))
        TellOfPocket(spot, {Message::PocketLeavesIslands});
    else if (LeavesRestBetweenLoops(loops.Way))
        TellOfPocket(spot, {Message::PocketLeavesWoodAtTurns});
}

} // namespace kv
