// The programmed way runs beside the loop of the tool's centre, toward the wall: lines meet in their
// corners, other pieces in an arc around the centre's corner. Spans so short that the rounding of a
// program would turn them are left out.
#include "routes/pocket_way_builder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/trigonometry.h"

namespace kv {

namespace {

constexpr double ShortestSpan = 0.006; // of the tool's radius
constexpr double EntryAtAnEnd = 1e-6;  // of the way's distance from the tool's centre
constexpr double ShortestRoll = 0.012; // radians; a shorter one is hardly more than its digits
// Radians. Beside a sharp corner the compensated tool would go beyond the loop's tip, and there may be a
// wall: by half a hair in a right angle, by a whole one in 60 degrees. So sharper corners are rounded.
constexpr double SharpestCorner = 1.6;

struct Direction {
    double X = 0, Y = 0;
};

Direction DirectionOf(const PathSpan& line)
{
    const double length = Distance(line.From, line.To);
    if (!(length > 0))
        return {};
    return {(line.To.X - line.From.X) / length, (line.To.Y - line.From.Y) / length};
}

PlanePoint PointAround(const PlanePoint& centre, double radius, double angle)
{
    return {centre.X + radius * Cosine(angle), centre.Y + radius * Sine(angle)};
}

} // namespace

double CounterClockwiseFrom(double from, double to)
{
    constexpr double fullCircle = 2 * std::numbers::pi;
    const double sweep = std::fmod(to - from, fullCircle);
    return sweep < 0 ? sweep + fullCircle : sweep;
}

double AngleAround(const PlanePoint& centre, const PlanePoint& point)
{
    return AngleOfVector(point.Y - centre.Y, point.X - centre.X);
}

double LengthOfPiece(const PathSpan& span)
{
    return span.IsArc ? span.Radius * SweepOfArc(span) : Distance(span.From, span.To);
}

PlanePoint MiddleOf(const PathSpan& span)
{
    if (!span.IsArc)
        return {(span.From.X + span.To.X) / 2, (span.From.Y + span.To.Y) / 2};
    const double half = SweepOfArc(span) / 2;
    return PointAround(span.Centre, span.Radius,
                       AngleAround(span.Centre, span.From) + (span.CounterClockwise ? half : -half));
}

PlanePoint WayBeside(const PathSpan& piece, const PlanePoint& point, double aside)
{
    if (!piece.IsArc) {
        const Direction along = DirectionOf(piece);
        return {point.X + along.Y * aside, point.Y - along.X * aside};
    }
    const double radius = std::max(0.0, piece.CounterClockwise ? piece.Radius + aside : piece.Radius - aside);
    const double share = radius / Distance(piece.Centre, point);
    return {piece.Centre.X + share * (point.X - piece.Centre.X),
            piece.Centre.Y + share * (point.Y - piece.Centre.Y)};
}

WayBuilder::WayBuilder(const ToolReach& reach, std::size_t mostPerWay)
    : Aside(reach.Aside()), Shortest(ShortestSpan * reach.Radius), MostPerWay(mostPerWay)
{
}

void WayBuilder::Begin(const PathSpan& piece, const PlanePoint& centre, double share)
{
    Cuts.clear();
    Points = {{WayBeside(piece, centre, Aside), 0, share}};
}

// A short one lengthens the line in front, or goes; so does one that its corners have turned round.
void WayBuilder::AddLine(const PathSpan& piece, const PlanePoint& to, double share)
{
    WayPoint& last = Points.back();
    const Direction along = DirectionOf(piece);
    const bool isTurned = (to.X - last.At.X) * along.X + (to.Y - last.At.Y) * along.Y < 0;
    if (Distance(last.At, to) >= Shortest && !isTurned) {
        last.Bulge = 0;
        Points.push_back({to, 0, share});
        return;
    }
    last.DepthShare = share;
    if (!isTurned && Points.size() > 1 && Points[Points.size() - 2].Bulge == 0)
        last.At = to;
}

void WayBuilder::AddArc(const PlanePoint& centre, bool counterClockwise, double sweep, const PlanePoint& to,
                        double share)
{
    const PlanePoint from = Points.back().At;
    const double radius = Distance(centre, to);
    if (sweep * radius < Shortest) {
        AddLine({from, to, false, false, {}, 0}, to, share);
        return;
    }
    // The way may have come to a point that lies a little off the arc's own beginning, or after its end.
    const double begin = AngleAround(centre, from), end = AngleAround(centre, to);
    const double taken =
        counterClockwise ? CounterClockwiseFrom(begin, end) : CounterClockwiseFrom(end, begin);
    if (taken > sweep + 1) {
        Points.back().DepthShare = share;
        return;
    }
    const double sense = counterClockwise ? 1 : -1;
    if (taken <= std::numbers::pi) {
        Points.back().Bulge = sense * Tangent(taken / 4);
        Points.push_back({to, 0, share});
        return;
    }
    const double half = sense * Tangent(taken / 8); // more than a half turn is two spans
    Points.back().Bulge = half;
    Points.push_back({PointAround(centre, radius, begin + sense * taken / 2), half,
                      (Points.back().DepthShare + share) / 2});
    Points.push_back({to, 0, share});
}

void WayBuilder::AddPiece(const PathSpan& piece, const PlanePoint& to, double share)
{
    if (!piece.IsArc)
        AddLine(piece, to, share);
    else if (Distance(piece.Centre, to) > 0)
        AddArc(piece.Centre, piece.CounterClockwise, SweepOfArc(piece), to, share);
}

void WayBuilder::AddCorner(const PathSpan& piece, const PathSpan& next, double share)
{
    const PlanePoint end = WayBeside(piece, piece.To, Aside);
    const PlanePoint begin = WayBeside(next, next.From, Aside);
    if (!piece.IsArc && !next.IsArc) {
        const Direction a = DirectionOf(piece), b = DirectionOf(next);
        const double turn = AngleOfVector(a.X * b.Y - a.Y * b.X, a.X * b.X + a.Y * b.Y);
        if (std::fabs(turn) < SharpestCorner) { // both lines go on to where they meet
            const double further = Aside * Tangent(turn / 2);
            AddLine(piece, {end.X + further * a.X, end.Y + further * a.Y}, share);
            return;
        }
    }
    // Left turns are corners of the walls; a right one comes from a flat arc taken as its chord.
    const PlanePoint& corner = piece.To;
    const double sweep = CounterClockwiseFrom(AngleAround(corner, end), AngleAround(corner, begin));
    if (sweep >= std::numbers::pi && IsCorner(piece))
        return; // back from the wall's own corner it would turn twice
    if (sweep < ShortestRoll || sweep >= std::numbers::pi) {
        AddPiece(piece, begin, share);
        return;
    }
    AddPiece(piece, end, share);
    AddArc(corner, true, sweep, begin, share);
}

bool WayBuilder::NeedsCut() const
{
    const std::size_t last = Cuts.empty() ? 0 : Cuts.back().Count;
    return MostPerWay > 0 && Points.size() - last > MostPerWay / 2;
}

void WayBuilder::AddCut(const PathSpan& piece)
{
    PathSpan half = piece;
    half.From = MiddleOf(piece);
    const PlanePoint before = WayBeside(piece, half.From, Aside);
    if (Distance(before, Points.back().At) < Shortest)
        return;
    const double bulge = half.IsArc ? Tangent(SweepOfArc(half) / 4) : 0;
    Cuts.push_back({Points.size(), {before, half.CounterClockwise ? bulge : -bulge, 1}});
}

// The way is the wall's own corner there, around which the tool rolls.
bool WayBuilder::IsCorner(const PathSpan& piece) const
{
    return piece.IsArc && !piece.CounterClockwise && piece.Radius - Aside < Shortest;
}

// A way that ends at the corner where it began leaves out the tool's roll around it: it goes on a little.
void WayBuilder::CloseCorner(const PathSpan& corner, const PathSpan& next)
{
    AddCorner(corner, next, 1);
    PathSpan half = next;
    half.To = MiddleOf(next);
    AddPiece(half, WayBeside(half, half.To, Aside), 1);
}

void WayBuilder::AddTurn(const Ring& ring, double fromShare, double toShare)
{
    const std::size_t count = ring.Pieces.size();
    PathSpan first = ring.Pieces[ring.EntryPiece], last = first;
    first.From = ring.Entry;
    last.To = ring.Entry;
    std::vector<PathSpan> pieces{first};
    for (std::size_t i = 1; i < count; ++i)
        pieces.push_back(ring.Pieces[(ring.EntryPiece + i) % count]);
    pieces.push_back(last);
    if (Distance(first.From, first.To) < EntryAtAnEnd * Aside) // the entry is the end of a piece
        pieces.erase(pieces.begin());
    if (Distance(last.From, last.To) < EntryAtAnEnd * Aside)
        pieces.pop_back();
    double whole = 0, done = 0;
    for (const PathSpan& piece : pieces)
        whole += LengthOfPiece(piece);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        PathSpan& piece = pieces[i];
        done += LengthOfPiece(piece);
        const double share = fromShare + (toShare - fromShare) * (whole > 0 ? done / whole : 1);
        if (fromShare == 1 && i > 0 && i + 1 < pieces.size() && NeedsCut()) {
            PathSpan half = piece;
            half.To = piece.From = MiddleOf(piece);
            AddPiece(half, WayBeside(half, half.To, Aside), share);
            AddCut(half);
        }
        if (i + 1 < pieces.size())
            AddCorner(piece, pieces[i + 1], share);
        else
            AddPiece(piece, WayBeside(piece, piece.To, Aside), toShare);
    }
    if (fromShare < 1) // another turn follows
        return;
    if (IsCorner(pieces.front()))
        CloseCorner(pieces[0], pieces[1]);
    else
        AddCut(pieces.back());
}

void WayBuilder::AddJoin(const PlanePoint& centre, const PathSpan& piece)
{
    const PlanePoint to = WayBeside(piece, centre, Aside);
    const double sweep = CounterClockwiseFrom(AngleAround(centre, Points.back().At), AngleAround(centre, to));
    AddArc(centre, true, sweep, to, 1);
}

} // namespace kv
