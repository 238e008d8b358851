#include "geometry/path_spans.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/trigonometry.h"

namespace kv {

namespace {

std::vector<PlanePoint> CrossingsOfLines(const PathSpan& a, const PathSpan& b)
{
    const PlanePoint along{a.To.X - a.From.X, a.To.Y - a.From.Y};
    const PlanePoint across{b.To.X - b.From.X, b.To.Y - b.From.Y};
    const double turn = along.X * across.Y - along.Y * across.X;
    if (turn == 0)
        return {};
    const double share = ((b.From.X - a.From.X) * across.Y - (b.From.Y - a.From.Y) * across.X) / turn;
    return {{a.From.X + share * along.X, a.From.Y + share * along.Y}};
}

std::vector<PlanePoint> CrossingsOnLine(const PathSpan& line, const PathSpan& arc)
{
    const double length = Distance(line.From, line.To);
    if (!(length > 0))
        return {};
    const PlanePoint along{(line.To.X - line.From.X) / length, (line.To.Y - line.From.Y) / length};
    const double place = (arc.Centre.X - line.From.X) * along.X + (arc.Centre.Y - line.From.Y) * along.Y;
    const PlanePoint foot{line.From.X + place * along.X, line.From.Y + place * along.Y};
    const double off = Distance(foot, arc.Centre);
    const double square = (arc.Radius - off) * (arc.Radius + off);
    if (square < 0)
        return {};
    const double half = std::sqrt(square);
    return {{foot.X - half * along.X, foot.Y - half * along.Y},
            {foot.X + half * along.X, foot.Y + half * along.Y}};
}

std::vector<PlanePoint> CrossingsOfCircles(const PathSpan& a, const PathSpan& b)
{
    const double apart = Distance(a.Centre, b.Centre);
    if (!(apart > 0))
        return {};
    const double along = (a.Radius * a.Radius - b.Radius * b.Radius + apart * apart) / (2 * apart);
    const double square = (a.Radius - along) * (a.Radius + along);
    if (square < 0)
        return {};
    const double half = std::sqrt(square);
    const PlanePoint to{(b.Centre.X - a.Centre.X) / apart, (b.Centre.Y - a.Centre.Y) / apart};
    const PlanePoint foot{a.Centre.X + along * to.X, a.Centre.Y + along * to.Y};
    return {{foot.X - half * to.Y, foot.Y + half * to.X}, {foot.X + half * to.Y, foot.Y - half * to.X}};
}

struct Turns {
    PlanePoint From, To; // from the centre, counter-clockwise

    explicit Turns(const PathSpan& arc)
        : From(FromCentre(arc, arc.CounterClockwise ? arc.From : arc.To)),
          To(FromCentre(arc, arc.CounterClockwise ? arc.To : arc.From))
    {
    }
    static PlanePoint FromCentre(const PathSpan& arc, const PlanePoint& place)
    {
        return {place.X - arc.Centre.X, place.Y - arc.Centre.Y};
    }
    static double Turn(const PlanePoint& a, const PlanePoint& b) { return a.X * b.Y - a.Y * b.X; }
    static double Along(const PlanePoint& a, const PlanePoint& b) { return a.X * b.X + a.Y * b.Y; }
};

// Whether the ray from the centre to the point meets the arc. One whose ends meet has no length.
bool FacesArc(const PathSpan& arc, const PlanePoint& point)
{
    const Turns ends(arc);
    const PlanePoint ray = Turns::FromCentre(arc, point);
    const double whole = Turns::Turn(ends.From, ends.To);
    if (whole < 0) // more than a half turn
        return !(Turns::Turn(ends.To, ray) > 0 && Turns::Turn(ray, ends.From) > 0);
    if (whole == 0 && Turns::Along(ends.From, ends.To) > 0)
        return Turns::Turn(ends.From, ray) == 0 && Turns::Along(ends.From, ray) > 0;
    return Turns::Turn(ends.From, ray) >= 0 && Turns::Turn(ray, ends.To) >= 0;
}

double FromSpan(const PathSpan& span, const PlanePoint& point)
{
    return Distance(NearestOnSpan(span, point), point);
}

// Of two lines: proper crossings alone, ends that touch are found from the ends.
bool LinesCross(const PathSpan& a, const PathSpan& b)
{
    const auto side = [](const PathSpan& line, const PlanePoint& point) {
        return (line.To.X - line.From.X) * (point.Y - line.From.Y) -
               (line.To.Y - line.From.Y) * (point.X - line.From.X);
    };
    return side(a, b.From) * side(a, b.To) < 0 && side(b, a.From) * side(b, a.To) < 0;
}

bool ArcCrosses(const PathSpan& a, const PathSpan& b)
{
    constexpr double onSpan = 1e-9; // drawing units
    for (const PlanePoint& place : CrossingsOfWholes(a, b))
        if (FromSpan(a, place) <= onSpan && FromSpan(b, place) <= onSpan)
            return true;
    return false;
}

// Of the places of an arc that lie nearest to a whole line or circle, or furthest from it, the nearest one
// to the span itself.
double FromTurnsOfArc(const PathSpan& arc, const PathSpan& span)
{
    const PlanePoint toward = span.IsArc ? span.Centre : NearestOnSpan(span, arc.Centre);
    const double apart = Distance(arc.Centre, toward);
    if (!(apart > 0))
        return FromSpan(span, arc.From);
    double nearest = FromSpan(span, arc.From);
    for (const double radius : {arc.Radius, -arc.Radius}) {
        const PlanePoint place{arc.Centre.X + radius * (toward.X - arc.Centre.X) / apart,
                               arc.Centre.Y + radius * (toward.Y - arc.Centre.Y) / apart};
        nearest = std::min(nearest, FromSpan(span, NearestOnSpan(arc, place)));
    }
    return nearest;
}

} // namespace

PathSpan SpanBetween(const PathVertex& from, const PlanePoint& to)
{
    PathSpan span{from.At, to, false, false, {}, 0};
    const PlanePoint chord{to.X - from.At.X, to.Y - from.At.Y};
    const double length = Distance(from.At, to);
    if (from.Bulge == 0 || !(length > 0))
        return span;
    // The centre lies on the chord's bisector, left of a counter-clockwise span below a half turn.
    const double ahead = (1 - from.Bulge * from.Bulge) / (4 * from.Bulge);
    span.IsArc = true;
    span.CounterClockwise = from.Bulge > 0;
    span.Centre = {from.At.X + chord.X / 2 - chord.Y * ahead, from.At.Y + chord.Y / 2 + chord.X * ahead};
    span.Radius = Distance(span.Centre, from.At);
    return span;
}

double AngleOfVector(double y, double x)
{
    if (x == 0 && y == 0)
        return 0;
    if (std::fabs(y) > std::fabs(x))
        return (y > 0 ? std::numbers::pi : -std::numbers::pi) / 2 - ArcTangent(x / y);
    const double angle = ArcTangent(y / x);
    if (x > 0)
        return angle;
    return y < 0 ? angle - std::numbers::pi : angle + std::numbers::pi;
}

double SweepOfArc(const PathSpan& arc)
{
    const double from = AngleOfVector(arc.From.Y - arc.Centre.Y, arc.From.X - arc.Centre.X);
    const double to = AngleOfVector(arc.To.Y - arc.Centre.Y, arc.To.X - arc.Centre.X);
    const double sweep = arc.CounterClockwise ? to - from : from - to;
    return sweep < 0 ? sweep + 2 * std::numbers::pi : sweep;
}

bool FacesShortArc(const PathSpan& arc, const PlanePoint& point)
{
    const Turns ends(arc);
    return Turns::Turn(ends.From, ends.To) >= 0 && FacesArc(arc, point);
}

PlanePoint NearestOnSpan(const PathSpan& span, const PlanePoint& point)
{
    if (!span.IsArc) {
        const PlanePoint along{span.To.X - span.From.X, span.To.Y - span.From.Y};
        const double square = along.X * along.X + along.Y * along.Y;
        if (!(square > 0))
            return span.From;
        const double place = ((point.X - span.From.X) * along.X + (point.Y - span.From.Y) * along.Y) / square;
        const double kept = std::clamp(place, 0.0, 1.0);
        return {span.From.X + kept * along.X, span.From.Y + kept * along.Y};
    }
    const double apart = Distance(span.Centre, point);
    if (!(apart > 0))
        return span.From;
    const double share = span.Radius / apart;
    const PlanePoint onCircle{span.Centre.X + share * (point.X - span.Centre.X),
                              span.Centre.Y + share * (point.Y - span.Centre.Y)};
    if (FacesArc(span, point))
        return onCircle;
    return Distance(point, span.From) < Distance(point, span.To) ? span.From : span.To;
}

std::vector<PlanePoint> CrossingsOfWholes(const PathSpan& a, const PathSpan& b)
{
    if (a.IsArc && b.IsArc)
        return CrossingsOfCircles(a, b);
    if (a.IsArc)
        return CrossingsOnLine(b, a);
    return b.IsArc ? CrossingsOnLine(a, b) : CrossingsOfLines(a, b);
}

double DistanceBetween(const PathSpan& a, const PathSpan& b)
{
    if (a.IsArc || b.IsArc ? ArcCrosses(a, b) : LinesCross(a, b))
        return 0;
    double nearest =
        std::min({FromSpan(a, b.From), FromSpan(a, b.To), FromSpan(b, a.From), FromSpan(b, a.To)});
    if (a.IsArc)
        nearest = std::min(nearest, FromTurnsOfArc(a, b));
    if (b.IsArc)
        nearest = std::min(nearest, FromTurnsOfArc(b, a));
    return nearest;
}

} // namespace kv
