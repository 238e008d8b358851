// No line joins a loop to the next one: from the end P of a loop the way goes on to the end Q of the next
// one's first line. The corner at P is an inner one, so the compensated tool turns off before P, and it comes
// beside the inner loop late:
//
//      wall  |
//            P-.        the last piece of a loop comes up to P; what the turn leaves of it at the wall, or
//            |   '-.    beside the beginning S of the next loop, is cleared by chance or by the loops around
//            |  S   'Q
//
// So the tool's way is built as a control does it, and round about each beginning the place is looked for
// that lies furthest from it.
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

constexpr double HarmlessRest = 0.05;    // mm
constexpr double SmoothGap = 0.02;       // mm between ways beside pieces that meet without a corner
constexpr double SmallestSquare = 0.125; // half its side, of the tool radius
constexpr std::size_t MostLoops = 64;    // of a smaller pitch the outer ones tell
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

const std::array<PlanePoint, 16>& AllRound()
{
    static const std::array<PlanePoint, 16> directions = [] {
        std::array<PlanePoint, 16> made;
        for (std::size_t i = 0; i < made.size(); ++i) {
            const double angle = static_cast<double>(i) * 2 * HalfCircle / static_cast<double>(made.size());
            made[i] = {Cosine(angle), Sine(angle)};
        }
        return made;
    }();
    return directions;
}

// The part of a pocket around the beginning of a loop.
struct Surroundings {
    const LoopsOfPocket& Loops;
    std::vector<PathSpan> Way; // of the tool's centre, as far as it comes near

    // What the tool can reach without leaving the pocket.
    bool Holds(const PlanePoint& place) const
    {
        const OutlineBox& box = Loops.Bounds;
        const bool right = 2 * place.X > box.MinX + box.MaxX, upper = 2 * place.Y > box.MinY + box.MaxY;
        const double fromX = right ? box.MaxX - place.X : place.X - box.MinX;
        const double fromY = upper ? box.MaxY - place.Y : place.Y - box.MinY;
        const double r = std::max(Loops.Corners[upper ? (right ? 2 : 3) : (right ? 1 : 0)], Loops.ToolRadius);
        if (fromX < 0 || fromY < 0)
            return false;
        return fromX >= r || fromY >= r || std::hypot(r - fromX, r - fromY) <= r;
    }
    bool IsWithin(double distance, const PlanePoint& place) const
    {
        return std::any_of(Way.begin(), Way.end(), [&](const PathSpan& piece) {
            return MayReach(piece, distance, place) &&
                   Distance(place, NearestOnSpan(piece, place)) <= distance;
        });
    }
    double FromTheWay(const PlanePoint& place) const
    {
        double nearest = 3 * Loops.ToolRadius;
        for (const PathSpan& piece : Way)
            if (MayReach(piece, nearest, place))
                nearest = std::min(nearest, Distance(place, NearestOnSpan(piece, place)));
        return nearest;
    }
    // From a place to the one around it, up to a step away, that lies furthest.
    double FurthestNear(PlanePoint place, double reach, double enough) const
    {
        const PlanePoint start = place;
        double step = reach / 2;
        double best = Holds(place) ? FromTheWay(place) : 0;
        while (step > HarmlessRest / 16 && best <= enough) {
            const PlanePoint from = place;
            for (const PlanePoint& direction : AllRound()) {
                const PlanePoint other{from.X + step * direction.X, from.Y + step * direction.Y};
                const bool counts = Distance(start, other) <= reach && Holds(other);
                const double distance = counts ? FromTheWay(other) : 0;
                if (distance > best) {
                    best = distance;
                    place = other;
                }
            }
            if (place.X == from.X && place.Y == from.Y)
                step /= 2;
        }
        return best;
    }
};

// In the square around a place: most are cleared as a whole, and only small ones are looked at closely.
bool LeavesRestIn(const Surroundings& here, const PlanePoint& middle, double half)
{
    const double r = here.Loops.ToolRadius, toCorner = half * std::sqrt(2.0);
    const OutlineBox& box = here.Loops.Bounds;
    const bool isOutside = middle.X + half < box.MinX || middle.X - half > box.MaxX ||
                           middle.Y + half < box.MinY || middle.Y - half > box.MaxY;
    if (isOutside || (toCorner < r && here.IsWithin(r - toCorner, middle)))
        return false;
    if (half <= SmallestSquare * r) {
        const double enough = r + HarmlessRest / static_cast<double>(Run.UnitFactor);
        return here.FurthestNear(middle, toCorner, enough) > enough;
    }
    const double quarter = half / 2;
    for (const double x : {middle.X - quarter, middle.X + quarter})
        for (const double y : {middle.Y - quarter, middle.Y + quarter})
            if (LeavesRestIn(here, {x, y}, quarter))
                return true;
    return false;
}

bool LeavesRestAround(const LoopsOfPocket& loops, const std::vector<PathSpan>& way, const PlanePoint& middle)
{
    const double r = loops.ToolRadius, reach = 3 * r + loops.Pitch;
    Surroundings here{loops, {}};
    for (const PathSpan& piece : way)
        if (Distance(middle, NearestOnSpan(piece, middle)) < 1.5 * reach + 3 * r)
            here.Way.push_back(piece);
    return LeavesRestIn(here, middle, reach);
}

} // namespace

bool LeavesRestBetweenLoops(const LoopsOfPocket& loops)
{
    const std::vector<PathSpan> way = ToolWayBeside(MovesOf(loops.Records), loops.Side * loops.ToolRadius);
    const std::size_t count = std::min(loops.Records.size() / loops.LoopLength, MostLoops);
    for (std::size_t loop = 0; loop < count; ++loop)
        if (LeavesRestAround(loops, way, PointOf(loops.Records[loop * loops.LoopLength])))
            return true;
    return false;
}

} // namespace kv
