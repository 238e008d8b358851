#include "routes/route_paths.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kv {

namespace {

constexpr double QuarterTurn = 90;

Single Direction(Long from, Long to)
{
    return ToSingle(Bearing(PointOf(RouteSegments[from]), PointOf(RouteSegments[to])));
}

Single Opposite(Single direction)
{
    return ToSingle(Turn360(direction + HalfTurn));
}

void SettleDirections(ChainEntry& path)
{
    RouteSegment& first = RouteSegments[path.First];
    const RouteSegment& last = RouteSegments[path.Last];
    if (path.PathKind == 2) {
        path.StartAngle = Direction(path.First, std::min<Long>(path.First + 1, path.Last));
        path.EndAngle = Direction(std::max<Long>(path.Last - 1, path.First), path.Last);
        return;
    }
    if (path.PathKind == 3) { // arcs are clockwise from Aux1 to Aux2
        path.StartAngle = ToSingle(Turn360(last.Aux1 - QuarterTurn));
        path.EndAngle = ToSingle(Turn360(last.Aux2 - QuarterTurn));
        return;
    }
    path.StartAngle = path.EndAngle = Direction(path.First, path.Last);
    if (path.PathKind != 4)
        first.Aux1 = path.StartAngle;
}

// All fields but Kind, ParamA, ParamB and Flag, which stay with the place.
void ExchangeRecords(RouteSegment& a, RouteSegment& b)
{
    const RouteSegment atA = a;
    const RouteSegment atB = b;
    const auto take = [](RouteSegment& place, const RouteSegment& from) {
        const RouteSegment kept = place;
        place = from;
        place.Kind = kept.Kind;
        place.ParamA = kept.ParamA;
        place.ParamB = kept.ParamB;
        place.Flag = kept.Flag;
    };
    take(a, atB);
    take(b, atA);
}

void ReverseLine(ChainEntry& path)
{
    RouteSegment& first = RouteSegments[path.First];
    ExchangeRecords(first, RouteSegments[path.Last]);
    path.StartAngle = path.EndAngle = Opposite(path.StartAngle);
    first.Aux1 = path.StartAngle;
    if (path.PathKind == 4)
        first.Aux2 = -1;
}

void ReverseFitPoints(ChainEntry& path)
{
    std::reverse(&RouteSegments[path.First], &RouteSegments[path.Last] + 1);
    std::swap(RouteSegments[path.First].Kind, RouteSegments[path.Last].Kind);
    const Single start = path.StartAngle;
    path.StartAngle = Opposite(path.EndAngle);
    path.EndAngle = Opposite(start);
}

void ReverseArc(ChainEntry& path)
{
    RouteSegment& first = RouteSegments[path.First];
    RouteSegment& last = RouteSegments[path.Last];
    std::swap(last.Aux1, last.Aux2);
    std::swap(first.X, last.X);
    std::swap(first.Y, last.Y);
    last.Dir = static_cast<Int>(~last.Dir); // -1 and 0 change places
    // Each keeps its place: only a full circle's two directions are the same anyway.
    path.StartAngle = Opposite(path.StartAngle);
    path.EndAngle = Opposite(path.EndAngle);
}

} // namespace

Long LastOfPath(Long first)
{
    Long last = first;
    while (last < RouteSegments.Last() && RouteSegments[last + 1].Kind >= 0)
        ++last;
    return last;
}

std::vector<ChainEntry> FindPaths()
{
    std::vector<ChainEntry> paths;
    for (Long i = 1; i < RouteSegments.Last(); ++i) {
        if (RouteSegments[i].Kind >= 0)
            continue;
        ChainEntry path;
        path.First = i;
        path.Last = LastOfPath(i);
        path.PathKind = KindOf(RouteSegments[i]);
        SettleDirections(path);
        paths.push_back(path);
        i = path.Last;
    }
    return paths;
}

void ReversePath(ChainEntry& path)
{
    if (path.PathKind == 1 || path.PathKind == 4)
        ReverseLine(path);
    else if (path.PathKind == 2)
        ReverseFitPoints(path);
    else if (path.PathKind == 3)
        ReverseArc(path);
    else
        return;
    // Run backward, the line has its tool on the other hand: so it stays where it was drawn.
    for (Long i = path.First; i <= path.Last; ++i)
        RouteSegments[i].Comp = OtherSideOf(RouteSegments[i].Comp);
}

} // namespace kv
