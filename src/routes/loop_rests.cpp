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
// lies too far from it: in squares that are quartered until one piece of the way clears them whole, or until
// the distance of their middles decides.
#include "routes/loop_rests.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "geometry/path_spans.h"
#include "routes/pocket_values.h"

namespace kv {

namespace {

constexpr double HarmlessRest = 0.05;   // mm
constexpr double SmoothGap = 0.02;      // mm between ways beside pieces that meet without a corner
constexpr double SmallestSquare = 0.01; // mm, half its side
constexpr std::size_t MostLoops = 64;   // of a smaller pitch the outer ones tell
constexpr double ClosePitch = 1.4;      // tool radii
constexpr double HalfCircle = 3.14159265358979323846; // radians

// Of length 1, the way that the piece runs at a place on it.
PlanePoint DirectionAt(const PathSpan& piece, const PlanePoint& place)
{
    const PlanePoint along = piece.IsArc ? PlanePoint{piece.Centre.Y - place.Y, place.X - piece.Centre.X}
                                         : PlanePoint{piece.To.X - piece.From.X, piece.To.Y - piece.From.Y};
    const double length = std::sqrt(along.X * along.X + along.Y * along.Y);
    const double share = !(length > 0) ? 0 : (piece.IsArc && !piece.CounterClockwise ? -1 : 1) / length;
    return {share * along.X, share * along.Y};
}

PlanePoint ToTheSide(const PlanePoint& place, const PlanePoint& direction, double aside)
{
    return {place.X - aside * direction.Y, place.Y + aside * direction.X};
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
            const PlanePoint out = DirectionAt(moves[i], corner);
            const PlanePoint in = DirectionAt(moves[i - 1], moves[i - 1].To);
            const double turn = in.X * out.Y - in.Y * out.X; // above 0 to the left
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
    if (piece.IsArc) {
        const double x = place.X - piece.Centre.X, y = place.Y - piece.Centre.Y, square = x * x + y * y;
        const double least = piece.Radius - distance, most = piece.Radius + distance;
        return square <= most * most && (least <= 0 || square >= least * least);
    }
    return place.X >= std::min(piece.From.X, piece.To.X) - distance &&
           place.X <= std::max(piece.From.X, piece.To.X) + distance &&
           place.Y >= std::min(piece.From.Y, piece.To.Y) - distance &&
           place.Y <= std::max(piece.From.Y, piece.To.Y) + distance;
}

// Of a small pitch one square serves the beginnings of several loops, as far as they lie apart in X and Y.
double Spread(const LoopsOfPocket& loops)
{
    return loops.Pitch < loops.ToolRadius ? loops.ToolRadius : 0;
}

// Half the side of the square around a beginning that is looked at.
double ReachAround(const LoopsOfPocket& loops)
{
    return 3 * loops.ToolRadius + loops.Pitch + Spread(loops);
}

// From the beginning of a loop to the ways that have to do with the square around it.
double FurthestWay(const LoopsOfPocket& loops)
{
    return 1.5 * ReachAround(loops) + 2 * loops.ToolRadius;
}

// A square's part within the pocket's bounds.
struct Part {
    double MinX, MaxX, MinY, MaxY;

    PlanePoint Middle() const { return {(MinX + MaxX) / 2, (MinY + MaxY) / 2}; }
    double ToCorner() const { return Distance({MinX, MinY}, {MaxX, MaxY}) / 2; }
    std::array<PlanePoint, 4> Corners() const
    {
        return {{{MinX, MinY}, {MaxX, MinY}, {MaxX, MaxY}, {MinX, MaxY}}};
    }
};

// The quarter disc of a corner: what the tool can reach between the corner and the disc's centre.
struct CornerZone {
    PlanePoint Centre;
    double Radius = 0;
    Part Bounds{};
};

CornerZone ZoneOf(const LoopsOfPocket& loops, std::size_t corner)
{
    const OutlineBox& box = loops.Bounds;
    const double r = std::max(loops.Corners[corner], loops.ToolRadius);
    const bool right = corner == 1 || corner == 2, upper = corner >= 2;
    const PlanePoint centre{right ? box.MaxX - r : box.MinX + r, upper ? box.MaxY - r : box.MinY + r};
    return {centre,
            r,
            {right ? centre.X : box.MinX, right ? box.MaxX : centre.X, upper ? centre.Y : box.MinY,
             upper ? box.MaxY : centre.Y}};
}

bool LiesWithin(const Part& part, const Part& whole)
{
    return part.MinX >= whole.MinX && part.MaxX <= whole.MaxX && part.MinY >= whole.MinY &&
           part.MaxY <= whole.MaxY;
}

// The distance from a line is convex: no place of a part lies further off than its corners do.
bool LineCovers(const PathSpan& line, const Part& part, double enough)
{
    const auto corners = part.Corners();
    return std::all_of(corners.begin(), corners.end(), [&](const PlanePoint& corner) {
        return Distance(corner, NearestOnSpan(line, corner)) <= enough;
    });
}

// A sector of up to a half turn is convex: it holds a part whose corners it holds. No place of the part that
// counts lies further from the centre than `furthest`.
bool ArcCovers(const PathSpan& arc, const Part& part, double furthest, double enough)
{
    const auto corners = part.Corners();
    double toFurthest = 0;
    for (const PlanePoint& corner : corners) {
        if (!FacesShortArc(arc, corner))
            return false;
        toFurthest = std::max(toFurthest, Distance(arc.Centre, corner));
    }
    const PlanePoint nearest{std::clamp(arc.Centre.X, part.MinX, part.MaxX),
                             std::clamp(arc.Centre.Y, part.MinY, part.MaxY)};
    return std::min(toFurthest, furthest) - arc.Radius <= enough &&
           arc.Radius - Distance(arc.Centre, nearest) <= enough;
}

// The part of a pocket around the beginning of a loop.
struct Surroundings {
    const LoopsOfPocket& Loops;
    double Enough = 0;   // what lies further from the way is a rest
    double Smallest = 0; // half the side of a square that is not looked into
    std::array<CornerZone, 4> Zones{};
    // The way of the tool's centre as far as it comes near; behind it that part of it which comes near the
    // square in hand, for each square around that one.
    std::vector<const PathSpan*> Way;
    std::size_t First = 0;            // of the square in hand
    std::optional<PlanePoint> Before; // the beginning looked at before, around which all is clear

    bool IsSeen(const Part& part) const
    {
        const double reach = ReachAround(Loops);
        return Before && part.MinX >= Before->X - reach && part.MaxX <= Before->X + reach &&
               part.MinY >= Before->Y - reach && part.MaxY <= Before->Y + reach;
    }

    // How deep a place lies in what the tool can reach without leaving the pocket; below 0 outside of it.
    double DepthWithin(const PlanePoint& place) const
    {
        const OutlineBox& box = Loops.Bounds;
        const bool right = 2 * place.X > box.MinX + box.MaxX, upper = 2 * place.Y > box.MinY + box.MaxY;
        const double fromX = right ? box.MaxX - place.X : place.X - box.MinX;
        const double fromY = upper ? box.MaxY - place.Y : place.Y - box.MinY;
        const double r = Zones[upper ? (right ? 2 : 3) : (right ? 1 : 0)].Radius;
        const bool atWall = fromX >= r || fromY >= r;
        return atWall ? std::min(fromX, fromY) : r - Distance({fromX, fromY}, {r, r});
    }
    const CornerZone* ZoneAround(const Part& part) const
    {
        const auto zone = std::find_if(Zones.begin(), Zones.end(),
                                       [&](const CornerZone& z) { return LiesWithin(part, z.Bounds); });
        return zone == Zones.end() ? nullptr : &*zone;
    }
    // Whether the tool, on its way along the piece, clears the whole part as far as it lies in the pocket.
    // `distance` is the piece's from the middle of the part.
    bool Covers(const PathSpan& piece, double distance, const Part& part, const CornerZone* zone) const
    {
        if (zone && zone->Radius + Distance(piece.To, zone->Centre) <= Enough)
            return true;
        if (!piece.IsArc)
            return distance <= Enough && LineCovers(piece, part, Enough);
        const double furthest =
            zone ? zone->Radius + Distance(piece.Centre, zone->Centre) : std::numeric_limits<double>::max();
        return ArcCovers(piece, part, furthest, Enough);
    }
    // Narrows the way down to what decides about the part. Returns the distance of its middle from the way,
    // or from what of it is that near; 0 where one piece clears the whole part.
    double TakeWayAround(const Part& part)
    {
        const PlanePoint middle = part.Middle();
        const double toCorner = part.ToCorner(), decides = Enough + toCorner;
        const CornerZone* zone = ZoneAround(part);
        double nearest = decides;
        const std::size_t end = Way.size();
        for (std::size_t i = First; i < end; ++i) {
            if (!MayReach(*Way[i], decides, middle))
                continue;
            const double distance = Distance(middle, NearestOnSpan(*Way[i], middle));
            if (distance > decides)
                continue;
            if (distance + toCorner <= Enough || Covers(*Way[i], distance, part, zone))
                return 0;
            nearest = std::min(nearest, distance);
            Way.push_back(Way[i]);
        }
        First = end;
        return nearest;
    }
};

// Nowhere in a part do distances differ from those of its middle by more than it is from there to a corner.
bool LeavesRestIn(Surroundings& here, const PlanePoint& middle, double half)
{
    const OutlineBox& box = here.Loops.Bounds;
    const Part part{std::max(middle.X - half, box.MinX), std::min(middle.X + half, box.MaxX),
                    std::max(middle.Y - half, box.MinY), std::min(middle.Y + half, box.MaxY)};
    if (part.MinX > part.MaxX || part.MinY > part.MaxY || here.IsSeen(part))
        return false;
    const double depth = here.DepthWithin(part.Middle());
    if (depth < -part.ToCorner())
        return false;
    const std::size_t first = here.First, end = here.Way.size();
    const double distance = here.TakeWayAround(part);
    bool leaves = distance > here.Enough && depth >= 0;
    if (!leaves && half > here.Smallest && distance > 0) {
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

bool LeavesRestAround(const LoopsOfPocket& loops, const std::vector<PathSpan>& way, const PlanePoint& middle,
                      const std::optional<PlanePoint>& before)
{
    const double mm = 1 / static_cast<double>(Run.UnitFactor);
    Surroundings here{loops, loops.ToolRadius + HarmlessRest * mm, SmallestSquare * mm, {}, {}, 0, before};
    for (std::size_t corner = 0; corner < here.Zones.size(); ++corner)
        here.Zones[corner] = ZoneOf(loops, corner);
    const double furthest = FurthestWay(loops);
    for (const PathSpan& piece : way)
        if (MayReach(piece, furthest, middle) && Distance(middle, NearestOnSpan(piece, middle)) < furthest)
            here.Way.push_back(&piece);
    return LeavesRestIn(here, middle, ReachAround(loops));
}

bool LieApart(const PlanePoint& a, const PlanePoint& b, double distance)
{
    return std::fabs(a.X - b.X) > distance || std::fabs(a.Y - b.Y) > distance;
}

// From the wall inward, the loops that have an arc in a corner.
double LoopsWithArcs(const LoopsOfPocket& loops)
{
    const double widest = *std::max_element(loops.Corners.begin(), loops.Corners.end());
    return widest == 0 ? 0 : std::max(std::ceil(widest / loops.Pitch - 1), 1.0);
}

// Loops with sharp corners leave nothing among themselves up to 1.53 radii, as 60,000 random ones have shown.
// So only those are looked at which have an arc, and the next ones as far in as a loop clears.
std::size_t LoopsThatMayLeaveRests(const LoopsOfPocket& loops)
{
    double count = static_cast<double>(std::min(loops.Records.size() / loops.LoopLength, MostLoops));
    if (loops.Pitch <= ClosePitch * loops.ToolRadius) {
        const double round = LoopsWithArcs(loops);
        count = round == 0 ? 0 : std::min(count, round + std::ceil(2 * loops.ToolRadius / loops.Pitch) + 1);
    }
    return static_cast<std::size_t>(count);
}

// The loops that are looked at, and those further in that come near them.
std::span<const RouteSegment> LoopsInReach(const LoopsOfPocket& loops, std::size_t count)
{
    const double further = std::ceil(FurthestWay(loops) / loops.Pitch) + 2;
    const double records = (static_cast<double>(count) + further) * static_cast<double>(loops.LoopLength);
    return records < static_cast<double>(loops.Records.size())
               ? loops.Records.first(static_cast<std::size_t>(records))
               : loops.Records;
}

} // namespace

bool LeavesRestBetweenLoops(const LoopsOfPocket& loops)
{
    const std::size_t count = LoopsThatMayLeaveRests(loops);
    if (count == 0)
        return false;
    const std::vector<PathSpan> way =
        ToolWayBeside(MovesOf(LoopsInReach(loops, count)), loops.Side * loops.ToolRadius);
    std::optional<PlanePoint> before;
    for (std::size_t loop = 0; loop < count; ++loop) {
        const PlanePoint beginning = BeginningOf(loops, loop);
        if (before && !LieApart(beginning, *before, Spread(loops)))
            continue;
        if (LeavesRestAround(loops, way, beginning, before))
            return true;
        before = beginning;
    }
    return false;
}

} // namespace kv
