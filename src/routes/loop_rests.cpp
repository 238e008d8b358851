// No line joins a loop to the next one: from the end P of a loop the way goes on to the end Q of the next
// one's first line. The corner at P is an inner one, so the compensated tool turns off before P, and it comes
// beside the inner loop late:
//
//      wall  |
//            P-.        the last piece of a loop comes up to P; what the turn leaves of it at the wall, or
//            |   '-.    beside the beginning S of the next loop, is cleared by chance or by the loops around
//            |  S   'Q
//
// So the tool's way is built as a control does it, and round about each beginning a place is looked for that
// lies too far from it: in squares that are quartered until the distance of their middles decides.
#include "routes/loop_rests.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "geometry/path_spans.h"
#include "platform/trigonometry.h"
#include "routes/pocket_values.h"

namespace kv {

namespace {

constexpr double HarmlessRest = 0.05;   // mm
constexpr double SmoothGap = 0.02;      // mm between ways beside pieces that meet without a corner
constexpr double SmallestSquare = 0.01; // mm, half its side
constexpr std::size_t MostLoops = 64;   // of a smaller pitch the outer ones tell
constexpr double ClosePitch = 1.4;      // tool radii
constexpr double HalfCircle = 3.14159265358979323846; // radians

double DirectionAt(const PathSpan& piece, const PlanePoint& place)
{
    if (!piece.IsArc)
        return AngleOfVector(piece.To.Y - piece.From.Y, piece.To.X - piece.From.X);
    const double outward = AngleOfVector(place.Y - piece.Centre.Y, place.X - piece.Centre.X);
    return outward + (piece.CounterClockwise ? HalfCircle / 2 : -HalfCircle / 2);
}

PlanePoint ToTheSide(const PlanePoint& place, double direction, double aside)
{
    return {place.X - aside * Sine(direction), place.Y + aside * Cosine(direction)};
}

PathSpan BesidePiece(const PathSpan& piece, double aside)
{
    PathSpan beside = piece;
    beside.From = ToTheSide(piece.From, DirectionAt(piece, piece.From), aside);
    beside.To = ToTheSide(piece.To, DirectionAt(piece, piece.To), aside);
    beside.Radius = piece.IsArc ? Distance(piece.Centre, beside.From) : 0;
    return beside;
}

// As the writers print them: a record of negative Kind is no move, the next one starts where the tool is.
std::vector<PathSpan> MovesOf(std::span<const RouteSegment> records)
{
    std::vector<PathSpan> moves;
    PlanePoint at = PointOf(records[0]);
    for (std::size_t i = 1; i < records.size(); ++i) {
        const RouteSegment& record = records[i];
        if (record.Kind <= 0 || KindOf(record) == 4)
            continue;
        const PlanePoint to = PointOf(record);
        if (record.Kind == ArcEnds) {
            const PlanePoint centre = CentreOf(records[i - 1]);
            moves.push_back({at, to, true, record.Dir != 0, centre, Distance(centre, at)});
        } else if (Distance(at, to) > 0) {
            moves.push_back({at, to, false, false, {}, 0});
        }
        at = to;
    }
    return moves;
}

std::optional<PlanePoint> NearestCrossing(const PathSpan& a, const PathSpan& b, const PlanePoint& corner)
{
    std::optional<PlanePoint> nearest;
    for (const PlanePoint& place : CrossingsOfWholes(a, b))
        if (!nearest || Distance(place, corner) < Distance(*nearest, corner))
            nearest = place;
    return nearest;
}

// Past its own other end an arc is turned over and no longer one.
void CutBackTo(PathSpan& piece, PlanePoint PathSpan::*end, const PlanePoint& place)
{
    const double before = piece.IsArc ? SweepOfArc(piece) : 0;
    piece.*end = place;
    if (piece.IsArc && std::fabs(SweepOfArc(piece) - before) > HalfCircle)
        piece.IsArc = false;
}

// Inner corners are cut short, outer ones rolled round.
std::vector<PathSpan> ToolWayBeside(const std::vector<PathSpan>& moves, double aside)
{
    std::vector<PathSpan> way;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        PathSpan next = BesidePiece(moves[i], aside);
        if (i > 0 && Distance(way.back().To, next.From) > SmoothGap) {
            const PlanePoint corner = moves[i].From;
            const double turn = std::remainder(
                DirectionAt(moves[i], corner) - DirectionAt(moves[i - 1], moves[i - 1].To), 2 * HalfCircle);
            const std::optional<PlanePoint> crossing = NearestCrossing(way.back(), next, corner);
            if (turn * aside <= 0) {
                way.push_back({way.back().To, next.From, true, turn > 0, corner, std::fabs(aside)});
            } else if (crossing) {
                CutBackTo(way.back(), &PathSpan::To, *crossing);
                CutBackTo(next, &PathSpan::From, *crossing);
            }
        }
        way.push_back(next);
    }
    return way;
}

// Sorts out most pieces, without an angle.
bool MayReach(const PathSpan& piece, double distance, const PlanePoint& place)
{
    if (piece.IsArc)
        return std::fabs(Distance(piece.Centre, place) - piece.Radius) <= distance;
    return place.X >= std::min(piece.From.X, piece.To.X) - distance &&
           place.X <= std::max(piece.From.X, piece.To.X) + distance &&
           place.Y >= std::min(piece.From.Y, piece.To.Y) - distance &&
           place.Y <= std::max(piece.From.Y, piece.To.Y) + distance;
}

// Half the side of the square around a beginning that is looked at.
double ReachAround(const LoopsOfPocket& loops)
{
    return 3 * loops.ToolRadius + loops.Pitch;
}

// From the beginning of a loop to the ways that have to do with the square around it.
double FurthestWay(const LoopsOfPocket& loops)
{
    return 1.5 * ReachAround(loops) + 3 * loops.ToolRadius;
}

// The part of a pocket around the beginning of a loop.
struct Surroundings {
    const LoopsOfPocket& Loops;
    double Enough = 0;   // what lies further from the way is a rest
    double Smallest = 0; // half the side of a square that is not looked into
    // The way of the tool's centre as far as it comes near; behind it that part of it which comes near the
    // square in hand, for each square around that one.
    std::vector<const PathSpan*> Way;
    std::size_t First = 0;            // of the square in hand
    std::optional<PlanePoint> Before; // the beginning of the loop before, around which all is clear

    bool IsSeen(const PlanePoint& middle, double half) const
    {
        const double reach = ReachAround(Loops) - half;
        return Before && std::fabs(middle.X - Before->X) <= reach && std::fabs(middle.Y - Before->Y) <= reach;
    }

    // How deep a place lies in what the tool can reach without leaving the pocket; below 0 outside of it.
    double DepthWithin(const PlanePoint& place) const
    {
        const OutlineBox& box = Loops.Bounds;
        const bool right = 2 * place.X > box.MinX + box.MaxX, upper = 2 * place.Y > box.MinY + box.MaxY;
        const double fromX = right ? box.MaxX - place.X : place.X - box.MinX;
        const double fromY = upper ? box.MaxY - place.Y : place.Y - box.MinY;
        const double r = std::max(Loops.Corners[upper ? (right ? 2 : 3) : (right ? 1 : 0)], Loops.ToolRadius);
        const bool atWall = fromX >= r || fromY >= r;
        return atWall ? std::min(fromX, fromY) : r - Distance({fromX, fromY}, {r, r});
    }
    // Narrows the way down to what decides about a square within the one in hand. Returns the distance of
    // its middle from the way, or from what of it is that near.
    double TakePartOf(const PlanePoint& middle, double toCorner)
    {
        const double decides = Enough + toCorner;
        double nearest = decides;
        const std::size_t end = Way.size();
        for (std::size_t i = First; i < end; ++i) {
            if (!MayReach(*Way[i], decides, middle))
                continue;
            const double distance = Distance(middle, NearestOnSpan(*Way[i], middle));
            nearest = std::min(nearest, distance);
            if (distance <= decides)
                Way.push_back(Way[i]);
        }
        First = end;
        return nearest;
    }
};

// Nowhere in a square do distances differ from those of its middle by more than it is from there to a corner.
bool LeavesRestIn(Surroundings& here, const PlanePoint& middle, double half)
{
    const double toCorner = half * std::sqrt(2.0), depth = here.DepthWithin(middle);
    if (depth < -toCorner || here.IsSeen(middle, half))
        return false;
    const std::size_t first = here.First, end = here.Way.size();
    const double distance = here.TakePartOf(middle, toCorner);
    bool leaves = distance > here.Enough && depth >= 0;
    if (!leaves && half > here.Smallest && distance + toCorner > here.Enough) {
        const double quarter = half / 2;
        for (const double x : {middle.X - quarter, middle.X + quarter})
            for (const double y : {middle.Y - quarter, middle.Y + quarter})
                leaves = leaves || LeavesRestIn(here, {x, y}, quarter);
    }
    here.First = first;
    here.Way.resize(end);
    return leaves;
}

PlanePoint BeginningOf(const LoopsOfPocket& loops, std::size_t loop)
{
    return PointOf(loops.Records[loop * loops.LoopLength]);
}

bool LeavesRestAround(const LoopsOfPocket& loops, const std::vector<PathSpan>& way, std::size_t loop)
{
    const double mm = 1 / static_cast<double>(Run.UnitFactor);
    Surroundings here{loops, loops.ToolRadius + HarmlessRest * mm, SmallestSquare * mm, {}, 0, {}};
    if (loop > 0)
        here.Before = BeginningOf(loops, loop - 1);
    const PlanePoint middle = BeginningOf(loops, loop);
    const double furthest = FurthestWay(loops);
    for (const PathSpan& piece : way)
        if (MayReach(piece, furthest, middle) && Distance(middle, NearestOnSpan(piece, middle)) < furthest)
            here.Way.push_back(&piece);
    return LeavesRestIn(here, middle, ReachAround(loops));
}

// Loops with sharp corners leave nothing up to 1.53 radii, as 60,000 random ones have shown.
bool AreSharpAndClose(const LoopsOfPocket& loops)
{
    return loops.Pitch <= ClosePitch * loops.ToolRadius &&
           std::all_of(loops.Corners.begin(), loops.Corners.end(), [](double r) { return r == 0; });
}

// The loops that are looked at, and those further in that come near them.
std::span<const RouteSegment> LoopsInReach(const LoopsOfPocket& loops)
{
    const double further = std::ceil(FurthestWay(loops) / loops.Pitch) + 2;
    const double records = (static_cast<double>(MostLoops) + further) * static_cast<double>(loops.LoopLength);
    return records < static_cast<double>(loops.Records.size())
               ? loops.Records.first(static_cast<std::size_t>(records))
               : loops.Records;
}

} // namespace

bool LeavesRestBetweenLoops(const LoopsOfPocket& loops)
{
    if (AreSharpAndClose(loops))
        return false;
    const std::vector<PathSpan> way =
        ToolWayBeside(MovesOf(LoopsInReach(loops)), loops.Side * loops.ToolRadius);
    const std::size_t count = std::min(loops.Records.size() / loops.LoopLength, MostLoops);
    for (std::size_t loop = 0; loop < count; ++loop)
        if (LeavesRestAround(loops, way, loop))
            return true;
    return false;
}

} // namespace kv
