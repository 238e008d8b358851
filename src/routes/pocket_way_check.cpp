// Turns and crossings of spans, as a control works them out. Relies on ways that the tool keeps to its left.
#include "routes/pocket_way_check.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace kv {

namespace {

constexpr double WholeTurn = 2 * std::numbers::pi;
constexpr double TipTurn = 3.13;    // radians; a loop's tip is always a left turn
constexpr double MostRoll = 3.0;    // radians to the right; from half a turn on it is one to the left
constexpr double Joined = 0.001;    // of the tool's radius: pieces whose ends are so near meet
constexpr double TurnedOver = 2e-4; // of the radius
constexpr double LeastArc = 1e-4;   // of the radius, of what is left of an arc

// Along the span at one of its ends.
PlanePoint AlongAt(const PathSpan& span, const PlanePoint& end)
{
    if (!span.IsArc)
        return {span.To.X - span.From.X, span.To.Y - span.From.Y};
    const PlanePoint off{end.X - span.Centre.X, end.Y - span.Centre.Y};
    return span.CounterClockwise ? PlanePoint{-off.Y, off.X} : PlanePoint{off.Y, -off.X};
}

// Radians, above 0 to the left.
double TurnBetween(const PathSpan& span, const PathSpan& next)
{
    const PlanePoint a = AlongAt(span, span.To), b = AlongAt(next, next.From);
    return AngleOfVector(a.X * b.Y - a.Y * b.X, a.X * b.X + a.Y * b.Y);
}

double TurnWithin(const PathSpan& span)
{
    if (!span.IsArc)
        return 0;
    return span.CounterClockwise ? SweepOfArc(span) : -SweepOfArc(span);
}

bool TurnsOnce(const InsetLoop& loop)
{
    constexpr double vague = 0.1; // what joints beside tiny arcs add up to
    double whole = 0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const double turn = TurnBetween(loop[i], loop[(i + 1) % loop.size()]);
        whole += TurnWithin(loop[i]) + (turn < -TipTurn ? turn + WholeTurn : turn);
    }
    return std::fabs(std::fabs(whole) - WholeTurn) < vague;
}

// The way of the tool's centre beside a span. Nothing, where an arc has no room for the tool.
std::optional<PathSpan> CentreBeside(const PathSpan& span, double radius)
{
    PathSpan centre = span;
    const auto beside = [&](const PlanePoint& point) {
        const PlanePoint along = AlongAt(span, point);
        const double length = std::sqrt(along.X * along.X + along.Y * along.Y);
        return PlanePoint{point.X - along.Y / length * radius, point.Y + along.X / length * radius};
    };
    centre.From = beside(span.From);
    centre.To = beside(span.To);
    if (!span.IsArc)
        return centre;
    centre.Radius = span.CounterClockwise ? span.Radius - radius : span.Radius + radius;
    return centre.Radius > LeastArc * radius ? std::optional(centre) : std::nullopt;
}

// Signed length along the span, from its beginning to a point of its line or circle near it.
double PlaceAlong(const PathSpan& span, const PlanePoint& point)
{
    const PlanePoint along = AlongAt(span, span.From);
    if (!span.IsArc) {
        const double length = std::sqrt(along.X * along.X + along.Y * along.Y);
        return ((point.X - span.From.X) * along.X + (point.Y - span.From.Y) * along.Y) / length;
    }
    const PlanePoint a{span.From.X - span.Centre.X, span.From.Y - span.Centre.Y};
    const PlanePoint b{point.X - span.Centre.X, point.Y - span.Centre.Y};
    const double turn = AngleOfVector(a.X * b.Y - a.Y * b.X, a.X * b.X + a.Y * b.Y);
    return span.Radius * (span.CounterClockwise ? turn : -turn);
}

double LengthOf(const PathSpan& span)
{
    return span.IsArc ? span.Radius * SweepOfArc(span) : Distance(span.From, span.To);
}

// The tool's centre beside one span, and how much its corners take from both ends.
struct CentrePiece {
    PathSpan Span;
    double TakenInFront = 0, TakenAfter = 0;
};

// False where two pieces do not meet at an inner corner.
bool MeetAt(const PlanePoint& corner, CentrePiece& piece, CentrePiece& next)
{
    std::optional<PlanePoint> nearest;
    for (const PlanePoint& point : CrossingsOfWholes(piece.Span, next.Span))
        if (!nearest || Distance(point, corner) < Distance(*nearest, corner))
            nearest = point;
    if (!nearest)
        return false;
    PathSpan back = piece.Span;
    std::swap(back.From, back.To);
    back.CounterClockwise = !back.CounterClockwise;
    piece.TakenAfter = PlaceAlong(back, *nearest);
    next.TakenInFront = PlaceAlong(next.Span, *nearest);
    return true;
}

std::vector<PathSpan> SpansOf(const PocketWay& way, double toolRadius)
{
    std::vector<PathSpan> spans;
    for (std::size_t i = 0; i + 1 < way.Points.size(); ++i) {
        const WayPoint& point = way.Points[i];
        if (Distance(point.At, way.Points[i + 1].At) > LeastArc * toolRadius)
            spans.push_back(SpanBetween({point.At, point.Bulge}, way.Points[i + 1].At));
    }
    return spans;
}

} // namespace

bool TurnOnce(const std::vector<RingLevel>& levels)
{
    return std::all_of(levels.begin(), levels.end(), [](const RingLevel& level) {
        return std::all_of(level.Rings.begin(), level.Rings.end(), TurnsOnce);
    });
}

bool CanBeCompensated(const PocketWay& way, double toolRadius)
{
    const std::vector<PathSpan> spans = SpansOf(way, toolRadius);
    std::vector<CentrePiece> pieces;
    for (const PathSpan& span : spans) {
        const std::optional<PathSpan> centre = CentreBeside(span, toolRadius);
        if (!centre)
            return false;
        pieces.push_back({*centre});
    }
    for (std::size_t i = 0; i + 1 < spans.size(); ++i) {
        if (Distance(pieces[i].Span.To, pieces[i + 1].Span.From) < Joined * toolRadius)
            continue;
        const double turn = TurnBetween(spans[i], spans[i + 1]);
        if (turn < -MostRoll || turn > TipTurn)
            return false;
        if (turn > 0 && !MeetAt(spans[i].To, pieces[i], pieces[i + 1]))
            return false;
    }
    return std::all_of(pieces.begin(), pieces.end(), [&](const CentrePiece& piece) {
        return piece.TakenInFront + piece.TakenAfter <= LengthOf(piece.Span) + TurnedOver * toolRadius;
    });
}

} // namespace kv
